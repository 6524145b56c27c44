// SPDX-License-Identifier: MIT
#include <kvgeom/batch/kernels_code.h>

constinit const kvgeom::detail::Kernels kvgeom::detail::kAvx512Kernels =
    kvgeom::detail::MakeKernels("avx512");
