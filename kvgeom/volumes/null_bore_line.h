// SPDX-License-Identifier: MIT
#pragma once

#include <kvgeom/volumes/bore_line.h>

namespace kvgeom::detail {

// Not a constant: its radius is the distance tolerance at the time of the call.
inline GBoreLine NullBoreLine() {
    return BuildBoreLine({0, 0, 0}, {1, 0, 0});
}

}  // namespace kvgeom::detail
