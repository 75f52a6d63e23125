// The run: beginning, release from every half-built state, a whole chart with each request for memory failing in turn.

#include "alloc_fail.h"
#include "error_run.h"
#include "gif_reader.h"
#include "package_dir.h"
#include "qbchart_state.h"
#include "qbgrform.h"
#include "qbgrutil.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <string>

// Beginning

TEST(InitChart, SetsTheDriversStateBack)
{
    memUsed = 7;
    strcpy(_aErrFilename, "old");
    _pErr = stderr;
    chartData.nSeries = 3;
    chartSet.chartW = 3;
    _InitChart();
    EXPECT_EQ(memUsed, 16U + 29 * 4); // the settings table
    EXPECT_STREQ(_aErrFilename, "");
    EXPECT_EQ(_pErr, nullptr);
    EXPECT_EQ(pSetHTab->size, 29U);
    EXPECT_EQ(chartSet.image, nullptr);
    EXPECT_EQ(chartSet.pointsPerSeries, nullptr);
    EXPECT_EQ(chartData.nSeries, 0);
    EXPECT_EQ(chartSet.chartW, 0);
    CleanUp();
}

// End

TEST(CleanUp, ForgetsWhatItReleases)
{
    _InitChart();
    chartData.buffer = strdup("text");
    CleanUp();
    EXPECT_EQ(pSetHTab, nullptr);
    EXPECT_EQ(chartData.buffer, nullptr);
    CleanUp();
}

TEST(CleanUp, ReleasesSeriesThatHaveNoCellsYet)
{
    _InitChart();
    chartData.buffer = strdup("text");
    chartData.nSeries = 2;
    chartData.series = static_cast<Series *>(calloc(2, sizeof(Series)));
    chartData.series[0].cells = static_cast<Cell *>(calloc(3, sizeof(Cell)));
    CleanUp();
    EXPECT_EQ(chartData.series, nullptr);
}

TEST(CleanUp, ReleasesThePointsWithAndWithoutAnImage)
{
    for (const bool fImage : {false, true})
    {
        _InitChart();
        InitGraph();
        chartData.nSeries = 2;
        chartSet.pointsPerSeries = static_cast<Point **>(calloc(2, sizeof(Point *)));
        chartSet.pointsPerSeries[1] = static_cast<Point *>(calloc(4, sizeof(Point)));
        const Rectangle rect = {0, 0, 5, 4};
        chartSet.image = fImage ? NewImage(&rect, 256) : nullptr;
        CleanUp();
        EXPECT_EQ(chartSet.pointsPerSeries, nullptr);
        EXPECT_EQ(chartSet.image, nullptr);
    }
}

TEST(CleanUp, LeavesTheNameOfTheGif)
{
    _InitChart();
    strcpy(chartSet.gifName, "qb.gif");
    CleanUp();
    EXPECT_STREQ(chartSet.gifName, "qb.gif");
}

TEST(InitChart, EndsTheRunWithoutMemory)
{
    for (int n = 1; n <= 2; n++)
    {
        const ChildResult result = RunStandAlone(
            [n]
            {
                FailAllocation(n);
                _InitChart();
            });
        EXPECT_EQ(result.status, 255);
        EXPECT_EQ(result.out.find("Quillbrook Charting Error\n\n\nOut of memory trying to allocate\n"), 0U);
    }
}

// The whole run

// Runs one chart in a fork of this test with its nth request for memory failing. At the end it writes whether one
// failed; it must not start a page script then, which would replace it.
static ChildResult runFailing(PackageDir *package, int64_t n)
{
    package->env["PERL_HOME"] = "/nowhere";
    package->env["STAND_ALONE"] = "1";
    return package->fork({"data", "bars"}, "",
                         [n](int argc, char **argv)
                         {
                             FailAllocation(n);
                             const int32_t status = RunChart(argc, argv);
                             printf(AllocationFailed() ? "unnoticed" : "complete");
                             return status;
                         });
}

// Whether an error text is one of those that a run without memory may end with.
static bool isMemoryError(const std::string &text)
{
    const std::string heading = "Quillbrook Charting Error\n\n";
    for (const char *message : {"\nOut of memory trying to allocate\n", "Not enough memory to draw this chart.\n",
                                "Can't create chart's GIF image\n"})
    {
        if (text.find(heading + message) == 0)
        {
            return true;
        }
    }
    return false;
}

