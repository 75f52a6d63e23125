// qbgraph_state.h - what the raster graphics files share about the current image. Private to the qbgraph_* files.
#pragma once

#include "qbgraph.h"
#include "qbgrfnt.h"

// The current image's cached state, first values in qbgraph.cpp. SetImage sets all of it and saves the outgoing
// image's pen, colour count and transparent colour back into its records, which are the originals.
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
