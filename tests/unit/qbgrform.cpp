// Settings input: decoding, pairs, forms, settings files, and every refusal.

#include "qbgrform.h"
#include "alloc_fail.h"
#include "error_run.h"
#include "qbgrutil.h"
#include "temp_dir.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <string>
#include <unistd.h>

// Huge requests shall fail under the address sanitizer as they do without it.
extern "C" const char *__asan_default_options()
{
    return "allocator_may_return_null=1";
}

// The text as a stream that is rewound.
static FILE *openText(const std::string &text)
{
    FILE *file = tmpfile();
    fwrite(text.data(), 1, text.size(), file);
    rewind(file);
    return file;
}

static void releaseValue(char *value)
{
    free(value);
}

// A table of settings, which owns its values.
class Settings
{
public:
    explicit Settings(const std::string &text) : Settings(text, static_cast<int64_t>(text.size()))
    {
    }
    Settings(const std::string &text, int64_t length)
    {
        table_->releaseValue = releaseValue;
        FILE *file = openText(text);
        result_ = FormToHTab(table_, file, length);
        fclose(file);
    }
    ~Settings()
    {
        KillHTab(table_);
    }
    Settings(const Settings &) = delete;
    Settings &operator=(const Settings &) = delete;

    std::string operator[](const char *name) const
    {
        return GetFormValue(table_, name);
    }
    uint32_t count() const
    {
        return table_->count;
    }
    int32_t result() const
    {
        return result_;
    }

private:
    HTab *table_ = NewHTab(29);
    int32_t result_;
};

// Decoding

static std::string decoded(std::string text)
{
    char *data = text.data();
    EXPECT_EQ(TranslateURL(data), data);
    return data;
}

TEST(Decoding, TurnsPlusIntoASpace)
{
    EXPECT_EQ(decoded("a+b++"), "a b  ");
}

TEST(Decoding, TurnsTwoDigitsIntoAByte)
{
    EXPECT_EQ(decoded("%41%4a%4A"), "AJJ");
    EXPECT_EQ(decoded("50%25+off"), "50% off");
    EXPECT_EQ(decoded("%C3%a9"), "\xc3\xa9");
    EXPECT_EQ(decoded("%ff"), "\xff");
    EXPECT_EQ(decoded("%2B%26%3d"), "+&=");
}

TEST(Decoding, EndsTheTextAtAZeroByte)
{
    EXPECT_EQ(decoded("a%00b"), "a");
}

TEST(Decoding, LeavesAPercentSignWithoutTwoCharactersBehindIt)
{
    EXPECT_EQ(decoded("%"), "%");
    EXPECT_EQ(decoded("50%"), "50%");
    EXPECT_EQ(decoded("50%4"), "50%4");
    EXPECT_EQ(decoded("%41%4"), "A%4");
    EXPECT_EQ(decoded("%4+"), std::string(1, static_cast<char>(4 * 16 + '+' - '0'))); // two characters: decoded
}

TEST(Decoding, CountsOnBeyondTheDigits)
{
    EXPECT_EQ(decoded("%g0"), std::string(""));                                       // (16 * 16 + 0) mod 256 = 0
    EXPECT_EQ(decoded("%4g"), "P");                                                   // 64 + 16 = 80
    EXPECT_EQ(decoded("%z1"), "1");                                                   // (35 * 16 + 1) mod 256 = 49
    EXPECT_EQ(decoded("%%%"), std::string(1, static_cast<char>(256 - 11 * 16 - 11))); // "%" is 37, 11 below "0"
}

TEST(Decoding, ReturnsNullForNull)
{
    EXPECT_EQ(TranslateURL(nullptr), nullptr);
}

// Pairs

TEST(Pairs, AreStoredByName)
{
    const Settings settings("chartType=bar&chartW=400");
    EXPECT_EQ(settings.result(), 1);
    EXPECT_EQ(settings["chartType"], "bar");
    EXPECT_EQ(settings["chartW"], "400");
    EXPECT_EQ(settings.count(), 2U);
}

TEST(Pairs, ThatWereNeverGivenReadAsOff)
{
    EXPECT_EQ(Settings("a=1")["b"], "off");
    EXPECT_EQ(Settings("")["a"], "off");
}

TEST(Pairs, MayHaveAnEmptyValue)
{
    const Settings settings("a=&b=x&c=");
    EXPECT_EQ(settings["a"], "");
    EXPECT_EQ(settings["b"], "x");
    EXPECT_EQ(settings["c"], "");
}

TEST(Pairs, MayHaveAnEmptyName)
{
    EXPECT_EQ(Settings("=1&b=2")[""], "1");
}

TEST(Pairs, SplitAtTheirFirstEqualsSign)
{
    EXPECT_EQ(Settings("a=b=c")["a"], "b=c");
}

TEST(Pairs, EndAtANewlineInTheLastOneOnly)
{
    const Settings settings("a=1\n2&b=2\nc=3");
    EXPECT_EQ(settings["a"], "1\n2");
    EXPECT_EQ(settings["b"], "2");
    EXPECT_EQ(settings.count(), 2U);
    EXPECT_EQ(Settings("b=\n2")["b"], "");
}

