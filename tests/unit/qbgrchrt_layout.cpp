// Covers qbgrchrt_layout.cpp: sizes of title and legend, what the data need, where the boxes go, records of any
// content.
//
// In Small8 at 8 pixels a capital or a digit is 5 wide and a line 8 high (ascent 7, descent 1) with a leading of 2. So
// a title has margins of 8 / 2 + 1 = 5 and 2, and a legend line is 8 + 2 = 10 high with margins of 5.

#include "chart_fixture.h"
#include "child_run.h"
#include "qbgrchrt_state.h"

#include <gtest/gtest.h>

// The title box

TEST(TitleBox, IsTextMarginsAndShadow)
{
    TestChart chart(kTypeBar, 200, 100);
    chart.set.titleBoxFlags = kBoxShadow;
    // 3 * 5 + 2 * 5 + 3 = 28 wide, 8 + 2 * 2 + 3 = 15 high
    EXPECT_EQ(chart.After(Step::kTitleBox), "titleDim 15,8\n"
                                            "titleMargin 5,2\n"
                                            "titleBox 0,0,28,15\n");
}

TEST(TitleBox, AtASideIsMeasuredTurned)
{
    TestChart chart(kTypeBar, 200, 100);
    chart.set.titleBoxPos = kPosSide | kPosRight;
    EXPECT_EQ(chart.After(Step::kTitleBox), "titleDim 8,15\n"
                                            "titleMargin 5,2\n"
                                            "titleBox 0,0,18,19\n");
    EXPECT_EQ(_MeasureText("A").x, 5) << "text is horizontal again";
}

TEST(TitleBox, CountsTheLinesOfTheTitle)
{
    TestChart chart(kTypeBar, 200, 100);
    chart.SetTitle("A\nBB");
    chart.set.titleFontSize = 16; // doubled: 10 a letter, a line of 16 and a leading of 4; margins 16 / 2 + 1 and 4
    EXPECT_EQ(chart.After(Step::kTitleBox), "titleDim 20,36\n"
                                            "titleMargin 9,4\n"
                                            "titleBox 0,0,38,44\n");
}

TEST(TitleBox, OfAMissingTitleHoldsAnEmptyLine)
{
    TestChart chart(kTypeBar, 200, 100);
    chart.data.title = nullptr;
    EXPECT_EQ(chart.After(Step::kTitleBox), "titleDim 0,8\n"
                                            "titleMargin 5,2\n"
                                            "titleBox 0,0,10,12\n");
}

// The legend

TEST(Legend, InAColumnLeavesALineBetweenEntries)
{
    TestChart chart(kTypeBar, 200, 100);
    chart.SetCategories("A", {"1"});
    chart.AddSeries("A", 1, {1});
    chart.AddSeries("ABCA", 2, {1});
    chart.AddSeries("AB", 3, {1});
    chart.set.labelBoxFlags = kBoxShadow | kBoxFrame;
    // 20 + 10 + 3 * 5 + 3 wide, 3 * 10 + 2 * 10 + 2 * 5 + 3 high
    EXPECT_EQ(chart.After(Step::kLabelBox), "hasLabelBox 1\n"
                                            "labelBox 0,0,48,63\n"
                                            "labelMargin 5,5\n"
                                            "labelLineH 10\n"
                                            "axisLabelMargin 8,8\n");
}

TEST(Legend, InTheCentreIsOneRow)
{
    TestChart chart(kTypeBar, 200, 100);
    chart.SetCategories("A", {"1"});
    chart.AddSeries("A", 1, {1});
    chart.AddSeries("ABCA", 2, {1});
    chart.set.labelBoxPos = kPosBottom | kPosCenter;
    chart.set.axisLabelFontSize = 12;
    // (3 * 5 + 10) * 2 + 5 + 20 wide, 2 * 5 + 10 high
    EXPECT_EQ(chart.After(Step::kLabelBox), "hasLabelBox 1\n"
                                            "labelBox 0,0,75,20\n"
                                            "labelMargin 5,5\n"
                                            "labelLineH 10\n"
                                            "axisLabelMargin 12,12\n");
}

TEST(Legend, LeavesOutSeriesThatAreNotGraphed)
{
    TestChart chart(kTypeBar, 200, 100);
    chart.SetCategories("A", {"1"});
    chart.AddSeries("AAAAAA", 1, {1});
    chart.AddSeries("B", 2, {1});
    chart.Build();
    chart.data.series[1].flags &= ~kSeriesGraphedBit;
    chart.Run(Step::kLabelBox);
    EXPECT_EQ(chart.set.labelBox.right, 5 + 10 + 3 * 5);
    EXPECT_EQ(chart.set.labelBox.bottom, 10 + 2 * 5);
    EXPECT_EQ(chart.data.series[1].labelDim.x, 0);
}

