// SPDX-License-Identifier: MIT
#pragma once

#include <kvgeom/maps/matrix2d.h>
#include <kvgeom/maps/transf2d.h>

/// The maps that change nothing.
inline constexpr GMatrix2d kGIdentityMatrix2d = {{{1, 0}, {0, 1}}};
inline constexpr GTransf2d kGIdentityTransf2d = {kGIdentityMatrix2d, {0, 0}, 1, 0, 0, 0};

/// The null maps, which carry every point to the origin.
inline constexpr GMatrix2d kGZeroMatrix2d = {};
inline constexpr GTransf2d kGNullTransf2d = {};
