// qbgraph_lines.cpp - runs, lines in every octant and of every pen, rectangles, and where each leaves the pen.

#include "canvas.h"
#include "qbgraph_state.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <utility>

namespace
{

TEST(Lines, ToTheRightPaintTheirStartAndStopOnTheLastPixel)
{
    Canvas canvas(11, 7);
    MovePenTo(5, 5);
    DrawLineTo(9, 5);
    EXPECT_EQ(PenText(), "8,5");
    EXPECT_EQ(canvas.text().substr(5UL * 12, 11), ".....####..");
    EXPECT_EQ(canvas.count(255), 4);
}

TEST(Lines, ToTheLeftLeaveTheirStartOut)
{
    Canvas canvas(11, 7);
    MovePenTo(5, 5);
    DrawLineTo(1, 5);
    EXPECT_EQ(PenText(), "1,5");
    EXPECT_EQ(canvas.text().substr(5UL * 12, 11), ".####......");
    EXPECT_EQ(canvas.count(255), 4);
}

TEST(Lines, DownAndUpDoTheSame)
{
    Canvas canvas(3, 5);
    MovePenTo(0, 1);
    DrawLineTo(0, 4);
    EXPECT_EQ(PenText(), "0,3");
    MovePenTo(2, 3);
    DrawLineTo(2, 0);
    EXPECT_EQ(PenText(), "2,0");
    EXPECT_EQ(canvas.text(), "..#\n"
                             "#.#\n"
                             "#.#\n"
                             "#..\n"
                             "...\n");
}

TEST(Lines, ByADistanceAreTheSameLines)
{
    Canvas canvas(6, 4);
    MovePenTo(1, 0);
    DrawLineRel(4, 0);
    EXPECT_EQ(PenText(), "4,0");
    DrawLineRel(0, 3);
    EXPECT_EQ(PenText(), "4,2");
    DrawLineRel(-4, 1);
    EXPECT_EQ(PenText(), "0,3");
    // The last: d = 2 * 1 - 4 = -2; (4,2) d 0, (3,2) a step up to d -6, (2,3), (1,3).
    EXPECT_EQ(canvas.text(), ".####.\n"
                             "....#.\n"
                             "...##.\n"
                             ".##...\n");
}

TEST(Lines, ToThePenDrawNothing)
{
    Canvas canvas(3, 3);
    MovePenTo(1, 1);
    DrawLineTo(1, 1);
    DrawLineRel(0, 0);
    EXPECT_EQ(canvas.count(255), 0);
    EXPECT_EQ(PenText(), "1,1");
}

TEST(Lines, TakeTheMinorStepOnATie)
{
    Canvas canvas(4, 3);
    DrawLineTo(3, 2); // d = 2 * 2 - 3 = 1: a step at once; then 1 - 6 + 4 = -1: none; then 3: one
    EXPECT_EQ(canvas.text(), "#...\n"
                             ".##.\n"
                             "....\n");
    EXPECT_EQ(PenText(), "3,2");
    MovePenTo(0, 0);
    SetPenColor(7);
    DrawLineTo(2, 1); // d = 0: a step at once
    EXPECT_EQ(canvas.text(), "2...\n"
                             ".2#.\n"
                             "....\n");
}

TEST(Lines, AreTheSameInEveryOctant)
{
    // Major 4, minor 1: two pixels level, then two one further, as worked out above.
    for (const int32_t sx : {-1, 1})
    {
        for (const int32_t sy : {-1, 1})
        {
            for (const bool fSteep : {false, true})
            {
                Canvas canvas(9, 9);
                MovePenTo(4, 4);
                DrawLineTo(4 + sx * (fSteep ? 1 : 4), 4 + sy * (fSteep ? 4 : 1));
                for (int32_t i = 0; i < 4; i++)
                {
                    const int32_t minor = i < 2 ? 0 : 1;
                    EXPECT_EQ(canvas.at(4 + sx * (fSteep ? minor : i), 4 + sy * (fSteep ? i : minor)), 255);
                }
                EXPECT_EQ(canvas.count(255), 4);
            }
        }
    }
}

TEST(Lines, AlongAnAxisOfTheGeneralKindPaintTheirStartAndNotTheirEnd)
{
    Canvas canvas(6, 5);
    MovePenTo(4, 0);
    _DrawLine(1, 0);
    EXPECT_EQ(PenText(), "1,0");
    MovePenTo(1, 2);
    _DrawLine(4, 2);
    MovePenTo(5, 4);
    _DrawLine(5, 1);
    MovePenTo(0, 1);
    _DrawLine(0, 4);
    MovePenTo(2, 4);
    _DrawLine(2, 4); // the pen's own position: one stamp
    EXPECT_EQ(canvas.text(), "..###.\n"
                             "#.....\n"
                             "####.#\n"
                             "#....#\n"
                             "..#..#\n");
}

// Every stamp of a line by the decision term, one DrawPen after the other.
void stampLine(int32_t x1, int32_t y1)
{
    int32_t dx = std::abs(x1 - curPenX);
    int32_t dy = std::abs(y1 - curPenY);
    const int32_t sx = x1 > curPenX ? 1 : -1;
    const int32_t sy = y1 > curPenY ? 1 : -1;
    const bool fSteep = dx < dy;
    if (fSteep)
    {
        std::swap(dx, dy);
    }
    int32_t d = 2 * dy - dx;
    for (int32_t i = 0; i < dx; i++)
    {
        DrawPen();
        if (d >= 0)
        {
            d -= 2 * dx;
            fSteep ? MovePenRel(sx, 0) : MovePenRel(0, sy);
        }
        d += 2 * dy;
        fSteep ? MovePenRel(0, sy) : MovePenRel(sx, 0);
    }
}

TEST(Lines, OfEveryPenPaintWhatTheirStampsDo)
{
    const Point pens[] = {{1, 1}, {2, 2}, {1, 3}, {4, 1}, {3, 5}, {14, 14}, {0, 2}, {2, 0}};
    for (const Point &pen : pens)
    {
        for (int32_t x = -9; x <= 20; x++)
        {
            for (int32_t y = -9; y <= 20; y++)
            {
                if (x == 4 || y == 6)
                {
                    continue; // runs, which have end points of their own
                }
                Canvas canvas(11, 11);
                Canvas stamped(11, 11);
                SetPenSize(pen.x, pen.y);
                MovePenTo(4, 6);
                stampLine(x, y);
                SetImage(canvas.image());
                SetPenSize(pen.x, pen.y);
                MovePenTo(4, 6);
                DrawLineTo(x, y);
                ASSERT_EQ(canvas.text(), stamped.text()) << "to " << x << "," << y << " pen " << pen.x << "," << pen.y;
                EXPECT_EQ(PenText(), std::to_string(x) + "," + std::to_string(y));
            }
        }
    }
}

TEST(Lines, BeginningOutsideArePaintedWhereTheyCross)
{
    for (int32_t x = -30; x <= 30; x += 3)
    {
        for (int32_t y = -30; y <= 30; y += 4)
        {
            for (const int32_t pen : {1, 3})
            {
                Canvas canvas(8, 7);
                Canvas stamped(8, 7);
                SetPenSize(pen, pen);
                MovePenTo(x, y);
                stampLine(7 - x, 2 - y); // odd sums: never a run
                SetImage(canvas.image());
                SetPenSize(pen, pen);
                MovePenTo(x, y);
                7 - x != x && 2 - y != y ? DrawLineTo(7 - x, 2 - y) : _DrawLine(7 - x, 2 - y);
                ASSERT_EQ(canvas.text(), stamped.text()) << "from " << x << "," << y;
            }
        }
    }
}

TEST(Lines, AcrossAllCoordinatesEnterTheImageExactly)
{
    Canvas canvas(5, 5);
    MovePenTo(INT32_MIN, 0);
    DrawLineTo(INT32_MAX, 4); // at x = 0: 4 * 2^31 / (2^32 - 1) + 1/2, which is row 2
    EXPECT_EQ(canvas.text(), ".....\n"
                             ".....\n"
                             "#####\n"
                             ".....\n"
                             ".....\n");
    EXPECT_EQ(PenText(), "2147483647,4");
    SetPenColor(7);
    MovePenTo(INT32_MIN, INT32_MIN);
    DrawLineTo(INT32_MAX, INT32_MAX);
    EXPECT_EQ(canvas.text(), "2....\n"
                             ".2...\n"
                             "##2##\n"
                             "...2.\n"
                             "....2\n");
}

TEST(Lines, OfAnEnormousPenPaintEverythingTheyPass)
{
    Canvas canvas(3, 2);
    SetPenSize(100000, 100000);
    MovePenTo(-2000000000, -2000000000);
    DrawLineTo(2000000000, 1999999999);
    EXPECT_EQ(canvas.count(255), 6);
}

TEST(Lines, PastTheLastCoordinateWrapThePen)
{
    Canvas canvas(2, 2);
    MovePenTo(INT32_MAX - 1, 0);
    DrawLineRel(5, 0); // stops 4 further: INT32_MAX + 3
    EXPECT_EQ(curPenX, INT32_MIN + 2);
    MovePenTo(0, INT32_MIN);
    DrawLineRel(0, -1);
    EXPECT_EQ(curPenY, INT32_MAX);
    MovePenTo(INT32_MAX, INT32_MAX);
    DrawLineRel(1, 2);
    EXPECT_EQ(curPenX, INT32_MIN);
    EXPECT_EQ(curPenY, INT32_MIN + 1);
    EXPECT_EQ(canvas.count(255), 0);
}

TEST(Lines, WithoutAColourOnlyMoveThePen)
{
    InitGraph();
    const Rectangle rect = {0, 0, 4, 4};
    Image *image = NewImage(&rect, 4);
    DrawLineTo(3, 2);
    EXPECT_EQ(PenText(), "3,2");
    DrawRectangle(&rect);
    FillRectangle(&rect);
    EXPECT_EQ(PenText(), "3,2");
    KillImage(image);
}

TEST(Lines, WhileAnErrorIsSetDoNothing)
{
    Canvas canvas(4, 4);
    const Rectangle rect = {0, 0, 4, 4};
    SetImage(nullptr);
    DrawLineTo(3, 2);
    DrawLineRel(3, 2);
    DrawRectangle(&rect);
    FillRectangle(&rect);
    EXPECT_EQ(PenText(), "0,0");
    EXPECT_EQ(canvas.count(255), 0);
}

TEST(Rectangles, AreDrawnOnceAroundAndLeaveThePenOnTheirCorner)
{
    Canvas canvas(6, 5);
    const Rectangle rect = {1, 1, 5, 4};
    DrawRectangle(&rect);
    EXPECT_EQ(canvas.text(), "......\n"
                             ".####.\n"
                             ".#..#.\n"
                             ".####.\n"
                             "......\n");
    EXPECT_EQ(PenText(), "1,1");
}

TEST(Rectangles, OfOneOrTwoRowsOrColumnsAreComplete)
{
    Canvas canvas(9, 5);
    const Rectangle flat = {0, 0, 4, 1};
    const Rectangle two = {0, 2, 3, 4};
    const Rectangle narrow = {5, 0, 6, 4};
    const Rectangle dot = {8, 4, 9, 5};
    DrawRectangle(&flat);
    EXPECT_EQ(PenText(), "0,0");
    DrawRectangle(&two);
    EXPECT_EQ(PenText(), "0,2");
    DrawRectangle(&narrow);
    EXPECT_EQ(PenText(), "5,0");
    DrawRectangle(&dot);
    EXPECT_EQ(canvas.text(), "####.#...\n"
                             ".....#...\n"
                             "###..#...\n"
                             "###..#...\n"
                             "........#\n");
}

TEST(Rectangles, WithCornersInAnyOrderAreNormalised)
{
    Canvas canvas(5, 4);
    const Rectangle rect = {4, 3, 1, 0};
    DrawRectangle(&rect);
    EXPECT_EQ(canvas.text(), ".###.\n"
                             ".#.#.\n"
                             ".###.\n"
                             ".....\n");
    EXPECT_EQ(PenText(), "1,0");
}

TEST(Rectangles, OfAWidePenGoBeyondRightAndBelow)
{
    Canvas canvas(7, 6);
    SetPenSize(2, 2);
    const Rectangle rect = {0, 0, 5, 4};
    DrawRectangle(&rect);
    EXPECT_EQ(canvas.text(), "######.\n"
                             "######.\n"
                             "##..##.\n"
                             "######.\n"
                             "######.\n"
                             ".......\n");
}

TEST(Rectangles, EmptyOrMissingLeaveTheImageAndThePenAsTheyWere)
{
    Canvas canvas(4, 4);
    MovePenTo(3, 3);
    const Rectangle noWidth = {1, 1, 1, 3};
    const Rectangle noHeight = {1, 1, 3, 1};
    for (const Rectangle *rect : {&noWidth, &noHeight, static_cast<const Rectangle *>(nullptr)})
    {
        DrawRectangle(rect);
        FillRectangle(rect);
    }
    EXPECT_EQ(canvas.count(255), 0);
    EXPECT_EQ(PenText(), "3,3");
}

TEST(Rectangles, FilledLeaveThePenBelow)
{
    Canvas canvas(6, 5);
    const Rectangle rect = {4, 3, 1, 1};
    FillRectangle(&rect);
    EXPECT_EQ(canvas.text(), "......\n"
                             ".###..\n"
                             ".###..\n"
                             "......\n"
                             "......\n");
    EXPECT_EQ(PenText(), "1,3");
    SetPenSize(3, 2); // from 1 .. 3 to 1 .. 5, and one row more
    FillRectangle(&rect);
    EXPECT_EQ(canvas.text(), "......\n"
                             ".#####\n"
                             ".#####\n"
                             ".#####\n"
                             "......\n");
}

TEST(Rectangles, OfAllCoordinatesCoverTheImage)
{
    Canvas canvas(3, 2);
    const Rectangle all = {INT32_MIN, INT32_MIN, INT32_MAX, INT32_MAX};
    DrawRectangle(&all);
    EXPECT_EQ(canvas.count(255), 0);
    FillRectangle(&all);
    EXPECT_EQ(canvas.count(255), 6);
    EXPECT_EQ(curPenX, INT32_MIN);
    EXPECT_EQ(curPenY, INT32_MAX);
}

} // namespace
