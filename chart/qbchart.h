// qbchart.h - the chart records that one run fills step by step, and the chart engine's functions.
#pragma once

#include "qbgraph.h"

#include <cstdint>

// Bits of ChartSet::chartFlags.
constexpr uint32_t kChartHorizontal = 0x001;
constexpr uint32_t kChartShadows = 0x020;
constexpr uint32_t kChart3D = 0x040;
constexpr uint32_t kChartScaleMult = 0x100;
constexpr uint32_t kChartExplode = 0x200;
constexpr uint32_t kChartLogScale = 0x400;
constexpr uint32_t kChartLinearScale = 0x800;

// Values of ChartSet::chartType. The stacked types draw title, legend and axes only.
constexpr int32_t kTypeBar = 1;
constexpr int32_t kTypePie = 2;
constexpr int32_t kTypeLine = 3;
constexpr int32_t kTypeScatter = 4;
constexpr int32_t kTypeArea = 5;
constexpr int32_t kTypeStackedBar = 257;
constexpr int32_t kTypeStackedArea = 261;
constexpr int32_t kTypeStackedBit = 0x100;

// Bits of the box flags and of the box positions.
constexpr uint32_t kBoxFrame = 1;
constexpr uint32_t kBoxShadow = 2;
constexpr int32_t kPosTop = 0x100;
constexpr int32_t kPosBottom = 0x200;
constexpr int32_t kPosSide = 0x400;
constexpr int32_t kPosLeft = 1;
constexpr int32_t kPosCenter = 2;
constexpr int32_t kPosRight = 4;

// Bits of the axis flags.
constexpr uint32_t kAxisTitle = 1;
constexpr uint32_t kAxisGridLines = 2;
constexpr uint32_t kAxisScaleLabels = 4;
constexpr uint32_t kTicksOutside = 0x100;
constexpr uint32_t kTicksInside = 0x200;
constexpr uint32_t kTicksMiddle = 0x400;

// Values and bits of Series::flags.
constexpr uint32_t kSeriesOrdinary = 0x8001; // numeric, graphed until the settings say otherwise
constexpr uint32_t kSeriesReference = 0x102; // names the categories
constexpr uint32_t kSeriesDates = 0x104;     // names the categories, by dates
constexpr uint32_t kSeriesGraphedBit = 0x8000;
constexpr uint32_t kSeriesReferenceBit = 0x100;
constexpr uint32_t kSeriesNumericBit = 1;
constexpr uint32_t kSeriesDatesBit = 4;

// Bits of ChartSet::pieExplode.
constexpr uint32_t kExplodeAll = 1;
constexpr uint32_t kExplodeMin = 2;
constexpr uint32_t kExplodeMax = 4;

// Palette indices with fixed roles.
constexpr int32_t kColorFrame = 255;       // frames, outlines, axes, text
constexpr int32_t kColorAreaOutline = 245; // outlines of areas and pie slices
constexpr int32_t kColorShadow = 230;
constexpr int32_t kColorShadowFace = 217; // the face of a shadowed box
constexpr int32_t kColorSeries = 240;     // a series without a colour of its own

// One field of the report: row of a series.
struct Cell
{
    char *text;      // points into ChartData::buffer
    Point textDim;   // pixels, measured by the layout
    double value;    // 0 in series that are not numeric
    int32_t graphed; // 1: in the drawn range
};

// One column of the report.
struct Series
{
    const char *label; // points into ChartData::buffer or at a constant text
    Point labelDim;    // pixels, measured by the layout
    uint32_t flags;    // kSeries...
    double min;        // over the drawn range; 99999999.0 before any
    double max;        // over the drawn range; 0 before any
    double sum;        // over the drawn range
    double pieScale;   // relative size of its pie
    double mean;       // sum over the number of drawn cells
    int32_t nCells;
    uint8_t color; // palette index
    Cell *cells;   // owned, nCells records
    Point *points; // nGraphedCells + 2 data points, the array that ChartSet::pointsPerSeries owns; or null
};

// The report's data. The driver fills it; the layout adds the measured sizes.
struct ChartData
{
    char *title;       // points into buffer; lines separated by newlines
    Point titleDim;    // pixels, measured by the layout
    int32_t refSeries; // index of the reference series
    int32_t nSeries;
    int32_t nCells;
    double minValue; // smallest drawn value
    double maxValue; // largest drawn value
    int32_t hasSeriesLabels;
    Series *series;      // owned, nSeries records
    Series **seriesPtrs; // owned, the same records in drawing order
    char *buffer;        // owned: the report's text
};

