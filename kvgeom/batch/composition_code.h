// SPDX-License-Identifier: MIT
#pragma once

// The kernels that compose maps. They take the rows of a map as vectors: of a record as large,
// sorting many of them by component would cost more than the arithmetic.

#include <kvgeom/batch/four.h>
#include <kvgeom/maps/clear_rotation.h>
#include <kvgeom/maps/g4x4.h>
#include <kvgeom/maps/transf.h>

namespace kvgeom::detail {
namespace {

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

}  // namespace
}  // namespace kvgeom::detail
