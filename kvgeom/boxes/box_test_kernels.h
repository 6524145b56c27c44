// SPDX-License-Identifier: MIT
#pragma once

// The vector code that tests many boxes or points against a box.

#include <kvgeom/boxes/box_lanes.h>
#include <kvgeom/boxes/kernels.h>
#include <kvgeom/vectors/groups.h>

namespace kvgeom::detail {
namespace {

[[gnu::flatten]] unsigned long BoxAndBoxes(const GBox& box, double tol, const GBox* boxes,
                                           unsigned long count, unsigned char* answers) {
    const GPosition low = box.m_low;
    const GPosition high = box.m_high;
    return TestGroups(boxes, count, answers, [=](const Corners& b) {
        return (Larger(All(low.m_x), b.low.x) < Smaller(All(high.m_x), b.high.x) + tol) &
               (Larger(All(low.m_y), b.low.y) < Smaller(All(high.m_y), b.high.y) + tol) &
               (Larger(All(low.m_z), b.low.z) < Smaller(All(high.m_z), b.high.z) + tol);
    });
}

inline Mask IsOutside(Lanes value, double low, double high) {
    return (high < value) | (low > value);
}
inline Mask IsOutside(const Triples& p, const GBox& box) {
    return IsOutside(p.x, box.m_low.m_x, box.m_high.m_x) |
           IsOutside(p.y, box.m_low.m_y, box.m_high.m_y) |
           IsOutside(p.z, box.m_low.m_z, box.m_high.m_z);
}

[[gnu::flatten]] unsigned long BoxHoldsBoxes(const GBox& enlarged, const GBox* boxes,
                                             unsigned long count, unsigned char* answers) {
    const GBox box = enlarged;
    return TestGroups(boxes, count, answers, [=](const Corners& b) {
        return ~(IsOutside(b.low, box) | IsOutside(b.high, box));
    });
}

[[gnu::flatten]] unsigned long BoxHoldsPositions(const GBox& enlarged, const GPosition* positions,
                                                 unsigned long count, unsigned char* answers) {
    const GBox box = enlarged;
    return TestGroups(positions, count, answers,
                      [=](const Triples& p) { return ~IsOutside(p, box); });
}

}  // namespace
}  // namespace kvgeom::detail
