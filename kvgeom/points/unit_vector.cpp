// SPDX-License-Identifier: MIT
#include <kvgeom/kernel/assertion_hook.h>
#include <kvgeom/kernel/constants.h>
#include <kvgeom/kernel/error_codes.h>
#include <kvgeom/kernel/square_root.h>
#include <kvgeom/kernel/tolerance_state.h>
#include <kvgeom/points/components.h>
#include <kvgeom/points/direction.h>
#include <kvgeom/points/position.h>
#include <kvgeom/points/unit_vector.h>

#include <cmath>

using namespace kvgeom::detail;

namespace {

// Normalises (x, y, z). A length of 0, or of null_length or less, passes the message, makes the
// result (0, 0, 0) and returns false.
bool Normalise(double x, double y, double z, double null_length, GUnitVector& result) {
    const double squared_length = x * x + y * y + z * z;
    if (kUnitBandLow <= squared_length && squared_length <= kUnitBandHigh) {
        result = {x, y, z};
        return true;
    }
    const double length = SquareRoot(squared_length);
    if (length <= null_length || length == 0.0) {
        Gassert_debug("GUnitVector: tried to create a NULL unit vector");
        result = {0.0, 0.0, 0.0};
        return false;
    }
    const double factor = 1 / length;
    result = {x * factor, y * factor, z * factor};
    return true;
}

// The part of b perpendicular to a, scaled by |a|^2.
GVector PerpendicularPart(const GVector& a, const GVector& b) {
    return (a * b) * a;
}

// The direction that b takes when it is turned perpendicular to a.
GUnitVector PerpendicularDirection(const GVector& a, const GVector& b) {
    const GVector perpendicular = PerpendicularPart(a, b);
    return perpendicular.GetLength() >= DistanceTolerance() ? Direction(perpendicular)
                                                            : GetPerpVector(Direction(a));
}

}  // namespace

double GUnitVector::operator[](unsigned int i) const {
    return Component(*this, i, "GVector: index is out of range");
}

double& GUnitVector::operator[](unsigned int i) {
    return Component(*this, i, "GVector: index is out of range");
}

GUnitVector::operator GVector() const {
    return {m_x, m_y, m_z};
}

int GUnitVector::IsNull() const {
    const double dist = DistanceTolerance();
    return std::fabs(m_x) < dist && std::fabs(m_y) < dist && std::fabs(m_z) < dist ? 1 : 0;
}

int GUnitVector::IsEqual(const GVector& v) const {
    const double rel = RelativeTolerance();
    const GVector difference = v - *this;
    return difference % difference <= rel * rel ? 1 : 0;
}

int GUnitVector::IsColinear(const GVector& w) const {
    const GVector sine = GVector(*this) * GVector(Direction(w));
    return sine.GetLength() < RelativeTolerance() ? 1 : 0;
}

int GUnitVector::IsOrthogonal(const GVector& w) const {
    const double cosine = *this % Direction(w);
    return std::fabs(cosine) < RelativeTolerance() ? 1 : 0;
}

GUnitVector& GUnitVector::operator+=(const GVector& v) {
    return *this = Direction(*this + v);
}

GUnitVector& GUnitVector::operator-=(const GVector& v) {
    return *this = Direction(*this - v);
}

GUnitVector BuildUnitVector(double x, double y, double z) {
    GUnitVector result;
    Normalise(x, y, z, kUnitTolerance, result);
    return result;
}

GUnitVector BuildUnitVector(double x, double y, double z, double tol, long* err) {
    GUnitVector result;
    *err = kSuccess;
    if (!Normalise(x, y, z, tol, result)) {
        *err = kPreconditionFailed;
    }
    return result;
}

GUnitVector BuildUnitVector(const GPosition& from, const GPosition& to) {
    return Direction(to - from);
}

GUnitVector GetPerpVector(const GUnitVector& u) {
    const GUnitVector direction = Direction(u);
    unsigned int smallest = 0;
    for (unsigned int i = 1; i < 3; ++i) {
        if (std::fabs(direction[i]) < std::fabs(direction[smallest])) {
            smallest = i;
        }
    }
    GVector axis = {0.0, 0.0, 0.0};
    axis[smallest] = 1.0;
    return Direction(axis - direction[smallest] * direction);
}

void ModifyOrthoVector(const GVector& a, GVector& b) {
    const double length = b.GetLength();
    b = length * PerpendicularDirection(a, b);
}

void ModifyOrthoVector(const GVector& a, GUnitVector& b) {
    b = PerpendicularDirection(a, b);
}
