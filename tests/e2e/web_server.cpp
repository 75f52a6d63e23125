// The program as a web server starts it: a posted form in, a GIF, its reference and the page out.

#include "error_run.h"
#include "gif_reader.h"
#include "package_dir.h"
#include "qbgraph.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <sys/stat.h>
#include <vector>

using Names = std::vector<std::string>;

// One chart from the package's form, which must succeed. Returns the GIF's name.
static std::string makeChart(const PackageDir &package)
{
    const ChildResult result = package.post(QBCHART_PATH);
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out, "page\n");
    const Names gifs = package.gifs();
    EXPECT_EQ(gifs.size(), 1U);
    return gifs.empty() ? "" : gifs[0];
}

// The error text of a form that must fail, and that no GIF is there afterwards.
static std::string failChart(PackageDir *package)
{
    package->env["STAND_ALONE"] = "1";
    const ChildResult result = package->post(QBCHART_PATH);
    EXPECT_EQ(result.status, 255);
    EXPECT_EQ(package->gifs(), Names{});
    EXPECT_EQ(package->pageArguments(), Names{});
    return result.out;
}

TEST(PostedForm, MakesAGif)
{
    const PackageDir package;
    const std::string name = makeChart(package);
    GifPicture picture;
    ASSERT_EQ(ReadGif(package.gifDir + name, &picture), "");
    EXPECT_GE(picture.width, 600);
    EXPECT_GE(picture.height, 400);
    EXPECT_FALSE(picture.interlaced);
    EXPECT_GE(picture.transparent, 0);
}

TEST(PostedForm, StartsThePageScript)
{
    const PackageDir package;
    const std::string name = makeChart(package);
    EXPECT_EQ(package.pageArguments(), (Names{package.pagePath, "data", "bars", name}));
}

TEST(PostedForm, LeavesTheNameInTheReferenceFile)
{
    const PackageDir package;
    const std::string name = makeChart(package);
    EXPECT_EQ(ReadFile(package.gifDir + "0.ref"), name);
    EXPECT_EQ(package.gifs(""), (Names{"0.ref", name, "serial.num"}));
}

TEST(PostedForm, LetsEverybodyReadAndWriteItsFiles)
{
    const PackageDir package;
    const std::string name = makeChart(package);
    for (const std::string &file : {name, std::string("0.ref")})
    {
        struct stat info = {};
        ASSERT_EQ(stat((package.gifDir + file).c_str(), &info), 0);
        EXPECT_EQ(info.st_mode & 07777U, 0666U) << file;
    }
}

TEST(PostedForm, MayBeShorterThanItsLengthAndHaveAMethodInLowerCase)
{
    PackageDir package;
    const std::string body = EncodeSettings(package.settings);
    package.env["REQUEST_METHOD"] = "post";
    package.env["CONTENT_LENGTH"] = std::to_string(body.size() + 1000);
    EXPECT_EQ(package.start(QBCHART_PATH, {}, body).status, 0);
    EXPECT_EQ(package.gifs().size(), 1U);
}

TEST(PostedForm, WithoutNamesMeansFilesNamedOff)
{
    PackageDir package;
    package.settings.erase("nameBase");
    package.settings.erase("setFile");
    EXPECT_EQ(failChart(&package), PlainErrorText("Cant open file '" + package.out + "off.txt'\n"));
    WriteFile(package.out + "off.txt", "T\n\n1\t2\n");
    EXPECT_EQ(failChart(&package), PlainErrorText("Cant open file '" + package.out + "off.toc'\n"));
    package.saveReport("off", "Sales", "T\n\nA\t2\nB\t3\n");
    EXPECT_EQ(package.post(QBCHART_PATH).status, 0);
    EXPECT_EQ(package.pageArguments()[1], "off");
    EXPECT_EQ(package.pageArguments()[2], "off");
}

TEST(EveryType, MakesAGif)
{
    for (const char *type : {"bar", "pie", "line", "scatter", "area", "stacked_bar", "stacked_area"})
    {
        PackageDir package;
        package.settings["chartType"] = type;
        GifPicture picture;
        EXPECT_EQ(ReadGif(package.gifDir + makeChart(package), &picture), "") << type;
    }
}

// How many pixels of a GIF have the colour of a palette index.
static int64_t countColour(const std::string &path, int index)
{
    InitGraph();
    GifPicture picture;
    EXPECT_EQ(ReadGif(path, &picture), "");
    int64_t count = 0;
    for (const uint8_t pixel : picture.pixels)
    {
        count += std::equal(aRGB[index], aRGB[index] + 3, picture.palette[pixel].begin()) ? 1 : 0;
    }
    return count;
}