TEST(Pairs, MayEndInAnAmpersand)
{
    const Settings settings("a=1&");
    EXPECT_EQ(settings["a"], "1");
    EXPECT_EQ(settings.count(), 1U);
}

TEST(Pairs, WithoutAValueAreDroppedAtTheEnd)
{
    const Settings settings("a=1&b");
    EXPECT_EQ(settings["a"], "1");
    EXPECT_EQ(settings["b"], "off");
    EXPECT_EQ(Settings("b").count(), 0U);
    EXPECT_EQ(Settings("\n").count(), 0U);
}

TEST(Pairs, WithoutAValueEndTheRunElsewhere)
{
    ChildResult result = RunStandAlone([] { const Settings settings("a&b=1"); });
    EXPECT_EQ(result.status, 255);
    EXPECT_EQ(result.out, PlainErrorText("Form Error: name without value 'a'\n"));
    result = RunStandAlone([] { const Settings settings("a=1&&b=2"); });
    EXPECT_EQ(result.out, PlainErrorText("Form Error: name without value ''\n"));
    result = RunStandAlone([] { const Settings settings("x%3D1&"); });
    EXPECT_EQ(result.out, PlainErrorText("Form Error: name without value 'x%3D1'\n"));
}

// So many settings with different names, and each twice.
static std::string manySettings(int32_t n)
{
    std::string text;
    for (int32_t i = 0; i < 2 * n; i++)
    {
        text += "n" + std::to_string(i % n) + "=1&";
    }
    return text;
}

TEST(Pairs, OfMoreThanTenThousandNamesEndTheRun)
{
    EXPECT_EQ(Settings(manySettings(10000)).count(), 10000U);
    const ChildResult result = RunStandAlone([] { const Settings settings(manySettings(10001)); });
    EXPECT_EQ(result.status, 255);
    EXPECT_EQ(result.out, PlainErrorText("Form Error: more than 10000 settings\n"));
}

TEST(Pairs, KeepTheLastValueOfAName)
{
    const Settings settings("a=1&a=2&a=3");
    EXPECT_EQ(settings["a"], "3");
    EXPECT_EQ(settings.count(), 1U);
}

TEST(Pairs, HaveDecodedValuesAndPlainNames)
{
    const Settings settings("a%41+=b%41+");
    EXPECT_EQ(settings["a%41+"], "bA ");
    EXPECT_EQ(settings["aA "], "off");
}

TEST(Pairs, AreReadUpToTheLength)
{
    EXPECT_EQ(Settings("a=1234", 4)["a"], "12");
    EXPECT_EQ(Settings("a=1234", 0).count(), 0U);
    EXPECT_EQ(Settings("a=1234", -7).count(), 0U);
}

TEST(Pairs, AreReadAsFarAsTheyCame)
{
    EXPECT_EQ(Settings("a=1&b=2", 1000000)["b"], "2");
}

TEST(Pairs, CountTheirCopiesOnly)
{
    memUsed = 0;
    const Settings settings("ab=cde");
    EXPECT_EQ(memUsed, 16U + 29 * 4 + 3 + 4); // table, "ab", "cde"; not the text
}

TEST(Pairs, LeaveOldValuesAloneInATableThatDoesNotOwnThem)
{
    HTab *table = NewHTab(29);
    char old[] = "old";
    HInstall("a", table)->value = old;
    FILE *file = openText("a=2");
    FormToHTab(table, file, 3);
    fclose(file);
    HItem *item = HLookUp(table, "a");
    EXPECT_STREQ(old, "old");
    EXPECT_STREQ(item->value, "2");
    EXPECT_EQ(item->uses, 2U);
    free(item->value);
    KillHTab(table);
}

TEST(Pairs, EndTheRunWithoutMemoryForTheText)
{
    ChildResult result = RunStandAlone(
        []
        {
            static HTab *table = NewHTab(29);
            FILE *file = openText("a=1");
            FailAllocation(1);
            FormToHTab(table, file, 3);
        });
    EXPECT_EQ(result.status, 255);
    EXPECT_EQ(result.out,
              PlainErrorText("\nOut of memory trying to allocate\n3 bytes for a data buffer in FormToHTash\n"));
    for (const int64_t length : {INT64_MAX, INT64_MAX - 1, INT64_MAX - 100})
    {
        result = RunStandAlone([length] { const Settings settings("a=1", length); });
        EXPECT_EQ(result.status, 255);
        EXPECT_EQ(
            result.out,
            PlainErrorText("\nOut of memory trying to allocate\n2147483647 bytes for a data buffer in FormToHTash\n"));
    }
}

