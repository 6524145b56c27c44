// SPDX-License-Identifier: MIT
#pragma once

#include <kvgeom/boxes/box.h>
#include <kvgeom/export.h>

// Many boxes united in one call. The box around many points is BuildBox(count, points) of
// boxes/box.h.

/// The union of the boxes, one after the other by operator|: null boxes take no part, and without
/// any other the result is the canonical null box. For a count of 0, boxes may be null.
KVGEOM_API GBox UniteBoxes(const GBox* boxes, unsigned long count);
