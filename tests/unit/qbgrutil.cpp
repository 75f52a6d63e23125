// Text copies, numbers, tokens, dates, the series sort and caseless comparison.

#include "qbgrutil.h"
#include "alloc_fail.h"
#include "error_run.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cfloat>
#include <cstdlib>
#include <string>
#include <vector>

// Copies

TEST(StrDup, CopiesAndCountsItsBytes)
{
    memUsed = 10;
    char *copy = StrDup("title");
    EXPECT_STREQ(copy, "title");
    EXPECT_EQ(memUsed, 16U);
    free(copy);
    copy = StrDup("");
    EXPECT_STREQ(copy, "");
    EXPECT_EQ(memUsed, 17U);
    free(copy);
}

TEST(StrDup, IsNullForNull)
{
    memUsed = 10;
    EXPECT_EQ(StrDup(nullptr), nullptr);
    EXPECT_EQ(memUsed, 10U);
}

TEST(StrDup, EndsTheRunWithoutMemory)
{
    const ChildResult result = RunStandAlone(
        []
        {
            FailAllocation(1);
            StrDup("title");
        });
    EXPECT_EQ(result.status, 255);
    EXPECT_EQ(result.out, PlainErrorText("\nOut of memory trying to allocate\n6 bytes\nin StrDup for the name title"));
}

// Numbers

TEST(Integers, AreReadLikeAtoi)
{
    EXPECT_EQ(TextToInt32("400"), 400);
    EXPECT_EQ(TextToInt32(" -12px"), -12);
    EXPECT_EQ(TextToInt32("+7"), 7);
    EXPECT_EQ(TextToInt32("off"), 0);
    EXPECT_EQ(TextToInt32(""), 0);
    EXPECT_EQ(TextToInt32("0x10"), 0);
}

TEST(Integers, AreClampedToThirtyTwoBits)
{
    EXPECT_EQ(TextToInt32("2147483647"), INT32_MAX);
    EXPECT_EQ(TextToInt32("2147483648"), INT32_MAX);
    EXPECT_EQ(TextToInt32("-2147483648"), INT32_MIN);
    EXPECT_EQ(TextToInt32("-2147483649"), INT32_MIN);
    EXPECT_EQ(TextToInt32("99999999999999999999999"), INT32_MAX);
    EXPECT_EQ(TextToInt32("-99999999999999999999999"), INT32_MIN);
    EXPECT_EQ(ClampToInt32(INT64_MAX), INT32_MAX);
    EXPECT_EQ(ClampToInt32(INT64_MIN), INT32_MIN);
    EXPECT_EQ(ClampToInt32(-5), -5);
}

TEST(Doubles, AreReadLikeAtof)
{
    EXPECT_EQ(TextToDouble("12.5"), 12.5);
    EXPECT_EQ(TextToDouble(" -1e3 mm"), -1000.0);
    EXPECT_EQ(TextToDouble("n/a"), 0.0);
    EXPECT_EQ(TextToDouble(""), 0.0);
    EXPECT_EQ(TextToDouble("1,5"), 1.0);
    EXPECT_EQ(TextToDouble("1.7976931348623157e308"), DBL_MAX);
}

TEST(Doubles, ThatAreNotFiniteReadAsZero)
{
    for (const char *text : {"nan", "inf", "-inf", "INFINITY", "1e309", "-1e309"})
    {
        EXPECT_EQ(TextToDouble(text), 0.0) << text;
    }
}

// Tokens and dates

// The token and the rest of a text, "-" for no rest.
static std::string nextToken(const char *text, int32_t maxLen)
{
    char token[32] = "unset";
    const char *rest = GetNextSpDelToken(text, token, maxLen);
    return std::string(token) + "|" + (rest != nullptr ? rest : "-");
}

TEST(Tokens, EndAtWhiteSpace)
{
    EXPECT_EQ(nextToken("May 31", 3), "May|31");
    EXPECT_EQ(nextToken("May\t\n  31 x", 5), "May|31 x");
}

TEST(Tokens, ThatAreTooLongHaveNoNext)
{
    EXPECT_EQ(nextToken("May 31", 2), "Ma|-");
    EXPECT_EQ(nextToken("May 31", 0), "|-");
}

TEST(Tokens, AtTheEndHaveNoNext)
{
    EXPECT_EQ(nextToken("May", 3), "May|-");
    EXPECT_EQ(nextToken("May", 9), "May|-");
    EXPECT_EQ(nextToken("May  ", 3), "May|-");
    EXPECT_EQ(nextToken("", 3), "|-");
    EXPECT_EQ(nextToken("", 0), "|-");
}

TEST(Tokens, BeforeLeadingWhiteSpaceAreEmpty)
{
    EXPECT_EQ(nextToken("  May 31", 3), "|May 31");
    EXPECT_EQ(nextToken(" May", 0), "|May");
}

// The four parts of a date, or "no date".
static std::string splitDate(const char *text)
{
    DateParts parts;
    if (SplitDate(text, &parts) == 0)
    {
        return "no date";
    }
    return std::string(parts.weekDay) + "|" + parts.month + "|" + parts.day + "|" + parts.year;
}

TEST(Dates, SplitIntoFourParts)
{
    EXPECT_EQ(splitDate("Fri May 31 1996"), "Fri|May|31|1996");
    EXPECT_EQ(splitDate("F M 1 96 and more"), "F|M|1|96");
    EXPECT_EQ(splitDate("Fri May 31 19961"), "Fri|May|31|1996"); // the last part may be cut
}

