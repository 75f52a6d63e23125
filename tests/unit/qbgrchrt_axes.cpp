// Covers qbgrchrt_axes.cpp: axis lines, ticks, grid lines, labels of values, categories and dates, axis titles.
//
// The boxes and divisions are set by hand. Labels are looked for as ink: a text is drawn a second time by DrawText at
// the place worked out here, on an image of its own, and must be in the chart's picture pixel for pixel.

#include "chart_fixture.h"
#include "qbgrchrt_state.h"

#include <gtest/gtest.h>

constexpr int32_t kSize = 120; // of the images, pixels

// A chart with an empty image, y axis from (40, 20) to (40, 80), x axis from there to (100, 80), two divisions of 30
// pixels and 10 units each way, two categories, no ticks' room, labels or titles.
class AxisChart : public TestChart
{
public:
    explicit AxisChart(uint32_t chartFlags, const std::vector<std::string> &texts = {"A", "22"}, bool fDates = false)
        : TestChart(kTypeBar, kSize, kSize)
    {
        if (fDates)
        {
            SetDates(texts);
        }
        else
        {
            SetCategories("A", texts);
        }
        AddSeries("A", 30, std::vector<double>(texts.size(), 1));
        Build();
        set.chartFlags = chartFlags;
        set.xAxisFlags = set.yAxisFlags = kTicksInside;
        set.yAxisBox = {0, 20, 40, 80};
        set.xAxisBox = {40, 80, 100, 120};
        set.xDivs = set.yDivs = 2;
        set.xDivW = set.yDivH = 30;
        set.xStep = set.yStep = 10;
        set.labelMarginX = 3;
        set.labelMarginY = 4;
        for (Cell *cell = data.series[0].cells; cell != data.series[0].cells + data.nCells; cell++)
        {
            cell->textDim = _MeasureText(cell->text);
        }
        InitChartGraph(&set);
    }

    void DrawAxis()
    {
        ChartDrawAxis(&data, &set);
    }

    // Whether all ink of a text at a base line position is there.
    bool Shows(const std::string &text, int32_t x, int32_t y, int32_t orientation = 0) const
    {
        const AxisChart other(0);
        _SelectLabelFont(&other.set);
        SetPenColor(kColorFrame);
        SetFontOrientation(orientation);
        MovePenTo(x, y);
        DrawText(text.c_str());
        SetFontOrientation(0);
        int32_t nInk = 0;
        for (int32_t i = 0; i < kSize * kSize; i++)
        {
            const bool fInk = other.At(i % kSize, i / kSize) == kColorFrame;
            nInk += fInk ? 1 : 0;
            if (fInk && At(i % kSize, i / kSize) != kColorFrame)
            {
                return false;
            }
        }
        return nInk > 0;
    }

    // Pixels of ink in a rectangle.
    int32_t Ink(int32_t left, int32_t top, int32_t right, int32_t bottom) const
    {
        int32_t n = 0;
        for (int32_t y = top; y < bottom; y++)
        {
            for (int32_t x = left; x < right; x++)
            {
                n += At(x, y) == kColorFrame ? 1 : 0;
            }
        }
        return n;
    }

    // Distances between the dots of a row of the plot from the axis on, up to and including the x box's right edge.
    std::string RowDots(int32_t y) const
    {
        std::string text;
        for (int32_t x = 40; x <= 102; x++)
        {
            text += At(x, y) == kColorFrame ? '#' : '.';
        }
        return text;
    }

    std::string ColumnDots(int32_t x) const
    {
        std::string text;
        for (int32_t y = 80; y >= 18; y--)
        {
            text += At(x, y) == kColorFrame ? '#' : '.';
        }
        return text;
    }
};

// 63 pixels with a dot at every step-th from the first to the 61st, which is the plot's far edge
static std::string _Dots(int32_t step)
{
    std::string text(63, '.');
    for (size_t i = 0; i <= 60; i += static_cast<size_t>(step))
    {
        text[i] = '#';
    }
    return text;
}

TEST(AxisLines, RunToTheEndsOfTheBoxes)
{
    AxisChart chart(0);
    chart.set.xDivs = chart.set.yDivs = 0;
    chart.set.xDivW = chart.set.yDivH = 60;
    chart.DrawAxis();
    EXPECT_EQ(chart.Ink(40, 80, 100, 81), 60); // from 40 up to but not 100
    EXPECT_EQ(chart.At(100, 80), 0);
    EXPECT_EQ(chart.Ink(40, 20, 41, 80), 60);
    EXPECT_EQ(chart.At(40, 19), 0);
    Point pen = {0, 0};
    GetPenPos(&pen);
    EXPECT_EQ(pen.x, 40);
    EXPECT_EQ(pen.y, 80);
}

