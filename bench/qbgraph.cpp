// qbgraph.cpp - drawing calls beside the literal reference, libgd and memset on the same work.
//
// Every operation runs in turn with each rival, interleaved and repeated; the smallest time of each counts. The table
// at the end gives the program's time and how many times as long the others took: above 1 they are slower.
// --benchmark_filter=lines chooses operations.

#include "qbgraph.h"
#include "qbgrfnt.h"
#include "reference.h"

#include <benchmark/benchmark.h>
#include <gd.h>
#include <gdfonts.h>

#include <algorithm>
#include <cstring>
#include <functional>
#include <map>
#include <string>
#include <vector>

namespace
{

constexpr int32_t kWidth = 800;
constexpr int32_t kHeight = 600;
constexpr int32_t kBoundary = 215;

using Work = std::function<void()>;

// One row of the table. A rival without work is left out.
struct Operation
{
    std::string name;
    Work ours;
    Work reference;
    Work gd;
    Work memory; // memset of the same bytes, row by row
};

// The drawing calls by their common names, so that the library and the reference do the same from one text.
struct Ours
{
    static constexpr auto MovePenTo = ::MovePenTo;
    static constexpr auto SetPenColor = ::SetPenColor;
    static constexpr auto SetPenSize = ::SetPenSize;
    static constexpr auto FillImage = ::FillImage;
    static constexpr auto DrawLineTo = ::DrawLineTo;
    static constexpr auto DrawRectangle = ::DrawRectangle;
    static constexpr auto FillRectangle = ::FillRectangle;
    static constexpr auto DrawOval = ::DrawOval;
    static constexpr auto FillOval = ::FillOval;
    static constexpr auto DrawArc = ::DrawArc;
    static constexpr auto FillArc = ::FillArc;
    static constexpr auto FrameArc = ::FrameArc;
    static constexpr auto DrawPolygon = ::DrawPolygon;
    static constexpr auto FillPolygon = ::FillPolygon;
    static constexpr auto Fill = ::Fill;
    static constexpr auto SetFontStyle = ::SetFontStyle;
    static constexpr auto SetFontAngle = ::SetFontAngle;
    static constexpr auto DrawText = ::DrawText;
};

struct Reference
{
    static constexpr auto MovePenTo = ref::MovePenTo;
    static constexpr auto SetPenColor = ref::SetPenColor;
    static constexpr auto SetPenSize = ref::SetPenSize;
    static constexpr auto FillImage = ref::FillImage;
    static constexpr auto DrawLineTo = ref::DrawLineTo;
    static constexpr auto DrawRectangle = ref::DrawRectangle;
    static constexpr auto FillRectangle = ref::FillRectangle;
    static constexpr auto DrawOval = ref::DrawOval;
    static constexpr auto FillOval = ref::FillOval;
    static constexpr auto DrawArc = ref::DrawArc;
    static constexpr auto FillArc = ref::FillArc;
    static constexpr auto FrameArc = ref::FrameArc;
    static constexpr auto DrawPolygon = ref::DrawPolygon;
    static constexpr auto FillPolygon = ref::FillPolygon;
    static constexpr auto Fill = ref::Fill;
    static constexpr auto SetFontStyle = ref::SetFontStyle;
    static constexpr auto SetFontAngle = ref::SetFontAngle;
    static constexpr auto DrawText = ref::DrawText;
};

// The images of the three, white, 800 by 600, and memset's bytes. Set once by main.
gdImagePtr pGd;
int32_t gdColors[3]; // positions in its palette: two to draw with and the boundary
std::vector<uint8_t> memoryBytes(static_cast<size_t>(kWidth) * kHeight);

// Another colour at every call, so that floods find something to fill.
int32_t nextColor()
{
    static int32_t color = 35;
    color = color == 35 ? 210 : 35;
    return color;
}

int32_t nextGdColor()
{
    static int32_t i = 0;
    i = 1 - i;
    return gdColors[i];
}

void clearMemory(const Rectangle &rect)
{
    for (int32_t y = rect.top; y < rect.bottom; y++)
    {
        std::memset(&memoryBytes[static_cast<size_t>(y) * kWidth + static_cast<size_t>(rect.left)], 35,
                    static_cast<size_t>(rect.right - rect.left));
    }
    benchmark::ClobberMemory();
}

// Draws with both: draw is a generic lambda, called with Ours and with Reference.
template <class Draw>
Operation operation(const std::string &name, Draw draw, Work gd, Work memory = nullptr)
{
    return {name, [draw] { draw(Ours()); }, [draw] { draw(Reference()); }, std::move(gd), std::move(memory)};
}

// Areas

Operation filledRectangle(const std::string &name, Rectangle rect)
{
    return operation(
        name, [=](auto api) { api.FillRectangle(&rect); },
        [=] { gdImageFilledRectangle(pGd, rect.left, rect.top, rect.right - 1, rect.bottom - 1, gdColors[0]); },
        [=] { clearMemory(rect); });
}

void addRectangles(std::vector<Operation> &all)
{
    const Rectangle whole = {0, 0, kWidth, kHeight};
    const Rectangle large = {100, 100, 600, 500};
    all.push_back(operation(
        "FillImage 800x600", [](auto api) { api.FillImage(); },
        [] { gdImageFilledRectangle(pGd, 0, 0, kWidth - 1, kHeight - 1, gdColors[0]); }, [=] { clearMemory(whole); }));
    all.push_back(filledRectangle("FillRectangle 800x600", whole));
    all.push_back(filledRectangle("FillRectangle 500x400", large));
    all.push_back(filledRectangle("FillRectangle 60x60", {100, 100, 160, 160}));
    all.push_back(filledRectangle("FillRectangle 12x12", {100, 100, 112, 112}));
    all.push_back(operation(
        "DrawRectangle 500x400", [=](auto api) { api.DrawRectangle(&large); },
        [] { gdImageRectangle(pGd, 100, 100, 599, 499, gdColors[0]); }));
}

// Lines

struct Line
{
    Point from;
    Point to;
};

template <class Api>
void drawLines(Api api, const std::vector<Line> &lines, int32_t size)
{
    api.SetPenSize(size, size);
    for (const Line &line : lines)
    {
        api.MovePenTo(line.from.x, line.from.y);
        api.DrawLineTo(line.to.x, line.to.y);
    }
    api.SetPenSize(1, 1);
}

void drawGdLines(const std::vector<Line> &lines, int32_t size)
{
    gdImageSetThickness(pGd, size);
    for (const Line &line : lines)
    {
        gdImageLine(pGd, line.from.x, line.from.y, line.to.x, line.to.y, gdColors[0]);
    }
    gdImageSetThickness(pGd, 1);
}

// 16 lines from the middle of the image, two in each octant.
std::vector<Line> star(int32_t length)
{
    std::vector<Line> lines;
    for (int32_t angle = 11; angle < 360; angle += 22)
    {
        lines.push_back({{400, 300}, {400 + CosX(angle, length), 300 - SinY(angle, length)}});
    }
    return lines;
}

Operation lines(const std::string &name, const std::vector<Line> &which, int32_t size)
{
    return operation(
        name, [=](auto api) { drawLines(api, which, size); }, [=] { drawGdLines(which, size); });
}

void addLines(std::vector<Operation> &all)
{
    for (const int32_t size : {1, 3})
    {
        const std::string pen = ", pen " + std::to_string(size);
        all.push_back(lines("16 lines of 8" + pen, star(8), size));
        all.push_back(lines("16 lines of 40" + pen, star(40), size));
        all.push_back(lines("16 lines of 290" + pen, star(290), size));
        all.push_back(lines("level line of 700" + pen, {{{50, 300}, {750, 300}}}, size));
        all.push_back(lines("upright line of 500" + pen, {{{400, 50}, {400, 550}}}, size));
    }
    Operation huge = lines("line of 4 thousand million", {{{-2000000000, -1999999000}, {2000000000, 2000000000}}}, 1);
    huge.reference = nullptr; // it would visit every step
    all.push_back(huge);
}

// Ovals and arcs. libgd's angles go clockwise: 20 to 140 is 220 to 340.

void addOvals(std::vector<Operation> &all, int32_t d)
{
    const Rectangle rect = {100, 100, 100 + d, 100 + d};
    const std::string size = " " + std::to_string(d);
    const int32_t c = 100 + d / 2;
    all.push_back(operation(
        "DrawOval" + size, [=](auto api) { api.DrawOval(&rect); },
        [=] { gdImageEllipse(pGd, c, c, d, d, gdColors[0]); }));
    all.push_back(operation(
        "FillOval" + size, [=](auto api) { api.FillOval(&rect); },
        [=] { gdImageFilledEllipse(pGd, c, c, d, d, gdColors[0]); }));
    all.push_back(operation(
        "DrawArc" + size + ", 20 to 140", [=](auto api) { api.DrawArc(&rect, 20, 120); },
        [=] { gdImageArc(pGd, c, c, d, d, 220, 340, gdColors[0]); }));
    all.push_back(operation(
        "FillArc" + size + ", 20 to 140", [=](auto api) { api.FillArc(&rect, 20, 120); },
        [=] { gdImageFilledArc(pGd, c, c, d, d, 220, 340, gdColors[0], gdPie); }));
    all.push_back(operation(
        "FrameArc" + size + ", 20 to 140", [=](auto api) { api.FrameArc(&rect, 20, 120); },
        [=] { gdImageFilledArc(pGd, c, c, d, d, 220, 340, gdColors[0], gdNoFill | gdEdged); }));
}

// Six slices of 60 degrees, framed in the boundary colour and flooded, as charts draw them.
template <class Api>
void drawPie(Api api, const Rectangle &rect)
{
    const int32_t color = nextColor();
    const int32_t c = (rect.left + rect.right) / 2;
    const int32_t r = (rect.right - rect.left) / 3;
    for (int32_t start = 0; start < 360; start += 60)
    {
        api.SetPenColor(kBoundary);
        api.FrameArc(&rect, start, 60);
        api.SetPenColor(color);
        api.Fill(c + CosX(start + 30, r), c - SinY(start + 30, r), kBoundary);
    }
}

void drawGdPie(const Rectangle &rect)
{
    const int32_t color = nextGdColor();
    const int32_t c = (rect.left + rect.right) / 2;
    const int32_t d = rect.right - rect.left;
    for (int32_t start = 0; start < 360; start += 60)
    {
        gdImageFilledArc(pGd, c, c, d, d, start, start + 60, gdColors[2], gdNoFill | gdEdged);
        gdImageFillToBorder(pGd, c + CosX(start + 30, d / 3), c + SinY(start + 30, d / 3), gdColors[2], color);
    }
}

Operation pie(int32_t d)
{
    const Rectangle rect = {100, 100, 100 + d, 100 + d};
    return operation(
        "pie of 6 slices " + std::to_string(d), [=](auto api) { drawPie(api, rect); }, [=] { drawGdPie(rect); });
}

// Floods

// A box, and narrow alleys in it that are open at one end.
std::vector<Line> walls(bool fAlleys)
{
    std::vector<Line> all = {
        {{50, 50}, {700, 50}}, {{50, 450}, {701, 450}}, {{50, 51}, {50, 450}}, {{700, 50}, {700, 450}}};
    for (int32_t x = 60; fAlleys && x < 695; x += 10)
    {
        all.push_back(x % 20 == 0 ? Line{{x, 60}, {x, 450}} : Line{{x, 50}, {x, 440}});
    }
    return all;
}

Operation flood(const std::string &name, bool fAlleys)
{
    const std::vector<Line> wall = walls(fAlleys);
    return operation(
        name,
        [=](auto api)
        {
            api.SetPenColor(kBoundary);
            drawLines(api, wall, 1);
            api.SetPenColor(nextColor());
            api.Fill(55, 445, kBoundary);
        },
        [=]
        {
            for (const Line &line : wall)
            {
                gdImageLine(pGd, line.from.x, line.from.y, line.to.x, line.to.y, gdColors[2]);
            }
            gdImageFillToBorder(pGd, 55, 445, gdColors[2], nextGdColor());
        });
}

// Polygons

// Corners on a circle around the middle of the image, visiting every step-th of n.
std::vector<Point> corners(int32_t n, int32_t step, int32_t radius)
{
    std::vector<Point> points;
    for (int32_t i = 0; i < n; i++)
    {
        const int32_t angle = 360 * (i * step % n) / n;
        points.push_back({400 + CosX(angle, radius), 300 - SinY(angle, radius)});
    }
    return points;
}

// The rows of memory that a filled hexagon with corners on its right and left covers.
void clearHexagon(int32_t radius)
{
    const int32_t height = SinY(60, radius);
    for (int32_t y = -height; y <= height; y++)
    {
        const int32_t half = radius - std::abs(y) * (radius / 2) / height;
        clearMemory({400 - half, 300 + y, 401 + half, 301 + y});
    }
}

std::vector<gdPoint> gdPoints(const std::vector<Point> &points)
{
    std::vector<gdPoint> out;
    out.reserve(points.size());
    for (const Point &p : points)
    {
        out.push_back({p.x, p.y});
    }
    return out;
}

// An outline or a filled polygon.
Operation polygon(const std::string &name, const std::vector<Point> &points, bool fFill, Work memory = nullptr)
{
    const auto count = static_cast<int32_t>(points.size());
    return operation(
        name,
        [=](auto api)
        {
            std::vector<Point> copy = points;
            const Polygon record = {count, copy.data()};
            (fFill ? api.FillPolygon : api.DrawPolygon)(&record, 0, 0);
        },
        [=]
        {
            std::vector<gdPoint> copy = gdPoints(points);
            (fFill ? gdImageFilledPolygon : gdImagePolygon)(pGd, copy.data(), count, gdColors[0]);
        },
        std::move(memory));
}

void addPolygons(std::vector<Operation> &all)
{
    all.push_back(polygon("DrawPolygon 6 corners, 500 wide", corners(6, 1, 250), false));
    all.push_back(polygon("FillPolygon 6 corners, 500 wide", corners(6, 1, 250), true, [] { clearHexagon(250); }));
    all.push_back(polygon("FillPolygon 6 corners, 20 wide", corners(6, 1, 10), true, [] { clearHexagon(10); }));
    all.push_back(polygon("FillPolygon 9-pointed star, 500 wide", corners(9, 4, 250), true));
    all.push_back(polygon("FillPolygon 120 corners, 500 wide", corners(120, 1, 250), true));
}

// Text

Operation text(const std::string &name, int32_t style, int32_t angle, Work gd)
{
    return operation(
        name,
        [=](auto api)
        {
            api.SetFontStyle(style);
            api.SetFontAngle(angle);
            api.MovePenTo(200, 300);
            api.DrawText("The quick brown fox, 1234");
        },
        std::move(gd));
}

void addTexts(std::vector<Operation> &all)
{
    static std::string line = "The quick brown fox, 1234";
    auto *bytes = reinterpret_cast<unsigned char *>(line.data());
    const Work level = [=]
    {
        gdImageString(pGd, gdFontGetSmall(), 200, 290, bytes, gdColors[0]);
    };
    all.push_back(text("text of 25 letters", 0, 0, level));
    all.push_back(text("text, turned by 90", 0, 90,
                       [=] { gdImageStringUp(pGd, gdFontGetSmall(), 190, 300, bytes, gdColors[0]); }));
    all.push_back(text("text, bold", 1, 0, nullptr));
    all.push_back(text("text, italic", 2, 0, nullptr));
    all.push_back(text("text, underlined", 4, 0, nullptr));
    all.push_back(text("text, turned by 30", 0, 30, nullptr));
}

std::vector<Operation> operations()
{
    std::vector<Operation> all;
    addRectangles(all);
    addLines(all);
    for (const int32_t d : {20, 100, 400})
    {
        addOvals(all, d);
    }
    all.push_back(pie(100));
    all.push_back(pie(400));
    all.push_back(flood("Fill a box of 650x400", false));
    all.push_back(flood("Fill 64 alleys in it", true));
    addPolygons(all);
    addTexts(all);
    return all;
}

// Running and reporting

// White images, pens of 1 by 1, a colour; the libraries' text is Helvetica10.
void resetAll()
{
    for (const int32_t color : {0, kBoundary, 210, 35})
    {
        SetPenColor(color);
        ref::SetPenColor(color);
        if (color == 0)
        {
            FillImage();
            ref::FillImage();
        }
    }
    gdImageFilledRectangle(pGd, 0, 0, kWidth - 1, kHeight - 1, 0);
}

void run(benchmark::State &state, const Work &work)
{
    resetAll();
    while (state.KeepRunning())
    {
        work();
    }
}

// Keeps the smallest time of every operation and rival, and prints the table when all have run.
class Table : public benchmark::BenchmarkReporter
{
public:
    bool ReportContext(const Context &) override
    {
        return true;
    }

