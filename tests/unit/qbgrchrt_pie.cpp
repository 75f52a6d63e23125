// Covers qbgrchrt_pie.cpp: where pies stand, spans, colours, explosion, percentages, labels, slices without an inside.
//
// Expected pictures are drawn a second time from FrameArc, Fill and DrawText with the angles and places worked out
// here.

#include "alloc_fail.h"
#include "chart_fixture.h"
#include "child_run.h"
#include "qbgrchrt_state.h"

#include <functional>
#include <gtest/gtest.h>

constexpr int32_t kSide = 120; // of the images, pixels

// A chart with an empty image, a plot from (10, 5) to (110, 105), label bands of 10, one series "" of these values:
// 100 for the slot less 2 * 10 is a pie of 80 from (20, 15) to (100, 95), centre (60, 55).
class PieChart : public TestChart
{
public:
    explicit PieChart(const std::vector<double> &values) : TestChart(kTypePie, kSide, kSide)
    {
        SetCategories("A", std::vector<std::string>(values.size(), "A"));
        AddSeries("", 30, values);
        Build();
        set.plotBox = {10, 5, 110, 105};
        set.pieLabelH = 10;
        InitChartGraph(&set);
    }

    void DrawPie()
    {
        ChartPie(&data, &set);
    }
};

// What an image is after these calls.
static std::string _PictureOf(const std::function<void()> &calls)
{
    const PieChart chart({1});
    calls();
    return chart.Picture();
}

// One slice of a pie in a square: its frame, and the fill from a seed fillR from the centre along the middle angle.
static void _Slice(Rectangle square, int32_t start, int32_t span, int32_t fillR, int32_t colour)
{
    const int32_t middle = start + span / 2;
    SetPenColor(kColorAreaOutline);
    FrameArc(&square, start, span);
    SetPenColor(colour);
    Fill((square.left + square.right) / 2 + CosX(-middle, fillR),
         (square.top + square.bottom) / 2 + SinY(-middle, fillR), kColorAreaOutline);
}

static void _Text(const char *text, int32_t x, int32_t y, int32_t colour)
{
    SetFont(0);
    SetFontSize(8);
    SetFontStyle(0);
    SetPenColor(colour);
    MovePenTo(x, y);
    DrawText(text);
}

constexpr Rectangle kSquare = {20, 15, 100, 95};

// radius 80 * 128 / 2 = 5120; 512 * 9 / 128
constexpr int32_t kFillR = 36;

TEST(PieSlices, OfFourEqualCellsCloseAtThreeHundredAndFiftyNine)
{
    PieChart chart({1, 1, 1, 1});
    chart.DrawPie();
    EXPECT_EQ(chart.Picture(), _PictureOf(
                                   []
                                   {
                                       _Slice(kSquare, 0, 90, kFillR, 9);
                                       _Slice(kSquare, 90, 90, kFillR, 25);
                                       _Slice(kSquare, 180, 90, kFillR, 41);
                                       _Slice(kSquare, 270, 89, kFillR, 57);
                                   }));
    EXPECT_EQ(chart.At(70, 45), 9);  // up right
    EXPECT_EQ(chart.At(50, 45), 25); // up left: slices follow each other counter-clockwise
    EXPECT_EQ(chart.At(50, 65), 41);
    EXPECT_EQ(chart.At(70, 65), 57);
}

TEST(PieSlices, RoundTheirSpansHalfUp)
{
    // 360 / 16 = 22.5 becomes 23; 360 * 5 / 16 = 112.5 becomes 113; the rest is 359 - 136
    PieChart chart({1, 5, 10});
    chart.DrawPie();
    EXPECT_EQ(chart.Picture(), _PictureOf(
                                   []
                                   {
                                       _Slice(kSquare, 0, 23, kFillR, 9);
                                       _Slice(kSquare, 23, 113, kFillR, 25);
                                       _Slice(kSquare, 136, 223, kFillR, 41);
                                   }));
}

TEST(PieSlices, OfNothingUseUpAColourOnly)
{
    PieChart chart({1, 0, 1});
    chart.set.dataPos = 1;
    chart.DrawPie();
    EXPECT_EQ(chart.Picture(), _PictureOf(
                                   []
                                   {
                                       _Slice(kSquare, 0, 180, kFillR, 9);
                                       _Text("50.0%", 60 + CosX(-90, 30) - 12, 55 + SinY(-90, 30) + 3, 25);
                                       _Slice(kSquare, 180, 179, kFillR, 41);
                                       _Text("50.0%", 60 + CosX(-269, 30) - 12, 55 + SinY(-269, 30) + 3, 57);
                                   }));
}

