// gif_literal.h - the GIF encoder written the slow way, to compare the real one with.
#pragma once

#include "qbgraph.h"

#include <vector>

// What the literal coder counted while it worked.
struct GifCounts
{
    int64_t nProbes;      // steps over occupied slots
    int64_t nZeroKeyLost; // times the string of the first colour twice was overwritten
    int64_t nResets;      // tables started anew, the first one not counted
};

// The bytes of the file for an image whose records are up to date (SetImage has made it current, or another one
// since). Breaks off like the real one at a pixel without a place in the colour table.
//   counts    filled when not null
std::vector<uint8_t> LiteralGif(const Image &image, int32_t fInterlaced, GifCounts *counts = nullptr);
