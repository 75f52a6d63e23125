// qbgrhash.h - the settings table: names and text values in a chained hash table.
#pragma once

#include <cstdint>

// One name of a table and its value.
struct HItem
{
    HItem *next;   // next item of the same chain, or null
    char *name;    // owned
    uint32_t uses; // how many times the name was installed
    char *value;   // set by the caller after HInstall
};

struct HTab
{
    HItem **buckets; // owned: size chains, null where empty
    uint32_t size;
    uint32_t count;                    // distinct names
    void (*releaseValue)(char *value); // releases a value, or null: values are not released
};

HTab *NewHTab(uint32_t size);
void KillHTab(HTab *table);
HItem *NewHItem();
void KillHItem(HItem *item, void (*releaseValue)(char *value));
uint32_t GetHashVal(const char *name);
HItem *HLookUp(const HTab *table, const char *name);
HItem *HInstall(const char *name, HTab *table);
