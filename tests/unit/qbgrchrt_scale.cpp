// Covers qbgrchrt_scale.cpp: axis strips, value scale, category slots, data points, the image; and whole charts, worked
// out by hand from the title to the last point.
//
// In Small8 at 8 pixels a capital or a digit is 5 wide, "-" 4, a line 8 high; a scale label on a vertical axis has 16
// pixels. Legend margins are 5; a title "ABC" has a box of 25 by 12.

#include "alloc_fail.h"
#include "chart_fixture.h"
#include "child_run.h"
#include "qbgrchrt_state.h"

#include <cmath>
#include <gtest/gtest.h>

// All that the layout writes, in its order.
static std::string _WholeLayout(TestChart *chart)
{
    std::string text;
    for (const Step step : {Step::kTitleBox, Step::kLabelBox, Step::kSize, Step::kPlaced, Step::kAxisBoxes,
                            Step::kScale, Step::kRefScale, Step::kTrimmed, Step::kPoints})
    {
        text += "-\n" + chart->After(step);
    }
    return text;
}

TEST(WholeBar, VerticalWithTwoSeries)
{
    TestChart chart(kTypeBar, 200, 150);
    chart.SetCategories("A", {"A", "B", "C"});
    chart.AddSeries("AB", 1, {10, 20, 30});
    chart.AddSeries("CCC", 2, {30, 5, 25});
    EXPECT_EQ(_WholeLayout(&chart), "-\n"
                                    "titleDim 15,8\n"
                                    "titleMargin 5,2\n"
                                    "titleBox 0,0,25,12\n"
                                    "-\n"
                                    "hasLabelBox 1\n"
                                    "labelBox 0,0,40,40\n" // 15 + 10 + 3 * 5; 2 * 10 + 10 + 2 * 5
                                    "labelMargin 5,5\n"
                                    "labelLineH 10\n"
                                    "axisLabelMargin 8,8\n"
                                    "-\n"
                                    "refLabelDim 5,8\n"
                                    "dataMargin 0,0\n"
                                    "minPlot 54,50\n" // 5 * 3 = 15 a category; 45 + 9
                                    "chart 200,150\n"
                                    "pieLabelH 0\n"
                                    "-\n"
                                    "titleBox 87,0,112,12\n"   // (200 - 25) / 2
                                    "labelBox 160,55,200,95\n" // (150 - 40) / 2
                                    "plotBox 0,18,154,150\n"
                                    "chart 200,150\n"
                                    "-\n"
                                    "yAxisBox 0,18,28,129\n"    // 5 + 8 + "300" wide
                                    "xAxisBox 28,129,154,150\n" // 5 + 8 + 8 high
                                    "-\n"
                                    "x divisions 0,0,0\n"
                                    "y divisions 3,34,10\n" // 111 / 16 = 6; 30 / 6 = 5, step 10; (111 - 8) / 3
                                    "zeroDivs 0\n"
                                    "scaleLabelDim 10,8\n" // "30"
                                    "-\n"
                                    "x divisions 3,42,14\n" // 126 / 3; 42 / 3
                                    "y divisions 3,34,10\n"
                                    "zeroDivs 0\n"
                                    "scaleLabelDim 10,8\n"
                                    "-\n"
                                    "axisLen 126,102\n"
                                    "yAxisBox 0,27,28,129\n"
                                    "xAxisBox 28,129,154,150\n"
                                    "-\n"
                                    "series 0:\n"
                                    "series 1: 42,129 42,95 84,61 126,27 126,130\n" // 28 + 14; 34 pixels for 10
                                    "series 2: 56,129 56,27 98,112 140,44 140,130\n");
}

TEST(WholeBar, HorizontalReversedWithNegativeValues)
{
    TestChart chart(kTypeBar, 200, 150);
    chart.SetCategories("A", {"AB", "C"});
    chart.AddSeries("A", 1, {-20, 48});
    chart.AddSeries("B", 2, {10, -5});
    chart.set.chartFlags = kChartHorizontal;
    chart.set.refDir = 2;
    chart.set.titleBoxPos = kPosSide | kPosLeft;
    chart.set.labelBoxPos = kPosBottom | kPosCenter;
    chart.set.xAxisFlags = kTicksMiddle | kAxisScaleLabels;
    chart.set.yAxisFlags = kTicksInside | kAxisScaleLabels;
    EXPECT_EQ(_WholeLayout(&chart), "-\n"
                                    "titleDim 8,15\n"
                                    "titleMargin 5,2\n"
                                    "titleBox 0,0,18,19\n"
                                    "-\n"
                                    "hasLabelBox 1\n"
                                    "labelBox 0,0,60,20\n" // (15 + 10) * 2 + 5 + 5; 10 + 10
                                    "labelMargin 5,5\n"
                                    "labelLineH 10\n"
                                    "axisLabelMargin 8,8\n"
                                    "-\n"
                                    "refLabelDim 10,8\n"
                                    "dataMargin 0,0\n"
                                    "minPlot 50,36\n" // 15 a category; 30 + 6
                                    "chart 200,150\n"
                                    "pieLabelH 0\n"
                                    "-\n"
                                    "titleBox 0,65,18,84\n"
                                    "labelBox 70,130,130,150\n"
                                    "plotBox 24,0,200,124\n"
                                    "chart 200,150\n"
                                    "-\n"
                                    "yAxisBox 24,0,39,107\n"    // 5 + 0 + 10 wide
                                    "xAxisBox 39,107,200,124\n" // 5 + 4 + 8 high
                                    "-\n"
                                    // "680" and a half: 22; 161 / 22 = 7; 68 / 7 -> 10; of 100, 50, 25, 12 the last;
                                    // 31 / 12 + 59 / 12 = 2 + 4; (161 - 11) / 6
                                    "x divisions 6,25,12\n"
                                    "y divisions 0,0,0\n"
                                    "zeroDivs 2\n"
                                    "scaleLabelDim 10,8\n" // "72"
                                    "-\n"
                                    "x divisions 6,25,12\n"
                                    "y divisions 2,53,17\n" // 107 / 2; 53 / 3
                                    "zeroDivs 2\n"
                                    "scaleLabelDim 10,8\n"
                                    "-\n"
                                    "axisLen 150,106\n"
                                    "yAxisBox 24,1,39,107\n"
                                    "xAxisBox 39,107,189,124\n"
                                    "-\n"
                                    "series 0:\n"
                                    // zero at 39 + 50; y 107 - (106 - 53 + 17), then 53 nearer;
                                    // -41.67 + 0.5 cut to -41; 100.5 cut to 100, and one more above zero
                                    "series 1: 89,37 48,37 190,90 89,90\n"
                                    // 17 lower; 20.83 + 0.5 cut to 21, and one more; -10.42 + 0.5 cut to -9
                                    "series 2: 89,20 111,20 80,73 89,73\n");
}

