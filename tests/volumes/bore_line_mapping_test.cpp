// SPDX-License-Identifier: MIT
#include "tests/support/messages.h"
#include "tests/support/records.h"

#include <gtest/gtest.h>

namespace kvgeom::test {
namespace {

constexpr GBoreLine kLine = {{1, 10, 100}, {0, 0.6, 0.8}, 4, -3, 2};

G4x4 Diagonal(double x, double y, double z, double w) {
    return {{x, 0, 0, 0, 0, y, 0, 0, 0, 0, z, 0, 0, 0, 0, w}};
}

TEST(BoreLineMapping, ByMatrixLeavesLimitsAndRadius) {
    const GMatrix m = {{{2, 3, 5}, {7, 11, 13}, {17, 19, 23}}};
    const GPosition row = {1772, 2013, 2435};
    const GPosition column = {532, 1417, 2507};
    GBoreLine in_place = kLine;
    in_place *= m;
    EXPECT_EQ(Bits(in_place), Bits(BuildBoreLine(row, kLine.m_direction * m, 4, -3, 2)));
    EXPECT_EQ(Bits(kLine * m), Bits(in_place));
    EXPECT_EQ(Bits(m * kLine), Bits(BuildBoreLine(column, m * kLine.m_direction, 4, -3, 2)));
}

TEST(BoreLineMapping, ByTransformationScalesLimitsAndRadius) {
    MessageRecorder recorder;
    const GTransf t = BuildTransf(Rotation(0.0, 1.0, kX), {1000, 2000, 3000}, -3, 1, 0, 1);
    const GBoreLine expected = {{997, 2300, 2970}, {0, -0.8, 0.6}, -12, 9, -6};
    GBoreLine in_place = kLine;
    in_place *= t;
    EXPECT_LT(Distance(in_place, expected), 1e-15);
    EXPECT_EQ(Bits(kLine * t), Bits(in_place));
    const char* const shear = "GUnitVector: multiplying by trans, trans has Shear";
    EXPECT_EQ(recorder.Take(), (Messages{shear, shear}));
}

TEST(BoreLineMapping, OfASimilarityAsMatrixAgreesWithTheTransformation) {
    Random random(61);
    for (int i = 0; i < 2000; ++i) {
        const GTransf t = random.Similarity();
        const GBoreLine l = random.BoreLine();
        G4x4 a;
        a = t;
        GBoreLine in_place = l;
        in_place *= a;
        EXPECT_LT(Distance(in_place, l * t), 1e-11);
        EXPECT_EQ(Bits(in_place), Bits(a * l));
        // The bore line first, where the matrix converts: through the record.
        GTransf converted;
        ASSERT_EQ(ConvertG4x4ToGTransf(a, converted), 0);
        EXPECT_EQ(Bits(l * a), Bits(l * converted));
        const GPosition p = Sample(random, l, 0.999);
        EXPECT_EQ((l * t) >> (p * t), 1);
        EXPECT_EQ(in_place >> (a * p), 1);
    }
}

TEST(BoreLineMapping, TakesAffineMatricesForSimilaritiesOnlyWithTheMatrixFirst) {
    const GBoreLine shortcut = Diagonal(2, 3, 4, 1) * kLine;
    EXPECT_LT(Distance(shortcut, {{2, 30, 400}, BuildUnitVector(0, 1.8, 3.2), 8, -6, 4}), 1e-15);
    // The other order rebuilds the bore line from five points.
    const GBoreLine rebuilt = kLine * Diagonal(2, 3, 4, 1);
    const double stretched = std::sqrt(1.8 * 1.8 + 3.2 * 3.2);
    EXPECT_LT(
        Distance(rebuilt,
                 {{2, 30, 400}, BuildUnitVector(0, 1.8, 3.2), 4 * stretched, -3 * stretched, 4}),
        1e-12);
    // What the shortcut refuses: a weight of other than exactly 1, a null first row, no volume.
    const double tiny = 1e-11;
    for (const G4x4& refused : {Diagonal(1, 1, 1, 0.5), Diagonal(tiny, 1e3, 1e3, 1),
                                Diagonal(1e-10, 1, 1, 1), Diagonal(1, 1e-15, 1e-15, 1)}) {
        const GBoreLine mapped = refused * kLine;
        EXPECT_DOUBLE_EQ(mapped.m_front, GDistance(refused * kLine.m_point,
                                                   refused * kLine.Evaluate(kLine.m_front)));
        EXPECT_DOUBLE_EQ(mapped.m_radius, 2 * refused.m_matrix[0] / refused.m_matrix[15]);
    }
}

TEST(BoreLineMapping, RebuildsFromPointsUnderPerspective) {
    // The row form divides by 1 + x / 10, the column form adds x / 10 to x: one matrix, two maps.
    G4x4 a = Diagonal(1, 1, 1, 1);
    a.m_matrix[3] = 0.1;
    const GBoreLine l = {{0, 2, 0}, {1, 0, 0}, 10, -5, 10};
    const GBoreLine row = a * l;
    // Images: point (0, 2, 0), front (10, 2, 0)/2, back (-5, 2, 0)/0.5, front side (20, 2, 0)/3,
    // back side (5, 2, 0)/1.5.
    EXPECT_LT(Distance(row.m_direction, BuildUnitVector({-10, 4, 0}, {5, 1, 0})), 1e-15);
    EXPECT_DOUBLE_EQ(row.m_front, GDistance({0, 2, 0}, {5, 1, 0}));
    EXPECT_DOUBLE_EQ(row.m_back, -GDistance({0, 2, 0}, {-10, 4, 0}));
    EXPECT_DOUBLE_EQ(row.m_radius, GDistance({-10, 4, 0}, {5 / 1.5, 2 / 1.5, 0}));
    GBoreLine in_place = l;
    in_place *= a;
    EXPECT_EQ(Bits(in_place), Bits(row));
    const GBoreLine column = l * a;
    EXPECT_LT(Distance(column, {{0.1, 2, 0}, kX, 10, -5, 10}), 1e-14);
}

TEST(BoreLineMapping, LimitsKeepTheirSignsAndStayWithinInfinity) {
    const G4x4 stretch = Diagonal(1, 2, 1, 1);
    const struct {
        double front;
        double back;
        double mapped_front;
        double mapped_back;
    } rows[] = {
        {4, -3, 8, -6},
        {4, 3, 8, 6},
        {-3, -4, -6, -8},
        {4, 0, 8, 0},
        {kBig, -kBig, kBig, -kBig},
        {kBig, 0.6e30, kBig, kBig},
        {-0.6e30, -kBig, -kBig, -kBig},
    };
    for (const auto& row : rows) {
        const GBoreLine l = {{0, 0, 0}, kY, row.front, row.back, 1};
        const GBoreLine mapped = l * stretch;
        EXPECT_EQ(mapped.m_front, row.mapped_front) << row.front;
        EXPECT_EQ(mapped.m_back, row.mapped_back) << row.back;
        EXPECT_LT(Distance(mapped.m_direction, kY), 1e-15);
    }
}

TEST(BoreLineMapping, ReportsNegativeRadiiAndVanishingWeights) {
    MessageRecorder recorder;
    const char* const negative = "GBoreLine: radius is < 0.0";
    const char* const weight = "GPosition: in multiplying G4x4, trying to divide by 0.0";
    const GBoreLine inverted = {{0, 0, 0}, kX, 1, -1, -2};
    EXPECT_EQ((inverted * Diagonal(1, 1, 1, 1)).m_radius, -2);
    EXPECT_EQ((Diagonal(2, 2, 2, 1) * inverted).m_radius, -4);
    EXPECT_EQ((inverted * Diagonal(1, 2, 1, 1)).m_radius, 2);
    EXPECT_EQ(recorder.Take(), (Messages{negative, negative, negative}));
    EXPECT_EQ((Diagonal(1, 1, 1, 0) * inverted).m_front, kBig);
    EXPECT_EQ(recorder.Take(), (Messages{negative, weight, weight, weight, weight, weight}));
    // Points that all fall together have no direction.
    EXPECT_EQ(Numbers((Diagonal(0, 0, 0, 1) * kLine).m_direction), Numbers(GUnitVector{0, 0, 0}));
    EXPECT_EQ(recorder.Take(), Messages{kNullUnitVector});
}

}  // namespace
}  // namespace kvgeom::test
