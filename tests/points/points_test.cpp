// SPDX-License-Identifier: MIT

// What is promised of vectors, unit vectors, points and their maps at their edges, in space and
// where the plane differs.

#include "tests/support/messages.h"

#include <tuple>

namespace kvgeom::test {
namespace {

// The length up to which a vector has no direction, and the half-width of the unit band.
constexpr double kW = 50 * DBL_EPSILON;

TEST(Components, AreReadAndWrittenByIndexAndTheLastStandsForAllBeyond) {
    MessageRecorder recorder;
    const auto check = [&recorder](auto record, const char* message) {
        constexpr unsigned kLast = sizeof record / sizeof(double) - 1;
        const auto& constant = record;
        for (unsigned i = 0; i <= kLast; ++i) {
            record[i] = 5 + i;
            recorder.Expect(constant[i], {5.0 + i});
        }
        recorder.Expect(constant[kLast + 1], {5.0 + kLast}, {message});
        record[0xFFFFFFFFU] = 8;
        recorder.Expect(constant[kLast], {8}, {message});
    };
    check(GVector{}, "GVector: index is out of range");
    check(GUnitVector{}, "GVector: index is out of range");
    check(GPosition{}, "GPosition: index out of bounds");
    check(GVector2d{}, "GVector2d: index is out of range");
    check(GUnitVector2d{}, "GVector2d: index is out of range");
    check(GPosition2d{}, "GPosition2d: index out of bounds");
}

// In the plane the band that is kept is narrower where the caller gives the null length, and a
// length of just that isn't null.
TEST(BuildUnitVector, KeepsTheUnitBandBitForBitAndRefusesNullLengths) {
    const auto beyond_one = [](double ulps) { return std::sqrt(1 + ulps * DBL_EPSILON); };
    const auto divided = [](double x) { return x * (1 / x); };
    const double narrow = beyond_one(20);
    const double wide = beyond_one(40);
    const double out = beyond_one(60);
    ASSERT_TRUE(divided(narrow) != narrow && divided(wide) != wide && divided(out) != out);
    MessageRecorder recorder;
    const auto refusal = [](double built, const char* message) {
        return built == 0 ? Messages{message} : Messages{};
    };
    // The component, and what is built: 0 for a refusal.
    const std::pair<double, double> defaults[] = {
        {0, 0}, {kW, 0}, {Up(kW), 1}, {-Up(kW), -1}, {wide, wide}, {out, divided(out)},
    };
    for (const auto& [x, built] : defaults) {
        recorder.Expect(BuildUnitVector(0, x, 0), {0, built, 0}, refusal(built, kNullUnitVector));
        recorder.Expect(BuildUnitVector2d(x, 0), {built, 0}, refusal(built, kNullUnitVector2d));
    }
    recorder.Expect(BuildUnitVector(0, 1e200, 0), {0, 0, 0});
    // The component, the null length, and what is built in space and in the plane.
    const std::tuple<double, double, double, double> rows[] = {
        {0.5, 0.5, 0, 1},       {0.5, Up(0.5), 0, 0},
        {0.5, Down(0.5), 1, 1}, {narrow, 1e-6, narrow, divided(narrow)},
        {1, 2, 1, 1},           {Down(Down(1)), 2, Down(Down(1)), 0},
        {2, 5, 0, 0},           {0, -1, 0, 0},
        {1e-20, 0, 1, 1},       {1e-20, -1, 1, 1},
    };
    for (const auto& [x, tol, space, plane] : rows) {
        long err = 77;
        recorder.Expect(BuildUnitVector(0, 0, x, tol, &err), {0, 0, space},
                        refusal(space, kNullUnitVector));
        EXPECT_EQ(err, space == 0 ? 2 : 0) << x << ", " << tol;
        recorder.Expect(BuildUnitVector2d(0, x, tol, &err), {0, plane},
                        refusal(plane, kNullUnitVector2d));
        EXPECT_EQ(err, plane == 0 ? 2 : 0) << x << ", " << tol;
    }
}

TEST(UnitVector, IsNullForLackOfLength) {
    MessageRecorder recorder;
    GUnitVector u = kX;
    GUnitVector2d v = {1, 0};
    recorder.Expect(u += {-1, 0, 0}, {0, 0, 0}, {kNullUnitVector});
    recorder.Expect(BuildUnitVector({3, 4, 5}, {3, 4, 5}), {0, 0, 0}, {kNullUnitVector});
    recorder.Expect(v -= {1, 0}, {0, 0}, {kNullUnitVector2d});
    recorder.Expect(GetPerpVector2d({0, 0}), {0, 0}, {kNullUnitVector2d});
}

TEST(Vector, NullnessGoesByComponentsAndLengthInclusively) {
    const std::tuple<GVector, double, int> rows[] = {
        {{0, -1e-6, 0}, 1e-6, 1}, {{0, 0, Up(1e-6)}, 1e-6, 0},   {{8e-7, 0, 8e-7}, 1e-6, 0},
        {{0, 0, 0}, 0, 1},        {{0, 0, 1e-200}, 0, 0},        {{0, 0, 0}, -1e-6, 0},
        {{0, kNaN, 0}, 1, 0},     {{0.8 * kW, kW, 0}, 2 * kW, 1}};
    for (const auto& [v, tol, expected] : rows) {
        EXPECT_EQ(v.IsNull(tol), expected) << v.m_x << " " << v.m_y << " " << v.m_z << " " << tol;
    }
    EXPECT_EQ((GVector{0, kW, 0}.IsNull()), 1);
    EXPECT_EQ((GVector{0, -Up(kW), 0}.IsNull()), 0);
    // A unit vector goes by the distance tolerance, strictly, and by no length.
    EXPECT_EQ((GUnitVector{9.9e-7, -9.9e-7, 9.9e-7}.IsNull()), 1);
    EXPECT_EQ((GUnitVector{0, 0, -1e-6}.IsNull()), 0);
}

TEST(Vector, EqualityWantsDifferenceAndDirection) {
    const std::tuple<GVector, GVector, int> rows[] = {
        {{1000, 0, 0}, {1000, 9e-7, 0}, 0},  // near enough, but turned by 9e-10
        {{0, 9e-7, 0}, {0, 0, -9e-7}, 1},    // both shorter than the distance tolerance
        {{0, 9e-7, 0}, {0, 1e-6, 0}, 0},     // only one is
        {{0, 1e-6, 0}, {0, 9e-7, 0}, 0},
        {{0, 0, 1e-6}, {0, 0, 2e-6}, 1},  // a difference of just the tolerance
        {{0, 0, 1e-6}, {0, 0, Up(2e-6)}, 0},
    };
    for (const auto& [v, w, expected] : rows) {
        EXPECT_EQ(v.IsEqual(w), expected) << v.m_x << " " << w.m_y << " " << w.m_z;
    }
    EXPECT_EQ(kX.IsEqual({1, 1e-10, 0}), 1);
    EXPECT_EQ(kX.IsEqual({1, Up(1e-10), 0}), 0);
}

TEST(Vector, ColinearityAndOrthogonalityAreStrictAndNullVectorsAreBoth) {
    const GVector null = {0, 0, 0};
    const GVector v = {1, 2, 3};
    MessageRecorder recorder;
    recorder.Expect(kX.IsColinear({1, 0, 1e-10}), {0});
    recorder.Expect(kX.IsColinear({-1, 0, Down(1e-10)}), {1});
    recorder.Expect(kZ.IsOrthogonal({1, 0, -1e-10}), {0});
    recorder.Expect(kZ.IsOrthogonal({1, 0, Down(1e-10)}), {1});
    // A unit vector is taken as it is stored.
    recorder.Expect(GUnitVector{0, 0, 1e-11}.IsColinear({1, 0, 0}), {1});
    recorder.Expect(null.IsColinear(v), {1}, {kNullUnitVector});
    recorder.Expect(v.IsOrthogonal(null), {1}, {kNullUnitVector});
    recorder.Expect(GVector2d{0, 0}.IsColinear({1, 2}), {1}, {kNullUnitVector2d});
}

TEST(Vector, DivisionByNearZeroGoesToInfinityBySign) {
    const Messages messages = {"GVector: trying to divide by 0.0"};
    const Messages planar = {"GVector2d: trying to divide by 0.0"};
    MessageRecorder recorder;
    GVector v;
    for (const double d : {0.0, -1e-17, -Down(DBL_EPSILON), Down(DBL_EPSILON), kNaN}) {
        recorder.Expect(GVector{-1, 0, 2} / d, {-kBig, -kBig, kBig}, messages);
        recorder.Expect((v = {0, 3, -1}) /= d, {-kBig, kBig, -kBig}, messages);
        recorder.Expect(GVector2d{2, 0} / d, {kBig, -kBig}, planar);
    }
    const double least = DBL_EPSILON;
    recorder.Expect(GVector{-1, 0, 2} / least, {-1 / least, 0, 2 / least});
    recorder.Expect(GVector2d{2, -4} / -least, {-2 / least, 4 / least});
}

TEST(Vector, AnglesAreZeroForNullVectorsAndSignedInThePlane) {
    EXPECT_EQ(GiveAngle({0, kW, 0}, {1, 0, 0}), 0);
    EXPECT_DOUBLE_EQ(GiveAngle(GVector2d{0, 1}, {1, 0}), -kPi / 2);
    EXPECT_EQ(GiveAngle(GVector2d{0, 1}, {kW, 0}), 0);
}

TEST(Vector, PerpendicularPrefersTheFirstOfTheSmallestComponents) {
    const double third = 1 / std::sqrt(3.0);
    const double sixth = 1 / std::sqrt(6.0);
    EXPECT_EQ(Numbers(GetPerpVector(kX)), Numbers(kY));
    EXPECT_EQ(Numbers(GetPerpVector(kY)), Numbers(kX));
    EXPECT_EQ(Numbers(GetPerpVector(kZ)), Numbers(kX));
    EXPECT_LT(Distance(GetPerpVector({third, third, third}), {2 * sixth, -sixth, -sixth}), 1e-15);
}

TEST(Vector, TurnsPerpendicularKeepingItsLength) {
    // |a|^2 |b| decides whether b has a direction, from the tolerance up; if not, it is chosen
    // anew.
    const std::tuple<GVector, GVector, GVector> rows[] = {
        {{0, 0, 2}, {0, 0, 7}, {7, 0, 0}},  // parallel
        {{0, 0, 1}, {0, 1e-6, 0}, {0, 1e-6, 0}},
        {{0, 0, 1}, {0, Down(1e-6), 0}, {Down(1e-6), 0, 0}},
        {{0, 0, 0}, {0, 0, 2}, {2, 0, 0}},
    };
    for (const auto& [a, b, expected] : rows) {
        GVector turned = b;
        ModifyOrthoVector(a, turned);
        EXPECT_LT(Distance(turned, expected), 1e-14) << b.m_x << " " << b.m_y << " " << b.m_z;
    }
}

TEST(Position, EqualityIsInclusiveAndNullIsFarAway) {
    const GPosition origin = {0, 0, 0};
    EXPECT_EQ(origin.IsEqual({0, 1e-6, 0}), 1);
    EXPECT_EQ(origin.IsEqual({0, 0, Up(1e-6)}), 0);
    EXPECT_EQ(origin.IsEqual({8e-7, 0, 8e-7}), 0) << "by the distance, not by coordinates";
    EXPECT_EQ(origin.IsEqual({0, kNaN, 0}), 0);
    EXPECT_EQ((GPosition{kBig, kBig, kBig}.IsNull()), 1);
    EXPECT_EQ((GPosition{kBig, kBig, Down(kBig)}.IsNull()), 0);
}

TEST(Convert2d, ReportsWhatLiesOffThePlane) {
    const double off = Up(1e-6);
    const char* const vector = "Convert2d: Gvector z coordinate greater 0.0";
    const char* const point = "Convert2d: GPosition z coordinate > distanceTolerance";
    const char* const direction = "Convert2d: GUnitvector z coordinate greater 0.0";
    MessageRecorder recorder;
    recorder.Expect(GVector{1, 2, -1e-6}.Convert2d(), {1, 2});
    recorder.Expect(GVector{1, 2, off}.Convert2d(), {1, 2}, {vector});
    recorder.Expect(GPosition{1, 2, 1e-6}.Convert2d(), {1, 2});
    recorder.Expect(GPosition{1, 2, -off}.Convert2d(), {1, 2}, {point});
    recorder.Expect(GUnitVector{0, 1, 1e-6}.Convert2d(), {0, 1});
    recorder.Expect(GUnitVector{0.6, 0, 0.8}.Convert2d(), {1, 0}, {direction});
    recorder.Expect(kZ.Convert2d(), {0, 0}, {direction, kNullUnitVector2d});
}

constexpr const char* kPointWeight = "GPosition: in multiplying G4x4, trying to divide by 0.0";
constexpr const char* kVectorWeight = "GVector: multiplying by G4x4, trying to divide by 0.0";
constexpr const char* kPlanarWeight = "GPosition2d: in multiplying G4x4, trying to divide by 0.0";
constexpr const char* kShear = "GUnitVector: multiplying by trans, trans has Shear";
constexpr const char* kPlanarShear = "GUnitVector2d: transformation has Shear";
constexpr const char* kNullScaling = "GTransf: m_scaling is 0.0";

G4x4 IdentityWith(int index, double value) {
    G4x4 a = {{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}};
    a.m_matrix[index] = value;
    return a;
}

// Unlike points and vectors, and unlike those of space, unit vectors of the plane go back by the
// transposed matrix: a scaling that can't be inverted is none of their business.
TEST(Mapping, OfUnitVectorsReportsShearAndNullImages) {
    const GTransf sheared = BuildTransf(Rotation(0.0, 1.0, kZ), {0, 0, 0}, 2, 1, 0, 1);
    const GTransf null = BuildTransf({}, {0, 0, 0}, 0, 0, 0, 1);
    const GTransf2d planar = BuildTransf2d({{{0, 1}, {-1, 0}}}, {1, 2}, 0, 1, 0, 1);
    const GUnitVector2d u = {1, 0};
    MessageRecorder recorder;
    recorder.Expect(kX * sheared, {0, 1, 0}, {kShear});
    recorder.Expect(kX * null, {0, 0, 0}, {kShear, kNullUnitVector});
    recorder.Expect(kX ^ null, {0, 0, 0}, {kNullScaling, kShear, kNullUnitVector});
    recorder.Expect(u * planar, {0, 1}, {kPlanarShear});
    recorder.Expect(u ^ planar, {0, -1}, {kPlanarShear});
    recorder.Expect(GPosition2d{1, 2} ^ planar, {0, 0}, {kNullScaling});
    recorder.Expect(IdentityWith(15, -1) * kZ, {0, 0, -1});  // a negative weight reverses
}

TEST(Mapping, ByHomogeneousMatrixGuardsTheWeight) {
    MessageRecorder recorder;
    for (const double weight : {0.0, -Down(DBL_EPSILON), Down(DBL_EPSILON), kNaN}) {
        const G4x4 a = IdentityWith(15, weight);
        recorder.Expect(a * GPosition{2, -3, 0}, {2 * kBig, -3 * kBig, 0}, {kPointWeight});
        recorder.Expect(GVector{2, -3, 0} * a, {2 * kBig, -3 * kBig, 0}, {kVectorWeight});
        recorder.Expect(GPosition2d{2, -3} * a, {2 * kBig, -3 * kBig}, {kPlanarWeight});
        // 1e30 squared is no overflow: the direction survives.
        EXPECT_NEAR((GUnitVector{0.6, 0, -0.8} * a).m_z, -0.8, 1e-15);
        EXPECT_EQ(recorder.Take(), Messages{kVectorWeight});
    }
    const double least = DBL_EPSILON;
    recorder.Expect(IdentityWith(15, -least) * GPosition2d{1, 2}, {-1 / least, -2 / least});
    // The weight is the one of the vector's end, so it may vanish where the matrix itself has one.
    recorder.Expect(IdentityWith(3, -1) * GVector{1, 0, 0}, {kBig, 0, 0}, {kVectorWeight});
}

}  // namespace
}  // namespace kvgeom::test
