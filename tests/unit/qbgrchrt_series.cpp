// Covers qbgrchrt_series.cpp: markers, scatter, area, line and bar, from points set by hand.
//
// Where a picture would only repeat a drawing call, the call is made a second time on another image with the arguments
// worked out here, and the two images are compared.

#include "chart_fixture.h"

#include <cstdlib>
#include <functional>
#include <gtest/gtest.h>

// A chart with an empty image and two series, 30 and 60, on as many cells as points are given.
class PointChart : public TestChart
{
public:
    PointChart(int32_t type, int32_t width, int32_t height, const std::vector<std::vector<Point>> &points)
        : TestChart(type, width, height)
    {
        const size_t nCells = points.empty() ? 1 : points[0].size() - 2;
        SetCategories("A", std::vector<std::string>(nCells, "A"));
        AddSeries("A", 30, std::vector<double>(nCells, 1));
        AddSeries("B", 60, std::vector<double>(nCells, 1));
        Build();
        InitChartGraph(&set);
        set.pointsPerSeries = static_cast<Point **>(std::calloc(3, sizeof(Point *)));
        for (size_t i = 0; i < points.size(); i++)
        {
            Point *copy = static_cast<Point *>(std::calloc(points[i].size(), sizeof(Point)));
            std::copy(points[i].begin(), points[i].end(), copy);
            set.pointsPerSeries[i + 1] = copy;
            data.series[i + 1].points = copy;
        }
        SetPenColor(kColorFrame);
    }
};

// What an image of the size is after these calls.
static std::string _PictureOf(int32_t width, int32_t height, const std::function<void()> &calls)
{
    PointChart chart(kTypeLine, width, height, {});
    calls();
    return chart.Picture();
}

static std::string _Symbol(int32_t kind)
{
    return _PictureOf(11, 15,
                      [kind]
                      {
                          const Point point = {5, 7};
                          ChartDrawSymbol(&point, kind, 30);
                      });
}

// A row of a marker's picture.
static std::string _Row(const std::string &picture, size_t row)
{
    return picture.substr(12 * row, 11);
}

TEST(Symbol, HangingTriangle)
{
    // (5,7), (8,13), (2,13)
    EXPECT_EQ(_Symbol(1), _PictureOf(11, 15,
                                     []
                                     {
                                         Point corners[] = {{5, 7}, {8, 13}, {2, 13}};
                                         const Polygon triangle = {3, corners};
                                         SetPenColor(30);
                                         FillPolygon(&triangle, 0, 0);
                                         SetPenColor(kColorFrame);
                                         DrawPolygon(&triangle, 0, 0);
                                     }));
    EXPECT_EQ(_Row(_Symbol(1), 7), ".....#.....");
}

TEST(Symbol, StandingTriangleForAllOtherKinds)
{
    const std::string picture = _Symbol(0);
    EXPECT_EQ(_Row(picture, 0), "...........");
    EXPECT_EQ(_Row(picture, 7), ".....#.....");
    EXPECT_NE(_Row(picture, 1).find('#'), std::string::npos);
    EXPECT_NE(picture.find('A'), std::string::npos);
    for (const int32_t kind : {7, -1, 5, INT32_MAX, INT32_MIN})
    {
        EXPECT_EQ(_Symbol(kind), picture);
    }
}

TEST(Symbol, Circle)
{
    EXPECT_EQ(_Symbol(2), _PictureOf(11, 15,
                                     []
                                     {
                                         const Rectangle box = {2, 4, 8, 10};
                                         SetPenColor(30);
                                         FillOval(&box);
                                         SetPenColor(kColorFrame);
                                         DrawOval(&box);
                                     }));
}

TEST(Symbol, Square)
{
    EXPECT_EQ(_Symbol(3), "...........\n"
                          "...........\n"
                          "...........\n"
                          "...........\n"
                          "..######...\n"
                          "..#AAAA#...\n"
                          "..#AAAA#...\n"
                          "..#AAAA#...\n"
                          "..#AAAA#...\n"
                          "..######...\n"
                          "...........\n"
                          "...........\n"
                          "...........\n"
                          "...........\n"
                          "...........\n");
}

