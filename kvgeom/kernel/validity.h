// SPDX-License-Identifier: MIT
#pragma once

#include <kvgeom/export.h>

typedef struct tagGVector GVector;
typedef struct tagGUnitVector GUnitVector;
typedef struct tagGPosition GPosition;
typedef struct tagGMatrix GMatrix;
typedef struct tagGTransf GTransf;
typedef struct tagG4x4 G4x4;
typedef struct tagGBox GBox;
typedef struct tagGClipVolume GClipVolume;
typedef struct tagGBoreLine GBoreLine;
typedef struct tagGBoreCone GBoreCone;
typedef struct tagGPtFence GPtFence;
typedef struct tagGPtFrustum GPtFrustum;
typedef struct tagGRtPrism GRtPrism;
typedef struct tagGVector2d GVector2d;
typedef struct tagGUnitVector2d GUnitVector2d;
typedef struct tagGPosition2d GPosition2d;
typedef struct tagGMatrix2d GMatrix2d;
typedef struct tagGTransf2d GTransf2d;
typedef struct tagGBox2d GBox2d;

// The validity checks pass a message for each violation they find (assertion_hook.h). They never
// change the record. A coordinate is invalid when it is NaN, infinite, or not zero and below 2^-665
// in magnitude. Where there is an int*, it becomes 1 when no violation was found, else 0.

/// "GPosition has an invalid coordinate".
KVGEOM_API void Gassert_valid(const GPosition& p);

/// "GVector has an invalid coordinate".
KVGEOM_API void Gassert_valid(const GVector& v);
KVGEOM_API void Gassert_valid(const GVector& v, int* isValid);

/// "GUnitVector has an invalid coordinate" (then no further test), "GUnitVector: vector is not a
/// unit vector" for a squared length off 1 by more than 50 * DBL_EPSILON, or "GUnitVector: using a
/// NULL unit vector" for a length below 50 * DBL_EPSILON.
KVGEOM_API void Gassert_valid(const GUnitVector& u);

/// The check of each corner. Their order is not tested.
KVGEOM_API void Gassert_valid(const GBox& box);

/// The check of each row as a GVector.
KVGEOM_API void Gassert_valid(const GMatrix& m);
KVGEOM_API void Gassert_valid(const GMatrix& m, int* isValid);

/// The check of the translation, and no further test if that fails. "GTransf has an invalid scale"
/// for a scaling that is not finite or below the distance tolerance, "GTransf is not Euclidean",
/// "GTransf has Shear" for the flag; and "GTransf: m_hasReflection is set, but determinant > 0",
/// which leaves *isValid.
KVGEOM_API void Gassert_valid(const GTransf& t, int* isValid);
KVGEOM_API void Gassert_valid(const GTransf& t);

/// Whether the last column is 0, 0, 0, 1 within the relative tolerance: "G4x4: m_matrix[3] is not
/// 0", likewise for [7] and [11], "G4x4: m_matrix[15] is not 1".
KVGEOM_API void Gassert_valid(const G4x4& a);

/// Finds nothing wrong.
KVGEOM_API void Gassert_valid(const GClipVolume& volume);

/// The checks of point and direction. "GBoreLine has an invalid front, back, or radius" when the
/// limits are reversed or, if they aren't, when the radius is not above 0.
KVGEOM_API void Gassert_valid(const GBoreLine& l);

/// The check of the transformation. "GRtPrism: Less than 4 points"; "GRtPrism: NULL pointer", or,
/// of the points: "GRtPrism: point set is not closed" and, for each point further than the distance
/// tolerance from the mean z, "GRtPrism: point set is not planar in xz". "GRtPrism: invalid height"
/// for one below 0 or above 1e30.
KVGEOM_API void Gassert_valid(const GRtPrism& prism);

/// The check of the direction. "GPtFence: Less than 4 points"; "GPtFence: NULL pointer", or, of the
/// points: "GPtFence: point set is not closed" and, for each point whose depth along the direction
/// differs from the mean point's by more than the distance tolerance, "GPtFence: point set is not
/// planar with respect to direction vector". "GPtFence: invalid m_front or m_back" for limits that
/// are reversed or beyond 1e30.
KVGEOM_API void Gassert_valid(const GPtFence& fence);

/// The checks of bore line and eye. The eye must lie beyond the front plane, or short of it by the
/// distance tolerance at most, or behind the back plane by that tolerance at least; else
/// "GBoreCone: eye point is between front and back planes".
KVGEOM_API void Gassert_valid(const GBoreCone& cone);

/// The checks of fence and eye, and the same of the eye and the fence's planes: "GPtFrustum: eye
/// point is between front and back planes".
KVGEOM_API void Gassert_valid(const GPtFrustum& frustum);

// The checks of planar records pass no message, unless the library was built with
// KVGEOM_DIAGNOSTICS: then the messages are those of the twins in space, under the planar names.

/// The check of the coordinates.
KVGEOM_API void Gassert_valid(const GPosition2d& p);
KVGEOM_API void Gassert_valid(const GVector2d& v);

/// As for GUnitVector, but against the distance tolerance.
KVGEOM_API void Gassert_valid(const GUnitVector2d& u);

/// The check of each corner.
KVGEOM_API void Gassert_valid(const GBox2d& box);

/// The check of each row.
KVGEOM_API void Gassert_valid(const GMatrix2d& m);

/// The matrix first, then as for GTransf, all tests in any case and without that of the shear flag.
KVGEOM_API void Gassert_valid(const GTransf2d& t);
