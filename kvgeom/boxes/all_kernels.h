// SPDX-License-Identifier: MIT
#pragma once

// The kernels of this room, for whichever processor the source that includes this is compiled for.

#include <kvgeom/boxes/box_mapping_kernels.h>
#include <kvgeom/boxes/box_test_kernels.h>
#include <kvgeom/boxes/plane_test_kernels.h>
#include <kvgeom/boxes/union_kernels.h>

namespace kvgeom::detail {
namespace {

constexpr BoxKernels kBoxKernels = {MapBoxesByMatrix, MapBoxesByTransf,        MapBoxesByAffine4x4,
                                    BoxAndBoxes,      BoxHoldsBoxes,           BoxHoldsPositions,
                                    PlanesAndBoxes,   PlanesHoldPositions,     PlacePositions,
                                    BoxOfPositions,   UniteBoxesThatAreNotNull};

}  // namespace
}  // namespace kvgeom::detail