TEST(PieSlices, OfTheDrawnRangeOnly)
{
    PieChart chart({9, 1, 1, 9});
    chart.SelectCells(1, 2);
    chart.DrawPie();
    EXPECT_EQ(chart.At(60, 30), 9);
    EXPECT_EQ(chart.At(60, 85), 25);
}

TEST(PieSlices, TakeTheWholeCircleButOneDegreeAlone)
{
    PieChart chart({5});
    chart.DrawPie();
    EXPECT_EQ(chart.Picture(), _PictureOf([] { _Slice(kSquare, 0, 359, kFillR, 9); }));
}

TEST(PieSlices, ColoursWrapAfterSixteen)
{
    PieChart chart(std::vector<double>(18, 1)); // 20 degrees each
    chart.DrawPie();
    for (int32_t i = 0; i < 18; i++)
    {
        const int32_t middle = 20 * i + (i == 17 ? 9 : 10);
        EXPECT_EQ(chart.At(60 + CosX(-middle, 30), 55 + SinY(-middle, 30)), (9 + 16 * i) % 256) << i;
    }
}

// Explosion: 80 * 128 / 5 = 2048, so 16 off the diameter and 8 down for the label; the pie of 64 stands from (28, 23)
// to (92, 87); radius 4096: seeds at 409 * 9 / 128 = 28, explosion by 819 / 128 = 6.
constexpr Rectangle kSmallSquare = {28, 23, 92, 87};

static Rectangle _Exploded(int32_t middle)
{
    Rectangle square = kSmallSquare;
    MoveRectangleRel(&square, CosX(-middle, 6), SinY(-middle, 6));
    return square;
}

TEST(PieExplosion, OfAllMovesEverySliceOut)
{
    PieChart chart({1, 2, 1});
    chart.set.pieExplode = kExplodeAll;
    chart.DrawPie();
    EXPECT_EQ(chart.Picture(), _PictureOf(
                                   []
                                   {
                                       _Slice(_Exploded(45), 0, 90, 28, 9);
                                       _Slice(_Exploded(180), 90, 180, 28, 25);
                                       _Slice(_Exploded(314), 270, 89, 28, 41);
                                   }));
}

TEST(PieExplosion, OfTheLargestMovesAllEqualOnes)
{
    PieChart chart({3, 1, 3, 2});
    chart.set.pieExplode = kExplodeMax;
    chart.DrawPie();
    EXPECT_EQ(chart.Picture(), _PictureOf(
                                   []
                                   {
                                       _Slice(_Exploded(60), 0, 120, 28, 9);
                                       _Slice(kSmallSquare, 120, 40, 28, 25);
                                       _Slice(_Exploded(220), 160, 120, 28, 41);
                                       _Slice(kSmallSquare, 280, 79, 28, 57);
                                   }));
}

TEST(PieExplosion, OfTheSmallestAndOfBoth)
{
    PieChart smallest({3, 1, 2});
    smallest.set.pieExplode = kExplodeMin;
    smallest.DrawPie();
    EXPECT_EQ(smallest.Picture(), _PictureOf(
                                      []
                                      {
                                          _Slice(kSmallSquare, 0, 180, 28, 9);
                                          _Slice(_Exploded(210), 180, 60, 28, 25);
                                          _Slice(kSmallSquare, 240, 119, 28, 41);
                                      }));
    PieChart both({3, 1, 2});
    both.set.pieExplode = kExplodeMin | kExplodeMax;
    both.DrawPie();
    EXPECT_EQ(both.Picture(), _PictureOf(
                                  []
                                  {
                                      _Slice(_Exploded(90), 0, 180, 28, 9);
                                      _Slice(_Exploded(210), 180, 60, 28, 25);
                                      _Slice(kSmallSquare, 240, 119, 28, 41);
                                  }));
}

