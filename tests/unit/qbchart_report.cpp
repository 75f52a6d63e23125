// The report: table of contents, reading, title, series, cells, what is graphed, pies, dates, colours.

#include "alloc_fail.h"
#include "error_run.h"
#include "qbchart_state.h"
#include "qbgrform.h"
#include "qbgrutil.h"
#include "settings_table.h"
#include "temp_dir.h"

#include <gtest/gtest.h>

#include <cfloat>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

using Texts = std::vector<std::string>;

static FILE *openText(const std::string &text)
{
    FILE *file = tmpfile();
    fwrite(text.data(), 1, text.size(), file);
    rewind(file);
    return file;
}

// The text that a report of this name has; ends the run like the program does.
static std::string readReport(const std::string &toc, const std::string &data, const char *name)
{
    FILE *dataFile = openText(data);
    FILE *tocFile = openText(toc);
    std::string text = _ReadReport(dataFile, tocFile, name);
    fclose(dataFile);
    fclose(tocFile);
    _KillChartData(&chartData);
    return text;
}

// The message that reading this report ends with.
static std::string readError(const std::string &toc, const std::string &data, const char *name)
{
    const ChildResult result = RunStandAlone([&] { readReport(toc, data, name); });
    EXPECT_EQ(result.status, 255);
    return result.out;
}

// The records of a report, empty of everything but its text.
static void setText(const std::string &text)
{
    chartData = {};
    chartSet = {};
    chartData.buffer = strdup(text.c_str());
}

// The records of a report whose series and cells are read; takes them back at the end.
class Report
{
public:
    explicit Report(const std::string &text, int32_t refSeries = 0)
    {
        setText(text);
        chartData.refSeries = refSeries;
        char *cursor = _GetChartTitle(&chartData);
        cursor = _GetChartSeries(&chartData, cursor);
        _GetChartCells(&chartData, cursor);
    }
    ~Report()
    {
        _KillChartData(&chartData);
    }
    Report(const Report &) = delete;
    Report &operator=(const Report &) = delete;

    const Series &operator[](int32_t i) const
    {
        return chartData.series[i];
    }
};

static std::string reportError(const std::string &text, int32_t refSeries = 0)
{
    const ChildResult result = RunStandAlone([&] { const Report report(text, refSeries); });
    EXPECT_EQ(result.status, 255);
    return result.out;
}

static Texts cellTexts(const Series &series)
{
    Texts texts;
    texts.reserve(static_cast<size_t>(chartData.nCells));
    for (int32_t i = 0; i < chartData.nCells; i++)
    {
        texts.emplace_back(series.cells[i].text);
    }
    return texts;
}

static std::vector<double> cellValues(const Series &series)
{
    std::vector<double> values;
    values.reserve(static_cast<size_t>(chartData.nCells));
    for (int32_t i = 0; i < chartData.nCells; i++)
    {
        values.push_back(series.cells[i].value);
    }
    return values;
}

static const char malformed[] = "\nData File corrupted or malformed\n";
static const char notEnough[] = "Not enough data to generate chart\n";
static const char wrongFormat[] = "Error reading the TOC file: Wrong format\n";

// Table of contents

TEST(Toc, GivesTheReportUpToTheNextPosition)
{
    EXPECT_EQ(readReport("A\t0\nB\t4\nC\t9\n", "aaa\nbbbb\ncc\n", "A"), "aaa\n\n");
    EXPECT_EQ(readReport("A\t0\nB\t4\nC\t9\n", "aaa\nbbbb\ncc\n", "B"), "bbbb\n\n");
}

TEST(Toc, GivesTheLastReportUpToTheEndOfTheFile)
{
    EXPECT_EQ(readReport("A\t0\nB\t4\n", "aaa\nbbbb\ncc", "B"), "bbbb\ncc\n");
    EXPECT_EQ(readReport("A\t0\nB\t4", "aaa\nbbbb\ncc", "B"), "bbbb\ncc\n"); // without its own line end
}

TEST(Toc, TakesTheNameBeforeTheFirstTabAndThePositionAfterTheLast)
{
    EXPECT_EQ(readReport("A\tMay\t1996\t2\nB\tx\t3\n", "abcd", "A"), "c\n"); // from 2 to 3
}

TEST(Toc, ComparesWholeNamesExactly)
{
    const std::string toc = "Sales\t0\nSale\t1\nsale\t2\n\t3\n";
    EXPECT_EQ(readReport(toc, "abcd", "Sale"), "b\n");
    EXPECT_EQ(readReport(toc, "abcd", "Sales"), "a\n");
    EXPECT_EQ(readReport(toc, "abcd", "sale"), "c\n");
    EXPECT_EQ(readReport(toc, "abcd", ""), "d\n");
    EXPECT_EQ(readError(toc, "abcd", "Sal"), PlainErrorText("No Report named 'Sal' was referenced in the TOC\n"));
}

