// SPDX-License-Identifier: MIT
#include <kvgeom/kernel/assertion_hook.h>
#include <kvgeom/kernel/constants.h>
#include <kvgeom/kernel/square_root.h>
#include <kvgeom/kernel/tolerance_state.h>
#include <kvgeom/points/components.h>
#include <kvgeom/points/direction2d.h>
#include <kvgeom/points/division.h>
#include <kvgeom/points/unit_vector2d.h>
#include <kvgeom/points/vector2d.h>

#include <cmath>

using namespace kvgeom::detail;

namespace {

int IsNullWithin(const GVector2d& v, double tol, double tol_squared) {
    return std::fabs(v.m_x) <= tol && std::fabs(v.m_y) <= tol && v % v <= tol_squared ? 1 : 0;
}

}  // namespace

double GVector2d::operator[](unsigned int i) const {
    return PlanarComponent(*this, i, "GVector2d: index is out of range");
}

double& GVector2d::operator[](unsigned int i) {
    return PlanarComponent(*this, i, "GVector2d: index is out of range");
}

int GVector2d::IsNull() const {
    return IsNullWithin(*this, kUnitTolerance, kUnitToleranceSquared);
}

int GVector2d::IsNull(double tol) const {
    return IsNullWithin(*this, tol, tol * tol);
}

int GVector2d::IsEqual(const GVector2d& w) const {
    const double dist = DistanceTolerance();
    if (GetLength() < dist) {
        return w.GetLength() < dist ? 1 : 0;
    }
    if (w.GetLength() < dist) {
        return 0;
    }
    const GVector2d difference = w - *this;
    if (difference % difference > dist * dist) {
        return 0;
    }
    return IsColinear(w);
}

int GVector2d::IsColinear(const GVector2d& w) const {
    const GVector2d a = Direction(*this);
    const GVector2d b = Direction(w);
    return std::fabs(a * b) < RelativeTolerance() ? 1 : 0;
}

int GVector2d::IsOrthogonal(const GVector2d& w) const {
    const GVector2d a = Direction(*this);
    const GVector2d b = Direction(w);
    return std::fabs(a % b) < RelativeTolerance() ? 1 : 0;
}

double GVector2d::GetLength() const {
    return SquareRoot(m_x * m_x + m_y * m_y);
}

GVector2d& GVector2d::operator+=(const GVector2d& v) {
    return *this = *this + v;
}

GVector2d& GVector2d::operator-=(const GVector2d& v) {
    return *this = *this - v;
}

GVector2d& GVector2d::operator*=(double f) {
    return *this = *this * f;
}

GVector2d& GVector2d::operator/=(double d) {
    return *this = *this / d;
}

double operator%(const GVector2d& a, const GVector2d& b) {
    return a.m_x * b.m_x + a.m_y * b.m_y;
}

double operator*(const GVector2d& a, const GVector2d& b) {
    return a.m_x * b.m_y - a.m_y * b.m_x;
}

GVector2d operator/(const GVector2d& v, double d) {
    if (std::fabs(d) >= kSmallestDivisor) {
        return {v.m_x / d, v.m_y / d};
    }
    Gassert_debug("GVector2d: trying to divide by 0.0");
    return {DividedByNearZero(v.m_x), DividedByNearZero(v.m_y)};
}

double GiveAngle(const GVector2d& a, const GVector2d& b) {
    if (a.IsNull() || b.IsNull()) {
        return 0.0;
    }
    return std::atan2(a * b, a % b);
}
