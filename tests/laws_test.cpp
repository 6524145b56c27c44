// SPDX-License-Identifier: MIT

// What holds between operations, on thousands of random records.

#include "tests/support/records.h"

#include <gtest/gtest.h>

namespace kvgeom::test {
namespace {

constexpr int kCases = 5000;

// How many times larger a rounding may become by a matrix and its inverse, for points such as p.
double Conditioning(const G4x4& a, const GPosition& p) {
    const auto largest = [](const std::vector<double>& numbers) {
        double result = 1;
        for (const double x : numbers) {
            result = std::max(result, std::fabs(x));
        }
        return result;
    };
    return largest(Numbers(a)) * largest(Numbers(a.Inverse())) * largest(Numbers(p)) *
           largest(Numbers(p));
}

// Within some twenty roundings, twice what comes up.
template <class Record>
void ExpectBack(const Record& record, const Record& back, double size) {
    EXPECT_LE(Distance(record, back), 5e-15 * size);
}

TEST(Laws, TheInverseUndoesAMap) {
    Random random(1);
    for (int k = 0; k < kCases; ++k) {
        const GPosition p = random.Point();
        const GVector v = random.Vector();
        const GUnitVector u = random.Direction();
        const GTransf t = random.Similarity();
        const double size = 10 + Distance(t, t * t);
        ExpectBack(p, (p * t) ^ t, size / t.m_scaling);
        ExpectBack(v, (v * t) ^ t, size);
        ExpectBack(u, (u * t) ^ t, size);
        ExpectBack(p, p * (t * t.Inverse()), size / t.m_scaling);
        ExpectBack(t, t.Inverse().Inverse(), size);
        const G4x4 a = random.Affine();
        const double conditioning = Conditioning(a, p);
        ExpectBack(p, a.Inverse() * (a * p), conditioning / 10);
        ExpectBack(p, (p * a.Inverse()) * a, conditioning / 10);
        const GTransf2d flat = t.Convert2d();
        const GTransf2d turn = RotateTransf2d(u.m_x) * TranslateTransf2d(flat.m_translation) *
                               ScaleTransf2d(t.m_scaling);
        const GPosition2d q = {p.m_x, p.m_y};
        ExpectBack(q, (q * turn) ^ turn, size / t.m_scaling);
    }
}

int Holds(const GPtFence& fence, const GPosition& p) {
    GPosition points[8];
    GUnitVector normals[8];
    fence.FindPlanes(points, normals);
    int inside = 77;
    long err = 77;
    IsPtInPtFence(fence, points, normals, p, &inside, &err);
    return inside;
}

int Place(const GClipVolume& volume, const GPosition& p) {
    int place = 77;
    long err = 77;
    IsPtInClipVolume(volume, p, &place, &err);
    return place;
}

// Points well inside, so that rounding doesn't carry them out.
TEST(Laws, MappedVolumesHoldTheMappedPoints) {
    Random random(2);
    for (int k = 0; k < kCases; ++k) {
        const GTransf t = random.Similarity();
        const GBoreLine line = random.BoreLine();
        const GPosition on_line = Sample(random, line, 0.999);
        EXPECT_EQ((line * t) >> (on_line * t), 1);
        const GBox box = random.ProperBox();
        const GPosition p =
            Interpolate(1e-3, Sample(random, box), Interpolate(0.5, box[0], box[1]));
        EXPECT_EQ((box * t) >> (p * t), 1);
        GBox sides = box;
        GClipVolume volume;
        ConvertGBoxToGClipVolume(&sides, &volume);
        EXPECT_NE(Place(volume * t, p * t), 0);
        GPosition square[] = {{box[0].m_x, box[0].m_y, 0},
                              {box[1].m_x, box[0].m_y, 0},
                              {box[1].m_x, box[1].m_y, 0},
                              {box[0].m_x, box[1].m_y, 0},
                              {box[0].m_x, box[0].m_y, 0}};
        GPtFence fence = {5, square, kZ, box[1].m_z, box[0].m_z};
        const GBox range = PtFenceRange(fence);
        EXPECT_EQ(range >> p, 1);
        fence *= t;
        EXPECT_EQ(Holds(fence, p * t), 1);
        EXPECT_EQ(PtFenceRange(fence) >> (p * t), 1);
    }
}

// The extremes per axis are those of the eight corners, but for the sign of zeros.
TEST(Laws, MappedBoxesAreAroundTheirMappedCorners) {
    Random random(3);
    const auto expect_around = [](const GBox& image, const GBox& box, auto map) {
        GPosition corners[8];
        box.GiveCorners(corners);
        for (GPosition& corner : corners) {
            corner = map(corner);
        }
        const GBox expected = BuildBox(8, corners);
        const std::vector<double> a = Numbers(image);
        const std::vector<double> b = Numbers(expected);
        for (size_t i = 0; i < a.size(); ++i) {
            EXPECT_TRUE(a[i] == b[i] || (std::isnan(a[i]) && std::isnan(b[i])));
        }
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

TEST(Laws, UnionAndIntersectionAreMonotone) {
    Random random(4);
    int shared = 0;
    for (int k = 0; k < kCases; ++k) {
        const GBox a = random.ProperBox();
        const GBox b = random.ProperBox();
        const GPosition p = Sample(random, a);
        EXPECT_EQ((a | b) >> a, 1);
        EXPECT_EQ((a | b) >> p, 1);
        EXPECT_EQ(Bits(a | b), Bits(b | a));
        const GBox common = a & b;
        if (!common.IsNull()) {
            ++shared;
            EXPECT_EQ(a >> common, 1);
            EXPECT_EQ(b >> common, 1);
        }
        if (b >> p) {
            EXPECT_EQ(common >> p, 1);
        }
        EXPECT_EQ(Bits(a & (a | b)), Bits(a));
    }
    EXPECT_GT(shared, kCases / 20);
    EXPECT_LT(shared, kCases);
}

TEST(Laws, TheConstantsDoWhatTheirNamesSay) {
    EXPECT_TRUE(kGNullBox.IsNull() && kGNullBox2d.IsNull() && kGZeroMatrix.IsNull());
    EXPECT_TRUE(kGIdentityMatrix.IsIdentity() && kGIdentityMatrix2d.IsIdentity());
    EXPECT_FALSE(kGAllSpaceBox.IsNull() || kGAllSpaceBox2d.IsNull() ||
                 kGNullTransf.IsInvertible() || kGNullTransf2d.IsInvertible());
    EXPECT_EQ(kGInfinity, kBig);
    Random random(5);
    for (int k = 0; k < kCases; ++k) {
        const GPosition p = random.Point();
        const GVector v = random.Vector();
        const GBox box = random.ProperBox();
        const GPosition2d q = {p.m_x, p.m_y};
        const GBox2d flat = box.Convert2d();
        EXPECT_EQ(Bits(p * kGIdentityTransf), Bits(p));
        EXPECT_EQ(Bits(p * kGIdentityMatrix), Bits(p));
        EXPECT_EQ(Bits(v * kGIdentity4x4), Bits(v));
        EXPECT_EQ(Bits(q * kGIdentityTransf2d), Bits(q));
        EXPECT_EQ(Distance(p * kGNullTransf, {0, 0, 0}), 0);
        EXPECT_EQ(Distance(v * kGZeroMatrix, {0, 0, 0}), 0);
        EXPECT_EQ(Distance(q * kGNullTransf2d, {0, 0}), 0);
        EXPECT_EQ(Distance(q * kGZeroMatrix2d, {0, 0}), 0);
        EXPECT_EQ(Bits(box | kGNullBox), Bits(box));
        EXPECT_EQ(Bits(flat | kGNullBox2d), Bits(flat));
        EXPECT_TRUE(kGAllSpaceBox >> box && kGAllSpaceBox >> p && kGAllSpaceBox2d >> flat);
        EXPECT_FALSE(kGNullBox >> p || box >> kGNullPosition || flat >> kGNullPosition2d);
    }
}

// Both forms of the operators are inline; the library holds the assignments.
TEST(Laws, MatricesMapFromEitherSide) {
    Random random(6);
    for (int k = 0; k < kCases; ++k) {
        const GMatrix m = random.Matrix();
        GMatrix transposed;
        for (int i = 0; i < 3; ++i) {
            for (int j = 0; j < 3; ++j) {
                transposed.m_elements[i][j] = m.m_elements[j][i];
            }
        }
        GPosition p = random.Point();
        GVector v = random.Vector();
        const GPosition point_first = p * m;
        const GVector vector_first = v * m;
        EXPECT_EQ(Bits(transposed * p), Bits(point_first));
        EXPECT_EQ(Bits(transposed * v), Bits(vector_first));
        EXPECT_EQ(Bits(p *= m), Bits(point_first));
        EXPECT_EQ(Bits(v *= m), Bits(vector_first));
    }
}

}  // namespace
}  // namespace kvgeom::test