TEST(Toc, TakesTheFirstOfTwoReportsOfAName)
{
    EXPECT_EQ(readReport("A\t0\nA\t1\n", "ab", "A"), "a\n");
}

TEST(Toc, HasLinesOfAnyLength)
{
    const std::string name(5000, 'n');
    EXPECT_EQ(readReport(std::string(80, 'x') + "\t0\n" + name + "\t" + std::string(300, 'y') + "\t1\nB\t2\n", "abc",
                         name.c_str()),
              "b\n");
}

TEST(Toc, ReadsLeadingDigitsOfAPosition)
{
    EXPECT_EQ(readReport("A\t0001x5\nB\t3\r\n", "abcd", "A"), "bc\n");
}

TEST(Toc, WithoutTheReportEndsTheRun)
{
    EXPECT_EQ(readError("A\t0\n", "a", "B"), PlainErrorText("No Report named 'B' was referenced in the TOC\n"));
    EXPECT_EQ(readError("", "a", "off"), PlainErrorText("No Report named 'off' was referenced in the TOC\n"));
}

TEST(Toc, LineWithoutATabEndsTheRun)
{
    EXPECT_EQ(readError("A\nB\t0\n", "a", "B"), PlainErrorText(wrongFormat));
    EXPECT_EQ(readError("A\t0\n\nB\t0\n", "a", "B"), PlainErrorText(wrongFormat));
    EXPECT_EQ(readError("B", "a", "B"), PlainErrorText(wrongFormat));
}

TEST(Toc, NextLineWithoutATabEndsTheRun)
{
    const std::string message = PlainErrorText("Error reading the TOC file:No file position field\n");
    EXPECT_EQ(readError("A\t0\nB\n", "a", "A"), message);
    EXPECT_EQ(readError("A\t0\n\n", "a", "A"), message);
}

TEST(Toc, PositionThatIsNoNumberEndsTheRun)
{
    for (const char *position : {"", "x1", "-1", "+1", " 1"})
    {
        EXPECT_EQ(readError(std::string("A\t") + position + "\n", "ab", "A"), PlainErrorText(wrongFormat));
        EXPECT_EQ(readError(std::string("A\t0\nB\t") + position + "\n", "ab", "A"), PlainErrorText(wrongFormat));
    }
}

TEST(Toc, NextPositionBelowEndsTheRun)
{
    EXPECT_EQ(readError("A\t2\nB\t1\n", "abc", "A"), PlainErrorText(wrongFormat));
    EXPECT_EQ(readReport("A\t2\nB\t2\n", "abc", "A"), "\n");
}

// Reading

TEST(Reading, SkipsNewlinesInsideTheReport)
{
    EXPECT_EQ(readReport("A\t0\nB\t5\n", "\n\n\nab\nb", "A"), "ab\n");
    EXPECT_EQ(readReport("A\t0\nB\t2\n", "\n\n\nab", "A"), "\n"); // not beyond its end
    EXPECT_EQ(readReport("A\t0\n", "\n\n", "A"), "\n");
}

TEST(Reading, EndsWithTheFile)
{
    EXPECT_EQ(readReport("A\t1\nB\t1000\n", "abc", "A"), "bc\n");
    EXPECT_EQ(readReport("A\t3\n", "abc", "A"), "\n");
    EXPECT_EQ(readReport("A\t4\n", "abc", "A"), "\n");
    EXPECT_EQ(readReport("A\t9223372036854775807\n", "abc", "A"), "\n");
    EXPECT_EQ(readReport("A\t1\nB\t99999999999999999999999999\n", "abc", "A"), "bc\n");
    EXPECT_EQ(readReport("A\t4294967297\n", "abc", "A"), "\n"); // not 1 in 32 bits
    EXPECT_EQ(readReport("A\t0\n", "", "A"), "\n");
}

TEST(Reading, CountsItsBuffer)
{
    memUsed = 0;
    readReport("A\t0\n", "abc", "A");
    EXPECT_EQ(memUsed, 5U); // 3 bytes, a newline, a terminator
}

TEST(Reading, FindsAReportBehindTwoGibibytes)
{
    const TempDir dir;
    const std::string path = dir.path() + "big.txt";
    FILE *file = fopen(path.c_str(), "wb");
    fseeko(file, 3000000000, SEEK_SET); // a hole: it takes no room
    fputs("here", file);
    fclose(file);
    WriteFile(dir.path() + "big.toc", "A\t2999999999\nB\t3000000000\nC\t3000000002\n");
    EXPECT_STREQ(_GetChartDataBuffer(path.c_str(), (dir.path() + "big.toc").c_str(), "B"), "he\n");
    _KillChartData(&chartData);
    const ChildResult result = RunStandAlone(
        [&]
        {
            WriteFile(dir.path() + "big.toc", "A\t0\n");
            _GetChartDataBuffer(path.c_str(), (dir.path() + "big.toc").c_str(), "A");
        });
    EXPECT_EQ(result.status, 255); // 3000000004 bytes are more than one request may have
    EXPECT_EQ(result.out,
              PlainErrorText("\nOut of memory trying to allocate\n2147483647 bytes for the chart's data buffer"));
}

