// SPDX-License-Identifier: MIT
#pragma once

#include <kvgeom/boxes/box.h>
#include <kvgeom/kernel/constants.h>
#include <kvgeom/kernel/tolerance_state.h>

namespace kvgeom::detail {

// The box enlarged by the tolerance as operator>> enlarges it: that operator answers 1 exactly for
// the points that lie in this box, its faces included.
inline GBox Enlarged(const GBox& box) {
    const double t = DistanceTolerance() / kSqrt3;
    const GPosition& low = box.m_low;
    const GPosition& high = box.m_high;
    return {{low.m_x - t, low.m_y - t, low.m_z - t}, {high.m_x + t, high.m_y + t, high.m_z + t}};
}

}  // namespace kvgeom::detail