TEST(WholeBar, OneSeriesOfDatesAndBillionsWithAxisTitles)
{
    TestChart chart(kTypeBar, 120, 200);
    chart.SetDates({"Fri May 31 1996", "Sat Jun 1 1996"});
    chart.AddSeries("BB", 1, {100, 3000000000});
    chart.set.titleBoxPos = kPosBottom | kPosRight;
    chart.set.labelBoxPos = kPosTop | kPosLeft;
    chart.set.xAxisFlags = chart.set.yAxisFlags = kTicksInside | kAxisScaleLabels | kAxisTitle;
    chart.set.dataPos = 1;
    chart.set.dataFontSize = 20;
    EXPECT_EQ(_WholeLayout(&chart), "-\n"
                                    "titleDim 15,8\n"
                                    "titleMargin 5,2\n"
                                    "titleBox 0,0,25,12\n"
                                    "-\n"
                                    "hasLabelBox 0\n"
                                    "labelBox 0,0,0,0\n"
                                    "labelMargin 5,5\n"
                                    "labelLineH 0\n"
                                    "axisLabelMargin 8,8\n"
                                    "xAxisLabel \"A\" 5,8\n"
                                    "yAxisLabel \"BB\" 8,10\n"
                                    "-\n"
                                    "refLabelDim 20,28\n" // "1996"; three lines
                                    "dataMargin 5,5\n"
                                    "minPlot 52,50\n" // 20 + 2 a category; 44 + 8
                                    "chart 120,200\n"
                                    "pieLabelH 0\n"
                                    "-\n"
                                    "titleBox 95,188,120,200\n"
                                    "labelBox 0,0,0,0\n"
                                    "plotBox 0,0,120,182\n"
                                    "chart 120,200\n"
                                    "-\n"
                                    "yAxisBox 0,0,76,133\n"     // 5 + 0 + 11 digits + 8 + 8 wide
                                    "xAxisBox 76,133,120,182\n" // 5 + 0 + 28 + 8 + 8 high
                                    "-\n"
                                    "x divisions 0,0,0\n"
                                    // 133 / 16 = 8; 375000000 -> 10^9, halved once; (133 - 8) / 6
                                    "y divisions 6,20,500000000\n"
                                    "zeroDivs 0\n"
                                    "scaleLabelDim 50,8\n" // "3000000000"
                                    "-\n"
                                    "x divisions 2,22,11\n"
                                    "y divisions 6,20,500000000\n"
                                    "zeroDivs 0\n"
                                    "scaleLabelDim 50,8\n"
                                    "-\n"
                                    "axisLen 44,120\n"
                                    "yAxisBox 0,13,76,133\n"
                                    "xAxisBox 76,133,120,182\n"
                                    "-\n"
                                    "series 0:\n"
                                    "series 1: 87,133 87,133 109,13 109,134\n");
}

TEST(WholeLine, SmallChartGrowsForTitleAndLegendInOneCorner)
{
    TestChart chart(kTypeLine, 60, 60);
    chart.SetCategories("A", {"1", "2", "3", "4", "5"});
    chart.AddSeries("A", 1, {1, 2, 3, 2, 1});
    chart.AddSeries("B", 2, {0, 1, 0, 1, 0});
    chart.set.titleBoxPos = chart.set.labelBoxPos = kPosTop | kPosLeft;
    chart.set.xAxisFlags = chart.set.yAxisFlags = kTicksInside | kAxisScaleLabels;
    EXPECT_EQ(_WholeLayout(&chart), "-\n"
                                    "titleDim 15,8\n"
                                    "titleMargin 5,2\n"
                                    "titleBox 0,0,25,12\n"
                                    "-\n"
                                    "hasLabelBox 1\n"
                                    "labelBox 0,0,30,40\n"
                                    "labelMargin 5,5\n"
                                    "labelLineH 10\n"
                                    "axisLabelMargin 8,8\n"
                                    "-\n"
                                    "refLabelDim 5,8\n"
                                    "dataMargin 0,0\n"
                                    "minPlot 126,50\n" // 7 * 3 = 21 a category; 105 + 21
                                    "chart 126,60\n"
                                    "pieLabelH 0\n"
                                    "-\n"
                                    "titleBox 0,0,25,12\n"
                                    "labelBox 0,18,30,58\n"
                                    "plotBox 36,18,126,114\n" // 60 - 18 - 46 = -4 for 50: 54 higher
                                    "chart 126,114\n"
                                    "-\n"
                                    "yAxisBox 36,18,51,101\n"   // 5 + 0 + "30" wide
                                    "xAxisBox 51,101,126,114\n" // 5 + 0 + 8 high
                                    "-\n"
                                    "x divisions 0,0,0\n"
                                    // 83 / 16 = 5; 3 / 5 -> 1; step 2 and (1 + 3) / 2 = 2 of them; 4 fit, so units
                                    "y divisions 4,18,1\n" // (83 - 8) / 4
                                    "zeroDivs 0\n"
                                    "scaleLabelDim 5,8\n"
                                    "-\n"
                                    "x divisions 5,15,5\n"
                                    "y divisions 4,18,1\n"
                                    "zeroDivs 0\n"
                                    "scaleLabelDim 5,8\n"
                                    "-\n"
                                    "axisLen 75,72\n"
                                    "yAxisBox 36,29,51,101\n"
                                    "xAxisBox 51,101,126,114\n"
                                    "-\n"
                                    "series 0:\n"
                                    "series 1: 56,101 56,83 71,65 86,47 101,65 116,83 116,102\n"
                                    "series 2: 61,101 61,101 76,83 91,101 106,83 121,101 121,102\n");
}

