// qbgrchrt_pie.cpp - draws one pie for each series, one under the other or side by side.
//
// A slice is framed and then filled from a seed near its rim. The seed of a very thin slice can fall outside its frame,
// and the fill would run over the picture or over a neighbour. Each slice is therefore tried first on a spare image
// that holds nothing but its frame, and filled only when the fill stays in it. All slices with an inside of their own
// pass. Rounding can also carry the last slices past the full circle, where their seed lies on the first ones.
//
// Angles are whole degrees, counter-clockwise from the positive x axis; a pie closes at 359 degrees, on purpose.
// Radii are worked out in 128ths of a pixel.

#include "qbgrchrt_state.h"
#include "qbgrerr.h"

#include <cstdio>

constexpr int32_t _kLastAngle = 359;
constexpr int32_t _kFullCircle = 360;

// What the spare image's pixels stand for.
constexpr int32_t _kTrialFree = 0; // as new images come
constexpr int32_t _kTrialFilled = 1;
constexpr int32_t _kTrialFrame = 2;

// The spare image of one pie.
struct _Trial
{
    Image *chart; // the image to return to; not owned
    Image *image; // owned
    int32_t left; // what (0, 0) of the spare image is in the chart
    int32_t top;
};

// One pie as it is drawn.
struct _Pie
{
    const Series *series;
    Rectangle square;
    Point center;
    int32_t diameter; // pixels, 0 or less: no slices
    int32_t fillR;    // radius of the seeds, pixels
    int32_t labelR;   // radius of the percentages, pixels
    int32_t explodeR; // how far an exploded slice moves, pixels
    int64_t pad;      // how far an exploded pie moves its label down, pixels
};

// How the pies stand in the plot.
struct _PieRow
{
    bool fHorizontal;
    int64_t across; // extent of the plot across the row, pixels
    double unit;    // extent along the row of a pie of relative size 1, pixels
    double scale;   // what makes the largest pie fit across the row, at most 1
};

// One slice; angles in degrees.
struct _Slice
{
    int32_t start;
    int32_t span;
    int32_t middle;
    Point offset; // from its place in the closed pie, pixels
    uint8_t colour;
};

static Point _OnCircle(int32_t angle, int32_t radius)
{
    return {CosX(-angle, radius), SinY(-angle, radius)};
}

static _PieRow _GetRow(const ChartSet *set)
{
    _PieRow row = {};
    row.fHorizontal = _IsHorizontal(set);
    row.across = row.fHorizontal ? _HeightOf(&set->plotBox) : _WidthOf(&set->plotBox);
    const int64_t along = row.fHorizontal ? _WidthOf(&set->plotBox) : _HeightOf(&set->plotBox);
    row.unit = static_cast<double>(along) / set->pieScaleSum;
    const double largest = set->pieScaleMax * row.unit;
    const double room = static_cast<double>(row.across);
    row.scale = largest > 0 && room < largest ? room / largest : 1.0;
    return row;
}

// Sizes and places a pie in its slot, which begins at (x, y) and extends for extent pixels along the row.
static _Pie _GetPie(const Series *series, const ChartSet *set, const _PieRow *row, Point slot, int32_t extent)
{
    _Pie pie = {};
    pie.series = series;
    int64_t diameter = _WholePart(extent * row->scale) - 2LL * set->pieLabelH;
    if (set->pieExplode != 0)
    {
        const int64_t fifth = diameter * 128 / 5;
        pie.pad = fifth / 256;
        diameter -= fifth / 128;
    }
    const int64_t slackX = (row->fHorizontal ? extent : row->across) - diameter;
    const int64_t slackY = (row->fHorizontal ? row->across : extent) - diameter;
    const int64_t left = slot.x + slackX / 2;
    const int64_t top = slot.y + slackY / 2;
    SetRectangle(&pie.square, _ToInt32(left), _ToInt32(top), _ToInt32(left + diameter), _ToInt32(top + diameter));
    pie.center = {_ToInt32(left + diameter / 2), _ToInt32(top + diameter / 2)};
    pie.diameter = _ToInt32(diameter);
    const int64_t radius = diameter * 128 / 2;
    pie.fillR = _ToInt32(radius / 10 * 9 / 128);
    pie.labelR = _ToInt32(radius / 4 * 3 / 128);
    pie.explodeR = _ToInt32(radius / 5 / 128);
    return pie;
}

