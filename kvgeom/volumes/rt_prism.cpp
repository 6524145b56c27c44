// SPDX-License-Identifier: MIT
#include <kvgeom/kernel/error_codes.h>
#include <kvgeom/kernel/refusal.h>
#include <kvgeom/maps/converted.h>
#include <kvgeom/maps/mapping.h>
#include <kvgeom/maps/transf_builders.h>
#include <kvgeom/points/direction.h>
#include <kvgeom/volumes/profile.h>
#include <kvgeom/volumes/rt_prism.h>

using namespace kvgeom::detail;

namespace {

bool IsClosedProfile(const GPosition* points, unsigned long count) {
    return count > 0 && IsClosed(points, count);
}

}  // namespace

GRtPrism& GRtPrism::operator*=(const GTransf& t) {
    m_transf *= t;
    return *this;
}

GRtPrism& GRtPrism::operator*=(const G4x4& a) {
    return *this *= Converted(a);
}

void BuildRtPrism(const GTransf& t, const GPosition* const pts, unsigned long num, double height,
                  GRtPrism& prism, long* err) {
    *err = kSuccess;
    if (!IsClosedProfile(pts, num)) {
        Refuse("BuildRtPrism: pts aren't closed", err);
        return;
    }
    if (height < 0) {
        Refuse("BuildRtPrism: height is negative", err);
        return;
    }
    CopyPoints(pts, num, prism.m_points);
    prism.m_transf = t;
    prism.m_height = height;
    prism.m_count = num;
}

void BuildRtPrism(const GPosition* const pts, unsigned long num, GUnitVector normal, double f_depth,
                  double b_depth, GRtPrism& prism, long* err) {
    *err = kSuccess;
    if (normal.IsNull()) {
        Refuse("BuildRtPrism: normal is invalid", err);
        return;
    }
    if (!IsClosedProfile(pts, num)) {
        Refuse("BuildRtPrism: pts aren't closed", err);
        return;
    }
    if (b_depth > f_depth) {
        Refuse("BuildRtPrism: f_depth < b_depth", err);
        return;
    }
    // Taken before the points move, which may be the prism's own.
    const GPosition from = pts[0];
    const GPosition to = num > 1 ? pts[1] : from;
    GPosition* const points = prism.m_points;
    CopyPoints(pts, num, points);
    const unsigned long count = points != nullptr ? num : 0;
    const GVector to_base = b_depth * normal;
    for (unsigned long i = 0; i < count; ++i) {
        points[i] += to_base;
    }

    const GUnitVector x_axis = BuildUnitVector(from, to);
    if (x_axis.IsNull()) {
        Refuse("BuildRtPrism: pts[0] and pts[1] are the same\n", err);
        return;
    }
    const GUnitVector y_axis = Direction(GVector(normal) * GVector(x_axis));
    prism.m_transf = CoordinateTransf(from + to_base, x_axis, y_axis);
    const GTransf to_own_frame = prism.m_transf.Inverse();
    for (unsigned long i = 0; i < count; ++i) {
        points[i] *= to_own_frame;
        points[i].m_z = 0.0;
    }
    prism.m_count = num;
    prism.m_height = f_depth - b_depth;
}

GBox RtPrismRange(const GRtPrism& prism) {
    return RangeOfImages(prism.m_points, prism.m_count,
                         [&prism](const GPosition& p, GPosition& base, GPosition& top) {
                             base = p * prism.m_transf;
                             top = GPosition{p.m_x, p.m_y, p.m_z + prism.m_height} * prism.m_transf;
                             return true;
                         });
}
