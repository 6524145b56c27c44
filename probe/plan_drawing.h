// SPDX-License-Identifier: MIT
#pragma once

#include "probe/arguments.h"
#include "probe/model.h"
#include "probe/probing.h"

#include <iosfwd>
#include <vector>

namespace kvprobe {

/// Draws the model's plan as SVG: the boxes of all objects seen from above, on a grid of the
/// model's coordinates with a scale bar; with a window, this and the objects that were found,
/// numbered.
void DrawPlan(std::ostream& out, const Arguments& arguments, const Scene& scene,
              const Findings& findings);

}  // namespace kvprobe
