// SPDX-License-Identifier: MIT
#pragma once

#include <kvgeom/kernel/assertion_hook.h>

namespace kvgeom::detail {

// What the validity checks of planar records find. Silent but in a build that is meant to find
// faults: the callers' code was written against checks that are silent.
inline void ReportPlanar([[maybe_unused]] const char* message) {
#if defined(KVGEOM_DIAGNOSTICS)
    Gassert_debug(message);
#endif
}

}  // namespace kvgeom::detail
