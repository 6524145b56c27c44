// SPDX-License-Identifier: MIT
#pragma once

// The kernels of this room, for whichever processor the source that includes this is compiled for.

#include <kvgeom/maps/composition_kernels.h>
#include <kvgeom/maps/inversion_kernels.h>
#include <kvgeom/maps/mapping_kernels.h>

namespace kvgeom::detail {
namespace {

constexpr MapKernels kMapKernels = {
    MapPositionsByMatrix,   MapPositionsByTransf, MapPositionsByAffine4x4,
    MapPositionsBy4x4,      MapVectorsByTransf,   MapVectorsBy4x4,
    MapUnitVectorsByMatrix, MapUnitVectorsBy4x4,  ComposeEachTransf,
    ComposeEach4x4,         InvertOne4x4,         InvertEach4x4};

}  // namespace
}  // namespace kvgeom::detail
