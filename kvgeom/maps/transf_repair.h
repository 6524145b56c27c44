// SPDX-License-Identifier: MIT
#pragma once

#include <kvgeom/export.h>
#include <kvgeom/maps/transf.h>
#include <kvgeom/points/unit_vector.h>

// What a transformation is read for, or made good, after the fact.

/// The normal of the plane that a reflecting transformation mirrors in, read back out of its matrix
/// I - 2 n^T n, and its translation as offset. The first component that the diagonal shows to
/// exceed the relative tolerance (rounding hides those below about 1e-8) is positive. Returns 0; or
/// 2, with normal unwritten, when no diagonal element is far enough from 1. That the matrix is a
/// reflection is not tested: a half turn has a normal too.
KVGEOM_API long GetMirrorPlaneNormal(const GTransf& t, GUnitVector& normal, GVector& offset);

/// Copies in to out, with the matrix made orthonormal again after it has drifted through many
/// compositions. *healed is 1 when that succeeded (MakeOrthogonalIt); else it is 0 and out is in,
/// unchanged. *err is always 0. out may be in itself.
KVGEOM_API void GTransfHealer(const GTransf& in, GTransf& out, int* healed, long* err);
