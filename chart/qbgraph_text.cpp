// qbgraph_text.cpp - text in every direction and style.
//
// Glyphs come one at a time as bitmaps of one bit a pixel, and every set bit is one stamp of the pen: 1 by 1, or 2 by 2
// for bold. Directions are whole degrees; sine and cosine are 128ths, and a product comes back to pixels rounded half
// away from zero. Italic glyphs start each bitmap row at the next point of a path that leans by 60 degrees.
//
// Sections: angles; settings; glyph stampers; running text; flowing text; measuring.

#include "qbgraph_state.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>

FontChar curFontChar = {};
int16_t curFontStyle = 0;
int32_t curFontDir = 0;
int32_t curFontAngle = 0;

constexpr int32_t kBold = 1;
constexpr int32_t kItalic = 2;
constexpr int32_t kUnderline = 4;
constexpr int32_t kSlant = 60;       // degrees from the base line to an italic stem
constexpr int32_t kSlantRadius = 20; // pixels; long enough for 60 degrees to come out well in whole ones

// ---- Angles

// 128 * cos(i degrees) to the nearest; 5 and 45 are one less, on purpose.
const int32_t aCosTbl[91] = {
    128, 128, 128, 128, 128, 127, 127, 127, 127, 126, 126, 126, 125, 125, 124, 124, 123, 122, 122, 121, 120, 119, 119,
    118, 117, 116, 115, 114, 113, 112, 111, 110, 109, 107, 106, 105, 104, 102, 101, 99,  98,  97,  95,  94,  92,  90,
    89,  87,  86,  84,  82,  81,  79,  77,  75,  73,  72,  70,  68,  66,  64,  62,  60,  58,  56,  54,  52,  50,  48,
    46,  44,  42,  40,  37,  35,  33,  31,  29,  27,  24,  22,  20,  18,  16,  13,  11,  9,   7,   4,   2,   0,
};

static int32_t _fullTurn(int32_t angle)
{
    return (angle % 360 + 360) % 360;
}

int32_t _Cos128(int32_t angle)
{
    const int32_t a = _fullTurn(angle);
    if (a < 90)
    {
        return aCosTbl[a];
    }
    if (a < 180)
    {
        return -aCosTbl[180 - a];
    }
    return a < 270 ? -aCosTbl[a - 180] : aCosTbl[360 - a];
}

int32_t _Sin128(int32_t angle)
{
    const int32_t a = _fullTurn(angle);
    if (a < 90)
    {
        return aCosTbl[90 - a];
    }
    if (a < 180)
    {
        return aCosTbl[a - 90];
    }
    return a < 270 ? -aCosTbl[270 - a] : -aCosTbl[a - 270];
}

// 128ths to pixels, half away from zero.
static int64_t _round128(int64_t v)
{
    return v >= 0 ? (v + 64) >> 7 : -((64 - v) >> 7);
}

static Point _moved(const Point &from, int64_t dx, int64_t dy)
{
    return {_Wrap32(from.x + dx), _Wrap32(from.y + dy)};
}

// ---- Settings

void SetFontStyle(int32_t style)
{
    curFontStyle = static_cast<int16_t>(style);
}

void SetFontAngle(int32_t angle)
{
    const int32_t a = _fullTurn(angle);
    if (a == 0)
    {
        curFontDir = 0;
    }
    else if (a == 90)
    {
        curFontDir = 2;
    }
    else
    {
        curFontDir = 8;
        curFontAngle = a;
    }
}

void SetFontOrientation(int32_t orientation)
{
    const auto kind = static_cast<int16_t>(orientation);
    if (kind == 4)
    {
        SetFontAngle(45);
    }
    else
    {
        curFontDir = kind == 1 || kind == 2 ? kind : 0;
    }
}

// ---- Glyph stampers

static void _stampClipped(int64_t x, int64_t y)
{
    _PaintBlock(x, y, x + curPenW, y + curPenH);
}

// The bytes from one bitmap row to the next.
static int64_t _rowBytes(int32_t columns)
{
    return (columns + 7) / 8;
}

