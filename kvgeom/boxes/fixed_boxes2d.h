// SPDX-License-Identifier: MIT
#pragma once

#include <kvgeom/boxes/box2d.h>
#include <kvgeom/kernel/infinity.h>

/// The canonical null box of the plane: it holds nothing, and takes no part in unions.
inline constexpr GBox2d kGNullBox2d = {{kGInfinity, kGInfinity}, {-kGInfinity, -kGInfinity}};

/// The box that stands for all of the plane.
inline constexpr GBox2d kGAllSpaceBox2d = {{-kGInfinity, -kGInfinity}, {kGInfinity, kGInfinity}};
