// SPDX-License-Identifier: MIT
#pragma once

#include <kvgeom/boxes/box.h>
#include <kvgeom/kernel/infinity.h>

/// The canonical null box: it holds nothing, and takes no part in unions.
inline constexpr GBox kGNullBox = {{kGInfinity, kGInfinity, kGInfinity},
                                   {-kGInfinity, -kGInfinity, -kGInfinity}};

/// The box that stands for all of space.
inline constexpr GBox kGAllSpaceBox = {{-kGInfinity, -kGInfinity, -kGInfinity},
                                       {kGInfinity, kGInfinity, kGInfinity}};
