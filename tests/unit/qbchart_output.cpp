// Output files: path lengths, unique names, the serial counter, GIF and reference file, error file.

#include "alloc_fail.h"
#include "error_run.h"
#include "gif_reader.h"
#include "qbchart_state.h"
#include "temp_dir.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <functional>
#include <set>
#include <string>
#include <sys/random.h>
#include <vector>

using Names = std::vector<std::string>;

// The program's own source of random bits stands here, so that a test can take it away.
static bool _fNoRandom = false;

extern "C" ssize_t getrandom(void *buffer, size_t length, unsigned)
{
    FILE *file = _fNoRandom ? nullptr : fopen("/dev/urandom", "rb");
    if (file == nullptr)
    {
        return -1;
    }
    const size_t got = fread(buffer, 1, length, file);
    fclose(file);
    return static_cast<ssize_t>(got);
}

// Paths

TEST(Paths, AreJoinedFromTheirPieces)
{
    char path[kPathSize];
    _MakePath(path, "/out/", "data", ".txt");
    EXPECT_STREQ(path, "/out/data.txt");
    _MakePath(path, "/out/", "gifs/");
    EXPECT_STREQ(path, "/out/gifs/");
}

TEST(Paths, HoldTwoHundredAndFiftyFiveCharacters)
{
    char path[kPathSize];
    const std::string dir(251, 'd');
    _MakePath(path, dir.c_str(), "", ".txt");
    EXPECT_EQ(strlen(path), 255U);
    const ChildResult result = RunStandAlone([&] { _MakePath(path, dir.c_str(), "a", ".txt"); });
    EXPECT_EQ(result.status, 255);
    EXPECT_EQ(result.out, PlainErrorText("This path is longer than 255 characters:\n" + dir + "a.txt\n"));
}

// Whether the output paths of a directory and a user are short enough.
static bool areShort(size_t dirLength, const char *userId)
{
    const std::string dir(dirLength, 'd');
    return RunStandAlone([&] { _CheckOutputPaths(dir.c_str(), userId); }).status == 0;
}

TEST(OutputPaths, LeaveRoomForTheLongestGifName)
{
    EXPECT_TRUE(areShort(255 - 48, nullptr)); // "qb", 42 digits, ".gif"
    EXPECT_FALSE(areShort(255 - 47, nullptr));
    EXPECT_TRUE(areShort(255 - 48 - 3, "u7")); // and "u7_"
    EXPECT_FALSE(areShort(255 - 48 - 2, "u7"));
}

// Names

TEST(TemporaryName, IsMadeOfLettersAndDigits)
{
    char name[kPathSize];
    EXPECT_EQ(_GetTmpFileName(name), name);
    EXPECT_GE(strlen(name), 2U + 8 + 8);
    EXPECT_LE(strlen(name), 2U + 8 + 16 + 8);
    EXPECT_EQ(strspn(name, "0123456789abcdefghijklmnopqrstuvwxyz"), strlen(name));
}

TEST(TemporaryName, IsNewEveryTime)
{
    std::set<std::string> names;
    for (int i = 0; i < 1000; i++)
    {
        char name[kPathSize];
        names.insert(_GetTmpFileName(name));
    }
    EXPECT_EQ(names.size(), 1000U);
}

TEST(TemporaryName, NeedsRandomBits)
{
    const ChildResult result = RunStandAlone(
        []
        {
            char name[kPathSize];
            _fNoRandom = true;
            _GetTmpFileName(name);
        });
    EXPECT_EQ(result.status, 255);
    EXPECT_EQ(result.out, PlainErrorText("Can't create a temporary name for the chart's GIF image\n"));
}

// The serial counter

// The number that follows on a counter file with these bytes, and the bytes then in it.
static std::string nextSerial(const std::string &bytes)
{
    const TempDir dir;
    WriteFile(dir.path() + "n", bytes);
    const uint32_t value = _GetNextSerialNum(dir.path().c_str(), "n");
    const std::string after = ReadFile(dir.path() + "n");
    std::string text = std::to_string(value) + ":";
    for (const char c : after)
    {
        text += " " + std::to_string(static_cast<unsigned char>(c));
    }
    return text;
}

TEST(SerialNumber, IsZeroInANewFile)
{
    const TempDir dir;
    EXPECT_EQ(_GetNextSerialNum(dir.path().c_str(), "n"), 0U);
    EXPECT_EQ(ReadFile(dir.path() + "n"), std::string(4, '\0'));
    EXPECT_EQ(_GetNextSerialNum(dir.path().c_str(), "n"), 1U);
    EXPECT_EQ(_GetNextSerialNum(dir.path().c_str(), "n"), 2U);
}

TEST(SerialNumber, IsKeptMostSignificantByteFirst)
{
    EXPECT_EQ(nextSerial({1, 2, 3, 4}), "16909061: 1 2 3 5"); // 2^24 + 2 * 2^16 + 3 * 2^8 + 5
    EXPECT_EQ(nextSerial(std::string("\0\0\0\xff", 4)), "256: 0 0 1 0");
    EXPECT_EQ(nextSerial("\x7f\xff\xff\xff"), "2147483648: 128 0 0 0");
}

TEST(SerialNumber, WrapsToZero)
{
    EXPECT_EQ(nextSerial("\xff\xff\xff\xff"), "0: 0 0 0 0");
}

TEST(SerialNumber, CountsAShortFileAsZero)
{
    EXPECT_EQ(nextSerial(""), "1: 0 0 0 1");
    EXPECT_EQ(nextSerial("\x05\x05\x05"), "1: 0 0 0 1");
}

