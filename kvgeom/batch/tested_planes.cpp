// SPDX-License-Identifier: MIT
#include <kvgeom/batch/tested_planes.h>
#include <kvgeom/kernel/constants.h>

#include <algorithm>

namespace kvgeom::detail {
namespace {

bool IsNull(const GVector& normal) {
    return normal.GetLength() <= kUnitTolerance;
}

// The furthest corner along a direction, or the nearest one.
unsigned FindCorner(const GVector& direction, bool is_furthest) {
    const auto bit = [=](double x, unsigned axis) {
        return ((x > 0) == is_furthest ? 1U : 0U) << axis;
    };
    return bit(direction.m_x, 0) | bit(direction.m_y, 1) | bit(direction.m_z, 2);
}

void SortByCorner(TestedPlane* planes, unsigned long count) {
    std::sort(planes, planes + count,
              [](const TestedPlane& a, const TestedPlane& b) { return a.corner < b.corner; });
}

unsigned long CountPlanes(const GPtFence& fence) {
    constexpr unsigned long kFewestPoints = 3;
    return fence.m_count >= kFewestPoints && fence.m_points != nullptr ? fence.m_count + 1 : 0;
}

}  // namespace

bool FindTestedPlanes(const GClipVolume& volume, bool looks_at_furthest,
                      TestedPlane (&planes)[kMostPlanes]) {
    const GClipVolume normalised = Normalised(volume);
    for (int k = 0; k < PlaneCount(volume); ++k) {
        const auto& plane = normalised.m_planes[k];
        const GVector normal = {plane[0], plane[1], plane[2]};
        if (IsNull(normal)) {
            return false;
        }
        const GUnitVector u = PlaneNormal(plane);
        const GVector offset = plane[3] * u;
        planes[k] = {u, offset, u % offset, FindCorner(normal, looks_at_furthest)};
    }
    SortByCorner(planes, static_cast<unsigned long>(PlaneCount(volume)));
    return true;
}

FencePlanes::FencePlanes(const GPtFence& fence)
    : m_fence(fence),
      m_count(CountPlanes(fence)),
      m_points(m_count),
      m_normals(m_count),
      m_tested(m_count) {}

bool FencePlanes::HaveRoom() {
    return m_count != 0 && m_points.Get() != nullptr && m_normals.Get() != nullptr &&
           m_tested.Get() != nullptr;
}

bool FencePlanes::FindForBoxes() {
    for (unsigned long i = 1; i < m_fence.m_count; ++i) {
        const GVector edge = m_fence.m_points[i] - m_fence.m_points[i - 1];
        if (IsNull(GVector(m_fence.m_direction) * edge)) {
            return false;
        }
    }
    m_fence.FindPlanes(m_points.Get(), m_normals.Get());
    for (unsigned long i = 0; i < m_count; ++i) {
        const GVector n = m_normals.Get()[i];
        const GVector foot = (m_points.Get()[i] % n) * n;
        m_tested.Get()[i] = {n, -foot, n % -foot, FindCorner(n, true)};
    }
    SortByCorner(m_tested.Get(), m_count);
    return true;
}

void FencePlanes::FindForPositions() {
    m_fence.FindPlanes(m_points.Get(), m_normals.Get());
    for (unsigned long i = 0; i < m_count; ++i) {
        const GPosition& p = m_points.Get()[i];
        const GVector n = m_normals.Get()[i];
        const GVector offset = {-p.m_x, -p.m_y, -p.m_z};
        m_tested.Get()[i] = {n, offset, n % offset, 0};
    }
}

}  // namespace kvgeom::detail
