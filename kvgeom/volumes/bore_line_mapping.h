// SPDX-License-Identifier: MIT
#pragma once

#include <kvgeom/export.h>
#include <kvgeom/maps/g4x4.h>
#include <kvgeom/maps/matrix.h>
#include <kvgeom/maps/transf.h>
#include <kvgeom/volumes/bore_line.h>

// How matrices, transformations and homogeneous matrices carry bore lines.

/// Point and direction mapped in the row form; limits and radius stay, whatever scaling m holds.
KVGEOM_API GBoreLine operator*(const GBoreLine& l, const GMatrix& m);
/// The same in the column form.
KVGEOM_API GBoreLine operator*(const GMatrix& m, const GBoreLine& l);

/// Point and direction mapped by t, limits and radius multiplied by its scaling.
KVGEOM_API GBoreLine operator*(const GBoreLine& l, const GTransf& t);

/// Maps by the transformation that a converts to (ConvertG4x4ToGTransf), or else rebuilds the bore
/// line from the images of five of its points in the column form (below). A negative radius passes
/// "GBoreLine: radius is < 0.0" and is mapped all the same.
KVGEOM_API GBoreLine operator*(const GBoreLine& l, const G4x4& a);

/// Maps in the row form. An affine invertible matrix is taken for a similarity whose scaling is the
/// length of its first row. Any other rebuilds the bore line from the images of its point, its
/// front and back points, and these two moved by the radius along x: the direction runs from back
/// to front image, the limits are the images' distances from the point's image, with the signs that
/// the limits had, at most 1e30 in magnitude, and the radius is the larger distance between the
/// images of a limit point and the moved one. A negative radius passes the same message.
KVGEOM_API GBoreLine operator*(const G4x4& a, const GBoreLine& l);
