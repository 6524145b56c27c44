// SPDX-License-Identifier: MIT
#pragma once

// The vector code that inverts maps.

#include <kvgeom/kernel/constants.h>
#include <kvgeom/maps/kernels.h>
#include <kvgeom/vectors/groups.h>
#include <kvgeom/vectors/row_of_four.h>

namespace kvgeom::detail {
namespace {

// As many matrices as there are lanes: each vector holds one element of all of them.
struct Matrices {
    Lanes m[4][4];
};

// Lane i of vector k becomes lane k of vector i. In each round, every vector of the first half is
// interleaved with its counterpart in the second half.
inline void Transpose(Lanes (&block)[kLanes]) {
    for (int size = 1; size < kLanes; size *= 2) {
        Lanes mixed[kLanes];
        for (int i = 0; i < kLanes / 2; ++i) {
            mixed[2 * i] = Interleaved<0>(block[i], block[i + kLanes / 2], kEach);
            mixed[2 * i + 1] = Interleaved<1>(block[i], block[i + kLanes / 2], kEach);
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

// Gauss-Jordan elimination as InvertOne4x4 does it, each lane with pivots of its own, but without
// what is known beforehand:
// - Of the left half only the columns that have had no pivot are kept, in their order; the others
//   hold zeros and ones, or are never looked at.
// - Of the right half, which begins as the identity, only the columns of rows that have been pivots
//   are kept. In all others a row holds the same number, which is 0 (of either sign) or NaN, but
//   for the 1 of a row's own column. In rows that haven't been pivots that number is still +0: only
//   an infinite factor or NaN could change it, by which the row's left half becomes NaN as a whole,
//   so that it never has a pivot and the matrix is singular.
struct Eliminations {
    Lanes left[4][4];
    Lanes right[4][4];       // column k is that of the pivot row of step k
    Lanes elsewhere[4];      // the number in the other columns, of rows that have been pivots
    Lanes row_places[4];     // the row at which a row began,
    Lanes column_places[4];  // and the column at which a column of the left half did
    Lanes pivot_rows[4];     // of each step, where they began
    Lanes pivot_columns[4];
    Mask is_singular = {};

    explicit Eliminations(const Matrices& matrices) {
        for (int i = 0; i < 4; ++i) {
            row_places[i] = column_places[i] = All(i);
            for (int j = 0; j < 4; ++j) {
                left[i][j] = matrices.m[i][j];
            }
        }
    }

    template <int step>
    void Eliminate() {
        constexpr int columns = 4 - step;
        Lanes largest = {};
        Lanes place = All(4 * step);
        for (int i = step; i < 4; ++i) {
            for (int j = 0; j < columns; ++j) {
                const Lanes magnitude = Magnitude(left[i][j]);
                place = magnitude > largest ? All(4 * i + j) : place;
                largest = Larger(largest, magnitude);
            }
        }
        is_singular |= largest < kSmallestPivot;

        Lanes row = All(step);
        Lanes column = place - 4.0 * step;
        for (int i = step + 1; i < 4; ++i) {
            const Mask is_beyond = place >= 4.0 * i;
            row = is_beyond ? All(i) : row;
            column = is_beyond ? place - 4.0 * i : column;
        }
        for (int i = step + 1; i < 4; ++i) {
            const Mask is_row = row == static_cast<double>(i);
            Exchange(is_row, row_places[step], row_places[i]);
            for (int j = 0; j < columns; ++j) {
                Exchange(is_row, left[step][j], left[i][j]);
            }
            for (int k = 0; k < step; ++k) {
                Exchange(is_row, right[step][k], right[i][k]);
            }
        }
        pivot_rows[step] = row_places[step];
        pivot_columns[step] = RemoveColumn<columns>(column, column_places);
        Lanes factors[4];
        for (int i = 0; i < 4; ++i) {
            factors[i] = RemoveColumn<columns>(column, left[i]);
        }

        const Lanes pivot = factors[step];
        for (int j = 0; j < columns - 1; ++j) {
            left[step][j] /= pivot;
        }
        for (int k = 0; k < step; ++k) {
            right[step][k] /= pivot;
        }
        right[step][step] = 1 / pivot;
        elsewhere[step] = ZeroWithSignOf(pivot);
        for (int i = 0; i < 4; ++i) {
            if (i == step) {
                continue;
            }
            for (int j = 0; j < columns - 1; ++j) {
                left[i][j] -= factors[i] * left[step][j];
            }
            for (int k = 0; k < step; ++k) {
                right[i][k] -= factors[i] * right[step][k];
            }
            const Lanes before = i < step ? elsewhere[i] : Lanes{};
            right[i][step] = before - factors[i] * right[step][step];
            if (i < step) {
                elsewhere[i] -= factors[i] * elsewhere[step];
            }
        }
    }

    // Row i of the inverse is that of the step with the pivot in column i, its columns likewise.
    Matrices Inverse() const {
        Lanes rows[4][4];
        for (int i = 0; i < 4; ++i) {
            for (int k = 0; k < 4; ++k) {
                rows[i][k] = right[0][k];
            }
            for (int step = 1; step < 4; ++step) {
                const Mask is_step = pivot_columns[step] == static_cast<double>(i);
                for (int k = 0; k < 4; ++k) {
                    rows[i][k] = is_step ? right[step][k] : rows[i][k];
                }
            }
        }
        Matrices result;
        for (int j = 0; j < 4; ++j) {
            for (int i = 0; i < 4; ++i) {
                result.m[i][j] = rows[i][0];
            }
            for (int step = 1; step < 4; ++step) {
                const Mask is_step = pivot_rows[step] == static_cast<double>(j);
                for (int i = 0; i < 4; ++i) {
                    result.m[i][j] = is_step ? rows[i][step] : result.m[i][j];
                }
            }
        }
        return result;
    }

  private:
    static void Exchange(Mask which, Lanes& a, Lanes& b) {
        const Lanes old = b;
        b = which ? a : old;
        a = which ? old : a;
    }

    static Lanes ZeroWithSignOf(Lanes x) {
        return reinterpret_cast<Lanes>(reinterpret_cast<Mask>(x) &
                                       reinterpret_cast<Mask>(All(-0.0)));
    }

    // Removes a column from the first `count`, and moves those behind it forward by one.
    template <int count>
    static Lanes RemoveColumn(Lanes column, Lanes (&row)[4]) {
        Lanes taken = row[0];
        for (int j = 1; j < count; ++j) {
            const Mask is_here = column == static_cast<double>(j);
            const Mask is_before = column < static_cast<double>(j);
            taken = is_here ? row[j] : taken;
            row[j - 1] = is_before ? row[j] : row[j - 1];
        }
        return taken;
    }
};

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
    RowOfFour largest = Larger(RowOfFour{}, Magnitude(LoadRow(before.rows[step])));
    for (int i = step + 1; i < 4; ++i) {
        largest = Larger(largest, Magnitude(LoadRow(before.rows[i])));
    }
    const double magnitude = Largest(largest);
    if (magnitude < kSmallestPivot) {
        return false;
    }
    unsigned places = 0;
    for (int i = step; i < 4; ++i) {
        places |= BitsEqual(Magnitude(LoadRow(before.rows[i])), magnitude) << (4 * i);
    }
    const int place = __builtin_ctz(places);
    const int row = place / 4;
    const int column = place % 4;
    steps |= static_cast<unsigned>(step) << (2 * column);
    const double pivot = before.rows[row][column];
    const RowOfFour left = LoadRow(before.rows[row]) / pivot;
    const RowOfFour right = LoadRow(before.rows[row] + 4) / pivot;
    StoreRow(after.rows[step], left);
    StoreRow(after.rows[step] + 4, right);
    for (int i = 0; i < 4; ++i) {
        if (i == step) {
            continue;
        }
        const double* const from = before.rows[i > step && i == row ? step : i];
        const double factor = from[column];
        if (step < 3) {
            StoreRow(after.rows[i], LoadRow(from) - factor * left);
        }
        StoreRow(after.rows[i] + 4, LoadRow(from + 4) - factor * right);
    }
    return true;
}

// False when the matrix is singular.
[[gnu::flatten]] bool InvertOne4x4(const G4x4& matrix, G4x4& inverse) {
    constexpr double kIdentity[4][4] = {{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}};
    Halves halves;
    Halves others;
    for (int i = 0; i < 4; ++i) {
        StoreRow(halves.rows[i], LoadRow(matrix.m_matrix + 4 * i));
        StoreRow(halves.rows[i] + 4, LoadRow(kIdentity[i]));
    }
    unsigned steps = 0;
    if (!(Eliminate<0>(halves, others, steps) && Eliminate<1>(others, halves, steps) &&
          Eliminate<2>(halves, others, steps) && Eliminate<3>(others, halves, steps))) {
        return false;
    }
    // The left half has the 1 of each row in the column of its pivot.
    for (int i = 0; i < 4; ++i) {
        StoreRow(inverse.m_matrix + 4 * i, LoadRow(halves.rows[steps >> (2 * i) & 3] + 4));
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
        Eliminations eliminations(LoadMatrices(in->m_matrix));
        eliminations.Eliminate<0>();
        eliminations.Eliminate<1>();
        eliminations.Eliminate<2>();
        eliminations.Eliminate<3>();
        if (Bits(eliminations.is_singular) != 0) {
            return false;
        }
        StoreMatrices(out->m_matrix, eliminations.Inverse());
        return true;
    };
    ForGroups(matrices, count, results, results, invert_group, InvertSingly);
}

}  // namespace
}  // namespace kvgeom::detail
