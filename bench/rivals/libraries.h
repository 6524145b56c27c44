// SPDX-License-Identifier: MIT
#pragma once

// BENCH_BUILD is the namespace of the build: distributed or native.

#include "../model.h"
#include "rivals.h"

namespace bench::BENCH_BUILD {

Rival EigenRival();
// Compositions by the type for transformations, which is slower than its matrix.
Rival EigenTransformRival();
Rival ImathRival();
Rival OcctRival();
Rival CgalRival();

}  // namespace bench::BENCH_BUILD
