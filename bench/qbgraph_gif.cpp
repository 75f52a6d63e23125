// qbgraph_gif.cpp - ImgToGif beside the encoders of giflib and libgd, on the same images, in the same run.
//
// All three write into memory. "bytes" is the size of the file, "px" the pixels coded in a second.

#include "qbgraph.h"
#include "qbgrfnt.h"

#include <algorithm>
#include <array>
#include <benchmark/benchmark.h>
#include <cmath>
#include <cstdlib>
#include <gd.h>
#include <gif_lib.h>
#include <map>
#include <random>
#include <string>
#include <vector>

// An image as all three want it; ours are palette numbers, the others take positions in the colour table.
struct BenchImage
{
    Image *image;
    std::vector<uint8_t> positions;
};

// Palette numbers far apart, white first.
static const int32_t aColor[16] = {0, 215, 35, 180, 30, 6, 210, 5, 86, 92, 43, 129, 57, 100, 222, 160};

static void _FillRect(int32_t color, int32_t left, int32_t top, int32_t right, int32_t bottom)
{
    SetPenColor(color);
    const Rectangle rect = {left, top, right, bottom};
    FillRectangle(&rect);
}

static void _Line(int32_t color, int32_t x0, int32_t y0, int32_t x1, int32_t y1)
{
    SetPenColor(color);
    MovePenTo(x0, y0);
    DrawLineTo(x1, y1);
}

static void _Label(int32_t x, int32_t y, int32_t value)
{
    SetPenColor(aColor[1]);
    MovePenTo(x, y);
    DrawText(std::to_string(value).c_str());
}

static Image *_NewCanvas(int32_t width, int32_t height, uint32_t nColors)
{
    const Rectangle rect = {0, 0, width, height};
    Image *image = NewImage(&rect, nColors);
    if (image == nullptr)
    {
        std::abort();
    }
    SetPenColor(aColor[0]);
    FillImage();
    return image;
}

// Axes, grid lines and labels.
static void _DrawFrame(int32_t width, int32_t height, int32_t step)
{
    for (int32_t y = height - 40; y > 40; y -= step)
    {
        _Line(aColor[2], 60, y, width - 20, y);
        _Label(10, y - 6, height - y);
    }
    for (int32_t x = 60; x < width - 20; x += 2 * step)
    {
        _Label(x, height - 20, x);
    }
    _Line(aColor[1], 60, 20, 60, height - 40);
    _Line(aColor[1], 60, height - 40, width - 20, height - 40);
}

// Groups of bars with outlines, a legend, and two lines across in the last colours.
static Image *_BarChart(int32_t width, int32_t height, uint32_t nColors)
{
    std::mt19937 random(1);
    Image *image = _NewCanvas(width, height, nColors);
    const int32_t nSeries = static_cast<int32_t>(nColors) - 3;
    _DrawFrame(width, height, 40);
    const int32_t barWidth = std::max(6, width / 100);
    for (int32_t x = 70, bar = 0; x + barWidth < width - 120; x += bar % nSeries == 0 ? 3 * barWidth : barWidth, ++bar)
    {
        const int32_t top = height - 41 - static_cast<int32_t>(random() % static_cast<uint32_t>(height - 100));
        _FillRect(aColor[1], x, top - 1, x + barWidth, height - 40);
        _FillRect(aColor[3 + bar % nSeries], x + 1, top, x + barWidth - 1, height - 41);
    }
    for (int32_t i = 0; i < nSeries; ++i)
    {
        _FillRect(aColor[3 + i], width - 110, 30 + 20 * i, width - 98, 42 + 20 * i);
        _Label(width - 90, 30 + 20 * i, 1000 + i);
    }
    return image;
}

static Image *_LineChart(int32_t width, int32_t height)
{
    std::mt19937 random(2);
    Image *image = _NewCanvas(width, height, 6);
    _DrawFrame(width, height, 50);
    for (int32_t series = 3; series < 6; ++series)
    {
        int32_t y = height / 2;
        for (int32_t x = 60; x + 24 < width - 20; x += 24)
        {
            const int32_t next = std::clamp(y + static_cast<int32_t>(random() % 121) - 60, 30, height - 50);
            _Line(aColor[series], x, y, x + 24, next);
            y = next;
        }
    }
    return image;
}

