// SPDX-License-Identifier: MIT
#include <kvgeom/boxes/extreme_corners.h>
#include <kvgeom/kernel/assertion_hook.h>
#include <kvgeom/kernel/error_codes.h>
#include <kvgeom/kernel/refusal.h>
#include <kvgeom/maps/converted.h>
#include <kvgeom/maps/mapping.h>
#include <kvgeom/points/direction.h>
#include <kvgeom/volumes/profile.h>
#include <kvgeom/volumes/pt_fence.h>

using namespace kvgeom::detail;

namespace {

constexpr unsigned long kFewestPoints = 4;
constexpr unsigned long kFewestPointsWithPlanes = 3;
// The planes of a fence of up to 6 points need no heap.
constexpr unsigned long kMostFixedPlanes = 7;

bool HasPlanes(const GPtFence& fence) {
    return fence.m_count >= kFewestPointsWithPlanes && fence.m_points != nullptr;
}

}  // namespace

void GPtFence::FindPlanes(GPosition* planePoints, GUnitVector* planeNormals) const {
    if (!HasPlanes(*this)) {
        return;
    }
    const GPosition first = m_points[0];
    const GVector turn = (m_points[1] - first) * (m_points[2] - m_points[1]);
    const bool is_positive = m_direction % turn > 0;
    // The side planes come first, because the points may be written over those of the fence.
    GPosition previous = first;
    for (unsigned long i = 1; i < m_count; ++i) {
        const GPosition current = m_points[i];
        const GVector edge = current - previous;
        planePoints[i] = current;
        planeNormals[i] =
            Direction(is_positive ? GVector(m_direction) * edge : edge * GVector(m_direction));
        previous = current;
    }
    planePoints[0] = first + m_front * m_direction;
    planeNormals[0] = {-m_direction.m_x, -m_direction.m_y, -m_direction.m_z};
    planePoints[m_count] = first + m_back * m_direction;
    planeNormals[m_count] = m_direction;
}

int GPtFence::operator&&(const GBox& box) const {
    if (!HasPlanes(*this)) {
        return 1;
    }
    const double tol = DistanceTolerance();
    // A count that overflows here counts as memory that can't be had.
    const unsigned long planes = m_count + 1;
    Scratch<GPosition, kMostFixedPlanes> points(planes);
    Scratch<GUnitVector, kMostFixedPlanes> normals(planes);
    if (planes == 0 || points.Get() == nullptr || normals.Get() == nullptr) {
        Gassert_debug("PtFence&&: no memory");
        return 0;
    }
    FindPlanes(points.Get(), normals.Get());
    for (unsigned long i = 0; i < planes; ++i) {
        const GVector normal = normals.Get()[i];
        const GPosition corner = FurthestCorner(box, normal);
        const double distance = normal % (corner - (points.Get()[i] % normal) * normal);
        if (distance < -tol) {
            return 0;
        }
    }
    return 1;
}

GPtFence& GPtFence::operator*=(const GTransf& t) {
    if (m_points != nullptr) {
        for (unsigned long i = 0; i < m_count; ++i) {
            m_points[i] *= t;
        }
    }
    m_direction *= t;
    m_front *= t.m_scaling;
    m_back *= t.m_scaling;
    return *this;
}

GPtFence& GPtFence::operator*=(const G4x4& a) {
    return *this *= Converted(a);
}

void BuildPtFence(unsigned long num, const GPosition* const pts, GUnitVector dir, double front,
                  double back, GPtFence& fence, long* err) {
    *err = kSuccess;
    if (num < kFewestPoints) {
        Refuse("BuildPtFence: num < 4", err);
        return;
    }
    if (!IsClosed(pts, num)) {
        Refuse("BuildPtFence: pts aren't closed", err);
        return;
    }
    if (front < back) {
        Refuse("BuildPtFence: front < back", err);
        return;
    }
    CopyPoints(pts, num, fence.m_points);
    fence.m_front = front;
    fence.m_back = back;
    fence.m_direction = dir;
    fence.m_count = num;
}

void IsPtInPtFence(const GPtFence& fence, GPosition* planePoints, GUnitVector* planeNormals,
                   const GPosition& q, int* inside, long* err) {
    *err = kSuccess;
    int result = 1;
    if (fence.m_count >= kFewestPointsWithPlanes) {
        for (unsigned long i = 0; i <= fence.m_count; ++i) {
            if (planeNormals[i] % (q - planePoints[i]) < 0) {
                result = 0;
                break;
            }
        }
    }
    *inside = result;
}

GBox PtFenceRange(const GPtFence& fence) {
    const GVector to_front = fence.m_front * fence.m_direction;
    const GVector to_back = fence.m_back * fence.m_direction;
    return RangeOfImages(fence.m_points, fence.m_count,
                         [&](const GPosition& p, GPosition& front, GPosition& back) {
                             front = p + to_front;
                             back = p + to_back;
                             return true;
                         });
}
