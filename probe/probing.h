// SPDX-License-Identifier: MIT
#pragma once

#include "probe/arguments.h"
#include "probe/scene.h"

#include <kvgeom/boxes/box.h>
#include <kvgeom/volumes/bore_line.h>

#include <array>
#include <cstddef>
#include <optional>
#include <vector>

namespace kvprobe {

enum class Relation { kMayTouch, kInside, kCrosses, kRangeMeets };

/// An object that was found.
struct Hit {
    size_t object;  ///< its index
    Relation relation;
    size_t leg = 0;     ///< of a pipe: the index of the leg,
    double enters = 0;  ///< where the object's box begins along the leg, from the leg's begin,
    double leaves = 0;  ///< and where it ends

    double Length() const { return leaves - enters; }
};

using Segment = std::array<GPosition, 2>;
using Ring = std::vector<GPosition>;

/// A probe's shape, for drawing: planar closed rings and the edges between them.
struct Shape {
    std::vector<Ring> rings;
    std::vector<Segment> edges;
};

/// The model from above.
struct Plan {
    UpAxis up;
    std::vector<GBox2d> boxes;  ///< of all objects
    std::optional<GBox2d> window;
};

struct Findings {
    std::vector<GBoreLine> legs;  ///< of a pipe
    Shape shape;                  ///< of any other probe
    std::optional<GBox> range;    ///< of a cone, frustum or prism
    std::optional<Plan> plan;
    Sieving sieving;
    std::vector<Hit> hits;  ///< a pipe's leg by leg, sorted by where they are entered
};

/// Carries out the request. Of a pipe, the boxes count enlarged by its radius, and what lies beyond
/// the ends of a leg is cut off. The boxes of all objects are tested in batches in the coordinates
/// of the model; those that pass are tested one by one in their own coordinates, where they are
/// tighter.
Findings Probe(const Request& request, const Scene& scene);

/// How many different objects the hits are of.
size_t CountFound(const std::vector<Hit>& hits);

}  // namespace kvprobe
