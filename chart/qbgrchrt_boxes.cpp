// qbgrchrt_boxes.cpp - draws the title and the legends in the boxes that the layout has placed.
//
// A shadow takes its room from its box: a shadowed box is 3 pixels narrower and lower in the records once it is drawn.

#include "qbgrchrt_state.h"

// Where the next entry of a legend goes.
struct _Legend
{
    Rectangle swatch; // square in the entry's colour; the pen stands at the entry's text
    int32_t side;     // of the swatch, pixels
    int32_t marginX;  // pixels
    bool fRow;        // entries side by side, not one under the other
};

// Draws shadow, face and frame of a box as its flags say and leaves it at the face's size. A box without a shadow
// has no face: what is under it stays.
static void _DecorateBox(Rectangle *box, uint32_t boxFlags)
{
    if ((boxFlags & kBoxShadow) != 0)
    {
        SetPenColor(kColorShadow);
        box->left = _ToInt32(static_cast<int64_t>(box->left) + _kShadowSize);
        box->top = _ToInt32(static_cast<int64_t>(box->top) + _kShadowSize);
        FillRectangle(box);
        MoveRectangleRel(box, -_kShadowSize, -_kShadowSize);
        SetPenColor(kColorShadowFace);
        FillRectangle(box);
    }
    if ((boxFlags & (kBoxFrame | kBoxShadow)) != 0)
    {
        SetPenColor(kColorFrame);
        DrawRectangle(box);
    }
}

void ChartDrawTitle(ChartData *data, ChartSet *set)
{
    if (!_HasRecords(data, set))
    {
        return;
    }
    _SelectTitleFont(set);
    const FontInfo info = _CurFontInfo();
    _DecorateBox(&set->titleBox, set->titleBoxFlags);
    SetPenColor(kColorFrame);

    const Rectangle box = set->titleBox;
    const int64_t marginX = set->titleMarginX;
    const int64_t marginY = set->titleMarginY;
    if ((set->titleBoxPos & kPosSide) == 0)
    {
        _MovePen(box.left + marginX, box.top + marginY + info.ascent);
    }
    else if ((set->titleBoxPos & kPosLeft) != 0)
    {
        SetFontOrientation(2); // reads upwards
        _MovePen(box.left + marginX + info.ascent, box.bottom - marginY);
    }
    else
    {
        SetFontAngle(-90); // reads downwards
        _MovePen(box.right - marginX - info.ascent, box.top + marginY);
    }
    DrawText(_TextOf(data->title));
    SetFontOrientation(0);
}

// Selects the label font, draws the legend's box and puts swatch and pen at the first entry.
static _Legend _BeginLegend(ChartSet *set)
{
    _SelectLabelFont(set);
    const FontInfo info = _CurFontInfo();
    _DecorateBox(&set->labelBox, set->labelBoxFlags);

    const int32_t side = set->labelLineH;
    const int64_t left = static_cast<int64_t>(set->labelBox.left) + set->labelMarginX;
    const int64_t top = static_cast<int64_t>(set->labelBox.top) + set->labelMarginY;
    _Legend legend = {{0, 0, side, side}, side, set->labelMarginX, (set->labelBoxPos & kPosCenter) != 0};
    MoveRectangleTo(&legend.swatch, _ToInt32(left), _ToInt32(top));
    _MovePen(left + set->labelMarginX + side, top + info.ascent - info.size / 2 + side / 2);
    return legend;
}

// Draws one entry and moves swatch and pen to the next. The text takes the pen colour as it is, which title, frame and
// swatch outlines all leave at that of frames.
static void _DrawEntry(_Legend *legend, const char *text, int32_t textW, int32_t colour)
{
    Point pen;
    GetPenPos(&pen);
    DrawText(_TextOf(text));
    SetPenColor(colour);
    FillRectangle(&legend->swatch);
    SetPenColor(kColorFrame);
    DrawRectangle(&legend->swatch);

    int64_t dx = 0;
    int64_t dy = 2LL * legend->side;
    if (legend->fRow)
    {
        dx = 3LL * legend->marginX + legend->side + textW;
        dy = 0;
    }
    MoveRectangleRel(&legend->swatch, _ToInt32(dx), _ToInt32(dy));
    _MovePen(pen.x + dx, pen.y + dy);
}

void ChartDrawLabelBox(ChartData *data, ChartSet *set)
{
    if (!_HasRecords(data, set) || set->hasLabelBox == 0)
    {
        return;
    }
    _Legend legend = _BeginLegend(set);
    for (int32_t i = 0; i < data->nSeries; i++)
    {
        const Series *series = &data->series[i];
        if (_IsGraphed(series))
        {
            _DrawEntry(&legend, series->label, series->labelDim.x, series->color);
        }
    }
}

void ChartDrawPieLabelBox(ChartData *data, ChartSet *set)
{
    if (!_HasRecords(data, set) || set->hasLabelBox == 0)
    {
        return;
    }
    _Legend legend = _BeginLegend(set);
    uint8_t colour = _kFirstSliceColor;
    const Cell *cells = data->series[data->refSeries].cells + set->firstCell;
    for (int32_t i = 0; i < set->nGraphedCells; i++)
    {
        _DrawEntry(&legend, cells[i].text, cells[i].textDim.x, colour);
        colour = _NextSliceColor(colour);
    }
}
