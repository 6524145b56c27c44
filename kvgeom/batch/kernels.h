// SPDX-License-Identifier: MIT
#pragma once

// The vector code behind the batch calls, compiled once for each kind of processor. What a kernel
// leaves to the single operation it calls itself, element by element and in order.

#include <kvgeom/boxes/box.h>
#include <kvgeom/boxes/clip_volume.h>
#include <kvgeom/maps/g4x4.h>
#include <kvgeom/maps/matrix.h>
#include <kvgeom/maps/transf.h>
#include <kvgeom/points/position.h>
#include <kvgeom/points/unit_vector.h>
#include <kvgeom/points/vector.h>
#include <kvgeom/volumes/bore_line.h>

namespace kvgeom::detail {

// A plane as the tests against boxes and points use it: a point p lies outside when
// normal % (p + offset) < limit.
struct TestedPlane {
    GVector normal;
    GVector offset;
    double normal_offset;  // normal % offset
    // Of a box, whether the high side is the one that is looked at.
    bool looks_high[3];
};

// How many answers are 1. Not inlined into kernels: Clang 14 can't compile it for AVX-512.
[[gnu::noinline]] unsigned long CountOnes(const unsigned char* answers, unsigned long count);

// The composition, the rotation flag found from the angles.
GTransf ComposedByAngles(const GTransf& a, const GTransf& b);

struct Kernels {
    const char* name;

    void (*map_positions_by_matrix)(const GMatrix&, const GPosition*, unsigned long, GPosition*);
    void (*map_positions_by_transf)(const GTransf&, const GPosition*, unsigned long, GPosition*);
    void (*map_positions_by_g4x4)(const G4x4&, const GPosition*, unsigned long, GPosition*);
    void (*map_vectors_by_transf)(const GTransf&, const GVector*, unsigned long, GVector*);
    void (*map_vectors_by_g4x4)(const G4x4&, const GVector*, unsigned long, GVector*);
    void (*map_unit_vectors_by_matrix)(const GMatrix&, const GUnitVector*, unsigned long,
                                       GUnitVector*);
    void (*map_unit_vectors_by_g4x4)(const G4x4&, const GUnitVector*, unsigned long, GUnitVector*);
    void (*map_boxes_by_matrix)(const GMatrix&, const GBox*, unsigned long, GBox*);
    void (*map_boxes_by_transf)(const GTransf&, const GBox*, unsigned long, GBox*);
    // By an affine map.
    void (*map_boxes_by_g4x4)(const G4x4&, const GBox*, unsigned long, GBox*);

    unsigned long (*bore_line_and_boxes)(const GBoreLine&, double enlargement, const GBox*,
                                         unsigned long, unsigned char*);
    // 1 unless the side that is looked at lies outside of some plane.
    unsigned long (*planes_and_boxes)(const TestedPlane*, unsigned long planes, double limit,
                                      const GBox*, unsigned long, unsigned char*);
    unsigned long (*box_and_boxes)(const GBox&, double tol, const GBox*, unsigned long,
                                   unsigned char*);
    // By a box that is already enlarged by the tolerance.
    unsigned long (*box_holds_boxes)(const GBox&, const GBox*, unsigned long, unsigned char*);
    unsigned long (*box_holds_positions)(const GBox&, const GPosition*, unsigned long,
                                         unsigned char*);
    unsigned long (*bore_line_holds_positions)(const GBoreLine&, const GPosition*, unsigned long,
                                               unsigned char*);
    unsigned long (*planes_hold_positions)(const TestedPlane*, unsigned long planes,
                                           const GPosition*, unsigned long, unsigned char*);
    // 0 outside of a plane by more than tol, else 2 within tol of one, else 1.
    unsigned long (*place_positions)(const TestedPlane*, unsigned long planes, double tol,
                                     const GPosition*, unsigned long, unsigned char*);

    void (*compose_transfs)(const GTransf*, const GTransf*, double clear_rotation, unsigned long,
                            GTransf*);
    void (*compose_4x4s)(const G4x4*, const G4x4*, unsigned long, G4x4*);
    // False when it is singular; then the result is undefined.
    bool (*invert_4x4)(const G4x4&, G4x4& result);
    void (*invert_4x4s)(const G4x4*, unsigned long, G4x4*);

    // The box around points, of which there is at least one.
    GBox (*box_of_positions)(const GPosition*, unsigned long);
    GBox (*unite_boxes)(const GBox*, unsigned long, double tol);
};

// For any processor that the library runs on, for those with AVX2, and for those with AVX-512
// (F, DQ, VL).
extern const Kernels kBaselineKernels;
extern const Kernels kAvx2Kernels;
extern const Kernels kAvx512Kernels;

// Those for this processor, or those that the environment variable KVGEOM_VECTORS names (baseline,
// avx2, avx512) if the processor can run them. Chosen when the library is loaded; before that, the
// baseline.
extern const Kernels* g_kernels;

// Of the processor's last level, in bytes.
extern double g_cache_size;

}  // namespace kvgeom::detail
