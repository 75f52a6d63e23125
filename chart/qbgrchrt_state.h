// qbgrchrt_state.h - what the chart engine's files share. Private to the qbgrchrt_* files and their tests.
//
// Sizes come from settings and reports of any content. Arithmetic on them runs in 64 bits and is brought back to the
// records' 32 bits by _ToInt32 or _WholePart, which clamp and never wrap.
#pragma once

#include "qbchart.h"
#include "qbgrfnt.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

// Room for any number in plain decimal notation: a double has up to 309 digits before its point.
constexpr int32_t _kNumberTextSize = 400;

// Pixels between the boxes of a chart.
constexpr int32_t _kBoxGap = 6;

// Pixels that a shadow adds to its box on the right and at the bottom.
constexpr int32_t _kShadowSize = 3;

// Palette index of a pie's first slice; each further slice and its legend entry take the one 16 later.
constexpr uint8_t _kFirstSliceColor = 9;

// The colour of the slice after the one of this colour. It wraps past 255 on purpose.
inline uint8_t _NextSliceColor(uint8_t colour)
{
    return static_cast<uint8_t>(colour + 16);
}

// The value nearest to a 64-bit one that 32 bits can hold.
inline int32_t _ToInt32(int64_t value)
{
    return static_cast<int32_t>(std::clamp<int64_t>(value, INT32_MIN, INT32_MAX));
}

// A number without its fraction, clamped to 32 bits; 0 for what is not a number.
inline int32_t _WholePart(double value)
{
    return std::isnan(value) ? 0 : static_cast<int32_t>(std::clamp<double>(value, INT32_MIN, INT32_MAX));
}

// Whether there is anything to lay out or to draw.
inline bool _HasRecords(const ChartData *data, const ChartSet *set)
{
    return data != nullptr && set != nullptr && data->buffer != nullptr;
}

// Whether categories run along y and values along x.
inline bool _IsHorizontal(const ChartSet *set)
{
    return (set->chartFlags & kChartHorizontal) != 0;
}

inline bool _IsGraphed(const Series *series)
{
    return (series->flags & kSeriesGraphedBit) != 0;
}

// A label or cell text that is missing counts as the empty text.
inline const char *_TextOf(const char *text)
{
    return text == nullptr ? "" : text;
}

// Width and height of a text in the current font and direction, pixels.
inline Point _MeasureText(const char *text)
{
    Point dim = {0, 0};
    GetTextDim(_TextOf(text), &dim);
    return dim;
}

// The fonts must be selected in this order: a new font starts at its own size.
inline void _SelectFont(int32_t font, int32_t size, int32_t style)
{
    SetFont(font);
    SetFontSize(size);
    SetFontStyle(style);
}

inline void _SelectTitleFont(const ChartSet *set)
{
    _SelectFont(set->titleFont, set->titleFontSize, set->titleFontStyle);
}

inline void _SelectLabelFont(const ChartSet *set)
{
    _SelectFont(set->labelFont, set->labelFontSize, set->labelFontStyle);
}

inline void _SelectDataFont(const ChartSet *set)
{
    _SelectFont(set->dataFont, set->dataFontSize, set->dataFontStyle);
}

inline void _SelectAxisLabelFont(const ChartSet *set)
{
    _SelectFont(set->axisLabelFont, set->axisLabelFontSize, set->axisLabelFontStyle);
}

// Metrics of the font that is selected.
inline FontInfo _CurFontInfo()
{
    FontInfo info = {};
    GetFontInfo(&info);
    return info;
}

// The 64-bit way to the pen: positions are clamped.
inline void _MovePen(int64_t x, int64_t y)
{
    MovePenTo(_ToInt32(x), _ToInt32(y));
}

inline int64_t _WidthOf(const Rectangle *rect)
{
    return static_cast<int64_t>(rect->right) - rect->left;
}

inline int64_t _HeightOf(const Rectangle *rect)
{
    return static_cast<int64_t>(rect->bottom) - rect->top;
}
