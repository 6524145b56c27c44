// SPDX-License-Identifier: MIT
#pragma once

#include <kvgeom/boxes/box.h>
#include <kvgeom/maps/g4x4.h>

#include <string>
#include <vector>

namespace kvprobe {

/// A node of the model that bears meshes.
struct Object {
    std::string name;  ///< unique in the model
    GBox box;          ///< around its points, in its own coordinates
    G4x4 placement;    ///< invertible; placement * p is the point p of the object in the model
};

/// Reads the objects of a model file, in the order of the file's nodes. Throws Failure when the
/// file can't be read or holds no meshes.
std::vector<Object> ReadModel(const std::string& path);

/// The box around an object's box, in the coordinates of the model.
GBox ModelBox(const Object& object);

}  // namespace kvprobe
