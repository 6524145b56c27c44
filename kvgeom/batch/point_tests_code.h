// SPDX-License-Identifier: MIT
#pragma once

// The kernels that test many points.

#include <kvgeom/batch/box_tests_code.h>

namespace kvgeom::detail {
namespace {

[[gnu::flatten]] unsigned long BoxHoldsPositions(const GBox& enlarged, const GPosition* positions,
                                                 unsigned long count, unsigned char* answers) {
    const GBox box = enlarged;
    return TestGroups(positions, count, answers,
                      [=](const Triples& p) { return ~IsOutside(p, box); });
}

[[gnu::flatten]] unsigned long BoreLineHoldsPositions(const GBoreLine& line,
                                                      const GPosition* positions,
                                                      unsigned long count, unsigned char* answers) {
    const GPosition p = line.m_point;
    const GUnitVector u = line.m_direction;
    const double front = line.m_front;
    const double back = line.m_back;
    const double squared_radius = line.m_radius * line.m_radius;
    return TestGroups(positions, count, answers, [=](const Triples& q) {
        const Triples d = {q.x - p.m_x, q.y - p.m_y, q.z - p.m_z};
        const Lanes t = d.x * u.m_x + d.y * u.m_y + d.z * u.m_z;
        const Lanes squared_distance = (d.x * d.x + d.y * d.y + d.z * d.z) - t * t;
        const Mask is_beside = squared_radius >= squared_distance;
        const Mask is_beyond = (t < back) | (t > front);
        return is_beside & ~is_beyond;
    });
}

[[gnu::flatten]] unsigned long PlanesHoldPositions(const TestedPlane* planes,
                                                   unsigned long plane_count,
                                                   const GPosition* positions, unsigned long count,
                                                   unsigned char* answers) {
    return TestGroups(positions, count, answers, [=](const Triples& p) {
        Mask is_outside = {};
        for (unsigned long k = 0; k < plane_count; ++k) {
            is_outside |= Distance(planes[k], p.x, p.y, p.z) < 0.0;
        }
        return ~is_outside;
    });
}

[[gnu::flatten]] unsigned long PlacePositions(const TestedPlane* planes, unsigned long plane_count,
                                              double tol, const GPosition* positions,
                                              unsigned long count, unsigned char* answers) {
    constexpr unsigned char kOnBoundary = 2;
    unsigned long inside = 0;
    ForGroups(count, [&](unsigned long i, unsigned n) {
        const Triples p = Load(positions + i, n);
        Mask is_outside = {};
        Mask is_on_boundary = {};
        for (unsigned long k = 0; k < plane_count; ++k) {
            const Lanes distance = Distance(planes[k], p.x, p.y, p.z);
            is_outside |= distance < -tol;
            is_on_boundary |= Magnitude(distance) <= tol;
        }
        inside += StoreBits(answers + i, n, Bits(~(is_outside | is_on_boundary)));
        const unsigned on_boundary = Bits(is_on_boundary & ~is_outside);
        for (unsigned k = 0; on_boundary != 0 && k < n; ++k) {
            if ((on_boundary >> k & 1U) != 0) {
                answers[i + k] = kOnBoundary;
            }
        }
    });
    return inside;
}

}  // namespace
}  // namespace kvgeom::detail