TEST(Legend, OfOneSeriesGivesWayToTheValueAxisTitle)
{
    TestChart chart(kTypeBar, 200, 100);
    chart.SetCategories("ABC", {"1"});
    chart.AddSeries("AB", 1, {1});
    chart.set.xAxisFlags |= kAxisTitle;
    chart.set.yAxisFlags |= kAxisTitle;
    chart.set.axisLabelFontSize = 16; // doubled: 10 a letter, 16 high; the y title is measured turned
    EXPECT_EQ(chart.After(Step::kLabelBox), "hasLabelBox 0\n"
                                            "labelBox 0,0,0,0\n"
                                            "labelMargin 5,5\n"
                                            "labelLineH 0\n"
                                            "axisLabelMargin 16,16\n"
                                            "xAxisLabel \"ABC\" 30,16\n"
                                            "yAxisLabel \"AB\" 16,20\n");
    EXPECT_NE(chart.set.yAxisFlags & kAxisTitle, 0U);
    EXPECT_EQ(_MeasureText("A").x, 5) << "the label font is current again";
}

TEST(Legend, OfOneSeriesInAHorizontalChartGivesWayToTheXAxisTitle)
{
    TestChart chart(kTypeBar, 200, 100);
    chart.SetCategories("ABC", {"1"});
    chart.AddSeries("AB", 1, {1});
    chart.set.chartFlags = kChartHorizontal;
    chart.set.xAxisFlags |= kAxisTitle;
    chart.set.yAxisFlags |= kAxisTitle;
    EXPECT_EQ(chart.After(Step::kLabelBox), "hasLabelBox 0\n"
                                            "labelBox 0,0,0,0\n"
                                            "labelMargin 5,5\n"
                                            "labelLineH 0\n"
                                            "axisLabelMargin 8,8\n"
                                            "xAxisLabel \"AB\" 10,8\n"
                                            "yAxisLabel \"ABC\" 8,15\n");
}

TEST(Legend, TakesTheTitleOffTheValueAxis)
{
    for (const uint32_t flags : {0U, kChartHorizontal})
    {
        TestChart chart(kTypeBar, 200, 100);
        chart.SetCategories("ABC", {"1"});
        chart.AddSeries("A", 1, {1});
        chart.AddSeries("B", 2, {1});
        chart.set.chartFlags = flags;
        chart.set.xAxisFlags |= kAxisTitle;
        chart.set.yAxisFlags |= kAxisTitle;
        chart.Run(Step::kLabelBox);
        EXPECT_EQ(chart.set.hasLabelBox, 1);
        EXPECT_EQ(chart.set.xAxisFlags & kAxisTitle, flags == 0 ? kAxisTitle : 0U);
        EXPECT_EQ(chart.set.yAxisFlags & kAxisTitle, flags == 0 ? 0U : kAxisTitle);
    }
}

TEST(Legend, OfSeriesWithoutLabelsHasRoomForTheSwatches)
{
    TestChart chart(kTypeBar, 200, 100);
    chart.SetCategories("A", {"1"});
    chart.AddSeries("", 1, {1});
    chart.AddSeries("", 2, {1});
    chart.Build();
    chart.data.series[2].label = nullptr;
    chart.Run(Step::kLabelBox);
    EXPECT_EQ(chart.set.labelBox.right, 0 + 10 + 3 * 5);
    EXPECT_EQ(chart.set.labelBox.bottom, 2 * 10 + 10 + 2 * 5);
}

TEST(Legend, OfNoSeriesIsTheRuleForCountsAsItStands)
{
    TestChart chart(kTypeBar, 200, 100);
    chart.SetCategories("A", {"1"});
    chart.Run(Step::kLabelBox);
    // 0 + 10 + 3 * 5 wide, 0 * 10 - 1 * 10 + 2 * 5 high
    EXPECT_EQ(chart.set.labelBox.right, 25);
    EXPECT_EQ(chart.set.labelBox.bottom, 0);
}

TEST(Legend, OfLongLabelsIsAsWideAsTheyAre)
{
    TestChart chart(kTypeBar, 200, 100);
    chart.SetCategories("A", {"1"});
    chart.AddSeries(std::string(10000, 'A'), 1, {1});
    chart.AddSeries("B", 2, {1});
    chart.Run(Step::kLabelBox);
    EXPECT_EQ(chart.set.labelBox.right, 10000 * 5 + 10 + 3 * 5);
}

