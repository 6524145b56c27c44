// SPDX-License-Identifier: MIT

// Each operation of the plane agrees with its twin in space on records of the plane z = 0, but for
// the differences that the other tests of the plane pin down.

#include "tests/support/messages.h"
#include "tests/support/records.h"

#include <gtest/gtest.h>

namespace kvgeom::test {
namespace {

constexpr int kCases = 4000;

/// The record of space that lies in the plane.
template <class Spatial, class Planar>
Spatial LiftedAs(const Planar& planar) {
    Spatial result;
    result.Convert3d(planar);
    return result;
}
GVector Lifted(const GVector2d& v) {
    return LiftedAs<GVector>(v);
}
GUnitVector Lifted(const GUnitVector2d& u) {
    return LiftedAs<GUnitVector>(u);
}
GPosition Lifted(const GPosition2d& p) {
    return LiftedAs<GPosition>(p);
}
GTransf Lifted(const GTransf2d& t) {
    return LiftedAs<GTransf>(t);
}
GMatrix Lifted(const GMatrix2d& m) {
    return Lifted(BuildTransf2d(m, {0, 0}, 1, 0, 0, 0)).m_matrix;
}
GBox Lifted(const GBox2d& b) {
    return LiftedAs<GBox>(b);
}

/// Numbers of every size, bounds of tolerances and zeros of both signs among them; none whose
/// product with 0 isn't 0.
double Number(Random& random) {
    static constexpr std::array kSpecial = {0.0,   -0.0, 1.0,    -1.0,   1e30,  -1e30,
                                            1e-15, 1e-6, -1e-10, 1e-300, 2e-16, 1e-7};
    return random.Next() % 6 == 0 ? kSpecial[random.Below(kSpecial.size())]
                                  : random.Uniform(-10, 10);
}

template <class Pair>
Pair Make(Random& random) {
    const double x = Number(random);
    const double y = Number(random);
    return {x, y};
}

GUnitVector2d Direction(Random& random) {
    const GVector2d v = Make<GVector2d>(random);
    return BuildUnitVector2d(v.m_x, v.m_y);
}

GMatrix2d Matrix(Random& random) {
    return BuildMatrix2d(Make<GVector2d>(random), Make<GVector2d>(random), 0);
}

GTransf2d Similarity(Random& random) {
    const double h = random.Uniform(-3, 3);
    GMatrix2d m = Rotation2d((1 - h * h) / (1 + h * h), 2 * h / (1 + h * h));
    const bool mirrors = random.Next() % 2 == 0;
    if (mirrors) {
        m *= Reflection2d({0.6, 0.8});
    }
    const GVector2d translation = Make<GVector2d>(random);
    const int rotates = random.Next() % 4 == 0 ? 0 : 1;
    return BuildTransf2d(m, translation, Number(random), rotates, mirrors ? 1 : 0,
                         random.Next() % 4 == 0 ? 1 : 0);
}

GBox2d Box(Random& random) {
    const GPosition2d p = Make<GPosition2d>(random);
    const GPosition2d q = Make<GPosition2d>(random);
    const GBox2d corners = BuildBox2d(p, q);
    return random.Next() % 3 == 0 ? corners : corners * GMatrix2d{{{0, 1}, {1, 0}}};
}

/// The same numbers; zeros of both signs are one, and so are all NaN.
template <class Spatial, class Planar>
void ExpectSame(const char* what, const Planar& planar, const Spatial& spatial) {
    const std::vector<double> a = Numbers(Lifted(planar));
    const std::vector<double> b = Numbers(spatial);
    for (size_t i = 0; i < b.size(); ++i) {
        ASSERT_TRUE(a[i] == b[i] || (std::isnan(a[i]) && std::isnan(b[i])))
            << what << " " << i << ": " << a[i] << ", " << b[i];
    }
}

/// The same for boxes, where null boxes correspond to each other.
void ExpectSameOrNull(const char* what, const GBox2d& planar, const GBox& spatial) {
    if (spatial.m_low.m_z == kBig) {
        EXPECT_EQ(Numbers(planar), (std::vector<double>{kBig, kBig, -kBig, -kBig})) << what;
    } else {
        ExpectSame(what, planar, spatial);
    }
}

template <class Planar>
void ExpectRoundTrip(const Planar& planar) {
    EXPECT_EQ(Bits(Lifted(planar).Convert2d()), Bits(planar));
}

TEST(PlaneLaws, ConversionToSpaceAndBackIsExactAndSilent) {
    Random random(41);
    MessageRecorder recorder;
    for (int k = 0; k < kCases; ++k) {
        ExpectRoundTrip(Make<GVector2d>(random));
        ExpectRoundTrip(Make<GPosition2d>(random));
        ExpectRoundTrip(Box(random));
        ExpectRoundTrip(BuildUnitVector2d(1 + random.Uniform(0, 1), Number(random)));
        const GTransf2d t = Similarity(random);
        const GTransf2d back = Lifted(t).Convert2d();
        EXPECT_EQ(std::memcmp(&back, &t, offsetof(GTransf2d, m_hasShear) + 1), 0);
    }
    EXPECT_EQ(recorder.Take(), Messages{});
}

TEST(PlaneLaws, VectorsAndPoints) {
    Random random(42);
    for (int k = 0; k < kCases; ++k) {
        const GVector2d a = Make<GVector2d>(random);
        const GVector2d b = k % 2 == 0 ? Make<GVector2d>(random) : a * Number(random);
        const double x = Number(random);
        const GVector a3 = Lifted(a);
        const GVector b3 = Lifted(b);
        EXPECT_EQ(a.IsNull(), a3.IsNull());
        EXPECT_EQ(a.IsNull(x), a3.IsNull(x));
        EXPECT_EQ(a.IsEqual(b), a3.IsEqual(b3));
        EXPECT_EQ(a.IsColinear(b), a3.IsColinear(b3));
        EXPECT_EQ(a.IsOrthogonal(b), a3.IsOrthogonal(b3));
        EXPECT_EQ(a.GetLength(), a3.GetLength());
        EXPECT_EQ(a % b, a3 % b3);
        EXPECT_EQ(a * b, (a3 * b3).m_z);
        EXPECT_NEAR(std::fabs(GiveAngle(a, b)), GiveAngle(a3, b3), 1e-15);
        ExpectSame("sum", a + b, a3 + b3);
        ExpectSame("difference", a - b, a3 - b3);
        ExpectSame("negative", -a, -a3);
        ExpectSame("product", x * a, a3 * x);
        ExpectSame("quotient", a / (x + 1.5), a3 / (x + 1.5));
        GVector2d c = a;
        ExpectSame("in place", (((c += b) -= a) *= x) /= 3, (a3 + b3 - a3) * x / 3);
        const GUnitVector2d u = BuildUnitVector2d(a.m_x, a.m_y);
        ExpectSame("unit", u, BuildUnitVector(a.m_x, a.m_y, 0));
        GUnitVector2d v = u;
        GUnitVector v3 = Lifted(u);
        ExpectSame("unit +=", v += b, v3 += b3);
        ExpectSame("unit -=", v -= a, v3 -= a3);

        const GPosition2d p = Make<GPosition2d>(random);
        const GPosition2d q = k % 2 == 0 ? Make<GPosition2d>(random) : p + b * 1e-7;
        EXPECT_EQ(p.IsEqual(q), Lifted(p).IsEqual(Lifted(q)));
        EXPECT_EQ(p.IsNull(), p.m_x == kBig && p.m_y == kBig ? 1 : 0);
        EXPECT_EQ(GDistance(p, q), GDistance(Lifted(p), Lifted(q)));
        ExpectSame("between", Interpolate(x, p, q), Interpolate(x, Lifted(p), Lifted(q)));
        ExpectSame("unit from points", BuildUnitVector2d(p, q),
                   BuildUnitVector(Lifted(p), Lifted(q)));
    }
}

TEST(PlaneLaws, Maps) {
    Random random(43);
    for (int k = 0; k < kCases; ++k) {
        const GMatrix2d m = Matrix(random);
        const GMatrix2d n = k % 2 == 0 ? Matrix(random) : m;
        ExpectSame("matrix product", m * n, Lifted(m) * Lifted(n));
        ExpectSame("transpose", m.Transpose(), Lifted(m).Transpose());
        EXPECT_EQ(GetDeterminant(m), GetDeterminant(Lifted(m)));
        EXPECT_EQ(m.IsEqual(n), Lifted(m).IsEqual(Lifted(n)));
        EXPECT_EQ(m.IsIdentity(), Lifted(m).IsIdentity());

        const GTransf2d t = Similarity(random);
        const GTransf2d s = k % 2 == 0 ? Similarity(random) : t.Inverse();
        const GTransf t3 = Lifted(t);
        const GTransf s3 = Lifted(s);
        ExpectSame("composition", t * s, t3 * s3);
        GTransf2d u = t;
        ExpectSame("composition in place", u *= u, t3 * t3);
        ExpectSame("inverse", t.Inverse(), t3.Inverse());
        EXPECT_EQ(t.IsEqual(s), t3.IsEqual(s3));
        EXPECT_EQ(t.IsIdentity(), t3.IsIdentity());
        EXPECT_EQ(t.IsInvertible(), t3.IsInvertible());

        GMatrix2d drifted = t.m_matrix;
        drifted.m_elements[k % 2][k / 2 % 2] += random.Uniform(0, 4e-10);
        EXPECT_EQ(drifted.IsEuclidean(), Lifted(drifted).IsEuclidean());
        GMatrix2d out;
        GMatrix out3;
        long err;
        MakeOrthogonal(drifted, out, &err);
        MakeOrthogonal(Lifted(drifted), out3, &err);
        ExpectSame("orthogonalisation", out, out3);

        const GUnitVector2d x = Direction(random);
        const GPosition2d p = Make<GPosition2d>(random);
        const GUnitVector normal = Lifted(GetPerpVector2d(x));
        const double scale = std::fabs(p.m_x) + std::fabs(p.m_y) + 1;
        EXPECT_LT(Distance(Lifted(ReflectTransf2d(x, p)), ReflectTransf(normal, Lifted(p))),
                  1e-15 * scale);
        EXPECT_LT(Distance(Lifted(RotateTransf2d(0.28, 0.96, p)),
                           RotateTransf(0.28, 0.96, kZ, Lifted(p))),
                  1e-15 * scale);
    }
}

TEST(PlaneLaws, Mapping) {
    Random random(44);
    for (int k = 0; k < kCases; ++k) {
        const GPosition2d p = Make<GPosition2d>(random);
        const GVector2d v = Make<GVector2d>(random);
        const GUnitVector2d u = Direction(random);
        const GMatrix2d m = Matrix(random);
        const GTransf2d t = Similarity(random);
        const GTransf t3 = Lifted(t);
        ExpectSame("point by transformation", p * t, Lifted(p) * t3);
        ExpectSame("point by inverse", p ^ t, Lifted(p) ^ t3);
        ExpectSame("vector by transformation", v * t, Lifted(v) * t3);
        ExpectSame("vector by inverse", v ^ t, Lifted(v) ^ t3);
        ExpectSame("unit by transformation", u * t, Lifted(u) * t3);
        ExpectSame("unit by inverse", u ^ t, Lifted(u) ^ t3);
        ExpectSame("unit by matrix", u * m, Lifted(u) * Lifted(m));
        ExpectSame("unit by matrix, columns", m * u, Lifted(m) * Lifted(u));
        GPosition2d moved = p;
        GVector2d turned = v;
        ExpectSame("point in place", moved *= t, Lifted(p) * t3);
        ExpectSame("vector in place", turned *= t, Lifted(v) * t3);

        const G4x4 a = random.Homogeneous();
        GPosition row = a * Lifted(p);
        GPosition column = Lifted(p) * a;
        row.m_z = column.m_z = 0;
        ExpectSame("point by homogeneous matrix", a * p, row);
        ExpectSame("point by homogeneous matrix, columns", p * a, column);
    }
}

TEST(PlaneLaws, Boxes) {
    Random random(45);
    for (int k = 0; k < kCases; ++k) {
        GBox2d a = Box(random);
        GBox2d b = k % 2 == 0 ? Box(random) : a;
        b += 1e-6 * Make<GVector2d>(random);
        GBox a3 = Lifted(a);
        GBox b3 = Lifted(b);
        const double x = Number(random);
        const GVector2d v = Make<GVector2d>(random);
        const GPosition2d p = Make<GPosition2d>(random);
        const GMatrix2d m = Matrix(random);
        EXPECT_EQ(a.IsNull(), a3.IsNull());
        EXPECT_EQ(a.IsEqual(b), a3.IsEqual(b3));
        const double tol = std::fabs(x) + 1e-9;  // the flat extent in z wants more than 0
        EXPECT_EQ(a.IsIntersectTol(b, tol), a3.IsIntersectTol(b3, tol));
        EXPECT_EQ(a >> p, a3 >> Lifted(p));
        ExpectSameOrNull("union", a | b, a3 | b3);
        ExpectSameOrNull("intersection", a & b, a3 & b3);
        ExpectSame("moved", a += v, a3 += Lifted(v));
        ExpectSame("moved back", a -= v, a3 -= Lifted(v));
        ExpectSame("scaled", a * x, a3 * x);
        ExpectSame("scaled from the left", x * a, a3 * x);
        ExpectSame("divided", a / (x + 1e-9), a3 / (x + 1e-9));
        ExpectSame("by matrix", a * m, a3 * Lifted(m));
        ExpectSame("by matrix, columns", m * a, Lifted(m) * a3);
        ExpectSame("scaled in place", a *= x, a3 *= x);
        GBox2d united = a;
        GBox united3 = a3;
        ExpectSameOrNull("united in place", united |= b, united3 |= b3);
        ExpectSameOrNull("cut in place", a &= b, a3 &= b3);
    }
}

}  // namespace
}  // namespace kvgeom::test
