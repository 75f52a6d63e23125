// qbchart_settings.cpp - from settings to the chart records.
//
// A setting that is absent reads as "off" (GetFormValue), and every default follows from that: a switch is clear, a
// number is 0, and a word that must be known ends the run.

#include "qbchart_state.h"
#include "qbgrerr.h"
#include "qbgrfnt.h"
#include "qbgrform.h"
#include "qbgrutil.h"

#include <cstring>

// A word that a setting may have, and what it stands for.
struct _Word
{
    const char *text;
    int32_t code;
};

// Returns the code of a word; format is the error for a word that is not in the list.
template <size_t n>
static int32_t _getCode(const _Word (&words)[n], const char *text, const char *format)
{
    for (const _Word &word : words)
    {
        if (strcmp(word.text, text) == 0)
        {
            return word.code;
        }
    }
    ExitWithError(format, text);
}

static bool _isWord(const HTab *table, const char *key, const char *word)
{
    return strcmp(GetFormValue(table, key), word) == 0;
}

bool _IsOn(const HTab *table, const char *key)
{
    return _isWord(table, key, "on");
}

static uint32_t _bitIfOn(const HTab *table, const char *key, uint32_t bit)
{
    return _IsOn(table, key) ? bit : 0;
}

int32_t _GetNumber(const HTab *table, const char *key)
{
    return TextToInt32(GetFormValue(table, key));
}

// The chart

int32_t _GetChartType(const HTab *table)
{
    static const _Word types[] = {{"bar", kTypeBar},
                                  {"pie", kTypePie},
                                  {"line", kTypeLine},
                                  {"scatter", kTypeScatter},
                                  {"area", kTypeArea},
                                  {"stacked_bar", kTypeStackedBar},
                                  {"stacked_area", kTypeStackedArea}};
    return _getCode(types, GetFormValue(table, "chartType"), "Unknown chart type: %s\n");
}

uint32_t _GetChartFlags(const HTab *table)
{
    uint32_t flags = 0;
    flags |= _isWord(table, "chartOrientation", "horizontal") ? kChartHorizontal : 0;
    flags |= _bitIfOn(table, "chartShadows", kChartShadows);
    flags |= _bitIfOn(table, "chart3D", kChart3D);
    flags |= _bitIfOn(table, "chartScaleMult", kChartScaleMult);
    flags |= _bitIfOn(table, "chartExplode", kChartExplode);
    flags |= _isWord(table, "chartScale", "log") ? kChartLogScale : 0;
    flags |= _isWord(table, "chartScale", "linear") ? kChartLinearScale : 0;
    return flags;
}

int32_t _GetChartRefDir(const HTab *table)
{
    return _IsOn(table, "reverseRefDir") ? 2 : 1;
}

int32_t _GetChartDataPos(const HTab *table)
{
    if (_isWord(table, "dataPos", "inside"))
    {
        return 1;
    }
    return _isWord(table, "dataPos", "outside") ? 2 : 0;
}

int32_t _GetChartLineSize(const HTab *table)
{
    return _isWord(table, "lineSize", "off") ? 1 : _GetNumber(table, "lineSize");
}

// Fonts and boxes

int32_t _GetChartFontNum(const HTab *table, const char *key)
{
    return GetFontByName(GetFormValue(table, key));
}

int32_t _GetChartFontStyle(const HTab *table, const char *key)
{
    static const _Word styles[] = {{"plain", 0}, {"bold", 1}, {"italic", 2}, {"underlined", 4}};
    return _getCode(styles, GetFormValue(table, key), "Unknown Font Style: %s\n");
}

uint32_t _GetChartTitleBoxFlags(const HTab *table)
{
    return _bitIfOn(table, "titleBox", kBoxFrame) | _bitIfOn(table, "titleBoxShadow", kBoxShadow);
}

uint32_t _GetChartLabelBoxFlags(const HTab *table)
{
    return _bitIfOn(table, "labelBox", kBoxFrame) | _bitIfOn(table, "labelBoxShadow", kBoxShadow);
}

