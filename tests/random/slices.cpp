// slices.cpp - the frame of every pie slice is closed: a fill from the slice's inside never leaves its square.
//
// A sample of all slices in whole degrees; QB_ALL in the environment takes every start, sweep and diameter from 20 to
// 300 (some 36 million slices).

#include "qbgraph.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <numbers>

namespace
{

constexpr int32_t kRim = 4; // pixels between square and picture edge
constexpr int32_t kFrame = 245;
constexpr int32_t kInside = 1;

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

// Frames and fills one slice; true when the fill came out of the frame, that is, to the picture's corner.
bool runsOut(const Slice &slice, const Image *image, Point inside)
{
    const Rectangle square = {kRim, kRim, kRim + slice.diameter, kRim + slice.diameter};
    SetPenColor(0);
    FillImage();
    SetPenColor(kFrame);
    FrameArc(&square, slice.start, slice.sweep);
    SetPenColor(kInside);
    Fill(inside.x, inside.y, kFrame);
    return image->pixels[0] == kInside;
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
                EXPECT_FALSE(runsOut(slice, image, inside))
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