TEST(Reading, EndsTheRunWithoutMemory)
{
    const ChildResult result = RunStandAlone(
        []
        {
            FILE *data = openText("abcd");
            FILE *toc = openText("A\t1\n");
            FailAllocation(1);
            _ReadReport(data, toc, "A");
        });
    EXPECT_EQ(result.status, 255);
    EXPECT_EQ(result.out, PlainErrorText("\nOut of memory trying to allocate\n3 bytes for the chart's data buffer"));
}

TEST(Reading, NamesTheFileThatIsMissing)
{
    const TempDir dir;
    const std::string data = dir.path() + "a.txt";
    const std::string toc = dir.path() + "a.toc";
    const auto run = [&]
    {
        _GetChartDataBuffer(data.c_str(), toc.c_str(), "A");
    };
    EXPECT_EQ(RunStandAlone(run).out, PlainErrorText("Cant open file '" + data + "'\n"));
    WriteFile(data, "abc");
    EXPECT_EQ(RunStandAlone(run).out, PlainErrorText("Cant open file '" + toc + "'\n"));
    WriteFile(toc, "B\t0\n");
    EXPECT_EQ(RunStandAlone(run).out, PlainErrorText("No Report named 'A' was referenced in the TOC\n"));
}

// A stream of 100 bytes whose every read fails, as one of a broken disk does.
static FILE *openBroken()
{
    static off64_t at;
    cookie_io_functions_t calls = {};
    calls.read = [](void *, char *, size_t) -> ssize_t
    {
        return -1;
    };
    calls.seek = [](void *, off64_t *position, int whence)
    {
        at = *position + (whence == SEEK_END ? 100 : whence == SEEK_CUR ? at : 0);
        *position = at;
        return 0;
    };
    return fopencookie(nullptr, "r", calls);
}

TEST(Reading, SaysWhenTheDiskFails)
{
    const ChildResult result = RunStandAlone(
        []
        {
            FILE *data = openBroken();
            FILE *toc = openText("A\t0\n");
            _ReadReport(data, toc, "A");
        });
    EXPECT_EQ(result.status, 255);
    EXPECT_EQ(result.out, PlainErrorText("Error reading Data file for Report 'A'\n"));
}

// Title

TEST(Title, EndsAtTheFirstNewline)
{
    setText("Sales\nYear\tNorth\n\n");
    const char *next = _GetChartTitle(&chartData);
    EXPECT_STREQ(chartData.title, "Sales");
    EXPECT_STREQ(next, "Year\tNorth\n\n");
    EXPECT_EQ(chartData.hasSeriesLabels, 1);
    _KillChartData(&chartData);
}

TEST(Title, FollowedByAnEmptyLineMeansNoLabels)
{
    setText("Sales\n\n1996\t2\n");
    chartData.hasSeriesLabels = 1; // the setting, which the report overrules
    EXPECT_STREQ(_GetChartTitle(&chartData), "1996\t2\n");
    EXPECT_EQ(chartData.hasSeriesLabels, 0);
    _KillChartData(&chartData);
}

TEST(Title, BreaksItsLinesAtTabs)
{
    setText("\tSales\t\t1996\t\nx");
    _GetChartTitle(&chartData);
    EXPECT_STREQ(chartData.title, "\nSales\n\n1996\n");
    _KillChartData(&chartData);
}

TEST(Title, MayBeEmpty)
{
    setText("\nA\n\n");
    _GetChartTitle(&chartData);
    EXPECT_STREQ(chartData.title, "");
    EXPECT_EQ(chartData.hasSeriesLabels, 1);
    _KillChartData(&chartData);
}

TEST(Title, WithoutALineEndEndsTheRun)
{
    EXPECT_EQ(reportError("Sales"), PlainErrorText(std::string(malformed) + "Can't read report title\n"));
    EXPECT_EQ(reportError(""), PlainErrorText(std::string(malformed) + "Can't read report title\n"));
}

// Series

TEST(Series, HaveTheLabelsOfTheReport)
{
    const Report report("T\nYear\tNorth\tSouth\n\n1996\t1\t2\n1997\t3\t4\n\n");
    EXPECT_EQ(chartData.nSeries, 3);
    EXPECT_EQ(chartData.nCells, 2);
    EXPECT_STREQ(report[0].label, "Year");
    EXPECT_STREQ(report[1].label, "North");
    EXPECT_STREQ(report[2].label, "South");
}