TEST(PieLegend, ListsTheDrawnCells)
{
    TestChart chart(kTypePie, 200, 100);
    chart.SetCategories("A", {"AAAAAAA", "ABC", "A", "AAAAAAA"});
    chart.AddSeries("AB", 1, {1, 2, 3, 4});
    chart.SelectCells(1, 2);
    EXPECT_EQ(chart.After(Step::kLabelBox), "hasLabelBox 1\n"
                                            "labelBox 0,0,40,40\n" // 15 + 10 + 3 * 5; 2 * 10 + 10 + 2 * 5
                                            "labelMargin 5,5\n"
                                            "labelLineH 10\n"
                                            "axisLabelMargin 0,0\n");
    EXPECT_EQ(chart.data.series[0].cells[1].textDim.x, 15);
    EXPECT_EQ(chart.data.series[0].cells[0].textDim.x, 0);
    EXPECT_EQ(chart.data.series[1].labelDim.x, 10);
}

TEST(PieLegend, KeepsSeriesThatAreNotGraphedUnmeasured)
{
    TestChart chart(kTypePie, 200, 100);
    chart.SetCategories("A", {"A", "AB"});
    chart.AddSeries("AB", 1, {1, 2});
    chart.Build();
    chart.data.series[1].flags &= ~kSeriesGraphedBit;
    chart.set.labelBoxPos = kPosTop | kPosCenter;
    chart.Run(Step::kLabelBox);
    EXPECT_EQ(chart.data.series[1].labelDim.x, 0);
    EXPECT_EQ(chart.set.labelBox.right, (3 * 5 + 10) * 2 + 5 + 10);
    EXPECT_EQ(chart.set.hasLabelBox, 1);
}

// What the data need

TEST(SizeRequirements, CategoryTextsMayBeWiderThanBars)
{
    TestChart chart(kTypeBar, 200, 100);
    chart.SetCategories("A", std::vector<std::string>(10, "1111")); // 20 wide
    for (const char *label : {"A", "B", "C"})
    {
        chart.AddSeries(label, 1, std::vector<double>(10, 1));
    }
    // the larger of 5 * 4 and 20 + 2 is 22; 220 + 44
    EXPECT_EQ(chart.After(Step::kSize), "refLabelDim 20,8\n"
                                        "dataMargin 0,0\n"
                                        "minPlot 264,50\n"
                                        "chart 264,100\n"
                                        "pieLabelH 0\n");
}

// A chart of two cells "A" and one series, without other needs than its type's.
static int32_t _NeedOf(int32_t type, int32_t nSeries)
{
    TestChart chart(type, 0, 0);
    chart.SetCategories("A", {"A", "A"});
    for (int32_t i = 0; i < nSeries; i++)
    {
        chart.AddSeries("A", 1, {1, 1});
    }
    chart.Run(Step::kSize);
    return chart.set.minPlotW;
}

TEST(SizeRequirements, EveryTypeHasItsRoomPerCategory)
{
    EXPECT_EQ(_NeedOf(kTypeBar, 2), 5 * 3 * 2 + 6);         // 30 * 20 / 100 = 6
    EXPECT_EQ(_NeedOf(kTypeLine, 2), 7 * 3 * 2 + 8);        // 42 * 20 / 100 = 8
    EXPECT_EQ(_NeedOf(kTypeScatter, 1), 7 * 2 * 2 + 5);     // 28 * 20 / 100 = 5
    EXPECT_EQ(_NeedOf(kTypeArea, 3), 7 * 4 * 2 + 11);       // 56 * 20 / 100 = 11
    EXPECT_EQ(_NeedOf(kTypeStackedBar, 3), 7 * 2 * 2 + 5);  // stacked: two slots for any number of series
    EXPECT_EQ(_NeedOf(kTypeStackedArea, 3), 7 * 2 * 2 + 5); // and a stacked bar is no plain bar
}

TEST(SizeRequirements, DataValuesMayNeedMost)
{
    TestChart chart(kTypeBar, 200, 100);
    chart.SetCategories("A", {"A", "B"});
    chart.AddSeries("A", 1, {1, 1});
    chart.set.dataPos = 1;
    chart.set.dataFontSize = 20; // scale 20 * 128 / 8 = 320; leading (2 * 320 + 64) / 128 = 5
    // the largest of 10, 20 and 7 is 20; 40 + 8
    EXPECT_EQ(chart.After(Step::kSize), "refLabelDim 5,8\n"
                                        "dataMargin 5,5\n"
                                        "minPlot 48,50\n"
                                        "chart 200,100\n"
                                        "pieLabelH 0\n");
    EXPECT_EQ(_MeasureText("A").x, 5) << "the label font is current again";
}

