// SPDX-License-Identifier: MIT
#pragma once

#include <kvgeom/export.h>

// The three process-wide tolerances that decisions of closeness are taken against. Each operation
// reads the tolerance it needs at the moment of the call, so a change takes effect at the next
// call. Setting one while other threads compute is no data race, but those threads may decide
// against the old or the new value.
//
// The setters keep relative <= distance <= fit. A value that would break this with respect to the
// current values of the other two is refused, and so is NaN: the setter's message is passed, *err
// becomes 2 and nothing changes. On success *err is 0. err must not be null.

// The const of a returned value is part of these names on Windows.
#if defined(__GNUC__)
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wignored-qualifiers"
#endif

/// The distance tolerance, a length in the caller's unit, 1e-6 by default: two points whose
/// distance does not exceed it are the same point.
KVGEOM_API const double GetDistanceTolerance();

/// The relative tolerance, dimensionless, 1e-10 by default: for components of unit vectors, sines
/// of angles, matrix elements and homogeneous terms.
KVGEOM_API const double GetRelativeTolerance();

/// The fit tolerance, a length, 1e-3 by default: the upper bound of the distance tolerance. No
/// operation compares a geometric quantity with it.
KVGEOM_API const double GetFitTolerance();

/// The alignment setting: always 1. Nothing in the library depends on it.
KVGEOM_API const int GetPosDblAlgn();

#if defined(__GNUC__)
#pragma GCC diagnostic pop
#endif

/// Sets the distance tolerance if value lies between the relative and the fit tolerance, both
/// included. Messages, in the order tested: "SetDistanceTolerance: distance tolerance not smaller
/// than resfit." (also for NaN), "SetDistanceTolerance: distance tolerance not larger than
/// releative tolerance".
KVGEOM_API void SetDistanceTolerance(double value, long* err);

/// Sets the relative tolerance if value does not exceed the distance tolerance. Message:
/// "SetRelativeTolerance: relative tolerance not smaller than distance tolerance".
KVGEOM_API void SetRelativeTolerance(double value, long* err);

/// Sets the fit tolerance if value is not below the distance tolerance. Message: "SetFitTolerance:
/// fit tolerance is smaller than distance tolerance.".
KVGEOM_API void SetFitTolerance(double value, long* err);
