// SPDX-License-Identifier: MIT

// What is promised of homogeneous matrices, their builders and their conversions at their edges.

#include "tests/support/messages.h"

#include <tuple>

#include <utility>

namespace kvgeom::test {
namespace {

constexpr double kTol = 1e-10;
constexpr GPosition kP = {1, 2, 3};

G4x4 Diagonal(double x, double y, double z, double w) {
    return {{x, 0, 0, 0, 0, y, 0, 0, 0, 0, z, 0, 0, 0, 0, w}};
}
const G4x4 kOne = Diagonal(1, 1, 1, 1);

G4x4 With(G4x4 a, int index, double value) {
    a.m_matrix[index] = value;
    return a;
}

G4x4 Of(const GTransf& t) {
    G4x4 a;
    a = t;
    return a;
}

G4x4 Times(G4x4 a, double factor) {
    for (double& element : a.m_matrix) {
        element *= factor;
    }
    return a;
}

TEST(G4x4, InverseReportsPivotsBelowTheSmallest) {
    MessageRecorder recorder;
    recorder.Expect(Diagonal(1e-20, 1, 1, 1).Inverse(), Numbers(Diagonal(1 / 1e-20, 1, 1, 1)));
    for (const double pivot : {Down(1e-20), 0.0, kNaN}) {
        for (const int index : {0, 5, 10, 15}) {
            recorder.Expect(With(kOne, index, pivot).Inverse(), Numbers(kOne),
                            {"Can't find inverse since the g4x4 is singular"});
        }
    }
}

TEST(G4x4, EqualityDividesByTheWeightsAndNullWeightsAreUnequal) {
    const G4x4 a = {{2, 3, 5, 0.5, 11, 13, 17, 0.25, 23, 29, 31, 0.125, 41, 43, 47, 2}};
    EXPECT_EQ(a.IsEqual(Times(a, -0.5)), 1);
    for (int i = 0; i < 15; ++i) {
        const double tol = i >= 12 ? 1e-6 : kTol;
        const G4x4 zero = With(kOne, i, 0);
        EXPECT_EQ(zero.IsEqual(With(kOne, i, tol)), 1) << i;
        EXPECT_EQ(zero.IsEqual(With(kOne, i, -Up(tol))), 0) << i;
        EXPECT_EQ(zero.IsEqual(With(kOne, i, kNaN)), 0) << i;
    }
    const G4x4 weightless = Diagonal(1, 1, 1, -0.0);
    EXPECT_EQ(weightless.IsEqual(weightless), 0);
    EXPECT_EQ(kOne.IsEqual(weightless), 0);
}

TEST(G4x4, InvertibilityAndReflectionGoByTheDeterminant) {
    const std::tuple<G4x4, int, int> rows[] = {
        {kOne, 1, 0},
        {Diagonal(1, 1, 1, kTol * kTol * kTol), 0, 0},
        {Diagonal(1, 1, 1, -Up(kTol * kTol * kTol)), 1, 0},
        {With(kOne, 3, 5), 1, 0},  // the projective column doesn't count
        {Diagonal(-kTol, 1, 1, 1), 1, 1},
        {Diagonal(-Down(kTol), 1, 1, 1), 1, 0},  // first row shorter than the tolerance
        {Diagonal(1, 0, 1, 1), 0, 1},            // singular
        {Diagonal(kNaN, 1, 1, 1), 0, 0},
    };
    for (const auto& [a, invertible, reflects] : rows) {
        EXPECT_EQ(a.IsInvertible(), invertible) << a.m_matrix[0] << " " << a.m_matrix[15];
        EXPECT_EQ(a.IsValid(), invertible);
        EXPECT_EQ(a.HasReflection(), reflects) << a.m_matrix[0];
    }
}

TEST(G4x4Builders, ReportBadAxesAndRefuseBadAnglesAndCollinearOnes) {
    const char* const null_axis = "GUnitVector: using a NULL unit vector";
    const char* const bad_angle = "u4x4: rotation cosine and sine invalid\n";
    const char* const beyond = "GMatrix: abs(cosine or sine of angle) > 1.0";
    const char* const collinear = "u4x4: new axis vectors are collinear\n";
    const G4x4 before = Times(kOne, 7);
    const GUnitVector null = {0, 0, 0};
    G4x4 m = before;
    long err = 77;
    MessageRecorder recorder;
    const auto expect = [&](const Messages& messages, long code, int line = __builtin_LINE()) {
        EXPECT_EQ(recorder.Take(), messages) << "line " << line;
        EXPECT_EQ(std::exchange(err, 77), code) << "line " << line;
        EXPECT_EQ(Bits(std::exchange(m, before)) == Bits(before), code == 2) << "line " << line;
    };
    Rotate4x4(1 + 1e-11, 0, kZ, m, &err);
    expect({beyond}, 0);
    Rotate4x4(1 + kTol, 0, kZ, m, &err);
    expect({bad_angle}, 2);
    Rotate4x4(0, 2, null, m, &err);
    expect({null_axis, bad_angle}, 2);
    Rotate4x4(0, 2, null, kP, m, &err);
    expect({null_axis, bad_angle}, 2);
    Rotate4x4(0.7, null, m, &err);
    expect({null_axis}, 0);
    Rotate4x4(0.7, null, kP, m, &err);
    expect({null_axis}, 0);
    Reflect4x4(null, m, &err);
    expect({null_axis}, 0);
    Reflect4x4(null, kP, m, &err);
    expect({null_axis}, 0);
    Coordinate4x4(kP, kX, {-1, 0.9 * kTol, 0}, m, &err);
    expect({collinear}, 2);
}

TEST(Conversion, AcceptsSimilaritiesAndNothingElse) {
    const G4x4 turned = Of(RotateTransf(0.3, kZ));
    const G4x4 sheared = {{1, 0.6, 0, 0, 0, 0.8, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}};
    const struct {
        const char* name;
        G4x4 a;
        double scaling;        // 0 where it is refused
        double plane_scaling;  // of the conversion to the plane
    } rows[] = {{"negative weight", Times(Of(ScaleTransf(3)), -4), 3, 3},
                {"weight used as it is", With(turned, 15, 1 + 0.5 * kTol), 1, 1},
                {"weight null", With(kOne, 15, Down(kTol)), 0, 0},
                {"weight just not null", Diagonal(kTol, kTol, kTol, kTol), 1, 1},
                {"weight NaN", With(kOne, 15, kNaN), 0, 0},
                {"projective within tolerance", With(With(turned, 3, kTol), 7, -kTol), 1, 1},
                {"x projective", With(kOne, 3, Up(kTol)), 0, 0},
                {"y projective", With(kOne, 7, -Up(kTol)), 0, 0},
                {"z projective", With(kOne, 11, kNaN), 0, 0},
                {"y not uniform", Diagonal(1, 1 + 11 * kTol, 1, 1), 0, 0},
                {"z not uniform", Diagonal(1, 1, 1 - 11 * kTol, 1), 0, 1},
                {"z apart twice as far from y", Diagonal(1, 1 + 9 * kTol, 1 - 9 * kTol, 1), 1,
                 1 + 4.5 * kTol},
                {"too small", Diagonal(Down(kTol), kTol, kTol, 1), 0, 0},
                {"small", Diagonal(kTol, kTol, kTol, 1), kTol, kTol},
                {"sheared", sheared, 0, 0},
                {"tilted", With(kOne, 8, 1), 0, 0},
                {"shifted in z", With(With(kOne, 6, kNaN), 14, 5), 0, 1},
                {"NaN inside", With(kOne, 5, kNaN), 0, 0}};
    MessageRecorder recorder;
    const GTransf before = BuildTransf({{{7, 7, 7}, {7, 7, 7}, {7, 7, 7}}}, {7, 7, 7}, 77, 7, 7, 7);
    const GTransf2d planar_before = BuildTransf2d({{{7, 7}, {7, 7}}}, {7, 7}, 77, 7, 7, 7);
    for (const auto& [name, a, scaling, plane_scaling] : rows) {
        GTransf t = before;
        EXPECT_EQ(ConvertG4x4ToGTransf(a, t), scaling != 0 ? 0 : 2) << name;
        GTransf2d plan = planar_before;
        EXPECT_EQ(ConvertG4x4ToGTransf2d(a, plan), plane_scaling != 0 ? 0 : 2) << name;
        EXPECT_DOUBLE_EQ(t.m_scaling, scaling != 0 ? scaling : 77) << name;
        EXPECT_DOUBLE_EQ(plan.m_scaling, plane_scaling != 0 ? plane_scaling : 77) << name;
        EXPECT_EQ(Bits(t) == Bits(before), scaling == 0) << name;
        EXPECT_EQ(Bits(plan) == Bits(planar_before), plane_scaling == 0) << name;
        t = a;
        EXPECT_EQ(t.IsNull(), scaling == 0 ? 1 : 0) << name;
        EXPECT_EQ(recorder.Take(), Messages{}) << name;
    }
}

TEST(Conversion, TellsRotationsAndReflections) {
    // The last is the rotation flag of the conversion to the plane.
    const std::tuple<G4x4, int, int, int> rows[] = {
        {Of(ScaleTransf(2) * TranslateTransf({1, 2, 3})), 0, 0, 0},
        {Of(RotateTransf(1.1 * kTol, kZ)), 1, 0, 1},
        {Of(RotateTransf(-0.9 * kTol, kZ)), 0, 0, 0},
        {Diagonal(-1, 1, 1, 1), 1, 1, 1},  // read as half a turn
        {Diagonal(1, -1, 1, 1), 0, 1, 0},
    };
    for (const auto& [a, rotation, reflection, in_plane] : rows) {
        GTransf t;
        GTransf2d plan;
        ASSERT_EQ(ConvertG4x4ToGTransf(a, t) + ConvertG4x4ToGTransf2d(a, plan), 0);
        EXPECT_EQ(t.m_hasRotation, rotation) << a.m_matrix[0];
        EXPECT_EQ(a.HasRotation(), rotation) << a.m_matrix[0];
        EXPECT_EQ(t.m_hasReflection, reflection) << a.m_matrix[0];
        EXPECT_EQ(plan.m_hasReflection, reflection) << a.m_matrix[0];
        EXPECT_EQ(plan.m_hasRotation, in_plane) << a.m_matrix[0];
    }
    EXPECT_EQ(With(kOne, 3, 1).HasRotation(), 1) << "what doesn't convert may well rotate";
    GVector angles = {7, 7, 7};
    G4x4 bad = With(kOne, 15, 0);
    EXPECT_EQ(GetRotationAngles(bad, &angles.m_x, &angles.m_y, &angles.m_z), 2);
    EXPECT_EQ(Numbers(angles), Numbers(GVector{}));
}

}  // namespace
}  // namespace kvgeom::test
