// SPDX-License-Identifier: MIT
#pragma once

// The vector code behind the calls that map, test and unite many boxes, and that test many points
// against boxes and planes, compiled once for each kind of processor. What it can't
// decide or compute, it hands to the single operation, element by element and in order.

#include <kvgeom/boxes/box.h>
#include <kvgeom/maps/g4x4.h>
#include <kvgeom/maps/matrix.h>
#include <kvgeom/maps/transf.h>
#include <kvgeom/vectors/choice.h>

namespace kvgeom::detail {

// A plane as the tests against boxes and points use it: a point p lies outside when
// normal % (p + offset) < limit.
struct TestedPlane {
    GVector normal;
    GVector offset;
    double normal_offset;  // normal % offset
    // Which corner of a box is tested: bit 0 is set when it lies on the high side in x, bit 1 in y,
    // bit 2 in z.
    unsigned corner;
};

struct BoxKernels {
    void (*map_boxes_by_matrix)(const GMatrix&, const GBox*, unsigned long, GBox*);
    void (*map_boxes_by_transf)(const GTransf&, const GBox*, unsigned long, GBox*);
    void (*map_boxes_by_affine_4x4)(const G4x4&, const GBox*, unsigned long, GBox*);

    unsigned long (*box_and_boxes)(const GBox&, double tol, const GBox*, unsigned long,
                                   unsigned char*);
    // The first box is already enlarged by the tolerance.
    unsigned long (*box_holds_boxes)(const GBox&, const GBox*, unsigned long, unsigned char*);
    unsigned long (*box_holds_positions)(const GBox&, const GPosition*, unsigned long,
                                         unsigned char*);
    // 1 unless the tested corner lies outside of some plane. The planes are sorted by corner.
    unsigned long (*planes_and_boxes)(const TestedPlane*, unsigned long planes, double limit,
                                      const GBox*, unsigned long, unsigned char*);
    unsigned long (*planes_hold_positions)(const TestedPlane*, unsigned long planes,
                                           const GPosition*, unsigned long, unsigned char*);
    // 0 outside of a plane by more than tol, else 2 within tol of one, else 1.
    unsigned long (*place_positions)(const TestedPlane*, unsigned long planes, double tol,
                                     const GPosition*, unsigned long, unsigned char*);

    // The box around points, of which there is at least a group.
    GBox (*box_of_positions)(const GPosition*, unsigned long);
    GBox (*unite_boxes)(const GBox*, unsigned long, double tol);

    static const BoxKernels kBaseline;
    static const BoxKernels kAvx2;
    static const BoxKernels kAvx512;
};

}  // namespace kvgeom::detail
