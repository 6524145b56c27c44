// SPDX-License-Identifier: MIT

// Rotations, reflections, scalings and coordinate systems; the plane of a mirror.

#include "tests/oracle/dimensions.h"

namespace kvgeom::test {
namespace {

// Rodrigues: v cos + (axis x v) sin + axis (axis . v) (1 - cos), of the coordinate axes.
Mat<3> Turned(const Real& cosine, const Real& sine, const Vec<3>& axis) {
    return ForRows(Identity<3>(), [&](const Vec<3>& v) {
        return v * cosine + Cross(axis, v) * sine + axis * (Dot(axis, v) * (Real(1) - cosine));
    });
}
// v - 2 n (n . v), of the coordinate axes.
template <std::size_t n>
Mat<n> Mirrored(const Vec<n>& normal) {
    return ForRows(Identity<n>(),
                   [&](const Vec<n>& v) { return v - normal * (Dot(normal, v) * 2); });
}
// What keeps p where it is.
template <std::size_t n>
Vec<n> KeepingInPlace(const Vec<n>& p, const Mat<n>& m) {
    return p - p * m;
}
TEST(Space, Builders) {
    // 1 - cos, times two components of the axis, and the other term; by angle, two more for cos.
    constexpr double kTurn = 4;
    constexpr double kTurnByAngle = kTurn + kElementary;
    constexpr double kMirror = 2;
    // p * M, and the difference.
    constexpr double kFixed = DotBound(3) + 1;
    Random random(22);
    for (int k = 0; k < kCases; ++k) {
        const GUnitVector axis = AnyDirection<Spatial>(random);
        const GPosition p = Any<GPosition>(random);
        const double angle = random.Uniform(-7, 7);
        const GVector2d circle = AnyDirection<Planar>(random);
        const double c = circle.m_x;
        const double s = circle.m_y;
        const Mat<3> turn = Turned(c, s, Exact(axis));
        const Mat<3> turn_by_angle = Turned(Cos(angle), Sin(angle), Exact(axis));
        const Mat<3> mirror = Mirrored(Exact(axis));
        Near("rotation", kTurn, turn, Rotation(c, s, axis), RotateTransf(c, s, axis).m_matrix,
             RotateTransf(c, s, axis, p).m_matrix);
        Near("rotation by angle", kTurnByAngle, turn_by_angle, Rotation(angle, axis),
             RotateTransf(angle, axis).m_matrix, RotateTransf(angle, axis, p).m_matrix);
        Near("reflection", kMirror, mirror, Reflection(axis), ReflectTransf(axis).m_matrix);
        const Vec<3> fixed = KeepingInPlace(Exact(p), turn);
        const Vec<3> fixed_by_angle = KeepingInPlace(Exact(p), turn_by_angle);
        const Vec<3> fixed_mirror = KeepingInPlace(Exact(p), mirror);
        Near("rotation about point", kTurn + kFixed, fixed,
             RotateTransf(c, s, axis, p).m_translation);
        Near("rotation about point by angle", kTurnByAngle + kFixed, fixed_by_angle,
             RotateTransf(angle, axis, p).m_translation);
        Near("reflection at point", kMirror + kFixed, fixed_mirror,
             ReflectTransf(axis, p).m_translation);
        const double factor = Any<double>(random);
        const Vec<3> fixed_scale = Exact(p) * (Real(1) - factor);
        Near("scaling about point", 2, fixed_scale, ScaleTransf(factor, p).m_translation);

        long err;
        G4x4 a;
        Rotate4x4(c, s, axis, p, a, &err);
        Near("Rotate4x4", kTurn + kFixed, Affine(turn, fixed), a);
        Rotate4x4(c, s, axis, a, &err);
        Near("Rotate4x4", kTurn + kFixed, Affine(turn, Vec<3>()), a);
        const double cosine = c + Beside(random, GetRelativeTolerance() / (2 * c));
        Rotate4x4(cosine, s, axis, a, &err);
        // The squares, their sum, its difference from 1.
        Agree("Rotate4x4: is it a rotation", 1 + 1 + 1,
              Below(Abs(Real(cosine) * cosine + Real(s) * s - 1), GetRelativeTolerance()),
              err == 0 ? 1 : 0);
        Rotate4x4(angle, axis, p, a, &err);
        Near("Rotate4x4 by angle", kTurnByAngle + kFixed, Affine(turn_by_angle, fixed_by_angle), a);
        Rotate4x4(angle, axis, a, &err);
        Near("Rotate4x4 by angle", kTurnByAngle + kFixed, Affine(turn_by_angle, Vec<3>()), a);
        Reflect4x4(axis, p, a, &err);
        Near("Reflect4x4", kMirror + kFixed, Affine(mirror, fixed_mirror), a);
        Reflect4x4(axis, a, &err);
        Near("Reflect4x4", kMirror + kFixed, Affine(mirror, Vec<3>()), a);
        const Mat<3> scale = ForRows(Identity<3>(), [&](const Vec<3>& v) { return v * factor; });
        Scale4x4(factor, p, a, &err);
        Near("Scale4x4", 2, Affine(scale, fixed_scale), a);
        Scale4x4(factor, 2, 3, p, a, &err);
        const Vec<3> by_axis = {fixed_scale[0], Real(p.m_y) * -1, Real(p.m_z) * -2};
        Near("Scale4x4", 2, Affine(Mat<3>{scale[0], Axis<3>(1) * 2, Axis<3>(2) * 3}, by_axis), a);
    }
}

TEST(Plane, Builders) {
    constexpr double kTurn = UnitBound(2);
    constexpr double kTurnByAngle = kElementary;  // its rows are of unit length
    constexpr double kMirror = 2;
    constexpr double kFixed = DotBound(2) + 1;
    Random random(23);
    for (int k = 0; k < kCases; ++k) {
        const GPosition2d p = Any<GPosition2d>(random);
        const GUnitVector2d along = AnyDirection<Planar>(random);
        const double angle = random.Uniform(-7, 7);
        const double c = random.Uniform(-1, 1);
        const double s = random.Uniform(-1, 1);
        const auto rows = [](const Real& x, const Real& y) {
            return Mat<2>{Unit(Vec<2>{x, y}), Unit(Vec<2>{-y, x})};
        };
        const Mat<2> turn = rows(c, s);
        const Mat<2> turn_by_angle = rows(Cos(angle), Sin(angle));
        const Mat<2> mirror = Mirrored(Vec<2>{-Real(along.m_y), along.m_x});
        Near("rotation", kTurn, turn, Rotation2d(c, s), RotateTransf2d(c, s).m_matrix);
        Near("rotation by angle", kTurnByAngle, turn_by_angle, Rotation2d(angle),
             RotateTransf2d(angle).m_matrix);
        Near("reflection", kMirror, mirror, Reflection2d(along), ReflectTransf2d(along).m_matrix);
        Near("rotation about point", kTurn + kFixed, KeepingInPlace(Exact(p), turn),
             RotateTransf2d(c, s, p).m_translation);
        Near("rotation about point by angle", kTurnByAngle + kFixed,
             KeepingInPlace(Exact(p), turn_by_angle), RotateTransf2d(angle, p).m_translation);
        Near("reflection at point", kMirror + kFixed, KeepingInPlace(Exact(p), mirror),
             ReflectTransf2d(along, p).m_translation);
        const double factor = Any<double>(random);
        Near("scaling about point", 2, Exact(p) * (Real(1) - factor),
             ScaleTransf2d(factor, p).m_translation);
        const GUnitVector2d y = AnyDirection<Planar>(random);
        const Vec<2> across = Unit(Exact(y) - Exact(along) * Dot(Exact(along), Exact(y)));
        Near("coordinate system", UnitBound(2, DotBound(2) + 2), Mat<2>{Exact(along), across},
             CoordinateTransf2d(p, along, y).m_matrix);
        const GTransf2d t = RotateTransf2d(random.Uniform(-7, 7));
        const Real to = Atan2(t.m_matrix.m_elements[0][1], t.m_matrix.m_elements[0][0]);
        long err;
        // The addition of 2 pi, and 2 pi itself.
        const Real full = {8 * atan2q(1, 1), 8 * atan2q(1, 1)};
        Near("GiveRotAngle", kElementary + 2, to.value < 0 ? to + full : to, GiveRotAngle(t, &err));
        // Turned back, but for an angle beside the tolerance.
        const double rest = Beside(random, GetRelativeTolerance());
        const GTransf2d back = {t.m_matrix.Transpose() * Rotation2d(rest), {0, 0}, 1, 1, 0, 0};
        const Vec<2> x = (Exact(t.m_matrix) * Exact(back.m_matrix))[0];
        Agree("composition: rotation flag", DotBound(2) + kElementary,
              Below(GetRelativeTolerance(), Abs(Atan2(x[1], x[0]))), (t * back).m_hasRotation);
    }
}

TEST(Space, CoordinateSystems) {
    // The part of y across x: dot product, product, difference.
    constexpr double kY = UnitBound(3, DotBound(3) + 2);
    constexpr double kZ = CrossBound(kY);
    // With x chosen: x, then y = z cross x, across x to the five roundings of both products
    // whatever x is, so that the repeated part across x adds these, a product and a difference; z =
    // x cross y.
    constexpr double kChosenY = CrossBound(kPerpendicular) + CrossBound() + DotBound(3) + 2;
    Random random(24);
    for (int k = 0; k < kCases; ++k) {
        const GPosition p = Any<GPosition>(random);
        const GUnitVector x = AnyDirection<Spatial>(random);
        const GUnitVector y = AnyDirection<Spatial>(random);
        const Mat<3> rows = CoordinateAxes(Exact(x), Exact(y));
        long err;
        G4x4 a;
        Coordinate4x4(p, x, y, a, &err);
        Near("coordinate system", kZ, rows, CoordinateTransf(p, x, y).m_matrix);
        Near("Coordinate4x4", kZ, Affine(rows, Exact(p)), a);

        const Vec<3> z = Exact(y);
        const Vec<3> chosen = Perpendicular(z);
        Near("coordinate system of z", CrossBound(kPerpendicular, kChosenY),
             CoordinateAxes(chosen, Cross(z, chosen)), CoordinateTransf(p, y).m_matrix);

        const GMatrix from = random.RotationMatrix();
        const GMatrix to = random.RotationMatrix();
        const auto row = [](const GMatrix& m, unsigned int i) { return Spatial::Direction(m[i]); };
        const auto axes = [&](const GMatrix& m) {
            const Vec<3> u = Exact(row(m, 0));
            const Vec<3> v = Exact(row(m, 1));
            return Mat<3>{u, v, Unit(Cross(u, v))};
        };
        const GPosition q = Any<GPosition>(random);
        GTransf moved;
        OldToNewTransf(p, row(from, 0), row(from, 1), q, row(to, 0), row(to, 1), moved, &err);
        const Mat<3> turn = Transpose(axes(from)) * axes(to);
        // Both cross products, their product, the last addition; then p * M and the difference.
        constexpr double kTurn = 2 * CrossBound() + 2;
        Near("OldToNewTransf: matrix", kTurn, turn, moved.m_matrix);
        Near("OldToNewTransf: translation", DotBound(3, kTurn) + 1, Exact(q) - Exact(p) * turn,
             moved.m_translation);
    }
}

TEST(Space, MirrorPlane) {
    // 1 - the element, the root; what is divided by it, and the unit vector.
    constexpr double kNormal = UnitBound(3, 0.5 + 1 + 1);
    Random random(25);
    for (int k = 0; k < kCases; ++k) {
        const GVector v = {random.Uniform(0.5, 1), random.Uniform(-1, 1), random.Uniform(-1, 1)};
        const GTransf t = ReflectTransf(Spatial::Direction(v));
        GUnitVector normal;
        GVector offset;
        EXPECT_EQ(GetMirrorPlaneNormal(t, normal, offset), 0);
        const Vec<3> row = Exact(t.m_matrix)[0];
        const Real first = Sqrt((Real(1) - row[0]) * 0.5);
        const auto other = [&](std::size_t i) { return row[i] / (first * -2); };
        Near("GetMirrorPlaneNormal", kNormal, Unit(Vec<3>{first, other(1), other(2)}), normal);
    }
}

}  // namespace
}  // namespace kvgeom::test
