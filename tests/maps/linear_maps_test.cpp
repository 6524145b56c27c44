// SPDX-License-Identifier: MIT

// What is promised of matrices and transformations at their edges, in space and where the plane
// differs.

#include "tests/support/messages.h"

#include <tuple>

namespace kvgeom::test {
namespace {

constexpr double kTol = 1e-10;

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
