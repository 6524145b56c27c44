// SPDX-License-Identifier: MIT
#pragma once

// Many transformations composed or inverted in one call, bit for bit and message for message as by
// the single operations. The results may be written over the operands. For a count of 0 the
// arrays may be null.

#include <kvgeom/export.h>
#include <kvgeom/maps/g4x4.h>
#include <kvgeom/maps/transf.h>

/// results[i] = first[i] * second[i]: first[i] applies first.
KVGEOM_API void ComposeTransfs(const GTransf* first, const GTransf* second, unsigned long count,
                               GTransf* results);
/// results[i] = transfs[i].Inverse().
KVGEOM_API void InvertTransfs(const GTransf* transfs, unsigned long count, GTransf* results);
/// results[i] = left[i] * right[i]: right[i] applies first.
KVGEOM_API void Compose4x4s(const G4x4* left, const G4x4* right, unsigned long count,
                            G4x4* results);
/// results[i] = matrices[i].Inverse().
KVGEOM_API void Invert4x4s(const G4x4* matrices, unsigned long count, G4x4* results);
