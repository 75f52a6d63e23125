// qbgraph_polygons.cpp - polygons, paths, flood fill.
//
// A path steps along a direction the way a line does. Its calls may ask for any number of steps, so the steps are
// counted, not taken. The polygon fill uses the same points, row by row, but keeps its edges in 64 bits and enters each
// one at the first row that can be seen.
//
// Sections: paths; the list of crossings; polygons; flood fill.

#include "qbgraph_state.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <functional>

// ---- Paths

static int32_t _sign(int32_t v)
{
    return (v > 0) - (v < 0);
}

int32_t InitPath(Path *path, int32_t dx, int32_t dy)
{
    if (path == nullptr)
    {
        return 0;
    }
    const int64_t width = std::abs(static_cast<int64_t>(dx));
    const int64_t height = std::abs(static_cast<int64_t>(dy));
    path->major = _Wrap32(std::max(width, height));
    path->minor = _Wrap32(std::min(width, height));
    path->sx = _sign(dx);
    path->sy = _sign(dy);
    path->remaining = path->major;
    path->swapped = height > width ? 1 : 0;
    SetPathOrigin(path, 0, 0);
    return 1;
}

void SetPathOrigin(Path *path, int32_t x, int32_t y)
{
    path->x = x;
    path->y = y;
    path->error = _Wrap32(2 * static_cast<int64_t>(path->minor) - path->major);
}

// Moves a path n steps, of which minors go along the minor axis too; sign -1 goes backwards.
static void _movePath(Path *path, int64_t n, int64_t minors, int32_t sign)
{
    const int64_t alongX = (path->swapped != 0 ? minors : n) * path->sx * sign;
    const int64_t alongY = (path->swapped != 0 ? n : minors) * path->sy * sign;
    path->x = _Wrap32(path->x + alongX);
    path->y = _Wrap32(path->y + alongY);
    // The terms may pass 64 bits; only their low 32 are kept anyway.
    const auto gain = 2 * static_cast<uint64_t>(path->minor) * static_cast<uint64_t>(n);
    const auto loss = 2 * static_cast<uint64_t>(path->major) * static_cast<uint64_t>(minors);
    path->error = _Wrap32(path->error + static_cast<int64_t>(gain - loss));
}

// How many of the next n steps go along the minor axis: those that begin with a decision term of 0 or more.
static int64_t _countMinors(const Path &path, int64_t n)
{
    if (path.major <= 0)
    {
        return 0;
    }
    const _Int128 den = 2 * static_cast<_Int128>(path.major);
    const _Int128 last = path.error + 2 * static_cast<_Int128>(path.minor) * (n - 1);
    const _Int128 minors = last < 0 ? 0 : last / den + 1;
    return static_cast<int64_t>(std::min<_Int128>(minors, n));
}

static void _stepPath(Path *path, int32_t n, int32_t sign, Point *point)
{
    *point = {path->x, path->y};
    if (n > 0)
    {
        _movePath(path, n, _countMinors(*path, n), sign);
    }
}

void GetPathNextPoint(Path *path, int32_t n, Point *point)
{
    _stepPath(path, n, 1, point);
    // On purpose: one less, however many steps were taken.
    path->remaining = _Wrap32(static_cast<int64_t>(path->remaining != 0 ? path->remaining : path->major) - 1);
}

void GetPathPrevPoint(Path *path, int32_t n, Point *point)
{
    _stepPath(path, n, -1, point);
    path->remaining = path->remaining == path->major ? 1 : _Wrap32(static_cast<int64_t>(path->remaining) + 1);
}

// Moves a path to its next step along the minor axis.
static void _stepToMinor(Path *path)
{
    int64_t idle = 0; // steps before that one
    if (path->error < 0)
    {
        const int64_t gain = 2 * static_cast<int64_t>(path->minor);
        idle = (gain - 1 - path->error) / gain;
    }
    _movePath(path, idle + 1, 1, 1);
    path->remaining = _Wrap32(path->remaining - idle - 1);
}