TEST(Series, BeginWithTheirFirstValues)
{
    const Report report("T\nYear\tNorth\n\n1996\t1\n\n", 1);
    EXPECT_EQ(report[0].flags, 0x8001U);
    EXPECT_EQ(report[1].flags, 0x102U);
    for (int32_t i = 0; i < 2; i++)
    {
        EXPECT_EQ(report[i].min, 99999999.0);
        EXPECT_EQ(report[i].max, 0.0);
        EXPECT_EQ(report[i].sum, 0.0);
        EXPECT_EQ(report[i].mean, 0.0);
        EXPECT_EQ(report[i].pieScale, 0.0);
        EXPECT_EQ(report[i].nCells, 1);
        EXPECT_EQ(report[i].points, nullptr);
        EXPECT_EQ(chartData.seriesPtrs[i], &chartData.series[i]);
    }
}

TEST(Series, WithoutALabelFieldHaveTheEmptyLabel)
{
    const Report report("T\nYear\n\n1996\t1\t2\n\n");
    EXPECT_STREQ(report[0].label, "Year");
    EXPECT_STREQ(report[1].label, "");
    EXPECT_STREQ(report[2].label, "");
}

TEST(Series, AreAsManyAsTheFieldsOfTheFirstLine)
{
    const Report report("T\nYear\tNorth\tSouth\tWest\n\n1996\t1\n1997\t3\t4\n\n");
    EXPECT_EQ(chartData.nSeries, 2);
    EXPECT_STREQ(report[1].label, "North");
}

// A report of n series without labels.
static std::string unlabeled(int n)
{
    return "T\n\n1" + std::string(static_cast<size_t>(n - 1), '\t') + "\n\n";
}

TEST(Series, WithoutLabelsAreNumberedUpToTen)
{
    const Report report(unlabeled(12));
    EXPECT_EQ(chartData.nSeries, 12);
    EXPECT_STREQ(report[0].label, "Series 1");
    EXPECT_STREQ(report[8].label, "Series 9");
    EXPECT_STREQ(report[9].label, "Series 10");
    EXPECT_STREQ(report[10].label, "Series");
    EXPECT_STREQ(report[11].label, "Series");
}

TEST(Series, WithoutLabelsAreTwelveAtMost)
{
    EXPECT_EQ(reportError(unlabeled(13)), PlainErrorText("Too many unlabeled series:\nmaximum allowed is 12\n"));
    const std::string labels = "T\nL\n\n1" + std::string(12, '\t') + "\n\n";
    const Report report(labels);
    EXPECT_EQ(chartData.nSeries, 13); // with labels there is no such limit
}

TEST(Series, MustIncludeTheReference)
{
    const std::string text = "T\nYear\tNorth\n\n1996\t1\n\n";
    EXPECT_EQ(reportError(text, 2), PlainErrorText(notEnough));
    EXPECT_EQ(reportError(text, INT32_MAX), PlainErrorText(notEnough));
    EXPECT_EQ(reportError(text, -1), PlainErrorText(notEnough));
    EXPECT_EQ(reportError(text, INT32_MIN), PlainErrorText(notEnough));
}

TEST(Series, NeedALineOfData)
{
    EXPECT_EQ(reportError("T\nYear\tNorth\n\n\n"), PlainErrorText(notEnough));
    EXPECT_EQ(reportError("T\n\n\n"), PlainErrorText(notEnough));
}

TEST(Series, NeedTheLineEndsOfTheReport)
{
    const std::string cantRead = PlainErrorText(std::string(malformed) + "Can't read data series\n");
    EXPECT_EQ(reportError("T\nYear\tNorth"), cantRead);         // labels
    EXPECT_EQ(reportError("T\nYear\tNorth\n\n"), cantRead);     // nothing behind the separator
    EXPECT_EQ(reportError("T\nYear\tNorth\n\n1996"), cantRead); // first data line
    EXPECT_EQ(reportError("T\n\n"), cantRead);
}

TEST(Series, NeedAnEmptyLineBehindTheLabels)
{
    const std::string message = PlainErrorText(std::string(malformed) + "Missing component separator\n");
    EXPECT_EQ(reportError("T\nYear\tNorth\n1996\t1\n\n"), message);
    EXPECT_EQ(reportError("T\nYear\tNorth\n"), message);
}

