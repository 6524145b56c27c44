// SPDX-License-Identifier: MIT
#pragma once

// The vector code behind the calls that map, compose and invert many records, compiled once for
// each kind of processor. What it can't compute, it hands to the single operation, element by
// element and in order.

#include <kvgeom/maps/g4x4.h>
#include <kvgeom/maps/matrix.h>
#include <kvgeom/maps/transf.h>
#include <kvgeom/points/position.h>
#include <kvgeom/points/unit_vector.h>
#include <kvgeom/points/vector.h>
#include <kvgeom/vectors/choice.h>

namespace kvgeom::detail {

struct MapKernels {
    void (*map_positions_by_matrix)(const GMatrix&, const GPosition*, unsigned long, GPosition*);
    void (*map_positions_by_transf)(const GTransf&, const GPosition*, unsigned long, GPosition*);
    // By an affine matrix, and by any.
    void (*map_positions_by_affine_4x4)(const G4x4&, const GPosition*, unsigned long, GPosition*);
    void (*map_positions_by_4x4)(const G4x4&, const GPosition*, unsigned long, GPosition*);
    void (*map_vectors_by_transf)(const GTransf&, const GVector*, unsigned long, GVector*);
    void (*map_vectors_by_4x4)(const G4x4&, const GVector*, unsigned long, GVector*);
    void (*map_unit_vectors_by_matrix)(const GMatrix&, const GUnitVector*, unsigned long,
                                       GUnitVector*);
    void (*map_unit_vectors_by_4x4)(const G4x4&, const GUnitVector*, unsigned long, GUnitVector*);

    // The angle factor is that of rotation_bound.h.
    void (*compose_transfs)(const GTransf*, const GTransf*, double angle_factor, unsigned long,
                            GTransf*);
    void (*compose_4x4s)(const G4x4*, const G4x4*, unsigned long, G4x4*);
    // A single matrix. False when it is singular; the result is then undefined.
    bool (*invert_4x4)(const G4x4&, G4x4& result);
    void (*invert_4x4s)(const G4x4*, unsigned long, G4x4*);

    static const MapKernels kBaseline;
    static const MapKernels kAvx2;
    static const MapKernels kAvx512;
};

}  // namespace kvgeom::detail
