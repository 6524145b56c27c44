// SPDX-License-Identifier: MIT
#pragma once

// All kernels, for whichever processor the source that includes this is compiled for.

#include <kvgeom/batch/box_tests_code.h>
#include <kvgeom/batch/composition_code.h>
#include <kvgeom/batch/inversion_code.h>
#include <kvgeom/batch/kernels.h>
#include <kvgeom/batch/mapping_code.h>
#include <kvgeom/batch/plane_tests_code.h>
#include <kvgeom/batch/point_tests_code.h>
#include <kvgeom/batch/unions_code.h>

namespace kvgeom::detail {
namespace {

constexpr Kernels MakeKernels(const char* name) {
    return {name,
            MapPositionsByMatrix,
            MapPositionsByTransf,
            MapPositionsByG4x4,
            MapVectorsByTransf,
            MapVectorsByG4x4,
            MapUnitVectorsByMatrix,
            MapUnitVectorsByG4x4,
            MapBoxesByMatrix,
            MapBoxesByTransf,
            MapBoxesByG4x4,
            BoreLineAndBoxes,
            PlanesAndBoxes,
            BoxAndBoxes,
            BoxHoldsBoxes,
            BoxHoldsPositions,
            BoreLineHoldsPositions,
            PlanesHoldPositions,
            PlacePositions,
            ComposeEachTransf,
            ComposeEach4x4,
            InvertOne4x4,
            InvertEach4x4,
            BoxOfPositions,
            UniteBoxesThatAreNotNull};
}

}  // namespace
}  // namespace kvgeom::detail
