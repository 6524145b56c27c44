// SPDX-License-Identifier: MIT
#pragma once

// One volume against many boxes, one box against many: answers[i] is 1 or 0, what the single
// operator gives for boxes[i], and the number of 1s is returned. Messages are passed as by calls
// for one box after the other. NaN is answered as there. For a count of 0 the arrays may be null.
// Nothing is allocated for fences of up to 6 points.

#include <kvgeom/boxes/box.h>
#include <kvgeom/boxes/clip_volume.h>
#include <kvgeom/export.h>
#include <kvgeom/volumes/bore_line.h>
#include <kvgeom/volumes/pt_fence.h>

/// answers[i] = line && boxes[i]: 0 proves that the probe misses the box.
KVGEOM_API unsigned long IntersectBoxes(const GBoreLine& line, const GBox* boxes,
                                        unsigned long count, unsigned char* answers);
/// answers[i] = volume && boxes[i].
KVGEOM_API unsigned long IntersectBoxes(const GClipVolume& volume, const GBox* boxes,
                                        unsigned long count, unsigned char* answers);
/// answers[i] = fence && boxes[i].
KVGEOM_API unsigned long IntersectBoxes(const GPtFence& fence, const GBox* boxes,
                                        unsigned long count, unsigned char* answers);
/// answers[i] = box.IsIntersectTol(boxes[i], tol).
KVGEOM_API unsigned long IntersectBoxes(const GBox& box, double tol, const GBox* boxes,
                                        unsigned long count, unsigned char* answers);

/// answers[i] = volume >> boxes[i]: the box lies inside.
KVGEOM_API unsigned long ContainBoxes(const GClipVolume& volume, const GBox* boxes,
                                      unsigned long count, unsigned char* answers);
/// answers[i] = box >> boxes[i].
KVGEOM_API unsigned long ContainBoxes(const GBox& box, const GBox* boxes, unsigned long count,
                                      unsigned char* answers);
