// SPDX-License-Identifier: MIT
#pragma once

#include <kvgeom/points/unit_vector2d.h>

namespace kvgeom::detail {

inline GUnitVector2d Direction(const GVector2d& v) {
    return BuildUnitVector2d(v.m_x, v.m_y);
}

}  // namespace kvgeom::detail