// The y tick at 80 - 30 = 50 and 10 columns on each side of the axis.
static std::string _YTick(uint32_t flags)
{
    AxisChart chart(0);
    chart.set.yAxisFlags = flags;
    chart.DrawAxis();
    return chart.Picture(30, 49, 51, 52);
}

TEST(Ticks, OnTheYAxisAreEightLong)
{
    EXPECT_EQ(_YTick(kTicksOutside), "..........#..........\n"
                                     "..#########..........\n" // 32 to 39 and the axis
                                     "..........#..........\n");
    EXPECT_EQ(_YTick(kTicksMiddle), "..........#..........\n"
                                    "......########.......\n" // 36 to 43
                                    "..........#..........\n");
    EXPECT_EQ(_YTick(kTicksInside), "..........#..........\n"
                                    "..........########...\n" // 40 to 47
                                    "..........#..........\n");
    EXPECT_EQ(_YTick(0), _YTick(kTicksInside));
}

static std::string _XTick(uint32_t flags)
{
    AxisChart chart(0);
    chart.set.xAxisFlags = flags;
    chart.DrawAxis();
    std::string text;
    for (int32_t y = 70; y < 91; y++) // at 40 + 30
    {
        text += chart.At(70, y) == kColorFrame ? '#' : '.';
    }
    return text;
}

TEST(Ticks, OnTheXAxisAreEightHigh)
{
    EXPECT_EQ(_XTick(kTicksOutside), "..........########..."); // drawn upwards from 88, which is not drawn: 80 to 87
    EXPECT_EQ(_XTick(kTicksMiddle), "......########.......");  // 76 to 83
    EXPECT_EQ(_XTick(kTicksInside), "..########"
                                    "#.........."); // 72 to 79 and the axis
}

TEST(Ticks, StandAtTheCornerAndAtEveryDivision)
{
    AxisChart chart(0);
    chart.set.xAxisFlags = chart.set.yAxisFlags = kTicksOutside;
    chart.DrawAxis();
    for (const int32_t y : {80, 50, 20})
    {
        EXPECT_EQ(chart.Ink(32, y, 40, y + 1), 8) << y;
    }
    for (const int32_t x : {40, 70, 100})
    {
        EXPECT_EQ(chart.Ink(x, 81, x + 1, 88), 7) << x;
    }
    EXPECT_EQ(chart.Ink(0, 0, 40, kSize), 3 * 8);
}

TEST(ValueLabels, LeaveOutTheZeroInTheCorner)
{
    AxisChart chart(0);
    chart.set.yAxisFlags |= kAxisScaleLabels;
    chart.DrawAxis();
    // right edge at 40 - 3; base line at the tick + 7 - 8 / 2
    EXPECT_TRUE(chart.Shows("10", 40 - 3 - 10, 50 + 3));
    EXPECT_TRUE(chart.Shows("20", 40 - 3 - 10, 20 + 3));
    EXPECT_EQ(chart.Ink(0, 70, 40, 90), 0);
}

TEST(ValueLabels, BeginBelowZero)
{
    AxisChart chart(0);
    chart.set.yAxisFlags = kTicksOutside | kAxisScaleLabels;
    chart.set.zeroDivs = 2;
    chart.DrawAxis();
    EXPECT_TRUE(chart.Shows("-20", 40 - 8 - 3 - 14, 80 + 3));
    EXPECT_TRUE(chart.Shows("-10", 40 - 8 - 3 - 14, 50 + 3));
    EXPECT_TRUE(chart.Shows("0", 40 - 8 - 3 - 5, 20 + 3));
}

TEST(ValueLabels, OfBillionsDoNotWrap)
{
    AxisChart chart(0);
    chart.set.yAxisFlags |= kAxisScaleLabels;
    chart.set.yAxisBox.right = 60;
    chart.set.yStep = INT32_MAX;
    chart.set.zeroDivs = -1;
    chart.DrawAxis();
    EXPECT_TRUE(chart.Shows("2147483647", 60 - 3 - 50, 80 + 3)); // -(-1 * step)
    EXPECT_TRUE(chart.Shows("4294967294", 60 - 3 - 50, 50 + 3));
    EXPECT_TRUE(chart.Shows("6442450941", 60 - 3 - 50, 20 + 3));
}

