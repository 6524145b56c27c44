// SPDX-License-Identifier: MIT
#pragma once

#include "probe/arguments.h"
#include "probe/model.h"
#include "probe/probing.h"

#include <iosfwd>
#include <vector>

namespace kvprobe {

/// Draws the model in an axonometric view as SVG: the boxes of all objects as thin wireframes,
/// those that were found filled and numbered, the probe as a tube or by its edges, and beside it
/// what the numbers name.
void Draw(std::ostream& out, const Arguments& arguments, const Scene& scene,
          const Findings& findings);

}  // namespace kvprobe