TEST(Symbol, CrossReachesOnePixelPastItsBox)
{
    // from (2,4) up to but not (9,11), from (8,4) up to but not (1,11)
    EXPECT_EQ(_Symbol(4), "...........\n"
                          "...........\n"
                          "...........\n"
                          "...........\n"
                          "..#.....#..\n"
                          "...#...#...\n"
                          "....#.#....\n"
                          ".....#.....\n"
                          "....#.#....\n"
                          "...#...#...\n"
                          "..#.....#..\n"
                          "...........\n"
                          "...........\n"
                          "...........\n"
                          "...........\n");
}

TEST(Symbol, NeedsAPoint)
{
    EXPECT_EQ(_PictureOf(11, 15, [] { ChartDrawSymbol(nullptr, 3, 30); }), _PictureOf(11, 15, [] {}));
}

TEST(Symbol, FarOutsideDrawsNothing)
{
    for (const Point point : {Point{INT32_MAX, INT32_MIN}, Point{INT32_MIN, INT32_MAX}})
    {
        EXPECT_EQ(_PictureOf(11, 15, [&point] { ChartDrawSymbol(&point, 3, 30); }), _PictureOf(11, 15, [] {}));
    }
}

// One data point in the middle of each of two series.
static const std::vector<std::vector<Point>> _twoDots = {{{8, 20}, {8, 12}, {8, 21}}, {{22, 20}, {22, 8}, {22, 21}}};

static void _DrawDots(int32_t kind)
{
    const Point dots[] = {{8, 12}, {22, 8}};
    ChartDrawSymbol(&dots[0], kind, 30);
    ChartDrawSymbol(&dots[1], kind, 60);
}

TEST(Scatter, DrawsAMarkerAtEveryPoint)
{
    PointChart chart(kTypeScatter, 30, 24, _twoDots);
    chart.set.dataSymbol = 3;
    ChartScatter(&chart.data, &chart.set);
    EXPECT_EQ(chart.Picture(), _PictureOf(30, 24, [] { _DrawDots(3); }));
}

TEST(Scatter, ShowsTheStandingTriangleForTheCross)
{
    PointChart chart(kTypeScatter, 30, 24, _twoDots);
    chart.set.dataSymbol = 4;
    ChartScatter(&chart.data, &chart.set);
    EXPECT_EQ(chart.Picture(), _PictureOf(30, 24, [] { _DrawDots(0); }));
}

TEST(Scatter, SkipsSeriesWithoutPoints)
{
    PointChart chart(kTypeScatter, 30, 24, _twoDots);
    std::free(chart.set.pointsPerSeries[1]);
    chart.set.pointsPerSeries[1] = nullptr;
    ChartScatter(&chart.data, &chart.set);
    EXPECT_EQ(chart.Picture().find('A'), std::string::npos);
    EXPECT_NE(chart.Picture().find('B'), std::string::npos);
}

TEST(Line, OfOneCellIsAMarker)
{
    PointChart chart(kTypeLine, 30, 24, _twoDots);
    chart.set.dataSymbol = 4;
    ChartLine(&chart.data, &chart.set);
    EXPECT_EQ(chart.Picture(), _PictureOf(30, 24, [] { _DrawDots(4); }));
}

static const std::vector<Point> _threePoints = {{4, 20}, {4, 12}, {14, 6}, {24, 16}, {24, 21}};

TEST(Line, OfOnePixelRunsFromPointToPoint)
{
    PointChart chart(kTypeLine, 30, 24, {_threePoints});
    chart.set.dataSymbol = 3;
    ChartLine(&chart.data, &chart.set);
    // each marker over the segment that leaves it, under the next one
    EXPECT_EQ(chart.Picture(), _PictureOf(30, 24,
                                          []
                                          {
                                              const Point *p = &_threePoints[1];
                                              MovePenTo(4, 12);
                                              SetPenColor(30);
                                              DrawLineTo(14, 6);
                                              ChartDrawSymbol(&p[0], 3, 30);
                                              MovePenTo(14, 6);
                                              SetPenColor(30);
                                              DrawLineTo(24, 16);
                                              ChartDrawSymbol(&p[1], 3, 30);
                                              ChartDrawSymbol(&p[2], 3, 30);
                                          }));
}

TEST(Line, OfThreePixelsIsOneUpAndLeft)
{
    PointChart chart(kTypeLine, 30, 24, {{{4, 20}, {4, 12}, {24, 12}, {24, 21}}});
    chart.set.dataSymbol = 4;
    chart.set.lineSize = 3;
    ChartLine(&chart.data, &chart.set);
    // stamps of 3 by 3 from (3, 11) to (22, 11): rows 11 to 13, columns up to 24; the crosses are one pixel wide
    EXPECT_EQ(chart.Picture(20, 9, 29, 16), ".#.....#.\n"
                                            "..#...#..\n"
                                            "AAA#A#...\n"
                                            "AAAA#....\n"
                                            "AAA#A#...\n"
                                            "..#...#..\n"
                                            ".#.....#.\n");
}

