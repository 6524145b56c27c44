// SPDX-License-Identifier: MIT
#pragma once

#include <kvgeom/maps/matrix2d.h>
#include <kvgeom/maps/transf2d.h>

namespace kvgeom::detail {

constexpr GMatrix2d kZeroMatrix2d = {};
constexpr GMatrix2d kIdentityMatrix2d = {{{1, 0}, {0, 1}}};

constexpr GTransf2d kNullTransf2d = {};
constexpr GTransf2d kIdentityTransf2d = {kIdentityMatrix2d, {0, 0}, 1, 0, 0, 0};

}  // namespace kvgeom::detail
