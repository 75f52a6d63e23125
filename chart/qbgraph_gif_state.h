// qbgraph_gif_state.h - the parts of the GIF encoder that its tests look at. Private to qbgraph_gif.cpp.
#pragma once

#include "qbgraph.h"

// Bit accumulator of the code stream; 0 bits between images, whole or broken off.
extern uint32_t _curCode;
extern int32_t _curBits; // valid bits, 0 to 7 between codes

// Tables of the coder, from _InitCompress to _ExitCompress. An image whose trailer could not be written leaves them
// behind for the next _InitCompress to free.
extern int32_t *_pHTab;     // 5003 slots: the keys while one of them may be lost, -1: empty
extern uint16_t *_pCodeTab; // by code: the one learned before it in the same place of the coder's hash table, or 0

// The bits a pixel that nColors colours take, 1 to 8.
int32_t _GetBPP(uint32_t nColors);

// Frees the coder's tables, if there are any.
void _ExitCompress();
