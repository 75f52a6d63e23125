// qbgrchrt_layout.cpp - measures the chart's texts and places its title box, legend box and plot box.
//
// A chart that is too small for its contents is made larger. Boxes are first sized at (0, 0) and placed at the end,
// when all sizes are known. The legend's box is called label box in the records.

#include "qbgrchrt_state.h"
#include "qbgrerr.h"

// A GIF holds its width and height in 16 bits.
constexpr int32_t _kMaxChartSide = 65535;

// Smallest extent of a plot along its value axis, pixels.
constexpr int32_t _kMinValueSpan = 50;

// Diameter of a pie of relative size 1 and the space between pies in a row, pixels.
constexpr int32_t _kPieUnit = 50;
constexpr int32_t _kPieGap = 15;

// What the entries of a legend add up to, pixels.
struct _Entries
{
    int64_t count;
    int64_t widest;
    int64_t sum;
};

// A rectangle on its way to its place.
struct _Box
{
    int64_t left;
    int64_t top;
    int64_t right;
    int64_t bottom;
};

// Everything that placing works on; title and label keep their sizes throughout.
struct _Placement
{
    _Box title;
    _Box label;
    _Box plot;
    int64_t titleW;
    int64_t titleH;
    int64_t labelW;
    int64_t labelH;
    int64_t width; // of the image
    int64_t height;
};

static int64_t _ShadowOf(uint32_t boxFlags)
{
    return (boxFlags & kBoxShadow) != 0 ? _kShadowSize : 0;
}

// A fifth on top: room for the axes' strips beside what the data needs.
static int32_t _PlusFifth(int64_t size)
{
    const int64_t clamped = _ToInt32(size);
    return _ToInt32(clamped + clamped * 20 / 100);
}

void GetTitleBoxDim(ChartData *data, ChartSet *set)
{
    if (!_HasRecords(data, set))
    {
        return;
    }
    if ((set->titleBoxPos & kPosSide) != 0)
    {
        SetFontOrientation(2);
    }
    _SelectTitleFont(set);
    data->titleDim = _MeasureText(data->title);
    SetFontOrientation(0);

    const FontInfo info = _CurFontInfo();
    set->titleMarginX = info.size / 2 + 1;
    set->titleMarginY = info.leading;
    const int64_t shadow = _ShadowOf(set->titleBoxFlags);
    SetRectangle(&set->titleBox, 0, 0, _ToInt32(shadow + data->titleDim.x + 2LL * set->titleMarginX),
                 _ToInt32(shadow + data->titleDim.y + 2LL * set->titleMarginY));
}

static void _AddEntry(_Entries *entries, int32_t width)
{
    entries->count++;
    entries->widest = std::max<int64_t>(entries->widest, width);
    entries->sum += width;
}

// Selects the label font and returns the height of a legend line in it.
static int32_t _LabelLineHeight(const ChartSet *set)
{
    _SelectLabelFont(set);
    const FontInfo info = _CurFontInfo();
    return info.size + info.leading;
}

// In a column an empty line stands between entries, on purpose; in a row each entry has its own three margins.
static void _SetLabelBox(ChartSet *set, const _Entries *entries, int32_t lineH)
{
    const int64_t half = lineH / 2;
    const int64_t shadow = _ShadowOf(set->labelBoxFlags);
    int64_t width = entries->widest + lineH + 3 * half;
    int64_t height = entries->count * lineH + (entries->count - 1) * lineH + 2 * half;
    if ((set->labelBoxPos & kPosCenter) != 0)
    {
        width = (3 * half + lineH) * entries->count + entries->sum;
        height = 2 * half + lineH;
    }
    SetRectangle(&set->labelBox, 0, 0, _ToInt32(shadow + width), _ToInt32(shadow + height));
    set->labelMarginX = _ToInt32(half);
    set->labelMarginY = _ToInt32(half);
    set->labelLineH = lineH;
    set->hasLabelBox = 1;
}

// Makes a series label the title of the x or the y axis. The label font is selected again afterwards.
static void _SetAxisTitle(ChartSet *set, bool fXAxis, const char *label)
{
    _SelectAxisLabelFont(set);
    if (fXAxis)
    {
        set->xAxisLabel = label;
        set->xAxisLabelDim = _MeasureText(label);
    }
    else
    {
        SetFontOrientation(2);
        set->yAxisLabel = label;
        set->yAxisLabelDim = _MeasureText(label);
        SetFontOrientation(0);
    }
    _SelectLabelFont(set);
}

