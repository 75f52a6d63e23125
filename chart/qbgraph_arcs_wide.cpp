// qbgraph_arcs_wide.cpp - ovals and arcs that are too large, or drawn with too large a pen, to be stamped step by step.
//
// Each region of the walk and each of its mirror images is a chain of neighbouring points that rises or falls all
// along. So the stamps that cover one image row are neighbours too, and their union in that row is one run: a drawing
// is a run for each visible row, chain and image, whatever the number of steps.

#include "qbgraph_ellipse_state.h"
#include "qbgraph_state.h"

#include <algorithm>
#include <array>
#include <cassert>

// A chain of stamps: one mirror image of the points steps of a region.
struct _Ribbon
{
    const _Ellipse *e;
    const _Chain *chain;
    int32_t shift; // doublings of the chain's ellipse
    int32_t image; // 0 lower right, 1 upper right, 2 upper left, 3 lower left
    _Steps steps;

    bool isRight() const
    {
        return image < 2;
    }

    bool isLower() const
    {
        return image == 0 || image == 3;
    }
};

// The x offsets from the centre, in pixels, of the stamps that cover one of the ribbon's rows. There always are some,
// because the stamps are neighbours.
static _Steps _offsetsInRow(const _Ribbon &ribbon, int64_t row)
{
    const _Ellipse &e = *ribbon.e;
    const _Chain &chain = *ribbon.chain;
    // The stamps' y offsets in pixels, then in the walk's units.
    const int64_t first = ribbon.isLower() ? row - curPenH + 1 - e.cy - e.exH : e.cy - row;
    const int64_t last = first + curPenH - 1;
    const int64_t unit = static_cast<int64_t>(1) << ribbon.shift;
    const int64_t half = ribbon.shift >> 1;
    const int64_t low = std::max<int64_t>(first * unit - half, 0);
    const int64_t high = (last + 1) * unit - half - 1;
    _Steps steps = {low, high};
    if (chain.region == 1)
    {
        steps = {chain.firstAtMost(high), chain.firstAtMost(low - 1) - 1};
    }
    steps = {std::max(steps.first, ribbon.steps.first), std::min(steps.last, ribbon.steps.last)};
    assert(steps.first <= steps.last);
    const int64_t x1 = chain.point(steps.first).x;
    const int64_t x2 = chain.point(steps.last).x;
    return {_ToPixels(std::min(x1, x2), ribbon.shift), _ToPixels(std::max(x1, x2), ribbon.shift)};
}

// The image rows that a ribbon's stamps may cover.
static _Steps _rowsOf(const _Ribbon &ribbon)
{
    const int64_t y1 = _ToPixels(ribbon.chain->point(ribbon.steps.first).y, ribbon.shift);
    const int64_t y2 = _ToPixels(ribbon.chain->point(ribbon.steps.last).y, ribbon.shift);
    const int64_t low = std::min(y1, y2);
    const int64_t high = std::max(y1, y2);
    const _Ellipse &e = *ribbon.e;
    const int64_t first = ribbon.isLower() ? e.cy + low + e.exH : e.cy - high;
    return {std::max<int64_t>(first, 0), std::min<int64_t>(first + high - low + curPenH, curH) - 1};
}

static void _paintRibbon(const _Ribbon &ribbon)
{
    if (ribbon.steps.last < ribbon.steps.first)
    {
        return;
    }
    const _Steps rows = _rowsOf(ribbon);
    for (int64_t row = rows.first; row <= rows.last; row++)
    {
        const _Steps x = _offsetsInRow(ribbon, row);
        const int64_t left = ribbon.isRight() ? ribbon.e->cx + x.first + ribbon.e->exW : ribbon.e->cx - x.last;
        _PaintBlock(left, row, left + (x.last - x.first) + curPenW, row + 1);
    }
}

// ---- Ovals

void _DrawWideOval(const _Ellipse &e)
{
    for (int32_t region = 1; region <= 2; region++)
    {
        const _Chain chain = _MakeChain(e.a, e.b, region);
        for (int32_t image = 0; image < 4; image++)
        {
            _paintRibbon({&e, &chain, 0, image, {0, chain.count - 1}});
        }
    }
}

// The runs of a filled oval share their middle, so the widest of a row covers the others.
void _FillWideOval(const _Ellipse &e)
{
    for (int32_t region = 1; region <= 2; region++)
    {
        const _Chain chain = _MakeChain(e.a, e.b, region);
        for (int32_t image = 2; image < 4; image++)
        {
            const _Ribbon ribbon = {&e, &chain, 0, image, {0, chain.count - 1}};
            const _Steps rows = _rowsOf(ribbon);
            for (int64_t row = rows.first; row <= rows.last; row++)
            {
                const _Steps x = _offsetsInRow(ribbon, row);
                const int64_t count = 2 * x.last + 1 + e.exW;
                if (count > 0)
                {
                    _PaintBlock(e.cx - x.last, row, e.cx - x.last + count - 1 + curPenW, row + 1);
                }
            }
        }
    }
}

// ---- Arcs

