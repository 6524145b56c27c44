// SPDX-License-Identifier: MIT
#pragma once

#include "probe/arguments.h"
#include "probe/model.h"
#include "probe/probing.h"

#include <iosfwd>
#include <string>
#include <vector>

namespace kvprobe {

/// How long the parts of the work took, in seconds.
struct Times {
    double reading;
    double probing;
};

/// The objects and their boxes in the coordinates of the model, as a table or as JSON (which adds
/// the boxes in the objects' own coordinates and the placements).
void PrintList(std::ostream& out, const Scene& scene, bool json);

/// The objects and their boxes in the plan, as a table or as JSON.
void PrintPlan(std::ostream& out, const Scene& scene, const Plan& plan, bool json);

/// What was found, as a table and a line with the counts and times, or as JSON.
void PrintFindings(std::ostream& out, const Arguments& arguments, const Scene& scene,
                   const Findings& findings, const Times& times);

/// A relation in words, as the object's: "inside".
const char* InWords(Relation relation);

/// What was found, in a sentence without its end: "6 of 110 objects may be touched".
std::string Summary(const Scene& scene, const Findings& findings);

/// The title of a drawing: the model's name, and what was found in it.
std::string Title(const Arguments& arguments, const Scene& scene, const Findings& findings);

}  // namespace kvprobe
