// SPDX-License-Identifier: MIT
#pragma once

#include <kvgeom/export.h>
#include <kvgeom/maps/g4x4.h>
#include <kvgeom/maps/transf.h>
#include <kvgeom/maps/transf2d.h>

// Which similarity transformation a homogeneous matrix is.

/// Converts a homogeneous matrix that is a similarity: an affine map of uniform scaling without
/// shear. Returns 0 and writes t, or returns 2 and leaves t as it was. No message is passed. A
/// matrix with NaN in its linear part, projective column or weight is refused.
///
/// g is divided by its weight unless that is 1 within the relative tolerance. It is refused when
/// the weight is 0 or a projective element is not 0 within that tolerance, when the first column of
/// its 3x3 part is null or another differs from it in length by more than 10 times the tolerance,
/// or when the normalised part, after one step of MakeOrthogonal if it isn't Euclidean, has no
/// determinant of 1 or -1. The scaling is the mean of the column lengths; the rotation flag is set
/// when an angle of GetRotAngles reaches the relative tolerance.
KVGEOM_API long ConvertG4x4ToGTransf(const G4x4& g, GTransf& t);

/// Converts a homogeneous matrix whose action on the plane z = 0 is a similarity. The tests are
/// those above for the first two columns, whose lengths are those in space, and for the upper left
/// 2x2 part; the scaling is the mean of the two lengths, and the rotation flag is set when
/// GiveRotAngle reaches the relative tolerance. What the matrix does to z is not looked at, but for
/// the projective element: one that tilts the plane is refused only by the determinant.
KVGEOM_API long ConvertG4x4ToGTransf2d(const G4x4& g, GTransf2d& t);

/// The rotation angles (GetRotAngles) of the converted transformation, and 0; or three times 0.0,
/// and the conversion's error code. g is not changed.
KVGEOM_API long GetRotationAngles(G4x4& g, double* a, double* b, double* c);
