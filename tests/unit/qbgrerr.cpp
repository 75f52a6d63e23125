// The error reporter: both documents byte for byte, the small formatter, and where errors go.

#include "qbgrerr.h"
#include "error_run.h"
#include "qbchart_state.h"
#include "qbgrerr_state.h"
#include "temp_dir.h"

#include <gtest/gtest.h>

#include <cstdarg>
#include <cstdlib>
#include <string>

// The whole of a stream, which is closed.
static std::string readStream(FILE *file)
{
    std::string text;
    rewind(file);
    for (int c = getc(file); c != EOF; c = getc(file))
    {
        text.push_back(static_cast<char>(c));
    }
    fclose(file);
    return text;
}

// What PrintError writes, and behind a "|" what it returns.
static std::string printed(bool fHtml, const char *format, ...)
{
    FILE *file = tmpfile();
    va_list args;
    va_start(args, format);
    const int32_t count = PrintError(file, format, args, fHtml);
    va_end(args);
    return readStream(file) + "|" + std::to_string(count);
}

// The formatter

TEST(PrintError, ConvertsFourKindsOfArguments)
{
    EXPECT_EQ(printed(false, "%d bytes", 1200), "1200 bytes|1");
    EXPECT_EQ(printed(false, "%d %d", INT32_MIN, -1), "-2147483648 -1|2");
    EXPECT_EQ(printed(false, "%u", 4294967295U), "4294967295|1");
    EXPECT_EQ(printed(false, "%f", 1.5), "1.500000|1");
    EXPECT_EQ(printed(false, "'%s' and '%s'", "one", ""), "'one' and ''|2");
}

TEST(PrintError, KnowsNoWidths)
{
    EXPECT_EQ(printed(false, "%5d", 7), "5d|0");
    EXPECT_EQ(printed(false, "%-s", "x"), "-s|0");
    EXPECT_EQ(printed(false, "%5d %d", 7), "5d 7|1"); // the argument was not consumed
}

TEST(PrintError, WritesOtherCharactersBehindAPercentSign)
{
    EXPECT_EQ(printed(false, "100%% %x"), "100% x|0");
    EXPECT_EQ(printed(false, "100%"), "100|0");
    EXPECT_EQ(printed(false, ""), "|0");
}

TEST(PrintError, WritesNothingForANullText)
{
    EXPECT_EQ(printed(false, "'%s'", static_cast<const char *>(nullptr)), "''|1");
}

TEST(PrintError, WritesEntitiesForMarkupInArgumentsOnly)
{
    EXPECT_EQ(printed(true, "<b> & %s", "<script>\"a\" & 'b'</script>"),
              "<b> & &lt;script&gt;\"a\" &amp; 'b'&lt;/script&gt;|1");
    EXPECT_EQ(printed(false, "<b> & %s", "<i>&"), "<b> & <i>&|1");
}

// Where errors go

TEST(ErrorStream, IsStandardErrorAtFirst)
{
    const ChildResult result = RunInChild([] { exit(Error("%d of %s", 3, "four")); });
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, "3 of four");
    EXPECT_EQ(result.out, "");
}

TEST(ErrorStream, CanBeSetAndSetBack)
{
    const ChildResult result = RunInChild(
        []
        {
            printf("%d ", SetErrStream(stdout));
            Error("out <&> ");
            printf("%d", SetErrStream(nullptr));
            Error("err");
        });
    EXPECT_EQ(result.out, "1 out <&> 0");
    EXPECT_EQ(result.err, "err");
}

// The documents

TEST(ExitWithError, WritesAnHtmlPage)
{
    const ChildResult result = RunInChild(
        []
        {
            unsetenv("STAND_ALONE");
            ExitWithError("Form Error: must use the POST method\n");
        });
    EXPECT_EQ(result.status, 255);
    EXPECT_EQ(result.out, HtmlErrorPage("Form Error: must use the POST method\n"));
    EXPECT_EQ(result.err, "");
}

TEST(ExitWithError, KeepsMarkupOutOfThePage)
{
    const ChildResult result = RunInChild(
        []
        {
            unsetenv("STAND_ALONE");
            ExitWithError("Unknown chart type: %s\n", "<img src=x>&");
        });
    EXPECT_EQ(result.out, HtmlErrorPage("Unknown chart type: &lt;img src=x&gt;&amp;\n"));
}

TEST(ExitWithError, WritesPlainTextWhenStandingAlone)
{
    for (const char *value : {"1", "NO", ""})
    {
        const ChildResult result = RunInChild(
            [value]
            {
                setenv("STAND_ALONE", value, 1);
                ExitWithError("Unknown chart type: %s\n", "<img>&");
            });
        EXPECT_EQ(result.status, 255);
        EXPECT_EQ(result.out, PlainErrorText("Unknown chart type: <img>&\n"));
    }
}

TEST(ExitWithError, WritesIntoTheErrorFile)
{
    const TempDir dir;
    const ChildResult result = RunInChild(
        [&dir]
        {
            unsetenv("STAND_ALONE");
            _SetErrStreamName(dir.path().c_str(), "u7");
            ExitWithError("%d\n", 5);
        });
    EXPECT_EQ(result.status, 255);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(ReadFile(dir.path() + "u7.err"), HtmlErrorPage("5\n"));
}

TEST(ExitWithError, WritesToStandardErrorWhenTheErrorFileCannotBeMade)
{
    const ChildResult result = RunInChild(
        []
        {
            unsetenv("STAND_ALONE");
            _SetErrStreamName("/nowhere/at/all/", nullptr);
            ExitWithError("%d\n", 5);
        });
    EXPECT_EQ(result.status, 255);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err, HtmlErrorPage("5\n"));
}

TEST(ExitWithError, ReleasesWhatTheDriverHolds)
{
    const ChildResult result = RunStandAlone(
        []
        {
            _InitChart();
            atexit([] { printf("%d", pSetHTab == nullptr); });
            ExitWithError("x");
        });
    EXPECT_EQ(result.status, 255);
    EXPECT_EQ(result.out, PlainErrorText("x") + "1");
}
