// chart_fixture.h - chart records built in memory, layout step by step with its records as text, pictures as text.
#pragma once

#include "qbchart.h"

#include <deque>
#include <string>
#include <vector>

// The layout steps in their order; pies have only the first four. What a step writes is what After prints.
enum class Step
{
    kTitleBox,
    kLabelBox,
    kSize,
    kPlaced,
    kAxisBoxes,
    kScale,
    kRefScale,
    kTrimmed,
    kPoints,
    kImage,
};

// A chart of one reference series (index 0) and as many others as a test adds. It begins vertical, with all text in
// Small8 at 8 pixels (ascent 7, descent 1, leading 2; capitals and digits 5 wide), title topCenter, legend sideRight,
// no frames, ticks outside, scale labels on, axis titles, grid and data values off.
class TestChart
{
public:
    TestChart(int32_t type, int32_t width, int32_t height);
    TestChart(const TestChart &) = delete;
    TestChart &operator=(const TestChart &) = delete;
    ~TestChart();

    ChartSet set;
    ChartData data;

    void SetTitle(const std::string &text);
    void SetCategories(const std::string &label, const std::vector<std::string> &texts);
    void SetDates(const std::vector<std::string> &texts);
    void AddSeries(const std::string &label, uint8_t colour, const std::vector<double> &values);

    // Makes the records of series and cells, all graphed, and their statistics as the report reader does it. Later
    // steps do it when it was not done.
    void Build();

    // The statistics of the cells first to last, for a test that changed what is graphed. Builds.
    void SelectCells(int32_t first, int32_t last);

    // Runs the layout from where it stopped up to and including a step.
    void Run(Step last);

    // Runs up to and including a step and tells what it wrote, one field a line.
    std::string After(Step last);

    // Everything: layout, image, and the drawing calls in the program's order.
    void Draw();

    // The chart's image as text, one character a pixel: '.' background, '#' frames (255), '%' area outlines (245),
    // 's' shadow, 'f' shadowed face (a fourteenth slice has its colour too), a letter from 'A' on for the colour of
    // series 1, 2, ..., a hexadecimal digit for the colour of a slice.
    std::string Picture() const;
    std::string Picture(int32_t left, int32_t top, int32_t right, int32_t bottom) const;

    // The pixel of the chart's image; -1 outside it.
    int32_t At(int32_t x, int32_t y) const;

private:
    struct Column
    {
        std::string label;
        uint32_t flags;
        uint8_t colour;
        std::vector<Cell> cells;
    };

    char *_Keep(const std::string &text);
    void _RunStep(Step step);
    char _Letter(int32_t colour) const;

    std::deque<std::string> _texts;
    std::deque<Column> _columns;
    std::vector<Series> _series;
    std::vector<Series *> _pointers;
    int32_t _nStepsDone = 0;
};

// What a step wrote, one field a line.
std::string LayoutText(const ChartData &data, const ChartSet &set, Step step);
