// SPDX-License-Identifier: MIT
#include <kvgeom/maps/fixed_maps2d.h>
#include <kvgeom/maps/linear_forms2d.h>
#include <kvgeom/maps/transf2d_builders.h>
#include <kvgeom/points/direction2d.h>

#include <cmath>

using namespace kvgeom::detail;

namespace {

constexpr GVector2d kNoTranslation2d = {0, 0};

GTransf2d RotationRecord(const GMatrix2d& m, const GVector2d& translation) {
    return BuildTransf2d(m, translation, 1, 1, 0, 0);
}

GTransf2d ReflectionRecord(const GMatrix2d& m, const GVector2d& translation) {
    return BuildTransf2d(m, translation, 1, 0, 1, 0);
}

// The translation that, after m, brings p back to where it was.
GVector2d TranslationThatKeeps(const GPosition2d& p, const GMatrix2d& m) {
    return p - RowForm(p, m);
}

}  // namespace

GTransf2d ScaleTransf2d(double s) {
    return BuildTransf2d(kGIdentityMatrix2d, kNoTranslation2d, s, 0, 0, 0);
}

GTransf2d ScaleTransf2d(double s, const GPosition2d& c) {
    const double rest = 1 - s;
    return BuildTransf2d(kGIdentityMatrix2d, {rest * c.m_x, rest * c.m_y}, s, 0, 0, 0);
}

GTransf2d RotateTransf2d(double cosine, double sine) {
    return RotationRecord(Rotation2d(cosine, sine), kNoTranslation2d);
}

GTransf2d RotateTransf2d(double angle) {
    return RotationRecord(Rotation2d(angle), kNoTranslation2d);
}

GTransf2d RotateTransf2d(double cosine, double sine, const GPosition2d& p) {
    const GMatrix2d m = Rotation2d(cosine, sine);
    return RotationRecord(m, TranslationThatKeeps(p, m));
}

GTransf2d RotateTransf2d(double angle, const GPosition2d& p) {
    return RotateTransf2d(std::cos(angle), std::sin(angle), p);
}

GTransf2d ReflectTransf2d(const GUnitVector2d& direction) {
    return ReflectionRecord(Reflection2d(direction), kNoTranslation2d);
}

GTransf2d ReflectTransf2d(const GUnitVector2d& direction, const GPosition2d& p) {
    const GMatrix2d m = Reflection2d(direction);
    return ReflectionRecord(m, TranslationThatKeeps(p, m));
}

GTransf2d TranslateTransf2d(const GVector2d& v) {
    return BuildTransf2d(kGIdentityMatrix2d, v, 1, 0, 0, 0);
}

GTransf2d CoordinateTransf2d(const GPosition2d& origin, const GUnitVector2d& xAxis,
                             const GUnitVector2d& yAxis) {
    const GVector2d x = xAxis;
    const GVector2d y = Direction(yAxis - (x % yAxis) * x);
    const GMatrix2d m = BuildMatrix2d(x, y, 0);
    const GVector2d translation = {origin.m_x, origin.m_y};
    return x * y > 0 ? RotationRecord(m, translation) : ReflectionRecord(m, translation);
}
