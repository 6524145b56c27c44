// SPDX-License-Identifier: MIT
#pragma once

#include <kvgeom/export.h>

typedef struct tagGVector GVector;
typedef struct tagGUnitVector GUnitVector;
typedef struct tagGPosition GPosition;
typedef struct tagGVector2d GVector2d;
typedef struct tagGUnitVector2d GUnitVector2d;
typedef struct tagGPosition2d GPosition2d;

// The validity checks pass a message for each violation they find (assertion_hook.h). They never
// change the record. A coordinate is invalid when it is NaN, infinite, or not zero and below 2^-665
// in magnitude. Where there is an int*, it becomes 1 when no violation was found, else 0.

/// "GPosition has an invalid coordinate".
KVGEOM_API void Gassert_valid(const GPosition& p);

/// "GVector has an invalid coordinate".
KVGEOM_API void Gassert_valid(const GVector& v);
KVGEOM_API void Gassert_valid(const GVector& v, int* isValid);

/// "GUnitVector has an invalid coordinate" (then no further test), "GUnitVector: vector is not a
/// unit vector" for a squared length off 1 by more than 50 * DBL_EPSILON, or "GUnitVector: using a
/// NULL unit vector" for a length below 50 * DBL_EPSILON.
KVGEOM_API void Gassert_valid(const GUnitVector& u);

// The checks of planar records pass no message, unless the library was built with
// KVGEOM_DIAGNOSTICS: then the messages are those of the twins in space, under the planar names.

/// The check of the coordinates.
KVGEOM_API void Gassert_valid(const GPosition2d& p);
KVGEOM_API void Gassert_valid(const GVector2d& v);

/// As for GUnitVector, but against the distance tolerance.
KVGEOM_API void Gassert_valid(const GUnitVector2d& u);
