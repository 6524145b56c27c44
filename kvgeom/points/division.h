// SPDX-License-Identifier: MIT
#pragma once

#include <kvgeom/kernel/constants.h>

namespace kvgeom::detail {

// The quotient of a component and a near-zero number, whatever the sign of that number.
inline double DividedByNearZero(double component) {
    return component > 0 ? kUnbounded : -kUnbounded;
}

}  // namespace kvgeom::detail
