// raster.cpp - the same random scripts of drawing calls with the library and with the slow, literal reference: every
// pixel, the pen, the colour table and the error state must stay the same after every call.
//
// QB_SCRIPTS says how many scripts (20000 without it), QB_SEED where to begin.

#include "qbgraph_state.h"
#include "qbgrfnt.h"
#include "reference.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <random>
#include <sstream>

namespace
{

// One script: its image, its dice, and what was called so far.
struct Script
{
    std::mt19937 dice;
    int32_t width = 0;
    int32_t height = 0;
    Image *image = nullptr;
    std::ostringstream log;
    std::vector<int32_t> colours; // few, so that boundaries and full tables are met often

    explicit Script(uint32_t seed) : dice(seed)
    {
    }

    int32_t roll(int32_t low, int32_t high)
    {
        return std::uniform_int_distribution<int32_t>(low, high)(dice);
    }

    bool chance(int32_t percent)
    {
        return roll(0, 99) < percent;
    }

    // A coordinate: mostly on the image or near it, seldom far away.
    int32_t coordinate(int32_t size)
    {
        if (chance(2))
        {
            return roll(-2000, 2000);
        }
        return chance(70) ? roll(0, size) : roll(-size - 20, 2 * size + 20);
    }

    int32_t x()
    {
        return coordinate(width);
    }

    int32_t y()
    {
        return coordinate(height);
    }

    Rectangle rectangle()
    {
        Rectangle rect = {x(), y(), x(), y()};
        if (chance(30))
        {
            rect.right = rect.left + roll(-3, 3);
        }
        if (chance(30))
        {
            rect.bottom = rect.top + roll(-3, 3);
        }
        log << rect.left << ' ' << rect.top << ' ' << rect.right << ' ' << rect.bottom;
        return rect;
    }

    int32_t colour()
    {
        const int32_t c = colours[static_cast<size_t>(roll(0, static_cast<int32_t>(colours.size()) - 1))];
        return chance(10) ? c + 256 * roll(-3, 3) : c;
    }