TEST(Line, OfNoPixelsDrawsMarkersOnly)
{
    PointChart chart(kTypeLine, 30, 24, {_threePoints});
    chart.set.dataSymbol = 4;
    chart.set.lineSize = -5;
    ChartLine(&chart.data, &chart.set);
    EXPECT_EQ(chart.Picture().find('A'), std::string::npos);
    EXPECT_NE(chart.Picture().find('#'), std::string::npos);
}

TEST(Line, OfAnEndlessWidthIsCut)
{
    // 2048 either side of points at 3000 and 3001; the second stamp is not painted
    PointChart chart(kTypeLine, 6000, 10, {{{3000, 5}, {3000, 5}, {3001, 6}, {3001, 5}}});
    chart.set.dataSymbol = 4;
    chart.set.lineSize = 2000000000;
    ChartLine(&chart.data, &chart.set);
    EXPECT_EQ(chart.Picture(949, 0, 956, 1), "...AAAA\n");
    EXPECT_EQ(chart.Picture(5045, 0, 5051, 1), "AAA...\n");
    EXPECT_EQ(chart.Picture(949, 9, 956, 10), "...AAAA\n");
}

TEST(Area, FillsOutlinesAndMarks)
{
    PointChart chart(kTypeArea, 30, 24, {_threePoints});
    chart.set.dataSymbol = 3;
    ChartArea(&chart.data, &chart.set);
    EXPECT_EQ(chart.Picture(), _PictureOf(30, 24,
                                          []
                                          {
                                              std::vector<Point> points = _threePoints;
                                              const Polygon outline = {5, points.data()};
                                              SetPenColor(30);
                                              FillPolygon(&outline, 0, 0);
                                              SetPenColor(kColorAreaOutline);
                                              DrawPolygon(&outline, 0, 0);
                                              for (size_t k = 1; k <= 3; k++)
                                              {
                                                  ChartDrawSymbol(&points[k], 3, 30);
                                              }
                                          }));
    EXPECT_EQ(chart.At(14, 16), 30);
    EXPECT_EQ(chart.At(4, 18), kColorAreaOutline);
}

TEST(Area, DrawsTheLargestFirst)
{
    const std::vector<Point> low = {{4, 20}, {4, 16}, {24, 16}, {24, 21}};
    const std::vector<Point> high = {{4, 20}, {4, 6}, {24, 6}, {24, 21}};
    for (const bool fFirstIsHigh : {true, false})
    {
        PointChart chart(kTypeArea, 30, 24, {fFirstIsHigh ? high : low, fFirstIsHigh ? low : high});
        chart.data.series[1].max = fFirstIsHigh ? 10 : 3;
        chart.data.series[2].max = fFirstIsHigh ? 3 : 10;
        ChartArea(&chart.data, &chart.set);
        EXPECT_EQ(chart.At(14, 11), fFirstIsHigh ? 30 : 60);
        EXPECT_EQ(chart.At(14, 18), fFirstIsHigh ? 60 : 30);
    }
}

TEST(Bar, TwoSeriesOnFortyPixelsAreElevenWide)
{
    PointChart chart(kTypeBar, 40, 24, {{{13, 20}, {13, 12}, {13, 21}}, {{26, 20}, {26, 16}, {26, 21}}});
    chart.set.xDivW = 40; // (40 - 2 * 3) / 3 = 11, half 5: columns 13 - 5 to 13 + 5, the last one exclusive
    chart.set.xAxisBox.top = 20;
    ChartBar(&chart.data, &chart.set);
    EXPECT_EQ(chart.Picture(0, 11, 40, 21), "........................................\n"
                                            "........##########......................\n"
                                            "........#AAAAAAAA#......................\n"
                                            "........#AAAAAAAA#......................\n"
                                            "........#AAAAAAAA#......................\n"
                                            "........#AAAAAAAA#...##########.........\n"
                                            "........#AAAAAAAA#...#BBBBBBBB#.........\n"
                                            "........#AAAAAAAA#...#BBBBBBBB#.........\n"
                                            "........##########...##########.........\n"
                                            "........................................\n");
}

