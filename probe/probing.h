// SPDX-License-Identifier: MIT
#pragma once

#include "probe/arguments.h"
#include "probe/model.h"

#include <kvgeom/volumes/bore_line.h>

#include <cstddef>
#include <vector>

namespace kvprobe {

/// An object that a leg may touch.
struct Hit {
    size_t leg;     ///< index of the leg
    size_t object;  ///< index of the object
    double enters;  ///< where the object's box begins along the leg, from the leg's begin
    double leaves;  ///< and where it ends

    double Length() const { return leaves - enters; }
};

/// The probe: one bore line for each leg of the route, or the line without ends.
std::vector<GBoreLine> Legs(const Arguments& arguments);

/// Every object that a leg may touch, leg by leg, sorted by where it is entered. The boxes count
/// enlarged by the radius of the probe; what lies beyond the ends of the leg is cut off.
std::vector<Hit> Probe(const std::vector<GBoreLine>& legs, const std::vector<Object>& objects);

/// How many different objects the hits are of.
size_t CountTouched(const std::vector<Hit>& hits);

}  // namespace kvprobe
