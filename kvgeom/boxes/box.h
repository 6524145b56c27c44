// SPDX-License-Identifier: MIT
#pragma once

#include <kvgeom/export.h>
#include <kvgeom/points/position.h>
#include <kvgeom/points/vector.h>

typedef struct tagGBox2d GBox2d;

/// An axis-aligned box. A box reversed by at least the distance tolerance on some axis is null: it
/// takes no part in unions and intersections. The canonical null box is (1e30, 1e30, 1e30) -
/// (-1e30, -1e30, -1e30). Nothing sorts the corners.
struct tagGBox {
    /// The corners with the least and with the greatest coordinates.
    GPosition m_low;
    GPosition m_high;

    /// m_low for 0, m_high for 1. Any other index passes "GBox: index out of range" and gives
    /// m_high.
    KVGEOM_API const GPosition& operator[](unsigned int i) const;
    KVGEOM_API GPosition& operator[](unsigned int i);

    /// 1 when m_low minus the distance tolerance is not below m_high on some axis. Point boxes and
    /// flat boxes are proper boxes, not null, but for those whose coordinates swallow the tolerance
    /// (beyond about 1e10 for the default one, any for a tolerance of 0). An axis with NaN is not
    /// null.
    KVGEOM_API int IsNull() const;

    /// 1 when the low and the high corners are equal (GPosition::IsEqual). 0 with NaN.
    KVGEOM_API int IsEqual(const tagGBox& b) const;

    /// 1 when the boxes overlap by more than -tol on every axis; tol may be 0 or negative. Null
    /// boxes get no special treatment. 0 with NaN in this box or tol; a NaN coordinate of b counts
    /// as that of this box.
    KVGEOM_API int IsIntersectTol(tagGBox& b, double tol);

    /// 1 when the box, enlarged by the distance tolerance / sqrt(3) on every side, holds the point,
    /// its faces included. NaN, in the box or the point, is never found to lie outside.
    KVGEOM_API int operator>>(const GPosition& p) const;
    /// 1 when the box holds both corners of b.
    KVGEOM_API int operator>>(const tagGBox& b) const;
    /// b >> *this.
    KVGEOM_API int operator<<(const tagGBox& b) const;

    /// Moves both corners.
    KVGEOM_API tagGBox& operator+=(const GVector& v);
    KVGEOM_API tagGBox& operator-=(const GVector& v);

    /// The in-place forms of the free operators below.
    KVGEOM_API tagGBox& operator*=(double s);
    KVGEOM_API tagGBox& operator/=(double s);
    KVGEOM_API tagGBox& operator|=(const tagGBox& b);
    KVGEOM_API tagGBox& operator&=(const tagGBox& b);

    /// The in-place forms of the maps in box_mapping.h: box * m, box * t, and a * box.
    KVGEOM_API tagGBox& operator*=(const GMatrix& m);
    KVGEOM_API tagGBox& operator*=(const GTransf& t);
    KVGEOM_API tagGBox& operator*=(const G4x4& a);

    /// Cuts off the part behind the plane N.X + d = 0, where N is (a, b, c) normalised; d is used
    /// as given. The box becomes the box around what is left, and 1 is returned; or the canonical
    /// null box, and 0, when no corner lies in front of the plane. A null box stays as it is, and
    /// returns 0. (a, b, c) of null length passes the message of BuildUnitVector and leaves
    /// nothing. Edges that rise towards the plane by no more than half the distance tolerance a
    /// unit are not cut, and corners behind it by less than that stay.
    KVGEOM_API int ClipWPlane(double a, double b, double c, double d);

    /// Writes the eight corners: the bottom face anticlockwise seen from +z, from the low corner,
    /// then the top face in the same order.
    KVGEOM_API void GiveCorners(GPosition* const corners) const;

    /// The plan of the box: x and y of both corners. A corner whose z is beyond the distance
    /// tolerance passes "Convert2d: GBox z coordinate > distanceTolerance".
    KVGEOM_API GBox2d Convert2d() const;
    /// Becomes the flat box of b in the plane z = 0.
    KVGEOM_API void Convert3d(const GBox2d& b);
};
typedef tagGBox GBox;

/// The box of a single point.
KVGEOM_API GBox BuildBox(const GPosition& p);
/// The box with low corner (x1, y1, z1) and high corner (x2, y2, z2), stored as given.
KVGEOM_API GBox BuildBox(double x1, double y1, double z1, double x2, double y2, double z2);
/// The box with low corner p and high corner q, stored as given.
KVGEOM_API GBox BuildBox(const GPosition& p, const GPosition& q);
/// The smallest box that holds count points. None at all passes "GBox: can't build with 0 points"
/// and gives the canonical null box; points may then be null. NaN in the first point stays, in
/// others it is passed over.
KVGEOM_API GBox BuildBox(unsigned long count, GPosition* points);

/// box >> p.
KVGEOM_API int operator<<(const GPosition& p, const GBox& box);

/// The union: the smallest box that holds both. A null operand contributes nothing; two of them
/// give the canonical null box.
KVGEOM_API GBox operator|(const GBox& a, const GBox& b);

/// The intersection. Boxes apart by less than the distance tolerance on an axis meet in the gap
/// between them; boxes further apart, and null ones, give the canonical null box.
KVGEOM_API GBox operator&(const GBox& a, const GBox& b);

/// Scaling about the origin. s <= 0 exchanges the corners, so that they stay ordered.
KVGEOM_API GBox operator*(const GBox& box, double s);
KVGEOM_API GBox operator*(double s, const GBox& box);

/// Division about the origin. s < 0 exchanges the corners. |s| < DBL_EPSILON passes "GBox: trying
/// to divide by 0.0" and gives the all-space box, (-1e30, -1e30, -1e30) - (1e30, 1e30, 1e30).
KVGEOM_API GBox operator/(const GBox& box, double s);
