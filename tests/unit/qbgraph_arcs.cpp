// qbgraph_arcs.cpp - ovals, arcs, slices, angles and offsets on a circle.

#include "canvas.h"
#include "qbgraph_state.h"

#include <gtest/gtest.h>

#include <cmath>

namespace
{

constexpr double kPi = 3.14159265358979323846;

TEST(Tables, OfTangentsAreRoundedButForFour)
{
    for (int32_t i = 0; i < 90; i++)
    {
        const auto rounded = static_cast<int32_t>(std::lround(128 * std::tan(i * kPi / 180)));
        const int32_t kept = i == 53 ? 169 : i == 54 ? 177 : i == 67 ? 301 : i == 79 ? 658 : rounded;
        EXPECT_EQ(aTanTbl[i], kept) << i;
        EXPECT_EQ(kept != rounded, i == 53 || i == 54 || i == 67 || i == 79) << i;
    }
    EXPECT_EQ(aTanTbl[90], 0);
    EXPECT_EQ(aTanTbl[1], 2);
    EXPECT_EQ(aTanTbl[5], 11);
    EXPECT_EQ(aTanTbl[85], 1463);
    EXPECT_EQ(aTanTbl[89], 7333);
}

TEST(Tables, OfCosinesAreRoundedButForTwo)
{
    for (int32_t i = 0; i <= 90; i++)
    {
        const auto rounded = static_cast<int32_t>(std::lround(128 * std::cos(i * kPi / 180)));
        EXPECT_EQ(aCosTbl[i], i == 5 || i == 45 ? rounded - 1 : rounded) << i;
    }
    EXPECT_EQ(aCosTbl[0], 128);
    EXPECT_EQ(aCosTbl[5], 127);
    EXPECT_EQ(aCosTbl[45], 90);
    EXPECT_EQ(aCosTbl[60], 64);
    EXPECT_EQ(aCosTbl[90], 0);
}

TEST(Angles, OfOffsetsGoCounterClockwiseFromTheRight)
{
    EXPECT_EQ(_CoTan(5, 0), 0);
    EXPECT_EQ(_CoTan(5, -5), 45);
    EXPECT_EQ(_CoTan(0, -5), 90);
    EXPECT_EQ(_CoTan(-5, -5), 135);
    EXPECT_EQ(_CoTan(-5, 0), 180);
    EXPECT_EQ(_CoTan(-5, 5), 225);
    EXPECT_EQ(_CoTan(0, 5), 270);
    EXPECT_EQ(_CoTan(5, 5), 315);
    EXPECT_EQ(_CoTan(0, 0), 270);
}

TEST(Angles, AreTheFirstWhoseTangentIsNotBelow)
{
    EXPECT_EQ(_CoTan(1000, -1), 0);   // 128 / 1000 is 0
    EXPECT_EQ(_CoTan(1000, 1), 360);  // the same below, where 0 counts from the other side
    EXPECT_EQ(_CoTan(128, -2), 1);    // 2 is the tangent of 1 degree
    EXPECT_EQ(_CoTan(128, -3), 2);    // 4 is that of 2
    EXPECT_EQ(_CoTan(128, -169), 53); // kept entries: 169 and 177
    EXPECT_EQ(_CoTan(128, -170), 54);
    EXPECT_EQ(_CoTan(128, -178), 55);
    EXPECT_EQ(_CoTan(1, -57), 89); // 7296
    EXPECT_EQ(_CoTan(1, -58), 90); // 7424 is above all of them
    EXPECT_EQ(_CoTan(-1, 58), 270);
}

TEST(Offsets, OnACircleAreRoundedHalfAwayFromZero)
{
    EXPECT_EQ(CosX(0, 10), 10);
    EXPECT_EQ(CosX(60, 20), 10);   // (64 * 20 + 64) >> 7
    EXPECT_EQ(CosX(60, 21), 11);   // 10.5
    EXPECT_EQ(CosX(120, 21), -11); // -10.5
    EXPECT_EQ(CosX(90, 5), 0);
    EXPECT_EQ(CosX(270, 5), 0);
    EXPECT_EQ(CosX(300, 20), 10);
    EXPECT_EQ(SinY(90, 7), 7);
    EXPECT_EQ(SinY(30, 20), 10);
    EXPECT_EQ(SinY(150, 20), 10);
    EXPECT_EQ(SinY(-30, 20), -10);
    EXPECT_EQ(SinY(210, 20), -10);
    EXPECT_EQ(SinY(180, 9), 0);
    EXPECT_EQ(CosX(45, 1), 1); // (90 + 64) >> 7
}

TEST(Offsets, TakeAnyAngleAndRadius)
{
    EXPECT_EQ(CosX(360, 10), 10);
    EXPECT_EQ(CosX(-720, 10), 10);
    EXPECT_EQ(CosX(INT32_MIN, 128), -79); // -2147483648 is 232 modulo 360; cos 52 is 79 128ths
    EXPECT_EQ(CosX(0, INT32_MAX), INT32_MAX);
    EXPECT_EQ(CosX(0, -10), -10);               // (-1280 + 64) >> 7 is -9.5, shifted down
    EXPECT_EQ(CosX(180, INT32_MIN), INT32_MIN); // 2^31 wraps
}

// A circle of 3 is walked (0,3) (1,3) (2,2) from the top: t = 54, 54, 36 against acc = 0, 18, 36, then 18 against 54;
// and (3,0) (3,1) from the side, and (2,2) if the slope there were below 45 degrees: acc = 36 is not below t = 36.
TEST(Ovals, OfOddWidthAreSymmetric)
{
    Canvas canvas(9, 9);
    const Rectangle rect = {1, 1, 8, 8};
    DrawOval(&rect);
    EXPECT_EQ(canvas.text(), ".........\n"
                             "...###...\n"
                             "..#...#..\n"
                             ".#.....#.\n"
                             ".#.....#.\n"
                             ".#.....#.\n"
                             "..#...#..\n"
                             "...###...\n"
                             ".........\n");
    EXPECT_EQ(PenText(), "1,1");
}

TEST(Ovals, OfEvenWidthHaveTheirRightAndLowerHalvesOneNearer)
{
    Canvas canvas(6, 6);
    const Rectangle rect = {6, 6, 0, 0}; // corners in any order
    DrawOval(&rect);
    EXPECT_EQ(canvas.text(), "..##..\n"
                             ".#..#.\n"
                             "#....#\n"
                             "#....#\n"
                             ".#..#.\n"
                             "..##..\n");
    EXPECT_EQ(PenText(), "0,0");
}

TEST(Ovals, FilledHaveRunsAsWideAsTheRectangle)
{
    Canvas odd(7, 7);
    const Rectangle rect7 = {0, 0, 7, 7};
    FillOval(&rect7);
    EXPECT_EQ(odd.text(), "..###..\n"
                          ".#####.\n"
                          "#######\n"
                          "#######\n"
                          "#######\n"
                          ".#####.\n"
                          "..###..\n");
    Canvas even(6, 6);
    const Rectangle rect6 = {0, 0, 6, 6};
    FillOval(&rect6);
    EXPECT_EQ(even.text(), "..##..\n"
                           ".####.\n"
                           "######\n"
                           "######\n"
                           ".####.\n"
                           "..##..\n");
    EXPECT_EQ(PenText(), "0,0");
}

TEST(Ovals, OfOneColumnOrRowAreRuns)
{
    Canvas canvas(9, 6);
    const Rectangle dot = {0, 0, 1, 1};
    const Rectangle column = {2, 0, 3, 5};
    const Rectangle row = {4, 0, 8, 1};
    const Rectangle upwards = {8, 5, 9, 1}; // from its top, which is below, and without that row
    DrawOval(&dot);
    EXPECT_EQ(PenText(), "0,0");
    DrawOval(&column);
    EXPECT_EQ(PenText(), "2,0");
    FillOval(&row);
    EXPECT_EQ(PenText(), "4,0");
    DrawOval(&upwards);
    EXPECT_EQ(PenText(), "8,5");
    EXPECT_EQ(canvas.text(), "#.#.####.\n"
                             "..#.....#\n"
                             "..#.....#\n"
                             "..#.....#\n"
                             "..#.....#\n"
                             ".........\n");
}

TEST(Ovals, WithAHalfAxisOfZeroHaveTwoPointsOrNone)
{
    Canvas canvas(5, 7);
    const Rectangle column = {4, 1, 3, 6}; // width -1: half-axes 0 and 2, around (3, 3)
    DrawOval(&column);
    EXPECT_EQ(PenText(), "3,1");
    const Rectangle dot = {2, 3, 1, 2}; // both 0: the walk would never end
    DrawOval(&dot);
    FillOval(&dot);
    EXPECT_EQ(PenText(), "1,2");
    const Rectangle row = {0, 7, 4, 6}; // height -1: half-axes 2 and 0, around (2, 6): one point, and one pixel nearer
    FillOval(&row);
    EXPECT_EQ(canvas.count(255), 2); // its run of 2 * 0 + 1 - 1 is empty
    DrawOval(&row);
    EXPECT_EQ(canvas.text(), ".....\n"
                             "...#.\n"
                             ".....\n"
                             ".....\n"
                             ".....\n"
                             "...#.\n"
                             ".##..\n");
}

TEST(Ovals, OfAWidePenAreStampedEverywhere)
{
    Canvas canvas(8, 8);
    SetPenSize(2, 2);
    const Rectangle rect = {0, 0, 7, 7};
    DrawOval(&rect);
    EXPECT_EQ(canvas.text(), "..####..\n"
                             ".######.\n"
                             "###..###\n"
                             "##....##\n"
                             "##....##\n"
                             "###..###\n"
                             ".######.\n"
                             "..####..\n");
}

std::string arcText(int32_t start, int32_t sweep)
{
    Canvas canvas(7, 7);
    const Rectangle rect = {0, 0, 7, 7};
    DrawArc(&rect, start, sweep);
    EXPECT_EQ(PenText(), "0,0");
    return canvas.text();
}

TEST(Arcs, OfAFullTurnAreTheWholeEllipse)
{
    Canvas canvas(7, 7);
    const Rectangle rect = {0, 0, 7, 7};
    DrawOval(&rect);
    EXPECT_EQ(arcText(0, 360), canvas.text());
    EXPECT_EQ(arcText(360, -360), canvas.text());
}

// The angles on that circle: (0,3) 90, (1,3) 72, (2,2) 45, (3,1) 18, (3,0) 0.
TEST(Arcs, GoThroughZeroWhenTheirEndIsBelowTheirStart)
{
    EXPECT_EQ(arcText(300, 120), ".......\n"
                                 ".....#.\n"
                                 "......#\n"
                                 "......#\n"
                                 "......#\n"
                                 ".....#.\n"
                                 ".......\n");
}

TEST(Arcs, TakeBothEndsIn)
{
    EXPECT_EQ(arcText(18, 54), "....#..\n"
                               ".....#.\n"
                               "......#\n"
                               ".......\n"
                               ".......\n"
                               ".......\n"
                               ".......\n");
    EXPECT_EQ(arcText(19, 52), ".......\n"
                               ".....#.\n"
                               ".......\n"
                               ".......\n"
                               ".......\n"
                               ".......\n"
                               ".......\n");
}

TEST(Arcs, TakeAnglesOfAnySizeAndSign)
{
    const std::string quarter = arcText(270, 90);
    EXPECT_EQ(arcText(-90, 90), quarter);
    EXPECT_EQ(arcText(-450, 90), quarter);
    EXPECT_EQ(arcText(630, 90), quarter);
    EXPECT_EQ(arcText(0, -90), quarter); // 270 through 0: the side counts from above
    EXPECT_EQ(arcText(360, -90), quarter);
}

TEST(Arcs, KeepTheAngle360ApartFromZero)
{
    const Rectangle rect = {0, 0, 6, 6}; // the side's lower image is at row 2, its upper one at row 3
    Canvas at360(6, 6);
    DrawArc(&rect, 360, 0);
    EXPECT_EQ(at360.at(5, 2), 255);
    EXPECT_EQ(at360.count(255), 1);
    Canvas at720(6, 6);
    DrawArc(&rect, 720, 0);
    EXPECT_EQ(at720.at(5, 3), 255);
    EXPECT_EQ(at720.count(255), 1);
}

TEST(Arcs, FillWithARadiusToEachPoint)
{
    Canvas canvas(7, 7);
    const Rectangle rect = {0, 0, 7, 7};
    FillArc(&rect, 0, 90);
    // Radii from (3,3): to (3,0) straight; to (4,0) by (3,2) and (4,1); to (5,1) by (4,2); to (6,2) by (4,3) and
    // (5,2); to (6,3) straight.
    EXPECT_EQ(canvas.text(), "...##..\n"
                             "...###.\n"
                             "...####\n"
                             "...####\n"
                             ".......\n"
                             ".......\n"
                             ".......\n");
    EXPECT_EQ(PenText(), "0,0");
}

TEST(Arcs, FrameASliceWithItsRadii)
{
    Canvas canvas(7, 7);
    const Rectangle rect = {0, 0, 7, 7};
    FrameArc(&rect, 0, 90);
    // Walked on a radius of 192, 3 doubled 6 times; v comes back as (v + 3) / 64, so 61 .. 124 is 1, 125 .. 188 is 2.
    // y = 61 .. 124 goes with x = 146 .. 182, which is 2; so (2,1) and the like are on the outline.
    EXPECT_EQ(canvas.text(), "...#...\n"
                             "...###.\n"
                             "...#.#.\n"
                             "...####\n"
                             ".......\n"
                             ".......\n"
                             ".......\n");
    EXPECT_EQ(PenText(), "0,0");
}

TEST(Arcs, WithoutRoomDrawNothingAndLeaveThePen)
{
    Canvas canvas(5, 5);
    MovePenTo(4, 4);
    const Rectangle rects[] = {{0, 0, 0, 5}, {0, 0, 5, 0}, {0, 0, 1, 5}, {0, 0, 5, 1}};
    for (const Rectangle &rect : rects)
    {
        DrawArc(&rect, 0, 360);
        FillArc(&rect, 0, 360);
        FrameArc(&rect, 0, 300);
    }
    const Rectangle empty = {2, 2, 2, 4};
    DrawOval(&empty);
    FillOval(&empty);
    DrawOval(nullptr);
    FillOval(nullptr);
    DrawArc(nullptr, 0, 90);
    FillArc(nullptr, 0, 90);
    FrameArc(nullptr, 0, 90);
    EXPECT_EQ(canvas.count(255), 0);
    EXPECT_EQ(PenText(), "4,4");
}

TEST(Arcs, WithAHalfAxisOfZeroDrawTheirPointsButNoFrame)
{
    const Rectangle column = {4, 1, 3, 6}; // half-axes 0 and 2, around (3, 3)
    Canvas canvas(5, 7);
    FrameArc(&column, 0, 300);
    EXPECT_EQ(canvas.count(255), 0);
    EXPECT_EQ(PenText(), "3,1");
    DrawArc(&column, 0, 180); // the point above only
    EXPECT_EQ(canvas.at(3, 1), 255);
    EXPECT_EQ(canvas.count(255), 1);
    FillArc(&column, 180, 180); // and the radius down
    EXPECT_EQ(canvas.at(3, 5), 255);
    EXPECT_EQ(canvas.count(255), 4);
}

TEST(Arcs, WhileAnErrorIsSetOrWithoutColourPaintNothing)
{
    const Rectangle rect = {2, 2, 9, 9};
    {
        Canvas canvas(12, 12);
        SetImage(nullptr);
        DrawOval(&rect);
        FillOval(&rect);
        DrawArc(&rect, 0, 90);
        FillArc(&rect, 0, 90);
        FrameArc(&rect, 0, 90);
        EXPECT_EQ(canvas.count(255), 0);
        EXPECT_EQ(PenText(), "0,0");
    }
    const Rectangle all = {0, 0, 12, 12};
    Image *image = NewImage(&all, 4);
    FillArc(&rect, 0, 90);
    EXPECT_EQ(PenText(), "2,2");
    MovePenTo(0, 0);
    DrawOval(&rect);
    EXPECT_EQ(PenText(), "2,2");
    for (int32_t i = 0; i < 144; i++)
    {
        EXPECT_EQ(image->pixels[i], 0);
    }
    KillImage(image);
}

// A frame, and a fill from halfway along its middle; true when the fill came out of the slice's square.
bool leaks(int32_t diameter, int32_t start, int32_t sweep)
{
    Canvas canvas(diameter + 2, diameter + 2);
    const Rectangle square = {1, 1, 1 + diameter, 1 + diameter};
    FrameArc(&square, start, sweep);
    const int32_t middle = start + sweep / 2;
    const int32_t centre = 1 + diameter / 2;
    const int32_t x = centre + CosX(middle, diameter / 4);
    const int32_t y = centre - SinY(middle, diameter / 4);
    SetPenColor(7);
    Fill(x, y, 255);
    return canvas.at(0, 0) == 7;
}

TEST(Arcs, FramedAreClosed)
{
    for (const int32_t diameter : {20, 33, 64, 101})
    {
        for (int32_t start = 0; start < 360; start += 7)
        {
            for (int32_t sweep = 360 - 1; sweep >= 1000 / diameter; sweep -= 11) // wide enough to have an inside
            {
                ASSERT_FALSE(leaks(diameter, start, sweep)) << diameter << " " << start << " " << sweep;
            }
        }
    }
}

TEST(Arcs, FramedWhichEndJustBeforeTheyBeginAreClosed)
{
    for (int32_t start = 0; start < 360; start++)
    {
        for (const int32_t sweep : {330, 350, 358, 359})
        {
            ASSERT_FALSE(leaks(61, start, sweep)) << start << " " << sweep;
        }
    }
}

} // namespace
