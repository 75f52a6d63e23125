// qbgrchrt_series.cpp - draws the series of bar, line, scatter and area charts from their data points.
//
// All positions were worked out with the data points: point 0 and the last point lie on the base line, those between
// are the cells.

#include "qbgrchrt_state.h"
#include "qbgrutil.h"

constexpr int32_t _kSymbolCross = 4;

// The widest line, pixels. It covers all of a chart of up to 2048 by 2048 pixels wherever its point is. Still wider
// ones would only take time: minutes in a large chart of thousands of points.
constexpr int32_t _kMaxLineSize = 4096;

// Half the size of a marker, pixels.
constexpr int32_t _kSymbolHalf = 3;

// Whether there are series to draw.
static bool _HasSeries(const ChartData *data, const ChartSet *set)
{
    return _HasRecords(data, set) && data->series != nullptr && data->nSeries > 0;
}

static bool _HasPoints(const ChartData *data, const ChartSet *set)
{
    return _HasSeries(data, set) && set->pointsPerSeries != nullptr;
}

static Rectangle _SymbolBox(const Point *point)
{
    const int64_t x = point->x;
    const int64_t y = point->y;
    return {_ToInt32(x - _kSymbolHalf), _ToInt32(y - _kSymbolHalf), _ToInt32(x + _kSymbolHalf),
            _ToInt32(y + _kSymbolHalf)};
}

// A triangle with its apex on the point; height above 0 lets it hang, below 0 stand.
static void _DrawTriangle(const Point *point, int32_t height, int32_t colour)
{
    const int32_t side = height / 2;
    Point corners[] = {{0, 0}, {side, height}, {-side, height}};
    const Polygon triangle = {3, corners};
    SetPenColor(colour);
    FillPolygon(&triangle, point->x, point->y);
    SetPenColor(kColorFrame);
    DrawPolygon(&triangle, point->x, point->y);
}

// The line ends reach one pixel past the marker's box, on purpose.
static void _DrawCross(const Point *point)
{
    const int64_t x = point->x;
    const int64_t y = point->y;
    const int64_t far = _kSymbolHalf + 1;
    SetPenColor(kColorFrame);
    _MovePen(x - _kSymbolHalf, y - _kSymbolHalf);
    DrawLineTo(_ToInt32(x + far), _ToInt32(y + far));
    _MovePen(x + _kSymbolHalf, y - _kSymbolHalf);
    DrawLineTo(_ToInt32(x - far), _ToInt32(y + far));
}

void ChartDrawSymbol(const Point *point, int32_t kind, int32_t colour)
{
    if (point == nullptr)
    {
        return;
    }
    const Rectangle box = _SymbolBox(point);
    switch (kind)
    {
    case 1:
        _DrawTriangle(point, 2 * _kSymbolHalf, colour);
        break;
    case 2:
        SetPenColor(colour);
        FillOval(&box);
        SetPenColor(kColorFrame);
        DrawOval(&box);
        break;
    case 3:
        SetPenColor(colour);
        FillRectangle(&box);
        SetPenColor(kColorFrame);
        DrawRectangle(&box);
        break;
    case _kSymbolCross:
        _DrawCross(point);
        break;
    default:
        _DrawTriangle(point, -2 * _kSymbolHalf, colour);
        break;
    }
}

// Draws the marker at every data point of a series.
static void _DrawSymbols(const Point *points, int32_t n, int32_t kind, int32_t colour)
{
    for (int32_t k = 1; k <= n; k++)
    {
        ChartDrawSymbol(&points[k], kind, colour);
    }
}

void ChartScatter(ChartData *data, ChartSet *set)
{
    if (!_HasPoints(data, set))
    {
        return;
    }
    // A scatter chart never shows the cross, which has no series colour.
    const int32_t kind = set->dataSymbol == _kSymbolCross ? 0 : set->dataSymbol;
    for (int32_t i = 0; i < data->nSeries; i++)
    {
        if (set->pointsPerSeries[i] != nullptr)
        {
            _DrawSymbols(set->pointsPerSeries[i], set->nGraphedCells, kind, data->series[i].color);
        }
    }
}

