// SPDX-License-Identifier: MIT

// Bore lines: along them, what maps make of them, planes and boxes that cut them.

#include "tests/oracle/extent.h"
#include "tests/oracle/volumes.h"

namespace kvgeom::test {
namespace {

// The bore line of the images of five points.
template <class Map>
Line ByPoints(const Line& l, Map map) {
    const Vec<3> aside = Axis<3>(0) * l.limits[2];
    const Vec<3> point = map(l.point);
    const Vec<3> ends[2] = {At(l, l.limits[0]), At(l, l.limits[1])};
    const Vec<3> images[2] = {map(ends[0]), map(ends[1])};
    Line result = {point, Unit(images[0] - images[1]), {}};
    for (std::size_t i = 0; i < 2; ++i) {
        const Real distance = Length(images[i] - point);
        result.limits[i] = l.limits[i].value < 0 ? -distance : distance;
        result.limits[2] = Max(result.limits[2], Length(map(ends[i] + aside) - images[i]));
    }
    return result;
}

TEST(Space, BoreLines) {
    constexpr double kMappedUnit = UnitBound(3, DotBound(3));
    // An end is two roundings from the numbers, its point aside one more; the image, and the
    // difference of two.
    constexpr double kEnd = 2 + kProjectedPoint + 1;
    constexpr Bounds kByPoints = {kProjectedPoint, UnitBound(3, kEnd), LengthBound(3, kEnd + 1)};
    Random random(60);
    for (int k = 0; k < kCases; ++k) {
        const GBoreLine l = AnyBoreLine(random);
        const Line line = ExactLine(l);
        const GVector v = Any<GVector>(random);
        const GPosition q = Any<GPosition>(random);
        const double s = Any<double>(random);
        Near("bore line at parameter", 2, At(line, s), l.Evaluate(s));
        Near("parameter on bore line", DotBound(3, 1), Dot(Exact(q) - line.point, line.direction),
             l.Evaluate(q));
        const auto moved = [&](double sign) {
            return Line{line.point + Exact(v) * sign, line.direction, line.limits};
        };
        const auto scaled = [&](const Real& by) {
            return Line{line.point, line.direction, line.limits * by};
        };
        const auto turned = [&](const Mat<3>& by) {
            return Line{line.point * by, Unit(line.direction * by), line.limits};
        };
        GBoreLine c = l;
        NearLine("bore line + vector", {1, 0, 0}, moved(1), l + v, c += v);
        NearLine("bore line - vector", {1, 0, 0}, moved(-1), l - v, (c = l) -= v);
        NearLine("bore line * number", {0, 0, 1}, scaled(s), l * s, Mapped(l, s));
        NearLine("bore line / number", {0, 0, 1}, scaled(Real(1) / s), l / s, (c = l) /= s);
        const GMatrix m = Any<GMatrix>(random);
        NearLine("bore line by matrix", {DotBound(3), kMappedUnit, 0}, turned(Exact(m)), l * m,
                 Mapped(l, m));
        NearLine("bore line by matrix, columns", {DotBound(3), kMappedUnit, 0},
                 turned(Transpose(Exact(m))), m * l);
        const AnyMap map(random);
        const GBoreLine image = map.is_matrix ? l * map.a : l * map.t;
        NearLine(map.Name("bore line"), map.RecordBounds(), Image(line, map.exact), image);

        G4x4 a = Any<G4x4>(random);
        Mat<4> rows = Exact(a);
        NearLine("bore line by points", kByPoints,
                 ByPoints(line, [&](const Vec<3>& p) { return Projected(p, rows); }), a * l,
                 Mapped(l, a));
        NearLine("bore line by points, columns", kByPoints,
                 ByPoints(line, [&](const Vec<3>& p) { return Projected(p, Transpose(rows)); }),
                 l * a);
        for (const int i : {3, 7, 11, 15}) {
            a.m_matrix[i] = i == 15 ? 1 : 0;
        }
        rows = Exact(a);
        const Line affine = {Projected(line.point, rows), Directed(line.direction, rows),
                             line.limits * Length(Head(rows[0]))};
        NearLine("bore line by affine G4x4",
                 {kProjectedPoint, UnitBound(3, DotBound(3) + 1), LengthBound(3) + 1}, affine,
                 a * l, Mapped(l, a));
    }
}

TEST(Space, BoreLineDecisions) {
    Random random(61);
    const double tolerance = GetDistanceTolerance();
    for (int k = 0; k < kCases; ++k) {
        const GBoreLine l = random.BoreLine();
        const GVector across = GetPerpVector(l.m_direction);
        GBoreLine o = l;
        double* const limits[] = {&o.m_front, &o.m_back, &o.m_radius};
        if (k % 5 < 3) {
            *limits[k % 5] += Beside(random, tolerance);
        } else if (k % 5 == 3) {
            o.m_point += across * Beside(random, tolerance);
        } else {
            o.m_direction =
                Spatial::Direction(l.m_direction + across * Beside(random, GetRelativeTolerance()));
        }
        const Line line = ExactLine(l);
        const Line other = ExactLine(o);
        double margin =
            And({IsLongAtMost(other.point - line.point, tolerance),
                 IsLongAtMost(other.direction - line.direction, GetRelativeTolerance())});
        for (std::size_t i = 0; i < 3; ++i) {
            margin = And({margin, Below(Abs(other.limits[i] - line.limits[i]), tolerance)});
        }
        Agree("bore line IsEqual", DotBound(3, 1, 1), margin, l.IsEqual(o));

        // Beside the cylinder's surface, or an end of it.
        const double end = k % 4 == 0 ? l.m_back : l.m_front;
        const GPosition q = k % 2 == 0 ? l.Evaluate(Beside(random, end)) + across * (l.m_radius / 2)
                                       : l.Evaluate(random.Uniform(l.m_back, l.m_front)) +
                                             across * Beside(random, l.m_radius);
        const Vec<3> d = Exact(q) - line.point;
        const Real t = Dot(d, line.direction);
        const Real squared_radius = line.limits[2] * line.limits[2];
        // The parameter, its square, the difference.
        Agree("bore line >> point", DotBound(3, 1) * 2 + 1 + 1,
              And({Below(line.limits[1], t), Below(t, line.limits[0]),
                   Below(Dot(d, d) - t * t, squared_radius)}),
              l >> q);
    }
}

TEST(Space, BoreLineClipping) {
    // The unit normal, the plane's point, the difference, the dot product with the normal.
    constexpr double kNormal = UnitBound(3);
    constexpr double kDistance = DotBound(3, kNormal, kNormal + 1 + 1);
    Random random(62);
    for (int k = 0; k < kCases; ++k) {
        const GBoreLine l = random.BoreLine();
        const Line line = ExactLine(l);
        const GVector v = random.Vector();
        const Vec<3> normal = Unit(Exact(v));
        const Real half = Real(GetDistanceTolerance()) * 0.5;
        // Half the tolerance beside the end in front, or somewhere on the line.
        const Real slope = Dot(normal, line.direction);
        const std::size_t leading = slope.value > 0 ? 0 : 1;
        const bool cuts = k % 2 == 0;
        const double end = leading == 0 ? l.m_front : l.m_back;
        const double t = cuts ? random.Uniform(l.m_back, l.m_front) : end;
        const double height = static_cast<double>(-Dot(normal, At(line, t)).value);
        const double d = cuts ? height : height + Beside(random, static_cast<double>(half.value));
        const auto distance = [&](std::size_t i) {
            return Dot(normal, At(line, line.limits[i]) + normal * d);
        };
        GBoreLine c = l;
        const int is_left = c.ClipWPlane(v.m_x, v.m_y, v.m_z, d);
        Agree("bore line ClipWPlane: is anything left", kDistance, Below(half, distance(leading)),
              is_left);
        if (is_left == 1 && distance(1 - leading).value < -half.value) {
            Line left = line;
            left.limits[1 - leading] = left.limits[1 - leading] - distance(1 - leading) / slope;
            NearLine("bore line ClipWPlane", {0, 0, kDistance + DotBound(3, kNormal) + 1 + 1}, left,
                     c);
        }
    }
}

TEST(Space, BoreLinesAndBoxes) {
    // Two faces beside the coordinate where the line passes from one slab to the other, or where it
    // ends.
    Random random(63);
    for (int k = 0; k < kCases; ++k) {
        const GBoreLine l = random.BoreLine();
        const Line line = ExactLine(l);
        const double r = l.m_radius;
        const unsigned int entered = random.Below(3);
        const unsigned int left = (entered + 1 + random.Below(2)) % 3;
        const double t = k % 3 == 0   ? l.m_front
                         : k % 3 == 1 ? l.m_back
                                      : random.Uniform(l.m_back, l.m_front);
        const GPosition p = l.Evaluate(t);
        GBox box = {p - GVector{40, 50, 60}, p + GVector{60, 50, 40}};
        const auto put_face = [&](unsigned int axis, bool is_entry) {
            const bool is_low = (l.m_direction[axis] > 0) == is_entry;
            (is_low ? box.m_low : box.m_high)[axis] = Beside(random, p[axis]) + (is_low ? r : -r);
        };
        if (k % 3 != 1) {
            put_face(entered, true);
        }
        if (k % 3 != 0) {
            put_face(left, false);
        }
        const Extent<3> exact = Exact(box);
        Real enters[4] = {Min(line.limits[0], line.limits[1])};
        Real leaves[4] = {Max(line.limits[0], line.limits[1])};
        Real begin;
        Real end;
        for (std::size_t i = 0; i < 3; ++i) {
            const Real low = exact[0][i] - r;
            const Real high = exact[1][i] + r;
            const Real to_low = low - line.point[i];
            const Real to_high = high - line.point[i];
            const Real& slope = line.direction[i];
            begin = begin + Min(to_low * slope, to_high * slope);
            end = end + Max(to_low * slope, to_high * slope);
            // The high face as the library sees it, from the low one.
            const Real at_low = to_low / slope;
            const Real at_high = (high - low + to_low) / slope;
            enters[i + 1] = slope.value > 0 ? at_low : at_high;
            leaves[i + 1] = slope.value > 0 ? at_high : at_low;
        }
        double margin = kInf;
        for (const Real& from : enters) {
            for (const Real& to : leaves) {
                margin = And({margin, Below(from, to)});
            }
        }
        // The face and its distance, by the extent; that from 1, by the slope that is by the
        // extent.
        Agree("bore line && box", 2 + 1 + 3, margin, l && box);
        if ((l && box) == 1) {
            // The face, its distance, the product, two sums; the difference of these.
            constexpr double kBegin = 5;
            NearLine("bore line & box", {kBegin + 2, 0, kBegin + 1},
                     {At(line, begin), line.direction, {end - begin, 0, r}}, l & box);
        }
    }
}

}  // namespace
}  // namespace kvgeom::test
