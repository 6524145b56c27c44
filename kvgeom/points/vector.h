// SPDX-License-Identifier: MIT
#pragma once

#include <kvgeom/export.h>
#include <kvgeom/kernel/square_root.h>

typedef struct tagGMatrix GMatrix;
typedef struct tagGTransf GTransf;
typedef struct tagG4x4 G4x4;
typedef struct tagGVector2d GVector2d;

/// A free vector: an offset, a normal before normalising, a row of a matrix. With NaN in either
/// operand, every predicate answers 0.
struct tagGVector {
    /// The components along the axes.
    double m_x;
    double m_y;
    double m_z;

    /// The component by index, 0 to 2. Any other index passes "GVector: index is out of range" and
    /// gives z.
    KVGEOM_API double operator[](unsigned int i) const;
    KVGEOM_API double& operator[](unsigned int i);

    /// 1 when the vector is too short to have a direction: no component and no length above
    /// 50 * DBL_EPSILON, whatever the tolerances.
    KVGEOM_API int IsNull() const;

    /// 1 when neither a component nor the length exceeds tol.
    KVGEOM_API int IsNull(double tol) const;

    /// 1 when both vectors are shorter than the distance tolerance, or when both are not, differ by
    /// at most the distance tolerance and are colinear.
    KVGEOM_API int IsEqual(const tagGVector& w) const;

    /// 1 when the sine of the angle between the vectors is below the relative tolerance: parallel
    /// or anti-parallel. A null vector is colinear with every vector, and passes the message of
    /// BuildUnitVector.
    KVGEOM_API int IsColinear(const tagGVector& w) const;

    /// 1 when the cosine of the angle between the vectors is below the relative tolerance in
    /// magnitude. A null vector is orthogonal to every vector, and passes the message of
    /// BuildUnitVector.
    KVGEOM_API int IsOrthogonal(const tagGVector& w) const;

    /// Divides each component by d. For |d| < DBL_EPSILON, or NaN, the message "GVector: trying to
    /// divide by 0.0" is passed, and a component becomes 1e30 if it is positive, else -1e30.
    KVGEOM_API tagGVector& operator/=(double d);

    /// The row form v * M.
    KVGEOM_API tagGVector& operator*=(const GMatrix& m);
    /// As operator*(const GVector&, const GTransf&) in mapping.h.
    KVGEOM_API tagGVector& operator*=(const GTransf& t);
    /// The row form, as operator*(const G4x4&, const GVector&) in mapping.h.
    KVGEOM_API tagGVector& operator*=(const G4x4& a);

    /// (x, y). A z beyond the distance tolerance passes "Convert2d: Gvector z coordinate greater
    /// 0.0".
    KVGEOM_API GVector2d Convert2d() const;
    /// Becomes (x, y, 0) of v.
    KVGEOM_API void Convert3d(const GVector2d& v);

    /// The length.
    double GetLength() const {
        return kvgeom::detail::SquareRoot(m_x * m_x + m_y * m_y + m_z * m_z);
    }

    /// Sum, difference and product, component by component.
    tagGVector& operator+=(const tagGVector& v) {
        return *this = {m_x + v.m_x, m_y + v.m_y, m_z + v.m_z};
    }
    tagGVector& operator-=(const tagGVector& v) {
        return *this = {m_x - v.m_x, m_y - v.m_y, m_z - v.m_z};
    }
    tagGVector& operator*=(double f) { return *this = {m_x * f, m_y * f, m_z * f}; }
};
typedef tagGVector GVector;

/// Sum, difference, opposite and product, component by component.
inline GVector operator+(const GVector& a, const GVector& b) {
    return {a.m_x + b.m_x, a.m_y + b.m_y, a.m_z + b.m_z};
}
inline GVector operator-(const GVector& a, const GVector& b) {
    return {a.m_x - b.m_x, a.m_y - b.m_y, a.m_z - b.m_z};
}
inline GVector operator-(const GVector& v) {
    return {-v.m_x, -v.m_y, -v.m_z};
}
inline GVector operator*(const GVector& v, double f) {
    return {v.m_x * f, v.m_y * f, v.m_z * f};
}
inline GVector operator*(double f, const GVector& v) {
    return v * f;
}

/// The dot product.
inline double operator%(const GVector& a, const GVector& b) {
    return a.m_x * b.m_x + a.m_y * b.m_y + a.m_z * b.m_z;
}

/// The cross product.
inline GVector operator*(const GVector& a, const GVector& b) {
    return {a.m_y * b.m_z - a.m_z * b.m_y, a.m_z * b.m_x - a.m_x * b.m_z,
            a.m_x * b.m_y - a.m_y * b.m_x};
}

/// As GVector::operator/=(double).
KVGEOM_API GVector operator/(const GVector& v, double d);

/// The angle between two vectors in radians, 0 to pi: atan2 of the length of their cross product
/// and their dot product, exact to rounding also near 0 and pi. 0.0 when one of them IsNull(), NaN
/// when one holds NaN.
KVGEOM_API double GiveAngle(const GVector& a, const GVector& b);