TEST(PiePercentages, StandOnTheirSliceInTheNextColour)
{
    for (const int32_t dataPos : {1, 2})
    {
        PieChart chart({1, 2});
        chart.set.dataPos = dataPos;
        chart.DrawPie();
        // 5120 / 4 * 3 / 128 = 30 from the centre at 60 and 239 degrees; "33.3%" is 5 + 5 + 2 + 5 + 7 = 24 wide, and
        // 8 high: 12 left and 7 - 4 down
        EXPECT_EQ(chart.Picture(), _PictureOf(
                                       []
                                       {
                                           _Slice(kSquare, 0, 120, kFillR, 9);
                                           _Text("33.3%", 60 + CosX(-60, 30) - 12, 55 + SinY(-60, 30) + 3, 25);
                                           _Slice(kSquare, 120, 239, kFillR, 25);
                                           _Text("66.7%", 60 + CosX(-239, 30) - 12, 55 + SinY(-239, 30) + 3, 41);
                                       }));
    }
}

TEST(PiePercentages, MoveWithAnExplodedSliceAndTakeTheDataFont)
{
    PieChart chart({1, 3});
    chart.set.dataPos = 1;
    chart.set.pieExplode = kExplodeMin;
    chart.set.dataFontSize = 16; // ascent 14; "25.0%" is 48 by 16
    chart.DrawPie();
    // 4096 / 4 * 3 / 128 = 24 from the moved centre
    EXPECT_EQ(chart.Picture(), _PictureOf(
                                   []
                                   {
                                       _Slice(_Exploded(45), 0, 90, 28, 9);
                                       SetFontSize(16);
                                       SetPenColor(25);
                                       MovePenTo(60 + CosX(-45, 6) + CosX(-45, 24) - 24,
                                                 55 + SinY(-45, 6) + SinY(-45, 24) + 14 - 8);
                                       DrawText("25.0%");
                                       _Slice(kSmallSquare, 90, 269, 28, 25);
                                       SetPenColor(41);
                                       MovePenTo(60 + CosX(-224, 24) - 24, 55 + SinY(-224, 24) + 14 - 8);
                                       DrawText("75.0%");
                                   }));
}

TEST(PieLabel, StandsCentredUnderThePie)
{
    PieChart chart({1});
    chart.data.series[1].label = "AB";
    chart.data.series[1].labelDim = {10, 8};
    chart.DrawPie();
    // 100 - (80 + 10) / 2 = 55; 95 + 2 + 7
    EXPECT_EQ(chart.Picture(), _PictureOf(
                                   []
                                   {
                                       _Slice(kSquare, 0, 359, kFillR, 9);
                                       _Text("AB", 55, 104, kColorFrame);
                                   }));
}

TEST(PieLabel, OfAnExplodedPieStandsLower)
{
    PieChart chart({1});
    chart.data.series[1].label = "AB";
    chart.data.series[1].labelDim = {10, 8};
    chart.set.pieExplode = kExplodeMin | kExplodeMax;
    chart.DrawPie();
    // 92 - (64 + 10) / 2 = 55; 87 + 8 + 2 + 7
    EXPECT_EQ(chart.Picture(), _PictureOf(
                                   []
                                   {
                                       _Slice(_Exploded(179), 0, 359, 28, 9);
                                       _Text("AB", 55, 104, kColorFrame);
                                   }));
}

// Rows of pies. Bands of 5: a slot of 50 has a pie of 40.

static void _TwoPies(TestChart *chart, uint32_t flags)
{
    chart->SetCategories("A", {"A"});
    chart->AddSeries("", 30, {1});
    chart->AddSeries("", 60, {1});
    chart->Build();
    chart->set.chartFlags = flags;
    chart->set.pieLabelH = 5;
    chart->set.plotBox = {10, 5, 110, 105};
    InitChartGraph(&chart->set);
    ChartPie(&chart->data, &chart->set);
}

TEST(PieRow, StandsOneUnderTheOther)
{
    TestChart chart(kTypePie, kSide, kSide);
    _TwoPies(&chart, 0);
    // slack (100 - 40) / 2 across, (50 - 40) / 2 along; radius 2560: 256 * 9 / 128 = 18
    EXPECT_EQ(chart.Picture(), _PictureOf(
                                   []
                                   {
                                       _Slice({40, 10, 80, 50}, 0, 359, 18, 9);
                                       _Slice({40, 60, 80, 100}, 0, 359, 18, 9);
                                   }));
}

TEST(PieRow, OfAHorizontalChartStandsSideBySide)
{
    TestChart chart(kTypePie, kSide, kSide);
    _TwoPies(&chart, kChartHorizontal);
    EXPECT_EQ(chart.Picture(), _PictureOf(
                                   []
                                   {
                                       _Slice({15, 35, 55, 75}, 0, 359, 18, 9);
                                       _Slice({65, 35, 105, 75}, 0, 359, 18, 9);
                                   }));
}

