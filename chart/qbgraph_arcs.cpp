// qbgraph_arcs.cpp - ovals, arcs and slices.
//
// An ellipse is walked in two regions, from its top along x and from its side along y, until each reaches the point
// where the slope passes 45 degrees; every point of the walk stands for four mirror images. Angles are whole degrees,
// counter-clockwise from the positive x axis; y grows downwards, so 90 is straight up.

#include "qbgraph_ellipse_state.h"
#include "qbgraph_state.h"

#include <algorithm>
#include <array>
#include <cstdlib>

// 128 * tan(i degrees) to the nearest. On purpose 53, 54, 67 and 79 are one off, and 90 is 0.
const int32_t aTanTbl[91] = {
    0,   2,   4,   7,   9,   11,  13,  16,   18,   20,   23,   25,   27,   30,   32,  34,  37,  39,  42,
    44,  47,  49,  52,  54,  57,  60,  62,   65,   68,   71,   74,   77,   80,   83,  86,  90,  93,  96,
    100, 104, 107, 111, 115, 119, 124, 128,  133,  137,  142,  147,  153,  158,  164, 169, 177, 183, 190,
    197, 205, 213, 222, 231, 241, 251, 262,  274,  287,  301,  317,  333,  352,  372, 394, 419, 446, 478,
    513, 554, 602, 658, 726, 808, 911, 1042, 1218, 1463, 1830, 2442, 3665, 7333, 0,
};

// The angle of a steep or flat offset, 0 .. 90: the first whose tangent is not below y / x. Both above 0.
static int32_t _tanIndex(int64_t x, int64_t y)
{
    return static_cast<int32_t>(std::lower_bound(aTanTbl, aTanTbl + 90, 128 * y / x) - aTanTbl);
}

int32_t _CoTan(int64_t x, int64_t y)
{
    if (x == 0)
    {
        return y >= 0 ? 270 : 90;
    }
    if (y == 0)
    {
        return x >= 0 ? 0 : 180;
    }
    const int32_t i = _tanIndex(std::abs(x), std::abs(y));
    if (x < 0)
    {
        return y >= 0 ? 180 + i : 180 - i;
    }
    return y >= 0 ? 360 - i : i;
}

static int32_t _offset(int32_t v, int32_t r)
{
    const int64_t size = (std::abs(static_cast<int64_t>(v)) * r + 64) >> 7;
    return v == 0 ? 0 : _Wrap32(v < 0 ? -size : size);
}

int32_t CosX(int32_t angle, int32_t r)
{
    return _offset(_Cos128(angle), r);
}

int32_t SinY(int32_t angle, int32_t r)
{
    return _offset(_Sin128(angle), r);
}

// ---- The walk

std::array<_Spot, 4> _Images(const _Ellipse &e, int64_t x, int64_t y)
{
    return {{{e.cx + x + e.exW, e.cy + y + e.exH},
             {e.cx + x + e.exW, e.cy - y},
             {e.cx - x, e.cy - y},
             {e.cx - x, e.cy + y + e.exH}}};
}

// Visits every point (x, y) of the walk with its region, 1 or 2. The decision term d is kept by adding up, so it stays
// small: half-axes up to 2^20 fit, and any where the other is 0. Nothing when both are 0, which would never end.
template <typename Visit>
static void _walk(int64_t a, int64_t b, Visit visit)
{
    const int64_t aa = a * a;
    const int64_t bb = b * b;
    int64_t x = 0;
    int64_t y = b;
    int64_t t = 2 * aa * b;
    int64_t d = -aa * b;
    int64_t acc = 0;
    while (t >= acc && aa + bb > 0)
    {
        visit(x, y, 1);
        acc += 2 * bb;
        d += acc - bb;
        x++;
        if (d >= 0)
        {
            t -= 2 * aa;
            y--;
            d -= t;
        }
    }
    x = a;
    y = 0;
    t = 2 * bb * a;
    d = -a * bb;
    acc = 0;
    while (acc < t)
    {
        visit(x, y, 2);
        acc += 2 * aa;
        d += acc - aa;
        y++;
        if (d >= 0)
        {
            t -= 2 * bb;
            x--;
            d -= t;
        }
    }
}

