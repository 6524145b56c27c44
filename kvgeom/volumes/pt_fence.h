// SPDX-License-Identifier: MIT
#pragma once

#include <kvgeom/boxes/box.h>
#include <kvgeom/export.h>
#include <kvgeom/points/position.h>
#include <kvgeom/points/unit_vector.h>

typedef struct tagGTransf GTransf;
typedef struct tagG4x4 G4x4;

/// A closed polygon swept along a direction between two limits, which are signed distances from the
/// plane of the polygon. The polygon repeats its first point at the end, is convex, and lies in a
/// plane perpendicular to the direction; only the closing is checked when the fence is built.
///
/// The array of points is the caller's, who sets m_points before calling a builder and frees the
/// array; copies of the record share it.
struct tagGPtFence {
    unsigned long m_count;    ///< of points, the closing one included
    GPosition* m_points;      ///< the polygon
    GUnitVector m_direction;  ///< along which the limits are measured
    double m_front;           ///< the larger limit
    double m_back;            ///< the smaller limit

    /// Writes the m_count + 1 planes that bound the fence, as a point and an inward normal each:
    /// the front plane, a side plane for each edge in order, the back plane. Which side is inwards
    /// goes by the turn at m_points[1]. A fence of fewer than three points, or without an array,
    /// writes nothing.
    KVGEOM_API void FindPlanes(GPosition* planePoints, GUnitVector* planeNormals) const;

    /// 0 proves that the box misses the fence: it lies outside a plane of the fence by more than
    /// the distance tolerance. 1 says that it may meet it; near edges and corners of the fence 1 is
    /// also given for a miss, and always for a fence of fewer than three points. Fences of more
    /// than 6 points take memory from the heap for the call; where that is refused, "PtFence&&: no
    /// memory" is passed and 0 returned. NaN proves no miss.
    KVGEOM_API int operator&&(const GBox& box) const;

    /// Maps the points in the caller's array, and the direction, and multiplies the limits by t's
    /// scaling. A matrix is converted to a transformation first (GTransf::operator=(const G4x4&)).
    KVGEOM_API tagGPtFence& operator*=(const GTransf& t);
    KVGEOM_API tagGPtFence& operator*=(const G4x4& a);
};
typedef tagGPtFence GPtFence;

/// Fills a fence: copies num points into the array that fence.m_points designates, and the rest.
/// *err is 0; or 2, and the fence untouched, after the first of these messages that applies:
/// "BuildPtFence: num < 4", "BuildPtFence: pts aren't closed" (first and last point further apart
/// than the distance tolerance), "BuildPtFence: front < back". err must not be null; pts may be
/// null where num is 0.
KVGEOM_API void BuildPtFence(unsigned long num, const GPosition* const pts, GUnitVector dir,
                             double front, double back, GPtFence& fence, long* err);

/// Tells whether q lies on the inner side of, or on, all planes that FindPlanes wrote for the
/// fence: *inside is 1 or 0. No tolerance is involved; a distance of NaN counts as inside. Of the
/// fence the count alone is looked at: for fewer than three points *inside is 1, and nothing is
/// read. *err is always 0; err must not be null.
KVGEOM_API void IsPtInPtFence(const GPtFence& fence, GPosition* planePoints,
                              GUnitVector* planeNormals, const GPosition& q, int* inside,
                              long* err);

/// The box around the fence. The zero box when the heap refuses memory (beyond 100 points); the
/// canonical null box, with the message of BuildBox, for a fence without points.
KVGEOM_API GBox PtFenceRange(const GPtFence& fence);
