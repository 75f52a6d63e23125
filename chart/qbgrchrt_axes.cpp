// qbgrchrt_axes.cpp - draws both axes: lines, ticks, dotted grid, scale labels, axis titles.
//
// Both axes are drawn by the same steps from a description of the axis. Ticks are counted from the corner where the
// axes meet; the one in the corner has neither grid line nor category, and no label when its value is 0.

#include "qbgrchrt_state.h"
#include "qbgrutil.h"

#include <cinttypes>
#include <cstdio>
#include <cstring>

constexpr int32_t _kTickLength = 8;

// Pixels from dot to dot of a grid line, where the value is 0 and elsewhere.
constexpr int32_t _kZeroGridStep = 2;
constexpr int32_t _kGridStep = 5;

// One axis and what stands along it.
struct _Axis
{
    bool fX;
    bool fValues; // carries values, not categories
    uint32_t flags;
    int32_t nDivs;
    int64_t pixels; // per division
    int64_t step;   // value per division
    int64_t line;   // y of the x axis, x of the y axis
    int64_t start;  // where along the axis its first tick is
    int64_t ticks;  // where across the axis its ticks begin
    int64_t shift;  // from a tick back to its label: half a division under categories
};

// The label that is written next; for categories also what the last one said.
struct _Label
{
    int64_t value;
    const Cell *cells; // of the reference series
    int32_t cell;      // index of the next category
    int32_t cellStep;  // 1, or -1 in reversed order
    bool fDates;
    bool fShowsDate; // a date was written before
    DateParts lastDate;
    const char *text;
    int64_t width; // pixels
    char buffer[_kNumberTextSize];
};

static int64_t _TickOffset(uint32_t axisFlags)
{
    if ((axisFlags & kTicksOutside) != 0)
    {
        return _kTickLength;
    }
    return (axisFlags & kTicksMiddle) != 0 ? _kTickLength / 2 : 0;
}

static _Axis _XAxis(const ChartSet *set)
{
    _Axis axis = {};
    axis.fX = true;
    axis.fValues = _IsHorizontal(set);
    axis.flags = set->xAxisFlags;
    axis.nDivs = set->xDivs;
    axis.pixels = set->xDivW;
    axis.step = set->xStep;
    axis.line = set->xAxisBox.top;
    axis.start = set->xAxisBox.left;
    axis.ticks = axis.line + _TickOffset(axis.flags);
    axis.shift = axis.fValues ? 0 : axis.pixels / 2;
    return axis;
}

static _Axis _YAxis(const ChartSet *set)
{
    _Axis axis = {};
    axis.fValues = !_IsHorizontal(set);
    axis.flags = set->yAxisFlags;
    axis.nDivs = set->yDivs;
    axis.pixels = set->yDivH;
    axis.step = set->yStep;
    axis.line = set->yAxisBox.right;
    axis.start = set->yAxisBox.bottom;
    axis.ticks = axis.line - _TickOffset(axis.flags);
    axis.shift = axis.fValues ? 0 : axis.pixels / 2;
    return axis;
}

// Where along the axis its i-th tick is.
static int64_t _TickPos(const _Axis *axis, int64_t i)
{
    const int64_t distance = i * axis->pixels;
    return axis->fX ? axis->start + distance : axis->start - distance;
}

static void _DrawTick(const _Axis *axis, int64_t pos)
{
    if (axis->fX)
    {
        _MovePen(pos, axis->ticks);
        DrawLineRel(0, -_kTickLength);
    }
    else
    {
        _MovePen(axis->ticks, pos);
        DrawLineRel(_kTickLength, 0);
    }
}

// Dots from the axis across the plot up to its far edge; none in a plot without extent.
static void _DrawGridLine(const _Axis *axis, const ChartSet *set, int64_t pos, int32_t dotStep)
{
    if (axis->fX)
    {
        const bool fRoom = _HeightOf(&set->yAxisBox) > 0;
        for (int64_t y = axis->line; fRoom && y >= set->yAxisBox.top; y -= dotStep)
        {
            _MovePen(pos, y);
            DrawPen();
        }
    }
    else
    {
        const bool fRoom = _WidthOf(&set->xAxisBox) > 0;
        for (int64_t x = axis->line; fRoom && x <= set->xAxisBox.right; x += dotStep)
        {
            _MovePen(x, pos);
            DrawPen();
        }
    }
}

static void _SetNumberText(_Label *label)
{
    std::snprintf(label->buffer, sizeof label->buffer, "%" PRId64, label->value);
    label->text = label->buffer;
    label->width = _MeasureText(label->text).x;
}

// A date shows its month and its year only where they change. Under the x axis the parts stand one under the other,
// centred by the day; left of the y axis the month stands before the day. The difference is on purpose.
static void _SetDateText(_Label *label, const DateParts *date, bool fX)
{
    const bool fYear = !label->fShowsDate || std::strcmp(date->year, label->lastDate.year) != 0;
    const bool fMonth = fYear || std::strcmp(date->month, label->lastDate.month) != 0;
    const char *yearBreak = fYear ? "\n" : "";
    const char *year = fYear ? date->year : "";
    const char *month = fMonth ? date->month : "";
    if (fX)
    {
        std::snprintf(label->buffer, sizeof label->buffer, "%s%s%s%s%s", date->day, fMonth ? "\n" : "", month,
                      yearBreak, year);
        label->width = _MeasureText(date->day).x;
    }
    else
    {
        std::snprintf(label->buffer, sizeof label->buffer, "%s%s%s%s%s", month, fMonth ? "  " : "", date->day,
                      yearBreak, year);
        label->width = _MeasureText(label->buffer).x;
    }
    label->text = label->buffer;
    label->lastDate = *date;
    label->fShowsDate = true;
}

