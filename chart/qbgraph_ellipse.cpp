// qbgraph_ellipse.cpp - the ellipse walk by number.
//
// With half-axes p and q, the decision term at n steps and height v adds up to
//     p^2 * n^2 + q^2 * (v^2 - v) - p^2 * q^2,
// and v falls by one as soon as the term is not negative. As long as the curve falls by no more than one a step, v is
// therefore the largest height with a negative term. Only in the last steps before the slope ends the region may the
// curve fall faster and the walk lag; those few points are walked once and kept. All terms fit in 127 bits.

#include "qbgraph_ellipse_state.h"

#include "qbgraph_state.h"

#include <algorithm>
#include <cassert>
#include <cmath>

// A number in [low, high): the first for which a test, false up to somewhere and true from there on, is true.
template <typename Test>
static int64_t _firstWhere(int64_t low, int64_t high, Test test)
{
    while (low < high)
    {
        const int64_t middle = low + (high - low) / 2;
        if (test(middle))
        {
            high = middle;
        }
        else
        {
            low = middle + 1;
        }
    }
    return low;
}

static _Int128 _square(int64_t v)
{
    return static_cast<_Int128>(v) * v;
}

// Whether the decision term is negative.
bool _Chain::_isBelow(int64_t v, int64_t n) const
{
    return _square(q) * (static_cast<_Int128>(v) * (v - 1)) < _square(p) * (_square(q) - _square(n));
}

int64_t _Chain::at(int64_t n) const
{
    if (n >= tailFirst)
    {
        return tail[static_cast<size_t>(n - tailFirst)];
    }
    // v (v - 1) is below the root's square, so v is the root cut off or a little more; the exact test settles it.
    const long double below = std::sqrt(static_cast<long double>(_square(q) - _square(n)));
    const long double root = below * static_cast<long double>(p) / static_cast<long double>(q);
    auto v = std::max<int64_t>(static_cast<int64_t>(root), 1);
    while (_isBelow(v + 1, n))
    {
        v++;
    }
    assert(_isBelow(v, n));
    return v;
}

int64_t _Chain::firstAtMost(int64_t v) const
{
    if (v >= p)
    {
        return 0;
    }
    // Where the curve passes from v + 1 to v, cut off; the walk's own points settle it.
    const _Int128 height = std::max<int64_t>(v, 0);
    const long double root = std::sqrt(static_cast<long double>(_square(p) - height * (height + 1)));
    const long double guess = root * static_cast<long double>(q) / static_cast<long double>(p);
    int64_t n = std::min(static_cast<int64_t>(guess), tailFirst);
    assert(n == 0 || at(n - 1) > v);
    while (n < count && at(n) > v)
    {
        n++;
    }
    return n;
}

_Spot _Chain::point(int64_t n) const
{
    return region == 1 ? _Spot{n, at(n)} : _Spot{at(n), n};
}

// Walks from a point that still follows the curve to the region's end, and keeps what it passes.
static void _walkTail(_Chain *chain, int64_t v)
{
    const _Int128 pp = _square(chain->p);
    const _Int128 qq = _square(chain->q);
    int64_t n = chain->tailFirst;
    _Int128 t = 2 * qq * v;
    _Int128 acc = 2 * pp * n;
    _Int128 d = pp * _square(n) + qq * (static_cast<_Int128>(v) * (v - 1)) - pp * qq;
    while (chain->region == 1 ? t >= acc : t > acc)
    {
        chain->tail[static_cast<size_t>(n - chain->tailFirst)] = v;
        acc += 2 * pp;
        d += acc - pp;
        n++;
        if (d >= 0)
        {
            t -= 2 * qq;
            v--;
            d -= t;
        }
    }
    chain->count = n;
}

_Chain _MakeChain(int64_t a, int64_t b, int32_t region)
{
    _Chain chain = {region == 1 ? b : a, region == 1 ? a : b, region, 0, INT64_MAX, {}};
    // Where the curve's slope passes 45 degrees. The walk begins to lag one step before that at the earliest, and ends
    // two steps after it at the latest.
    constexpr int64_t kBeforeEnd = 4;
    const int64_t end =
        _firstWhere(0, chain.q, [&](int64_t n) { return _square(chain.q) * chain.at(n) <= _square(chain.p) * n; });
    const int64_t first = std::max<int64_t>(end - kBeforeEnd, 0);
    const int64_t v = chain.at(first);
    chain.tailFirst = first;
    _walkTail(&chain, v);
    return chain;
}

// The angle of a point seen from the centre, 0 (along x) .. 90 (along y): what its mirror images' angles are made of.
static int64_t _steepness(const _Chain &chain, int64_t n)
{
    const _Spot spot = chain.point(n);
    return spot.x == 0 ? 90 : spot.y == 0 ? 0 : _CoTan(spot.x, -spot.y);
}

int64_t _AngleOfImage(const _Chain &chain, int64_t n, int32_t i)
{
    const int64_t steep = _steepness(chain, n);
    const std::array<int64_t, 4> angles = {360 - steep, steep, 180 - steep, 180 + steep};
    return angles[static_cast<size_t>(i)];
}

_Steps _StepsAtAngles(const _Chain &chain, int32_t i, int64_t first, int64_t last)
{
    // In region 1 a point's steepness falls with its number, in region 2 it rises; two images turn with it, two
    // against.
    const bool fRises = (i == 1 || i == 3) == (chain.region == 2);
    if (fRises)
    {
        return {_firstWhere(0, chain.count, [&](int64_t n) { return _AngleOfImage(chain, n, i) >= first; }),
                _firstWhere(0, chain.count, [&](int64_t n) { return _AngleOfImage(chain, n, i) > last; }) - 1};
    }
    return {_firstWhere(0, chain.count, [&](int64_t n) { return _AngleOfImage(chain, n, i) <= last; }),
            _firstWhere(0, chain.count, [&](int64_t n) { return _AngleOfImage(chain, n, i) < first; }) - 1};
}
