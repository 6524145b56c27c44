// SPDX-License-Identifier: MIT
#include "tests/support/messages.h"
#include "tests/support/records.h"

#include <gtest/gtest.h>

namespace kvgeom::test {
namespace {

constexpr double kW = 50 * DBL_EPSILON;

TEST(Components, AreReadAndWrittenByIndexAndTheLastStandsForAllBeyond) {
    MessageRecorder recorder;
    const auto check = [&recorder](auto record, const char* message) {
        record[0] = 5;
        record[1] = 6;
        record[2] = 7;
        const auto copy = record;
        EXPECT_EQ(Numbers(copy), (std::vector<double>{5, 6, 7}));
        EXPECT_EQ(copy[0] + 10 * copy[1] + 100 * copy[2], 765);
        EXPECT_EQ(recorder.Take(), Messages{});
        EXPECT_EQ(copy[3], 7);
        record[0xFFFFFFFFU] = 8;
        EXPECT_EQ(record.m_z, 8);
        EXPECT_EQ(recorder.Take(), (Messages{message, message}));
    };
    check(GVector{}, "GVector: index is out of range");
    check(GUnitVector{}, "GVector: index is out of range");
    check(GPosition{}, "GPosition: index out of bounds");
}

TEST(BuildUnitVector, NormalisesKeepsTheUnitBandAndRefusesNullLengths) {
    const double in_band = std::sqrt(1 + 40 * DBL_EPSILON);
    const struct {
        GVector v;
        GUnitVector expected;
        bool refused;
    } rows[] = {
        {{0, 0, 0}, {0, 0, 0}, true},
        {{1e-14, 0, 0}, {0, 0, 0}, true},
        {{0, kW, 0}, {0, 0, 0}, true},
        {{0, 0, -2e-14}, {0, 0, -1}, false},
        {{3, 4, 0}, {3 * (1 / 5.0), 4 * (1 / 5.0), 0}, false},
        {{in_band, 0, 0}, {in_band, 0, 0}, false},
        {{0, 1 + 40 * DBL_EPSILON, 0},
         {0, (1 + 40 * DBL_EPSILON) * (1 / (1 + 40 * DBL_EPSILON)), 0},
         false},
        {{1e200, 0, -1e200}, {0, 0, -0.0}, false},
    };
    MessageRecorder recorder;
    for (const auto& row : rows) {
        const auto& [x, y, z] = row.v;
        const Messages messages = row.refused ? Messages{kNullUnitVector} : Messages{};
        EXPECT_EQ(Bits(BuildUnitVector(x, y, z)), Bits(row.expected)) << x << " " << y << " " << z;
        EXPECT_EQ(recorder.Take(), messages);
        long err = 77;
        EXPECT_EQ(Bits(BuildUnitVector(x, y, z, kW, &err)), Bits(row.expected));
        EXPECT_EQ(err, row.refused ? 2 : 0);
        EXPECT_EQ(recorder.Take(), messages);
    }
}

TEST(BuildUnitVector, TakesTheNullLengthFromTheCaller) {
    const struct {
        double x;
        double tol;
        long expected;
    } rows[] = {{1e-6, 1e-6, 2}, {1e-7, 1e-6, 2}, {Up(1e-6), 1e-6, 0}, {1.0, 5.0, 0}, {0.0, 0.0, 2},
                {0.0, -1.0, 2},  {1e-20, 0.0, 0}, {1e-20, -1.0, 0},    {2.0, 5.0, 2}};
    for (const auto& row : rows) {
        long err = 77;
        const GUnitVector u = BuildUnitVector(row.x, 0, 0, row.tol, &err);
        EXPECT_EQ(err, row.expected) << row.x << ", " << row.tol;
        EXPECT_NEAR(u.m_x, row.expected == 0 ? 1 : 0, 1e-15);
    }
}

TEST(BuildUnitVector, PointsFromTheFirstPointToTheSecond) {
    EXPECT_EQ(Bits(BuildUnitVector({1, 2, 3}, {1, 2, -5})), Bits(GUnitVector{0, 0, -1}));
}

TEST(UnitVector, SumsAreNormalised) {
    MessageRecorder recorder;
    GUnitVector u = {0, 0, 1};
    u += GVector{0, 0, -1};
    EXPECT_EQ(Bits(u), Bits(GUnitVector{0, 0, 0}));
    EXPECT_EQ(recorder.Take(), Messages{kNullUnitVector});
    u = kX;
    u -= GVector{1, 0, 4};
    EXPECT_EQ(Bits(u), Bits(GUnitVector{0, 0, -1}));
    u += u;
    EXPECT_EQ(Bits(u), Bits(GUnitVector{0, 0, -1}));
}

TEST(Vector, NullnessGoesByComponentsAndLength) {
    const struct {
        GVector v;
        double tol;
        int expected;
    } rows[] = {
        {{5e-7, -5e-7, 5e-7}, 1e-6, 1}, {{8e-7, 8e-7, 0}, 1e-6, 0}, {{0, -1e-6, 0}, 1e-6, 1},
        {{0, 0, Up(1e-6)}, 1e-6, 0},    {{0, 0, 0}, 0, 1},          {{0, 0, 1e-200}, 0, 0},
        {{0, 0, 0}, -1e-6, 0},          {{0, kNaN, 0}, 1, 0},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(row.v.IsNull(row.tol), row.expected) << row.v.m_x << " " << row.tol;
    }
    EXPECT_EQ((GVector{0, kW, 0}.IsNull()), 1);
    EXPECT_EQ((GVector{0, -Up(kW), 0}.IsNull()), 0);
    EXPECT_EQ((GVector{0.8 * kW, 0, 0.8 * kW}.IsNull()), 0);
    // A unit vector goes by the distance tolerance, strictly, and by no length.
    EXPECT_EQ((GUnitVector{9.9e-7, -9.9e-7, 9.9e-7}.IsNull()), 1);
    EXPECT_EQ((GUnitVector{0, 0, -1e-6}.IsNull()), 0);
}

TEST(Vector, EqualityWantsDifferenceAndDirection) {
    const struct {
        GVector v;
        GVector w;
        int expected;
    } rows[] = {
        {{1000, 0, 0}, {1000, 9e-7, 0}, 0},  // near enough, but turned by 9e-10
        {{1, 0, 0}, {1, 1e-11, 0}, 1},
        {{0, 9e-7, 0}, {0, 0, -9e-7}, 1},  // both shorter than the distance tolerance
        {{0, 9e-7, 0}, {0, 1e-6, 0}, 0},   // only one is
        {{0, 1e-6, 0}, {0, 9e-7, 0}, 0},
        {{0, 0, 3}, {0, 0, 3 + 9e-7}, 1},
        {{0, 0, 3}, {0, 0, 3 + 1.1e-6}, 0},
        {{1, 2, 3}, {-1, -2, -3}, 0},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(row.v.IsEqual(row.w), row.expected) << row.v.m_x << " " << row.w.m_y;
    }
    EXPECT_EQ(kX.IsEqual({1, 1e-10, 0}), 1);
    EXPECT_EQ(kX.IsEqual({1, Up(1e-10), 0}), 0);
}

TEST(Vector, ColinearityAndOrthogonalityAreStrictAndNullVectorsAreBoth) {
    const GVector turned = {1, 0, 2e-10};
    const GVector hardly = {1, 0, 0.9e-10};
    MessageRecorder recorder;
    EXPECT_EQ((GVector{3, 0, 0}.IsColinear({-5, 0, 0})), 1);
    EXPECT_EQ((GVector{3, 0, 0}.IsColinear(turned)), 0);
    EXPECT_EQ(kX.IsColinear(hardly), 1);
    EXPECT_EQ((GVector{0, 0, 7}.IsOrthogonal(turned)), 0);
    EXPECT_EQ(kZ.IsOrthogonal(hardly), 1);
    EXPECT_EQ(kZ.IsOrthogonal({1, 0, 1e-10}), 0);
    EXPECT_EQ(recorder.Take(), Messages{});
    EXPECT_EQ((GVector{0, 0, 0}.IsColinear({1, 2, 3})), 1);
    EXPECT_EQ((GVector{1, 2, 3}.IsOrthogonal({0, 0, 0})), 1);
    EXPECT_EQ(recorder.Take(), (Messages{kNullUnitVector, kNullUnitVector}));
    // A unit vector is taken as it is stored.
    EXPECT_EQ((GUnitVector{0, 0, 1e-11}.IsColinear({1, 0, 0})), 1);
}

TEST(Vector, DivisionByNearZeroGoesToInfinityBySign) {
    MessageRecorder recorder;
    GVector v = {-1, 0, 2};
    EXPECT_EQ(Bits(v / -4.0), Bits(GVector{0.25, -0.0, -0.5}));
    EXPECT_EQ(Bits(v / DBL_EPSILON), Bits(GVector{-1 / DBL_EPSILON, 0, 2 / DBL_EPSILON}));
    EXPECT_EQ(recorder.Take(), Messages{});
    for (const double d : {0.0, -1e-17, Down(DBL_EPSILON), kNaN}) {
        EXPECT_EQ(Bits(v / d), Bits(GVector{-kBig, -kBig, kBig}));
        EXPECT_EQ(recorder.Take(), Messages{"GVector: trying to divide by 0.0"});
    }
    v /= 0.0;
    EXPECT_EQ(Bits(v), Bits(GVector{-kBig, -kBig, kBig}));
}

TEST(Vector, AnglesAreAccurateAtBothEndsAndZeroForNullVectors) {
    EXPECT_EQ(GiveAngle({1, 0, 0}, {0, 2, 0}), kPi / 2);
    EXPECT_EQ(GiveAngle({1, 0, 0}, {-3, 0, 0}), kPi);
    EXPECT_DOUBLE_EQ(GiveAngle({1, 0, 0}, {1, 0, 1e-9}), 1e-9);
    EXPECT_DOUBLE_EQ(GiveAngle({0, 0, -2}, {0, 1e-9, 2}), kPi - 5e-10);
    EXPECT_EQ(GiveAngle({0, kW, 0}, {1, 0, 0}), 0);
    EXPECT_EQ(GiveAngle({1, 0, 0}, {0, 0, 0}), 0);
}

TEST(Vector, PerpendicularPrefersTheFirstOfTheSmallestComponents) {
    EXPECT_EQ(Bits(GetPerpVector(kX)), Bits(kY));
    EXPECT_EQ(Numbers(GetPerpVector(kY)), Numbers(kX));
    EXPECT_EQ(Numbers(GetPerpVector(kZ)), Numbers(kX));
    const double third = 1 / std::sqrt(3.0);
    const double sixth = 1 / std::sqrt(6.0);
    EXPECT_LT(Distance(GetPerpVector({third, third, third}), {2 * sixth, -sixth, -sixth}), 1e-15);
    EXPECT_LT(Distance(GetPerpVector({0, 30, -40}), kX), 1e-15);
}

TEST(Vector, TurnsPerpendicularKeepingItsLength) {
    const struct {
        GVector a;
        GVector b;
        GVector expected;
    } rows[] = {
        {{0, 0, 2}, {3, 0, 4}, {5, 0, 0}},
        {{0, 0, 2}, {0, 0, 7}, {7, 0, 0}},  // parallel
        // |a|^2 |b| decides, above and below the tolerance: below, the direction is chosen anew.
        {{0, 0, 1e-3}, {0, 1.1, 0}, {0, 1.1, 0}},
        {{0, 0, 1e-3}, {0, 0.9, 0}, {0.9, 0, 0}},
        {{1, 0, 0}, {0, 0, 0}, {0, 0, 0}},
    };
    for (const auto& row : rows) {
        GVector b = row.b;
        ModifyOrthoVector(row.a, b);
        EXPECT_LT(Distance(b, row.expected), 1e-14) << row.b.m_x << row.b.m_y << row.b.m_z;
    }
    GUnitVector u = {0.6, 0, 0.8};
    ModifyOrthoVector({0, 0, 2}, u);
    EXPECT_LT(Distance(u, kX), 1e-15);
    GVector same = {0, 4, 0};
    ModifyOrthoVector(same, same);  // both arguments the same vector
    EXPECT_LT(Distance(same, {4, 0, 0}), 1e-15);
}

TEST(Vector, TurningPerpendicularHoldsForAllVectors) {
    Random random(11);
    for (int i = 0; i < 5000; ++i) {
        const GVector a = random.Vector();
        GVector b = random.Vector();
        const GVector before = b;
        ModifyOrthoVector(a, b);
        EXPECT_NEAR(b.GetLength(), before.GetLength(), 1e-13);
        EXPECT_NEAR(a % b, 0, 1e-11);
        EXPECT_NEAR((a * before) % b, 0, 1e-9) << "out of the plane of the two";
        EXPECT_GE(before % b, -1e-11) << "turned to the wrong side";
    }
}

TEST(Position, EqualityIsInclusiveAndNullIsFarAway) {
    const GPosition origin = {0, 0, 0};
    EXPECT_EQ(origin.IsEqual({5e-7, 5e-7, -5e-7}), 1);
    EXPECT_EQ(origin.IsEqual({8e-7, 0, 8e-7}), 0);
    EXPECT_EQ(origin.IsEqual({0, 1e-6, 0}), 1);
    EXPECT_EQ(origin.IsEqual({0, 0, Up(1e-6)}), 0);
    EXPECT_EQ(origin.IsEqual({0, kNaN, 0}), 0);
    EXPECT_EQ((GPosition{kBig, kBig, kBig}.IsNull()), 1);
    EXPECT_EQ((GPosition{kBig, kBig, Down(kBig)}.IsNull()), 0);
    EXPECT_EQ(origin.IsNull(), 0);
}

TEST(Position, InterpolatesAndExtrapolates) {
    const GPosition a = {0, 1, 0};
    const GPosition b = {4, 9, -4};
    EXPECT_EQ(Numbers(Interpolate(0.25, a, b)), Numbers(GPosition{1, 3, -1}));
    EXPECT_EQ(Numbers(Interpolate(-1, a, b)), Numbers(GPosition{-4, -7, 4}));
    EXPECT_EQ(Numbers(Interpolate(1, a, b)), Numbers(b));
    EXPECT_EQ(GDistance({1, 2, 3}, {3, 5, 9}), 7);
}

}  // namespace
}  // namespace kvgeom::test
