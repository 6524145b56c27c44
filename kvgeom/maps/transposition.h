// SPDX-License-Identifier: MIT
#pragma once

#include <kvgeom/maps/g4x4.h>

namespace kvgeom::detail {

// The column form of a map is the row form of its transposed matrix.
inline G4x4 Transposed(const G4x4& a) {
    G4x4 result;
    for (int i = 0; i < 4; ++i) {
        for (int j = 0; j < 4; ++j) {
            result.m_matrix[4 * i + j] = a.m_matrix[4 * j + i];
        }
    }
    return result;
}

}  // namespace kvgeom::detail
