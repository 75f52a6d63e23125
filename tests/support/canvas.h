// canvas.h - a small current image that tests draw on and read back as text.
#pragma once

#include "qbgraph.h"

#include <cstdint>
#include <string>

// A white image (colour 0) that is current, the pen at (0, 0), 1 by 1, in black (colour 255). Making one calls
// InitGraph, so the fonts and the error state begin afresh as well. The canvas owns its image.
class Canvas
{
public:
    // width and height in pixels; nColors: the colour capacity, of which white and black take two.
    Canvas(int32_t width, int32_t height, uint32_t nColors = 256);
    ~Canvas();
    Canvas(const Canvas &) = delete;
    Canvas &operator=(const Canvas &) = delete;

    // The pixels, a line of text a row: '.' for white, '#' for black, otherwise the colour's position in the colour
    // table as a digit or, from 10 on, a small letter; '?' for any other.
    std::string text() const;

    // Paints a picture of '.' and '#', rows ended by newlines, from the top left corner on.
    void paint(const std::string &picture);

    // The colour of a pixel.
    uint8_t at(int32_t x, int32_t y) const;

    // How many pixels have a colour.
    int64_t count(uint8_t colour) const;

    Image *image() const;

private:
    Image *_image;
};

// The current pen's position as text, "x,y".
std::string PenText();
