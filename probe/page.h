// SPDX-License-Identifier: MIT
#pragma once

#include "probe/arguments.h"

#include <kvgeom/boxes/box.h>
#include <kvgeom/boxes/box2d.h>
#include <kvgeom/maps/transf.h>
#include <kvgeom/points/position2d.h>

#include <string>

namespace kvprobe {

// Sizes on the page, in pixels.
constexpr double kSceneWidth = 1120;
constexpr double kSceneHeight = 820;
constexpr double kMargin = 40;
constexpr double kTitleHeight = 70;

/// Turns the model to the eye: x to the right, y upwards, z towards it.
GTransf View(UpAxis up);

/// Where the scene is on the page, within its margins.
constexpr GBox2d kSceneFrame = {{kMargin, kTitleHeight + kMargin},
                                {kSceneWidth - kMargin, kTitleHeight + kSceneHeight - kMargin}};

/// The view, scaled and moved so that a box in it fills a frame on the page.
GTransf FitToPage(const GTransf& view, const GBox& bounds, const GBox2d& frame);

/// A length on the page.
std::string Pixels(double value);

/// A point of the view, seen on the page: without its depth.
GPosition2d OnPage(const GPosition& p);

/// A point on the page, as path data have it.
std::string PathPoint(const GPosition2d& p);
std::string PathPoint(const GPosition& p);

}  // namespace kvprobe