TEST(ValueLabels, OfAHorizontalChartAreCentredUnderTheirTicks)
{
    AxisChart chart(kChartHorizontal);
    chart.set.xAxisFlags = kTicksMiddle | kAxisScaleLabels;
    chart.set.zeroDivs = 1;
    chart.DrawAxis();
    // base line at 80 + 4 + 4 + 7
    EXPECT_TRUE(chart.Shows("-10", 40 - 7, 95));
    EXPECT_TRUE(chart.Shows("0", 70 - 2, 95));
    EXPECT_TRUE(chart.Shows("10", 100 - 5, 95));
}

TEST(CategoryLabels, StandUnderTheMiddleOfTheirDivision)
{
    AxisChart chart(0);
    chart.set.xAxisFlags = kTicksOutside | kAxisScaleLabels;
    chart.DrawAxis();
    EXPECT_TRUE(chart.Shows("A", 70 - 2 - 15, 80 + 8 + 4 + 7));
    EXPECT_TRUE(chart.Shows("22", 100 - 5 - 15, 80 + 8 + 4 + 7));
}

TEST(CategoryLabels, RunFromTheLastCellWhenReversed)
{
    AxisChart chart(0, {"1", "2", "3", "4"});
    chart.set.xAxisFlags |= kAxisScaleLabels;
    chart.set.refDir = 2;
    chart.set.firstCell = 1;
    chart.set.lastCell = 2;
    chart.DrawAxis();
    EXPECT_TRUE(chart.Shows("3", 70 - 2 - 15, 80 + 4 + 7));
    EXPECT_TRUE(chart.Shows("2", 100 - 2 - 15, 80 + 4 + 7));
}

TEST(CategoryLabels, BeginAtTheFirstDrawnCell)
{
    AxisChart chart(0, {"1", "2", "3", "4"});
    chart.set.xAxisFlags |= kAxisScaleLabels;
    chart.set.firstCell = 2;
    chart.DrawAxis();
    EXPECT_TRUE(chart.Shows("3", 70 - 2 - 15, 80 + 4 + 7));
    EXPECT_TRUE(chart.Shows("4", 100 - 2 - 15, 80 + 4 + 7));
}

TEST(CategoryLabels, OfAHorizontalChartStandLeftOfTheirDivision)
{
    AxisChart chart(kChartHorizontal);
    chart.set.yAxisFlags |= kAxisScaleLabels;
    chart.DrawAxis();
    EXPECT_TRUE(chart.Shows("A", 40 - 3 - 5, 50 + 15 + 3));
    EXPECT_TRUE(chart.Shows("22", 40 - 3 - 10, 20 + 15 + 3));
}

TEST(CategoryLabels, TakeTheStoredWidth)
{
    AxisChart chart(0);
    chart.set.xAxisFlags |= kAxisScaleLabels;
    chart.data.series[0].cells[0].textDim.x = 20;
    chart.DrawAxis();
    EXPECT_TRUE(chart.Shows("A", 70 - 10 - 15, 80 + 4 + 7));
}

TEST(CategoryLabels, ThatAreMissingLeaveTheirPlaceEmpty)
{
    AxisChart chart(0);
    chart.set.xAxisFlags |= kAxisScaleLabels;
    chart.data.series[0].cells[0].text = nullptr;
    chart.DrawAxis();
    EXPECT_EQ(chart.Ink(41, 81, 70, kSize), 0);
    EXPECT_TRUE(chart.Shows("22", 100 - 5 - 15, 80 + 4 + 7));
}

// Dates: three divisions of 20 pixels.
static std::vector<std::string> _dates = {"Fri May 31 1996", "Sat Jun 1 1996", "Sun Jun 2 1996"};

TEST(DateLabels, UnderTheXAxisStandOnePartUnderTheOther)
{
    AxisChart chart(0, _dates, true);
    chart.set.xAxisFlags |= kAxisScaleLabels;
    chart.set.xDivs = 3;
    chart.set.xDivW = 20;
    chart.DrawAxis();
    // centred by the day: 10 or 5 wide, 10 left of the tick
    EXPECT_TRUE(chart.Shows("31\nMay\n1996", 60 - 5 - 10, 91));
    EXPECT_TRUE(chart.Shows("1\nJun", 80 - 2 - 10, 91));
    EXPECT_TRUE(chart.Shows("2", 100 - 2 - 10, 91));
    EXPECT_EQ(chart.Ink(72, 104, kSize, kSize), 0) << "no further year";
    EXPECT_EQ(chart.Ink(90, 94, kSize, 104), 0) << "no further month";
}

