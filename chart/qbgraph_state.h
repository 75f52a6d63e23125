// qbgraph_state.h - what the raster graphics files share about the current image. Private to the qbgraph_* files.
#pragma once

#include "qbgraph.h"
#include "qbgrfnt.h"

#include <cstdint>

// The current image's cached state, first values in qbgraph.cpp. SetImage sets all of it and saves the outgoing
// image's pen, colour count and transparent colour back into its records, which are the originals. Without a current
// image the sizes, the count and the capacity are 0, so that every drawing call finds nothing to paint.
extern Image *pCurImg;        // none: null
extern uint8_t *pCurBuf;      // its pixels
extern int32_t curW;          // pixels
extern int32_t curH;          // pixels
extern uint32_t curNColors;   // colours in use
extern uint32_t curMaxColors; // colour capacity
extern ColorTable *pCurCTab;  // its used list and positions are written through this pointer
extern int32_t curPenX;
extern int32_t curPenY;
extern int32_t curPenW;
extern int32_t curPenH;
extern uint8_t curPenColor;  // palette index
extern uint8_t curThruColor; // palette index of the transparent colour
extern int32_t fCurIsThruColor;
extern int32_t _graphErr;   // 0 none, -1 allocation failed, -2 bad argument, -3 GIF write failed
extern int32_t fCTabSorted; // 0 always; the GIF's sort flag

// Text state, first values set by InitGraph; qbgraph_text.cpp.
extern FontChar curFontChar;
extern int16_t curFontStyle; // 1 bold, 2 italic, 4 underline
extern int32_t curFontDir;   // 0 horizontal, 1 stacked, 2 turned 90 degrees, 8 turned by curFontAngle
extern int32_t curFontAngle; // degrees counter-clockwise, 0 to 359

// Painting. Whatever is drawn ends in these; the positions are 64 bits wide, so that no shape can overflow before it
// is clipped.

__extension__ typedef __int128 _Int128;
__extension__ typedef unsigned __int128 _UInt128;

// The low 32 bits: what the pen keeps of a position beyond its range.
inline int32_t _Wrap32(int64_t value)
{
    return static_cast<int32_t>(static_cast<uint32_t>(value));
}

// Whether a stamp of the pen could leave a pixel: no error, a colour registered, a pen with a size.
inline bool _CanPaint()
{
    return _graphErr == 0 && curNColors != 0 && curPenW > 0 && curPenH > 0;
}

// Paints the part of a block inside the image in the pen colour; right and bottom exclusive. Nothing unless _CanPaint.
void _PaintBlock(int64_t left, int64_t top, int64_t right, int64_t bottom);

// Walks floor((first + n * step) / den) for n = 0, 1, 2, ... without dividing again.
struct _Stepper
{
    int64_t value; // the current quotient
    uint64_t rest; // its remainder, 0 .. den - 1
    uint64_t whole;
    uint64_t part; // step = whole * den + part
    uint64_t den;

    void set(_UInt128 first, uint64_t step, uint64_t denominator)
    {
        value = static_cast<int64_t>(first / denominator);
        rest = static_cast<uint64_t>(first % denominator);
        whole = step / denominator;
        part = step % denominator;
        den = denominator;
    }

    void next()
    {
        value += static_cast<int64_t>(whole);
        rest += part;
        if (rest >= den)
        {
            rest -= den;
            value++;
        }
    }
};

// Lines: qbgraph_lines.cpp

void _DrawHLine(int64_t n);
void _DrawVLine(int64_t n);
void _DrawLine(int64_t x1, int64_t y1);

// Ovals and arcs: qbgraph_arcs.cpp

extern const int32_t aTanTbl[91]; // 128 * tan, by degree
int32_t _CoTan(int64_t x, int64_t y);

// Polygons, paths, flood fill: qbgraph_polygons.cpp

extern int32_t *_pPolyStack; // columns where edges cross the row being filled
extern int32_t _polyStackSize;
extern int32_t _polyMaxStackSize;
int32_t _Push(int32_t v);
int32_t _Pop();
int32_t _PushPoint(int32_t x, int32_t y, Point *point);
int32_t _PopPoint(Point *point);
void _ScanFill(int32_t x, int32_t y, uint8_t boundary);
void _GetPathNextYPoint(Path *path, int32_t *x, int32_t *y);
void _GetPathNextXPoint(Path *path, int32_t *x, int32_t *y);

// Text: qbgraph_text.cpp

extern const int32_t aCosTbl[91]; // 128 * cos, by degree
int32_t _Cos128(int32_t angle);
int32_t _Sin128(int32_t angle);
void _DrawChar(const uint8_t *bits, int32_t columns, int32_t rows);
void _DrawCharItalic(const uint8_t *bits, int32_t columns, int32_t rows, Path *path);
void _DrawCharRotated90(const uint8_t *bits, int32_t columns, int32_t rows);
void _DrawCharRotate90Italic(const uint8_t *bits, int32_t columns, int32_t rows, Path *path);
void _DrawCharRotated(const uint8_t *bits, int32_t columns, int32_t rows, int32_t angle);
void _DrawCharRotateItalic(const uint8_t *bits, int32_t columns, int32_t rows, int32_t angle, Path *path);
