// qbgrfnt.cpp - strike fonts: selection, scaling, glyphs.
//
// A strike holds all glyphs of a font side by side, so a glyph begins at any bit of a byte. Fetching one shifts its
// columns to the high bit of the first byte and, at any size but the font's own, repeats or drops rows and columns.
// The scale is a number of 128ths, taken against the height of the strike and cut off, not rounded. Where each row and
// column falls is worked out once per size, in the scaling map, so that a string costs only the copying of bits.

#include "qbgrfnt.h"
#include "qbgrfnt_state.h"

#include <algorithm>
#include <bit>
#include <cassert>
#include <cstring>

_FontState _font;
uint16_t aScMap[kMaxGlyphSide + 1];

// The glyph fetched last, as cut from the strike and scaled. Every glyph fetched with its bitmap overwrites them.
static uint8_t aCharBits[kCharBytes];
static uint8_t aScaledBits[kScaledBytes + sizeof(uint64_t)]; // the last row may be written a word too far

// The low i bits and the high i bits of a byte.
static const uint8_t aLMask[9] = {0x00, 0x01, 0x03, 0x07, 0x0F, 0x1F, 0x3F, 0x7F, 0xFF};
static const uint8_t aRMask[9] = {0x00, 0x80, 0xC0, 0xE0, 0xF0, 0xF8, 0xFC, 0xFE, 0xFF};

// A width or height at the current scale, rounded half up. Takes up to 65535 at the largest scale of 127.
static int16_t _Scale(int32_t value)
{
    return static_cast<int16_t>((value * _font.curScaling + kOneToOne / 2) >> kScaleBits);
}

// Selection

void _SetFontPtr(const FontRec *font)
{
    if (!font || !font->pBuf || !font->pLoc)
    {
        return;
    }
    _font.pCurBuf = font->pBuf;
    _font.pCurLoc = font->pLoc;
    _font.pCurOffWid = font->pOffWid;
    _font.curMinVal = font->minVal;
    _font.curMaxVal = font->maxVal;
    _font.curAscent = font->ascent;
    _font.curDescent = font->descent;
    _font.curH = font->h;
    _font.curW = font->w;
    _font.curSize = static_cast<int16_t>(font->ascent + font->descent);
    _font.curRowByte = static_cast<int16_t>((font->w + 7) / 8);
    _font.curScaling = kOneToOne;
    _font.curLeading = static_cast<int16_t>(font->h / 4);
}

void InitFonts()
{
    _font.aFontList[0] = &_small8_rec;
    _font.aFontList[1] = &_geneva10_rec;
    _font.aFontList[2] = &_helvetica10_rec;
    _font.nFonts = 3;
    _SetFontPtr(_font.aFontList[0]);
    _font.curFont = 0;
}

void SetFont(int32_t index)
{
    if (index < 0 || index >= _font.nFonts || index == _font.curFont)
    {
        return;
    }
    _SetFontPtr(_font.aFontList[index]);
    _font.curFont = static_cast<int16_t>(index);
}

int32_t GetFont()
{
    return _font.curFont;
}

int32_t GetFontByName(const char *name)
{
    if (name)
    {
        for (int32_t i = 0; i < _font.nFonts; i++)
        {
            if (strcmp(name, _font.aFontList[i]->pName) == 0)
            {
                return i;
            }
        }
    }
    return _font.curFont;
}

// Size

void _MakeScalingMap(uint16_t scaling)
{
    for (int32_t i = 0; i <= kMaxGlyphSide; i++)
    {
        aScMap[i] = static_cast<uint16_t>((i * scaling + kOneToOne / 2) >> kScaleBits);
    }
}

void SetFontSize(int32_t size)
{
    const auto wanted = static_cast<int16_t>(size);
    if (wanted == _font.curSize)
    {
        return;
    }
    const int32_t clamped = std::clamp<int32_t>(wanted, kMinFontSize, kMaxFontSize);
    // A font without rows has nothing to scale, and its height no quotient.
    if (clamped == _font.curH || _font.curH <= 0)
    {
        _font.curScaling = kOneToOne;
    }
    else
    {
        _font.curScaling = static_cast<uint16_t>(clamped * kOneToOne / _font.curH);
        _MakeScalingMap(_font.curScaling);
    }
    _font.curSize = static_cast<int16_t>(clamped);
}

