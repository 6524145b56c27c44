// SPDX-License-Identifier: MIT
#pragma once

// The vector code behind the calls that test many boxes or points against a bore line, compiled
// once for each kind of processor. What it can't decide, it hands to the single operation, element
// by element and in order.

#include <kvgeom/boxes/box.h>
#include <kvgeom/vectors/choice.h>
#include <kvgeom/volumes/bore_line.h>

namespace kvgeom::detail {

struct BoreLineKernels {
    unsigned long (*bore_line_and_boxes)(const GBoreLine&, double enlargement, const GBox*,
                                         unsigned long, unsigned char*);
    unsigned long (*bore_line_holds_positions)(const GBoreLine&, const GPosition*, unsigned long,
                                               unsigned char*);

    static const BoreLineKernels kBaseline;
    static const BoreLineKernels kAvx2;
    static const BoreLineKernels kAvx512;
};

}  // namespace kvgeom::detail
