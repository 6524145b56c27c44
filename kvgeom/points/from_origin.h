// SPDX-License-Identifier: MIT
#pragma once

#include <kvgeom/points/position.h>

namespace kvgeom::detail {

// The point that a vector leads to from the origin, and the vector that leads to a point: the same
// numbers.
inline GPosition FromOrigin(const GVector& v) {
    return {v.m_x, v.m_y, v.m_z};
}

inline GVector OriginTo(const GPosition& p) {
    return {p.m_x, p.m_y, p.m_z};
}

}  // namespace kvgeom::detail
