// SPDX-License-Identifier: MIT
#include <kvgeom/boxes/box.h>
#include <kvgeom/boxes/corner.h>
#include <kvgeom/boxes/fixed_boxes.h>
#include <kvgeom/boxes/interval.h>
#include <kvgeom/boxes/kernels.h>
#include <kvgeom/kernel/assertion_hook.h>
#include <kvgeom/kernel/constants.h>
#include <kvgeom/kernel/extremes.h>
#include <kvgeom/kernel/tolerance_state.h>

#include <cmath>

using namespace kvgeom::detail;

namespace {

GPosition Lower(const GPosition& p, const GPosition& q) {
    return {Smaller(p.m_x, q.m_x), Smaller(p.m_y, q.m_y), Smaller(p.m_z, q.m_z)};
}

GPosition Upper(const GPosition& p, const GPosition& q) {
    return {Larger(p.m_x, q.m_x), Larger(p.m_y, q.m_y), Larger(p.m_z, q.m_z)};
}

GPosition Scaled(const GPosition& p, double s) {
    return {s * p.m_x, s * p.m_y, s * p.m_z};
}

GPosition Divided(const GPosition& p, double s) {
    return {p.m_x / s, p.m_y / s, p.m_z / s};
}

bool IsReversedOnSomeAxis(const GBox& box, double t) {
    return IsReversed(box.m_low.m_x, box.m_high.m_x, t) ||
           IsReversed(box.m_low.m_y, box.m_high.m_y, t) ||
           IsReversed(box.m_low.m_z, box.m_high.m_z, t);
}

// From this number of points on, vector code is faster.
constexpr unsigned long kManyPoints = 24;

bool IsOutside(double value, double low, double high, double t) {
    return high + t < value || low - t > value;
}

}  // namespace

const GPosition& GBox::operator[](unsigned int i) const {
    return Corner(*this, i, "GBox: index out of range");
}

GPosition& GBox::operator[](unsigned int i) {
    return Corner(*this, i, "GBox: index out of range");
}

int GBox::IsNull() const {
    return IsReversedOnSomeAxis(*this, DistanceTolerance()) ? 1 : 0;
}

int GBox::IsEqual(const GBox& b) const {
    return m_low.IsEqual(b.m_low) && m_high.IsEqual(b.m_high) ? 1 : 0;
}

int GBox::IsIntersectTol(GBox& b, double tol) {
    const GPosition low = Upper(m_low, b.m_low);
    const GPosition high = Lower(m_high, b.m_high);
    return low.m_x < high.m_x + tol && low.m_y < high.m_y + tol && low.m_z < high.m_z + tol ? 1 : 0;
}

int GBox::operator>>(const GPosition& p) const {
    const double t = DistanceTolerance() / kSqrt3;
    return IsOutside(p.m_x, m_low.m_x, m_high.m_x, t) ||
                   IsOutside(p.m_y, m_low.m_y, m_high.m_y, t) ||
                   IsOutside(p.m_z, m_low.m_z, m_high.m_z, t)
               ? 0
               : 1;
}

int GBox::operator>>(const GBox& b) const {
    return *this >> b.m_low && *this >> b.m_high ? 1 : 0;
}

int GBox::operator<<(const GBox& b) const {
    return b >> *this;
}

GBox& GBox::operator+=(const GVector& v) {
    m_low += v;
    m_high += v;
    return *this;
}

GBox& GBox::operator-=(const GVector& v) {
    m_low -= v;
    m_high -= v;
    return *this;
}

GBox& GBox::operator*=(double s) {
    return *this = *this * s;
}

GBox& GBox::operator/=(double s) {
    return *this = *this / s;
}

GBox& GBox::operator|=(const GBox& b) {
    return *this = *this | b;
}

GBox& GBox::operator&=(const GBox& b) {
    return *this = *this & b;
}

void GBox::GiveCorners(GPosition* const corners) const {
    const GPosition l = m_low;
    const GPosition h = m_high;
    corners[0] = {l.m_x, l.m_y, l.m_z};
    corners[1] = {h.m_x, l.m_y, l.m_z};
    corners[2] = {h.m_x, h.m_y, l.m_z};
    corners[3] = {l.m_x, h.m_y, l.m_z};
    corners[4] = {l.m_x, l.m_y, h.m_z};
    corners[5] = {h.m_x, l.m_y, h.m_z};
    corners[6] = {h.m_x, h.m_y, h.m_z};
    corners[7] = {l.m_x, h.m_y, h.m_z};
}

GBox BuildBox(const GPosition& p) {
    return {p, p};
}

GBox BuildBox(double x1, double y1, double z1, double x2, double y2, double z2) {
    return {{x1, y1, z1}, {x2, y2, z2}};
}

GBox BuildBox(const GPosition& p, const GPosition& q) {
    return {p, q};
}

GBox BuildBox(unsigned long count, GPosition* points) {
    if (count == 0) {
        Gassert_debug("GBox: can't build with 0 points");
        return kGNullBox;
    }
    if (count >= kManyPoints) {
        return Chosen<BoxKernels>().box_of_positions(points, count);
    }
    GBox result = {points[0], points[0]};
    for (unsigned long i = 1; i < count; ++i) {
        const GPosition& p = points[i];
        Extend(result.m_low.m_x, result.m_high.m_x, p.m_x);
        Extend(result.m_low.m_y, result.m_high.m_y, p.m_y);
        Extend(result.m_low.m_z, result.m_high.m_z, p.m_z);
    }
    return result;
}

int operator<<(const GPosition& p, const GBox& box) {
    return box >> p;
}

GBox operator|(const GBox& a, const GBox& b) {
    const double t = DistanceTolerance();
    const bool a_is_null = IsReversedOnSomeAxis(a, t);
    if (IsReversedOnSomeAxis(b, t)) {
        return a_is_null ? kGNullBox : a;
    }
    if (a_is_null) {
        return b;
    }
    return {Lower(a.m_low, b.m_low), Upper(a.m_high, b.m_high)};
}

GBox operator&(const GBox& a, const GBox& b) {
    const double t = DistanceTolerance();
    if (IsReversedOnSomeAxis(a, t) || IsReversedOnSomeAxis(b, t)) {
        return kGNullBox;
    }
    const GPosition low = Upper(a.m_low, b.m_low);
    const GPosition high = Lower(a.m_high, b.m_high);
    if (high.m_x + t <= low.m_x || high.m_y + t <= low.m_y || high.m_z + t <= low.m_z) {
        return kGNullBox;
    }
    return {Lower(low, high), Upper(low, high)};
}

GBox operator*(const GBox& box, double s) {
    if (s > 0) {
        return {Scaled(box.m_low, s), Scaled(box.m_high, s)};
    }
    return {Scaled(box.m_high, s), Scaled(box.m_low, s)};
}

GBox operator*(double s, const GBox& box) {
    return box * s;
}

GBox operator/(const GBox& box, double s) {
    if (std::fabs(s) < kSmallestDivisor) {
        Gassert_debug("GBox: trying to divide by 0.0");
        return kGAllSpaceBox;
    }
    if (s > 0) {
        return {Divided(box.m_low, s), Divided(box.m_high, s)};
    }
    return {Divided(box.m_high, s), Divided(box.m_low, s)};
}