TEST(SizeRequirements, OfAHorizontalChartGoByHeights)
{
    TestChart chart(kTypeBar, 200, 20);
    chart.SetCategories("A", {"1111", "A\nB"});
    chart.AddSeries("A", 1, {1, 1});
    chart.set.chartFlags = kChartHorizontal;
    // two lines are 8 + 10 high; the larger of 5 * 2 and 18 + 2 is 20; 40 + 8
    EXPECT_EQ(chart.After(Step::kSize), "refLabelDim 20,18\n"
                                        "dataMargin 0,0\n"
                                        "minPlot 50,48\n"
                                        "chart 200,48\n"
                                        "pieLabelH 0\n");
}

TEST(SizeRequirements, OfDatesComeFromASample)
{
    TestChart vertical(kTypeBar, 0, 0);
    vertical.SetDates({"Fri May 31 1996"});
    vertical.AddSeries("A", 1, {1});
    vertical.Run(Step::kSize);
    EXPECT_EQ(vertical.set.refLabelDim.x, 20); // "1996"
    EXPECT_EQ(vertical.set.refLabelDim.y, 8 + 2 * 10);

    TestChart horizontal(kTypeBar, 0, 0);
    horizontal.SetDates({"Fri May 31 1996"});
    horizontal.AddSeries("A", 1, {1});
    horizontal.set.chartFlags = kChartHorizontal;
    horizontal.Run(Step::kSize);
    EXPECT_EQ(horizontal.set.refLabelDim.x, 7 + 5 + 5 + 3 + 10); // "May 31"
    EXPECT_EQ(horizontal.set.refLabelDim.y, 8 + 10);
}

TEST(SizeRequirements, MeasureOnlyTheDrawnCells)
{
    TestChart chart(kTypeBar, 0, 0);
    chart.SetCategories("A", {"1111111", "1", "11", "1111111"});
    chart.AddSeries("A", 1, {1, 1, 1, 1});
    chart.SelectCells(1, 2);
    chart.Run(Step::kSize);
    EXPECT_EQ(chart.set.refLabelDim.x, 10);
    EXPECT_EQ(chart.data.series[0].cells[1].textDim.x, 5);
}

TEST(SizeRequirements, BeyondThirtyTwoBitsAreClamped)
{
    TestChart chart(kTypeBar, 0, 0);
    chart.SetCategories("A", {"A"});
    chart.AddSeries("A", 1, {1});
    chart.Build();
    chart.set.nGraphedSeries = INT32_MAX;
    chart.Run(Step::kSize);
    EXPECT_EQ(chart.set.minPlotW, INT32_MAX);
    EXPECT_EQ(chart.set.chartW, INT32_MAX);
}

// What pies need. A label is 5 wide a letter and 8 high, so a label band is 2 * 2 + 8 = 12 high, which becomes 15.

TEST(PieSize, OneUnderTheOther)
{
    TestChart chart(kTypePie, 50, 50);
    chart.SetCategories("A", {"A", "B"});
    chart.AddSeries("AA", 1, {1, 1});
    chart.AddSeries("B", 2, {1, 1});
    chart.SelectCells(0, 1);
    chart.data.series[2].pieScale = 1.5; // rounds to 2
    // W = 100 + 2 * 15 = 130, 130 + 26; H = 3 * 15 + 50 + 100 = 195, 195 + 39
    EXPECT_EQ(chart.After(Step::kSize), "refLabelDim 0,0\n"
                                        "dataMargin 0,0\n"
                                        "minPlot 156,234\n"
                                        "chart 156,234\n"
                                        "pieLabelH 15\n");
}

TEST(PieSize, SideBySide)
{
    TestChart chart(kTypePie, 300, 50);
    chart.SetCategories("A", {"A", "B"});
    chart.AddSeries("AA", 1, {1, 1});
    chart.AddSeries("B", 2, {1, 1});
    chart.SelectCells(0, 1);
    chart.set.chartFlags = kChartHorizontal;
    chart.data.series[2].pieScale = 1.49; // rounds to 1
    // W = 15 + 65 + 65 = 145, 145 + 29; H = 2 * 15 + 50 = 80, 80 + 16
    EXPECT_EQ(chart.After(Step::kSize), "refLabelDim 0,0\n"
                                        "dataMargin 0,0\n"
                                        "minPlot 174,96\n"
                                        "chart 300,96\n"
                                        "pieLabelH 15\n");
}