// The chart's settings, read by the driver, and its layout, worked out by the engine.
struct ChartSet
{
    Rectangle titleBox;
    Rectangle labelBox; // the legend
    Rectangle plotBox;  // left for axes and data
    Rectangle xAxisBox; // strip under the plot; its top is the x axis line
    Rectangle yAxisBox; // strip left of the plot; its right is the y axis line
    int32_t minPlotW;   // smallest plot that the data needs, pixels
    int32_t minPlotH;
    int32_t hasLabelBox; // 1: a legend is drawn
    int32_t allCells;    // 1: no cell range was given
    int32_t chartType;   // kType...
    uint32_t chartFlags; // kChart...
    int32_t chartW;      // image size, pixels
    int32_t chartH;
    int32_t refDir; // 1 normal, 2 reversed direction of the reference axis
    int32_t nGraphedSeries;
    int32_t nGraphedCells;
    int32_t firstCell;      // index of the first drawn cell
    int32_t lastCell;       // index of the last drawn cell
    int32_t titleFont;      // font index
    int32_t titleFontSize;  // pixels
    int32_t titleFontStyle; // 1 bold, 2 italic, 4 underlined
    uint32_t titleBoxFlags; // kBox...
    int32_t titleBoxPos;    // kPos...
    int32_t titleMarginX;   // inner margins of the title box, pixels
    int32_t titleMarginY;
    int32_t labelFont;
    int32_t labelFontSize;
    int32_t labelFontStyle;
    uint32_t labelBoxFlags;
    int32_t labelBoxPos;
    int32_t labelMarginX; // inner margins of the legend, pixels
    int32_t labelMarginY;
    int32_t dataFont;
    int32_t dataFontSize;
    int32_t dataFontStyle;
    int32_t dataPos;     // data values: 1 inside, 2 outside, 0 not at all
    int32_t dataMarginX; // both the data font's leading, pixels
    int32_t dataMarginY;
    int32_t axisLabelFont;
    int32_t axisLabelFontSize;
    int32_t axisLabelFontStyle;
    int32_t axisLabelMarginX; // both the axis label font's size, pixels
    int32_t axisLabelMarginY;
    uint32_t xAxisFlags; // kAxis..., kTicks...
    uint32_t yAxisFlags;
    int32_t xDivs; // divisions of each axis
    int32_t yDivs;
    int32_t xDivW; // pixels per division
    int32_t yDivH;
    int32_t zeroDivs; // divisions of the value axis below zero
    int32_t xStep;    // value axis: value per division; reference axis: pixels per series slot
    int32_t yStep;
    Point refLabelDim;   // largest width and largest height of the reference texts, pixels
    Point scaleLabelDim; // size of the top value of the scale, pixels
    Point xAxisLabelDim; // sizes of the axis titles, pixels
    Point yAxisLabelDim;
    int32_t xAxisLen; // length of the trimmed axes, pixels
    int32_t yAxisLen;
    const char *xAxisLabel; // axis titles: labels of series, not copies
    const char *yAxisLabel;
    int32_t dataSymbol;      // marker kind
    int32_t labelLineH;      // height of a legend line and side of its colour swatch, pixels
    int32_t lineSize;        // pen size of line charts, pixels; what is more than 4096 is drawn as 4096
    double pieScaleSum;      // total of the pies' relative sizes
    double pieScaleMax;      // largest of them
    uint32_t pieExplode;     // kExplode...
    int32_t pieLabelH;       // height of the text band above and below each pie, pixels
    uint8_t backgroundColor; // palette index, also the transparent colour
    Point **pointsPerSeries; // owned: an owned point array per series, null for series not graphed
    Image *image;            // owned
    char gifName[256];       // file name of the GIF, without directory
};

extern ChartSet chartSet;
extern ChartData chartData;

// The run: qbchart.cpp

// Makes one chart from start to end: settings, report, layout, drawing, files; then starts the page script.
//   argc, argv   as main got them: no arguments for a posted form, or base name and settings file name
// Returns 0 when the page script cannot be started, which standard error says; every other failure ends the process
// with status 255 and an error page.
int32_t RunChart(int32_t argc, char **argv);

// Releases everything that the run has taken so far, however far it came. What is released is forgotten, so that a
// second call does nothing.
void CleanUp();

// Opens the stream for an error page: the run's error file, or standard output while none is named.
// Returns the stream, which CleanUp closes; null when the file cannot be opened.
FILE *OpenErrStream();

// The chart engine
//
// The layout functions below are called in the order in which they stand here, pies without the ones for axes; then the
// image is made and the drawing functions are called. All of them work on the two records, leave alone what they do not
// name, and do nothing when a record is missing or data->buffer is null. Texts that are missing count as empty. Sizes
// beyond 32 bits are clamped. Failures end the run through the error page.

// Layout of the boxes: qbgrchrt_layout.cpp

// Measures the title (titleDim) and sizes its box at (0, 0) with margins and shadow (titleBox, titleMarginX,
// titleMarginY). A title at a side is measured turned by 90 degrees.
void GetTitleBoxDim(ChartData *data, ChartSet *set);

