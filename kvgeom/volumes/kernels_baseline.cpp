// SPDX-License-Identifier: MIT
#include <kvgeom/volumes/all_kernels.h>

namespace kvgeom::detail {

constinit const BoreLineKernels BoreLineKernels::kBaseline = kBoreLineKernels;

}  // namespace kvgeom::detail
