// Random pies: 2,000 of 2 to 30 slices and 40 to 400 pixels, exploded or not. No fill leaves its slice, whatever seeds
// and frames do at small angles, and slices that have an inside are filled. Geometry judges all of them, with the width
// of a frame's inaccuracy; the small ones are judged to the pixel by what each slice's frame alone encloses.

#include "chart_fixture.h"

#include <cmath>
#include <gtest/gtest.h>
#include <random>

// A slice as geometry knows it.
struct Sector
{
    int32_t start; // degrees
    int32_t span;
    double centerX; // moved when exploded
    double centerY;
    int32_t colour;
    Rectangle square;
    int32_t seedX; // where its fill begins
    int32_t seedY;
};

// A pie that stands alone in a square plot without label band.
struct RandomPie
{
    int32_t side; // of the plot, pixels
    uint32_t explode;
    std::vector<double> values;
};

constexpr int32_t kMargin = 20; // pixels around the plot

// Pies up to this size are judged to the pixel: larger ones would take minutes.
constexpr int32_t kExactSide = 100;

static RandomPie _RandomPie(std::mt19937 *random)
{
    RandomPie pie = {};
    pie.side = 40 + static_cast<int32_t>((*random)() % 361);
    const uint32_t choices[] = {0, kExplodeAll, kExplodeMin, kExplodeMax, kExplodeMin | kExplodeMax};
    pie.explode = choices[(*random)() % 5];
    const size_t n = 2 + (*random)() % 29;
    for (size_t i = 0; i < n; i++)
    {
        // half of the slices small, so that most pies have some of few degrees
        const uint32_t limit = (*random)() % 2 == 0 ? 20 : 1000;
        pie.values.push_back(static_cast<double>(1 + static_cast<uint32_t>((*random)()) % limit));
    }
    return pie;
}

// The sectors by the rules for spans and explosion, in 128ths of a pixel.
static std::vector<Sector> _Sectors(const RandomPie &pie, double *radius)
{
    double sum = 0;
    double max = 0;
    double min = 99999999;
    for (const double value : pie.values)
    {
        sum += value;
        max = std::max(max, value);
        min = std::min(min, value);
    }
    const int32_t diameter = pie.explode == 0 ? pie.side : pie.side - pie.side * 128 / 5 / 128;
    const int32_t center = kMargin + (pie.side - diameter) / 2 + diameter / 2;
    const int32_t r = diameter * 64;
    *radius = diameter / 2.0;
    std::vector<Sector> sectors;
    int32_t start = 0;
    for (size_t i = 0; i < pie.values.size(); i++)
    {
        const double value = pie.values[i];
        const bool fLast = i + 1 == pie.values.size();
        const int32_t span = fLast ? 359 - start : static_cast<int32_t>(std::floor(360 * (value / sum) + 0.5));
        const bool fExploded = (pie.explode & kExplodeAll) != 0 || ((pie.explode & kExplodeMax) != 0 && value == max) ||
                               ((pie.explode & kExplodeMin) != 0 && value == min);
        const int32_t middle = start + span / 2;
        const int32_t x = center + (fExploded && span > 0 ? CosX(-middle, r / 5 / 128) : 0);
        const int32_t y = center + (fExploded && span > 0 ? SinY(-middle, r / 5 / 128) : 0);
        const Rectangle square = {x - diameter / 2, y - diameter / 2, x - diameter / 2 + diameter,
                                  y - diameter / 2 + diameter};
        sectors.push_back({start, span, static_cast<double>(x), static_cast<double>(y),
                           static_cast<int32_t>(9 + 16 * i) % 256, square, x + CosX(-middle, r / 10 * 9 / 128),
                           y + SinY(-middle, r / 10 * 9 / 128)});
        start += span;
    }
    return sectors;
}

// Whether a pixel is in a sector or near it. Frames are drawn to the nearest pixel whose angle rounds to the right
// degree: up to a degree and two pixels beside the true line.
static bool _IsNear(const Sector &sector, double radius, int32_t x, int32_t y)
{
    const double dx = x - sector.centerX;
    const double dy = sector.centerY - y;
    const double distance = std::sqrt(dx * dx + dy * dy);
    if (sector.span <= 0 || distance > radius + 2)
    {
        return false;
    }
    if (distance < 3)
    {
        return true;
    }
    const double slack = 1.0 + std::asin(std::min(1.0, 2.0 / distance)) * 180 / M_PI;
    const double angle = std::atan2(dy, dx) * 180 / M_PI;
    const double past = std::fmod(angle - sector.start + slack + 720.0, 360.0);
    return past <= sector.span + 2 * slack;
}

// The pixels in a slice's colour that belong to no slice of that colour, and slices with room that were not filled.
struct Verdict
{
    int32_t nStray;
    int32_t nEmpty;
    int32_t nFilled; // of those with room
};

static Verdict _Judge(const TestChart &chart, const RandomPie &pie)
{
    Verdict verdict = {0, 0, 0};
    double radius = 0;
    const std::vector<Sector> sectors = _Sectors(pie, &radius);
    const int32_t side = pie.side + 2 * kMargin;
    for (int32_t y = 0; y < side; y++)
    {
        for (int32_t x = 0; x < side; x++)
        {
            const int32_t colour = chart.At(x, y);
            bool fHome = colour == 0 || colour == kColorAreaOutline;
            for (size_t i = 0; i < sectors.size() && !fHome; i++)
            {
                fHome = sectors[i].colour == colour && _IsNear(sectors[i], radius, x, y);
            }
            verdict.nStray += fHome ? 0 : 1;
        }
    }
    const bool fOverlap = sectors.back().start > 352; // rounding may carry the last slices over the first
    for (const Sector &sector : sectors)
    {
        // 8 pixels from radius to radius where the fill begins; a seed on the frame fills nothing, as ever
        const bool fRoom = sector.span * M_PI / 180 * radius * 0.9 >= 8;
        const int32_t colour = chart.At(sector.seedX, sector.seedY);
        if (fRoom && !fOverlap && colour != kColorAreaOutline)
        {
            verdict.nFilled += colour == sector.colour ? 1 : 0;
            verdict.nEmpty += colour == sector.colour ? 0 : 1;
        }
    }
    return verdict;
}