// Moves a path to its next step along its major axis.
static void _stepToMajor(Path *path)
{
    _movePath(path, 1, path->error >= 0 ? 1 : 0, 1);
    path->remaining = _Wrap32(static_cast<int64_t>(path->remaining) - 1);
}

// Moves a path until one coordinate has changed; not at all when it never would.
static void _stepUntil(Path *path, bool fMajor)
{
    if (path->major > 0 && fMajor)
    {
        _stepToMajor(path);
    }
    else if (path->major > 0 && path->minor > 0)
    {
        _stepToMinor(path);
    }
}

void _GetPathNextYPoint(Path *path, int32_t *x, int32_t *y)
{
    *x = path->x;
    *y = path->y;
    _stepUntil(path, path->swapped != 0);
}

void _GetPathNextXPoint(Path *path, int32_t *x, int32_t *y)
{
    *x = path->x;
    *y = path->y;
    _stepUntil(path, path->swapped == 0);
}

// ---- The list of crossings

// The x values where edges cross the current row; FillPolygon sets it up and takes it back.
int32_t *_pPolyStack = nullptr;
int32_t _polyStackSize = 0;
int32_t _polyMaxStackSize = 0;

// Whether the list is in falling order; _Push may drop the order, and _Pop restores it.
static bool _fPolyStackSorted = false;

int32_t _Push(int32_t v)
{
    if (_polyStackSize == _polyMaxStackSize)
    {
        return 0;
    }
    _fPolyStackSorted = _polyStackSize == 0 || (_fPolyStackSorted && v <= _pPolyStack[_polyStackSize - 1]);
    _pPolyStack[_polyStackSize++] = v;
    return 1;
}

int32_t _Pop()
{
    if (_polyStackSize == 0)
    {
        return 0;
    }
    if (!_fPolyStackSorted)
    {
        std::sort(_pPolyStack, _pPolyStack + _polyStackSize, std::greater<>());
        _fPolyStackSorted = true;
    }
    return _pPolyStack[--_polyStackSize];
}

// ---- Polygons

static Point _shifted(const Point &point, int32_t dx, int32_t dy)
{
    return {_Wrap32(static_cast<int64_t>(point.x) + dx), _Wrap32(static_cast<int64_t>(point.y) + dy)};
}

static bool _isDrawable(const Polygon *polygon)
{
    return polygon != nullptr && _graphErr == 0 && polygon->points != nullptr && polygon->count > 0;
}

void DrawPolygon(const Polygon *polygon, int32_t dx, int32_t dy)
{
    if (!_isDrawable(polygon))
    {
        return;
    }
    const Point first = _shifted(polygon->points[0], dx, dy);
    MovePenTo(first.x, first.y);
    for (int32_t i = 1; i < polygon->count; i++)
    {
        const Point next = _shifted(polygon->points[i], dx, dy);
        DrawLineTo(next.x, next.y);
    }
    DrawLineTo(first.x, first.y);
}

// An edge that is not horizontal, seen from its upper end. It crosses the rows below that end down to its lower end.
struct _Edge
{
    int64_t x; // upper end
    int64_t top;
    int64_t bottom; // row of the lower end
    int64_t width;  // columns to the lower end
    int64_t sx;     // direction of x, -1 or 1
    _Stepper along; // its distance from x in the current row
};

static void _setEdge(_Edge *edge, const Point &a, const Point &b)
{
    const Point &upper = a.y < b.y ? a : b;
    const Point &lower = a.y < b.y ? b : a;
    const int64_t dx = static_cast<int64_t>(lower.x) - upper.x;
    *edge = {upper.x, upper.y, lower.y, std::abs(dx), dx < 0 ? -1 : 1, {}};
}

