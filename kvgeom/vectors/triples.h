// SPDX-License-Identifier: MIT
#pragma once

// Three components of several records side by side, and the way there from an array of records and
// back: x, y, z, x, y, z, ... in memory.

#include <kvgeom/vectors/lanes.h>

#include <utility>

namespace kvgeom::detail {
namespace {

struct Triples {
    Lanes x;
    Lanes y;
    Lanes z;
};

constexpr auto kEach = std::make_integer_sequence<int, kLanes>();

inline void StoreVector(double* to, Lanes x, bool streams) {
    if (streams) {
        StreamLanes(to, x);
    } else {
        StoreLanes(to, x);
    }
}

// Pairs of numbers
//
// An array of records is an array of pairs of numbers. Vectors are made of pairs that belong to the
// same place of different records, and then their lanes are exchanged within pairs, which one
// instruction does on every processor; to bring pairs into the halves of a vector of four lanes,
// loading them costs least. Vectors of eight lanes are rearranged at once.

// The even (0) or the odd (1) lane of each pair of a, and the even or the odd lane of the same pair
// of b.
template <int of_a, int of_b, int... lane>
Lanes Paired(Lanes a, Lanes b, std::integer_sequence<int, lane...>) {
    return __builtin_shufflevector(a, b,
                                   (lane % 2 == 0 ? lane + of_a : kLanes + lane - 1 + of_b)...);
}

#if !defined(__AVX512F__)

// In memory, the pairs follow each other: first those of the low halves, then, where there are four
// lanes, those of the high halves.
template <int count>
struct Pairs {
    Lanes vectors[count];
};

template <int count>
Pairs<count> LoadPairs(const double* from) {
    Pairs<count> result;
    for (int i = 0; i < count; ++i) {
#if defined(__AVX2__)
        // GCC 12 makes two instructions of the plain form.
        result.vectors[i] = _mm256_loadu2_m128d(from + 2 * (count + i), from + 2 * i);
#else
        result.vectors[i] = LoadLanes(from + kLanes * i);
#endif
    }
    return result;
}

#if defined(__AVX2__)
// The low (0) or the high (1) half of a, then that of b.
template <int of_a, int of_b>
Lanes JoinedHalves(Lanes a, Lanes b) {
    return __builtin_shufflevector(a, b, 2 * of_a, 2 * of_a + 1, 4 + 2 * of_b, 5 + 2 * of_b);
}
#endif

template <int count>
void StorePairs(double* to, const Pairs<count>& pairs, bool streams) {
    const Lanes(&v)[count] = pairs.vectors;
    for (int i = 0; i < count; ++i) {
#if defined(__AVX2__)
        const int first = 2 * i;
        const int second = first + 1;
        const Lanes vector = second < count ? JoinedHalves<0, 0>(v[first], v[second])
                             : first < count
                                 ? JoinedHalves<0, 1>(v[first], v[second - count])
                                 : JoinedHalves<1, 1>(v[first - count], v[second - count]);
#else
        const Lanes vector = v[i];
#endif
        StoreVector(to + kLanes * i, vector, streams);
    }
}

#endif

#if defined(__AVX512F__)

// Component k of kLanes triples, which follow one another in the vectors a, b, c: numbers k, k + 3,
// k + 6, ... of these.
template <int k, int... lane>
Lanes Component(Lanes a, Lanes b, Lanes c, std::integer_sequence<int, lane...>) {
    constexpr int kTwo = 2 * kLanes;
    const Lanes from_two =
        __builtin_shufflevector(a, b, (3 * lane + k < kTwo ? 3 * lane + k : 0)...);
    return __builtin_shufflevector(from_two, c,
                                   (3 * lane + k < kTwo ? lane : 3 * lane + k - kLanes)...);
}

// The other way: vector k of the three that hold kLanes triples one after the other.
template <int k, int... lane>
Lanes Part(const Triples& t, std::integer_sequence<int, lane...>) {
    constexpr int kFirst = k * kLanes;
    const Lanes x_and_y =
        __builtin_shufflevector(t.x, t.y,
                                ((kFirst + lane) % 3 == 0   ? (kFirst + lane) / 3
                                 : (kFirst + lane) % 3 == 1 ? kLanes + (kFirst + lane) / 3
                                                            : 0)...);
    return __builtin_shufflevector(
        x_and_y, t.z, ((kFirst + lane) % 3 == 2 ? kLanes + (kFirst + lane) / 3 : lane)...);
}

#endif

// The even lanes (0) or the odd lanes (1) of two vectors, one after the other.
template <int odd, int... lane>
Lanes EverySecond(Lanes a, Lanes b, std::integer_sequence<int, lane...>) {
    return __builtin_shufflevector(a, b, (2 * lane + odd)...);
}

// The first or the second half of two vectors' lanes in alternation: a0, b0, a1, b1, ...
template <int half, int... lane>
Lanes Interleaved(Lanes a, Lanes b, std::integer_sequence<int, lane...>) {
    return __builtin_shufflevector(a, b, (lane % 2 * kLanes + (half * kLanes + lane) / 2)...);
}

inline Triples LoadTriples(const double* from) {
#if defined(__AVX512F__)
    const Lanes a = LoadLanes(from);
    const Lanes b = LoadLanes(from + kLanes);
    const Lanes c = LoadLanes(from + 2 * kLanes);
    return {Component<0>(a, b, c, kEach), Component<1>(a, b, c, kEach),
            Component<2>(a, b, c, kEach)};
#else
    // Two triples are the pairs x y, z x, y z.
    const auto [xy, zx, yz] = LoadPairs<3>(from).vectors;
    return {Paired<0, 1>(xy, zx, kEach), Paired<1, 0>(xy, yz, kEach), Paired<0, 1>(zx, yz, kEach)};
#endif
}

inline void StoreTriples(double* to, const Triples& t, bool streams) {
#if defined(__AVX512F__)
    StoreVector(to, Part<0>(t, kEach), streams);
    StoreVector(to + kLanes, Part<1>(t, kEach), streams);
    StoreVector(to + 2 * kLanes, Part<2>(t, kEach), streams);
#else
    StorePairs<3>(to,
                  {{Paired<0, 0>(t.x, t.y, kEach), Paired<0, 1>(t.z, t.x, kEach),
                    Paired<1, 1>(t.y, t.z, kEach)}},
                  streams);
#endif
}

// How several records of a kind are held in lanes: as triples, where no specialisation says
// otherwise.
template <class Record>
struct InLanes {
    static Triples Load(const double* from) { return LoadTriples(from); }
    static void Store(double* to, const Triples& t, bool streams) { StoreTriples(to, t, streams); }
};

template <class Record>
auto Load(const Record* records) {
    return InLanes<Record>::Load(reinterpret_cast<const double*>(records));
}

template <class Record, class Group>
void Store(Record* records, const Group& group, bool streams) {
    InLanes<Record>::Store(reinterpret_cast<double*>(records), group, streams);
}

}  // namespace
}  // namespace kvgeom::detail
