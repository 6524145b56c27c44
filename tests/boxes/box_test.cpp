// SPDX-License-Identifier: MIT

// What is promised of boxes and their maps at their edges, in space and where the plane differs.

#include "tests/support/messages.h"

#include <tuple>

namespace kvgeom::test {
namespace {

constexpr double kTol = 1e-6;
constexpr GBox kNull = {{kBig, kBig, kBig}, {-kBig, -kBig, -kBig}};
constexpr GBox kUnit = {{0, 0, 0}, {1, 1, 1}};

// The box with one coordinate of one corner replaced.
GBox With(GBox box, unsigned corner, unsigned axis, double value) {
    box[corner][axis] = value;
    return box;
}

TEST(Box, AroundNoPointsIsNull) {
    MessageRecorder recorder;
    recorder.Expect(BuildBox(0, nullptr), Numbers(kNull), {"GBox: can't build with 0 points"});
    recorder.Expect(BuildBox2d(0, nullptr), {kBig, kBig, -kBig, -kBig},
                    {"GBox2d: can't build a box with 0 points"});
    // Nothing is beyond NaN, and NaN is beyond nothing.
    GPosition with_nan[] = {{kNaN, 1, 2}, {3, kNaN, 4}};
    EXPECT_EQ(Bits(BuildBox(2, with_nan)), Bits(GBox{{kNaN, 1, 2}, {kNaN, 1, 4}}));
}

TEST(Box, GivesItsCornersByIndexAndInOrder) {
    const auto check = [](auto box, const Messages& messages) {
        MessageRecorder recorder;
        const auto& constant = box;
        EXPECT_EQ(&box[2], &box.m_high);
        EXPECT_EQ(&constant[0xFFFFFFFFU], &box.m_high);
        EXPECT_EQ(recorder.Take(), messages);
    };
    check(kUnit, Messages(2, "GBox: index out of range"));
    check(GBox2d{}, Messages(2, "GBox2d: index out of range"));
    // The corners may be written over the box itself.
    struct {
        GBox box = {{1, 2, 3}, {4, 5, 6}};
        GPosition rest[6];
    } space;
    space.box.GiveCorners(&space.box.m_low);
    EXPECT_EQ(Numbers(space), (std::vector<double>{1, 2, 3, 4, 2, 3, 4, 5, 3, 1, 5, 3,
                                                   1, 2, 6, 4, 2, 6, 4, 5, 6, 1, 5, 6}));
}

TEST(Box, IsNullOnlyWhenReversedByTheToleranceOnSomeAxis) {
    EXPECT_EQ(BuildBox({1, 2, 3}).IsNull(), 0) << "a point";
    EXPECT_EQ(BuildBox({1e12, 2, 3}).IsNull(), 1) << "a coordinate that swallows the tolerance";
    for (unsigned axis = 0; axis < 3; ++axis) {
        EXPECT_EQ(With(kUnit, 1, axis, 0).IsNull(), 0) << "flat";
        EXPECT_EQ(With(kUnit, 1, axis, -kTol).IsNull(), 1);
        EXPECT_EQ(With(kUnit, 1, axis, -Down(kTol)).IsNull(), 0);
        EXPECT_EQ(With(kUnit, 1, axis, kNaN).IsNull(), 0);
        EXPECT_EQ(kUnit.IsEqual(With(kUnit, 1, axis, 1 + 1.1 * kTol)), 0);
        EXPECT_EQ(kUnit.IsEqual(With(kUnit, 0, axis, kTol)), 1);
    }
}

// The tolerance is spread over the axes; a point exactly as far outside as that allows is inside in
// space, outside in the plane.
TEST(Box, HoldsPointsOnAndJustBeyondItsFaces) {
    const double space = kTol / std::sqrt(3.0);
    const double plane = kTol / std::sqrt(2.0);
    const GBox box = BuildBox(0, 0, 0, 0, 0, 0);
    const GBox2d box2d = BuildBox2d(0, 0, 0, 0);
    const std::tuple<double, int, int> rows[] = {
        {plane, 0, 0}, {Down(plane), 0, 1}, {space, 1, 1}, {Up(space), 0, 1}, {kNaN, 1, 1}};
    for (const auto& [offset, in_space, in_plane] : rows) {
        for (const double at : {offset, -offset}) {
            for (unsigned axis = 0; axis < 3; ++axis) {
                GPosition p = {0, 0, 0};
                p[axis] = at;
                EXPECT_EQ(box >> p, in_space) << at;
                // A box is held if both corners are.
                EXPECT_EQ(box >> BuildBox(p, box.m_high), in_space) << at;
                EXPECT_EQ(BuildBox(box.m_low, p) << box, in_space) << at;
            }
            EXPECT_EQ((box2d >> GPosition2d{at, 0}), in_plane) << at;
            EXPECT_EQ((GPosition2d{0, at} << box2d), in_plane) << at;
        }
    }
}

TEST(Box, OverlapIsStrictAgainstTheCallersTolerance) {
    const std::tuple<double, double, int> rows[] = {
        {1, 0, 0},        {1, 1e-9, 1},    {1, -1e-9, 0},   {0.75, 0, 1},   {0.75, -0.25, 0},
        {0.75, -0.24, 1}, {1.25, 0.25, 0}, {1.25, 0.26, 1}, {1.25, kNaN, 0}};
    for (const auto& [low, tol, expected] : rows) {
        for (unsigned axis = 0; axis < 3; ++axis) {
            GBox box = kUnit;
            GBox other = With(With(kUnit, 0, axis, low), 1, axis, 2);
            EXPECT_EQ(box.IsIntersectTol(other, tol), expected) << axis << " " << low;
            EXPECT_EQ(other.IsIntersectTol(box, tol), expected) << axis << " " << low;
        }
    }
}

TEST(Box, NullBoxesTakeNoPartInUnionAndIntersection) {
    const GBox reversed = {{2, 2, 2}, {1, 3, 3}};
    const GBox box = {{-1, 2, 5}, {4, 7, 5}};
    for (const GBox& null : {kNull, reversed}) {
        EXPECT_EQ(Bits(null | box), Bits(box));
        EXPECT_EQ(Bits(box | null), Bits(box));
        EXPECT_EQ(Bits(null | reversed), Bits(kNull));
        EXPECT_EQ(Bits(null & box), Bits(kNull));
        EXPECT_EQ(Bits(box & null), Bits(kNull));
    }
    EXPECT_EQ(Numbers(kUnit | BuildBox({3, -2, 0.5})), (std::vector<double>{0, -2, 0, 3, 1, 1}))
        << "a point grows a box";
}

TEST(Box, IntersectionBridgesGapsBelowTheTolerance) {
    for (unsigned axis = 0; axis < 3; ++axis) {
        const auto cut = [axis](double low) {
            return Numbers(kUnit & With(With(kUnit, 0, axis, low), 1, axis, 2));
        };
        EXPECT_EQ(cut(1 + 0.9 * kTol),
                  Numbers(With(With(kUnit, 0, axis, 1), 1, axis, 1 + 0.9 * kTol)));
        EXPECT_EQ(cut(1), Numbers(With(kUnit, 0, axis, 1))) << "touching: flat";
        EXPECT_EQ(cut(1 + kTol), Numbers(kNull));
    }
}

TEST(BoxConversion, ReportsBoxesOffThePlane) {
    const Messages off = {"Convert2d: GBox z coordinate > distanceTolerance"};
    MessageRecorder recorder;
    recorder.Expect(GBox{{1, 2, -kTol}, {3, 4, kTol}}.Convert2d(), {1, 2, 3, 4});
    recorder.Expect(GBox{{1, 2, -Up(kTol)}, {3, 4, 0}}.Convert2d(), {1, 2, 3, 4}, off);
    recorder.Expect(GBox{{1, 2, 0}, {3, 4, Up(kTol)}}.Convert2d(), {1, 2, 3, 4}, off);
}

TEST(BoxClipping, KeepsTheBoxAroundWhatIsInFront) {
    const double h = 0.5e-6;  // half the distance tolerance
    const GBox flat = {{0, 0, 0}, {0, 1, 1}};
    const GBox reversed = {{1, 1, 1}, {0, 2, 2}};
    const GBox two = {{0, 0, 0}, {2, 2, 2}};
    const std::tuple<GBox, GVector, double, int, GBox> rows[] = {
        {kUnit, {-3, 0, 0}, 0.25, 1, {{0, 0, 0}, {0.25, 1, 1}}},  // d isn't divided by the length
        {kUnit, {1, 1, 1}, -2.5 / std::sqrt(3.0), 1, {{0.5, 0.5, 0.5}, {1, 1, 1}}},
        {kUnit, {1, 0, 0}, -1, 0, kNull},  // touched from behind
        {kUnit, {1, 0, 0}, 0, 1, kUnit},   // touched from the front
        {flat, {1, 0, 0}, 0, 0, kNull},
        {reversed, {1, 0, 0}, 5, 0, reversed},  // null: untouched
        {two, {1, -1, 0}, 0, 1, two},           // corners on the plane stay
        {kUnit, {0, 0, 1}, -Down(h), 1, kUnit},
        {kUnit, {0, 0, 1}, -1.1 * h, 1, {{0, 0, 1.1 * h}, {1, 1, 1}}},
    };
    MessageRecorder recorder;
    for (const auto& [box, normal, d, kept, left] : rows) {
        GBox clipped = box;
        EXPECT_EQ(clipped.ClipWPlane(normal.m_x, normal.m_y, normal.m_z, d), kept);
        EXPECT_LT(Distance(clipped, left), 1e-15) << normal.m_x << normal.m_y << " " << d;
    }
    EXPECT_EQ(recorder.Take(), Messages{});
    for (const double d : {0.0, 3.0, -3.0, kInf}) {
        GBox box = kUnit;
        EXPECT_EQ(box.ClipWPlane(0, 0, 0, d), 0);
        recorder.Expect(box, Numbers(kNull), {kNullUnitVector});
    }
    recorder.Expect(GBox{kNull}.ClipWPlane(0, 0, 0, 5), {0});  // before the normal is looked at
}

}  // namespace
}  // namespace kvgeom::test
