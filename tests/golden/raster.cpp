// raster.cpp - one sheet of pictures for each family of drawing calls, compared with tests/golden/raster/NAME.gif.
//
// Two kinds of cells: figures as large as they are, and figures drawn on a small image of their own and shown five
// times enlarged, so that single pixels can be counted. A coloured spot tells where the pen was: blue before the call,
// red after it, violet both. What the sheets show is described in docs/raster.md.

#include "golden.h"
#include "qbgraph.h"
#include "qbgrfnt.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <string>
#include <vector>

namespace
{

constexpr int32_t kWidth = 480;
constexpr int32_t kHeight = 360;

constexpr int32_t kWhite = 0;
constexpr int32_t kRed = 35;
constexpr int32_t kOrange = 17;
constexpr int32_t kViolet = 66;
constexpr int32_t kBlue = 210;
constexpr int32_t kGreen = 197;
constexpr int32_t kSky = 144;
constexpr int32_t kBlack = 215;
constexpr int32_t kPaleGrey = 217;
constexpr int32_t kLightGrey = 219;

struct Size
{
    int32_t width;
    int32_t height;
};

std::string text(Size size)
{
    return std::to_string(size.width) + "x" + std::to_string(size.height);
}

// An image that takes itself back; a new one is current and white, with a black pen of 1 by 1.
class Paper
{
public:
    explicit Paper(Size size) : _size(size)
    {
        const Rectangle rect = {0, 0, size.width, size.height};
        _image = NewImage(&rect, 256);
        SetPenColor(kWhite);
        FillImage();
        SetPenColor(kBlack);
    }

    ~Paper()
    {
        KillImage(_image);
    }

    Paper(const Paper &) = delete;
    Paper &operator=(const Paper &) = delete;

    void makeCurrent() const
    {
        SetImage(_image);
    }

    int32_t at(int32_t x, int32_t y) const
    {
        return _image->pixels[y * _size.width + x];
    }

    Size size() const
    {
        return _size;
    }

    Image *image() const
    {
        return _image;
    }

private:
    Size _size;
    Image *_image;
};

void plainText(int32_t font, int32_t size)
{
    SetFont(font);
    SetFontSize(size);
    SetFontStyle(0);
    SetFontAngle(0);
    SetPenSize(1, 1);
    SetPenColor(kBlack);
}

void writeLabel(int32_t x, int32_t y, const std::string &label)
{
    plainText(0, 8);
    MovePenTo(x, y);
    DrawText(label.c_str());
}

void fillBox(Rectangle box, int32_t colour)
{
    SetPenSize(1, 1);
    SetPenColor(colour);
    FillRectangle(&box);
}

Point penPosition()
{
    Point point = {0, 0};
    GetPenPos(&point);
    return point;
}

// The spots that tell where the pen was before and after a call: squares of a width, around or at the pixel.
void drawSpots(Point before, Point after, int32_t zoom, Point origin)
{
    const int32_t width = zoom == 1 ? 1 : 2;
    const bool fSame = before.x == after.x && before.y == after.y;
    for (const auto &[point, colour] : {std::pair(before, kBlue), std::pair(after, fSame ? kViolet : kRed)})
    {
        const int32_t x = origin.x + point.x * zoom + (zoom - width) / 2;
        const int32_t y = origin.y + point.y * zoom + (zoom - width) / 2;
        fillBox({x, y, x + width, y + width}, colour);
    }
}

// Copies a small image onto the current one: every pixel a block, a grey line between the blocks if they are enlarged.
void copyEnlarged(const Paper &paper, int32_t zoom, Point origin)
{
    const Size size = paper.size();
    fillBox({origin.x - 1, origin.y - 1, origin.x + size.width * zoom + 1, origin.y + size.height * zoom + 1},
            kLightGrey);
    const int32_t block = zoom == 1 ? 1 : zoom - 1;
    for (int32_t y = 0; y < size.height; y++)
    {
        for (int32_t x = 0; x < size.width; x++)
        {
            const int32_t left = origin.x + x * zoom;
            const int32_t top = origin.y + y * zoom;
            fillBox({left, top, left + block, top + block}, paper.at(x, y));
        }
    }
}

// A sheet, which is current but while a cell draws on its own image.
class Sheet
{
public:
    explicit Sheet(const std::string &title) : _paper(start())
    {
        writeLabel(4, 9, title);
    }

