// charts.cpp - every kind of chart, drawn as an operator draws it; what the charts show together is counted.
//
// charts/NAME.set are the settings (written by charts/pairwise.py), charts/charts.txt is the report file and
// charts/NAME.gif the picture that was looked at.

#include "golden.h"
#include "qbchart_state.h"
#include "qbgraph.h"
#include "qbgrform.h"
#include "temp_dir.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace fs = std::filesystem;

using Values = std::set<std::string>;

static const fs::path _folder = fs::path(SOURCE_DIR) / "tests/golden/charts";
static const std::string _missing = "(missing)";

// The names of the charts that have a file with this ending, in alphabetical order.
static std::vector<std::string> _chartsWith(const std::string &ending)
{
    std::vector<std::string> names;
    for (const fs::directory_entry &entry : fs::directory_iterator(_folder))
    {
        if (entry.path().extension() == ending)
        {
            names.push_back(entry.path().stem());
        }
    }
    std::sort(names.begin(), names.end());
    return names;
}

// A package directory of its own for each chart, because a run empties gifs/.
class ChartGolden : public testing::TestWithParam<std::string>
{
protected:
    ChartGolden() : _chart(GetParam())
    {
        fs::create_directory(_package.path() + "gifs");
        fs::create_directory(_package.path() + "set");
        fs::copy(_folder / "charts.txt", _package.path());
        fs::copy(_folder / "charts.toc", _package.path());
        fs::copy(_folder / (_chart + ".set"), _package.path() + "set");
    }

    // Runs the program; its output is shown when it fails.
    void Draw() const
    {
        setenv("QUILLBROOK_OUT", _package.path().c_str(), 1);
        setenv("QUILLBROOK_HOME", _package.path().c_str(), 1);
        setenv("PERL_HOME", "/bin/true", 1);
        setenv("STAND_ALONE", "1", 1);
        unsetenv("QUILLBROOK_MULTIUSER");
        ASSERT_EQ(std::system((QBCHART_PATH " charts " + _chart + ".set").c_str()), 0);
    }

    // The GIF that the reference file names.
    std::string Gif() const
    {
        return _package.path() + "gifs/" + ReadFile(_package.path() + "gifs/0.ref");
    }

    const TempDir _package;
    const std::string _chart;
};

TEST_P(ChartGolden, LooksAsItWasAccepted)
{
    ASSERT_NO_FATAL_FAILURE(Draw());
    ExpectGolden("charts/" + _chart, Gif());
}

static std::string _testName(const testing::TestParamInfo<std::string> &chart)
{
    std::string name = chart.param;
    std::replace(name.begin(), name.end(), '-', '_');
    return name;
}

INSTANTIATE_TEST_SUITE_P(Charts, ChartGolden, testing::ValuesIn(_chartsWith(".set")), _testName);

// Reads a chart's settings and report into the records with the program's own readers, calls look and releases them.
template <typename Look>
static void _withRecords(const std::string &chart, Look look)
{
    _InitChart();
    InitGraph();
    GetSettings((_folder / (chart + ".set")).c_str(), pSetHTab);
    _GetChartSettings(pSetHTab, &chartData, &chartSet);
    chartData.buffer = _GetChartDataBuffer((_folder / "charts.txt").c_str(), (_folder / "charts.toc").c_str(),
                                           GetFormValue(pSetHTab, "reportTitle"));
    _GetChartCells(&chartData, _GetChartSeries(&chartData, _GetChartTitle(&chartData)));
    _GetGraphedSeries(pSetHTab, &chartData, &chartSet);
    _GetGraphedCells(pSetHTab, &chartData, &chartSet);
    _IsDateRefSeries(&chartData);
    look();
    CleanUp();
}

// What a chart shows, factor by factor.
static std::map<std::string, std::string> _factorsOf(const std::string &chart)
{
    std::map<std::string, std::string> factors;
    const auto ticks = [](uint32_t flags)
    {
        return std::to_string(flags & (kTicksOutside | kTicksInside | kTicksMiddle));
    };
    const auto yes = [](bool is)
    {
        return std::string(is ? "yes" : "no");
    };
    _withRecords(chart,
                 [&]
                 {
                     factors = {
                         {"type", std::to_string(chartSet.chartType)},
                         {"title", std::to_string(chartSet.titleBoxPos)},
                         {"legend", std::to_string(chartSet.labelBoxPos)},
                         {"horizontal", yes((chartSet.chartFlags & kChartHorizontal) != 0)},
                         {"x ticks", ticks(chartSet.xAxisFlags)},
                         {"y ticks", ticks(chartSet.yAxisFlags)},
                         {"x grid", yes((chartSet.xAxisFlags & kAxisGridLines) != 0)},
                         {"y grid", yes((chartSet.yAxisFlags & kAxisGridLines) != 0)},
                         {"reversed", yes(chartSet.refDir == 2)},
                         {"negative", yes(chartData.minValue < 0)},
                         {"several", yes(chartSet.nGraphedSeries > 1)},
                         {"dates", yes((chartData.series[chartData.refSeries].flags & kSeriesDatesBit) != 0)},
                     };
                 });
    return factors;
}

