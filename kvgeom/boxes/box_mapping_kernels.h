// SPDX-License-Identifier: MIT
#pragma once

// The vector code that maps boxes.

#include <kvgeom/boxes/box_lanes.h>
#include <kvgeom/boxes/box_mapping.h>
#include <kvgeom/boxes/kernels.h>
#include <kvgeom/maps/mapped_groups.h>

namespace kvgeom::detail {
namespace {

struct Extremes {
    Lanes low;
    Lanes high;
};

// As for a single box: per axis, the sums of the smaller and of the larger products.
inline Extremes ExtremesOfSum(const Corners& box, double a, double b, double c) {
    const Lanes x[2] = {box.low.x * a, box.high.x * a};
    const Lanes y[2] = {box.low.y * b, box.high.y * b};
    const Lanes z[2] = {box.low.z * c, box.high.z * c};
    return {Smaller(x[0], x[1]) + Smaller(y[0], y[1]) + Smaller(z[0], z[1]),
            Larger(x[0], x[1]) + Larger(y[0], y[1]) + Larger(z[0], z[1])};
}

inline Corners MapExtremes(const Corners& box, const LinearRows& rows) {
    const auto& m = rows.m;
    const Extremes x = ExtremesOfSum(box, m[0][0], m[1][0], m[2][0]);
    const Extremes y = ExtremesOfSum(box, m[0][1], m[1][1], m[2][1]);
    const Extremes z = ExtremesOfSum(box, m[0][2], m[1][2], m[2][2]);
    return {{x.low, y.low, z.low}, {x.high, y.high, z.high}};
}

// Whether a box and the extremes that it was mapped to are finite. The low corner needs no test of
// its own: where it isn't finite, nor are the sums of the smaller products, which begin with it.
inline unsigned BitsFinite(const Corners& box, const Corners& image) {
    const Triples& h = box.high;
    return BitsFinite((image.low.x + image.low.y + image.low.z) +
                      (image.high.x + image.high.y + image.high.z) + (h.x + h.y + h.z));
}

[[gnu::flatten]] void MapBoxesByMatrix(const GMatrix& matrix, const GBox* boxes,
                                       unsigned long count, GBox* images) {
    const GMatrix m = matrix;
    if (m.IsIdentity()) {
        __builtin_memmove(images, boxes, count * sizeof(GBox));
        return;
    }
    const LinearRows rows = RowsOf(m);
    const auto map = [=](const Corners& box, Corners& image) {
        image = MapExtremes(box, rows);
        return BitsFinite(box, image);
    };
    MapGroupsOrEach(boxes, count, images, map, m);
}

[[gnu::flatten]] void MapBoxesByTransf(const GTransf& transf, const GBox* boxes,
                                       unsigned long count, GBox* images) {
    const GTransf t = transf;
    const LinearRows rows = RowsOf(t.m_matrix);
    const double s = t.m_scaling;
    const GVector v = t.m_translation;
    const bool keeps_order = s > 0;
    const auto scale = [=](const Corners& box) -> Corners {
        return {Scaled(keeps_order ? box.low : box.high, s),
                Scaled(keeps_order ? box.high : box.low, s)};
    };
    const auto move = [=](const Corners& box) -> Corners {
        return {Moved(box.low, v.m_x, v.m_y, v.m_z), Moved(box.high, v.m_x, v.m_y, v.m_z)};
    };
    if (t.m_matrix.IsIdentity()) {
        MapGroups(boxes, count, images, [=](const Corners& box) { return move(scale(box)); });
        return;
    }
    const auto map = [=](const Corners& box, Corners& image) {
        const Corners scaled = scale(box);
        const Corners turned = MapExtremes(scaled, rows);
        image = move(turned);
        return BitsFinite(scaled, turned);
    };
    MapGroupsOrEach(boxes, count, images, map, t);
}

[[gnu::flatten]] void MapBoxesByAffine4x4(const G4x4& map, const GBox* boxes, unsigned long count,
                                          GBox* images) {
    const G4x4 a = map;
    const LinearRows rows = RowsOf(a);
    const auto map_affine = [=](const Corners& box, Corners& image) {
        const Corners turned = MapExtremes(box, rows);
        image = {Moved(turned.low, a), Moved(turned.high, a)};
        return BitsFinite(box, image);
    };
    MapGroupsOrEach(boxes, count, images, map_affine, a);
}

}  // namespace
}  // namespace kvgeom::detail
