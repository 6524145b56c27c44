// SPDX-License-Identifier: MIT
#pragma once

#include <kvgeom/kernel/assertion_hook.h>

namespace kvgeom::detail {

// The component of a record with the members m_x, m_y, m_z; an index beyond 2 passes the message
// and gives the last. Serves both the readable and the writable operator[].
template <class Triple>
auto& Component(Triple& v, unsigned int i, const char* message) {
    switch (i) {
        case 0:
            return v.m_x;
        case 1:
            return v.m_y;
        case 2:
            return v.m_z;
        default:
            Gassert_debug(message);
            return v.m_z;
    }
}

// The same for a planar record, with the members m_x and m_y.
template <class Pair>
auto& PlanarComponent(Pair& v, unsigned int i, const char* message) {
    switch (i) {
        case 0:
            return v.m_x;
        case 1:
            return v.m_y;
        default:
            Gassert_debug(message);
            return v.m_y;
    }
}

}  // namespace kvgeom::detail
