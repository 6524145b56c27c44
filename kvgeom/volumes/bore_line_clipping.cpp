// SPDX-License-Identifier: MIT
#include <kvgeom/kernel/constants.h>
#include <kvgeom/kernel/extremes.h>
#include <kvgeom/kernel/tolerance_state.h>
#include <kvgeom/points/from_origin.h>
#include <kvgeom/volumes/bore_line.h>
#include <kvgeom/volumes/null_bore_line.h>

#include <cmath>

using namespace kvgeom::detail;

namespace {

struct Interval {
    double low;
    double high;
};

// One axis of a segment p + t * d and a box, the slab low..high.
struct Slab {
    double low;
    double high;
    double p;
    double d;
};

// Cuts the interval of t down to the slab. False when nothing is left of it.
bool CutToSlab(Interval& t, const Slab& slab) {
    const double extent = slab.high - slab.low;
    const double u = (slab.p - slab.low) / extent;
    const double v = slab.d / extent;
    // Parallel lines are decided by comparison: a division could only turn 0 into NaN.
    if (std::fabs(v) <= kSmallestDivisor) {
        return !(u < 0 || u > 1);
    }
    const double t0 = -u / v;
    const double t1 = (1 - u) / v;
    t.low = Larger(t.low, Smaller(t0, t1));
    t.high = Smaller(t.high, Larger(t0, t1));
    return !(t.high < t.low);
}

// The span of low..high along one component of the direction.
Interval Span(double low, double high, double component) {
    const double at_low = low * component;
    const double at_high = high * component;
    return {Smaller(at_low, at_high), Larger(at_low, at_high)};
}

}  // namespace

int GBoreLine::ClipWPlane(double a, double b, double c, double d) {
    const double h = 0.5 * DistanceTolerance();
    if (IsNull()) {
        return 0;
    }
    const GUnitVector unit_normal = BuildUnitVector(a, b, c);
    const GVector normal = unit_normal;
    const GPosition plane_point = FromOrigin(-d * normal);
    const double front_distance = normal % (Evaluate(m_front) - plane_point);
    const double back_distance = normal % (Evaluate(m_back) - plane_point);
    // A null normal has no side that could be kept, whatever d is.
    const bool has_side = normal.m_x != 0 || normal.m_y != 0 || normal.m_z != 0;
    if (!has_side || (front_distance < h && back_distance < h)) {
        m_front = 0.0;
        m_back = 0.0;
        return 0;
    }
    if (front_distance > -h && back_distance > -h) {
        return 1;
    }
    const double slope = normal % m_direction;
    if (slope == 0.0) {
        // The line is parallel to the plane; rounding alone put its far ends on different sides.
        // The point of the line decides.
        if (normal % (m_point - plane_point) >= h) {
            return 1;
        }
        m_front = 0.0;
        m_back = 0.0;
        return 0;
    }
    if (back_distance < 0) {
        m_back -= back_distance / slope;
    } else {
        m_front -= front_distance / slope;
    }
    return 1;
}

int GBoreLine::operator&&(const GBox& box) const {
    const double e = m_radius == 0.0 ? RelativeTolerance() : m_radius;
    const GPosition& low = box.m_low;
    const GPosition& high = box.m_high;
    Interval t = {Smaller(m_front, m_back), Larger(m_front, m_back)};
    return CutToSlab(t, {low.m_x - e, high.m_x + e, m_point.m_x, m_direction.m_x}) &&
                   CutToSlab(t, {low.m_y - e, high.m_y + e, m_point.m_y, m_direction.m_y}) &&
                   CutToSlab(t, {low.m_z - e, high.m_z + e, m_point.m_z, m_direction.m_z})
               ? 1
               : 0;
}

GBoreLine operator&(const GBoreLine& l, const GBox& box) {
    if (!(l && box)) {
        return NullBoreLine();
    }
    const double r = l.m_radius;
    const GPosition& p = l.m_point;
    const GUnitVector& d = l.m_direction;
    const Interval x = Span(box.m_low.m_x - r - p.m_x, box.m_high.m_x + r - p.m_x, d.m_x);
    const Interval y = Span(box.m_low.m_y - r - p.m_y, box.m_high.m_y + r - p.m_y, d.m_y);
    const Interval z = Span(box.m_low.m_z - r - p.m_z, box.m_high.m_z + r - p.m_z, d.m_z);
    const double begin = x.low + y.low + z.low;
    const double end = x.high + y.high + z.high;
    return BuildBoreLine(l.Evaluate(begin), d, end - begin, 0.0, r);
}
