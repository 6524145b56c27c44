// SPDX-License-Identifier: MIT
#pragma once

// Several boxes side by side, a box in each lane.

#include <kvgeom/boxes/box.h>
#include <kvgeom/vectors/triples.h>

namespace kvgeom::detail {
namespace {

struct Corners {
    Triples low;
    Triples high;
};

// In an array of boxes, low and high corners alternate.
inline Corners LoadCorners(const double* from) {
#if defined(__AVX512F__)
    const Triples p = LoadTriples(from);
    const Triples q = LoadTriples(from + 3 * kLanes);
    return {{EverySecond<0>(p.x, q.x, kEach), EverySecond<0>(p.y, q.y, kEach),
             EverySecond<0>(p.z, q.z, kEach)},
            {EverySecond<1>(p.x, q.x, kEach), EverySecond<1>(p.y, q.y, kEach),
             EverySecond<1>(p.z, q.z, kEach)}};
#else
    // Two boxes, each the pairs low x y, low z high x, high y z.
    const auto [p_xy, p_zx, p_yz, q_xy, q_zx, q_yz] = LoadPairs<6>(from).vectors;
    return {{Paired<0, 0>(p_xy, q_xy, kEach), Paired<1, 1>(p_xy, q_xy, kEach),
             Paired<0, 0>(p_zx, q_zx, kEach)},
            {Paired<1, 1>(p_zx, q_zx, kEach), Paired<0, 0>(p_yz, q_yz, kEach),
             Paired<1, 1>(p_yz, q_yz, kEach)}};
#endif
}

inline void StoreCorners(double* to, const Corners& c, bool streams) {
#if defined(__AVX512F__)
    StoreTriples(
        to,
        {Interleaved<0>(c.low.x, c.high.x, kEach), Interleaved<0>(c.low.y, c.high.y, kEach),
         Interleaved<0>(c.low.z, c.high.z, kEach)},
        streams);
    StoreTriples(
        to + 3 * kLanes,
        {Interleaved<1>(c.low.x, c.high.x, kEach), Interleaved<1>(c.low.y, c.high.y, kEach),
         Interleaved<1>(c.low.z, c.high.z, kEach)},
        streams);
#else
    StorePairs<6>(
        to,
        {{Paired<0, 0>(c.low.x, c.low.y, kEach), Paired<0, 0>(c.low.z, c.high.x, kEach),
          Paired<0, 0>(c.high.y, c.high.z, kEach), Paired<1, 1>(c.low.x, c.low.y, kEach),
          Paired<1, 1>(c.low.z, c.high.x, kEach), Paired<1, 1>(c.high.y, c.high.z, kEach)}},
        streams);
#endif
}

template <>
struct InLanes<GBox> {
    static Corners Load(const double* from) { return LoadCorners(from); }
    static void Store(double* to, const Corners& c, bool streams) { StoreCorners(to, c, streams); }
};

}  // namespace
}  // namespace kvgeom::detail
