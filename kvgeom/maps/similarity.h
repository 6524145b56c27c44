// SPDX-License-Identifier: MIT
#pragma once

// What transformations of space and of the plane have in common, down to the words of the message.

#include <kvgeom/kernel/assertion_hook.h>
#include <kvgeom/kernel/constants.h>
#include <kvgeom/kernel/infinity.h>
#include <kvgeom/kernel/tolerance_state.h>
#include <kvgeom/maps/linear_forms.h>
#include <kvgeom/maps/linear_forms2d.h>

#include <cmath>

namespace kvgeom::detail {

template <class Transformation>
bool AreEqual(const Transformation& a, const Transformation& b) {
    return std::fabs(a.m_scaling - b.m_scaling) <= RelativeTolerance() &&
           a.m_hasReflection == b.m_hasReflection && a.m_translation.IsEqual(b.m_translation) &&
           a.m_matrix.IsEqual(b.m_matrix);
}

template <class Transformation>
Transformation InverseOf(const Transformation& t) {
    Transformation result = t;
    result.m_matrix = t.m_matrix.Transpose();
    if (std::fabs(t.m_scaling) < kSmallestDivisor) {
        Gassert_debug("GTransf: m_scaling is 0.0");
        result.m_scaling = kGInfinity;
    } else {
        result.m_scaling = 1 / t.m_scaling;
    }
    result.m_translation = RowForm(-t.m_translation, result.m_matrix) * result.m_scaling;
    return result;
}

// The composition: a first, then b. Two rotations may cancel each other, and the composed matrix
// tells whether they do; a single one always stays.
template <class Transformation, class HasAngle>
Transformation Composed(const Transformation& a, const Transformation& b, HasAngle has_angle) {
    Transformation result;
    result.m_matrix = a.m_matrix * b.m_matrix;
    result.m_translation = RowForm(a.m_translation, b.m_matrix) * b.m_scaling + b.m_translation;
    result.m_scaling = a.m_scaling * b.m_scaling;
    const bool both_rotate = a.m_hasRotation && b.m_hasRotation;
    const bool rotates = both_rotate ? has_angle(result) : a.m_hasRotation || b.m_hasRotation;
    result.m_hasRotation = rotates ? 1 : 0;
    result.m_hasReflection = a.m_hasReflection != b.m_hasReflection ? 1 : 0;
    result.m_hasShear = a.m_hasShear || b.m_hasShear ? 1 : 0;
    return result;
}

}  // namespace kvgeom::detail
