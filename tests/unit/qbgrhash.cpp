// The settings table: hash values, chains, counting, release, and what happens without memory.

#include "qbgrhash.h"
#include "alloc_fail.h"
#include "error_run.h"
#include "qbgrutil.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

TEST(HashValue, IsZeroForTheEmptyName)
{
    EXPECT_EQ(GetHashVal(""), 0U);
}

TEST(HashValue, MultipliesByThirtyOneAndAddsTheByte)
{
    EXPECT_EQ(GetHashVal("a"), 97U);
    EXPECT_EQ(GetHashVal("ab"), 97U * 31 + 98);
    EXPECT_EQ(GetHashVal("abc"), (97U * 31 + 98) * 31 + 99);
}

TEST(HashValue, ReadsBytesAsUnsigned)
{
    EXPECT_EQ(GetHashVal("\xff"), 255U);
    EXPECT_EQ(GetHashVal("\x80\x01"), 128U * 31 + 1);
}

TEST(HashValue, WrapsAtThirtyTwoBits)
{
    uint64_t expected = 0; // in 64 bits, cut at the end of each step
    for (int i = 0; i < 20; i++)
    {
        expected = (expected * 31 + 'z') % (uint64_t{1} << 32);
    }
    EXPECT_EQ(GetHashVal(std::string(20, 'z').c_str()), expected);
}

TEST(Table, BeginsEmptyAndCounted)
{
    memUsed = 1000;
    HTab *table = NewHTab(29);
    EXPECT_EQ(memUsed, 1000U + 16 + 29 * 4);
    EXPECT_EQ(table->size, 29U);
    EXPECT_EQ(table->count, 0U);
    EXPECT_EQ(table->releaseValue, nullptr);
    for (uint32_t i = 0; i < 29; i++)
    {
        EXPECT_EQ(table->buckets[i], nullptr);
    }
    KillHTab(table);
}

TEST(Table, KillsNothingForNull)
{
    KillHTab(nullptr);
    KillHItem(nullptr, nullptr);
}

TEST(Install, PutsTheEmptyNameIntoBucketZero)
{
    HTab *table = NewHTab(29);
    HItem *item = HInstall("", table);
    EXPECT_EQ(table->buckets[0], item);
    EXPECT_STREQ(item->name, "");
    KillHTab(table);
}

TEST(Install, LinksAtTheHeadOfItsChain)
{
    HTab *table = NewHTab(29);
    // "A" is 65 = 2 * 29 + 7 and "^" is 94 = 3 * 29 + 7.
    HItem *first = HInstall("A", table);
    HItem *second = HInstall("^", table);
    EXPECT_EQ(table->buckets[7], second);
    EXPECT_EQ(second->next, first);
    EXPECT_EQ(first->next, nullptr);
    EXPECT_EQ(table->count, 2U);
    EXPECT_EQ(HLookUp(table, "A"), first);
    EXPECT_EQ(HLookUp(table, "^"), second);
    EXPECT_EQ(HLookUp(table, "$"), nullptr); // 36 = 29 + 7: the same chain, not in it
    KillHTab(table);
}

TEST(Install, CountsEveryUseOfAName)
{
    HTab *table = NewHTab(29);
    HItem *item = HInstall("chartW", table);
    EXPECT_EQ(item->uses, 1U);
    EXPECT_EQ(item->value, nullptr);
    EXPECT_EQ(HInstall("chartW", table), item);
    EXPECT_EQ(item->uses, 2U);
    EXPECT_EQ(table->count, 1U);
    KillHTab(table);
}

TEST(Install, TellsUpperFromLowerCase)
{
    HTab *table = NewHTab(29);
    EXPECT_NE(HInstall("chartW", table), HInstall("chartw", table));
    EXPECT_EQ(table->count, 2U);
    KillHTab(table);
}

TEST(Install, KeepsACopyOfTheNameAndCountsIt)
{
    HTab *table = NewHTab(1);
    char name[] = "abc";
    memUsed = 0;
    const HItem *item = HInstall(name, table);
    name[0] = 'x';
    EXPECT_STREQ(item->name, "abc");
    EXPECT_EQ(memUsed, 4U);
    KillHTab(table);
}

static int32_t nReleased;

static void releaseAndCount(char *value)
{
    free(value);
    nReleased++;
}

TEST(Table, ReleasesTheValuesThatAreThere)
{
    HTab *table = NewHTab(3);
    table->releaseValue = releaseAndCount;
    for (const char *name : {"a", "b", "c", "d"})
    {
        HInstall(name, table)->value = name[0] == 'c' ? nullptr : StrDup(name);
    }
    nReleased = 0;
    KillHTab(table);
    EXPECT_EQ(nReleased, 3);
}

TEST(Table, LeavesValuesAloneWithoutARelease)
{
    char value[] = "not from the heap";
    HTab *table = NewHTab(3);
    HInstall("a", table)->value = value;
    KillHTab(table);
    EXPECT_STREQ(value, "not from the heap");
}

// Without memory

TEST(Table, EndsTheRunWithoutMemory)
{
    ChildResult result = RunStandAlone(
        []
        {
            FailAllocation(1);
            NewHTab(29);
        });
    EXPECT_EQ(result.status, 255);
    EXPECT_EQ(result.out,
              PlainErrorText("\nOut of memory trying to allocate\n16 bytes in for a hash table ptr in NewHTab"));
    result = RunStandAlone(
        []
        {
            FailAllocation(2);
            NewHTab(29);
        });
    EXPECT_EQ(result.status, 255);
    EXPECT_EQ(result.out, PlainErrorText("\nOut of memory trying to allocate\n116 bytes in for 29 ptrs in NewHTab"));
}

TEST(Install, EndsTheRunWithoutMemory)
{
    ChildResult result = RunStandAlone(
        []
        {
            FailAllocation(1);
            NewHItem();
        });
    EXPECT_EQ(result.status, 255);
    EXPECT_EQ(result.out,
              PlainErrorText("\nOut of memory trying to allocate\n16 bytes in for a hash tab. item in NewHItem"));
    result = RunStandAlone(
        []
        {
            static HTab *table = NewHTab(29); // static: the run ends while it lives
            FailAllocation(2);
            HInstall("chartW", table);
        });
    EXPECT_EQ(result.status, 255);
    EXPECT_EQ(result.out, PlainErrorText("\nOut of memory trying to allocate\n7 bytes\nin StrDup for the name chartW"));
}