TEST(PieRow, SharesItsLengthBySize)
{
    TestChart chart(kTypePie, kSide, kSide);
    chart.SetCategories("A", {"A"});
    chart.AddSeries("", 30, {1});
    chart.AddSeries("", 60, {1});
    chart.AddSeries("", 90, {1});
    chart.Build();
    chart.data.series[2].flags &= ~kSeriesGraphedBit; // takes no room
    chart.data.series[3].pieScale = 3;
    chart.set.pieScaleSum = 4;
    chart.set.pieScaleMax = 3;
    chart.set.plotBox = {10, 5, 110, 105};
    InitChartGraph(&chart.set);
    ChartPie(&chart.data, &chart.set);
    // 25 and 75 of 100 pixels; radius 75 * 128 / 2 = 4800: 480 * 9 / 128 = 33; 25 * 64 = 1600: 160 * 9 / 128 = 11
    EXPECT_EQ(chart.Picture(), _PictureOf(
                                   []
                                   {
                                       _Slice({47, 5, 72, 30}, 0, 359, 11, 9);
                                       _Slice({22, 30, 97, 105}, 0, 359, 33, 9);
                                   }));
}

TEST(PieRow, ShrinksToItsWidth)
{
    PieChart chart({1});
    chart.set.plotBox = {40, 5, 80, 105}; // 40 across, 100 along
    chart.set.pieLabelH = 0;
    chart.DrawPie();
    // scale 40 / 100: a pie of 40 in a slot of 100; top 5 + 60 / 2
    EXPECT_EQ(chart.Picture(), _PictureOf([] { _Slice({40, 35, 80, 75}, 0, 359, 18, 9); }));
}

// Slices without an inside

TEST(ThinSlices, KeepTheirOutlineAndLeaveThePictureAlone)
{
    // below 40 pixels the seed of the large slice may lie on its frame, and nothing is filled
    for (int32_t side = 40; side <= 110; side++)
    {
        PieChart chart({1, 1, 358});
        chart.set.plotBox = {2, 2, 2 + side, 2 + side};
        chart.set.pieLabelH = 0;
        chart.DrawPie();
        EXPECT_EQ(chart.At(0, 0), 0) << side;
        EXPECT_EQ(chart.At(2 + side / 4, 2 + side / 2 + 2), 41) << side; // the large slice
        EXPECT_EQ(chart.At(2 + side / 2 + side / 4, 2 + side / 2 + side / 8), 41) << side;
    }
}

TEST(ThinSlices, WithoutAnInsideAreNotFilled)
{
    PieChart chart({1, 359}); // one degree of a pie of 80
    chart.DrawPie();
    const std::string picture = chart.Picture();
    EXPECT_EQ(picture.find('0'), std::string::npos);
    EXPECT_NE(picture.find('1'), std::string::npos);
}

TEST(Slices, BeyondTheFullCircleDoNotRepaintTheFirst)
{
    // 17 / 720 of a circle is 8.5 degrees and becomes 9: forty of them close the circle, the next runs from 360 to 375
    std::vector<double> values(40, 17);
    values.insert(values.end(), {30, 10});
    PieChart chart(values);
    chart.DrawPie();
    EXPECT_EQ(chart.At(60 + CosX(-367, kFillR), 55 + SinY(-367, kFillR)), 9);
    EXPECT_EQ(chart.At(60 + CosX(-355, kFillR), 55 + SinY(-355, kFillR)), (9 + 16 * 39) % 256);
}

// What must not stop the run

TEST(Pie, OfNoDiameterHasItsLabelOnly)
{
    for (const int32_t band : {50, 51, 1000})
    {
        PieChart chart({1, 2});
        chart.set.pieLabelH = band;
        chart.set.pieExplode = kExplodeAll;
        chart.set.dataPos = 1;
        chart.set.plotBox = {10, 5, 110, 105};
        chart.DrawPie();
        EXPECT_EQ(chart.Picture().find_first_not_of(".\n"), std::string::npos) << band;
    }
    PieChart chart({1, 2});
    chart.set.pieLabelH = 50;
    chart.data.series[1].label = "AB";
    chart.data.series[1].labelDim = {10, 8};
    chart.DrawPie();
    // 60 - (0 + 10) / 2; 55 + 2 + 7
    EXPECT_EQ(chart.Picture(), _PictureOf([] { _Text("AB", 55, 64, kColorFrame); }));
}

