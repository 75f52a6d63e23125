// The operating-system layer: environment block, removal commands, permissions, mail, other programs, small readers.

#include "qbos.h"
#include "alloc_fail.h"
#include "child_run.h"
#include "qbos_state.h"
#include "temp_dir.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

using Names = std::vector<std::string>;

// The removal command for a directory and a pattern; empty when it is refused.
static std::string removeCommand(const char *dir, const char *pattern)
{
    char command[kRemoveCommandSize];
    return _MakeRemoveCommand(command, dir, pattern) == 1 ? command : "";
}

// The private block

TEST(SetEnv, NeedsABlock)
{
    EXPECT_EQ(OSSetEnv("name", "value"), 0);
}

TEST(SetEnv, PacksEntriesOneAfterTheOther)
{
    ASSERT_NE(_InitEnv(), nullptr);
    EXPECT_EQ(OSSetEnv("A", "b"), 4);    // A=b and its terminator
    EXPECT_EQ(OSSetEnv("QB_C", ""), 10); // 4 more characters, "=" and the terminator
    EXPECT_EQ(memcmp(_pEnv, "A=b\0QB_C=\0", 10), 0);
    EXPECT_EQ(OSGetEnv("QB_C"), nullptr); // the process environment does not know it
    _KillEnv();
    EXPECT_EQ(_pEnv, nullptr);
}

TEST(SetEnv, KeepsTheLastByteOfTheBlockFree)
{
    ASSERT_NE(_InitEnv(), nullptr);
    EXPECT_EQ(OSSetEnv("A", std::string(2045, 'x').c_str()), 0); // 1 + 2045 + 2 = 2048
    EXPECT_EQ(_envSize, 0);
    EXPECT_EQ(OSSetEnv("A", std::string(2044, 'x').c_str()), 2047);
    EXPECT_EQ(OSSetEnv("", ""), 0);
    _KillEnv();
}

TEST(SetEnv, HasNoBlockWithoutMemory)
{
    FailAllocation(1);
    EXPECT_EQ(_InitEnv(), nullptr);
    EXPECT_TRUE(AllocationFailed());
    EXPECT_EQ(OSSetEnv("A", "b"), 0);
    _KillEnv();
}

TEST(GetEnv, ReadsTheProcessEnvironment)
{
    setenv("QB_TEST", "here", 1);
    EXPECT_STREQ(OSGetEnv("QB_TEST"), "here");
    unsetenv("QB_TEST");
    EXPECT_EQ(OSGetEnv("QB_TEST"), nullptr);
}

// Removal

TEST(RemoveCommand, LeavesPathsAndPatternsAsTheyAre)
{
    EXPECT_EQ(removeCommand("/srv/out-1/gifs_b.d/", "*.gif"), "rm /srv/out-1/gifs_b.d/*.gif");
    EXPECT_EQ(removeCommand("/srv/gifs", "u7_*.gif"), "rm /srv/gifs/u7_*.gif");
    EXPECT_EQ(removeCommand("../Gifs", "[a-z]?"), "rm ../Gifs/[a-z]?");
}

TEST(RemoveCommand, DropsOneTrailingSlash)
{
    EXPECT_EQ(removeCommand("/a/b/", "*"), "rm /a/b/*");
    EXPECT_EQ(removeCommand("/a/b//", "*"), "rm /a/b//*");
    EXPECT_EQ(removeCommand("/", "*.gif"), "rm /*.gif");
}

TEST(RemoveCommand, QuotesWhatTheShellCouldTakeForMore)
{
    EXPECT_EQ(removeCommand("/o $(x)/", "*.gif"), "rm /o' $('x')'/*.gif");
    EXPECT_EQ(removeCommand("/a;b", "`c`*"), "rm /a';'b/'`'c'`'*");
    EXPECT_EQ(removeCommand("/it's", "*"), "rm /it\\'s/*");
    EXPECT_EQ(removeCommand("/a\nb\\c", "*"), "rm /a'\n'b'\\'c/*");
    EXPECT_EQ(removeCommand("~", "{a,b}!"), "rm '~'/'{'a','b'}!'");
    EXPECT_EQ(removeCommand("/caf\xc3\xa9", "*"), "rm /caf'\xc3\xa9'/*"); // the two bytes of one character together
    EXPECT_EQ(removeCommand("/$'&", "*"), "rm /'$'\\''&'/*");
}

