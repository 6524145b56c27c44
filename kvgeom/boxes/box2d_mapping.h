// SPDX-License-Identifier: MIT
#pragma once

#include <kvgeom/boxes/box2d.h>
#include <kvgeom/export.h>
#include <kvgeom/maps/matrix2d.h>
#include <kvgeom/maps/transf2d.h>

// A mapped box is the axis-aligned box around the images of its four corners. Null boxes are mapped
// like any other: mapping doesn't tell them apart, and the image of a reversed box isn't reversed
// (unless the matrix counts as the identity).

/// Maps in the row form, p * m; or in the column form, m * p. A matrix equal to the identity
/// (GMatrix2d::IsEqual) gives the box bit for bit.
KVGEOM_API GBox2d operator*(const GBox2d& box, const GMatrix2d& m);
KVGEOM_API GBox2d operator*(const GMatrix2d& m, const GBox2d& box);

/// Maps the box by t's matrix, scales it about the origin, and moves it by t's translation. (In
/// space the scaling comes first; the two orders differ by rounding.) The flags of t are not
/// consulted.
KVGEOM_API GBox2d operator*(const GBox2d& box, const GTransf2d& t);
