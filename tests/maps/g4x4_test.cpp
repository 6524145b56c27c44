// SPDX-License-Identifier: MIT
#include "tests/support/messages.h"
#include "tests/support/records.h"

#include <gtest/gtest.h>

namespace kvgeom::test {
namespace {

constexpr double kTol = 1e-10;

G4x4 Diagonal(double x, double y, double z, double w) {
    return {{x, 0, 0, 0, 0, y, 0, 0, 0, 0, z, 0, 0, 0, 0, w}};
}

G4x4 With(G4x4 a, int index, double value) {
    a.m_matrix[index] = value;
    return a;
}

const G4x4 kOne = Diagonal(1, 1, 1, 1);

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

TEST(G4x4, IsMadeOfATransformation) {
    const GMatrix m = {{{2, 3, 5}, {7, 11, 13}, {17, 19, 23}}};
    EXPECT_EQ(Numbers(Of(BuildTransf(m, {4, 5, 6}, 3, 1, 1, 1))),
              (std::vector<double>{6, 9, 15, 0, 21, 33, 39, 0, 51, 57, 69, 0, 4, 5, 6, 1}));
    const double elements[16] = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16};
    EXPECT_EQ(Numbers(Build4x4(elements)), std::vector<double>(elements, elements + 16));
}

TEST(G4x4, ProductsApplyTheRightOperandFirst) {
    const G4x4 shift = With(kOne, 12, 1);
    const G4x4 twice = Diagonal(2, 2, 2, 1);
    EXPECT_EQ(Numbers(shift * twice * GPosition{1, 0, 0}), Numbers(GPosition{3, 0, 0}));
    EXPECT_EQ(Numbers(twice * shift * GPosition{0, 0, 0}), Numbers(GPosition{2, 0, 0}));
    Random random(31);
    for (int i = 0; i < 1000; ++i) {
        const G4x4 a = random.Homogeneous();
        const G4x4 b = random.Homogeneous();
        const GTransf t = random.Similarity();
        G4x4 product = a;
        product *= b;
        EXPECT_EQ(Bits(product), Bits(a * b));
        product *= product;
        EXPECT_EQ(Bits(product), Bits((a * b) * (a * b)));
        product = a;
        product *= t;
        EXPECT_EQ(Bits(product), Bits(a * Of(t)));
        EXPECT_EQ(Bits(a * t), Bits(a * Of(t)));
        EXPECT_EQ(Bits(t * a), Bits(Of(t) * a));
        const G4x4 c = random.Affine();
        const G4x4 d = random.Affine();
        const GPosition p = random.Point();
        EXPECT_LT(Distance((c * d) * p, c * (d * p)), 1e-10);
    }
}

TEST(G4x4, InverseIsFoundBehindAnyPivotOrder) {
    MessageRecorder recorder;
    const G4x4 swap = {{0, 1, 0, 0, 1, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}};
    EXPECT_EQ(Numbers(swap.Inverse()), Numbers(swap));
    // A cycle of all four rows, with pivots of four sizes: its inverse is no symmetric matter.
    const G4x4 cycle = {{0, 2, 0, 0, 0, 0, 4, 0, 0, 0, 0, 8, 16, 0, 0, 0}};
    EXPECT_EQ(Numbers(cycle.Inverse()),
              (std::vector<double>{0, 0, 0, 0.0625, 0.5, 0, 0, 0, 0, 0.25, 0, 0, 0, 0, 0.125, 0}));
    EXPECT_EQ(Numbers(Diagonal(1e-19, 1, 1, 1).Inverse()), Numbers(Diagonal(1e19, 1, 1, 1)));
    EXPECT_EQ(recorder.Take(), Messages{});
    for (const G4x4& singular :
         {Diagonal(1e-21, 1, 1, 1), Diagonal(1, 1, 1, 0), G4x4{}, Diagonal(kNaN, 1, 1, 1)}) {
        EXPECT_EQ(Numbers(singular.Inverse()), Numbers(kOne));
        EXPECT_EQ(recorder.Take(), Messages{"Can't find inverse since the g4x4 is singular"});
    }
    Random random(32);
    for (int i = 0; i < 2000; ++i) {
        const G4x4 a = i % 2 == 0 ? random.Affine() : random.Homogeneous();
        const G4x4 inverse = a.Inverse();
        double size = 0;
        for (const double element : inverse.m_matrix) {
            size = std::max(size, std::fabs(element));
        }
        EXPECT_LT(Distance(a * inverse, kOne), 1e-13 * (1 + size * size));
        EXPECT_LT(Distance(inverse * a, kOne), 1e-13 * (1 + size * size));
    }
}

TEST(G4x4, EqualityDividesByTheWeights) {
    const G4x4 a = {{2, 3, 5, 0.5, 11, 13, 17, 0.25, 23, 29, 31, 0.125, 41, 43, 47, 2}};
    EXPECT_EQ(a.IsEqual(Times(a, 2)), 1);
    EXPECT_EQ(a.IsEqual(Times(a, -0.5)), 1);
    EXPECT_EQ(a.IsEqual(With(a, 15, 2.1)), 0);
    for (int i = 0; i < 15; ++i) {
        const double tol = i >= 12 ? 1e-6 : kTol;
        EXPECT_EQ(kOne.IsEqual(With(kOne, i, kOne.m_matrix[i] + 0.9 * tol)), 1) << i;
        EXPECT_EQ(kOne.IsEqual(With(kOne, i, kOne.m_matrix[i] - 1.1 * tol)), 0) << i;
        EXPECT_EQ(kOne.IsEqual(With(kOne, i, kNaN)), 0) << i;
    }
    EXPECT_EQ(Diagonal(1, 1, 1, 0).IsEqual(Diagonal(1, 1, 1, 0)), 0);
    EXPECT_EQ(kOne.IsEqual(Diagonal(1, 1, 1, -0.0)), 0);
}

TEST(G4x4, InvertibilityAndReflectionGoByTheDeterminant) {
    EXPECT_EQ(Diagonal(1e-10, 1e-10, 1e-10, 1).IsInvertible(), 0);
    EXPECT_EQ(Diagonal(1e-9, -1e-9, 1e-9, 1).IsInvertible(), 1);
    EXPECT_EQ(Diagonal(1, 1, 1, 1e-31).IsInvertible(), 0);
    EXPECT_EQ(Diagonal(1, 1, 1, 1e-29).IsValid(), 1);
    EXPECT_EQ(Diagonal(1, 1, 1, 0).IsValid(), 0);
    // The weight counts, the projective column doesn't.
    EXPECT_EQ(With(kOne, 3, 5).IsInvertible(), 1);
    const struct {
        G4x4 a;
        int expected;
    } rows[] = {
        {kOne, 0},
        {Diagonal(-1, 1, 1, 1), 1},
        {Diagonal(-1e-9, 1, 1, 1), 1},
        {Diagonal(-1e-11, 1, 1, 1), 0},  // first row shorter than the tolerance
        {Diagonal(-1, -1, 1, 1), 0},
        {Diagonal(1, 0, 1, 1), 1},  // singular
        {Diagonal(kNaN, 1, 1, 1), 0},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(row.a.HasReflection(), row.expected) << row.a.m_matrix[0];
    }
}

TEST(Conversion, AcceptsSimilaritiesAndNothingElse) {
    const G4x4 turned = Of(RotateTransf(0.3, kZ));
    const double shear = 0.6;
    const G4x4 sheared = {{1, shear, 0, 0, 0, 0.8, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}};
    const struct {
        const char* name;
        G4x4 a;
        bool accepted;
        double scaling;
    } rows[] = {
        {"identity", kOne, true, 1},
        {"whole multiple", Times(Of(ScaleTransf(3)), 4), true, 3},
        {"negative weight", Times(Of(ScaleTransf(3)), -4), true, 3},
        {"weight used as it is", With(turned, 15, 1 + 0.5 * kTol), true, 1},
        {"weight null", With(kOne, 15, 1e-12), false, 0},
        {"weight just not null", Diagonal(kTol, kTol, kTol, kTol), true, 1},
        {"weight NaN", With(kOne, 15, kNaN), false, 0},
        {"weight infinite", With(kOne, 15, kInf), false, 0},
        {"x projective", With(kOne, 3, 1e-9), false, 0},
        {"y projective", With(kOne, 7, -1e-9), false, 0},
        {"z projective", With(kOne, 11, kNaN), false, 0},
        {"projective within tolerance", With(turned, 3, 0.5 * kTol), true, 1},
        {"nearly uniform", Diagonal(1, 1, 1 + 6 * kTol, 1), true, (3 + 6 * kTol) / 3},
        {"y not uniform", Diagonal(1, 1 + 20 * kTol, 1, 1), false, 0},
        {"z not uniform", Diagonal(1, 1, 1 - 20 * kTol, 1), false, 0},
        {"two may differ by twice as much", Diagonal(1, 1 + 9 * kTol, 1 - 9 * kTol, 1), true, 1},
        {"too small", Diagonal(0.9 * kTol, 0.9 * kTol, 0.9 * kTol, 1), false, 0},
        {"small", Diagonal(1.1 * kTol, 1.1 * kTol, 1.1 * kTol, 1), true, 1.1 * kTol},
        {"null column", Diagonal(5 * kTol, 0, 5 * kTol, 1), false, 0},
        {"sheared", sheared, false, 0},
        {"NaN inside", With(kOne, 5, kNaN), false, 0},
        {"infinite inside", Diagonal(kInf, kInf, kInf, 1), false, 0},
    };
    MessageRecorder recorder;
    for (const auto& row : rows) {
        const GTransf before = BuildTransf({}, {7, 7, 7}, 77, 7, 7, 7);
        GTransf t = before;
        EXPECT_EQ(ConvertG4x4ToGTransf(row.a, t), row.accepted ? 0 : 2) << row.name;
        if (row.accepted) {
            EXPECT_DOUBLE_EQ(t.m_scaling, row.scaling) << row.name;
            EXPECT_EQ(t.m_hasShear, 0);
        } else {
            EXPECT_EQ(Bits(t), Bits(before)) << row.name;
            t = row.a;
            EXPECT_EQ(Bits(t), Bits(GTransf{})) << row.name;
        }
    }
    EXPECT_EQ(recorder.Take(), Messages{});
}

TEST(Conversion, TellsRotationsAndReflections) {
    const struct {
        G4x4 a;
        int rotation;
        int reflection;
    } rows[] = {
        {kOne, 0, 0},
        {Of(TranslateTransf({1, 2, 3})), 0, 0},
        {Of(ScaleTransf(2) * RotateTransf(0.3, kZ)), 1, 0},
        {Of(RotateTransf(1e-9, kY)), 1, 0},
        {Of(RotateTransf(1e-11, kY)), 0, 0},
        {Diagonal(-1, 1, 1, 1), 1, 1},  // read as half a turn
        {Diagonal(1, 1, -1, 1), 1, 1},
    };
    for (const auto& row : rows) {
        GTransf t;
        t = row.a;
        EXPECT_EQ(t.m_hasRotation, row.rotation);
        EXPECT_EQ(t.m_hasReflection, row.reflection);
        EXPECT_EQ(row.a.HasRotation(), row.rotation);
    }
    EXPECT_EQ(With(kOne, 3, 1).HasRotation(), 1) << "what doesn't convert may well rotate";

    GVector angles = {7, 7, 7};
    G4x4 bad = With(kOne, 15, 0);
    EXPECT_EQ(GetRotationAngles(bad, &angles.m_x, &angles.m_y, &angles.m_z), 2);
    EXPECT_EQ(Bits(angles), Bits(GVector{0, 0, 0}));
    G4x4 good = Of(RotateTransf(0.3, kX) * RotateTransf(0.2, kY) * ScaleTransf(5));
    EXPECT_EQ(GetRotationAngles(good, &angles.m_x, &angles.m_y, &angles.m_z), 0);
    EXPECT_LT(Distance(angles, {0.3, 0.2, 0}), 1e-15);
}

TEST(Conversion, ReturnsWhatATransformationWasMadeInto) {
    Random random(33);
    for (int i = 0; i < 2000; ++i) {
        const GTransf s = random.Similarity();
        GTransf t;
        EXPECT_EQ(ConvertG4x4ToGTransf(Times(Of(s), random.Uniform(0.5, 2)), t), 0);
        EXPECT_LT(Distance(t, s), 1e-13);
    }
}

}  // namespace
}  // namespace kvgeom::test
