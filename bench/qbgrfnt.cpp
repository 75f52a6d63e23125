// qbgrfnt.cpp - fetching glyphs, and drawing a label of 40 characters beside libgd drawing as many.
//
// libgd draws with two fonts that it has built in: gdFontTiny of 8 rows beside Small8, gdFontSmall of 13 rows beside
// the larger two. Both programs take turns within one run, and "ratio" is our time over libgd's: below 1 we are faster.

#include "qbgrfnt.h"
#include "qbgraph.h"

#include <benchmark/benchmark.h>
#include <cstring>
#include <ctime>
#include <gd.h>
#include <gdfonts.h>
#include <gdfontt.h>

constexpr int32_t kBlack = 255; // palette indices
constexpr int32_t kWhite = 0;
constexpr int32_t kSide = 700; // pixels: the widest label fits, upright or turned
constexpr int32_t kMargin = 40;

static const char kLabel[] = "Sales of 1998 by region, in million tons";
static_assert(sizeof kLabel == 40 + 1);

// Arguments: font, size.
static void FetchAllGlyphs(benchmark::State &state)
{
    InitFonts();
    SetFont(static_cast<int32_t>(state.range(0)));
    SetFontSize(static_cast<int32_t>(state.range(1)));
    int64_t nGlyphs = 0;
    while (state.KeepRunning())
    {
        for (int32_t code = 0; code < 256; code++)
        {
            FontChar glyph;
            nGlyphs += GetFontChar(code, 1, &glyph);
            benchmark::DoNotOptimize(glyph);
            benchmark::ClobberMemory();
        }
    }
    state.SetItemsProcessed(nGlyphs);
}
BENCHMARK(FetchAllGlyphs)
    ->ArgNames({"font", "size"})
    ->ArgsProduct({{0}, {8, 6, 12, 36, 127}})
    ->ArgsProduct({{1}, {12, 9, 18, 36, 127}})
    ->ArgsProduct({{2}, {11, 9, 14, 36, 127}});

// One white image of each program, the same size.
class Canvases
{
public:
    Canvases()
    {
        const Rectangle rect = {0, 0, kSide, kSide};
        InitGraph();
        ours = NewImage(&rect, 256);
        SetImage(ours);
        SetPenColor(kWhite);
        FillImage();
        SetPenColor(kBlack);
        theirs = gdImageCreate(kSide, kSide);
        gdImageColorAllocate(theirs, 255, 255, 255);
        theirBlack = gdImageColorAllocate(theirs, 0, 0, 0);
    }

    ~Canvases()
    {
        SetImage(nullptr);
        KillImage(ours);
        gdImageDestroy(theirs);
    }

    Canvases(const Canvases &) = delete;
    Canvases &operator=(const Canvases &) = delete;

    void DrawTheirs(gdFontPtr font, bool fTurned)
    {
        char text[sizeof kLabel];
        memcpy(text, kLabel, sizeof text);
        auto *bytes = reinterpret_cast<unsigned char *>(text);
        if (fTurned)
        {
            gdImageStringUp(theirs, font, kMargin, kSide - kMargin, bytes, theirBlack);
        }
        else
        {
            gdImageString(theirs, font, kMargin, kMargin, bytes, theirBlack);
        }
    }

private:
    Image *ours;
    gdImagePtr theirs;
    int theirBlack;
};

// Processor time, not the time of day: other programs on the machine take their turns too.
static double ProcessorSeconds()
{
    timespec now = {};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

template <typename Work>
static double Seconds(const Work &work)
{
    constexpr int kBatch = 50; // labels between two looks at the clock
    const double start = ProcessorSeconds();
    for (int i = 0; i < kBatch; i++)
    {
        work();
        benchmark::ClobberMemory();
    }
    return (ProcessorSeconds() - start) / kBatch;
}

// Arguments: font, size, style bits, degrees.
static void DrawLabel(benchmark::State &state)
{
    Canvases canvases;
    const auto font = static_cast<int32_t>(state.range(0));
    const auto angle = static_cast<int32_t>(state.range(3));
    SetFont(font);
    SetFontSize(static_cast<int32_t>(state.range(1)));
    SetFontStyle(static_cast<int32_t>(state.range(2)));
    SetFontAngle(angle);
    const int32_t y = angle == 0 ? kMargin : kSide - kMargin;
    gdFontPtr theirFont = font == 0 ? gdFontGetTiny() : gdFontGetSmall();
    double ours = 0;
    double theirs = 0;
    while (state.KeepRunning())
    {
        const double seconds = Seconds(
            [y]
            {
                MovePenTo(kMargin, y);
                DrawText(kLabel);
            });
        theirs += Seconds([&] { canvases.DrawTheirs(theirFont, angle == 90); });
        ours += seconds;
        state.SetIterationTime(seconds);
    }
    state.counters["ratio"] = ours / theirs;
}
BENCHMARK(DrawLabel)
    ->ArgNames({"font", "size", "style", "angle"})
    ->UseManualTime()
    ->Iterations(1000)
    ->ArgsProduct({{0}, {8, 12}, {0, 1, 2}, {0, 90}})
    ->ArgsProduct({{1}, {12, 18}, {0, 1, 2}, {0, 90}})
    ->ArgsProduct({{2}, {11, 14}, {0, 1, 2}, {0, 90}})
    ->Args({1, 12, 0, 45})
    ->Args({1, 12, 2, 45});

BENCHMARK_MAIN();
