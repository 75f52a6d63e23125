// qbgrfnt.h - the three built-in bitmap fonts: selection, scaling to any pixel size, single glyphs.
//
// One font is current, at one size. Codes are bytes in the Mac OS Roman character set. A size is the height of a line
// in pixels from the top of the tallest capital's accent to the lowest descender, without the leading.
//
// InitFonts comes before every other call. Nothing here fails with a message, and nothing asks for memory: a size out
// of range is clamped, an unknown name gives the current font, a code without a glyph gives 0.
#pragma once

#include <cstdint>

// One strike font: all glyphs side by side in one wide bitmap. Built at compile time, never written.
struct FontRec
{
    int16_t minVal;          // first character code that the font holds
    int16_t maxVal;          // last character code that the font holds
    int16_t ascent;          // pixel rows above the base line
    int16_t descent;         // pixel rows below the base line
    int16_t h;               // rows of the strike; ascent + descent in all built-in fonts
    int16_t w;               // columns of the strike, bits per row
    const uint8_t *pBuf;     // h rows of (w + 7) / 8 bytes, top row first, high bit leftmost, 1 is ink; not owned
    const uint16_t *pLoc;    // first column of each code from minVal on, and one closing entry equal to w; not owned
    const uint16_t *pOffWid; // offset << 3 and width & 0xFF of each code, 0xFFFF a missing glyph; or null; not owned
    const char *pName;       // not owned
};

// One glyph at the current size. Filled by GetFontChar.
struct FontChar
{
    int16_t ascent;      // pixels above the base line
    int16_t descent;     // size minus ascent
    int16_t leading;     // extra pixels between lines
    int16_t width;       // pixels to the next glyph
    int16_t imageWidth;  // columns of the bitmap, pixels
    int16_t size;        // pixels: the current size, and rows of the bitmap
    int16_t offset;      // pixels from the pen to the first column
    int16_t rowBytes;    // bytes per row of bits
    const uint8_t *bits; // rows of rowBytes bytes, high bit leftmost; not owned, valid until the next glyph is fetched.
                         // Right of the last column the last byte of a row may hold pixels of the next glyph.
};

// Line metrics of the current font at the current size, in pixels. Filled by GetFontInfo.
struct FontInfo
{
    int16_t ascent;
    int16_t descent; // size minus ascent; may differ by one from the scaled descent
    int16_t leading;
    int16_t size;
};

// Lists the fonts "Small8" (0), "Geneva12" (1) and "Helvetica10" (2) and makes Small8 current at its own size.
void InitFonts();

// Makes a font current at its own size: 8, 12 and 11 pixels for fonts 0, 1 and 2.
//   index     place in the list of fonts
// Nothing for an index outside the list. The current font keeps its size when it is set again.
void SetFont(int32_t index);

// Returns the current font's place in the list.
int32_t GetFont();

// Finds a font; the current one stays current.
//   name      compared to the letter, case included; may be null
// Returns its place in the list, or the current font's place for a null or unknown name.
int32_t GetFontByName(const char *name);

// Scales the current font.
//   size      pixels, of which the low 16 bits count as a signed number; clamped to 6 .. 127
void SetFontSize(int32_t size);

// Gives the line metrics of the current font. Nothing for a null info.
void GetFontInfo(FontInfo *info);

// Fetches one glyph of the current font.
//   code      of which the low 8 bits count
//   wantBits  0: metrics only, rowBytes and bits then mean nothing; otherwise the bitmap too
//   fontChar  filled; not null
// Returns 1, or 0 when the font has no such glyph; fontChar is then left as it was. A glyph without columns succeeds,
// with width, imageWidth and rowBytes 0.
int32_t GetFontChar(int32_t code, int32_t wantBits, FontChar *fontChar);