TEST(Pie, OfAFewPixelsStaysInItsSquare)
{
    for (int32_t diameter = 1; diameter <= 12; diameter++)
    {
        for (const uint32_t explode : {0U, kExplodeAll})
        {
            PieChart chart({1, 2, 3, 4, 5});
            chart.set.pieLabelH = 0;
            chart.set.pieExplode = explode;
            chart.set.plotBox = {50, 50, 50 + diameter, 50 + diameter};
            chart.DrawPie();
            const std::string picture = chart.Picture();
            for (int32_t i = 0; i < kSide * kSide; i++)
            {
                const int32_t x = i % kSide;
                const int32_t y = i / kSide;
                const bool fNear = x >= 49 && x <= 50 + diameter && y >= 49 && y <= 50 + diameter;
                ASSERT_TRUE(fNear || chart.At(x, y) == 0) << diameter << ": " << x << "," << y;
            }
        }
    }
}

TEST(Pie, OfNoSumHasNoSlices)
{
    PieChart chart({0, 0});
    chart.DrawPie();
    EXPECT_EQ(chart.Picture().find_first_not_of(".\n"), std::string::npos);
}

TEST(Pie, OfNoSizeAtAllIsNotDrawn)
{
    PieChart chart({1, 2});
    chart.set.pieScaleSum = 0;
    chart.DrawPie();
    EXPECT_EQ(chart.Picture().find_first_not_of(".\n"), std::string::npos);
}

TEST(Pie, InAPlotWithoutExtentIsNotDrawn)
{
    for (const Rectangle plot : {Rectangle{10, 10, 10, 100}, Rectangle{10, 10, 100, 10}, Rectangle{90, 90, 10, 10},
                                 Rectangle{10, 10, -100, 100}})
    {
        PieChart chart({1, 2});
        chart.set.plotBox = plot;
        chart.DrawPie();
        EXPECT_EQ(chart.Picture().find_first_not_of(".\n"), std::string::npos);
    }
}

TEST(Pie, OfAbsurdValuesEnds)
{
    for (const double value : {1e300, 1e308, -1e300})
    {
        PieChart chart({value, value, 1});
        chart.set.dataPos = 1;
        chart.DrawPie();
        EXPECT_EQ(chart.At(0, 0), 0);
    }
    PieChart chart({1, 1});
    chart.data.series[1].sum = 1e-300; // fractions of 1e300
    chart.set.dataPos = 1;
    chart.DrawPie();
    chart.data.series[1].pieScale = -5;
    chart.DrawPie();
    EXPECT_EQ(chart.At(0, 0), 0);
}

TEST(Pie, OfFourThousandCellsEnds)
{
    PieChart even(std::vector<double>(4000, 1)); // all spans 0 but the last: the whole circle
    even.DrawPie();
    EXPECT_EQ(even.At(60, 30), (9 + 16 * 3999) % 256);
    std::vector<double> mixed(4000, 0);
    for (size_t i = 0; i < mixed.size(); i += 6)
    {
        mixed[i] = 1;
    }
    PieChart thin(mixed);
    thin.set.dataPos = 1;
    thin.DrawPie();
    EXPECT_EQ(thin.At(0, 0), 0);
}

TEST(Pie, IsNotDrawnWithoutRecordsOrAfterAGraphicsError)
{
    PieChart chart({1, 2});
    ChartPie(nullptr, &chart.set);
    ChartPie(&chart.data, nullptr);
    char *buffer = chart.data.buffer;
    chart.data.buffer = nullptr;
    chart.DrawPie();
    chart.data.buffer = buffer;
    SetImage(nullptr); // an error that stays
    chart.DrawPie();
    EXPECT_EQ(GetGraphError(), -2);
    EXPECT_EQ(chart.Picture().find_first_not_of(".\n"), std::string::npos);
}

TEST(Pie, WithoutMemoryEndsTheRun)
{
    for (int32_t n = 1; n <= 4; n++) // the spare image has four parts
    {
        const ChildResult result = RunInChild(
            [n]
            {
                PieChart chart({1, 2});
                FailAllocation(n);
                chart.DrawPie();
            });
        EXPECT_EQ(result.status, 255) << n;
        // 80 + 2 * (8 + 3) is 102 wide
        EXPECT_NE(result.out.find("\nOut of memory trying to allocate\n10404 bytes for the slices of a pie\n"),
                  std::string::npos)
            << result.out;
    }
}