TEST(RemoveCommand, KeepsADirectoryFromLookingLikeAnOption)
{
    EXPECT_EQ(removeCommand("-rf", "*"), "rm ./-rf/*");
}

TEST(RemoveCommand, RefusesNothingAndTooMuch)
{
    const std::string longest(255, 'a');
    const std::string tooLong(256, 'a');
    EXPECT_EQ(removeCommand(nullptr, "*"), "");
    EXPECT_EQ(removeCommand("/a", nullptr), "");
    EXPECT_EQ(removeCommand("", "*"), "");
    EXPECT_EQ(removeCommand("/a", ""), "");
    EXPECT_EQ(removeCommand(tooLong.c_str(), "*"), "");
    EXPECT_EQ(removeCommand("/a", tooLong.c_str()), "");
    EXPECT_EQ(removeCommand(longest.c_str(), longest.c_str()), "rm " + longest + "/" + longest);
}

TEST(RemoveCommand, HasRoomForTheLongestQuoting)
{
    // Each "$a" becomes "'$'a", the closing "$" becomes "'$'": 127 * 4 + 3 = 511 characters of 255.
    std::string mixed;
    std::string quoted;
    for (int i = 0; i < 127; i++)
    {
        mixed += "$a";
        quoted += "'$'a";
    }
    mixed += "$";
    quoted += "'$'";
    EXPECT_EQ(removeCommand(mixed.c_str(), mixed.c_str()), "rm " + quoted + "/" + quoted);
}

TEST(RemoveMatch, RemovesOnlyWhatMatches)
{
    const TempDir dir;
    for (const char *name : {"a.gif", "b.gif", "b.ref", "u7_c.gif"})
    {
        WriteFile(dir.path() + name, "");
    }
    EXPECT_EQ(OSRemoveMatch(dir.path().c_str(), "u7_*.gif"), 0);
    EXPECT_EQ(ListDir(dir.path()), (Names{"a.gif", "b.gif", "b.ref"}));
    EXPECT_EQ(OSRemoveMatch(dir.path().c_str(), "*.gif"), 0);
    EXPECT_EQ(ListDir(dir.path()), (Names{"b.ref"}));
    EXPECT_EQ(OSRemoveAll(dir.path().c_str()), 0);
    EXPECT_EQ(ListDir(dir.path()), Names{});
}

TEST(RemoveMatch, ReturnsTheStatusWhenNothingMatches)
{
    const TempDir dir;
    const ChildResult result =
        RunInChild([&dir] { exit(OSRemoveMatch(dir.path().c_str(), "*.gif") == 1 << 8 ? 7 : 8); });
    EXPECT_EQ(result.status, 7); // rm ended with 1, which a wait status has in its second byte
    EXPECT_NE(result.err, "");
}

TEST(RemoveMatch, RefusesBadArguments)
{
    EXPECT_EQ(OSRemoveMatch(nullptr, "*"), -1);
    EXPECT_EQ(OSRemoveMatch("/a", nullptr), -1);
    EXPECT_EQ(OSRemoveAll(nullptr), -1);
    EXPECT_EQ(OSRemoveAll(std::string(256, 'a').c_str()), -1);
}

TEST(RemoveMatch, FindsADirectoryWithAnyBytesInItsName)
{
    const TempDir dir;
    std::string name;
    for (int c = 1; c < 256; c++)
    {
        if (strchr("/*?[]", c) == nullptr)
        {
            name.push_back(static_cast<char>(c));
        }
        if (name.size() == 25 || c == 255)
        {
            const std::string inner = dir.path() + name + "/";
            WriteFile(inner + "a.gif", "");
            EXPECT_EQ(OSRemoveMatch(inner.c_str(), "*.gif"), 0) << c;
            EXPECT_EQ(ListDir(inner), Names{}) << c;
            name.clear();
        }
    }
}