// Up to eight columns of a glyph, high bit leftmost.
struct _Strip
{
    const uint8_t *bits; // the first row; not owned
    int64_t rowBytes;    // bytes from one row to the next
    int32_t rows;
    int32_t columns; // 1 .. 8

    uint8_t inkOf(int32_t row) const
    {
        return bits[row * rowBytes] & static_cast<uint8_t>(0xFF00 >> columns); // what follows is another glyph's
    }
};

static _Strip _stripOf(const uint8_t *bits, int32_t columns, int32_t rows, int32_t column)
{
    return {bits + column / 8, _rowBytes(columns), rows, std::min(columns - column, 8)};
}

// Visits each set bit, counted from the high one.
template <typename Visit>
static void _forEachBit(uint8_t ink, Visit visit)
{
    while (ink != 0)
    {
        const int32_t i = std::countl_zero(ink);
        ink &= static_cast<uint8_t>(0x7F >> i);
        visit(i);
    }
}

// For each byte of ink the eight pixels, 0xFF where its bit is set, as they lie in memory.
static constexpr auto kInkMasks = []
{
    std::array<uint64_t, 256> masks = {};
    for (uint32_t ink = 0; ink < masks.size(); ink++)
    {
        std::array<uint8_t, 8> pixels = {};
        for (uint32_t i = 0; i < 8; i++)
        {
            pixels[i] = (ink & (0x80U >> i)) != 0 ? 0xFF : 0;
        }
        masks[ink] = std::bit_cast<uint64_t>(pixels);
    }
    return masks;
}();

// Paints those of eight pixels whose bit is set.
static void _blend8(uint8_t *pixels, uint32_t ink, uint64_t colours)
{
    uint64_t eight = 0;
    std::memcpy(&eight, pixels, 8);
    eight ^= (eight ^ colours) & kInkMasks[ink];
    std::memcpy(pixels, &eight, 8);
}

// Stamps a text's pen, 1 by 1 or, bold, 2 by 2, along a strip inside the image; at is its first pixel, rowStep leads
// from one row to the next. Ink and paper follow each other without a pattern, so paper is written too instead of
// jumped over. The words that hold the pixels are blended whole: the next glyph reads the same words, and a word that
// was just written in part would have to be waited for.
static void _blendStrip(const _Strip &strip, int64_t at, int64_t rowStep)
{
    const uint64_t colours = 0x0101010101010101U * curPenColor;
    const int64_t width = curW;
    const int32_t penH = curPenH;
    uint8_t *const pixels = pCurBuf;
    for (int32_t row = 0; row < strip.rows; row++, at += rowStep)
    {
        const uint32_t ink = strip.inkOf(row);
        if (penH == 1 && rowStep < 0) // turned: no neighbour reads these eight
        {
            _blend8(pixels + at, ink, colours);
            continue;
        }
        const uint32_t nine = 2 * ink | (penH == 2 ? ink : 0);
        for (int64_t to = at, left = penH; left > 0; to += width, left--)
        {
            const uint32_t sixteen = nine << (7 - to % 8);
            uint8_t *const words = pixels + (to & ~7);
            _blend8(words, sixteen >> 8, colours);
            _blend8(words + 8, sixteen & 0xFF, colours);
        }
    }
}

// Stamps the pen along a strip whose first pixel is (x, y) and whose next rows are below, or above with down -1.
static void _stampStrip(const _Strip &strip, int64_t x, int64_t y, int64_t down)
{
    const int64_t last = y + down * (strip.rows - 1);
    const int64_t bottom = std::max(y, last) + curPenH;
    const bool fTextPen = curPenW == curPenH && (curPenW == 1 || curPenW == 2);
    const bool fInside = x >= 0 && std::min(y, last) >= 0 && x + 7 + curPenW <= curW && bottom <= curH;
    // Two words from the last row's first pixel on must lie in the image too.
    if (fTextPen && fInside && (bottom - 1) * curW + x + 16 <= static_cast<int64_t>(curW) * curH)
    {
        _blendStrip(strip, y * curW + x, down * curW);
        return;
    }
    for (int32_t row = 0; row < strip.rows; row++, y += down)
    {
        _forEachBit(strip.inkOf(row), [=](int32_t i) { _stampClipped(x + i, y); });
    }
}