// Every pixel of an image, from a function of x and y that gives palette numbers.
template <class Color>
static Image *_Painted(int32_t width, int32_t height, Color fColor)
{
    const Rectangle rect = {0, 0, width, height};
    Image *image = NewImage(&rect, 256);
    if (image == nullptr)
    {
        std::abort();
    }
    for (int32_t i = 0; i < width * height; ++i)
    {
        image->pixels[i] = fColor(i % width, i / width);
    }
    const uint8_t *begin = image->pixels;
    const uint8_t *end = begin + static_cast<int64_t>(width) * height;
    for (int32_t color = 0; color < 256; ++color)
    {
        if (std::find(begin, end, color) != end)
        {
            SetPenColor(color);
        }
    }
    return image;
}

static Image *_Noise()
{
    std::mt19937 random(3);
    return _Painted(1000, 1000, [&](int32_t, int32_t) { return static_cast<uint8_t>(random()); });
}

// Sky, hills and grain, spread to the six levels of each colour with the error carried to the next pixels.
static Image *_Photograph()
{
    const int32_t width = 1024;
    std::mt19937 random(4);
    std::vector<std::array<double, 3>> below(width + 2);
    std::array<double, 3> right = {};
    const auto color = [&](int32_t x, int32_t y)
    {
        const double hill = 420 + 90 * std::sin(x / 130.0) + 40 * std::sin(x / 31.0);
        const double light = std::sin(x / 90.0 + y / 70.0) * 12 + static_cast<double>(random() % 13);
        const bool fSky = y < hill;
        const std::array<double, 3> want = {fSky ? 90 + y / 6.0 + light : 60 + (y - hill) / 4 + light,
                                            fSky ? 140 + y / 8.0 + light : 110 - (y - hill) / 8 + 2 * light,
                                            fSky ? 225 - y / 20.0 : 50 + light};
        int32_t index = 0;
        for (size_t c = 0; c < 3; ++c)
        {
            const size_t at = static_cast<size_t>(x) + 1;
            const double value = want[c] + right[c] + below[at][c];
            const int32_t level = static_cast<int32_t>(std::clamp(std::lround(value / 51), 0L, 5L));
            const double error = value - 51 * level;
            right[c] = error * 7 / 16;
            below[at][c] = error / 16;
            below[at - 1][c] += error * 5 / 16;
            below[at - 1][c] += x > 0 ? error * 3 / 16 : 0;
            index = index * 6 + 5 - level;
        }
        return static_cast<uint8_t>(index);
    };
    return _Painted(width, 768, color);
}

static BenchImage _Bench(Image *image)
{
    BenchImage bench = {image, {}};
    SetImage(image);
    const int32_t size = image->width * image->height;
    for (int32_t i = 0; i < size; ++i)
    {
        bench.positions.push_back(static_cast<uint8_t>(image->colorTable->positions[image->pixels[i]]));
    }
    return bench;
}

static const std::map<std::string, BenchImage> &_Images()
{
    static std::map<std::string, BenchImage> images;
    if (images.empty())
    {
        InitGraph();
        images["chart8_600x400"] = _Bench(_BarChart(600, 400, 8));
        images["chart16_2000x1500"] = _Bench(_BarChart(2000, 1500, 16));
        images["line6_33600x800"] = _Bench(_LineChart(33600, 800));
        images["flat_1000x1000"] = _Bench(_NewCanvas(1000, 1000, 2));
        images["noise256_1000x1000"] = _Bench(_Noise());
        images["photo_1024x768"] = _Bench(_Photograph());
    }
    return images;
}

// Memory that is written to.
struct Sink
{
    std::vector<uint8_t> bytes;
};

static void _Report(benchmark::State &state, const BenchImage &bench, size_t bytes)
{
    state.counters["bytes"] = static_cast<double>(bytes);
    state.counters["px"] =
        benchmark::Counter(static_cast<double>(bench.positions.size()), benchmark::Counter::kIsIterationInvariantRate);
}

static ssize_t _WriteSink(void *cookie, const char *data, size_t size)
{
    std::vector<uint8_t> &bytes = static_cast<Sink *>(cookie)->bytes;
    bytes.insert(bytes.end(), data, data + size);
    return static_cast<ssize_t>(size);
}

