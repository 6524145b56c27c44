// SPDX-License-Identifier: MIT
#pragma once

#include <kvgeom/boxes/box.h>
#include <kvgeom/export.h>
#include <kvgeom/points/position.h>
#include <kvgeom/volumes/pt_fence.h>

/// A fence seen from an eye point: the rays from the eye through the polygon, between the front and
/// the back plane. The eye lies outside of the space between these; nothing checks it when the
/// frustum is built.
struct tagGPtFrustum {
    GPtFence m_fence;  ///< the polygon and the planes
    GPosition m_eye;   ///< the tip of the rays

    /// Maps fence and eye.
    KVGEOM_API tagGPtFrustum& operator*=(const GTransf& t);
    /// Maps the fence by the transformation that a converts to, the eye by a itself.
    KVGEOM_API tagGPtFrustum& operator*=(const G4x4& a);
};
typedef tagGPtFrustum GPtFrustum;

/// Fills a frustum: copies the fence's points into the array that frustum.m_fence.m_points
/// designates, and the rest. Never fails, and doesn't write *err: err may be null.
KVGEOM_API void BuildPtFrustum(const GPtFence& fence, const GPosition& eye, GPtFrustum& frustum,
                               long* err);

/// The box around the points where the rays from the eye through the polygon's points meet the
/// front and the back plane. A ray parallel to the planes, as that of a point at the eye, gives the
/// all-space box; for the rest as PtFenceRange.
KVGEOM_API GBox PtFrustumRange(const GPtFrustum& frustum);