    // One figure on an image of 10 by 10 pixels, five times enlarged, in a grid of eight columns and five rows.
    void cell(int32_t column, int32_t row, const std::string &label, Size pen, Point from,
              const std::function<void()> &draw) const
    {
        const Point origin = {46 + 54 * column, 32 + 66 * row};
        const Paper small({10, 10});
        SetPenSize(pen.width, pen.height);
        MovePenTo(from.x, from.y);
        draw();
        const Point after = penPosition();
        _paper.makeCurrent();
        copyEnlarged(small, 5, origin);
        drawSpots(from, after, 5, origin);
        writeLabel(origin.x, origin.y - 4, label);
    }

    // One figure on an image of 110 by 90 pixels, as large as it is, in a grid of four columns and three rows.
    void field(int32_t column, int32_t row, const std::string &label, const std::function<void()> &draw) const
    {
        const Point origin = {5 + 120 * column, 32 + 112 * row};
        const Paper small({110, 90});
        draw();
        _paper.makeCurrent();
        copyEnlarged(small, 1, origin);
        writeLabel(origin.x, origin.y - 4, label);
    }

    void labelRow(int32_t row, const std::string &label) const
    {
        writeLabel(3, 32 + 66 * row + 20, label);
    }

    void compare(const std::string &name) const
    {
        ExpectGoldenImage("raster/" + name, _paper.image());
    }

private:
    static Size start()
    {
        InitGraph();
        return {kWidth, kHeight};
    }

