// SPDX-License-Identifier: MIT
#pragma once

// The planes of a volume, found once for the tests of many boxes or points.

#include <kvgeom/boxes/clip_volume_planes.h>
#include <kvgeom/boxes/kernels.h>
#include <kvgeom/volumes/pt_fence.h>
#include <kvgeom/volumes/scratch.h>

namespace kvgeom::detail {

// For tests of the corner of each box that lies furthest along the normal, or of the nearest one.
// False when a plane has no normal, which every single test reports anew.
bool FindTestedPlanes(const GClipVolume& volume, bool looks_at_furthest,
                      TestedPlane (&planes)[kMostPlanes]);

// Room for the planes of a fence; none without memory for them, or for a fence that has no planes.
class FencePlanes {
  public:
    explicit FencePlanes(const GPtFence& fence);

    bool HaveRoom();
    // For tests as of GPtFence::operator&&; false when a side has no normal.
    bool FindForBoxes();
    // For tests as of IsPtInPtFence; passes the messages of FindPlanes.
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
