// SPDX-License-Identifier: MIT
#pragma once

// Where many points lie: answers[i] is what the single operation gives for positions[i], and the
// number of 1s, of points inside, is returned. Messages are passed as by calls for one point after
// the other. NaN is answered as there. For a count of 0 the arrays may be null.

#include <kvgeom/boxes/box.h>
#include <kvgeom/boxes/clip_volume.h>
#include <kvgeom/export.h>
#include <kvgeom/volumes/bore_line.h>
#include <kvgeom/volumes/pt_fence.h>

/// answers[i] = box >> positions[i].
KVGEOM_API unsigned long ClassifyPositions(const GBox& box, const GPosition* positions,
                                           unsigned long count, unsigned char* answers);
/// answers[i] = line >> positions[i].
KVGEOM_API unsigned long ClassifyPositions(const GBoreLine& line, const GPosition* positions,
                                           unsigned long count, unsigned char* answers);
/// answers[i] = what IsPtInClipVolume tells: 1 inside, 0 outside, 2 on the boundary.
KVGEOM_API unsigned long ClassifyPositions(const GClipVolume& volume, const GPosition* positions,
                                           unsigned long count, unsigned char* answers);
/// answers[i] = what IsPtInPtFence tells with the planes that FindPlanes gives. Without memory for
/// the planes of a fence of more than 6 points, the message "PtFence: no memory", and 0 for all.
KVGEOM_API unsigned long ClassifyPositions(const GPtFence& fence, const GPosition* positions,
                                           unsigned long count, unsigned char* answers);
