// SPDX-License-Identifier: MIT
#pragma once

#include <kvgeom/boxes/box.h>

namespace kvgeom::detail {

// The corner of the box that lies furthest along the direction.
inline GPosition FurthestCorner(const GBox& box, const GVector& direction) {
    return {direction.m_x > 0 ? box.m_high.m_x : box.m_low.m_x,
            direction.m_y > 0 ? box.m_high.m_y : box.m_low.m_y,
            direction.m_z > 0 ? box.m_high.m_z : box.m_low.m_z};
}

// The opposite corner.
inline GPosition NearestCorner(const GBox& box, const GVector& direction) {
    return FurthestCorner({box.m_high, box.m_low}, direction);
}

}  // namespace kvgeom::detail
