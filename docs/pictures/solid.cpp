// SPDX-License-Identifier: MIT
#include "docs/pictures/solid.h"

#include <kvgeom/kvgeom.h>

namespace kvpictures {
namespace {

constexpr int kCirclePoints = 72;
constexpr double kFullTurn = 6.283185307179586;

// A side of a clip volume begins as a square of this half-width, and is cut by the other planes.
constexpr double kFarAway = 100;

struct Plane {
    GUnitVector normal;
    GPosition foot;  // of the perpendicular from the origin

    explicit Plane(const double (&plane)[4])
        : normal(BuildUnitVector(plane[0], plane[1], plane[2])),
          foot(GPosition{0, 0, 0} - plane[3] * GVector(normal)) {}

    double Distance(const GPosition& p) const { return (p - foot) % normal; }
};

// What a plane leaves of a ring (Sutherland-Hodgman).
Ring Cut(const Ring& ring, const Plane& plane) {
    Ring result;
    for (size_t i = 0; i < ring.size(); ++i) {
        const GPosition& p = ring[i];
        const GPosition& q = ring[(i + 1) % ring.size()];
        const double at_p = plane.Distance(p);
        const double at_q = plane.Distance(q);
        if (at_p >= 0) {
            result.push_back(p);
        }
        if (at_p * at_q < 0) {
            result.push_back(Interpolate(at_p / (at_p - at_q), p, q));
        }
    }
    return result;
}

}  // namespace

GPosition Mean(const Ring& ring) {
    GVector sum = {0, 0, 0};
    for (const GPosition& p : ring) {
        sum += p - GPosition{0, 0, 0};
    }
    return GPosition{0, 0, 0} + sum / static_cast<double>(ring.size());
}

Ring Circle(const GPosition& centre, const GUnitVector& direction, double radius) {
    const GPosition first = centre + radius * GetPerpVector(direction);
    Ring ring;
    for (int i = 0; i < kCirclePoints; ++i) {
        ring.push_back(first * RotateTransf(kFullTurn * i / kCirclePoints, direction, centre));
    }
    return ring;
}

Ring Moved(const Ring& ring, const GVector& by) {
    Ring result(ring.size());
    MapPositions(TranslateTransf(by), ring.data(), ring.size(), result.data());
    return result;
}

Solid Between(const Ring& back, const Ring& front) {
    Solid solid = {back, front};
    for (size_t i = 0; i < back.size(); ++i) {
        const size_t next = (i + 1) % back.size();
        solid.push_back({back[i], back[next], front[next], front[i]});
    }
    return solid;
}

Solid FromBox(const GBox& box) {
    Ring corners(8);
    box.GiveCorners(corners.data());
    return Between(Ring(corners.begin(), corners.begin() + 4),
                   Ring(corners.begin() + 4, corners.end()));
}

Solid FromBoreLine(const GBoreLine& line) {
    const Ring back = Circle(line.Evaluate(line.m_back), line.m_direction, line.m_radius);
    return Between(back, Moved(back, (line.m_front - line.m_back) * line.m_direction));
}

Solid FromClipVolume(const GClipVolume& volume) {
    Solid solid;
    for (unsigned int k = 0; k < volume.m_count; ++k) {
        const Plane plane(volume.m_planes[k]);
        const GTransf in_plane = CoordinateTransf(plane.foot, plane.normal);
        Ring side;
        for (const auto& [x, y] : {std::pair{-1, -1}, {1, -1}, {1, 1}, {-1, 1}}) {
            side.push_back(GPosition{kFarAway * x, kFarAway * y, 0} * in_plane);
        }
        for (unsigned int other = 0; other < volume.m_count; ++other) {
            if (other != k) {
                side = Cut(side, Plane(volume.m_planes[other]));
            }
        }
        if (side.size() > 2) {
            solid.push_back(side);
        }
    }
    return solid;
}

GBox Range(const Ring& ring) {
    Ring points = ring;
    return BuildBox(points.size(), points.data());
}

}  // namespace kvpictures
