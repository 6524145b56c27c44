// SPDX-License-Identifier: MIT
#include <kvgeom/kernel/constants.h>
#include <kvgeom/kernel/error_codes.h>
#include <kvgeom/kernel/refusal.h>
#include <kvgeom/kernel/tolerance_state.h>
#include <kvgeom/maps/fixed_maps.h>
#include <kvgeom/maps/linear_forms.h>
#include <kvgeom/maps/transf_builders.h>
#include <kvgeom/points/direction.h>
#include <kvgeom/points/from_origin.h>

#include <cmath>

using namespace kvgeom::detail;

namespace {

constexpr GVector kNoTranslation = {0, 0, 0};

GTransf RotationRecord(const GMatrix& m, const GVector& translation) {
    return BuildTransf(m, translation, 1, 1, 0, 0);
}

GTransf ReflectionRecord(const GMatrix& m, const GVector& translation) {
    return BuildTransf(m, translation, 1, 0, 1, 0);
}

// The translation that, after m, brings p back to where it was.
GVector TranslationThatKeeps(const GPosition& p, const GMatrix& m) {
    return p - RowForm(p, m);
}

bool IsUnit(const GVector& v, double tol) {
    return !(std::fabs(v % v - 1) > kSquaredLengthFactor * tol);
}

}  // namespace

GTransf ScaleTransf(double s) {
    return BuildTransf(kGIdentityMatrix, kNoTranslation, s, 0, 0, 0);
}

GTransf ScaleTransf(double s, const GPosition& c) {
    const double rest = 1 - s;
    return BuildTransf(kGIdentityMatrix, {rest * c.m_x, rest * c.m_y, rest * c.m_z}, s, 0, 0, 0);
}

GTransf RotateTransf(double cosine, double sine, const GUnitVector& axis) {
    return RotationRecord(Rotation(cosine, sine, axis), kNoTranslation);
}

GTransf RotateTransf(double angle, const GUnitVector& axis) {
    return RotationRecord(Rotation(angle, axis), kNoTranslation);
}

GTransf RotateTransf(double cosine, double sine, const GUnitVector& axis, const GPosition& p) {
    const GMatrix m = Rotation(cosine, sine, axis);
    return RotationRecord(m, TranslationThatKeeps(p, m));
}

GTransf RotateTransf(double angle, const GUnitVector& axis, const GPosition& p) {
    return RotateTransf(std::cos(angle), std::sin(angle), axis, p);
}

GTransf ReflectTransf(const GUnitVector& normal) {
    return ReflectionRecord(Reflection(normal), kNoTranslation);
}

GTransf ReflectTransf(const GUnitVector& normal, const GPosition& p) {
    const GMatrix m = Reflection(normal);
    return ReflectionRecord(m, TranslationThatKeeps(p, m));
}

GTransf TranslateTransf(const GVector& v) {
    return BuildTransf(kGIdentityMatrix, v, 1, 0, 0, 0);
}

GTransf CoordinateTransf(const GPosition& origin, const GUnitVector& xAxis,
                         const GUnitVector& yAxis) {
    const GVector x = xAxis;
    const GUnitVector y = Direction(yAxis - (x % yAxis) * x);
    const GUnitVector z = Direction(x * y);
    return RotationRecord(BuildMatrix(xAxis, y, z, 0), OriginTo(origin));
}

GTransf CoordinateTransf(const GPosition& origin, const GUnitVector& zAxis) {
    const GUnitVector z = Direction(zAxis);
    if (std::fabs(z.m_z - 1) < kSmallestDivisor) {
        return CoordinateTransf(origin, {1, 0, 0}, {0, 1, 0});
    }
    const GUnitVector x = Direction(GetPerpVector(z));
    const GUnitVector y = Direction(GVector(z) * GVector(x));
    return CoordinateTransf(origin, x, y);
}

void OldToNewTransf(const GPosition& oldOrigin, const GUnitVector& oldX, const GUnitVector& oldY,
                    const GPosition& newOrigin, const GUnitVector& newX, const GUnitVector& newY,
                    GTransf& out, long* err) {
    *err = kSuccess;
    const double tol = RelativeTolerance();
    if (!IsUnit(oldX, tol) || !IsUnit(oldY, tol) || !IsUnit(newX, tol) || !IsUnit(newY, tol)) {
        Refuse("Not a unit vector.", err);
        return;
    }
    if (!oldX.IsOrthogonal(oldY) || !newX.IsOrthogonal(newY)) {
        Refuse("Vectors are not orthogonal", err);
        return;
    }
    const GUnitVector old_z = Direction(GVector(oldX) * GVector(oldY));
    const GUnitVector new_z = Direction(GVector(newX) * GVector(newY));
    const GMatrix to_old_axes = BuildMatrix(oldX, oldY, old_z, 1);
    const GMatrix from_new_axes = BuildMatrix(newX, newY, new_z, 0);
    const GMatrix m = to_old_axes * from_new_axes;
    out = RotationRecord(m, newOrigin - RowForm(oldOrigin, m));
}
