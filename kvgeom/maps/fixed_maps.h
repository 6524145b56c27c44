// SPDX-License-Identifier: MIT
#pragma once

#include <kvgeom/maps/g4x4.h>
#include <kvgeom/maps/matrix.h>
#include <kvgeom/maps/transf.h>

/// The maps that change nothing.
inline constexpr GMatrix kGIdentityMatrix = {{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}};
inline constexpr GTransf kGIdentityTransf = {kGIdentityMatrix, {0, 0, 0}, 1, 0, 0, 0};
inline constexpr G4x4 kGIdentity4x4 = {{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}};

/// The null maps, which carry every point to the origin. A conversion that fails gives the null
/// transformation.
inline constexpr GMatrix kGZeroMatrix = {};
inline constexpr GTransf kGNullTransf = {};
