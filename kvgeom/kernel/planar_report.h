// SPDX-License-Identifier: MIT
#pragma once

#include <kvgeom/kernel/assertion_hook.h>

namespace kvgeom::detail {

// Tells what a validity check of a planar record finds, in builds that are made to find faults
// (KVGEOM_DIAGNOSTICS). In all others these checks are silent and cost nothing.
inline void ReportPlanar([[maybe_unused]] const char* message) {
#if defined(KVGEOM_DIAGNOSTICS)
    Gassert_debug(message);
#endif
}

}  // namespace kvgeom::detail
