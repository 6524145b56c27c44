// SPDX-License-Identifier: MIT
#pragma once

// Whether a matrix has a rotation angle beyond a tolerance, told without finding the angles where
// that is clear, which is nearly always.
//
// The angles are atan2(y, x), each |atan2(y, x)| >= atan(|y| / |x|), with |y| and |x|, in either of
// the two solutions,
//     about z: |m01| and |m00|,
//     about y: |m02| and sqrt(m00^2 + m01^2) <= |m00| + |m01|, unless the squares overflow,
//     about x: |m12| and |m22|,
// but for the poles, where the angle about y is a quarter turn. So |y| > 2 tol |x| makes an angle
// at least atan(2 tol), which is above tol, by more than rounding, for tol up to 1; a tolerance
// below 2^-900 might meet quotients that underflow. A NaN anywhere is no obstacle: the angle that
// was found stays, and angles that are NaN count as beyond.

#include <kvgeom/maps/matrix.h>

namespace kvgeom::detail {
namespace {

// What |x| is multiplied by; infinity where nothing is clear.
inline double SureRotationFactor(double tol) {
    return 0x1p-900 <= tol && tol <= 1 ? 2 * tol : __builtin_inf();
}

inline bool SurelyRotates(const GMatrix& matrix, double factor) {
    const auto& m = matrix.m_elements;
    const double y = __builtin_fabs(m[0][1]);
    const double x = __builtin_fabs(m[0][0]);
    return y > factor * x || __builtin_fabs(m[1][2]) > factor * __builtin_fabs(m[2][2]) ||
           (__builtin_fabs(m[0][2]) > factor * (x + y) && x + y < 0x1p500);
}

}  // namespace
}  // namespace kvgeom::detail
