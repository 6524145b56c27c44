// SPDX-License-Identifier: MIT
#pragma once

// What the records with a caller's array of points (a closed profile) have in common.

#include <kvgeom/boxes/box.h>
#include <kvgeom/boxes/fixed_boxes.h>
#include <kvgeom/kernel/tolerance_state.h>
#include <kvgeom/volumes/scratch.h>

#include <cstring>
#include <limits>

namespace kvgeom::detail {

// A profile of up to this many points has its range computed without the heap.
constexpr unsigned long kMostFixedPoints = 100;

constexpr GBox kZeroBox = {{0, 0, 0}, {0, 0, 0}};

// Whether the first and the last point are the same, to the distance tolerance.
inline bool IsClosed(const GPosition* points, unsigned long count) {
    return !(GDistance(points[0], points[count - 1]) > DistanceTolerance());
}

// Copies points between arrays that may overlap; a null array has no points and no room.
inline void CopyPoints(const GPosition* from, unsigned long count, GPosition* to) {
    if (count != 0 && from != nullptr && to != nullptr) {
        std::memmove(to, from, count * sizeof(GPosition));
    }
}

// The box around the two images of each point. both(point, front, back) writes them; where it
// returns false, the point has no images, and the box is all of space. Without memory it is the
// zero box. A null array has no points.
template <class BothImages>
GBox RangeOfImages(const GPosition* points, unsigned long count, BothImages both) {
    const unsigned long n = points == nullptr ? 0 : count;
    if (n > std::numeric_limits<unsigned long>::max() / 2) {
        return kZeroBox;
    }
    Scratch<GPosition, 2 * kMostFixedPoints> images(2 * n);
    if (images.Get() == nullptr) {
        return kZeroBox;
    }
    for (unsigned long i = 0; i < n; ++i) {
        if (!both(points[i], images.Get()[i], images.Get()[n + i])) {
            return kGAllSpaceBox;
        }
    }
    return BuildBox(2 * n, images.Get());
}

}  // namespace kvgeom::detail