void GetLabelBoxDim(ChartData *data, ChartSet *set)
{
    if (!_HasRecords(data, set))
    {
        return;
    }
    _SelectAxisLabelFont(set);
    set->axisLabelMarginX = _CurFontInfo().size;
    set->axisLabelMarginY = set->axisLabelMarginX;

    const bool fRefIsX = !_IsHorizontal(set);
    const uint32_t refFlags = fRefIsX ? set->xAxisFlags : set->yAxisFlags;
    uint32_t *valueFlags = fRefIsX ? &set->yAxisFlags : &set->xAxisFlags;
    const int32_t lineH = _LabelLineHeight(set);
    _Entries entries = {0, 0, 0};
    const char *lastLabel = nullptr;
    for (int32_t i = 0; i < data->nSeries; i++)
    {
        Series *series = &data->series[i];
        if ((series->flags & kSeriesReferenceBit) != 0)
        {
            if ((refFlags & kAxisTitle) != 0)
            {
                _SetAxisTitle(set, fRefIsX, series->label);
            }
        }
        else if (_IsGraphed(series))
        {
            series->labelDim = _MeasureText(series->label);
            _AddEntry(&entries, series->labelDim.x);
            lastLabel = series->label;
        }
    }
    if (entries.count == 1 && (*valueFlags & kAxisTitle) != 0)
    {
        // A single series needs no legend: its name goes on the value axis.
        _SetAxisTitle(set, !fRefIsX, lastLabel);
        set->hasLabelBox = 0;
        set->labelMarginX = lineH / 2;
        set->labelMarginY = lineH / 2;
        set->labelLineH = 0;
        return;
    }
    *valueFlags &= ~kAxisTitle;
    _SetLabelBox(set, &entries, lineH);
}

void GetPieLabelBoxDim(ChartData *data, ChartSet *set)
{
    if (!_HasRecords(data, set))
    {
        return;
    }
    const int32_t lineH = _LabelLineHeight(set);
    for (int32_t i = 0; i < data->nSeries; i++)
    {
        Series *series = &data->series[i];
        if (i != data->refSeries && _IsGraphed(series))
        {
            series->labelDim = _MeasureText(series->label);
        }
    }
    _Entries entries = {0, 0, 0};
    Cell *cells = data->series[data->refSeries].cells + set->firstCell;
    for (int32_t i = 0; i < set->nGraphedCells; i++)
    {
        cells[i].textDim = _MeasureText(cells[i].text);
        _AddEntry(&entries, cells[i].textDim.x);
    }
    _SetLabelBox(set, &entries, lineH);
}

// Size of the largest category text in the current font. Dates are built anew for each label, so a sample stands for
// them: no date is wider than it by more than a letter's difference.
static Point _MeasureRefLabels(ChartData *data, const ChartSet *set)
{
    const Series *ref = &data->series[data->refSeries];
    if ((ref->flags & kSeriesDatesBit) != 0)
    {
        return _MeasureText(_IsHorizontal(set) ? "May 31\n1996" : "31\nMay\n1996");
    }
    Point largest = {0, 0};
    Cell *cells = ref->cells + set->firstCell;
    for (int32_t i = 0; i < set->nGraphedCells; i++)
    {
        cells[i].textDim = _MeasureText(cells[i].text);
        largest.x = std::max(largest.x, cells[i].textDim.x);
        largest.y = std::max(largest.y, cells[i].textDim.y);
    }
    return largest;
}

// Pixels that the bars or markers of one category need.
static int64_t _MarksPerCategory(const ChartSet *set)
{
    const int64_t perSeries = set->chartType == kTypeBar ? 5 : 7;
    return perSeries * ((set->chartType & kTypeStackedBit) != 0 ? 2 : set->nGraphedSeries + 1LL);
}

void GetSizeRequirements(ChartData *data, ChartSet *set)
{
    if (!_HasRecords(data, set))
    {
        return;
    }
    _SelectLabelFont(set);
    const int64_t leading = _CurFontInfo().leading;
    set->refLabelDim = _MeasureRefLabels(data, set);

    int64_t dataSize = 0;
    if (set->dataPos != 0)
    {
        _SelectDataFont(set);
        const FontInfo info = _CurFontInfo();
        set->dataMarginX = info.leading;
        set->dataMarginY = info.leading;
        dataSize = info.size;
        _SelectLabelFont(set);
    }
    const bool fHorizontal = _IsHorizontal(set);
    const int64_t perText = leading + (fHorizontal ? set->refLabelDim.y : set->refLabelDim.x);
    const int64_t perCategory = _ToInt32(std::max({_MarksPerCategory(set), dataSize, perText}));
    const int32_t need = _PlusFifth(perCategory * set->nGraphedCells);

    int32_t *chartSide = fHorizontal ? &set->chartH : &set->chartW;
    *chartSide = std::max(*chartSide, need);
    set->minPlotW = fHorizontal ? _kMinValueSpan : need;
    set->minPlotH = fHorizontal ? need : _kMinValueSpan;
}

