// SPDX-License-Identifier: MIT
#include <kvgeom/maps/mapping.h>
#include <kvgeom/volumes/profile.h>
#include <kvgeom/volumes/pt_frustum.h>

using namespace kvgeom::detail;

GPtFrustum& GPtFrustum::operator*=(const GTransf& t) {
    m_fence *= t;
    m_eye *= t;
    return *this;
}

GPtFrustum& GPtFrustum::operator*=(const G4x4& a) {
    m_fence *= a;
    m_eye *= a;
    return *this;
}

void BuildPtFrustum(const GPtFence& fence, const GPosition& eye, GPtFrustum& frustum,
                    long* /*err*/) {
    GPosition* const points = frustum.m_fence.m_points;
    const GPosition eye_copy = eye;
    CopyPoints(fence.m_points, fence.m_count, points);
    frustum.m_fence = fence;
    frustum.m_fence.m_points = points;
    frustum.m_eye = eye_copy;
}

GBox PtFrustumRange(const GPtFrustum& frustum) {
    const GPtFence& fence = frustum.m_fence;
    const GPosition eye = frustum.m_eye;
    const GVector direction = fence.m_direction;
    double to_front = 0;
    double to_back = 0;
    if (fence.m_points != nullptr && fence.m_count > 0) {
        const GPosition first = fence.m_points[0];
        to_front = direction % (first + fence.m_front * direction - eye);
        to_back = direction % (first + fence.m_back * direction - eye);
    }
    return RangeOfImages(fence.m_points, fence.m_count,
                         [&](const GPosition& p, GPosition& front, GPosition& back) {
                             const GUnitVector ray = BuildUnitVector(eye, p);
                             const double slope = ray % direction;
                             if (slope == 0.0) {
                                 return false;
                             }
                             front = eye + to_front / slope * ray;
                             back = eye + to_back / slope * ray;
                             return true;
                         });
}
