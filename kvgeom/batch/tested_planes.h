// SPDX-License-Identifier: MIT
#pragma once

// The planes of a volume, found once for the tests of many boxes or points.

#include <kvgeom/boxes/clip_volume_planes.h>
#include <kvgeom/boxes/kernels.h>
#include <kvgeom/volumes/pt_fence.h>
#include <kvgeom/volumes/scratch.h>

namespace kvgeom::detail {

// Prepares the planes for tests of one corner of each box: the one furthest along the normal, or
// the nearest one. False when a plane has a null normal: then each single test passes a message.
bool FindTestedPlanes(const GClipVolume& volume, bool looks_at_furthest,
                      TestedPlane (&planes)[kMostPlanes]);

// The planes of a fence, in memory of their own.
class FencePlanes {
  public:
    explicit FencePlanes(const GPtFence& fence);

    // False when there is no memory for them, or when the fence has no planes.
    bool HaveRoom();
    // Finds them for tests as those of GPtFence::operator&&; false when a side has a null normal.
    bool FindForBoxes();
    // Finds them for tests as those of IsPtInPtFence, with the messages of FindPlanes.
    void FindForPositions();

    const TestedPlane* Get() { return m_tested.Get(); }
    unsigned long Count() const { return m_count; }

  private:
    // A fence of up to 6 points needs no heap.
    static constexpr unsigned long kMostFixed = 7;

    const GPtFence& m_fence;
    unsigned long m_count;
    Scratch<GPosition, kMostFixed> m_points;
    Scratch<GUnitVector, kMostFixed> m_normals;
    Scratch<TestedPlane, kMostFixed> m_tested;
};

}  // namespace kvgeom::detail