void GetFontInfo(FontInfo *info)
{
    if (!info)
    {
        return;
    }
    info->size = _font.curSize;
    info->ascent = _Scale(_font.curAscent);
    info->descent = static_cast<int16_t>(_font.curSize - info->ascent);
    info->leading = _Scale(_font.curLeading);
}

// Glyphs

int32_t _GetCharSettings(int32_t code, CharSettings *settings)
{
    constexpr uint16_t kMissing = 0xFFFF;
    code &= 0xFF;
    if (code < _font.curMinVal || code > _font.curMaxVal)
    {
        return 0;
    }
    const int32_t index = code - _font.curMinVal;
    const uint16_t offWid = _font.pCurOffWid ? _font.pCurOffWid[index] : 0;
    if (offWid == kMissing)
    {
        return 0;
    }
    settings->locStart = _font.pCurLoc[index];
    settings->locEnd = _font.pCurLoc[index + 1];
    if (_font.pCurOffWid)
    {
        // On purpose by 3 and not by 8: the offset overlaps the width.
        settings->offset = static_cast<uint8_t>(offWid >> 3);
        settings->width = static_cast<uint8_t>(offWid);
    }
    else
    {
        settings->offset = 0;
        settings->width = static_cast<uint8_t>(settings->locEnd - settings->locStart);
    }
    return 1;
}

// Whether a glyph of n columns can be cut and scaled: it lies in the strike, and no buffer is too small for it or for
// the rows that a reader of the bitmap expects.
static bool _FitsBuffers(const CharSettings *settings, int32_t n)
{
    const int32_t rows = std::max(_font.curH, _font.curSize);
    return n >= 0 && settings->locEnd <= _font.curW && (n + 7) / 8 * rows <= kCharBytes &&
           (_font.curScaling == kOneToOne || (n <= kMaxGlyphSide && _font.curH <= kMaxGlyphSide));
}

static uint32_t _Pair(uint32_t high, uint32_t low)
{
    return high << 8 | low;
}

// Cuts a glyph of n columns out of the strike into aCharBits. A byte comes from the low s bits of one strike byte and
// the high bits of the next:
//
//     p[0] ....AAAA  p[1] BBBBBBBB  ->  AAAABBBB       s = 4
//
// On purpose the mask of the last byte is taken for locEnd modulo 8 even where that is 0: a glyph that begins and ends
// on a byte boundary (s = 8, and nothing comes from the next byte) loses its last eight columns.
static void _CutGlyph(const CharSettings *settings, int32_t n)
{
    const int32_t s = 8 - settings->locStart % 8;
    const uint32_t lm = aLMask[s];
    const uint32_t rm = aRMask[settings->locEnd % 8];
    const uint32_t mask = _Pair(lm, 0xFF ^ lm);
    const uint32_t lastMask = s < 8 ? _Pair(lm, rm) : _Pair(rm, 0);
    const int64_t rowBytes = _font.curRowByte;
    int64_t at = settings->locStart / 8;
    const uint8_t *pLast = _font.pCurBuf + rowBytes * _font.curH - 1;
    uint8_t *out = aCharBits;
    for (int32_t left = n > 0 ? _font.curH : 0; left > 0; left--, at += rowBytes)
    {
        const uint8_t *p = _font.pCurBuf + at;
        for (int32_t columns = n; columns >= 9; columns -= 8, p++)
        {
            *out++ = static_cast<uint8_t>((_Pair(p[0], p[1]) & mask) >> s);
        }
        const uint8_t next = p < pLast ? p[1] : 0; // the strike may end with the glyph
        *out++ = static_cast<uint8_t>((_Pair(p[0], next) & lastMask) >> s);
    }
}

// A word's columns from one on, the first column being the high bit; before the word all, behind it none.
static uint64_t _From(int32_t column)
{
    return column <= 0 ? ~uint64_t{0} : column < 64 ? ~uint64_t{0} >> column : 0;
}

