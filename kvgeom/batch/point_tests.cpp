// SPDX-License-Identifier: MIT
#include <kvgeom/batch/enlarged_box.h>
#include <kvgeom/batch/point_tests.h>
#include <kvgeom/batch/tested_planes.h>
#include <kvgeom/boxes/kernels.h>
#include <kvgeom/kernel/assertion_hook.h>
#include <kvgeom/volumes/kernels.h>

#include <algorithm>

using namespace kvgeom::detail;

unsigned long ClassifyPositions(const GBox& box, const GPosition* positions, unsigned long count,
                                unsigned char* answers) {
    return Chosen<BoxKernels>().box_holds_positions(Enlarged(box), positions, count, answers);
}

unsigned long ClassifyPositions(const GBoreLine& line, const GPosition* positions,
                                unsigned long count, unsigned char* answers) {
    return Chosen<BoreLineKernels>().bore_line_holds_positions(line, positions, count, answers);
}

unsigned long ClassifyPositions(const GClipVolume& volume, const GPosition* positions,
                                unsigned long count, unsigned char* answers) {
    TestedPlane planes[kMostPlanes];
    if (FindTestedPlanes(volume, true, planes)) {
        return Chosen<BoxKernels>().place_positions(planes,
                                                    static_cast<unsigned long>(PlaneCount(volume)),
                                                    DistanceTolerance(), positions, count, answers);
    }
    unsigned long inside = 0;
    for (unsigned long i = 0; i < count; ++i) {
        int place;
        long err;
        IsPtInClipVolume(volume, positions[i], &place, &err);
        answers[i] = static_cast<unsigned char>(place);
        inside += place == 1 ? 1 : 0;
    }
    return inside;
}

unsigned long ClassifyPositions(const GPtFence& fence, const GPosition* positions,
                                unsigned long count, unsigned char* answers) {
    FencePlanes planes(fence);
    if (planes.Count() != 0 && !planes.HaveRoom()) {
        Gassert_debug("PtFence: no memory");
        std::fill_n(answers, count, static_cast<unsigned char>(0));
        return 0;
    }
    if (planes.Count() != 0) {
        planes.FindForPositions();
    }
    return Chosen<BoxKernels>().planes_hold_positions(planes.Get(), planes.Count(), positions,
                                                      count, answers);
}
