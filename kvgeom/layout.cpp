// SPDX-License-Identifier: MIT

// The layout of the records is part of the library's binary interface: callers allocate, copy and
// store them. Doubles follow each other without gaps, so that an array of records is an array of
// doubles.

#include <kvgeom/kvgeom.h>

#include <cstddef>
#include <initializer_list>
#include <type_traits>

namespace {

constexpr size_t kDouble = sizeof(double);

template <class Record>
constexpr bool IsPlain = std::is_trivially_copyable_v<Record>&& std::is_standard_layout_v<Record>&&
    std::is_aggregate_v<Record>;

template <class Record>
constexpr bool IsDoubles(unsigned int count) {
    return IsPlain<Record> && sizeof(Record) == count * kDouble;
}

constexpr bool AreAt(std::initializer_list<size_t> offsets, std::initializer_list<size_t> places,
                     size_t unit = kDouble) {
    if (offsets.size() != places.size()) {
        return false;
    }
    for (size_t i = 0; i < offsets.size(); ++i) {
        if (offsets.begin()[i] != places.begin()[i] * unit) {
            return false;
        }
    }
    return true;
}

// x, y, z or x, y.
template <class Record>
constexpr bool IsTriple =
    IsDoubles<Record>(3) &&
    AreAt({offsetof(Record, m_x), offsetof(Record, m_y), offsetof(Record, m_z)}, {0, 1, 2});
template <class Record>
constexpr bool IsPair = IsDoubles<Record>(2) &&
                        AreAt({offsetof(Record, m_x), offsetof(Record, m_y)}, {0, 1});

static_assert(IsTriple<GVector> && IsTriple<GUnitVector> && IsTriple<GPosition>);
static_assert(IsPair<GVector2d> && IsPair<GUnitVector2d> && IsPair<GPosition2d>);
static_assert(IsDoubles<GMatrix>(9) && IsDoubles<GMatrix2d>(4) && IsDoubles<G4x4>(16));
static_assert(IsDoubles<GBox>(6) && AreAt({offsetof(GBox, m_low), offsetof(GBox, m_high)}, {0, 3}));
static_assert(IsDoubles<GBox2d>(4) &&
              AreAt({offsetof(GBox2d, m_low), offsetof(GBox2d, m_high)}, {0, 2}));
static_assert(IsDoubles<GBoreLine>(9) &&
              AreAt({offsetof(GBoreLine, m_point), offsetof(GBoreLine, m_direction),
                     offsetof(GBoreLine, m_front), offsetof(GBoreLine, m_back),
                     offsetof(GBoreLine, m_radius)},
                    {0, 3, 6, 7, 8}));
static_assert(IsDoubles<GBoreCone>(12) &&
              AreAt({offsetof(GBoreCone, m_boreLine), offsetof(GBoreCone, m_eye)}, {0, 9}));

// 24 doubles and a count.
static_assert(IsPlain<GClipVolume> && sizeof(GClipVolume) == 24 * kDouble + alignof(GClipVolume) &&
              AreAt({offsetof(GClipVolume, m_planes), offsetof(GClipVolume, m_count)}, {0, 24}));

// A count and a pointer, each padded to the other, and the doubles.
constexpr size_t kPointer = sizeof(void*);
static_assert(IsPlain<GPtFence> && sizeof(GPtFence) == 2 * kPointer + 5 * kDouble);
static_assert(AreAt({offsetof(GPtFence, m_count), offsetof(GPtFence, m_points)}, {0, 1}, kPointer));
static_assert(AreAt({offsetof(GPtFence, m_direction) - 2 * kPointer,
                     offsetof(GPtFence, m_front) - 2 * kPointer,
                     offsetof(GPtFence, m_back) - 2 * kPointer},
                    {0, 3, 4}));
static_assert(IsPlain<GPtFrustum> && sizeof(GPtFrustum) == sizeof(GPtFence) + sizeof(GPosition) &&
              offsetof(GPtFrustum, m_fence) == 0 &&
              offsetof(GPtFrustum, m_eye) == sizeof(GPtFence));
static_assert(IsPlain<GRtPrism> && offsetof(GRtPrism, m_transf) == 0 &&
              offsetof(GRtPrism, m_points) == sizeof(GTransf) &&
              offsetof(GRtPrism, m_count) == sizeof(GTransf) + kPointer &&
              offsetof(GRtPrism, m_height) == sizeof(GTransf) + 2 * kPointer &&
              sizeof(GRtPrism) == sizeof(GTransf) + 2 * kPointer + kDouble);

// Doubles and three flags, padded to the alignment of a double, which is 4 in the 32-bit Unix ABI
// and 8 elsewhere.
template <class Record>
constexpr bool IsTransf(size_t matrix, size_t translation) {
    const size_t doubles = matrix + translation + 1;
    return IsPlain<Record> && sizeof(Record) == doubles * kDouble + alignof(Record) &&
           AreAt({offsetof(Record, m_matrix), offsetof(Record, m_translation),
                  offsetof(Record, m_scaling), offsetof(Record, m_hasRotation)},
                 {0, matrix, matrix + translation, doubles}) &&
           offsetof(Record, m_hasReflection) == doubles * kDouble + 1 &&
           offsetof(Record, m_hasShear) == doubles * kDouble + 2;
}
static_assert(IsTransf<GTransf>(9, 3) && IsTransf<GTransf2d>(4, 2));

}  // namespace
