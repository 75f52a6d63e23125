// qbgraph_lines.cpp - straight lines and rectangles.
//
// A line is a row of pen stamps, and only the pixels and the place where the pen stops count. So nothing is stamped one
// by one: runs and rectangles are single blocks, a line of the one-pixel pen is walked only where it crosses the
// image, and a line of a wider pen is painted row by row. Steps along the major axis are numbered from 0; by step i
// a line of major length M and minor length m has moved floor(m * i / M + 1/2) along its minor axis, which is what
// adding up the usual decision term comes to.

#include "qbgraph_state.h"

#include <algorithm>
#include <cstdlib>

// A line reduced to steps. Lengths below 2^33, positions below 2^34.
struct _Line
{
    int64_t x; // start
    int64_t y;
    int64_t sx; // direction, -1 or 1
    int64_t sy;
    int64_t major; // steps, at least 1
    int64_t minor; // 1 .. major
    bool steep;    // y is the major axis
};

// A range of steps, or of positions; empty when last < first.
struct _Range
{
    int64_t first;
    int64_t last;
};

static _Range _cut(const _Range &a, const _Range &b)
{
    return {std::max(a.first, b.first), std::min(a.last, b.last)};
}

// The distances from start, counted in the direction sign, at which a stamp of pen pixels touches 0 .. size - 1.
static _Range _touching(int64_t start, int64_t sign, int64_t pen, int64_t size)
{
    const int64_t low = 1 - pen - start;
    const int64_t high = size - 1 - start;
    return sign > 0 ? _Range{low, high} : _Range{-high, -low};
}

// How far step i is along the minor axis.
static int64_t _minorAt(const _Line &line, int64_t i)
{
    const _Int128 major = line.major;
    return static_cast<int64_t>((2 * static_cast<_Int128>(line.minor) * i + major) / (2 * major));
}

// The first step that is k along the minor axis; k up to minor.
static int64_t _firstStepAt(const _Line &line, int64_t k)
{
    if (k <= 0)
    {
        return 0;
    }
    const _Int128 whole = 2 * static_cast<_Int128>(line.minor);
    return static_cast<int64_t>((line.major * (2 * static_cast<_Int128>(k) - 1) + whole - 1) / whole);
}

// The steps at which the line is in a range along its minor axis.
static _Range _stepsAt(const _Line &line, const _Range &minors)
{
    const int64_t end = line.major - 1;
    if (minors.first > line.minor || minors.last < 0)
    {
        return {0, -1};
    }
    return {_firstStepAt(line, minors.first),
            minors.last >= line.minor ? end : _firstStepAt(line, minors.last + 1) - 1};
}

// The steps of a line of one-pixel stamps inside the image: one piece, because it enters once.
static _Range _visibleSteps(const _Line &line)
{
    const _Range all = {0, line.major - 1};
    const _Range columns = _touching(line.x, line.sx, 1, curW);
    const _Range rows = _touching(line.y, line.sy, 1, curH);
    const int64_t width = line.steep ? line.minor : line.major;
    const int64_t height = line.steep ? line.major : line.minor;
    if (columns.first <= 0 && columns.last >= width && rows.first <= 0 && rows.last >= height)
    {
        return all; // the usual case, and no division
    }
    return line.steep ? _cut(_cut(all, rows), _stepsAt(line, columns)) : _cut(_cut(all, columns), _stepsAt(line, rows));
}