TEST(PieSize, LabelsMayBeWiderThanPies)
{
    TestChart vertical(kTypePie, 0, 0);
    vertical.SetCategories("A", {"A"});
    vertical.AddSeries(std::string(20, 'A'), 1, {1});
    vertical.Run(Step::kSize);
    EXPECT_EQ(vertical.set.minPlotW, (100 + 30) + 26);

    TestChart horizontal(kTypePie, 0, 0);
    horizontal.SetCategories("A", {"A"});
    horizontal.AddSeries(std::string(20, 'A'), 1, {1});
    horizontal.set.chartFlags = kChartHorizontal;
    horizontal.Run(Step::kSize);
    EXPECT_EQ(horizontal.set.minPlotW, (2 + 100 + 2) + 20);
}

TEST(PieSize, LabelBandIsFifteenUpToFifteenAndItsOwnFromSixteen)
{
    const struct
    {
        int32_t size;
        int32_t band;
    } cases[] = {
        {9, 15},  // scale 144: leading (2 * 144 + 64) / 128 = 2; 2 * 2 + 9 = 13
        {10, 16}, // scale 160: leading (2 * 160 + 64) / 128 = 3; 2 * 3 + 10 = 16
        {11, 17}, // scale 176: leading (2 * 176 + 64) / 128 = 3; 2 * 3 + 11 = 17
    };
    for (const auto &c : cases)
    {
        TestChart chart(kTypePie, 0, 0);
        chart.SetCategories("A", {"A"});
        chart.AddSeries("A", 1, {1});
        chart.set.labelFontSize = c.size;
        chart.Run(Step::kSize);
        EXPECT_EQ(chart.set.pieLabelH, c.band) << "size " << c.size;
    }
}

TEST(PieSize, SkipsSeriesThatAreNotGraphed)
{
    TestChart chart(kTypePie, 0, 0);
    chart.SetCategories("A", {"A"});
    chart.AddSeries("A", 1, {1});
    chart.AddSeries("AAAAAAAAAAAAAAAAAAAA", 2, {1});
    chart.Build();
    chart.data.series[2].flags &= ~kSeriesGraphedBit;
    chart.SelectCells(0, 0);
    chart.Run(Step::kSize);
    EXPECT_EQ(chart.set.minPlotW, (50 + 30) + 16);
    EXPECT_EQ(chart.set.minPlotH, (2 * 15 + 50) + 16);
}

TEST(PieSize, OfAnAbsurdScaleIsClamped)
{
    TestChart chart(kTypePie, 0, 0);
    chart.SetCategories("A", {"A"});
    chart.AddSeries("A", 1, {1});
    chart.Build();
    chart.data.series[1].pieScale = 1e300;
    chart.Run(Step::kSize);
    EXPECT_EQ(chart.set.minPlotW, INT32_MAX);
    EXPECT_EQ(chart.set.minPlotH, INT32_MAX);
}

// Placing. The boxes here are 30 by 10 (title) and 20 by 16 (legend) in a chart of 100 by 80.

static ChartSet _Boxes(int32_t titlePos, int32_t labelPos)
{
    ChartSet set = {};
    set.chartW = 100;
    set.chartH = 80;
    set.titleBox = {0, 0, 30, 10};
    set.titleBoxPos = titlePos;
    set.labelBox = {0, 0, 20, 16};
    set.labelBoxPos = labelPos;
    set.hasLabelBox = 1;
    return set;
}

static std::string _Placed(ChartSet set)
{
    PlaceChartBoxes(&set);
    return LayoutText({}, set, Step::kPlaced);
}

TEST(PlaceTitle, KeepsThePlotOffItsWholeEdge)
{
    const struct
    {
        int32_t pos;
        const char *title;
        const char *plot;
    } cases[] = {
        {0x101, "0,0,30,10", "0,16,100,80"},   {0x102, "35,0,65,10", "0,16,100,80"},
        {0x104, "70,0,100,10", "0,16,100,80"}, {0x201, "0,70,30,80", "0,0,100,64"},
        {0x202, "35,70,65,80", "0,0,100,64"},  {0x204, "70,70,100,80", "0,0,100,64"},
        {0x401, "0,35,30,45", "36,0,100,80"},  {0x404, "70,35,100,45", "0,0,64,80"},
    };
    for (const auto &c : cases)
    {
        ChartSet set = _Boxes(c.pos, kPosSide | kPosLeft);
        set.hasLabelBox = 0;
        EXPECT_EQ(_Placed(set),
                  std::string("titleBox ") + c.title + "\nlabelBox 0,0,20,16\nplotBox " + c.plot + "\nchart 100,80\n");
    }
}

