// SPDX-License-Identifier: MIT
#pragma once

#include <kvgeom/export.h>

typedef struct tagGBoreLine GBoreLine;
typedef struct tagGBoreCone GBoreCone;
typedef struct tagGPtFence GPtFence;
typedef struct tagGPtFrustum GPtFrustum;
typedef struct tagGRtPrism GRtPrism;

// The validity checks pass a message for each violation they find (assertion_hook.h). They never
// change the record.

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
