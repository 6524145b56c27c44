// SPDX-License-Identifier: MIT
#pragma once

#include <kvgeom/export.h>

// Switches that are set per machine, for the callers to consult; no operation of the library reads
// them. They are values under the key HKEY_LOCAL_MACHINE\SOFTWARE\Kestrine\Veltor\Core\Debug of the
// registry: the platform's own on Windows, elsewhere a file in the registry editor's text format,
// in UTF-8, which the environment variable KVGEOM_REGISTRY names (without it, kvgeom/registry.reg
// in the system's configuration folder).
//
// Each switch is read at its first use, once in a process; a key or value that is missing,
// unreadable or longer than 4 bytes gives the default. Only the first byte of the data counts.

/// "MathValidateLevel": the first byte as a signed number; 0 by default.
KVGEOM_API int CheckRegistryForMathValidateLevel();

/// Sets the level for the rest of the process; the registry is not consulted any more.
KVGEOM_API void SetMathValidateLevel(int level);

/// "SkipCheckGeom3dBoundaries": 0 when the first byte is 1, else 1, also by default.
KVGEOM_API int CheckRegistryForGeom3dBoundary();

/// "ValidateBndSelfInterXO": 1 when the first byte is 1, else 0, also by default.
KVGEOM_API int CheckRegistryBoundarySelfXO();

/// "ValidateAllGTSrfBnd": 1 when the first byte is 1, else 0, also by default.
KVGEOM_API int CheckRegistryValidateAllGTSrfBnd();

/// "ValidateMathEnabled": 1 when the first byte is 1, else 0, also by default.
KVGEOM_API int CheckRegistryValidateCoreMath();

/// Lets the next CheckRegistryValidateCoreMath() ask its reader again. The reader keeps what it
/// once read, so the answer stays the same.
KVGEOM_API void ResetRegistryValidationMathFlag();

/// The value of that name as a 32-bit integer, created with the given default where it is missing
/// or longer than 4 bytes. The first call in a process decides: its result is given for every name
/// from then on. 0 when the key can't be opened for writing, even if the value exists.
KVGEOM_API int CheckDebugRegEntryCoreMath(char* name, int default_value);
