// SPDX-License-Identifier: MIT
#pragma once

// The kernels that map records. Sums run from left to right, as in points/mapping.cpp.

#include <kvgeom/batch/lanes.h>
#include <kvgeom/boxes/box_mapping.h>
#include <kvgeom/kernel/constants.h>
#include <kvgeom/points/mapping.h>

namespace kvgeom::detail {
namespace {

// Three rows of three, of whichever map.
struct LinearRows {
    double m[3][3];
};

inline LinearRows RowsOf(const GMatrix& matrix) {
    LinearRows rows;
    __builtin_memcpy(rows.m, matrix.m_elements, sizeof rows.m);
    return rows;
}

inline LinearRows RowsOf(const G4x4& a) {
    const double* const m = a.m_matrix;
    return {{{m[0], m[1], m[2]}, {m[4], m[5], m[6]}, {m[8], m[9], m[10]}}};
}

inline Triples RowForm(const Triples& v, const LinearRows& rows) {
    const auto& m = rows.m;
    return {v.x * m[0][0] + v.y * m[1][0] + v.z * m[2][0],
            v.x * m[0][1] + v.y * m[1][1] + v.z * m[2][1],
            v.x * m[0][2] + v.y * m[1][2] + v.z * m[2][2]};
}

inline Triples Scaled(const Triples& v, double s) {
    return {v.x * s, v.y * s, v.z * s};
}
inline Triples Scaled(const Triples& v, Lanes s) {
    return {v.x * s, v.y * s, v.z * s};
}
inline Triples Moved(const Triples& v, double x, double y, double z) {
    return {v.x + x, v.y + y, v.z + z};
}

// Each group of records through a map of lanes.
template <class Record, class Map>
void MapGroups(const Record* records, unsigned long count, Record* images, Map map) {
    const bool streams = ShallStream(records, count, images);
    const auto map_group = [=](const Record* in, Record* out) {
        Store(out, map(Load(in)), streams && IsAligned(out));
        return true;
    };
    ForGroups(records, count, images, images, map_group, [](const Record*, unsigned, Record*) {});
    EndStreaming();
}

// Not inlined into kernels, which shall not grow by what is rarely needed.
template <class Record, class Map>
[[gnu::noinline]] void MapEach(const Record* records, unsigned n, Record* images, const Map& map) {
    for (unsigned i = 0; i < n; ++i) {
        Record image = records[i];
        image *= map;
        images[i] = image;
    }
}

// The same where the map of lanes may refuse some: then the single operation takes the group's
// elements one by one.
template <class Record, class LanesMap, class Map>
void MapGroupsOrEach(const Record* records, unsigned long count, Record* images, LanesMap lanes_map,
                     const Map& map) {
    const bool streams = ShallStream(records, count, images);
    const auto map_group = [=](const Record* in, Record* out) {
        decltype(Load(in)) image;
        if (!AreAll(lanes_map(Load(in), image))) {
            return false;
        }
        Store(out, image, streams && IsAligned(out));
        return true;
    };
    ForGroups(records, count, images, images, map_group,
              [&map](const Record* in, unsigned n, Record* out) { MapEach(in, n, out, map); });
    EndStreaming();
}

[[gnu::flatten]] void MapPositionsByMatrix(const GMatrix& matrix, const GPosition* positions,
                                           unsigned long count, GPosition* images) {
    const LinearRows rows = RowsOf(matrix);
    MapGroups(positions, count, images, [=](const Triples& p) { return RowForm(p, rows); });
}

[[gnu::flatten]] void MapPositionsByTransf(const GTransf& t, const GPosition* positions,
                                           unsigned long count, GPosition* images) {
    const LinearRows rows = RowsOf(t.m_matrix);
    const double s = t.m_scaling;
    const GVector v = t.m_translation;
    MapGroups(positions, count, images, [=](const Triples& p) {
        return Moved(Scaled(RowForm(p, rows), s), v.m_x, v.m_y, v.m_z);
    });
}

[[gnu::flatten]] void MapVectorsByTransf(const GTransf& t, const GVector* vectors,
                                         unsigned long count, GVector* images) {
    const LinearRows rows = RowsOf(t.m_matrix);
    const double s = t.m_scaling;
    MapGroups(vectors, count, images,
              [=](const Triples& v) { return Scaled(RowForm(v, rows), s); });
}

// The weight of points, and of vectors with the same coordinates.
inline Lanes Weight(const Triples& p, const G4x4& a) {
    const double* const m = a.m_matrix;
    return p.x * m[3] + p.y * m[7] + p.z * m[11] + m[15];
}

inline Triples Moved(const Triples& p, const G4x4& a) {
    return Moved(p, a.m_matrix[12], a.m_matrix[13], a.m_matrix[14]);
}

inline unsigned BitsOfWeights(Lanes weight) {
    return BitsAtMost(All(kSmallestDivisor), Magnitude(weight));
}

inline bool HasNoProjection(const G4x4& a) {
    return a.m_matrix[3] == 0.0 && a.m_matrix[7] == 0.0 && a.m_matrix[11] == 0.0 &&
           a.m_matrix[15] == 1.0;
}

[[gnu::flatten]] void MapPositionsByG4x4(const G4x4& map, const GPosition* positions,
                                         unsigned long count, GPosition* images) {
    const G4x4 a = map;
    const LinearRows rows = RowsOf(a);
    if (HasNoProjection(a)) {
        // The weight of a finite point is exactly 1.
        const auto map_affine = [=](const Triples& p, Triples& image) {
            image = Moved(RowForm(p, rows), a);
            // Something infinite or NaN in p, or the products with it, stay in every sum.
            return BitsFinite(image.x);
        };
        MapGroupsOrEach(positions, count, images, map_affine, a);
        return;
    }
    const auto project = [=](const Triples& p, Triples& image) {
        const Lanes weight = Weight(p, a);
        image = Scaled(Moved(RowForm(p, rows), a), 1 / weight);
        return BitsOfWeights(weight);
    };
    MapGroupsOrEach(positions, count, images, project, a);
}

[[gnu::flatten]] void MapVectorsByG4x4(const G4x4& map, const GVector* vectors, unsigned long count,
                                       GVector* images) {
    const G4x4 a = map;
    const LinearRows rows = RowsOf(a);
    const auto project = [=](const Triples& v, Triples& image) {
        const Lanes weight = Weight(v, a);
        image = Scaled(RowForm(v, rows), 1 / weight);
        return BitsOfWeights(weight);
    };
    MapGroupsOrEach(vectors, count, images, project, a);
}

// The unit vectors along v, but for those of null length.
inline unsigned Normalise(const Triples& v, Triples& direction) {
    const Lanes squared_length = v.x * v.x + v.y * v.y + v.z * v.z;
    const Lanes length = SquareRoot(squared_length);
    const Mask is_unit = (kUnitBandLow <= squared_length) & (squared_length <= kUnitBandHigh);
    const Triples scaled = Scaled(v, 1 / length);
    direction = {is_unit ? v.x : scaled.x, is_unit ? v.y : scaled.y, is_unit ? v.z : scaled.z};
    return ~BitsAtMost(length, All(kUnitTolerance));
}

[[gnu::flatten]] void MapUnitVectorsByMatrix(const GMatrix& matrix, const GUnitVector* directions,
                                             unsigned long count, GUnitVector* images) {
    const GMatrix m = matrix;
    const LinearRows rows = RowsOf(m);
    const auto map = [=](const Triples& u, Triples& image) {
        return Normalise(RowForm(u, rows), image);
    };
    MapGroupsOrEach(directions, count, images, map, m);
}

[[gnu::flatten]] void MapUnitVectorsByG4x4(const G4x4& matrix, const GUnitVector* directions,
                                           unsigned long count, GUnitVector* images) {
    const G4x4 a = matrix;
    const LinearRows rows = RowsOf(a);
    const auto map = [=](const Triples& u, Triples& image) {
        const Lanes weight = Weight(u, a);
        return Normalise(Scaled(RowForm(u, rows), 1 / weight), image) & BitsOfWeights(weight);
    };
    MapGroupsOrEach(directions, count, images, map, a);
}

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

// Whether a box and the extremes that it was mapped to are finite. What isn't in the low corner
// stays in the sums of the smaller products, which begin with it.
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

[[gnu::flatten]] void MapBoxesByG4x4(const G4x4& map, const GBox* boxes, unsigned long count,
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