constexpr int32_t kRim = 2; // pixels around a slice's square in a mask

static size_t _Index(int32_t x, int32_t y, int32_t side)
{
    return static_cast<size_t>(y) * static_cast<size_t>(side) + static_cast<size_t>(x);
}

// The pixels of a chart that is a square.
static std::vector<uint8_t> _Pixels(const TestChart &chart, int32_t side)
{
    const uint8_t *pixels = chart.set.image->pixels;
    return {pixels, pixels + _Index(0, side, side)};
}

// Which pixels of a slice's square and the rim around it the slice's frame, alone on an image, keeps from the corner.
static std::vector<uint8_t> _Inside(const Sector &sector)
{
    const int32_t side = sector.square.right - sector.square.left + 2 * kRim;
    TestChart chart(kTypePie, side, side);
    InitChartGraph(&chart.set);
    const Rectangle square = {kRim, kRim, side - kRim, side - kRim};
    SetPenColor(kColorAreaOutline);
    FrameArc(&square, sector.start, sector.span);
    std::vector<uint8_t> inside = _Pixels(chart, side);
    for (uint8_t &pixel : inside)
    {
        pixel = pixel == kColorAreaOutline ? 0 : 1;
    }
    std::vector<Point> toVisit = {{0, 0}};
    while (!toVisit.empty())
    {
        const Point at = toVisit.back();
        toVisit.pop_back();
        const size_t index = _Index(at.x, at.y, side);
        if (at.x >= 0 && at.y >= 0 && at.x < side && at.y < side && inside[index] != 0)
        {
            inside[index] = 0; // hangs together with the corner
            toVisit.insert(toVisit.end(), {{at.x + 1, at.y}, {at.x - 1, at.y}, {at.x, at.y + 1}, {at.x, at.y - 1}});
        }
    }
    return inside;
}

// Takes the pixels that a slice explains off the picture: those of its colour in its inside. If it was filled, what
// else is in its inside belongs to it from then on, and no later slice may have coloured it.
static void _TakeOff(const Sector &sector, int32_t side, std::vector<uint8_t> *picture, std::vector<uint8_t> *taken)
{
    const std::vector<uint8_t> inside = _Inside(sector);
    const int32_t maskSide = sector.square.right - sector.square.left + 2 * kRim;
    const size_t seed = _Index(sector.seedX, sector.seedY, side);
    const bool fFilled = (*taken)[seed] == 0 && (*picture)[seed] == sector.colour;
    for (int32_t i = 0; i < maskSide * maskSide; i++)
    {
        const int32_t x = sector.square.left - kRim + i % maskSide;
        const int32_t y = sector.square.top - kRim + i / maskSide;
        const size_t index = _Index(x, y, side);
        if (inside[static_cast<size_t>(i)] != 0 && (*taken)[index] == 0)
        {
            (*picture)[index] = (*picture)[index] == sector.colour ? 0 : (*picture)[index];
            (*taken)[index] = fFilled ? 1 : 0;
        }
    }
}

// The number of pixels that no slice explains.
static int32_t _CountWrong(const TestChart &chart, const RandomPie &pie)
{
    double radius = 0;
    const int32_t side = pie.side + 2 * kMargin;
    std::vector<uint8_t> picture = _Pixels(chart, side);
    std::vector<uint8_t> taken(picture.size(), 0);
    for (const Sector &sector : _Sectors(pie, &radius))
    {
        if (sector.span > 0)
        {
            _TakeOff(sector, side, &picture, &taken);
        }
    }
    int32_t nWrong = 0;
    for (const uint8_t colour : picture)
    {
        nWrong += colour == 0 || colour == kColorAreaOutline ? 0 : 1;
    }
    return nWrong;
}

static void _Draw(TestChart *chart, const RandomPie &pie)
{
    chart->SetCategories("A", std::vector<std::string>(pie.values.size(), "A"));
    chart->AddSeries("", 0, pie.values);
    chart->Build();
    chart->set.plotBox = {kMargin, kMargin, kMargin + pie.side, kMargin + pie.side};
    chart->set.pieExplode = pie.explode;
    InitChartGraph(&chart->set);
    ChartPie(&chart->data, &chart->set);
}

TEST(RandomPies, KeepTheirFillsInTheirSlices)
{
    std::mt19937 random(1996);
    int32_t nFilled = 0;
    for (int32_t i = 0; i < 2000; i++)
    {
        const RandomPie pie = _RandomPie(&random);
        TestChart chart(kTypePie, pie.side + 2 * kMargin, pie.side + 2 * kMargin);
        _Draw(&chart, pie);
        const Verdict verdict = _Judge(chart, pie);
        ASSERT_EQ(verdict.nStray, 0) << "pie " << i << " of " << pie.values.size() << " slices, " << pie.side;
        ASSERT_EQ(verdict.nEmpty, 0) << "pie " << i << " of " << pie.values.size() << " slices, " << pie.side;
        nFilled += verdict.nFilled;
        if (pie.side <= kExactSide)
        {
            ASSERT_EQ(_CountWrong(chart, pie), 0)
                << "pie " << i << " of " << pie.values.size() << " slices, " << pie.side;
        }
    }
    EXPECT_GT(nFilled, 5000);
}
