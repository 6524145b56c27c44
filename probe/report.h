// SPDX-License-Identifier: MIT
#pragma once

#include "probe/arguments.h"
#include "probe/model.h"
#include "probe/probing.h"

#include <iosfwd>
#include <vector>

namespace kvprobe {

/// How long the parts of the work took, in seconds.
struct Times {
    double reading;
    double probing;
};

/// The objects and their boxes in the coordinates of the model, as a table or as JSON (which adds
/// the boxes in the objects' own coordinates and the placements).
void PrintList(std::ostream& out, const std::vector<Object>& objects, bool json);

/// The hits as a table and a line with the counts and times, or as JSON.
void PrintHits(std::ostream& out, const Arguments& arguments, const std::vector<GBoreLine>& legs,
               const std::vector<Object>& objects, const std::vector<Hit>& hits,
               const Times& times);

}  // namespace kvprobe
