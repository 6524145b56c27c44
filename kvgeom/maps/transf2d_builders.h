// SPDX-License-Identifier: MIT
#pragma once

// Builders of common transformations of the plane. Angles are in radians, rotations counter-
// clockwise; the rows of a rotation are normalised, and a cosine or sine beyond 1 in magnitude
// passes the message of Rotation2d (matrix2d.h). The flags of a result are (rotation, reflection,
// shear).

#include <kvgeom/export.h>
#include <kvgeom/maps/transf2d.h>
#include <kvgeom/points/position2d.h>
#include <kvgeom/points/unit_vector2d.h>

/// Scaling about the origin, or about c. Any s is stored unchanged. Flags (0, 0, 0).
KVGEOM_API GTransf2d ScaleTransf2d(double s);
KVGEOM_API GTransf2d ScaleTransf2d(double s, const GPosition2d& c);

/// Rotation about the origin, or about p. Flags (1, 0, 0).
KVGEOM_API GTransf2d RotateTransf2d(double cosine, double sine);
KVGEOM_API GTransf2d RotateTransf2d(double angle);
KVGEOM_API GTransf2d RotateTransf2d(double cosine, double sine, const GPosition2d& p);
KVGEOM_API GTransf2d RotateTransf2d(double angle, const GPosition2d& p);

/// Reflection in the line along the given direction (not its normal) through the origin, or through
/// p. Flags (0, 1, 0).
KVGEOM_API GTransf2d ReflectTransf2d(const GUnitVector2d& direction);
KVGEOM_API GTransf2d ReflectTransf2d(const GUnitVector2d& direction, const GPosition2d& p);

/// Translation. Flags (0, 0, 0).
KVGEOM_API GTransf2d TranslateTransf2d(const GVector2d& v);

/// The placement of a local coordinate system: local (a, b) maps to origin + a x + b y. x is xAxis
/// as given, y the part of yAxis perpendicular to it, normalised. The frame keeps the handedness of
/// its axes: flags (1, 0, 0) when y lies counter-clockwise from x, else (0, 1, 0). Parallel axes
/// pass the message of BuildUnitVector2d and leave y null, with flags (0, 1, 0).
KVGEOM_API GTransf2d CoordinateTransf2d(const GPosition2d& origin, const GUnitVector2d& xAxis,
                                        const GUnitVector2d& yAxis);
