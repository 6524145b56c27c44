// SPDX-License-Identifier: MIT
#pragma once

// The kernels that invert maps.

#include <kvgeom/batch/four.h>
#include <kvgeom/batch/lanes.h>
#include <kvgeom/kernel/constants.h>
#include <kvgeom/maps/g4x4.h>

namespace kvgeom::detail {
namespace {

// Matrices by element, each of another matrix in each lane.
struct Matrices {
    Lanes m[4][4];
};

// As many vectors as they have lanes; the lanes of one become the firsts, seconds, ... of all.
// Rounds of taking turns with the vector half the number further on.
inline void Transpose(Lanes (&block)[kLanes]) {
    for (int size = 1; size < kLanes; size *= 2) {
        Lanes mixed[kLanes];
        for (int i = 0; i < kLanes / 2; ++i) {
            mixed[2 * i] = TakeTurns<0>(block[i], block[i + kLanes / 2], kEach);
            mixed[2 * i + 1] = TakeTurns<1>(block[i], block[i + kLanes / 2], kEach);
        }
        for (int i = 0; i < kLanes; ++i) {
            block[i] = mixed[i];
        }
    }
}

inline Matrices LoadMatrices(const double* from) {
    Matrices result;
    Lanes* const elements = &result.m[0][0];
    for (int first = 0; first < 16; first += kLanes) {
        Lanes block[kLanes];
        for (int i = 0; i < kLanes; ++i) {
            block[i] = LoadLanes(from + 16 * i + first);
        }
        Transpose(block);
        for (int i = 0; i < kLanes; ++i) {
            elements[first + i] = block[i];
        }
    }
    return result;
}

inline void StoreMatrices(double* to, const Matrices& matrices) {
    const Lanes* const elements = &matrices.m[0][0];
    for (int first = 0; first < 16; first += kLanes) {
        Lanes block[kLanes];
        for (int i = 0; i < kLanes; ++i) {
            block[i] = elements[first + i];
        }
        Transpose(block);
        for (int i = 0; i < kLanes; ++i) {
            StoreLanes(to + 16 * i + first, block[i]);
        }
    }
}

// As below for one matrix, each lane with pivots of its own; the lanes whose matrix is singular are
// those of the result's mask. In the last step the left half isn't needed any more.
inline Mask Invert(const Matrices& matrices, Matrices& inverse) {
    Lanes rows[4][8] = {};
    for (int i = 0; i < 4; ++i) {
        for (int j = 0; j < 4; ++j) {
            rows[i][j] = matrices.m[i][j];
        }
        rows[i][4 + i] = All(1);
    }
    Mask is_singular = {};
    Mask is_column[4][4];  // of each step
    for (int step = 0; step < 4; ++step) {
        Lanes largest = {};
        Lanes pivot = {};
        Mask is_row[4] = {};
        for (int i = step; i < 4; ++i) {
            for (int j = 0; j < 4; ++j) {
                const Lanes magnitude = Magnitude(rows[i][j]);
                const Mask is_larger = magnitude > largest;
                largest = Larger(largest, magnitude);
                pivot = is_larger ? rows[i][j] : pivot;
                is_row[i] = j == 0 ? is_larger : is_row[i] | is_larger;
                for (int other = 0; other < 4; ++other) {
                    Mask& is_other = is_column[step][other];
                    is_other = i == step && j == 0 ? Mask{} : is_other;
                    is_other = other == j ? is_other | is_larger : is_other & ~is_larger;
                }
            }
        }
        is_singular |= largest < kSmallestPivot;
        // The last row that had a larger element.
        Mask is_later = {};
        for (int i = 3; i > step; --i) {
            is_row[i] &= ~is_later;
            is_later |= is_row[i];
        }
        const int first_column = step < 3 ? 0 : 4;
        Lanes factors[4];
        for (int i = step + 1; i < 4; ++i) {
            for (int j = 0; j < 8; ++j) {
                const Lanes x = rows[i][j];
                rows[i][j] = is_row[i] ? rows[step][j] : x;
                rows[step][j] = is_row[i] ? x : rows[step][j];
            }
        }
        for (int i = 0; i < 4; ++i) {
            factors[i] = rows[i][0];
            for (int j = 1; j < 4; ++j) {
                factors[i] = is_column[step][j] ? rows[i][j] : factors[i];
            }
        }
        for (int j = first_column; j < 8; ++j) {
            rows[step][j] /= pivot;
            for (int i = 0; i < 4; ++i) {
                if (i != step) {
                    rows[i][j] -= factors[i] * rows[step][j];
                }
            }
        }
    }
    for (int row = 0; row < 4; ++row) {
        for (int j = 0; j < 4; ++j) {
            Lanes element = rows[0][4 + j];
            for (int step = 1; step < 4; ++step) {
                element = is_column[step][row] ? rows[step][4 + j] : element;
            }
            inverse.m[row][j] = element;
        }
    }
    return is_singular;
}

// The array [matrix | identity] that Gauss-Jordan elimination turns into [permutation | inverse].
struct Halves {
    alignas(8 * sizeof(double)) double rows[4][8];
};

// A step of the elimination. The pivot is the largest element of the left half from row `step`
// down, the first of equals; false when it is too small. Columns of earlier pivots hold zeros there
// and are never chosen again. Two bits a column tell in which step it had the pivot. In the last
// step the left half isn't needed any more.
//
// Which rows to exchange turns out only here, and a store whose address isn't known yet stalls the
// loads after it. So rows are loaded from where the exchange finds them, and stored elsewhere.
template <int step>
inline bool Eliminate(const Halves& before, Halves& after, unsigned& steps) {
    Four largest = Larger(Four{}, Magnitude(LoadFour(before.rows[step])));
    for (int i = step + 1; i < 4; ++i) {
        largest = Larger(largest, Magnitude(LoadFour(before.rows[i])));
    }
    const double magnitude = Largest(largest);
    if (magnitude < kSmallestPivot) {
        return false;
    }
    unsigned places = 0;
    for (int i = step; i < 4; ++i) {
        places |= BitsEqual(Magnitude(LoadFour(before.rows[i])), magnitude) << (4 * i);
    }
    const int place = __builtin_ctz(places);
    const int row = place / 4;
    const int column = place % 4;
    steps |= static_cast<unsigned>(step) << (2 * column);
    const double pivot = before.rows[row][column];
    const Four left = LoadFour(before.rows[row]) / pivot;
    const Four right = LoadFour(before.rows[row] + 4) / pivot;
    StoreFour(after.rows[step], left);
    StoreFour(after.rows[step] + 4, right);
    for (int i = 0; i < 4; ++i) {
        if (i == step) {
            continue;
        }
        const double* const from = before.rows[i > step && i == row ? step : i];
        const double factor = from[column];
        if (step < 3) {
            StoreFour(after.rows[i], LoadFour(from) - factor * left);
        }
        StoreFour(after.rows[i] + 4, LoadFour(from + 4) - factor * right);
    }
    return true;
}

// False when the matrix is singular.
[[gnu::flatten]] bool InvertOne4x4(const G4x4& matrix, G4x4& inverse) {
    constexpr double kIdentity[4][4] = {{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}};
    Halves halves;
    Halves others;
    for (int i = 0; i < 4; ++i) {
        StoreFour(halves.rows[i], LoadFour(matrix.m_matrix + 4 * i));
        StoreFour(halves.rows[i] + 4, LoadFour(kIdentity[i]));
    }
    unsigned steps = 0;
    if (!(Eliminate<0>(halves, others, steps) && Eliminate<1>(others, halves, steps) &&
          Eliminate<2>(halves, others, steps) && Eliminate<3>(others, halves, steps))) {
        return false;
    }
    // The left half has the 1 of each row in the column of its pivot.
    for (int i = 0; i < 4; ++i) {
        StoreFour(inverse.m_matrix + 4 * i, LoadFour(halves.rows[steps >> (2 * i) & 3] + 4));
    }
    return true;
}

[[gnu::noinline]] void InvertSingly(const G4x4* matrices, unsigned n, G4x4* results) {
    for (unsigned i = 0; i < n; ++i) {
        results[i] = matrices[i].Inverse();
    }
}

[[gnu::flatten]] void InvertEach4x4(const G4x4* matrices, unsigned long count, G4x4* results) {
    const auto invert_group = [](const G4x4* in, G4x4* out) {
        Matrices inverse;
        if (Bits(Invert(LoadMatrices(in->m_matrix), inverse)) != 0) {
            return false;
        }
        StoreMatrices(out->m_matrix, inverse);
        return true;
    };
    ForGroups(matrices, count, results, results, invert_group, InvertSingly);
}

}  // namespace
}  // namespace kvgeom::detail
