// SPDX-License-Identifier: MIT
#pragma once

#include <kvgeom/boxes/box.h>
#include <kvgeom/export.h>
#include <kvgeom/points/position.h>
#include <kvgeom/points/unit_vector.h>
#include <kvgeom/points/vector.h>

/// A convex region: the intersection of the insides of at most six planes. Plane (a, b, c, d) is
/// the set of points with a x + b y + c z + d = 0, its inside where that is positive: (a, b, c)
/// points inwards. Without planes it is all of space.
///
/// Normals are meant to be of unit length. Operations normalise the planes they use (a, b, c and d
/// divided by the length of (a, b, c), unless that is 1 to rounding or 0): on a copy, or, in the
/// in-place operators, on the record itself. Of a count above six the first six planes are used,
/// where nothing else is said.
struct tagGClipVolume {
    double m_planes[6][4];  ///< a, b, c, d of each plane
    unsigned char m_count;  ///< of planes

    /// 0 proves that the box misses the volume: it lies outside a plane by more than the distance
    /// tolerance. 1 says that it may meet it; near the volume's edges and corners 1 is also given
    /// for a miss, the more so the larger the box is against the volume. NaN proves nothing: a
    /// distance of NaN from a plane counts as inside, in all tests of a clip volume.
    KVGEOM_API int operator&&(const GBox& box) const;

    /// 1 when the box lies inside every plane, or outside by no more than the distance tolerance.
    KVGEOM_API int operator>>(const GBox& box) const;

    /// Moves the volume.
    KVGEOM_API tagGClipVolume& operator+=(const GVector& v);
    KVGEOM_API tagGClipVolume& operator-=(const GVector& v);

    /// The in-place forms of the free operators below.
    KVGEOM_API tagGClipVolume& operator*=(const GMatrix& m);
    KVGEOM_API tagGClipVolume& operator*=(const GTransf& t);
    KVGEOM_API tagGClipVolume& operator*=(double s);

    /// Division about the centre. s < DBL_EPSILON passes "GClipVolume: trying to divide by number <
    /// GSMALLRELTO1"; a divisor below DBL_EPSILON in magnitude becomes DBL_EPSILON.
    KVGEOM_API tagGClipVolume& operator/=(double s);
};
typedef tagGClipVolume GClipVolume;

/// The volume whose plane k passes through points[k] with normal normals[k], used unchanged. A
/// count above 6 passes "GClipVolume: can't build more than 6 planes" and counts as 6. For a count
/// of 0 the arrays may be null.
KVGEOM_API GClipVolume BuildClipVolume(unsigned int count, const GPosition* const points,
                                       const GUnitVector* const normals);

/// The volume of the planes given by 4 * count numbers, a, b, c, d of plane after plane,
/// normalised. A count above 6 as above.
KVGEOM_API GClipVolume BuildClipVolume(unsigned int count, const double* const values);

/// Writes the volume whose six planes are the sides of the box: y low, x low, y high, x high, z
/// low, z high. Always returns 0. A reversed box gives an empty volume.
KVGEOM_API long ConvertGBoxToGClipVolume(GBox* box, GClipVolume* volume);

/// Tells where p lies: *result is 1 inside every plane by more than the distance tolerance, 0
/// outside of one by more than that, else 2, on the boundary. *err is always 0; err must not be
/// null.
KVGEOM_API void IsPtInClipVolume(const GClipVolume& volume, const GPosition& p, int* result,
                                 long* err);

/// The moved volume.
KVGEOM_API GClipVolume operator+(const GClipVolume& volume, const GVector& v);
KVGEOM_API GClipVolume operator-(const GClipVolume& volume, const GVector& v);

/// The normals multiplied in the row form, n * m; or in the column form, m * n. The offsets d stay
/// and the results are not normalised: right for rotations and reflections.
KVGEOM_API GClipVolume operator*(const GClipVolume& volume, const GMatrix& m);
KVGEOM_API GClipVolume operator*(const GMatrix& m, const GClipVolume& volume);

/// The image of the volume, for a transformation without shear and with a positive scaling.
KVGEOM_API GClipVolume operator*(const GClipVolume& volume, const GTransf& t);

/// The volume with the distance of each plane from the centre multiplied by s. The centre is the
/// mean of the vertices (a vertex of more than three planes counts as often as three of them meet
/// there); with fewer than four planes, or no vertex, the mean of the feet of the perpendiculars
/// from the origin on the planes. A count of 0 or above 6 passes "GClipVolume: can't multiple by
/// scalar when count<=0 or > 6" and gives an unchanged copy; s < 0 passes "GClipVolume: should not
/// multiply by scalar < 0.0" and multiplies.
KVGEOM_API GClipVolume operator*(const GClipVolume& volume, double s);

/// volume * (1 / s). s < DBL_EPSILON passes "GClipVolume: scalar < tolerance"; |s| < DBL_EPSILON
/// gives volume * 1e30.
KVGEOM_API GClipVolume operator/(const GClipVolume& volume, double s);

/// The box around the vertices of the volume. The planes are taken as they are stored, meant to
/// have unit normals. Without a vertex it is the canonical null box, with the message of BuildBox;
/// for a count above 6 too, with "GBox: can't build with ClipVolume number of planes > 6".
KVGEOM_API GBox ClipVolumeRange(const GClipVolume& volume);
