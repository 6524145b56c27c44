// SPDX-License-Identifier: MIT
#pragma once

#include <cmath>

namespace kvgeom::detail {

// The nearest double to the square root. MinGW's C library rounds it twice, to 80 bits and then to
// 64, which is off by an ulp now and then, and a compiler that doesn't optimise calls it; with
// -fno-math-errno, the built-in function is the processor's instruction in any case.
inline double SquareRoot(double x) {
#if defined(__GNUC__)
    return __builtin_sqrt(x);
#else
    return std::sqrt(x);
#endif
}

}  // namespace kvgeom::detail
