// qbgrutil.cpp - small helpers shared by the driver, the form reader and the chart engine.

#include "qbgrutil.h"

#include "qbgrerr.h"

#include <cctype>
#include <cmath>
#include <cstdlib>
#include <cstring>

uint32_t memUsed = 0;

// Texts and numbers

char *StrDup(const char *text)
{
    if (text == nullptr)
    {
        return nullptr;
    }
    const size_t bytes = strlen(text) + 1;
    char *copy = static_cast<char *>(malloc(bytes));
    if (copy == nullptr)
    {
        ExitWithError("\nOut of memory trying to allocate\n%d bytes\nin StrDup for the name %s",
                      ClampToInt32(static_cast<int64_t>(bytes)), text);
    }
    memcpy(copy, text, bytes);
    memUsed += static_cast<uint32_t>(bytes);
    return copy;
}

int32_t ClampToInt32(int64_t value)
{
    if (value > INT32_MAX)
    {
        return INT32_MAX;
    }
    return value < INT32_MIN ? INT32_MIN : static_cast<int32_t>(value);
}

int32_t TextToInt32(const char *text)
{
    return ClampToInt32(strtoll(text, nullptr, 10));
}

double TextToDouble(const char *text)
{
    const double value = strtod(text, nullptr);
    return std::isfinite(value) ? value : 0.0;
}

static bool _isSpace(char c)
{
    return isspace(static_cast<unsigned char>(c)) != 0;
}

const char *GetNextSpDelToken(const char *text, char *token, int32_t maxLen)
{
    int32_t length = 0;
    while (length < maxLen && *text != '\0' && !_isSpace(*text))
    {
        token[length++] = *text++;
    }
    token[length] = '\0';
    if (!_isSpace(*text))
    {
        return nullptr; // the end of the text, or a token that is too long
    }
    while (_isSpace(*text))
    {
        text++;
    }
    return *text != '\0' ? text : nullptr;
}

int32_t SplitDate(const char *text, DateParts *dateParts)
{
    if (text == nullptr || dateParts == nullptr)
    {
        return 0;
    }
    *dateParts = {};
    text = GetNextSpDelToken(text, dateParts->weekDay, 3);
    text = text != nullptr ? GetNextSpDelToken(text, dateParts->month, 3) : nullptr;
    text = text != nullptr ? GetNextSpDelToken(text, dateParts->day, 2) : nullptr;
    if (text == nullptr)
    {
        return 0;
    }
    GetNextSpDelToken(text, dateParts->year, 4); // whatever follows the year is of no interest
    return 1;
}

int32_t stricmp(const char *a, const char *b)
{
    if (a == nullptr || b == nullptr)
    {
        ExitWithError("\nInvalid argument(s) to function stricmp");
    }
    for (;; a++, b++)
    {
        const int lowA = tolower(static_cast<unsigned char>(*a));
        const int lowB = tolower(static_cast<unsigned char>(*b));
        if (lowA != lowB)
        {
            return lowA > lowB ? 1 : -1;
        }
        if (lowA == '\0')
        {
            return 0;
        }
    }
}

// Sorting series

// Whether two neighbours are in order. Equal ones are not: they change places.
static bool _isInOrder(const Series *a, const Series *b, int32_t mode)
{
    switch (mode)
    {
    case 1:
        return b->max < a->max;
    case 2:
        return a->max < b->max;
    case 3:
        return b->min < a->min;
    case 4:
        return a->min < b->min;
    default:
        return false;
    }
}

// Brings entry i to its place among the entries gap, 2 * gap, ... before it.
static void _sink(Series **ptrs, int32_t i, int32_t gap, int32_t mode)
{
    for (int32_t j = i - gap; j >= 0; j -= gap)
    {
        Series *a = ptrs[j];
        Series *b = ptrs[j + gap];
        if (a == nullptr || b == nullptr || _isInOrder(a, b, mode))
        {
            return;
        }
        ptrs[j] = b;
        ptrs[j + gap] = a;
    }
}

void SeriesShellSort(ChartData *data, int32_t mode)
{
    if (data == nullptr || data->buffer == nullptr)
    {
        return;
    }
    for (int32_t gap = data->nSeries / 2; gap > 0; gap /= 2)
    {
        for (int32_t i = gap; i < data->nSeries; i++)
        {
            _sink(data->seriesPtrs, i, gap, mode);
        }
    }
}