// Turns eight rows of eight bits, the first one in the high byte, into the eight columns.
static uint64_t _columnsOf(uint64_t rows)
{
    uint64_t swap = (rows ^ (rows >> 7)) & 0x00AA00AA00AA00AAU;
    rows ^= swap ^ (swap << 7);
    swap = (rows ^ (rows >> 14)) & 0x0000CCCC0000CCCCU;
    rows ^= swap ^ (swap << 14);
    swap = (rows ^ (rows >> 28)) & 0x00000000F0F0F0F0U;
    return rows ^ swap ^ (swap << 28);
}

void _DrawChar(const uint8_t *bits, int32_t columns, int32_t rows)
{
    for (int32_t column = 0; column < columns; column += 8)
    {
        _stampStrip(_stripOf(bits, columns, rows, column), static_cast<int64_t>(curPenX) + column, curPenY, 1);
    }
    curPenY = _Wrap32(static_cast<int64_t>(curPenY) + rows);
}

void _DrawCharItalic(const uint8_t *bits, int32_t columns, int32_t rows, Path *path)
{
    for (int32_t row = 0; row < rows; row++)
    {
        int32_t x = 0;
        int32_t y = 0;
        _GetPathNextYPoint(path, &x, &y);
        for (int32_t column = 0; column < columns; column += 8)
        {
            _stampStrip(_stripOf(bits + row * _rowBytes(columns), columns, 1, column), static_cast<int64_t>(x) + column,
                        y, 1);
        }
    }
}

// The bits of eight rows of a strip, the first one in the high byte; 0 for rows beyond it.
static uint64_t _blockOf(const _Strip &strip, int32_t firstRow)
{
    const int32_t n = std::min(strip.rows - firstRow, 8);
    uint64_t block = 0;
    for (int32_t row = firstRow; row < firstRow + n; row++)
    {
        block = block << 8 | strip.inkOf(row);
    }
    return block << (64 - 8 * n);
}

// Eight rows of a strip, whose columns become rows that run to the right and follow each other upwards.
static void _stampTurned(const _Strip &strip, int32_t firstRow, int64_t x, int64_t y)
{
    uint64_t block = _columnsOf(_blockOf(strip, firstRow));
    uint8_t turned[8];
    for (uint8_t &ink : turned)
    {
        ink = static_cast<uint8_t>(block >> 56);
        block <<= 8;
    }
    _stampStrip({turned, 1, strip.columns, 8}, x + firstRow, y, -1);
}

void _DrawCharRotated90(const uint8_t *bits, int32_t columns, int32_t rows)
{
    for (int32_t column = 0; column < columns; column += 8)
    {
        for (int32_t row = 0; row < rows; row += 8)
        {
            _stampTurned(_stripOf(bits, columns, rows, column), row, curPenX,
                         static_cast<int64_t>(curPenY) - 1 - column);
        }
    }
}

void _DrawCharRotate90Italic(const uint8_t *bits, int32_t columns, int32_t rows, Path *path)
{
    for (int32_t row = 0; row < rows; row++)
    {
        int32_t x = 0;
        int32_t y = 0;
        _GetPathNextXPoint(path, &x, &y);
        for (int32_t column = 0; column < columns; column += 8)
        {
            _forEachBit(_stripOf(bits, columns, rows, column).inkOf(row),
                        [=](int32_t i) { _stampClipped(x, static_cast<int64_t>(y) - column - i); });
        }
    }
}

// One bitmap row turned by an angle around the glyph's start, seen from (x, y).
static void _stampTurnedRow(const uint8_t *bits, int32_t columns, int32_t row, const Point &start, int32_t angle)
{
    const int64_t c = _Cos128(angle);
    const int64_t s = _Sin128(angle);
    for (int32_t column = 0; column < columns; column += 8)
    {
        _forEachBit(_stripOf(bits, columns, 1, column).inkOf(0),
                    [=](int32_t bit)
                    {
                        const int32_t i = column + bit;
                        _stampClipped(start.x + _round128(i * c + row * s), start.y + _round128(row * c - i * s));
                    });
    }
}

