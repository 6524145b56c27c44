// SPDX-License-Identifier: MIT
#pragma once

#include <kvgeom/export.h>
#include <kvgeom/kernel/infinity.h>
#include <kvgeom/points/vector.h>

typedef struct tagGPosition2d GPosition2d;

/// A point in the caller's length unit. (1e30, 1e30, 1e30) is the null position, which stands for
/// the absence of a point. With NaN in either operand, every predicate answers 0.
struct tagGPosition {
    /// The coordinates.
    double m_x;
    double m_y;
    double m_z;

    /// The coordinate by index, 0 to 2. Any other index passes "GPosition: index out of bounds" and
    /// gives z.
    KVGEOM_API double operator[](unsigned int i) const;
    KVGEOM_API double& operator[](unsigned int i);

    /// 1 when the points are no further apart than the distance tolerance.
    KVGEOM_API int IsEqual(const tagGPosition& q) const;

    /// 1 when this is the null position.
    KVGEOM_API int IsNull() const;

    /// The row form p * M.
    KVGEOM_API tagGPosition& operator*=(const GMatrix& m);
    /// As operator*(const GPosition&, const GTransf&) in mapping.h.
    KVGEOM_API tagGPosition& operator*=(const GTransf& t);
    /// The row form, as operator*(const G4x4&, const GPosition&) in mapping.h.
    KVGEOM_API tagGPosition& operator*=(const G4x4& a);

    /// (x, y). A z beyond the distance tolerance passes "Convert2d: GPosition z coordinate >
    /// distanceTolerance".
    KVGEOM_API GPosition2d Convert2d() const;
    /// Becomes (x, y, 0) of p.
    KVGEOM_API void Convert3d(const GPosition2d& p);

    /// Moves the point.
    tagGPosition& operator+=(const GVector& v) {
        return *this = {m_x + v.m_x, m_y + v.m_y, m_z + v.m_z};
    }
    tagGPosition& operator-=(const GVector& v) {
        return *this = {m_x - v.m_x, m_y - v.m_y, m_z - v.m_z};
    }
};
typedef tagGPosition GPosition;

/// The null position.
inline constexpr GPosition kGNullPosition = {kGInfinity, kGInfinity, kGInfinity};

/// The moved point.
inline GPosition operator+(const GPosition& p, const GVector& v) {
    return {p.m_x + v.m_x, p.m_y + v.m_y, p.m_z + v.m_z};
}
inline GPosition operator+(const GVector& v, const GPosition& p) {
    return p + v;
}
inline GPosition operator-(const GPosition& p, const GVector& v) {
    return {p.m_x - v.m_x, p.m_y - v.m_y, p.m_z - v.m_z};
}
/// The vector from q to p.
inline GVector operator-(const GPosition& p, const GPosition& q) {
    return {p.m_x - q.m_x, p.m_y - q.m_y, p.m_z - q.m_z};
}

/// The point's coordinates dotted with the vector.
inline double operator%(const GPosition& p, const GVector& v) {
    return p.m_x * v.m_x + p.m_y * v.m_y + p.m_z * v.m_z;
}
inline double operator%(const GVector& v, const GPosition& p) {
    return p % v;
}

/// The distance between two points.
inline double GDistance(const GPosition& a, const GPosition& b) {
    return (a - b).GetLength();
}

/// (b - a) * t + a. t is not limited to 0..1: other values extrapolate along the line.
KVGEOM_API GPosition Interpolate(double t, const GPosition& a, const GPosition& b);
