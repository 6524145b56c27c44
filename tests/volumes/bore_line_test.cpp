// SPDX-License-Identifier: MIT

// What is promised of bore lines and their maps at their edges.

#include "tests/support/messages.h"

#include <tuple>
#include "tests/support/tolerance_guard.h"

namespace kvgeom::test {
namespace {

constexpr GPosition kOrigin = {0, 0, 0};
constexpr double kTol = 1e-6;

G4x4 Diagonal(double x, double y, double z, double w) {
    return {{x, 0, 0, 0, 0, y, 0, 0, 0, 0, z, 0, 0, 0, 0, w}};
}

TEST(BoreLine, IsNullWithTheDistanceToleranceOfTheMoment) {
    const ToleranceGuard guard;
    const GBoreLine null = BuildBoreLine(kOrigin, kX);
    EXPECT_EQ(Numbers(null), (std::vector<double>{0, 0, 0, 1, 0, 0, kBig, -kBig, kTol}));
    EXPECT_EQ(null.IsNull(), 1);
    long err;
    SetDistanceTolerance(1e-7, &err);
    EXPECT_EQ(null.IsNull(), 0);
}

TEST(BoreLine, IsInfiniteWhenOneLimitIsAbsentAndHasItsSurfaceInside) {
    const std::tuple<double, double, int> rows[] = {{Down(kBig), 0, 0},  {kBig, -5, 1},
                                                    {2e30, 0, 1},        {5, -kBig, 1},
                                                    {5, -Down(kBig), 0}, {-kBig, kBig, 0}};
    for (const auto& [front, back, expected] : rows) {
        EXPECT_EQ((GBoreLine{kOrigin, kX, front, back, 3}.IsInfinite()), expected) << front;
    }
    const GBoreLine l = {kOrigin, kX, 10, -2, 1};
    const std::pair<GPosition, int> points[] = {{{10, 1, 0}, 1},    {{Up(10), 0, 0}, 0},
                                                {{-2, 0, -1}, 1},   {{-Up(2), 0, 0}, 0},
                                                {{0, 0, Up(1)}, 0}, {{5, kNaN, 0}, 0}};
    for (const auto& [q, expected] : points) {
        EXPECT_EQ(l >> q, expected) << q.m_x << " " << q.m_y;
    }
    for (const double t : {-2.0, 10.0}) {
        EXPECT_EQ(l >> t, 1);
        EXPECT_EQ(l >> Up(t), 0);
    }
}

TEST(BoreLine, IsClippedToThePositiveSideOfAPlane) {
    const double h = kTol / 2;
    const GBoreLine l = {kOrigin, kZ, 5, -5, 100};
    const std::tuple<GVector, double, int, double, double> rows[] = {
        {{0, 0, 7}, -2, 1, 5, 2},  // the normal is normalised, d is not
        {{1, 0, 0}, 0, 0, 0, 0},   // within the plane
        {{1, 0, 0}, Down(h), 0, 0, 0},
        {{1, 0, 0}, h, 1, 5, -5},
        // An end within half the tolerance of the plane is on either side, as the other end has it.
        {{0, 0, 1}, -5 + 0.9 * h, 0, 0, 0},
        {{0, 0, 1}, 5 - 0.9 * h, 1, 5, -5},
        {{0, 0, 1}, 5 - 1.1 * h, 1, 5, -5 + 1.1 * h},
    };
    MessageRecorder recorder;
    for (const auto& [normal, d, kept, front, back] : rows) {
        GBoreLine clipped = l;
        EXPECT_EQ(clipped.ClipWPlane(normal.m_x, normal.m_y, normal.m_z, d), kept);
        EXPECT_LT(Distance(clipped, {kOrigin, kZ, front, back, 100}), 1e-14)
            << normal.m_x << normal.m_z << " " << d;
    }
    // Parallel to the plane, with ends so far away that rounding puts them on different sides.
    const GUnitVector along = BuildUnitVector(1, 3, 0);
    const GBoreLine endless = BuildBoreLine(kOrigin, along, kBig, -kBig, 1);
    for (const double d : {1.0, -1.0}) {
        GBoreLine clipped = endless;
        EXPECT_EQ(clipped.ClipWPlane(-along.m_y, along.m_x, 0, d), d > 0 ? 1 : 0);
        EXPECT_EQ(clipped.m_front, d > 0 ? kBig : 0);
        EXPECT_EQ(clipped.m_back, d > 0 ? -kBig : 0);
    }
    // A null line is told before the normal is looked at.
    recorder.Expect(BuildBoreLine(kOrigin, kX).ClipWPlane(0, 0, 0, 5), {0});
    for (const double d : {0.0, 7.0, -7.0, kInf}) {
        GBoreLine clipped = l;
        EXPECT_EQ(clipped.ClipWPlane(0, 0, 0, d), 0);
        recorder.Expect(clipped, {0, 0, 0, 0, 0, 1, 0, 0, 100}, {kNullUnitVector});
    }
}

TEST(BoreLine, MeetsBoxesAsASegmentAgainstTheEnlargedBox) {
    const std::tuple<double, double, double, GBox, int> rows[] = {
        {10, 0, 0.5, {{5, 0.5, -1}, {6, 1, 1}}, 1},  // touching counts
        {10, 0, 0.5, {{5, Up(0.5), -1}, {6, 1, 1}}, 0},
        {10, 0, 0.5, {{10.5, -1, -1}, {12, 1, 1}}, 1},
        {10, 0, 0, {{5, -1, -1}, {5, 1, 1}}, 1},  // a sheet
        {10, 0, 0, {{5, 0, 0}, {5, 0, 0}}, 1},    // a point
        {10, 0, 0, {{5, 1e-9, 0}, {6, 1, 1}}, 0},
        {0, 10, 0.5, {{5, 0, 0}, {6, 1, 1}}, 1},  // limits exchanged
        {kBig, -kBig, 0.5, {{-1e9, 0, 0}, {-1e8, 1, 1}}, 1},
        {kBig, -kBig, 0.5, {{-1e9, 1, 0}, {1e9, 1, 1}}, 0},
    };
    for (const auto& [front, back, radius, box, expected] : rows) {
        GBoreLine line = {kOrigin, kX, front, back, radius};
        GBox turned = box;
        for (int axis = 0; axis < 3; ++axis) {
            EXPECT_EQ(line && turned, expected) << box.m_low.m_x << " on axis " << axis;
            EXPECT_EQ((line & turned).IsNull(), 1 - expected);
            const auto turn = [](auto& p) { p = {p.m_z, p.m_x, p.m_y}; };
            turn(line.m_direction);
            turn(turned.m_low);
            turn(turned.m_high);
        }
    }
}

TEST(BoreLineMapping, TakesAffineMatricesForSimilaritiesOnlyWithTheMatrixFirst) {
    const GBoreLine l = {{1, 10, 100}, kZ, 4, -3, 2};
    EXPECT_EQ(Numbers(Diagonal(2, 3, 4, 1) * l), Numbers(GBoreLine{{2, 30, 400}, kZ, 8, -6, 4}));
    // The other order rebuilds the bore line from five points.
    EXPECT_EQ(Numbers(l * Diagonal(2, 3, 4, 1)), Numbers(GBoreLine{{2, 30, 400}, kZ, 16, -12, 4}));
    // What the shortcut refuses: a weight of other than exactly 1, a null first row, no volume.
    for (const G4x4& refused : {Diagonal(1, 1, 1, 0.5), Diagonal(1e-11, 1e3, 1e3, 1),
                                Diagonal(1e-10, 1, 1, 1), Diagonal(1, 1e-15, 1e-15, 1)}) {
        const GBoreLine mapped = refused * l;
        EXPECT_DOUBLE_EQ(mapped.m_front,
                         GDistance(refused * l.m_point, refused * l.Evaluate(l.m_front)));
        EXPECT_DOUBLE_EQ(mapped.m_radius, 2 * refused.m_matrix[0] / refused.m_matrix[15]);
    }
}

TEST(BoreLineMapping, LimitsKeepTheirSignsAndStayWithinInfinity) {
    const std::tuple<double, double, double, double> rows[] = {{4, 3, 8, 6},
                                                               {-3, -4, -6, -8},
                                                               {4, 0, 8, 0},
                                                               {kBig, 0.6e30, kBig, kBig},
                                                               {-0.6e30, -kBig, -kBig, -kBig}};
    for (const auto& [front, back, mapped_front, mapped_back] : rows) {
        const GBoreLine mapped = GBoreLine{kOrigin, kY, front, back, 1} * Diagonal(1, 2, 1, 1);
        EXPECT_EQ(mapped.m_front, mapped_front) << front;
        EXPECT_EQ(mapped.m_back, mapped_back) << back;
    }
}

TEST(BoreLineMapping, ReportsNegativeRadiiAndVanishingWeights) {
    const Messages negative = {"GBoreLine: radius is < 0.0"};
    const char* const weight = "GPosition: in multiplying G4x4, trying to divide by 0.0";
    const GBoreLine inverted = {kOrigin, kX, 1, -1, -2};
    MessageRecorder recorder;
    recorder.Expect((inverted * Diagonal(1, 1, 1, 1)).m_radius, {-2}, negative);
    recorder.Expect((Diagonal(2, 2, 2, 1) * inverted).m_radius, {-4}, negative);
    recorder.Expect((inverted * Diagonal(1, 2, 1, 1)).m_radius, {2}, negative);
    recorder.Expect((Diagonal(1, 1, 1, 0) * inverted).m_front, {kBig},
                    {negative[0], weight, weight, weight, weight, weight});
    // Points that all fall together have no direction.
    recorder.Expect((Diagonal(0, 0, 0, 1) * GBoreLine{kOrigin, kX, 1, 0, 1}).m_direction, {0, 0, 0},
                    {kNullUnitVector});
}

}  // namespace
}  // namespace kvgeom::test