TEST(Series, EndTheRunWithoutMemory)
{
    const struct
    {
        size_t bytes;
        const char *rest;
    } cases[] = {{3 * sizeof(Series), "3 Series\n"},
                 {3 * sizeof(Series *), "3 pointers to Series\n"},
                 {2 * sizeof(Cell), "2 cells\n"},
                 {2 * sizeof(Cell), "2 cells\n"},
                 {2 * sizeof(Cell), "2 cells\n"}};
    int64_t n = 1;
    for (const auto &c : cases)
    {
        const ChildResult result = RunStandAlone(
            [n]
            {
                setText("T\nYear\tA\tB\n\n1\t2\t3\n4\t5\t6\n\n");
                FailAllocation(n);
                _GetChartSeries(&chartData, _GetChartTitle(&chartData));
            });
        EXPECT_EQ(result.status, 255);
        EXPECT_EQ(result.out, PlainErrorText("\nOut of memory trying to allocate\n" + std::to_string(c.bytes) +
                                             " bytes for " + c.rest));
        n++;
    }
}

TEST(Series, AreThirtyThousandAtMost)
{
    const std::string tabs(29999, '\t');
    EXPECT_EQ(reportError("T\n" + tabs + "\t\n\n" + tabs + "\t\n\n"),
              PlainErrorText("Too many series:\nmaximum allowed is 30000\n"));
    const Report report("T\n" + tabs + "\n\n" + tabs + "\n\n");
    EXPECT_EQ(chartData.nSeries, 30000);
}

// Two lines of three fields, when all but this many bytes of the run's 2^31 - 1 are taken.
static ChildResult makeSeriesWith(size_t bytes)
{
    return RunStandAlone(
        [bytes]
        {
            setText("T\nYear\tA\tB\n\n1\t2\t3\n4\t5\t6\n\n");
            memUsed = INT32_MAX - static_cast<uint32_t>(bytes);
            _GetChartSeries(&chartData, _GetChartTitle(&chartData));
        });
}

TEST(Series, ThatTakeMoreMemoryThanARunMayHaveEndTheRun)
{
    const size_t needed = 3 * sizeof(Series) + 3 * sizeof(Series *) + 6 * sizeof(Cell);
    EXPECT_EQ(makeSeriesWith(needed).status, 0);
    const ChildResult result = makeSeriesWith(needed - 1);
    EXPECT_EQ(result.status, 255);
    EXPECT_EQ(result.out, PlainErrorText("\nOut of memory trying to allocate\n" + std::to_string(2 * sizeof(Cell)) +
                                         " bytes for 2 cells\n"));
}

// Cells

TEST(Cells, HaveTextsAndValues)
{
    const Report report("T\nYear\tA\tB\n\n1996\t1.5\tx\n1997\t-2e2\t 7 \n\n");
    EXPECT_EQ(cellTexts(report[0]), (Texts{"1996", "1997"}));
    EXPECT_EQ(cellTexts(report[1]), (Texts{"1.5", "-2e2"}));
    EXPECT_EQ(cellTexts(report[2]), (Texts{"x", " 7 "}));
    EXPECT_EQ(cellValues(report[0]), (std::vector<double>{0, 0})); // the reference has no values
    EXPECT_EQ(cellValues(report[1]), (std::vector<double>{1.5, -200}));
    EXPECT_EQ(cellValues(report[2]), (std::vector<double>{0, 7}));
    EXPECT_EQ(report[1].cells[0].graphed, 0);
}

TEST(Cells, ThatAreMissingAtTheEndAreEmpty)
{
    const Report report("T\nYear\tA\tB\n\n1996\t1\t2\n1997\n1998\t3\n\n");
    EXPECT_EQ(cellTexts(report[0]), (Texts{"1996", "1997", "1998"}));
    EXPECT_EQ(cellTexts(report[1]), (Texts{"1", "", "3"}));
    EXPECT_EQ(cellTexts(report[2]), (Texts{"2", "", ""}));
    EXPECT_EQ(cellValues(report[2]), (std::vector<double>{2, 0, 0}));
}

TEST(Cells, ThatAreTooManyAreIgnored)
{
    const Report report("T\nYear\tA\n\n1996\t1\n1997\t2\t3\t4\n\n");
    EXPECT_EQ(cellTexts(report[1]), (Texts{"1", "2"}));
}

TEST(Cells, ThatAreNotFiniteAreZero)
{
    const Report report("T\nYear\tA\tB\tC\n\n1\tnan\tinf\t1e999\n\n");
    for (int32_t i = 1; i < 4; i++)
    {
        EXPECT_EQ(report[i].cells[0].value, 0.0);
    }
}

TEST(Cells, EndAtTheFirstEmptyLine)
{
    const Report report("T\nYear\tA\n\n1996\t1\n\n1997\t2\n\n");
    EXPECT_EQ(chartData.nCells, 1);
}

TEST(Cells, EndAtTheEndOfTheText)
{
    const Report report("T\nYear\tA\n\n1996\t1\n1997\t2\n");
    EXPECT_EQ(chartData.nCells, 2);
}