void GetPieSizeRequirements(ChartData *data, ChartSet *set)
{
    if (!_HasRecords(data, set))
    {
        return;
    }
    _SelectLabelFont(set);
    const int64_t gap = _CurFontInfo().leading;
    int64_t widest = 0;
    int64_t highest = 0;
    int64_t labelsW = gap;
    int64_t largest = 0;
    int64_t rowW = _kPieGap;
    int64_t sum = 0;
    for (int32_t i = 0; i < data->nSeries; i++)
    {
        const Series *series = &data->series[i];
        if (i == data->refSeries || !_IsGraphed(series))
        {
            continue;
        }
        widest = std::max<int64_t>(widest, series->labelDim.x);
        highest = std::max<int64_t>(highest, series->labelDim.y);
        labelsW += series->labelDim.x + gap;
        const int64_t diameter = static_cast<int64_t>(_kPieUnit) * _WholePart(std::floor(series->pieScale + 0.5));
        largest = std::max(largest, diameter);
        rowW += diameter + _kPieGap;
        sum += diameter;
    }
    const int64_t bandH = 2 * gap + highest;
    set->pieLabelH = bandH < 16 ? 15 : _ToInt32(bandH); // on purpose: 15 for all bands below 16
    const int64_t band = set->pieLabelH;
    const bool fHorizontal = _IsHorizontal(set);
    const int64_t width = fHorizontal ? std::max(rowW, labelsW) : std::max(widest, largest) + 2 * band;
    const int64_t height = fHorizontal ? 2 * band + largest : (set->nGraphedSeries + 1LL) * band + sum;
    set->minPlotW = _PlusFifth(width);
    set->minPlotH = _PlusFifth(height);
    set->chartW = std::max(set->chartW, set->minPlotW);
    set->chartH = std::max(set->chartH, set->minPlotH);
}

static bool _IsTop(int32_t pos)
{
    return (pos & kPosTop) != 0;
}

static bool _IsBottom(int32_t pos)
{
    return (pos & kPosBottom) != 0;
}

static bool _IsSide(int32_t pos)
{
    return (pos & kPosSide) != 0;
}

static void _MoveBox(_Box *box, int64_t dx, int64_t dy)
{
    *box = {box->left + dx, box->top + dy, box->right + dx, box->bottom + dy};
}

static Rectangle _ToRectangle(const _Box *box)
{
    return {_ToInt32(box->left), _ToInt32(box->top), _ToInt32(box->right), _ToInt32(box->bottom)};
}

// Makes the image as large as its largest box, then as large as the plot beside the boxes needs it.
static void _SizeImage(_Placement *place, const ChartSet *set)
{
    place->width = std::max({static_cast<int64_t>(set->chartW), place->titleW, place->labelW});
    place->height = std::max({static_cast<int64_t>(set->chartH), place->titleH, place->labelH});
    int64_t plotW = place->width;
    int64_t plotH = place->height;
    if (_IsSide(set->titleBoxPos))
    {
        plotW += place->titleW - _kBoxGap; // on purpose: a title at the side counts as room, not as its loss
    }
    else
    {
        plotH -= place->titleH + _kBoxGap;
    }
    if (_IsSide(set->labelBoxPos))
    {
        plotW -= place->labelW + _kBoxGap;
    }
    else
    {
        plotH -= place->labelH + _kBoxGap;
    }
    place->width += std::max<int64_t>(0, set->minPlotW - plotW);
    place->height += std::max<int64_t>(0, set->minPlotH - plotH);
}

// The box of the given size at its position along the image's edges.
static _Box _BoxAtEdge(int64_t boxW, int64_t boxH, int32_t pos, const _Placement *place)
{
    int64_t x = place->width - boxW;
    if ((pos & kPosLeft) != 0)
    {
        x = 0;
    }
    else if ((pos & kPosCenter) != 0 && !_IsSide(pos))
    {
        x /= 2;
    }
    int64_t y = place->height - boxH;
    if (_IsTop(pos))
    {
        y = 0;
    }
    else if (_IsSide(pos))
    {
        y /= 2;
    }
    return {x, y, x + boxW, y + boxH};
}

// The title keeps the plot off its whole edge.
static void _PlaceTitle(_Placement *place, int32_t pos)
{
    place->title = _BoxAtEdge(place->titleW, place->titleH, pos, place);
    if (_IsTop(pos))
    {
        place->plot.top = place->title.bottom + _kBoxGap;
    }
    else if (_IsBottom(pos))
    {
        place->plot.bottom = place->title.top - _kBoxGap;
    }
    else if ((pos & kPosLeft) != 0)
    {
        place->plot.left = place->title.right + _kBoxGap;
    }
    else
    {
        place->plot.right = place->title.left - _kBoxGap;
    }
}

