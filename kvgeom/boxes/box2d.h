// SPDX-License-Identifier: MIT
#pragma once

#include <kvgeom/export.h>
#include <kvgeom/points/position2d.h>
#include <kvgeom/points/vector2d.h>

/// An axis-aligned box of the plane. A box reversed by at least the distance tolerance on some axis
/// is null: it takes no part in unions and intersections. The canonical null box is (1e30, 1e30) -
/// (-1e30, -1e30). Nothing sorts the corners.
struct tagGBox2d {
    /// The corners with the least and with the greatest coordinates.
    GPosition2d m_low;
    GPosition2d m_high;

    /// m_low for 0, m_high for 1. Any other index passes "GBox2d: index out of range" and gives
    /// m_high.
    KVGEOM_API const GPosition2d& operator[](unsigned int i) const;
    KVGEOM_API GPosition2d& operator[](unsigned int i);

    /// 1 when m_low minus the distance tolerance is not below m_high on some axis. Point boxes and
    /// flat boxes are proper boxes, not null, but for those whose coordinates swallow the tolerance
    /// (beyond about 1e10 for the default one, any for a tolerance of 0). An axis with NaN is not
    /// null.
    KVGEOM_API int IsNull() const;

    /// 1 when the low and the high corners are equal (GPosition2d::IsEqual). 0 with NaN.
    KVGEOM_API int IsEqual(const tagGBox2d& b) const;

    /// 1 when the boxes overlap by more than -tol on both axes; tol may be 0 or negative. Null
    /// boxes get no special treatment. 0 with NaN in this box or tol; a NaN coordinate of b counts
    /// as that of this box.
    KVGEOM_API int IsIntersectTol(tagGBox2d& b, double tol);

    /// 1 when the box, enlarged by the distance tolerance / sqrt(2) on every side, holds the point
    /// in its interior: a point exactly on an enlarged side is outside (in space it is inside).
    /// NaN, in the box or the point, is never found to lie outside.
    KVGEOM_API int operator>>(const GPosition2d& p) const;
    /// 1 when the box holds both corners of b.
    KVGEOM_API int operator>>(const tagGBox2d& b) const;
    /// b >> *this.
    KVGEOM_API int operator<<(const tagGBox2d& b) const;

    /// Moves both corners.
    KVGEOM_API tagGBox2d& operator+=(const GVector2d& v);
    KVGEOM_API tagGBox2d& operator-=(const GVector2d& v);

    /// The in-place forms of the free operators below.
    KVGEOM_API tagGBox2d& operator*=(double s);
    KVGEOM_API tagGBox2d& operator/=(double s);
    KVGEOM_API tagGBox2d& operator|=(const tagGBox2d& b);
    KVGEOM_API tagGBox2d& operator&=(const tagGBox2d& b);

    /// The in-place forms of the maps in box2d_mapping.h: box * m, and box * t.
    KVGEOM_API tagGBox2d& operator*=(const GMatrix2d& m);
    KVGEOM_API tagGBox2d& operator*=(const GTransf2d& t);

    /// Writes the four corners, anticlockwise from the low corner.
    KVGEOM_API void GiveCorners(GPosition2d* const corners) const;
};
typedef tagGBox2d GBox2d;

/// The box of a single point. The flag is not used.
KVGEOM_API GBox2d BuildBox2d(double x, double y);
KVGEOM_API GBox2d BuildBox2d(const GPosition2d& p, int flag);
/// The box with low corner (x1, y1) and high corner (x2, y2), stored as given.
KVGEOM_API GBox2d BuildBox2d(double x1, double y1, double x2, double y2);
/// The box with low corner p and high corner q, stored as given.
KVGEOM_API GBox2d BuildBox2d(const GPosition2d& p, const GPosition2d& q);
/// The smallest box that holds count points. None at all passes "GBox2d: can't build a box with 0
/// points" and gives the canonical null box.
KVGEOM_API GBox2d BuildBox2d(unsigned long count, GPosition2d* points);

/// box >> p.
KVGEOM_API int operator<<(const GPosition2d& p, const GBox2d& box);

/// The union: the smallest box that holds both. A null operand contributes nothing; two of them
/// give the canonical null box.
KVGEOM_API GBox2d operator|(const GBox2d& a, const GBox2d& b);

/// The intersection. Boxes apart by less than the distance tolerance on an axis meet in the gap
/// between them; boxes further apart, and null ones, give the canonical null box.
KVGEOM_API GBox2d operator&(const GBox2d& a, const GBox2d& b);

/// Scaling about the origin. s <= 0 exchanges the corners, so that they stay ordered.
KVGEOM_API GBox2d operator*(const GBox2d& box, double s);
KVGEOM_API GBox2d operator*(double s, const GBox2d& box);

/// Division about the origin. s < 0 exchanges the corners. |s| < DBL_EPSILON passes "GBox2d: trying
/// to divide by 0.0" and gives the all-space box, (-1e30, -1e30) - (1e30, 1e30).
KVGEOM_API GBox2d operator/(const GBox2d& box, double s);
