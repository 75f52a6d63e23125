// qbgrhash.cpp - the settings table.

#include "qbgrhash.h"

#include "qbgrerr.h"
#include "qbgrutil.h"

#include <cstdlib>
#include <cstring>

// The sizes that messages and memUsed give for these records; they are part of the texts and the same everywhere.
static constexpr int32_t kTableBytes = 16;
static constexpr int32_t kBucketBytes = 4;
static constexpr int32_t kItemBytes = 16;

// Bucket of the name last looked up, 0 .. size - 1. HLookUp sets it for HInstall.
static uint32_t curHashVal = 0;

HTab *NewHTab(uint32_t size)
{
    HTab *table = static_cast<HTab *>(calloc(1, sizeof(HTab)));
    if (table == nullptr)
    {
        ExitWithError("\nOut of memory trying to allocate\n%d bytes in for a hash table ptr in NewHTab", kTableBytes);
    }
    const int32_t bytes = ClampToInt32(static_cast<int64_t>(size) * kBucketBytes);
    table->buckets = static_cast<HItem **>(calloc(size, sizeof(HItem *))); // NOLINT(bugprone-sizeof-expression)
    if (table->buckets == nullptr)
    {
        free(table);
        ExitWithError("\nOut of memory trying to allocate\n%d bytes in for %d ptrs in NewHTab", bytes,
                      ClampToInt32(size));
    }
    table->size = size;
    memUsed += kTableBytes + static_cast<uint32_t>(bytes);
    return table;
}

void KillHTab(HTab *table)
{
    if (table == nullptr)
    {
        return;
    }
    for (uint32_t i = 0; i < table->size; i++)
    {
        KillHItem(table->buckets[i], table->releaseValue);
    }
    free(table->buckets);
    free(table);
}

HItem *NewHItem()
{
    HItem *item = static_cast<HItem *>(calloc(1, sizeof(HItem)));
    if (item == nullptr)
    {
        ExitWithError("\nOut of memory trying to allocate\n%d bytes in for a hash tab. item in NewHItem", kItemBytes);
    }
    return item;
}

void KillHItem(HItem *item, void (*releaseValue)(char *value))
{
    while (item != nullptr)
    {
        HItem *next = item->next;
        free(item->name);
        if (releaseValue != nullptr && item->value != nullptr)
        {
            releaseValue(item->value);
        }
        free(item);
        item = next;
    }
}

uint32_t GetHashVal(const char *name)
{
    uint32_t hash = 0;
    for (; *name != '\0'; name++)
    {
        hash = hash * 31 + static_cast<unsigned char>(*name);
    }
    return hash;
}

HItem *HLookUp(const HTab *table, const char *name)
{
    curHashVal = GetHashVal(name) % table->size;
    for (HItem *item = table->buckets[curHashVal]; item != nullptr; item = item->next)
    {
        if (strcmp(item->name, name) == 0)
        {
            return item;
        }
    }
    return nullptr;
}

HItem *HInstall(const char *name, HTab *table)
{
    HItem *item = HLookUp(table, name);
    if (item != nullptr)
    {
        item->uses++;
        return item;
    }
    item = NewHItem();
    item->next = table->buckets[curHashVal];
    table->buckets[curHashVal] = item; // linked before the name is copied, so that a failure there leaves nothing loose
    item->name = StrDup(name);
    item->uses = 1;
    table->count++;
    return item;
}
