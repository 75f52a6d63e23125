// arcs.cpp - the reference's ovals and arcs. Trigonometry comes from the C library, rounded, with its few exceptions.

#include "state.h"

#include <array>
#include <cmath>
#include <functional>
#include <numbers>

namespace ref
{

static double _radians(int64_t degrees)
{
    return static_cast<double>(degrees) * std::numbers::pi / 180.0;
}

int64_t Cos128(int64_t angle)
{
    const int64_t a = ((angle % 360) + 360) % 360;
    const int64_t quarter = a <= 90 ? a : (a <= 180 ? 180 - a : (a <= 270 ? a - 180 : 360 - a));
    int64_t value = std::llround(128.0 * std::cos(_radians(quarter)));
    if (quarter == 5 || quarter == 45)
    {
        value--; // on purpose: these two lie one below
    }
    return a > 90 && a < 270 ? -value : value;
}

int64_t Sin128(int64_t angle)
{
    return Cos128(90 - angle);
}

static int64_t _project(int64_t v, int64_t r)
{
    const int64_t magnitude = (std::llabs(v) * r + 64) >> 7;
    return v == 0 ? 0 : (v < 0 ? -magnitude : magnitude);
}

int64_t CosX(int64_t angle, int64_t r)
{
    return _project(Cos128(angle), r);
}

int64_t SinY(int64_t angle, int64_t r)
{
    return _project(Sin128(angle), r);
}

static int64_t _tan128(int64_t degrees)
{
    switch (degrees) // on purpose: not the rounded value
    {
    case 53:
        return 169;
    case 54:
        return 177;
    case 67:
        return 301;
    case 79:
        return 658;
    case 90:
        return 0;
    default:
        return std::llround(128.0 * std::tan(_radians(degrees)));
    }
}

// Degrees of the offset (x, y).
static int64_t _angleOf(int64_t x, int64_t y)
{
    if (x == 0)
    {
        return y >= 0 ? 270 : 90;
    }
    if (y == 0)
    {
        return x >= 0 ? 0 : 180;
    }
    int64_t i = 45;
    if (std::llabs(x) != std::llabs(y))
    {
        const int64_t q = 128 * std::llabs(y) / std::llabs(x);
        for (i = 0; i < 90 && _tan128(i) < q; i++)
        {
        }
    }
    if (x < 0)
    {
        return y >= 0 ? 180 + i : 180 - i;
    }
    return y >= 0 ? 360 - i : i;
}

// An ellipse in pixels: centre, half-axes and what is taken off at the right and bottom for even sizes.
struct Ellipse
{
    int64_t left;
    int64_t top;
    int64_t cx;
    int64_t cy;
    int64_t a;
    int64_t b;
    int64_t exW;
    int64_t exH;
};

static Ellipse _ellipseOf(const Rectangle &rect)
{
    int64_t w = static_cast<int64_t>(rect.right) - rect.left;
    int64_t h = static_cast<int64_t>(rect.bottom) - rect.top;
    const int64_t left = w < 0 ? rect.left + w : rect.left;
    const int64_t top = h < 0 ? rect.top + h : rect.top;
    w = std::llabs(w);
    h = std::llabs(h);
    return {left, top, left + w / 2, top + h / 2, w / 2, h / 2, w % 2 == 0 ? -1 : 0, h % 2 == 0 ? -1 : 0};
}

// Visits the points of the ellipse's lower right quarter: from the bottom, then from the right side.
static void _walk(int64_t a, int64_t b, const std::function<void(int64_t x, int64_t y, int region)> &handle)
{
    if (a == 0 && b == 0)
    {
        return; // the walk would never end
    }
    int64_t x = 0;
    int64_t y = b;
    int64_t t = 2 * a * a * b;
    int64_t d = -a * a * b;
    int64_t acc = 0;
    do
    {
        handle(x, y, 1);
        acc += 2 * b * b;
        d += acc - b * b;
        x++;
        if (d >= 0)
        {
            t -= 2 * a * a;
            y--;
            d -= t;
        }
    } while (t >= acc);

    x = a;
    y = 0;
    t = 2 * b * b * a;
    d = -a * b * b;
    acc = 0;
    if (t < 1)
    {
        return;
    }
    do
    {
        handle(x, y, 2);
        acc += 2 * a * a;
        d += acc - a * a;
        y++;
        if (d >= 0)
        {
            t -= 2 * b * b;
            x--;
            d -= t;
        }
    } while (acc < t);
}

// The four mirror images: lower right, upper right, upper left, lower left.
static std::array<Point, 4> _images(const Ellipse &e, int64_t x, int64_t y)
{
    const auto right = static_cast<int32_t>(e.cx + x + e.exW);
    const auto left = static_cast<int32_t>(e.cx - x);
    const auto lower = static_cast<int32_t>(e.cy + y + e.exH);
    const auto upper = static_cast<int32_t>(e.cy - y);
    return {{{right, lower}, {right, upper}, {left, upper}, {left, lower}}};
}

// Draws what needs no ellipse: rectangles one pixel wide or high. False when an ellipse is to be drawn.
static bool _ovalIsRun(const Rectangle &rect)
{
    const int64_t w = static_cast<int64_t>(rect.right) - rect.left;
    const int64_t h = static_cast<int64_t>(rect.bottom) - rect.top;
    if (w != 1 && h != 1)
    {
        return false;
    }
    MoveTo(rect.left, rect.top);
    if (w == 1 && h == 1)
    {
        DrawPen();
    }
    else if (w == 1)
    {
        VLine(h);
    }
    else
    {
        HLine(w);
    }
    MoveTo(rect.left, rect.top);
    return true;
}

static bool _isNothing(const Rectangle *rect)
{
    return rect == nullptr || state.error != 0 || rect->left == rect->right || rect->top == rect->bottom;
}

void DrawOval(const Rectangle *rect)
{
    if (_isNothing(rect) || _ovalIsRun(*rect))
    {
        return;
    }
    const Ellipse e = _ellipseOf(*rect);
    _walk(e.a, e.b,
          [&e](int64_t x, int64_t y, int)
          {
              for (const Point &p : _images(e, x, y))
              {
                  MoveTo(p.x, p.y);
                  DrawPen();
              }
          });
    MoveTo(e.left, e.top);
}

void FillOval(const Rectangle *rect)
{
    if (_isNothing(rect) || _ovalIsRun(*rect))
    {
        return;
    }
    const Ellipse e = _ellipseOf(*rect);
    _walk(e.a, e.b,
          [&e](int64_t x, int64_t y, int)
          {
              MoveTo(e.cx - x, e.cy - y);
              HLine(2 * x + 1 + e.exW);
              MoveTo(e.cx - x, e.cy + y + e.exH);
              HLine(2 * x + 1 + e.exW);
          });
    MoveTo(e.left, e.top);
}

static int64_t _wholeTurn(int64_t angle)
{
    int64_t a = std::llabs(angle);
    if (a >= 361)
    {
        a %= 360;
    }
    return angle < 0 ? 360 - a : a;
}

// The range of an arc, from start to end counter-clockwise.
struct Range
{
    int64_t start;
    int64_t end;
    [[nodiscard]] bool holds(int64_t angle) const
    {
        return end < start ? angle >= start || angle <= end : angle >= start && angle <= end;
    }
};

static Range _rangeOf(int64_t start, int64_t sweep)
{
    const int64_t s = _wholeTurn(start);
    const int64_t e = _wholeTurn(s + sweep);
    return sweep < 0 ? Range{e, s} : Range{s, e};
}

// Angles of the four mirror images of the walk's point (x, y).
static std::array<int64_t, 4> _anglesOf(int64_t x, int64_t y, int region)
{
    int64_t theta = _angleOf(x, y);
    if (region == 2 && theta == 0)
    {
        theta = 360;
    }
    return {theta, 360 - theta, theta - 180, 540 - theta};
}

static bool _arcIsNothing(const Rectangle *rect)
{
    return _isNothing(rect) || static_cast<int64_t>(rect->right) - rect->left == 1 ||
           static_cast<int64_t>(rect->bottom) - rect->top == 1;
}

static void _arc(const Rectangle *rect, int64_t start, int64_t sweep, bool fRadii)
{
    if (_arcIsNothing(rect))
    {
        return;
    }
    const Ellipse e = _ellipseOf(*rect);
    const Range range = _rangeOf(start, sweep);
    _walk(e.a, e.b,
          [&](int64_t x, int64_t y, int region)
          {
              const auto images = _images(e, x, y);
              const auto angles = _anglesOf(x, y, region);
              for (size_t i = 0; i < 4; i++)
              {
                  if (!range.holds(angles[i]))
                  {
                      continue;
                  }
                  if (fRadii)
                  {
                      MoveTo(e.cx, e.cy);
                      Line(images[i].x, images[i].y);
                  }
                  MoveTo(images[i].x, images[i].y);
                  DrawPen();
              }
          });
    MoveTo(e.left, e.top);
}

void DrawArc(const Rectangle *rect, int32_t start, int32_t sweep)
{
    _arc(rect, start, sweep, false);
}

void FillArc(const Rectangle *rect, int32_t start, int32_t sweep)
{
    _arc(rect, start, sweep, true);
}

// The frame of one slice while it is walked.
struct Frame
{
    Ellipse e;
    Range range;
    int k; // doublings of the walk's ellipse
    bool startDrawn = false;
    bool endDrawn = false;
    std::array<bool, 4> enabled = {true, true, true, true};
    int64_t startGap = 360; // degrees from the start to the nearest image, and that image
    Point startImage = {0, 0};
    int64_t endGap = 360;
    Point endImage = {0, 0};
};

static int64_t _toPixels(int64_t v, int k)
{
    return v >= 0 ? (v + (k >> 1)) >> k : -(((k >> 1) - v) >> k);
}

static void _radius(const Frame &f, const Point &image)
{
    MoveTo(f.e.cx, f.e.cy);
    Line(image.x, image.y);
    MoveTo(image.x, image.y);
}

static void _keepNearest(Frame &f, int64_t angle, const Point &image)
{
    const int64_t fromStart = ((angle - f.range.start) % 360 + 360) % 360;
    const int64_t toEnd = ((f.range.end - angle) % 360 + 360) % 360;
    if (fromStart < f.startGap)
    {
        f.startGap = fromStart;
        f.startImage = image;
    }
    if (toEnd < f.endGap)
    {
        f.endGap = toEnd;
        f.endImage = image;
    }
}

static void _frameImage(Frame &f, size_t i, int64_t angle, const Point &image, int region)
{
    // Lower right and upper left walk towards the end in the first region and towards the start in the second.
    const bool leavesAtEnd = (i == 0 || i == 2) == (region == 1);
    _keepNearest(f, angle, image);
    if (angle == f.range.start && !f.startDrawn)
    {
        _radius(f, image);
        f.startDrawn = true;
        f.enabled[i] = f.enabled[i] && leavesAtEnd;
    }
    else if (angle == f.range.end && !f.endDrawn)
    {
        _radius(f, image);
        f.endDrawn = true;
        f.enabled[i] = f.enabled[i] && !leavesAtEnd;
    }
    MoveTo(image.x, image.y);
    DrawPen();
}

void FrameArc(const Rectangle *rect, int32_t start, int32_t sweep)
{
    if (_arcIsNothing(rect))
    {
        return;
    }
    Frame f = {_ellipseOf(*rect), _rangeOf(start, sweep), 0};
    int64_t a = f.e.a;
    int64_t b = f.e.b;
    if (a == 0 || b == 0)
    {
        MoveTo(f.e.left, f.e.top); // doubling would never end
        return;
    }
    while (a < 100 || b < 100) // until the smaller one has reached 100
    {
        a *= 2;
        b *= 2;
        f.k++;
    }
    _walk(a, b,
          [&](int64_t x, int64_t y, int region)
          {
              const auto images = _images(f.e, _toPixels(x, f.k), _toPixels(y, f.k));
              const auto angles = _anglesOf(x, y, region);
              for (size_t i = 0; i < 4; i++)
              {
                  if (f.enabled[i] && f.range.holds(angles[i]))
                  {
                      _frameImage(f, i, angles[i], images[i], region);
                  }
              }
          });
    if (!f.startDrawn && f.startGap < 360)
    {
        _radius(f, f.startImage);
    }
    if (!f.endDrawn && f.endGap < 360)
    {
        _radius(f, f.endImage);
    }
    MoveTo(f.e.left, f.e.top);
}

} // namespace ref
