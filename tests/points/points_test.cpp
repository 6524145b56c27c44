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

TEST(BuildUnitVector, RefusesNullLengthsAndKeepsTheUnitBandBitForBit) {
    const double in_band = std::sqrt(1 + 40 * DBL_EPSILON);
    const double beyond = std::sqrt(1 + 60 * DBL_EPSILON);
    const double normalised = beyond * (1 / beyond);
    const std::tuple<double, double, bool> rows[] = {{0, 0, true},
                                                     {kW, 0, true},
                                                     {Up(kW), 1, false},
                                                     {-Up(kW), -1, false},
                                                     {in_band, in_band, false},
                                                     {beyond, normalised, false},
                                                     {1e200, 0, false}};
    ASSERT_NE(normalised, beyond);
    MessageRecorder recorder;
    for (const auto& [x, expected, refused] : rows) {
        const Messages messages = refused ? Messages{kNullUnitVector} : Messages{};
        recorder.Expect(BuildUnitVector(0, x, 0), {0, expected, 0}, messages);
        long err = 77;
        recorder.Expect(BuildUnitVector(0, x, 0, kW, &err), {0, expected, 0}, messages);
        EXPECT_EQ(err, refused ? 2 : 0);
        recorder.Expect(BuildUnitVector2d(x, 0), {expected, 0},
                        refused ? Messages{kNullUnitVector2d} : Messages{});
    }
}

// In the plane the band that is kept is narrower, and a length of the tolerance is not null.
TEST(BuildUnitVector, TakesTheNullLengthFromTheCallerAndDiffersInThePlane) {
    const double between = std::sqrt(1 + 20 * DBL_EPSILON);
    const double normalised = between * (1 / between);
    // The component, the tolerance, and what is built in space and in the plane: 0 for a refusal.
    const std::tuple<double, double, double, double> rows[] = {{0.5, 0.5, 0, 1},
                                                               {0.5, Up(0.5), 0, 0},
                                                               {0.5, Down(0.5), 1, 1},
                                                               {between, 1e-6, between, normalised},
                                                               {Down(1), 2, Down(1), Down(1)},
                                                               {Down(Down(1)), 2, Down(Down(1)), 0},
                                                               {1, 2, 1, 1},
                                                               {2, 5, 0, 0},
                                                               {0, 0, 0, 0},
                                                               {0, -1, 0, 0},
                                                               {1e-20, 0, 1, 1},
                                                               {1e-20, -1, 1, 1}};
    ASSERT_NE(normalised, between);
    MessageRecorder recorder;
    const auto refusal = [](double built, const char* message) {
        return built == 0 ? Messages{message} : Messages{};
    };
    for (const auto& [x, tol, space, plane] : rows) {
        long err = 77;
        recorder.Expect(BuildUnitVector(0, 0, x, tol, &err), {0, 0, space},
                        refusal(space, kNullUnitVector));
        EXPECT_EQ(err, space == 0 ? 2 : 0) << x << ", " << tol;
        err = 77;
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

TEST(Mapping, OfUnitVectorsReportsShearAndNullImages) {
    const GTransf sheared = BuildTransf(Rotation(0.0, 1.0, kZ), {0, 0, 0}, 2, 1, 0, 1);
    const GTransf null = BuildTransf({}, {0, 0, 0}, 0, 0, 0, 1);
    GUnitVector u = kX;
    MessageRecorder recorder;
    recorder.Expect(kX * sheared, {0, 1, 0}, {kShear});
    recorder.Expect(u *= sheared, {0, 1, 0}, {kShear});
    recorder.Expect(kX * null, {0, 0, 0}, {kShear, kNullUnitVector});
    recorder.Expect(kX ^ null, {0, 0, 0}, {kNullScaling, kShear, kNullUnitVector});
    recorder.Expect(IdentityWith(15, -1) * kZ, {0, 0, -1});  // a negative weight reverses
}

// Unlike points and vectors, and unlike those of space, unit vectors of the plane go back by the
// transposed matrix: a scaling that can't be inverted is none of their business.
TEST(PlanarMapping, OfUnitVectorsReportsShearAndNeverInverts) {
    GTransf2d t = BuildTransf2d({{{0, 1}, {-1, 0}}}, {1, 2}, 0, 1, 0, 1);
    const GUnitVector2d u = {1, 0};
    MessageRecorder recorder;
    recorder.Expect(u * t, {0, 1}, {kPlanarShear});
    recorder.Expect(u ^ t, {0, -1}, {kPlanarShear});
    t.m_hasShear = 0;
    recorder.Expect(u ^ t, {0, -1});
    recorder.Expect(GPosition2d{1, 2} ^ t, {0, 0}, {kNullScaling});
}

TEST(Mapping, ByHomogeneousMatrixGuardsTheWeight) {
    const std::vector<double> far = {2 * kBig, -3 * kBig, 0};
    const std::vector<double> far_in_plane = {2 * kBig, -3 * kBig};
    MessageRecorder recorder;
    for (const double weight : {0.0, -Down(DBL_EPSILON), Down(DBL_EPSILON), kNaN}) {
        const G4x4 a = IdentityWith(15, weight);
        recorder.Expect(a * GPosition{2, -3, 0}, far, {kPointWeight});
        recorder.Expect(GPosition{2, -3, 0} * a, far, {kPointWeight});
        recorder.Expect(a * GVector{2, -3, 0}, far, {kVectorWeight});
        recorder.Expect(GVector{2, -3, 0} * a, far, {kVectorWeight});
        recorder.Expect(a * GPosition2d{2, -3}, far_in_plane, {kPlanarWeight});
        recorder.Expect(GPosition2d{2, -3} * a, far_in_plane, {kPlanarWeight});
        // 1e30 squared is no overflow: the direction survives.
        EXPECT_NEAR((GUnitVector{0.6, 0, -0.8} * a).m_z, -0.8, 1e-15);
        EXPECT_EQ(recorder.Take(), Messages{kVectorWeight});
    }
    const double least = DBL_EPSILON;
    recorder.Expect(IdentityWith(15, least) * GPosition{1, 0, 0}, {1 / least, 0, 0});
    recorder.Expect(IdentityWith(15, -least) * GPosition2d{1, 2}, {-1 / least, -2 / least});
    // The weight is the one of the vector's end, so it may vanish where the matrix itself has one.
    recorder.Expect(IdentityWith(3, -1) * GVector{1, 0, 0}, {kBig, 0, 0}, {kVectorWeight});
}

}  // namespace
}  // namespace kvgeom::test