// The one-pixel pen, walked where it can be seen.
static void _paintThinLine(const _Line &line)
{
    const _Range steps = _visibleSteps(line);
    if (steps.last < steps.first)
    {
        return;
    }
    const int64_t minor = steps.first == 0 ? 0 : _minorAt(line, steps.first);
    const int64_t x = line.x + line.sx * (line.steep ? minor : steps.first);
    const int64_t y = line.y + line.sy * (line.steep ? steps.first : minor);
    const int64_t majorStep = line.steep ? line.sy * curW : line.sx;
    const int64_t minorStep = line.steep ? line.sx : line.sy * curW;
    // The decision term of that step; it is small, though its parts are not.
    auto term = static_cast<int64_t>(2 * static_cast<_Int128>(line.minor) * (steps.first + 1) - line.major -
                                     2 * static_cast<_Int128>(line.major) * minor);
    // Copies: the compiler could not know that painting leaves the pen and the line alone.
    uint8_t *const pixels = pCurBuf;
    const uint8_t colour = curPenColor;
    const int64_t gain = 2 * line.minor;
    const int64_t loss = 2 * line.major;
    int64_t at = y * curW + x;
    for (int64_t left = steps.last - steps.first; left >= 0; left--)
    {
        pixels[at] = colour;
        const int64_t taken = term >= 0 ? -1 : 0; // all ones for a minor step: no jump to mispredict
        at += majorStep + (minorStep & taken);
        term += gain - (loss & taken);
    }
}

// Sets a stepper to what a line is at k rows from its start: a steep one's distance along its minor axis, or the first
// step of a flat one there; k at least 1 for a flat one.
static void _setStepper(_Stepper *stepper, const _Line &line, int64_t k)
{
    const auto major = static_cast<uint64_t>(line.major);
    const auto minor = static_cast<uint64_t>(line.minor);
    const auto rows = static_cast<_UInt128>(k);
    if (line.steep)
    {
        stepper->set(2 * rows * minor + major, 2 * minor, 2 * major);
    }
    else
    {
        stepper->set((2 * rows - 1) * major + (2 * minor - 1), 2 * major, 2 * minor);
    }
}

// A wider pen: the stamps that cover an image row are neighbours, so their union in that row is one run. It goes from
// the last stamp but penH - 1 rows (or the line's first) to the stamp in the row furthest ahead (or the line's last).
static void _paintThickLine(const _Line &line)
{
    const int64_t length = line.steep ? line.major - 1 : _minorAt(line, line.major - 1); // in rows
    const int64_t start = line.sy > 0 ? line.y : line.y + curPenH - 1;                   // the row covered first
    const int64_t low = line.sy > 0 ? -start : start - curH + 1;
    const int64_t high = line.sy > 0 ? curH - 1 - start : start;
    const int64_t firstAhead = std::max<int64_t>(low, 0);
    const int64_t lastAhead = std::min(high, length + curPenH - 1);
    const int64_t ownStep = line.steep ? 0 : 1; // a flat line's steps in a row end before the next row's first
    _Stepper front = {};
    _Stepper back = {};
    if (firstAhead <= lastAhead)
    {
        _setStepper(&front, line, std::min(firstAhead, length) + ownStep);
        _setStepper(&back, line, std::max(firstAhead - curPenH + 1, ownStep));
    }
    for (int64_t ahead = firstAhead; ahead <= lastAhead; ahead++)
    {
        const int64_t behind = ahead - curPenH + 1;
        const int64_t first = behind > 0 ? back.value : 0;
        const int64_t last = !line.steep && ahead >= length ? line.major - 1 : front.value - ownStep;
        const int64_t left = line.sx > 0 ? line.x + first : line.x - last;
        const int64_t row = start + line.sy * ahead;
        _PaintBlock(left, row, left + (last - first) + curPenW, row + 1);
        if (ahead < length)
        {
            front.next();
        }
        if (behind >= ownStep)
        {
            back.next();
        }
    }
}

void _DrawHLine(int64_t n)
{
    if (n == 0)
    {
        return;
    }
    const int64_t left = n > 0 ? curPenX : curPenX + n;
    const int64_t count = n > 0 ? n : -n;
    _PaintBlock(left, curPenY, left + count - 1 + curPenW, static_cast<int64_t>(curPenY) + curPenH);
    curPenX = _Wrap32(n > 0 ? left + n - 1 : left);
}

