// SPDX-License-Identifier: MIT
#include <kvgeom/kernel/assertion_hook.h>
#include <kvgeom/kernel/constants.h>
#include <kvgeom/kernel/error_codes.h>
#include <kvgeom/kernel/square_root.h>
#include <kvgeom/points/components.h>
#include <kvgeom/points/direction2d.h>
#include <kvgeom/points/position2d.h>
#include <kvgeom/points/unit_vector2d.h>

#include <cmath>

using namespace kvgeom::detail;

namespace {

double SquaredLength(double x, double y) {
    return x * x + y * y;
}

GUnitVector2d Scaled(double x, double y, double length) {
    const double factor = 1 / length;
    return {x * factor, y * factor};
}

GUnitVector2d NullUnitVector() {
    Gassert_debug("GUnitVector2d: tried to create a NULL unit vector");
    return {0.0, 0.0};
}

}  // namespace

double GUnitVector2d::operator[](unsigned int i) const {
    return PlanarComponent(*this, i, "GVector2d: index is out of range");
}

double& GUnitVector2d::operator[](unsigned int i) {
    return PlanarComponent(*this, i, "GVector2d: index is out of range");
}

GUnitVector2d::operator GVector2d() const {
    return {m_x, m_y};
}

GUnitVector2d& GUnitVector2d::operator+=(const GVector2d& v) {
    return *this = Direction(*this + v);
}

GUnitVector2d& GUnitVector2d::operator-=(const GVector2d& v) {
    return *this = Direction(*this - v);
}

GUnitVector2d BuildUnitVector2d(double x, double y) {
    const double squared_length = SquaredLength(x, y);
    if (kUnitBandLow <= squared_length && squared_length <= kUnitBandHigh) {
        return {x, y};
    }
    const double length = SquareRoot(squared_length);
    return length <= kUnitTolerance ? NullUnitVector() : Scaled(x, y, length);
}

GUnitVector2d BuildUnitVector2d(double x, double y, double tol, long* err) {
    *err = kSuccess;
    const double squared_length = SquaredLength(x, y);
    if (kNarrowUnitBandLow <= squared_length && squared_length <= kNarrowUnitBandHigh) {
        return {x, y};
    }
    const double length = SquareRoot(squared_length);
    if (length < tol || length == 0.0) {
        *err = kPreconditionFailed;
        return NullUnitVector();
    }
    return Scaled(x, y, length);
}

GUnitVector2d BuildUnitVector2d(const GPosition2d& from, const GPosition2d& to) {
    return Direction(to - from);
}

GUnitVector2d GetPerpVector2d(const GUnitVector2d& u) {
    return BuildUnitVector2d(-u.m_y, u.m_x);
}
