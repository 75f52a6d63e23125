// image.cpp - the reference's image, colour table and pen.

#include "state.h"

#include "qbgrfnt.h"

#include <algorithm>

namespace ref
{

State state;

void Start(int32_t width, int32_t height, uint32_t nColors, const uint8_t *pixels)
{
    state = {};
    state.width = width;
    state.height = height;
    state.pixels.assign(pixels, pixels + static_cast<size_t>(width) * static_cast<size_t>(height));
    state.capacity = std::min<uint32_t>(nColors, 256);
    state.penW = 1;
    state.penH = 1;
    state.penColor = 255;
}

bool IsInside(int64_t x, int64_t y)
{
    return x >= 0 && x < state.width && y >= 0 && y < state.height;
}

uint8_t &PixelAt(int64_t x, int64_t y)
{
    return state.pixels[static_cast<size_t>(y * state.width + x)];
}

bool IsUsed(uint8_t colour)
{
    return std::find(state.used.begin(), state.used.end(), colour) != state.used.end();
}

// The colour itself once it has a place in the table, or 0 when the table is full.
static uint8_t _register(int32_t wanted)
{
    const auto colour = static_cast<uint8_t>(wanted & 0xFF);
    if (IsUsed(colour))
    {
        return colour;
    }
    if (state.used.size() < state.capacity)
    {
        state.used.push_back(colour);
        return colour;
    }
    return 0;
}

void SetPenColor(int32_t colour)
{
    if (state.error == 0)
    {
        state.penColor = _register(colour);
    }
}

void SetThruColor(int32_t colour)
{
    state.thruColor = _register(colour);
    state.fThruColor = 1;
}

void SetPenSize(int32_t width, int32_t height)
{
    state.penW = width < 1 ? 0 : width;
    state.penH = height < 1 ? 0 : height;
}

void FillImage()
{
    if (state.error == 0 && !state.used.empty())
    {
        std::fill(state.pixels.begin(), state.pixels.end(), state.penColor);
    }
}

void MoveTo(int64_t x, int64_t y)
{
    state.penX = x;
    state.penY = y;
}

void MovePenTo(int32_t x, int32_t y)
{
    MoveTo(x, y);
}

void MovePenRel(int32_t dx, int32_t dy)
{
    MoveTo(state.penX + dx, state.penY + dy);
}

void DrawPen()
{
    if (state.error != 0 || state.used.empty())
    {
        return;
    }
    for (int64_t row = 0; row < state.penH; row++)
    {
        for (int64_t column = 0; column < state.penW; column++)
        {
            if (IsInside(state.penX + column, state.penY + row))
            {
                PixelAt(state.penX + column, state.penY + row) = state.penColor;
            }
        }
    }
}

} // namespace ref