void _DrawVLine(int64_t n)
{
    if (n == 0)
    {
        return;
    }
    const int64_t top = n > 0 ? curPenY : curPenY + n;
    const int64_t count = n > 0 ? n : -n;
    _PaintBlock(curPenX, top, static_cast<int64_t>(curPenX) + curPenW, top + count - 1 + curPenH);
    curPenY = _Wrap32(n > 0 ? top + n - 1 : top);
}

// A line along an axis: the stamps from the start up to, not including, the end.
static void _paintStraightLine(int64_t dx, int64_t dy)
{
    const int64_t left = dx < 0 ? curPenX + dx + 1 : curPenX;
    const int64_t top = dy < 0 ? curPenY + dy + 1 : curPenY;
    const int64_t right = left + std::max<int64_t>(std::abs(dx), 1) - 1 + curPenW;
    _PaintBlock(left, top, right, top + std::max<int64_t>(std::abs(dy), 1) - 1 + curPenH);
}

void _DrawLine(int64_t x1, int64_t y1)
{
    const int64_t dx = x1 - curPenX;
    const int64_t dy = y1 - curPenY;
    if (dx == 0 || dy == 0)
    {
        _paintStraightLine(dx, dy);
    }
    else if (_CanPaint())
    {
        const int64_t width = std::abs(dx);
        const int64_t height = std::abs(dy);
        const _Line line = {
            curPenX,       curPenY, dx > 0 ? 1 : -1, dy > 0 ? 1 : -1, std::max(width, height), std::min(width, height),
            width < height};
        curPenW == 1 && curPenH == 1 ? _paintThinLine(line) : _paintThickLine(line);
    }
    curPenX = _Wrap32(x1);
    curPenY = _Wrap32(y1);
}

// The line's kind is settled here: runs treat their end points in ways of their own.
static void _drawLineBy(int64_t dx, int64_t dy)
{
    if (dy == 0)
    {
        _DrawHLine(dx);
    }
    else if (dx == 0)
    {
        _DrawVLine(dy);
    }
    else
    {
        _DrawLine(curPenX + dx, curPenY + dy);
    }
}

void DrawLineTo(int32_t x, int32_t y)
{
    if (_graphErr == 0)
    {
        _drawLineBy(static_cast<int64_t>(x) - curPenX, static_cast<int64_t>(y) - curPenY);
    }
}

void DrawLineRel(int32_t dx, int32_t dy)
{
    if (_graphErr == 0)
    {
        _drawLineBy(dx, dy);
    }
}

// A rectangle with its corner at the top left. False when there is nothing to draw.
static bool _normalise(const Rectangle *rect, Point *corner, int64_t *width, int64_t *height)
{
    if (rect == nullptr || _graphErr != 0 || curNColors == 0 || rect->left == rect->right || rect->top == rect->bottom)
    {
        return false;
    }
    *corner = {std::min(rect->left, rect->right), std::min(rect->top, rect->bottom)};
    *width = std::abs(static_cast<int64_t>(rect->right) - rect->left);
    *height = std::abs(static_cast<int64_t>(rect->bottom) - rect->top);
    return true;
}

void DrawRectangle(const Rectangle *rect)
{
    Point corner;
    int64_t width = 0;
    int64_t height = 0;
    if (!_normalise(rect, &corner, &width, &height))
    {
        return;
    }
    MovePenTo(corner.x, corner.y);
    _DrawHLine(width);
    if (height > 1) // each corner belongs to one run only
    {
        curPenY++;
        _DrawVLine(height - 1);
        _DrawHLine(1 - width);
        _DrawVLine(2 - height);
    }
    MovePenTo(corner.x, corner.y);
}

void FillRectangle(const Rectangle *rect)
{
    Point corner;
    int64_t width = 0;
    int64_t height = 0;
    if (!_normalise(rect, &corner, &width, &height))
    {
        return;
    }
    _PaintBlock(corner.x, corner.y, corner.x + width - 1 + curPenW, corner.y + height - 1 + curPenH);
    MovePenTo(corner.x, _Wrap32(corner.y + height)); // on purpose: below the rectangle, not back at its corner
}
