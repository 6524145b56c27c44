// SPDX-License-Identifier: MIT
#pragma once

// Every fixed number that a decision of the library rests on. What depends on the caller's model
// goes by the process-wide tolerances instead (tolerances.h).

#include <cfloat>

namespace kvgeom::detail {

// The smallest divisor, scaling or homogeneous weight that is used as such (2.22e-16).
constexpr double kSmallestDivisor = DBL_EPSILON;

// Length up to which a vector has no direction, and half-width of the unit band (1.11e-14).
constexpr double kUnitTolerance = 50 * DBL_EPSILON;
// The same against a squared length (1.23e-28, exact).
constexpr double kUnitToleranceSquared = kUnitTolerance * kUnitTolerance;
// The unit band: components whose squared length lies in it are kept bit for bit.
constexpr double kUnitBandLow = 1 - kUnitTolerance;
constexpr double kUnitBandHigh = 1 + kUnitTolerance;
// The band of the planar build with a tolerance: one rounding of the squared length to either side.
constexpr double kNarrowUnitBandLow = 1 - DBL_EPSILON;
constexpr double kNarrowUnitBandHigh = 1 + DBL_EPSILON;

// Smallest magnitude, 2^-665 (6.53e-201), of a coordinate other than zero: what is smaller is the
// debris of an underflow, not a place.
constexpr double kSmallestCoordinate = 0x1p-665;

// Spreads the distance tolerance over three axes, so that a point counts as inside a box only if
// the box, moved by at most that tolerance, holds it.
constexpr double kSqrt3 = 1.7320508075688772;
// The same over the two axes of the plane.
constexpr double kSqrt2 = 1.4142135623730951;

// How near |sin b| must be to 1 for the rotations about x and z to be indistinguishable.
constexpr double kGimbalTolerance = 1e-12;
constexpr double kHalfPi = 1.5707963267948966;
constexpr double kTwoPi = 6.283185307179586;

// Element-wise deviation up to which a matrix needs no orthogonalisation step, or has stopped
// changing under it; independent of the tolerances.
constexpr double kOrthogonalityThreshold = 1e-14;
// Orthogonalisation converges quadratically: what six steps don't bring home is far from a
// rotation.
constexpr int kMaxOrthogonalisationSteps = 6;

// Pivots below this magnitude make a homogeneous matrix singular; independent of the tolerances.
constexpr double kSmallestPivot = 1e-20;

// The squared length of a near-unit row deviates twice as much as its length does.
constexpr double kSquaredLengthFactor = 2;
// How many relative tolerances the column lengths of a similarity may differ by.
constexpr double kUniformScalingFactor = 10;

}  // namespace kvgeom::detail
