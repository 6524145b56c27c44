// SPDX-License-Identifier: MIT
#include <kvgeom/batch/kernels_code.h>

constinit const kvgeom::detail::Kernels kvgeom::detail::kAvx2Kernels =
    kvgeom::detail::MakeKernels("avx2");
