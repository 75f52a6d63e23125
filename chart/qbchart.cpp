// qbchart.cpp - one chart from start to end: RunChart names the steps in their order, the functions above it are the
// steps.
//
// A run begins with the environment that the package's dispatcher made and ends in the page script, which takes the
// process over. On the way every failure ends the process through the error page, which calls CleanUp; so what a step
// takes is in the driver's records before the next thing can fail.

#include "qbchart.h"

#include "qbchart_state.h"
#include "qbgrerr.h"
#include "qbgrform.h"
#include "qbgrutil.h"
#include "qbos.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>

// State of the run; _InitChart sets all of it back.
ChartSet chartSet = {};
ChartData chartData = {};
HTab *pSetHTab = nullptr;
char _aErrFilename[kPathSize] = "";
FILE *_pErr = nullptr;

// Names and paths of one run. The package's directories end with "/".
struct _Names
{
    const char *outDir;
    const char *homeDir;
    const char *userId; // prefix of this user's files; null: none
    char perlHome[kPathSize];
    char purgePattern[kPathSize]; // which of the old GIFs go
    char nameBase[kPathSize];     // of the report files
    char setFile[kPathSize];      // settings file
    char gifDir[kPathSize];
    char pagePath[kPathSize]; // the page script
    char dataPath[kPathSize];
    char tocPath[kPathSize];
    char settingsPath[kPathSize];
};

// Beginning and end

static void _releaseValue(char *value)
{
    free(value);
}

void _InitChart()
{
    memUsed = 0;
    _aErrFilename[0] = '\0';
    _pErr = nullptr;
    chartSet = {};
    chartData = {};
    OSInit();
    pSetHTab = nullptr; // should NewHTab fail
    pSetHTab = NewHTab(29);
    pSetHTab->releaseValue = _releaseValue;
}

void _KillSeries(Series *series)
{
    free(series->cells);
    series->cells = nullptr;
}

void _KillChartData(ChartData *data)
{
    for (int32_t i = 0; data->series != nullptr && i < data->nSeries; i++)
    {
        _KillSeries(&data->series[i]);
    }
    free(data->series);
    free(data->seriesPtrs);
    free(data->buffer);
    data->series = nullptr;
    data->seriesPtrs = nullptr;
    data->buffer = nullptr;
}

// The points may be there without the image: they are made first.
void _KillChartSet(ChartSet *set)
{
    for (int32_t i = 0; set->pointsPerSeries != nullptr && i < chartData.nSeries; i++)
    {
        free(set->pointsPerSeries[i]);
    }
    free(set->pointsPerSeries);
    KillImage(set->image);
    set->pointsPerSeries = nullptr;
    set->image = nullptr;
}

void CleanUp()
{
    _KillChartData(&chartData);
    _KillChartSet(&chartSet); // still counts its point arrays by nSeries
    KillHTab(pSetHTab);
    pSetHTab = nullptr;
    if (_pErr != nullptr && _pErr != stdout && _pErr != stderr)
    {
        fclose(_pErr);
    }
    _pErr = nullptr;
    OSCleanUp();
}

// Environment

static const char *_getRequiredEnv(const char *name, const char *message)
{
    const char *value = OSGetEnv(name);
    if (value == nullptr)
    {
        ExitWithError("%s", message);
    }
    return value;
}

static bool _isEnvYes(const char *name)
{
    const char *value = OSGetEnv(name);
    return value != nullptr && strcmp(value, "YES") == 0;
}

// Several users share one directory only when all three variables say so; otherwise a user id means nothing.
static const char *_getSharedUserId()
{
    if (!_isEnvYes("QUILLBROOK_MULTIUSER") || !_isEnvYes("QUILLBROOK_SHARED"))
    {
        return nullptr;
    }
    return OSGetEnv("QUILLBROOK_USERID");
}

static void _readEnvironment(_Names *names)
{
    names->outDir =
        _getRequiredEnv("QUILLBROOK_OUT", "Environment error:\nMissing Quillbrook_OUT.\n"
                                          "You must run this application through Quillbrook's dispatcher\n");
    names->homeDir =
        _getRequiredEnv("QUILLBROOK_HOME", "Environment error:\nMissing Quillbrook_HOME.\n"
                                           "You must run this application through Quillbrook's dispatcher\n");
    const char *perlHome =
        _getRequiredEnv("PERL_HOME", "Environment error:\nMissing PERL_HOME.\n"
                                     "You must run this application through Quillbrook's dispatcher\n");
    _MakePath(names->perlHome, perlHome, "");
    names->userId = _getSharedUserId();
    _MakePath(names->purgePattern, names->userId != nullptr ? names->userId : "",
              names->userId != nullptr ? "_*.gif" : "*.gif");
}

// Settings and paths

// A name from the web names a file in the package's own directories and nowhere else.
static void _refuseForeignName(const char *name)
{
    if (strchr(name, '/') != nullptr)
    {
        ExitWithError("Form Error: invalid name '%s'\n", name);
    }
}

