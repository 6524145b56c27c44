// SPDX-License-Identifier: MIT
#pragma once

#include <kvgeom/kernel/constants.h>

namespace kvgeom::detail {

// What a component divided by a near-zero number becomes, whatever the number's sign.
inline double DividedByNearZero(double component) {
    return component > 0 ? kUnbounded : -kUnbounded;
}

}  // namespace kvgeom::detail
