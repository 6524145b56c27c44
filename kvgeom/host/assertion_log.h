// SPDX-License-Identifier: MIT
#pragma once

#include <kvgeom/export.h>

#include <cstdio>

// The assertion log: lines of "#~# " and a message, in the file math_assert_release.log of the
// process's current folder. The level that decides whether it is written is the registry value
// "ValidateReleaseMath" (debug_switches.h), which is created with 0 where it is missing; if
// CheckDebugRegEntryCoreMath was called before, it is what that returned, of whichever value.

/// Writes one line: to the stream if there is one, whatever the level; else to the log when the
/// level is 2 or more, or to the standard error stream if the log can't be opened. The stream gets
/// the line in one piece, and the log in one write, so that the lines of several processes never
/// mix there. The number is not used.
KVGEOM_API void invld(std::FILE* stream, char* message, int number);

/// Returns the level. When it is min_level or more, the log is opened for appending and handed over
/// in *slot, for the caller to write through invld and to close; a slot that already holds a stream
/// keeps it, and the log is then left created but closed. When the log can't be opened, *slot stays
/// as it was, too: look at the slot, not only at the level.
KVGEOM_API int MathDebugOutputFilePtr(std::FILE** slot, int min_level);

/// A hook for SetAssertHook that writes every message to the log: invld(nullptr, message, 0).
KVGEOM_API void LogAssertMessage(const char* message);