// Measures the labels of the graphed series and sizes the legend at (0, 0): labelBox, labelMarginX, labelMarginY,
// labelLineH, hasLabelBox. Entries stand in a row when the legend is centred, else in a column.
// Chooses the axis titles too: the reference series' label where its axis asks for a title, and a single series' label
// on the value axis instead of a legend; with a legend the value axis loses its title bit. Sets axisLabelMarginX and
// axisLabelMarginY.
void GetLabelBoxDim(ChartData *data, ChartSet *set);

// The same for a pie chart, whose legend lists the drawn cells of the reference series.
void GetPieLabelBoxDim(ChartData *data, ChartSet *set);

// Works out the smallest plot that bars or markers, data values and category texts fit in (minPlotW, minPlotH) and
// enlarges chartW or chartH to it. Sets refLabelDim and, when data values are shown, dataMarginX and dataMarginY.
void GetSizeRequirements(ChartData *data, ChartSet *set);

// The same for pies, 50 pixels for relative size 1, enlarging chartW and chartH. Sets pieLabelH.
void GetPieSizeRequirements(ChartData *data, ChartSet *set);

// Gives chartW and chartH their final values, moves title and legend to their places, apart from each other, and leaves
// the rest to plotBox. Nothing for a missing record. Ends the run when the image would be wider or higher than 65535
// pixels, which a GIF cannot say.
void PlaceChartBoxes(ChartSet *set);

// Axis boxes, scale, data points, image: qbgrchrt_scale.cpp

// Divides the plot into the strips left of it and under it, as wide as ticks, scale labels and titles need, and the
// rest, which is the plot from now on (yAxisBox, xAxisBox).
void GetAxisBoxesDim(ChartData *data, ChartSet *set);

// Chooses the round value of a division and the divisions of the value axis, linear and with zero in it: xDivs, xDivW
// and xStep, or their y fields in a vertical chart, zeroDivs, scaleLabelDim.
// Ends the run when the values span less than a division (no values, or all 0), or so much that the value of a division
// is beyond 32 bits.
void GetScale(ChartData *data, ChartSet *set);

// Divides the reference axis into categories and series slots: xDivs, xDivW and xStep, or their y fields.
void GetRefScale(ChartData *data, ChartSet *set);

// Shortens both axes to whole divisions (xAxisLen, yAxisLen, xAxisBox.right, yAxisBox.top). Nothing for a missing
// record.
void TrimAxisBoxes(ChartSet *set);

// Makes the points of each graphed series, null for the others; set->pointsPerSeries owns them from the moment they
// are there. Ends the run when there is no memory.
void GetDataPoints(ChartData *data, ChartSet *set);

// Makes the chart's image in its final size and fills it with the background colour, which becomes the transparent
// one. Nothing for a missing record. Ends the run when there is no memory.
void InitChartGraph(ChartSet *set);

// Drawing: qbgrchrt_boxes.cpp, qbgrchrt_axes.cpp, qbgrchrt_series.cpp, qbgrchrt_pie.cpp
//
// Everything is drawn into the current image with a pen of 1 by 1 pixel, which must be set before.

// Draws the title and its box. A shadow takes 3 pixels off titleBox on the right and at the bottom.
void ChartDrawTitle(ChartData *data, ChartSet *set);

// Draws the legend, a swatch and a label for each graphed series, and its box. Nothing without hasLabelBox. A shadow
// takes 3 pixels off labelBox on the right and at the bottom.
void ChartDrawLabelBox(ChartData *data, ChartSet *set);

// The same for a pie chart: an entry for each drawn cell, in the colours of the slices.
void ChartDrawPieLabelBox(ChartData *data, ChartSet *set);

// Draws both axes: lines, ticks, grid lines, scale labels, titles. The pen ends at xAxisBox's left top corner.
void ChartDrawAxis(ChartData *data, ChartSet *set);

// Draws one marker, 6 pixels wide.
//   point    the data point; nothing for null
//   kind     1 hanging triangle, 2 circle, 3 square, 4 cross without colour, all others a standing triangle
//   colour   palette index of its inside
void ChartDrawSymbol(const Point *point, int32_t kind, int32_t colour);

// Draw the series from their points in file order, as bars from the zero line, lines with markers, or markers. Nothing
// without series or pointsPerSeries.
void ChartBar(ChartData *data, ChartSet *set);
void ChartLine(ChartData *data, ChartSet *set);
void ChartScatter(ChartData *data, ChartSet *set);

// Draws the series as areas with markers, the largest maximum first, and sorts seriesPtrs for it. Nothing without
// series.
void ChartArea(ChartData *data, ChartSet *set);

// Draws one pie for each graphed series with its label, and the percentages if dataPos asks for them. A pie without
// diameter or sum has only its label; a slice too thin to have an inside has only its outline. Ends the run when there
// is no memory.
void ChartPie(ChartData *data, ChartSet *set);
