// qbgraph_arcs_wide.cpp - large ovals and arcs: the same pixels as step by step, and no size or pen that takes long.

#include "canvas.h"
#include "qbgraph_ellipse_state.h"
#include "qbgraph_state.h"

#include <gtest/gtest.h>

#include <random>

namespace
{

constexpr int32_t kSide = 70; // of the canvas that both ways draw on

// A shape that partly hangs over the canvas.
struct Shape
{
    Rectangle rect;
    int32_t start;
    int32_t sweep;
    int32_t penW;
    int32_t penH;
};

std::string describe(const Shape &s)
{
    const int32_t all[] = {s.rect.left, s.rect.top, s.rect.right, s.rect.bottom, s.start, s.sweep, s.penW, s.penH};
    std::string text = "rectangle, start, sweep, pen:";
    for (const int32_t v : all)
    {
        text += " " + std::to_string(v);
    }
    return text;
}

// Shapes in no order, the same in every run; the pen's area is at most 64, so that the usual calls go step by step.
Shape shapeOf(uint32_t seed)
{
    std::mt19937 dice(seed);
    const auto roll = [&dice](int32_t low, int32_t high)
    {
        return low + static_cast<int32_t>(dice() % static_cast<uint32_t>(high - low + 1));
    };
    const int32_t left = roll(-30, 50);
    const int32_t top = roll(-30, 50);
    const int32_t width = roll(2, seed % 3 == 0 ? 12 : 70);
    const int32_t height = roll(2, seed % 5 == 0 ? 9 : 70);
    const int32_t pen = roll(1, 8);
    return {{left, top, left + width, top + height}, roll(0, 359), roll(-360, 360), pen, roll(1, 8)};
}

_Ellipse ellipseOf(const Rectangle &rect)
{
    const int32_t width = rect.right - rect.left;
    const int32_t height = rect.bottom - rect.top;
    return {rect.left + width / 2,   rect.top + height / 2,   width / 2, height / 2,
            width % 2 == 0 ? -1 : 0, height % 2 == 0 ? -1 : 0};
}

// The angles as the arcs count them; start is in 0 .. 359 here.
_Angles anglesOf(const Shape &shape)
{
    int32_t end = shape.start + shape.sweep;
    end = end < 0 ? end + 360 : end > 360 ? end - 360 : end;
    return shape.sweep < 0 ? _Angles{end, shape.start} : _Angles{shape.start, end};
}

template <typename Draw>
std::string picture(const Shape &shape, Draw draw)
{
    Canvas canvas(kSide, kSide);
    SetPenSize(shape.penW, shape.penH);
    draw();
    return canvas.text();
}

TEST(WideArcs, PaintOvalsAsStepByStep)
{
    for (uint32_t seed = 0; seed < 1000; seed++)
    {
        const Shape s = shapeOf(seed);
        const _Ellipse e = ellipseOf(s.rect);
        ASSERT_EQ(picture(s, [&] { _DrawWideOval(e); }), picture(s, [&] { DrawOval(&s.rect); })) << describe(s);
        ASSERT_EQ(picture(s, [&] { _FillWideOval(e); }), picture(s, [&] { FillOval(&s.rect); })) << describe(s);
    }
}

TEST(WideArcs, PaintArcsAsStepByStep)
{
    for (uint32_t seed = 0; seed < 1000; seed++)
    {
        const Shape s = shapeOf(seed);
        const _Ellipse e = ellipseOf(s.rect);
        const _Angles angles = anglesOf(s);
        ASSERT_EQ(picture(s, [&] { _DrawWideArc(e, angles); }), picture(s, [&] { DrawArc(&s.rect, s.start, s.sweep); }))
            << describe(s);
        ASSERT_EQ(picture(s, [&] { _FillWideArc(e, angles); }), picture(s, [&] { FillArc(&s.rect, s.start, s.sweep); }))
            << describe(s);
    }
}

TEST(WideArcs, FrameSlicesAsStepByStep)
{
    for (uint32_t seed = 0; seed < 2000; seed++)
    {
        const Shape s = shapeOf(seed);
        const _Ellipse e = ellipseOf(s.rect);
        const _Angles angles = anglesOf(s);
        ASSERT_EQ(picture(s, [&] { _FrameWideArc(e, angles); }),
                  picture(s, [&] { FrameArc(&s.rect, s.start, s.sweep); }))
            << describe(s);
    }
}

// What takes too long step by step; a test that hangs is the failure.
TEST(WideArcs, OfAnySizeAndPenEnd)
{
    const Rectangle rects[] = {{INT32_MIN, INT32_MIN, INT32_MAX, INT32_MAX},
                               {-2000000000, 30, 2000000000, 32},
                               {30, -2000000000, 33, 2000000000},
                               {-2000000000, -2000000000, 35, 35},
                               {1000000, 1000000, 2000000000, 2000000000},
                               {-50000, -50000, 50000, 50000}};
    for (const int32_t pen : {1, 3, 100000, INT32_MAX})
    {
        for (const Rectangle &rect : rects)
        {
            Canvas canvas(kSide, kSide);
            SetPenSize(pen, pen);
            DrawOval(&rect);
            FillOval(&rect);
            DrawArc(&rect, INT32_MIN, INT32_MAX);
            FillArc(&rect, 20, 350);
            FrameArc(&rect, 20, 350);
            EXPECT_EQ(PenText(), std::to_string(rect.left) + "," + std::to_string(rect.top));
        }
    }
}

TEST(WideArcs, AsFarAsTheyReachArePainted)
{
    Canvas canvas(5, 3);
    const Rectangle right = {-2000000000, -2000000000, 3,
                             2000000001}; // its rightmost column is 2, for thousands of rows
    FillOval(&right);
    EXPECT_EQ(canvas.text(), "###..\n"
                             "###..\n"
                             "###..\n");
    SetPenColor(7);
    DrawOval(&right);
    EXPECT_EQ(canvas.text(), "##2..\n"
                             "##2..\n"
                             "##2..\n");
    SetPenColor(8);
    FillArc(&right, 1, 30); // above the image
    EXPECT_EQ(canvas.count(8), 0);
    FillArc(&right, 0, 1); // from row 0, the middle, upwards
    EXPECT_EQ(canvas.text(), "333..\n"
                             "##2..\n"
                             "##2..\n");
}

} // namespace
