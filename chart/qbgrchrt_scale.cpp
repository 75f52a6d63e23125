// qbgrchrt_scale.cpp - from plot box to pixels: axis strips, value scale, category slots, data points, the image.
//
// Categories run along the reference axis (x, or y in a horizontal chart), values along the other one. Values are
// doubles; what they become in pixels is clamped to 32 bits.

#include "qbgrchrt_state.h"
#include "qbgrerr.h"

#include <cinttypes>
#include <cstdio>
#include <cstdlib>

// The fields that describe the division of one axis.
struct _Divisions
{
    int32_t *count;
    int32_t *pixels; // per division
    int32_t *step;
};

// How values and categories become pixels; all in pixels but step.
struct _Mapping
{
    bool fHorizontal;
    bool fReversed;
    int64_t refLen;  // of the reference axis
    int64_t refStep; // from category to category; negative when reversed
    int64_t slot;    // from series to series within a category; negative when reversed
    int64_t originX; // where value 0 crosses the reference axis's start
    int64_t originY;
    double perStep; // along the value axis
    double step;    // value of one division
};

static _Divisions _XDivisions(ChartSet *set)
{
    return {&set->xDivs, &set->xDivW, &set->xStep};
}

static _Divisions _YDivisions(ChartSet *set)
{
    return {&set->yDivs, &set->yDivH, &set->yStep};
}

// Pixels of an axis strip that ticks take.
static int64_t _TickRoom(uint32_t axisFlags)
{
    if ((axisFlags & kTicksOutside) != 0)
    {
        return 8;
    }
    return (axisFlags & kTicksMiddle) != 0 ? 4 : 0;
}

// Size of a number in the current font with one digit to spare.
static Point _MeasureWideNumber(double value)
{
    char text[_kNumberTextSize];
    std::snprintf(text, sizeof text, "%.0f0", value);
    return _MeasureText(text);
}

void GetAxisBoxesDim(ChartData *data, ChartSet *set)
{
    if (!_HasRecords(data, set))
    {
        return;
    }
    _SelectLabelFont(set);
    const bool fHorizontal = _IsHorizontal(set);
    const bool fMaxIsWider = std::fabs(data->maxValue) > std::fabs(data->minValue);
    const Point number = _MeasureWideNumber(fMaxIsWider ? data->maxValue : data->minValue);

    int64_t height = set->labelMarginY + _TickRoom(set->xAxisFlags);
    if ((set->xAxisFlags & kAxisScaleLabels) != 0)
    {
        height += fHorizontal ? number.y : set->refLabelDim.y;
    }
    if ((set->xAxisFlags & kAxisTitle) != 0)
    {
        height += static_cast<int64_t>(set->xAxisLabelDim.y) + set->axisLabelMarginY;
    }
    int64_t width = set->labelMarginX + _TickRoom(set->yAxisFlags);
    if ((set->yAxisFlags & kAxisScaleLabels) != 0)
    {
        width += fHorizontal ? set->refLabelDim.x : number.x;
    }
    if ((set->yAxisFlags & kAxisTitle) != 0)
    {
        width += static_cast<int64_t>(set->yAxisLabelDim.x) + set->axisLabelMarginX;
    }
    const Rectangle plot = set->plotBox;
    const int32_t cornerX = _ToInt32(plot.left + width);
    const int32_t cornerY = _ToInt32(plot.bottom - height);
    SetRectangle(&set->yAxisBox, plot.left, plot.top, cornerX, cornerY);
    SetRectangle(&set->xAxisBox, cornerX, cornerY, plot.right, plot.bottom);
}

// The extent of all drawn values and zero.
static double _ValueRange(const ChartData *data)
{
    if (data->minValue >= 0)
    {
        return data->maxValue;
    }
    return data->maxValue >= 0 ? data->maxValue - data->minValue : -data->minValue;
}

// A round step of at least rawStep (at least 1): the power of ten above it, halved while the half is still enough.
static int64_t _RoundStep(int64_t rawStep)
{
    int64_t step = 1;
    while (step <= rawStep)
    {
        step *= 10;
    }
    while (step / 2 < step - rawStep)
    {
        step /= 2;
    }
    return step;
}