// The part of scaled ink that falls into the 64 columns from base on, a run of ink at a time.
//   map       where the columns of ink fall
static uint64_t _ScaleInk(uint64_t ink, const uint16_t *map, int32_t base)
{
    uint64_t scaled = 0;
    while (ink != 0)
    {
        const int32_t start = std::countl_zero(ink);
        const int32_t end = start + std::countl_one(ink << start);
        scaled |= _From(map[start] - base) & ~_From(map[end] - base);
        ink &= _From(end);
    }
    return scaled;
}

// Scales one row of a glyph. Whole words are written: up to seven bytes behind the row, where the next one follows.
static void _ScaleRow(const uint8_t *source, int32_t width, uint8_t *row)
{
    uint64_t ink[kMaxGlyphSide / 64] = {};
    for (int32_t column = 0; column < width; column += 8)
    {
        const uint64_t byte = *source++ & aRMask[std::min(width - column, 8)];
        ink[column / 64] |= byte << (56 - column % 64);
    }
    for (int32_t base = 0; base < aScMap[width]; base += 64)
    {
        uint64_t scaled = _ScaleInk(ink[0], aScMap, base);
        if (width > 64)
        {
            scaled |= _ScaleInk(ink[1], aScMap + 64, base);
        }
        if constexpr (std::endian::native == std::endian::little)
        {
            scaled = __builtin_bswap64(scaled);
        }
        memcpy(row + base / 8, &scaled, sizeof scaled);
    }
}

// Copies a row below itself until there are reps of it, twice as many with each step.
static void _RepeatRow(uint8_t *row, size_t nBytes, size_t reps)
{
    for (size_t made = 1; made < reps; made *= 2)
    {
        memcpy(row + made * nBytes, row, std::min(made, reps - made) * nBytes);
    }
}

int32_t _ScaleCharBits([[maybe_unused]] uint16_t scaling, int32_t width, int32_t height)
{
    assert(aScMap[kMaxGlyphSide] == scaling);
    const int32_t rowBytes = (aScMap[width] + 7) / 8;
    const auto nBytes = static_cast<size_t>(rowBytes);
    const uint8_t *source = aCharBits;
    uint8_t *out = aScaledBits;
    for (int32_t row = 0; row < height; row++, source += (width + 7) / 8)
    {
        const int32_t reps = aScMap[row + 1] - aScMap[row];
        if (reps == 0)
        {
            continue;
        }
        _ScaleRow(source, width, out);
        _RepeatRow(out, nBytes, static_cast<size_t>(reps));
        out += nBytes * static_cast<size_t>(reps);
    }
    return rowBytes;
}

int32_t _GetCharBits(int32_t code, CharSettings *settings)
{
    if (!_GetCharSettings(code, settings))
    {
        return 0;
    }
    const int32_t n = settings->locEnd - settings->locStart;
    if (!_FitsBuffers(settings, n))
    {
        return 0;
    }
    _CutGlyph(settings, n);
    if (_font.curScaling == kOneToOne)
    {
        settings->rowBytes = static_cast<int16_t>((n + 7) / 8);
        settings->bits = aCharBits;
    }
    else
    {
        settings->rowBytes = static_cast<int16_t>(_ScaleCharBits(_font.curScaling, n, _font.curH));
        settings->bits = aScaledBits;
    }
    return 1;
}

// At 1:1 scaling changes nothing, so both cases are one.
int32_t GetFontChar(int32_t code, int32_t wantBits, FontChar *fontChar)
{
    CharSettings settings = {};
    const int32_t found = wantBits ? _GetCharBits(code, &settings) : _GetCharSettings(code, &settings);
    if (!found)
    {
        return 0;
    }
    fontChar->ascent = _Scale(_font.curAscent);
    fontChar->descent = static_cast<int16_t>(_font.curSize - fontChar->ascent);
    fontChar->leading = _Scale(_font.curLeading);
    fontChar->width = _Scale(settings.width);
    fontChar->imageWidth = _Scale(settings.locEnd - settings.locStart);
    fontChar->size = _font.curSize;
    fontChar->offset = _Scale(settings.offset);
    fontChar->rowBytes = settings.rowBytes;
    fontChar->bits = settings.bits;
    return 1;
}
