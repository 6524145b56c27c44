// SPDX-License-Identifier: MIT
#include <kvgeom/boxes/box.h>
#include <kvgeom/boxes/fixed_boxes.h>
#include <kvgeom/kernel/tolerance_state.h>
#include <kvgeom/points/from_origin.h>
#include <kvgeom/points/unit_vector.h>

#include <cmath>

using namespace kvgeom::detail;

namespace {

constexpr int kCorners = 8;
constexpr int kEdgesOfCorner = 3;

// The points that span what is left of a box: corners, and places where its edges cross the plane.
struct Remainder {
    GPosition points[kCorners * (1 + kEdgesOfCorner)];
    unsigned long count = 0;

    void Add(const GPosition& p) { points[count++] = p; }
};

// Adds the crossings of the three edges that leave a corner in front of the plane. So each crossing
// is computed from the end of its edge that lies in front.
void AddCrossings(const GBox& box, const GPosition& corner, double distance,
                  const GUnitVector& normal, double half_tolerance, Remainder& remainder) {
    for (unsigned axis = 0; axis < kEdgesOfCorner; ++axis) {
        const double direction = corner[axis] == box.m_low[axis] ? 1 : -1;
        const double rise = direction * normal[axis];
        if (std::fabs(rise) > half_tolerance) {
            const double t = -distance / rise;
            if (0 < t && t < box.m_high[axis] - box.m_low[axis]) {
                GPosition crossing = corner;
                crossing[axis] += t * direction;
                remainder.Add(crossing);
            }
        }
    }
}

}  // namespace

int GBox::ClipWPlane(double a, double b, double c, double d) {
    const double half_tolerance = DistanceTolerance() / 2;
    if (IsNull()) {
        return 0;
    }
    const GUnitVector normal = BuildUnitVector(a, b, c);
    const GPosition plane_point = FromOrigin(-(d * GVector(normal)));

    GPosition corners[kCorners];
    GiveCorners(corners);
    double distances[kCorners];
    bool any_positive = false;
    bool any_negative = false;
    for (int k = 0; k < kCorners; ++k) {
        distances[k] = normal % (corners[k] - plane_point);
        any_positive = any_positive || distances[k] > 0;
        any_negative = any_negative || distances[k] < 0;
    }
    if (!any_positive) {
        *this = kGNullBox;
        return 0;
    }
    if (!any_negative) {
        return 1;
    }

    Remainder remainder;
    for (int k = 0; k < kCorners; ++k) {
        if (distances[k] > 0) {
            remainder.Add(corners[k]);
            AddCrossings(*this, corners[k], distances[k], normal, half_tolerance, remainder);
        } else if (std::fabs(distances[k]) < half_tolerance) {
            remainder.Add(corners[k]);
        }
    }
    *this = BuildBox(remainder.count, remainder.points);
    return 1;
}