// Whether stamping an ellipse step by step is quick: not too many steps, and not too large a pen.
static bool _isWalkable(const _Ellipse &e, int32_t shift)
{
    constexpr int64_t kMaxSteps = 1 << 16;
    constexpr int64_t kMaxPen = 64; // pixels of a stamp
    if (e.a == 0 || e.b == 0)
    {
        return true; // one step
    }
    return ((e.a + e.b) << shift) <= kMaxSteps && static_cast<int64_t>(curPenW) * curPenH <= kMaxPen;
}

static void _stampAt(const _Spot &spot)
{
    if (curPenW == 1 && curPenH == 1)
    {
        if (spot.x >= 0 && spot.y >= 0 && spot.x < curW && spot.y < curH)
        {
            pCurBuf[spot.y * curW + spot.x] = curPenColor;
        }
        return;
    }
    _PaintBlock(spot.x, spot.y, spot.x + curPenW, spot.y + curPenH);
}

// ---- Ovals

static void _DrawOval(const _Ellipse &e)
{
    if (!_isWalkable(e, 0))
    {
        _DrawWideOval(e);
        return;
    }
    _walk(e.a, e.b,
          [&e](int64_t x, int64_t y, int32_t)
          {
              for (const _Spot &image : _Images(e, x, y))
              {
                  _stampAt(image);
              }
          });
}

static void _paintOvalRow(const _Ellipse &e, int64_t x, int64_t y)
{
    const int64_t left = e.cx - x;
    const int64_t count = 2 * x + 1 + e.exW;
    if (count > 0)
    {
        _PaintBlock(left, e.cy - y, left + count - 1 + curPenW, e.cy - y + curPenH);
        _PaintBlock(left, e.cy + y + e.exH, left + count - 1 + curPenW, e.cy + y + e.exH + curPenH);
    }
}

static void _FillOval(const _Ellipse &e)
{
    if (!_isWalkable(e, 0))
    {
        _FillWideOval(e);
        return;
    }
    int64_t lastX = 0;
    int64_t lastY = -1;
    _walk(e.a, e.b,
          [&](int64_t x, int64_t y, int32_t)
          {
              if (y != lastY && lastY >= 0)
              {
                  _paintOvalRow(e, lastX, lastY); // the widest run of its row
              }
              lastX = x;
              lastY = y;
          });
    if (lastY >= 0)
    {
        _paintOvalRow(e, lastX, lastY);
    }
}

// ---- Arcs and slices

// Finds the angle of one point of a walk after the other, looking from the last one on; it does not divide.
class _Turning
{
public:
    // The side of the ellipse is 0 from above and 360 from below.
    int64_t angleOf(int64_t x, int64_t y, int32_t region)
    {
        if (x > 0 && y > 0)
        {
            return 360 - (region == 1 ? _fall(x, y) : _rise(x, y));
        }
        const int32_t angle = _CoTan(x, y);
        return region == 2 && angle == 0 ? 360 : angle;
    }

private:
    // Whether the tangent of i degrees is below the 128ths of y / x, cut off as in _tanIndex.
    static bool _isBelow(int32_t i, int64_t x, int64_t y)
    {
        return (aTanTbl[i] + 1) * x <= 128 * y;
    }

    // _tanIndex in the first region, from the top downwards.
    int32_t _fall(int64_t x, int64_t y)
    {
        while (_falling > 0 && !_isBelow(_falling - 1, x, y))
        {
            _falling--;
        }
        return _falling;
    }

    // _tanIndex in the second region, from the side upwards.
    int32_t _rise(int64_t x, int64_t y)
    {
        while (_rising < 90 && _isBelow(_rising, x, y))
        {
            _rising++;
        }
        return _rising;
    }

    int32_t _falling = 90; // degrees
    int32_t _rising = 0;   // degrees
};

// The angles of the mirror images of a point at an angle.
static std::array<int64_t, 4> _imageAngles(int64_t angle)
{
    return {angle, 360 - angle, angle - 180, 540 - angle};
}

// Visits every mirror image inside the angles.
template <typename Visit>
static void _walkArc(const _Ellipse &e, const _Angles &angles, Visit visit)
{
    _Turning turning;
    _walk(e.a, e.b,
          [&](int64_t x, int64_t y, int32_t region)
          {
              const auto images = _Images(e, x, y);
              const auto turns = _imageAngles(turning.angleOf(x, y, region));
              for (size_t i = 0; i < 4; i++)
              {
                  if (angles.holds(turns[i]))
                  {
                      visit(images[i]);
                  }
              }
          });
}