TEST(PlaceLegend, StandsBesideThePlotInCornersAndAboveOrBelowInTheCentre)
{
    // the title is empty and far from the legend: it takes 6 pixels at the top, or at the bottom
    const struct
    {
        int32_t pos;
        int32_t titlePos;
        const char *label;
        const char *plot;
    } cases[] = {
        {0x101, 0x202, "0,0,20,16", "26,0,100,74"},  {0x102, 0x202, "40,0,60,16", "0,22,100,74"},
        {0x104, 0x202, "80,0,100,16", "0,0,74,74"},  {0x201, 0x102, "0,64,20,80", "26,6,100,80"},
        {0x202, 0x102, "40,64,60,80", "0,6,100,58"}, {0x204, 0x102, "80,64,100,80", "0,6,74,80"},
        {0x401, 0x102, "0,32,20,48", "26,6,100,80"}, {0x404, 0x102, "80,32,100,48", "0,6,74,80"},
    };
    for (const auto &c : cases)
    {
        ChartSet set = _Boxes(c.titlePos, c.pos);
        set.titleBox = {0, 0, 0, 0};
        const char *title = c.titlePos == 0x202 ? "50,80,50,80" : "50,0,50,0";
        EXPECT_EQ(_Placed(set), std::string("titleBox ") + title + "\nlabelBox " + c.label + "\nplotBox " + c.plot +
                                    "\nchart 100,80\n");
    }
}

TEST(PlaceBoxes, ASideWithoutLeftIsTheRightOne)
{
    ChartSet set = _Boxes(kPosSide | kPosCenter, kPosSide);
    EXPECT_EQ(_Placed(set), "titleBox 70,35,100,45\nlabelBox 80,32,100,48\nplotBox 0,0,74,80\nchart 100,80\n");
    set = _Boxes(kPosSide, kPosSide | kPosCenter);
    EXPECT_EQ(_Placed(set), "titleBox 70,35,100,45\nlabelBox 80,32,100,48\nplotBox 0,0,74,80\nchart 100,80\n");
}

TEST(PlaceBoxes, BothAtTheTopCentreStandOneUnderTheOther)
{
    // the legend 6 below the title (10 + 6), the plot 6 below the legend (32 + 6)
    EXPECT_EQ(_Placed(_Boxes(0x102, 0x102)),
              "titleBox 35,0,65,10\nlabelBox 40,16,60,32\nplotBox 0,38,100,80\nchart 100,80\n");
}

TEST(PlaceBoxes, BothAtTheTopLegendInACornerStaysBesideThePlot)
{
    EXPECT_EQ(_Placed(_Boxes(0x102, 0x104)),
              "titleBox 35,0,65,10\nlabelBox 80,16,100,32\nplotBox 0,16,74,80\nchart 100,80\n");
}

TEST(PlaceBoxes, BothAtTheTopATallLegendMakesTheImageHigher)
{
    ChartSet set = _Boxes(0x101, 0x101);
    set.minPlotH = -100; // no room asked for
    set.labelBox.bottom = 64;
    EXPECT_EQ(_Placed(set), "titleBox 0,0,30,10\nlabelBox 0,16,20,80\nplotBox 26,16,100,80\nchart 100,80\n");
    set.labelBox.bottom = 65; // 16 + 65 = 81
    EXPECT_EQ(_Placed(set), "titleBox 0,0,30,10\nlabelBox 0,16,20,81\nplotBox 26,16,100,81\nchart 100,81\n");
}

TEST(PlaceBoxes, BothAtTheBottomStandOneAboveTheOther)
{
    // the legend at 64 - 16; the plot ends 6 above it
    EXPECT_EQ(_Placed(_Boxes(0x202, 0x202)),
              "titleBox 35,70,65,80\nlabelBox 40,48,60,64\nplotBox 0,0,100,42\nchart 100,80\n");
    EXPECT_EQ(_Placed(_Boxes(0x202, 0x201)),
              "titleBox 35,70,65,80\nlabelBox 0,48,20,64\nplotBox 26,0,100,64\nchart 100,80\n");
}

