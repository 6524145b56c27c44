// SPDX-License-Identifier: MIT
#pragma once

namespace kvgeom::detail {

// The first argument stays unless the second is strictly beyond it: so it is for equal values,
// zeros of both signs and NaN alike, and so one compare-and-select instruction does it.

inline double Smaller(double a, double b) {
    return b < a ? b : a;
}

inline double Larger(double a, double b) {
    return b > a ? b : a;
}

}  // namespace kvgeom::detail
