// SPDX-License-Identifier: MIT
#pragma once

#include <kvgeom/points/unit_vector.h>

namespace kvgeom::detail {

inline GUnitVector Direction(const GVector& v) {
    return BuildUnitVector(v.m_x, v.m_y, v.m_z);
}

}  // namespace kvgeom::detail