TEST(WholeLine, HorizontalWithNegativeValuesOnlyAndShadows)
{
    TestChart chart(kTypeLine, 100, 80);
    chart.SetCategories("A", {"A", "BC"});
    chart.AddSeries("C", 1, {-10, -40});
    chart.set.chartFlags = kChartHorizontal;
    chart.set.titleBoxPos = kPosTop | kPosRight;
    chart.set.labelBoxPos = kPosSide | kPosLeft;
    chart.set.titleBoxFlags = chart.set.labelBoxFlags = kBoxShadow;
    EXPECT_EQ(_WholeLayout(&chart), "-\n"
                                    "titleDim 15,8\n"
                                    "titleMargin 5,2\n"
                                    "titleBox 0,0,28,15\n"
                                    "-\n"
                                    "hasLabelBox 1\n"
                                    "labelBox 0,0,33,23\n" // 5 + 10 + 15 + 3; 10 + 0 + 10 + 3
                                    "labelMargin 5,5\n"
                                    "labelLineH 10\n"
                                    "axisLabelMargin 8,8\n"
                                    "-\n"
                                    "refLabelDim 10,8\n"
                                    "dataMargin 0,0\n"
                                    "minPlot 50,33\n" // 14 a category; 28 + 5
                                    "chart 100,80\n"
                                    "pieLabelH 0\n"
                                    "-\n"
                                    "titleBox 72,0,100,15\n"
                                    "labelBox 0,28,33,51\n"
                                    "plotBox 39,21,100,80\n"
                                    "chart 100,80\n"
                                    "-\n"
                                    "yAxisBox 39,21,62,59\n"  // 5 + 8 + 10 wide
                                    "xAxisBox 62,59,100,80\n" // 5 + 8 + 8 high
                                    "-\n"
                                    // "400" and a half: 22; 38 / 22 = 1; 40 -> 50; (49 + 40) / 50 = 1; 38 - 11
                                    "x divisions 1,27,50\n"
                                    "y divisions 0,0,0\n"
                                    "zeroDivs 1\n" // (50 + 40 - 1) / 50
                                    "scaleLabelDim 10,8\n"
                                    "-\n"
                                    "x divisions 1,27,50\n"
                                    "y divisions 2,19,9\n"
                                    "zeroDivs 1\n"
                                    "scaleLabelDim 10,8\n"
                                    "-\n"
                                    "axisLen 27,38\n"
                                    "yAxisBox 39,21,62,59\n"
                                    "xAxisBox 62,59,89,80\n"
                                    "-\n"
                                    "series 0:\n"
                                    // zero at 62 + 27; -5.4 + 0.5 cut to -4; -21.6 + 0.5 cut to -21
                                    "series 1: 89,50 85,50 68,31 89,31\n");
}

TEST(WholeLine, ReversedCellRangeWithASeriesLeftOut)
{
    TestChart chart(kTypeLine, 150, 120);
    chart.SetCategories("A", {"1", "22", "333", "4"});
    chart.AddSeries("A", 1, {9, 1, 2, 9});
    chart.AddSeries("B", 2, {5, 5, 5, 5});
    chart.AddSeries("C", 3, {9, 3, 4, 9});
    chart.Build();
    chart.data.series[2].flags &= ~kSeriesGraphedBit;
    chart.SelectCells(1, 2);
    chart.set.refDir = 2;
    chart.set.titleBoxPos = kPosBottom | kPosLeft;
    chart.set.labelBoxPos = kPosBottom | kPosCenter;
    EXPECT_EQ(_WholeLayout(&chart), "-\n"
                                    "titleDim 15,8\n"
                                    "titleMargin 5,2\n"
                                    "titleBox 0,0,25,12\n"
                                    "-\n"
                                    "hasLabelBox 1\n"
                                    "labelBox 0,0,60,20\n"
                                    "labelMargin 5,5\n"
                                    "labelLineH 10\n"
                                    "axisLabelMargin 8,8\n"
                                    "-\n"
                                    "refLabelDim 15,8\n"
                                    "dataMargin 0,0\n"
                                    "minPlot 50,50\n" // 21 a category; 42 + 8
                                    "chart 150,120\n"
                                    "pieLabelH 0\n"
                                    "-\n"
                                    "titleBox 0,108,25,120\n"
                                    "labelBox 45,82,105,102\n" // at 100, then up by 12 + 6
                                    "plotBox 0,0,150,76\n"
                                    "chart 150,120\n"
                                    "-\n"
                                    "yAxisBox 0,0,23,55\n"
                                    "xAxisBox 23,55,150,76\n"
                                    "-\n"
                                    "x divisions 0,0,0\n"
                                    // 55 / 16 = 3; 4 / 3 -> 2; of 10, 5, 2 the last; (1 + 4) / 2 = 2; 4 do not fit
                                    "y divisions 2,23,2\n"
                                    "zeroDivs 0\n"
                                    "scaleLabelDim 5,8\n"
                                    "-\n"
                                    "x divisions 2,63,21\n" // 127 / 2; 63 / 3
                                    "y divisions 2,23,2\n"
                                    "zeroDivs 0\n"
                                    "scaleLabelDim 5,8\n"
                                    "-\n"
                                    "axisLen 126,46\n"
                                    "yAxisBox 0,9,23,55\n"
                                    "xAxisBox 23,55,149,76\n"
                                    "-\n"
                                    "series 0:\n"
                                    "series 1: 107,55 107,43 44,32 44,56\n" // 23 + 126 - 63 + 21; 11.5 + 0.5, 23
                                    "series 2:\n"
                                    "series 3: 128,55 128,20 65,9 65,56\n"); // 21 farther; 34.5 + 0.5, 46
}

TEST(WholeScatter, TitleAndLegendAtOneSideValuesAroundZero)
{
    TestChart chart(kTypeScatter, 160, 200);
    chart.SetCategories("A", {"A", "B"});
    chart.AddSeries("A", 1, {-20, 50});
    chart.set.titleBoxPos = kPosSide | kPosRight;
    EXPECT_EQ(_WholeLayout(&chart), "-\n"
                                    "titleDim 8,15\n"
                                    "titleMargin 5,2\n"
                                    "titleBox 0,0,18,19\n"
                                    "-\n"
                                    "hasLabelBox 1\n"
                                    "labelBox 0,0,30,20\n"
                                    "labelMargin 5,5\n"
                                    "labelLineH 10\n"
                                    "axisLabelMargin 8,8\n"
                                    "-\n"
                                    "refLabelDim 5,8\n"
                                    "dataMargin 0,0\n"
                                    "minPlot 33,50\n" // 14 a category; 28 + 5
                                    "chart 160,200\n"
                                    "pieLabelH 0\n"
                                    "-\n"
                                    "titleBox 142,90,160,109\n"
                                    "labelBox 106,90,136,110\n" // at 130, then left by 18 + 6
                                    "plotBox 0,0,100,200\n"
                                    "chart 160,200\n"
                                    "-\n"
                                    "yAxisBox 0,0,28,179\n"
                                    "xAxisBox 28,179,100,200\n"
                                    "-\n"
                                    "x divisions 0,0,0\n"
                                    // 179 / 16 = 11; 70 / 11 -> 7; step 10; 29 / 10 + 59 / 10 = 2 + 5; 171 / 7
                                    "y divisions 7,24,10\n"
                                    "zeroDivs 2\n" // (10 + 20 - 1) / 10
                                    "scaleLabelDim 10,8\n"
                                    "-\n"
                                    "x divisions 2,36,18\n"
                                    "y divisions 7,24,10\n"
                                    "zeroDivs 2\n"
                                    "scaleLabelDim 10,8\n"
                                    "-\n"
                                    "axisLen 72,168\n"
                                    "yAxisBox 0,11,28,179\n"
                                    "xAxisBox 28,179,100,200\n"
                                    "-\n"
                                    "series 0:\n"
                                    // zero at 179 - 48 = 131; -47.5 cut to -47, and one more below zero; 120
                                    "series 1: 46,131 46,179 82,11 82,132\n");
}

