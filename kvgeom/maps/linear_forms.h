// SPDX-License-Identifier: MIT
#pragma once

// The row and column forms that every map of a record comes down to, for any record with the
// members m_x, m_y, m_z. Sums run from left to right.

#include <kvgeom/maps/matrix.h>

namespace kvgeom::detail {

// v * M: the combination of the rows of M.
template <class Triple>
Triple RowForm(const Triple& v, const GMatrix& matrix) {
    const auto& m = matrix.m_elements;
    return {v.m_x * m[0][0] + v.m_y * m[1][0] + v.m_z * m[2][0],
            v.m_x * m[0][1] + v.m_y * m[1][1] + v.m_z * m[2][1],
            v.m_x * m[0][2] + v.m_y * m[1][2] + v.m_z * m[2][2]};
}

// M * v: the combination of the columns of M.
template <class Triple>
Triple ColumnForm(const GMatrix& matrix, const Triple& v) {
    const auto& m = matrix.m_elements;
    return {m[0][0] * v.m_x + m[0][1] * v.m_y + m[0][2] * v.m_z,
            m[1][0] * v.m_x + m[1][1] * v.m_y + m[1][2] * v.m_z,
            m[2][0] * v.m_x + m[2][1] * v.m_y + m[2][2] * v.m_z};
}

}  // namespace kvgeom::detail
