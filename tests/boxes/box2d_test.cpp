// SPDX-License-Identifier: MIT

// What the boxes of the plane do otherwise than their twins in space, and the way between the two.
// What they do alike is tested in plane_laws_test.cpp.

#include "tests/support/messages.h"
#include "tests/support/records.h"

#include <gtest/gtest.h>

namespace kvgeom::test {
namespace {

const GBox2d kNull = {{kBig, kBig}, {-kBig, -kBig}};

TEST(Box2d, IsBuiltAsGivenOrAroundPoints) {
    MessageRecorder recorder;
    GPosition2d points[] = {{3, 1}, {-1, 2}, {2, -4}};
    EXPECT_EQ(Numbers(BuildBox2d(1.0, 2.0)), (std::vector<double>{1, 2, 1, 2}));
    EXPECT_EQ(Numbers(BuildBox2d({1, 2}, 0)), (std::vector<double>{1, 2, 1, 2}));
    EXPECT_EQ(Numbers(BuildBox2d({1, 2}, 7)), (std::vector<double>{1, 2, 1, 2}));
    EXPECT_EQ(Numbers(BuildBox2d(4, 3, 2, 1)), (std::vector<double>{4, 3, 2, 1}));
    EXPECT_EQ(Numbers(BuildBox2d({4, 3}, {2, 1})), (std::vector<double>{4, 3, 2, 1}));
    EXPECT_EQ(Numbers(BuildBox2d(3, points)), (std::vector<double>{-1, -4, 3, 2}));
    EXPECT_EQ(recorder.Take(), Messages{});
    EXPECT_EQ(Numbers(BuildBox2d(0, points)), Numbers(kNull));
    EXPECT_EQ(recorder.Take(), Messages{"GBox2d: can't build a box with 0 points"});
}

TEST(Box2d, GivesItsCornersByIndexAndAnticlockwise) {
    MessageRecorder recorder;
    GBox2d box = {{1, 2}, {3, 5}};
    const GBox2d& constant = box;
    EXPECT_EQ(&constant[0], &box.m_low);
    EXPECT_EQ(&box[1], &box.m_high);
    EXPECT_EQ(recorder.Take(), Messages{});
    EXPECT_EQ(&constant[2], &box.m_high);
    EXPECT_EQ(&box[0xFFFFFFFFU], &box.m_high);
    EXPECT_EQ(recorder.Take(), Messages(2, "GBox2d: index out of range"));
    std::array<GPosition2d, 4> corners;
    box.GiveCorners(corners.data());
    EXPECT_EQ(Numbers(corners), (std::vector<double>{1, 2, 3, 2, 3, 5, 1, 5}));
}

// A point exactly as far outside as the tolerance allows is inside in space, outside in the plane.
TEST(Box2d, HoldsPointsStrictlyWithinTheToleranceSpreadOverTwoAxes) {
    const double t = GetDistanceTolerance();
    const double plane = t / std::sqrt(2.0);
    const double space = t / std::sqrt(3.0);
    const GBox2d box = BuildBox2d(0, 0, 0, 0);
    const GBox box3d = BuildBox(0, 0, 0, 0, 0, 0);
    for (const double sign : {1.0, -1.0}) {
        for (const unsigned axis : {0U, 1U}) {
            const auto holds = [&](double offset) {
                GPosition2d p = {0, 0};
                GPosition p3d = {0, 0, 0};
                p[axis] = p3d[axis] = sign * offset;
                EXPECT_EQ(box >> p, p << box);
                EXPECT_EQ(box >> BuildBox2d(p, 0), box >> p);
                EXPECT_EQ(BuildBox2d(p, 0) << box, box >> p);
                return std::array{box >> p, box3d >> p3d};
            };
            EXPECT_EQ(holds(plane), (std::array{0, 0}));
            EXPECT_EQ(holds(Down(plane)), (std::array{1, 0}));
            EXPECT_EQ(holds(space), (std::array{1, 1}));
            EXPECT_EQ(holds(Up(space)), (std::array{1, 0}));
        }
    }
    EXPECT_EQ(box >> BuildBox2d(0, 0, 1, 0), 0);
    EXPECT_EQ(box >> BuildBox2d(0, -1, 0, 0), 0);
}

TEST(Box2d, DivisionByNearZeroGivesAllSpace) {
    MessageRecorder recorder;
    GBox2d box = {{0, 1}, {2, 4}};
    EXPECT_EQ(Numbers(box / -2), (std::vector<double>{-1, -2, 0, -0.5}));
    EXPECT_EQ(recorder.Take(), Messages{});
    EXPECT_EQ(Numbers(box /= 1e-17), (std::vector<double>{-kBig, -kBig, kBig, kBig}));
    EXPECT_EQ(recorder.Take(), Messages{"GBox2d: trying to divide by 0.0"});
}

// The scaling comes after the matrix; numbers for which the orders round differently.
TEST(Box2dMapping, ScalesAfterTheMatrix) {
    const GTransf2d t = BuildTransf2d({{{0, 1}, {-1, 0}}}, {1, 0}, 2, 1, 0, 0);
    EXPECT_EQ(Numbers(GBox2d{{0, 0}, {1, 2}} * t), (std::vector<double>{-3, 0, 1, 2}));

    const GBox2d point = BuildBox2d(0.1, 0.0);
    const GTransf2d rounding = BuildTransf2d({{{0.7, 0}, {0, 1}}}, {0, 0}, 1.7, 0, 0, 0);
    ASSERT_NE(0.1 * 0.7 * 1.7, 0.1 * 1.7 * 0.7);
    EXPECT_EQ((point * rounding).m_low.m_x, 0.1 * 0.7 * 1.7);
    GBox2d in_place = point;
    EXPECT_EQ((in_place *= rounding).m_low.m_x, 0.1 * 0.7 * 1.7);
}

TEST(Box2dMapping, LeavesTheBoxUnderANearIdentityAndSortsElsewhere) {
    const double tol = GetRelativeTolerance();
    const GMatrix2d near = {{{1 + tol / 2, -tol}, {tol, 1}}};
    const GMatrix2d turn = {{{0, 1}, {-1, 0}}};
    const GBox2d reversed = {{5, 7}, {1, 2}};
    GBox2d box = reversed;
    EXPECT_EQ(Bits(box * near), Bits(reversed));
    EXPECT_EQ(Bits(near * box), Bits(reversed));
    EXPECT_EQ(Numbers(box * turn), (std::vector<double>{-7, 1, -2, 5}));
    EXPECT_EQ(Numbers(turn * box), (std::vector<double>{2, -5, 7, -1}));
    EXPECT_EQ(Numbers(box *= turn), (std::vector<double>{-7, 1, -2, 5}));
}

TEST(BoxConversion, ReportsBoxesOffThePlane) {
    const double t = GetDistanceTolerance();
    MessageRecorder recorder;
    const auto plan = [](double low, double high) {
        return Numbers(GBox{{1, 2, low}, {3, 4, high}}.Convert2d());
    };
    const std::vector<double> expected = {1, 2, 3, 4};
    EXPECT_EQ(plan(-t, t), expected);
    EXPECT_EQ(recorder.Take(), Messages{});
    EXPECT_EQ(plan(-Up(t), 0), expected);
    EXPECT_EQ(plan(0, Up(t)), expected);
    EXPECT_EQ(plan(-5, 5), expected);
    EXPECT_EQ(recorder.Take(), Messages(3, "Convert2d: GBox z coordinate > distanceTolerance"));
}

}  // namespace
}  // namespace kvgeom::test
