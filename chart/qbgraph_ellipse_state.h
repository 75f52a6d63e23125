// qbgraph_ellipse_state.h - the ellipse walk by number: any of its points without walking there. Private to the
// qbgraph_arcs* files.
#pragma once

#include <array>
#include <cstdint>

// An ellipse in a rectangle: centre, half-axes, and -1 where an even width or height puts the right or lower half one
// pixel nearer.
struct _Ellipse
{
    int64_t cx;
    int64_t cy;
    int64_t a;
    int64_t b;
    int64_t exW;
    int64_t exH;
};

struct _Spot
{
    int64_t x;
    int64_t y;
};

// The angles of an arc, 0 .. 360; when end is below start, the range goes through 0.
struct _Angles
{
    int64_t start;
    int64_t end;

    bool holds(int64_t angle) const
    {
        return end < start ? angle >= start || angle <= end : angle >= start && angle <= end;
    }
};

// The points of one region of the walk, numbered from 0. Point n is n steps along one axis - x in region 1, y in
// region 2 - and at(n) along the other, where it never rises and falls by at most 1 a step.
struct _Chain
{
    int64_t p;         // half-axis along at()
    int64_t q;         // half-axis along n
    int32_t region;    // 1 or 2
    int64_t count;     // points, at least 1
    int64_t tailFirst; // from here on the points are in tail: the walk may lag behind the curve at its end
    std::array<int64_t, 16> tail;

    int64_t at(int64_t n) const;
    int64_t firstAtMost(int64_t v) const; // the first point whose at() is at most v; count for none
    _Spot point(int64_t n) const;

private:
    bool _isBelow(int64_t v, int64_t n) const;
};

// A region of the walk on half-axes of 1 .. 2^31 each, or up to 2^38 when the other is below 2^8.
_Chain _MakeChain(int64_t a, int64_t b, int32_t region);

// A range of points of a chain; empty when last < first.
struct _Steps
{
    int64_t first;
    int64_t last;
};

// The points of a chain whose mirror image i (0 lower right, 1 upper right, 2 upper left, 3 lower left) is at an angle
// of first .. last.
_Steps _StepsAtAngles(const _Chain &chain, int32_t i, int64_t first, int64_t last);

// The angle of mirror image i of a point.
int64_t _AngleOfImage(const _Chain &chain, int64_t n, int32_t i);

// The same drawings as those of qbgraph_arcs.cpp, at a cost that depends on the image and not on the ellipse or the
// pen: qbgraph_arcs_wide.cpp. Half-axes of at least 1. _FillWideArc and _FrameWideArc leave the pen anywhere.

void _DrawWideOval(const _Ellipse &e);
void _FillWideOval(const _Ellipse &e);
void _DrawWideArc(const _Ellipse &e, const _Angles &angles);
void _FillWideArc(const _Ellipse &e, const _Angles &angles);
void _FrameWideArc(const _Ellipse &e, const _Angles &angles);

// Shared by both files: qbgraph_arcs.cpp

// The mirror images of a walk's point: lower right, upper right, upper left, lower left.
std::array<_Spot, 4> _Images(const _Ellipse &e, int64_t x, int64_t y);

// A value of the enlarged walk back to pixels; on purpose the rounding adds half the shift, not half of what it
// divides by.
int64_t _ToPixels(int64_t v, int32_t shift);

// How often a frame's ellipse is doubled, so that each degree is met by one of its points.
int32_t _FrameShift(const _Ellipse &e);

// A line from the centre up to, not including, an image.
void _DrawRadius(const _Ellipse &e, const _Spot &image);
