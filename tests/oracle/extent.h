// SPDX-License-Identifier: MIT
#pragma once

#include "tests/oracle/ledger.h"

namespace kvgeom::test {

/// A box as its low and high corner.
template <std::size_t n>
using Extent = std::array<Vec<n>, 2>;

template <std::size_t n>
Extent<n> ExtentOf(const std::vector<Vec<n>>& points) {
    Extent<n> box = {points[0], points[0]};
    for (const Vec<n>& p : points) {
        for (std::size_t i = 0; i < n; ++i) {
            box[0][i] = Min(box[0][i], p[i]);
            box[1][i] = Max(box[1][i], p[i]);
        }
    }
    return box;
}
template <std::size_t n>
std::vector<Vec<n>> Corners(const Extent<n>& box) {
    std::vector<Vec<n>> corners(std::size_t{1} << n);
    for (std::size_t k = 0; k < corners.size(); ++k) {
        for (std::size_t i = 0; i < n; ++i) {
            corners[k][i] = box[k >> i & 1U][i];
        }
    }
    return corners;
}
/// The box around the images of points.
template <std::size_t n, class Map>
Extent<n> ExtentOf(std::vector<Vec<n>> points, Map map) {
    for (Vec<n>& p : points) {
        p = map(p);
    }
    return ExtentOf(points);
}
inline Extent<3> Exact(const GBox& box) {
    return {Exact(box.m_low), Exact(box.m_high)};
}
inline Extent<2> Exact(const GBox2d& box) {
    return {Exact(box.m_low), Exact(box.m_high)};
}
/// The box with r more on every side.
inline Extent<3> Enlarged(const GBox& box, double r) {
    const Vec<3> all = {r, r, r};
    return {Exact(box.m_low) - all, Exact(box.m_high) + all};
}

}  // namespace kvgeom::test
