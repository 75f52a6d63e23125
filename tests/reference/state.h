// state.h - what the reference's files share: pen runs, pixel tests, the line stepper. All counts are 64 bits wide.
#pragma once

#include "reference.h"

namespace ref
{

// A stepper along a direction: the x or y axis with the longer way is the major one.
struct Stepper
{
    int64_t x;
    int64_t y;
    int64_t major;
    int64_t minor;
    int64_t error;
    int64_t sx;
    int64_t sy;
    int64_t remaining;
    bool swapped; // y is the major axis
};

Stepper NewStepper(int64_t dx, int64_t dy);
void SetOrigin(Stepper &path, int64_t x, int64_t y);

// One step forward; true when the minor axis moved too.
bool Step(Stepper &path);

void MoveTo(int64_t x, int64_t y);
bool IsInside(int64_t x, int64_t y);
uint8_t &PixelAt(int64_t x, int64_t y);
bool IsUsed(uint8_t colour);

void HLine(int64_t n);
void VLine(int64_t n);
void Line(int64_t x, int64_t y);
void LineTo(int64_t x, int64_t y);

int64_t Cos128(int64_t angle);
int64_t Sin128(int64_t angle);

} // namespace ref
