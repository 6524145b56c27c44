// SPDX-License-Identifier: MIT
#pragma once

// The extent of a box along one axis, low to high.

namespace kvgeom::detail {

inline bool IsReversed(double low, double high, double t) {
    return low - t >= high;
}

inline void Extend(double& low, double& high, double value) {
    if (low > value) {
        low = value;
    } else if (high < value) {
        high = value;
    }
}

}  // namespace kvgeom::detail