static void _BenchOurs(benchmark::State &state, const char *name)
{
    const BenchImage *bench = &_Images().at(name);
    Sink sink;
    for ([[maybe_unused]] auto step : state)
    {
        sink.bytes.clear();
        FILE *out = fopencookie(&sink, "wb", {nullptr, _WriteSink, nullptr, nullptr});
        ImgToGif(bench->image, 0, out);
        std::fclose(out);
    }
    _Report(state, *bench, sink.bytes.size());
}

static int _WriteGiflib(GifFileType *gif, const GifByteType *data, int size)
{
    std::vector<uint8_t> &bytes = static_cast<Sink *>(gif->UserData)->bytes;
    bytes.insert(bytes.end(), data, data + size);
    return size;
}

static ColorMapObject *_GiflibColors(const ColorTable &table)
{
    int32_t nEntries = 2;
    while (nEntries < static_cast<int32_t>(table.count))
    {
        nEntries *= 2;
    }
    ColorMapObject *map = GifMakeMapObject(nEntries, nullptr);
    for (uint32_t k = 0; k < table.count; ++k)
    {
        const uint8_t *rgb = aRGB[table.used[k]];
        map->Colors[k] = {rgb[0], rgb[1], rgb[2]};
    }
    return map;
}

static void _BenchGiflib(benchmark::State &state, const char *name)
{
    const BenchImage *bench = &_Images().at(name);
    Sink sink;
    std::vector<uint8_t> positions = bench->positions;
    SetImage(bench->image);
    ColorMapObject *map = _GiflibColors(*bench->image->colorTable);
    const int width = bench->image->width;
    const int height = bench->image->height;
    for ([[maybe_unused]] auto step : state)
    {
        sink.bytes.clear();
        int error = 0;
        GifFileType *gif = EGifOpen(&sink, _WriteGiflib, &error);
        EGifPutScreenDesc(gif, width, height, map->BitsPerPixel, 0, map);
        EGifPutImageDesc(gif, 0, 0, width, height, false, nullptr);
        for (int y = 0; y < height; ++y)
        {
            EGifPutLine(gif, positions.data() + static_cast<int64_t>(y) * width, width);
        }
        EGifCloseFile(gif, &error);
    }
    GifFreeMapObject(map);
    _Report(state, *bench, sink.bytes.size());
}

static void _BenchGd(benchmark::State &state, const char *name)
{
    const BenchImage *bench = &_Images().at(name);
    const ColorTable &table = *bench->image->colorTable;
    gdImagePtr picture = gdImageCreate(bench->image->width, bench->image->height);
    for (uint32_t k = 0; k < table.count; ++k)
    {
        const uint8_t *rgb = aRGB[table.used[k]];
        gdImageColorAllocate(picture, rgb[0], rgb[1], rgb[2]);
    }
    for (int32_t y = 0; y < bench->image->height; ++y)
    {
        const auto row = bench->positions.begin() + static_cast<int64_t>(y) * bench->image->width;
        std::copy(row, row + bench->image->width, picture->pixels[y]);
    }
    int size = 0;
    for ([[maybe_unused]] auto step : state)
    {
        gdFree(gdImageGifPtr(picture, &size));
    }
    gdImageDestroy(picture);
    _Report(state, *bench, static_cast<size_t>(size));
}

#define BENCH_IMAGE(name)                                                                                              \
    BENCHMARK_CAPTURE(_BenchOurs, name, #name)->Unit(benchmark::kMicrosecond);                                         \
    BENCHMARK_CAPTURE(_BenchGiflib, name, #name)->Unit(benchmark::kMicrosecond);                                       \
    BENCHMARK_CAPTURE(_BenchGd, name, #name)->Unit(benchmark::kMicrosecond)

BENCH_IMAGE(chart8_600x400);
BENCH_IMAGE(chart16_2000x1500);
BENCH_IMAGE(line6_33600x800);
BENCH_IMAGE(flat_1000x1000);
BENCH_IMAGE(noise256_1000x1000);
BENCH_IMAGE(photo_1024x768);

BENCHMARK_MAIN();
