// SPDX-License-Identifier: MIT
#pragma once

#include <kvgeom/maps/g4x4.h>
#include <kvgeom/maps/matrix.h>
#include <kvgeom/maps/transf.h>

namespace kvgeom::detail {

constexpr GMatrix kZeroMatrix = {};
constexpr GMatrix kIdentityMatrix = {{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}};

// The result of a failed conversion: it maps every point to the origin.
constexpr GTransf kNullTransf = {};
constexpr GTransf kIdentityTransf = {kIdentityMatrix, {0, 0, 0}, 1, 0, 0, 0};

constexpr G4x4 kIdentity4x4 = {{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}};

}  // namespace kvgeom::detail
