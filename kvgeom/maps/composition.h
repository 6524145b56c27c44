// SPDX-License-Identifier: MIT
#pragma once

#include <kvgeom/maps/transf.h>

namespace kvgeom::detail {

// The composition a, then b. Where both rotate, the angles of the product tell whether they cancel.
GTransf ComposedByAngles(const GTransf& a, const GTransf& b);

}  // namespace kvgeom::detail
