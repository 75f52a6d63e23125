// charts.cpp - random charts keep what the layout promises, and the same chart gives the same bytes.
//
// What it does not promise is not held against it:
// - A title at a side counts in the chart's width the wrong way round, so that the plot can become narrower than its
//   smallest size, and legends beside it can reach over the edge of the image, over the title or over the plot.
// - A legend in a corner is counted in the chart's height though it stands beside the plot, so that there, too, the
// plot
//   can become too narrow, even of negative width.
// - A title above that pushes a legend at the side down pushes the plot's top down with it, but not its bottom.
// - Scale labels at the ends of an axis, axis titles, series labels and percentages of pies may be wider than the room
//   that is left for them.
// - Turned italic titles lean out of their box.
//
// QB_CHARTS says how many charts (5000 without it), QB_SEED where to begin.

#include "chart_fixture.h"
#include "qbgraph.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <functional>
#include <memory>
#include <random>

namespace
{

constexpr int32_t kGap = 6; // pixels between boxes

struct Dice
{
    std::mt19937 engine;

    int32_t roll(int32_t low, int32_t high)
    {
        return std::uniform_int_distribution<int32_t>(low, high)(engine);
    }

    bool chance(int32_t percent)
    {
        return roll(0, 99) < percent;
    }

    template <typename T>
    T oneOf(std::initializer_list<T> values)
    {
        return values.begin()[roll(0, static_cast<int32_t>(values.size()) - 1)];
    }

    std::string text(int32_t longest)
    {
        std::string text(static_cast<size_t>(roll(0, longest)), ' ');
        for (char &c : text)
        {
            c = static_cast<char>(roll(' ', '~'));
        }
        return text;
    }

    int32_t fontSize()
    {
        return chance(1) ? roll(31, 130) : roll(0, 30);
    }

    int32_t boxPos()
    {
        return oneOf({kPosTop | kPosLeft, kPosTop | kPosCenter, kPosTop | kPosRight, kPosSide | kPosLeft,
                      kPosSide | kPosRight, kPosBottom | kPosLeft, kPosBottom | kPosCenter, kPosBottom | kPosRight});
    }

