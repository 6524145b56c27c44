// SPDX-License-Identifier: MIT
#include <kvgeom/kernel/assertion_hook.h>
#include <kvgeom/kernel/constants.h>
#include <kvgeom/kernel/tolerance_state.h>
#include <kvgeom/points/components.h>
#include <kvgeom/points/direction.h>
#include <kvgeom/points/division.h>
#include <kvgeom/points/unit_vector.h>
#include <kvgeom/points/vector.h>

#include <cmath>

using namespace kvgeom::detail;

namespace {

int IsNullWithin(const GVector& v, double tol, double tol_squared) {
    return std::fabs(v.m_x) <= tol && std::fabs(v.m_y) <= tol && std::fabs(v.m_z) <= tol &&
                   v % v <= tol_squared
               ? 1
               : 0;
}

}  // namespace

double GVector::operator[](unsigned int i) const {
    return Component(*this, i, "GVector: index is out of range");
}

double& GVector::operator[](unsigned int i) {
    return Component(*this, i, "GVector: index is out of range");
}

int GVector::IsNull() const {
    return IsNullWithin(*this, kUnitTolerance, kUnitToleranceSquared);
}

int GVector::IsNull(double tol) const {
    return IsNullWithin(*this, tol, tol * tol);
}

int GVector::IsEqual(const GVector& w) const {
    const double dist = DistanceTolerance();
    if (GetLength() < dist) {
        return w.GetLength() < dist ? 1 : 0;
    }
    if (w.GetLength() < dist) {
        return 0;
    }
    const GVector difference = w - *this;
    if (difference % difference > dist * dist) {
        return 0;
    }
    return IsColinear(w);
}

int GVector::IsColinear(const GVector& w) const {
    return Direction(*this).IsColinear(w);
}

int GVector::IsOrthogonal(const GVector& w) const {
    return Direction(*this).IsOrthogonal(w);
}

GVector& GVector::operator/=(double d) {
    return *this = *this / d;
}

GVector operator/(const GVector& v, double d) {
    if (std::fabs(d) >= kSmallestDivisor) {
        return {v.m_x / d, v.m_y / d, v.m_z / d};
    }
    Gassert_debug("GVector: trying to divide by 0.0");
    return {DividedByNearZero(v.m_x), DividedByNearZero(v.m_y), DividedByNearZero(v.m_z)};
}

double GiveAngle(const GVector& a, const GVector& b) {
    if (a.IsNull() || b.IsNull()) {
        return 0.0;
    }
    return std::atan2((a * b).GetLength(), a % b);
}