int32_t _GetChartBoxPos(const HTab *table, const char *key)
{
    static const _Word positions[] = {{"topLeft", kPosTop | kPosLeft},        {"topCenter", kPosTop | kPosCenter},
                                      {"topRight", kPosTop | kPosRight},      {"sideLeft", kPosSide | kPosLeft},
                                      {"sideRight", kPosSide | kPosRight},    {"botLeft", kPosBottom | kPosLeft},
                                      {"botCenter", kPosBottom | kPosCenter}, {"botRight", kPosBottom | kPosRight}};
    return _getCode(positions, GetFormValue(table, key), "Unknown box position: %s\n");
}

// Axes

static uint32_t _getTicks(const char *position, const char *format)
{
    static const _Word ticks[] = {{"outside", kTicksOutside}, {"inside", kTicksInside}, {"middle", kTicksMiddle}};
    return static_cast<uint32_t>(_getCode(ticks, position, format));
}

uint32_t _GetChartXAxisFlags(const HTab *table)
{
    return _getTicks(GetFormValue(table, "xAxisTicks"), "Unknown X axis ticks position: %s\n") |
           _bitIfOn(table, "xAxisLabels", kAxisTitle) | _bitIfOn(table, "xAxisGridLines", kAxisGridLines) |
           _bitIfOn(table, "xAxisScaleLabels", kAxisScaleLabels);
}

uint32_t _GetChartYAxisFlags(const HTab *table)
{
    return _getTicks(GetFormValue(table, "yAxisTicks"), "Unknown Y axis ticks position: %s\n") |
           _bitIfOn(table, "yAxisLabels", kAxisTitle) | _bitIfOn(table, "yAxisGridLines", kAxisGridLines) |
           _bitIfOn(table, "yAxisScaleLabels", kAxisScaleLabels);
}

// All together

// The order decides which error shows when several settings are wrong.
void _GetChartSettings(const HTab *table, ChartData *data, ChartSet *set)
{
    data->refSeries = _GetNumber(table, "refSeries");
    data->hasSeriesLabels = _IsOn(table, "hasSeriesLabels") ? 1 : 0;
    set->chartType = _GetChartType(table);
    set->chartFlags = _GetChartFlags(table);
    set->chartW = _GetNumber(table, "chartW");
    set->chartH = _GetNumber(table, "chartH");
    set->refDir = _GetChartRefDir(table);
    set->titleFont = _GetChartFontNum(table, "titleFont");
    set->titleFontSize = _GetNumber(table, "titleFontSize");
    set->titleFontStyle = _GetChartFontStyle(table, "titleFontStyle");
    set->titleBoxFlags = _GetChartTitleBoxFlags(table);
    set->titleBoxPos = _GetChartBoxPos(table, "titleBoxPos");
    set->labelFont = _GetChartFontNum(table, "labelFont");
    set->labelFontSize = _GetNumber(table, "labelFontSize");
    set->labelFontStyle = _GetChartFontStyle(table, "labelFontStyle");
    set->labelBoxFlags = _GetChartLabelBoxFlags(table);
    set->labelBoxPos = _GetChartBoxPos(table, "labelBoxPos");
    set->dataFont = _GetChartFontNum(table, "dataFont");
    set->dataFontSize = _GetNumber(table, "dataFontSize");
    set->dataFontStyle = _GetChartFontStyle(table, "dataFontStyle");
    set->dataPos = _GetChartDataPos(table);
    set->axisLabelFont = _GetChartFontNum(table, "axisLabelFont");
    set->axisLabelFontSize = _GetNumber(table, "axisLabelFontSize");
    set->axisLabelFontStyle = _GetChartFontStyle(table, "axisLabelFontStyle");
    set->xAxisFlags = _GetChartXAxisFlags(table);
    set->yAxisFlags = _GetChartYAxisFlags(table);
    set->dataSymbol = _GetNumber(table, "dataSymbol");
}
