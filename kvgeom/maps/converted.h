// SPDX-License-Identifier: MIT
#pragma once

#include <kvgeom/maps/g4x4.h>
#include <kvgeom/maps/transf.h>

namespace kvgeom::detail {

// The transformation that a matrix converts to, the null transformation where it doesn't.
inline GTransf Converted(const G4x4& a) {
    GTransf t;
    t = a;
    return t;
}

}  // namespace kvgeom::detail
