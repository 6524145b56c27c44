// SPDX-License-Identifier: MIT
#pragma once

#include <kvgeom/export.h>

// Process-wide settings that callers share through the library, which reads none of them.

// The const of a returned value is part of these names on Windows.
#if defined(__GNUC__)
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wignored-qualifiers"
#endif

/// The validate switch; 1 at load time.
KVGEOM_API const int GetValidate();

/// The valid level; 0 at load time. While it isn't 0, it locks the validate switch.
KVGEOM_API const int GetValidLevel();

#if defined(__GNUC__)
#pragma GCC diagnostic pop
#endif

/// Sets the validate switch; without effect while the valid level isn't 0.
KVGEOM_API void SetValidate(int value);

/// Sets the valid level.
KVGEOM_API void SetValidLevel(int level);

// Numbered flags, all 0 at load time. 29 of the identifiers have a flag of their own: 3, 4, 12, 14,
// 15, 16, 23, 24, 25, 27, 29 to 33, 40, 50, 103, 104, 105, 112, 115, 116, 125, 127, 140, 145, 150
// and 151. All others share one. What they mean is the callers' affair.

/// The flag, 0 or 1.
KVGEOM_API int CheckValidationFlag(unsigned char id);
/// Sets the flag to 1.
KVGEOM_API void SetValidationFlag(unsigned char id);
/// Sets the flag to 0.
KVGEOM_API void ResetValidationFlag(unsigned char id);
/// Sets all flags to 0.
KVGEOM_API void InitAllValidationFlags();
