// SPDX-License-Identifier: MIT
#pragma once

#include <kvgeom/maps/transf.h>

namespace kvgeom::detail {

// The composition: a first, then b. Where both rotate, the angles of the composed matrix tell
// whether they cancel each other.
GTransf ComposedByAngles(const GTransf& a, const GTransf& b);

}  // namespace kvgeom::detail
