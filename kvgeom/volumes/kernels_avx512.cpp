// SPDX-License-Identifier: MIT
#include <kvgeom/volumes/all_kernels.h>

namespace kvgeom::detail {

constinit const BoreLineKernels BoreLineKernels::kAvx512 = kBoreLineKernels;

}  // namespace kvgeom::detail
