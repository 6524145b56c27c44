// SPDX-License-Identifier: MIT

// Of records with arrays, and of those of the plane; the table of the operations' cases has the
// others.

#include "tests/support/messages.h"
#include "tests/support/records.h"
#include "tests/support/tolerance_guard.h"

#include <gtest/gtest.h>

namespace kvgeom::test {
namespace {

const char* const kBadPosition = "GPosition has an invalid coordinate";
const char* const kBadUnitVector = "GUnitVector has an invalid coordinate";

/// The messages that the check of a record passes.
template <class Record>
Messages Faults(const Record& record) {
    MessageRecorder recorder;
    Gassert_valid(record);
    return recorder.Take();
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