TEST(DateLabels, LeftOfTheYAxisShowTheMonthBeforeTheDay)
{
    AxisChart chart(kChartHorizontal, _dates, true);
    chart.set.yAxisFlags |= kAxisScaleLabels;
    chart.set.yDivs = 3;
    chart.set.yDivH = 20;
    chart.DrawAxis();
    // "May  31": M7 a5 y5, two spaces of 3, 10; the year is narrower. "Jun  1": 15 + 6 + 5
    EXPECT_TRUE(chart.Shows("May  31\n1996", 40 - 3 - 33, 60 + 10 + 3));
    EXPECT_TRUE(chart.Shows("Jun  1", 40 - 3 - 26, 40 + 10 + 3));
    EXPECT_TRUE(chart.Shows("2", 40 - 3 - 5, 20 + 10 + 3));
}

TEST(DateLabels, ANewYearShowsTheMonthToo)
{
    AxisChart chart(0, {"Mon Jan 1 1996", "Wed Jan 1 1997"}, true);
    chart.set.xAxisFlags |= kAxisScaleLabels;
    chart.DrawAxis();
    EXPECT_TRUE(chart.Shows("1\nJan\n1996", 70 - 2 - 15, 91));
    EXPECT_TRUE(chart.Shows("1\nJan\n1997", 100 - 2 - 15, 91));
}

TEST(DateLabels, RunBackwardsWhenReversed)
{
    AxisChart chart(0, {"Fri May 30 1996", "Fri May 31 1996"}, true);
    chart.set.xAxisFlags |= kAxisScaleLabels;
    chart.set.refDir = 2;
    chart.DrawAxis();
    EXPECT_TRUE(chart.Shows("31\nMay\n1996", 70 - 5 - 15, 91));
    EXPECT_TRUE(chart.Shows("30", 100 - 5 - 15, 91));
}

TEST(DateLabels, ThatAreNoDateStandAsTheyAre)
{
    AxisChart chart(0, {"31 May", "Sat Jun 1 1996", "Jun 2"}, true);
    chart.set.xAxisFlags |= kAxisScaleLabels;
    chart.set.xDivs = 3;
    chart.set.xDivW = 20;
    chart.DrawAxis();
    EXPECT_TRUE(chart.Shows("31 May", 60 - (10 + 3 + 17) / 2 - 10, 91));
    EXPECT_TRUE(chart.Shows("1\nJun\n1996", 80 - 2 - 10, 91)); // the first date shows all of it
    EXPECT_TRUE(chart.Shows("Jun 2", 100 - (15 + 3 + 5) / 2 - 10, 91));
}

TEST(DateLabels, OfTenThousandCharactersAreDrawnAsTheyAre)
{
    AxisChart chart(0, {std::string(10000, 'A'), std::string(10000, ' ')}, true);
    chart.set.xAxisFlags |= kAxisScaleLabels;
    chart.DrawAxis();
    // far left and right of the image: 50000 / 2 before the middle; a letter begins every 5 pixels
    EXPECT_TRUE(chart.Shows("A", 70 - 25000 - 15 + 5 * 4995, 91));
}

TEST(Grid, CrossesTheWholePlotWithDenseDotsAtZero)
{
    AxisChart chart(0);
    chart.set.yAxisFlags |= kAxisGridLines | kAxisScaleLabels;
    chart.set.xAxisFlags |= kAxisGridLines; // on the category axis it means nothing
    chart.set.zeroDivs = 1;
    chart.DrawAxis();
    std::string dense = _Dots(2);
    std::string wide = _Dots(5);
    dense.replace(0, 8, "########"); // the tick
    wide.replace(0, 8, "########");
    EXPECT_EQ(chart.RowDots(50), dense); // 80 is -10
    EXPECT_EQ(chart.RowDots(20), wide);
    EXPECT_EQ(chart.Ink(48, 0, kSize, 20), 0);
    EXPECT_EQ(chart.Ink(48, 51, kSize, 72), 0);
}

TEST(Grid, WithoutScaleLabelsLooksLikeItsFirstLineEverywhere)
{
    for (const int32_t zeroDivs : {0, 1, 2})
    {
        AxisChart chart(0);
        chart.set.yAxisFlags |= kAxisGridLines;
        chart.set.zeroDivs = zeroDivs;
        chart.DrawAxis();
        std::string row = _Dots(zeroDivs == 1 ? 2 : 5);
        row.replace(0, 8, "########");
        EXPECT_EQ(chart.RowDots(50), row) << zeroDivs;
        EXPECT_EQ(chart.RowDots(20), row) << zeroDivs;
    }
}

