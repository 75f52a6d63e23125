// lines.cpp - the reference's lines and rectangles: every step is one pen stamp.

#include "state.h"

#include <cstdlib>
#include <utility>

namespace ref
{

static int64_t _sign(int64_t v)
{
    return v > 0 ? 1 : (v < 0 ? -1 : 0);
}

void HLine(int64_t n)
{
    if (n < 0)
    {
        const int64_t start = state.penX;
        for (int64_t x = start + n; x < start; x++)
        {
            state.penX = x;
            DrawPen();
        }
        state.penX = start + n;
        return;
    }
    for (int64_t i = 0; i < n; i++)
    {
        DrawPen();
        state.penX += i + 1 < n ? 1 : 0; // the last stamp is where the pen stays
    }
}

void VLine(int64_t n)
{
    if (n < 0)
    {
        const int64_t start = state.penY;
        for (int64_t y = start + n; y < start; y++)
        {
            state.penY = y;
            DrawPen();
        }
        state.penY = start + n;
        return;
    }
    for (int64_t i = 0; i < n; i++)
    {
        DrawPen();
        state.penY += i + 1 < n ? 1 : 0;
    }
}

void Line(int64_t x1, int64_t y1)
{
    int64_t dx = std::llabs(x1 - state.penX);
    int64_t dy = std::llabs(y1 - state.penY);
    const int64_t sx = _sign(x1 - state.penX);
    const int64_t sy = _sign(y1 - state.penY);
    if (dx == 0 && dy == 0)
    {
        DrawPen();
        return;
    }
    const bool swapped = dx < dy;
    if (swapped)
    {
        std::swap(dx, dy);
    }
    int64_t d = 2 * dy - dx;
    for (int64_t i = 0; i < dx; i++)
    {
        DrawPen();
        if (d >= 0)
        {
            d -= 2 * dx;
            (swapped ? state.penX : state.penY) += swapped ? sx : sy;
        }
        d += 2 * dy;
        (swapped ? state.penY : state.penX) += swapped ? sy : sx;
    }
}

void LineTo(int64_t x, int64_t y)
{
    if (state.error != 0)
    {
        return;
    }
    if (y == state.penY)
    {
        HLine(x - state.penX);
    }
    else if (x == state.penX)
    {
        VLine(y - state.penY);
    }
    else
    {
        Line(x, y);
    }
}

void DrawLineTo(int32_t x, int32_t y)
{
    LineTo(x, y);
}

void DrawLineRel(int32_t dx, int32_t dy)
{
    LineTo(state.penX + dx, state.penY + dy);
}

// Corner and positive size of a rectangle; false when there is nothing to draw.
static bool _normalise(const Rectangle *rect, int64_t &x, int64_t &y, int64_t &w, int64_t &h)
{
    if (rect == nullptr || state.error != 0 || state.used.empty())
    {
        return false;
    }
    w = static_cast<int64_t>(rect->right) - rect->left;
    h = static_cast<int64_t>(rect->bottom) - rect->top;
    x = w < 0 ? rect->left + w : rect->left;
    y = h < 0 ? rect->top + h : rect->top;
    w = std::llabs(w);
    h = std::llabs(h);
    return w != 0 && h != 0;
}

void DrawRectangle(const Rectangle *rect)
{
    int64_t x = 0;
    int64_t y = 0;
    int64_t w = 0;
    int64_t h = 0;
    if (!_normalise(rect, x, y, w, h))
    {
        return;
    }
    MoveTo(x, y);
    HLine(w);
    if (h > 1)
    {
        state.penY++;
        VLine(h - 1);
        HLine(1 - w);
        VLine(2 - h);
    }
    MoveTo(x, y);
}

void FillRectangle(const Rectangle *rect)
{
    int64_t x = 0;
    int64_t y = 0;
    int64_t w = 0;
    int64_t h = 0;
    if (!_normalise(rect, x, y, w, h))
    {
        return;
    }
    for (int64_t row = y; row < y + h; row++)
    {
        MoveTo(x, row);
        HLine(w);
    }
    MoveTo(x, y + h);
}

} // namespace ref
