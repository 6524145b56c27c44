// SPDX-License-Identifier: MIT
#include "tests/support/messages.h"
#include "tests/support/records.h"

#include <gtest/gtest.h>

namespace kvgeom::test {
namespace {

constexpr double kTol = 1e-6;
constexpr GBox kNull = {{kBig, kBig, kBig}, {-kBig, -kBig, -kBig}};
constexpr GBox kAllSpace = {{-kBig, -kBig, -kBig}, {kBig, kBig, kBig}};
constexpr GBox kUnit = {{0, 0, 0}, {1, 1, 1}};

// The box with one coordinate of one corner replaced.
GBox With(GBox box, unsigned corner, unsigned axis, double value) {
    box[corner][axis] = value;
    return box;
}

TEST(Box, IsBuiltAsGivenOrAroundPoints) {
    MessageRecorder recorder;
    EXPECT_EQ(Numbers(BuildBox(6, 5, 4, 3, 2, 1)), (std::vector<double>{6, 5, 4, 3, 2, 1}));
    EXPECT_EQ(Numbers(BuildBox({6, 5, 4}, {3, 2, 1})), (std::vector<double>{6, 5, 4, 3, 2, 1}));
    EXPECT_EQ(Numbers(BuildBox({1, 2, 3})), (std::vector<double>{1, 2, 3, 1, 2, 3}));
    GPosition points[] = {{1, 5, 0}, {-2, 7, 3}, {4, -1, 1}};
    EXPECT_EQ(Numbers(BuildBox(3, points)), (std::vector<double>{-2, -1, 0, 4, 7, 3}));
    EXPECT_EQ(Numbers(BuildBox(1, points)), (std::vector<double>{1, 5, 0, 1, 5, 0}));
    // Nothing is beyond NaN, and NaN is beyond nothing.
    GPosition with_nan[] = {{kNaN, 1, 2}, {3, kNaN, 4}};
    EXPECT_EQ(Bits(BuildBox(2, with_nan)), Bits(GBox{{kNaN, 1, 2}, {kNaN, 1, 4}}));
    EXPECT_EQ(recorder.Take(), Messages{});
    EXPECT_EQ(Numbers(BuildBox(0, nullptr)), Numbers(kNull));
    EXPECT_EQ(recorder.Take(), Messages{"GBox: can't build with 0 points"});
}

TEST(Box, GivesItsCornersByIndex) {
    MessageRecorder recorder;
    GBox box = {{1, 2, 3}, {4, 5, 6}};
    const GBox& constant = box;
    EXPECT_EQ(&box[0], &box.m_low);
    EXPECT_EQ(&constant[1], &box.m_high);
    EXPECT_EQ(recorder.Take(), Messages{});
    EXPECT_EQ(&box[2], &box.m_high);
    EXPECT_EQ(&constant[0xFFFFFFFFU], &box.m_high);
    const char* const message = "GBox: index out of range";
    EXPECT_EQ(recorder.Take(), (Messages{message, message}));

    GPosition corners[8];
    box.GiveCorners(corners);
    const GPosition expected[8] = {{1, 2, 3}, {4, 2, 3}, {4, 5, 3}, {1, 5, 3},
                                   {1, 2, 6}, {4, 2, 6}, {4, 5, 6}, {1, 5, 6}};
    for (int i = 0; i < 8; ++i) {
        EXPECT_EQ(Numbers(corners[i]), Numbers(expected[i])) << i;
    }
    // The corners may be written over the box itself.
    struct {
        GBox box;
        GPosition rest[6];
    } overlaid = {box, {}};
    overlaid.box.GiveCorners(&overlaid.box.m_low);
    EXPECT_EQ(Numbers(overlaid.rest[5]), Numbers(expected[7]));
}

TEST(Box, IsNullOnlyWhenReversedByTheToleranceOnSomeAxis) {
    EXPECT_EQ(kNull.IsNull(), 1);
    EXPECT_EQ(kAllSpace.IsNull(), 0);
    EXPECT_EQ(BuildBox({1, 2, 3}).IsNull(), 0) << "a point";
    for (unsigned axis = 0; axis < 3; ++axis) {
        EXPECT_EQ(With(kUnit, 1, axis, 0).IsNull(), 0) << "flat";
        EXPECT_EQ(With(kUnit, 1, axis, -kTol).IsNull(), 1);
        EXPECT_EQ(With(kUnit, 1, axis, -Down(kTol)).IsNull(), 0);
        EXPECT_EQ(With(kUnit, 1, axis, kNaN).IsNull(), 0);
    }
}

TEST(Box, EqualityGoesByCorners) {
    for (unsigned corner = 0; corner < 2; ++corner) {
        for (unsigned axis = 0; axis < 3; ++axis) {
            const double at = kUnit[corner][axis];
            EXPECT_EQ(kUnit.IsEqual(With(kUnit, corner, axis, at + 0.9 * kTol)), 1);
            EXPECT_EQ(kUnit.IsEqual(With(kUnit, corner, axis, at - 1.1 * kTol)), 0);
        }
    }
}

TEST(Box, HoldsPointsOnAndJustBeyondItsFaces) {
    const double t = kTol / 1.7320508075688772;
    for (unsigned axis = 0; axis < 3; ++axis) {
        GPosition p = {0.5, 0.5, 0.5};
        const auto holds = [&p, axis](double value) {
            p[axis] = value;
            EXPECT_EQ(p << kUnit, kUnit >> p);
            return kUnit >> p;
        };
        EXPECT_EQ(holds(1), 1);
        EXPECT_EQ(holds(1 + t), 1);
        EXPECT_EQ(holds(Up(1 + t)), 0);
        EXPECT_EQ(holds(0 - t), 1);
        EXPECT_EQ(holds(Up(-t)), 0);
        EXPECT_EQ(holds(kNaN), 1) << "nothing shows NaN to be outside";
    }
}

TEST(Box, HoldsBoxesByTheirCorners) {
    EXPECT_EQ(kUnit >> kUnit, 1);
    EXPECT_EQ(kUnit << kUnit, 1);
    for (unsigned axis = 0; axis < 3; ++axis) {
        const GBox low_out = With(kUnit, 0, axis, -0.5);
        const GBox high_out = With(kUnit, 1, axis, 1.5);
        EXPECT_EQ(kUnit >> low_out, 0);
        EXPECT_EQ(kUnit >> high_out, 0);
        EXPECT_EQ(kUnit << high_out, 1);
        EXPECT_EQ(low_out >> kUnit, 1);
        EXPECT_EQ(low_out << kUnit, 0);
    }
}

TEST(Box, OverlapIsStrictAgainstTheCallersTolerance) {
    for (unsigned axis = 0; axis < 3; ++axis) {
        GBox box = kUnit;
        GBox touching = With(With(kUnit, 0, axis, 1), 1, axis, 2);
        GBox overlapping = With(touching, 0, axis, 0.75);
        GBox apart = With(touching, 0, axis, 1.25);
        const struct {
            GBox* other;
            double tol;
            int expected;
        } rows[] = {{&touching, 0, 0},    {&touching, 1e-9, 1},     {&touching, -1e-9, 0},
                    {&overlapping, 0, 1}, {&overlapping, -0.25, 0}, {&overlapping, -0.2, 1},
                    {&apart, 0.25, 0},    {&apart, 0.26, 1},        {&apart, kNaN, 0}};
        for (const auto& row : rows) {
            EXPECT_EQ(box.IsIntersectTol(*row.other, row.tol), row.expected) << axis;
            EXPECT_EQ(row.other->IsIntersectTol(box, row.tol), row.expected) << axis;
        }
        EXPECT_EQ(Numbers(box), Numbers(kUnit));
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
    // A point grows a box.
    EXPECT_EQ(Numbers(kUnit | BuildBox({3, -2, 0.5})), (std::vector<double>{0, -2, 0, 3, 1, 1}));
}

TEST(Box, IntersectionBridgesGapsBelowTheTolerance) {
    EXPECT_EQ(Bits(kUnit & GBox{{2, 2, 2}, {3, 3, 3}}), Bits(kNull));
    const GBox wide = {{-5, -5, -5}, {5, 5, 5}};
    for (unsigned axis = 0; axis < 3; ++axis) {
        const auto from = [axis](double low) {
            return With(With({{0, 0, 0}, {1, 1, 1}}, 0, axis, low), 1, axis, 2);
        };
        EXPECT_EQ(Numbers(kUnit & from(1 + 5e-7)),
                  Numbers(With(With(kUnit, 0, axis, 1), 1, axis, 1 + 5e-7)));
        EXPECT_EQ(Numbers(kUnit & from(1)), Numbers(With(kUnit, 0, axis, 1))) << "touching: flat";
        EXPECT_EQ(Numbers(kUnit & from(1 + kTol)), Numbers(kNull));
        EXPECT_EQ(Numbers(from(0.25) & wide), Numbers(from(0.25)));
    }
}

TEST(Box, SetOperationsObeyTheirLaws) {
    Random random(41);
    for (int i = 0; i < 5000; ++i) {
        const GBox a = random.Box();
        const GBox b = random.Box();
        GBox joined = a;
        joined |= b;
        EXPECT_EQ(Bits(joined), Bits(a | b));
        EXPECT_EQ(Numbers(joined), Numbers(b | a));
        GBox common = a;
        common &= b;
        EXPECT_EQ(Bits(common), Bits(a & b));
        EXPECT_EQ(Numbers(common), Numbers(b & a));
        for (const GBox& box : {a, b}) {
            if (!box.IsNull()) {
                EXPECT_EQ(joined >> Sample(random, box), 1);
            }
            if (!common.IsNull()) {
                EXPECT_EQ(box >> common, 1);
            }
        }
    }
}

TEST(Box, MovesAndScalesWithOrderedCorners) {
    MessageRecorder recorder;
    const GBox box = {{1, 2, 3}, {4, 8, 16}};
    GBox moved = box;
    moved += GVector{1, 10, 100};
    EXPECT_EQ(Numbers(moved), (std::vector<double>{2, 12, 103, 5, 18, 116}));
    moved -= GVector{1, 10, 100};
    EXPECT_EQ(Numbers(moved), Numbers(box));
    const struct {
        double s;
        GBox multiplied;
        GBox divided;
    } rows[] = {
        {2, {{2, 4, 6}, {8, 16, 32}}, {{0.5, 1, 1.5}, {2, 4, 8}}},
        {-2, {{-8, -16, -32}, {-2, -4, -6}}, {{-2, -4, -8}, {-0.5, -1, -1.5}}},
        {DBL_EPSILON, box * DBL_EPSILON, {box.m_low, box.m_high}},
        {0, {{0, 0, 0}, {0, 0, 0}}, kAllSpace},
        {-1e-17, {{-4e-17, -8e-17, -16e-17}, {-1e-17, -2e-17, -3e-17}}, kAllSpace},
    };
    for (const auto& row : rows) {
        const bool divides = std::fabs(row.s) >= DBL_EPSILON;
        GBox multiplied = box;
        GBox divided = box;
        multiplied *= row.s;
        EXPECT_EQ(recorder.Take(), Messages{});
        divided /= row.s;
        EXPECT_EQ(recorder.Take(),
                  divides ? Messages{} : Messages{"GBox: trying to divide by 0.0"});
        EXPECT_EQ(Numbers(multiplied), Numbers(row.multiplied));
        EXPECT_EQ(Bits(multiplied), Bits(row.s * box));
        EXPECT_EQ(Bits(multiplied), Bits(box * row.s));
        EXPECT_EQ(Bits(divided), Bits(box / row.s));
        if (row.s != DBL_EPSILON) {
            EXPECT_EQ(Numbers(divided), Numbers(row.divided));
        }
        recorder.Take();
    }
}

}  // namespace
}  // namespace kvgeom::test