// A legend in a corner or at a side stands beside the plot, one in the centre above or below it.
static void _PlaceLabel(_Placement *place, int32_t pos)
{
    place->label = _BoxAtEdge(place->labelW, place->labelH, pos, place);
    const bool fCenter = (pos & kPosCenter) != 0 && !_IsSide(pos);
    if ((pos & kPosLeft) != 0)
    {
        place->plot.left = place->label.right + _kBoxGap;
    }
    else if (!fCenter)
    {
        place->plot.right = place->label.left - _kBoxGap;
    }
    else if (_IsTop(pos))
    {
        place->plot.top = place->label.bottom + _kBoxGap;
    }
    else
    {
        place->plot.bottom = place->label.top - _kBoxGap;
    }
}

static void _SettleBothTop(_Placement *place, int32_t labelPos)
{
    _MoveBox(&place->label, 0, place->titleH + _kBoxGap);
    if (place->label.bottom > place->height)
    {
        place->height = place->label.bottom;
        place->plot.bottom = place->label.bottom;
    }
    if ((labelPos & kPosCenter) != 0)
    {
        place->plot.top = place->label.bottom + _kBoxGap;
    }
}

static void _SettleBothBottom(_Placement *place, int32_t labelPos)
{
    _MoveBox(&place->label, 0, -(place->titleH + _kBoxGap));
    const int64_t missing = std::max<int64_t>(0, -place->label.top);
    place->height += missing;
    place->plot.bottom += missing;
    _MoveBox(&place->title, 0, missing);
    _MoveBox(&place->label, 0, missing);
    if ((labelPos & kPosCenter) != 0)
    {
        place->plot.bottom = place->label.top - _kBoxGap;
    }
}

// Title above, legend below it or at the side: the legend gives way downwards when they come closer than the gap.
static void _SettleTitleAbove(_Placement *place)
{
    const int64_t missing = place->title.bottom - place->label.top + _kBoxGap;
    if (missing > 0)
    {
        _MoveBox(&place->label, 0, missing);
        place->height += missing;
        place->plot.top += missing;
    }
}

// Title at the bottom, legend above it or at the side: the title gives way downwards.
static void _SettleTitleBelow(_Placement *place)
{
    const int64_t missing = place->label.bottom - place->title.top + _kBoxGap;
    if (missing > 0)
    {
        _MoveBox(&place->title, 0, missing);
        place->height += missing;
        place->plot.bottom += missing;
    }
}

// Keeps title and legend apart. Two boxes at opposite sides never meet.
static void _SettleCollision(_Placement *place, int32_t titlePos, int32_t labelPos)
{
    if (_IsTop(titlePos))
    {
        if (_IsTop(labelPos))
        {
            _SettleBothTop(place, labelPos);
        }
        else
        {
            _SettleTitleAbove(place);
        }
    }
    else if (_IsBottom(titlePos))
    {
        if (_IsBottom(labelPos))
        {
            _SettleBothBottom(place, labelPos);
        }
        else
        {
            _SettleTitleBelow(place);
        }
    }
    else if (titlePos == labelPos && (titlePos & kPosLeft) != 0)
    {
        _MoveBox(&place->label, place->titleW + _kBoxGap, 0);
        place->plot.left = place->label.right + _kBoxGap;
    }
    else if (titlePos == labelPos)
    {
        _MoveBox(&place->label, -(place->titleW + _kBoxGap), 0);
        place->plot.right = place->label.left - _kBoxGap;
    }
}

void PlaceChartBoxes(ChartSet *set)
{
    if (set == nullptr)
    {
        return;
    }
    _Placement place = {};
    place.titleW = _WidthOf(&set->titleBox);
    place.titleH = _HeightOf(&set->titleBox);
    place.labelW = _WidthOf(&set->labelBox);
    place.labelH = _HeightOf(&set->labelBox);
    _SizeImage(&place, set);
    place.plot = {0, 0, place.width, place.height};
    _PlaceTitle(&place, set->titleBoxPos);
    if (set->hasLabelBox != 0)
    {
        _PlaceLabel(&place, set->labelBoxPos);
        _SettleCollision(&place, set->titleBoxPos, set->labelBoxPos);
        set->labelBox = _ToRectangle(&place.label);
    }
    if (place.width > _kMaxChartSide || place.height > _kMaxChartSide)
    {
        ExitWithError("Chart too large:\n%d by %d pixels are needed, at most %d by %d are possible\n",
                      _ToInt32(place.width), _ToInt32(place.height), _kMaxChartSide, _kMaxChartSide);
    }
    set->titleBox = _ToRectangle(&place.title);
    set->plotBox = _ToRectangle(&place.plot);
    set->chartW = _ToInt32(place.width);
    set->chartH = _ToInt32(place.height);
}
