// SPDX-License-Identifier: MIT
#pragma once

#include <kvgeom/boxes/box.h>
#include <kvgeom/export.h>
#include <kvgeom/points/position.h>
#include <kvgeom/volumes/bore_line.h>

/// A bore line seen from an eye point: the rays from the eye through the circle around the line's
/// point, between the bore line's front and back planes. The eye lies outside of the space between
/// these; nothing checks it when the cone is built.
struct tagGBoreCone {
    GBoreLine m_boreLine;  ///< the circle lies around its point
    GPosition m_eye;       ///< the tip of the cone

    /// Maps bore line and eye. A matrix is converted to a transformation first
    /// (GTransf::operator=(const G4x4&)).
    KVGEOM_API tagGBoreCone& operator*=(const GTransf& t);
    KVGEOM_API tagGBoreCone& operator*=(const G4x4& a);
};
typedef tagGBoreCone GBoreCone;

/// Fills a cone. Never fails: *err is 0; err must not be null.
KVGEOM_API void BuildBoreCone(const GBoreLine& line, const GPosition& eye, GBoreCone& cone,
                              long* err);

/// The box around the frustum of the square that circumscribes the circle, with sides along
/// GetPerpVector of the direction (PtFrustumRange).
KVGEOM_API GBox BoreConeRange(const GBoreCone& cone);