TEST(StackedBars, ShowTitleLegendAndAxesOnly)
{
    PackageDir package;
    const int64_t inBars = countColour(package.gifDir + makeChart(package), 9);
    package.settings["chartType"] = "stacked_bar";
    const int64_t inLegend = countColour(package.gifDir + makeChart(package), 9);
    EXPECT_GT(inLegend, 0);
    EXPECT_LT(inLegend, 20 * 20); // one swatch, as high as a line of 12 pixel text
    EXPECT_GT(inBars, 10 * inLegend);
}

// The serial counter

TEST(SerialCounter, BeginsAtZeroAndCountsUp)
{
    const PackageDir package;
    const std::string first = makeChart(package);
    EXPECT_EQ(first.substr(first.size() - 5), "0.gif");
    EXPECT_EQ(ReadFile(package.gifDir + "serial.num"), std::string(4, '\0'));
    const std::string second = makeChart(package);
    EXPECT_EQ(second.substr(second.size() - 5), "1.gif");
    EXPECT_EQ(ReadFile(package.gifDir + "serial.num"), std::string("\0\0\0\1", 4));
}

TEST(SerialCounter, IsKeptMostSignificantByteFirst)
{
    const PackageDir package;
    WriteFile(package.gifDir + "serial.num", std::string("\0\1\1\xff", 4)); // 66047
    const std::string name = makeChart(package);
    EXPECT_EQ(name.substr(name.size() - 9), "66048.gif");
    EXPECT_EQ(ReadFile(package.gifDir + "serial.num"), std::string("\0\1\2\0", 4));
}

// Purging

TEST(OldCharts, ArePurgedWhoeverMadeThem)
{
    PackageDir package;
    package.env["QUILLBROOK_USERID"] = "u7"; // means nothing by itself
    for (const char *name : {"old.gif", "u7_old.gif", "u8_old.gif", "old.png", "0.ref"})
    {
        WriteFile(package.gifDir + name, "old");
    }
    const std::string name = makeChart(package);
    EXPECT_EQ(package.gifs(""), (Names{"0.ref", "old.png", name, "serial.num"}));
    EXPECT_EQ(name.substr(0, 2), "qb");
    EXPECT_EQ(ReadFile(package.gifDir + "0.ref"), name);
}

// A package in shared mode with the old charts of two users.
static void shareWithOldCharts(PackageDir *package)
{
    package->env["QUILLBROOK_USERID"] = "u7";
    package->env["QUILLBROOK_MULTIUSER"] = "YES";
    package->env["QUILLBROOK_SHARED"] = "YES";
    for (const char *name : {"old.gif", "u7_old.gif", "u8_old.gif"})
    {
        WriteFile(package->gifDir + name, "old");
    }
}

TEST(SharedMode, KeepsUsersApart)
{
    PackageDir package;
    shareWithOldCharts(&package);
    ASSERT_EQ(package.post(QBCHART_PATH).status, 0);
    const Names names = package.gifs("");
    ASSERT_EQ(names.size(), 5U);
    EXPECT_EQ(names[0], "old.gif");
    EXPECT_EQ(names[1], "serial.num");
    EXPECT_EQ(names[2], "u7.ref");
    EXPECT_EQ(names[3].substr(0, 5), "u7_qb");
    EXPECT_EQ(names[4], "u8_old.gif");
    EXPECT_EQ(ReadFile(package.gifDir + "u7.ref"), names[3]);
    EXPECT_EQ(package.pageArguments()[3], names[3]);
}

TEST(SharedMode, NeedsAllThreeVariables)
{
    const struct
    {
        const char *name;
        const char *value; // null: unset
    } cases[] = {{"QUILLBROOK_MULTIUSER", "yes"}, {"QUILLBROOK_MULTIUSER", nullptr}, {"QUILLBROOK_SHARED", "Yes"},
                 {"QUILLBROOK_SHARED", nullptr},  {"QUILLBROOK_USERID", nullptr},    {"QUILLBROOK_SHARED", "YES "}};
    for (const auto &c : cases)
    {
        PackageDir package;
        shareWithOldCharts(&package);
        package.env.erase(c.name);
        if (c.value != nullptr)
        {
            package.env[c.name] = c.value;
        }
        const std::string name = makeChart(package);
        EXPECT_EQ(name.substr(0, 2), "qb") << c.name;
        EXPECT_EQ(ReadFile(package.gifDir + "0.ref"), name) << c.name;
    }
}

