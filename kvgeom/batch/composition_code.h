// SPDX-License-Identifier: MIT
#pragma once

// The kernels that compose and invert maps. Compositions take the rows of a map as vectors: of a
// record as large, sorting many of them by component would cost more than the arithmetic.

#include <kvgeom/batch/lanes.h>
#include <kvgeom/kernel/constants.h>
#include <kvgeom/maps/clear_rotation.h>
#include <kvgeom/maps/g4x4.h>
#include <kvgeom/maps/transf.h>

namespace kvgeom::detail {
namespace {

// Four numbers side by side, in as many vectors as they take.
constexpr int kPartLanes = kLanes > 4 ? 4 : kLanes;
constexpr int kParts = 4 / kPartLanes;
typedef double Part __attribute__((vector_size(kPartLanes * sizeof(double))));
struct Four {
    Part parts[kParts];
};

inline Four LoadFour(const double* from) {
    Four result;
    __builtin_memcpy(&result, from, sizeof result);
    return result;
}
inline void StoreFour(double* to, const Four& x) {
    __builtin_memcpy(to, &x, sizeof x);
}

inline Four operator*(double f, const Four& x) {
    Four result;
    for (int i = 0; i < kParts; ++i) {
        result.parts[i] = f * x.parts[i];
    }
    return result;
}
inline Four operator+(const Four& x, const Four& y) {
    Four result;
    for (int i = 0; i < kParts; ++i) {
        result.parts[i] = x.parts[i] + y.parts[i];
    }
    return result;
}

// Where the numbers of a GTransf lie: nine of the matrix, three of the translation, the scaling.
constexpr int kTranslation = 9;
constexpr int kScaling = 12;

// Not inlined, because it is rarely needed.
[[gnu::noinline]] void ComposeSingly(const GTransf& first, const GTransf& second, GTransf& result) {
    result = ComposedByAngles(first, second);
}

inline double FirstOf(const Four& x) {
    return x.parts[0][0];
}
inline double SecondOf(const Four& x) {
    return x.parts[0][1];
}

// As operator*(const GTransf&, const GTransf&). Rows are loaded and stored with the number that
// follows them, which the next store puts right. Whether two rotations cancel is nearly always
// clear from the first row; conditions are joined without branches, for flags come in any order.
inline void Compose(const GTransf& first, const GTransf& second, double clear_rotation,
                    GTransf& result) {
    const auto* const a = reinterpret_cast<const double*>(&first);
    const auto* const b = reinterpret_cast<const double*>(&second);
    const Four rows[3] = {LoadFour(b), LoadFour(b + 3), LoadFour(b + 6)};
    const auto image = [&](const double* row) {
        return row[0] * rows[0] + row[1] * rows[1] + row[2] * rows[2];
    };
    const Four images[3] = {image(a), image(a + 3), image(a + 6)};
    const Four translation =
        second.m_scaling * image(a + kTranslation) + LoadFour(b + kTranslation);
    const double scaling = first.m_scaling * second.m_scaling;
    const int rotations = (first.m_hasRotation != 0) + (second.m_hasRotation != 0);
    const int mirrors = first.m_hasReflection != second.m_hasReflection;
    const int shears = (first.m_hasShear | second.m_hasShear) != 0;
    const bool is_clear =
        __builtin_fabs(SecondOf(images[0])) > clear_rotation * __builtin_fabs(FirstOf(images[0]));
    if ((static_cast<int>(rotations == 2) & static_cast<int>(!is_clear)) != 0) {
        ComposeSingly(first, second, result);
        return;
    }
    auto* const to = reinterpret_cast<double*>(&result);
    StoreFour(to, images[0]);
    StoreFour(to + 3, images[1]);
    StoreFour(to + 6, images[2]);
    StoreFour(to + kTranslation, translation);
    to[kScaling] = scaling;
    result.m_hasRotation = static_cast<unsigned char>(rotations != 0);
    result.m_hasReflection = static_cast<unsigned char>(mirrors);
    result.m_hasShear = static_cast<unsigned char>(shears);
}

[[gnu::flatten]] void ComposeEachTransf(const GTransf* first, const GTransf* second,
                                        double clear_rotation, unsigned long count,
                                        GTransf* results) {
    for (unsigned long i = 0; i < count; ++i) {
        Compose(first[i], second[i], clear_rotation, results[i]);
    }
}

[[gnu::flatten]] void ComposeEach4x4(const G4x4* left, const G4x4* right, unsigned long count,
                                     G4x4* results) {
    for (unsigned long i = 0; i < count; ++i) {
        const double* const a = left[i].m_matrix;
        const double* const b = right[i].m_matrix;
        const Four rows[4] = {LoadFour(a), LoadFour(a + 4), LoadFour(a + 8), LoadFour(a + 12)};
        const auto image = [&](const double* row) {
            return row[0] * rows[0] + row[1] * rows[1] + row[2] * rows[2] + row[3] * rows[3];
        };
        const Four images[4] = {image(b), image(b + 4), image(b + 8), image(b + 12)};
        __builtin_memcpy(results[i].m_matrix, images, sizeof images);
    }
}

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

// As G4x4::Inverse(), each lane with pivots of its own; the lanes whose matrix is singular are
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
