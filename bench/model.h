// SPDX-License-Identifier: MIT
#pragma once

// What the libraries work on: the boxes and points of an imaginary plant of 100 m in metres, in no
// order, and the maps and volumes that meet them. The same in each run.

#include <kvgeom/boxes/box.h>
#include <kvgeom/boxes/clip_volume.h>
#include <kvgeom/maps/g4x4.h>
#include <kvgeom/maps/transf.h>
#include <kvgeom/volumes/bore_line.h>

#include <cstddef>
#include <vector>

namespace bench {

// A turned box that meets about a tenth of the boxes. Its sides are the planes of the clip volume
// and of the fence.
struct Room {
    GPosition centre;
    GMatrix axes;  // as rows
    double half[3];
};

struct Model {
    std::vector<GPosition> points;
    std::vector<GBox> boxes;
    // Empty beyond a million.
    std::vector<GTransf> first;
    std::vector<GTransf> second;
    std::vector<G4x4> matrices;
    GTransf transf;
    G4x4 affine;
    G4x4 projective;
    // From one side of the plant to the other: a segment, a ray and a line meet the same boxes.
    GBoreLine line;
    Room room;
    GClipVolume volume;
};

Model BuildModel(std::size_t count);
// With boxes and points in the order of x.
Model Sorted(const Model& model);

// The map of a record as the matrix that rows are multiplied by.
G4x4 MatrixOf(const GTransf& transf);

}  // namespace bench
