// SPDX-License-Identifier: MIT
#pragma once

#include <kvgeom/volumes/bore_line.h>

namespace kvgeom::detail {

// Made anew at each use: its radius is the distance tolerance of the moment.
inline GBoreLine NullBoreLine() {
    return BuildBoreLine({0, 0, 0}, {1, 0, 0});
}

}  // namespace kvgeom::detail