// The value of one division when range is split into at most maxDivs of them. Ends the run when it is beyond 32 bits.
static int32_t _ChooseStep(double range, int64_t maxDivs)
{
    const double rawStep = std::max(1.0, std::ceil(range / static_cast<double>(maxDivs)));
    const int64_t step = rawStep <= INT32_MAX ? _RoundStep(static_cast<int64_t>(rawStep)) : INT64_MAX;
    if (step > INT32_MAX)
    {
        ExitWithError("Values too large to chart:\na division of the scale would stand for more than %d\n", INT32_MAX);
    }
    return static_cast<int32_t>(step);
}

// The number of divisions that cover all values; both sides of zero are filled up to whole divisions.
static int64_t _CountDivisions(const ChartData *data, double range, int32_t step)
{
    const double add = step - 1.0;
    if (data->maxValue <= 0 || data->minValue >= 0)
    {
        return _WholePart((add + range) / step);
    }
    const int64_t below = _WholePart((add - data->minValue) / step);
    return _ToInt32(below + _WholePart((data->maxValue + step - 1) / step));
}

void GetScale(ChartData *data, ChartSet *set)
{
    if (!_HasRecords(data, set))
    {
        return;
    }
    _SelectLabelFont(set);
    const double range = _ValueRange(data);
    const bool fHorizontal = _IsHorizontal(set);
    const int64_t length = fHorizontal ? _WidthOf(&set->xAxisBox) : _HeightOf(&set->yAxisBox);
    int64_t tickSpace = 2LL * _CurFontInfo().size;
    if (fHorizontal)
    {
        const int64_t numberW = _MeasureWideNumber(range).x;
        tickSpace = numberW + numberW / 2;
    }
    const int64_t maxDivs = tickSpace < length ? length / std::max<int64_t>(tickSpace, 1) : 1;
    int32_t step = _ChooseStep(range, maxDivs);
    int64_t nDivs = _CountDivisions(data, range, step);
    if (step == 2 && 2 * nDivs <= maxDivs)
    {
        // There is room for every unit; what lies above the range is dropped again.
        step = 1;
        nDivs *= 2;
        while (range + 1 < static_cast<double>(nDivs))
        {
            nDivs--;
        }
    }
    if (nDivs < 1)
    {
        ExitWithError("Not enough data to generate chart...");
    }
    char top[_kNumberTextSize];
    std::snprintf(top, sizeof top, "%" PRId64, nDivs * step);
    set->scaleLabelDim = _MeasureText(top);

    const _Divisions axis = fHorizontal ? _XDivisions(set) : _YDivisions(set);
    *axis.count = _ToInt32(nDivs);
    *axis.pixels = _ToInt32((length - tickSpace / 2) / nDivs);
    *axis.step = step;
    set->zeroDivs = data->minValue < 0 ? _WholePart((step - data->minValue - 1) / step) : 0;
}

void GetRefScale(ChartData *data, ChartSet *set)
{
    if (!_HasRecords(data, set))
    {
        return;
    }
    const bool fHorizontal = _IsHorizontal(set);
    const int64_t span = fHorizontal ? _HeightOf(&set->yAxisBox) : _WidthOf(&set->xAxisBox);
    const int64_t perCategory = span / std::max(set->nGraphedCells, 1);
    const _Divisions axis = fHorizontal ? _YDivisions(set) : _XDivisions(set);
    *axis.count = set->nGraphedCells;
    *axis.pixels = _ToInt32(perCategory);
    *axis.step = _ToInt32(perCategory / (std::max(set->nGraphedSeries, 0) + 1LL));
}

void TrimAxisBoxes(ChartSet *set)
{
    if (set == nullptr)
    {
        return;
    }
    set->xAxisLen = _ToInt32(static_cast<int64_t>(set->xDivs) * set->xDivW);
    set->yAxisLen = _ToInt32(static_cast<int64_t>(set->yDivs) * set->yDivH);
    set->xAxisBox.right = _ToInt32(static_cast<int64_t>(set->xAxisBox.left) + set->xAxisLen);
    set->yAxisBox.top = _ToInt32(static_cast<int64_t>(set->yAxisBox.bottom) - set->yAxisLen);
}

