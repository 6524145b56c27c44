// SPDX-License-Identifier: MIT
#pragma once

#include <kvgeom/boxes/box.h>
#include <kvgeom/export.h>
#include <kvgeom/maps/g4x4.h>
#include <kvgeom/maps/matrix.h>
#include <kvgeom/maps/transf.h>

// A mapped box is the axis-aligned box around the images of its eight corners. Null boxes are
// mapped like any other: mapping doesn't tell them apart, and the image of a reversed box isn't
// reversed (unless the matrix counts as the identity).

/// Maps in the row form, p * m; or in the column form, m * p. A matrix equal to the identity
/// (GMatrix::IsEqual) gives the box bit for bit.
KVGEOM_API GBox operator*(const GBox& box, const GMatrix& m);
KVGEOM_API GBox operator*(const GMatrix& m, const GBox& box);

/// Scales the box about the origin, maps it by t's matrix in the row or the column form, and moves
/// it by t's translation. The flags of t are not consulted.
KVGEOM_API GBox operator*(const GBox& box, const GTransf& t);
KVGEOM_API GBox operator*(const GTransf& t, const GBox& box);

/// Maps the corners in the homogeneous column form, p * a; or in the row form, a * p; with the
/// messages of these operators (maps/mapping.h).
KVGEOM_API GBox operator*(const GBox& box, const G4x4& a);
KVGEOM_API GBox operator*(const G4x4& a, const GBox& box);
