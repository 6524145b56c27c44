// SPDX-License-Identifier: MIT
#pragma once

#include <kvgeom/boxes/box.h>
#include <kvgeom/kernel/constants.h>

namespace kvgeom::detail {

// Holds nothing, and is neutral in unions.
constexpr GBox kNullBox = {{kUnbounded, kUnbounded, kUnbounded},
                           {-kUnbounded, -kUnbounded, -kUnbounded}};
constexpr GBox kAllSpaceBox = {{-kUnbounded, -kUnbounded, -kUnbounded},
                               {kUnbounded, kUnbounded, kUnbounded}};

}  // namespace kvgeom::detail