// Puts an edge on one of its rows. A flat edge is where its path enters the row: the first step s that is j rows down,
// ceil(width * (2j - 1) / (2 * height)). A steep one has moved width * j / height sideways, a half rounded up.
static void _enterEdge(_Edge *edge, int64_t row)
{
    const auto j = static_cast<_UInt128>(row - edge->top);
    const auto across = static_cast<uint64_t>(edge->width);
    const auto height = static_cast<uint64_t>(edge->bottom - edge->top);
    if (across >= height)
    {
        edge->along.set((2 * j - 1) * across + (2 * height - 1), 2 * across, 2 * height);
    }
    else
    {
        edge->along.set(2 * j * across + height, 2 * across, 2 * height);
    }
}

// The edges of the closed outline through the first count points of a copy whose last point is the first again.
static int32_t _makeEdges(const Point *points, int32_t count, _Edge *edges)
{
    int32_t nEdges = 0;
    for (int32_t i = 0; i < count; i++)
    {
        if (points[i].y != points[i + 1].y)
        {
            _setEdge(&edges[nEdges++], points[i], points[i + 1]);
        }
    }
    std::sort(edges, edges + nEdges, [](const _Edge &a, const _Edge &b) { return a.top < b.top; });
    return nEdges;
}

// What the pen covers of one row on the image: pairs of first and last column, in rising order, apart from each other.
// Their stamps cover the pen's height from the row on.
struct _RowRuns
{
    int32_t *columns;
    int32_t count; // values
};

// Adds the stamps from one column to another. Runs come by rising columns, so that only the last can meet the new one.
static void _addRun(_RowRuns *runs, int64_t first, int64_t last)
{
    const auto from = static_cast<int32_t>(std::max<int64_t>(first, 0));
    const auto to = static_cast<int32_t>(std::min<int64_t>(last + curPenW, curW) - 1);
    int32_t *end = runs->columns + runs->count;
    if (to < from)
    {
        return;
    }
    if (runs->count > 0 && from <= end[-1] + 1)
    {
        end[-1] = std::max(end[-1], to);
        return;
    }
    end[0] = from;
    end[1] = to;
    runs->count += 2;
}

// The runs between each two crossings on the list: the right one is left out, unless it is the left one as well.
static void _takeRuns(_RowRuns *runs)
{
    runs->count = 0;
    while (_polyStackSize > 0)
    {
        const int64_t x1 = _Pop();
        const int64_t x2 = _Pop();
        _addRun(runs, std::min(x1, x2), x1 == x2 ? x1 : std::max(x1, x2) - 1);
    }
}

// Paints the part of one run that no run of the row before covers, down to the pen's last row but one.
static void _paintNew(int64_t first, int64_t last, const _RowRuns &before, int64_t top, int64_t bottom)
{
    for (int32_t i = 0; i < before.count && before.columns[i] <= last; i += 2)
    {
        _PaintBlock(first, top, before.columns[i], bottom);
        first = std::max<int64_t>(first, static_cast<int64_t>(before.columns[i + 1]) + 1);
    }
    _PaintBlock(first, top, last + 1, bottom);
}

// Paints one row's runs without what the row before has painted: below its runs only the pen's last row is new.
static void _paintRuns(const _RowRuns &runs, _RowRuns before, int64_t row)
{
    const int64_t lastRow = row + curPenH - 1;
    for (int32_t i = 0; i < runs.count; i += 2)
    {
        const int64_t first = runs.columns[i];
        const int64_t last = runs.columns[i + 1];
        _PaintBlock(first, lastRow, last + 1, lastRow + 1);
        if (curPenH == 1)
        {
            continue;
        }
        while (before.count > 0 && before.columns[1] < first) // no run from here on meets it
        {
            before.columns += 2;
            before.count -= 2;
        }
        _paintNew(first, last, before, row, lastRow);
    }
}