// Hostile environment and forms

TEST(ShellCharacters, InDirectoriesAndUsersAreHarmless)
{
    for (const char *evil : {"a b", "$(touch x)", "`touch x`", ";touch x;", "&touch x&", "|touch x", "'\"", "\\", "\n",
                             ">x", "#", "!", "~", "{a,b}", "\xc3\xa9", "-rf"})
    {
        PackageDir package;
        package.out = package.dir.path() + "out " + evil + "/";
        package.gifDir = package.out + "gifs/";
        std::filesystem::rename(package.dir.path() + "out", package.out);
        package.env["QUILLBROOK_OUT"] = package.out;
        shareWithOldCharts(&package);
        package.env["QUILLBROOK_USERID"] = evil;
        WriteFile(package.gifDir + evil + "_old.gif", "old");
        ASSERT_EQ(package.post(QBCHART_PATH).status, 0) << evil;
        const Names gifs = package.gifs();
        ASSERT_EQ(gifs.size(), 4U) << evil; // three of others, and the new one
        EXPECT_FALSE(FileExists(package.gifDir + evil + "_old.gif")) << evil;
        EXPECT_EQ(ReadFile(package.gifDir + evil + ".ref").substr(0, std::string(evil).size()), evil);
        EXPECT_EQ(ListDir(package.dir.path()).size(), 3U) << evil; // arguments, out and perl: nothing was touched
    }
}

TEST(NamesWithASlash, AreRefusedBeforeAnyFileIsTouched)
{
    for (const char *key : {"nameBase", "setFile"})
    {
        PackageDir package;
        WriteFile(package.gifDir + "old.gif", "old");
        package.settings[key] = "../data";
        package.env["STAND_ALONE"] = "1";
        const ChildResult result = package.post(QBCHART_PATH);
        EXPECT_EQ(result.status, 255);
        EXPECT_EQ(result.out, PlainErrorText("Form Error: invalid name '../data'\n"));
        EXPECT_EQ(package.gifs(""), Names{"old.gif"});
    }
}

TEST(NamesWithASlash, AreRefusedInTheArgumentsOfAWebServer)
{
    PackageDir package;
    WriteFile(package.gifDir + "old.gif", "old");
    package.saveSettings("bars");
    package.env["STAND_ALONE"] = "1";
    package.env["GATEWAY_INTERFACE"] = "CGI/1.1";
    EXPECT_EQ(package.start(QBCHART_PATH, {"data", "../set/bars"}).out,
              PlainErrorText("Form Error: invalid name '../set/bars'\n"));
    EXPECT_EQ(package.start(QBCHART_PATH, {"/data", "bars"}).out, PlainErrorText("Form Error: invalid name '/data'\n"));
    EXPECT_EQ(package.gifs(""), Names{"old.gif"});
    EXPECT_EQ(package.start(QBCHART_PATH, {"data", "bars"}).status, 0);
}

// The package's output directory written so that it has a given length.
static std::string lengthen(std::string path, size_t length)
{
    while (path.size() < length)
    {
        path += path.size() + 1 == length ? "/" : "./";
    }
    return path;
}

TEST(PathsThatAreTooLong, AreRefusedBeforeAnyFileIsTouched)
{
    // The longest path may be that of a GIF: 202 + 5 for "gifs/" + 48 for the name.
    for (const size_t length : {203U, 240U, 251U, 300U})
    {
        PackageDir package;
        WriteFile(package.gifDir + "old.gif", "old");
        package.env["QUILLBROOK_OUT"] = lengthen(package.out, length);
        package.env["STAND_ALONE"] = "1";
        const ChildResult result = package.post(QBCHART_PATH);
        EXPECT_EQ(result.status, 255) << length;
        EXPECT_NE(result.out.find("This path is longer than 255 characters:\n" + package.out), std::string::npos);
        EXPECT_EQ(package.gifs(""), Names{"old.gif"}) << length;
    }
    PackageDir package;
    package.env["QUILLBROOK_OUT"] = lengthen(package.out, 202);
    makeChart(package);
}