TEST(Dates, NeedEveryPart)
{
    EXPECT_EQ(splitDate("Fri May 31"), "no date");
    EXPECT_EQ(splitDate("Fri May 31 "), "no date");
    EXPECT_EQ(splitDate("Fri May"), "no date");
    EXPECT_EQ(splitDate("Fri"), "no date");
    EXPECT_EQ(splitDate(""), "no date");
    EXPECT_EQ(splitDate(nullptr), "no date");
    EXPECT_EQ(SplitDate("Fri May 31 1996", nullptr), 0);
}

TEST(Dates, NeedShortParts)
{
    EXPECT_EQ(splitDate("Friday May 31 1996"), "no date");
    EXPECT_EQ(splitDate("Fri June 31 1996"), "no date");
    EXPECT_EQ(splitDate("Fri May 031 1996"), "no date");
}

// The series sort

// Data of series whose max are the given numbers and whose min are their negatives, in this order.
struct SortData
{
    explicit SortData(const std::vector<double> &keys) : series(keys.size()), ptrs(keys.size())
    {
        for (size_t i = 0; i < keys.size(); i++)
        {
            series[i].max = keys[i];
            series[i].min = -keys[i];
            ptrs[i] = &series[i];
        }
        data.buffer = buffer;
        data.nSeries = static_cast<int32_t>(keys.size());
        data.series = series.data();
        data.seriesPtrs = ptrs.data();
    }

    std::vector<double> maxima() const
    {
        std::vector<double> result;
        for (const Series *s : ptrs)
        {
            result.push_back(s != nullptr ? s->max : -1.0);
        }
        return result;
    }

    std::vector<Series> series;
    std::vector<Series *> ptrs;
    char buffer[1] = "";
    ChartData data = {};
};

using Keys = std::vector<double>;

static Keys sorted(const Keys &keys, int32_t mode)
{
    SortData sort(keys);
    SeriesShellSort(&sort.data, mode);
    return sort.maxima();
}

TEST(SeriesSort, OrdersByTheStatisticOfItsMode)
{
    const Keys keys = {3, 1, 4, 1, 5, 9, 2, 6};
    const Keys up = {1, 1, 2, 3, 4, 5, 6, 9};
    const Keys down = {9, 6, 5, 4, 3, 2, 1, 1};
    EXPECT_EQ(sorted(keys, 1), down);
    EXPECT_EQ(sorted(keys, 2), up);
    EXPECT_EQ(sorted(keys, 3), up); // the largest min is that of the smallest max
    EXPECT_EQ(sorted(keys, 4), down);
}

TEST(SeriesSort, SwapsEveryPairInOtherModes)
{
    // Gap 1 only: i = 1 swaps (0,1) to b a c; i = 2 swaps (1,2) and then (0,1), to c b a by way of b c a.
    EXPECT_EQ(sorted({1, 2, 3}, 0), (Keys{3, 2, 1}));
    EXPECT_EQ(sorted({3, 2, 1}, 5), (Keys{1, 2, 3}));
}

TEST(SeriesSort, SwapsEqualKeys)
{
    SortData sort({7, 7});
    SeriesShellSort(&sort.data, 1);
    EXPECT_EQ(sort.ptrs[0], &sort.series[1]);
    EXPECT_EQ(sort.ptrs[1], &sort.series[0]);
}

TEST(SeriesSort, StopsAtAMissingSeries)
{
    SortData sort({1, 2, 3});
    sort.ptrs[1] = nullptr;
    SeriesShellSort(&sort.data, 1);
    EXPECT_EQ(sort.maxima(), (Keys{1, -1, 3}));
}

TEST(SeriesSort, SortsEveryOrderOfFiveSeries)
{
    Keys keys = {1, 2, 3, 4, 5};
    do
    {
        EXPECT_EQ(sorted(keys, 1), (Keys{5, 4, 3, 2, 1}));
        EXPECT_EQ(sorted(keys, 2), (Keys{1, 2, 3, 4, 5}));
    } while (std::next_permutation(keys.begin(), keys.end()));
}

TEST(SeriesSort, DoesNothingWithoutData)
{
    SeriesShellSort(nullptr, 1);
    SortData sort({1, 2});
    sort.data.buffer = nullptr;
    SeriesShellSort(&sort.data, 1);
    EXPECT_EQ(sort.maxima(), (Keys{1, 2}));
    EXPECT_EQ(sorted({}, 1), Keys{});
    EXPECT_EQ(sorted({4}, 1), Keys{4});
}

// Comparison

TEST(CaselessComparison, IsZeroForTheSameLetters)
{
    EXPECT_EQ(stricmp("post", "POST"), 0);
    EXPECT_EQ(stricmp("", ""), 0);
}

TEST(CaselessComparison, OrdersByTheFirstDifference)
{
    EXPECT_EQ(stricmp("a", "B"), -1);
    EXPECT_EQ(stricmp("b", "A"), 1);
    EXPECT_EQ(stricmp("post", "posts"), -1);
    EXPECT_EQ(stricmp("posts", "post"), 1);
    EXPECT_EQ(stricmp("\xe9", "z"), 1); // bytes count as unsigned
    EXPECT_EQ(stricmp("_", "A"), -1);   // 95 against "a", 97
}

TEST(CaselessComparison, EndsTheRunForNull)
{
    ChildResult result = RunStandAlone([] { stricmp(nullptr, "a"); });
    EXPECT_EQ(result.status, 255);
    EXPECT_EQ(result.out, PlainErrorText("\nInvalid argument(s) to function stricmp"));
    result = RunStandAlone([] { stricmp("a", nullptr); });
    EXPECT_EQ(result.status, 255);
}
