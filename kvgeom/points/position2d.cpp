// SPDX-License-Identifier: MIT
#include <kvgeom/kernel/tolerance_state.h>
#include <kvgeom/points/components.h>
#include <kvgeom/points/position2d.h>

using namespace kvgeom::detail;

double GPosition2d::operator[](unsigned int i) const {
    return PlanarComponent(*this, i, "GPosition2d: index out of bounds");
}

double& GPosition2d::operator[](unsigned int i) {
    return PlanarComponent(*this, i, "GPosition2d: index out of bounds");
}

int GPosition2d::IsEqual(const GPosition2d& q) const {
    const double dist = DistanceTolerance();
    const GVector2d difference = q - *this;
    return difference % difference <= dist * dist ? 1 : 0;
}

int GPosition2d::IsNull() const {
    return IsEqual(kGNullPosition2d);
}

GPosition2d& GPosition2d::operator+=(const GVector2d& v) {
    return *this = *this + v;
}

GPosition2d& GPosition2d::operator-=(const GVector2d& v) {
    return *this = *this - v;
}

GPosition2d operator+(const GPosition2d& p, const GVector2d& v) {
    return {p.m_x + v.m_x, p.m_y + v.m_y};
}

GPosition2d operator+(const GVector2d& v, const GPosition2d& p) {
    return p + v;
}

GPosition2d operator-(const GPosition2d& p, const GVector2d& v) {
    return {p.m_x - v.m_x, p.m_y - v.m_y};
}

double operator%(const GPosition2d& p, const GVector2d& v) {
    return p.m_x * v.m_x + p.m_y * v.m_y;
}

double operator%(const GVector2d& v, const GPosition2d& p) {
    return p % v;
}

double GDistance(const GPosition2d& a, const GPosition2d& b) {
    return (a - b).GetLength();
}

GPosition2d Interpolate(double t, const GPosition2d& a, const GPosition2d& b) {
    return {(b.m_x - a.m_x) * t + a.m_x, (b.m_y - a.m_y) * t + a.m_y};
}
