// SPDX-License-Identifier: MIT
#include <kvgeom/boxes/box2d.h>
#include <kvgeom/boxes/corner.h>
#include <kvgeom/boxes/fixed_boxes2d.h>
#include <kvgeom/boxes/interval.h>
#include <kvgeom/kernel/assertion_hook.h>
#include <kvgeom/kernel/constants.h>
#include <kvgeom/kernel/extremes.h>
#include <kvgeom/kernel/tolerance_state.h>

#include <cmath>

using namespace kvgeom::detail;

namespace {

GPosition2d Lower(const GPosition2d& p, const GPosition2d& q) {
    return {Smaller(p.m_x, q.m_x), Smaller(p.m_y, q.m_y)};
}

GPosition2d Upper(const GPosition2d& p, const GPosition2d& q) {
    return {Larger(p.m_x, q.m_x), Larger(p.m_y, q.m_y)};
}

GPosition2d Scaled(const GPosition2d& p, double s) {
    return {s * p.m_x, s * p.m_y};
}

GPosition2d Divided(const GPosition2d& p, double s) {
    return {p.m_x / s, p.m_y / s};
}

bool IsReversedOnSomeAxis(const GBox2d& box, double t) {
    return IsReversed(box.m_low.m_x, box.m_high.m_x, t) ||
           IsReversed(box.m_low.m_y, box.m_high.m_y, t);
}

bool IsOutside(double value, double low, double high, double t) {
    return high + t <= value || low - t >= value;
}

}  // namespace

const GPosition2d& GBox2d::operator[](unsigned int i) const {
    return Corner(*this, i, "GBox2d: index out of range");
}

GPosition2d& GBox2d::operator[](unsigned int i) {
    return Corner(*this, i, "GBox2d: index out of range");
}

int GBox2d::IsNull() const {
    return IsReversedOnSomeAxis(*this, DistanceTolerance()) ? 1 : 0;
}

int GBox2d::IsEqual(const GBox2d& b) const {
    return m_low.IsEqual(b.m_low) && m_high.IsEqual(b.m_high) ? 1 : 0;
}

int GBox2d::IsIntersectTol(GBox2d& b, double tol) {
    const GPosition2d low = Upper(m_low, b.m_low);
    const GPosition2d high = Lower(m_high, b.m_high);
    return low.m_x < high.m_x + tol && low.m_y < high.m_y + tol ? 1 : 0;
}

int GBox2d::operator>>(const GPosition2d& p) const {
    const double t = DistanceTolerance() / kSqrt2;
    return IsOutside(p.m_x, m_low.m_x, m_high.m_x, t) || IsOutside(p.m_y, m_low.m_y, m_high.m_y, t)
               ? 0
               : 1;
}

int GBox2d::operator>>(const GBox2d& b) const {
    return *this >> b.m_low && *this >> b.m_high ? 1 : 0;
}

int GBox2d::operator<<(const GBox2d& b) const {
    return b >> *this;
}

GBox2d& GBox2d::operator+=(const GVector2d& v) {
    m_low += v;
    m_high += v;
    return *this;
}

GBox2d& GBox2d::operator-=(const GVector2d& v) {
    m_low -= v;
    m_high -= v;
    return *this;
}

GBox2d& GBox2d::operator*=(double s) {
    return *this = *this * s;
}

GBox2d& GBox2d::operator/=(double s) {
    return *this = *this / s;
}

GBox2d& GBox2d::operator|=(const GBox2d& b) {
    return *this = *this | b;
}

GBox2d& GBox2d::operator&=(const GBox2d& b) {
    return *this = *this & b;
}

void GBox2d::GiveCorners(GPosition2d* const corners) const {
    const GPosition2d l = m_low;
    const GPosition2d h = m_high;
    corners[0] = {l.m_x, l.m_y};
    corners[1] = {h.m_x, l.m_y};
    corners[2] = {h.m_x, h.m_y};
    corners[3] = {l.m_x, h.m_y};
}

GBox2d BuildBox2d(double x, double y) {
    return {{x, y}, {x, y}};
}

GBox2d BuildBox2d(const GPosition2d& p, int) {
    return {p, p};
}

GBox2d BuildBox2d(double x1, double y1, double x2, double y2) {
    return {{x1, y1}, {x2, y2}};
}

GBox2d BuildBox2d(const GPosition2d& p, const GPosition2d& q) {
    return {p, q};
}

GBox2d BuildBox2d(unsigned long count, GPosition2d* points) {
    if (count == 0) {
        Gassert_debug("GBox2d: can't build a box with 0 points");
        return kGNullBox2d;
    }
    GBox2d result = {points[0], points[0]};
    for (unsigned long i = 1; i < count; ++i) {
        const GPosition2d& p = points[i];
        Extend(result.m_low.m_x, result.m_high.m_x, p.m_x);
        Extend(result.m_low.m_y, result.m_high.m_y, p.m_y);
    }
    return result;
}

int operator<<(const GPosition2d& p, const GBox2d& box) {
    return box >> p;
}

GBox2d operator|(const GBox2d& a, const GBox2d& b) {
    const double t = DistanceTolerance();
    const bool a_is_null = IsReversedOnSomeAxis(a, t);
    if (IsReversedOnSomeAxis(b, t)) {
        return a_is_null ? kGNullBox2d : a;
    }
    if (a_is_null) {
        return b;
    }
    return {Lower(a.m_low, b.m_low), Upper(a.m_high, b.m_high)};
}

GBox2d operator&(const GBox2d& a, const GBox2d& b) {
    const double t = DistanceTolerance();
    if (IsReversedOnSomeAxis(a, t) || IsReversedOnSomeAxis(b, t)) {
        return kGNullBox2d;
    }
    const GPosition2d low = Upper(a.m_low, b.m_low);
    const GPosition2d high = Lower(a.m_high, b.m_high);
    if (high.m_x + t <= low.m_x || high.m_y + t <= low.m_y) {
        return kGNullBox2d;
    }
    return {Lower(low, high), Upper(low, high)};
}

GBox2d operator*(const GBox2d& box, double s) {
    if (s > 0) {
        return {Scaled(box.m_low, s), Scaled(box.m_high, s)};
    }
    return {Scaled(box.m_high, s), Scaled(box.m_low, s)};
}

GBox2d operator*(double s, const GBox2d& box) {
    return box * s;
}

GBox2d operator/(const GBox2d& box, double s) {
    if (std::fabs(s) < kSmallestDivisor) {
        Gassert_debug("GBox2d: trying to divide by 0.0");
        return kGAllSpaceBox2d;
    }
    if (s > 0) {
        return {Divided(box.m_low, s), Divided(box.m_high, s)};
    }
    return {Divided(box.m_high, s), Divided(box.m_low, s)};
}
