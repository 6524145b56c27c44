// SPDX-License-Identifier: MIT
#pragma once

#include <kvgeom/boxes/box2d.h>
#include <kvgeom/kernel/constants.h>

namespace kvgeom::detail {

// Holds nothing, and is neutral in unions.
constexpr GBox2d kNullBox2d = {{kUnbounded, kUnbounded}, {-kUnbounded, -kUnbounded}};
constexpr GBox2d kAllSpaceBox2d = {{-kUnbounded, -kUnbounded}, {kUnbounded, kUnbounded}};

}  // namespace kvgeom::detail
