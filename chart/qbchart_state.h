// qbchart_state.h - what the driver's files share with each other and with their tests. Private to qbchart*.cpp.
#pragma once

#include "qbchart.h"
#include "qbgrhash.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>

// Path buffers hold 255 characters and the terminator.
constexpr int32_t kMaxPathLength = 255;
constexpr size_t kPathSize = kMaxPathLength + 1;

// State of the run, all of it in qbchart.cpp; _InitChart sets all of it back, and the two chart records with it.
extern HTab *pSetHTab;                // the settings, owned
extern char _aErrFilename[kPathSize]; // name of the error file; empty: errors go to standard output
extern FILE *_pErr;                   // the open error stream, closed by CleanUp; null until OpenErrStream

// The run: qbchart.cpp

// Sets the driver's state back and makes an empty settings table.
void _InitChart();

// Release one record's memory; what is null is left alone. The records themselves stay.
void _KillChartData(ChartData *data);
void _KillSeries(Series *series);
void _KillChartSet(ChartSet *set);

// Settings: qbchart_settings.cpp. A word that is not known ends the run.

// Reads every setting that does not depend on the report into the two records.
void _GetChartSettings(const HTab *table, ChartData *data, ChartSet *set);

// Each returns what one field of ChartSet gets. key is the name of the setting.
int32_t _GetChartType(const HTab *table);
uint32_t _GetChartFlags(const HTab *table);
int32_t _GetChartFontNum(const HTab *table, const char *key);
int32_t _GetChartFontStyle(const HTab *table, const char *key);
uint32_t _GetChartTitleBoxFlags(const HTab *table);
uint32_t _GetChartLabelBoxFlags(const HTab *table);
int32_t _GetChartBoxPos(const HTab *table, const char *key);
int32_t _GetChartDataPos(const HTab *table);
int32_t _GetChartRefDir(const HTab *table);
uint32_t _GetChartXAxisFlags(const HTab *table);
uint32_t _GetChartYAxisFlags(const HTab *table);
int32_t _GetChartLineSize(const HTab *table);

// Whether a setting is "on".
bool _IsOn(const HTab *table, const char *key);

// Returns a setting as a whole number; 0 when absent.
int32_t _GetNumber(const HTab *table, const char *key);

// The report: qbchart_report.cpp. What is not as it should be ends the run.

// Reads one report out of the data file into memory, with a newline added at its end.
//   reportName   looked up in the table of contents, upper and lower case apart
// Returns the text, which _KillChartData releases.
char *_GetChartDataBuffer(const char *dataPath, const char *tocPath, const char *reportName);

// The same from open files.
char *_ReadReport(FILE *data, FILE *toc, const char *reportName);

// Split the report in place, step by step. Each returns where the next step begins.
char *_GetChartTitle(ChartData *data);
char *_GetChartSeries(ChartData *data, char *position);
void _GetChartCells(ChartData *data, char *position);

// Select what is drawn and work out its statistics.
void _GetGraphedSeries(const HTab *table, ChartData *data, ChartSet *set);
void _GetGraphedCells(const HTab *table, ChartData *data, ChartSet *set);

// Pies only: which slices stand out; the pies' relative sizes, negative values counting as 0.
void _GetPieExplodeSettings(const HTab *table, ChartData *data, ChartSet *set);
void _GetPieParams(ChartData *data, ChartSet *set);

// Marks the reference series as one of dates when its first cell is one.
void _IsDateRefSeries(ChartData *data);

// Gives every series but the reference its colour.
void _GetSeriesColors(const HTab *table, ChartData *data, ChartSet *set);

// Output files: qbchart_output.cpp

// Joins up to three texts into a path of at most kMaxPathLength characters; a longer one ends the run, before anything
// is opened under a name that was cut.
//   path     kPathSize bytes
void _MakePath(char *path, const char *first, const char *second, const char *third = "");

// Ends the run when a name of an output file would be too long.
//   userId   prefix of this user's files; null: none
void _CheckOutputPaths(const char *gifDir, const char *userId);

// Writes the chart's image into a new GIF file and that file's name into set->gifName and the reference file. When
// either cannot be written completely, neither stays and the run ends.
void _OutputGif(ChartData *data, ChartSet *set, const char *gifDir, const char *userId);

// Writes a name that no other run uses, made of letters and digits.
//   buffer   kPathSize bytes
// Returns buffer.
char *_GetTmpFileName(char *buffer);

// Advances the counter in a file. Returns its new value: 0 when the file is new or cannot be made.
uint32_t _GetNextSerialNum(const char *dir, const char *name);

// Names the error file of a user; null: of everybody. Returns the name.
char *_SetErrStreamName(const char *dir, const char *userId);