TEST(PathsThatAreTooLong, AreFoundInEveryName)
{
    const std::string tooLong(256, 'x');
    for (const char *key : {"nameBase", "setFile"})
    {
        PackageDir package;
        package.settings[key] = tooLong;
        EXPECT_NE(failChart(&package).find("longer than 255"), std::string::npos) << key;
    }
    for (const char *name : {"PERL_HOME", "QUILLBROOK_HOME"})
    {
        PackageDir package;
        WriteFile(package.gifDir + "old.txt", "");
        package.env[name] = tooLong;
        EXPECT_NE(failChart(&package).find("longer than 255"), std::string::npos) << name;
    }
    PackageDir package;
    shareWithOldCharts(&package);
    package.env["QUILLBROOK_USERID"] = tooLong;
    package.env["STAND_ALONE"] = "1";
    const ChildResult result = package.post(QBCHART_PATH);
    EXPECT_NE(result.out.find("longer than 255"), std::string::npos);
    EXPECT_EQ(package.gifs().size(), 3U);
}

// Errors

TEST(ErrorPage, IsCompleteHtml)
{
    PackageDir package;
    package.settings["chartType"] = "<script>alert(1)</script>&";
    const ChildResult result = package.post(QBCHART_PATH);
    EXPECT_EQ(result.status, 255);
    EXPECT_EQ(result.out, HtmlErrorPage("Unknown chart type: &lt;script&gt;alert(1)&lt;/script&gt;&amp;\n"));
    EXPECT_EQ(result.err, "rm: cannot remove '" + package.gifDir + "*.gif': No such file or directory\n");
}

TEST(ErrorPage, IsTextWhenStandingAlone)
{
    PackageDir package;
    package.settings["chartType"] = "<b>";
    EXPECT_EQ(failChart(&package), PlainErrorText("Unknown chart type: <b>\n"));
}

TEST(Errors, OfTheReportComeBeforeThoseOfTheSettings)
{
    PackageDir package;
    package.settings["chartType"] = "none";
    package.settings["reportTitle"] = "Costs";
    EXPECT_EQ(failChart(&package), PlainErrorText("No Report named 'Costs' was referenced in the TOC\n"));
}

TEST(Errors, OfTheSettingsComeBeforeThoseOfTheReportsText)
{
    PackageDir package;
    package.saveReport("data", "Sales", "Only a title");
    package.settings["xAxisTicks"] = "none";
    EXPECT_EQ(failChart(&package), PlainErrorText("Unknown X axis ticks position: none\n"));
    package.settings["xAxisTicks"] = "inside";
    EXPECT_EQ(failChart(&package), PlainErrorText("\nData File corrupted or malformed\nCan't read data series\n"));
}

TEST(Errors, ComeAfterThePurge)
{
    PackageDir package;
    WriteFile(package.gifDir + "old.gif", "old");
    package.settings["chartType"] = "none";
    failChart(&package);
    EXPECT_EQ(package.gifs(), Names{});
}

TEST(Errors, NameTheFirstMissingVariable)
{
    PackageDir package;
    package.env["STAND_ALONE"] = "1";
    const struct
    {
        const char *variable;
        const char *name;
    } cases[] = {
        {"PERL_HOME", "PERL_HOME"}, {"QUILLBROOK_HOME", "Quillbrook_HOME"}, {"QUILLBROOK_OUT", "Quillbrook_OUT"}};
    for (const auto &c : cases) // each is reported before those that are missing already
    {
        package.env.erase(c.variable);
        const ChildResult result = package.post(QBCHART_PATH);
        EXPECT_EQ(result.status, 255);
        EXPECT_EQ(result.out, PlainErrorText(std::string("Environment error:\nMissing ") + c.name +
                                             ".\nYou must run this application through Quillbrook's dispatcher\n"));
    }
}

TEST(Errors, OfTheRequestAreReported)
{
    PackageDir package;
    package.env["STAND_ALONE"] = "1";
    EXPECT_EQ(
        package.start(QBCHART_PATH, {}).out.find("Quillbrook Charting Error\n\nEnvironment error: REQUEST_METHOD"), 0U);
    package.env["REQUEST_METHOD"] = "GET";
    EXPECT_EQ(package.start(QBCHART_PATH, {}).out, PlainErrorText("Form Error: must use the POST method\n"));
    package.env["REQUEST_METHOD"] = "POST";
    EXPECT_EQ(
        package.start(QBCHART_PATH, {}).out.find("Quillbrook Charting Error\n\nEnvironment error: CONTENT_LENGTH"), 0U);
}