// The edges that cross the current row, moved to the front of the array as they begin.
struct _Scan
{
    _Edge *edges;    // by rising top
    int32_t nEdges;  // all of them
    int32_t nBegun;  // those whose top is above the row
    int32_t nActive; // those that cross it, at most nBegun
};

static void _beginEdges(_Scan *scan, int64_t row)
{
    for (; scan->nBegun < scan->nEdges && scan->edges[scan->nBegun].top < row; scan->nBegun++)
    {
        _Edge edge = scan->edges[scan->nBegun];
        if (edge.bottom >= row)
        {
            _enterEdge(&edge, row);
            scan->edges[scan->nActive++] = edge;
        }
    }
}

// Puts the row's crossings on the list and moves on to the next row.
static void _pushCrossings(_Scan *scan, int64_t row)
{
    _polyStackSize = 0;
    int32_t kept = 0;
    for (int32_t i = 0; i < scan->nActive; i++)
    {
        _Edge &edge = scan->edges[i];
        _Push(static_cast<int32_t>(edge.x + edge.sx * edge.along.value));
        edge.along.next();
        if (edge.bottom > row)
        {
            if (kept != i)
            {
                scan->edges[kept] = edge;
            }
            kept++;
        }
    }
    scan->nActive = kept;
}

// The usual case quickly: rows that only two edges cross, with a pen of one row. Goes on to the row where an edge
// begins or ends, and returns it; the edges' last rows are left to the general way, which takes them off.
static int64_t _fillBetween(_Scan *scan, int64_t row, int64_t end)
{
    _Edge left = scan->edges[0];
    _Edge right = scan->edges[1];
    const int64_t nextTop = scan->nBegun < scan->nEdges ? scan->edges[scan->nBegun].top : end - 1;
    const int64_t last = std::min({end - 1, nextTop, left.bottom - 1, right.bottom - 1});
    for (; row <= last; row++)
    {
        const int64_t x1 = left.x + left.sx * left.along.value;
        const int64_t x2 = right.x + right.sx * right.along.value;
        const int64_t first = std::max<int64_t>(std::min(x1, x2), 0);
        const int64_t stop = std::min<int64_t>(std::max(x1, x2) + (x1 == x2 ? 0 : -1) + curPenW, curW);
        if (first < stop)
        {
            std::memset(pCurBuf + row * curW + first, curPenColor, static_cast<size_t>(stop - first));
        }
        left.along.next();
        right.along.next();
    }
    scan->edges[0] = left;
    scan->edges[1] = right;
    return row;
}

// A pen higher than this fills as if it were this high: rows further above the image are not looked at.
constexpr int64_t kMaxFillPen = 1 << 20;

static void _fillRows(_Scan scan, _RowRuns runs, _RowRuns before, int64_t firstRow, int64_t endRow)
{
    const int64_t first = std::max(firstRow, 1 - std::min<int64_t>(curPenH, kMaxFillPen));
    const int64_t end = std::min<int64_t>(endRow, curH);
    for (int64_t row = first; row < end; row++)
    {
        _beginEdges(&scan, row);
        if (curPenH == 1 && scan.nActive == 2)
        {
            row = _fillBetween(&scan, row, end);
            if (row == end)
            {
                return;
            }
            _beginEdges(&scan, row);
        }
        _pushCrossings(&scan, row);
        _takeRuns(&runs);
        _paintRuns(runs, before, row);
        std::swap(runs.columns, before.columns);
        before.count = runs.count;
    }
}

// The y range of the fill. On purpose: both ends begin at 0, and a vertex that is a new minimum is no maximum.
static void _getRows(const Polygon *polygon, int32_t *top, int64_t *first, int64_t *end)
{
    *top = 0;
    *first = 0;
    *end = 0;
    for (int32_t i = 0; i < polygon->count; i++)
    {
        const int32_t y = polygon->points[i].y;
        if (y < *first)
        {
            *first = y;
            *top = i;
        }
        else
        {
            *end = std::max<int64_t>(*end, y);
        }
    }
}

