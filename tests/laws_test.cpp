// SPDX-License-Identifier: MIT

// What holds between operations on any records, the extreme ones too. That maps, their inverses and
// the twins of space and plane agree is seen where each is compared with exact arithmetic.

#include "tests/support/messages.h"

namespace kvgeom::test {
namespace {

constexpr int kCases = 5000;

TEST(Laws, ConversionToSpaceAndBackIsExactAndSilent) {
    Random random(41);
    MessageRecorder recorder;
    const auto expect_back = [&](auto in_space, const auto& planar) {
        recorder.Take();
        in_space.Convert3d(planar);
        EXPECT_EQ(Bits(in_space.Convert2d()), Bits(planar));
        EXPECT_EQ(recorder.Take(), Messages{});
    };
    for (int k = 0; k < kCases; ++k) {
        random.WantExtremes(k % 2 == 0);
        const GPosition p = random.Point();
        const GVector v = random.Vector();
        expect_back(GPosition{}, GPosition2d{p.m_x, p.m_y});
        expect_back(GVector{}, GVector2d{v.m_x, v.m_y});
        expect_back(GBox{}, GBox2d{{p.m_x, p.m_y}, {v.m_x, v.m_y}});
        expect_back(GUnitVector{}, BuildUnitVector2d(1, random.Uniform(-9, 9)));
        const GMatrix2d m = {{{p.m_x, p.m_y}, {v.m_x, v.m_y}}};
        expect_back(GTransf{}, BuildTransf2d(m, {v.m_z, v.m_x}, p.m_z, k, 2, 3));
    }
}

// The extremes per axis are those of the eight corners, but for the sign of zeros.
TEST(Laws, MappedBoxesAreAroundTheirMappedCorners) {
    Random random(3);
    const auto expect_around = [](GBox image, const GBox& box, auto map) {
        GPosition corners[8];
        box.GiveCorners(corners);
        for (GPosition& corner : corners) {
            corner = map(corner);
        }
        GBox expected = BuildBox(8, corners);
        // Zeros of both signs become one.
        EXPECT_EQ(Bits(image += GVector{}), Bits(expected += GVector{}));
    };
    for (int k = 0; k < kCases; ++k) {
        random.WantExtremes(k % 3 == 0);
        const GBox box = random.Box();
        const GMatrix m = random.Matrix();
        const G4x4 a = k % 2 == 0 ? random.Homogeneous() : random.Affine();
        if (!m.IsIdentity()) {
            expect_around(box * m, box, [&](GPosition p) { return p *= m; });
        }
        expect_around(a * box, box, [&](const GPosition& p) { return a * p; });
        expect_around(box * a, box, [&](const GPosition& p) { return p * a; });
    }
}

}  // namespace
}  // namespace kvgeom::test
