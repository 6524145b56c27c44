// SPDX-License-Identifier: MIT
#pragma once

// Builders that write a standard map into a caller's matrix, whatever it held before. *err is 0, or
// 2 where the comment says so; the matrix then stays as it was. err must not be null. Angles are in
// radians, rotations right-handed.

#include <kvgeom/export.h>
#include <kvgeom/maps/g4x4.h>
#include <kvgeom/points/position.h>
#include <kvgeom/points/unit_vector.h>

/// Scaling about the origin, or about c, uniform or by axis. No factor is tested.
KVGEOM_API void Scale4x4(double s, G4x4& m, long* err);
KVGEOM_API void Scale4x4(double s, const GPosition& c, G4x4& m, long* err);
KVGEOM_API void Scale4x4(double sx, double sy, double sz, G4x4& m, long* err);
KVGEOM_API void Scale4x4(double sx, double sy, double sz, const GPosition& c, G4x4& m, long* err);

/// Rotation about an axis through the origin, or through p. The axis goes through Gassert_valid,
/// which reports what is wrong with it. When cosine^2 + sine^2 deviates from 1 by more than the
/// relative tolerance, the message "u4x4: rotation cosine and sine invalid\n" is passed and *err is
/// 2. Values beyond 1 that pass this test have Rotation's own message (matrix.h).
KVGEOM_API void Rotate4x4(double cosine, double sine, const GUnitVector& axis, G4x4& m, long* err);
KVGEOM_API void Rotate4x4(double angle, const GUnitVector& axis, G4x4& m, long* err);
KVGEOM_API void Rotate4x4(double cosine, double sine, const GUnitVector& axis, const GPosition& p,
                          G4x4& m, long* err);
KVGEOM_API void Rotate4x4(double angle, const GUnitVector& axis, const GPosition& p, G4x4& m,
                          long* err);

/// Reflection in the plane with the given normal through the origin, or through p. The normal goes
/// through Gassert_valid.
KVGEOM_API void Reflect4x4(const GUnitVector& normal, G4x4& m, long* err);
KVGEOM_API void Reflect4x4(const GUnitVector& normal, const GPosition& p, G4x4& m, long* err);

/// Translation.
KVGEOM_API void Translate4x4(const GVector& v, G4x4& m, long* err);

/// The placement of a local coordinate system, as CoordinateTransf makes it. Collinear axes pass
/// "u4x4: new axis vectors are collinear\n" and set *err to 2.
KVGEOM_API void Coordinate4x4(const GPosition& origin, const GUnitVector& xAxis,
                              const GUnitVector& yAxis, G4x4& m, long* err);
