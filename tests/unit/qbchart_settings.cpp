// Settings to records: every key, every word, every default, every unknown word.

#include "error_run.h"
#include "qbchart_state.h"
#include "qbgrfnt.h"
#include "qbgrform.h"
#include "qbgrutil.h"
#include "settings_table.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

// The shortest settings without an error.
static Values leastValues()
{
    return {{"chartType", "bar"},         {"titleFontStyle", "plain"},     {"labelFontStyle", "plain"},
            {"dataFontStyle", "plain"},   {"axisLabelFontStyle", "plain"}, {"titleBoxPos", "topCenter"},
            {"labelBoxPos", "sideRight"}, {"xAxisTicks", "outside"},       {"yAxisTicks", "inside"}};
}

// Words

TEST(ChartType, HasSevenWords)
{
    const struct
    {
        const char *word;
        int32_t type;
    } cases[] = {{"bar", 1},  {"pie", 2},           {"line", 3},          {"scatter", 4},
                 {"area", 5}, {"stacked_bar", 257}, {"stacked_area", 261}};
    for (const auto &c : cases)
    {
        EXPECT_EQ(_GetChartType(SettingsTable(Values{{"chartType", c.word}})), c.type) << c.word;
    }
}

TEST(FontStyle, HasFourWords)
{
    EXPECT_EQ(_GetChartFontStyle(SettingsTable(Values{{"k", "plain"}}), "k"), 0);
    EXPECT_EQ(_GetChartFontStyle(SettingsTable(Values{{"k", "bold"}}), "k"), 1);
    EXPECT_EQ(_GetChartFontStyle(SettingsTable(Values{{"k", "italic"}}), "k"), 2);
    EXPECT_EQ(_GetChartFontStyle(SettingsTable(Values{{"k", "underlined"}}), "k"), 4);
}

TEST(BoxPosition, HasEightWords)
{
    const struct
    {
        const char *word;
        int32_t position;
    } cases[] = {{"topLeft", 0x101},   {"topCenter", 0x102}, {"topRight", 0x104},  {"sideLeft", 0x401},
                 {"sideRight", 0x404}, {"botLeft", 0x201},   {"botCenter", 0x202}, {"botRight", 0x204}};
    for (const auto &c : cases)
    {
        EXPECT_EQ(_GetChartBoxPos(SettingsTable(Values{{"k", c.word}}), "k"), c.position) << c.word;
    }
}

TEST(UnknownWords, EndTheRun)
{
    const struct
    {
        const char *key;
        const char *message;
    } cases[] = {{"chartType", "Unknown chart type: %s\n"},
                 {"titleFontStyle", "Unknown Font Style: %s\n"},
                 {"labelFontStyle", "Unknown Font Style: %s\n"},
                 {"dataFontStyle", "Unknown Font Style: %s\n"},
                 {"axisLabelFontStyle", "Unknown Font Style: %s\n"},
                 {"titleBoxPos", "Unknown box position: %s\n"},
                 {"labelBoxPos", "Unknown box position: %s\n"},
                 {"xAxisTicks", "Unknown X axis ticks position: %s\n"},
                 {"yAxisTicks", "Unknown Y axis ticks position: %s\n"}};
    for (const auto &c : cases)
    {
        for (const char *word : {"off", "Bold", "TopLeft", "", "bar "})
        {
            Values values = leastValues();
            values[c.key] = word;
            const ChildResult result = RunStandAlone(
                [&values]
                {
                    const SettingsTable table(values);
                    _GetChartSettings(table, &chartData, &chartSet);
                });
            std::string message = c.message;
            message.replace(message.find("%s"), 2, word);
            EXPECT_EQ(result.status, 255) << c.key;
            EXPECT_EQ(result.out, PlainErrorText(message)) << c.key;
        }
    }
}

TEST(UnknownWords, AreReportedForAbsentKeysOfAPieToo)
{
    Values values = leastValues();
    values["chartType"] = "pie";
    values.erase("xAxisTicks");
    const ChildResult result = RunStandAlone(
        [&values]
        {
            const SettingsTable table(values);
            _GetChartSettings(table, &chartData, &chartSet);
        });
    EXPECT_EQ(result.out, PlainErrorText("Unknown X axis ticks position: off\n"));
}

TEST(UnknownWords, AreReportedInTheOrderOfReading)
{
    // With nothing given at all, each key that is put right lets the next one show.
    const char *const order[] = {"chartType",     "titleFontStyle",     "titleBoxPos", "labelFontStyle", "labelBoxPos",
                                 "dataFontStyle", "axisLabelFontStyle", "xAxisTicks",  "yAxisTicks"};
    const char *const messages[] = {"chart type",           "Font Style", "box position", "Font Style",
                                    "box position",         "Font Style", "Font Style",   "X axis ticks position",
                                    "Y axis ticks position"};
    const Values least = leastValues();
    Values values;
    for (size_t i = 0; i < 9; i++)
    {
        const ChildResult result = RunStandAlone(
            [&values]
            {
                const SettingsTable table(values);
                _GetChartSettings(table, &chartData, &chartSet);
            });
        EXPECT_EQ(result.out, PlainErrorText(std::string("Unknown ") + messages[i] + ": off\n")) << order[i];
        values[order[i]] = least.at(order[i]);
    }
}

