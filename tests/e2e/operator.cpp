// The program as an operator starts it: base name and settings file as arguments.

#include "error_run.h"
#include "gif_reader.h"
#include "package_dir.h"

#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>
#include <string>
#include <sys/resource.h>
#include <unistd.h>
#include <vector>

using Names = std::vector<std::string>;

static const char cantCreateGif[] = "Can't create chart's GIF image\n";
static const char cantCreateRef[] = "Can't create chart's reference file\n";

// A package whose settings are saved as "bars" and whose errors are plain text.
struct OperatorPackage : PackageDir
{
    OperatorPackage()
    {
        saveSettings("bars");
        env["STAND_ALONE"] = "1";
    }
    ChildResult run(const std::vector<std::string> &args) const
    {
        return start(QBCHART_PATH, args);
    }
};

// Arguments

TEST(TwoArguments, MakeAGif)
{
    const OperatorPackage package;
    const ChildResult result = package.run({"data", "bars"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out, "page\n");
    ASSERT_EQ(package.gifs().size(), 1U);
    GifPicture picture;
    EXPECT_EQ(ReadGif(package.gifDir + package.gifs()[0], &picture), "");
    EXPECT_EQ(package.pageArguments(), (Names{package.pagePath, "data", "bars", package.gifs()[0]}));
}

TEST(TwoArguments, CountMoreThanTheNamesInTheSettings)
{
    OperatorPackage package;
    package.settings["nameBase"] = "other";
    package.settings["setFile"] = "other";
    package.saveSettings("bars");
    EXPECT_EQ(package.run({"data", "bars"}).status, 0);
    EXPECT_EQ(package.pageArguments()[1], "data");
    EXPECT_EQ(package.pageArguments()[2], "bars");
}

TEST(TwoArguments, MayNameFilesInOtherDirectories)
{
    const OperatorPackage package;
    std::filesystem::create_directory(package.out + "more");
    std::filesystem::rename(package.out + "data.txt", package.out + "more/data.txt");
    std::filesystem::rename(package.out + "data.toc", package.out + "more/data.toc");
    EXPECT_EQ(package.run({"more/data", "../set/bars"}).status, 0);
    EXPECT_EQ(package.gifs().size(), 1U);
}

TEST(TwoArguments, NeedASettingsFile)
{
    const OperatorPackage package;
    WriteFile(package.gifDir + "old.gif", "old");
    const ChildResult result = package.run({"data", "none"});
    EXPECT_EQ(result.status, 255);
    EXPECT_EQ(result.out, PlainErrorText("\nCan't open the file '" + package.out + "set/none'\n"));
    EXPECT_EQ(package.gifs(), Names{"old.gif"}); // nothing was purged yet
}

TEST(TwoArguments, NeedAReport)
{
    const OperatorPackage package;
    EXPECT_EQ(package.run({"none", "bars"}).out, PlainErrorText("Cant open file '" + package.out + "none.txt'\n"));
}

TEST(OtherArguments, AreInvalid)
{
    const OperatorPackage package;
    for (const Names &args : {Names{"data"}, Names{"data", "bars", "more"}, Names{"a", "b", "c", "d"}})
    {
        const ChildResult result = package.run(args);
        EXPECT_EQ(result.status, 255);
        EXPECT_EQ(result.out, PlainErrorText("Invalid command line arguments\n"));
    }
}

TEST(OtherArguments, AreReportedAfterAMissingVariable)
{
    OperatorPackage package;
    package.env.erase("PERL_HOME");
    EXPECT_EQ(package.run({"data"}).out.find("Quillbrook Charting Error\n\nEnvironment error:\nMissing PERL_HOME."),
              0U);
}

TEST(LongArguments, AreRefused)
{
    const OperatorPackage package;
    WriteFile(package.gifDir + "old.gif", "old");
    const std::string tooLong(300, 'x');
    EXPECT_NE(package.run({tooLong, "bars"}).out.find("longer than 255"), std::string::npos);
    EXPECT_NE(package.run({"data", tooLong}).out.find("longer than 255"), std::string::npos);
    EXPECT_EQ(package.gifs(), Names{"old.gif"});
}

// The page script

TEST(PageScript, ThatCannotBeStartedIsReportedInOneLine)
{
    OperatorPackage package;
    package.env["PERL_HOME"] = "/nowhere/perl";
    WriteFile(package.gifDir + "old.gif", "old"); // keeps rm quiet
    const ChildResult result = package.run({"data", "bars"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err, "qbchart: can't start the page script '" + package.pagePath +
                              "' with '/nowhere/perl': No such file or directory\n");
    EXPECT_EQ(package.gifs().size(), 1U); // the chart is there all the same
}

TEST(PageScript, GivesTheRunItsExitStatus)
{
    const OperatorPackage package;
    WriteFile(package.perl, "#!/bin/sh\nexit 3\n");
    EXPECT_EQ(package.run({"data", "bars"}).status, 3);
}

// Files that cannot be written

TEST(GifDirectory, ThatIsMissingIsReported)
{
    const OperatorPackage package;
    std::filesystem::remove_all(package.gifDir);
    const ChildResult result = package.run({"data", "bars"});
    EXPECT_EQ(result.status, 255);
    EXPECT_EQ(result.out, PlainErrorText(cantCreateGif));
}

TEST(GifFile, ThatCannotBeWrittenWholeDoesNotStay)
{
    const OperatorPackage package;
    for (const rlim_t limit : {1000U, 2000U, 3000U})
    {
        const ChildResult result =
            package.fork({"data", "bars"}, "",
                         [limit](int, char **argv)
                         {
                             const rlimit size = {limit, limit};
                             setrlimit(RLIMIT_FSIZE, &size);
                             signal(SIGXFSZ, SIG_IGN); // a full file is then an error like a full disk
                             return execv(QBCHART_PATH, argv);
                         });
        EXPECT_EQ(result.status, 255) << limit;
        EXPECT_EQ(result.out, PlainErrorText(cantCreateGif)) << limit;
        EXPECT_EQ(package.gifs(""), Names{"serial.num"}) << limit;
        EXPECT_EQ(package.pageArguments(), Names{}) << limit;
    }
}

TEST(ReferenceFile, ThatCannotBeMadeTakesTheGifWithIt)
{
    const OperatorPackage package;
    std::filesystem::create_directory(package.gifDir + "0.ref");
    const ChildResult result = package.run({"data", "bars"});
    EXPECT_EQ(result.status, 255);
    EXPECT_EQ(result.out, PlainErrorText(cantCreateRef));
    EXPECT_EQ(package.gifs(), Names{});
}

TEST(ReferenceFile, ThatCannotBeWrittenTakesTheGifWithIt)
{
    const OperatorPackage package;
    std::filesystem::create_symlink("/dev/full", package.gifDir + "0.ref");
    const ChildResult result = package.run({"data", "bars"});
    EXPECT_EQ(result.status, 255);
    EXPECT_EQ(result.out, PlainErrorText(cantCreateRef));
    EXPECT_EQ(package.gifs(""), Names{"serial.num"});
}

TEST(SerialCounter, ThatCannotBeKeptIsNoError)
{
    const OperatorPackage package;
    std::filesystem::create_symlink("/dev/full", package.gifDir + "serial.num"); // reads as zeros
    EXPECT_EQ(package.run({"data", "bars"}).status, 0);
    ASSERT_EQ(package.gifs("1.gif").size(), 1U);
}

TEST(SerialCounter, ThatIsADirectoryGivesZero)
{
    const OperatorPackage package;
    std::filesystem::create_directory(package.gifDir + "serial.num");
    EXPECT_EQ(package.run({"data", "bars"}).status, 0);
    ASSERT_EQ(package.gifs("0.gif").size(), 1U);
}

// Charts that cannot be made

TEST(HostileSizes, EndInAnErrorOrAChart)
{
    for (const char *size : {"0", "-1", "-2147483648", "65536", "2147483647", "99999999999999999999"})
    {
        for (const char *key : {"chartW", "chartH"})
        {
            OperatorPackage package;
            package.settings[key] = size;
            package.saveSettings("bars");
            const ChildResult result = package.run({"data", "bars"});
            const bool fSmall = std::string(size).size() == 1 || size[0] == '-'; // grows to what the data need
            EXPECT_EQ(result.status, fSmall ? 0 : 255) << key << " " << size;
            EXPECT_EQ(package.gifs().size(), fSmall ? 1U : 0U) << key << " " << size;
        }
    }
}

TEST(NoSeries, IsNotEnoughData)
{
    OperatorPackage package;
    for (const char *key : {"chartSeries1", "chartSeries2", "chartSeries3"})
    {
        package.settings.erase(key);
    }
    package.saveSettings("bars");
    EXPECT_EQ(package.run({"data", "bars"}).out, PlainErrorText("Not enough data to generate chart..."));
    package.settings["chartType"] = "pie";
    package.saveSettings("bars");
    EXPECT_EQ(package.run({"data", "bars"}).status, 0);
    EXPECT_EQ(package.gifs().size(), 1U);
}

// Output that nobody takes

TEST(StandardOutput, ThatIsFullLeavesTheExitStatus)
{
    const OperatorPackage package;
    const ChildResult result = package.start("/bin/sh", {"-c", R"("$0" one >/dev/full; echo $?)", QBCHART_PATH});
    EXPECT_EQ(result.out, "255\n");
}

TEST(StandardOutput, ThatIsAClosedPipeEndsTheErrorTextOnly)
{
    const OperatorPackage package;
    const std::string closed = R"({ sleep 0.2; "$0" one; echo $? >&2; } | :)";
    EXPECT_EQ(package.start("/bin/sh", {"-c", closed, QBCHART_PATH}).err, "141\n"); // 128 + SIGPIPE
}

TEST(StandardOutput, ThatIsAClosedPipeLeavesTheChart)
{
    const OperatorPackage package;
    const std::string closed = R"({ sleep 0.2; "$0" data bars; } | :)";
    package.start("/bin/sh", {"-c", closed, QBCHART_PATH});
    ASSERT_EQ(package.gifs().size(), 1U);
    GifPicture picture;
    EXPECT_EQ(ReadGif(package.gifDir + package.gifs()[0], &picture), "");
    EXPECT_EQ(package.pageArguments().back(), package.gifs()[0]);
}
