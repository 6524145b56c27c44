// SPDX-License-Identifier: MIT

// What the records of the plane do otherwise than their twins in space, and the way between the
// two. What they do alike is tested in plane_laws_test.cpp.

#include "tests/support/messages.h"
#include "tests/support/records.h"

#include <gtest/gtest.h>

namespace kvgeom::test {
namespace {

const char* const kNullUnitVector2d = "GUnitVector2d: tried to create a NULL unit vector";

TEST(PlanarComponents, AreReadAndWrittenByIndexAndTheLastStandsForAllBeyond) {
    MessageRecorder recorder;
    const auto check = [&recorder](auto record, const char* message) {
        record[0] = 5;
        record[1] = 6;
        const auto copy = record;
        EXPECT_EQ(Numbers(copy), (std::vector<double>{5, 6}));
        EXPECT_EQ(copy[0] + 10 * copy[1], 65);
        EXPECT_EQ(recorder.Take(), Messages{});
        EXPECT_EQ(copy[2], 6);
        record[0xFFFFFFFFU] = 8;
        EXPECT_EQ(record.m_y, 8);
        EXPECT_EQ(recorder.Take(), (Messages{message, message}));
    };
    check(GVector2d{}, "GVector2d: index is out of range");
    check(GUnitVector2d{}, "GVector2d: index is out of range");
    check(GPosition2d{}, "GPosition2d: index out of bounds");
}

TEST(BuildUnitVector2d, WithAToleranceHasANarrowerBandAndAStrictBound) {
    const double between = std::sqrt(1 + 20 * DBL_EPSILON);
    const struct {
        double x;
        double tol;
        double plane;  // the x that is built, 0 for a refusal
        double space;
    } rows[] = {
        {0.5, 0.5, 1, 0},
        {0.5, Up(0.5), 0, 0},
        {0.5, Down(0.5), 1, 1},
        {between, 1e-6, between * (1 / between), between},
        {-between, 1e-6, -between * (1 / between), -between},
        {Down(1), 2, Down(1), Down(1)},
        {Down(Down(1)), 2, 0, Down(Down(1))},
        {1, 2, 1, 1},
        {0, 0, 0, 0},
        {0, -1, 0, 0},
        {1e-20, 0, 1, 1},
    };
    ASSERT_NE(between * (1 / between), between);
    MessageRecorder recorder;
    for (const auto& row : rows) {
        long err = 77;
        const GUnitVector2d u = BuildUnitVector2d(0, row.x, row.tol, &err);
        EXPECT_EQ(Bits(u), Bits(GUnitVector2d{0, row.plane})) << row.x << ", " << row.tol;
        EXPECT_EQ(err, row.plane == 0 ? 2 : 0);
        EXPECT_EQ(recorder.Take(), row.plane == 0 ? Messages{kNullUnitVector2d} : Messages{});
        EXPECT_EQ(BuildUnitVector(0, row.x, 0, row.tol, &err).m_y, row.space) << row.x;
        EXPECT_EQ(err, row.space == 0 ? 2 : 0);
        recorder.Take();
    }
    EXPECT_EQ(BuildUnitVector2d(between, 0).m_x, between);
}

TEST(GUnitVector2d, IsNullForLackOfLength) {
    MessageRecorder recorder;
    const GUnitVector2d null = {0, 0};
    GUnitVector2d u = {1, 0};
    EXPECT_EQ(Bits(BuildUnitVector2d(1e-15, -1e-15)), Bits(null));
    EXPECT_EQ(Bits(BuildUnitVector2d({3, 4}, {3, 4})), Bits(null));
    EXPECT_EQ(Bits(GetPerpVector2d(null)), Bits(null));
    EXPECT_EQ(Bits(u -= {1, 0}), Bits(null));
    EXPECT_EQ(Bits(GMatrix2d{{{0, 0}, {0, 1}}} * GUnitVector2d{1, 0}), Bits(null));
    EXPECT_EQ(recorder.Take(), Messages(5, kNullUnitVector2d));
}

TEST(GVector2d, AnglesAreSignedAndPerpendicularsTurnLeft) {
    const struct {
        GVector2d a;
        GVector2d b;
        double angle;
    } rows[] = {{{1, 0}, {0, 1}, kPi / 2},   {{0, 1}, {1, 0}, -kPi / 2}, {{2, 0}, {-3, 0}, kPi},
                {{1, 1}, {1, -1}, -kPi / 2}, {{0, 0}, {1, 0}, 0},        {{0, 1}, {1e-15, 0}, 0}};
    for (const auto& row : rows) {
        EXPECT_DOUBLE_EQ(GiveAngle(row.a, row.b), row.angle);
    }
    EXPECT_EQ(Numbers(GetPerpVector2d({1, 0})), (std::vector<double>{0, 1}));
    EXPECT_EQ(Numbers(GetPerpVector2d({0, 1})), (std::vector<double>{-1, 0}));
}

TEST(GVector2d, DivisionByNearZeroGoesToInfinityBySign) {
    MessageRecorder recorder;
    GVector2d v = {2, -4};
    EXPECT_EQ(Numbers(v / DBL_EPSILON), Numbers(GVector2d{2 / DBL_EPSILON, -4 / DBL_EPSILON}));
    EXPECT_EQ(recorder.Take(), Messages{});
    EXPECT_EQ(Numbers(v / -Down(DBL_EPSILON)), Numbers(GVector2d{kBig, -kBig}));
    EXPECT_EQ(Numbers((v = {0, 1}) /= kNaN), Numbers(GVector2d{-kBig, kBig}));
    EXPECT_EQ(recorder.Take(), Messages(2, "GVector2d: trying to divide by 0.0"));
}

TEST(PlanarPoints, AreMovedAndDottedFromEitherSide) {
    const GVector2d v = {4, 5};
    GPosition2d p = {2, 3};
    EXPECT_EQ(p % v, 23);
    EXPECT_EQ(v % p, 23);
    EXPECT_EQ(Numbers(p + v), (std::vector<double>{6, 8}));
    EXPECT_EQ(Numbers(v + p), (std::vector<double>{6, 8}));
    EXPECT_EQ(Numbers(p - v), (std::vector<double>{-2, -2}));
    EXPECT_EQ(Numbers(p += v), (std::vector<double>{6, 8}));
    EXPECT_EQ(Numbers(p -= v), (std::vector<double>{2, 3}));
}

TEST(Convert2d, ReportsWhatLiesOffThePlane) {
    const double z = Up(1e-6);
    MessageRecorder recorder;
    const auto check = [&recorder](const auto& near, const auto& far, const char* message) {
        EXPECT_EQ(Numbers(near.Convert2d()), (std::vector<double>{1, 2}));
        EXPECT_EQ(recorder.Take(), Messages{});
        EXPECT_EQ(Numbers(far.Convert2d()), (std::vector<double>{1, 2}));
        EXPECT_EQ(recorder.Take(), Messages{message});
    };
    check(GVector{1, 2, -1e-6}, GVector{1, 2, z}, "Convert2d: Gvector z coordinate greater 0.0");
    check(GPosition{1, 2, 1e-6}, GPosition{1, 2, -z},
          "Convert2d: GPosition z coordinate > distanceTolerance");
    EXPECT_EQ(Numbers(GUnitVector{0.6, 0, 0.8}.Convert2d()), (std::vector<double>{1, 0}));
    EXPECT_EQ(recorder.Take(), Messages{"Convert2d: GUnitvector z coordinate greater 0.0"});
    EXPECT_EQ(Numbers(GUnitVector{0, 0, 1}.Convert2d()), (std::vector<double>{0, 0}));
    EXPECT_EQ(recorder.Take(),
              (Messages{"Convert2d: GUnitvector z coordinate greater 0.0", kNullUnitVector2d}));
    EXPECT_EQ(Numbers(GUnitVector{0, 1, 1e-6}.Convert2d()), (std::vector<double>{0, 1}));
    EXPECT_EQ(recorder.Take(), Messages{});
}

TEST(PlanarMapping, ByMatrixIsTheRowFormAndMatrixFirstTheColumnForm) {
    const GMatrix2d m = {{{2, 3}, {5, 7}}};
    const std::vector<double> row = {1 * 2 + 10 * 5, 1 * 3 + 10 * 7};
    const std::vector<double> column = {2 * 1 + 3 * 10, 5 * 1 + 7 * 10};
    GPosition2d p = {1, 10};
    GVector2d v = {1, 10};
    EXPECT_EQ(Numbers(p * m), row);
    EXPECT_EQ(Numbers(m * p), column);
    EXPECT_EQ(Numbers(p *= m), row);
    EXPECT_EQ(Numbers(v * m), row);
    EXPECT_EQ(Numbers(m * v), column);
    EXPECT_EQ(Numbers(v *= m), row);

    const GMatrix2d turn = {{{0, 1}, {-1, 0}}};
    GUnitVector2d u = {1, 0};
    EXPECT_EQ(Numbers(u * turn), (std::vector<double>{0, 1}));
    EXPECT_EQ(Numbers(turn * u), (std::vector<double>{0, -1}));
    EXPECT_EQ(Numbers(u *= turn), (std::vector<double>{0, 1}));
}

// Unlike points and vectors, unit vectors go back by the transposed matrix: a scaling that can't be
// inverted is none of their business.
TEST(PlanarMapping, OfUnitVectorsReportsShearAndNeverInverts) {
    GTransf2d t = BuildTransf2d({{{0, 1}, {-1, 0}}}, {1, 2}, 0, 1, 0, 1);
    const Messages shear = {"GUnitVector2d: transformation has Shear"};
    MessageRecorder recorder;
    GUnitVector2d u = {1, 0};
    EXPECT_EQ(Numbers(u * t), (std::vector<double>{0, 1}));
    EXPECT_EQ(recorder.Take(), shear);
    EXPECT_EQ(Numbers(u ^ t), (std::vector<double>{0, -1}));
    EXPECT_EQ(recorder.Take(), shear);
    EXPECT_EQ(Numbers(u *= t), (std::vector<double>{0, 1}));
    EXPECT_EQ(recorder.Take(), shear);
    t.m_hasShear = 0;
    EXPECT_EQ(Numbers(u ^ t), (std::vector<double>{1, 0}));
    EXPECT_EQ(recorder.Take(), Messages{});
    EXPECT_EQ(Numbers(GPosition2d{1, 2} ^ t), (std::vector<double>{0, 0}));
    EXPECT_EQ(recorder.Take(), Messages{"GTransf: m_scaling is 0.0"});
}

TEST(PlanarMapping, ByHomogeneousMatrixDropsZAndGuardsTheWeight) {
    const G4x4 swap_y_z = {{1, 0, 0, 0, 0, 0, 1, 0, 0, 1, 0, 0, 0, 0, 0, 1}};
    const G4x4 moved = {{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 5, 6, 0, 1}};
    const auto weighted = [](double w) {
        return G4x4{{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, w}};
    };
    MessageRecorder recorder;
    GPosition2d p = {1, 1};
    EXPECT_EQ(Numbers(swap_y_z * GPosition2d{2, 3}), (std::vector<double>{2, 0}));
    EXPECT_EQ(Numbers(moved * p), (std::vector<double>{6, 7}));
    EXPECT_EQ(Numbers(p * moved), (std::vector<double>{1.0 / 12, 1.0 / 12}));
    EXPECT_EQ(Numbers(p *= moved), (std::vector<double>{6, 7}));
    EXPECT_EQ(Numbers(weighted(-DBL_EPSILON) * GPosition2d{1, 2}),
              (std::vector<double>{-1 / DBL_EPSILON, -2 / DBL_EPSILON}));
    EXPECT_EQ(recorder.Take(), Messages{});
    EXPECT_EQ(Numbers(weighted(-Down(DBL_EPSILON)) * GPosition2d{1, -2}),
              (std::vector<double>{kBig, -2 * kBig}));
    EXPECT_EQ(Numbers(GPosition2d{1, -2} * weighted(0)), (std::vector<double>{kBig, -2 * kBig}));
    EXPECT_EQ(recorder.Take(),
              Messages(2, "GPosition2d: in multiplying G4x4, trying to divide by 0.0"));
}

}  // namespace
}  // namespace kvgeom::test
