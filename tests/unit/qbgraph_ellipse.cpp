// qbgraph_ellipse.cpp - any point of the ellipse walk by number: the same points as walking there.

#include "qbgraph_ellipse_state.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

namespace
{

// One region of the walk, step by step: how far each point is along the falling axis. Half-axes up to 2^20.
std::vector<int64_t> walk(int64_t p, int64_t q, int32_t region)
{
    std::vector<int64_t> points;
    int64_t v = p;
    int64_t t = 2 * q * q * p;
    int64_t d = -q * q * p;
    int64_t acc = 0;
    while (region == 1 ? t >= acc : acc < t)
    {
        points.push_back(v);
        acc += 2 * p * p;
        d += acc - p * p;
        if (d >= 0)
        {
            t -= 2 * q * q;
            v--;
            d -= t;
        }
    }
    return points;
}

void expectSame(int64_t a, int64_t b, int32_t region)
{
    const std::vector<int64_t> points = region == 1 ? walk(b, a, 1) : walk(a, b, 2);
    const _Chain chain = _MakeChain(a, b, region);
    const auto count = static_cast<int64_t>(points.size());
    ASSERT_EQ(chain.count, count) << a << " " << b << " " << region;
    int64_t first = 0;
    for (int64_t n = 0; n < count; n++)
    {
        const int64_t v = points[static_cast<size_t>(n)];
        ASSERT_EQ(chain.at(n), v) << a << " " << b << " " << region << " " << n;
        first = n > 0 && v == points[static_cast<size_t>(n) - 1] ? first : n;
        ASSERT_EQ(chain.firstAtMost(v), first) << a << " " << b << " " << region << " " << v;
    }
    ASSERT_EQ(chain.firstAtMost(points.back() - 1), count);
    ASSERT_EQ(chain.firstAtMost(points.front() + 5), 0);
}

TEST(Chains, HaveThePointsOfTheWalk)
{
    for (int64_t a = 1; a <= 70; a++)
    {
        for (int64_t b = 1; b <= 70; b++)
        {
            expectSame(a, b, 1);
            expectSame(a, b, 2);
        }
    }
}

TEST(Chains, OfFlatAndLargeEllipsesHaveThePointsOfTheWalk)
{
    const int64_t axes[] = {1, 2, 3, 5, 128, 1000, 4097, 20011};
    for (const int64_t a : axes)
    {
        for (const int64_t b : axes)
        {
            expectSame(a, b, 1);
            expectSame(a, b, 2);
        }
    }
}

TEST(Chains, OfTheLargestEllipseEndWhereItsSlopeIs45Degrees)
{
    // A circle of r = 2^31 - 1: x = y = r / sqrt(2) = 1518500249.28...
    for (const int32_t region : {1, 2})
    {
        const _Chain chain = _MakeChain(INT32_MAX, INT32_MAX, region);
        EXPECT_NEAR(static_cast<double>(chain.count), 1518500249.3, 3);
        EXPECT_NEAR(static_cast<double>(chain.at(chain.count - 1)), 1518500249.3, 3);
        EXPECT_EQ(chain.at(0), INT32_MAX);
        // v leaves r where n^2 >= r^2 - (r^2 - r) = r: at n = 46341, whose square is the first above 2^31.
        EXPECT_EQ(chain.firstAtMost(INT32_MAX - 1), 46341);
        EXPECT_EQ(chain.at(46340), INT32_MAX);
        EXPECT_EQ(chain.at(46341), INT32_MAX - 1);
    }
}

TEST(Chains, KnowTheirImagesAngles)
{
    // A circle of 3: (0,3) (1,3) (2,2) and (3,0) (3,1). 1:3 is steep by 72 degrees, because 128 * 3 / 1 = 384 lies
    // between 128 * tan 71 = 371.7 and 128 * tan 72 = 393.9; 3:1 by 18, because 42 is 128 * tan 18 rounded.
    const _Chain top = _MakeChain(3, 3, 1);
    const _Chain side = _MakeChain(3, 3, 2);
    const int64_t steepTop[] = {90, 72, 45};
    const int64_t steepSide[] = {0, 18};
    ASSERT_EQ(top.count, 3);
    for (int64_t n = 0; n < 3; n++)
    {
        EXPECT_EQ(_AngleOfImage(top, n, 0), 360 - steepTop[n]);
        EXPECT_EQ(_AngleOfImage(top, n, 1), steepTop[n]);
        EXPECT_EQ(_AngleOfImage(top, n, 2), 180 - steepTop[n]);
        EXPECT_EQ(_AngleOfImage(top, n, 3), 180 + steepTop[n]);
    }
    for (int64_t n = 0; n < 2; n++)
    {
        EXPECT_EQ(_AngleOfImage(side, n, 0), 360 - steepSide[n]);
        EXPECT_EQ(_AngleOfImage(side, n, 1), steepSide[n]);
    }
    const _Steps steps = _StepsAtAngles(top, 1, 45, 72);
    EXPECT_EQ(steps.first, 1);
    EXPECT_EQ(steps.last, 2);
    const _Steps none = _StepsAtAngles(top, 1, 50, 60);
    EXPECT_LT(none.last, none.first);
}

} // namespace
