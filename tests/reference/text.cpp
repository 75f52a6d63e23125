// text.cpp - the reference's text: every set bit of a glyph is one pen stamp.

#include "state.h"

#include "qbgrfnt.h"

#include <cstring>

namespace ref
{

constexpr int32_t kBold = 1;
constexpr int32_t kItalic = 2;
constexpr int32_t kUnderline = 4;

// The latest glyph; like the library's it stays over images.
static FontChar _glyph;

// From 128ths to pixels, half away from zero.
static int64_t _round(int64_t v)
{
    return v >= 0 ? (v + 64) >> 7 : -((64 - v) >> 7);
}

void SetFontStyle(int32_t style)
{
    state.style = static_cast<int16_t>(style);
}

void SetFontOrientation(int32_t orientation)
{
    const auto code = static_cast<int16_t>(orientation);
    if (code == 4)
    {
        SetFontAngle(45);
        return;
    }
    state.direction = code == 1 || code == 2 ? code : 0;
}

void SetFontAngle(int32_t angle)
{
    const int32_t a = ((angle % 360) + 360) % 360;
    state.direction = a == 0 ? 0 : (a == 90 ? 2 : 8);
    if (state.direction == 8)
    {
        state.angle = a;
    }
}

static bool _has(int32_t styleBit)
{
    return (state.style & styleBit) != 0;
}

static bool _bit(int64_t column, int64_t row)
{
    return (_glyph.bits[row * _glyph.rowBytes + column / 8] & (0x80 >> (column % 8))) != 0;
}

static void _stampAt(int64_t x, int64_t y)
{
    MoveTo(x, y);
    DrawPen();
}

// The path point before the step that changes the row (or, sideways, the column).
static Point _nextLine(Stepper &path, bool fSideways)
{
    const Point point = {static_cast<int32_t>(path.x), static_cast<int32_t>(path.y)};
    bool fChanged = path.major == 0 || (fSideways ? path.sx == 0 : path.sy == 0);
    while (!fChanged)
    {
        const bool both = Step(path);
        fChanged = both || path.swapped != fSideways;
    }
    return point;
}

// Upright glyph: the pen ends below it, at the start of the row that would follow.
static void _upright(Stepper *slant)
{
    Point start = {static_cast<int32_t>(state.penX), static_cast<int32_t>(state.penY)};
    for (int64_t row = 0; row < _glyph.size; row++)
    {
        if (slant != nullptr)
        {
            start = _nextLine(*slant, false);
        }
        for (int64_t column = 0; column < _glyph.imageWidth; column++)
        {
            if (_bit(column, row))
            {
                _stampAt(start.x + column, start.y);
            }
        }
        start.y++;
    }
    MoveTo(start.x, start.y);
}

static void _turned90(Stepper *slant)
{
    Point start = {static_cast<int32_t>(state.penX), static_cast<int32_t>(state.penY - 1)};
    for (int64_t row = 0; row < _glyph.size; row++)
    {
        if (slant != nullptr)
        {
            start = _nextLine(*slant, true);
        }
        for (int64_t column = 0; column < _glyph.imageWidth; column++)
        {
            if (_bit(column, row))
            {
                _stampAt(start.x, start.y - column);
            }
        }
        start.x++;
    }
}

static void _turned(Stepper *slant, int64_t angle)
{
    const int64_t c = Cos128(angle);
    const int64_t s = Sin128(angle);
    int64_t x0 = state.penX;
    int64_t y0 = angle >= 46 && angle <= 225 ? state.penY - 1 : state.penY;
    for (int64_t row = 0; row < _glyph.size; row++)
    {
        if (slant != nullptr)
        {
            x0 = slant->x;
            y0 = slant->y;
            Step(*slant);
        }
        for (int64_t column = 0; column < _glyph.imageWidth; column++)
        {
            if (_bit(column, row))
            {
                _stampAt(x0 + _round(column * c + row * s), y0 + _round(row * c - column * s));
            }
        }
    }
}

// The pen for text, bold or not; the caller's comes back when it goes.
struct TextPen
{
    int64_t width = state.penW;
    int64_t height = state.penH;
    TextPen()
    {
        state.penW = _has(kBold) ? 2 : 1;
        state.penH = state.penW;
    }
    ~TextPen()
    {
        state.penW = width;
        state.penH = height;
    }
    TextPen(const TextPen &) = delete;
    TextPen &operator=(const TextPen &) = delete;
};

static int64_t _extra()
{
    return _has(kBold) ? 2 : 1;
}

static int64_t _lineStep(const FontInfo &info)
{
    return info.ascent + info.descent + info.leading + _extra() - 1;
}

static int64_t _advance()
{
    return _glyph.width + _glyph.offset + (_has(kBold) ? 2 : 0);
}

static void _drawStacked(const char *text, const FontInfo &info)
{
    Point dim = {0, 0};
    ref::GetTextDim(text, &dim);
    Rectangle rect = {};
    rect.left = static_cast<int32_t>(state.penX);
    rect.top = static_cast<int32_t>(state.penY - info.ascent - _extra() + 1);
    rect.right = rect.left + dim.x;
    rect.bottom = rect.top + dim.y;
    ref::DrawTextInRect(text, &rect);
}

// One text on its way: the start of the line and the point of the next glyph, both at the top of the glyphs.
struct Flow
{
    int64_t theta;
    int64_t c;
    int64_t s;
    int64_t A;
    int64_t lineX;
    int64_t lineY;
    int64_t x;
    int64_t y;
    int64_t lineAdvance;
};

static void _underline(const Flow &f)
{
    if (!_has(kUnderline) || f.lineAdvance < 1)
    {
        return;
    }
    const int64_t ux = _round((f.A + 1) * f.s);
    const int64_t uy = _round((f.A + 1) * f.c);
    MoveTo(f.lineX + ux, f.lineY + uy);
    LineTo(f.x + ux, f.y + uy);
}

static void _stampGlyph(const Flow &f, Stepper &slant, int64_t k)
{
    const bool fItalic = _has(kItalic);
    MoveTo(f.x, f.y);
    if (fItalic)
    {
        SetOrigin(slant, f.x + _round(f.c * k), f.y - _round(f.s * k));
    }
    Stepper *path = fItalic ? &slant : nullptr;
    switch (state.direction)
    {
    case 2:
        _turned90(path);
        break;
    case 8:
        _turned(path, f.theta);
        break;
    default:
        _upright(path);
    }
}

void DrawText(const char *text)
{
    if (state.error != 0 || text == nullptr)
    {
        return;
    }
    FontInfo info = {};
    GetFontInfo(&info);
    if (state.direction == 1)
    {
        _drawStacked(text, info);
        return;
    }
    const TextPen pen;
    Flow f = {};
    f.theta = state.direction == 2 ? 90 : (state.direction == 8 ? state.angle : 0);
    f.c = Cos128(f.theta);
    f.s = Sin128(f.theta);
    f.A = info.ascent + _extra() - 1;
    f.x = f.lineX = state.penX - _round(f.s * f.A);
    f.y = f.lineY = state.penY - _round(f.c * f.A);
    const int64_t k = info.ascent / 2 - 1;
    Stepper slant = NewStepper(-CosX(f.theta + 60, 20), SinY(f.theta + 60, 20));
    for (const char *p = text; *p != '\0'; p++)
    {
        if (*p == '\n')
        {
            _underline(f);
            f.lineX += _round(f.s * _lineStep(info));
            f.lineY += _round(f.c * _lineStep(info));
            f.x = f.lineX;
            f.y = f.lineY;
            f.lineAdvance = 0;
        }
        else if (GetFontChar(static_cast<uint8_t>(*p), 1, &_glyph) == 1)
        {
            _stampGlyph(f, slant, k);
            f.lineAdvance += _advance();
            f.x += _round(f.c * _advance());
            f.y -= _round(f.s * _advance());
        }
    }
    _underline(f);
    MoveTo(f.x + _round(f.s * f.A), f.y + _round(f.c * f.A));
}

void DrawChar(int32_t ch)
{
    const char text[2] = {static_cast<char>(ch & 0xFF), '\0'};
    DrawText(text);
}

static void _underlineInRect(const Rectangle *rect)
{
    if (_has(kUnderline))
    {
        const int64_t length = state.penX - rect->left;
        MoveTo(rect->left, state.penY + 1);
        HLine(length);
    }
}

// Ends the line; false when the next one would leave the rectangle.
static bool _breakLine(const Rectangle *rect, const FontInfo &info)
{
    _underlineInRect(rect);
    MoveTo(rect->left, state.penY + _lineStep(info));
    return state.penY + _glyph.descent <= rect->bottom;
}

static bool _flowChar(char ch, const Rectangle *rect, const FontInfo &info, Stepper &slant)
{
    if (ch == '\n')
    {
        return _breakLine(rect, info);
    }
    if (GetFontChar(static_cast<uint8_t>(ch), 1, &_glyph) != 1)
    {
        return true;
    }
    const int64_t wide = _glyph.width + _glyph.offset;
    if (state.penX + wide > rect->right && (!_breakLine(rect, info) || state.penX + wide > rect->right))
    {
        return false;
    }
    const int64_t x = state.penX;
    if (_has(kItalic))
    {
        SetOrigin(slant, state.penX + info.ascent / 2 - 1, state.penY);
    }
    _upright(_has(kItalic) ? &slant : nullptr);
    state.penX = x + _advance();
    return true;
}

void DrawTextInRect(const char *text, const Rectangle *rect)
{
    if (state.error != 0 || text == nullptr || rect == nullptr)
    {
        return;
    }
    const TextPen pen;
    FontInfo info = {};
    GetFontInfo(&info);
    MoveTo(rect->left, static_cast<int64_t>(rect->top) + info.ascent + _extra() - 1);
    Stepper slant = NewStepper(-(info.ascent / 2 - 1), info.size);
    bool fFlows = true;
    for (const char *p = text; fFlows && *p != '\0'; p++)
    {
        fFlows = _flowChar(*p, rect, info, slant);
    }
    if (fFlows)
    {
        _underlineInRect(rect);
    }
    MoveTo(rect->left, rect->top);
}

void GetTextDim(const char *text, Point *dim)
{
    if (text == nullptr || dim == nullptr)
    {
        return;
    }
    FontInfo info = {};
    GetFontInfo(&info);
    const bool fStacked = state.direction == 1;
    int64_t height = fStacked ? 0 : _lineStep(info) - info.leading;
    int64_t width = 0;
    int64_t lineWidth = 0;
    for (const char *p = text; *p != '\0'; p++)
    {
        if (*p != '\n' && GetFontChar(static_cast<uint8_t>(*p), 0, &_glyph) == 1)
        {
            lineWidth += _advance();
            width = lineWidth > width ? lineWidth : width;
        }
        if (*p == '\n' || fStacked)
        {
            lineWidth = 0;
            height += _lineStep(info);
        }
    }
    const bool fTurned = state.direction == 2;
    *dim = {static_cast<int32_t>(fTurned ? height : width), static_cast<int32_t>(fTurned ? width : height)};
}

void GetCharDim(int32_t ch, Point *dim)
{
    if (dim == nullptr)
    {
        return;
    }
    *dim = {0, 0};
    if (GetFontChar(ch & 0xFF, 0, &_glyph) == 1)
    {
        dim->x = static_cast<int32_t>(_glyph.width + _glyph.offset + _extra() - 1);
        dim->y = static_cast<int32_t>(_glyph.ascent + _glyph.descent + _extra() - 1);
    }
}

} // namespace ref