TEST(WholeScatter, HorizontalWithALargeFontAndAxisTitles)
{
    TestChart chart(kTypeScatter, 300, 200);
    chart.SetCategories("A", {"A", "B", "C"});
    chart.AddSeries("A", 1, {1, 2, 3});
    chart.set.chartFlags = kChartHorizontal;
    chart.set.labelFontSize = 16; // doubled: 10 a digit, 16 high, leading 4
    chart.set.xAxisFlags |= kAxisTitle;
    chart.set.yAxisFlags |= kAxisTitle;
    EXPECT_EQ(_WholeLayout(&chart), "-\n"
                                    "titleDim 15,8\n"
                                    "titleMargin 5,2\n"
                                    "titleBox 0,0,25,12\n"
                                    "-\n"
                                    "hasLabelBox 0\n"
                                    "labelBox 0,0,0,0\n"
                                    "labelMargin 10,10\n"
                                    "labelLineH 0\n"
                                    "axisLabelMargin 8,8\n"
                                    "xAxisLabel \"A\" 5,8\n"
                                    "yAxisLabel \"A\" 8,5\n"
                                    "-\n"
                                    "refLabelDim 10,16\n"
                                    "dataMargin 0,0\n"
                                    "minPlot 50,72\n" // 16 + 4 a category; 60 + 12
                                    "chart 300,200\n"
                                    "pieLabelH 0\n"
                                    "-\n"
                                    "titleBox 137,0,162,12\n"
                                    "labelBox 0,0,0,0\n"
                                    "plotBox 0,18,300,200\n"
                                    "chart 300,200\n"
                                    "-\n"
                                    "yAxisBox 0,18,44,150\n"    // 10 + 8 + 10 + 8 + 8 wide
                                    "xAxisBox 44,150,300,200\n" // 10 + 8 + 16 + 8 + 8 high
                                    "-\n"
                                    // "30" and a half: 30; 256 / 30 = 8; 1; step 2, 2 of them; 4 fit; (256 - 15) / 4
                                    "x divisions 4,60,1\n"
                                    "y divisions 0,0,0\n"
                                    "zeroDivs 0\n"
                                    "scaleLabelDim 10,16\n"
                                    "-\n"
                                    "x divisions 4,60,1\n"
                                    "y divisions 3,44,22\n"
                                    "zeroDivs 0\n"
                                    "scaleLabelDim 10,16\n"
                                    "-\n"
                                    "axisLen 240,132\n"
                                    "yAxisBox 0,18,44,150\n"
                                    "xAxisBox 44,150,284,200\n"
                                    "-\n"
                                    "series 0:\n"
                                    "series 1: 44,128 105,128 165,84 225,40 44,40\n");
}

TEST(WholeScatter, OneCellAndEqualValues)
{
    TestChart chart(kTypeScatter, 100, 100);
    chart.SetCategories("A", {"A"});
    chart.AddSeries("A", 1, {7});
    chart.AddSeries("B", 2, {7});
    EXPECT_EQ(_WholeLayout(&chart), "-\n"
                                    "titleDim 15,8\n"
                                    "titleMargin 5,2\n"
                                    "titleBox 0,0,25,12\n"
                                    "-\n"
                                    "hasLabelBox 1\n"
                                    "labelBox 0,0,30,40\n"
                                    "labelMargin 5,5\n"
                                    "labelLineH 10\n"
                                    "axisLabelMargin 8,8\n"
                                    "-\n"
                                    "refLabelDim 5,8\n"
                                    "dataMargin 0,0\n"
                                    "minPlot 25,50\n" // 21 + 4
                                    "chart 100,100\n"
                                    "pieLabelH 0\n"
                                    "-\n"
                                    "titleBox 37,0,62,12\n"
                                    "labelBox 70,30,100,70\n"
                                    "plotBox 0,18,64,100\n"
                                    "chart 100,100\n"
                                    "-\n"
                                    "yAxisBox 0,18,23,79\n"
                                    "xAxisBox 23,79,64,100\n"
                                    "-\n"
                                    "x divisions 0,0,0\n"
                                    "y divisions 2,26,5\n" // 61 / 16 = 3; 7 / 3 -> 3; 5; (4 + 7) / 5 = 2; 53 / 2
                                    "zeroDivs 0\n"
                                    "scaleLabelDim 10,8\n"
                                    "-\n"
                                    "x divisions 1,41,13\n"
                                    "y divisions 2,26,5\n"
                                    "zeroDivs 0\n"
                                    "scaleLabelDim 10,8\n"
                                    "-\n"
                                    "axisLen 41,52\n"
                                    "yAxisBox 0,27,23,79\n"
                                    "xAxisBox 23,79,64,100\n"
                                    "-\n"
                                    "series 0:\n"
                                    "series 1: 36,79 36,43 36,80\n" // 36.4 + 0.5
                                    "series 2: 49,79 49,43 49,80\n");
}

