// SPDX-License-Identifier: MIT
#pragma once

// Builders of common transformations. Angles are in radians, rotations right-handed; a cosine or
// sine beyond 1 in magnitude passes the message of Rotation (matrix.h). The flags of a result are
// (rotation, reflection, shear).

#include <kvgeom/export.h>
#include <kvgeom/maps/transf.h>
#include <kvgeom/points/position.h>
#include <kvgeom/points/unit_vector.h>

/// Scaling about the origin, or about c. Any s is stored unchanged. Flags (0, 0, 0).
KVGEOM_API GTransf ScaleTransf(double s);
KVGEOM_API GTransf ScaleTransf(double s, const GPosition& c);

/// Rotation about an axis through the origin, or through p. Flags (1, 0, 0).
KVGEOM_API GTransf RotateTransf(double cosine, double sine, const GUnitVector& axis);
KVGEOM_API GTransf RotateTransf(double angle, const GUnitVector& axis);
KVGEOM_API GTransf RotateTransf(double cosine, double sine, const GUnitVector& axis,
                                const GPosition& p);
KVGEOM_API GTransf RotateTransf(double angle, const GUnitVector& axis, const GPosition& p);

/// Reflection in the plane with the given normal through the origin, or through p. Flags (0, 1, 0).
KVGEOM_API GTransf ReflectTransf(const GUnitVector& normal);
KVGEOM_API GTransf ReflectTransf(const GUnitVector& normal, const GPosition& p);

/// Translation. Flags (0, 0, 0).
KVGEOM_API GTransf TranslateTransf(const GVector& v);

/// The placement of a local coordinate system: local (a, b, c) maps to origin + a x + b y + c z.
/// x is xAxis as given, y the part of yAxis perpendicular to it, normalised, z = x cross y.
/// Parallel axes pass the message of BuildUnitVector and leave y and z null. Flags (1, 0, 0).
KVGEOM_API GTransf CoordinateTransf(const GPosition& origin, const GUnitVector& xAxis,
                                    const GUnitVector& yAxis);

/// The same with x and y chosen. When the z component of zAxis, normalised, is within DBL_EPSILON
/// of 1 (up to a tilt of about 1.5e-8 radians, which is dropped), the result has the world's axes;
/// else x = GetPerpVector of zAxis and y = z cross x.
KVGEOM_API GTransf CoordinateTransf(const GPosition& origin, const GUnitVector& zAxis);

/// The map that carries one coordinate system onto another: (a, b, c) in the old system maps to (a,
/// b, c) in the new one. Flags (1, 0, 0).
///
/// An axis whose squared length deviates from 1 by more than 2 relative tolerances passes "Not a
/// unit vector.", and a pair of axes that is not orthogonal passes "Vectors are not orthogonal";
/// *err is then 2 and out stays as it was. Else *err is 0. err must not be
/// null.
KVGEOM_API void OldToNewTransf(const GPosition& oldOrigin, const GUnitVector& oldX,
                               const GUnitVector& oldY, const GPosition& newOrigin,
                               const GUnitVector& newX, const GUnitVector& newY, GTransf& out,
                               long* err);