// Takes the next category. A date that does not read as one stands as it is.
static void _SetCategoryText(_Label *label, bool fX)
{
    const Cell *cell = &label->cells[label->cell];
    label->cell += label->cellStep;
    label->text = _TextOf(cell->text);
    label->width = cell->textDim.x;
    if (label->fDates)
    {
        DateParts date = {};
        if (SplitDate(label->text, &date) != 0)
        {
            _SetDateText(label, &date, fX);
        }
        else
        {
            label->width = _MeasureText(label->text).x;
        }
    }
}

// Writes the label's text at a tick. Scale labels keep the legend's distance from what they belong to.
static void _DrawLabel(const _Axis *axis, const _Label *label, const ChartSet *set, const FontInfo *info, int64_t pos)
{
    if (axis->fX)
    {
        _MovePen(pos - label->width / 2 - axis->shift, axis->ticks + set->labelMarginY + info->ascent);
    }
    else
    {
        _MovePen(axis->ticks - set->labelMarginX - label->width, pos + axis->shift + info->ascent - info->size / 2);
    }
    DrawText(label->text);
}

// The first label of an axis: the value in the corner, or the first category.
static _Label _FirstLabel(const _Axis *axis, const ChartData *data, const ChartSet *set)
{
    const Series *ref = &data->series[data->refSeries];
    const bool fReversed = set->refDir == 2;
    _Label label = {};
    label.value = -(set->zeroDivs * axis->step);
    label.cells = ref->cells;
    label.cell = fReversed ? set->lastCell : set->firstCell;
    label.cellStep = fReversed ? -1 : 1;
    label.fDates = (ref->flags & kSeriesDatesBit) != 0;
    return label;
}

// Ticks, grid lines and scale labels, from the corner outwards.
static void _DrawScale(const _Axis *axis, const ChartData *data, const ChartSet *set, const FontInfo *info)
{
    const bool fLabels = (axis->flags & kAxisScaleLabels) != 0;
    const bool fGrid = axis->fValues && (axis->flags & kAxisGridLines) != 0;
    _Label label = _FirstLabel(axis, data, set);
    if (fLabels && axis->fValues && label.value != 0)
    {
        _SetNumberText(&label);
        _DrawLabel(axis, &label, set, info, axis->start);
    }
    _DrawTick(axis, axis->start);
    label.value += axis->step;
    for (int64_t i = 1; i <= axis->nDivs; i++)
    {
        const int64_t pos = _TickPos(axis, i);
        _DrawTick(axis, pos);
        if (fGrid)
        {
            _DrawGridLine(axis, set, pos, label.value == 0 ? _kZeroGridStep : _kGridStep);
        }
        if (!fLabels)
        {
            continue; // on purpose: the value stays too, and all grid lines look like the first
        }
        if (axis->fValues)
        {
            _SetNumberText(&label);
            label.value += axis->step;
        }
        else
        {
            _SetCategoryText(&label, axis->fX);
        }
        _DrawLabel(axis, &label, set, info, pos);
    }
}

static void _DrawAxisLines(const ChartSet *set)
{
    SetPenColor(kColorFrame);
    SetPenSize(1, 1);
    MovePenTo(set->xAxisBox.left, set->xAxisBox.top);
    DrawLineTo(set->xAxisBox.right, set->xAxisBox.top);
    MovePenTo(set->yAxisBox.right, set->yAxisBox.top);
    DrawLineTo(set->yAxisBox.right, set->yAxisBox.bottom);
}

// The y axis title reads upwards, around the middle of the axis.
static void _DrawYTitle(const ChartSet *set, const FontInfo *scaleInfo)
{
    const Rectangle *box = &set->yAxisBox;
    _SelectAxisLabelFont(set);
    SetFontOrientation(2);
    _MovePen(static_cast<int64_t>(box->left) + scaleInfo->ascent,
             box->top + _HeightOf(box) / 2 + set->yAxisLabelDim.y / 2);
    DrawText(_TextOf(set->yAxisLabel));
    SetFontOrientation(0);
}

static void _DrawXTitle(const ChartSet *set, const FontInfo *scaleInfo)
{
    const Rectangle *box = &set->xAxisBox;
    _SelectAxisLabelFont(set);
    _MovePen(box->left + (_WidthOf(box) / 2 - set->xAxisLabelDim.x / 2),
             static_cast<int64_t>(box->bottom) - scaleInfo->size);
    DrawText(_TextOf(set->xAxisLabel));
}

void ChartDrawAxis(ChartData *data, ChartSet *set)
{
    if (!_HasRecords(data, set))
    {
        return;
    }
    _DrawAxisLines(set);
    _SelectLabelFont(set);
    const FontInfo info = _CurFontInfo();

    const _Axis yAxis = _YAxis(set);
    _DrawScale(&yAxis, data, set, &info);
    if ((yAxis.flags & kAxisTitle) != 0)
    {
        _DrawYTitle(set, &info);
    }
    _SelectLabelFont(set);
    const _Axis xAxis = _XAxis(set);
    _DrawScale(&xAxis, data, set, &info);
    if ((xAxis.flags & kAxisTitle) != 0)
    {
        _DrawXTitle(set, &info);
    }
    MovePenTo(set->xAxisBox.left, set->xAxisBox.top);
}