// What one FillPolygon call asks for. Free with _freeFill, complete or not.
struct _FillMemory
{
    Point *points;  // the shifted vertices from the top one on, closed by the first again
    _Edge *edges;   // room for one a vertex
    int32_t *lists; // the crossings, and twice the runs of a row: three lists of count + 1 values
};

static void _freeFill(const _FillMemory &memory)
{
    std::free(memory.points);
    std::free(memory.edges);
    std::free(memory.lists);
    _pPolyStack = nullptr;
    _polyStackSize = 0;
    _polyMaxStackSize = 0;
}

static bool _getFillMemory(int32_t count, _FillMemory *memory)
{
    const size_t n = static_cast<size_t>(count) + 1;
    *memory = {};
    memory->points = static_cast<Point *>(std::malloc(n * sizeof(Point)));
    if (memory->points != nullptr)
    {
        memory->edges = static_cast<_Edge *>(std::malloc(n * sizeof(_Edge)));
    }
    if (memory->edges != nullptr)
    {
        memory->lists = static_cast<int32_t *>(std::malloc(3 * n * sizeof(int32_t)));
    }
    _pPolyStack = memory->lists;
    _polyMaxStackSize = static_cast<int32_t>(std::min<int64_t>(static_cast<int64_t>(count) + 1, INT32_MAX));
    return memory->lists != nullptr;
}

static void _copyPoints(const Polygon *polygon, int32_t top, int32_t dx, int32_t dy, Point *copy)
{
    for (int32_t i = 0; i < polygon->count; i++)
    {
        const int64_t from = (static_cast<int64_t>(top) + i) % polygon->count;
        copy[i] = _shifted(polygon->points[from], dx, dy);
    }
    copy[polygon->count] = copy[0];
}

void FillPolygon(const Polygon *polygon, int32_t dx, int32_t dy)
{
    _FillMemory memory;
    if (!_isDrawable(polygon) || polygon->count < 3)
    {
        return;
    }
    if (_getFillMemory(polygon->count, &memory))
    {
        int32_t top = 0;
        int64_t first = 0;
        int64_t end = 0;
        _getRows(polygon, &top, &first, &end);
        _copyPoints(polygon, top, dx, dy, memory.points);
        const int32_t nEdges = _makeEdges(memory.points, polygon->count, memory.edges);
        if (nEdges > 1)
        {
            if (_CanPaint())
            {
                int32_t *runs = memory.lists + polygon->count + 1;
                _fillRows({memory.edges, nEdges, 0, 0}, {runs, 0}, {runs + nEdges + 1, 0}, first + dy, end + dy);
            }
            DrawPolygon(polygon, dx, dy);
        }
    }
    _freeFill(memory);
}

// ---- Flood fill

// The points still to be looked at; _ScanFill leaves it empty.
constexpr int32_t kMaxFillPoints = 500;
static Point stack[kMaxFillPoints];
static int16_t _index = 0; // number of points on it

int32_t _PushPoint(int32_t x, int32_t y, Point *point)
{
    if (_index >= kMaxFillPoints)
    {
        return 0;
    }
    *point = {x, y};
    stack[_index++] = *point;
    return 1;
}

int32_t _PopPoint(Point *point)
{
    if (_index == 0)
    {
        return 0;
    }
    *point = stack[--_index];
    return 1;
}

// The two colours at which a flood fill stops, each repeated in all eight bytes.
struct _Stops
{
    uint64_t boundary;
    uint64_t pen;
};

static uint64_t _repeat(uint8_t colour)
{
    return 0x0101010101010101U * colour;
}

// The high bit of each byte that is 0.
static uint64_t _zeroBytes(uint64_t v)
{
    constexpr uint64_t kLow7 = 0x7F7F7F7F7F7F7F7FU;
    return ~(((v & kLow7) + kLow7) | v | kLow7);
}

