// SPDX-License-Identifier: MIT
#include <kvgeom/boxes/all_kernels.h>

namespace kvgeom::detail {

constinit const BoxKernels BoxKernels::kAvx2 = kBoxKernels;

}  // namespace kvgeom::detail
