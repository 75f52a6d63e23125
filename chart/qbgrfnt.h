// qbgrfnt.h - the three built-in bitmap fonts: selection, scaling to any pixel size, single glyphs.
#pragma once

#include <cstdint>

// One strike font: all glyphs side by side in one wide bitmap. Built at compile time, never written.
struct FontRec
{
    int16_t minVal;          // first character code that the font holds
    int16_t maxVal;          // last character code that the font holds
    int16_t ascent;          // pixel rows above the base line
    int16_t descent;         // pixel rows below the base line
    int16_t h;               // rows of the strike
    int16_t w;               // columns of the strike, bits per row
    const uint8_t *pBuf;     // h rows of (w + 7) / 8 bytes, top row first, high bit leftmost, 1 is ink
    const uint16_t *pLoc;    // first column of each code from minVal on, and one closing entry equal to w
    const uint16_t *pOffWid; // offset and width of each code, or null: 0xFFFF marks a missing glyph
    const char *pName;
};

// One glyph at the current size, as GetFontChar gives it out.
struct FontChar
{
    int16_t ascent;      // pixels above the base line at the current size
    int16_t descent;     // size minus ascent
    int16_t leading;     // extra pixels between lines
    int16_t width;       // pixels to the next glyph
    int16_t imageWidth;  // columns of the bitmap
    int16_t size;        // the current size in pixels: rows of the bitmap
    int16_t offset;      // pixels from the pen to the first column
    int16_t rowBytes;    // bytes per row of bits
    const uint8_t *bits; // rows of rowBytes bytes, high bit leftmost; the module's own, valid until the next glyph
};

// Line metrics of the current font at the current size, in pixels.
struct FontInfo
{
    int16_t ascent;
    int16_t descent; // size minus ascent
    int16_t leading;
    int16_t size;
};

void InitFonts();
void SetFont(int32_t index);
int32_t GetFont();
int32_t GetFontByName(const char *name);
void SetFontSize(int32_t size);
void GetFontInfo(FontInfo *info);
int32_t GetFontChar(int32_t code, int32_t wantBits, FontChar *fontChar);
