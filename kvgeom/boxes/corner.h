// SPDX-License-Identifier: MIT
#pragma once

#include <kvgeom/kernel/assertion_hook.h>

namespace kvgeom::detail {

// m_low for 0, m_high for 1; another index passes the message and gives m_high. Serves both the
// readable and the writable operator[].
template <class Box>
auto& Corner(Box& box, unsigned int i, const char* message) {
    if (i == 0) {
        return box.m_low;
    }
    if (i != 1) {
        Gassert_debug(message);
    }
    return box.m_high;
}

}  // namespace kvgeom::detail