static void _DrawArc(const _Ellipse &e, const _Angles &angles)
{
    if (!_isWalkable(e, 0))
    {
        _DrawWideArc(e, angles);
        return;
    }
    _walkArc(e, angles, _stampAt);
}

void _DrawRadius(const _Ellipse &e, const _Spot &image)
{
    MovePenTo(_Wrap32(e.cx), _Wrap32(e.cy));
    _DrawLine(image.x, image.y);
}

static void _FillArc(const _Ellipse &e, const _Angles &angles)
{
    if (!_isWalkable(e, 0))
    {
        _FillWideArc(e, angles);
        return;
    }
    _walkArc(e, angles,
             [&e](const _Spot &image)
             {
                 _DrawRadius(e, image);
                 DrawPen();
             });
}

// One radius of a frame: whether the walk has drawn it, and the image that was nearest to it so far.
struct _Radius
{
    bool fDrawn;
    int64_t gap; // degrees inside the range; 360: no image yet
    _Spot nearest;

    // degrees from the radius into the range, -360 .. 360
    void keep(int64_t degrees, const _Spot &image)
    {
        const int64_t distance = degrees < 0 ? degrees + 360 : degrees == 360 ? 0 : degrees;
        if (distance < gap)
        {
            gap = distance;
            nearest = image;
        }
    }
};

// What a frame remembers while it is walked.
struct _Frame
{
    _Ellipse e;
    _Angles angles;
    _Radius start;
    _Radius end;
    std::array<bool, 4> fEnabled; // by mirror image
};

static void _frameImage(_Frame *frame, size_t i, int64_t angle, const _Spot &image, int32_t region)
{
    // Lower right and upper left come in at the start and leave at the end of the range; the two others, and all of
    // them in the second region, which is walked the other way round, do the opposite.
    const bool fLeavesAtEnd = (i == 0 || i == 2) == (region == 1);
    frame->start.keep(angle - frame->angles.start, image);
    frame->end.keep(frame->angles.end - angle, image);
    if (angle == frame->angles.start && !frame->start.fDrawn)
    {
        _DrawRadius(frame->e, image);
        frame->start.fDrawn = true;
        frame->fEnabled[i] = fLeavesAtEnd;
    }
    else if (angle == frame->angles.end && !frame->end.fDrawn)
    {
        _DrawRadius(frame->e, image);
        frame->end.fDrawn = true;
        frame->fEnabled[i] = !fLeavesAtEnd;
    }
    _stampAt(image);
}

static void _frameImages(_Frame *frame, int64_t angle, const _Spot &spot, int32_t region)
{
    const auto turns = _imageAngles(angle);
    const auto images = _Images(frame->e, spot.x, spot.y);
    for (size_t i = 0; i < 4; i++)
    {
        if (frame->fEnabled[i] && frame->angles.holds(turns[i]))
        {
            _frameImage(frame, i, turns[i], images[i], region);
        }
    }
}

int64_t _ToPixels(int64_t v, int32_t shift)
{
    const int32_t half = shift >> 1;
    return v >= 0 ? (v + half) >> shift : -((half - v) >> shift);
}

constexpr int64_t kMinFrameAxis = 100; // a half-axis has at least this many steps, so that each degree is met

int32_t _FrameShift(const _Ellipse &e)
{
    int32_t shift = 0;
    while ((std::min(e.a, e.b) << shift) < kMinFrameAxis)
    {
        shift++;
    }
    return shift;
}

// Where a step of the enlarged walk is. The walk stays on a pixel and in a degree for some steps, of which only the
// first can paint. When both radii have the same angle, though, the second one is drawn by the second step.
struct _Step
{
    _Spot spot;
    int64_t angle;
    int32_t region;

    bool isLike(const _Step &other) const
    {
        return angle == other.angle && spot.x == other.spot.x && spot.y == other.spot.y && region == other.region;
    }
};