void _DrawCharRotated(const uint8_t *bits, int32_t columns, int32_t rows, int32_t angle)
{
    Point start = {curPenX, curPenY};
    if (angle >= 46 && angle <= 225)
    {
        start = _moved(start, 0, -1);
    }
    for (int32_t row = 0; row < rows; row++)
    {
        _stampTurnedRow(bits + row * _rowBytes(columns), columns, row, start, angle);
    }
}

void _DrawCharRotateItalic(const uint8_t *bits, int32_t columns, int32_t rows, int32_t angle, Path *path)
{
    for (int32_t row = 0; row < rows; row++)
    {
        Point start;
        GetPathNextPoint(path, 1, &start);
        // On purpose: the path has moved the row already, and the turn moves it once more.
        _stampTurnedRow(bits + row * _rowBytes(columns), columns, row, start, angle);
    }
}

// ---- Running text

// The pen's size during a call; the destructor gives the caller's back.
struct _TextPen
{
    int32_t width = curPenW;
    int32_t height = curPenH;

    _TextPen()
    {
        curPenW = curPenH = (curFontStyle & kBold) != 0 ? 2 : 1;
    }

    ~_TextPen()
    {
        curPenW = width;
        curPenH = height;
    }

    _TextPen(const _TextPen &) = delete;
    _TextPen &operator=(const _TextPen &) = delete;
};

// The distance between base lines; _TextPen has set the pen.
static int32_t _lineStep(const FontInfo &info)
{
    return info.ascent + info.descent + info.leading + curPenH - 1;
}

// How far the glyph in curFontChar moves the pen.
static int32_t _advance()
{
    return curFontChar.width + curFontChar.offset + ((curFontStyle & kBold) != 0 ? curPenW : 0);
}

// What DrawText keeps while it goes through a text. Lengths in pixels; c and s in 128ths.
struct _Run
{
    int32_t angle; // of the base line, degrees
    int64_t c;
    int64_t s;
    int64_t ascent;   // base line to glyph top, the pen's height included
    int64_t lineStep; // base line to base line
    Point lineStart;  // glyph top at the start of the line
    Point at;         // glyph top at the current character
    int64_t advance;  // of the current line so far
    Point slant;      // from at to the start of the italic path
    Path path;        // down an italic stem
};

static _Run _newRun()
{
    FontInfo info;
    GetFontInfo(&info);
    _Run run = {};
    run.angle = curFontDir == 2 ? 90 : curFontDir == 8 ? curFontAngle : 0;
    run.c = _Cos128(run.angle);
    run.s = _Sin128(run.angle);
    run.ascent = info.ascent + curPenH - 1;
    run.lineStep = _lineStep(info);
    run.lineStart = _moved({curPenX, curPenY}, -_round128(run.s * run.ascent), -_round128(run.c * run.ascent));
    run.at = run.lineStart;
    const int64_t shear = info.ascent / 2 - 1;
    run.slant = _moved({0, 0}, _round128(run.c * shear), -_round128(run.s * shear));
    InitPath(&run.path, -CosX(run.angle + kSlant, kSlantRadius), SinY(run.angle + kSlant, kSlantRadius));
    return run;
}

// Whether the glyph in curFontChar could reach the image from a point. Generous: its columns, and its rows once each
// for the turn, the slant's start and the slant itself.
static bool _isNearImage(const Point &at)
{
    const int64_t reach = curFontChar.imageWidth + 3 * curFontChar.size + 4;
    return at.x + reach >= 0 && at.x - reach < curW && at.y + reach >= 0 && at.y - reach < curH;
}

static void _stampUpright(const _Run &run)
{
    const FontChar &glyph = curFontChar;
    MovePenTo(run.at.x, run.at.y);
    switch (curFontDir)
    {
    case 2:
        _DrawCharRotated90(glyph.bits, glyph.imageWidth, glyph.size);
        break;
    case 8:
        _DrawCharRotated(glyph.bits, glyph.imageWidth, glyph.size, run.angle);
        break;
    default:
        _DrawChar(glyph.bits, glyph.imageWidth, glyph.size);
    }
}

