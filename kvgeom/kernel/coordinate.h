// SPDX-License-Identifier: MIT
#pragma once

#include <kvgeom/kernel/constants.h>

#include <cmath>

namespace kvgeom::detail {

/// 1 when the value may not stand as a coordinate: NaN, infinite, or so small without being zero
/// that it can only be the debris of an earlier fault; else 0.
inline int IsInvalidCoordinate(double value) {
    if (!std::isfinite(value)) {
        return 1;
    }
    return value != 0.0 && std::fabs(value) < kSmallestCoordinate ? 1 : 0;
}

}  // namespace kvgeom::detail
