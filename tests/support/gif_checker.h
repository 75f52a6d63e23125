// gif_checker.h - walks a GIF file by the rules of the format and forgives nothing.
#pragma once

#include "gif_reader.h"

// What the walk saw. With wrong set, the rest is what had been seen until then.
struct GifWalk
{
    std::string wrong;            // the first rule that the file breaks; empty: none
    GifPicture picture;           // decoded by the checker itself
    int32_t background;           // position in the palette
    int32_t codeSize;             // the byte before the packets
    std::vector<int32_t> packets; // their sizes in bytes, without the empty one at the end
    int32_t nCodes;               // codes for pixels
    int32_t nClears;              // clear codes, the first one included
    int32_t pixelsAtLastClear;    // pixels that came before the last clear code
    int32_t maxWidth;             // bits of the widest code
    int32_t entriesAtEnd;         // codes in use at the end, colours, clear and end code included; at most 4096
    bool fWidthGrowsAtEnd;        // the end code is the first code of its width
};

// Walks the file: one image, as large as the screen, global colours, strings learned until 4096 codes are in use and
// the table started anew only then; full packets but for the last; padding bits 0; nothing missing, nothing after.
GifWalk CheckGif(const std::vector<uint8_t> &bytes);