static void _FrameArc(const _Ellipse &e, const _Angles &angles)
{
    if (e.a < 1 || e.b < 1)
    {
        return; // no doubling would ever enlarge it
    }
    const int32_t shift = _FrameShift(e);
    if (!_isWalkable(e, shift))
    {
        _FrameWideArc(e, angles);
        return;
    }
    _Frame frame = {e, angles, {false, 360, {}}, {false, 360, {}}, {true, true, true, true}};
    _Turning turning;
    _Step last = {{-1, -1}, -1, 0};
    _walk(e.a << shift, e.b << shift,
          [&](int64_t x, int64_t y, int32_t region)
          {
              const _Step now = {{_ToPixels(x, shift), _ToPixels(y, shift)}, turning.angleOf(x, y, region), region};
              if (!now.isLike(last) || angles.start == angles.end)
              {
                  _frameImages(&frame, now.angle, now.spot, region);
                  last = now;
              }
          });
    for (const _Radius &radius : {frame.start, frame.end})
    {
        if (!radius.fDrawn && radius.gap < 360)
        {
            _DrawRadius(e, radius.nearest);
        }
    }
}

// ---- The public calls

// The ellipse in a rectangle whose corner, given back too, may be any of the four.
static _Ellipse _ellipseIn(const Rectangle &rect, Point *corner)
{
    const int64_t width = std::abs(static_cast<int64_t>(rect.right) - rect.left);
    const int64_t height = std::abs(static_cast<int64_t>(rect.bottom) - rect.top);
    *corner = {std::min(rect.left, rect.right), std::min(rect.top, rect.bottom)};
    return {corner->x + width / 2,   corner->y + height / 2,  width / 2, height / 2,
            width % 2 == 0 ? -1 : 0, height % 2 == 0 ? -1 : 0};
}

static bool _isEmpty(const Rectangle *rect)
{
    return rect == nullptr || _graphErr != 0 || rect->left == rect->right || rect->top == rect->bottom;
}

// An oval of one column or one row is a run. False for any other.
static bool _drawFlatOval(const Rectangle &rect)
{
    const int64_t width = static_cast<int64_t>(rect.right) - rect.left;
    const int64_t height = static_cast<int64_t>(rect.bottom) - rect.top;
    if (width != 1 && height != 1)
    {
        return false;
    }
    MovePenTo(rect.left, rect.top);
    width == 1 ? _DrawVLine(height) : _DrawHLine(width);
    MovePenTo(rect.left, rect.top);
    return true;
}

static void _oval(const Rectangle *rect, void (*draw)(const _Ellipse &))
{
    if (_isEmpty(rect) || _drawFlatOval(*rect))
    {
        return;
    }
    Point corner;
    const _Ellipse e = _ellipseIn(*rect, &corner);
    if (_CanPaint())
    {
        draw(e);
    }
    MovePenTo(corner.x, corner.y);
}

void DrawOval(const Rectangle *rect)
{
    _oval(rect, _DrawOval);
}

void FillOval(const Rectangle *rect)
{
    _oval(rect, _FillOval);
}

// An angle to 0 .. 360; on purpose 360 stays, while greater multiples become 0.
static int64_t _wholeAngle(int64_t angle)
{
    const int64_t size = std::abs(angle);
    const int64_t turn = size >= 361 ? size % 360 : size;
    return angle < 0 ? 360 - turn : turn;
}

static void _arc(const Rectangle *rect, int32_t start, int32_t sweep, void (*draw)(const _Ellipse &, const _Angles &))
{
    if (_isEmpty(rect) || static_cast<int64_t>(rect->right) - rect->left == 1 ||
        static_cast<int64_t>(rect->bottom) - rect->top == 1)
    {
        return;
    }
    _Angles angles = {_wholeAngle(start), 0};
    angles.end = _wholeAngle(angles.start + sweep);
    if (sweep < 0)
    {
        std::swap(angles.start, angles.end);
    }
    Point corner;
    const _Ellipse e = _ellipseIn(*rect, &corner);
    if (_CanPaint())
    {
        draw(e, angles);
    }
    MovePenTo(corner.x, corner.y);
}

void DrawArc(const Rectangle *rect, int32_t start, int32_t sweep)
{
    _arc(rect, start, sweep, _DrawArc);
}

void FillArc(const Rectangle *rect, int32_t start, int32_t sweep)
{
    _arc(rect, start, sweep, _FillArc);
}

void FrameArc(const Rectangle *rect, int32_t start, int32_t sweep)
{
    _arc(rect, start, sweep, _FrameArc);
}
