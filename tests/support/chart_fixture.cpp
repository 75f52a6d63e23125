// chart_fixture.cpp - the records that the driver would fill from settings and report, filled by a test.

#include "chart_fixture.h"

#include <algorithm>
#include <cstdlib>

constexpr int32_t kSmall8 = 0;

TestChart::TestChart(int32_t type, int32_t width, int32_t height) : set(), data()
{
    InitGraph();
    set.chartType = type;
    set.chartW = width;
    set.chartH = height;
    set.refDir = 1;
    set.lineSize = 1;
    set.titleFont = set.labelFont = set.dataFont = set.axisLabelFont = kSmall8;
    set.titleFontSize = set.labelFontSize = set.dataFontSize = set.axisLabelFontSize = 8;
    set.titleBoxPos = kPosTop | kPosCenter;
    set.labelBoxPos = kPosSide | kPosRight;
    set.xAxisFlags = set.yAxisFlags = kTicksOutside | kAxisScaleLabels;
    data.buffer = _Keep("report");
    data.title = _Keep("ABC");
    SetCategories("A", {});
}

TestChart::~TestChart()
{
    for (int32_t i = 0; set.pointsPerSeries != nullptr && i < data.nSeries; i++)
    {
        std::free(set.pointsPerSeries[i]);
    }
    std::free(set.pointsPerSeries);
    KillImage(set.image);
}

char *TestChart::_Keep(const std::string &text)
{
    _texts.push_back(text);
    return _texts.back().data();
}

void TestChart::SetTitle(const std::string &text)
{
    data.title = _Keep(text);
}

void TestChart::SetCategories(const std::string &label, const std::vector<std::string> &texts)
{
    Column column = {label, kSeriesReference, 0, {}};
    for (const std::string &text : texts)
    {
        column.cells.push_back({_Keep(text), {0, 0}, 0, 0});
    }
    if (!_columns.empty())
    {
        _columns.pop_front();
    }
    _columns.push_front(column);
}

void TestChart::SetDates(const std::vector<std::string> &texts)
{
    SetCategories("A", texts);
    _columns.front().flags = kSeriesDates;
}

void TestChart::AddSeries(const std::string &label, uint8_t colour, const std::vector<double> &values)
{
    Column column = {label, kSeriesOrdinary, colour, {}};
    for (const double value : values)
    {
        column.cells.push_back({_Keep(""), {0, 0}, value, 0});
    }
    _columns.push_back(column);
}

void TestChart::Build()
{
    for (Column &column : _columns)
    {
        Series series = {};
        series.label = column.label.c_str();
        series.flags = column.flags;
        series.nCells = static_cast<int32_t>(column.cells.size());
        series.color = column.colour;
        series.cells = column.cells.data();
        _series.push_back(series);
    }
    for (Series &series : _series)
    {
        _pointers.push_back(&series);
    }
    data.series = _series.data();
    data.seriesPtrs = _pointers.data();
    data.nSeries = static_cast<int32_t>(_series.size());
    data.nCells = _series[0].nCells;
    SelectCells(0, data.nCells - 1);
}

void TestChart::SelectCells(int32_t first, int32_t last)
{
    if (data.series == nullptr)
    {
        Build();
    }
    set.firstCell = first;
    set.lastCell = last;
    set.nGraphedCells = last - first + 1;
    set.nGraphedSeries = 0;
    set.pieScaleSum = set.pieScaleMax = 0;
    data.minValue = 99999999.9;
    data.maxValue = 0;
    for (Series &series : _series)
    {
        if ((series.flags & kSeriesGraphedBit) == 0)
        {
            continue;
        }
        set.nGraphedSeries++;
        series.min = 99999999.0;
        series.max = series.sum = 0;
        for (int32_t i = first; i <= last; i++)
        {
            series.cells[i].graphed = 1;
            series.min = std::min(series.min, series.cells[i].value);
            series.max = std::max(series.max, series.cells[i].value);
            series.sum += series.cells[i].value;
        }
        series.mean = series.sum / set.nGraphedCells;
        series.pieScale = 1;
        set.pieScaleSum += 1;
        set.pieScaleMax = 1;
        data.minValue = std::min(data.minValue, series.min);
        data.maxValue = std::max(data.maxValue, series.max);
    }
}

