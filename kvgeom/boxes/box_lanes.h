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
    const Triples p = LoadTriples(from);
    const Triples q = LoadTriples(from + 3 * kLanes);
    return {{EverySecond<0>(p.x, q.x, kEach), EverySecond<0>(p.y, q.y, kEach),
             EverySecond<0>(p.z, q.z, kEach)},
            {EverySecond<1>(p.x, q.x, kEach), EverySecond<1>(p.y, q.y, kEach),
             EverySecond<1>(p.z, q.z, kEach)}};
}

inline void StoreCorners(double* to, const Corners& c, bool streams) {
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
}

template <>
struct InLanes<GBox> {
    static Corners Load(const double* from) { return LoadCorners(from); }
    static void Store(double* to, const Corners& c, bool streams) { StoreCorners(to, c, streams); }
};

}  // namespace
}  // namespace kvgeom::detail
