// SPDX-License-Identifier: MIT
#pragma once

namespace kvgeom::detail {

// The first argument is the result unless the second is strictly beyond it. That holds for equal
// values, zeros of both signs and NaN alike, and it is what one instruction of the processor does.

inline double Smaller(double a, double b) {
    return b < a ? b : a;
}

inline double Larger(double a, double b) {
    return b > a ? b : a;
}

}  // namespace kvgeom::detail