// Whether the one GIF of a package can be read.
static bool isGifWhole(const PackageDir &package)
{
    GifPicture picture;
    return package.gifs().size() == 1 && ReadGif(package.gifDir + package.gifs()[0], &picture).empty();
}

// Makes charts with the 1st, 2nd, 3rd ... request failing until one is made without a failure. Returns how many were
// made although a request failed.
static int64_t failEveryRequest(const char *chartType)
{
    PackageDir package;
    package.settings["chartType"] = chartType;
    package.settings["dataPos"] = "outside";
    package.settings["dataSymbol"] = "1";
    package.saveSettings("bars");
    int64_t nUnnoticed = 0;
    int64_t n = 1;
    for (ChildResult result = runFailing(&package, n); result.out != "complete"; result = runFailing(&package, ++n))
    {
        if (result.status == 0)
        {
            EXPECT_TRUE(isGifWhole(package)) << n;
            nUnnoticed++;
            continue;
        }
        EXPECT_EQ(result.status, 255) << n << result.err;
        EXPECT_TRUE(isMemoryError(result.out)) << n << result.out;
        EXPECT_EQ(package.gifs(), std::vector<std::string>{}) << n;
        EXPECT_EQ(package.gifs(".ref"), std::vector<std::string>{}) << n;
    }
    EXPECT_TRUE(isGifWhole(package));
    EXPECT_GT(n, 100); // the settings alone take three requests each
    return nUnnoticed;
}

TEST(WholeChart, EndsCleanlyWhicheverRequestFails)
{
    EXPECT_EQ(failEveryRequest("bar"), 0);
    EXPECT_EQ(failEveryRequest("pie"), 0);
}

TEST(WholeChart, LeavesOutAPolygonThatItHasNoMemoryFor)
{
    // Three areas and 36 markers are filled with three requests each; a fill without memory draws nothing.
    EXPECT_EQ(failEveryRequest("area"), (3 + 36) * 3);
}

TEST(WholeRun, ReturnsToMainOnlyWithoutAPageScript)
{
    PackageDir package;
    package.saveSettings("bars");
    const ChildResult result = runFailing(&package, 0);
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out, "complete");
    EXPECT_NE(result.err.find("qbchart: can't start the page script"), std::string::npos);
}

TEST(WholeRun, DrawsEveryChartType)
{
    for (const char *type : {"bar", "pie", "line", "scatter", "area", "stacked_bar", "stacked_area"})
    {
        PackageDir package;
        package.settings["chartType"] = type;
        package.saveSettings("bars");
        EXPECT_EQ(runFailing(&package, 0).out, "complete") << type;
        EXPECT_TRUE(isGifWhole(package)) << type;
    }
}

TEST(WholeRun, EndsWithTheFirstVariableThatIsMissing)
{
    for (const char *name : {"QUILLBROOK_OUT", "QUILLBROOK_HOME"})
    {
        PackageDir package;
        package.saveSettings("bars");
        package.env.erase(name);
        const ChildResult result = runFailing(&package, 0);
        EXPECT_EQ(result.status, 255);
        // The message writes the package's name as a name: QUILLBROOK_OUT is Quillbrook_OUT there.
        EXPECT_NE(result.out.find("Missing Quillbrook_" + std::string(name).substr(11) + ".\n"), std::string::npos);
    }
}

// Names of the GIF and the reference file of a run in which one of the three variables of shared mode has this value.
static std::string namesWith(const std::string &name, const std::string &value)
{
    PackageDir package;
    package.saveSettings("bars");
    package.env["QUILLBROOK_MULTIUSER"] = "YES";
    package.env["QUILLBROOK_SHARED"] = "YES";
    package.env["QUILLBROOK_USERID"] = "u7";
    package.env[name] = value;
    EXPECT_EQ(runFailing(&package, 0).out, "complete");
    return package.gifs().at(0).substr(0, 3) + " " + package.gifs(".ref").at(0);
}

TEST(WholeRun, NamesFilesByUserOnlyInSharedMode)
{
    EXPECT_EQ(namesWith("QUILLBROOK_USERID", "u7"), "u7_ u7.ref");
    // tmpBase begins with "qb" and a hexadecimal digit.
    EXPECT_EQ(namesWith("QUILLBROOK_MULTIUSER", "yes").substr(0, 2), "qb");
    EXPECT_EQ(namesWith("QUILLBROOK_SHARED", "NO").substr(3), " 0.ref");
}