    void ReportRuns(const std::vector<Run> &runs) override
    {
        for (const Run &one : runs)
        {
            if (one.run_type != Run::RT_Iteration)
            {
                continue;
            }
            const std::string &name = one.run_name.function_name;
            const auto slash = name.rfind('/');
            const double time = one.GetAdjustedCPUTime();
            auto [entry, fNew] = _times[name.substr(0, slash)].try_emplace(name.substr(slash + 1), time);
            entry->second = std::min(entry->second, time);
        }
    }

    void print(const std::vector<Operation> &all) const
    {
        std::printf("| operation | ours, ns | reference / ours | gd / ours | memset / ours |\n");
        std::printf("|---|---:|---:|---:|---:|\n");
        for (const Operation &one : all)
        {
            const auto row = _times.find(one.name);
            if (row != _times.end() && row->second.count("ours") != 0)
            {
                std::printf("| %s | %.0f | %s | %s | %s |\n", one.name.c_str(), row->second.at("ours"),
                            ratio(row->second, "reference").c_str(), ratio(row->second, "gd").c_str(),
                            ratio(row->second, "memset").c_str());
            }
        }
    }

private:
    using Row = std::map<std::string, double>;

    static std::string ratio(const Row &row, const std::string &rival)
    {
        const auto found = row.find(rival);
        if (found == row.end())
        {
            return "";
        }
        char buffer[32];
        std::snprintf(buffer, sizeof buffer, "%.2f", found->second / row.at("ours"));
        return buffer;
    }