TEST(Cells, AreFewerWhenAnEmptyLineComesEarly)
{
    setText("T\n\na\t1\nb\t2\n\n");
    char *cursor = _GetChartSeries(&chartData, _GetChartTitle(&chartData));
    *strchr(cursor, 'b') = '\n';
    _GetChartCells(&chartData, cursor);
    EXPECT_EQ(chartData.nCells, 1);
    _KillChartData(&chartData);
}

TEST(Cells, NeedTheLineEndOfEveryLine)
{
    EXPECT_EQ(reportError("T\nYear\tA\n\n1996\t1\n1997\t2"),
              PlainErrorText(std::string(malformed) + "Can't read data series\n"));
}

// What is graphed

TEST(GraphedSeries, AreThoseThatAreOn)
{
    const Report report("T\n\na\t1\t2\t3\n\n", 1);
    const SettingsTable table(
        Values{{"chartSeries0", "on"}, {"chartSeries1", "on"}, {"chartSeries2", "On"}, {"chartSeries3", "on"}});
    _GetGraphedSeries(table, &chartData, &chartSet);
    EXPECT_EQ(chartSet.nGraphedSeries, 2);
    EXPECT_EQ(report[0].flags, 0x8001U);
    EXPECT_EQ(report[1].flags, 0x102U); // the reference is never graphed
    EXPECT_EQ(report[2].flags, 0x0001U);
    EXPECT_EQ(report[3].flags, 0x8001U);
}

TEST(GraphedSeries, AreNoneByDefault)
{
    const Report report("T\n\na\t1\n\n");
    _GetGraphedSeries(SettingsTable(Values{}), &chartData, &chartSet);
    EXPECT_EQ(chartSet.nGraphedSeries, 0);
    EXPECT_EQ(report[1].flags, 0x0001U);
}

// The cell range of settings in a report of ten cells: first, last, count, and whether all were asked for.
static std::vector<int32_t> cellRange(const Values &values)
{
    std::string text = "T\n\n";
    for (int i = 0; i < 10; i++)
    {
        text += "c\t1\n";
    }
    const Report report(text + "\n");
    _GetGraphedCells(SettingsTable(values), &chartData, &chartSet);
    return {chartSet.firstCell, chartSet.lastCell, chartSet.nGraphedCells, chartSet.allCells};
}

using Range = std::vector<int32_t>;

TEST(GraphedCells, AreAllWithoutARange)
{
    EXPECT_EQ(cellRange({}), (Range{0, 9, 10, 1}));
    EXPECT_EQ(cellRange({{"startCell", "off"}, {"endCell", "off"}}), (Range{0, 9, 10, 1}));
}

TEST(GraphedCells, BeginAndEndWhereTheSettingsSay)
{
    EXPECT_EQ(cellRange({{"startCell", "2"}, {"endCell", "5"}}), (Range{2, 5, 4, 0}));
    EXPECT_EQ(cellRange({{"startCell", "2"}}), (Range{2, 9, 8, 0}));
    EXPECT_EQ(cellRange({{"endCell", "5"}}), (Range{0, 5, 6, 0}));
    EXPECT_EQ(cellRange({{"startCell", "0"}, {"endCell", "9"}}), (Range{0, 9, 10, 0}));
}

TEST(GraphedCells, StayInsideTheReport)
{
    EXPECT_EQ(cellRange({{"startCell", "-1"}, {"endCell", "10"}}), (Range{0, 9, 10, 0}));
    EXPECT_EQ(cellRange({{"startCell", "10"}}), (Range{9, 9, 1, 0}));
    EXPECT_EQ(cellRange({{"endCell", "-5"}}), (Range{0, 0, 1, 0}));
    EXPECT_EQ(cellRange({{"startCell", "99999999999"}, {"endCell", "-99999999999"}}), (Range{9, 9, 1, 0}));
    EXPECT_EQ(cellRange({{"startCell", "first"}, {"endCell", "last"}}), (Range{0, 0, 1, 0}));
}

TEST(GraphedCells, AreOneWhenTheEndComesFirst)
{
    EXPECT_EQ(cellRange({{"startCell", "7"}, {"endCell", "3"}}), (Range{7, 7, 1, 0}));
}

// Three series behind the reference: 1 2 3 6, 5 -7 4 8 and 9 9 9 9.
static const char fourCells[] = "T\n\na\t1\t5\t9\nb\t2\t-7\t9\nc\t3\t4\t9\nd\t6\t8\t9\n\n";