    std::string text()
    {
        std::string s;
        const int32_t length = roll(0, 6);
        for (int32_t i = 0; i < length; i++)
        {
            s += chance(15) ? '\n' : static_cast<char>(chance(90) ? roll(32, 126) : roll(1, 255));
        }
        log << "codes";
        for (const char c : s)
        {
            log << ' ' << static_cast<int>(static_cast<uint8_t>(c));
        }
        return s;
    }
};

void begin(Script &script)
{
    script.width = script.roll(1, 60);
    script.height = script.roll(1, 60);
    const auto nColors = static_cast<uint32_t>(script.chance(30) ? script.roll(0, 4) : script.roll(5, 300));
    const int32_t nChoices = script.roll(2, 8);
    for (int32_t i = 0; i < nChoices; i++)
    {
        script.colours.push_back(script.roll(0, 255));
    }
    script.log << "image " << script.width << 'x' << script.height << ", " << nColors << " colours\n";
    InitGraph();
    const Rectangle rect = {0, 0, script.width, script.height};
    script.image = NewImage(&rect, nColors);
    ASSERT_NE(script.image, nullptr);
    const int32_t nPixels = script.width * script.height;
    const bool fNoise = script.chance(50);
    for (int32_t i = 0; i < nPixels; i++)
    {
        script.image->pixels[i] =
            static_cast<uint8_t>(fNoise && script.chance(20) ? script.colour() : script.colours[0]);
    }
    ref::Start(script.width, script.height, nColors, script.image->pixels);
    const int32_t font = script.roll(0, 2);
    SetFont(font);
    SetFontSize(script.chance(50) ? script.roll(6, 24) : script.roll(6, 127));
    script.log << "font " << font << "\n";
}

void penCall(Script &s)
{
    const int32_t a = s.x();
    const int32_t b = s.y();
    const int32_t c = s.colour();
    const int32_t w = s.chance(60) ? s.roll(0, 3) : s.roll(-2, 40);
    const int32_t h = s.chance(60) ? s.roll(0, 3) : s.roll(-2, 40);
    switch (s.roll(0, 7))
    {
    case 0:
        s.log << "MovePenTo " << a << ' ' << b;
        MovePenTo(a, b);
        ref::MovePenTo(a, b);
        break;
    case 1:
        s.log << "MovePenRel " << a << ' ' << b;
        MovePenRel(a, b);
        ref::MovePenRel(a, b);
        break;
    case 2:
    case 3:
        s.log << "SetPenColor " << c;
        SetPenColor(c);
        ref::SetPenColor(c);
        break;
    case 4:
        s.log << "SetPenSize " << w << ' ' << h;
        SetPenSize(w, h);
        ref::SetPenSize(w, h);
        break;
    case 5:
        s.log << "DrawPen";
        DrawPen();
        ref::DrawPen();
        break;
    case 6:
        s.log << "SetThruColor " << c;
        SetThruColor(c);
        ref::SetThruColor(c);
        break;
    default:
        if (s.chance(20))
        {
            s.log << "FillImage";
            FillImage();
            ref::FillImage();
        }
    }
}

void lineCall(Script &s)
{
    const int32_t a = s.x();
    const int32_t b = s.y();
    switch (s.roll(0, 3))
    {
    case 0:
        s.log << "DrawLineTo " << a << ' ' << b;
        DrawLineTo(a, b);
        ref::DrawLineTo(a, b);
        break;
    case 1:
        s.log << "DrawLineRel " << a - s.width / 2 << ' ' << b - s.height / 2;
        DrawLineRel(a - s.width / 2, b - s.height / 2);
        ref::DrawLineRel(a - s.width / 2, b - s.height / 2);
        break;
    case 2:
    {
        s.log << "DrawRectangle ";
        const Rectangle rect = s.rectangle();
        DrawRectangle(&rect);
        ref::DrawRectangle(&rect);
        break;
    }
    default:
    {
        s.log << "FillRectangle ";
        const Rectangle rect = s.rectangle();
        FillRectangle(&rect);
        ref::FillRectangle(&rect);
    }
    }
}

void arcCall(Script &s)
{
    const int32_t kind = s.roll(0, 5);
    s.log << "oval or arc " << kind << ": ";
    const Rectangle rect = s.rectangle();
    const int32_t start = s.chance(80) ? s.roll(-10, 370) : s.roll(-1000, 1000);
    const int32_t sweep = s.chance(80) ? s.roll(0, 360) : s.roll(-1000, 1000);
    s.log << " start " << start << " sweep " << sweep;
    switch (kind)
    {
    case 0:
        DrawOval(&rect);
        ref::DrawOval(&rect);
        break;
    case 1:
        FillOval(&rect);
        ref::FillOval(&rect);
        break;
    case 2:
        DrawArc(&rect, start, sweep);
        ref::DrawArc(&rect, start, sweep);
        break;
    case 3:
        FillArc(&rect, start, sweep);
        ref::FillArc(&rect, start, sweep);
        break;
    default:
        FrameArc(&rect, start, sweep);
        ref::FrameArc(&rect, start, sweep);
    }
}

void polygonCall(Script &s)
{
    std::vector<Point> points(static_cast<size_t>(s.roll(1, 7)));
    const bool fFill = s.chance(70);
    s.log << (fFill ? "FillPolygon" : "DrawPolygon");
    for (Point &p : points)
    {
        p = {s.x(), s.y()};
        if (s.chance(15))
        {
            p = points[0];
        }
        s.log << " (" << p.x << ' ' << p.y << ')';
    }
    const Polygon polygon = {static_cast<int32_t>(points.size()), points.data()};
    const int32_t dx = s.roll(-5, 5);
    const int32_t dy = s.roll(-5, 5);
    s.log << " by " << dx << ' ' << dy;
    if (fFill)
    {
        FillPolygon(&polygon, dx, dy);
        ref::FillPolygon(&polygon, dx, dy);
    }
    else
    {
        DrawPolygon(&polygon, dx, dy);
        ref::DrawPolygon(&polygon, dx, dy);
    }
}

void fillCall(Script &s)
{
    const int32_t a = s.x();
    const int32_t b = s.y();
    const int32_t boundary = s.colour();
    s.log << "Fill " << a << ' ' << b << " up to " << boundary;
    Fill(a, b, boundary);
    ref::Fill(a, b, boundary);
}

void styleCall(Script &s)
{
    const int32_t v = s.chance(80) ? s.roll(0, 8) : s.roll(-100000, 100000);
    const int32_t angle = s.roll(-800, 800);
    switch (s.roll(0, 2))
    {
    case 0:
        s.log << "SetFontStyle " << v;
        SetFontStyle(v);
        ref::SetFontStyle(v);
        break;
    case 1:
        s.log << "SetFontOrientation " << v;
        SetFontOrientation(v);
        ref::SetFontOrientation(v);
        break;
    default:
        s.log << "SetFontAngle " << angle;
        SetFontAngle(angle);
        ref::SetFontAngle(angle);
    }
}

void textCall(Script &s)
{
    const int32_t kind = s.roll(0, 3);
    s.log << "text call " << kind << ' ';
    const std::string text = s.text();
    Point mine = {-1, -1};
    Point theirs = {-1, -1};
    switch (kind)
    {
    case 0:
        DrawText(text.c_str());
        ref::DrawText(text.c_str());
        break;
    case 1:
    {
        s.log << " in ";
        const Rectangle rect = s.rectangle();
        DrawTextInRect(text.c_str(), &rect);
        ref::DrawTextInRect(text.c_str(), &rect);
        break;
    }
    case 2:
        GetTextDim(text.c_str(), &mine);
        ref::GetTextDim(text.c_str(), &theirs);
        break;
    default:
    {
        const int32_t ch = s.roll(-300, 600);
        s.log << " char " << ch;
        GetCharDim(ch, &mine);
        ref::GetCharDim(ch, &theirs);
        DrawChar(ch);
        ref::DrawChar(ch);
    }
    }
    EXPECT_EQ(mine.x, theirs.x);
    EXPECT_EQ(mine.y, theirs.y);
}

// Turns the sticky error on, or off again.
void errorCall(Script &s)
{
    const bool fOn = s.chance(30);
    s.log << (fOn ? "SetImage of none" : "SetImage of the image");
    EXPECT_EQ(SetImage(fOn ? nullptr : s.image), fOn ? 0 : 1);
    ref::state.error = fOn ? -2 : 0;
}

void call(Script &s)
{
    switch (s.roll(0, 20))
    {
    case 20:
        errorCall(s);
        break;
    case 1:
    case 2:
    case 3:
        lineCall(s);
        break;
    case 4:
    case 5:
    case 6:
        arcCall(s);
        break;
    case 7:
    case 8:
        polygonCall(s);
        break;
    case 9:
    case 10:
        fillCall(s);
        break;
    case 11:
        styleCall(s);
        break;
    case 12:
    case 13:
        textCall(s);
        break;
    default:
        penCall(s);
    }
    s.log << '\n';
}

void compare(const Script &s)
{
    const ref::State &r = ref::state;
    EXPECT_EQ(curPenX, r.penX);
    EXPECT_EQ(curPenY, r.penY);
    EXPECT_EQ(curPenW, r.penW);
    EXPECT_EQ(curPenH, r.penH);
    EXPECT_EQ(curPenColor, r.penColor);
    EXPECT_EQ(curThruColor, r.thruColor & 0xFF);
    EXPECT_EQ(fCurIsThruColor, r.fThruColor);
    EXPECT_EQ(GetGraphError(), r.error);
    ASSERT_EQ(curNColors, r.used.size());
    EXPECT_TRUE(std::equal(r.used.begin(), r.used.end(), s.image->colorTable->used));
    for (size_t i = 0; i < r.used.size(); i++)
    {
        EXPECT_EQ(s.image->colorTable->positions[r.used[i]], static_cast<int32_t>(i));
    }
    for (size_t i = 0; i < r.pixels.size(); i++)
    {
        ASSERT_EQ(s.image->pixels[i], r.pixels[i])
            << "at x " << i % static_cast<size_t>(s.width) << ", y " << i / static_cast<size_t>(s.width);
    }
}

void runScript(uint32_t seed)
{
    Script script(seed);
    begin(script);
    const int32_t nCalls = script.roll(1, 20);
    for (int32_t i = 0; i < nCalls && !testing::Test::HasFailure(); i++)
    {
        call(script);
        compare(script);
    }
    KillImage(script.image);
    if (testing::Test::HasFailure())
    {
        ADD_FAILURE() << "QB_SEED=" << seed << " QB_SCRIPTS=1 draws it again:\n" << script.log.str();
    }
}

uint32_t fromEnvironment(const char *name, uint32_t otherwise)
{
    const char *text = std::getenv(name);
    return text == nullptr ? otherwise : static_cast<uint32_t>(std::strtoul(text, nullptr, 10));
}

} // namespace

TEST(RandomScripts, DrawAsTheReferenceDoes)
{
    const uint32_t first = fromEnvironment("QB_SEED", 1);
    const uint32_t nScripts = fromEnvironment("QB_SCRIPTS", 20000);
    for (uint32_t i = 0; i < nScripts && !HasFailure(); i++)
    {
        runScript(first + i);
    }
}
