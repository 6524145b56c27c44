// SPDX-License-Identifier: MIT
#pragma once

// The numbers of several elements side by side, and the ways from arrays of records to them and
// back. The sources that include this are compiled for different processors: everything here is
// their own (an unnamed namespace), lest the linker give one the code of another, and they call no
// inline function of other headers.

#include <kvgeom/boxes/box.h>
#include <kvgeom/points/position.h>

#if defined(__SSE2__)
#include <immintrin.h>
#endif

#include <utility>

namespace kvgeom::detail {
namespace {

#if defined(__AVX512F__)
constexpr int kLanes = 8;
#elif defined(__AVX2__)
constexpr int kLanes = 4;
#else
constexpr int kLanes = 2;
#endif

typedef double Lanes __attribute__((vector_size(kLanes * sizeof(double))));
// Of each lane all bits or none, as comparisons give it.
typedef decltype(Lanes() < Lanes()) Mask;

// As many elements as there are lanes, or fewer at the end of an array.
constexpr unsigned kFull = kLanes;

inline Lanes All(double x) {
    return x - Lanes{};
}

// As Smaller and Larger of the kernel.
inline Lanes Smaller(Lanes a, Lanes b) {
    return b < a ? b : a;
}
inline Lanes Larger(Lanes a, Lanes b) {
    return b > a ? b : a;
}

inline Lanes Magnitude(Lanes x) {
    return reinterpret_cast<Lanes>(reinterpret_cast<Mask>(x) & ~reinterpret_cast<Mask>(All(-0.0)));
}

inline Lanes SquareRoot(Lanes x) {
#if defined(__AVX512F__)
    // The plain form begins with a register that GCC 12 warns of as uninitialised.
    return _mm512_maskz_sqrt_pd(0xFF, x);
#elif defined(__AVX2__)
    return _mm256_sqrt_pd(x);
#elif defined(__SSE2__)
    return _mm_sqrt_pd(x);
#else
    for (int i = 0; i < kLanes; ++i) {
        x[i] = __builtin_sqrt(x[i]);
    }
    return x;
#endif
}

// Bit i is lane i.
inline unsigned Bits(Mask mask) {
#if defined(__AVX512F__)
    return _mm512_movepi64_mask(reinterpret_cast<__m512i>(mask));
#elif defined(__AVX2__)
    return static_cast<unsigned>(_mm256_movemask_pd(reinterpret_cast<__m256d>(mask)));
#elif defined(__SSE2__)
    return static_cast<unsigned>(_mm_movemask_pd(reinterpret_cast<__m128d>(mask)));
#else
    unsigned bits = 0;
    for (int i = 0; i < kLanes; ++i) {
        bits |= (mask[i] != 0 ? 1U : 0U) << i;
    }
    return bits;
#endif
}

inline bool AreAll(Mask mask) {
    return Bits(mask) == (1U << kLanes) - 1;
}

struct Triples {
    Lanes x;
    Lanes y;
    Lanes z;
};

struct Corners {
    Triples low;
    Triples high;
};

// Component k of kLanes triples: numbers k, k + 3, k + 6, ... of three vectors one after the other.
template <int k, int... lane>
Lanes Take(Lanes a, Lanes b, Lanes c, std::integer_sequence<int, lane...>) {
    constexpr int kTwo = 2 * kLanes;
    const Lanes from_two =
        __builtin_shufflevector(a, b, (3 * lane + k < kTwo ? 3 * lane + k : 0)...);
    return __builtin_shufflevector(from_two, c,
                                   (3 * lane + k < kTwo ? lane : 3 * lane + k - kLanes)...);
}

// Vector k of the three that kLanes triples make.
template <int k, int... lane>
Lanes Give(const Triples& t, std::integer_sequence<int, lane...>) {
    constexpr int kFirst = k * kLanes;
    const Lanes x_and_y =
        __builtin_shufflevector(t.x, t.y,
                                ((kFirst + lane) % 3 == 0   ? (kFirst + lane) / 3
                                 : (kFirst + lane) % 3 == 1 ? kLanes + (kFirst + lane) / 3
                                                            : 0)...);
    return __builtin_shufflevector(
        x_and_y, t.z, ((kFirst + lane) % 3 == 2 ? kLanes + (kFirst + lane) / 3 : lane)...);
}

// The lanes of even and of odd numbers, of two vectors one after the other.
template <int odd, int... lane>
Lanes TakeEverySecond(Lanes a, Lanes b, std::integer_sequence<int, lane...>) {
    return __builtin_shufflevector(a, b, (2 * lane + odd)...);
}

// Half of what two vectors give when their lanes take turns.
template <int half, int... lane>
Lanes TakeTurns(Lanes a, Lanes b, std::integer_sequence<int, lane...>) {
    return __builtin_shufflevector(a, b, (lane % 2 * kLanes + (half * kLanes + lane) / 2)...);
}

constexpr auto kEach = std::make_integer_sequence<int, kLanes>();

inline Lanes LoadLanes(const double* from) {
    Lanes result;
    __builtin_memcpy(&result, from, sizeof result);
    return result;
}

inline void StoreLanes(double* to, Lanes x) {
    __builtin_memcpy(to, &x, sizeof x);
}

inline Triples LoadTriples(const double* from) {
    const Lanes a = LoadLanes(from);
    const Lanes b = LoadLanes(from + kLanes);
    const Lanes c = LoadLanes(from + 2 * kLanes);
    return {Take<0>(a, b, c, kEach), Take<1>(a, b, c, kEach), Take<2>(a, b, c, kEach)};
}

inline void StoreTriples(double* to, const Triples& t) {
    StoreLanes(to, Give<0>(t, kEach));
    StoreLanes(to + kLanes, Give<1>(t, kEach));
    StoreLanes(to + 2 * kLanes, Give<2>(t, kEach));
}

// Low and high corners take turns in an array of boxes.
inline Corners LoadCorners(const double* from) {
    const Triples p = LoadTriples(from);
    const Triples q = LoadTriples(from + 3 * kLanes);
    return {{TakeEverySecond<0>(p.x, q.x, kEach), TakeEverySecond<0>(p.y, q.y, kEach),
             TakeEverySecond<0>(p.z, q.z, kEach)},
            {TakeEverySecond<1>(p.x, q.x, kEach), TakeEverySecond<1>(p.y, q.y, kEach),
             TakeEverySecond<1>(p.z, q.z, kEach)}};
}

inline void StoreCorners(double* to, const Corners& c) {
    StoreTriples(to,
                 {TakeTurns<0>(c.low.x, c.high.x, kEach), TakeTurns<0>(c.low.y, c.high.y, kEach),
                  TakeTurns<0>(c.low.z, c.high.z, kEach)});
    StoreTriples(to + 3 * kLanes,
                 {TakeTurns<1>(c.low.x, c.high.x, kEach), TakeTurns<1>(c.low.y, c.high.y, kEach),
                  TakeTurns<1>(c.low.z, c.high.z, kEach)});
}

// Records of a fixed number of doubles, of which n are there: a group that isn't full is loaded
// from and stored to room of its own, with zeros for the rest.
template <int size>
struct Room {
    double numbers[size * kLanes] = {};
    Room() = default;
    Room(const void* records, unsigned n) {
        __builtin_memcpy(numbers, records, n * size * sizeof(double));
    }
    void CopyTo(void* records, unsigned n) const {
        __builtin_memcpy(records, numbers, n * size * sizeof(double));
    }
};

template <class Record>
Triples Load(const Record* records, unsigned n) {
    return LoadTriples(n == kFull ? reinterpret_cast<const double*>(records)
                                  : Room<3>(records, n).numbers);
}
inline Corners Load(const GBox* boxes, unsigned n) {
    return LoadCorners(n == kFull ? reinterpret_cast<const double*>(boxes)
                                  : Room<6>(boxes, n).numbers);
}

template <class Record>
void Store(Record* records, unsigned n, const Triples& t) {
    if (n == kFull) {
        StoreTriples(reinterpret_cast<double*>(records), t);
        return;
    }
    Room<3> room;
    StoreTriples(room.numbers, t);
    room.CopyTo(records, n);
}
inline void Store(GBox* boxes, unsigned n, const Corners& c) {
    if (n == kFull) {
        StoreCorners(reinterpret_cast<double*>(boxes), c);
        return;
    }
    Room<6> room;
    StoreCorners(room.numbers, c);
    room.CopyTo(boxes, n);
}

// Writes the bits of n answers as bytes, and returns how many are set.
inline unsigned StoreBits(unsigned char* answers, unsigned n, unsigned bits) {
    constexpr unsigned kOnes = 0x01010101;
    // Bit i to byte i, for four bits.
    const auto spread = [](unsigned four) { return four * 0x00204081U & kOnes; };
    const auto count = [](unsigned bytes) { return bytes * kOnes >> 24U; };
    bits &= (1U << n) - 1;
    const unsigned bytes[2] = {spread(bits & 0xFU), spread(bits >> 4U)};
    __builtin_memcpy(answers, bytes, n);
    return count(bytes[0]) + count(bytes[1]);
}

// Calls group(first, n) for the elements from first on, n of them, until all had their turn.
template <class Group>
void ForGroups(unsigned long count, Group group) {
    unsigned long i = 0;
    for (; count - i >= kFull; i += kFull) {
        group(i, kFull);
    }
    if (i < count) {
        group(i, static_cast<unsigned>(count - i));
    }
}

}  // namespace
}  // namespace kvgeom::detail
