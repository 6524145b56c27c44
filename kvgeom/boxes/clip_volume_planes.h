// SPDX-License-Identifier: MIT
#pragma once

#include <kvgeom/boxes/clip_volume.h>

namespace kvgeom::detail {

constexpr int kMostPlanes = 6;
// The number of triples of six planes.
constexpr int kMostVertices = 20;

// The number of planes that a record really has, whatever its count says.
inline int PlaneCount(const GClipVolume& volume) {
    return volume.m_count < kMostPlanes ? volume.m_count : kMostPlanes;
}

inline GUnitVector PlaneNormal(const double (&plane)[4]) {
    return BuildUnitVector(plane[0], plane[1], plane[2]);
}

// The volume with its planes normalised: each divided by the length of its normal.
GClipVolume Normalised(const GClipVolume& volume);

// Writes the points where three planes meet on or in the volume, plane k going through points[k]
// with normal normals[k]; at most 20, in the order of the triples. Returns their number, 0 for
// fewer than three planes or a count above 6.
int ClipVolumeVertices(const GClipVolume& volume, const GPosition* points,
                       const GUnitVector* normals, GPosition (&vertices)[kMostVertices]);

}  // namespace kvgeom::detail