static void _stampItalic(_Run *run)
{
    const FontChar &glyph = curFontChar;
    const Point origin = _moved(run->at, run->slant.x, run->slant.y);
    SetPathOrigin(&run->path, origin.x, origin.y);
    switch (curFontDir)
    {
    case 2:
        _DrawCharRotate90Italic(glyph.bits, glyph.imageWidth, glyph.size, &run->path);
        break;
    case 8:
        _DrawCharRotateItalic(glyph.bits, glyph.imageWidth, glyph.size, run->angle, &run->path);
        break;
    default:
        _DrawCharItalic(glyph.bits, glyph.imageWidth, glyph.size, &run->path);
    }
}

// Asks for a character's glyph, and for its bitmap where it can be seen: a long text leaves the image soon. Gives 0
// when the font has none, 1 for a glyph without its bitmap, 2 for one with it.
static int32_t _getRunChar(const Point &at, int32_t code)
{
    const bool fOnImage = at.x >= 0 && at.x < curW && at.y >= 0 && at.y < curH;
    if (_CanPaint() && fOnImage)
    {
        return 2 * GetFontChar(code, 1, &curFontChar);
    }
    const int32_t found = GetFontChar(code, 0, &curFontChar);
    return found == 1 && _CanPaint() && _isNearImage(at) ? 2 * GetFontChar(code, 1, &curFontChar) : found;
}

static void _drawRunChar(_Run *run, int32_t code)
{
    const int32_t found = _getRunChar(run->at, code);
    if (found == 0)
    {
        return;
    }
    if (found == 2)
    {
        (curFontStyle & kItalic) != 0 ? _stampItalic(run) : _stampUpright(*run);
    }
    const int32_t advance = _advance();
    run->advance += advance;
    run->at = _moved(run->at, _round128(run->c * advance), -_round128(run->s * advance));
}

static void _underlineRun(const _Run &run)
{
    if ((curFontStyle & kUnderline) == 0 || run.advance < 1)
    {
        return;
    }
    const int64_t dx = _round128((run.ascent + 1) * run.s);
    const int64_t dy = _round128((run.ascent + 1) * run.c);
    const Point from = _moved(run.lineStart, dx, dy);
    const Point to = _moved(run.at, dx, dy);
    MovePenTo(from.x, from.y);
    DrawLineTo(to.x, to.y);
}

static void _drawRun(const char *text)
{
    _Run run = _newRun();
    for (; *text != '\0'; text++)
    {
        if (*text != '\n')
        {
            _drawRunChar(&run, static_cast<uint8_t>(*text));
            continue;
        }
        _underlineRun(run);
        run.lineStart = _moved(run.lineStart, _round128(run.s * run.lineStep), _round128(run.c * run.lineStep));
        run.at = run.lineStart;
        run.advance = 0;
    }
    _underlineRun(run);
    const Point end = _moved(run.at, _round128(run.s * run.ascent), _round128(run.c * run.ascent));
    MovePenTo(end.x, end.y);
}

// Characters below each other: the rectangle is as wide as the widest, so every character breaks the line.
static void _drawStacked(const char *text)
{
    FontInfo info;
    GetFontInfo(&info);
    Point dim = {0, 0};
    GetTextDim(text, &dim);
    const Point corner = _moved({curPenX, curPenY}, 0, 1 - info.ascent - curPenH);
    const Point end = _moved(corner, dim.x, dim.y);
    const Rectangle rect = {corner.x, corner.y, end.x, end.y};
    DrawTextInRect(text, &rect);
}

void DrawText(const char *text)
{
    if (_graphErr != 0 || text == nullptr)
    {
        return;
    }
    const _TextPen pen;
    curFontDir == 1 ? _drawStacked(text) : _drawRun(text);
}

void DrawChar(int32_t ch)
{
    const char text[2] = {static_cast<char>(static_cast<uint8_t>(ch)), '\0'};
    DrawText(text);
}

// ---- Flowing text

// What DrawTextInRect keeps while it goes through a text; the pen is at the glyph top of the next character.
struct _Flow
{
    const Rectangle *rect;
    int32_t lineStep;
    int32_t shear; // from the pen to the start of the italic path
    Path path;
};

static void _underlineFlow(const _Flow &flow)
{
    if ((curFontStyle & kUnderline) != 0)
    {
        const int64_t length = static_cast<int64_t>(curPenX) - flow.rect->left;
        MovePenTo(flow.rect->left, _Wrap32(static_cast<int64_t>(curPenY) + 1));
        _DrawHLine(length);
    }
}