TEST(SerialNumber, IsZeroWithoutADirectory)
{
    EXPECT_EQ(_GetNextSerialNum("/nowhere/at/all/", "n"), 0U);
}

// GIF and reference file

// An image of 5 by 4 pixels as the chart's image; taken back at the end.
struct OutputChart
{
    OutputChart()
    {
        InitGraph();
        chartSet = {};
        const Rectangle rect = {0, 0, 5, 4};
        chartSet.image = NewImage(&rect, 256);
        SetPenColor(17);
        FillImage();
    }
    ~OutputChart()
    {
        _KillChartSet(&chartSet);
    }
    OutputChart(const OutputChart &) = delete;
    OutputChart &operator=(const OutputChart &) = delete;
};

TEST(Output, WritesGifReferenceAndCounter)
{
    const TempDir dir;
    const OutputChart chart;
    _OutputGif(&chartData, &chartSet, dir.path().c_str(), nullptr);
    const std::string name = chartSet.gifName;
    EXPECT_EQ(ListDir(dir.path()), (Names{"0.ref", name, "serial.num"}));
    EXPECT_EQ(ReadFile(dir.path() + "0.ref"), name);
    EXPECT_EQ(name.substr(0, 2), "qb");
    EXPECT_EQ(name.substr(name.size() - 5), "0.gif");
    GifPicture picture;
    ASSERT_EQ(ReadGif(dir.path() + name, &picture), "");
    EXPECT_EQ(picture.width, 5);
    EXPECT_EQ(picture.height, 4);
}

TEST(Output, PutsTheUserBeforeEveryName)
{
    const TempDir dir;
    const OutputChart chart;
    _OutputGif(&chartData, &chartSet, dir.path().c_str(), "u7");
    const std::string name = chartSet.gifName;
    EXPECT_EQ(name.substr(0, 5), "u7_qb");
    EXPECT_EQ(ListDir(dir.path()), (Names{"serial.num", "u7.ref", name}));
    EXPECT_EQ(ReadFile(dir.path() + "u7.ref"), name);
}

// Output that must fail in a child: what it says and what it leaves.
static ChildResult failOutput(const TempDir &dir, const std::function<void()> &prepare)
{
    return RunStandAlone(
        [&]
        {
            const OutputChart chart;
            prepare();
            _OutputGif(&chartData, &chartSet, dir.path().c_str(), nullptr);
        });
}

TEST(Output, EndsTheRunWithoutADirectory)
{
    const ChildResult result = RunStandAlone(
        []
        {
            const OutputChart chart;
            _OutputGif(&chartData, &chartSet, "/nowhere/at/all/", nullptr);
        });
    EXPECT_EQ(result.status, 255);
    EXPECT_EQ(result.out, PlainErrorText("Can't create chart's GIF image\n"));
}

TEST(Output, LeavesNoGifWithoutAReference)
{
    const TempDir dir;
    WriteFile(dir.path() + "0.ref/inside", "");
    const ChildResult result = failOutput(dir, [] {});
    EXPECT_EQ(result.status, 255);
    EXPECT_EQ(result.out, PlainErrorText("Can't create chart's reference file\n"));
    EXPECT_EQ(ListDir(dir.path()), (Names{"0.ref", "serial.num"}));
}

TEST(Output, LeavesNoGifThatIsNotWhole)
{
    const TempDir dir;
    for (int n = 1; n <= 2; n++) // the encoder's two tables: it then writes nothing and reports no error
    {
        const ChildResult result = failOutput(dir, [n] { FailAllocation(n); });
        EXPECT_EQ(result.status, 255);
        EXPECT_EQ(result.out, PlainErrorText("Can't create chart's GIF image\n"));
        EXPECT_EQ(ListDir(dir.path()), Names{"serial.num"});
    }
}

// The error file

TEST(ErrorFile, IsNamedByUserOrZero)
{
    EXPECT_STREQ(_SetErrStreamName("/out/", "u7"), "/out/u7.err");
    EXPECT_STREQ(_aErrFilename, "/out/u7.err");
    EXPECT_STREQ(_SetErrStreamName("/out/", nullptr), "/out/0.err");
    _aErrFilename[0] = '\0';
}

TEST(ErrorFile, IsStandardOutputWithoutAName)
{
    _aErrFilename[0] = '\0';
    EXPECT_EQ(OpenErrStream(), stdout);
    EXPECT_EQ(_pErr, nullptr);
}

TEST(ErrorFile, IsOpenedUnderItsName)
{
    const TempDir dir;
    WriteFile(dir.path() + "0.err", "old");
    _SetErrStreamName(dir.path().c_str(), nullptr);
    FILE *file = OpenErrStream();
    ASSERT_NE(file, nullptr);
    EXPECT_EQ(_pErr, file);
    fputs("new", file);
    CleanUp();
    EXPECT_EQ(_pErr, nullptr);
    EXPECT_EQ(ReadFile(dir.path() + "0.err"), "new");
    _aErrFilename[0] = '\0';
}

TEST(ErrorFile, IsNullWhenItCannotBeOpened)
{
    _SetErrStreamName("/nowhere/at/all/", nullptr);
    EXPECT_EQ(OpenErrStream(), nullptr);
    EXPECT_EQ(_pErr, stdout);
    CleanUp(); // does not close standard output
    EXPECT_EQ(_pErr, nullptr);
    EXPECT_EQ(fputs("", stdout) >= 0, true);
    _aErrFilename[0] = '\0';
}
