// qbgrform.cpp - reading settings.

#include "qbgrform.h"

#include "qbgrerr.h"
#include "qbgrutil.h"
#include "qbos.h"

#include <cctype>
#include <cstdlib>
#include <cstring>

// The settings text being parsed, owned. It stands here and not in a local variable because an error ends the run in
// the middle of parsing; the next FormToHTab takes it back then.
static char *_pText = nullptr;

// The most settings that a form may have, two for each of five thousand series. Names can be chosen so that all of them
// share a chain of the table, where each new one is compared with all before it.
static constexpr uint32_t kMaxSettings = 10000;

// Input

int32_t GetFormInput(HTab *table)
{
    if (table == nullptr)
    {
        return 0;
    }
    const char *method = OSGetEnv("REQUEST_METHOD");
    if (method == nullptr)
    {
        ExitWithError("Environment error: REQUEST_METHOD not found in the running environment.\n"
                      "If you are running from the command line,\n"
                      "you must include a settings file argument.\n"
                      "If you are running in a cgi environment,\n"
                      "this is a Web Server error.\n"
                      "Contact your system administrator.\n");
    }
    if (stricmp(method, "POST") != 0)
    {
        ExitWithError("Form Error: must use the POST method\n");
    }
    const char *length = OSGetEnv("CONTENT_LENGTH");
    if (length == nullptr)
    {
        ExitWithError("Environment error: CONTENT_LENGTH not found in the running environment.\n"
                      "This is a Web Server error.\n"
                      "Contact your system administrator.\n");
    }
    return FormToHTab(table, stdin, strtoll(length, nullptr, 10));
}

int32_t GetSettings(const char *path, HTab *table)
{
    FILE *file = path != nullptr ? fopen(path, "r") : stdin;
    if (file == nullptr)
    {
        ExitWithError("\nCan't open the file '%s'\n", path);
    }
    fseeko(file, 0, SEEK_END);
    const int64_t length = ftello(file);
    rewind(file);
    const int32_t result = FormToHTab(table, file, length);
    if (path != nullptr)
    {
        fclose(file);
    }
    return result;
}

// Parsing

// Reads the stream into _pText and terminates it after what came.
static void _readText(FILE *stream, int64_t length)
{
    free(_pText);
    // A length that no request can reach is not asked for.
    _pText = length < PTRDIFF_MAX ? static_cast<char *>(malloc(static_cast<size_t>(length) + 1)) : nullptr;
    if (_pText == nullptr)
    {
        ExitWithError("\nOut of memory trying to allocate\n%d bytes for a data buffer in FormToHTash\n",
                      ClampToInt32(length));
    }
    _pText[fread(_pText, 1, static_cast<size_t>(length), stream)] = '\0';
}

static void _setValue(HTab *table, const char *name, char *value)
{
    HItem *item = HInstall(name, table);
    if (table->count > kMaxSettings)
    {
        ExitWithError("Form Error: more than %u settings\n", kMaxSettings);
    }
    if (table->releaseValue != nullptr && item->value != nullptr)
    {
        table->releaseValue(item->value);
    }
    item->value = nullptr; // until the copy is there: nothing may be released twice
    item->value = StrDup(TranslateURL(value));
}

// Puts one pair into the table.
//   fLast    no "&" came after it: the value ends at its first newline, and what is no pair is not an error
static void _parsePair(HTab *table, char *pair, bool fLast)
{
    char *value = strchr(pair, '=');
    if (value == nullptr)
    {
        if (!fLast)
        {
            ExitWithError("Form Error: name without value '%s'\n", pair);
        }
        return;
    }
    *value++ = '\0';
    if (fLast)
    {
        value[strcspn(value, "\n")] = '\0';
    }
    _setValue(table, pair, value);
}

int32_t FormToHTab(HTab *table, FILE *stream, int64_t length)
{
    _readText(stream, length > 0 ? length : 0);
    for (char *pair = _pText; pair != nullptr && *pair != '\0';)
    {
        char *next = strchr(pair, '&');
        if (next != nullptr)
        {
            *next++ = '\0';
        }
        _parsePair(table, pair, next == nullptr);
        pair = next;
    }
    free(_pText);
    _pText = nullptr;
    return 1;
}

// The value of a hexadecimal digit. What is no digit is counted on in the same way, not refused.
static int32_t _digitValue(char c)
{
    const int32_t low = tolower(static_cast<unsigned char>(c));
    return low >= 'a' ? low - 'a' + 10 : low - '0';
}

char *TranslateURL(char *text)
{
    if (text == nullptr)
    {
        return nullptr;
    }
    char *to = text;
    for (const char *from = text; *from != '\0'; from++)
    {
        if (*from == '+')
        {
            *to++ = ' ';
        }
        else if (*from == '%' && from[1] != '\0' && from[2] != '\0')
        {
            *to++ = static_cast<char>(_digitValue(from[1]) * 16 + _digitValue(from[2]));
            from += 2;
        }
        else
        {
            *to++ = *from;
        }
    }
    *to = '\0';
    return text;
}

const char *GetFormValue(const HTab *table, const char *name)
{
    const HItem *item = HLookUp(table, name);
    return item != nullptr ? item->value : "off";
}
