// SPDX-License-Identifier: MIT
#include <kvgeom/kernel/assertion_hook.h>
#include <kvgeom/kernel/infinity.h>
#include <kvgeom/kernel/tolerance_state.h>
#include <kvgeom/maps/validity.h>
#include <kvgeom/points/validity.h>
#include <kvgeom/volumes/bore_cone.h>
#include <kvgeom/volumes/pt_frustum.h>
#include <kvgeom/volumes/rt_prism.h>
#include <kvgeom/volumes/validity.h>

#include <cmath>

using namespace kvgeom::detail;

namespace {

constexpr unsigned long kFewestPoints = 4;  // a triangle, closed

bool IsClosed(const GPosition* points, unsigned long count) {
    return points[0].IsEqual(points[count - 1]) != 0;
}

// Passes the message for each point whose depth differs from the mean by more than the tolerance.
template <class Depth>
void CheckPlanarity(const GPosition* points, unsigned long count, double mean_depth, Depth depth,
                    const char* message) {
    const double dist = DistanceTolerance();
    for (unsigned long i = 0; i < count; ++i) {
        if (std::fabs(depth(points[i]) - mean_depth) > dist) {
            Gassert_debug(message);
        }
    }
}

double MeanZ(const GPosition* points, unsigned long count) {
    double sum = points[0].m_z;
    for (unsigned long i = 1; i < count; ++i) {
        sum += points[i].m_z;
    }
    return sum / static_cast<double>(count);
}

GPosition MeanPoint(const GPosition* points, unsigned long count) {
    GPosition sum = points[0];
    for (unsigned long i = 1; i < count; ++i) {
        sum += GVector{points[i].m_x, points[i].m_y, points[i].m_z};
    }
    const double n = static_cast<double>(count);
    return {sum.m_x / n, sum.m_y / n, sum.m_z / n};
}

// Passes the message for an eye between the planes, which would see the volume on both of its
// sides.
void CheckEye(const GPosition& eye, const GPosition& reference, const GUnitVector& direction,
              double front, double back, const char* message) {
    const double dist = DistanceTolerance();
    const GVector d = direction;
    const GPosition front_point = reference + front * d;
    const GPosition back_point = reference + back * d;
    if (d % (eye - front_point) >= -dist || d % (eye - back_point) <= -dist) {
        return;
    }
    Gassert_debug(message);
}

}  // namespace

void Gassert_valid(const GBoreLine& l) {
    Gassert_valid(l.m_point);
    Gassert_valid(l.m_direction);
    if (l.m_back > l.m_front || !(l.m_radius > 0)) {
        Gassert_debug("GBoreLine has an invalid front, back, or radius");
    }
}

void Gassert_valid(const GRtPrism& prism) {
    Gassert_valid(prism.m_transf);
    if (prism.m_count < kFewestPoints) {
        Gassert_debug("GRtPrism: Less than 4 points");
    }
    if (prism.m_points == nullptr) {
        Gassert_debug("GRtPrism: NULL pointer");
    } else if (prism.m_count > 0) {
        if (!IsClosed(prism.m_points, prism.m_count)) {
            Gassert_debug("GRtPrism: point set is not closed");
        }
        CheckPlanarity(
            prism.m_points, prism.m_count, MeanZ(prism.m_points, prism.m_count),
            [](const GPosition& p) { return p.m_z; }, "GRtPrism: point set is not planar in xz");
    }
    if (prism.m_height < 0 || prism.m_height > kGInfinity) {
        Gassert_debug("GRtPrism: invalid height");
    }
}

void Gassert_valid(const GPtFence& fence) {
    Gassert_valid(fence.m_direction);
    if (fence.m_count < kFewestPoints) {
        Gassert_debug("GPtFence: Less than 4 points");
    }
    if (fence.m_points == nullptr) {
        Gassert_debug("GPtFence: NULL pointer");
    } else if (fence.m_count > 0) {
        if (!IsClosed(fence.m_points, fence.m_count)) {
            Gassert_debug("GPtFence: point set is not closed");
        }
        const GVector d = fence.m_direction;
        CheckPlanarity(
            fence.m_points, fence.m_count, d % MeanPoint(fence.m_points, fence.m_count),
            [&d](const GPosition& p) { return d % p; },
            "GPtFence: point set is not planar with respect to direction vector");
    }
    if (fence.m_back > fence.m_front || fence.m_front > kGInfinity || fence.m_back < -kGInfinity) {
        Gassert_debug("GPtFence: invalid m_front or m_back");
    }
}

void Gassert_valid(const GBoreCone& cone) {
    const GBoreLine& l = cone.m_boreLine;
    Gassert_valid(l);
    Gassert_valid(cone.m_eye);
    CheckEye(cone.m_eye, l.m_point, l.m_direction, l.m_front, l.m_back,
             "GBoreCone: eye point is between front and back planes");
}

void Gassert_valid(const GPtFrustum& frustum) {
    const GPtFence& fence = frustum.m_fence;
    Gassert_valid(fence);
    Gassert_valid(frustum.m_eye);
    if (fence.m_count == 0 || fence.m_points == nullptr) {
        return;
    }
    CheckEye(frustum.m_eye, MeanPoint(fence.m_points, fence.m_count), fence.m_direction,
             fence.m_front, fence.m_back, "GPtFrustum: eye point is between front and back planes");
}