TEST(Statistics, CoverTheGraphedCellsOfGraphedSeries)
{
    const Report report(fourCells);
    const SettingsTable table(
        Values{{"chartSeries1", "on"}, {"chartSeries2", "on"}, {"startCell", "1"}, {"endCell", "2"}});
    _GetGraphedSeries(table, &chartData, &chartSet);
    _GetGraphedCells(table, &chartData, &chartSet);
    EXPECT_EQ(report[1].min, 2.0);
    EXPECT_EQ(report[1].max, 3.0);
    EXPECT_EQ(report[1].sum, 5.0);
    EXPECT_EQ(report[1].mean, 2.5);
    EXPECT_EQ(report[2].min, -7.0);
    EXPECT_EQ(report[2].max, 4.0);
    EXPECT_EQ(report[2].sum, -3.0);
    EXPECT_EQ(report[2].mean, -1.5);
    EXPECT_EQ(report[3].min, 99999999.0); // not graphed
    EXPECT_EQ(report[3].max, 0.0);
    EXPECT_EQ(chartData.minValue, -7.0);
    EXPECT_EQ(chartData.maxValue, 4.0);
    for (int32_t i = 0; i < 4; i++)
    {
        EXPECT_EQ(report[1].cells[i].graphed, i == 1 || i == 2 ? 1 : 0) << i;
        EXPECT_EQ(report[3].cells[i].graphed, 0) << i;
    }
}

TEST(Statistics, BeginMaximaAtZero)
{
    const Report report("T\n\na\t-5\nb\t-3\n\n");
    const SettingsTable table(Values{{"chartSeries1", "on"}});
    _GetGraphedSeries(table, &chartData, &chartSet);
    _GetGraphedCells(table, &chartData, &chartSet);
    EXPECT_EQ(report[1].min, -5.0);
    EXPECT_EQ(report[1].max, 0.0);
    EXPECT_EQ(chartData.minValue, -5.0);
    EXPECT_EQ(chartData.maxValue, 0.0);
}

TEST(Statistics, WithoutGraphedSeriesAreThoseOfNothing)
{
    const Report report(fourCells);
    _GetGraphedSeries(SettingsTable(Values{}), &chartData, &chartSet);
    _GetGraphedCells(SettingsTable(Values{}), &chartData, &chartSet);
    EXPECT_EQ(chartData.minValue, 99999999.9);
    EXPECT_EQ(chartData.maxValue, 0.0);
    EXPECT_EQ(chartSet.chartFlags, 0U);
    EXPECT_EQ(chartSet.nGraphedCells, 4);
}

TEST(Statistics, StayFinite)
{
    const Report report("T\n\na\t1.7e308\t-1.7e308\nb\t1.7e308\t-1.7e308\n\n");
    const SettingsTable table(Values{{"chartSeries1", "on"}, {"chartSeries2", "on"}});
    _GetGraphedSeries(table, &chartData, &chartSet);
    _GetGraphedCells(table, &chartData, &chartSet);
    EXPECT_EQ(report[1].sum, DBL_MAX);
    EXPECT_EQ(report[2].sum, -DBL_MAX);
    EXPECT_EQ(report[1].mean, DBL_MAX / 2);
}

// The flags that two series of one cell each leave.
static uint32_t flagsOf(const char *first, const char *second, uint32_t flags)
{
    const Report report(std::string("T\n\na\t") + first + "\t" + second + "\n\n");
    const SettingsTable table(Values{{"chartSeries1", "on"}, {"chartSeries2", "on"}});
    chartSet.chartFlags = flags;
    _GetGraphedSeries(table, &chartData, &chartSet);
    _GetGraphedCells(table, &chartData, &chartSet);
    return chartSet.chartFlags;
}

TEST(LogScale, ComesWithMeansThatDifferTenfold)
{
    EXPECT_EQ(flagsOf("1", "9.99", 0), 0U);
    EXPECT_EQ(flagsOf("1", "10", 0), 0x400U);
    EXPECT_EQ(flagsOf("10.01", "1", 0), 0x400U);
    EXPECT_EQ(flagsOf("3", "10", 0x021), 0x021U);
    EXPECT_EQ(flagsOf("1", "1", 0x400), 0x400U); // asked for
}

TEST(LogScale, DoesNotComeWhenLinearIsAskedFor)
{
    EXPECT_EQ(flagsOf("1", "10", 0x800), 0x800U);
}

TEST(LogScale, ComparesMeansOfZeroAndBelowAsTheyAre)
{
    EXPECT_EQ(flagsOf("0", "5", 0), 0x400U);   // 5 >= 0
    EXPECT_EQ(flagsOf("0", "0", 0), 0x400U);   // 0 >= 0
    EXPECT_EQ(flagsOf("-1", "-5", 0), 0x400U); // -1 >= -50
    EXPECT_EQ(flagsOf("-1", "3", 0), 0x400U);  // 3 >= -10
}

// Pies

