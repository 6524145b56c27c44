// SPDX-License-Identifier: MIT
#pragma once

#include <kvgeom/export.h>

typedef struct tagGMatrix2d GMatrix2d;
typedef struct tagGTransf2d GTransf2d;

/// A free vector of the plane. With NaN in either operand, every predicate answers 0.
struct tagGVector2d {
    /// The components along the axes.
    double m_x;
    double m_y;

    /// The component by index, 0 or 1. Any other index passes "GVector2d: index is out of range"
    /// and gives y.
    KVGEOM_API double operator[](unsigned int i) const;
    KVGEOM_API double& operator[](unsigned int i);

    /// 1 when the vector is too short to have a direction: no component and no length above
    /// 50 * DBL_EPSILON, whatever the tolerances.
    KVGEOM_API int IsNull() const;

    /// 1 when neither a component nor the length exceeds tol.
    KVGEOM_API int IsNull(double tol) const;

    /// 1 when both vectors are shorter than the distance tolerance, or when both are not, differ by
    /// at most the distance tolerance and are colinear.
    KVGEOM_API int IsEqual(const tagGVector2d& w) const;

    /// 1 when the sine of the angle between the vectors is below the relative tolerance in
    /// magnitude: parallel or anti-parallel. A null vector is colinear with every vector, and
    /// passes the message of BuildUnitVector2d.
    KVGEOM_API int IsColinear(const tagGVector2d& w) const;

    /// 1 when the cosine of the angle between the vectors is below the relative tolerance in
    /// magnitude. A null vector is orthogonal to every vector, and passes the message of
    /// BuildUnitVector2d.
    KVGEOM_API int IsOrthogonal(const tagGVector2d& w) const;

    /// The length.
    KVGEOM_API double GetLength() const;

    /// Sum, difference and product, component by component.
    KVGEOM_API tagGVector2d& operator+=(const tagGVector2d& v);
    KVGEOM_API tagGVector2d& operator-=(const tagGVector2d& v);
    KVGEOM_API tagGVector2d& operator*=(double f);

    /// Divides each component by d. For |d| < DBL_EPSILON, or NaN, the message "GVector2d: trying
    /// to divide by 0.0" is passed, and a component becomes 1e30 if it is positive, else -1e30.
    KVGEOM_API tagGVector2d& operator/=(double d);

    /// The row form v * M.
    KVGEOM_API tagGVector2d& operator*=(const GMatrix2d& m);
    /// As operator*(const GVector2d&, const GTransf2d&) in mapping2d.h.
    KVGEOM_API tagGVector2d& operator*=(const GTransf2d& t);
};
typedef tagGVector2d GVector2d;

/// Sum, difference, opposite and product, component by component.
inline GVector2d operator+(const GVector2d& a, const GVector2d& b) {
    return {a.m_x + b.m_x, a.m_y + b.m_y};
}
inline GVector2d operator-(const GVector2d& a, const GVector2d& b) {
    return {a.m_x - b.m_x, a.m_y - b.m_y};
}
inline GVector2d operator-(const GVector2d& v) {
    return {-v.m_x, -v.m_y};
}
inline GVector2d operator*(const GVector2d& v, double f) {
    return {v.m_x * f, v.m_y * f};
}
inline GVector2d operator*(double f, const GVector2d& v) {
    return v * f;
}

/// The dot product.
KVGEOM_API double operator%(const GVector2d& a, const GVector2d& b);

/// The cross product, a number: the z component of the one in space.
KVGEOM_API double operator*(const GVector2d& a, const GVector2d& b);

/// As GVector2d::operator/=(double).
KVGEOM_API GVector2d operator/(const GVector2d& v, double d);

/// The signed angle from a to b in radians, -pi to pi, positive counter-clockwise (that between two
/// vectors in space has no sign): atan2 of their cross and their dot product. 0.0 when one of them
/// IsNull().
KVGEOM_API double GiveAngle(const GVector2d& a, const GVector2d& b);
