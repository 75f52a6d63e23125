// qbgrform.h - settings input: a posted form or a settings file, into the settings table.
//
// Settings are name=value pairs joined by "&", in one line; "+" in a value is a space, "%" and two hexadecimal digits
// are a byte. What cannot be read, and more than 10000 names, ends the run through the error page.
#pragma once

#include "qbgrhash.h"

#include <cstdint>
#include <cstdio>

// Reads the form that a web server posts on standard input, described by REQUEST_METHOD and CONTENT_LENGTH.
// Returns 0 for a null table, otherwise 1.
int32_t GetFormInput(HTab *table);

// Reads a settings file.
//   path     null: standard input, which must then be a file
// Returns 1.
int32_t GetSettings(const char *path, HTab *table);

// Reads settings from a stream and puts them into the table; the last value given for a name counts. Values are the
// table's, released with it, if it has a releaseValue; otherwise nobody releases them.
//   length   bytes to read; fewer may come; 0 and less: none
// Returns 1.
int32_t FormToHTab(HTab *table, FILE *stream, int64_t length);

// Decodes a value in place. A "%" with fewer than two characters behind it stands for itself; two characters that are
// not both digits make some byte. Returns text; null for null.
char *TranslateURL(char *text);

// Returns the value of a name, still the table's, or "off" when the name was not given.
const char *GetFormValue(const HTab *table, const char *name);