// The spare image is wide enough for exploded slices and leaves a rim around them, so that all that is outside hangs
// together.
static _Trial _OpenTrial(const _Pie *pie)
{
    const int32_t rim = pie->explodeR + 3;
    const int64_t side = pie->diameter + 2LL * rim;
    const Rectangle rect = {0, 0, _ToInt32(side), _ToInt32(side)};
    _Trial trial = {nullptr, nullptr, pie->square.left - rim, pie->square.top - rim};
    GetImage(&trial.chart);
    trial.image = NewImage(&rect, 3);
    if (trial.image == nullptr)
    {
        ExitWithError("\nOut of memory trying to allocate\n%d bytes for the slices of a pie\n", _ToInt32(side * side));
    }
    SetImage(trial.chart);
    return trial;
}

// The part of the spare image that holds a slice's frame with free pixels all around. Arcs and radii are off by up to a
// degree and a pixel, and so are sine and cosine by their 128ths.
static Rectangle _GetTrialArea(const _Trial *trial, const _Pie *pie, const _Slice *slice)
{
    constexpr int32_t kSpareDegrees = 3;
    const int32_t spare = 4 + pie->diameter / 64;
    const Point center = {pie->center.x + slice->offset.x - trial->left, pie->center.y + slice->offset.y - trial->top};
    Rectangle area = {center.x, center.y, center.x, center.y};
    for (int32_t i = -kSpareDegrees; i <= slice->span + kSpareDegrees; i++)
    {
        const Point at = _OnCircle(slice->start + i, pie->diameter / 2);
        area = {std::min(area.left, center.x + at.x), std::min(area.top, center.y + at.y),
                std::max(area.right, center.x + at.x), std::max(area.bottom, center.y + at.y)};
    }
    return {std::max(area.left - spare, 0), std::max(area.top - spare, 0),
            std::min(area.right + spare, trial->image->width), std::min(area.bottom + spare, trial->image->height)};
}

// Whether the fill of a slice stays in its frame. The slice is tried in its own part of the spare image, closed by a
// rectangle, because a pie may have hundreds of slices and be very large; the part is left as free as it was. A fill
// that leaves the frame reaches every corner of the rectangle.
//   square   of the slice, exploded or not
static bool _IsEnclosed(const _Trial *trial, const _Pie *pie, const Rectangle *square, const _Slice *slice, Point seed)
{
    const Rectangle area = _GetTrialArea(trial, pie, slice);
    Rectangle local = *square;
    MoveRectangleRel(&local, -trial->left, -trial->top);
    SetImage(trial->image);
    SetPenColor(_kTrialFrame);
    FrameArc(&local, slice->start, slice->span);
    DrawRectangle(&area);
    SetPenColor(_kTrialFilled);
    Fill(seed.x - trial->left, seed.y - trial->top, _kTrialFrame);
    const int64_t corner = (area.top + 1LL) * trial->image->width + area.left + 1;
    const bool fEnclosed = trial->image->pixels[corner] != _kTrialFilled;
    SetPenColor(_kTrialFree);
    FillRectangle(&area);
    SetImage(trial->chart);
    return fEnclosed;
}

static bool _IsExploded(const ChartSet *set, const Series *series, double value)
{
    return (set->pieExplode & kExplodeAll) != 0 || ((set->pieExplode & kExplodeMax) != 0 && value == series->max) ||
           ((set->pieExplode & kExplodeMin) != 0 && value == series->min);
}

