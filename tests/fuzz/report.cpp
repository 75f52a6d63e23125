// Tables of contents and reports of any kind, through every step up to the colours. Whatever is read must lie in the
// report's buffer, and every number must be finite.
//
// An input is four bytes of settings, a table of contents up to the byte 1, and the data file. The report is named "A".

#include "exit_trap.h"
#include "qbchart_state.h"
#include "qbgrform.h"
#include "settings_table.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>

// Longest input: fields times lines is what takes memory.
static constexpr size_t kMaxSize = 2048;

static void require(bool fTrue)
{
    if (!fTrue)
    {
        std::abort();
    }
}

static void requireText(const char *text)
{
    const char *buffer = chartData.buffer;
    require(text >= buffer && text + strlen(text) < buffer + kMaxSize + 2);
}

static void checkRecords()
{
    require(chartData.nCells > 0 && chartData.nSeries > chartData.refSeries && chartData.refSeries >= 0);
    require(0 <= chartSet.firstCell && chartSet.firstCell <= chartSet.lastCell && chartSet.lastCell < chartData.nCells);
    require(chartSet.nGraphedCells == chartSet.lastCell - chartSet.firstCell + 1);
    for (int32_t i = 0; i < chartData.nSeries; i++)
    {
        const Series &series = chartData.series[i];
        require(series.label != nullptr);
        require(std::isfinite(series.sum) && std::isfinite(series.mean) && std::isfinite(series.pieScale));
        for (int32_t k = 0; k < chartData.nCells; k++)
        {
            requireText(series.cells[k].text);
            require(std::isfinite(series.cells[k].value));
        }
    }
    require(std::isfinite(chartSet.pieScaleSum) && chartSet.pieScaleMax <= chartSet.pieScaleSum);
}

// The steps of a run that read the report.
static void readReport(FILE *data, FILE *toc, const HTab *table)
{
    chartData.buffer = _ReadReport(data, toc, "A");
    char *cursor = _GetChartTitle(&chartData);
    cursor = _GetChartSeries(&chartData, cursor);
    _GetChartCells(&chartData, cursor);
    _GetGraphedSeries(table, &chartData, &chartSet);
    _GetGraphedCells(table, &chartData, &chartSet);
    _GetPieExplodeSettings(table, &chartData, &chartSet);
    _GetPieParams(&chartData, &chartSet);
    _IsDateRefSeries(&chartData);
    _GetSeriesColors(table, &chartData, &chartSet);
}

static FILE *openBytes(const uint8_t *bytes, size_t size)
{
    static uint8_t nothing = '\n'; // fmemopen wants at least one byte
    return fmemopen(size > 0 ? const_cast<uint8_t *>(bytes) : &nothing, std::max<size_t>(size, 1), "rb");
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    if (size < 4 || size > kMaxSize)
    {
        return 0;
    }
    const uint8_t *tocEnd = std::find(data + 4, data + size, uint8_t{1});
    const uint8_t *report = tocEnd == data + size ? tocEnd : tocEnd + 1;
    FILE *toc = openBytes(data + 4, static_cast<size_t>(tocEnd - data - 4));
    FILE *text = openBytes(report, static_cast<size_t>(data + size - report));
    const SettingsTable table(Values{{"chartSeries0", "on"},
                                     {"chartSeries1", "on"},
                                     {"chartSeries2", (data[0] & 1) != 0 ? "on" : "off"},
                                     {"startCell", (data[0] & 2) != 0 ? std::to_string(data[2]) : "off"},
                                     {"endCell", (data[0] & 4) != 0 ? std::to_string(data[3]) : "off"},
                                     {"colorSeries1", std::to_string(data[3])}});
    _InitChart();
    chartData.refSeries = data[1] - 1; // -1 too
    chartSet.chartFlags = (data[0] & 8) != 0 ? kChartScaleMult : kChartLinearScale;
    RunTrapped(
        [&]
        {
            readReport(text, toc, table);
            checkRecords();
        });
    std::fclose(toc);
    std::fclose(text);
    return 0;
}
