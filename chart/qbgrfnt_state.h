// qbgrfnt_state.h - what the font module remembers and its steps. Private to qbgrfnt.cpp and its tests.
#pragma once

#include "qbgrfnt.h"

constexpr int32_t kMaxFonts = 32;
constexpr int32_t kMinFontSize = 6;   // pixels; below it no letter can be told from another
constexpr int32_t kMaxFontSize = 127; // pixels
constexpr int32_t kScaleBits = 7;     // a scale is a number of 128ths
constexpr int32_t kOneToOne = 1 << kScaleBits;

// The scaling map ends here, so a larger glyph can be drawn at 1:1 only.
constexpr int32_t kMaxGlyphSide = 128;

// Any glyph that can be scaled fits: 128 rows of 128 bits.
constexpr int32_t kCharBytes = kMaxGlyphSide * kMaxGlyphSide / 8;

// The largest scale is that of a strike of one row at size 127: 127 to 1. The map then sends column 128 to 128 * 127,
// and no scale gives more rows than the size.
constexpr int32_t kScaledBytes = kMaxFontSize * (kMaxGlyphSide * kMaxFontSize / 8);

// One glyph as it is found in the strike.
struct CharSettings
{
    uint16_t locStart; // first column in the strike
    uint16_t locEnd;   // one past the last column
    uint8_t offset;    // pixels from the pen to the first column, at 1:1
    uint8_t width;     // pixels to the next glyph, at 1:1
    int16_t rowBytes;  // bytes per row of bits, at the current size
    const uint8_t *bits;
};

// The fonts and the current one. InitFonts sets the list, _SetFontPtr all fields that begin with cur or pCur but
// curFont, SetFontSize the size and the scale. Before InitFonts all is 0.
struct _FontState
{
    const FontRec *aFontList[kMaxFonts];
    int16_t nFonts;
    int16_t curFont; // place in the list

    // Copies of the current font's record.
    int16_t curMinVal;
    int16_t curMaxVal;
    int16_t curAscent;
    int16_t curDescent;
    int16_t curH; // rows of the strike
    int16_t curW; // columns of the strike
    const uint8_t *pCurBuf;
    const uint16_t *pCurLoc;
    const uint16_t *pCurOffWid;

    int16_t curRowByte;  // bytes per row of the strike
    int16_t curLeading;  // pixels between lines, at 1:1
    int16_t curSize;     // pixels
    uint16_t curScaling; // in 128ths
};
extern _FontState _font;

// Where pixel boundary i of a glyph falls at the last scale that was not 1:1; set by _MakeScalingMap.
extern uint16_t aScMap[kMaxGlyphSide + 1];

// The tables that fontgen makes of the drawn fonts. Those of Geneva12 carry 10 in their name.
extern const uint16_t _small8_lc[];
extern const uint8_t _small8_bf[];
extern const FontRec _small8_rec;
extern const uint16_t _geneva10_lc[];
extern const uint8_t _geneva10_bf[];
extern const FontRec _geneva10_rec;
extern const uint16_t _helvetica10_lc[];
extern const uint8_t _helvetica10_bf[];
extern const FontRec _helvetica10_rec;

// Makes a font current at 1:1 and at its own size. Nothing for a null font or one without strike or locations.
void _SetFontPtr(const FontRec *font);

// Looks up a code (low 8 bits) of the current font; rowBytes and bits stay as they were. Returns 1, or 0 for no glyph.
int32_t _GetCharSettings(int32_t code, CharSettings *settings);

// The same, with the glyph's bitmap at the current size. A glyph that lies outside the strike or is larger than the
// buffers is none: 0.
int32_t _GetCharBits(int32_t code, CharSettings *settings);

// Scales the glyph that was cut last by the scaling map.
//   scaling   the scale that the map was built for, in 128ths
//   width     columns of the glyph, 0 .. 128
//   height    rows of the glyph, 0 .. 128
// Returns the bytes per row of the scaled glyph.
int32_t _ScaleCharBits(uint16_t scaling, int32_t width, int32_t height);

// Builds the scaling map for a scale in 128ths, at most 127 * 128.
void _MakeScalingMap(uint16_t scaling);