TEST(PlaceBoxes, BothAtTheBottomALegendHigherThanTheImageShiftsBothDown)
{
    ChartSet set = _Boxes(0x202, 0x204);
    set.minPlotH = -100; // no room asked for
    set.labelBox.bottom = 90;
    // H = 90; the legend at 0 - 16, so all moves down by 16: title 80 + 16, plot bottom 80 - 6 + 16
    EXPECT_EQ(_Placed(set), "titleBox 35,96,65,106\nlabelBox 80,0,100,90\nplotBox 0,0,74,90\nchart 100,106\n");
    set.labelBoxPos = 0x202; // the plot ends 6 above the legend, outside the image, as the rule has it
    EXPECT_EQ(_Placed(set), "titleBox 35,96,65,106\nlabelBox 40,0,60,90\nplotBox 0,0,100,-6\nchart 100,106\n");
}

TEST(PlaceBoxes, BothAtOneSideStandSideBySide)
{
    EXPECT_EQ(_Placed(_Boxes(0x401, 0x401)),
              "titleBox 0,35,30,45\nlabelBox 36,32,56,48\nplotBox 62,0,100,80\nchart 100,80\n");
    EXPECT_EQ(_Placed(_Boxes(0x404, 0x404)),
              "titleBox 70,35,100,45\nlabelBox 44,32,64,48\nplotBox 0,0,38,80\nchart 100,80\n");
}

TEST(PlaceBoxes, AtOppositeSidesLeaveEachOtherAlone)
{
    EXPECT_EQ(_Placed(_Boxes(0x401, 0x404)),
              "titleBox 0,35,30,45\nlabelBox 80,32,100,48\nplotBox 36,0,74,80\nchart 100,80\n");
    EXPECT_EQ(_Placed(_Boxes(0x404, 0x201)),
              "titleBox 70,35,100,45\nlabelBox 0,64,20,80\nplotBox 26,0,64,80\nchart 100,80\n");
}

TEST(PlaceBoxes, TitleAboveALegendAtTheSidePushesItDownWhenCloserThanSix)
{
    ChartSet set = _Boxes(0x102, 0x401);
    set.minPlotH = -100;
    set.labelBox.bottom = 48; // its top at (80 - 48) / 2 = 16: just 6 below the title
    EXPECT_EQ(_Placed(set), "titleBox 35,0,65,10\nlabelBox 0,16,20,64\nplotBox 26,16,100,80\nchart 100,80\n");
    set.labelBox.bottom = 50; // its top at 15: 10 - 15 + 6 = 1 too near
    // plot top 16 + 1 and height 80 + 1; the plot's bottom stays
    EXPECT_EQ(_Placed(set), "titleBox 35,0,65,10\nlabelBox 0,16,20,66\nplotBox 26,17,100,80\nchart 100,81\n");
}

TEST(PlaceBoxes, TitleBelowALegendAtTheSideIsPushedDownWhenCloserThanSix)
{
    ChartSet set = _Boxes(0x202, 0x404);
    set.minPlotH = -100;
    set.labelBox.bottom = 48; // its bottom at 16 + 48 = 64: just 6 above the title
    EXPECT_EQ(_Placed(set), "titleBox 35,70,65,80\nlabelBox 80,16,100,64\nplotBox 0,0,74,64\nchart 100,80\n");
    set.labelBox.bottom = 50; // its bottom at 15 + 50 = 65: 65 - 70 + 6 = 1 too near
    EXPECT_EQ(_Placed(set), "titleBox 35,71,65,81\nlabelBox 80,15,100,65\nplotBox 0,0,74,65\nchart 100,81\n");
}

TEST(PlaceBoxes, WithoutLegendNothingCollides)
{
    ChartSet set = _Boxes(0x102, 0x102);
    set.hasLabelBox = 0;
    EXPECT_EQ(_Placed(set), "titleBox 35,0,65,10\nlabelBox 0,0,20,16\nplotBox 0,16,100,80\nchart 100,80\n");
}

TEST(RoomCheck, ImageIsAsLargeAsItsLargestBox)
{
    ChartSet set = _Boxes(0x102, 0x404);
    set.titleBox = {0, 0, 150, 10};
    set.labelBox = {0, 0, 20, 90};
    set.minPlotW = set.minPlotH = -1000;
    PlaceChartBoxes(&set);
    EXPECT_EQ(set.chartW, 150);
    EXPECT_EQ(set.chartH, 90 + (10 - 0 + 6)); // the legend then gives way to the title
}

TEST(RoomCheck, BoxesAndGapsComeOnTopOfThePlot)
{
    ChartSet set = _Boxes(0x102, 0x404);
    set.minPlotW = 100 - 26;
    set.minPlotH = 80 - 16;
    EXPECT_EQ(_Placed(set), "titleBox 35,0,65,10\nlabelBox 80,32,100,48\nplotBox 0,16,74,80\nchart 100,80\n");
    set.minPlotW++;
    set.minPlotH++;
    EXPECT_EQ(_Placed(set), "titleBox 35,0,65,10\nlabelBox 81,32,101,48\nplotBox 0,16,75,81\nchart 101,81\n");
}

