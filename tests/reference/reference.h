// reference.h - every drawing call of qbgraph.h once more, written the slow way: one pen stamp after the other, one
// pixel after the other, nothing clipped before it is stamped. What it leaves behind is what the fast code must leave.
//
// It has its own image, pen, colour table, error and text state, and takes only glyphs from qbgrfnt. Coordinates must
// stay within some millions of pixels: it counts in 64 bits and visits every step.
#pragma once

#include "qbgraph.h"

#include <array>
#include <cstdint>
#include <vector>

namespace ref
{

// The current image and everything that drawing calls change. Start sets all of it but the glyph record.
struct State
{
    int64_t width;
    int64_t height;
    std::vector<uint8_t> pixels; // palette indices, top row first
    std::vector<uint8_t> used;   // colours in the order of their first use
    uint32_t capacity;           // most colours
    int32_t thruColor;
    int32_t fThruColor;
    int64_t penX;
    int64_t penY;
    int64_t penW;
    int64_t penH;
    uint8_t penColor;
    int32_t error;
    int32_t style;
    int32_t direction;
    int32_t angle;
};

extern State state;

// Begins with an image of these pixels, as InitGraph and NewImage would.
void Start(int32_t width, int32_t height, uint32_t nColors, const uint8_t *pixels);

void FillImage();
void MovePenTo(int32_t x, int32_t y);
void MovePenRel(int32_t dx, int32_t dy);
void SetPenColor(int32_t colour);
void SetPenSize(int32_t width, int32_t height);
void SetThruColor(int32_t colour);
void DrawPen();

void DrawLineTo(int32_t x, int32_t y);
void DrawLineRel(int32_t dx, int32_t dy);
void DrawRectangle(const Rectangle *rect);
void FillRectangle(const Rectangle *rect);

void DrawOval(const Rectangle *rect);
void FillOval(const Rectangle *rect);
void DrawArc(const Rectangle *rect, int32_t start, int32_t sweep);
void FillArc(const Rectangle *rect, int32_t start, int32_t sweep);
void FrameArc(const Rectangle *rect, int32_t start, int32_t sweep);
int64_t CosX(int64_t angle, int64_t r);
int64_t SinY(int64_t angle, int64_t r);

void DrawPolygon(const Polygon *polygon, int32_t dx, int32_t dy);
void FillPolygon(const Polygon *polygon, int32_t dx, int32_t dy);
void Fill(int32_t x, int32_t y, int32_t boundary);

void SetFontStyle(int32_t style);
void SetFontOrientation(int32_t orientation);
void SetFontAngle(int32_t angle);
void DrawText(const char *text);
void DrawChar(int32_t ch);
void DrawTextInRect(const char *text, const Rectangle *rect);
void GetTextDim(const char *text, Point *dim);
void GetCharDim(int32_t ch, Point *dim);

} // namespace ref
