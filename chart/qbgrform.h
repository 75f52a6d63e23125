// qbgrform.h - settings input: a posted form or a settings file, into the settings table.
#pragma once

#include "qbgrhash.h"

#include <cstdint>
#include <cstdio>

int32_t GetFormInput(HTab *table);
int32_t GetSettings(const char *path, HTab *table);
int32_t FormToHTab(HTab *table, FILE *stream, int64_t length);
char *TranslateURL(char *text);
const char *GetFormValue(const HTab *table, const char *name);
