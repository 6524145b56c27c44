// SPDX-License-Identifier: MIT
#include "tests/support/messages.h"
#include "tests/support/records.h"

#include <gtest/gtest.h>

namespace kvgeom::test {
namespace {

constexpr const char* kPointWeight = "GPosition: in multiplying G4x4, trying to divide by 0.0";
constexpr const char* kVectorWeight = "GVector: multiplying by G4x4, trying to divide by 0.0";
constexpr const char* kShear = "GUnitVector: multiplying by trans, trans has Shear";

// No two elements alike, and far from symmetric.
constexpr GMatrix kM = {{{2, 3, 5}, {7, 11, 13}, {17, 19, 23}}};
constexpr G4x4 kA = {{2, 3, 5, 7, 11, 13, 17, 19, 23, 29, 31, 37, 41, 43, 47, 53}};

G4x4 IdentityWith(int index, double value) {
    G4x4 a = {{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}};
    a.m_matrix[index] = value;
    return a;
}

TEST(Mapping, ByMatrixIsTheRowFormAndMatrixFirstTheColumnForm) {
    GPosition p = {1, 10, 100};
    p *= kM;
    EXPECT_EQ(Numbers(p), Numbers(GPosition{1772, 2013, 2435}));
    GVector v = {1, 10, 100};
    v *= kM;
    EXPECT_EQ(Numbers(v), Numbers(GVector{1772, 2013, 2435}));
    const GUnitVector row = BuildUnitVector(7, 11, 13);
    EXPECT_EQ(Bits(kY * kM), Bits(row));
    GUnitVector u = kY;
    u *= kM;
    EXPECT_EQ(Bits(u), Bits(row));
    EXPECT_EQ(Bits(kM * kY), Bits(BuildUnitVector(3, 11, 19)));
}

TEST(Mapping, ByTransformationScalesBeforeItTranslatesAndMovesNoVector) {
    const GTransf t = BuildTransf(kM, {1000, 2000, 3000}, 2, 1, 0, 0);
    EXPECT_EQ(Numbers(GPosition{1, 10, 100} * t), Numbers(GPosition{4544, 6026, 7870}));
    EXPECT_EQ(Numbers(GVector{1, 10, 100} * t), Numbers(GVector{3544, 4026, 4870}));
    EXPECT_EQ(Bits(kZ * t), Bits(BuildUnitVector(17, 19, 23)));

    GPosition p = {1, 10, 100};
    GVector v = {1, 10, 100};
    GUnitVector u = kZ;
    p *= t;
    v *= t;
    u *= t;
    EXPECT_EQ(Numbers(p), Numbers(GPosition{4544, 6026, 7870}));
    EXPECT_EQ(Numbers(v), Numbers(GVector{3544, 4026, 4870}));
    EXPECT_EQ(Bits(u), Bits(kZ * t));
}

TEST(Mapping, OfUnitVectorsReportsShearAndNullImages) {
    MessageRecorder recorder;
    const GTransf sheared = BuildTransf(kM, {0, 0, 0}, 2, 1, 0, 1);
    EXPECT_EQ(Bits(kX * sheared), Bits(BuildUnitVector(2, 3, 5)));
    EXPECT_EQ(recorder.Take(), Messages{kShear});
    const GTransf null = BuildTransf({}, {0, 0, 0}, 0, 0, 0, 1);
    EXPECT_EQ(Bits(kX * null), Bits(GUnitVector{0, 0, 0}));
    EXPECT_EQ(recorder.Take(), (Messages{kShear, kNullUnitVector}));
    EXPECT_EQ(Bits(kX ^ null), Bits(GUnitVector{0, 0, 0}));
    EXPECT_EQ(recorder.Take(), (Messages{"GTransf: m_scaling is 0.0", kShear, kNullUnitVector}));
}

TEST(Mapping, ByHomogeneousMatrixIsTheRowFormWithTheMatrixFirst) {
    const GPosition p = {1, 10, 100};
    const GVector v = {1, 10, 100};
    const double row_weight = 7 + 190 + 3700 + 53;
    const double column_weight = 41 + 430 + 4700 + 53;
    const GPosition row = {2453 * (1 / row_weight), 3076 * (1 / row_weight),
                           3322 * (1 / row_weight)};
    const GPosition column = {539 * (1 / column_weight), 1860 * (1 / column_weight),
                              3450 * (1 / column_weight)};
    EXPECT_EQ(Bits(kA * p), Bits(row));
    EXPECT_EQ(Bits(p * kA), Bits(column));
    GPosition q = p;
    q *= kA;
    EXPECT_EQ(Bits(q), Bits(row));

    // Without the translation, but with the weight of the point.
    EXPECT_EQ(Bits(kA * v), Bits(GVector{2412 * (1 / row_weight), 3033 * (1 / row_weight),
                                         3275 * (1 / row_weight)}));
    EXPECT_EQ(Bits(v * kA), Bits(GVector{532 * (1 / column_weight), 1841 * (1 / column_weight),
                                         3413 * (1 / column_weight)}));
    GVector w = v;
    w *= kA;
    EXPECT_EQ(Bits(w), Bits(kA * v));

    GUnitVector u = kY;
    u *= kA;
    EXPECT_LT(Distance(u, BuildUnitVector(11, 13, 17)), 1e-15);
    EXPECT_LT(Distance(kA * kY, u), 1e-15);
    EXPECT_LT(Distance(kY * kA, BuildUnitVector(3, 13, 29)), 1e-15);
}

TEST(Mapping, ByHomogeneousMatrixGuardsTheWeight) {
    MessageRecorder recorder;
    EXPECT_EQ(Bits(IdentityWith(15, -1) * kZ), Bits(GUnitVector{-0.0, -0.0, -1}));
    EXPECT_EQ(Numbers(IdentityWith(15, DBL_EPSILON) * GPosition{DBL_EPSILON, 0, 0}),
              Numbers(GPosition{1, 0, 0}));
    EXPECT_EQ(recorder.Take(), Messages{});
    for (const double weight : {0.0, -Down(DBL_EPSILON), Down(DBL_EPSILON), kNaN}) {
        const G4x4 a = IdentityWith(15, weight);
        EXPECT_EQ(Bits(a * GPosition{2, -3, 0}), Bits(GPosition{2 * kBig, -3 * kBig, 0}));
        EXPECT_EQ(Bits(GPosition{2, -3, 0} * a), Bits(GPosition{2 * kBig, -3 * kBig, 0}));
        EXPECT_EQ(recorder.Take(), (Messages{kPointWeight, kPointWeight}));
        EXPECT_EQ(Bits(a * GVector{2, -3, 0}), Bits(GVector{2 * kBig, -3 * kBig, 0}));
        // 1e30 squared is no overflow: the direction survives.
        EXPECT_NEAR((GUnitVector{0.6, 0, -0.8} * a).m_z, -0.8, 1e-15);
        EXPECT_EQ(recorder.Take(), (Messages{kVectorWeight, kVectorWeight}));
    }
    // The weight is the one of the vector's end, so it may vanish where the matrix itself has one.
    EXPECT_EQ((IdentityWith(3, -1) * GVector{1, 0, 0}).m_x, kBig);
    EXPECT_EQ(recorder.Take(), Messages{kVectorWeight});
}

TEST(Mapping, InverseUndoesSimilarities) {
    Random random(12);
    for (int i = 0; i < 3000; ++i) {
        const GTransf t = random.Similarity();
        const GPosition p = random.Point();
        const GVector v = random.Vector();
        const GUnitVector u = random.Direction();
        EXPECT_LT(Distance((p * t) ^ t, p), 1e-12);
        EXPECT_LT(Distance((v * t) ^ t, v), 1e-12);
        EXPECT_LT(Distance((u * t) ^ t, u), 1e-13);
        // All three kinds of map agree on what they all can say.
        G4x4 a;
        a = t;
        EXPECT_LT(Distance(a * p, p * t), 1e-12);
        EXPECT_LT(Distance(a * v, v * t), 1e-12);
        EXPECT_LT(Distance(a * u, u * t), 1e-13);
    }
}

}  // namespace
}  // namespace kvgeom::test
