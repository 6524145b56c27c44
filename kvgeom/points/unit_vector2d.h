// SPDX-License-Identifier: MIT
#pragma once

#include <kvgeom/export.h>
#include <kvgeom/points/vector2d.h>

typedef struct tagGPosition2d GPosition2d;

/// A direction in the plane, of unit length, or (0, 0), the null unit vector that a failed build
/// leaves. It converts to a GVector2d; the other way leads only through BuildUnitVector2d.
struct tagGUnitVector2d {
    /// The components along the axes.
    double m_x;
    double m_y;

    /// The component by index, 0 or 1. Any other index passes "GVector2d: index is out of range"
    /// and gives y. Whoever writes a component answers for the unit length.
    KVGEOM_API double operator[](unsigned int i) const;
    KVGEOM_API double& operator[](unsigned int i);

    /// The same components as a free vector.
    KVGEOM_API operator GVector2d() const;

    /// Adds or subtracts, then normalises. A sum of near-zero length leaves the null unit vector
    /// and passes the message of BuildUnitVector2d.
    KVGEOM_API tagGUnitVector2d& operator+=(const GVector2d& v);
    KVGEOM_API tagGUnitVector2d& operator-=(const GVector2d& v);

    /// As operator*(const GUnitVector2d&, const GMatrix2d&) in mapping2d.h.
    KVGEOM_API tagGUnitVector2d& operator*=(const GMatrix2d& m);
    /// As operator*(const GUnitVector2d&, const GTransf2d&) in mapping2d.h.
    KVGEOM_API tagGUnitVector2d& operator*=(const GTransf2d& t);
};
typedef tagGUnitVector2d GUnitVector2d;

/// The unit vector along (x, y). Components whose squared length already lies within
/// 1 +- 50 * DBL_EPSILON are kept bit for bit. A length up to 50 * DBL_EPSILON passes
/// "GUnitVector2d: tried to create a NULL unit vector" and gives (0, 0); a finite vector so long
/// that its squared length overflows gives (0, 0) too, without a message.
KVGEOM_API GUnitVector2d BuildUnitVector2d(double x, double y);

/// The same with the null length chosen by the caller, and stricter in both: components are kept
/// only if their squared length lies within 1 +- DBL_EPSILON, and a length of exactly tol is not
/// null (as it is in space). A length below tol, and a length of 0 whatever tol, sets *err to 2;
/// else *err is 0. err must not be null.
KVGEOM_API GUnitVector2d BuildUnitVector2d(double x, double y, double tol, long* err);

/// The direction from one point to another; points that are the same give the null unit vector, as
/// above.
KVGEOM_API GUnitVector2d BuildUnitVector2d(const GPosition2d& from, const GPosition2d& to);

/// u turned by a quarter turn counter-clockwise, and normalised: (1, 0) gives (0, 1).
KVGEOM_API GUnitVector2d GetPerpVector2d(const GUnitVector2d& u);