TEST(Grid, OfAHorizontalChartRunsUp)
{
    AxisChart chart(kChartHorizontal);
    chart.set.xAxisFlags |= kAxisGridLines | kAxisScaleLabels;
    chart.set.yAxisFlags |= kAxisGridLines;
    chart.set.zeroDivs = 2;
    chart.DrawAxis();
    std::string dense = _Dots(2);
    std::string wide = _Dots(5);
    // the tick ends above the axis: rows 72 to 79, and the axis line itself ends before 100
    wide.replace(0, 9, "#########");
    dense.replace(0, 9, "#########");
    EXPECT_EQ(chart.ColumnDots(70), wide);
    EXPECT_EQ(chart.ColumnDots(100), dense);
}

TEST(Grid, OfAPlotWithoutExtentHasNoDots)
{
    for (const int32_t extent : {0, -5})
    {
        AxisChart vertical(0);
        vertical.set.yAxisFlags = kTicksOutside | kAxisGridLines;
        vertical.set.xAxisBox.right = vertical.set.xAxisBox.left + extent;
        vertical.set.xDivs = 0;
        vertical.DrawAxis();
        EXPECT_EQ(vertical.Ink(41, 0, kSize, 80), 0);

        AxisChart horizontal(kChartHorizontal);
        horizontal.set.xAxisFlags = kTicksOutside | kAxisGridLines;
        horizontal.set.yAxisBox.top = horizontal.set.yAxisBox.bottom - extent;
        horizontal.set.yDivs = 0;
        horizontal.DrawAxis();
        EXPECT_EQ(horizontal.Ink(41, 0, kSize, 80), 0);
    }
}

TEST(AxisTitles, StandBesideTheMiddleOfTheirAxis)
{
    AxisChart chart(0);
    chart.set.xAxisFlags |= kAxisTitle;
    chart.set.yAxisFlags |= kAxisTitle;
    chart.set.xAxisLabel = "AB";
    chart.set.xAxisLabelDim = {10, 8};
    chart.set.yAxisLabel = "C1";
    chart.set.yAxisLabelDim = {8, 10};
    chart.DrawAxis();
    EXPECT_TRUE(chart.Shows("C1", 0 + 7, 20 + 60 / 2 + 10 / 2, 2));
    EXPECT_TRUE(chart.Shows("AB", 40 + (60 / 2 - 10 / 2), 120 - 8));
}

TEST(AxisTitles, TakeTheirPlaceFromTheScaleFont)
{
    AxisChart chart(0);
    chart.set.xAxisFlags |= kAxisTitle;
    chart.set.yAxisFlags |= kAxisTitle;
    chart.set.xAxisLabel = chart.set.yAxisLabel = "A";
    chart.set.labelFontSize = 16; // ascent 14
    chart.DrawAxis();
    // drawn in the axis label font of 8: Shows draws its text in 8 as well
    EXPECT_TRUE(chart.Shows("A", 0 + 14, 20 + 30, 2));
    EXPECT_TRUE(chart.Shows("A", 40 + 30, 120 - 16));
}

TEST(AxisTitles, ThatAreMissingAreEmpty)
{
    AxisChart chart(0);
    chart.set.xAxisFlags |= kAxisTitle;
    chart.set.yAxisFlags |= kAxisTitle;
    chart.DrawAxis();
    EXPECT_EQ(chart.Ink(0, 0, 40, kSize), 0);
    EXPECT_EQ(chart.Ink(0, 81, kSize, kSize), 0);
}

TEST(Axes, AreNotDrawnWithoutRecords)
{
    AxisChart chart(0);
    ChartDrawAxis(nullptr, &chart.set);
    ChartDrawAxis(&chart.data, nullptr);
    chart.data.buffer = nullptr;
    ChartDrawAxis(&chart.data, &chart.set);
    EXPECT_EQ(chart.Ink(0, 0, kSize, kSize), 0);
}

TEST(Axes, OfNegativeLengthAreDrawnTheOtherWay)
{
    AxisChart chart(0);
    chart.set.xAxisBox.right = 30;
    chart.set.xDivW = -5;
    chart.DrawAxis();
    EXPECT_EQ(chart.Ink(20, 80, 40, 81), 10); // 30 to 39
    EXPECT_EQ(chart.Ink(35, 72, 36, 80), 8);  // ticks at 35 and 30
}
