// SPDX-License-Identifier: MIT
#include "probe/window_shape.h"

#include <kvgeom/kvgeom.h>

namespace kvprobe {
namespace {

// How far around the model's box the edges are drawn, in diagonals of the box.
constexpr double kReach = 0.1;

GVector Normal(const double (&plane)[4]) {
    return {plane[0], plane[1], plane[2]};
}

// The line along which two planes meet, as far as it is near the box; null normals and parallel
// planes have none.
bool Intersect(const double (&a)[4], const double (&b)[4], const GBox& near, GBoreLine& line) {
    const GVector along = Normal(a) * Normal(b);
    const double square = along % along;
    if (square < GetRelativeTolerance()) {
        return false;
    }
    const GVector foot =
        (-a[3] / square) * (Normal(b) * along) + (-b[3] / square) * (along * Normal(a));
    line = BuildBoreLine({foot.m_x, foot.m_y, foot.m_z},
                         BuildUnitVector(along.m_x, along.m_y, along.m_z));
    // Clipping wants finite limits: distances are lost beside 1e30.
    const double middle = line.Evaluate(near.m_low);
    const double reach = GDistance(near.m_low, near.m_high);
    line.m_front = middle + reach;
    line.m_back = middle - reach;
    return true;
}

bool Clip(GBoreLine& line, const GClipVolume& volume, int but_not = -1, int nor = -1) {
    for (int k = 0; k < volume.m_count; ++k) {
        const auto& plane = volume.m_planes[k];
        if (k != but_not && k != nor &&
            line.ClipWPlane(plane[0], plane[1], plane[2], plane[3]) == 0) {
            return false;
        }
    }
    return true;
}

}  // namespace

Shape ShapeOf(const GClipVolume& volume, const std::vector<GBox>& boxes) {
    const GBox box = BoxAround(boxes);
    const double margin = kReach * GDistance(box.m_low, box.m_high);
    const GVector out = {margin, margin, margin};
    GBox around = {box.m_low - out, box.m_high + out};
    GClipVolume page;
    ConvertGBoxToGClipVolume(&around, &page);

    Shape shape;
    for (int i = 0; i < volume.m_count; ++i) {
        for (int j = i + 1; j < volume.m_count; ++j) {
            GBoreLine line;
            if (Intersect(volume.m_planes[i], volume.m_planes[j], around, line) &&
                Clip(line, volume, i, j) && Clip(line, page)) {
                shape.edges.push_back({line.Evaluate(line.m_back), line.Evaluate(line.m_front)});
            }
        }
    }
    return shape;
}

}  // namespace kvprobe
