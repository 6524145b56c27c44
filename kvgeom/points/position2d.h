// SPDX-License-Identifier: MIT
#pragma once

#include <kvgeom/export.h>
#include <kvgeom/kernel/infinity.h>
#include <kvgeom/points/vector2d.h>

typedef struct tagG4x4 G4x4;

/// A point of the plane. (1e30, 1e30) is the null position, which stands for the absence of a
/// point. With NaN in either operand, every predicate answers 0.
struct tagGPosition2d {
    /// The coordinates.
    double m_x;
    double m_y;

    /// The coordinate by index, 0 or 1. Any other index passes "GPosition2d: index out of bounds"
    /// and gives y.
    KVGEOM_API double operator[](unsigned int i) const;
    KVGEOM_API double& operator[](unsigned int i);

    /// 1 when the points are no further apart than the distance tolerance.
    KVGEOM_API int IsEqual(const tagGPosition2d& q) const;

    /// 1 when this is the null position.
    KVGEOM_API int IsNull() const;

    /// Moves the point.
    KVGEOM_API tagGPosition2d& operator+=(const GVector2d& v);
    KVGEOM_API tagGPosition2d& operator-=(const GVector2d& v);

    /// The row form p * M.
    KVGEOM_API tagGPosition2d& operator*=(const GMatrix2d& m);
    /// As operator*(const GPosition2d&, const GTransf2d&) in mapping2d.h.
    KVGEOM_API tagGPosition2d& operator*=(const GTransf2d& t);
    /// The row form, as operator*(const G4x4&, const GPosition2d&) in mapping2d.h.
    KVGEOM_API tagGPosition2d& operator*=(const G4x4& a);
};
typedef tagGPosition2d GPosition2d;

/// The null position.
inline constexpr GPosition2d kGNullPosition2d = {kGInfinity, kGInfinity};

/// The moved point.
KVGEOM_API GPosition2d operator+(const GPosition2d& p, const GVector2d& v);
KVGEOM_API GPosition2d operator+(const GVector2d& v, const GPosition2d& p);
KVGEOM_API GPosition2d operator-(const GPosition2d& p, const GVector2d& v);
/// The vector from q to p.
inline GVector2d operator-(const GPosition2d& p, const GPosition2d& q) {
    return {p.m_x - q.m_x, p.m_y - q.m_y};
}

/// The point's coordinates dotted with the vector.
KVGEOM_API double operator%(const GPosition2d& p, const GVector2d& v);
KVGEOM_API double operator%(const GVector2d& v, const GPosition2d& p);

/// The distance between two points.
KVGEOM_API double GDistance(const GPosition2d& a, const GPosition2d& b);

/// (b - a) * t + a. t is not limited to 0..1: other values extrapolate along the line.
KVGEOM_API GPosition2d Interpolate(double t, const GPosition2d& a, const GPosition2d& b);
