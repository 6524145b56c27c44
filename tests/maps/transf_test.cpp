// SPDX-License-Identifier: MIT
#include "tests/support/messages.h"
#include "tests/support/records.h"

#include <gtest/gtest.h>

namespace kvgeom::test {
namespace {

constexpr GVector kNowhere = {0, 0, 0};

GTransf Rx(double angle) {
    return RotateTransf(angle, kX);
}
GTransf Ry(double angle) {
    return RotateTransf(angle, kY);
}
GTransf Rz(double angle) {
    return RotateTransf(angle, kZ);
}

TEST(Transf, StoresTheLowByteOfItsFlags) {
    const GTransf t = BuildTransf(kIdentity, {1, 2, 3}, -4, 0x101, 0x200, -1);
    EXPECT_EQ(Numbers(t), (std::vector<double>{1, 0, 0, 0, 1, 0, 0, 0, 1, 1, 2, 3, -4, 1, 0, 255}));
}

TEST(Transf, EqualityIgnoresTheRotationAndShearFlags) {
    const GTransf base = BuildTransf(kIdentity, {1, 2, 3}, 2, 0, 0, 0);
    const struct {
        GTransf other;
        int expected;
    } rows[] = {
        {BuildTransf(kIdentity, {1, 2, 3}, 2, 1, 0, 1), 1},
        {BuildTransf(kIdentity, {1, 2, 3}, 2, 0, 1, 0), 0},
        {BuildTransf(kIdentity, {1, 2, 3}, 2 + 0.9e-10, 0, 0, 0), 1},
        {BuildTransf(kIdentity, {1, 2, 3}, 2 - 1.1e-10, 0, 0, 0), 0},
        {BuildTransf(kIdentity, {1, 2, 3}, kNaN, 0, 0, 0), 0},
        {BuildTransf(kIdentity, {1, 2, 3.1}, 2, 0, 0, 0), 0},
        {BuildTransf(kIdentity, {1 + 9e-7, 2 + 18e-7, 3 + 27e-7}, 2, 0, 0, 0), 0},
        {BuildTransf(Reflection(kX), {1, 2, 3}, 2, 0, 0, 0), 0},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(base.IsEqual(row.other), row.expected);
        EXPECT_EQ(row.other.IsEqual(base), row.expected);
    }
    EXPECT_EQ(BuildTransf(kIdentity, kNowhere, 1, 1, 0, 1).IsIdentity(), 1);
    EXPECT_EQ(BuildTransf(kIdentity, kNowhere, 1, 0, 1, 0).IsIdentity(), 0);
    EXPECT_EQ(BuildTransf({}, kNowhere, 0, 0, 0, 1).IsNull(), 1);
    EXPECT_EQ(BuildTransf({}, kNowhere, 0, 0, 1, 0).IsNull(), 0);
}

TEST(Transf, InvertibilityGoesByScalingAndMatrix) {
    const struct {
        double scaling;
        GMatrix m;
        int expected;
    } rows[] = {
        {DBL_EPSILON, kIdentity, 1},
        {-Down(DBL_EPSILON), kIdentity, 0},
        {-3, Reflection(kY), 1},
        {1e-17, kIdentity, 0},
        {1, {{{1.1, 0, 0}, {0, 1, 0}, {0, 0, 1}}}, 0},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(BuildTransf(row.m, kNowhere, row.scaling, 0, 0, 0).IsInvertible(), row.expected);
    }
}

TEST(Transf, InverseKeepsFlagsAndReportsNullScaling) {
    MessageRecorder recorder;
    const GTransf t = BuildTransf(Rotation(0.0, 1.0, kZ), {1, 2, 3}, 4, 1, 1, 1);
    EXPECT_EQ(Numbers(t.Inverse()),
              Numbers(BuildTransf(Rotation(0.0, -1.0, kZ), {-0.5, 0.25, -0.75}, 0.25, 1, 1, 1)));
    EXPECT_EQ(recorder.Take(), Messages{});
    const GTransf flat = BuildTransf(kIdentity, {1, -2, 0}, -1e-17, 0, 0, 0);
    EXPECT_EQ(Numbers(flat.Inverse()),
              Numbers(BuildTransf(kIdentity, {-kBig, 2 * kBig, 0}, kBig, 0, 0, 0)));
    EXPECT_EQ(recorder.Take(), Messages{"GTransf: m_scaling is 0.0"});

    Random random(21);
    for (int i = 0; i < 2000; ++i) {
        const GTransf s = random.Similarity();
        const GTransf identity = s * s.Inverse();
        EXPECT_LT(Distance(identity.m_matrix, kIdentity), 1e-13);
        EXPECT_LT(Distance(identity.m_translation, kNowhere), 1e-12);
        EXPECT_NEAR(identity.m_scaling, 1, 1e-15);
        EXPECT_EQ(identity.m_hasReflection, 0);
    }
}

TEST(Transf, CompositionAppliesTheLeftOperandFirst) {
    const GVector v = {1, 2, 3};
    const GPosition p = {10, 20, 30};
    EXPECT_EQ(Numbers(p * (TranslateTransf(v) * ScaleTransf(2))), Numbers(GPosition{22, 44, 66}));
    EXPECT_EQ(Numbers(p * (ScaleTransf(2) * TranslateTransf(v))), Numbers(GPosition{21, 42, 63}));
    Random random(22);
    for (int i = 0; i < 2000; ++i) {
        const GTransf a = random.Similarity();
        const GTransf b = random.Similarity();
        const GPosition q = random.Point();
        EXPECT_LT(Distance(q * (a * b), (q * a) * b), 1e-11);
        GTransf in_place = a;
        in_place *= b;
        EXPECT_EQ(Bits(in_place), Bits(a * b));
        in_place *= in_place;
        EXPECT_EQ(Bits(in_place), Bits((a * b) * (a * b)));
        // The flag tells of the matrix.
        EXPECT_EQ((a * b).m_hasReflection, GetDeterminant((a * b).m_matrix) < 0 ? 1 : 0);
    }
}

TEST(Transf, CompositionCombinesFlags) {
    const GTransf turn = Rz(kPi / 6);
    const GTransf back = Rz(-kPi / 6);
    const GTransf still = ScaleTransf(2);
    EXPECT_EQ((turn * back).m_hasRotation, 0) << "rotations cancel";
    EXPECT_EQ((turn * turn).m_hasRotation, 1);
    EXPECT_EQ((Rz(-kPi / 6) * Rz(kPi / 6 + 2e-10)).m_hasRotation, 1);
    EXPECT_EQ((Rz(-kPi / 6) * Rz(kPi / 6 + 0.5e-10)).m_hasRotation, 0);
    EXPECT_EQ((turn * still).m_hasRotation, 1);
    EXPECT_EQ((still * turn).m_hasRotation, 1);
    EXPECT_EQ((still * still).m_hasRotation, 0);
    const GTransf mirror = ReflectTransf(kX);
    EXPECT_EQ((mirror * ReflectTransf(kY)).m_hasRotation, 0) << "though they make a half turn";
    EXPECT_EQ((mirror * mirror).m_hasReflection, 0);
    EXPECT_EQ((mirror * still).m_hasReflection, 1);
    // Bytes other than 0 and 1: set, or different.
    const GTransf odd = BuildTransf(kIdentity, kNowhere, 1, 4, 2, 8);
    EXPECT_EQ((odd * still).m_hasRotation, 1);
    EXPECT_EQ((odd * mirror).m_hasReflection, 1);
    EXPECT_EQ((still * odd).m_hasShear, 1);
    EXPECT_EQ((odd * BuildTransf(kIdentity, kNowhere, 1, 2, 2, 0)).m_hasRotation, 0);
}

TEST(RotAngles, AreReadBackWithTheSmallerOfTheTwoSolutions) {
    const double q = kPi / 2;
    const struct {
        GTransf t;
        GVector expected;
    } rows[] = {
        {Rx(0.3) * Ry(0.2) * Rz(0.1), {0.3, 0.2, 0.1}},
        {Rx(-0.3) * Ry(-1.2) * Rz(0.7), {-0.3, -1.2, 0.7}},
        {Rx(0.3) * Ry(q), {0.3, q, 0}},
        {Ry(q) * Rz(0.3), {-0.3, q, 0}},
        {Rx(0.3) * Ry(-q), {0.3, -q, 0}},
        {Ry(-q) * Rz(0.3), {0.3, -q, 0}},
        {Rx(kPi), {kPi, 0, 0}},
        {Rx(3) * Ry(3) * Rz(3), {3 - kPi, kPi - 3, 3 - kPi}},
        {Rx(3) * Ry(0.1), {3, 0.1, 0}},
    };
    for (const auto& row : rows) {
        GTransf t = row.t;
        t.m_translation = {7, 8, 9};
        t.m_scaling = 5;
        GVector angles;
        GPosition origin;
        EXPECT_EQ(GetRotAngles(t, &angles.m_x, &angles.m_y, &angles.m_z, origin), 0);
        EXPECT_LT(Distance(angles, row.expected), 2e-15) << row.expected.m_x << row.expected.m_y;
        EXPECT_EQ(Numbers(origin), Numbers(GPosition{7, 8, 9}));
    }
    // A tie goes to the second solution: both sums are 3 pi / 2 for this matrix.
    GVector angles;
    GPosition origin;
    GetRotAngles(BuildTransf({{{0, 1, 0}, {1, 0, 0}, {0, 0, -1}}}, kNowhere, 1, 1, 0, 0),
                 &angles.m_x, &angles.m_y, &angles.m_z, origin);
    EXPECT_EQ(Numbers(angles), Numbers(GVector{0, -kPi, -kPi / 2}));
}

TEST(RotAngles, RebuildTheRotation) {
    Random random(23);
    for (int i = 0; i < 3000; ++i) {
        const GMatrix m = random.RotationMatrix();
        GVector angles;
        GPosition origin;
        GetRotAngles(BuildTransf(m, kNowhere, 1, 1, 0, 0), &angles.m_x, &angles.m_y, &angles.m_z,
                     origin);
        const GTransf rebuilt = Rx(angles.m_x) * Ry(angles.m_y) * Rz(angles.m_z);
        EXPECT_LT(Distance(rebuilt.m_matrix, m), 1e-12);
    }
}

TEST(TransfBuilders, KeepTheirFixedPointsAndSetTheirFlags) {
    const GPosition p = {1, 2, 3};
    const GUnitVector axis = BuildUnitVector(1, -2, 2);
    const auto flags = [](const GTransf& t) {
        return 100 * t.m_hasRotation + 10 * t.m_hasReflection + t.m_hasShear;
    };
    const struct {
        GTransf about_p;
        GTransf about_origin;
        int flags;
    } rows[] = {
        {ScaleTransf(-2, p), ScaleTransf(-2), 0},
        {RotateTransf(0.7, axis, p), RotateTransf(0.7, axis), 100},
        {RotateTransf(0.6, 0.8, axis, p), RotateTransf(0.6, 0.8, axis), 100},
        {ReflectTransf(axis, p), ReflectTransf(axis), 10},
    };
    for (const auto& row : rows) {
        EXPECT_LT(Distance(p * row.about_p, p), 1e-14);
        EXPECT_EQ(Numbers(row.about_origin.m_translation), Numbers(kNowhere));
        EXPECT_EQ(Bits(row.about_p.m_matrix), Bits(row.about_origin.m_matrix));
        EXPECT_EQ(flags(row.about_p), row.flags);
        EXPECT_EQ(flags(row.about_origin), row.flags);
    }
    EXPECT_EQ(Numbers(GPosition{0, 0, 0} * ScaleTransf(2, {1, 1, 1})),
              Numbers(GPosition{-1, -1, -1}));
    EXPECT_LT(Distance(GPosition{2, 0, 0} * RotateTransf(kPi / 2, kZ, {1, 0, 0}), {1, 1, 0}),
              1e-15);
    EXPECT_EQ(Numbers(GPosition{0, 0, 0} * ReflectTransf(kX, {1, 0, 0})),
              Numbers(GPosition{2, 0, 0}));
    EXPECT_EQ(Numbers(TranslateTransf({1, 2, 3})),
              Numbers(BuildTransf(kIdentity, {1, 2, 3}, 1, 0, 0, 0)));
    MessageRecorder recorder;
    RotateTransf(1.5, 0.0, axis, p);
    EXPECT_EQ(recorder.Take(), Messages{"GMatrix: abs(cosine or sine of angle) > 1.0"});
}

TEST(TransfBuilders, PlaceCoordinateSystems) {
    const GPosition o = {1, 2, 3};
    const GTransf placed = CoordinateTransf(o, kX, BuildUnitVector(1, 1, 0));
    EXPECT_LT(Distance(placed, BuildTransf(kIdentity, {1, 2, 3}, 1, 1, 0, 0)), 1e-15);
    EXPECT_EQ(Numbers(CoordinateTransf(o, kZ).m_matrix), Numbers(kIdentity));
    // Up to the rounding of its z component a direction counts as z; further off, and for -z, x is
    // chosen.
    EXPECT_EQ(Numbers(CoordinateTransf(o, BuildUnitVector(1e-8, 0, 1)).m_matrix),
              Numbers(kIdentity));
    for (const GUnitVector& z : {GUnitVector{0, 0, -1}, BuildUnitVector(1e-6, 0, 1), kY}) {
        const GTransf t = CoordinateTransf(o, z);
        EXPECT_LT(Distance(t.m_matrix[2], GVector(z)), 1e-15);
        EXPECT_NEAR(GetDeterminant(t.m_matrix), 1, 1e-15);
        EXPECT_LT(Distance(t.m_matrix[0], GVector(GetPerpVector(z))), 1e-15);
        EXPECT_EQ(t.m_hasRotation, 1);
    }
    MessageRecorder recorder;
    CoordinateTransf(o, kX, kX);
    EXPECT_EQ(recorder.Take(), (Messages{kNullUnitVector, kNullUnitVector}));
}

TEST(TransfBuilders, CarryTheOldCoordinateSystemOntoTheNew) {
    Random random(24);
    for (int i = 0; i < 1000; ++i) {
        const GTransf from = CoordinateTransf(random.Point(), random.Direction());
        const GTransf to = CoordinateTransf(random.Point(), random.Direction());
        const auto origin = [](const GTransf& t) {
            return GPosition{t.m_translation.m_x, t.m_translation.m_y, t.m_translation.m_z};
        };
        GTransf t;
        long err = 77;
        OldToNewTransf(origin(from), kX * from, kY * from, origin(to), kX * to, kY * to, t, &err);
        EXPECT_EQ(err, 0);
        const GPosition local = random.Point();
        EXPECT_LT(Distance((local * from) * t, local * to), 1e-12);
        EXPECT_EQ(t.m_hasRotation, 1);
    }
}

TEST(TransfBuilders, RefuseAxesThatAreNotUnitOrNotOrthogonal) {
    const GPosition o = {0, 0, 0};
    const double tol = 1e-10;
    const GUnitVector long_x = {std::sqrt(1 + 3 * tol), 0, 0};
    const GUnitVector slightly_long_x = {std::sqrt(1 + 1.9 * tol), 0, 0};
    const GUnitVector askew = BuildUnitVector(0.1, 1, 0);
    const char* const not_unit = "Not a unit vector.";
    const char* const not_orthogonal = "Vectors are not orthogonal";
    const struct {
        GUnitVector axes[4];
        const char* message;
    } rows[] = {
        {{kX, kY, kX, kY}, nullptr},           {{slightly_long_x, kY, kX, kY}, nullptr},
        {{long_x, kY, kX, kY}, not_unit},      {{kY, long_x, kX, kY}, not_unit},
        {{kX, kY, long_x, kY}, not_unit},      {{kX, kY, kY, long_x}, not_unit},
        {{kX, askew, kX, kY}, not_orthogonal}, {{kX, kY, kX, askew}, not_orthogonal},
        {{kX, askew, long_x, kY}, not_unit},
    };
    MessageRecorder recorder;
    for (const auto& row : rows) {
        GTransf t = ScaleTransf(77);
        long err = 77;
        OldToNewTransf(o, row.axes[0], row.axes[1], o, row.axes[2], row.axes[3], t, &err);
        EXPECT_EQ(err, row.message == nullptr ? 0 : 2);
        EXPECT_EQ(recorder.Take(), row.message == nullptr ? Messages{} : Messages{row.message});
        EXPECT_EQ(t.m_scaling, row.message == nullptr ? 1 : 77);
    }
}

}  // namespace
}  // namespace kvgeom::test
