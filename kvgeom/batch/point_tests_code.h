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

}  // namespace
}  // namespace kvgeom::detail
