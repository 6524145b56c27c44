// SPDX-License-Identifier: MIT
#pragma once

// The row and column forms of the plane, for any record with the members m_x and m_y.

#include <kvgeom/maps/matrix2d.h>

namespace kvgeom::detail {

// v * M: the combination of the rows of M.
template <class Pair>
Pair RowForm(const Pair& v, const GMatrix2d& matrix) {
    const auto& m = matrix.m_elements;
    return {v.m_x * m[0][0] + v.m_y * m[1][0], v.m_x * m[0][1] + v.m_y * m[1][1]};
}

// M * v: the combination of the columns of M.
template <class Pair>
Pair ColumnForm(const GMatrix2d& matrix, const Pair& v) {
    const auto& m = matrix.m_elements;
    return {m[0][0] * v.m_x + m[0][1] * v.m_y, m[1][0] * v.m_x + m[1][1] * v.m_y};
}

}  // namespace kvgeom::detail
