// SPDX-License-Identifier: MIT
#pragma once

// How planar matrices (GMatrix2d), planar transformations (GTransf2d) and homogeneous matrices
// (G4x4) carry points, vectors and unit vectors of the plane. Row and column forms as in mapping.h:
// the matrix-first operators with a GMatrix2d and the point-first one with a G4x4 are the column
// forms, all else is the row form.
//
// Sums run over x, y and then the constant term, from left to right.

#include <kvgeom/export.h>
#include <kvgeom/maps/g4x4.h>
#include <kvgeom/maps/matrix2d.h>
#include <kvgeom/maps/transf2d.h>
#include <kvgeom/points/position2d.h>
#include <kvgeom/points/unit_vector2d.h>
#include <kvgeom/points/vector2d.h>

/// The row form p * M, and the column form M * p.
KVGEOM_API GPosition2d operator*(const GPosition2d& p, const GMatrix2d& m);
KVGEOM_API GPosition2d operator*(const GMatrix2d& m, const GPosition2d& p);
KVGEOM_API GVector2d operator*(const GVector2d& v, const GMatrix2d& m);
KVGEOM_API GVector2d operator*(const GMatrix2d& m, const GVector2d& v);

/// The unit vector along u * M, and along M * u. An image of near-zero length gives (0, 0) with the
/// message of BuildUnitVector2d.
KVGEOM_API GUnitVector2d operator*(const GUnitVector2d& u, const GMatrix2d& m);
KVGEOM_API GUnitVector2d operator*(const GMatrix2d& m, const GUnitVector2d& u);

/// (p * matrix) * scaling + translation. The flags of t are not consulted.
KVGEOM_API GPosition2d operator*(const GPosition2d& p, const GTransf2d& t);

/// (v * matrix) * scaling: a vector is not translated. The flags of t are not consulted.
KVGEOM_API GVector2d operator*(const GVector2d& v, const GTransf2d& t);

/// The unit vector along u * matrix; neither scaling nor translation applies. A transformation with
/// its shear flag set passes "GUnitVector2d: transformation has Shear", and maps all the same.
KVGEOM_API GUnitVector2d operator*(const GUnitVector2d& u, const GTransf2d& t);

/// Maps by t.Inverse(), computed anew in each call.
KVGEOM_API GPosition2d operator^(const GPosition2d& p, const GTransf2d& t);
KVGEOM_API GVector2d operator^(const GVector2d& v, const GTransf2d& t);

/// The unit vector along u times the transposed matrix, which is the inverse for a rotation or a
/// reflection. The message for shear is that of the operator*.
KVGEOM_API GUnitVector2d operator^(const GUnitVector2d& u, const GTransf2d& t);

/// The homogeneous row form: the row (x, y, 0, 1) times a, divided by the weight in its last
/// column, without the z of the image. A weight below DBL_EPSILON in magnitude passes "GPosition2d:
/// in multiplying G4x4, trying to divide by 0.0", and the numerators are multiplied by 1e30
/// instead.
KVGEOM_API GPosition2d operator*(const G4x4& a, const GPosition2d& p);
/// The homogeneous column form: as above, with a transposed.
KVGEOM_API GPosition2d operator*(const GPosition2d& p, const G4x4& a);