TEST(Bar, BelowZeroHangsFromTheZeroLine)
{
    PointChart chart(kTypeBar, 24, 24, {{{12, 10}, {12, 15}, {12, 11}}});
    chart.set.nGraphedSeries = 1;
    chart.set.xDivW = 16; // (16 - 4) / 2 = 6, half 3
    chart.set.yDivH = 5;
    chart.set.zeroDivs = 2;
    chart.set.xAxisBox.top = 20; // zero at 20 - 10
    ChartBar(&chart.data, &chart.set);
    EXPECT_EQ(chart.Picture(8, 9, 16, 16), "........\n"
                                           ".######.\n"
                                           ".#AAAA#.\n"
                                           ".#AAAA#.\n"
                                           ".#AAAA#.\n"
                                           ".######.\n"
                                           "........\n");
}

TEST(Bar, HorizontalRunsFromTheZeroColumn)
{
    PointChart chart(kTypeBar, 24, 24, {{{9, 12}, {15, 12}, {9, 12}}, {{9, 18}, {5, 18}, {9, 18}}});
    chart.set.chartFlags = kChartHorizontal;
    chart.set.yDivH = 18; // (18 - 6) / 3 = 4, half 2
    chart.set.xDivW = 5;
    chart.set.zeroDivs = 1;
    chart.set.yAxisBox.right = 4; // zero at 4 + 5
    ChartBar(&chart.data, &chart.set);
    EXPECT_EQ(chart.Picture(0, 9, 18, 21), "..................\n"
                                           ".........######...\n"
                                           ".........#AAAA#...\n"
                                           ".........#AAAA#...\n"
                                           ".........######...\n"
                                           "..................\n"
                                           "..................\n"
                                           ".....####.........\n"
                                           ".....#BB#.........\n"
                                           ".....#BB#.........\n"
                                           ".....####.........\n"
                                           "..................\n");
}

TEST(Bar, OfNoWidthOrHeightIsNotDrawn)
{
    PointChart chart(kTypeBar, 24, 24, {{{12, 20}, {12, 20}, {12, 21}}, {{12, 20}, {12, 10}, {12, 21}}});
    chart.set.xDivW = 9; // (9 - 6) / 3 = 1, half 0
    chart.set.xAxisBox.top = 20;
    ChartBar(&chart.data, &chart.set);
    EXPECT_EQ(chart.Picture().find_first_not_of(".\n"), std::string::npos);
}

TEST(Bar, OfNegativeWidthIsDrawnTheOtherWayRound)
{
    PointChart chart(kTypeBar, 24, 24, {{{12, 20}, {12, 18}, {12, 21}}});
    chart.set.nGraphedSeries = -7; // counts as none: 1 slot
    chart.set.xDivW = -3;          // (-3 - 2) / 1 = -5, half -2
    chart.set.xAxisBox.top = 20;
    ChartBar(&chart.data, &chart.set);
    EXPECT_EQ(chart.Picture(9, 17, 15, 21), "......\n"
                                            ".####.\n"
                                            ".####.\n"
                                            "......\n");
}

TEST(Renderers, DrawNothingWithoutRecordsPointsOrSeries)
{
    using Renderer = void (*)(ChartData *, ChartSet *);
    for (const Renderer draw : {Renderer{ChartBar}, Renderer{ChartLine}, Renderer{ChartScatter}, Renderer{ChartArea}})
    {
        PointChart chart(kTypeLine, 30, 24, _twoDots);
        chart.set.xDivW = 30;
        const ChartData whole = chart.data;
        draw(nullptr, &chart.set);
        draw(&chart.data, nullptr);
        chart.data.buffer = nullptr;
        draw(&chart.data, &chart.set);
        chart.data = whole;
        chart.data.nSeries = 0;
        draw(&chart.data, &chart.set);
        chart.data = whole;
        chart.data.series = nullptr;
        draw(&chart.data, &chart.set);
        chart.data = whole;
        chart.data.seriesPtrs = nullptr;
        Point **points = chart.set.pointsPerSeries;
        chart.set.pointsPerSeries = nullptr;
        draw(&chart.data, &chart.set);
        chart.set.pointsPerSeries = points;
        chart.data = whole;
        EXPECT_EQ(chart.Picture().find_first_not_of(".\n"), std::string::npos);
    }
}
