// SPDX-License-Identifier: MIT
#pragma once

#include <kvgeom/points/position.h>
#include <kvgeom/points/unit_vector.h>

#include <optional>
#include <string>
#include <vector>

namespace kvprobe {

enum class UpAxis { kY, kZ };

/// A line without ends, instead of a route.
struct Line {
    GPosition through;
    GUnitVector along;
};

/// The command line, checked.
struct Arguments {
    std::string model;
    bool list = false;
    bool json = false;
    std::string svg;               ///< empty: no drawing
    UpAxis up = UpAxis::kY;        ///< of the drawing
    double radius = 0.0;           ///< finite, not negative
    std::vector<GPosition> route;  ///< empty, or two or more points, neighbours apart
    std::optional<Line> line;
};

/// Reads the command line. Throws Failure for what is malformed. Returns nothing when the program
/// has no more to do (--help, --version): the text is then printed.
std::optional<Arguments> ParseArguments(int argc, char** argv);

}  // namespace kvprobe
