// qbgrhash.h - the settings table: names and text values in a chained hash table.
//
// Without memory every function here that needs it ends the run through the error page.
#pragma once

#include <cstdint>

// One name of a table and its value. Made by HInstall; the caller of HInstall sets the value.
struct HItem
{
    HItem *next;   // next item of the same chain, or null
    char *name;    // owned
    uint32_t uses; // how many times the name was installed, from 1
    char *value;   // null until set; owned by whoever set it, or by the table once it has a releaseValue
};

// A table. Made by NewHTab; HInstall adds to it.
struct HTab
{
    HItem **buckets;                   // owned: size chains, null where empty
    uint32_t size;                     // at least 1
    uint32_t count;                    // distinct names
    void (*releaseValue)(char *value); // releases a value; null at first: values are not released
};

// Makes an empty table.
//   size     buckets, at least 1
// Returns the table, which KillHTab takes back. Adds 16 + 4 * size to memUsed.
HTab *NewHTab(uint32_t size);

// Releases a table with its items, and their values if it has a releaseValue. Nothing for null.
void KillHTab(HTab *table);

// Returns a new item of zeros.
HItem *NewHItem();

// Releases a chain from one item on.
//   releaseValue   called with every value that is not null; may be null
void KillHItem(HItem *item, void (*releaseValue)(char *value));

// Returns the hash of a name: 0 for the empty one, otherwise h * 31 + byte over all bytes, in 32 bits.
uint32_t GetHashVal(const char *name);

// Finds a name, upper and lower case apart. Returns its item, still the table's, or null.
HItem *HLookUp(const HTab *table, const char *name);

// Finds a name or adds it with a private copy of it. Returns its item, whose value the caller then sets.
HItem *HInstall(const char *name, HTab *table);