    Paper _paper;
};

// Lines and rectangles

const std::vector<Size> kPens = {{1, 1}, {2, 2}, {3, 3}, {4, 1}, {1, 4}};

// One column for each vector, one row for each pen.
void lineSheet(const Sheet &sheet, const std::vector<Point> &vectors)
{
    for (int32_t row = 0; row < static_cast<int32_t>(kPens.size()); row++)
    {
        const Size pen = kPens[static_cast<size_t>(row)];
        sheet.labelRow(row, "pen " + text(pen));
        int32_t column = 0;
        for (const Point &vector : vectors)
        {
            const Point from = {vector.x < 0 ? -vector.x : 0, vector.y < 0 ? -vector.y : 0};
            sheet.cell(column, row, "by " + std::to_string(vector.x) + " " + std::to_string(vector.y), pen, from,
                       [&vector] { DrawLineRel(vector.x, vector.y); });
            column++;
        }
    }
}

// Rays around a centre, every 15 degrees, from radius 12 to 72.
void drawFan(Point centre)
{
    for (int32_t angle = 0; angle < 360; angle += 15)
    {
        MovePenTo(centre.x + CosX(angle, 12), centre.y - SinY(angle, 12));
        DrawLineTo(centre.x + CosX(angle, 72), centre.y - SinY(angle, 72));
    }
}

TEST(RasterSheets, LinesByOctant)
{
    const Sheet sheet("lines by octant and pen - the end point is left out; spots: pen before (blue), after (red)");
    lineSheet(sheet, {{7, -3}, {3, -7}, {-3, -7}, {-7, -3}, {-7, 3}, {-3, 7}, {3, 7}, {7, 3}});
    sheet.compare("lines-octants");
}

TEST(RasterSheets, StraightLines)
{
    const Sheet sheet("straight and diagonal lines - runs to the left and up leave out their start; spots as in lines");
    lineSheet(sheet, {{6, 0}, {6, -6}, {0, -6}, {-6, -6}, {-6, 0}, {-6, 6}, {0, 6}, {6, 6}});
    sheet.compare("lines-straight");
}

TEST(RasterSheets, FansOfLines)
{
    const Sheet sheet("fans of lines, every 15 degrees");
    const std::vector<Size> pens = {{1, 1}, {2, 2}, {3, 3}, {5, 5}, {6, 1}, {1, 6}};
    for (int32_t i = 0; i < 6; i++)
    {
        const Point centre = {78 + 160 * (i % 3), 96 + 172 * (i / 3)};
        const Size pen = pens[static_cast<size_t>(i)];
        writeLabel(centre.x - 74, centre.y - 74, "pen " + text(pen));
        SetPenSize(pen.width, pen.height);
        drawFan(centre);
    }
    sheet.compare("lines-fans");
}

TEST(RasterSheets, Rectangles)
{
    const Sheet sheet("rectangles at 1 1 - red: the pen afterwards, at the corner or in the row below");
    const std::vector<Size> sizes = {{1, 1}, {1, 5}, {5, 1}, {2, 2}, {3, 4}, {7, 5}, {-6, 5}, {-5, -6}};
    const std::vector<Size> pens = {{1, 1}, {2, 2}, {1, 1}, {2, 2}, {1, 3}};
    for (int32_t row = 0; row < 5; row++)
    {
        const Size pen = pens[static_cast<size_t>(row)];
        const auto call = row < 2 ? DrawRectangle : FillRectangle;
        sheet.labelRow(row, std::string(row < 2 ? "Draw " : "Fill ") + text(pen));
        for (int32_t column = 0; column < 8; column++)
        {
            const Size size = sizes[static_cast<size_t>(column)];
            const Point corner = {size.width < 0 ? 1 - size.width : 1, size.height < 0 ? 1 - size.height : 1};
            const Rectangle rect = {corner.x, corner.y, corner.x + size.width, corner.y + size.height};
            sheet.cell(column, row, text(size), pen, {0, 9}, [&] { call(&rect); });
        }
    }
    sheet.compare("rectangles");
}

// Ovals and arcs

TEST(RasterSheets, SmallOvals)
{
    const Sheet sheet("small ovals in the upper left corner of their cells - red: the pen afterwards");
    const std::vector<Size> sizes = {{1, 1}, {1, 5}, {5, 1},   {2, 2},  {3, 3},  {4, 4}, {5, 5}, {6, 6},
                                     {7, 7}, {8, 8}, {10, 10}, {10, 5}, {5, 10}, {9, 4}, {4, 9}, {9, 9}};
    const std::vector<std::string> names = {"Draw 1x1", "Draw 1x1", "Fill 1x1", "Fill 1x1", "Draw 2x2"};
    for (int32_t row = 0; row < 5; row++)
    {
        const int32_t pen = row == 4 ? 2 : 1;
        const auto call = row == 2 || row == 3 ? FillOval : DrawOval;
        sheet.labelRow(row, names[static_cast<size_t>(row)]);
        for (int32_t column = 0; column < 8; column++)
        {
            const Size size = sizes[static_cast<size_t>(row) % 2 * 8 + static_cast<size_t>(column)];
            const Rectangle rect = {0, 0, size.width, size.height};
            sheet.cell(column, row, text(size), {pen, pen}, {9, 9}, [&] { call(&rect); });
        }
    }
    sheet.compare("ovals-small");
}

// Ovals around one centre, each smaller than the one around it by 20 pixels.
void drawNestedOvals(Size size, bool fFill)
{
    for (int32_t i = 0; size.width - 20 * i > 0 && size.height - 20 * i > 0; i++)
    {
        const Rectangle rect = {5 + 10 * i, 2 + 10 * i, 5 - 10 * i + size.width, 2 - 10 * i + size.height};
        SetPenColor(i % 2 == 0 || !fFill ? kBlack : kSky);
        (fFill ? FillOval : DrawOval)(&rect);
    }
}

TEST(RasterSheets, Ovals)
{
    const Sheet sheet("ovals, one in the other");
    const std::vector<Size> sizes = {{84, 84}, {85, 85}, {100, 50}, {45, 86}};
    const std::vector<Size> pens = {{2, 2}, {3, 3}, {5, 5}, {8, 2}};
    for (int32_t column = 0; column < 4; column++)
    {
        const Size size = sizes[static_cast<size_t>(column)];
        const Size pen = pens[static_cast<size_t>(column)];
        sheet.field(column, 0, "DrawOval " + text(size), [&] { drawNestedOvals(size, false); });
        sheet.field(column, 1, "pen " + text(pen),
                    [&]
                    {
                        SetPenSize(pen.width, pen.height);
                        drawNestedOvals(size, false);
                    });
        sheet.field(column, 2, "FillOval " + text(size), [&] { drawNestedOvals(size, true); });
    }
    sheet.compare("ovals");
}

const std::vector<int32_t> kSweeps = {30, 90, 135, 270, -60};

// A column for each start, a row for each sweep; draw gets a square of 48 by 48, start and sweep.
void arcSheet(const std::string &name, const std::string &title,
              const std::function<void(const Rectangle &, int32_t, int32_t)> &draw)
{
    const Sheet sheet(title);
    for (int32_t row = 0; row < static_cast<int32_t>(kSweeps.size()); row++)
    {
        const int32_t sweep = kSweeps[static_cast<size_t>(row)];
        for (int32_t column = 0; column < 8; column++)
        {
            const int32_t start = 45 * column;
            const Rectangle rect = {6 + 59 * column, 26 + 67 * row, 54 + 59 * column, 74 + 67 * row};
            writeLabel(rect.left, rect.top - 3,
                       std::to_string(start) + (sweep < 0 ? " " : " +") + std::to_string(sweep));
            fillBox(rect, kPaleGrey);
            SetPenColor(kBlack);
            draw(rect, start, sweep);
        }
    }
    sheet.compare(name);
}

// A slice's frame, filled from its middle, three quarters of the shorter radius from the centre.
void drawSlice(const Rectangle &rect, int32_t start, int32_t sweep, int32_t colour)
{
    SetPenColor(kBlack);
    FrameArc(&rect, start, sweep);
    const int32_t middle = start + sweep / 2;
    const int32_t radius = std::min(rect.right - rect.left, rect.bottom - rect.top) * 3 / 8;
    SetPenColor(colour);
    Fill((rect.left + rect.right) / 2 + CosX(middle, radius), (rect.top + rect.bottom) / 2 - SinY(middle, radius),
         kBlack);
}

TEST(RasterSheets, Arcs)
{
    arcSheet("arcs-draw", "DrawArc: start and sweep, counter-clockwise from the right",
             [](const Rectangle &rect, int32_t start, int32_t sweep) { DrawArc(&rect, start, sweep); });
}

TEST(RasterSheets, FilledArcs)
{
    arcSheet("arcs-fill", "FillArc: start and sweep, counter-clockwise from the right",
             [](const Rectangle &rect, int32_t start, int32_t sweep) { FillArc(&rect, start, sweep); });
}

TEST(RasterSheets, FramedArcs)
{
    arcSheet("arcs-frame", "FrameArc, then Fill from the middle of the slice: start and sweep",
             [](const Rectangle &rect, int32_t start, int32_t sweep) { drawSlice(rect, start, sweep, kOrange); });
}

// Seven slices of 20, 30, 40, 50, 60, 70 and 90 degrees from start on: 360 together.
void drawPie(Point corner, Size size, int32_t start)
{
    const Rectangle rect = {corner.x, corner.y, corner.x + size.width, corner.y + size.height};
    const std::vector<int32_t> sweeps = {20, 30, 40, 50, 60, 70, 90};
    const std::vector<int32_t> colours = {kRed, kOrange, kSky, kGreen, kViolet, kLightGrey, kBlue};
    for (size_t i = 0; i < sweeps.size(); i++)
    {
        drawSlice(rect, start, sweeps[i], colours[i]);
        start += sweeps[i];
    }
}

TEST(RasterSheets, Pies)
{
    const Sheet sheet(
        "pies: slices of 20, 30, 40, 50, 60, 70 and 90 degrees, framed and filled; rows from 90 and from 0");
    const std::vector<Size> sizes = {{25, 25}, {36, 36}, {51, 51}, {76, 76}, {101, 101}, {120, 60}};
    int32_t x = 6;
    for (const Size size : sizes)
    {
        writeLabel(x, 28, text(size));
        drawPie({x, 32}, size, 90);
        drawPie({x, 140}, size, 0);
        x += size.width + 12;
    }
    writeLabel(6, 260, "90x45");
    drawPie({6, 264}, {90, 45}, 90);
    writeLabel(110, 260, "45x90");
    drawPie({110, 264}, {45, 90}, 90);
    writeLabel(170, 260, "90x90, pen 3x3");
    SetPenSize(3, 3);
    drawPie({170, 264}, {90, 90}, 90);
    writeLabel(290, 260, "150x90, from 45");
    drawPie({290, 264}, {150, 90}, 45);
    sheet.compare("pies");
}

// Polygons

using Points = std::vector<Point>;

void drawPoints(Points points, bool fFill, int32_t dx, int32_t dy)
{
    const Polygon polygon = {static_cast<int32_t>(points.size()), points.data()};
    (fFill ? FillPolygon : DrawPolygon)(&polygon, dx, dy);
}

struct Shape
{
    std::string name;
    Points points;
    int32_t dy;
};

// Fits the small cells. The last ones: twice above row 0, moved down; a line there and back; all on one row.
const std::vector<Shape> kSmallShapes = {
    {"triangle", {{4, 0}, {8, 8}, {0, 8}}, 0},        {"square", {{1, 1}, {7, 1}, {7, 7}, {1, 7}}, 0},
    {"diamond", {{4, 0}, {8, 4}, {4, 8}, {0, 4}}, 0}, {"arrow", {{0, 0}, {8, 4}, {0, 8}, {3, 4}}, 0},
    {"bow tie", {{0, 0}, {8, 8}, {8, 0}, {0, 8}}, 0}, {"above 0", {{0, -8}, {8, -4}, {2, -1}}, 9},
    {"3 in line", {{0, 0}, {8, 8}, {4, 4}}, 0},       {"one row", {{0, 4}, {8, 4}, {4, 4}}, 0},
};

TEST(RasterSheets, SmallPolygons)
{
    const Sheet sheet("small polygons - last two rows: filled in black, then drawn in orange over it");
    const std::vector<std::string> names = {"Draw 1x1", "Fill 1x1", "Fill 2x2", "both 1x1", "both 2x2"};
    for (int32_t row = 0; row < 5; row++)
    {
        const int32_t pen = row == 2 || row == 4 ? 2 : 1;
        sheet.labelRow(row, names[static_cast<size_t>(row)]);
        for (int32_t column = 0; column < 8; column++)
        {
            const Shape &shape = kSmallShapes[static_cast<size_t>(column)];
            sheet.cell(column, row, shape.name, {pen, pen}, {9, 9},
                       [&]
                       {
                           drawPoints(shape.points, row > 0, 0, shape.dy);
                           if (row > 2)
                           {
                               SetPenColor(kOrange);
                               drawPoints(shape.points, false, 0, shape.dy);
                           }
                       });
        }
    }
    sheet.compare("polygons-small");
}

// n corners on a circle of radius 34 around (38, 38), visiting every step-th one; the first corner is on top.
Points corners(int32_t n, int32_t step)
{
    Points points;
    for (int32_t i = 0; i < n; i++)
    {
        const int32_t angle = 90 + 360 * (i * step % n) / n;
        points.push_back({38 + CosX(angle, 34), 38 - SinY(angle, 34)});
    }
    return points;
}

TEST(RasterSheets, Polygons)
{
    const Sheet sheet("polygons: drawn with pen 1x1, drawn with pen 3x3, filled, stars and other shapes filled");
    const std::vector<Size> regular = {{3, 1}, {4, 1}, {5, 1}, {6, 1}, {8, 1}, {12, 1}};
    const std::vector<Size> stars = {{5, 2}, {7, 2}, {7, 3}, {8, 3}, {9, 4}};
    for (int32_t i = 0; i < 6; i++)
    {
        const Points points = corners(regular[static_cast<size_t>(i)].width, 1);
        drawPoints(points, false, 2 + 79 * i, 14);
        SetPenSize(3, 3);
        drawPoints(points, false, 2 + 79 * i, 100);
        SetPenSize(1, 1);
        drawPoints(points, true, 2 + 79 * i, 186);
    }
    for (int32_t i = 0; i < 5; i++)
    {
        drawPoints(corners(stars[static_cast<size_t>(i)].width, stars[static_cast<size_t>(i)].height), true, 2 + 79 * i,
                   272);
    }
    const Points comb = {{4, 70},  {4, 6},   {14, 6},  {14, 50}, {24, 50}, {24, 20},
                         {34, 20}, {34, 50}, {44, 50}, {54, 6},  {70, 70}};
    drawPoints(comb, true, 397, 272);
    sheet.compare("polygons");
}

// Flood fill

void drawBox(Rectangle box, int32_t colour)
{
    SetPenColor(colour);
    DrawRectangle(&box);
}

void fillFrom(int32_t x, int32_t y, int32_t colour, int32_t boundary)
{
    SetPenColor(colour);
    Fill(x, y, boundary);
}

// A box with a wall that winds inwards, 10 pixels between its turns.
void drawSpiral()
{
    drawBox({5, 5, 106, 86}, kBlack);
    MovePenTo(5, 15);
    int32_t across = 90;
    int32_t down = 60;
    for (int32_t sign = 1; down > 0; sign = -sign)
    {
        DrawLineTo(penPosition().x + sign * across, penPosition().y);
        DrawLineTo(penPosition().x, penPosition().y + sign * down);
        across -= 10;
        down -= 10;
    }
}

void drawComb()
{
    drawBox({5, 5, 105, 85}, kBlack);
    for (int32_t x = 10; x < 100; x += 10)
    {
        MovePenTo(x, 10);
        DrawLineTo(x, 84);
        MovePenTo(x + 5, 5);
        DrawLineTo(x + 5, 79);
    }
}

// Two rooms with a hole in the corner pixel where they touch: filling goes up, down, left and right, not across.
void drawRooms()
{
    drawBox({5, 5, 56, 46}, kBlack);
    drawBox({55, 45, 106, 86}, kBlack);
    SetPenColor(kWhite);
    MovePenTo(55, 45);
    DrawPen();
}

void fillsWithin(const Sheet &sheet)
{
    sheet.field(0, 0, "inside a box, pen 9x9",
                []
                {
                    drawBox({10, 10, 100, 80}, kBlack);
                    SetPenSize(9, 9);
                    fillFrom(50, 40, kSky, kBlack);
                });
    sheet.field(1, 0, "between two ovals",
                []
                {
                    const Rectangle outer = {5, 5, 105, 85};
                    const Rectangle inner = {35, 25, 75, 65};
                    DrawOval(&outer);
                    DrawOval(&inner);
                    fillFrom(15, 45, kSky, kBlack);
                });
    sheet.field(2, 0, "through a spiral",
                []
                {
                    drawSpiral();
                    fillFrom(12, 8, kSky, kBlack);
                });
    sheet.field(3, 0, "through a comb",
                []
                {
                    drawComb();
                    fillFrom(7, 82, kSky, kBlack);
                });
}

void fillsOverColours(const Sheet &sheet)
{
    sheet.field(0, 1, "outside, up to the edges",
                []
                {
                    const Rectangle oval = {30, 20, 80, 70};
                    DrawOval(&oval);
                    fillFrom(0, 0, kSky, kBlack);
                });
    sheet.field(1, 1, "over other colours",
                []
                {
                    fillBox({40, 20, 110, 40}, kOrange);
                    drawBox({60, 30, 90, 90}, kGreen);
                    drawBox({10, 10, 100, 80}, kBlack);
                    fillFrom(12, 12, kSky, kBlack);
                });
    sheet.field(2, 1, "up to its own colour",
                []
                {
                    drawBox({10, 10, 100, 80}, kBlack);
                    drawBox({30, 20, 80, 70}, kSky);
                    fillFrom(12, 12, kSky, kBlack);
                });
    sheet.field(3, 1, "not across corners",
                []
                {
                    drawRooms();
                    fillFrom(10, 10, kSky, kBlack);
                });
}

void fillsOfNothing(const Sheet &sheet)
{
    sheet.field(0, 2, "from a wall: nothing",
                []
                {
                    drawBox({10, 10, 100, 80}, kBlack);
                    fillFrom(10, 10, kSky, kBlack);
                });
    sheet.field(1, 2, "unknown wall: nothing",
                []
                {
                    drawBox({10, 10, 100, 80}, kBlack);
                    fillFrom(50, 40, kSky, kGreen);
                });
    sheet.field(2, 2, "from outside: nothing",
                []
                {
                    drawBox({10, 10, 100, 80}, kBlack);
                    fillFrom(110, 40, kSky, kBlack);
                });
    sheet.field(3, 2, "twice: the same",
                []
                {
                    drawBox({10, 10, 100, 80}, kBlack);
                    fillFrom(50, 40, kSky, kBlack);
                    fillFrom(60, 50, kSky, kBlack);
                });
}

TEST(RasterSheets, FloodFills)
{
    const Sheet sheet("flood fills in blue: up to black, the edges of the image, and what is blue already");
    fillsWithin(sheet);
    fillsOverColours(sheet);
    fillsOfNothing(sheet);
    sheet.compare("fills");
}

// Text

const std::vector<std::string> kStyles = {"plain",   "bold",     "italic",  "bold it.",
                                          "underl.", "bold un.", "it. un.", "all three"};

// Draws a text and marks the pen's place before and after it.
void drawMarkedText(Point from, const std::string &line)
{
    SetPenColor(kBlack);
    MovePenTo(from.x, from.y);
    DrawText(line.c_str());
    drawSpots(from, penPosition(), 1, {0, 0});
}

// A column for each style, a row for each direction.
void textSheet(const Sheet &sheet, int32_t font, int32_t size)
{
    for (int32_t style = 0; style < 8; style++)
    {
        const int32_t x = 6 + 60 * style;
        writeLabel(x, 22, kStyles[static_cast<size_t>(style)]);
        plainText(font, size);
        SetFontStyle(style);
        drawMarkedText({x, 38}, "Quay\nfig");
        SetFontOrientation(1);
        drawMarkedText({x, 72}, "Qfy");
        SetFontOrientation(2);
        drawMarkedText({x + 12, 190}, "Quay\nfig");
        SetFontAngle(30);
        drawMarkedText({x, 245}, "Quay\nfig");
        SetFontAngle(200);
        drawMarkedText({x + 44, 318}, "Quay\nfig");
    }
    sheet.compare("text-" + std::string(font == 0 ? "small8" : font == 1 ? "geneva12" : "helvetica10"));
}

TEST(RasterSheets, TextInSmall8)
{
    textSheet(
        Sheet("Small8 by style; horizontal, stacked, turned by 90, by 30, by 200 degrees; spots: pen before, after"), 0,
        8);
}

TEST(RasterSheets, TextInGeneva12)
{
    textSheet(Sheet("Geneva12 by style; horizontal, stacked, turned by 90, by 30, by 200 degrees; spots as in Small8"),
              1, 12);
}

TEST(RasterSheets, TextInHelvetica10)
{
    textSheet(
        Sheet("Helvetica10 by style; horizontal, stacked, turned by 90, by 30, by 200 degrees; spots as in Small8"), 2,
        11);
}

TEST(RasterSheets, TextByAngle)
{
    const Sheet sheet("text every 30 degrees, Helvetica10");
    for (int32_t i = 0; i < 4; i++)
    {
        const Point centre = {120 + 240 * (i % 2), 100 + 172 * (i / 2)};
        writeLabel(centre.x - 110, centre.y - 70, kStyles[static_cast<size_t>(i < 3 ? i : 4)]);
        plainText(2, 11);
        SetFontStyle(i < 3 ? i : 4);
        for (int32_t angle = 0; angle < 360; angle += 30)
        {
            SetFontAngle(angle);
            drawMarkedText({centre.x + CosX(angle, 22), centre.y - SinY(angle, 22)}, "turn " + std::to_string(angle));
        }
    }
    sheet.compare("text-angles");
}

TEST(RasterSheets, TextBySize)
{
    const Sheet sheet("text by size, 6 to 48 pixels: Small8, Geneva12, Helvetica10");
    const std::vector<int32_t> sizes = {6, 7, 8, 9, 10, 11, 12, 14, 16, 18, 24, 36, 48};
    for (int32_t font = 0; font < 3; font++)
    {
        int32_t y = 14;
        for (const int32_t size : sizes)
        {
            y += size + 7;
            plainText(font, size);
            MovePenTo(5 + 160 * font, y);
            DrawText((std::to_string(size) + (size < 20 ? " Box quay 123" : size < 30 ? " Box q" : " Bq")).c_str());
        }
    }
    sheet.compare("text-sizes");
}

// The box that GetTextDim tells, in grey, and the text in it.
void drawMeasured(Point corner, const std::string &line, int32_t font, int32_t style, int32_t orientation)
{
    plainText(font, font == 0 ? 8 : font == 1 ? 12 : 11);
    SetFontStyle(style);
    SetFontOrientation(orientation);
    FontInfo info = {};
    GetFontInfo(&info);
    Point dim = {0, 0};
    GetTextDim(line.c_str(), &dim);
    fillBox({corner.x, corner.y, corner.x + dim.x, corner.y + dim.y}, kLightGrey);
    SetPenColor(kBlack);
    const int32_t ascent = info.ascent + style % 2;
    MovePenTo(corner.x + (orientation == 2 ? ascent : 0), corner.y + (orientation == 2 ? dim.y : ascent));
    DrawText(line.c_str());
}

// A grey rectangle and a text flowed into it.
void drawFlowed(Rectangle rect, const std::string &line, int32_t style)
{
    plainText(2, 11);
    fillBox(rect, kLightGrey);
    SetPenColor(kBlack);
    SetFontStyle(style);
    DrawTextInRect(line.c_str(), &rect);
}

TEST(RasterSheets, MeasuredAndFlowedText)
{
    const Sheet sheet("grey: what GetTextDim tells (left), the rectangles of DrawTextInRect (right)");
    for (int32_t i = 0; i < 8; i++)
    {
        drawMeasured({6 + 62 * (i % 4), 20 + 52 * (i / 4)}, "Quay\nfigs", i % 3, i, 0);
        drawMeasured({6 + 62 * (i % 4), 130 + 66 * (i / 4)}, "Quay\nfigs", i % 3, i, 2);
        drawMeasured({6 + 30 * i, 268}, "Qgy", i % 3, i, 1);
    }
    drawFlowed({262, 20, 302, 200}, "stairs\nup\na", 0);
    drawFlowed({312, 20, 336, 250}, "stairs up", 0);
    drawFlowed({346, 20, 370, 250}, "stairs up", 4);
    drawFlowed({380, 20, 420, 200}, "stairs\nup", 7);
    drawFlowed({430, 20, 470, 60}, "stairs\nup", 4);
    sheet.compare("text-boxes");
}

} // namespace
