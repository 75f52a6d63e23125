// Covers qbgrchrt_boxes.cpp: frames and shadows, where the title's text goes, legends in rows and columns.
//
// Pictures are small because the boxes are set by hand; where text would fill them, the text is drawn a second time by
// DrawText at the place worked out here, and the two images are compared.

#include "chart_fixture.h"
#include "qbgrchrt_state.h"

#include <gtest/gtest.h>

// A chart with an empty image of the given size, no title text and one series "A" of colour 30 on two cells.
class BoxChart : public TestChart
{
public:
    BoxChart(int32_t width, int32_t height) : TestChart(kTypeBar, width, height)
    {
        SetTitle("");
        SetCategories("A", {"1", "22"});
        AddSeries("A", 30, {1, 1});
        Build();
        InitChartGraph(&set);
        SetPenColor(kColorFrame);
    }

    // What the image would be with only this text in it.
    static std::string TextAt(int32_t width, int32_t height, const char *text, int32_t x, int32_t y,
                              int32_t orientation, int32_t angle)
    {
        BoxChart other(width, height);
        _SelectTitleFont(&other.set);
        SetFontOrientation(orientation);
        if (angle != 0)
        {
            SetFontAngle(angle);
        }
        MovePenTo(x, y);
        DrawText(text);
        SetFontOrientation(0);
        return other.Picture();
    }
};

TEST(TitleDecoration, FrameAloneLeavesTheInside)
{
    BoxChart chart(8, 6);
    chart.set.titleBox = {1, 1, 6, 5};
    chart.set.titleBoxFlags = kBoxFrame;
    ChartDrawTitle(&chart.data, &chart.set);
    EXPECT_EQ(chart.Picture(), "........\n"
                               ".#####..\n"
                               ".#...#..\n"
                               ".#...#..\n"
                               ".#####..\n"
                               "........\n");
    EXPECT_EQ(chart.set.titleBox.right, 6);
}

TEST(TitleDecoration, ShadowAloneFillsFramesAndTakesThreePixels)
{
    BoxChart chart(11, 9);
    chart.set.titleBox = {1, 1, 10, 8};
    chart.set.titleBoxFlags = kBoxShadow;
    ChartDrawTitle(&chart.data, &chart.set);
    EXPECT_EQ(chart.Picture(), "...........\n"
                               ".######....\n"
                               ".#ffff#....\n"
                               ".#ffff#....\n"
                               ".######sss.\n"
                               "....ssssss.\n"
                               "....ssssss.\n"
                               "....ssssss.\n"
                               "...........\n");
    EXPECT_EQ(LayoutText(chart.data, chart.set, Step::kTitleBox), "titleDim 0,0\ntitleMargin 0,0\ntitleBox 1,1,7,5\n");
}

TEST(TitleDecoration, WithoutFlagsDrawsNothing)
{
    BoxChart chart(8, 6);
    chart.set.titleBox = {1, 1, 6, 5};
    ChartDrawTitle(&chart.data, &chart.set);
    EXPECT_EQ(chart.Picture().find('#'), std::string::npos);
}

TEST(TitleText, OnTopStandsAtItsMargins)
{
    BoxChart chart(60, 40);
    chart.SetTitle("AB\nC");
    chart.set.titleBox = {10, 5, 50, 35};
    chart.set.titleMarginX = 5;
    chart.set.titleMarginY = 2;
    ChartDrawTitle(&chart.data, &chart.set);
    EXPECT_EQ(chart.Picture(), BoxChart::TextAt(60, 40, "AB\nC", 10 + 5, 5 + 2 + 7, 0, 0));
    Point dim = {0, 0};
    GetTextDim("A", &dim);
    EXPECT_EQ(dim.y, 8) << "text is horizontal afterwards";
}

TEST(TitleText, AtTheLeftReadsUpwards)
{
    BoxChart chart(40, 60);
    chart.SetTitle("AB");
    chart.set.titleBoxPos = kPosSide | kPosLeft;
    chart.set.titleBox = {10, 5, 30, 55};
    chart.set.titleMarginX = 5;
    chart.set.titleMarginY = 2;
    ChartDrawTitle(&chart.data, &chart.set);
    EXPECT_EQ(chart.Picture(), BoxChart::TextAt(40, 60, "AB", 10 + 5 + 7, 55 - 2, 2, 0));
}

