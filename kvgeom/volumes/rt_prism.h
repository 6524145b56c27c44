// SPDX-License-Identifier: MIT
#pragma once

#include <kvgeom/boxes/box.h>
#include <kvgeom/export.h>
#include <kvgeom/maps/transf.h>
#include <kvgeom/points/position.h>
#include <kvgeom/points/unit_vector.h>

/// A closed planar profile extruded along its normal: in a frame of its own, the profile lies in
/// the plane z = 0 and is extruded to z = m_height; the transformation places the frame in the
/// world.
///
/// The array of points is the caller's, who sets m_points before calling a builder and frees the
/// array; copies of the record share it.
struct tagGRtPrism {
    GTransf m_transf;       ///< from the prism's own frame to the world
    GPosition* m_points;    ///< in the prism's own frame
    unsigned long m_count;  ///< of points, the closing one included
    double m_height;        ///< along the frame's z

    /// Moves the prism: its transformation is followed by t. The points stay. A matrix is converted
    /// to a transformation first (GTransf::operator=(const G4x4&)).
    KVGEOM_API tagGRtPrism& operator*=(const GTransf& t);
    KVGEOM_API tagGRtPrism& operator*=(const G4x4& a);
};
typedef tagGRtPrism GRtPrism;

/// Fills a prism from points of its own frame: copies num points into the array that prism.m_points
/// designates, and the rest. *err is 0; or 2, and the prism untouched, after "BuildRtPrism: pts
/// aren't closed" (first and last point further apart than the distance tolerance, or no points) or
/// "BuildRtPrism: height is negative". err must not be null; pts may be null where num is 0. A null
/// prism.m_points takes no points, all else is as told.
KVGEOM_API void BuildRtPrism(const GTransf& t, const GPosition* const pts, unsigned long num,
                             double height, GRtPrism& prism, long* err);

/// Fills a prism from points of the world, the normal of their plane and two depths along it,
/// measured from that plane. The frame has its origin at the first point, moved by b_depth along
/// the normal, and x towards the second; every point's own z becomes exactly 0.
///
/// *err is 0; or 2, and the prism untouched, after the first of these messages that applies:
/// "BuildRtPrism: normal is invalid" (null), "BuildRtPrism: pts aren't closed", "BuildRtPrism:
/// f_depth < b_depth". When the first two points coincide, "BuildRtPrism: pts[0] and pts[1] are the
/// same\n" is passed after BuildUnitVector's message; the array then holds the moved points. So it
/// is, without BuildUnitVector's message, when their distance overflows. Null pointers as above.
KVGEOM_API void BuildRtPrism(const GPosition* const pts, unsigned long num, GUnitVector normal,
                             double f_depth, double b_depth, GRtPrism& prism, long* err);

/// The box around the prism in the world. The zero box when the heap refuses memory (beyond 100
/// points); the canonical null box, with the message of BuildBox, for a prism without points.
KVGEOM_API GBox RtPrismRange(const GRtPrism& prism);