// Takes the two names over and builds every path of the run. All of it happens before the first file is touched,
// because a path that is too long must not leave a directory half purged.
static void _setNames(_Names *names, const char *nameBase, const char *setFile, bool fFromWeb)
{
    if (fFromWeb)
    {
        _refuseForeignName(nameBase);
        _refuseForeignName(setFile);
    }
    _MakePath(names->nameBase, nameBase, "");
    _MakePath(names->setFile, setFile, "");
    _MakePath(names->settingsPath, names->outDir, "set/", setFile);
    _MakePath(names->gifDir, names->outDir, "gifs/");
    _MakePath(names->pagePath, names->homeDir, "cgi/", "qbchartpage.cgi");
    _MakePath(names->dataPath, names->outDir, nameBase, ".txt");
    _MakePath(names->tocPath, names->outDir, nameBase, ".toc");
    _CheckOutputPaths(names->gifDir, names->userId);
}

// Reads the settings into the table and the names out of them or the arguments. Returns 1 when there are settings.
static int32_t _readInput(int32_t argc, char **argv, _Names *names)
{
    if (argc == 1)
    {
        const int32_t result = GetFormInput(pSetHTab);
        _setNames(names, GetFormValue(pSetHTab, "nameBase"), GetFormValue(pSetHTab, "setFile"), true);
        return result;
    }
    if (argc != 3)
    {
        ExitWithError("Invalid command line arguments\n");
    }
    // A web server may turn a query into arguments; otherwise they are the operator's own.
    _setNames(names, argv[1], argv[2], OSGetEnv("GATEWAY_INTERFACE") != nullptr);
    return GetSettings(names->settingsPath, pSetHTab);
}

// Report

static void _readReport(const HTab *table, ChartData *data, ChartSet *set)
{
    char *cursor = _GetChartTitle(data);
    cursor = _GetChartSeries(data, cursor);
    _GetChartCells(data, cursor);
    _GetGraphedSeries(table, data, set);
    _GetGraphedCells(table, data, set);
    if (set->chartType == kTypePie)
    {
        _GetPieExplodeSettings(table, data, set);
        _GetPieParams(data, set);
    }
    else if (set->chartType == kTypeLine)
    {
        set->lineSize = _GetChartLineSize(table);
    }
    _IsDateRefSeries(data);
    _GetSeriesColors(table, data, set);
}

// Chart

static void _layOutChart(ChartData *data, ChartSet *set)
{
    GetTitleBoxDim(data, set);
    if (set->chartType == kTypePie)
    {
        GetPieLabelBoxDim(data, set);
        GetPieSizeRequirements(data, set);
        PlaceChartBoxes(set);
        return;
    }
    GetLabelBoxDim(data, set);
    GetSizeRequirements(data, set);
    PlaceChartBoxes(set);
    GetAxisBoxesDim(data, set);
    GetScale(data, set);
    GetRefScale(data, set);
    TrimAxisBoxes(set);
    GetDataPoints(data, set);
}

static void _drawSeries(ChartData *data, ChartSet *set)
{
    switch (set->chartType)
    {
    case kTypeBar:
        ChartBar(data, set);
        break;
    case kTypePie:
        ChartPie(data, set);
        break;
    case kTypeLine:
        ChartLine(data, set);
        break;
    case kTypeScatter:
        ChartScatter(data, set);
        break;
    case kTypeArea:
        ChartArea(data, set);
        break;
    default: // on purpose: the stacked types show title, legend and axes only
        break;
    }
}

static void _drawChart(ChartData *data, ChartSet *set)
{
    set->backgroundColor = 0;
    InitChartGraph(set);
    ChartDrawTitle(data, set);
    if (set->chartType == kTypePie)
    {
        ChartDrawPieLabelBox(data, set);
    }
    else
    {
        ChartDrawLabelBox(data, set);
        ChartDrawAxis(data, set);
    }
    _drawSeries(data, set);
}

// The page script takes over; coming back means that it could not.
static void _startPageScript(const _Names *names)
{
    OSExecute(names->perlHome, names->pagePath, names->nameBase, names->setFile, chartSet.gifName,
              static_cast<const char *>(nullptr));
    fprintf(stderr, "qbchart: can't start the page script '%s' with '%s': %s\n", names->pagePath, names->perlHome,
            strerror(errno));
}

// The run

int32_t RunChart(int32_t argc, char **argv)
{
    _Names names = {};
    _InitChart();
    InitGraph();
    _readEnvironment(&names);
    if (_readInput(argc, argv, &names) != 1)
    {
        return 0;
    }
    OSRemoveMatch(names.gifDir, names.purgePattern);
    _aErrFilename[0] = '\0'; // errors go to standard output
    chartData.buffer = _GetChartDataBuffer(names.dataPath, names.tocPath, GetFormValue(pSetHTab, "reportTitle"));
    _GetChartSettings(pSetHTab, &chartData, &chartSet);
    _readReport(pSetHTab, &chartData, &chartSet);
    _layOutChart(&chartData, &chartSet);
    _drawChart(&chartData, &chartSet);
    _OutputGif(&chartData, &chartSet, names.gifDir, names.userId);
    CleanUp();
    _startPageScript(&names);
    return 0;
}
