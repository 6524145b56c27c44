// SPDX-License-Identifier: MIT
#pragma once

#include "probe/probing.h"

namespace kvprobe {

/// The edges of a clip volume, as far as they lie near the boxes.
Shape ShapeOf(const GClipVolume& volume, const std::vector<GBox>& boxes);

}  // namespace kvprobe
