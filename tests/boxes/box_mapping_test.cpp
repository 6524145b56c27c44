// SPDX-License-Identifier: MIT
#include "tests/support/messages.h"
#include "tests/support/records.h"

#include <gtest/gtest.h>

namespace kvgeom::test {
namespace {

constexpr GBox kNull = {{kBig, kBig, kBig}, {-kBig, -kBig, -kBig}};
constexpr GBox kUnit = {{0, 0, 0}, {1, 1, 1}};

// The box around the images of the corners.
template <class PointMap>
GBox AroundImages(const GBox& box, PointMap map) {
    GPosition corners[8];
    box.GiveCorners(corners);
    for (GPosition& corner : corners) {
        corner = map(corner);
    }
    return BuildBox(8, corners);
}

// Bits but for the sign of zeros.
std::vector<std::uint64_t> BitsOf(GBox box) {
    for (unsigned i = 0; i < 2; ++i) {
        for (unsigned k = 0; k < 3; ++k) {
            box[i][k] += 0.0;
        }
    }
    return Bits(box);
}

TEST(BoxMapping, IsTheBoxAroundTheEightImagesBitForBit) {
    Random random(42);
    for (int i = 0; i < 20000; ++i) {
        random.WantExtremes(i % 2 == 1);
        const GBox box = random.Box();
        const GMatrix m = random.Matrix();
        const auto row = [&m](GPosition p) { return p *= m; };
        const auto column = [&m](GPosition p) { return p *= m.Transpose(); };
        EXPECT_EQ(BitsOf(box * m), BitsOf(AroundImages(box, row)));
        EXPECT_EQ(BitsOf(m * box), BitsOf(AroundImages(box, column)));

        const GTransf t = BuildTransf(m, random.Vector(), random.Number(), 1, 1, 1);
        const GBox scaled = box * t.m_scaling;
        GBox expected = AroundImages(scaled, row);
        expected += t.m_translation;
        EXPECT_EQ(BitsOf(box * t), BitsOf(expected));
        expected = AroundImages(scaled, column);
        expected += t.m_translation;
        EXPECT_EQ(BitsOf(t * box), BitsOf(expected));

        G4x4 a = random.Homogeneous();
        if (i % 4 < 2) {
            a.m_matrix[3] = a.m_matrix[7] = a.m_matrix[11] = 0;
            a.m_matrix[15] = 1;
        }
        EXPECT_EQ(BitsOf(a * box), BitsOf(AroundImages(box, [&a](GPosition p) { return a * p; })));
        EXPECT_EQ(BitsOf(box * a), BitsOf(AroundImages(box, [&a](GPosition p) { return p * a; })));

        GBox in_place = box;
        in_place *= m;
        EXPECT_EQ(Bits(in_place), Bits(box * m));
        in_place = box;
        in_place *= t;
        EXPECT_EQ(Bits(in_place), Bits(box * t));
        in_place = box;
        in_place *= a;
        EXPECT_EQ(Bits(in_place), Bits(a * box)) << "the matrix first, as for points";
    }
}

TEST(BoxMapping, LeavesTheBoxUnderANearIdentity) {
    GMatrix nearly = kIdentity;
    nearly.m_elements[1][2] = 1e-12;
    const GBox box = {{-1e6, 0.1, -0.0}, {1e6, 0.2, 3}};
    EXPECT_EQ(Bits(box * nearly), Bits(box));
    EXPECT_EQ(Bits(nearly * box), Bits(box));
    nearly.m_elements[1][2] = 1.1e-10;
    EXPECT_NE(Bits(box * nearly), Bits(box));
    EXPECT_EQ(Numbers(GBox{{1, 2, 3}, {4, 5, 6}} * BuildTransf(nearly, {10, 0, 0}, -2, 0, 0, 0))[0],
              2)
        << "scaled with ordered corners, mapped, moved";
    EXPECT_EQ(Numbers(kNull * Rotation(0.0, 1.0, kZ)),
              (std::vector<double>{-kBig, -kBig, -kBig, kBig, kBig, kBig}));
}

TEST(BoxMapping, ReportsVanishingWeightsOnceACorner) {
    MessageRecorder recorder;
    G4x4 a = {{1, 0, 0, 1, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 0}};  // the weight is x
    EXPECT_EQ(Numbers(a * kUnit), (std::vector<double>{0, 0, 0, 1, kBig, kBig}));
    EXPECT_EQ(recorder.Take(),
              Messages(4, "GPosition: in multiplying G4x4, trying to divide by 0.0"));
}

TEST(BoxClipping, KeepsTheBoxAroundWhatIsInFront) {
    const double root = std::sqrt(2.0);
    const GBox flat = {{0, 0, 0}, {0, 1, 1}};
    const struct {
        GBox box;
        GVector normal;
        double d;
        int kept;
        GBox left;
    } rows[] = {
        {kUnit, {1, 0, 0}, -0.5, 1, {{0.5, 0, 0}, {1, 1, 1}}},
        {kUnit, {-3, 0, 0}, 0.25, 1, {{0, 0, 0}, {0.25, 1, 1}}},  // d isn't divided by the length
        {kUnit, {0, 1, 0}, -0.25, 1, {{0, 0.25, 0}, {1, 1, 1}}},
        {kUnit, {0, 0, -1}, 0.75, 1, {{0, 0, 0}, {1, 1, 0.75}}},
        {kUnit, {1, 0, 0}, 0.5, 1, kUnit},
        {kUnit, {-1, 0, 0}, -2, 0, kNull},
        {kUnit, {1, 0, 0}, -1, 0, kNull},  // touched from behind
        {kUnit, {1, 0, 0}, 0, 1, kUnit},   // touched from the front
        {kUnit, {1, 1, 0}, -1, 1, {{root - 1, root - 1, 0}, {1, 1, 1}}},
        {kUnit, {1, 1, 1}, -2.5 / std::sqrt(3.0), 1, {{0.5, 0.5, 0.5}, {1, 1, 1}}},
        {kUnit, {-1, -1, -1}, 0.5 / std::sqrt(3.0), 1, {{0, 0, 0}, {0.5, 0.5, 0.5}}},
        {flat, {0, 1, 0}, -0.5, 1, {{0, 0.5, 0}, {0, 1, 1}}},
        {flat, {1, 0, 0}, 1, 1, flat},
        {flat, {1, 0, 0}, 0, 0, kNull},
        {kNull, {1, 0, 0}, 5, 0, kNull},
        {{{1, 1, 1}, {0, 2, 2}}, {1, 0, 0}, 5, 0, {{1, 1, 1}, {0, 2, 2}}},  // null: untouched
        // A corner on the plane counts, with others on both sides.
        {{{0, 0, 0}, {2, 2, 2}}, {1, -1, 0}, 0, 1, {{0, 0, 0}, {2, 2, 2}}},
    };
    for (const auto& row : rows) {
        GBox box = row.box;
        EXPECT_EQ(box.ClipWPlane(row.normal.m_x, row.normal.m_y, row.normal.m_z, row.d), row.kept);
        EXPECT_LT(Distance(box, row.left), 1e-15)
            << row.normal.m_x << row.normal.m_y << " " << row.d;
    }
    MessageRecorder recorder;
    for (const double d : {0.0, 3.0, -3.0, kInf}) {
        GBox box = kUnit;
        EXPECT_EQ(box.ClipWPlane(0, 0, 0, d), 0);
        EXPECT_EQ(Bits(box), Bits(kNull));
        EXPECT_EQ(recorder.Take(), Messages{kNullUnitVector});
    }
}

TEST(BoxClipping, LosesNothingInFrontAndTouchesWhatIsLeft) {
    Random random(43);
    int cut = 0;
    for (int i = 0; i < 20000; ++i) {
        const GBox box = random.ProperBox();
        const GUnitVector n = random.Direction();
        const double d = random.Uniform(-8, 8);
        GBox left = box;
        const int kept = left.ClipWPlane(n.m_x, n.m_y, n.m_z, d);
        GPosition corners[8];
        box.GiveCorners(corners);
        bool any = false;
        for (const GPosition& corner : corners) {
            const bool in_front = corner % n + d > 1e-12;
            any = any || in_front;
            EXPECT_TRUE(!in_front || (kept && left >> corner));
        }
        const GPosition p = Sample(random, box);
        if (p % n + d > 1e-12) {
            EXPECT_TRUE(kept && left >> p);
        }
        if (kept) {
            EXPECT_TRUE(any);
            EXPECT_EQ(box >> left, 1);
            GBox again = left;
            EXPECT_EQ(again.ClipWPlane(n.m_x, n.m_y, n.m_z, d), 1);
            EXPECT_LT(Distance(again, left), 1e-9) << "what is left has nothing more to lose";
            cut += Distance(left, box) > 0.1 ? 1 : 0;
        }
    }
    EXPECT_GT(cut, 3000);
}

}  // namespace
}  // namespace kvgeom::test