// Bits

TEST(ChartFlags, HaveABitForEachSwitch)
{
    EXPECT_EQ(_GetChartFlags(SettingsTable(Values{{"chartOrientation", "horizontal"}})), 0x001U);
    EXPECT_EQ(_GetChartFlags(SettingsTable(Values{{"chartShadows", "on"}})), 0x020U);
    EXPECT_EQ(_GetChartFlags(SettingsTable(Values{{"chart3D", "on"}})), 0x040U);
    EXPECT_EQ(_GetChartFlags(SettingsTable(Values{{"chartScaleMult", "on"}})), 0x100U);
    EXPECT_EQ(_GetChartFlags(SettingsTable(Values{{"chartExplode", "on"}})), 0x200U);
    EXPECT_EQ(_GetChartFlags(SettingsTable(Values{{"chartScale", "log"}})), 0x400U);
    EXPECT_EQ(_GetChartFlags(SettingsTable(Values{{"chartScale", "linear"}})), 0x800U);
    EXPECT_EQ(_GetChartFlags(SettingsTable(Values{{"chartScale", "log"}, {"chartScaleMult", "on"}})), 0x500U);
}

TEST(ChartFlags, AreClearForOtherWords)
{
    EXPECT_EQ(_GetChartFlags(SettingsTable(Values{})), 0U);
    EXPECT_EQ(_GetChartFlags(SettingsTable(Values{{"chartOrientation", "vertical"},
                                                  {"chartShadows", "ON"},
                                                  {"chart3D", "1"},
                                                  {"chartScaleMult", "off"},
                                                  {"chartExplode", "yes"},
                                                  {"chartScale", "Log"}})),
              0U);
}

TEST(BoxFlags, HaveFrameAndShadow)
{
    EXPECT_EQ(_GetChartTitleBoxFlags(SettingsTable(Values{})), 0U);
    EXPECT_EQ(_GetChartTitleBoxFlags(SettingsTable(Values{{"titleBox", "on"}, {"labelBoxShadow", "on"}})), 1U);
    EXPECT_EQ(_GetChartTitleBoxFlags(SettingsTable(Values{{"titleBoxShadow", "on"}})), 2U);
    EXPECT_EQ(_GetChartLabelBoxFlags(SettingsTable(Values{{"labelBox", "on"}, {"labelBoxShadow", "on"}})), 3U);
    EXPECT_EQ(_GetChartLabelBoxFlags(SettingsTable(Values{{"labelBox", "On"}})), 0U);
}

TEST(AxisFlags, HaveTicksAndThreeSwitches)
{
    EXPECT_EQ(_GetChartXAxisFlags(SettingsTable(Values{{"xAxisTicks", "outside"}})), 0x100U);
    EXPECT_EQ(_GetChartXAxisFlags(SettingsTable(Values{{"xAxisTicks", "inside"}, {"xAxisLabels", "on"}})), 0x201U);
    EXPECT_EQ(_GetChartXAxisFlags(SettingsTable(Values{{"xAxisTicks", "middle"}, {"xAxisGridLines", "on"}})), 0x402U);
    EXPECT_EQ(_GetChartXAxisFlags(SettingsTable(Values{{"xAxisTicks", "middle"}, {"xAxisScaleLabels", "on"}})), 0x404U);
    EXPECT_EQ(_GetChartYAxisFlags(SettingsTable(Values{{"yAxisTicks", "outside"},
                                                       {"yAxisLabels", "on"},
                                                       {"yAxisGridLines", "on"},
                                                       {"yAxisScaleLabels", "on"},
                                                       {"xAxisTicks", "inside"}})),
              0x107U);
}

// Numbers and choices

TEST(DataPosition, IsInsideOutsideOrNone)
{
    EXPECT_EQ(_GetChartDataPos(SettingsTable(Values{{"dataPos", "inside"}})), 1);
    EXPECT_EQ(_GetChartDataPos(SettingsTable(Values{{"dataPos", "outside"}})), 2);
    EXPECT_EQ(_GetChartDataPos(SettingsTable(Values{{"dataPos", "middle"}})), 0);
    EXPECT_EQ(_GetChartDataPos(SettingsTable(Values{})), 0);
}

TEST(ReferenceDirection, IsReversedOnlyByOn)
{
    EXPECT_EQ(_GetChartRefDir(SettingsTable(Values{{"reverseRefDir", "on"}})), 2);
    EXPECT_EQ(_GetChartRefDir(SettingsTable(Values{{"reverseRefDir", "1"}})), 1);
    EXPECT_EQ(_GetChartRefDir(SettingsTable(Values{})), 1);
}

TEST(LineSize, IsOneWhenOff)
{
    EXPECT_EQ(_GetChartLineSize(SettingsTable(Values{})), 1);
    EXPECT_EQ(_GetChartLineSize(SettingsTable(Values{{"lineSize", "off"}})), 1);
    EXPECT_EQ(_GetChartLineSize(SettingsTable(Values{{"lineSize", "4"}})), 4);
    EXPECT_EQ(_GetChartLineSize(SettingsTable(Values{{"lineSize", "thick"}})), 0);
}