// The points of a chain whose image is inside the angles: a range through 0 can leave two pieces.
static std::array<_Steps, 2> _stepsInside(const _Chain &chain, int32_t image, const _Angles &angles)
{
    if (angles.end >= angles.start)
    {
        return {{_StepsAtAngles(chain, image, angles.start, angles.end), {0, -1}}};
    }
    return {{_StepsAtAngles(chain, image, angles.start, 360), _StepsAtAngles(chain, image, 0, angles.end)}};
}

// Visits every piece of an ellipse's outline inside the angles.
template <typename Visit>
static void _visitPieces(const _Ellipse &e, const _Angles &angles, Visit visit)
{
    for (int32_t region = 1; region <= 2; region++)
    {
        const _Chain chain = _MakeChain(e.a, e.b, region);
        for (int32_t image = 0; image < 4; image++)
        {
            for (const _Steps &steps : _stepsInside(chain, image, angles))
            {
                visit(_Ribbon{&e, &chain, 0, image, steps});
            }
        }
    }
}

void _DrawWideArc(const _Ellipse &e, const _Angles &angles)
{
    _visitPieces(e, angles, _paintRibbon);
}

static _Spot _imageOf(const _Ribbon &ribbon, int64_t n)
{
    const _Spot spot = ribbon.chain->point(n);
    const auto images = _Images(*ribbon.e, _ToPixels(spot.x, ribbon.shift), _ToPixels(spot.y, ribbon.shift));
    return images[static_cast<size_t>(ribbon.image)];
}

// On which side of the line from the centre through an image the visible stamps' corners lie: -1 or 1 for all of them
// on one, 0 for both.
static int32_t _sideOfView(const _Ribbon &ribbon, int64_t n)
{
    const _Ellipse &e = *ribbon.e;
    const _Spot image = _imageOf(ribbon, n);
    int32_t sides = 0;
    for (const int64_t x : {static_cast<int64_t>(-curPenW), static_cast<int64_t>(curW)})
    {
        for (const int64_t y : {static_cast<int64_t>(-curPenH), static_cast<int64_t>(curH)})
        {
            const _Int128 turn =
                static_cast<_Int128>(image.x - e.cx) * (y - e.cy) - static_cast<_Int128>(image.y - e.cy) * (x - e.cx);
            sides += turn > 0 ? 1 : turn < 0 ? -1 : 0;
        }
    }
    return sides == 4 ? 1 : sides == -4 ? -1 : 0;
}

// The steps whose radii can touch the image: those between all of it on one side and all of it on the other.
static _Steps _stepsInView(const _Ribbon &ribbon)
{
    const int32_t firstSide = _sideOfView(ribbon, ribbon.steps.first);
    const int32_t lastSide = _sideOfView(ribbon, ribbon.steps.last);
    if (firstSide == lastSide && firstSide != 0)
    {
        return {0, -1};
    }
    _Steps view = ribbon.steps;
    for (int64_t jump = ribbon.steps.last - ribbon.steps.first; jump > 0 && firstSide != 0; jump /= 2)
    {
        while (view.first + jump <= ribbon.steps.last && _sideOfView(ribbon, view.first + jump) == firstSide)
        {
            view.first += jump;
        }
    }
    for (int64_t jump = ribbon.steps.last - ribbon.steps.first; jump > 0 && lastSide != 0; jump /= 2)
    {
        while (view.last - jump >= ribbon.steps.first && _sideOfView(ribbon, view.last - jump) == lastSide)
        {
            view.last -= jump;
        }
    }
    return view;
}

// The radii of a piece. A wide pen fills the gaps that some left out would make, since two radii less than a pen apart
// leave none; and where very many are in view, they are closer together than pixels, or than the pen is wide, anyway.
static void _paintRadii(const _Ribbon &ribbon)
{
    constexpr int64_t kMaxSteps = 1 << 16; // an ellipse of more steps is not filled radius by radius
    const int64_t maxRadii = curPenW == 1 && curPenH == 1 ? 1 << 13 : 1 << 9; // in view
    if (ribbon.steps.last < ribbon.steps.first)
    {
        return;
    }
    const _Steps view = _stepsInView(ribbon);
    int64_t stride = std::max<int64_t>(std::min(curPenW, curPenH) / 4, 1);
    if (ribbon.e->a + ribbon.e->b > kMaxSteps)
    {
        stride = std::max(stride, (view.last - view.first) / maxRadii + 1);
    }
    for (int64_t n = view.first; n < view.last; n += stride)
    {
        _DrawRadius(*ribbon.e, _imageOf(ribbon, n));
    }
    if (view.first <= view.last)
    {
        _DrawRadius(*ribbon.e, _imageOf(ribbon, view.last));
    }
}

void _FillWideArc(const _Ellipse &e, const _Angles &angles)
{
    _DrawWideArc(e, angles);
    _visitPieces(e, angles, _paintRadii);
}

// ---- Frames
//
// A frame is walked with all four images side by side, and what happens at the first meeting with the start and end
// angles decides how far each image is drawn. There are only two such events, so they are looked for instead of walked
// to.

// When a point of the walk is met: by region, then by step, then by image.
using _Moment = std::array<int64_t, 3>;

