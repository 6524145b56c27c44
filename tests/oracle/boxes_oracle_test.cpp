// SPDX-License-Identifier: MIT

// Boxes, and what maps and planes make of them.

#include "tests/oracle/dimensions.h"
#include "tests/oracle/extent.h"

namespace kvgeom::test {
namespace {

template <class S>
typename S::Box AnyBox(Random& random) {
    std::array<typename S::Point, 4> points;
    for (auto& p : points) {
        p = Any<typename S::Point>(random);
    }
    return S::BoxOf(points.data());
}

// By how much the boxes overlap on every axis when one is larger by a tolerance.
template <std::size_t n>
double Overlap(const Extent<n>& a, const Extent<n>& b, double tolerance) {
    double margin = kInf;
    for (std::size_t i = 0; i < n; ++i) {
        margin = And({margin, Below(Max(a[0][i], b[0][i]), Min(a[1][i], b[1][i]) + tolerance)});
    }
    return margin;
}
template <std::size_t n>
double Holds(const Extent<n>& box, const Vec<n>& p) {
    const Real beside = Real(GetDistanceTolerance()) / Sqrt(double{n});
    double margin = kInf;
    for (std::size_t i = 0; i < n; ++i) {
        margin = And({margin, Below(box[0][i] - beside, p[i]), Below(p[i], box[1][i] + beside)});
    }
    return margin;
}

TYPED_TEST(Dimension, Boxes) {
    using S = TypeParam;
    constexpr std::size_t n = S::n;
    Random random(40);
    for (int k = 0; k < kCases; ++k) {
        const auto a = AnyBox<S>(random);
        auto b = AnyBox<S>(random);
        const auto v = Any<typename S::Vector>(random);
        const double s = Any<double>(random);
        const auto m = Any<typename S::Matrix>(random);
        const auto t = S::Similarity(random);
        const Extent<n> box = Exact(a);
        const Extent<n> other = Exact(b);
        const auto corners = Corners(box);
        auto c = a;
        const Vec<n> by = Exact(v);
        Near("box + vector", 1, Extent<n>{box[0] + by, box[1] + by}, c += v);
        Near("box - vector", 1, Extent<n>{box[0] - by, box[1] - by}, (c = a) -= v);
        Near("box * number", 1, ExtentOf(corners, [&](const auto& p) { return p * s; }), a * s,
             s * a, Mapped(a, s));
        Near("box / number", 1, ExtentOf(corners, [&](const auto& p) { return p * (Real(1) / s); }),
             a / s, (c = a) /= s);
        Near("union", 0, ExtentOf(std::vector{box[0], box[1], other[0], other[1]}), a | b,
             (c = a) |= b);
        Near("box by matrix", DotBound(n),
             ExtentOf(corners, [&](const auto& p) { return p * Exact(m); }), a * m, Mapped(a, m));
        Near("box by matrix, columns", DotBound(n),
             ExtentOf(corners, [&](const auto& p) { return p * Transpose(Exact(m)); }), m * a);
        auto map = Exact(t);
        Near("box by transformation", n + 2,
             ExtentOf(corners, [&](const auto& p) { return p * map; }), a * t, Mapped(a, t));
        if constexpr (n == 3) {
            map.matrix = Transpose(map.matrix);
            Near("box by transformation, columns", n + 2,
                 ExtentOf(corners, [&](const auto& p) { return p * map; }), t * a);
            const G4x4 h = Any<G4x4>(random);
            const auto projected = [&](const Mat<4>& rows) {
                return ExtentOf(corners, [&](const Vec<3>& q) { return Projected(q, rows); });
            };
            Near("box by G4x4", kProjectedPoint, projected(Exact(h)), h * a, Mapped(a, h));
            Near("box by G4x4, columns", kProjectedPoint, projected(Transpose(Exact(h))), a * h);
        }

        // Moved so that the boxes touch, but for something beside a tolerance.
        const double tolerance = GetDistanceTolerance();
        const unsigned int axis = random.Below(n);
        typename S::Vector apart = {};
        apart[axis] = a.m_high[axis] - b.m_low[axis] + Beside(random, tolerance);
        b += apart;
        c = a;
        Agree("box IsIntersectTol", 1, Overlap(box, Exact(b), tolerance),
              c.IsIntersectTol(b, tolerance));
        const auto common = a & b;
        const double overlap = Overlap(box, Exact(b), tolerance);
        Agree("intersection is not null", 1, overlap, common.m_low[0] == kBig ? 0 : 1);
        if (common.m_low[0] != kBig) {
            Extent<n> expected;
            for (std::size_t i = 0; i < n; ++i) {
                const Real low = Max(box[0][i], Exact(b)[0][i]);
                const Real high = Min(box[1][i], Exact(b)[1][i]);
                expected[0][i] = Min(low, high);
                expected[1][i] = Max(low, high);
            }
            Near("intersection", 0, expected, common);
        }
        typename S::Point p = (a.m_low + (a.m_high - a.m_low) * random.Uniform(0, 1));
        p[axis] = (k % 2 == 0 ? a.m_low[axis] : a.m_high[axis]) +
                  (k % 2 == 0 ? -1 : 1) * Beside(random, tolerance / std::sqrt(n));
        // The root of n, the quotient, the sum.
        Agree("box >> point", 3, Holds(box, Exact(p)), a >> p);
        Agree("box >> point", 3, Holds(box, Exact(p)), p << a);
        const typename S::Box small = {k % 4 < 2 ? p : a.m_high, k % 4 < 2 ? a.m_low : p};
        const double holds_both =
            And({Holds(box, Exact(small.m_low)), Holds(box, Exact(small.m_high))});
        Agree("box >> box", 3, holds_both, a >> small);
        Agree("box >> box", 3, holds_both, small << a);
        c = a;
        c.m_high[axis] = c.m_low[axis] - Beside(random, tolerance);
        Agree("box IsNull", 1, -Below(Exact(c)[0][axis] - tolerance, Exact(c)[1][axis]),
              c.IsNull());
    }
}

// What the plane leaves of the box: on each axis, a side stays or is where the plane meets the edge
// that reaches furthest in front of it.
Extent<3> Clipped(const Extent<3>& box, const Vec<3>& normal, const Real& d) {
    Extent<3> result = box;
    for (std::size_t axis = 0; axis < 3; ++axis) {
        const std::size_t behind = normal[axis].value > 0 ? 0 : 1;
        Vec<3> corner;
        for (std::size_t i = 0; i < 3; ++i) {
            corner[i] = box[(normal[i].value > 0) == (i != axis) ? 1 : 0][i];
        }
        const Real signed_distance = Dot(normal, corner) + d;
        if (signed_distance.value < 0) {
            result[behind][axis] = corner[axis] - signed_distance / normal[axis];
        }
    }
    return result;
}

TEST(Space, BoxClipping) {
    // The unit normal, the plane's point, the difference, the dot product with the normal.
    constexpr double kNormal = UnitBound(3);
    constexpr double kDistance = DotBound(3, kNormal, kNormal + 1 + 1);
    Random random(42);
    for (int k = 0; k < kCases; ++k) {
        const GBox box = random.ProperBox();
        const GVector v = random.Vector();
        const Vec<3> normal = Unit(Exact(v));
        // Through a point of the box, or beside its farthest corner.
        GPosition p = Sample(random, box);
        if (k % 4 == 0) {
            p = {box[v.m_x > 0 ? 1 : 0].m_x, box[v.m_y > 0 ? 1 : 0].m_y,
                 box[v.m_z > 0 ? 1 : 0].m_z};
        }
        const double d = Beside(random, -static_cast<double>(Dot(normal, Exact(p)).value));
        Real farthest = -kBig;
        Quad nearest = 1;
        for (const Vec<3>& corner : Corners(Exact(box))) {
            const Real s = Dot(normal, corner) + d;
            farthest = s.value > farthest.value ? s : farthest;
            nearest = std::min(nearest, Magnitude(s.value));
        }
        GBox clipped = box;
        const int is_left = clipped.ClipWPlane(v.m_x, v.m_y, v.m_z, d);
        Agree("box ClipWPlane: is anything left", kDistance, Below(0, farthest), is_left);
        // Within half the distance tolerance corners stay, and flat edges aren't cut.
        const bool is_plain =
            nearest > Quad(GetDistanceTolerance()) &&
            std::min({std::fabs(v.m_x), std::fabs(v.m_y), std::fabs(v.m_z)}) > 0.1;
        if (is_left == 1 && is_plain) {
            Near("box ClipWPlane", kDistance + kNormal + 1 + 1, Clipped(Exact(box), normal, d),
                 clipped);
        }
    }
}

}  // namespace
}  // namespace kvgeom::test