static _Mapping _GetMapping(const ChartSet *set)
{
    _Mapping map = {};
    map.fHorizontal = _IsHorizontal(set);
    map.fReversed = set->refDir == 2;
    map.originX = set->xAxisBox.left;
    if (map.fHorizontal)
    {
        map.refLen = set->yAxisLen;
        map.refStep = set->yDivH;
        map.slot = set->yStep;
        map.originX += static_cast<int64_t>(set->zeroDivs) * set->xDivW;
        map.originY = set->yAxisBox.bottom;
        map.perStep = set->xDivW;
        map.step = set->xStep;
    }
    else
    {
        map.refLen = set->xAxisLen;
        map.refStep = set->xDivW;
        map.slot = set->xStep;
        map.originY = set->xAxisBox.top - static_cast<int64_t>(set->zeroDivs) * set->yDivH;
        map.perStep = set->yDivH;
        map.step = set->yStep;
    }
    if (map.fReversed)
    {
        map.refStep = -map.refStep;
        map.slot = -map.slot;
    }
    return map;
}

// Where a value at refPos pixels along the reference axis is drawn.
static Point _DataPoint(const _Mapping *map, double value, int64_t refPos)
{
    const int64_t pixels = _WholePart(value / map->step * map->perStep + 0.5);
    if (map->fHorizontal)
    {
        return {_ToInt32(pixels + map->originX + (value > 0 ? 1 : 0)), _ToInt32(map->originY - refPos)};
    }
    return {_ToInt32(refPos + map->originX), _ToInt32(map->originY - pixels + (value < 0 ? 1 : 0))};
}

// Fills points 1 to n of a series, then the base line points 0 and n + 1 that close its outline.
static void _SetSeriesPoints(const _Mapping *map, const Cell *cells, int32_t n, int64_t refPos, Point *points)
{
    for (int32_t k = 0; k < n; k++)
    {
        points[k + 1] = _DataPoint(map, cells[k].value, refPos);
        refPos += map->refStep;
    }
    const int32_t baseX = _ToInt32(map->originX);
    if (map->fHorizontal)
    {
        points[n + 1] = {baseX, points[n].y};
        points[0] = {baseX, points[1].y};
    }
    else
    {
        // on purpose: the ends of the base line differ by one pixel
        points[n + 1] = {points[n].x, _ToInt32(map->originY + 1)};
        points[0] = {points[1].x, _ToInt32(map->originY)};
    }
}

// Zeroed memory for count records, at least one; null when there is none. Its size in bytes goes to pSize.
static void *_NewArray(int64_t count, size_t recordSize, int32_t *pSize)
{
    const size_t n = static_cast<size_t>(std::max<int64_t>(count, 1));
    *pSize = _ToInt32(static_cast<int64_t>(n * recordSize));
    return std::calloc(n, recordSize);
}

void GetDataPoints(ChartData *data, ChartSet *set)
{
    if (!_HasRecords(data, set))
    {
        return;
    }
    int32_t size = 0;
    set->pointsPerSeries = static_cast<Point **>(_NewArray(data->nSeries, sizeof(Point *), &size));
    if (set->pointsPerSeries == nullptr)
    {
        ExitWithError("\nOut of memory trying to allocate\n%d bytes for an arrray of pointers to Point (sic)\n", size);
    }
    const _Mapping map = _GetMapping(set);
    const int32_t nCells = std::max(set->nGraphedCells, 0);
    int64_t offset = map.slot;
    for (int32_t i = 0; i < data->nSeries; i++)
    {
        Series *series = &data->series[i];
        series->points = nullptr;
        if (!_IsGraphed(series))
        {
            continue;
        }
        series->points = static_cast<Point *>(_NewArray(nCells + 2LL, sizeof(Point), &size));
        if (series->points == nullptr)
        {
            ExitWithError("\nOut of memory trying to allocate\n%d bytes for an array of points\n", size);
        }
        set->pointsPerSeries[i] = series->points;
        const int64_t refPos = map.fReversed ? map.refLen + map.refStep - offset : offset;
        _SetSeriesPoints(&map, series->cells + set->firstCell, nCells, refPos, series->points);
        offset += map.slot;
    }
}

void InitChartGraph(ChartSet *set)
{
    if (set == nullptr)
    {
        return;
    }
    Rectangle rect;
    SetRectangle(&rect, 0, 0, set->chartW, set->chartH);
    set->image = NewImage(&rect, 256);
    if (set->image == nullptr)
    {
        const int64_t size = static_cast<int64_t>(set->chartW) * set->chartH;
        ExitWithError("Not enough memory to draw this chart.\n%u bytes needed.\n",
                      static_cast<uint32_t>(std::clamp<int64_t>(size, 0, UINT32_MAX)));
    }
    SetPenColor(set->backgroundColor);
    FillImage();
    SetThruColor(set->backgroundColor);
}
