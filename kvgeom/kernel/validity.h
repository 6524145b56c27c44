// SPDX-License-Identifier: MIT
#pragma once

#include <kvgeom/export.h>

typedef struct tagGUnitVector GUnitVector;

// The validity checks pass a message for each violation they find. They never change the record.

/// Checks that a unit vector holds proper coordinates (finite, and not below 2^-665 in magnitude
/// unless zero) and has unit length. Messages: "GUnitVector has an invalid coordinate" (then no
/// further test), "GUnitVector: vector is not a unit vector", or "GUnitVector: using a NULL unit
/// vector" for a length below 50 * DBL_EPSILON.
KVGEOM_API void Gassert_valid(const GUnitVector& u);
