// SPDX-License-Identifier: MIT
#include <kvgeom/batch/kernels.h>
#include <kvgeom/batch/unions.h>
#include <kvgeom/kernel/tolerance_state.h>

using namespace kvgeom::detail;

GBox UniteBoxes(const GBox* boxes, unsigned long count) {
    return g_kernels->unite_boxes(boxes, count, DistanceTolerance());
}
