// SPDX-License-Identifier: MIT
#pragma once

// What the maps by a homogeneous matrix have in common, in space and in the plane.

#include <kvgeom/kernel/assertion_hook.h>
#include <kvgeom/kernel/constants.h>
#include <kvgeom/kernel/infinity.h>
#include <kvgeom/maps/g4x4.h>

#include <cmath>

namespace kvgeom::detail {

enum class Form { kRow, kColumn };

// The element in row i and column j: of a itself for the row form, of the transposed matrix for the
// column form.
template <Form form>
double Element(const G4x4& a, int i, int j) {
    return form == Form::kRow ? a.m_matrix[4 * i + j] : a.m_matrix[4 * j + i];
}

inline double ReciprocalWeight(double weight, const char* message) {
    if (std::fabs(weight) >= kSmallestDivisor) {
        return 1 / weight;
    }
    Gassert_debug(message);
    return kGInfinity;
}

}  // namespace kvgeom::detail
