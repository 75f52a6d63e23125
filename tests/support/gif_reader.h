// gif_reader.h - reads a GIF file back with giflib, a decoder that we did not write.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

// The first image of a GIF file.
struct GifPicture
{
    int32_t width;                               // pixels
    int32_t height;                              // pixels
    std::vector<uint8_t> pixels;                 // positions in the palette, row by row, top row first
    std::vector<std::array<uint8_t, 3>> palette; // red, green, blue; as many entries as the file holds
    int32_t transparent;                         // position in the palette, -1: none
    bool interlaced;                             // how the rows lay in the file; pixels are in order either way
};

// Each reads one file into picture. Returns what is wrong with it, empty when nothing is; picture is only whole then.
std::string ReadGif(const std::string &path, GifPicture *picture);
std::string DecodeGif(const std::vector<uint8_t> &bytes, GifPicture *picture);