TEST(Pairs, EndTheRunWithoutMemoryForACopy)
{
    // After the text come the item, the name and the value.
    const char *const messages[] = {"\nOut of memory trying to allocate\n16 bytes in for a hash tab. item in NewHItem",
                                    "\nOut of memory trying to allocate\n2 bytes\nin StrDup for the name a",
                                    "\nOut of memory trying to allocate\n4 bytes\nin StrDup for the name x y"};
    for (int i = 0; i < 3; i++)
    {
        const ChildResult result = RunStandAlone(
            [i]
            {
                static HTab *table = NewHTab(29);
                FILE *file = openText("a=x+y");
                FailAllocation(2 + i);
                FormToHTab(table, file, 5);
            });
        EXPECT_EQ(result.status, 255);
        EXPECT_EQ(result.out, PlainErrorText(messages[i]));
    }
}

// Forms

// Reads a form in a child and prints the value of "a".
static ChildResult runForm(const char *method, const char *length, const std::string &body)
{
    return RunStandAlone(
        [&]
        {
            method != nullptr ? setenv("REQUEST_METHOD", method, 1) : unsetenv("REQUEST_METHOD");
            length != nullptr ? setenv("CONTENT_LENGTH", length, 1) : unsetenv("CONTENT_LENGTH");
            FILE *input = openText(body);
            dup2(fileno(input), STDIN_FILENO);
            fclose(input);
            static HTab *table = NewHTab(29);
            table->releaseValue = releaseValue;
            const int32_t result = GetFormInput(table);
            printf("%d %s", result, GetFormValue(table, "a"));
        });
}

TEST(Form, IsReadFromStandardInput)
{
    EXPECT_EQ(runForm("POST", "3", "a=1").out, "1 1");
    EXPECT_EQ(runForm("post", "3", "a=1").out, "1 1");
    EXPECT_EQ(runForm("pOsT", "3", "a=12345").out, "1 1");
}

TEST(Form, HasALengthThatMayBeWrong)
{
    EXPECT_EQ(runForm("POST", "300", "a=1").out, "1 1");
    EXPECT_EQ(runForm("POST", "-3", "a=1").out, "1 off");
    EXPECT_EQ(runForm("POST", "many", "a=1").out, "1 off");
    EXPECT_EQ(runForm("POST", "", "a=1").out, "1 off");
    EXPECT_EQ(runForm("POST", "0", "a=1").out, "1 off");
    EXPECT_EQ(runForm("POST", "3 bytes", "a=1").out, "1 1");
}

TEST(Form, NeedsATable)
{
    EXPECT_EQ(GetFormInput(nullptr), 0);
}

TEST(Form, NeedsTheMethod)
{
    const ChildResult result = runForm(nullptr, "3", "a=1");
    EXPECT_EQ(result.status, 255);
    EXPECT_EQ(result.out,
              PlainErrorText("Environment error: REQUEST_METHOD not found in the running environment.\n"
                             "If you are running from the command line,\nyou must include a settings file argument.\n"
                             "If you are running in a cgi environment,\nthis is a Web Server error.\n"
                             "Contact your system administrator.\n"));
}

TEST(Form, NeedsTheMethodToBePost)
{
    for (const char *method : {"GET", "", "POSTS", "POS"})
    {
        const ChildResult result = runForm(method, "3", "a=1");
        EXPECT_EQ(result.status, 255) << method;
        EXPECT_EQ(result.out, PlainErrorText("Form Error: must use the POST method\n")) << method;
    }
}

TEST(Form, NeedsTheLength)
{
    const ChildResult result = runForm("POST", nullptr, "a=1");
    EXPECT_EQ(result.status, 255);
    EXPECT_EQ(result.out, PlainErrorText("Environment error: CONTENT_LENGTH not found in the running environment.\n"
                                         "This is a Web Server error.\nContact your system administrator.\n"));
}

// Settings files

TEST(SettingsFile, IsReadWhole)
{
    const TempDir dir;
    WriteFile(dir.path() + "set", "a=1&b=2\n");
    HTab *table = NewHTab(29);
    table->releaseValue = releaseValue;
    EXPECT_EQ(GetSettings((dir.path() + "set").c_str(), table), 1);
    EXPECT_STREQ(GetFormValue(table, "a"), "1");
    EXPECT_STREQ(GetFormValue(table, "b"), "2");
    KillHTab(table);
}

TEST(SettingsFile, IsStandardInputForNull)
{
    const ChildResult result = RunStandAlone(
        []
        {
            FILE *input = openText("a=1&b=2\n");
            dup2(fileno(input), STDIN_FILENO);
            fclose(input);
            static HTab *table = NewHTab(29);
            table->releaseValue = releaseValue;
            const int32_t got = GetSettings(nullptr, table);
            printf("%d %s %d", got, GetFormValue(table, "b"), ferror(stdin));
            KillHTab(table);
            table = nullptr;
        });
    EXPECT_EQ(result.out, "1 2 0");
}

TEST(SettingsFile, ThatIsMissingEndsTheRun)
{
    const ChildResult result = RunStandAlone(
        []
        {
            static HTab *table = NewHTab(29);
            GetSettings("/nowhere/at/all", table);
        });
    EXPECT_EQ(result.status, 255);
    EXPECT_EQ(result.out, PlainErrorText("\nCan't open the file '/nowhere/at/all'\n"));
}
