// polygons.cpp - the reference's polygons, steppers and flood fill.

#include "state.h"

#include <algorithm>
#include <cstdlib>

namespace ref
{

Stepper NewStepper(int64_t dx, int64_t dy)
{
    Stepper path = {};
    path.major = std::max(std::llabs(dx), std::llabs(dy));
    path.minor = std::min(std::llabs(dx), std::llabs(dy));
    path.sx = dx > 0 ? 1 : (dx < 0 ? -1 : 0);
    path.sy = dy > 0 ? 1 : (dy < 0 ? -1 : 0);
    path.swapped = std::llabs(dy) > std::llabs(dx);
    path.remaining = path.major;
    path.error = 2 * path.minor - path.major;
    return path;
}

void SetOrigin(Stepper &path, int64_t x, int64_t y)
{
    path.x = x;
    path.y = y;
    path.error = 2 * path.minor - path.major;
}

bool Step(Stepper &path)
{
    const bool both = path.error >= 0;
    if (both)
    {
        (path.swapped ? path.x : path.y) += path.swapped ? path.sx : path.sy;
        path.error -= 2 * path.major;
    }
    path.error += 2 * path.minor;
    (path.swapped ? path.y : path.x) += path.swapped ? path.sy : path.sx;
    return both;
}

void DrawPolygon(const Polygon *polygon, int32_t dx, int32_t dy)
{
    if (polygon == nullptr || state.error != 0 || polygon->points == nullptr || polygon->count < 1)
    {
        return;
    }
    MoveTo(static_cast<int64_t>(polygon->points[0].x) + dx, static_cast<int64_t>(polygon->points[0].y) + dy);
    for (int32_t i = 1; i <= polygon->count; i++)
    {
        const Point &p = polygon->points[i % polygon->count];
        LineTo(static_cast<int64_t>(p.x) + dx, static_cast<int64_t>(p.y) + dy);
    }
}

// Steps until the row has changed once.
static void _nextRow(Stepper &edge)
{
    bool fRowChanged = false;
    while (!fRowChanged)
    {
        const bool both = Step(edge);
        edge.remaining--;
        fRowChanged = edge.swapped || both;
    }
}

// The polygon's edges that are not horizontal, each from its upper end, in order from the top vertex.
static std::vector<Stepper> _edges(const Polygon &polygon, int32_t dx, int32_t dy, int32_t top)
{
    std::vector<Stepper> edges;
    for (int32_t i = 0; i < polygon.count; i++)
    {
        Point a = polygon.points[(top + i) % polygon.count];
        Point b = polygon.points[(top + i + 1) % polygon.count];
        if (a.y == b.y)
        {
            continue;
        }
        if (a.y > b.y)
        {
            std::swap(a, b);
        }
        edges.push_back(NewStepper(static_cast<int64_t>(b.x) - a.x, static_cast<int64_t>(b.y) - a.y));
        SetOrigin(edges.back(), static_cast<int64_t>(a.x) + dx, static_cast<int64_t>(a.y) + dy);
    }
    return edges;
}

// Takes the smallest value out, 0 when there is none.
static int64_t _popSmallest(std::vector<int64_t> &values)
{
    if (values.empty())
    {
        return 0;
    }
    const auto smallest = std::min_element(values.begin(), values.end());
    const int64_t value = *smallest;
    values.erase(smallest);
    return value;
}

static void _fillRow(std::vector<Stepper> &edges, int64_t row)
{
    std::vector<int64_t> crossings;
    for (Stepper &edge : edges)
    {
        if (edge.remaining >= 0 && edge.y == row)
        {
            crossings.push_back(edge.x);
            _nextRow(edge);
        }
    }
    while (!crossings.empty())
    {
        const int64_t x1 = _popSmallest(crossings);
        const int64_t x2 = _popSmallest(crossings);
        MoveTo(x1, row);
        if (x1 == x2)
        {
            DrawPen();
        }
        else
        {
            HLine(x2 - x1);
        }
    }
}

void FillPolygon(const Polygon *polygon, int32_t dx, int32_t dy)
{
    if (polygon == nullptr || state.error != 0 || polygon->points == nullptr || polygon->count < 3)
    {
        return;
    }
    int32_t top = 0;
    int64_t minimum = 0; // on purpose: the range begins at 0, not at the first vertex
    int64_t maximum = 0;
    for (int32_t i = 0; i < polygon->count; i++)
    {
        const int32_t y = polygon->points[i].y;
        if (y < minimum)
        {
            minimum = y;
            top = i;
        }
        else if (y > maximum)
        {
            maximum = y;
        }
    }
    std::vector<Stepper> edges = _edges(*polygon, dx, dy, top);
    if (edges.size() <= 1)
    {
        return;
    }
    for (Stepper &edge : edges)
    {
        _nextRow(edge);
    }
    for (int64_t row = minimum + dy; row < maximum + dy; row++)
    {
        _fillRow(edges, row);
    }
    ref::DrawPolygon(polygon, dx, dy);
}

// Where the flood fill has still to look; holds 500 points and drops further ones.
static std::vector<Point> _stack;

static void _push(int64_t x, int64_t y)
{
    if (_stack.size() < 500)
    {
        _stack.push_back({static_cast<int32_t>(x), static_cast<int32_t>(y)});
    }
}

static bool _isFillable(int64_t x, int64_t y, uint8_t boundary)
{
    return PixelAt(x, y) != boundary && PixelAt(x, y) != state.penColor;
}

static void _scanRow(int64_t y, int64_t left, int64_t right, uint8_t boundary)
{
    for (int64_t x = left; x <= right; x++)
    {
        if (_isFillable(x, y, boundary) && (x == right || !_isFillable(x + 1, y, boundary)))
        {
            _push(x, y);
        }
    }
}

void Fill(int32_t x, int32_t y, int32_t wantedBoundary)
{
    const auto boundary = static_cast<uint8_t>(wantedBoundary & 0xFF);
    if (state.error != 0 || !IsInside(x, y) || !IsUsed(boundary) || PixelAt(x, y) == boundary)
    {
        return;
    }
    const int64_t width = static_cast<int16_t>(state.width);
    const int64_t height = static_cast<int16_t>(state.height);
    _stack.clear();
    _push(x, y);
    while (!_stack.empty())
    {
        const Point p = _stack.back();
        _stack.pop_back();
        PixelAt(p.x, p.y) = state.penColor;
        int64_t right = p.x;
        while (right + 1 < width && _isFillable(right + 1, p.y, boundary))
        {
            PixelAt(++right, p.y) = state.penColor;
        }
        int64_t left = p.x;
        while (left - 1 >= 0 && _isFillable(left - 1, p.y, boundary))
        {
            PixelAt(--left, p.y) = state.penColor;
        }
        if (p.y - 1 >= 0)
        {
            _scanRow(p.y - 1, left, right, boundary);
        }
        if (p.y + 1 < height)
        {
            _scanRow(p.y + 1, left, right, boundary);
        }
    }
}

} // namespace ref