// Ends the line. False when the next one has no room.
static bool _breakLine(const _Flow &flow)
{
    _underlineFlow(flow);
    MovePenTo(flow.rect->left, _Wrap32(static_cast<int64_t>(curPenY) + flow.lineStep));
    return static_cast<int64_t>(curPenY) + curFontChar.descent <= flow.rect->bottom;
}

static bool _fits(const _Flow &flow)
{
    return static_cast<int64_t>(curPenX) + curFontChar.width + curFontChar.offset <= flow.rect->right;
}

// One character. False when it has no room.
static bool _flowChar(_Flow *flow, int32_t code)
{
    if (GetFontChar(code, 0, &curFontChar) != 1)
    {
        return true;
    }
    if (!_fits(*flow) && (!_breakLine(*flow) || !_fits(*flow)))
    {
        return false;
    }
    const Point at = {curPenX, curPenY};
    if (_CanPaint() && _isNearImage(at))
    {
        GetFontChar(code, 1, &curFontChar);
        if ((curFontStyle & kItalic) != 0)
        {
            SetPathOrigin(&flow->path, _Wrap32(static_cast<int64_t>(at.x) + flow->shear), at.y);
            _DrawCharItalic(curFontChar.bits, curFontChar.imageWidth, curFontChar.size, &flow->path);
        }
        else
        {
            _DrawChar(curFontChar.bits, curFontChar.imageWidth, curFontChar.size);
        }
    }
    // On purpose: the pen stays below the glyph just drawn.
    const Point next = _moved(at, _advance(), curFontChar.size);
    MovePenTo(next.x, next.y);
    return true;
}

// The characters and line breaks of a text, as far as there is room. False when it ran out.
static bool _flowText(const char *text, _Flow *flow)
{
    for (; *text != '\0'; text++)
    {
        if (*text == '\n' ? !_breakLine(*flow) : !_flowChar(flow, static_cast<uint8_t>(*text)))
        {
            return false;
        }
    }
    return true;
}

void DrawTextInRect(const char *text, const Rectangle *rect)
{
    if (_graphErr != 0 || text == nullptr || rect == nullptr)
    {
        return;
    }
    const _TextPen pen;
    FontInfo info;
    GetFontInfo(&info);
    _Flow flow = {rect, _lineStep(info), info.ascent / 2 - 1, {}};
    InitPath(&flow.path, -flow.shear, info.size);
    MovePenTo(rect->left, _Wrap32(static_cast<int64_t>(rect->top) + info.ascent + curPenH - 1));
    if (_flowText(text, &flow))
    {
        _underlineFlow(flow);
    }
    MovePenTo(rect->left, rect->top);
}

// ---- Measuring

void GetTextDim(const char *text, Point *dim)
{
    if (text == nullptr || dim == nullptr)
    {
        return;
    }
    const _TextPen pen;
    FontInfo info;
    GetFontInfo(&info);
    const int64_t lineStep = _lineStep(info);
    int64_t height = curFontDir == 1 ? 0 : lineStep - info.leading;
    int64_t width = 0;
    int64_t line = 0;
    for (; *text != '\0'; text++)
    {
        if (*text != '\n' && GetFontChar(static_cast<uint8_t>(*text), 0, &curFontChar) == 1)
        {
            line += _advance();
            width = std::max(width, line);
        }
        if (*text == '\n' || curFontDir == 1)
        {
            line = 0;
            height += lineStep;
        }
    }
    const Point upright = {_Wrap32(width), _Wrap32(height)};
    *dim = curFontDir == 2 ? Point{upright.y, upright.x} : upright;
}

void GetCharDim(int32_t ch, Point *dim)
{
    if (dim == nullptr)
    {
        return;
    }
    *dim = {0, 0};
    if (GetFontChar(ch, 0, &curFontChar) == 1)
    {
        const _TextPen pen;
        *dim = {curFontChar.width + curFontChar.offset + curPenW - 1,
                curFontChar.ascent + curFontChar.descent + curPenH - 1};
    }
}
