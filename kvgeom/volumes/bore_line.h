// SPDX-License-Identifier: MIT
#pragma once

#include <kvgeom/boxes/box.h>
#include <kvgeom/export.h>
#include <kvgeom/points/position.h>
#include <kvgeom/points/unit_vector.h>
#include <kvgeom/points/vector.h>

/// A straight probe: the line through m_point along m_direction, limited by two parameters and
/// thickened into a cylinder. Parameter t, a signed distance, names the point
/// m_point + t * m_direction. A limit of 1e30 at the front or -1e30 at the back stands for no
/// limit.
///
/// Builders store what they are given: that m_back <= m_front, m_radius > 0 and the direction has
/// unit length is the caller's business. The null bore line runs without limits along x through the
/// origin, with the distance tolerance as its radius.
struct tagGBoreLine {
    GPosition m_point;        ///< at parameter 0
    GUnitVector m_direction;  ///< in which parameters grow
    double m_front;           ///< the larger limit
    double m_back;            ///< the smaller limit
    double m_radius;          ///< of the cylinder

    /// The parameter of the point of the line nearest to q.
    KVGEOM_API double Evaluate(const GPosition& q) const;
    /// The point at parameter t.
    KVGEOM_API GPosition Evaluate(double t) const;

    /// Takes both limits away.
    KVGEOM_API void MakeInfinite();
    /// 1 when at least one limit is absent.
    KVGEOM_API int IsInfinite() const;

    /// 1 when points and directions are equal (GPosition::IsEqual, GUnitVector::IsEqual) and limits
    /// and radii differ by less than the distance tolerance. 0 with NaN in point or direction;
    /// limits and radii of NaN count as equal.
    KVGEOM_API int IsEqual(const tagGBoreLine& o) const;
    /// IsEqual with the null bore line.
    KVGEOM_API int IsNull() const;

    /// 1 when q lies in the cylinder, its surface included; no tolerance is involved. 0 with NaN
    /// in q or in this, but for a limit of NaN, which is none.
    KVGEOM_API int operator>>(const GPosition& q) const;
    /// 1 when m_back <= t <= m_front. 0 with NaN.
    KVGEOM_API int operator>>(double t) const;

    /// Moves the point.
    KVGEOM_API tagGBoreLine& operator+=(const GVector& v);
    KVGEOM_API tagGBoreLine& operator-=(const GVector& v);

    /// Multiplies limits and radius. s < DBL_EPSILON passes "GBoreLine: multiplying by 0.0" and
    /// multiplies all the same.
    KVGEOM_API tagGBoreLine& operator*=(double s);
    /// Divides limits and radius. s < DBL_EPSILON passes "GBoreLine: scalar < tol"; |s| <
    /// DBL_EPSILON divides by DBL_EPSILON.
    KVGEOM_API tagGBoreLine& operator/=(double s);

    /// The in-place forms of the maps in bore_line_mapping.h: l * m, l * t, and a * l.
    KVGEOM_API tagGBoreLine& operator*=(const GMatrix& m);
    KVGEOM_API tagGBoreLine& operator*=(const GTransf& t);
    KVGEOM_API tagGBoreLine& operator*=(const G4x4& a);

    /// Cuts off the part behind the plane N.X + d = 0, where N is (a, b, c) normalised; d is used
    /// as given. 1 when a part is left, with the limit that lies behind the plane by half the
    /// distance tolerance or more moved to it; 0 when nothing is (no end reaches half the
    /// distance tolerance in front of the plane; both limits become 0), or when this is null
    /// (nothing changes). (a, b, c) of null length passes the message of BuildUnitVector and
    /// leaves nothing. The radius plays no part. A line exactly parallel to the plane (N.D is 0)
    /// stays as it is, with 1, if its point lies in front of the plane by half the distance
    /// tolerance or more; else both limits become 0. An absent limit is cut with the precision of
    /// numbers around 1e30, that is with none: give the bore line finite limits first.
    KVGEOM_API int ClipWPlane(double a, double b, double c, double d);

    /// 0 proves that the probe misses the box; 1 says that it may touch it. The slab test (Kay and
    /// Kajiya) of the segment against the box enlarged on every side by the radius, or by the
    /// relative tolerance for a radius of 0: near the enlarged box's edges and corners it may
    /// answer 1 for a miss. An axis along which the line runs through less than DBL_EPSILON of the
    /// box's extent a unit counts as parallel: against boxes that are huge beside the probe, what
    /// so little a slope gains over the leg is neglected. NaN, in the line or the box, proves no
    /// miss.
    KVGEOM_API int operator&&(const GBox& box) const;
};
typedef tagGBoreLine GBoreLine;

/// The bore line with the given members, stored unchanged.
KVGEOM_API GBoreLine BuildBoreLine(const GPosition& p, const GUnitVector& d, double front,
                                   double back, double radius);
/// The bore line without limits, with the distance tolerance as its radius.
KVGEOM_API GBoreLine BuildBoreLine(const GPosition& p, const GUnitVector& d);

/// The moved bore line.
KVGEOM_API GBoreLine operator+(const GBoreLine& b, const GVector& v);
KVGEOM_API GBoreLine operator-(const GBoreLine& b, const GVector& v);

/// As the in-place forms, with the messages "GBoreLine: trying to multiply by value <= 0.0" and
/// "GBoreLine: trying to divide by value <= 0.0".
KVGEOM_API GBoreLine operator*(const GBoreLine& b, double s);
KVGEOM_API GBoreLine operator/(const GBoreLine& b, double s);

/// The smallest box that holds the square prism around the cylinder whose sides run along
/// GetPerpVector of the direction.
KVGEOM_API GBox BoreLineRange(const GBoreLine& b);

/// The bore line along the span of the box: the point moves to where the box, enlarged by the
/// radius on every side, begins along the direction; back is 0 and front the span's length. Its own
/// limits don't limit the result. The null bore line when l && box is 0.
KVGEOM_API GBoreLine operator&(const GBoreLine& l, const GBox& box);
