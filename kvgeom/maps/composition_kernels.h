// SPDX-License-Identifier: MIT
#pragma once

// The vector code that composes maps. A vector holds a row of one map: to sort records as large as
// these by component would cost more than the arithmetic.

#include <kvgeom/maps/composition.h>
#include <kvgeom/maps/kernels.h>
#include <kvgeom/vectors/row_of_four.h>

namespace kvgeom::detail {
namespace {

// Where the numbers of a GTransf lie: nine of the matrix, three of the translation, the scaling.
constexpr int kTranslation = 9;
constexpr int kScaling = 12;

// Not inlined, because it is rarely needed.
[[gnu::noinline]] void ComposeSingly(const GTransf& first, const GTransf& second, GTransf& result) {
    result = ComposedByAngles(first, second);
}

inline double FirstOf(const RowOfFour& x) {
    return x.parts[0][0];
}
inline double SecondOf(const RowOfFour& x) {
    return x.parts[0][1];
}

// As operator*(const GTransf&, const GTransf&). Rows are loaded and stored with the number that
// follows them, which the next store puts right. Whether two rotations cancel is nearly always
// clear from the first row; conditions are joined without branches, for flags come in any order.
inline void Compose(const GTransf& first, const GTransf& second, double angle_factor,
                    GTransf& result) {
    const auto* const a = reinterpret_cast<const double*>(&first);
    const auto* const b = reinterpret_cast<const double*>(&second);
    const RowOfFour rows[3] = {LoadRow(b), LoadRow(b + 3), LoadRow(b + 6)};
    const auto image = [&](const double* row) {
        return row[0] * rows[0] + row[1] * rows[1] + row[2] * rows[2];
    };
    const RowOfFour images[3] = {image(a), image(a + 3), image(a + 6)};
    const RowOfFour translation =
        second.m_scaling * image(a + kTranslation) + LoadRow(b + kTranslation);
    const double scaling = first.m_scaling * second.m_scaling;
    const int rotations = (first.m_hasRotation != 0) + (second.m_hasRotation != 0);
    const int mirrors = first.m_hasReflection != second.m_hasReflection;
    const int shears = (first.m_hasShear | second.m_hasShear) != 0;
    const bool is_clear =
        __builtin_fabs(SecondOf(images[0])) > angle_factor * __builtin_fabs(FirstOf(images[0]));
    if ((static_cast<int>(rotations == 2) & static_cast<int>(!is_clear)) != 0) {
        ComposeSingly(first, second, result);
        return;
    }
    auto* const to = reinterpret_cast<double*>(&result);
    StoreRow(to, images[0]);
    StoreRow(to + 3, images[1]);
    StoreRow(to + 6, images[2]);
    StoreRow(to + kTranslation, translation);
    to[kScaling] = scaling;
    result.m_hasRotation = static_cast<unsigned char>(rotations != 0);
    result.m_hasReflection = static_cast<unsigned char>(mirrors);
    result.m_hasShear = static_cast<unsigned char>(shears);
}

[[gnu::flatten]] void ComposeEachTransf(const GTransf* first, const GTransf* second,
                                        double angle_factor, unsigned long count,
                                        GTransf* results) {
    for (unsigned long i = 0; i < count; ++i) {
        Compose(first[i], second[i], angle_factor, results[i]);
    }
}

[[gnu::flatten]] void ComposeEach4x4(const G4x4* left, const G4x4* right, unsigned long count,
                                     G4x4* results) {
    for (unsigned long i = 0; i < count; ++i) {
        const double* const a = left[i].m_matrix;
        const double* const b = right[i].m_matrix;
        const RowOfFour rows[4] = {LoadRow(a), LoadRow(a + 4), LoadRow(a + 8), LoadRow(a + 12)};
        const auto image = [&](const double* row) {
            return row[0] * rows[0] + row[1] * rows[1] + row[2] * rows[2] + row[3] * rows[3];
        };
        const RowOfFour images[4] = {image(b), image(b + 4), image(b + 8), image(b + 12)};
        __builtin_memcpy(results[i].m_matrix, images, sizeof images);
    }
}

}  // namespace
}  // namespace kvgeom::detail
