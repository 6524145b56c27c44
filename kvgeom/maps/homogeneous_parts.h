// SPDX-License-Identifier: MIT
#pragma once

// The parts of a homogeneous matrix.

#include <kvgeom/maps/g4x4.h>
#include <kvgeom/maps/matrix.h>

namespace kvgeom::detail {

// The 3x3 part of a homogeneous matrix.
inline GMatrix LinearBlock(const G4x4& g) {
    const auto& m = g.m_matrix;
    return {{{m[0], m[1], m[2]}, {m[4], m[5], m[6]}, {m[8], m[9], m[10]}}};
}

// Whether every finite point gets the weight 1 exactly, by which nothing need be divided.
inline bool IsExactlyAffine(const G4x4& g) {
    const auto& m = g.m_matrix;
    return m[3] == 0.0 && m[7] == 0.0 && m[11] == 0.0 && m[15] == 1.0;
}

}  // namespace kvgeom::detail