TEST(WholeArea, LegendInTheBottomRightCorner)
{
    TestChart chart(kTypeArea, 120, 100);
    chart.SetCategories("A", {"A", "B", "C"});
    chart.AddSeries("A", 1, {1, 2, 1});
    chart.AddSeries("B", 2, {4, 4, 4});
    chart.set.labelBoxPos = kPosBottom | kPosRight;
    EXPECT_EQ(_WholeLayout(&chart), "-\n"
                                    "titleDim 15,8\n"
                                    "titleMargin 5,2\n"
                                    "titleBox 0,0,25,12\n"
                                    "-\n"
                                    "hasLabelBox 1\n"
                                    "labelBox 0,0,30,40\n"
                                    "labelMargin 5,5\n"
                                    "labelLineH 10\n"
                                    "axisLabelMargin 8,8\n"
                                    "-\n"
                                    "refLabelDim 5,8\n"
                                    "dataMargin 0,0\n"
                                    "minPlot 75,50\n" // 21 a category; 63 + 12
                                    "chart 120,100\n"
                                    "pieLabelH 0\n"
                                    "-\n"
                                    "titleBox 47,0,72,12\n"
                                    "labelBox 90,74,120,114\n"
                                    "plotBox 0,18,84,114\n" // 100 - 18 - 46 = 36 for 50: 14 higher
                                    "chart 120,114\n"
                                    "-\n"
                                    "yAxisBox 0,18,23,93\n"
                                    "xAxisBox 23,93,84,114\n"
                                    "-\n"
                                    "x divisions 0,0,0\n"
                                    "y divisions 4,16,1\n" // 75 / 16 = 4; 1; 2 steps of 2; 4 fit; 67 / 4
                                    "zeroDivs 0\n"
                                    "scaleLabelDim 5,8\n"
                                    "-\n"
                                    "x divisions 3,20,6\n"
                                    "y divisions 4,16,1\n"
                                    "zeroDivs 0\n"
                                    "scaleLabelDim 5,8\n"
                                    "-\n"
                                    "axisLen 60,64\n"
                                    "yAxisBox 0,29,23,93\n"
                                    "xAxisBox 23,93,83,114\n"
                                    "-\n"
                                    "series 0:\n"
                                    "series 1: 29,93 29,77 49,61 69,77 69,94\n"
                                    "series 2: 35,93 35,29 55,29 75,29 75,94\n");
}

TEST(WholeArea, HorizontalWithANegativeSeriesAndTheTitleBelow)
{
    TestChart chart(kTypeArea, 120, 100);
    chart.SetCategories("A", {"A"});
    chart.AddSeries("A", 1, {-3});
    chart.AddSeries("B", 2, {6});
    chart.set.chartFlags = kChartHorizontal;
    chart.set.titleBoxPos = kPosBottom | kPosCenter;
    EXPECT_EQ(_WholeLayout(&chart), "-\n"
                                    "titleDim 15,8\n"
                                    "titleMargin 5,2\n"
                                    "titleBox 0,0,25,12\n"
                                    "-\n"
                                    "hasLabelBox 1\n"
                                    "labelBox 0,0,30,40\n"
                                    "labelMargin 5,5\n"
                                    "labelLineH 10\n"
                                    "axisLabelMargin 8,8\n"
                                    "-\n"
                                    "refLabelDim 5,8\n"
                                    "dataMargin 0,0\n"
                                    "minPlot 50,25\n" // 21 + 4
                                    "chart 120,100\n"
                                    "pieLabelH 0\n"
                                    "-\n"
                                    "titleBox 47,88,72,100\n"
                                    "labelBox 90,30,120,70\n"
                                    "plotBox 0,0,84,82\n"
                                    "chart 120,100\n"
                                    "-\n"
                                    "yAxisBox 0,0,18,61\n" // 5 + 8 + 5 wide
                                    "xAxisBox 18,61,84,82\n"
                                    "-\n"
                                    // "90" and a half: 15; 66 / 15 = 4; 9 / 4 -> 3; 5; 7 / 5 + 10 / 5 = 1 + 2
                                    "x divisions 3,19,5\n" // (66 - 7) / 3
                                    "y divisions 0,0,0\n"
                                    "zeroDivs 1\n"
                                    "scaleLabelDim 10,8\n" // "15"
                                    "-\n"
                                    "x divisions 3,19,5\n"
                                    "y divisions 1,61,20\n"
                                    "zeroDivs 1\n"
                                    "scaleLabelDim 10,8\n"
                                    "-\n"
                                    "axisLen 57,61\n"
                                    "yAxisBox 0,0,18,61\n"
                                    "xAxisBox 18,61,75,82\n"
                                    "-\n"
                                    "series 0:\n"
                                    "series 1: 37,41 27,41 37,41\n"   // -11.4 + 0.5 cut to -10
                                    "series 2: 37,21 61,21 37,21\n"); // 22.8 + 0.5 cut to 23, and one more
}

TEST(WholeArea, StackedWithTitleAndLegendAtTheTopCentre)
{
    TestChart chart(kTypeStackedArea, 80, 80);
    chart.SetCategories("A", {"A", "B", "C", "A"});
    chart.AddSeries("A", 1, {1, 1, 1, 1});
    chart.AddSeries("B", 2, {4, 4, 4, 4});
    chart.AddSeries("C", 3, {9, 9, 9, 9});
    chart.set.labelBoxPos = kPosTop | kPosCenter;
    EXPECT_EQ(_WholeLayout(&chart), "-\n"
                                    "titleDim 15,8\n"
                                    "titleMargin 5,2\n"
                                    "titleBox 0,0,25,12\n"
                                    "-\n"
                                    "hasLabelBox 1\n"
                                    "labelBox 0,0,90,20\n" // 25 * 3 + 15
                                    "labelMargin 5,5\n"
                                    "labelLineH 10\n"
                                    "axisLabelMargin 8,8\n"
                                    "-\n"
                                    "refLabelDim 5,8\n"
                                    "dataMargin 0,0\n"
                                    "minPlot 67,50\n" // 14 a category; 56 + 11
                                    "chart 80,80\n"
                                    "pieLabelH 0\n"
                                    "-\n"
                                    "titleBox 32,0,57,12\n"
                                    "labelBox 0,18,90,38\n" // as wide as the image
                                    "plotBox 0,44,90,94\n"  // 80 - 18 - 26 = 36 for 50: 14 higher
                                    "chart 90,94\n"
                                    "-\n"
                                    "yAxisBox 0,44,23,73\n"
                                    "xAxisBox 23,73,90,94\n"
                                    "-\n"
                                    "x divisions 0,0,0\n"
                                    "y divisions 1,21,10\n" // 29 / 16 = 1; 9 -> 10; (9 + 9) / 10 = 1; 29 - 8
                                    "zeroDivs 0\n"
                                    "scaleLabelDim 10,8\n"
                                    "-\n"
                                    "x divisions 4,16,4\n"
                                    "y divisions 1,21,10\n"
                                    "zeroDivs 0\n"
                                    "scaleLabelDim 10,8\n"
                                    "-\n"
                                    "axisLen 64,21\n"
                                    "yAxisBox 0,52,23,73\n"
                                    "xAxisBox 23,73,87,94\n"
                                    "-\n"
                                    "series 0:\n"
                                    "series 1: 27,73 27,71 43,71 59,71 75,71 75,74\n"   // 2.1
                                    "series 2: 31,73 31,65 47,65 63,65 79,65 79,74\n"   // 8.4
                                    "series 3: 35,73 35,54 51,54 67,54 83,54 83,74\n"); // 18.9 + 0.5
}