TEST(TitleText, AtTheRightReadsDownwards)
{
    BoxChart chart(40, 60);
    chart.SetTitle("AB");
    chart.set.titleBoxPos = kPosSide | kPosRight;
    chart.set.titleBox = {10, 5, 30, 55};
    chart.set.titleMarginX = 5;
    chart.set.titleMarginY = 2;
    ChartDrawTitle(&chart.data, &chart.set);
    EXPECT_EQ(chart.Picture(), BoxChart::TextAt(40, 60, "AB", 30 - 5 - 7, 5 + 2, 0, -90));
    Point dim = {0, 0};
    GetTextDim("A", &dim);
    EXPECT_EQ(dim.y, 8);
}

// Legends: swatches of 4 pixels, margins 2 and 1, labels empty so that only swatches show.

static void _SetLegend(TestChart *chart, int32_t pos)
{
    chart->set.hasLabelBox = 1;
    chart->set.labelBoxPos = pos;
    chart->set.labelBox = {1, 0, 20, 16};
    chart->set.labelMarginX = 2;
    chart->set.labelMarginY = 1;
    chart->set.labelLineH = 4;
}

class LegendChart : public TestChart
{
public:
    explicit LegendChart(int32_t pos) : TestChart(kTypeBar, 30, 16)
    {
        SetCategories("A", {"", ""});
        AddSeries("", 30, {1, 1});
        AddSeries("", 60, {1, 1});
        AddSeries("", 90, {1, 1});
        Build();
        _SetLegend(this, pos);
        InitChartGraph(&set);
        SetPenColor(kColorFrame);
        data.series[2].flags &= ~kSeriesGraphedBit; // takes no entry and no space
    }
};

TEST(LegendDrawing, AtTheSideIsAColumn)
{
    LegendChart chart(kPosSide | kPosRight);
    ChartDrawLabelBox(&chart.data, &chart.set);
    // swatches at (1 + 2, 0 + 1) and 2 * 4 lower
    EXPECT_EQ(chart.Picture(0, 0, 9, 14), ".........\n"
                                          "...####..\n"
                                          "...#AA#..\n"
                                          "...#AA#..\n"
                                          "...####..\n"
                                          ".........\n"
                                          ".........\n"
                                          ".........\n"
                                          ".........\n"
                                          "...####..\n"
                                          "...#CC#..\n"
                                          "...#CC#..\n"
                                          "...####..\n"
                                          ".........\n");
}

TEST(LegendDrawing, AtTheBottomCentreIsARow)
{
    LegendChart chart(kPosBottom | kPosCenter);
    chart.data.series[1].labelDim.x = 3;
    ChartDrawLabelBox(&chart.data, &chart.set);
    // the second swatch 3 * 2 + 4 + 3 = 13 farther
    EXPECT_EQ(chart.Picture(0, 0, 22, 6), "......................\n"
                                          "...####.........####..\n"
                                          "...#AA#.........#CC#..\n"
                                          "...#AA#.........#CC#..\n"
                                          "...####.........####..\n"
                                          "......................\n");
}

TEST(LegendDrawing, HasFrameAndShadowLikeTheTitle)
{
    LegendChart chart(kPosSide | kPosRight);
    chart.set.labelBoxFlags = kBoxShadow | kBoxFrame;
    ChartDrawLabelBox(&chart.data, &chart.set);
    EXPECT_EQ(chart.set.labelBox.right, 17);
    EXPECT_EQ(chart.set.labelBox.bottom, 13);
    EXPECT_EQ(chart.At(1, 0), kColorFrame);
    EXPECT_EQ(chart.At(2, 1), kColorShadowFace);
    EXPECT_EQ(chart.At(19, 15), kColorShadow);
    EXPECT_EQ(chart.At(19, 2), 0) << "the shadow begins 3 pixels lower";
}

