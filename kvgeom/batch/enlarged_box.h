// SPDX-License-Identifier: MIT
#pragma once

#include <kvgeom/boxes/box.h>
#include <kvgeom/kernel/constants.h>
#include <kvgeom/kernel/tolerance_state.h>

namespace kvgeom::detail {

// What holds a point if and only if the box does, to the tolerance.
inline GBox Enlarged(const GBox& box) {
    const double t = DistanceTolerance() / kSqrt3;
    const GPosition& low = box.m_low;
    const GPosition& high = box.m_high;
    return {{low.m_x - t, low.m_y - t, low.m_z - t}, {high.m_x + t, high.m_y + t, high.m_z + t}};
}

}  // namespace kvgeom::detail