TEST(FontNumber, IsTheCurrentFontForAnUnknownName)
{
    InitFonts();
    EXPECT_EQ(_GetChartFontNum(SettingsTable(Values{{"k", "Helvetica10"}}), "k"), 2);
    EXPECT_EQ(_GetChartFontNum(SettingsTable(Values{{"k", "helvetica10"}}), "k"), GetFont());
    EXPECT_EQ(_GetChartFontNum(SettingsTable(Values{}), "k"), GetFont());
}

// All together

TEST(Settings, FillEveryField)
{
    InitFonts();
    const SettingsTable table(Values{{"refSeries", "3"},
                                     {"hasSeriesLabels", "on"},
                                     {"chartType", "line"},
                                     {"chart3D", "on"},
                                     {"chartW", "601"},
                                     {"chartH", "402"},
                                     {"reverseRefDir", "on"},
                                     {"titleFont", "Helvetica10"},
                                     {"titleFontSize", "18"},
                                     {"titleFontStyle", "bold"},
                                     {"titleBox", "on"},
                                     {"titleBoxPos", "botLeft"},
                                     {"labelFont", "Geneva12"},
                                     {"labelFontSize", "12"},
                                     {"labelFontStyle", "italic"},
                                     {"labelBoxShadow", "on"},
                                     {"labelBoxPos", "sideLeft"},
                                     {"dataFont", "Helvetica10"},
                                     {"dataFontSize", "-9"},
                                     {"dataFontStyle", "underlined"},
                                     {"dataPos", "outside"},
                                     {"axisLabelFont", "Geneva12"},
                                     {"axisLabelFontSize", "99999999999"},
                                     {"axisLabelFontStyle", "plain"},
                                     {"xAxisTicks", "middle"},
                                     {"yAxisTicks", "inside"},
                                     {"yAxisGridLines", "on"},
                                     {"dataSymbol", "4"}});
    ChartSet set = {};
    ChartData data = {};
    _GetChartSettings(table, &data, &set);
    EXPECT_EQ(data.refSeries, 3);
    EXPECT_EQ(data.hasSeriesLabels, 1);
    EXPECT_EQ(set.chartType, 3);
    EXPECT_EQ(set.chartFlags, 0x40U);
    EXPECT_EQ(set.chartW, 601);
    EXPECT_EQ(set.chartH, 402);
    EXPECT_EQ(set.refDir, 2);
    EXPECT_EQ(set.titleFont, 2);
    EXPECT_EQ(set.titleFontSize, 18);
    EXPECT_EQ(set.titleFontStyle, 1);
    EXPECT_EQ(set.titleBoxFlags, 1U);
    EXPECT_EQ(set.titleBoxPos, 0x201);
    EXPECT_EQ(set.labelFont, 1);
    EXPECT_EQ(set.labelFontSize, 12);
    EXPECT_EQ(set.labelFontStyle, 2);
    EXPECT_EQ(set.labelBoxFlags, 2U);
    EXPECT_EQ(set.labelBoxPos, 0x401);
    EXPECT_EQ(set.dataFont, 2);
    EXPECT_EQ(set.dataFontSize, -9);
    EXPECT_EQ(set.dataFontStyle, 4);
    EXPECT_EQ(set.dataPos, 2);
    EXPECT_EQ(set.axisLabelFont, 1);
    EXPECT_EQ(set.axisLabelFontSize, INT32_MAX);
    EXPECT_EQ(set.axisLabelFontStyle, 0);
    EXPECT_EQ(set.xAxisFlags, 0x400U);
    EXPECT_EQ(set.yAxisFlags, 0x202U);
    EXPECT_EQ(set.dataSymbol, 4);
}

TEST(Settings, HaveDefaultsForEverythingElse)
{
    InitFonts();
    const SettingsTable table(leastValues());
    ChartSet set = {};
    ChartData data = {};
    data.refSeries = 7;
    data.hasSeriesLabels = 7;
    set.chartW = 7;
    _GetChartSettings(table, &data, &set);
    EXPECT_EQ(data.refSeries, 0);
    EXPECT_EQ(data.hasSeriesLabels, 0);
    EXPECT_EQ(set.chartFlags, 0U);
    EXPECT_EQ(set.chartW, 0);
    EXPECT_EQ(set.chartH, 0);
    EXPECT_EQ(set.refDir, 1);
    EXPECT_EQ(set.titleFont, GetFont());
    EXPECT_EQ(set.titleFontSize, 0);
    EXPECT_EQ(set.titleBoxFlags, 0U);
    EXPECT_EQ(set.labelBoxFlags, 0U);
    EXPECT_EQ(set.dataPos, 0);
    EXPECT_EQ(set.xAxisFlags, 0x100U);
    EXPECT_EQ(set.yAxisFlags, 0x200U);
    EXPECT_EQ(set.dataSymbol, 0);
}
