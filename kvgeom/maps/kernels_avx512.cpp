// SPDX-License-Identifier: MIT
#include <kvgeom/maps/all_kernels.h>

namespace kvgeom::detail {

constinit const MapKernels MapKernels::kAvx512 = kMapKernels;

}  // namespace kvgeom::detail
