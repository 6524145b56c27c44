// SPDX-License-Identifier: MIT
#include <kvgeom/batch/composition.h>
#include <kvgeom/kernel/tolerance_state.h>
#include <kvgeom/maps/kernels.h>
#include <kvgeom/maps/rotation_bound.h>
#include <kvgeom/maps/similarity.h>

using namespace kvgeom::detail;

void ComposeTransfs(const GTransf* first, const GTransf* second, unsigned long count,
                    GTransf* results) {
    Chosen<MapKernels>().compose_transfs(first, second, SureRotationFactor(RelativeTolerance()),
                                         count, results);
}

void InvertTransfs(const GTransf* transfs, unsigned long count, GTransf* results) {
    for (unsigned long i = 0; i < count; ++i) {
        results[i] = InverseOf(transfs[i]);
    }
}

void Compose4x4s(const G4x4* left, const G4x4* right, unsigned long count, G4x4* results) {
    Chosen<MapKernels>().compose_4x4s(left, right, count, results);
}

void Invert4x4s(const G4x4* matrices, unsigned long count, G4x4* results) {
    Chosen<MapKernels>().invert_4x4s(matrices, count, results);
}
