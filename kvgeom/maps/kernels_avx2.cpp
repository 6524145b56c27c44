// SPDX-License-Identifier: MIT
#include <kvgeom/maps/all_kernels.h>

namespace kvgeom::detail {

constinit const MapKernels MapKernels::kAvx2 = kMapKernels;

}  // namespace kvgeom::detail
