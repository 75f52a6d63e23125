// Whole charts: any settings and any report, from the form to the bytes of the GIF. Either the run ends with an error
// page, or the file is a GIF of the size that the layout chose.
//
// An input is the settings up to the byte 1, and the report. The settings come on top of a complete set, so that every
// key may be missing, and the data file holds the report "A" alone.

#include "exit_trap.h"
#include "gif_checker.h"
#include "qbchart_state.h"
#include "qbgrform.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>

// Larger images say nothing new, and take long.
static constexpr int64_t kMaxPixels = int64_t{1500} * 1500;

// The largest image that is read back: the checker is slow.
static constexpr int64_t kMaxPixelsRead = 200000;

static const char kSettings[] =
    "chartType=bar&chartW=200&chartH=150&chartSeries1=on&chartSeries2=on&colorSeries1=20&colorSeries2=40"
    "&titleFont=Geneva12&titleFontSize=12&titleFontStyle=plain&titleBoxPos=topCenter"
    "&labelFont=Small8&labelFontSize=8&labelFontStyle=plain&labelBoxPos=sideRight"
    "&dataFont=Small8&dataFontSize=8&dataFontStyle=plain"
    "&axisLabelFont=Helvetica10&axisLabelFontSize=10&axisLabelFontStyle=plain"
    "&xAxisTicks=outside&xAxisScaleLabels=on&yAxisTicks=outside&yAxisScaleLabels=on";

// The file that was written, and the image it was written from.
struct Output
{
    char *bytes; // owned
    size_t size;
    int32_t width;
    int32_t height;
};

static void require(bool fTrue)
{
    if (!fTrue)
    {
        std::abort();
    }
}

static FILE *openBytes(const void *bytes, size_t size)
{
    static char nothing = '\n'; // fmemopen wants at least one byte
    return fmemopen(size > 0 ? const_cast<void *>(bytes) : &nothing, std::max<size_t>(size, 1), "rb");
}

static void readReport(FILE *data, FILE *toc)
{
    const HTab *table = pSetHTab;
    chartData.buffer = _ReadReport(data, toc, "A");
    _GetChartSettings(table, &chartData, &chartSet);
    char *cursor = _GetChartTitle(&chartData);
    cursor = _GetChartSeries(&chartData, cursor);
    _GetChartCells(&chartData, cursor);
    _GetGraphedSeries(table, &chartData, &chartSet);
    _GetGraphedCells(table, &chartData, &chartSet);
    if (chartSet.chartType == kTypePie)
    {
        _GetPieExplodeSettings(table, &chartData, &chartSet);
        _GetPieParams(&chartData, &chartSet);
    }
    else if (chartSet.chartType == kTypeLine)
    {
        chartSet.lineSize = _GetChartLineSize(table);
    }
    _IsDateRefSeries(&chartData);
    _GetSeriesColors(table, &chartData, &chartSet);
}

static void layOut()
{
    GetTitleBoxDim(&chartData, &chartSet);
    if (chartSet.chartType == kTypePie)
    {
        GetPieLabelBoxDim(&chartData, &chartSet);
        GetPieSizeRequirements(&chartData, &chartSet);
        PlaceChartBoxes(&chartSet);
        return;
    }
    GetLabelBoxDim(&chartData, &chartSet);
    GetSizeRequirements(&chartData, &chartSet);
    PlaceChartBoxes(&chartSet);
    GetAxisBoxesDim(&chartData, &chartSet);
    GetScale(&chartData, &chartSet);
    GetRefScale(&chartData, &chartSet);
    TrimAxisBoxes(&chartSet);
    GetDataPoints(&chartData, &chartSet);
}

static void draw()
{
    InitChartGraph(&chartSet);
    ChartDrawTitle(&chartData, &chartSet);
    if (chartSet.chartType == kTypePie)
    {
        ChartDrawPieLabelBox(&chartData, &chartSet);
        ChartPie(&chartData, &chartSet);
        return;
    }
    ChartDrawLabelBox(&chartData, &chartSet);
    ChartDrawAxis(&chartData, &chartSet);
    switch (chartSet.chartType)
    {
    case kTypeBar:
        ChartBar(&chartData, &chartSet);
        break;
    case kTypeLine:
        ChartLine(&chartData, &chartSet);
        break;
    case kTypeScatter:
        ChartScatter(&chartData, &chartSet);
        break;
    case kTypeArea:
        ChartArea(&chartData, &chartSet);
        break;
    default:
        break;
    }
}

static void writeGif(Output *output)
{
    FILE *out = open_memstream(&output->bytes, &output->size);
    ImgToGif(chartSet.image, 0, out);
    require(GetGraphError() == 0);
    require(std::fclose(out) == 0);
    output->width = chartSet.chartW;
    output->height = chartSet.chartH;
}

static void makeChart(FILE *settings, size_t length, FILE *data, FILE *toc, Output *output)
{
    FILE *defaults = openBytes(kSettings, sizeof kSettings - 1);
    FormToHTab(pSetHTab, defaults, sizeof kSettings - 1);
    std::fclose(defaults);
    FormToHTab(pSetHTab, settings, static_cast<int64_t>(length));
    readReport(data, toc);
    layOut();
    require(chartSet.chartW >= 0 && chartSet.chartW <= 65535 && chartSet.chartH >= 0 && chartSet.chartH <= 65535);
    if (static_cast<int64_t>(chartSet.chartW) * chartSet.chartH > kMaxPixels)
    {
        return;
    }
    draw();
    require(GetGraphError() == 0);
    writeGif(output);
}

static void checkOutput(const Output &output)
{
    if (static_cast<int64_t>(output.width) * output.height > kMaxPixelsRead)
    {
        return;
    }
    const GifWalk walk = CheckGif(std::vector<uint8_t>(output.bytes, output.bytes + output.size));
    require(walk.wrong.empty());
    require(walk.picture.width == output.width && walk.picture.height == output.height);
    require(walk.picture.transparent >= 0);
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static const char contents[] = "A\t0\n";
    const uint8_t *settingsEnd = std::find(data, data + size, uint8_t{1});
    const uint8_t *report = settingsEnd == data + size ? settingsEnd : settingsEnd + 1;
    const auto length = static_cast<size_t>(settingsEnd - data);
    FILE *settings = openBytes(data, length);
    FILE *text = openBytes(report, static_cast<size_t>(data + size - report));
    FILE *toc = openBytes(contents, sizeof contents - 1);
    Output output = {};
    _InitChart();
    InitGraph();
    RunTrapped([&] { makeChart(settings, length, text, toc, &output); });
    if (output.bytes != nullptr)
    {
        checkOutput(output);
    }
    std::free(output.bytes);
    std::fclose(settings);
    std::fclose(text);
    std::fclose(toc);
    return 0;
}