    std::map<std::string, Row> _times; // nanoseconds, by operation and rival
};

void setUp()
{
    InitGraph();
    const Rectangle rect = {0, 0, kWidth, kHeight};
    Image *image = NewImage(&rect, 256);
    ref::Start(kWidth, kHeight, 256, image->pixels);
    SetFont(2);
    pGd = gdImageCreate(kWidth, kHeight);
    gdImageColorAllocate(pGd, 255, 255, 255);
    gdColors[0] = gdImageColorAllocate(pGd, 255, 0, 0);
    gdColors[1] = gdImageColorAllocate(pGd, 0, 0, 255);
    gdColors[2] = gdImageColorAllocate(pGd, 0, 0, 0);
}

void registerAll(const std::vector<Operation> &all)
{
    for (const Operation &one : all)
    {
        const std::pair<const char *, Work> rivals[] = {
            {"ours", one.ours}, {"reference", one.reference}, {"gd", one.gd}, {"memset", one.memory}};
        for (const auto &[rival, work] : rivals)
        {
            if (work)
            {
                benchmark::RegisterBenchmark((one.name + "/" + rival).c_str(), run, work);
            }
        }
    }
}

} // namespace

int main(int argc, char **argv)
{
    std::vector<char *> arguments = {argv[0]};
    std::string defaults[] = {"--benchmark_repetitions=50", "--benchmark_enable_random_interleaving=true",
                              "--benchmark_min_time=0.002"};
    for (std::string &one : defaults)
    {
        arguments.push_back(one.data());
    }
    arguments.insert(arguments.end(), argv + 1, argv + argc);
    int count = static_cast<int>(arguments.size());
    benchmark::Initialize(&count, arguments.data());
    if (benchmark::ReportUnrecognizedArguments(count, arguments.data()))
    {
        return 1;
    }
    setUp();
    const std::vector<Operation> all = operations();
    registerAll(all);
    Table table;
    benchmark::RunSpecifiedBenchmarks(&table);
    table.print(all);
    return 0;
}
