// qbgrutil.h - counted text copies, tokens, dates, the series sort, caseless comparison.
#pragma once

#include "qbchart.h"

#include <cstdint>

// A date text such as "Fri May 31 1996", split.
struct DateParts
{
    char weekDay[4];
    char month[4];
    char day[3];
    char year[5];
};

// Bytes taken so far for settings and chart data.
extern uint32_t memUsed;

char *StrDup(const char *text);
const char *GetNextSpDelToken(const char *text, char *token, int32_t maxLen);
int32_t SplitDate(const char *text, DateParts *dateParts);
void SeriesShellSort(ChartData *data, int32_t mode);
int32_t stricmp(const char *a, const char *b);
