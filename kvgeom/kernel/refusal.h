// SPDX-License-Identifier: MIT
#pragma once

#include <kvgeom/kernel/assertion_hook.h>
#include <kvgeom/kernel/error_codes.h>

namespace kvgeom::detail {

// What an operation does with arguments that it rejects, before it returns its fallback.
inline void Refuse(const char* message, long* err) {
    Gassert_debug(message);
    *err = kPreconditionFailed;
}

}  // namespace kvgeom::detail
