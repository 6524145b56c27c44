// SPDX-License-Identifier: MIT
#pragma once

#include <kvgeom/export.h>
#include <kvgeom/points/vector.h>

typedef struct tagGPosition GPosition;
typedef struct tagGUnitVector2d GUnitVector2d;

/// A direction of unit length. One made by BuildUnitVector from components whose squares are normal
/// numbers has a squared length within 1 +- 50 * DBL_EPSILON, or is (0, 0, 0), the null unit vector
/// that a failed build leaves. It converts to a GVector; the other way leads only through
/// BuildUnitVector. With NaN in either operand, every predicate answers 0.
struct tagGUnitVector {
    /// The components along the axes.
    double m_x;
    double m_y;
    double m_z;

    /// The component by index, 0 to 2. Any other index passes "GVector: index is out of range" and
    /// gives z. Whoever writes a component answers for the unit length.
    KVGEOM_API double operator[](unsigned int i) const;
    KVGEOM_API double& operator[](unsigned int i);

    /// The same components as a free vector.
    KVGEOM_API operator GVector() const;

    /// 1 when every component is below the distance tolerance in magnitude.
    KVGEOM_API int IsNull() const;

    /// 1 when the difference from v is at most the relative tolerance long.
    KVGEOM_API int IsEqual(const GVector& v) const;

    /// As the predicates of GVector, with this vector as it is stored and w normalised.
    KVGEOM_API int IsColinear(const GVector& w) const;
    KVGEOM_API int IsOrthogonal(const GVector& w) const;

    /// Adds or subtracts, then normalises. A sum of near-zero length leaves the null unit vector
    /// and passes the message of BuildUnitVector.
    KVGEOM_API tagGUnitVector& operator+=(const GVector& v);
    KVGEOM_API tagGUnitVector& operator-=(const GVector& v);

    /// As operator*(const GUnitVector&, const GMatrix&) in mapping.h.
    KVGEOM_API tagGUnitVector& operator*=(const GMatrix& m);
    /// As operator*(const GUnitVector&, const GTransf&) in mapping.h.
    KVGEOM_API tagGUnitVector& operator*=(const GTransf& t);
    /// The row form, as operator*(const G4x4&, const GUnitVector&) in mapping.h.
    KVGEOM_API tagGUnitVector& operator*=(const G4x4& a);

    /// BuildUnitVector2d of (x, y), with its message for a vector along z. A z beyond the distance
    /// tolerance passes "Convert2d: GUnitvector z coordinate greater 0.0".
    KVGEOM_API GUnitVector2d Convert2d() const;
    /// Becomes (x, y, 0) of u.
    KVGEOM_API void Convert3d(const GUnitVector2d& u);
};
typedef tagGUnitVector GUnitVector;

/// The unit vector along (x, y, z). Components whose squared length already lies within
/// 1 +- 50 * DBL_EPSILON are kept bit for bit. A length up to 50 * DBL_EPSILON passes "GUnitVector:
/// tried to create a NULL unit vector" and gives (0, 0, 0); a finite vector so long that its
/// squared length overflows gives (0, 0, 0) too, without a message. Components of NaN give NaN,
/// without a message.
KVGEOM_API GUnitVector BuildUnitVector(double x, double y, double z);

/// The same with the null length chosen by the caller: a length of tol or less, and a length of 0
/// whatever tol, sets *err to 2; else *err is 0. err must not be null.
KVGEOM_API GUnitVector BuildUnitVector(double x, double y, double z, double tol, long* err);

/// The direction from one point to another; points that are the same give the null unit vector, as
/// above.
KVGEOM_API GUnitVector BuildUnitVector(const GPosition& from, const GPosition& to);

/// A unit vector perpendicular to u (normalised first): the coordinate axis along which u is
/// smallest (of equals, the first), projected onto the plane perpendicular to u.
KVGEOM_API GUnitVector GetPerpVector(const GUnitVector& u);

/// Turns b perpendicular to a within their common plane, keeping b's length: along (a x b) x a.
/// Where that is shorter than the distance tolerance (b parallel to a, or one of them null), b
/// turns to GetPerpVector of a's direction.
KVGEOM_API void ModifyOrthoVector(const GVector& a, GVector& b);

/// The same for a unit vector, which keeps unit length.
KVGEOM_API void ModifyOrthoVector(const GVector& a, GUnitVector& b);