// Files

TEST(ChangeMod, SetsTheBitsOfItsLetters)
{
    const TempDir dir;
    const std::string path = dir.path() + "f";
    WriteFile(path, "");
    const struct
    {
        const char *text;
        mode_t mode;
    } cases[] = {{"rw", 0666}, {"", 0}, {"x", 0111}, {"wxr", 0777}, {"r", 0444}, {"w", 0222}, {"abc", 0}};
    for (const auto &c : cases)
    {
        EXPECT_EQ(OSChangeMod(path.c_str(), c.text), 0);
        struct stat info = {};
        ASSERT_EQ(stat(path.c_str(), &info), 0);
        EXPECT_EQ(info.st_mode & 07777U, c.mode) << c.text;
    }
}

TEST(ChangeMod, RefusesBadArguments)
{
    const TempDir dir;
    EXPECT_EQ(OSChangeMod(dir.path().c_str(), nullptr), -1);
    EXPECT_EQ(OSChangeMod((dir.path() + "none").c_str(), "r"), -1);
    EXPECT_EQ(OSChangeMod((dir.path() + std::string(256, '/')).c_str(), "r"), -1);
}

TEST(Files, AreRenamedAndRemoved)
{
    const TempDir dir;
    WriteFile(dir.path() + "a", "text");
    EXPECT_EQ(OSRenameFile((dir.path() + "a").c_str(), (dir.path() + "b").c_str()), 0);
    EXPECT_EQ(ReadFile(dir.path() + "b"), "text");
    EXPECT_EQ(OSRemoveFile((dir.path() + "b").c_str()), 0);
    EXPECT_EQ(ListDir(dir.path()), Names{});
    EXPECT_NE(OSRemoveFile((dir.path() + "b").c_str()), 0);
}

TEST(CorrectPath, ChangesNothingHere)
{
    char path[] = "a/b\\c";
    EXPECT_EQ(OSCorrectPath(path), path);
    EXPECT_STREQ(path, "a/b\\c");
}

// Mail

// A mailer that keeps its arguments and its input in two files.
static std::string makeMailer(const TempDir &dir)
{
    std::string path = dir.path() + "mailer";
    WriteFile(path, "#!/bin/sh\necho \"$@\" >" + dir.path() + "args\ncat >" + dir.path() + "mail\n");
    chmod(path.c_str(), 0755);
    return path;
}

TEST(SendEmail, WritesHeadersAndBodyToTheMailer)
{
    const TempDir dir;
    const std::string mailer = makeMailer(dir);
    EXPECT_EQ(OSSendEmail(mailer.c_str(), "a@x", "b@x", "c@x", "Hello", "Text"), 1);
    EXPECT_EQ(ReadFile(dir.path() + "args"), "-t\n");
    EXPECT_EQ(ReadFile(dir.path() + "mail"), "To: a@x\nCC: b@x\nBCC: c@x\nSubject: Hello\n\nText\n");
}

TEST(SendEmail, LeavesOutWhatIsNotGiven)
{
    const TempDir dir;
    const std::string mailer = makeMailer(dir);
    EXPECT_EQ(OSSendEmail(mailer.c_str(), "a@x", nullptr, nullptr, nullptr, nullptr), 1);
    EXPECT_EQ(ReadFile(dir.path() + "mail"), "To: a@x\nSubject: \n\n\n");
}

TEST(SendEmail, SendsNothingWithoutAReceiver)
{
    const TempDir dir;
    EXPECT_EQ(OSSendEmail(makeMailer(dir).c_str(), nullptr, "b@x", nullptr, "s", "b"), 0);
    EXPECT_FALSE(FileExists(dir.path() + "mail"));
}

TEST(SendEmail, RefusesACommandThatIsTooLong)
{
    // " -t" makes 253 characters 256; 252 would fit.
    EXPECT_EQ(OSSendEmail(std::string(253, '/').c_str(), "a@x", nullptr, nullptr, "s", "b"), 0);
}

