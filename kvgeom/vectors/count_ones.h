// SPDX-License-Identifier: MIT
#pragma once

namespace kvgeom::detail {

// How many answers are 1. Not inlined into vector code: Clang 14 can't compile it for AVX-512.
[[gnu::noinline]] unsigned long CountOnes(const unsigned char* answers, unsigned long count);

}  // namespace kvgeom::detail
