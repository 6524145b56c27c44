// SPDX-License-Identifier: MIT

// The layout of the records is part of the library's binary interface: callers allocate, copy and
// store them. Doubles follow each other without gaps, so that an array of records is an array of
// doubles.

#include <kvgeom/kvgeom.h>

#include <type_traits>

namespace {

template <class Record>
constexpr bool IsPlain = std::is_trivially_copyable_v<Record>&& std::is_standard_layout_v<Record>&&
    std::is_aggregate_v<Record>;

template <class Record>
constexpr bool IsDoubles(unsigned int count) {
    return IsPlain<Record> && sizeof(Record) == count * sizeof(double);
}

static_assert(IsDoubles<GVector>(3));
static_assert(IsDoubles<GUnitVector>(3));
static_assert(IsDoubles<GPosition>(3));
static_assert(IsDoubles<GMatrix>(9));
static_assert(IsDoubles<G4x4>(16));
static_assert(IsDoubles<GBox>(6));
static_assert(IsDoubles<GBoreLine>(9));
static_assert(IsDoubles<GBoreCone>(12));

static_assert(IsDoubles<GVector2d>(2));
static_assert(IsDoubles<GUnitVector2d>(2));
static_assert(IsDoubles<GPosition2d>(2));
static_assert(IsDoubles<GMatrix2d>(4));
static_assert(IsDoubles<GBox2d>(4));

// 24 doubles and a count.
static_assert(IsPlain<GClipVolume> &&
              sizeof(GClipVolume) == 24 * sizeof(double) + alignof(GClipVolume));

// A count and a pointer, each padded to the other, and the doubles.
static_assert(IsPlain<GPtFence> && sizeof(GPtFence) == 2 * sizeof(void*) + 5 * sizeof(double));
static_assert(IsPlain<GPtFrustum> && sizeof(GPtFrustum) == sizeof(GPtFence) + sizeof(GPosition));
static_assert(IsPlain<GRtPrism> &&
              sizeof(GRtPrism) == sizeof(GTransf) + 2 * sizeof(void*) + sizeof(double));

// Doubles and three flags, padded to the alignment of a double, which is 4 in the 32-bit Unix ABI
// and 8 elsewhere.
static_assert(IsPlain<GTransf> && sizeof(GTransf) == 13 * sizeof(double) + alignof(GTransf));
static_assert(IsPlain<GTransf2d> && sizeof(GTransf2d) == 7 * sizeof(double) + alignof(GTransf2d));

}  // namespace
