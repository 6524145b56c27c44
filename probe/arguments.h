// SPDX-License-Identifier: MIT
#pragma once

#include "probe/scene.h"

#include <kvgeom/boxes/box2d.h>
#include <kvgeom/boxes/clip_volume.h>
#include <kvgeom/points/position.h>
#include <kvgeom/points/unit_vector.h>

#include <cstddef>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace kvprobe {

/// Lists the objects of the model.
struct ListRequest {};

/// A pipe along a route of two or more points, neighbours apart.
struct RouteRequest {
    std::vector<GPosition> route;
    double radius;  ///< not negative
};

/// A pipe without ends.
struct LineRequest {
    GPosition through;
    GUnitVector along;
    double radius;  ///< not negative
};

/// A closed polygon, convex for a fence, between two depths along the direction, back <= front,
/// measured from the polygon's plane.
struct PolygonRequest {
    std::vector<GPosition> polygon;  ///< the first point repeated at the end
    GUnitVector direction;
    double front;
    double back;
};

struct FenceRequest : PolygonRequest {};
struct PrismRequest : PolygonRequest {};

struct FrustumRequest : PolygonRequest {
    GPosition eye;  ///< not between the front and the back plane
};

struct WindowRequest {
    GClipVolume volume;
};

struct ConeRequest {
    GPosition point;
    GUnitVector direction;
    double front;
    double back;
    double radius;  ///< not negative
    GPosition eye;  ///< not between the front and the back plane
};

/// The model seen from above, in its two level coordinates: x and z if y points up, else x and y.
struct PlanRequest {
    UpAxis up;
    std::optional<GBox2d> window;
};

using Request = std::variant<ListRequest, RouteRequest, LineRequest, FenceRequest, WindowRequest,
                             ConeRequest, FrustumRequest, PrismRequest, PlanRequest>;

/// The command line, checked.
struct Arguments {
    std::string model;
    bool json = false;
    std::string svg;         ///< empty: no drawing
    UpAxis up = UpAxis::kY;  ///< of the drawing, the plan and the grid of copies
    size_t copies = 1;       ///< of the model
    Request request;
};

/// Reads the command line. Throws Failure for what is malformed. Returns nothing when the program
/// has no more to do (--help, --version): the text is then printed.
std::optional<Arguments> ParseArguments(int argc, char** argv);

struct OptionUsage {
    std::vector<std::string> names;  ///< with their dashes, the short one first
    std::string value;               ///< FILE, NUMBER, X,Y,Z, or words like y|z; empty for a flag
    std::string description;
};

struct CommandUsage {
    std::string name;
    std::string summary;
    std::string description;
    std::vector<OptionUsage> options;
};

struct Usage {
    std::vector<CommandUsage> commands;
    std::string exit_status;
};

/// What ParseArguments takes, for the manual page and the shells' completion.
Usage DescribeUsage();

}  // namespace kvprobe