static void _DrawSlice(const _Pie *pie, const _Slice *slice, const _Trial *trial)
{
    Rectangle square = pie->square;
    MoveRectangleRel(&square, slice->offset.x, slice->offset.y);
    const Point inside = _OnCircle(slice->middle, pie->fillR);
    const Point seed = {pie->center.x + slice->offset.x + inside.x, pie->center.y + slice->offset.y + inside.y};
    SetPenColor(kColorAreaOutline);
    FrameArc(&square, slice->start, slice->span);
    SetPenColor(slice->colour);
    if (slice->middle <= _kFullCircle && _IsEnclosed(trial, pie, &square, slice, seed))
    {
        Fill(seed.x, seed.y, kColorAreaOutline);
    }
}

// Percentages take the colour of the following slice, so that they stand out on their own.
static void _DrawPercentage(const _Pie *pie, const _Slice *slice, double fraction, int32_t ascent)
{
    char text[_kNumberTextSize];
    std::snprintf(text, sizeof text, "%.1f%s", 100 * fraction, "%");
    const Point dim = _MeasureText(text);
    const Point at = _OnCircle(slice->middle, pie->labelR);
    _MovePen(static_cast<int64_t>(pie->center.x) + slice->offset.x + at.x - dim.x / 2,
             static_cast<int64_t>(pie->center.y) + slice->offset.y + at.y + ascent - dim.y / 2);
    SetPenColor(_NextSliceColor(slice->colour));
    DrawText(text);
}

// Draws all slices of a pie whose sum is above 0. The last one ends where the pie closes, whatever rounding left for
// it.
static void _DrawSlices(const _Pie *pie, const ChartSet *set)
{
    _SelectDataFont(set);
    const int32_t ascent = _CurFontInfo().ascent;
    const Cell *cells = pie->series->cells + set->firstCell;
    const _Trial trial = _OpenTrial(pie);
    _Slice slice = {};
    slice.colour = _kFirstSliceColor;
    for (int32_t i = 0; i < set->nGraphedCells; i++)
    {
        const double fraction = cells[i].value / pie->series->sum;
        const bool fLast = i == set->nGraphedCells - 1;
        slice.span =
            fLast ? _kLastAngle - slice.start : std::clamp(_WholePart(360.0 * fraction + 0.5), 0, _kFullCircle);
        slice.middle = slice.start + slice.span / 2;
        if (slice.span > 0)
        {
            const bool fExploded = _IsExploded(set, pie->series, cells[i].value);
            slice.offset = _OnCircle(slice.middle, fExploded ? pie->explodeR : 0);
            _DrawSlice(pie, &slice, &trial);
            if (set->dataPos != 0)
            {
                _DrawPercentage(pie, &slice, fraction, ascent);
            }
            slice.start += slice.span;
        }
        slice.colour = _NextSliceColor(slice.colour);
    }
    KillImage(trial.image);
}

// The series label stands centred under the pie.
static void _DrawPieLabel(const _Pie *pie, const ChartSet *set)
{
    _SelectLabelFont(set);
    const FontInfo info = _CurFontInfo();
    const int64_t width = static_cast<int64_t>(pie->diameter) + pie->series->labelDim.x;
    _MovePen(pie->square.right - width / 2, pie->square.bottom + pie->pad + info.leading + info.ascent);
    SetPenColor(kColorFrame);
    DrawText(_TextOf(pie->series->label));
}

void ChartPie(ChartData *data, ChartSet *set)
{
    if (!_HasRecords(data, set) || GetGraphError() != 0 || !(set->pieScaleSum > 0))
    {
        return;
    }
    const _PieRow row = _GetRow(set);
    Point slot = {set->plotBox.left, set->plotBox.top};
    for (int32_t i = 0; i < data->nSeries; i++)
    {
        const Series *series = &data->series[i];
        if (!_IsGraphed(series))
        {
            continue;
        }
        const int32_t extent = _WholePart(series->pieScale * row.unit);
        const _Pie pie = _GetPie(series, set, &row, slot, extent);
        if (pie.diameter > 0 && series->sum > 0)
        {
            _DrawSlices(&pie, set);
        }
        _DrawPieLabel(&pie, set);
        int32_t *along = row.fHorizontal ? &slot.x : &slot.y;
        *along = _ToInt32(static_cast<int64_t>(*along) + extent);
    }
}