TEST(LegendDrawing, LabelsStandBesideTheirSwatches)
{
    BoxChart chart(60, 40);
    _SetLegend(&chart, kPosSide | kPosRight);
    chart.set.labelLineH = 10;
    ChartDrawLabelBox(&chart.data, &chart.set);
    // x 1 + 2 * 2 + 10, base line 0 + 1 + 7 - 8 / 2 + 10 / 2
    const std::string text = BoxChart::TextAt(60, 40, "A", 15, 9, 0, 0);
    const std::string got = chart.Picture();
    for (size_t i = 0; i < got.size(); i++)
    {
        const bool fSwatch = i % 61 >= 3 && i % 61 < 13; // columns of the swatch
        EXPECT_TRUE(fSwatch || got[i] == text[i]) << "column " << i % 61 << ", row " << i / 61;
    }
    EXPECT_NE(text.find('#'), std::string::npos);
}

TEST(LegendDrawing, NeedsALegend)
{
    LegendChart chart(kPosSide | kPosRight);
    chart.set.hasLabelBox = 0;
    chart.set.labelBoxFlags = kBoxShadow;
    ChartDrawLabelBox(&chart.data, &chart.set);
    ChartDrawPieLabelBox(&chart.data, &chart.set);
    EXPECT_EQ(chart.Picture().find_first_not_of(".\n"), std::string::npos);
    EXPECT_EQ(chart.set.labelBox.right, 20);
}

TEST(PieLegendDrawing, TakesTheColoursOfTheSlicesFromTheFirstDrawnCell)
{
    TestChart chart(kTypePie, 60, 10);
    chart.SetCategories("A", {"", "", "", ""});
    chart.AddSeries("A", 30, {1, 1, 1, 1});
    chart.SelectCells(1, 3);
    _SetLegend(&chart, kPosTop | kPosCenter);
    chart.data.series[0].cells[0].textDim.x = 50; // not drawn
    chart.data.series[0].cells[1].textDim.x = 1;
    InitChartGraph(&chart.set);
    SetPenColor(kColorFrame);
    ChartDrawPieLabelBox(&chart.data, &chart.set);
    // 3 * 2 + 4 and the text's width on: 3, 14, 24
    EXPECT_EQ(chart.Picture(0, 1, 30, 5), "...####.......####......####..\n"
                                          "...#00#.......#11#......#22#..\n"
                                          "...#00#.......#11#......#22#..\n"
                                          "...####.......####......####..\n");
}

TEST(PieLegendDrawing, ColoursWrapAfterSixteen)
{
    TestChart chart(kTypePie, 40, 200);
    chart.SetCategories("A", std::vector<std::string>(20, ""));
    chart.AddSeries("A", 30, std::vector<double>(20, 1));
    chart.Build();
    _SetLegend(&chart, kPosSide | kPosLeft);
    InitChartGraph(&chart.set);
    SetPenColor(kColorFrame);
    ChartDrawPieLabelBox(&chart.data, &chart.set);
    for (int32_t i = 0; i < 20; i++)
    {
        EXPECT_EQ(chart.At(4, 2 + 8 * i), (9 + 16 * i) % 256) << "entry " << i; // 9, 25, ..., 249, 9, ...
    }
}

TEST(Boxes, AreNotDrawnWithoutRecords)
{
    LegendChart chart(kPosSide | kPosRight);
    chart.set.titleBox = {0, 0, 9, 9};
    chart.set.titleBoxFlags = chart.set.labelBoxFlags = kBoxFrame;
    void (*const calls[])(ChartData *, ChartSet *) = {ChartDrawTitle, ChartDrawLabelBox, ChartDrawPieLabelBox};
    for (const auto call : calls)
    {
        call(nullptr, &chart.set);
        call(&chart.data, nullptr);
    }
    chart.data.buffer = nullptr;
    for (const auto call : calls)
    {
        call(&chart.data, &chart.set);
    }
    EXPECT_EQ(chart.Picture().find_first_not_of(".\n"), std::string::npos);
}

TEST(Boxes, MissingTextsDrawNothing)
{
    LegendChart chart(kPosSide | kPosRight);
    chart.data.title = nullptr;
    chart.data.series[1].label = nullptr;
    chart.data.series[0].cells[0].text = nullptr;
    ChartDrawTitle(&chart.data, &chart.set);
    ChartDrawLabelBox(&chart.data, &chart.set);
    EXPECT_EQ(chart.At(4, 2), 30);
    ChartDrawPieLabelBox(&chart.data, &chart.set);
    EXPECT_EQ(chart.At(4, 2), 9);
}
