// SPDX-License-Identifier: MIT
#include "tests/support/messages.h"
#include "tests/support/records.h"
#include "tests/support/tolerance_guard.h"

#include <gtest/gtest.h>

#include <tuple>

namespace kvgeom::test {
namespace {

const char* const kBadPosition = "GPosition has an invalid coordinate";
const char* const kBadVector = "GVector has an invalid coordinate";
const char* const kBadUnitVector = "GUnitVector has an invalid coordinate";

/// The messages that the check of a record passes.
template <class Record>
Messages Faults(const Record& record) {
    MessageRecorder recorder;
    Gassert_valid(record);
    return recorder.Take();
}

/// The same, which the overload with a flag must pass too; and the flag.
template <class Record>
Messages Faults(const Record& record, int expected_flag) {
    int flag = 77;
    MessageRecorder recorder;
    Gassert_valid(record, &flag);
    EXPECT_EQ(flag, expected_flag);
    const Messages messages = recorder.Take();
    EXPECT_EQ(messages, Faults(record));
    return messages;
}

TEST(Validity, OfCoordinatesStopsAtTheFirstFault) {
    for (const double bad : {kNaN, kInf, -kInf, Down(0x1p-665), -4.9e-324}) {
        for (unsigned i = 0; i < 3; ++i) {
            GVector v = {1, 0, -0x1p-665};
            EXPECT_EQ(Faults(v, 1), Messages{});
            v[i] = bad;
            EXPECT_EQ(Faults(v, 0), Messages{kBadVector});
            GPosition p = {v.m_x, v.m_y, v.m_z};
            EXPECT_EQ(Faults(p), Messages{kBadPosition});
            GUnitVector u = kZ;
            u[i] = bad;
            EXPECT_EQ(Faults(u), Messages{kBadUnitVector});
            GMatrix m = kIdentity;
            EXPECT_EQ(Faults(m, 1), Messages{});
            m.m_elements[i][1] = bad;
            EXPECT_EQ(Faults(m, 0), Messages{kBadVector});
        }
    }
    EXPECT_EQ(Faults(GPosition{kNaN, kNaN, kNaN}), Messages{kBadPosition});
    EXPECT_EQ(Faults(GMatrix{{{kNaN, 0, 0}, {0, 1, 0}, {0, kInf, kInf}}}, 0),
              Messages(2, kBadVector));
    EXPECT_EQ(Faults(GBox{{9, 9, 9}, {1, 1, 1}}), Messages{});
    EXPECT_EQ(Faults(GBox{{kNaN, 9, 9}, {1, 1, kInf}}), Messages(2, kBadPosition));
    GClipVolume volume = {};
    volume.m_planes[0][0] = kNaN;
    volume.m_count = 251;
    EXPECT_EQ(Faults(volume), Messages{});
}

TEST(Validity, OfAUnitVectorTellsNullFromOtherLengths) {
    const char* const null = "GUnitVector: using a NULL unit vector";
    const char* const not_unit = "GUnitVector: vector is not a unit vector";
    const std::pair<GUnitVector, Messages> rows[] = {
        {{0.6, 0, -0.8}, {}},    {{0, 0, 1 + 1e-15}, {}},     {{0, 0, 1 + 1e-13}, {not_unit}},
        {{0, 0, 0}, {null}},     {{0, 1e-15, 0}, {null}},     {{0, 2e-14, 0}, {not_unit}},
        {{2, 0, 0}, {not_unit}}, {{1e200, 0, 0}, {not_unit}}, {{0x1p-665, 0, 0}, {null}},
    };
    for (const auto& [u, expected] : rows) {
        EXPECT_EQ(Faults(u), expected) << u.m_x << u.m_y << u.m_z;
    }
}

TEST(Validity, OfATransformationRunsAllTestsButAfterABadTranslation) {
    const double dist = GetDistanceTolerance();
    const char* const scale = "GTransf has an invalid scale";
    const char* const skew = "GTransf is not Euclidean";
    const char* const shear = "GTransf has Shear";
    const char* const reflection = "GTransf: m_hasReflection is set, but determinant > 0";
    const GMatrix stretched = {{{2, 0, 0}, {0, 1, 0}, {0, 0, 1}}};
    const GMatrix mirror = {{{-1, 0, 0}, {0, 1, 0}, {0, 0, 1}}};
    const std::tuple<GTransf, Messages, int> rows[] = {
        {BuildTransf(kIdentity, {1, 2, 3}, dist, 0, 0, 0), {}, 1},
        {BuildTransf(mirror, {1, 2, 3}, 5, 0, 1, 0), {}, 1},
        {BuildTransf(kIdentity, {1, 2, 3}, 1, 0, 1, 0), {reflection}, 1},
        {BuildTransf(kIdentity, {1, 2, 3}, Down(dist), 0, 0, 0), {scale}, 0},
        {BuildTransf(kIdentity, {1, 2, 3}, -1, 0, 0, 0), {scale}, 0},
        {BuildTransf(kIdentity, {1, 2, 3}, kNaN, 0, 0, 0), {scale}, 0},
        {BuildTransf(stretched, {1, 2, 3}, 1, 0, 0, 0), {skew}, 0},
        {BuildTransf(kIdentity, {1, 2, 3}, 1, 0, 0, 2), {shear}, 0},
        {BuildTransf(stretched, {1, 2, 3}, 0, 0, 1, 1), {scale, skew, shear, reflection}, 0},
        {BuildTransf(stretched, {1, kNaN, 3}, 0, 0, 1, 1), {kBadVector}, 0},
    };
    for (const auto& [t, expected, flag] : rows) {
        EXPECT_EQ(Faults(t, flag), expected);
    }
}

TEST(Validity, OfAHomogeneousMatrixGoesByItsLastColumn) {
    const double rel = GetRelativeTolerance();
    const auto with = [](std::initializer_list<std::pair<int, double>> changes) {
        G4x4 a = {{kNaN, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, kInf, 5, 6, 1}};
        for (const auto& [index, value] : changes) {
            a.m_matrix[index] = value;
        }
        return a;
    };
    EXPECT_EQ(Faults(with({{3, rel}, {7, -rel}, {11, rel}, {15, 1 + 1e-11}})), Messages{});
    EXPECT_EQ(Faults(with({{3, Up(rel)}})), Messages{"G4x4: m_matrix[3] is not 0"});
    EXPECT_EQ(Faults(with({{7, -1}})), Messages{"G4x4: m_matrix[7] is not 0"});
    EXPECT_EQ(Faults(with({{11, 1}, {15, 0}})),
              (Messages{"G4x4: m_matrix[11] is not 0", "G4x4: m_matrix[15] is not 1"}));
}

TEST(Validity, OfABoreLineWantsOrderedLimitsAndARadius) {
    const char* const limits = "GBoreLine has an invalid front, back, or radius";
    const std::pair<GBoreLine, Messages> rows[] = {
        {{{1, 2, 3}, kX, 5, 5, 1e-6}, {}},
        {{{1, 2, 3}, kX, kBig, -kBig, 1}, {}},
        {{{1, 2, 3}, kX, 5, Up(5), 1}, {limits}},
        {{{1, 2, 3}, kX, 5, 4, 0}, {limits}},
        {{{1, 2, 3}, kX, 5, 4, kNaN}, {limits}},
        {{{1, 2, kInf}, {0, 0, kNaN}, 5, 4, -1}, {kBadPosition, kBadUnitVector, limits}},
    };
    for (const auto& [l, expected] : rows) {
        EXPECT_EQ(Faults(l), expected);
    }
}

// A fence, a frustum or a prism over a closed square at z = 3; the planes of the fence are at 7
// and 2.
struct Profile {
    std::array<GPosition, 5> points = {{{0, 0, 3}, {4, 0, 3}, {4, 4, 3}, {0, 4, 3}, {0, 0, 3}}};
    GPtFence fence = {5, points.data(), kZ, 4, -1};
    GRtPrism prism = {TranslateTransf({1, 2, 3}), points.data(), 5, 4};
};

TEST(Validity, OfProfilesTestsCountClosurePlanarityAndDepths) {
    const double dist = 0x1p-20;  // near the default, and exact in the sums below
    const ToleranceGuard guard;
    long err;
    SetDistanceTolerance(dist, &err);
    const std::string few = "Less than 4 points";
    const std::string open = "point set is not closed";
    const struct {
        double closing_x;  // of the last point
        double bent_z;     // of the third
        unsigned long count;
        double front;
        Messages expected;  // without the record's name and its last words
    } rows[] = {
        {dist, 3, 5, 4, {}},
        {0, 3, 3, 4, {few, open}},
        {0, 3, 1, 4, {few}},
        {0, 3, 0, 4, {few}},
        {2 * dist, 3, 5, 4, {open}},
        // The mean z is 3 + dist, so the other four are off by just that.
        {0, 3 + 5 * dist, 5, 4, {"point set is not planar"}},
        {0, 3 + 6 * dist, 5, 4, Messages(5, "point set is not planar")},
        {2 * dist, 3, 3, 2e30, {few, open, "invalid"}},
    };
    for (const auto& row : rows) {
        Profile profile;
        profile.points[4].m_x = row.closing_x;
        profile.points[2].m_z = row.bent_z;
        profile.fence.m_count = profile.prism.m_count = row.count;
        profile.fence.m_front = profile.prism.m_height = row.front;
        Messages of_fence;
        Messages of_prism;
        for (const std::string& text : row.expected) {
            const bool is_planar = text.find("planar") != std::string::npos;
            const bool is_depth = text == "invalid";
            of_fence.push_back("GPtFence: " + text +
                               (is_planar  ? " with respect to direction vector"
                                : is_depth ? " m_front or m_back"
                                           : ""));
            of_prism.push_back("GRtPrism: " + text +
                               (is_planar  ? " in xz"
                                : is_depth ? " height"
                                           : ""));
        }
        EXPECT_EQ(Faults(profile.fence), of_fence);
        EXPECT_EQ(Faults(profile.prism), of_prism);
    }
    const Profile profile;
    EXPECT_EQ(Faults(GPtFence{5, nullptr, {0, 0, kNaN}, -kBig, kBig}),
              (Messages{kBadUnitVector, "GPtFence: NULL pointer",
                        "GPtFence: invalid m_front or m_back"}));
    EXPECT_EQ(Faults(GPtFence{5, profile.fence.m_points, kZ, kBig, -Up(kBig)}),
              Messages{"GPtFence: invalid m_front or m_back"});
    EXPECT_EQ(Faults(GPtFence{5, profile.fence.m_points, kZ, kBig, -kBig}), Messages{});
    EXPECT_EQ(Faults(GRtPrism{ScaleTransf(0), nullptr, 0, -4.9e-324}),
              (Messages{"GTransf has an invalid scale", "GRtPrism: Less than 4 points",
                        "GRtPrism: NULL pointer", "GRtPrism: invalid height"}));
}

TEST(Validity, OfSeenVolumesWantsTheEyeOutsideOfThePlanes) {
    const double dist = 0x1p-20;
    const ToleranceGuard guard;
    long err;
    SetDistanceTolerance(dist, &err);
    const Profile profile;
    const char* const frustum = "GPtFrustum: eye point is between front and back planes";
    const char* const cone = "GBoreCone: eye point is between front and back planes";
    const std::pair<double, bool> rows[] = {
        {9, false}, {7 - dist, false},    {7 - 2 * dist, true}, {4, true},
        {2, true},  {2 - dist / 2, true}, {2 - dist, false},    {-5, false},
    };
    for (const auto& [z, between] : rows) {
        EXPECT_EQ(Faults(GPtFrustum{profile.fence, {50, -60, z}}),
                  between ? Messages{frustum} : Messages{});
        EXPECT_EQ(Faults(GBoreCone{{{8, 9, 3}, kZ, 4, -1, 2}, {50, -60, z}}),
                  between ? Messages{cone} : Messages{});
    }
    const GPosition nowhere = {0, kNaN, 4};
    EXPECT_EQ(Faults(GPtFrustum{{5, nullptr, kZ, 4, -1}, nowhere}),
              (Messages{"GPtFence: NULL pointer", kBadPosition}));
    EXPECT_EQ(Faults(GPtFrustum{{0, profile.fence.m_points, kZ, 4, -1}, {0, 0, 4}}),
              Messages{"GPtFence: Less than 4 points"});
    EXPECT_EQ(Faults(GBoreCone{{{8, 9, 3}, kZ, 4, -1, 0}, nowhere}),
              (Messages{"GBoreLine has an invalid front, back, or radius", kBadPosition, cone}));
}

// Only a library built to find faults speaks.
TEST(Validity, OfPlanarRecordsIsSilentButInADiagnosticBuild) {
    const double dist = GetDistanceTolerance();
    const auto check = [](const auto& record, const Messages& expected) {
#if defined(KVGEOM_DIAGNOSTICS)
        EXPECT_EQ(Faults(record), expected);
#else
        EXPECT_EQ(Faults(record), Messages{}) << expected.size();
#endif
    };
    const std::string vector = "GVector2d has an invalid coordinate";
    const std::string position = "GPosition2d has an invalid coordinate";
    check(GVector2d{1, 2}, {});
    check(GVector2d{kNaN, kInf}, {vector});
    check(GPosition2d{1, 4.9e-324}, {position});
    check(GBox2d{{9, kNaN}, {kInf, 1}}, {position, position});
    check(GMatrix2d{{{kNaN, 1}, {1, kInf}}}, {vector, vector});
    check(GUnitVector2d{1, kNaN}, {"GUnitVector2d has an invalid coordinate"});
    check(GUnitVector2d{0, 1 + dist / 4}, {});
    check(GUnitVector2d{0, 1 + dist}, {"GUnitVector2d: vector is not a unit vector"});
    check(GUnitVector2d{0, dist / 2}, {"GUnitVector2d: using a NULL unit vector"});
    check(ReflectTransf2d({0.6, 0.8}), {});
    check(BuildTransf2d({{{2, 0}, {kNaN, 1}}}, {kInf, 0}, kNaN, 0, 0, 1),
          {vector, vector, "GTransf2d is not Euclidean", "GTransf2d has an invalid scale"});
    check(BuildTransf2d({{{1, 0}, {0, 1}}}, {0, 0}, Down(dist), 0, 1, 0),
          {"GTransf2d has an invalid scale",
           "GTransf2d: m_hasReflection is set, but determinant > 0"});
}

}  // namespace
}  // namespace kvgeom::test
