// SPDX-License-Identifier: MIT
#include <kvgeom/volumes/all_kernels.h>

namespace kvgeom::detail {

constinit const BoreLineKernels BoreLineKernels::kAvx2 = kBoreLineKernels;

}  // namespace kvgeom::detail
