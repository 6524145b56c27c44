// SPDX-License-Identifier: MIT

// Faults that libraries of this kind have had, where no other test would notice them here; the
// whole list is docs/known-faults.md.

#include "tests/support/messages.h"
#include "tests/support/records.h"

#include <gtest/gtest.h>

namespace kvgeom::test {
namespace {

constexpr int kCases = 2000;

// A product of zero and infinity, or of zero and a big number for 1/0, would decide here.
TEST(KnownFaults, OriginOnASlabOfAParallelAxisIsInside) {
    const GBox box = BuildBox(0, 0, 0, 1, 1, 1);
    constexpr double kRadius = 0.5;
    const double places[] = {-kRadius - 1e-9, -kRadius, 0, 0.5, 1, 1 + kRadius, 1 + kRadius + 1e-9};
    for (const double a : places) {
        for (const double b : places) {
            const int inside =
                a >= -kRadius && a <= 1 + kRadius && b >= -kRadius && b <= 1 + kRadius ? 1 : 0;
            for (const double sense : {1.0, -1.0}) {
                for (const double limit : {5.0, kBig}) {
                    const GBoreLine x = {{-2, a, b}, {sense, 0, -0.0}, limit, -limit, kRadius};
                    const GBoreLine y = {{b, -2, a}, {-0.0, sense, 0}, limit, -limit, kRadius};
                    const GBoreLine z = {{a, b, -2}, {0, -0.0, sense}, limit, -limit, kRadius};
                    EXPECT_EQ(x && box, inside) << a << " " << b;
                    EXPECT_EQ(y && box, inside) << a << " " << b;
                    EXPECT_EQ(z && box, inside) << a << " " << b;
                }
            }
        }
    }
}

// What may be done to a null box and leaves it null; and what, by its definition, doesn't: maps,
// scaling to nothing, and division by what counts as zero.
TEST(KnownFaults, NullBoxesAreMadeRealByMapsAndDegenerateScalingAlone) {
    const GBox null = BuildBox(0, nullptr);
    EXPECT_EQ((null * 0.0).IsNull(), 0);
    EXPECT_EQ((null * 1e-40).IsNull(), 0);
    EXPECT_EQ((null / 1e-17).IsNull(), 0);
    Random random(1);
    for (int k = 0; k < kCases; ++k) {
        const GBox box = random.ProperBox();
        const GVector v = random.Vector();
        const double s = random.Number();
        GBox moved = null;
        moved += v;
        EXPECT_EQ(moved.IsNull(), 1);
        moved -= v;
        EXPECT_EQ(moved.IsNull(), 1);
        EXPECT_EQ((null * s).IsNull(), 1) << s;
        EXPECT_EQ((null / s).IsNull(), 1) << s;
        EXPECT_EQ(Bits(null | box), Bits(box));
        EXPECT_EQ(Bits(box | null), Bits(box));
        EXPECT_EQ((null & box).IsNull(), 1);
        EXPECT_EQ((box & null).IsNull(), 1);
        EXPECT_EQ(null >> box.m_low, 0);
        moved = null;
        EXPECT_EQ(moved.ClipWPlane(v.m_x, v.m_y, v.m_z, s), 0);
        EXPECT_EQ(moved.IsNull(), 1);
        const GMatrix m = random.RotationMatrix();
        const GTransf t = random.Similarity();
        const G4x4 a = random.Affine();
        for (const GBox& image : {null * m, m * null, null * t, t * null, a * null}) {
            EXPECT_EQ(image.IsNull(), 0);
            EXPECT_EQ(image >> box, 1);
        }
    }
}

// Each result is that of an operand of its own.
TEST(KnownFaults, OperandsMayBeTheResult) {
    // The corners may be written over the box itself.
    struct {
        GBox box = {{1, 2, 3}, {4, 5, 6}};
        GPosition rest[6];
    } space;
    space.box.GiveCorners(&space.box.m_low);
    EXPECT_EQ(Numbers(space), (std::vector<double>{1, 2, 3, 4, 2, 3, 4, 5, 3, 1, 5, 3,
                                                   1, 2, 6, 4, 2, 6, 4, 5, 6, 1, 5, 6}));
    Random random(2);
    const auto expect_same = [](const auto& record, auto operation) {
        const auto operand = record;
        auto expected = record;
        operation(operand, expected);
        auto both = record;
        operation(both, both);
        EXPECT_EQ(Bits(both), Bits(expected));
    };
    const auto multiply = [](const auto& b, auto& a) { a *= b; };
    for (int k = 0; k < kCases; ++k) {
        const GMatrix m = random.Matrix();
        const GTransf t = random.Similarity();
        const GMatrix2d plane = {
            {{m.m_elements[0][0], m.m_elements[0][1]}, {m.m_elements[1][0], m.m_elements[1][1]}}};
        expect_same(m, multiply);
        expect_same(t, multiply);
        expect_same(random.Homogeneous(), multiply);
        expect_same(plane, multiply);
        expect_same(t.Convert2d(), multiply);
        expect_same(random.Vector(), [](const GVector& b, GVector& a) { a += b; });
        expect_same(random.Vector(), [](const GVector& b, GVector& a) { a -= b; });
        expect_same(random.Vector(), [](const GVector& b, GVector& a) { ModifyOrthoVector(b, a); });
        expect_same(random.Box(), [](const GBox& b, GBox& a) { a |= b; });
        expect_same(random.Box(), [](const GBox& b, GBox& a) { a &= b; });
        expect_same(random.Box().Convert2d(), [](const GBox2d& b, GBox2d& a) { a &= b; });
        expect_same(m, [](const GMatrix& in, GMatrix& out) {
            long err;
            MakeOrthogonalIt(in, out, &err);
        });
        expect_same(t, [](const GTransf& in, GTransf& out) {
            int healed;
            long err;
            GTransfHealer(in, out, &healed, &err);
        });
    }
}

TEST(KnownFaults, ReflectionFlagsFollowTheDeterminant) {
    Random random(3);
    GTransf chain = random.Similarity();
    for (int k = 0; k < kCases; ++k) {
        const auto mirrors = [](const GTransf& t) {
            return GetDeterminant(t.m_matrix) * t.m_scaling < 0 ? 1 : 0;
        };
        GTransf next = random.Similarity();
        next.m_scaling = 1;
        chain *= k % 2 == 0 ? next : next.Inverse();
        EXPECT_EQ(chain.m_hasReflection, mirrors(chain));
        G4x4 a;
        a = chain;
        GTransf back;
        EXPECT_EQ(ConvertG4x4ToGTransf(a, back), 0);
        EXPECT_EQ(back.m_hasReflection, mirrors(chain));
        EXPECT_EQ(a.HasReflection(), mirrors(chain));
        long err;
        int healed;
        GTransfHealer(chain, chain, &healed, &err);
        chain.m_translation = {};
    }
}

// At both poles, and as near to them as numbers come; up to about 1e-6 beside a pole the angle is
// taken for a quarter turn.
TEST(KnownFaults, RotationAnglesRebuildTheRotationAtThePoles) {
    Random random(4);
    for (const double pole : {kPi / 2, -kPi / 2}) {
        for (const double off : {0.0, 1e-17, 1e-16, 1e-12, 1e-9, 1e-8, 1e-7, 1e-4, 0.1}) {
            for (const double sense : {1.0, -1.0}) {
                const GTransf t = RotateTransf(random.Uniform(-4, 4), kX) *
                                  RotateTransf(pole + sense * off, kY) *
                                  RotateTransf(random.Uniform(-4, 4), kZ);
                double a = kNaN;
                double b = kNaN;
                double c = kNaN;
                GPosition origin;
                GetRotAngles(t, &a, &b, &c, origin);
                const GTransf again =
                    RotateTransf(a, kX) * RotateTransf(b, kY) * RotateTransf(c, kZ);
                EXPECT_LT(Distance(again.m_matrix, t.m_matrix), 1e-7) << pole << " off by " << off;
            }
        }
    }
}

// Whichever point comes first, and either way around; all coordinates are exact.
TEST(KnownFaults, EdgesAndVerticesOfAFenceAreInside) {
    std::vector<GPosition> loop = {{0, -4, 0}, {4, 0, 0}, {0, 4, 0}, {-4, 0, 0}};
    for (int turn = 0; turn < 8; ++turn) {
        std::vector<GPosition> points = loop;
        points.push_back(loop[0]);
        const GPtFence fence = {5, points.data(), kZ, 1, -1};
        GPosition on_planes[6];
        GUnitVector normals[6];
        fence.FindPlanes(on_planes, normals);
        for (int k = 0; k <= 16; ++k) {
            const GPosition& from = loop[static_cast<unsigned>(k / 4 % 4)];
            const GPosition& to = loop[static_cast<unsigned>((k / 4 + 1) % 4)];
            const GPosition p = Interpolate(k % 4 / 4.0, from, to);
            int inside = 77;
            long err = 77;
            IsPtInPtFence(fence, on_planes, normals, p, &inside, &err);
            EXPECT_EQ(inside, 1) << p.m_x << " " << p.m_y << " turn " << turn;
            IsPtInPtFence(fence, on_planes, normals, {p.m_x * 1.001, p.m_y * 1.001, 0}, &inside,
                          &err);
            EXPECT_EQ(inside, 0) << p.m_x << " " << p.m_y << " turn " << turn;
        }
        std::rotate(loop.begin(), loop.begin() + 1, loop.end());
        if (turn == 3) {
            std::reverse(loop.begin(), loop.end());
        }
    }
}

TEST(KnownFaults, OverlapIsSymmetricAndContainmentReversible) {
    Random random(5);
    random.WantExtremes(true);
    for (int k = 0; k < 10 * kCases; ++k) {
        GBox a = random.Box();
        GBox b = k % 5 == 0 ? a : random.Box();
        const double tol = k % 3 == 0 ? 0 : random.Uniform(-1, 1);
        if (Distance(a, b) < kInf) {  // NaN in one of them is compared as it comes
            EXPECT_EQ(a.IsIntersectTol(b, tol), b.IsIntersectTol(a, tol));
        }
        EXPECT_EQ(a << b, b >> a);
        EXPECT_EQ(a.m_low << b, b >> a.m_low);
    }
}

}  // namespace
}  // namespace kvgeom::test