void TestChart::_RunStep(Step step)
{
    const bool fPie = set.chartType == kTypePie;
    switch (step)
    {
    case Step::kTitleBox:
        return GetTitleBoxDim(&data, &set);
    case Step::kLabelBox:
        return fPie ? GetPieLabelBoxDim(&data, &set) : GetLabelBoxDim(&data, &set);
    case Step::kSize:
        return fPie ? GetPieSizeRequirements(&data, &set) : GetSizeRequirements(&data, &set);
    case Step::kPlaced:
        return PlaceChartBoxes(&set);
    case Step::kImage:
        return InitChartGraph(&set);
    default:
        break;
    }
    if (fPie)
    {
        return;
    }
    switch (step)
    {
    case Step::kAxisBoxes:
        return GetAxisBoxesDim(&data, &set);
    case Step::kScale:
        return GetScale(&data, &set);
    case Step::kRefScale:
        return GetRefScale(&data, &set);
    case Step::kTrimmed:
        return TrimAxisBoxes(&set);
    default:
        return GetDataPoints(&data, &set);
    }
}

void TestChart::Run(Step last)
{
    if (data.series == nullptr)
    {
        Build();
    }
    for (; _nStepsDone <= static_cast<int32_t>(last); _nStepsDone++)
    {
        _RunStep(static_cast<Step>(_nStepsDone));
    }
}

std::string TestChart::After(Step last)
{
    Run(last);
    return LayoutText(data, set, last);
}

void TestChart::Draw()
{
    Run(Step::kImage);
    ChartDrawTitle(&data, &set);
    if (set.chartType == kTypePie)
    {
        ChartDrawPieLabelBox(&data, &set);
        return ChartPie(&data, &set);
    }
    ChartDrawLabelBox(&data, &set);
    ChartDrawAxis(&data, &set);
    switch (set.chartType)
    {
    case kTypeBar:
        return ChartBar(&data, &set);
    case kTypeLine:
        return ChartLine(&data, &set);
    case kTypeScatter:
        return ChartScatter(&data, &set);
    case kTypeArea:
        return ChartArea(&data, &set);
    default:
        return;
    }
}

int32_t TestChart::At(int32_t x, int32_t y) const
{
    const Image *image = set.image;
    if (image == nullptr || x < 0 || y < 0 || x >= image->width || y >= image->height)
    {
        return -1;
    }
    return image->pixels[static_cast<size_t>(y) * static_cast<size_t>(image->width) + static_cast<size_t>(x)];
}

char TestChart::_Letter(int32_t colour) const
{
    for (size_t i = 1; i < _series.size(); i++)
    {
        if (_series[i].color == colour && colour != 0)
        {
            return static_cast<char>('A' + i - 1);
        }
    }
    switch (colour)
    {
    case 0:
        return '.';
    case kColorFrame:
        return '#';
    case kColorAreaOutline:
        return '%';
    case kColorShadow:
        return 's';
    case kColorShadowFace:
        return 'f';
    default:
        return colour % 16 == 9 ? "0123456789abcdef"[colour / 16] : '?';
    }
}

std::string TestChart::Picture() const
{
    return set.image == nullptr ? "" : Picture(0, 0, set.image->width, set.image->height);
}

std::string TestChart::Picture(int32_t left, int32_t top, int32_t right, int32_t bottom) const
{
    std::string text;
    for (int32_t y = top; y < bottom; y++)
    {
        for (int32_t x = left; x < right; x++)
        {
            text += _Letter(At(x, y));
        }
        text += '\n';
    }
    return text;
}

