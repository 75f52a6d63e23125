// qbgrutil.h - counted text copies, numbers, tokens, dates, the series sort, caseless comparison.
#pragma once

#include "qbchart.h"

#include <cstdint>

// A date text such as "Fri May 31 1996", split. Filled by SplitDate; every field is terminated.
struct DateParts
{
    char weekDay[4];
    char month[4];
    char day[3];
    char year[5];
};

// Bytes taken so far for settings and chart data; it wraps at 2^32. The driver sets it to 0 when a run begins.
extern uint32_t memUsed;

// Copies a text. Returns the copy, the caller's own (free), or null for null. Adds its bytes to memUsed. Without memory
// the run ends.
char *StrDup(const char *text);

// Returns the nearest value that 32 bits hold.
int32_t ClampToInt32(int64_t value);

// Reads a whole number as atoi does: leading white space, a sign, digits; anything else reads as 0. Returns the nearest
// value that 32 bits hold.
int32_t TextToInt32(const char *text);

// Reads a number as atof does; text that is no number, nan, infinities and what overflows read as 0.
double TextToDouble(const char *text);

// Takes the token at the start of a text; tokens end at white space or at the end.
//   token    maxLen + 1 bytes, always terminated
//   maxLen   longest token, at least 0
// Returns where the next token begins; null when there is none or this one is longer than maxLen. A text that begins
// with white space has an empty first token.
const char *GetNextSpDelToken(const char *text, char *token, int32_t maxLen);

// Splits a date into weekday (at most 3 characters), month (3), day (2) and year (the first 4).
// Returns 1; 0 for null arguments or when one of the first three is too long or not followed by another.
int32_t SplitDate(const char *text, DateParts *dateParts);

// Sorts the drawing order of the series (seriesPtrs) by a statistic.
//   mode     1 largest max first, 2 smallest max first, 3 largest min first, 4 smallest min first
// Series with equal keys may change places. Nothing for null data or data without a report.
void SeriesShellSort(ChartData *data, int32_t mode);

// Compares two texts without regard to case. Returns 0 when equal; otherwise 1 or -1 as a comes after b or before it at
// the first difference. A null argument ends the run.
int32_t stricmp(const char *a, const char *b);
