// SPDX-License-Identifier: MIT
#include <kvgeom/maps/all_kernels.h>

namespace kvgeom::detail {

constinit const MapKernels MapKernels::kBaseline = kMapKernels;

}  // namespace kvgeom::detail
