// SPDX-License-Identifier: MIT
#pragma once

#include <kvgeom/export.h>

// No operation of the library throws, aborts or exits. One that rejects its arguments passes a
// message here, sets its error code if it has one (0 success, 2 a precondition failed, others where
// they are stated) and returns a defined fallback result. Those that pass no message say so.
//
// Pointers to results and error codes (err) must not be null, where nothing else is said. An array
// may be null when its count is 0: nothing of it is read.

/// Receives the messages of rejected arguments: a text that lives as long as the program. It may be
/// called from any thread and must return normally.
typedef void (*GAssertHook)(const char* message);

/// Installs the hook that receives every message from now on, and returns the one installed before.
/// Null, as at load time, means that messages go nowhere.
KVGEOM_API GAssertHook SetAssertHook(GAssertHook hook);

/// Passes one message to the installed hook; does nothing when there is none.
KVGEOM_API void Gassert_debug(const char* message);
