// SPDX-License-Identifier: MIT
#pragma once

#include "probe/probing.h"

namespace kvprobe {

/// The edges of a clip volume, as far as they lie near the model.
Shape ShapeOf(const GClipVolume& volume, const std::vector<Object>& objects);

/// The box around all objects, in the model.
GBox BoxAround(const std::vector<Object>& objects);

}  // namespace kvprobe
