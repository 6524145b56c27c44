// SPDX-License-Identifier: MIT
#pragma once

#include "tests/oracle/ledger.h"

namespace kvgeom::test {

/// The records and operations of space and of the plane under common names.
struct Spatial {
    static constexpr char kName[] = "Space";
    static constexpr std::size_t n = 3;
    using Vector = GVector;
    using UnitVector = GUnitVector;
    using Point = GPosition;
    using Matrix = GMatrix;
    using Transf = GTransf;
    using Box = GBox;
    static GUnitVector Direction(const GVector& v) { return BuildUnitVector(v.m_x, v.m_y, v.m_z); }
    static GUnitVector Direction(const GVector& v, double tolerance) {
        long err;
        return BuildUnitVector(v.m_x, v.m_y, v.m_z, tolerance, &err);
    }
    static GUnitVector Direction(const GPosition& p, const GPosition& q) {
        return BuildUnitVector(p, q);
    }
    static GUnitVector Perpendicular(const GUnitVector& u) { return GetPerpVector(u); }
    static GTransf Similarity(Random& random) { return random.Similarity(); }
    static GTransf Scale(double s, const GPosition& p) { return ScaleTransf(s, p); }
    static GTransf Reflect(const GUnitVector& u, const GPosition& p) { return ReflectTransf(u, p); }
    static GBox BoxOf(GPosition* points) { return BuildBox(4, points); }
};

struct Planar {
    static constexpr char kName[] = "Plane";
    static constexpr std::size_t n = 2;
    using Vector = GVector2d;
    using UnitVector = GUnitVector2d;
    using Point = GPosition2d;
    using Matrix = GMatrix2d;
    using Transf = GTransf2d;
    using Box = GBox2d;
    static GUnitVector2d Direction(const GVector2d& v) { return BuildUnitVector2d(v.m_x, v.m_y); }
    static GUnitVector2d Direction(const GVector2d& v, double tolerance) {
        long err;
        return BuildUnitVector2d(v.m_x, v.m_y, tolerance, &err);
    }
    static GUnitVector2d Direction(const GPosition2d& p, const GPosition2d& q) {
        return BuildUnitVector2d(p, q);
    }
    static GUnitVector2d Perpendicular(const GUnitVector2d& u) { return GetPerpVector2d(u); }
    static GTransf2d Similarity(Random& random) {
        const GVector2d along = {random.Uniform(-1, 1), random.Uniform(-1, 1)};
        const GMatrix2d turn = Rotation2d(along.m_x, along.m_y);
        const bool mirrors = random.Next() % 2 == 0;
        const GMatrix2d m = mirrors ? turn * Reflection2d({0.6, 0.8}) : turn;
        const GVector2d translation = {random.Number(), random.Number()};
        return BuildTransf2d(m, translation, random.Uniform(0.1, 4), 1, mirrors ? 1 : 0, 0);
    }
    static GTransf2d Scale(double s, const GPosition2d& p) { return ScaleTransf2d(s, p); }
    static GTransf2d Reflect(const GUnitVector2d& u, const GPosition2d& p) {
        return ReflectTransf2d(u, p);
    }
    static GBox2d BoxOf(GPosition2d* points) { return BuildBox2d(4, points); }
};

/// What is tested in space and in the plane alike.
template <class S>
class Dimension : public testing::Test {};
struct DimensionNames {
    template <class S>
    static std::string GetName(int) {
        return S::kName;
    }
};
using Dimensions = testing::Types<Spatial, Planar>;
TYPED_TEST_SUITE(Dimension, Dimensions, DimensionNames);

template <class S>
typename S::UnitVector AnyDirection(Random& random) {
    return S::Direction(Any<typename S::Vector>(random));
}

}  // namespace kvgeom::test