// Pies have the first four steps only.
static std::string _WholePie(TestChart *chart)
{
    std::string text;
    for (const Step step : {Step::kTitleBox, Step::kLabelBox, Step::kSize, Step::kPlaced})
    {
        text += chart->After(step);
    }
    return text;
}

TEST(WholePie, OneSeriesOfThreeCells)
{
    TestChart chart(kTypePie, 100, 100);
    chart.SetCategories("A", {"A", "BB", "CCC"});
    chart.AddSeries("A", 1, {1, 2, 3});
    EXPECT_EQ(_WholePie(&chart), "titleDim 15,8\n"
                                 "titleMargin 5,2\n"
                                 "titleBox 0,0,25,12\n"
                                 "hasLabelBox 1\n"
                                 "labelBox 0,0,40,60\n" // 15 + 10 + 15; 30 + 20 + 10
                                 "labelMargin 5,5\n"
                                 "labelLineH 10\n"
                                 "axisLabelMargin 0,0\n"
                                 "refLabelDim 0,0\n"
                                 "dataMargin 0,0\n"
                                 "minPlot 96,96\n" // 50 + 30 = 80 and 2 * 15 + 50 = 80, a fifth more
                                 "chart 100,100\n"
                                 "pieLabelH 15\n"
                                 "titleBox 58,0,83,12\n"
                                 "labelBox 102,27,142,87\n"
                                 "plotBox 0,18,96,114\n" // 100 - 18 = 82 for 96; 100 - 46 = 54 for 96
                                 "chart 142,114\n");
}

TEST(WholePie, TwoSeriesSideBySideInALargeFont)
{
    TestChart chart(kTypePie, 100, 100);
    chart.SetCategories("A", {"A", "B"});
    chart.AddSeries("AAAA", 1, {1, 2});
    chart.AddSeries("B", 2, {1, 2});
    chart.SelectCells(0, 1);
    chart.data.series[2].pieScale = 1.5;
    chart.set.chartFlags = kChartHorizontal;
    chart.set.labelFontSize = 16;
    chart.set.titleBoxPos = kPosBottom | kPosLeft;
    chart.set.labelBoxPos = kPosBottom | kPosCenter;
    EXPECT_EQ(_WholePie(&chart), "titleDim 15,8\n"
                                 "titleMargin 5,2\n"
                                 "titleBox 0,0,25,12\n"
                                 "hasLabelBox 1\n"
                                 "labelBox 0,0,120,40\n" // (30 + 20) * 2 + 20; 20 + 20
                                 "labelMargin 10,10\n"
                                 "labelLineH 20\n"
                                 "axisLabelMargin 0,0\n"
                                 "refLabelDim 0,0\n"
                                 "dataMargin 0,0\n"
                                 "minPlot 234,177\n" // 15 + 65 + 115 = 195, 195 + 39; 2 * 24 + 100 = 148, 148 + 29
                                 "chart 234,177\n"
                                 "pieLabelH 24\n" // 2 * 4 + 16
                                 "titleBox 0,229,25,241\n"
                                 "labelBox 57,183,177,223\n" // at 201, then up by 18
                                 "plotBox 0,0,234,177\n"
                                 "chart 234,241\n");
}

TEST(WholePie, ARangeOfCellsASeriesLeftOutAndATinyPie)
{
    TestChart chart(kTypePie, 50, 50);
    chart.SetCategories("A", {"AAAA", "B", "C"});
    chart.AddSeries("AA", 1, {1, 2, 3});
    chart.AddSeries("BBBB", 2, {1, 2, 3});
    chart.AddSeries("C", 3, {1, 2, 3});
    chart.Build();
    chart.data.series[2].flags &= ~kSeriesGraphedBit;
    chart.SelectCells(1, 2);
    chart.data.series[3].pieScale = 0.4; // rounds to 0
    chart.set.titleBoxPos = kPosSide | kPosLeft;
    chart.set.titleBoxFlags = kBoxShadow;
    chart.set.labelBoxPos = kPosTop | kPosCenter;
    EXPECT_EQ(_WholePie(&chart), "titleDim 8,15\n"
                                 "titleMargin 5,2\n"
                                 "titleBox 0,0,21,22\n"
                                 "hasLabelBox 1\n"
                                 "labelBox 0,0,60,20\n" // (15 + 10) * 2 + 10
                                 "labelMargin 5,5\n"
                                 "labelLineH 10\n"
                                 "axisLabelMargin 0,0\n"
                                 "refLabelDim 0,0\n"
                                 "dataMargin 0,0\n"
                                 "minPlot 96,114\n" // 50 + 30, a fifth more; 3 * 15 + 50 = 95, 95 + 19
                                 "chart 96,114\n"
                                 "pieLabelH 15\n"
                                 "titleBox 0,59,21,81\n"
                                 "labelBox 18,0,78,20\n"
                                 "plotBox 27,26,96,140\n" // 114 - 26 = 88 for 114: 26 higher
                                 "chart 96,140\n");
}

// Axis boxes

TEST(AxisBoxes, LargerAbsoluteValueIsMeasured)
{
    const struct
    {
        double min;
        double max;
        int32_t width;
    } cases[] = {
        {-100, 99, 4 + 4 * 5},  // "-1000"
        {-99, 100, 4 * 5},      // "1000"
        {-100, 100, 4 + 4 * 5}, // a tie goes to the smaller
        {0.4, 0.6, 2 * 5},      // "10"
        {0, 1e300, 302 * 5},
    };
    for (const auto &c : cases)
    {
        TestChart chart(kTypeBar, 0, 0);
        chart.data.minValue = c.min;
        chart.data.maxValue = c.max;
        chart.set.yAxisFlags = kAxisScaleLabels;
        GetAxisBoxesDim(&chart.data, &chart.set);
        EXPECT_EQ(chart.set.yAxisBox.right, c.width) << c.min << " to " << c.max;
    }
}

