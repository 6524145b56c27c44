// SPDX-License-Identifier: MIT
#include <kvgeom/batch/unions.h>
#include <kvgeom/boxes/kernels.h>
#include <kvgeom/kernel/tolerance_state.h>

using namespace kvgeom::detail;

GBox UniteBoxes(const GBox* boxes, unsigned long count) {
    return Chosen<BoxKernels>().unite_boxes(boxes, count, DistanceTolerance());
}
