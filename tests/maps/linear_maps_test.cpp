// SPDX-License-Identifier: MIT

// What is promised of matrices and transformations at their edges, in space and where the plane
// differs.

#include "tests/support/messages.h"

#include <tuple>

namespace kvgeom::test {
namespace {

constexpr double kTol = 1e-10;

GMatrix Diagonal(double x, double y, double z) {
    return {{{x, 0, 0}, {0, y, 0}, {0, 0, z}}};
}

GMatrix With(GMatrix m, int row, int column, double value) {
    m.m_elements[row][column] = value;
    return m;
}

TEST(Matrix, IsBuiltFromColumnsByAnyFlagAndGivesItsLastRowBeyond) {
    const GMatrix m = {{{1, 2, 3}, {4, 5, 6}, {7, 8, 9}}};
    const GMatrix2d planar = {{{1, 2}, {3, 4}}};
    MessageRecorder recorder;
    recorder.Expect(BuildMatrix(m[0], m[1], m[2], -1), Numbers(m.Transpose()));
    recorder.Expect(BuildMatrix2d(planar[0], planar[1], -1), {1, 3, 2, 4});
    recorder.Expect(m[3], {7, 8, 9}, {"GMatrix: index out of range"});
    recorder.Expect(planar[0xFFFFFFFFU], {3, 4}, {"GMatrix2d: index out of range"});
}

TEST(Matrix, EqualityIsInclusiveInEachElementAndLetsNaNPassInSpaceAlone) {
    for (int i = 0; i < 3; ++i) {
        for (int j = 0; j < 3; ++j) {
            EXPECT_EQ(With({}, i, j, -kTol).IsNull(), 1);
            EXPECT_EQ(With({}, i, j, Up(kTol)).IsNull(), 0);
            EXPECT_EQ(With(kIdentity, i, j, kNaN).IsIdentity(), 1);
        }
    }
    EXPECT_EQ((GMatrix2d{{{1, 0}, {0, kNaN}}}.IsIdentity()), 0);
}

TEST(Matrix, EuclideanAllowsTwiceTheToleranceInSquaredLengths) {
    for (int i = 0; i < 3; ++i) {
        const int j = (i + 1) % 3;
        EXPECT_EQ(With(kIdentity, i, i, std::sqrt(1 + 1.9 * kTol)).IsEuclidean(), 1);
        EXPECT_EQ(With(kIdentity, i, i, std::sqrt(1 - 2.1 * kTol)).IsEuclidean(), 0);
        EXPECT_EQ(With(kIdentity, i, i, kNaN).IsEuclidean(), 0);
        EXPECT_EQ(With(kIdentity, i, j, kTol).IsEuclidean(), 1);
        EXPECT_EQ(With(kIdentity, i, j, -Up(kTol)).IsEuclidean(), 0);
    }
    EXPECT_EQ((GMatrix2d{{{1, 0}, {0, kNaN}}}.IsEuclidean()), 0);
}

// In the plane the rows are normalised, in space what is given is used.
TEST(Matrix, RotationReportsWhatIsBeyondOne) {
    const Messages beyond = {"GMatrix: abs(cosine or sine of angle) > 1.0"};
    const Messages beyond_in_plane = {"GMatrix2d: abs(cosine or sine of angle) > 1.0"};
    MessageRecorder recorder;
    recorder.Expect(Rotation(1.5, 0.0, kZ), {1.5, 0, 0, 0, 1.5, 0, 0, 0, 1}, beyond);
    recorder.Expect(Rotation(0.0, -Up(1), kZ)[0], {0, -Up(1), 0}, beyond);
    recorder.Expect(Rotation2d(0, 0.5), {0, 1, -1, 0});
    recorder.Expect(Rotation2d(0, -1.5), {0, -1, 1, 0}, beyond_in_plane);
    recorder.Expect(Rotation2d(0, 0), {0, 0, 0, 0}, Messages(2, kNullUnitVector2d));
}

TEST(Matrix, OrthogonalisationLeavesWhatIsOrthonormalToAFixedThreshold) {
    const auto step = [](const auto& in) {
        auto out = in;
        long err = 77;
        MakeOrthogonal(out, out, &err);  // in place
        EXPECT_EQ(err, 0);
        return out;
    };
    const GMatrix nearly = With(kIdentity, 0, 1, 1e-14);
    EXPECT_EQ(Bits(step(nearly)), Bits(nearly));
    EXPECT_NE(step(With(kIdentity, 0, 1, Up(1e-14))).m_elements[0][1], Up(1e-14));
    // The squared first column deviates by 2, 4.5 times the threshold.
    const GMatrix2d near = {{{1 + 4e-15, 0}, {0, 1}}};
    EXPECT_EQ(Bits(step(near)), Bits(near));
    EXPECT_EQ(step(GMatrix2d{{{1 + 2e-14, 0}, {0, 1}}}).m_elements[0][0], 1);
    EXPECT_TRUE(std::isnan(step(GMatrix2d{{{1, kNaN}, {0, 1}}}).m_elements[0][0]));
}

TEST(Matrix, OrthogonalisationToTheEndReportsWhatSixStepsDoNotBringHome) {
    const std::pair<GMatrix, long> rows[] = {{Diagonal(1.1, 1, 1), 0}, {Diagonal(0.02, -1, 1), 2},
                                             {Diagonal(10, 1, 1), 2},  {Diagonal(kNaN, 1, 1), 2},
                                             {Diagonal(0, 0, 0.1), 2}, {Diagonal(1, 1, kInf), 2}};
    for (const auto& [m, expected] : rows) {
        GMatrix out = m;
        long err = 77;
        MakeOrthogonalIt(out, out, &err);  // in place
        EXPECT_EQ(err, expected) << m.m_elements[0][0];
        EXPECT_TRUE(err == 0 ? Distance(out, kIdentity) < 1e-14 : Bits(out) == Bits(m));
    }
}

TEST(Matrix, OrthogonalityErrorsAreTheLargestAndSigned) {
    double length_error = 77;
    double dot_error = 77;
    CheckOrthogonal({{{1, 0, 0}, {-0.5, 0, 0}, {-0.25, 0, 0}}}, &length_error, &dot_error);
    EXPECT_EQ(length_error, 0.9375);
    EXPECT_EQ(dot_error, 0.125) << "not 0.5, of the negative ones";
}

constexpr GVector kNowhere = {0, 0, 0};

// Rotation, reflection, shear.
using Flags = std::array<int, 3>;
template <class Transformation>
Flags FlagsOf(const Transformation& t) {
    return {t.m_hasRotation, t.m_hasReflection, t.m_hasShear};
}

GTransf Rz(double angle) {
    return RotateTransf(angle, kZ);
}

TEST(Transf, StoresTheLowByteOfItsFlagsAndComparesOnlyReflection) {
    EXPECT_EQ(FlagsOf(BuildTransf(kIdentity, kNowhere, 1, 0x101, 0x200, -1)), (Flags{1, 0, 255}));
    EXPECT_EQ(FlagsOf(BuildTransf2d({}, {0, 0}, 1, 0x100, 0x101, -1)), (Flags{0, 1, 255}));
    const GTransf base = BuildTransf(kIdentity, {1, 2, 3}, 2, 0, 0, 0);
    const std::pair<GTransf, int> rows[] = {{BuildTransf(kIdentity, {1, 2, 3}, 2, 1, 0, 1), 1},
                                            {BuildTransf(kIdentity, {1, 2, 3}, 2, 0, 1, 0), 0},
                                            {BuildTransf(kIdentity, {1, 2, 3}, kNaN, 0, 0, 0), 0}};
    for (const auto& [other, expected] : rows) {
        EXPECT_EQ(base.IsEqual(other), expected);
        EXPECT_EQ(other.IsEqual(base), expected);
    }
    EXPECT_EQ(BuildTransf({}, kNowhere, kTol, 1, 0, 1).IsNull(), 1);
    EXPECT_EQ(BuildTransf({}, kNowhere, Up(kTol), 0, 0, 0).IsNull(), 0);
    EXPECT_EQ(BuildTransf2d({}, {0, 0}, kNaN, 0, 0, 0).IsNull(), 0);
}

// In space a scaling of NaN passes for invertible, in the plane it doesn't.
TEST(Transf, InvertibilityGoesByTheScaling) {
    const std::tuple<double, int, int> rows[] = {
        {DBL_EPSILON, 1, 1}, {-Down(DBL_EPSILON), 0, 0}, {-3, 1, 1}, {kNaN, 1, 0}};
    for (const auto& [scaling, space, plane] : rows) {
        EXPECT_EQ(ScaleTransf(scaling).IsInvertible(), space) << scaling;
        EXPECT_EQ(ScaleTransf2d(scaling).IsInvertible(), plane) << scaling;
    }
}

TEST(Transf, InverseKeepsFlagsAndReportsNullScalingUnderOneName) {
    const char* const message = "GTransf: m_scaling is 0.0";
    const double least = Down(DBL_EPSILON);
    MessageRecorder recorder;
    recorder.Expect(BuildTransf(Rotation(0.0, 1.0, kZ), {1, 2, 3}, 4, 1, 1, 1).Inverse(),
                    {0, -1, 0, 1, 0, 0, 0, 0, 1, -0.5, 0.25, -0.75, 0.25, 1, 1, 1});
    recorder.Expect(ScaleTransf(-least).Inverse().m_scaling, {kBig}, {message});
    recorder.Expect(ScaleTransf(-DBL_EPSILON).Inverse().m_scaling, {-1 / DBL_EPSILON});
    recorder.Expect(ScaleTransf2d(-least).Inverse().m_scaling, {kBig}, {message});
}

TEST(Transf, CompositionCombinesFlags) {
    const GTransf turn = Rz(0.5);
    const GTransf still = ScaleTransf(2);
    const GTransf mirror = ReflectTransf(kX);
    // Bytes other than 0 and 1: set, or different.
    const GTransf odd = BuildTransf(kIdentity, kNowhere, 1, 4, 2, 8);
    const std::pair<GTransf, Flags> rows[] = {
        {turn * Rz(-0.5), {0, 0, 0}},  // rotations cancel
        {turn * Rz(-0.5 + 2 * kTol), {1, 0, 0}},
        {turn * Rz(-0.5 + 0.5 * kTol), {0, 0, 0}},
        {turn * still, {1, 0, 0}},
        {mirror * ReflectTransf(kY), {0, 0, 0}},  // though they make a half turn
        {odd * still, {1, 1, 1}},
        {odd * mirror, {1, 1, 1}},
        {odd * BuildTransf(kIdentity, kNowhere, 1, 2, 2, 0), {0, 0, 1}},
    };
    for (const auto& [t, flags] : rows) {
        EXPECT_EQ(FlagsOf(t), flags);
    }
    EXPECT_EQ((RotateTransf2d(0.3) * RotateTransf2d(-0.3)).m_hasRotation, 0);
}

TEST(RotAngles, AreReadBackWithTheSmallerOfTheTwoSolutions) {
    const double q = kPi / 2;
    const std::pair<GTransf, GVector> rows[] = {
        {RotateTransf(q, kY) * Rz(0.2), {-0.2, q, 0}},
        {RotateTransf(-q, kY) * Rz(0.2), {0.2, -q, 0}},
        {RotateTransf(2, kX) * RotateTransf(3, kY) * Rz(1), {2 - kPi, kPi - 3, 1 - kPi}},
        // A tie goes to the second solution: both sums are 3 pi / 2.
        {BuildTransf({{{0, 1, 0}, {1, 0, 0}, {0, 0, -1}}}, kNowhere, 1, 1, 0, 0), {0, -kPi, -q}},
    };
    for (const auto& [t, expected] : rows) {
        GVector angles;
        GPosition origin;
        EXPECT_EQ(GetRotAngles(t, &angles.m_x, &angles.m_y, &angles.m_z, origin), 0);
        EXPECT_LT(Distance(angles, expected), 2e-15) << expected.m_x << " " << expected.m_y;
    }
}

TEST(Transf2d, RotationAngleIsThatOfAFullTurn) {
    const std::pair<double, double> rows[] = {
        {-0.5, 2 * kPi - 0.5}, {kPi, kPi},           {kTol / 2, 0},
        {-kTol / 2, 0},        {2 * kTol, 2 * kTol}, {-2 * kTol, 2 * kPi - 2 * kTol}};
    for (const auto& [turn, expected] : rows) {
        long err = 77;
        EXPECT_DOUBLE_EQ(GiveRotAngle(RotateTransf2d(turn), &err), expected);
        EXPECT_EQ(err, 77);
    }
}

TEST(TransfBuilders, PlaceCoordinateSystems) {
    // A tilt that the z component's rounding swallows is dropped; further off, and for -z, x is
    // chosen.
    EXPECT_EQ(CoordinateTransf({}, BuildUnitVector(1e-8, 0, 1)).m_matrix[2].m_x, 0);
    for (const GUnitVector& z : {GUnitVector{0, 0, -1}, BuildUnitVector(1e-6, 0, 1), kY}) {
        const GMatrix m = CoordinateTransf({}, z).m_matrix;
        EXPECT_LT(Distance(m[0], GVector(GetPerpVector(z))), 1e-15);
        EXPECT_LT(Distance(m[2], GVector(z)), 1e-15);
    }
    MessageRecorder recorder;
    recorder.Expect(CoordinateTransf({}, kX, kX).m_matrix, {1, 0, 0, 0, 0, 0, 0, 0, 0},
                    {kNullUnitVector, kNullUnitVector});
    // In the plane the frame keeps the handedness of its axes.
    EXPECT_EQ(FlagsOf(CoordinateTransf2d({}, {0, 1}, {-0.8, 0.6})), (Flags{1, 0, 0}));
    EXPECT_EQ(FlagsOf(CoordinateTransf2d({}, {1, 0}, {-1, 0})), (Flags{0, 1, 0}));
    EXPECT_EQ(recorder.Take(), Messages{kNullUnitVector2d});
}

TEST(TransfBuilders, RefuseAxesThatAreNotUnitOrNotOrthogonal) {
    const GUnitVector longer = {std::sqrt(1 + 2.1 * kTol), 0, 0};
    const GUnitVector hardly = {std::sqrt(1 + 1.9 * kTol), 0, 0};
    const GUnitVector askew = BuildUnitVector(0.1, 1, 0);
    const Messages not_unit = {"Not a unit vector."};
    const Messages not_orthogonal = {"Vectors are not orthogonal"};
    const struct {
        GUnitVector axes[4];
        Messages messages;
    } rows[] = {{{hardly, kY, kX, kY}, {}},
                {{longer, kY, kX, kY}, not_unit},
                {{kY, longer, kX, kY}, not_unit},
                {{kX, kY, longer, kY}, not_unit},
                {{kX, kY, kY, longer}, not_unit},
                {{kX, askew, kX, kY}, not_orthogonal},
                {{kX, kY, kX, askew}, not_orthogonal},
                {{kX, askew, longer, kY}, not_unit}};
    MessageRecorder recorder;
    for (const auto& [axes, messages] : rows) {
        GTransf t = ScaleTransf(77);
        long err = 77;
        OldToNewTransf({}, axes[0], axes[1], {}, axes[2], axes[3], t, &err);
        recorder.Expect(t.m_scaling, {messages.empty() ? 1.0 : 77.0}, messages);
        EXPECT_EQ(err, messages.empty() ? 0 : 2);
    }
}

TEST(MirrorPlane, IsReadBackFromTheReflection) {
    GUnitVector normal = {7, 7, 7};
    GVector offset = {7, 7, 7};
    EXPECT_EQ(GetMirrorPlaneNormal(TranslateTransf({1, 2, 3}), normal, offset), 2);
    EXPECT_EQ(Numbers(normal), (std::vector<double>{7, 7, 7}));
    EXPECT_EQ(Numbers(offset), (std::vector<double>{1, 2, 3})) << "is given all the same";
    EXPECT_EQ(GetMirrorPlaneNormal(RotateTransf(-1.0, 0.0, kZ), normal, offset), 0);
    EXPECT_EQ(Numbers(normal), Numbers(kX)) << "a half turn has one too";
    // The first component that shows is positive.
    EXPECT_EQ(GetMirrorPlaneNormal(ReflectTransf({1e-9, -0.6, 0.8}), normal, offset), 0);
    EXPECT_LT(Distance(normal, {0, 0.6, -0.8}), 1e-8);
}

TEST(TransfHealer, RestoresWhatHasDriftedAndLeavesTheHopeless) {
    for (const double drift : {1e-9, 10.0}) {
        GTransf t = BuildTransf(Rz(0.3).m_matrix, {1, 2, 3}, 4, 1, 0, 1);
        t.m_matrix.m_elements[1][2] += drift;
        GTransf healed_t = t;
        int healed = 77;
        long err = 77;
        GTransfHealer(healed_t, healed_t, &healed, &err);  // in place
        EXPECT_EQ(err, 0);
        EXPECT_EQ(healed, drift < 1 ? 1 : 0);
        EXPECT_EQ(Bits(healed_t) == Bits(t), healed == 0);
        healed_t.m_matrix = t.m_matrix;
        EXPECT_EQ(Bits(healed_t), Bits(t)) << "only the matrix changes";
    }
}

TEST(PlanarConversion, OfATransformationReportsWhatLeavesThePlane) {
    const double d = GetDistanceTolerance();
    const char* const upper = "z coordinate of row 0 or row 1 > distanceTolerance";
    const char* const lower = "row 2 coordinates > distanceTolerance";
    const char* const last = "third coordinate in row 2 not 1.0";
    const std::pair<GMatrix, Messages> rows[] = {
        {{{{1, 0, d}, {0, 1, -d}, {-d, d, -1}}}, {}},
        {{{{1, 0, -Up(d)}, {0, 1, 0}, {0, 0, 1}}}, {upper}},
        {{{{1, 0, 0}, {0, 1, Up(d)}, {Up(d), 0, 1}}}, {upper, lower}},
        {{{{1, 0, 0}, {0, 1, 0}, {0, -Up(d), 1}}}, {lower}},
        {{{{1, 0, 0}, {0, 1, 0}, {0, 0, -1 - 2 * d}}}, {last}},
        {{{{2, 3, 9}, {4, 5, 9}, {9, 9, 9}}}, {upper, lower, last}}};
    MessageRecorder recorder;
    for (const auto& [m, messages] : rows) {
        const auto& e = m.m_elements;
        recorder.Expect(BuildTransf(m, {4, 5, 6}, 7, 1, 0, 1).Convert2d(),
                        {e[0][0], e[0][1], e[1][0], e[1][1], 4, 5, 7, 1, 0, 1}, messages);
    }
}

}  // namespace
}  // namespace kvgeom::test
