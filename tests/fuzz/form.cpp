// Settings text of any kind: read by the program and by a slow, literal parser, which must agree.

#include "exit_trap.h"
#include "qbchart_state.h"
#include "qbgrform.h"

#include <cctype>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <string>

struct Parsed
{
    bool fError; // a pair without a value that is not the last one
    std::map<std::string, std::string> values;
};

static int digit(char c)
{
    const int low = std::tolower(static_cast<unsigned char>(c));
    return low < 'a' ? low - '0' : low - 'a' + 10;
}

static std::string decode(const std::string &text)
{
    std::string result;
    for (size_t i = 0; i < text.size(); i++)
    {
        const bool fCode = text[i] == '%' && i + 2 < text.size();
        const int code = fCode ? digit(text[i + 1]) * 16 + digit(text[i + 2]) : 0;
        result.push_back(fCode ? static_cast<char>(code) : text[i] == '+' ? ' ' : text[i]);
        i += fCode ? 2 : 0;
    }
    return result.substr(0, result.find('\0'));
}

static Parsed parse(std::string text)
{
    Parsed parsed = {};
    text = text.substr(0, text.find('\0'));
    while (!text.empty())
    {
        const size_t ampersand = text.find('&');
        const bool fLast = ampersand == std::string::npos;
        const std::string pair = text.substr(0, ampersand);
        text = fLast ? "" : text.substr(ampersand + 1);
        const size_t equals = pair.find('=');
        if (equals == std::string::npos)
        {
            parsed.fError = !fLast;
            return parsed;
        }
        std::string value = pair.substr(equals + 1);
        value = fLast ? value.substr(0, value.find('\n')) : value;
        parsed.values[pair.substr(0, equals)] = decode(value);
    }
    return parsed;
}

static void require(bool fTrue)
{
    if (!fTrue)
    {
        std::abort();
    }
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    if (size == 0)
    {
        return 0;
    }
    const Parsed expected = parse(std::string(reinterpret_cast<const char *>(data), size));
    FILE *stream = fmemopen(const_cast<uint8_t *>(data), size, "rb");
    _InitChart();
    const bool fEnded = RunTrapped(
        [&]
        {
            FormToHTab(pSetHTab, stream, static_cast<int64_t>(size));
            require(pSetHTab->count == expected.values.size());
            for (const auto &[name, value] : expected.values)
            {
                require(value == GetFormValue(pSetHTab, name.c_str()));
            }
        });
    require(fEnded != expected.fError);
    std::fclose(stream);
    return 0;
}
