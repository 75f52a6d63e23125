// qbgraph_polygons.cpp - polygon outlines and fills, paths, the list of crossings, flood fill.

#include "alloc_fail.h"
#include "canvas.h"
#include "qbgraph_state.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace
{

// A polygon whose points the test owns.
Polygon polygonOf(std::vector<Point> &points)
{
    return {static_cast<int32_t>(points.size()), points.data()};
}

std::string pathText(const Path &path)
{
    return std::to_string(path.x) + "," + std::to_string(path.y) + " left " + std::to_string(path.remaining);
}

std::string pointText(const Point &point)
{
    return std::to_string(point.x) + "," + std::to_string(point.y);
}

TEST(Polygons, AreOutlinedFromVertexToVertexAndBack)
{
    Canvas canvas(6, 5);
    std::vector<Point> points = {{0, 0}, {4, 0}, {0, 4}};
    const Polygon polygon = polygonOf(points);
    DrawPolygon(&polygon, 1, 0);
    // Right: columns 1 .. 4, and the pen stays on 4. To (1,4), steep 4 by 3: (4,0) (3,1) (2,2) (2,3), a tie at 2.
    // Up from (1,4), which is left out.
    EXPECT_EQ(canvas.text(), ".####.\n"
                             ".#.#..\n"
                             ".##...\n"
                             ".##...\n"
                             "......\n");
    EXPECT_EQ(PenText(), "1,0");
}

TEST(Polygons, AreFilledRowByRowBelowTheirTop)
{
    Canvas canvas(5, 5);
    std::vector<Point> points = {{0, 0}, {4, 0}, {0, 4}};
    const Polygon polygon = polygonOf(points);
    FillPolygon(&polygon, 0, 0);
    // Row 1 from 0 up to 3 without it, row 2 up to 2, row 3 up to 1; the outline lies over that.
    EXPECT_EQ(canvas.text(), "####.\n"
                             "###..\n"
                             "##...\n"
                             "##...\n"
                             ".....\n");
    EXPECT_EQ(PenText(), "0,0");
}

TEST(Polygons, AboveRowZeroAreFilledDownToTheirLastRow)
{
    Canvas canvas(6, 7);
    std::vector<Point> points = {{0, -4}, {4, -4}, {4, -1}, {0, -1}};
    const Polygon polygon = polygonOf(points);
    FillPolygon(&polygon, 0, 5);
    // Rows 1 + 1 .. 5 + 0 - 1 of the fill: 2, 3, 4. The outline: row 1 to column 3, then from (3,1) to (4,4) by (3,2)
    // and (4,3), back along row 4, up column 0.
    EXPECT_EQ(canvas.text(), "......\n"
                             "####..\n"
                             "####..\n"
                             "#####.\n"
                             "####..\n"
                             "......\n"
                             "......\n");
}

TEST(Polygons, ThatCrossThemselvesAreFilledByTheOddRule)
{
    Canvas canvas(13, 9);
    std::vector<Point> points = {{0, 0}, {12, 0}, {12, 8}, {4, 8}, {4, 4}, {8, 4}, {8, 2}, {0, 2}};
    const Polygon polygon = polygonOf(points);
    FillPolygon(&polygon, 0, 0);
    EXPECT_EQ(canvas.at(6, 3), 0); // the notch between columns 0, 8 and 12
    EXPECT_EQ(canvas.at(2, 1), 255);
    EXPECT_EQ(canvas.at(10, 3), 255);
    EXPECT_EQ(canvas.at(6, 6), 255);
    EXPECT_EQ(canvas.at(2, 6), 0);
}

TEST(Polygons, OfTwoPointsOrOneRowAreNotFilled)
{
    Canvas canvas(5, 3);
    MovePenTo(2, 2);
    std::vector<Point> two = {{0, 0}, {4, 2}};
    std::vector<Point> row = {{0, 1}, {4, 1}, {2, 1}};
    const Polygon line = polygonOf(two);
    const Polygon flat = polygonOf(row);
    Polygon missing = {4, nullptr};
    Polygon empty = {0, two.data()};
    FillPolygon(&line, 0, 0);
    FillPolygon(&flat, 0, 0);
    for (const Polygon *polygon : {&missing, &empty, static_cast<Polygon *>(nullptr)})
    {
        FillPolygon(polygon, 0, 0);
        DrawPolygon(polygon, 0, 0);
    }
    SetImage(nullptr);
    std::vector<Point> points = {{0, 0}, {4, 0}, {0, 4}};
    const Polygon polygon = polygonOf(points);
    FillPolygon(&polygon, 0, 0);
    DrawPolygon(&polygon, 0, 0);
    EXPECT_EQ(canvas.count(255), 0);
    EXPECT_EQ(PenText(), "2,2");
}

TEST(Polygons, AreNotFilledWhereMemoryRunsOut)
{
    Canvas canvas(5, 5);
    MovePenTo(4, 4);
    std::vector<Point> points = {{0, 0}, {4, 0}, {0, 4}};
    const Polygon polygon = polygonOf(points);
    for (int64_t n = 1; n <= 3; n++) // points, edges, crossings
    {
        FailAllocation(n);
        FillPolygon(&polygon, 0, 0);
        EXPECT_TRUE(AllocationFailed());
        FailAllocation(0);
        EXPECT_EQ(canvas.count(255), 0);
        EXPECT_EQ(PenText(), "4,4");
        EXPECT_EQ(GetGraphError(), 0);
        EXPECT_EQ(_pPolyStack, nullptr);
    }
    FailAllocation(4);
    FillPolygon(&polygon, 0, 0);
    FailAllocation(0);
    EXPECT_GT(canvas.count(255), 0);
}

TEST(Polygons, WithoutAColourOnlyMoveThePen)
{
    InitGraph();
    const Rectangle rect = {0, 0, 5, 5};
    Image *image = NewImage(&rect, 4);
    std::vector<Point> points = {{1, 1}, {4, 1}, {1, 4}};
    const Polygon polygon = polygonOf(points);
    FillPolygon(&polygon, 0, 0);
    EXPECT_EQ(PenText(), "1,1");
    KillImage(image);
}

// The fill the plain way: every crossing from a path of its own, every pixel by DrawPen.
void fillPlainly(const std::vector<Point> &points)
{
    int32_t rows = 0;
    for (const Point &p : points)
    {
        rows = std::max(rows, p.y);
    }
    for (int32_t row = 0; row < rows; row++)
    {
        std::vector<int32_t> crossings;
        for (size_t i = 0; i < points.size(); i++)
        {
            Point a = points[i];
            Point b = points[(i + 1) % points.size()];
            if (a.y > b.y)
            {
                std::swap(a, b);
            }
            if (row <= a.y || row > b.y)
            {
                continue;
            }
            Path path;
            InitPath(&path, b.x - a.x, b.y - a.y);
            SetPathOrigin(&path, a.x, a.y);
            while (path.y < row)
            {
                Point point;
                GetPathNextPoint(&path, 1, &point);
            }
            crossings.push_back(path.x);
        }
        std::sort(crossings.begin(), crossings.end());
        for (size_t i = 0; i + 1 < crossings.size(); i += 2)
        {
            for (int32_t x = crossings[i]; x == crossings[i] || x < crossings[i + 1]; x++)
            {
                MovePenTo(x, row);
                DrawPen();
            }
        }
    }
}

TEST(Polygons, OfEveryPenAreFilledAsPixelByPixel)
{
    const std::vector<std::vector<Point>> shapes = {
        {{2, 1}, {17, 4}, {8, 15}},
        {{-9, 0}, {25, 9}, {3, 30}, {-4, 12}},
        {{1, 1}, {18, 17}, {18, 1}, {1, 17}},
        {{0, 0}, {19, 3}, {0, 6}, {19, 9}, {0, 12}, {19, 15}, {0, 18}},
        {{3, 2}, {9, 2}, {9, 11}, {15, 11}, {15, 4}, {4, 19}, {12, 0}},
    };
    const Point pens[] = {{1, 1}, {3, 1}, {1, 4}, {5, 3}, {40, 40}};
    for (std::vector<Point> points : shapes)
    {
        for (const Point &pen : pens)
        {
            Canvas canvas(20, 20);
            SetPenSize(pen.x, pen.y);
            const Polygon polygon = polygonOf(points);
            FillPolygon(&polygon, 0, 0);
            Canvas plain(20, 20);
            SetPenSize(pen.x, pen.y);
            fillPlainly(points);
            DrawPolygon(&polygon, 0, 0);
            ASSERT_EQ(canvas.text(), plain.text()) << "pen " << pen.x << "," << pen.y;
        }
    }
}

TEST(Polygons, AcrossAllCoordinatesEnd)
{
    Canvas canvas(9, 9);
    std::vector<Point> points = {{INT32_MIN, INT32_MIN}, {INT32_MAX, INT32_MIN + 1}, {0, INT32_MAX}};
    const Polygon polygon = polygonOf(points);
    FillPolygon(&polygon, 0, 0); // at row 0 from about -2^30 to 2^30
    EXPECT_EQ(canvas.count(255), 81);
    SetPenSize(INT32_MAX, INT32_MAX);
    FillPolygon(&polygon, INT32_MAX, INT32_MIN);
    EXPECT_EQ(GetGraphError(), 0);
}

TEST(Paths, KnowTheirDirection)
{
    Path path;
    EXPECT_EQ(InitPath(nullptr, 1, 2), 0);
    EXPECT_EQ(InitPath(&path, -3, 7), 1);
    EXPECT_EQ(path.major, 7);
    EXPECT_EQ(path.minor, 3);
    EXPECT_EQ(path.sx, -1);
    EXPECT_EQ(path.sy, 1);
    EXPECT_EQ(path.swapped, 1);
    EXPECT_EQ(path.error, 2 * 3 - 7);
    EXPECT_EQ(pathText(path), "0,0 left 7");
    InitPath(&path, 5, -5);
    EXPECT_EQ(path.swapped, 0); // x goes first on a tie
    EXPECT_EQ(path.sy, -1);
}

TEST(Paths, StepForward)
{
    Path path;
    Point point;
    InitPath(&path, 4, 1); // error -2
    SetPathOrigin(&path, 10, 20);
    const char *points[] = {"10,20", "11,20", "12,21", "13,21", "14,21"};
    for (const char *expected : points)
    {
        GetPathNextPoint(&path, 1, &point);
        EXPECT_EQ(pointText(point), expected);
    }
    EXPECT_EQ(path.remaining, 3); // 3, 2, 1, 0, and then from the length again
}

TEST(Paths, StepManyAtOnceButCountOne)
{
    Path path;
    Path single;
    Point point;
    for (int32_t dx = -6; dx <= 6; dx++)
    {
        for (int32_t dy = -6; dy <= 6; dy++)
        {
            for (int32_t n = -1; n <= 20; n++)
            {
                InitPath(&path, dx, dy);
                InitPath(&single, dx, dy);
                const int32_t left = path.remaining;
                GetPathNextPoint(&path, n, &point);
                EXPECT_EQ(pointText(point), "0,0");
                for (int32_t i = 0; i < n; i++)
                {
                    GetPathNextPoint(&single, 1, &point);
                }
                ASSERT_EQ(path.x, single.x) << dx << "," << dy << " " << n;
                ASSERT_EQ(path.y, single.y);
                ASSERT_EQ(path.error, single.error);
                EXPECT_EQ(path.remaining, left - 1);
            }
        }
    }
}

TEST(Paths, StepBackWithTheSameDecisions)
{
    Path path;
    Point point;
    InitPath(&path, 4, 1);
    const char *points[] = {"0,0", "-1,0", "-2,-1", "-3,-1"};
    for (const char *expected : points)
    {
        GetPathPrevPoint(&path, 1, &point);
        EXPECT_EQ(pointText(point), expected);
    }
    EXPECT_EQ(pathText(path), "-4,-1 left 4"); // 4 is the whole length, so 1; then 2, 3, 4
}

TEST(Paths, GoOnToTheNextRow)
{
    Path path;
    int32_t x = 0;
    int32_t y = 0;
    InitPath(&path, 4, 1);
    _GetPathNextYPoint(&path, &x, &y);
    EXPECT_EQ(pointText({x, y}), "0,0");
    EXPECT_EQ(pathText(path), "2,1 left 2"); // one level step, one down
    InitPath(&path, -1, 4);                  // error -2
    _GetPathNextYPoint(&path, &x, &y);
    _GetPathNextYPoint(&path, &x, &y);
    EXPECT_EQ(pointText({x, y}), "0,1");
    EXPECT_EQ(pathText(path), "-1,2 left 2");
}

TEST(Paths, GoOnToTheNextColumn)
{
    Path path;
    int32_t x = 0;
    int32_t y = 0;
    InitPath(&path, 1, -4);
    _GetPathNextXPoint(&path, &x, &y);
    EXPECT_EQ(pointText({x, y}), "0,0");
    EXPECT_EQ(pathText(path), "1,-2 left 2");
    InitPath(&path, 4, 1);
    _GetPathNextXPoint(&path, &x, &y);
    EXPECT_EQ(pathText(path), "1,0 left 3");
}

TEST(Paths, ThatNeverLeaveTheirRowOrColumnStay)
{
    Path path;
    int32_t x = 9;
    int32_t y = 9;
    InitPath(&path, 5, 0);
    _GetPathNextYPoint(&path, &x, &y);
    EXPECT_EQ(pathText(path), "0,0 left 5");
    InitPath(&path, 0, 5);
    _GetPathNextXPoint(&path, &x, &y);
    EXPECT_EQ(pathText(path), "0,0 left 5");
    InitPath(&path, 0, 0);
    _GetPathNextYPoint(&path, &x, &y);
    _GetPathNextXPoint(&path, &x, &y);
    EXPECT_EQ(pointText({x, y}), "0,0");
    EXPECT_EQ(pathText(path), "0,0 left 0");
    Point point;
    GetPathNextPoint(&path, 3, &point);
    EXPECT_EQ(pathText(path), "0,0 left -1");
}

TEST(Paths, OfAnyLengthAreQuick)
{
    Path path;
    Point point;
    int32_t x = 0;
    int32_t y = 0;
    InitPath(&path, INT32_MAX, 1);
    _GetPathNextYPoint(&path, &x, &y);
    EXPECT_EQ(pathText(path), "1073741824,1 left 1073741823"); // half of 2^31 - 1, rounded up
    InitPath(&path, INT32_MAX, 1);
    GetPathNextPoint(&path, INT32_MAX, &point);
    EXPECT_EQ(path.x, INT32_MAX);
    EXPECT_EQ(path.y, 1);
    InitPath(&path, INT32_MIN, INT32_MIN); // beyond what a path can follow: it strays, and that is all
    GetPathNextPoint(&path, INT32_MAX, &point);
    GetPathPrevPoint(&path, INT32_MAX, &point);
    _GetPathNextYPoint(&path, &x, &y);
    _GetPathNextXPoint(&path, &x, &y);
}

TEST(Crossings, ComeOutSmallestFirst)
{
    int32_t values[4];
    _pPolyStack = values;
    _polyStackSize = 0;
    _polyMaxStackSize = 4;
    EXPECT_EQ(_Push(5), 1);
    EXPECT_EQ(_Push(-3), 1);
    EXPECT_EQ(_Pop(), -3);
    EXPECT_EQ(_Push(9), 1);
    EXPECT_EQ(_Push(2), 1);
    EXPECT_EQ(_Push(2), 1);
    EXPECT_EQ(_Push(7), 0); // full
    EXPECT_EQ(_Pop(), 2);
    EXPECT_EQ(_Pop(), 2);
    EXPECT_EQ(_Pop(), 5);
    EXPECT_EQ(_Pop(), 9); // the last one's partner is 0
    EXPECT_EQ(_Pop(), 0);
    _pPolyStack = nullptr;
    _polyMaxStackSize = 0;
}

TEST(Fills, StopAtTheBoundaryAndAtDiagonals)
{
    Canvas canvas(9, 6);
    canvas.paint("..#......\n"
                 "..#.###..\n"
                 ".#..#.#..\n"
                 "#...###..\n"
                 ".#.......\n"
                 "..#######\n");
    SetPenColor(7);
    SetPenSize(5, 5);
    MovePenTo(1, 1);
    Fill(3, 2, 255);
    EXPECT_EQ(canvas.text(), "..#222222\n"
                             "..#2###22\n"
                             ".#22#.#22\n"
                             "#222###22\n"
                             ".#2222222\n"
                             "..#######\n");
    EXPECT_EQ(PenText(), "1,1");
    EXPECT_EQ(curPenW, 5);
}

TEST(Fills, GoRoundWideAndNarrowBends)
{
    Canvas canvas(30, 7);
    const std::string maze = "..............................\n"
                             "############################..\n"
                             "..............................\n"
                             "..############################\n"
                             "..............................\n"
                             "############.#################\n"
                             "............#.................\n";
    canvas.paint(maze);
    SetPenColor(7);
    Fill(29, 0, 255);
    std::string expected = maze.substr(0, 6UL * 31);
    for (char &c : expected)
    {
        c = c == '.' ? '2' : c;
    }
    EXPECT_EQ(canvas.text(), expected + "............#.................\n");
}

TEST(Fills, OnTheBoundaryOutsideOrWithoutItDoNothing)
{
    Canvas canvas(3, 2);
    canvas.paint("#..\n"
                 "...\n");
    const std::string before = canvas.text();
    SetPenColor(7);
    Fill(0, 0, 255);
    Fill(-1, 0, 255);
    Fill(0, -1, 255);
    Fill(3, 0, 255);
    Fill(0, 2, 255);
    Fill(1, 1, 99); // never set on this image
    SetImage(nullptr);
    Fill(1, 1, 255);
    EXPECT_EQ(canvas.text(), before);
    SetImage(canvas.image());
    Fill(1, 1, 255 + 256); // only 8 bits count
    EXPECT_EQ(canvas.text(), "#22\n"
                             "222\n");
}

TEST(Fills, OfAFilledRegionPaintTheSeedOnly)
{
    Canvas canvas(3, 1);
    SetPenColor(7);
    FillImage();
    Fill(1, 0, 255);
    EXPECT_EQ(canvas.text(), "222\n");
}

TEST(Fills, StayIncompleteWhereMoreThan500RunsWait)
{
    // A row of 1203 pixels with 602 openings above it; no run has a way to another one but that row.
    Canvas canvas(1203, 3);
    for (int32_t x = 0; x < 1203; x++)
    {
        canvas.image()->pixels[x] = x % 2 == 0 ? 0 : 255;
        canvas.image()->pixels[2 * 1203 + x] = 255;
    }
    SetPenColor(7);
    Fill(600, 1, 255);
    EXPECT_EQ(canvas.count(7), 1203 + 500);
    EXPECT_EQ(canvas.at(998, 0), 7); // the 500th opening from the left
    EXPECT_EQ(canvas.at(1000, 0), 0);
}

TEST(Fills, TakeSizesAsSigned16BitNumbers)
{
    Canvas wide(40000, 1); // -25536
    SetPenColor(7);
    Fill(10, 0, 255);
    EXPECT_EQ(wide.count(7), 11); // nothing to the right
    Canvas high(1, 40000);
    SetPenColor(7);
    Fill(0, 10, 255);
    EXPECT_EQ(high.count(7), 11); // nothing below
    Canvas wider(65536 + 20, 1);  // 20
    SetPenColor(7);
    Fill(10, 0, 255);
    EXPECT_EQ(wider.count(7), 20);
}

TEST(Points, WaitUpTo500)
{
    Point point;
    EXPECT_EQ(_PopPoint(&point), 0);
    for (int32_t i = 0; i < 500; i++)
    {
        EXPECT_EQ(_PushPoint(i, -i, &point), 1);
    }
    EXPECT_EQ(_PushPoint(500, 0, &point), 0);
    for (int32_t i = 499; i >= 0; i--)
    {
        EXPECT_EQ(_PopPoint(&point), 1);
        EXPECT_EQ(point.x, i);
        EXPECT_EQ(point.y, -i);
    }
    EXPECT_EQ(_PopPoint(&point), 0);
}

} // namespace