// One line: a name and numbers with commas between them.
static std::string _Line(const std::string &name, const std::vector<int64_t> &values)
{
    std::string text = name;
    const char *separator = " ";
    for (const int64_t value : values)
    {
        text += separator + std::to_string(value);
        separator = ",";
    }
    return text + "\n";
}

static std::string _BoxLine(const std::string &name, const Rectangle &rect)
{
    return _Line(name, {rect.left, rect.top, rect.right, rect.bottom});
}

static std::string _TitleLine(const std::string &name, const char *label, const Point &dim)
{
    return label == nullptr ? "" : _Line(name + " \"" + label + "\"", {dim.x, dim.y});
}

static std::string _LegendText(const ChartSet &set)
{
    return _Line("hasLabelBox", {set.hasLabelBox}) + _BoxLine("labelBox", set.labelBox) +
           _Line("labelMargin", {set.labelMarginX, set.labelMarginY}) + _Line("labelLineH", {set.labelLineH}) +
           _Line("axisLabelMargin", {set.axisLabelMarginX, set.axisLabelMarginY}) +
           _TitleLine("xAxisLabel", set.xAxisLabel, set.xAxisLabelDim) +
           _TitleLine("yAxisLabel", set.yAxisLabel, set.yAxisLabelDim);
}

static std::string _SizeText(const ChartSet &set)
{
    return _Line("refLabelDim", {set.refLabelDim.x, set.refLabelDim.y}) +
           _Line("dataMargin", {set.dataMarginX, set.dataMarginY}) + _Line("minPlot", {set.minPlotW, set.minPlotH}) +
           _Line("chart", {set.chartW, set.chartH}) + _Line("pieLabelH", {set.pieLabelH});
}

static std::string _PointsText(const ChartData &data, const ChartSet &set)
{
    std::string text;
    for (int32_t i = 0; i < data.nSeries; i++)
    {
        text += "series " + std::to_string(i) + ":";
        const Point *points = set.pointsPerSeries[i];
        for (int32_t k = 0; points != nullptr && k < set.nGraphedCells + 2; k++)
        {
            text += " " + std::to_string(points[k].x) + "," + std::to_string(points[k].y);
        }
        text += "\n";
    }
    return text;
}

std::string LayoutText(const ChartData &data, const ChartSet &set, Step step)
{
    switch (step)
    {
    case Step::kTitleBox:
        return _Line("titleDim", {data.titleDim.x, data.titleDim.y}) +
               _Line("titleMargin", {set.titleMarginX, set.titleMarginY}) + _BoxLine("titleBox", set.titleBox);
    case Step::kLabelBox:
        return _LegendText(set);
    case Step::kSize:
        return _SizeText(set);
    case Step::kPlaced:
        return _BoxLine("titleBox", set.titleBox) + _BoxLine("labelBox", set.labelBox) +
               _BoxLine("plotBox", set.plotBox) + _Line("chart", {set.chartW, set.chartH});
    case Step::kAxisBoxes:
        return _BoxLine("yAxisBox", set.yAxisBox) + _BoxLine("xAxisBox", set.xAxisBox);
    case Step::kScale:
    case Step::kRefScale:
        return _Line("x divisions", {set.xDivs, set.xDivW, set.xStep}) +
               _Line("y divisions", {set.yDivs, set.yDivH, set.yStep}) + _Line("zeroDivs", {set.zeroDivs}) +
               _Line("scaleLabelDim", {set.scaleLabelDim.x, set.scaleLabelDim.y});
    case Step::kTrimmed:
        return _Line("axisLen", {set.xAxisLen, set.yAxisLen}) + _BoxLine("yAxisBox", set.yAxisBox) +
               _BoxLine("xAxisBox", set.xAxisBox);
    case Step::kPoints:
        return _PointsText(data, set);
    default:
        return _Line("image", {set.image->width, set.image->height});
    }
}