// One radius of a frame: whether it is drawn, and the nearest image so far for when it is not.
struct _WideRadius
{
    int64_t angle;
    int64_t sign; // 1 for the start, -1 for the end: the direction from the radius into the range
    bool fDrawn;
    int64_t gap; // degrees; 360: no image yet
    _Moment met; // of several at the same gap the first counts
    _Spot nearest;
};

struct _WideFrame
{
    _Ellipse e;
    _Angles angles;
    int32_t shift;
    std::array<_WideRadius, 2> radii; // start, end
    std::array<bool, 4> fEnabled;     // by mirror image
};

// The next meeting of an enabled image with a radius that is not drawn.
struct _Meeting
{
    int64_t n;
    int32_t image;
    int32_t radius; // 0 start, 1 end; -1 for no meeting
};

static _Meeting _nextMeeting(const _WideFrame &frame, const _Chain &chain, const _Meeting &after)
{
    _Meeting next = {chain.count, 0, -1};
    for (int32_t image = 0; image < 4; image++)
    {
        for (int32_t k = 0; k < 2; k++)
        {
            const _WideRadius &radius = frame.radii[static_cast<size_t>(k)];
            if (!frame.fEnabled[static_cast<size_t>(image)] || radius.fDrawn)
            {
                continue;
            }
            const _Steps steps = _StepsAtAngles(chain, image, radius.angle, radius.angle);
            const int64_t n = std::max(steps.first, image > after.image ? after.n : after.n + 1);
            if (n <= steps.last && n < next.n)
            {
                next = {n, image, k};
            }
        }
    }
    return next;
}

static _WideRadius *_radiusOf(_WideFrame *frame, int32_t k)
{
    return &frame->radii[static_cast<size_t>(k)];
}

// Draws the radii that a region meets, and gives back the last step of each image before it is disabled.
static std::array<int64_t, 4> _drawRadii(_WideFrame *frame, const _Chain &chain)
{
    std::array<int64_t, 4> limits = {};
    for (size_t i = 0; i < 4; i++)
    {
        limits[i] = frame->fEnabled[i] ? chain.count - 1 : -1;
    }
    _Meeting met = _nextMeeting(*frame, chain, {-1, 3, -1});
    for (; met.radius >= 0; met = _nextMeeting(*frame, chain, met))
    {
        const auto i = static_cast<size_t>(met.image);
        const bool fLeavesAtEnd = (i == 0 || i == 2) == (chain.region == 1);
        const _Ribbon ribbon = {&frame->e, &chain, frame->shift, met.image, {met.n, met.n}};
        _DrawRadius(frame->e, _imageOf(ribbon, met.n));
        _radiusOf(frame, met.radius)->fDrawn = true;
        if (fLeavesAtEnd == (met.radius == 1))
        {
            frame->fEnabled[i] = false;
            limits[i] = met.n;
        }
    }
    return limits;
}

// The step of a ribbon nearest to a radius: its angles rise or fall all along, so that is at one of its ends.
static void _keepNearest(_WideRadius *radius, const _Ribbon &ribbon)
{
    for (const int64_t end : {ribbon.steps.first, ribbon.steps.last})
    {
        const int64_t angle = _AngleOfImage(*ribbon.chain, end, ribbon.image);
        const int64_t gap = ((radius->sign * (angle - radius->angle)) % 360 + 360) % 360;
        const int64_t n = std::max(_StepsAtAngles(*ribbon.chain, ribbon.image, angle, angle).first, ribbon.steps.first);
        const _Moment met = {ribbon.chain->region, n, ribbon.image};
        if (gap < radius->gap || (gap == radius->gap && met < radius->met))
        {
            radius->gap = gap;
            radius->met = met;
            radius->nearest = _imageOf(ribbon, n);
        }
    }
}

static void _frameRegion(_WideFrame *frame, const _Chain &chain)
{
    const std::array<int64_t, 4> limits = _drawRadii(frame, chain);
    for (int32_t image = 0; image < 4; image++)
    {
        for (_Steps steps : _stepsInside(chain, image, frame->angles))
        {
            steps.last = std::min(steps.last, limits[static_cast<size_t>(image)]);
            const _Ribbon ribbon = {&frame->e, &chain, frame->shift, image, steps};
            if (steps.first <= steps.last)
            {
                _paintRibbon(ribbon);
                _keepNearest(_radiusOf(frame, 0), ribbon);
                _keepNearest(_radiusOf(frame, 1), ribbon);
            }
        }
    }
}

void _FrameWideArc(const _Ellipse &e, const _Angles &angles)
{
    const int32_t shift = _FrameShift(e);
    _WideFrame frame = {e,
                        angles,
                        shift,
                        {{{angles.start, 1, false, 360, {}, {}}, {angles.end, -1, false, 360, {}, {}}}},
                        {true, true, true, true}};
    for (int32_t region = 1; region <= 2; region++)
    {
        _frameRegion(&frame, _MakeChain(e.a << shift, e.b << shift, region));
    }
    for (const _WideRadius &radius : frame.radii)
    {
        if (!radius.fDrawn && radius.gap < 360)
        {
            _DrawRadius(e, radius.nearest);
        }
    }
}