TEST(AxisBoxes, WithoutLabelsTicksAndTitlesAreTheMargins)
{
    TestChart chart(kTypeBar, 0, 0);
    chart.set.plotBox = {10, 20, 110, 120};
    chart.set.labelMarginX = 3;
    chart.set.labelMarginY = 4;
    chart.set.xAxisFlags = chart.set.yAxisFlags = 0;
    GetAxisBoxesDim(&chart.data, &chart.set);
    EXPECT_EQ(LayoutText(chart.data, chart.set, Step::kAxisBoxes), "yAxisBox 10,20,13,116\nxAxisBox 13,116,110,120\n");
}

// The scale, on an axis of a given length and the smallest font, whose labels take 2 * 6 pixels

static void _GetScaleOf(ChartSet *set, double min, double max, int32_t length)
{
    TestChart chart(kTypeBar, 0, 0);
    chart.set.labelFontSize = 6;
    chart.set.yAxisBox = {0, 0, 0, length};
    chart.data.minValue = min;
    chart.data.maxValue = max;
    GetScale(&chart.data, &chart.set);
    *set = chart.set;
}

static int32_t _StepFor(double range)
{
    ChartSet set = {};
    _GetScaleOf(&set, 0, range, 1); // a single division
    return set.yStep;
}

TEST(Scale, StepIsTheSmallestHalvedPowerOfTenThatIsEnough)
{
    EXPECT_EQ(_StepFor(130), 250);
    EXPECT_EQ(_StepFor(125), 250);
    EXPECT_EQ(_StepFor(124), 125);
    EXPECT_EQ(_StepFor(7), 10);
    EXPECT_EQ(_StepFor(5), 10);
    EXPECT_EQ(_StepFor(4), 5);
    EXPECT_EQ(_StepFor(999), 1000);
    EXPECT_EQ(_StepFor(500), 1000);
    EXPECT_EQ(_StepFor(499), 500);
    EXPECT_EQ(_StepFor(61), 100);
    EXPECT_EQ(_StepFor(30), 50);
    EXPECT_EQ(_StepFor(13), 25); // 12 < 25 - 13 does not hold
    EXPECT_EQ(_StepFor(12), 12); // 12 < 25 - 12 does
    EXPECT_EQ(_StepFor(1000), 1250);
}

TEST(Scale, OfAHundredAndThirtyOnThreeHundredPixels)
{
    TestChart chart(kTypeBar, 0, 0);
    chart.set.yAxisBox = {0, 0, 0, 300};
    chart.data.minValue = 0;
    chart.data.maxValue = 130;
    GetScale(&chart.data, &chart.set);
    // 300 / 16 = 18; 130 / 18 -> 8; step 10; 139 / 10 = 13; (300 - 8) / 13 = 22; "130"
    EXPECT_EQ(LayoutText(chart.data, chart.set, Step::kScale), "x divisions 0,0,0\n"
                                                               "y divisions 13,22,10\n"
                                                               "zeroDivs 0\n"
                                                               "scaleLabelDim 15,8\n");
}

TEST(Scale, OfWholeUnitsDropsTheUnitsAboveTheRange)
{
    ChartSet set = {};
    _GetScaleOf(&set, 0, 3, 12 * 4 + 1); // 4 divisions fit: step 2, two of them, four units; 4 is not above 3 + 1
    EXPECT_EQ(set.yStep, 1);
    EXPECT_EQ(set.yDivs, 4);
    _GetScaleOf(&set, -1, 1, 12 * 4 + 1); // one step of 2 on each side, four units; 4 is above 2 + 1
    EXPECT_EQ(set.yDivs, 3);
    EXPECT_EQ(set.zeroDivs, 1);
    _GetScaleOf(&set, 0, 3, 12 * 3 + 1); // only 3 divisions fit
    EXPECT_EQ(set.yStep, 2);
    EXPECT_EQ(set.yDivs, 2);
}

TEST(Scale, NegativeValuesOnlyRunDownFromZero)
{
    ChartSet set = {};
    _GetScaleOf(&set, -130, -20, 12 * 18); // 130 / 18 -> 8; step 10; (9 + 130) / 10
    EXPECT_EQ(set.yDivs, 13);
    EXPECT_EQ(set.zeroDivs, 13);
}

TEST(Scale, LabelRoomIsComparedStrictly)
{
    ChartSet set = {};
    _GetScaleOf(&set, 0, 7, 12); // as long as one label's room: one division
    EXPECT_EQ(set.yDivs, 1);
    EXPECT_EQ(set.yDivH, 12 - 6);
    _GetScaleOf(&set, 0, 7, -30); // no room at all: the rule as it stands, (-30 - 6) / 1
    EXPECT_EQ(set.yDivs, 1);
    EXPECT_EQ(set.yDivH, -36);
}

TEST(Scale, TopBeyondThirtyTwoBitsHasTheRightLabel)
{
    TestChart chart(kTypeBar, 0, 0);
    chart.set.yAxisBox = {0, 0, 0, 16 * 10 + 1};
    chart.data.minValue = 0;
    chart.data.maxValue = 12e9;
    GetScale(&chart.data, &chart.set);
    // 1.2e9 a division: 10^10 halved three times; (1.25e9 - 1 + 12e9) / 1.25e9 = 10; "12500000000" is 11 digits
    EXPECT_EQ(chart.set.yStep, 1250000000);
    EXPECT_EQ(chart.set.yDivs, 10);
    EXPECT_EQ(chart.set.scaleLabelDim.x, 11 * 5);
}

static ChildResult _ScaleInChild(double min, double max)
{
    return RunInChild(
        [min, max]
        {
            ChartSet set = {};
            _GetScaleOf(&set, min, max, 12 * 10 + 1);
        });
}

TEST(Scale, WithoutAnythingAboveZeroEndsTheRun)
{
    for (const double max : {0.0, 0.9})
    {
        const ChildResult result = _ScaleInChild(0, max); // step 2; (1 + 0.9) / 2 is 0 divisions
        EXPECT_EQ(result.status, 255);
        EXPECT_NE(result.out.find("Not enough data to generate chart..."), std::string::npos) << result.out;
    }
    EXPECT_EQ(_ScaleInChild(0, 1).status, 0);
    EXPECT_EQ(_ScaleInChild(99999999.9, 0).status, 255) << "no series at all";
}

