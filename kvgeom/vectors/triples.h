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

constexpr auto kEach = std::make_integer_sequence<int, kLanes>();

inline Triples LoadTriples(const double* from) {
    const Lanes a = LoadLanes(from);
    const Lanes b = LoadLanes(from + kLanes);
    const Lanes c = LoadLanes(from + 2 * kLanes);
    return {Component<0>(a, b, c, kEach), Component<1>(a, b, c, kEach),
            Component<2>(a, b, c, kEach)};
}

inline void StoreTriples(double* to, const Triples& t, bool streams) {
    const Lanes vectors[3] = {Part<0>(t, kEach), Part<1>(t, kEach), Part<2>(t, kEach)};
    for (int i = 0; i < 3; ++i) {
        if (streams) {
            StreamLanes(to + i * kLanes, vectors[i]);
        } else {
            StoreLanes(to + i * kLanes, vectors[i]);
        }
    }
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
