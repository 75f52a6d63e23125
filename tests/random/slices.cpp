// slices.cpp - the frame of every pie slice is closed: a fill from the slice's inside never leaves its square.
//
// A frame's sides may stand up to a degree off, because angles are whole degrees, so that in a very thin slice the
// pixel that should be inside can lie outside. Then a fill of all that is outside must leave an inside over.
//
// A sample of all slices in whole degrees; QB_ALL in the environment takes every start, sweep and diameter from 20 to
// 300 (some 36 million slices).

#include "qbgraph.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <numbers>

namespace
{

constexpr int32_t kRim = 4; // pixels between square and picture edge
constexpr int32_t kFrame = 245;
constexpr int32_t kPaper = 0;
constexpr int32_t kFilled = 1;

struct Slice
{
    int32_t diameter;
    int32_t start;
    int32_t sweep;
};

double radians(double degrees)
{
    return degrees * std::numbers::pi / 180.0;
}

// A pixel inside the slice, at least a pixel and a half from the middle of each line of its frame, seven tenths of the
// radius out. False when the slice is too thin to have one.
bool insideOf(const Slice &slice, Point *pixel)
{
    const double radius = slice.diameter / 2.0;
    const double distance = 0.7 * radius;
    const double fromSides = slice.sweep < 180 ? distance * std::sin(radians(slice.sweep / 2.0)) : distance;
    if (fromSides < 1.5 || radius - distance < 2.5)
    {
        return false;
    }
    const double middle = radians(slice.start + slice.sweep / 2.0);
    const double center = kRim + (slice.diameter - 1) / 2.0;
    pixel->x = static_cast<int32_t>(std::lround(center + distance * std::cos(middle)));
    pixel->y = static_cast<int32_t>(std::lround(center - distance * std::sin(middle)));
    return true;
}

void frameAndFill(const Slice &slice, Point from)
{
    const Rectangle square = {kRim, kRim, kRim + slice.diameter, kRim + slice.diameter};
    SetPenColor(kPaper);
    FillImage();
    SetPenColor(kFrame);
    FrameArc(&square, slice.start, slice.sweep);
    SetPenColor(kFilled);
    Fill(from.x, from.y, kFrame);
}

// Whether a fill from the inside stays there, or else, when it has come to the picture's corner, one from the corner
// stays outside.
bool isClosed(const Slice &slice, const Image *image, Point inside)
{
    frameAndFill(slice, inside);
    if (image->pixels[0] != kFilled)
    {
        return true;
    }
    frameAndFill(slice, {0, 0});
    const uint8_t *first = image->pixels;
    const uint8_t *end = first + static_cast<int64_t>(image->width) * image->height;
    return slice.sweep <= 2 && std::find(first, end, kPaper) != end;
}

int64_t checkDiameter(int32_t diameter, int32_t startStep, int32_t sweepStep)
{
    int64_t count = 0;
    InitGraph();
    const Rectangle rect = {0, 0, diameter + 2 * kRim, diameter + 2 * kRim};
    Image *image = NewImage(&rect, 256);
    for (int32_t start = 0; start < 360; start += startStep)
    {
        for (int32_t sweep = 1; sweep < 360; sweep += sweepStep)
        {
            const Slice slice = {diameter, start, sweep};
            Point inside = {0, 0};
            if (insideOf(slice, &inside))
            {
                count++;
                EXPECT_TRUE(isClosed(slice, image, inside))
                    << "diameter " << diameter << ", start " << start << ", sweep " << sweep;
            }
        }
    }
    KillImage(image);
    return count;
}

} // namespace

TEST(Slices, AreClosed)
{
    const bool fAll = std::getenv("QB_ALL") != nullptr;
    int64_t count = 0;
    for (int32_t diameter = 20; diameter <= 300; diameter += fAll ? 1 : 7)
    {
        // 7 and 11 share no factor with 360: all odd and even, steep and flat angles come up.
        count += checkDiameter(diameter, fAll ? 1 : 7, fAll ? 1 : 11);
    }
    EXPECT_GT(count, 50000); // that is, nearly all of 41 * 52 * 33 slices were looked at
}