TEST(RoomCheck, ATitleAtTheSideCountsAsRoom)
{
    ChartSet set = _Boxes(0x401, 0x102);
    set.minPlotW = 100 + 30 - 6;
    PlaceChartBoxes(&set);
    EXPECT_EQ(set.chartW, 100);
    set = _Boxes(0x401, 0x102);
    set.minPlotW = 100 + 30 - 6 + 1;
    PlaceChartBoxes(&set);
    EXPECT_EQ(set.chartW, 101);
}

TEST(RoomCheck, AnAbsentLegendStillCostsItsGap)
{
    ChartSet set = _Boxes(0x102, 0x404);
    set.labelBox = {0, 0, 0, 0};
    set.hasLabelBox = 0;
    set.minPlotW = 95;
    PlaceChartBoxes(&set);
    EXPECT_EQ(set.chartW, 101); // 95 + 6
}

TEST(ChartSize, MayBeWhatAGifCanHold)
{
    ChartSet set = _Boxes(0x102, 0x404);
    set.chartW = set.chartH = 65535;
    PlaceChartBoxes(&set);
    EXPECT_EQ(set.chartW, 65535);
    EXPECT_EQ(set.chartH, 65535);
}

TEST(ChartSize, BeyondThatEndsTheRun)
{
    for (const bool fWide : {true, false})
    {
        const ChildResult result = RunInChild(
            [fWide]
            {
                ChartSet set = _Boxes(0x102, 0x404);
                (fWide ? set.chartW : set.chartH) = 65536;
                PlaceChartBoxes(&set);
            });
        EXPECT_EQ(result.status, 255);
        const char *text =
            fWide ? "Chart too large:\n65536 by 80 pixels are needed, at most 65535 by 65535 are possible\n"
                  : "Chart too large:\n100 by 65536 pixels are needed, at most 65535 by 65535 are possible\n";
        EXPECT_NE(result.out.find(text), std::string::npos) << result.out;
    }
}

TEST(ChartSize, ExtremesOfTheSettingsAreAnswered)
{
    ChartSet set = _Boxes(0x102, 0x404);
    set.chartW = set.chartH = INT32_MIN;
    PlaceChartBoxes(&set);
    EXPECT_EQ(set.chartW, 30);
    EXPECT_EQ(RunInChild(
                  []
                  {
                      ChartSet wide = _Boxes(0x102, 0x404);
                      wide.chartW = wide.minPlotW = INT32_MAX;
                      PlaceChartBoxes(&wide);
                  })
                  .status,
              255);
}

TEST(ChartSize, ATinyChartWithHugeFontsGrows)
{
    TestChart chart(kTypeBar, 1, 1);
    chart.SetCategories("A", {"A"});
    chart.AddSeries("A", 1, {1});
    chart.set.titleFontSize = chart.set.labelFontSize = 127;
    chart.Run(Step::kPlaced);
    // scale 127 * 128 / 8 = 2032; a letter is (5 * 2032 + 64) / 128 = 79 wide, leading (2 * 2032 + 64) / 128 = 32;
    // title 3 * 79 + 2 * (127 / 2 + 1) = 365; legend 79 + 159 + 3 * 79 = 475 (line 127 + 32, half of it 79);
    // need (79 + 32) + 22 = 133; W = 475 + the missing 133 - (475 - 481)
    EXPECT_EQ(chart.set.chartW, 475 + 139);
}

// Missing records

TEST(Layout, DoesNothingWithoutRecords)
{
    TestChart chart(kTypeBar, 200, 100);
    chart.SetCategories("A", {"A"});
    chart.AddSeries("A", 1, {1});
    chart.Build();
    void (*const steps[])(ChartData *, ChartSet *) = {GetTitleBoxDim, GetLabelBoxDim, GetPieLabelBoxDim,
                                                      GetSizeRequirements, GetPieSizeRequirements};
    for (const auto step : steps)
    {
        step(nullptr, &chart.set);
        step(&chart.data, nullptr);
    }
    PlaceChartBoxes(nullptr);
    chart.data.buffer = nullptr;
    for (const auto step : steps)
    {
        step(&chart.data, &chart.set);
    }
    EXPECT_EQ(chart.set.titleBox.right, 0);
    EXPECT_EQ(chart.set.labelBox.right, 0);
    EXPECT_EQ(chart.set.minPlotW, 0);
    EXPECT_EQ(chart.data.titleDim.x, 0);
}