TEST(GoldenCharts, EveryPairOfFactorValuesMeetsInAChart)
{
    const std::map<std::string, size_t> nValues = {{"type", 7},     {"title", 8},    {"legend", 8},  {"horizontal", 2},
                                                   {"x ticks", 3},  {"y ticks", 3},  {"x grid", 2},  {"y grid", 2},
                                                   {"reversed", 2}, {"negative", 2}, {"several", 2}, {"dates", 2}};
    std::map<std::string, Values> values;
    std::map<std::pair<std::string, std::string>, std::set<std::pair<std::string, std::string>>> pairs;
    for (const std::string &chart : _chartsWith(".set"))
    {
        const std::map<std::string, std::string> factors = _factorsOf(chart);
        for (const auto &[name, value] : factors)
        {
            values[name].insert(value);
            for (const auto &[other, otherValue] : factors)
            {
                pairs[{name, other}].insert({value, otherValue});
            }
        }
    }
    ASSERT_EQ(values.size(), nValues.size());
    for (const auto &[name, count] : nValues)
    {
        ASSERT_EQ(values[name].size(), count) << name;
        for (const auto &[other, otherCount] : nValues)
        {
            for (const std::string &value : values[name])
            {
                for (const std::string &otherValue : values[other])
                {
                    const bool fMet = name == other || pairs[{name, other}].contains({value, otherValue});
                    EXPECT_TRUE(fMet) << name << " " << value << " never meets " << other << " " << otherValue;
                }
            }
        }
    }
}

// The values that each key must have somewhere. Words: all of them. Numbers: those where something changes, usual ones
// and none.
static std::map<std::string, Values> _wantedValues()
{
    const Values fonts = {"Small8", "Geneva12", "Helvetica10", _missing};
    const Values sizes = {"8", "9", "10", "11", "12", "14", _missing};
    const Values styles = {"plain", "bold", "italic", "underlined"};
    const Values positions = {"topLeft",   "topCenter", "topRight",  "sideLeft",
                              "sideRight", "botLeft",   "botCenter", "botRight"};
    const Values ticks = {"outside", "inside", "middle"};
    std::map<std::string, Values> wanted = {
        {"chartType", {"bar", "pie", "line", "scatter", "area", "stacked_bar", "stacked_area"}},
        {"chartOrientation", {"vertical", "horizontal", _missing}},
        {"chartScale", {"linear", "log", "off", _missing}},
        {"chartW", {"480", _missing}},
        {"chartH", {"300", _missing}},
        {"dataPos", {"inside", "outside", "off", _missing}},
        {"dataSymbol", {"0", "1", "2", "3", "4", "7", _missing}},
        {"lineSize", {"off", "1", "2", "3", "6", _missing}},
        {"refSeries", {"0", "1", _missing}},
        {"startCell", {"off", "1", "5", _missing}},
        {"endCell", {"off", "3", "5", _missing}},
        {"colorSeries1", {"10", "0", "163", "248", _missing}},
        {"titleBoxPos", positions},
        {"labelBoxPos", positions},
        {"xAxisTicks", ticks},
        {"yAxisTicks", ticks},
    };
    for (const std::string text : {"title", "label", "data", "axisLabel"})
    {
        wanted[text + "Font"] = fonts;
        wanted[text + "FontStyle"] = styles;
        wanted[text + "FontSize"] = text == "title" ? Values{"6", "10", "12", "14", "18", "24", _missing} : sizes;
    }
    for (const char *key :
         {"chartShadows", "chart3D", "chartScaleMult", "chartExplode", "reverseRefDir", "hasSeriesLabels", "titleBox",
          "titleBoxShadow", "labelBox", "labelBoxShadow", "xAxisLabels", "yAxisLabels", "xAxisScaleLabels",
          "yAxisScaleLabels", "xAxisGridLines", "yAxisGridLines", "chartSeries1", "chartSeries2", "pieExplodeAll"})
    {
        wanted[key] = {"on", "off", _missing};
    }
    for (const char *key : {"pieExplodeMax", "pieExplodeMin", "chartSeries0", "chartSeries3"})
    {
        wanted[key] = {"on", "off"};
    }
    for (const char *report : {"Coffee", "Rainfall", "Unlabelled", "Balance", "Frost", "Visitors", "Tide"})
    {
        wanted["reportTitle"].insert(report);
    }
    return wanted;
}

TEST(GoldenCharts, EveryKeyTakesEachOfItsValues)
{
    const std::map<std::string, Values> wanted = _wantedValues();
    std::map<std::string, Values> seen;
    for (const std::string &chart : _chartsWith(".set"))
    {
        _withRecords(chart,
                     [&]
                     {
                         for (const auto &[key, values] : wanted)
                         {
                             const HItem *item = HLookUp(pSetHTab, key.c_str());
                             seen[key].insert(item == nullptr ? _missing : item->value);
                         }
                     });
    }
    for (const auto &[key, values] : wanted)
    {
        for (const std::string &value : values)
        {
            EXPECT_TRUE(seen[key].contains(value)) << key << " is never " << value;
        }
    }
}

TEST(GoldenCharts, NoPictureIsLeftOver)
{
    EXPECT_EQ(_chartsWith(".gif"), _chartsWith(".set"));
}

TEST(GoldenCharts, StandOnContactSheetsInTheBuildFolder)
{
    const fs::path sheet = fs::path(BUILD_DIR) / "golden/charts";
    ASSERT_EQ(
        std::system(
            (SOURCE_DIR "/tests/golden/contact-sheet.sh '" + _folder.string() + "' '" + sheet.string() + "'").c_str()),
        0);
    const size_t nSheets = (_chartsWith(".gif").size() + 8) / 9;
    EXPECT_TRUE(fs::exists(sheet.string() + (nSheets <= 10 ? "-0" : "-") + std::to_string(nSheets - 1) + ".png"));
}