TEST(Scale, BeyondThirtyTwoBitsAStepEndsTheRun)
{
    const char *text = "Values too large to chart:\na division of the scale would stand for more than 2147483647\n";
    for (const double max : {1.5e10, 1e18, 1e19, 1e300, HUGE_VAL})
    {
        const ChildResult result = _ScaleInChild(0, max);
        EXPECT_EQ(result.status, 255) << max;
        EXPECT_NE(result.out.find(text), std::string::npos) << result.out;
    }
    EXPECT_EQ(_ScaleInChild(-1.7e308, 1.7e308).status, 255);
    EXPECT_EQ(_ScaleInChild(0, 12.4e9).status, 0); // 1.24e9 a division: 1.25e9 is enough and fits
}

TEST(Scale, OfNumbersThatAreNoneEndsTheRun)
{
    EXPECT_EQ(_ScaleInChild(0, NAN).status, 255);
}

// Reference scale and trimming

TEST(RefScale, NeverDividesByZero)
{
    TestChart chart(kTypeBar, 0, 0);
    chart.set.xAxisBox = {0, 0, 100, 10};
    chart.set.nGraphedCells = 0;
    chart.set.nGraphedSeries = -1;
    GetRefScale(&chart.data, &chart.set);
    EXPECT_EQ(chart.set.xDivs, 0);
    EXPECT_EQ(chart.set.xDivW, 100);
    EXPECT_EQ(chart.set.xStep, 100);
}

TEST(Trim, ClampsWhatIsBeyondThirtyTwoBits)
{
    ChartSet set = {};
    set.xDivs = set.yDivs = set.xDivW = INT32_MAX;
    set.yDivH = INT32_MIN;
    TrimAxisBoxes(&set);
    EXPECT_EQ(set.xAxisLen, INT32_MAX);
    EXPECT_EQ(set.xAxisBox.right, INT32_MAX);
    EXPECT_EQ(set.yAxisLen, INT32_MIN);
    EXPECT_EQ(set.yAxisBox.top, INT32_MAX);
}

// Data points

TEST(DataPoints, OfAbsurdValuesAreClamped)
{
    TestChart chart(kTypeBar, 0, 0);
    chart.SetCategories("A", {"A", "A", "A"});
    chart.AddSeries("A", 1, {1e300, -1e300, NAN});
    chart.Build();
    chart.set.yStep = 1;
    chart.set.yDivH = 10;
    GetDataPoints(&chart.data, &chart.set);
    EXPECT_EQ(LayoutText(chart.data, chart.set, Step::kPoints),
              "series 0:\nseries 1: 0,0 0,-2147483647 0,2147483647 0,0 0,1\n");
}

TEST(DataPoints, WithoutCellsAreTheBaseLineOnly)
{
    TestChart chart(kTypeBar, 0, 0);
    chart.AddSeries("A", 1, {});
    chart.Build();
    GetDataPoints(&chart.data, &chart.set);
    EXPECT_EQ(LayoutText(chart.data, chart.set, Step::kPoints), "series 0:\nseries 1: 0,0 0,1\n");
}

TEST(DataPoints, WithoutMemoryEndTheRun)
{
    const char *texts[] = {"\nOut of memory trying to allocate\n16 bytes for an arrray of pointers to Point (sic)\n",
                           "\nOut of memory trying to allocate\n32 bytes for an array of points\n"};
    for (int32_t n = 1; n <= 2; n++)
    {
        const ChildResult result = RunInChild(
            [n]
            {
                TestChart chart(kTypeBar, 100, 100);
                chart.SetCategories("A", {"A", "A"});
                chart.AddSeries("A", 1, {1, 1});
                chart.Run(Step::kTrimmed);
                FailAllocation(n);
                GetDataPoints(&chart.data, &chart.set);
            });
        EXPECT_EQ(result.status, 255);
        EXPECT_NE(result.out.find(texts[n - 1]), std::string::npos) << result.out;
    }
}

// The image

TEST(ChartImage, IsFilledWithTheTransparentBackground)
{
    TestChart chart(kTypeBar, 0, 0);
    chart.set.chartW = 3;
    chart.set.chartH = 2;
    chart.set.backgroundColor = 7;
    InitChartGraph(&chart.set);
    EXPECT_EQ(chart.At(0, 0), 7);
    EXPECT_EQ(chart.At(2, 1), 7);
    EXPECT_EQ(chart.At(3, 1), -1);
    SetImage(chart.set.image); // brings the cached colours back to the record
    EXPECT_EQ(chart.set.image->colorTable->count, 1U);
    EXPECT_EQ(chart.set.image->colorTable->capacity, 256U);
    EXPECT_EQ(chart.set.image->colorTable->thruColor, 7);
    EXPECT_EQ(chart.set.image->colorTable->fThruColor, 1);
}

TEST(ChartImage, WithoutMemoryEndsTheRun)
{
    const struct
    {
        int32_t width;
        int32_t height;
        const char *text;
    } cases[] = {
        {30, 20, "Not enough memory to draw this chart.\n600 bytes needed.\n"},
        {65535, 65535, "Not enough memory to draw this chart.\n4294836225 bytes needed.\n"},
    };
    for (const auto &c : cases)
    {
        const ChildResult result = RunInChild(
            [&c]
            {
                ChartSet set = {};
                set.chartW = c.width;
                set.chartH = c.height;
                FailAllocation(1);
                InitChartGraph(&set);
            });
        EXPECT_EQ(result.status, 255);
        EXPECT_NE(result.out.find(c.text), std::string::npos) << result.out;
    }
}

// Missing records

TEST(ScaleAndPoints, DoNothingWithoutRecords)
{
    TestChart chart(kTypeBar, 0, 0);
    chart.data.maxValue = 1;
    void (*const steps[])(ChartData *, ChartSet *) = {GetAxisBoxesDim, GetScale, GetRefScale, GetDataPoints};
    for (const auto step : steps)
    {
        step(nullptr, &chart.set);
        step(&chart.data, nullptr);
    }
    TrimAxisBoxes(nullptr);
    InitChartGraph(nullptr);
    chart.data.buffer = nullptr;
    for (const auto step : steps)
    {
        step(&chart.data, &chart.set);
    }
    EXPECT_EQ(chart.set.yDivs, 0);
    EXPECT_EQ(chart.set.pointsPerSeries, nullptr);
    EXPECT_EQ(chart.set.xAxisBox.right, 0);
}
