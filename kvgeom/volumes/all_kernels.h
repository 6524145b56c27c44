// SPDX-License-Identifier: MIT
#pragma once

// The kernels of this room, for whichever processor the source that includes this is compiled for.

#include <kvgeom/volumes/bore_line_kernels.h>

namespace kvgeom::detail {
namespace {

constexpr BoreLineKernels kBoreLineKernels = {BoreLineAndBoxes, BoreLineHoldsPositions};

}  // namespace
}  // namespace kvgeom::detail
