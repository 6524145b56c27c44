// SPDX-License-Identifier: MIT

// Vectors, unit vectors and points, and how maps carry them.

#include "tests/oracle/dimensions.h"
#include "tests/support/messages.h"

namespace kvgeom::test {
namespace {

TYPED_TEST(Dimension, Algebra) {
    using S = TypeParam;
    constexpr std::size_t n = S::n;
    Random random(1);
    for (int k = 0; k < kCases; ++k) {
        const auto v = Any<typename S::Vector>(random);
        const auto w = Any<typename S::Vector>(random);
        const auto p = Any<typename S::Point>(random);
        const auto q = Any<typename S::Point>(random);
        const double x = Any<double>(random);
        const auto a = Exact(v);
        const auto b = Exact(w);
        const auto at = Exact(p);
        // One rounding for each component.
        typename S::Vector c = v;
        Near("vector + vector", 1, a + b, v + w, c += w);
        Near("vector - vector", 1, a - b, v - w, (c = v) -= w);
        Near("vector * number", 1, a * x, v * x, x * v, (c = v) *= x);
        Near("vector / number", 1, a * (Real(1) / x), v / x, (c = v) /= x);
        Near("vector % vector", DotBound(n), Dot(a, b), v % w);
        Near("vector * vector (cross)", CrossBound(), Cross(a, b), v * w);
        Near("length", LengthBound(n), Length(a), v.GetLength());
        typename S::Point moved = p;
        Near("point + vector", 1, at + a, p + v, v + p, moved += v);
        Near("point - vector", 1, at - a, p - v, (moved = p) -= v);
        Near("point - point", 1, at - Exact(q), p - q);
        Near("point % vector", DotBound(n), Dot(at, a), p % v, v % p);
        Near("distance", LengthBound(n, 1), Length(Exact(q) - at), GDistance(p, q));
        // A difference, a product, a sum.
        Near("point between", 3, (Exact(q) - at) * x + at, Interpolate(x, p, q));
    }
}

TYPED_TEST(Dimension, Directions) {
    using S = TypeParam;
    constexpr std::size_t n = S::n;
    Random random(2);
    for (int k = 0; k < kCases; ++k) {
        const auto v = Any<typename S::Vector>(random);
        const auto w = k % 2 == 0 ? Any<typename S::Vector>(random)
                                  : v * 3 + Any<typename S::Vector>(random, -30);
        const auto p = Any<typename S::Point>(random);
        const auto q = Any<typename S::Point>(random);
        const auto u = AnyDirection<S>(random);
        const auto a = Exact(v);
        const auto b = Exact(w);
        Near("unit vector", UnitBound(n), Unit(a), S::Direction(v), S::Direction(v, 1e-9));
        Near("unit vector from points", UnitBound(n, 1), Unit(Exact(q) - Exact(p)),
             S::Direction(p, q));
        auto turned = u;
        Near("unit vector += vector", UnitBound(n, 1), Unit(Exact(u) + a), turned += v);
        Near("unit vector -= vector", UnitBound(n, 1), Unit(Exact(u) - a), (turned = u) -= v);
        const Real dot = Dot(a, b);
        if constexpr (n == 3) {
            Near("angle", LengthBound(n, CrossBound()) + kElementary,
                 Atan2(Length(Cross(a, b)), dot), GiveAngle(v, w));
            const Vec<2> plan = {u.m_x, u.m_y};
            Near("unit vector Convert2d", UnitBound(2), Unit(plan), u.Convert2d());
        } else {
            Near("angle", CrossBound() + kElementary, Atan2(Cross(a, b)[0], dot), GiveAngle(v, w));
            Near("GetPerpVector2d", 0, Vec<2>{-Real(u.m_y), Real(u.m_x)}, GetPerpVector2d(u));
        }
    }
}

TEST(Space, Perpendiculars) {
    Random random(3);
    for (int k = 0; k < kCases; ++k) {
        const GUnitVector u = AnyDirection<Spatial>(random);
        Near("GetPerpVector", kPerpendicular, Perpendicular(Exact(u)), GetPerpVector(u));
        const GVector a = Any<GVector>(random, -2, 5);
        GVector b = Any<GVector>(random, -2, 5);
        GUnitVector c = Spatial::Direction(b);
        const auto part = [&](const auto& of) {
            return Unit(Cross(Cross(Exact(a), Exact(of)), Exact(a)));
        };
        const Vec<3> direction = part(b);
        const Vec<3> direction_of_unit = part(c);
        const Real length = Length(Exact(b));
        ModifyOrthoVector(a, b);
        ModifyOrthoVector(a, c);
        constexpr double kPart = UnitBound(3, CrossBound(CrossBound()));
        Near("ModifyOrthoVector", kPart + LengthBound(3) + 1, direction * length, b);
        Near("ModifyOrthoVector of unit vector", kPart, direction_of_unit, c);
    }
}

template <std::size_t n>
double AreColinear(const Vec<n>& a, const Vec<n>& b) {
    return Below(Length(Cross(a, b)), GetRelativeTolerance());
}
template <std::size_t n>
double AreOrthogonal(const Vec<n>& a, const Vec<n>& b) {
    return Below(Abs(Dot(a, b)), GetRelativeTolerance());
}
template <std::size_t n>
double AreEqual(const Vec<n>& a, const Vec<n>& b) {
    const Real distance = GetDistanceTolerance();
    const double a_is_short = Below(Length(a), distance);
    const double b_is_short = Below(Length(b), distance);
    return Or({And({a_is_short, b_is_short}),
               And({-a_is_short, -b_is_short, IsLongAtMost(b - a, distance),
                    AreColinear(Unit(a), Unit(b))})});
}

// How short a vector has no direction, and by how much a unit vector's square may differ from 1.
constexpr double kUnitTolerance = 50 * 0x1p-52;

// Pairs beside the thresholds: to and fro, along each other and across.
TYPED_TEST(Dimension, Predicates) {
    using S = TypeParam;
    constexpr std::size_t n = S::n;
    constexpr double kUnitCross = CrossBound(UnitBound(n), UnitBound(n));
    constexpr double kColinear = n == 3 ? LengthBound(n, kUnitCross) : kUnitCross;
    constexpr double kSquaredDistance = DotBound(n, 1, 1);
    Random random(5);
    for (int k = 0; k < kCases; ++k) {
        using Vector = typename S::Vector;
        const Vector v = Any<Vector>(random, -25, 46);
        const Vector along = AnyDirection<S>(random);
        const Vector across = S::Perpendicular(S::Direction(v));
        const double length = v.GetLength();
        const double distance = Beside(random, GetDistanceTolerance());
        const double relative = Beside(random, GetRelativeTolerance());
        const double limit = Beside(random, length);
        Agree("vector IsNull", DotBound(n), IsLongAtMost(Exact(v), limit), v.IsNull(limit));
        const Vector tiny = along * Beside(random, kUnitTolerance);
        Agree("vector IsNull", DotBound(n), IsLongAtMost(Exact(tiny), kUnitTolerance),
              tiny.IsNull());

        const Vector beside = 3 * v + across * (3 * length * relative);
        Agree("vector IsColinear", kColinear, AreColinear(Unit(Exact(v)), Unit(Exact(beside))),
              v.IsColinear(beside));
        const Vector square = across + v * (relative / length);
        Agree("vector IsOrthogonal", DotBound(n, UnitBound(n), UnitBound(n)),
              AreOrthogonal(Unit(Exact(v)), Unit(Exact(square))), v.IsOrthogonal(square));

        const bool is_short = k % 3 == 0;
        const Vector a = is_short ? along * Beside(random, GetDistanceTolerance()) : v;
        const Vector b = is_short     ? across * distance
                         : k % 3 == 1 ? v + along * distance
                                      : v + across * (length * relative);
        Agree("vector IsEqual", kColinear, AreEqual(Exact(a), Exact(b)), a.IsEqual(b));

        const auto p = Any<typename S::Point>(random, -40, 20);
        const auto q = p + along * distance;
        Agree("point IsEqual", kSquaredDistance,
              IsLongAtMost(Exact(q) - Exact(p), GetDistanceTolerance()), p.IsEqual(q));
    }
}

TEST(Space, UnitVectorPredicates) {
    MessageRecorder recorder;
    Random random(6);
    for (int k = 0; k < kCases; ++k) {
        const GUnitVector u = AnyDirection<Spatial>(random);
        const GUnitVector across = GetPerpVector(u);
        const double relative = Beside(random, GetRelativeTolerance());
        const GVector beside = u + across * relative;
        const GVector square = across + u * relative;
        Agree("unit vector IsEqual", DotBound(3, 1, 1),
              IsLongAtMost(Exact(beside) - Exact(u), GetRelativeTolerance()), u.IsEqual(beside));
        Agree("unit vector IsColinear", LengthBound(3, CrossBound(0, UnitBound(3))),
              AreColinear(Exact(u), Unit(Exact(beside * 3))), u.IsColinear(beside * 3));
        Agree("unit vector IsOrthogonal", DotBound(3, 0, UnitBound(3)),
              AreOrthogonal(Exact(u), Unit(Exact(square * 3))), u.IsOrthogonal(square * 3));
        const GVector v = u * (1 + Beside(random, kUnitTolerance / 2));
        Gassert_valid(GUnitVector{v.m_x, v.m_y, v.m_z});
        Agree("unit vector is one", DotBound(3) + 1,
              Below(Abs(Dot(Exact(v), Exact(v)) - 1), kUnitTolerance),
              recorder.Take().empty() ? 1 : 0);
    }
}

TEST(Space, Rounding) {
    Random random(12);
    for (int k = 0; k < kCases; ++k) {
        const int digits = k % 13 - 6;
        const double power = std::pow(10, std::abs(digits));
        const Real scale = digits < 0 ? Real(1) / power : Real(power);
        const double whole = std::floor(Any<double>(random));
        // Beside a half.
        const double value =
            static_cast<double>((Real(whole + 0.5) / scale).value) * Beside(random, 0.5) * 2;
        const Real scaled = Real(value) * scale;
        const double below = std::floor(static_cast<double>(scaled.value));
        double rounded;
        KVRoundValue(value, digits, &rounded, 0, nullptr);
        const Real halfway = below + 0.5;
        const bool is_up = rounded > static_cast<double>((halfway / scale).value);
        // The power, its product, the sum.
        Agree("KVRoundValue: is it up", 3, Below(halfway, scaled), is_up ? 1 : 0);
        Near("KVRoundValue", 2, Real(below + (is_up ? 1 : 0)) / scale, rounded);
    }
}

TYPED_TEST(Dimension, Mapping) {
    using S = TypeParam;
    constexpr std::size_t n = S::n;
    constexpr double kUnit = UnitBound(n, DotBound(n));
    Random random(7);
    for (int k = 0; k < kCases; ++k) {
        const auto v = Any<typename S::Vector>(random);
        const auto p = Any<typename S::Point>(random);
        const auto u = AnyDirection<S>(random);
        const auto m = Any<typename S::Matrix>(random);
        const auto t = S::Similarity(random);
        const auto a = Exact(v);
        const auto at = Exact(p);
        const auto along = Exact(u);
        const auto matrix = Exact(m);
        const auto map = Exact(t);
        const auto back = Inverse(map);
        Near("unit vector by matrix", kUnit, Unit(along * matrix), u * m, Mapped(u, m));
        Near("unit vector by matrix, columns", kUnit, Unit(along * Transpose(matrix)), m * u);
        Near("unit vector by transformation", kUnit, Unit(along * map.matrix), u * t, Mapped(u, t));
        Near("unit vector by inverse", kUnit, Unit(along * back.matrix), u ^ t);
        // The dot product, scaling, translation.
        Near("point by transformation", n + 2, at * map, p * t, Mapped(p, t));
        Near("vector by transformation", n + 1, a * map.matrix * map.scaling, v * t, Mapped(v, t));
        // The reciprocal of the scaling is a rounding more.
        Near("point by inverse", n + 3, at * back, p ^ t);
        Near("vector by inverse", n + 2, a * back.matrix * back.scaling, v ^ t);
        Near("point by matrix", DotBound(n), at * matrix, Mapped(p, m));
        Near("vector by matrix", DotBound(n), a * matrix, Mapped(v, m));
        if constexpr (n == 2) {
            Near("vector by matrix, columns", DotBound(n), a * Transpose(matrix), m * v);
            Near("point by matrix, columns", DotBound(n), at * Transpose(matrix), m * p);
        }
    }
}

TEST(Space, MappingByHomogeneousMatrix) {
    // The weight is common to the components of a direction: only its sign matters.
    constexpr double kVector = DotBound(3) + DotBound(4) + 2;
    constexpr double kUnit = UnitBound(3, DotBound(3) + 1);
    Random random(9);
    for (int k = 0; k < kCases; ++k) {
        const auto v = Any<GVector>(random);
        const auto p = Any<GPosition>(random);
        const auto u = AnyDirection<Spatial>(random);
        const auto m = Any<G4x4>(random);
        const Mat<4> a = Exact(m);
        const Mat<4> columns = Transpose(a);
        const Vec<3> direction = Directed(Exact(u), a);
        Near("point by G4x4, columns", kProjectedPoint, Projected(Exact(p), columns), p * m);
        Near("vector by G4x4, columns", kVector, ProjectedVector(Exact(v), columns), v * m);
        Near("unit vector by G4x4, columns", kUnit, Directed(Exact(u), columns), u * m);
        Near("point by G4x4", kProjectedPoint, Projected(Exact(p), a), m * p, Mapped(p, m));
        Near("vector by G4x4", kVector, ProjectedVector(Exact(v), a), m * v, Mapped(v, m));
        Near("unit vector by G4x4", kUnit, direction, m * u, Mapped(u, m));
    }
}

TEST(Plane, MappingByHomogeneousMatrix) {
    constexpr double kPoint = 2 * DotBound(3) + 2;
    Random random(10);
    for (int k = 0; k < kCases; ++k) {
        const auto p = Any<GPosition2d>(random);
        const auto m = Any<G4x4>(random);
        const auto image = [&](const Mat<4>& a) {
            const Vec<3> q = Projected(Vec<3>{p.m_x, p.m_y, 0}, a);
            return Vec<2>{q[0], q[1]};
        };
        Near("point by G4x4, columns", kPoint, image(Transpose(Exact(m))), p * m);
        Near("point by G4x4", kPoint, image(Exact(m)), m * p, Mapped(p, m));
    }
}

}  // namespace
}  // namespace kvgeom::test
