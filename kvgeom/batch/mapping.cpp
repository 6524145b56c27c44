// SPDX-License-Identifier: MIT
#include <kvgeom/batch/mapping.h>
#include <kvgeom/boxes/box_mapping.h>
#include <kvgeom/boxes/kernels.h>
#include <kvgeom/maps/homogeneous_parts.h>
#include <kvgeom/maps/kernels.h>
#include <kvgeom/maps/mapping.h>
#include <kvgeom/maps/transposition.h>

using namespace kvgeom::detail;

void MapPositions(const GMatrix& map, const GPosition* positions, unsigned long count,
                  GPosition* images) {
    Chosen<MapKernels>().map_positions_by_matrix(map, positions, count, images);
}

void MapPositions(const GTransf& map, const GPosition* positions, unsigned long count,
                  GPosition* images) {
    Chosen<MapKernels>().map_positions_by_transf(map, positions, count, images);
}

void MapPositions(const G4x4& map, const GPosition* positions, unsigned long count,
                  GPosition* images) {
    const MapKernels& kernels = Chosen<MapKernels>();
    const auto map_each =
        IsExactlyAffine(map) ? kernels.map_positions_by_affine_4x4 : kernels.map_positions_by_4x4;
    map_each(map, positions, count, images);
}

void MapPositionsByColumns(const G4x4& map, const GPosition* positions, unsigned long count,
                           GPosition* images) {
    MapPositions(Transposed(map), positions, count, images);
}

// A matrix maps a vector as it maps the point with the same coordinates.
void MapVectors(const GMatrix& map, const GVector* vectors, unsigned long count, GVector* images) {
    Chosen<MapKernels>().map_positions_by_matrix(map, reinterpret_cast<const GPosition*>(vectors),
                                                 count, reinterpret_cast<GPosition*>(images));
}

void MapVectors(const GTransf& map, const GVector* vectors, unsigned long count, GVector* images) {
    Chosen<MapKernels>().map_vectors_by_transf(map, vectors, count, images);
}

void MapVectors(const G4x4& map, const GVector* vectors, unsigned long count, GVector* images) {
    Chosen<MapKernels>().map_vectors_by_4x4(map, vectors, count, images);
}

void MapVectorsByColumns(const G4x4& map, const GVector* vectors, unsigned long count,
                         GVector* images) {
    MapVectors(Transposed(map), vectors, count, images);
}

void MapUnitVectors(const GMatrix& map, const GUnitVector* directions, unsigned long count,
                    GUnitVector* images) {
    Chosen<MapKernels>().map_unit_vectors_by_matrix(map, directions, count, images);
}

void MapUnitVectors(const GTransf& map, const GUnitVector* directions, unsigned long count,
                    GUnitVector* images) {
    if (map.m_hasShear == 0) {
        MapUnitVectors(map.m_matrix, directions, count, images);
        return;
    }
    const GTransf t = map;  // a copy, for the images may be written over the map
    for (unsigned long i = 0; i < count; ++i) {
        images[i] = directions[i] * t;  // each passes the message
    }
}

void MapUnitVectors(const G4x4& map, const GUnitVector* directions, unsigned long count,
                    GUnitVector* images) {
    Chosen<MapKernels>().map_unit_vectors_by_4x4(map, directions, count, images);
}

void MapUnitVectorsByColumns(const GMatrix& map, const GUnitVector* directions, unsigned long count,
                             GUnitVector* images) {
    MapUnitVectors(map.Transpose(), directions, count, images);
}

void MapUnitVectorsByColumns(const G4x4& map, const GUnitVector* directions, unsigned long count,
                             GUnitVector* images) {
    MapUnitVectors(Transposed(map), directions, count, images);
}

void MapBoxes(const GMatrix& map, const GBox* boxes, unsigned long count, GBox* images) {
    Chosen<BoxKernels>().map_boxes_by_matrix(map, boxes, count, images);
}

void MapBoxes(const GTransf& map, const GBox* boxes, unsigned long count, GBox* images) {
    Chosen<BoxKernels>().map_boxes_by_transf(map, boxes, count, images);
}

void MapBoxes(const G4x4& map, const GBox* boxes, unsigned long count, GBox* images) {
    if (IsExactlyAffine(map)) {
        Chosen<BoxKernels>().map_boxes_by_affine_4x4(map, boxes, count, images);
        return;
    }
    const G4x4 a = map;
    for (unsigned long i = 0; i < count; ++i) {
        images[i] = a * boxes[i];
    }
}

void MapBoxesByColumns(const GMatrix& map, const GBox* boxes, unsigned long count, GBox* images) {
    MapBoxes(map.Transpose(), boxes, count, images);
}

void MapBoxesByColumns(const GTransf& map, const GBox* boxes, unsigned long count, GBox* images) {
    GTransf t = map;
    t.m_matrix = map.m_matrix.Transpose();
    MapBoxes(t, boxes, count, images);
}

void MapBoxesByColumns(const G4x4& map, const GBox* boxes, unsigned long count, GBox* images) {
    MapBoxes(Transposed(map), boxes, count, images);
}