TEST(SendEmail, FailsWhenNoPipeCanBeOpened)
{
    const ChildResult result = RunInChild(
        []
        {
            for (int fd = 3; fd < 1024; fd++)
            {
                close(fd);
            }
            while (dup(0) >= 0)
            {
            }
            _exit(OSSendEmail("true", "a@x", nullptr, nullptr, "s", "b") == 0 ? 7 : 8);
        });
    EXPECT_EQ(result.status, 7);
}

TEST(Pipes, CloseWithOneWhateverTheCommandDid)
{
    FILE *pipe = OSPipeOpen("exit 3", "r");
    ASSERT_NE(pipe, nullptr);
    EXPECT_EQ(OSPipeClose(pipe), 1);
}

// Other programs

TEST(Execute, ReplacesTheProcessAfterWritingItsOutput)
{
    const ChildResult result = RunInChild(
        []
        {
            printf("before ");
            OSExecute("/bin/echo", "one", "two words", static_cast<const char *>(nullptr));
            printf("never");
        });
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out, "before one two words\n");
}

TEST(Execute, ReturnsWhenThereIsNoSuchProgram)
{
    const ChildResult result =
        RunInChild([] { exit(OSExecute("/nowhere/at/all", "one", static_cast<const char *>(nullptr)) == -1 ? 7 : 8); });
    EXPECT_EQ(result.status, 7);
}

TEST(Execute, PassesEighteenArgumentsAtMost)
{
    const ChildResult result = RunInChild(
        []
        {
            OSExecute("/bin/echo", "1", "2", "3", "4", "5", "6", "7", "8", "9", "10", "11", "12", "13", "14", "15",
                      "16", "17", "18", "19", "20", static_cast<const char *>(nullptr));
        });
    EXPECT_EQ(result.out, "1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16 17 18\n");
}

TEST(SaveProcessID, ReturnsAndWritesTheId)
{
    FILE *file = tmpfile();
    ASSERT_NE(file, nullptr);
    EXPECT_EQ(OSSaveProcessID(file), getpid());
    EXPECT_EQ(OSSaveProcessID(nullptr), getpid());
    rewind(file);
    char text[32] = "";
    ASSERT_NE(fgets(text, sizeof text, file), nullptr);
    EXPECT_EQ(text, std::to_string(getpid()));
    fclose(file);
}

// Small readers

TEST(HexToUL, ReadsAtMostEightDigits)
{
    EXPECT_EQ(OSHexToUL(" 0x1A"), 26U);
    EXPECT_EQ(OSHexToUL("123456789"), 0x12345678U);
    EXPECT_EQ(OSHexToUL("0XffFFffFF0"), 0xffffffffU);
    EXPECT_EQ(OSHexToUL("\t\n 0ab"), 0xabU);
    EXPECT_EQ(OSHexToUL("12g4"), 0x12U);
}

TEST(HexToUL, IsZeroForWhatIsNoNumber)
{
    EXPECT_EQ(OSHexToUL(nullptr), 0U);
    EXPECT_EQ(OSHexToUL(""), 0U);
    EXPECT_EQ(OSHexToUL("g1"), 0U);
    EXPECT_EQ(OSHexToUL("0x"), 0U);
    EXPECT_EQ(OSHexToUL("-1"), 0U);
}

TEST(DiffTime, IsNeverNegative)
{
    EXPECT_EQ(OSDiffTime(5, 8), 3.0);
    EXPECT_EQ(OSDiffTime(8, 5), 3.0);
    EXPECT_EQ(OSDiffTime(8, 8), 0.0);
}

TEST(Strtoup, WritesNoTerminator)
{
    char dest[] = "......";
    EXPECT_EQ(_Strtoup(dest, "aB1\xe9"), dest);
    EXPECT_STREQ(dest, "AB1\xe9..");
}

TEST(Layer, BeginsAndEndsWithoutATrace)
{
    OSInit();
    OSCleanUp();
    EXPECT_EQ(_pEnv, nullptr);
}
