// SPDX-License-Identifier: MIT

// What the maps of the plane do otherwise than their twins in space, and the way between the two.
// What they do alike is tested in plane_laws_test.cpp.

#include "tests/support/messages.h"
#include "tests/support/records.h"

#include <gtest/gtest.h>

namespace kvgeom::test {
namespace {

using Flags = std::array<int, 3>;  // rotation, reflection, shear

Flags FlagsOf(const GTransf2d& t) {
    return {t.m_hasRotation, t.m_hasReflection, t.m_hasShear};
}

TEST(Matrix2d, IsBuiltFromRowsOrColumnsAndGivesItsRows) {
    MessageRecorder recorder;
    const GMatrix2d rows = BuildMatrix2d(GVector2d{1, 2}, GVector2d{3, 4}, 0);
    EXPECT_EQ(Numbers(rows), (std::vector<double>{1, 2, 3, 4}));
    EXPECT_EQ(Numbers(BuildMatrix2d(GVector2d{1, 2}, GVector2d{3, 4}, -1)),
              (std::vector<double>{1, 3, 2, 4}));
    EXPECT_EQ(Numbers(BuildMatrix2d(GUnitVector2d{0, 1}, GUnitVector2d{-1, 0}, 0)),
              (std::vector<double>{0, 1, -1, 0}));
    EXPECT_EQ(Numbers(rows[0]), (std::vector<double>{1, 2}));
    EXPECT_EQ(Numbers(rows[1]), (std::vector<double>{3, 4}));
    EXPECT_EQ(recorder.Take(), Messages{});
    EXPECT_EQ(Numbers(rows[2]), (std::vector<double>{3, 4}));
    EXPECT_EQ(recorder.Take(), Messages{"GMatrix2d: index out of range"});
}

TEST(Matrix2d, EqualityIsInclusiveAndFailsOnNaN) {
    const double tol = GetRelativeTolerance();
    EXPECT_EQ((GMatrix2d{{{0, -tol}, {tol, 0}}}.IsNull()), 1);
    EXPECT_EQ((GMatrix2d{{{0, 0}, {Up(tol), 0}}}.IsNull()), 0);
    EXPECT_EQ((GMatrix2d{{{1, 0}, {0, kNaN}}}.IsIdentity()), 0);
}

TEST(Matrix2d, RotationNormalisesItsRows) {
    const Messages beyond = {"GMatrix2d: abs(cosine or sine of angle) > 1.0"};
    MessageRecorder recorder;
    EXPECT_EQ(Numbers(Rotation2d(0.6, 0.8)), (std::vector<double>{0.6, 0.8, -0.8, 0.6}));
    EXPECT_EQ(Numbers(Rotation2d(0, 0.5)), (std::vector<double>{0, 1, -1, 0}));
    EXPECT_EQ(recorder.Take(), Messages{});
    EXPECT_LT(Distance(Rotation2d(3, 4), GMatrix2d{{{0.6, 0.8}, {-0.8, 0.6}}}), 1e-15);
    EXPECT_EQ(recorder.Take(), beyond);
    EXPECT_EQ(Numbers(Rotation2d(0, -1.5)), (std::vector<double>{0, -1, 1, 0}));
    EXPECT_EQ(recorder.Take(), beyond);
    EXPECT_EQ(Rotation2d(0, 0).IsNull(), 1);
    EXPECT_EQ(recorder.Take(), Messages(2, "GUnitVector2d: tried to create a NULL unit vector"));
}

TEST(Matrix2d, ReflectionTakesTheLineNotTheNormal) {
    EXPECT_EQ(Numbers(Reflection2d({1, 0})), (std::vector<double>{1, 0, 0, -1}));
    const GUnitVector2d u = BuildUnitVector2d(1, 3);
    const GMatrix2d m = Reflection2d(u);
    EXPECT_LT(Distance(u * m, u), 1e-15);
    EXPECT_LT(Distance(GetPerpVector2d(u) * m, BuildUnitVector2d(3, -1)), 1e-15);
    EXPECT_NEAR(GetDeterminant(m), -1, 1e-15);
}

TEST(Matrix2d, OrthogonalisationLeavesWhatIsOrthonormalToAFixedThreshold) {
    const auto step = [](const GMatrix2d& in) {
        GMatrix2d out = in;
        long err = 77;
        MakeOrthogonal(out, out, &err);
        EXPECT_EQ(err, 0);
        return out;
    };
    EXPECT_LT(Distance(step({{{1.1, 0}, {0, 1}}}), GMatrix2d{{{0.9845, 0}, {0, 1}}}), 1e-15);
    // The squared first column deviates by 2, 4.5 times the threshold.
    const GMatrix2d near = {{{1 + 4e-15, 0}, {0, 1}}};
    EXPECT_EQ(Bits(step(near)), Bits(near));
    EXPECT_EQ(step({{{1 + 2e-14, 0}, {0, 1}}}).m_elements[0][0], 1);
    EXPECT_EQ(step({{{1, 0}, {2e-14, 1}}}).m_elements[0][1], -1e-14);
    // NaN doesn't count as orthonormal.
    EXPECT_TRUE(std::isnan(step({{{1, kNaN}, {0, 1}}}).m_elements[0][0]));
}

TEST(Transf2d, StoresTheLowByteOfItsFlagsAndComparesOnlyReflection) {
    const GMatrix2d identity = {{{1, 0}, {0, 1}}};
    EXPECT_EQ(FlagsOf(BuildTransf2d(identity, {1, 2}, 3, 256, 257, -1)), (Flags{0, 1, 255}));
    EXPECT_EQ(BuildTransf2d(identity, {0, 0}, 1, 1, 0, 1).IsIdentity(), 1);
    EXPECT_EQ(BuildTransf2d(identity, {0, 0}, 1, 0, 1, 0).IsIdentity(), 0);
    EXPECT_EQ(BuildTransf2d({}, {0, 0}, 0, 1, 0, 1).IsNull(), 1);
    EXPECT_EQ(BuildTransf2d({}, {0, 0}, kNaN, 0, 0, 0).IsNull(), 0);
    // In space a scaling of NaN passes.
    EXPECT_EQ(BuildTransf2d(identity, {0, 0}, kNaN, 0, 0, 0).IsInvertible(), 0);
}

TEST(Transf2d, InverseReportsUnderTheNameOfItsTwin) {
    MessageRecorder recorder;
    EXPECT_EQ(ScaleTransf2d(DBL_EPSILON).Inverse().m_scaling, 1 / DBL_EPSILON);
    EXPECT_EQ(recorder.Take(), Messages{});
    EXPECT_EQ(ScaleTransf2d(-Down(DBL_EPSILON)).Inverse().m_scaling, kBig);
    EXPECT_EQ(recorder.Take(), Messages{"GTransf: m_scaling is 0.0"});
}

TEST(Transf2d, RotationAngleIsThatOfAFullTurn) {
    const double tol = GetRelativeTolerance();
    const struct {
        GTransf2d t;
        double angle;
    } rows[] = {{RotateTransf2d(-0.5), 2 * kPi - 0.5},
                {RotateTransf2d(kPi), kPi},
                {RotateTransf2d(2.5), 2.5},
                {RotateTransf2d(tol / 2), 0},
                {RotateTransf2d(-tol / 2), 0},
                {RotateTransf2d(2 * tol), 2 * tol},
                {RotateTransf2d(-2 * tol), 2 * kPi - 2 * tol}};
    for (const auto& row : rows) {
        long err = 77;
        EXPECT_DOUBLE_EQ(GiveRotAngle(row.t, &err), row.angle);
        EXPECT_EQ(err, 77);
    }
    EXPECT_EQ((RotateTransf2d(0.3) * RotateTransf2d(-0.3)).m_hasRotation, 0);
    EXPECT_EQ((RotateTransf2d(0.3) * RotateTransf2d(0.4)).m_hasRotation, 1);
    EXPECT_EQ((RotateTransf2d(0) * ScaleTransf2d(2)).m_hasRotation, 1);
}

TEST(Transf2dBuilders, KeepTheirFixedPointsAndSetTheirFlags) {
    const GPosition2d p = {3, -2};
    const struct {
        GTransf2d t;
        GPosition2d point;
        GPosition2d image;
        Flags flags;
    } rows[] = {
        {ScaleTransf2d(2), {1, 3}, {2, 6}, {0, 0, 0}},
        {ScaleTransf2d(2, {1, 1}), {0, 0}, {-1, -1}, {0, 0, 0}},
        {RotateTransf2d(0, 1), {2, 1}, {-1, 2}, {1, 0, 0}},
        {RotateTransf2d(kPi / 2), {2, 1}, {-1, 2}, {1, 0, 0}},
        {RotateTransf2d(0, 1, p), {4, -2}, {3, -1}, {1, 0, 0}},
        {RotateTransf2d(-kPi / 2, p), {4, -2}, {3, -3}, {1, 0, 0}},
        {RotateTransf2d(0.8, 0.6, p), p, p, {1, 0, 0}},
        {ReflectTransf2d({0, 1}), {3, 2}, {-3, 2}, {0, 1, 0}},
        {ReflectTransf2d({1, 0}, {0, 1}), {0, 0}, {0, 2}, {0, 1, 0}},
        {ReflectTransf2d({1, 0}, {0, 1}), {5, 1}, {5, 1}, {0, 1, 0}},
        {TranslateTransf2d({5, -7}), {1, 2}, {6, -5}, {0, 0, 0}},
        {CoordinateTransf2d({1, 1}, {1, 0}, {0, 1}), {2, 3}, {3, 4}, {1, 0, 0}},
        {CoordinateTransf2d({1, 1}, {1, 0}, {0, -1}), {2, 3}, {3, -2}, {0, 1, 0}},
        {CoordinateTransf2d({1, 1}, {0, 1}, {-0.8, 0.6}), {2, 3}, {-2, 3}, {1, 0, 0}},
    };
    MessageRecorder recorder;
    for (const auto& row : rows) {
        EXPECT_LT(Distance(row.point * row.t, row.image), 1e-14);
        EXPECT_EQ(FlagsOf(row.t), row.flags);
    }
    EXPECT_EQ(recorder.Take(), Messages{});
    EXPECT_EQ(FlagsOf(CoordinateTransf2d({0, 0}, {1, 0}, {-1, 0})), (Flags{0, 1, 0}));
    EXPECT_EQ(recorder.Take(), Messages{"GUnitVector2d: tried to create a NULL unit vector"});
}

G4x4 Lifted(const GTransf2d& t) {
    GTransf spatial;
    spatial.Convert3d(t);
    G4x4 a;
    a = spatial;
    return a;
}

TEST(PlanarConversion, AcceptsWhatIsASimilarityInThePlane) {
    const double tol = GetRelativeTolerance();
    const G4x4 base = Lifted(RotateTransf2d(0.8, 0.6, {1, 2}) * ScaleTransf2d(3));
    const auto with = [&base](std::initializer_list<std::pair<int, double>> changes) {
        G4x4 a = base;
        for (const auto& [index, value] : changes) {
            a.m_matrix[index] = value;
        }
        return a;
    };
    G4x4 doubled = base;
    for (double& element : doubled.m_matrix) {
        element *= -2;
    }
    const double r = 3 * 0.8;
    const double s = 3 * 0.6;
    const struct {
        const char* what;
        G4x4 a;
        bool accepted;
        double scaling;
    } rows[] = {
        {"similarity", base, true, 3},
        {"weight -2", doubled, true, 3},
        {"z not looked at", with({{2, kNaN}, {6, kInf}, {10, 50}, {14, kNaN}}), true, 3},
        {"weight 0", with({{15, 0}}), false, 0},
        {"weight NaN", with({{15, kNaN}}), false, 0},
        {"projective at bound", with({{3, tol}, {7, -tol}, {11, tol}}), true, 3},
        {"projective x", with({{3, 2 * tol}}), false, 0},
        {"projective y", with({{7, -2 * tol}}), false, 0},
        {"projective z", with({{11, 2 * tol}}), false, 0},
        {"null", with({{0, 0}, {4, 0}}), false, 0},
        {"longer column", with({{1, s * (1 + 4 * tol)}, {5, r * (1 + 4 * tol)}}), false, 0},
        {"nearly as long", with({{1, s * (1 + 2 * tol)}, {5, r * (1 + 2 * tol)}}), true,
         3 + 3 * tol},
        // The spatial length of a column counts, so the plane's part is short of unit length.
        {"tilted", with({{8, 1}}), false, 0},
        {"sheared", with({{0, 3}, {1, 0}, {4, 1.8}, {5, 2.4}}), false, 0},
        {"NaN", with({{4, kNaN}}), false, 0},
    };
    MessageRecorder recorder;
    for (const auto& row : rows) {
        const GTransf2d before = BuildTransf2d({{{1, 2}, {3, 4}}}, {5, 6}, 7, 8, 9, 10);
        GTransf2d t = before;
        EXPECT_EQ(ConvertG4x4ToGTransf2d(row.a, t), row.accepted ? 0 : 2) << row.what;
        if (row.accepted) {
            EXPECT_NEAR(t.m_scaling, row.scaling, 1e-14) << row.what;
            EXPECT_EQ(t.m_matrix.IsEqual({{{0.8, 0.6}, {-0.6, 0.8}}}), 1) << row.what;
            EXPECT_EQ(FlagsOf(t), (Flags{1, 0, 0})) << row.what;
        } else {
            EXPECT_EQ(std::memcmp(&t, &before, sizeof t), 0) << row.what;
        }
    }
    EXPECT_EQ(recorder.Take(), Messages{});
}

TEST(PlanarConversion, TellsRotationsAndReflections) {
    const struct {
        GTransf2d t;
        Flags flags;
    } rows[] = {{TranslateTransf2d({1, 2}), {0, 0, 0}},
                {RotateTransf2d(1e-11), {0, 0, 0}},
                {RotateTransf2d(-1e-9), {1, 0, 0}},
                {ReflectTransf2d({1, 0}), {0, 1, 0}},
                {ReflectTransf2d({0, 1}), {1, 1, 0}}};
    for (const auto& row : rows) {
        GTransf2d t;
        ASSERT_EQ(ConvertG4x4ToGTransf2d(Lifted(row.t), t), 0);
        EXPECT_EQ(FlagsOf(t), row.flags);
        EXPECT_EQ(t.m_matrix.IsEqual(row.t.m_matrix), 1);
        EXPECT_EQ(Numbers(t.m_translation), Numbers(row.t.m_translation));
    }
}

TEST(PlanarConversion, OfATransformationReportsWhatLeavesThePlane) {
    const double d = GetDistanceTolerance();
    const char* const kRows = "z coordinate of row 0 or row 1 > distanceTolerance";
    const char* const kRow2 = "row 2 coordinates > distanceTolerance";
    const char* const kLast = "third coordinate in row 2 not 1.0";
    const struct {
        GMatrix m;
        Messages messages;
    } rows[] = {
        {kIdentity, {}},
        {{{{1, 0, d}, {0, 1, -d}, {-d, d, -1}}}, {}},
        {{{{1, 0, -2 * d}, {0, 1, 0}, {0, 0, 1}}}, {kRows}},
        {{{{1, 0, 0}, {0, 1, 2 * d}, {0, 0, 1}}}, {kRows}},
        {{{{1, 0, 0}, {0, 1, 0}, {2 * d, 0, 1}}}, {kRow2}},
        {{{{1, 0, 0}, {0, 1, 0}, {0, -2 * d, 1}}}, {kRow2}},
        {{{{1, 0, 0}, {0, 1, 0}, {0, 0, 1 + 2 * d}}}, {kLast}},
        {Rotation(std::cos(0.1), std::sin(0.1), kX), {kRows, kRow2, kLast}},
    };
    MessageRecorder recorder;
    for (const auto& row : rows) {
        const GTransf t = BuildTransf(row.m, {4, 5, 6}, 7, 1, 0, 1);
        const GTransf2d plane = t.Convert2d();
        EXPECT_EQ(recorder.Take(), row.messages);
        EXPECT_EQ(Numbers(plane.m_matrix),
                  (std::vector<double>{row.m.m_elements[0][0], row.m.m_elements[0][1],
                                       row.m.m_elements[1][0], row.m.m_elements[1][1]}));
        EXPECT_EQ(Numbers(plane.m_translation), (std::vector<double>{4, 5}));
        EXPECT_EQ(plane.m_scaling, 7);
        EXPECT_EQ(FlagsOf(plane), (Flags{1, 0, 1}));
    }
}

}  // namespace
}  // namespace kvgeom::test
