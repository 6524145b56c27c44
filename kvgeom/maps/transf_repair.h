// SPDX-License-Identifier: MIT
#pragma once

#include <kvgeom/export.h>
#include <kvgeom/maps/transf.h>

/// Copies in to out, with the matrix made orthonormal again after it has drifted through many
/// compositions. *healed is 1 when that succeeded (MakeOrthogonalIt); else it is 0 and out is in,
/// unchanged. *err is always 0; err must not be null. out may be in
/// itself.
KVGEOM_API void GTransfHealer(const GTransf& in, GTransf& out, int* healed, long* err);
