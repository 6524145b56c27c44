// SPDX-License-Identifier: MIT
#pragma once

#include <kvgeom/boxes/box.h>
#include <kvgeom/boxes/clip_volume.h>
#include <kvgeom/points/position.h>
#include <kvgeom/points/unit_vector.h>
#include <kvgeom/volumes/bore_line.h>

#include <utility>
#include <vector>

namespace kvpictures {

/// A convex polygon, without its first point repeated.
using Ring = std::vector<GPosition>;

/// A convex body: its sides.
using Solid = std::vector<Ring>;

/// The centre of some points.
GPosition Mean(const Ring& ring);

/// A circle around a point, perpendicular to a direction.
Ring Circle(const GPosition& centre, const GUnitVector& direction, double radius);

Ring Moved(const Ring& ring, const GVector& by);

/// The body between two rings of as many points.
Solid Between(const Ring& back, const Ring& front);

Solid FromBox(const GBox& box);
Solid FromBoreLine(const GBoreLine& line);

/// What lies inside all planes of a limited volume.
Solid FromClipVolume(const GClipVolume& volume);

/// The box of a ring.
GBox Range(const Ring& ring);

}  // namespace kvpictures
