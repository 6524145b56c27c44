// SPDX-License-Identifier: MIT
#pragma once

#include <kvgeom/kernel/infinity.h>

namespace kvgeom::detail {

// The quotient of a component and a near-zero number, whatever the sign of that number.
inline double DividedByNearZero(double component) {
    return component > 0 ? kGInfinity : -kGInfinity;
}

}  // namespace kvgeom::detail
