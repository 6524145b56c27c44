// SPDX-License-Identifier: MIT
#include "tests/support/messages.h"
#include "tests/support/records.h"
#include "tests/support/tolerance_guard.h"

#include <gtest/gtest.h>

namespace kvgeom::test {
namespace {

constexpr GPosition kOrigin = {0, 0, 0};
constexpr GBoreLine kLine = {kOrigin, kX, 10, -2, 1};

TEST(BoreLine, IsNullWithTheDistanceToleranceOfTheMoment) {
    const ToleranceGuard guard;
    const GBoreLine null = BuildBoreLine(kOrigin, kX);
    EXPECT_EQ(Numbers(null), (std::vector<double>{0, 0, 0, 1, 0, 0, kBig, -kBig, 1e-6}));
    EXPECT_EQ(null.IsNull(), 1);
    long err;
    SetDistanceTolerance(1e-7, &err);
    EXPECT_EQ(null.IsNull(), 0);
    SetDistanceTolerance(1e-5, &err);
    EXPECT_EQ(null.IsNull(), 1);
    EXPECT_EQ(BuildBoreLine(kOrigin, kY).IsNull(), 0);
}

TEST(BoreLine, IsInfiniteWhenOneLimitIsAbsent) {
    const struct {
        double front;
        double back;
        int expected;
    } rows[] = {{5, -5, 0},    {kBig, -5, 1},       {2e30, 0, 1},    {Down(kBig), 0, 0},
                {5, -kBig, 1}, {5, -Down(kBig), 0}, {-kBig, kBig, 0}};
    for (const auto& row : rows) {
        const GBoreLine l = BuildBoreLine(kOrigin, kX, row.front, row.back, 3);
        EXPECT_EQ(l.IsInfinite(), row.expected) << row.front << ", " << row.back;
        GBoreLine m = l;
        m.MakeInfinite();
        EXPECT_EQ(Numbers(m), Numbers(BuildBoreLine(kOrigin, kX, kBig, -kBig, 3)));
    }
}

TEST(BoreLine, EqualityIsStrictInLimitsAndRadius) {
    const GBoreLine l = BuildBoreLine(kOrigin, kX, 0, 0, 0);
    for (const double difference : {1e-6, -1e-6, Down(1e-6)}) {
        const int expected = std::fabs(difference) < 1e-6 ? 1 : 0;
        EXPECT_EQ(l.IsEqual({kOrigin, kX, difference, 0, 0}), expected);
        EXPECT_EQ(l.IsEqual({kOrigin, kX, 0, difference, 0}), expected);
        EXPECT_EQ(l.IsEqual({kOrigin, kX, 0, 0, difference}), expected);
    }
    EXPECT_EQ(l.IsEqual({{1e-6, 0, 0}, kX, 0, 0, 0}), 1) << "points are equal inclusively";
    EXPECT_EQ(l.IsEqual({{2e-6, 0, 0}, kX, 0, 0, 0}), 0);
    EXPECT_EQ(l.IsEqual({kOrigin, {1, 1e-9, 0}, 0, 0, 0}), 0);
}

TEST(BoreLine, HoldsItsSurface) {
    const struct {
        GPosition q;
        int expected;
    } rows[] = {{{10, 1, 0}, 1}, {{10.000001, 0, 0}, 0}, {{-2, 0, 0.5}, 1},   {{5, 0.8, 0.7}, 0},
                {{5, 0, -1}, 1}, {{0, 0, Up(1)}, 0},     {{-Up(2), 0, 0}, 0}, {{5, kNaN, 0}, 0}};
    for (const auto& row : rows) {
        EXPECT_EQ(kLine >> row.q, row.expected) << row.q.m_x << " " << row.q.m_y;
    }
    for (const double t : {-2.0, 10.0, 3.0}) {
        EXPECT_EQ(kLine >> t, 1);
    }
    for (const double t : {-2.5, Up(10.0), kNaN}) {
        EXPECT_EQ(kLine >> t, 0);
    }
    const GBoreLine skew = BuildBoreLine({1, 2, 3}, BuildUnitVector(1, 2, -2), 9, -9, 1);
    EXPECT_EQ(Numbers(skew.Evaluate(3.0)), Numbers(GPosition{2, 4, 1}));
    EXPECT_NEAR(skew.Evaluate(GPosition{2, 4, 1}), 3, 1e-15);
    EXPECT_NEAR(skew.Evaluate(GPosition{2 + 2, 4 - 1, 1}), 3, 1e-15) << "beside the line";
}

TEST(BoreLine, VectorsMoveItsPointAndNumbersScaleItsSizes) {
    MessageRecorder recorder;
    const GVector v = {1, 10, 100};
    GBoreLine moved = kLine;
    moved += v;
    EXPECT_EQ(Numbers(moved), Numbers(GBoreLine{{1, 10, 100}, kX, 10, -2, 1}));
    EXPECT_EQ(Bits(moved), Bits(kLine + v));
    moved -= 2.0 * v;
    EXPECT_EQ(Numbers(moved), Numbers(kLine - v));

    const double tiny = 2.220446049250313e-16;
    const struct {
        double s;
        bool reported;
        double divisor;
    } rows[] = {{4, false, 4},     {tiny, false, tiny},       {Down(tiny), true, tiny},
                {0.0, true, tiny}, {-Down(tiny), true, tiny}, {-tiny, true, -tiny},
                {-2, true, -2}};
    for (const auto& row : rows) {
        const auto expect = [&](const GBoreLine& result, double factor, const char* message) {
            EXPECT_EQ(Numbers(result),
                      Numbers(GBoreLine{kOrigin, kX, 10 * factor, -2 * factor, 1 * factor}));
            EXPECT_EQ(recorder.Take(), row.reported ? Messages{message} : Messages{});
        };
        GBoreLine multiplied = kLine;
        multiplied *= row.s;
        expect(multiplied, row.s, "GBoreLine: multiplying by 0.0");
        expect(kLine * row.s, row.s, "GBoreLine: trying to multiply by value <= 0.0");
        GBoreLine divided = kLine;
        divided /= row.s;
        const GBoreLine by_divisor = {kOrigin, kX, 10 / row.divisor, -2 / row.divisor,
                                      1 / row.divisor};
        EXPECT_EQ(Bits(divided), Bits(by_divisor));
        EXPECT_EQ(recorder.Take(), row.reported ? Messages{"GBoreLine: scalar < tol"} : Messages{});
        EXPECT_EQ(Bits(kLine / row.s), Bits(by_divisor));
        EXPECT_EQ(recorder.Take(), row.reported
                                       ? Messages{"GBoreLine: trying to divide by value <= 0.0"}
                                       : Messages{});
    }
}

TEST(BoreLine, RangeHoldsTheCylinder) {
    EXPECT_EQ(Numbers(BoreLineRange({kOrigin, kZ, 5, 0, 1})),
              (std::vector<double>{-1, -1, 0, 1, 1, 5}));
    EXPECT_EQ(Numbers(BoreLineRange({{1, 2, 3}, kY, 5, -2, 0})),
              (std::vector<double>{1, 0, 3, 1, 7, 3}));
    Random random(51);
    for (int i = 0; i < 3000; ++i) {
        const GBoreLine l = random.BoreLine();
        EXPECT_EQ(BoreLineRange(l) >> Sample(random, l, 1), 1);
    }
    const GBox infinite = BoreLineRange(BuildBoreLine(kOrigin, BuildUnitVector(1, 2, 3)));
    EXPECT_LT(infinite.m_low.m_z, -8e29);
    EXPECT_GT(infinite.m_high.m_x, 2e29);

    MessageRecorder recorder;
    const GBox null_direction = BoreLineRange({{1, 2, 3}, {0, 0, 0}, 5, 0, 1});
    EXPECT_EQ(recorder.Take(), (Messages{kNullUnitVector, "GVector: trying to divide by 0.0"}));
    EXPECT_TRUE(IsFinite(Numbers(null_direction)));
}

TEST(BoreLine, IsClippedToThePositiveSideOfAPlane) {
    const double h = 0.5e-6;
    const GBoreLine l = {kOrigin, kZ, 5, -5, 100};
    const struct {
        GVector normal;
        double d;
        int kept;
        double front;
        double back;
    } rows[] = {
        {{0, 0, 1}, 0, 1, 5, 0},
        {{0, 0, -1}, 0, 1, 0, -5},
        {{0, 0, 7}, -2, 1, 5, 2},  // the normal is normalised, d is not
        {{0, 0, -7}, -2, 1, -2, -5},
        {{0, 0, 1}, -10, 0, 0, 0},
        {{0, 0, 1}, 10, 1, 5, -5},
        {{1, 0, 0}, 0, 0, 0, 0},  // within the plane
        {{1, 0, 0}, Down(h), 0, 0, 0},
        {{1, 0, 0}, h, 1, 5, -5},
        {{1, 0, 0}, -1, 0, 0, 0},
        // An end within half the tolerance of the plane is on either side, as the other end has it.
        {{0, 0, 1}, -5 + Down(h), 0, 0, 0},
        {{0, 0, 1}, 5 - 0.9 * h, 1, 5, -5},
        {{0, 0, 1}, 5 - 1.1 * h, 1, 5, -5 + 1.1 * h},
    };
    for (const auto& row : rows) {
        GBoreLine clipped = l;
        EXPECT_EQ(clipped.ClipWPlane(row.normal.m_x, row.normal.m_y, row.normal.m_z, row.d),
                  row.kept);
        EXPECT_LT(Distance(clipped, {kOrigin, kZ, row.front, row.back, 100}), 1e-14)
            << row.normal.m_x << row.normal.m_z << " " << row.d;
    }
}

TEST(BoreLine, ClippingLeavesNullLinesAndSurvivesNullNormals) {
    MessageRecorder recorder;
    GBoreLine null = BuildBoreLine(kOrigin, kX);
    EXPECT_EQ(null.ClipWPlane(0, 0, 0, 5), 0);
    EXPECT_EQ(null.IsNull(), 1);
    EXPECT_EQ(recorder.Take(), Messages{});
    for (const double d : {0.0, 7.0, -7.0, kInf}) {
        GBoreLine l = kLine;
        EXPECT_EQ(l.ClipWPlane(0, 0, 0, d), 0);
        EXPECT_EQ(Numbers(l), Numbers(GBoreLine{kOrigin, kX, 0, 0, 1}));
        EXPECT_EQ(recorder.Take(), Messages{kNullUnitVector});
    }
    // An endless line parallel to the plane, whose far ends are rounded to either side of it.
    Random random(52);
    for (int i = 0; i < 5000; ++i) {
        const GUnitVector normal = random.Direction();
        GBoreLine l = BuildBoreLine(random.Point(), GetPerpVector(normal));
        l.ClipWPlane(normal.m_x, normal.m_y, normal.m_z, random.Uniform(-1, 1));
        EXPECT_TRUE(IsFinite(Numbers(l)));
    }
}

TEST(BoreLine, ClippingAnEndlessParallelLineGoesByItsPoint) {
    Random random(55);
    int parallel = 0;
    for (int i = 0; i < 5000; ++i) {
        const GUnitVector direction = random.Direction();
        const GUnitVector normal = GetPerpVector(direction);
        const GPosition far_end = BuildBoreLine({0, 0, 0}, direction).Evaluate(kBig);
        if (normal % direction != 0.0 || far_end % normal == 0.0) {
            continue;  // only where the far ends seem to lie on different sides
        }
        ++parallel;
        for (const double d : {-5.0, 5.0}) {
            GBoreLine l = BuildBoreLine({0, 0, 0}, direction);
            l.m_radius = 1;
            EXPECT_EQ(l.ClipWPlane(normal.m_x, normal.m_y, normal.m_z, d), d > 0 ? 1 : 0);
            EXPECT_EQ(l.m_front, d > 0 ? kBig : 0);
        }
    }
    EXPECT_GT(parallel, 100);
}

TEST(BoreLine, ClippingKeepsWhatIsInFront) {
    Random random(53);
    for (int i = 0; i < 5000; ++i) {
        const GBoreLine l = random.BoreLine();
        const GUnitVector n = random.Direction();
        const double d = random.Uniform(-10, 10);
        GBoreLine clipped = l;
        const int kept = clipped.ClipWPlane(n.m_x, n.m_y, n.m_z, d);
        for (int k = 0; k < 8; ++k) {
            const double t = random.Uniform(l.m_back, l.m_front);
            const double distance = l.Evaluate(t) % n + d;
            if (std::fabs(distance) > 2e-6) {
                EXPECT_EQ(kept && clipped >> t, distance > 0) << distance;
            }
        }
    }
}

TEST(BoreLine, MeetsBoxesAsASegmentAgainstTheEnlargedBox) {
    const GBoreLine l = {kOrigin, kX, 10, 0, 0.5};
    const GBoreLine thin = {kOrigin, kX, 10, 0, 0};
    const struct {
        GBoreLine line;
        GBox box;
        int expected;
    } rows[] = {
        {l, {{5, 0.4, -1}, {6, 1, 1}}, 1},
        {l, {{5, 0.5, -1}, {6, 1, 1}}, 1},  // touching counts
        {l, {{5, 0.51, -1}, {6, 1, 1}}, 0},
        {l, {{11, -1, -1}, {12, 1, 1}}, 0},
        {l, {{10.5, -1, -1}, {12, 1, 1}}, 1},
        {l, {{-2, -1, -1}, {-0.5, 1, 1}}, 1},
        {l, {{-2, -1, -1}, {-0.51, 1, 1}}, 0},
        {thin, {{5, -1, -1}, {5, 1, 1}}, 1},  // a sheet
        {thin, {{5, 0, 0}, {5, 0, 0}}, 1},    // a point
        {thin, {{5, 1e-9, 0}, {6, 1, 1}}, 0},
        {thin, {{0, 0, 0}, {10, 0, 0}}, 1},
        {{kOrigin, kX, 0, 10, 0.5}, {{5, 0, 0}, {6, 1, 1}}, 1},  // limits exchanged
        {{kOrigin, kX, kBig, -kBig, 0.5}, {{-1e9, 0, 0}, {-1e8, 1, 1}}, 1},
        {{kOrigin, kX, kBig, -kBig, 0.5}, {{-1e9, 1, 0}, {1e9, 1, 1}}, 0},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(row.line && row.box, row.expected)
            << row.box.m_low.m_x << " " << row.box.m_low.m_y;
        // The same turned onto the other two axes.
        for (int k = 1; k < 3; ++k) {
            const auto turn = [k](const auto& p) {
                auto q = p;
                for (unsigned i = 0; i < 3; ++i) {
                    q[(i + static_cast<unsigned>(k)) % 3] = p[i];
                }
                return q;
            };
            GBoreLine line = row.line;
            line.m_direction = turn(line.m_direction);
            const GBox box = {turn(row.box.m_low), turn(row.box.m_high)};
            EXPECT_EQ(line && box, row.expected) << k;
        }
    }
}

TEST(BoreLine, NeverMissesABoxThatItShares) {
    Random random(54);
    int misses = 0;
    for (int i = 0; i < 100000; ++i) {
        const GBoreLine l = random.BoreLine();
        const GBox box = random.ProperBox();
        const int may_touch = l && box;
        misses += may_touch ? 0 : 1;
        EXPECT_TRUE(may_touch || !(box >> Sample(random, l, 1 - 1e-9)));
        // And the cut holds all that is shared: its front and back bound the box's corners.
        const GBoreLine cut = l & box;
        if (may_touch) {
            const double t = cut.Evaluate(Sample(random, box));
            EXPECT_GE(t, -1e-12);
            EXPECT_LE(t, cut.m_front + 1e-12);
            EXPECT_EQ(cut.m_back, 0);
            EXPECT_EQ(cut.m_radius, l.m_radius);
        } else {
            EXPECT_EQ(cut.IsNull(), 1);
        }
    }
    EXPECT_GT(misses, 10000) << "a test that always answers 1 would pass";
}

TEST(BoreLine, IsCutToTheSpanOfTheEnlargedBox) {
    const GBoreLine l = {kOrigin, kX, 10, 0, 0.5};
    EXPECT_EQ(Numbers(l & GBox{{2, -1, -1}, {3, 1, 1}}),
              Numbers(GBoreLine{{1.5, 0, 0}, kX, 2, 0, 0.5}));
    EXPECT_EQ(Numbers(l & GBox{{9, -1, -1}, {30, 1, 1}}),
              Numbers(GBoreLine{{8.5, 0, 0}, kX, 22, 0, 0.5}));
    EXPECT_EQ(Numbers(l & GBox{{12, -1, -1}, {30, 1, 1}}), Numbers(BuildBoreLine(kOrigin, kX)));
    // A direction of mixed signs: all eight corners count.
    const GBoreLine mixed = {{0.5, 0.5, 0.5}, {0.6, -0.8, 0}, 10, -10, 0.25};
    const GBoreLine cut = mixed & GBox{{0, 0, 0}, {1, 1, 1}};
    EXPECT_DOUBLE_EQ(cut.m_front, 2 * 0.75 * 1.4);
    EXPECT_LT(Distance(cut.m_point, mixed.Evaluate(-0.75 * 1.4)), 1e-15);
}

}  // namespace
}  // namespace kvgeom::test
