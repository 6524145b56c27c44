// SPDX-License-Identifier: MIT
#include <kvgeom/batch/kernels_code.h>

constinit const kvgeom::detail::Kernels kvgeom::detail::kBaselineKernels =
    kvgeom::detail::MakeKernels("baseline");
