// SPDX-License-Identifier: MIT
#pragma once

// The vector code that maps points, vectors and unit vectors. Sums run from left to right, as in
// mapping.cpp.

#include <kvgeom/kernel/constants.h>
#include <kvgeom/maps/kernels.h>
#include <kvgeom/maps/mapped_groups.h>
#include <kvgeom/maps/mapping.h>

namespace kvgeom::detail {
namespace {

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

inline unsigned BitsOfWeights(Lanes weight) {
    return BitsAtMost(All(kSmallestDivisor), Magnitude(weight));
}

// By an affine map. The weight of a finite point is exactly 1.
[[gnu::flatten]] void MapPositionsByAffine4x4(const G4x4& map, const GPosition* positions,
                                              unsigned long count, GPosition* images) {
    const G4x4 a = map;
    const LinearRows rows = RowsOf(a);
    const auto map_affine = [=](const Triples& p, Triples& image) {
        image = Moved(RowForm(p, rows), a);
        // Each coordinate of p is in every sum, so where one isn't finite, no sum is.
        return BitsFinite(image.x);
    };
    MapGroupsOrEach(positions, count, images, map_affine, a);
}

[[gnu::flatten]] void MapPositionsBy4x4(const G4x4& map, const GPosition* positions,
                                        unsigned long count, GPosition* images) {
    const G4x4 a = map;
    const LinearRows rows = RowsOf(a);
    const auto project = [=](const Triples& p, Triples& image) {
        const Lanes weight = Weight(p, a);
        image = Scaled(Moved(RowForm(p, rows), a), 1 / weight);
        return BitsOfWeights(weight);
    };
    MapGroupsOrEach(positions, count, images, project, a);
}

[[gnu::flatten]] void MapVectorsBy4x4(const G4x4& map, const GVector* vectors, unsigned long count,
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

[[gnu::flatten]] void MapUnitVectorsBy4x4(const G4x4& matrix, const GUnitVector* directions,
                                          unsigned long count, GUnitVector* images) {
    const G4x4 a = matrix;
    const LinearRows rows = RowsOf(a);
    const auto map = [=](const Triples& u, Triples& image) {
        const Lanes weight = Weight(u, a);
        return Normalise(Scaled(RowForm(u, rows), 1 / weight), image) & BitsOfWeights(weight);
    };
    MapGroupsOrEach(directions, count, images, map, a);
}

}  // namespace
}  // namespace kvgeom::detail
