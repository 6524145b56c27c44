// SPDX-License-Identifier: MIT
#pragma once

// Many records mapped in one call. Each image is, bit for bit, what the single operator gives, and
// messages are passed as by calls for one record after the other; what is the same for all of them
// (a tolerance, the shape of the map) is looked at once. The images may be written over the records
// themselves, but not over parts of them; no alignment is wanted, and nothing is allocated. For a
// count of 0 the arrays may be null.
//
// Points and vectors are rows (maps/mapping.h): the row forms are what every *= computes.

#include <kvgeom/export.h>
#include <kvgeom/maps/g4x4.h>
#include <kvgeom/maps/matrix.h>
#include <kvgeom/maps/transf.h>
#include <kvgeom/points/position.h>
#include <kvgeom/points/unit_vector.h>
#include <kvgeom/points/vector.h>

typedef struct tagGBox GBox;

/// images[i] = positions[i] mapped by the row form: as positions[i] *= map.
KVGEOM_API void MapPositions(const GMatrix& map, const GPosition* positions, unsigned long count,
                             GPosition* images);
KVGEOM_API void MapPositions(const GTransf& map, const GPosition* positions, unsigned long count,
                             GPosition* images);
KVGEOM_API void MapPositions(const G4x4& map, const GPosition* positions, unsigned long count,
                             GPosition* images);
/// The column form: images[i] = positions[i] * map.
KVGEOM_API void MapPositionsByColumns(const G4x4& map, const GPosition* positions,
                                      unsigned long count, GPosition* images);

/// images[i] = vectors[i] mapped by the row form: as vectors[i] *= map.
KVGEOM_API void MapVectors(const GMatrix& map, const GVector* vectors, unsigned long count,
                           GVector* images);
KVGEOM_API void MapVectors(const GTransf& map, const GVector* vectors, unsigned long count,
                           GVector* images);
KVGEOM_API void MapVectors(const G4x4& map, const GVector* vectors, unsigned long count,
                           GVector* images);
/// The column form: images[i] = vectors[i] * map.
KVGEOM_API void MapVectorsByColumns(const G4x4& map, const GVector* vectors, unsigned long count,
                                    GVector* images);

/// images[i] = directions[i] mapped by the row form and normalised: as directions[i] *= map.
KVGEOM_API void MapUnitVectors(const GMatrix& map, const GUnitVector* directions,
                               unsigned long count, GUnitVector* images);
KVGEOM_API void MapUnitVectors(const GTransf& map, const GUnitVector* directions,
                               unsigned long count, GUnitVector* images);
KVGEOM_API void MapUnitVectors(const G4x4& map, const GUnitVector* directions, unsigned long count,
                               GUnitVector* images);
/// The column forms: images[i] = map * directions[i] by a GMatrix, directions[i] * map by a G4x4.
KVGEOM_API void MapUnitVectorsByColumns(const GMatrix& map, const GUnitVector* directions,
                                        unsigned long count, GUnitVector* images);
KVGEOM_API void MapUnitVectorsByColumns(const G4x4& map, const GUnitVector* directions,
                                        unsigned long count, GUnitVector* images);

/// images[i] = the box around boxes[i] mapped by the row form: as boxes[i] *= map.
KVGEOM_API void MapBoxes(const GMatrix& map, const GBox* boxes, unsigned long count, GBox* images);
KVGEOM_API void MapBoxes(const GTransf& map, const GBox* boxes, unsigned long count, GBox* images);
KVGEOM_API void MapBoxes(const G4x4& map, const GBox* boxes, unsigned long count, GBox* images);
/// The column forms: images[i] = map * boxes[i] by a GMatrix or GTransf, boxes[i] * map by a G4x4.
KVGEOM_API void MapBoxesByColumns(const GMatrix& map, const GBox* boxes, unsigned long count,
                                  GBox* images);
KVGEOM_API void MapBoxesByColumns(const GTransf& map, const GBox* boxes, unsigned long count,
                                  GBox* images);
KVGEOM_API void MapBoxesByColumns(const G4x4& map, const GBox* boxes, unsigned long count,
                                  GBox* images);