TEST(PieExplosion, OfAllOverrulesTheOthers)
{
    const auto bits = [](const Values &values)
    {
        _GetPieExplodeSettings(SettingsTable(values), &chartData, &chartSet);
        return chartSet.pieExplode;
    };
    EXPECT_EQ(bits({}), 0U);
    EXPECT_EQ(bits({{"pieExplodeAll", "on"}, {"pieExplodeMax", "on"}}), 1U);
    EXPECT_EQ(bits({{"pieExplodeMin", "on"}}), 2U);
    EXPECT_EQ(bits({{"pieExplodeMax", "on"}}), 4U);
    EXPECT_EQ(bits({{"pieExplodeMax", "on"}, {"pieExplodeMin", "on"}, {"pieExplodeAll", "off"}}), 6U);
}

// Reads a report as the run does for a pie of all its series.
static void readPies(uint32_t flags)
{
    const SettingsTable table(Values{{"chartSeries1", "on"}, {"chartSeries2", "on"}, {"chartSeries3", "on"}});
    chartSet.chartFlags = flags;
    _GetGraphedSeries(table, &chartData, &chartSet);
    _GetGraphedCells(table, &chartData, &chartSet);
    _GetPieParams(&chartData, &chartSet);
}

TEST(Pies, CountNegativeValuesAsZero)
{
    const Report report(fourCells);
    readPies(0);
    EXPECT_EQ(report[2].cells[1].value, 0.0);
    EXPECT_EQ(report[2].sum, 17.0); // 5 + 4 + 8
    EXPECT_EQ(report[2].min, -7.0); // worked out before
}

TEST(Pies, AreOfOneSizeUnlessMultiplied)
{
    const Report report(fourCells);
    readPies(0);
    EXPECT_EQ(report[1].pieScale, 1.0);
    EXPECT_EQ(report[2].pieScale, 1.0);
    EXPECT_EQ(report[3].pieScale, 1.0);
    EXPECT_EQ(chartSet.pieScaleSum, 3.0);
    EXPECT_EQ(chartSet.pieScaleMax, 1.0);
}

TEST(Pies, AreMeasuredByTheFirstWhenMultiplied)
{
    const Report report(fourCells);
    readPies(0x100);
    EXPECT_EQ(report[1].pieScale, 1.0);       // 12
    EXPECT_EQ(report[2].pieScale, 17.0 / 12); // with the negative value as 0
    EXPECT_EQ(report[3].pieScale, 3.0);       // 36
    EXPECT_EQ(chartSet.pieScaleSum, 1.0 + 17.0 / 12 + 3.0);
    EXPECT_EQ(chartSet.pieScaleMax, 3.0);
}

TEST(Pies, OfNothingAreNotGraphed)
{
    const Report report("T\n\na\t0\t2\t-4\nb\t-1\t2\t-4\n\n");
    readPies(0x100);
    EXPECT_EQ(report[1].flags, 0x0001U);
    EXPECT_EQ(report[2].flags, 0x8001U);
    EXPECT_EQ(report[3].flags, 0x0001U);
    EXPECT_EQ(report[2].pieScale, 1.0); // the first with anything to show
    EXPECT_EQ(chartSet.pieScaleSum, 1.0);
    EXPECT_EQ(chartSet.nGraphedSeries, 3);
}

TEST(Pies, HaveScalesThatStayInBounds)
{
    const Report report("T\n\na\t1e-300\t1e300\t2\nb\t0\t1e300\t0\n\n");
    readPies(0x100);
    EXPECT_EQ(report[2].pieScale, 1.0e9);
    EXPECT_EQ(report[3].pieScale, 1.0e9);
    EXPECT_EQ(chartSet.pieScaleSum, 1.0 + 2.0e9);
}

// Dates and colours

TEST(DateReference, IsMarkedByItsFirstCell)
{
    const Report dates("T\n\nFri May 31 1996\t1\nx\t2\n\n");
    _IsDateRefSeries(&chartData);
    EXPECT_EQ(dates[0].flags, 0x104U);
    chartData.series[0].cells[0].text = chartData.series[0].cells[1].text;
    _IsDateRefSeries(&chartData);
    EXPECT_EQ(dates[0].flags, 0x102U);
}

TEST(Colours, AreReadForAllButTheReference)
{
    const Report report("T\n\na\t1\t2\t3\t4\n\n");
    const SettingsTable table(Values{{"colorSeries0", "7"},
                                     {"colorSeries1", "17"},
                                     {"colorSeries2", "off"},
                                     {"colorSeries3", "300"},
                                     {"colorSeries5", "1"}});
    _GetSeriesColors(table, &chartData, &chartSet);
    EXPECT_EQ(report[0].color, 0);
    EXPECT_EQ(report[1].color, 17);
    EXPECT_EQ(report[2].color, 240);
    EXPECT_EQ(report[3].color, 44); // the low 8 bits of 300
    EXPECT_EQ(report[4].color, 240);
}