void ChartArea(ChartData *data, ChartSet *set)
{
    if (!_HasSeries(data, set) || data->seriesPtrs == nullptr)
    {
        return;
    }
    SeriesShellSort(data, 1); // the largest is drawn first and covered by the others
    for (int32_t i = 0; i < data->nSeries; i++)
    {
        const Series *series = data->seriesPtrs[i];
        if (series->points == nullptr)
        {
            continue;
        }
        const Polygon outline = {_ToInt32(set->nGraphedCells + 2LL), series->points};
        SetPenColor(series->color);
        FillPolygon(&outline, 0, 0);
        SetPenColor(kColorAreaOutline);
        DrawPolygon(&outline, 0, 0);
        _DrawSymbols(series->points, set->nGraphedCells, set->dataSymbol, series->color);
    }
}

// Draws the segment from a point to the next one and leaves the pen as wide as the line. The pen stamps from its top
// left corner: half its size brings the line's middle to the points.
static void _DrawSegment(const Point *from, int32_t lineSize, int32_t colour)
{
    const int64_t half = lineSize / 2;
    _MovePen(from[0].x - half, from[0].y - half);
    SetPenColor(colour);
    SetPenSize(lineSize, lineSize);
    DrawLineTo(_ToInt32(from[1].x - half), _ToInt32(from[1].y - half));
}

void ChartLine(ChartData *data, ChartSet *set)
{
    if (!_HasPoints(data, set))
    {
        return;
    }
    const int32_t lineSize = std::min(set->lineSize, _kMaxLineSize);
    for (int32_t i = 0; i < data->nSeries; i++)
    {
        const Point *points = set->pointsPerSeries[i];
        const int32_t colour = data->series[i].color;
        for (int32_t k = 1; points != nullptr && k <= set->nGraphedCells; k++)
        {
            // Each marker lies over the line that leaves it and under the next one.
            if (k < set->nGraphedCells)
            {
                _DrawSegment(&points[k], lineSize, colour);
            }
            SetPenSize(1, 1);
            ChartDrawSymbol(&points[k], set->dataSymbol, colour);
        }
    }
}

// The bar of a data point, from the zero line to the value.
static Rectangle _BarBox(const Point *point, bool fHorizontal, int64_t zero, int64_t half)
{
    if (fHorizontal)
    {
        return {_ToInt32(zero), _ToInt32(point->y - half), point->x, _ToInt32(point->y + half)};
    }
    return {_ToInt32(point->x - half), point->y, _ToInt32(point->x + half), _ToInt32(zero)};
}

void ChartBar(ChartData *data, ChartSet *set)
{
    if (!_HasPoints(data, set))
    {
        return;
    }
    const bool fHorizontal = _IsHorizontal(set);
    const int64_t perStep = fHorizontal ? set->xDivW : set->yDivH;
    const int64_t belowZero = set->zeroDivs * perStep;
    const int64_t zero = fHorizontal ? set->yAxisBox.right + belowZero : set->xAxisBox.top - belowZero;
    const int64_t perCategory = fHorizontal ? set->yDivH : set->xDivW;
    const int64_t slots = std::max(set->nGraphedSeries, 0) + 1LL;
    const int64_t half = (perCategory - 2 * slots) / slots / 2;
    for (int32_t i = 0; i < data->nSeries; i++)
    {
        const Point *points = set->pointsPerSeries[i];
        for (int32_t k = 1; points != nullptr && k <= set->nGraphedCells; k++)
        {
            const Rectangle bar = _BarBox(&points[k], fHorizontal, zero, half);
            SetPenColor(data->series[i].color);
            FillRectangle(&bar);
            SetPenColor(kColorFrame);
            DrawRectangle(&bar);
        }
    }
}
