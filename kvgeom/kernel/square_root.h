// SPDX-License-Identifier: MIT
#pragma once

#include <cmath>

namespace kvgeom::detail {

// The double nearest to the square root. MinGW's C library rounds twice, to 80 bits and then to 64,
// and is now and then off by an ulp; a compiler that doesn't optimise would call it. With
// -fno-math-errno, the built-in function is always the processor's instruction.
inline double SquareRoot(double x) {
#if defined(__GNUC__)
    return __builtin_sqrt(x);
#else
    return std::sqrt(x);
#endif
}

}  // namespace kvgeom::detail