    uint32_t axisFlags()
    {
        return static_cast<uint32_t>(roll(0, 7)) | oneOf({kTicksOutside, kTicksInside, kTicksMiddle});
    }
};

void rollSettings(Dice &dice, ChartSet &set)
{
    set.chartFlags = dice.chance(50) ? kChartHorizontal : 0;
    set.refDir = dice.roll(1, 2);
    set.titleFont = dice.roll(0, 2);
    set.labelFont = dice.roll(0, 2);
    set.dataFont = dice.roll(0, 2);
    set.axisLabelFont = dice.roll(0, 2);
    set.titleFontSize = dice.fontSize();
    set.labelFontSize = dice.fontSize();
    set.dataFontSize = dice.fontSize();
    set.axisLabelFontSize = dice.fontSize();
    set.titleFontStyle = dice.oneOf({0, 1, 2, 4});
    set.labelFontStyle = dice.oneOf({0, 1, 2, 4});
    set.dataFontStyle = dice.oneOf({0, 1, 2, 4});
    set.axisLabelFontStyle = dice.oneOf({0, 1, 2, 4});
    set.titleBoxFlags = static_cast<uint32_t>(dice.roll(0, 3));
    set.labelBoxFlags = static_cast<uint32_t>(dice.roll(0, 3));
    set.titleBoxPos = dice.boxPos();
    set.labelBoxPos = dice.boxPos();
    set.xAxisFlags = dice.axisFlags();
    set.yAxisFlags = dice.axisFlags();
    set.dataPos = dice.roll(0, 2);
    set.dataSymbol = dice.roll(0, 5);
    set.lineSize = dice.roll(1, 8);
    set.pieExplode = static_cast<uint32_t>(dice.oneOf({0, 1, 2, 4, 6}));
}

// Values of one kind for all series: all positive, all negative or mixed, small or large, whole or with fractions.
std::function<double()> rollKindOfValue(Dice &dice, bool fPie)
{
    const int32_t kind = fPie ? 0 : dice.roll(0, 2);
    const int32_t largest = dice.oneOf({1, 5, 40, 300, 20000, 3000000});
    const int32_t low = kind == 0 ? 0 : -largest;
    const int32_t high = kind == 1 ? 0 : largest;
    const double unit = dice.chance(50) ? 1 : 0.01;
    return [&dice, low, high, unit]
    {
        return dice.roll(low, high) + (unit < 1 ? dice.roll(0, 99) * unit : 0);
    };
}

std::unique_ptr<TestChart> makeChart(uint32_t seed)
{
    Dice dice = {std::mt19937(seed)};
    const int32_t type =
        dice.oneOf({kTypeBar, kTypePie, kTypeLine, kTypeScatter, kTypeArea, kTypeStackedBar, kTypeStackedArea});
    auto chart = std::make_unique<TestChart>(type, dice.roll(0, 700), dice.roll(0, 600));
    rollSettings(dice, chart->set);
    chart->SetTitle(dice.text(30) + (dice.chance(20) ? "\n" + dice.text(30) : ""));
    const int32_t nCells = dice.chance(2) ? dice.roll(30, 150) : dice.roll(1, 15);
    const int32_t longest = dice.oneOf({1, 6, 20});
    std::vector<std::string> texts(static_cast<size_t>(nCells));
    const bool fDates = dice.chance(30);
    for (size_t i = 0; i < texts.size(); i++)
    {
        texts[i] = fDates ? "Fri May " + std::to_string(i % 31 + 1) + " 1996" : dice.text(longest);
    }
    fDates ? chart->SetDates(texts) : chart->SetCategories(dice.text(longest), texts);
    const std::function<double()> rollValue = rollKindOfValue(dice, type == kTypePie);
    for (int32_t series = dice.roll(1, 5); series > 0; series--)
    {
        std::vector<double> values;
        std::generate_n(std::back_inserter(values), nCells, rollValue);
        values[0] = values[0] < 0 ? values[0] - 1 : values[0] + 1; // no chart without a division
        chart->AddSeries(dice.text(12), static_cast<uint8_t>(dice.roll(1, 230)), values);
    }
    chart->Build();
    chart->SelectCells(0, dice.roll(0, nCells - 1));
    return chart;
}

// The edge of the plot that a box pushes inwards.
enum class Edge
{
    kTop,
    kBottom,
    kLeft,
    kRight,
};

Edge titleEdge(const ChartSet &set)
{
    if ((set.titleBoxPos & kPosSide) != 0)
    {
        return (set.titleBoxPos & kPosLeft) != 0 ? Edge::kLeft : Edge::kRight;
    }
    return (set.titleBoxPos & kPosTop) != 0 ? Edge::kTop : Edge::kBottom;
}

Edge legendEdge(const ChartSet &set)
{
    if ((set.labelBoxPos & kPosCenter) != 0)
    {
        return (set.labelBoxPos & kPosTop) != 0 ? Edge::kTop : Edge::kBottom;
    }
    return (set.labelBoxPos & kPosLeft) != 0 ? Edge::kLeft : Edge::kRight;
}

bool isTitleAtSide(const ChartSet &set)
{
    return (set.titleBoxPos & kPosSide) != 0;
}

bool areOnSameSide(const ChartSet &set)
{
    return isTitleAtSide(set) && set.titleBoxPos == set.labelBoxPos;
}

int32_t distance(const Rectangle &a, const Rectangle &b)
{
    return std::max({b.left - a.right, a.left - b.right, b.top - a.bottom, a.top - b.bottom});
}

int32_t room(const Rectangle &plot, const Rectangle &box, Edge edge)
{
    switch (edge)
    {
    case Edge::kTop:
        return plot.top - box.bottom;
    case Edge::kBottom:
        return box.top - plot.bottom;
    case Edge::kLeft:
        return plot.left - box.right;
    default:
        return box.left - plot.right;
    }
}

int32_t widthOf(const Rectangle &rect)
{
    return rect.right - rect.left;
}

int32_t heightOf(const Rectangle &rect)
{
    return rect.bottom - rect.top;
}

void expectWithin(const Rectangle &inner, const Rectangle &outer, const char *what)
{
    EXPECT_LE(outer.left, inner.left) << what;
    EXPECT_LE(outer.top, inner.top) << what;
    EXPECT_GE(outer.right, inner.right) << what;
    EXPECT_GE(outer.bottom, inner.bottom) << what;
}

void expectBoxesApart(const ChartSet &set)
{
    const Rectangle image = {0, 0, set.chartW, set.chartH};
    expectWithin(set.titleBox, image, "title");
    // A legend in a corner next to a title at the same side takes the plot's edge over.
    const bool fTakenOver = isTitleAtSide(set) && set.hasLabelBox && titleEdge(set) == legendEdge(set);
    if (!fTakenOver || areOnSameSide(set))
    {
        EXPECT_GE(room(set.plotBox, set.titleBox, titleEdge(set)), kGap);
    }
    if (!set.hasLabelBox)
    {
        return;
    }
    EXPECT_GE(room(set.plotBox, set.labelBox, legendEdge(set)), kGap);
    if (!areOnSameSide(set))
    {
        expectWithin(set.labelBox, image, "legend");
    }
    if (!isTitleAtSide(set) || areOnSameSide(set))
    {
        EXPECT_GE(distance(set.titleBox, set.labelBox), kGap);
    }
}

// The smallest plot is promised to a title above or below and a legend that is not in a corner.
void expectRoomForPlot(const ChartSet &set)
{
    const bool fCorner = (set.labelBoxPos & kPosSide) == 0 && (set.labelBoxPos & kPosCenter) == 0;
    if (isTitleAtSide(set) || fCorner)
    {
        return;
    }
    EXPECT_GE(widthOf(set.plotBox), set.minPlotW);
    const bool fLegendAtSide = set.hasLabelBox && (set.labelBoxPos & kPosSide) != 0;
    const bool fPushedDown = fLegendAtSide && set.labelBox.top == set.titleBox.bottom + kGap;
    if (!fPushedDown)
    {
        EXPECT_GE(heightOf(set.plotBox), set.minPlotH);
    }
}

// The value axis in pixels: how long a division is and how much value it stands for.
struct ValueAxis
{
    int32_t divPixels;
    int32_t divValue;
};

bool isHorizontal(const ChartSet &set)
{
    return (set.chartFlags & kChartHorizontal) != 0;
}

ValueAxis valueAxis(const ChartSet &set)
{
    return isHorizontal(set) ? ValueAxis{set.xDivW, set.xStep} : ValueAxis{set.yDivH, set.yStep};
}

// Whether the plot had room for its axes at all, a pixel for each division of values.
bool hasAxes(const ChartSet &set)
{
    return set.xDivW >= 0 && set.yDivH >= 0 && valueAxis(set).divPixels > 0 && set.xAxisBox.left <= set.plotBox.right &&
           set.yAxisBox.bottom >= set.plotBox.top;
}

void expectAxesInPlot(const ChartSet &set)
{
    expectWithin(set.xAxisBox, set.plotBox, "x axis");
    expectWithin(set.yAxisBox, set.plotBox, "y axis");
    EXPECT_EQ(set.xAxisBox.right - set.xAxisBox.left, set.xDivs * set.xDivW);
    EXPECT_EQ(set.yAxisBox.bottom - set.yAxisBox.top, set.yDivs * set.yDivH);
}

// One value's point. Rounding to a pixel costs up to half of one, and the pixel that points on the positive side of a
// horizontal chart and on the negative side of a vertical one are moved on costs one more.
void expectPointOfValue(const ChartSet &set, const Point &point, double value, int32_t slack)
{
    const ValueAxis axis = valueAxis(set);
    const double exact = value / axis.divValue * axis.divPixels;
    if (isHorizontal(set))
    {
        EXPECT_NEAR(point.x - (set.xAxisBox.left + set.zeroDivs * set.xDivW), exact, 1.5 + 1e-6) << value;
        EXPECT_GE(point.x, set.xAxisBox.left - slack) << value;
        EXPECT_LE(point.x, set.xAxisBox.right + 1 + slack) << value;
        EXPECT_GE(point.y, set.yAxisBox.top);
        EXPECT_LE(point.y, set.yAxisBox.bottom);
        return;
    }
    EXPECT_NEAR(set.xAxisBox.top - set.zeroDivs * set.yDivH - point.y, exact, 1 + 1e-6) << value;
    EXPECT_GE(point.y, set.yAxisBox.top - slack) << value;
    EXPECT_LE(point.y, set.yAxisBox.bottom + slack) << value;
    EXPECT_GE(point.x, set.xAxisBox.left);
    EXPECT_LE(point.x, set.xAxisBox.right);
}

bool isWhole(double value)
{
    return value == std::floor(value);
}

// All points lie in the plot. Divisions are counted for whole numbers: the fraction of the largest and the smallest
// value may reach over its end, by less than one unit of value.
void expectPoints(const ChartData &data, const ChartSet &set)
{
    const ValueAxis axis = valueAxis(set);
    const bool fWhole = isWhole(data.minValue) && isWhole(data.maxValue);
    const int32_t slack = fWhole ? 0 : axis.divPixels / axis.divValue + 2;
    for (int32_t i = 0; i < data.nSeries; i++)
    {
        const Point *points = set.pointsPerSeries[i];
        for (int32_t k = 0; points != nullptr && k < set.nGraphedCells; k++)
        {
            expectPointOfValue(set, points[k + 1], data.series[i].cells[set.firstCell + k].value, slack);
        }
    }
}

// The part of the current image that a drawing call paints, as the smallest rectangle; without pixels none.
//   counts   whether a pixel counts
template <typename Draw, typename Counts>
Rectangle paintedBy(const Image *image, Draw draw, Counts counts)
{
    SetPenColor(0);
    FillImage();
    draw();
    Rectangle painted = {image->width, image->height, 0, 0};
    const uint8_t *pixel = image->pixels;
    for (int32_t y = 0; y < image->height; y++)
    {
        for (int32_t x = 0; x < image->width; x++, pixel++)
        {
            if (counts(*pixel))
            {
                painted = {std::min(painted.left, x), std::min(painted.top, y), std::max(painted.right, x + 1),
                           std::max(painted.bottom, y + 1)};
            }
        }
    }
    return painted;
}

void expectPaintedWithin(const Rectangle &painted, const Rectangle &box, const char *what)
{
    if (painted.left < painted.right)
    {
        expectWithin(painted, box, what);
    }
}

// Title and legend stay within their boxes with text, frame and shadow.
void expectTextsInBoxes(TestChart &chart)
{
    ChartSet &set = chart.set;
    const auto any = [](uint8_t pixel)
    {
        return pixel != 0;
    };
    const Rectangle titleBox = set.titleBox;
    if (!isTitleAtSide(set) || set.titleFontStyle != 2)
    {
        const Rectangle painted = paintedBy(
            set.image, [&] { ChartDrawTitle(&chart.data, &set); }, any);
        expectPaintedWithin(painted, titleBox, "drawn title");
    }
    const Rectangle labelBox = set.labelBox;
    const auto drawLegend = set.chartType == kTypePie ? ChartDrawPieLabelBox : ChartDrawLabelBox;
    const Rectangle painted = paintedBy(
        set.image, [&] { drawLegend(&chart.data, &set); }, any);
    expectPaintedWithin(painted, labelBox, "drawn legend");
}

// The outlines of all slices, exploded or not, lie in the plot.
void expectPiesInPlot(TestChart &chart)
{
    const ChartSet &set = chart.set;
    const auto isOutline = [](uint8_t pixel)
    {
        return pixel == kColorAreaOutline;
    };
    const Rectangle painted = paintedBy(
        set.image, [&] { ChartPie(&chart.data, &chart.set); }, isOutline);
    expectPaintedWithin(painted, set.plotBox, "pies");
}

void expectLayout(TestChart &chart)
{
    chart.Run(Step::kPlaced);
    expectBoxesApart(chart.set);
    expectRoomForPlot(chart.set);
    chart.Run(Step::kImage);
    EXPECT_EQ(chart.set.image->width, chart.set.chartW);
    EXPECT_EQ(chart.set.image->height, chart.set.chartH);
    if (chart.set.chartType == kTypePie)
    {
        expectPiesInPlot(chart);
    }
    else if (hasAxes(chart.set))
    {
        expectAxesInPlot(chart.set);
        expectPoints(chart.data, chart.set);
    }
    expectTextsInBoxes(chart);
}

std::string gifOf(uint32_t seed)
{
    const std::unique_ptr<TestChart> chart = makeChart(seed);
    chart->Draw();
    char *bytes = nullptr;
    size_t size = 0;
    FILE *out = open_memstream(&bytes, &size);
    ImgToGif(chart->set.image, 0, out);
    EXPECT_EQ(std::fclose(out), 0);
    EXPECT_EQ(GetGraphError(), 0);
    std::string gif(bytes, size);
    std::free(bytes);
    return gif;
}

uint32_t numberFrom(const char *name, uint32_t otherwise)
{
    const char *text = std::getenv(name);
    return text == nullptr ? otherwise : static_cast<uint32_t>(std::strtoul(text, nullptr, 10));
}

// Calls check with the seed of every chart, until one fails.
void forEachChart(const std::function<void(uint32_t)> &check)
{
    const uint32_t first = numberFrom("QB_SEED", 1);
    const uint32_t count = numberFrom("QB_CHARTS", 5000);
    for (uint32_t seed = first; seed < first + count && !testing::Test::HasFailure(); seed++)
    {
        SCOPED_TRACE("QB_SEED=" + std::to_string(seed) + " QB_CHARTS=1");
        check(seed);
    }
}

} // namespace

TEST(RandomCharts, KeepTheirLayoutsPromises)
{
    forEachChart(
        [](uint32_t seed)
        {
            const std::unique_ptr<TestChart> chart = makeChart(seed);
            expectLayout(*chart);
        });
}

TEST(RandomCharts, GiveTheSameBytesAgain)
{
    std::string before = gifOf(numberFrom("QB_SEED", 1));
    forEachChart(
        [&before](uint32_t seed)
        {
            std::string next = gifOf(seed + 1);
            EXPECT_TRUE(gifOf(seed) == before) << "after chart " << seed + 1;
            before.swap(next);
        });
}
