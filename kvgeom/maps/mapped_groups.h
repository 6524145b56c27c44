// SPDX-License-Identifier: MIT
#pragma once

// What the vector code that maps records of any kind has in common.

#include <kvgeom/maps/g4x4.h>
#include <kvgeom/maps/matrix.h>
#include <kvgeom/vectors/groups.h>

namespace kvgeom::detail {
namespace {

// The linear part of any map: three rows of three.
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
inline Triples Moved(const Triples& p, const G4x4& a) {
    return Moved(p, a.m_matrix[12], a.m_matrix[13], a.m_matrix[14]);
}

// Maps the records group by group, by a map of lanes.
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

// Not inlined: it is rarely needed, and would make the loops larger.
template <class Record, class Map>
[[gnu::noinline]] void MapEach(const Record* records, unsigned n, Record* images, const Map& map) {
    for (unsigned i = 0; i < n; ++i) {
        Record image = records[i];
        image *= map;
        images[i] = image;
    }
}

// The same for a map of lanes that may refuse some elements: then the single operation maps all of
// that group, one by one.
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

}  // namespace
}  // namespace kvgeom::detail