// The high bit of each of eight pixels that stops the fill.
static uint64_t _stopsIn8(const uint8_t *pixels, const _Stops &stops)
{
    uint64_t v = 0;
    std::memcpy(&v, pixels, 8);
    return _zeroBytes(v ^ stops.boundary) | _zeroBytes(v ^ stops.pen);
}

static bool _isStop(uint8_t pixel, const _Stops &stops)
{
    return pixel == static_cast<uint8_t>(stops.boundary) || pixel == static_cast<uint8_t>(stops.pen);
}

constexpr uint64_t kAll8 = 0x8080808080808080U; // what _stopsIn8 gives for eight stops; for none it gives 0

// How many of the n pixels from first on, without a gap, do (or do not) stop the fill.
static int64_t _countRight(const uint8_t *first, int64_t n, const _Stops &stops, bool fStops)
{
    int64_t i = 0;
    while (i + 8 <= n && _stopsIn8(first + i, stops) == (fStops ? kAll8 : 0))
    {
        i += 8;
    }
    while (i < n && _isStop(first[i], stops) == fStops)
    {
        i++;
    }
    return i;
}

// How many of the n pixels before end, going left without a gap, do not stop the fill.
static int64_t _countLeft(const uint8_t *end, int64_t n, const _Stops &stops)
{
    int64_t i = 0;
    while (i + 8 <= n && _stopsIn8(end - i - 8, stops) == 0)
    {
        i += 8;
    }
    while (i < n && !_isStop(end[-i - 1], stops))
    {
        i++;
    }
    return i;
}

// Pushes the last pixel of each run that can be filled in a part of a row.
static void _pushRuns(int32_t left, int32_t right, int32_t y, const _Stops &stops)
{
    const uint8_t *row = pCurBuf + static_cast<int64_t>(y) * curW;
    int64_t x = left;
    while (x <= right)
    {
        x += _countRight(row + x, right - x + 1, stops, true);
        const int64_t run = x <= right ? _countRight(row + x, right - x + 1, stops, false) : 0;
        x += run;
        if (run > 0)
        {
            Point point;
            _PushPoint(static_cast<int32_t>(x - 1), y, &point);
        }
    }
}

void _ScanFill(int32_t x, int32_t y, uint8_t boundary)
{
    // On purpose: beyond 32767 these are other numbers than the image's sizes.
    const auto width = static_cast<int16_t>(curW);
    const auto height = static_cast<int16_t>(curH);
    const _Stops stops = {_repeat(boundary), _repeat(curPenColor)};
    Point at = {x, y};
    if (pCurBuf[static_cast<int64_t>(y) * curW + x] == boundary)
    {
        return;
    }
    _PushPoint(x, y, &at);
    while (_PopPoint(&at) != 0)
    {
        uint8_t *row = pCurBuf + static_cast<int64_t>(at.y) * curW;
        row[at.x] = curPenColor;
        const auto right = static_cast<int32_t>(
            at.x + _countRight(row + at.x + 1, static_cast<int64_t>(width) - at.x - 1, stops, false));
        const auto left = static_cast<int32_t>(at.x - _countLeft(row + at.x, at.x, stops));
        std::memset(row + left, curPenColor, static_cast<size_t>(right) - static_cast<size_t>(left) + 1);
        if (at.y - 1 >= 0)
        {
            _pushRuns(left, right, at.y - 1, stops);
        }
        if (at.y + 1 < height)
        {
            _pushRuns(left, right, at.y + 1, stops);
        }
    }
}

void Fill(int32_t x, int32_t y, int32_t boundary)
{
    const auto colour = static_cast<uint8_t>(boundary);
    if (_graphErr == 0 && x >= 0 && y >= 0 && x < curW && y < curH && pCurCTab->positions[colour] >= 0)
    {
        _ScanFill(x, y, colour);
    }
}
