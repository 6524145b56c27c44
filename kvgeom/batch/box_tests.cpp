// SPDX-License-Identifier: MIT
#include <kvgeom/batch/box_tests.h>
#include <kvgeom/batch/enlarged_box.h>
#include <kvgeom/batch/tested_planes.h>
#include <kvgeom/boxes/kernels.h>
#include <kvgeom/kernel/tolerance_state.h>
#include <kvgeom/volumes/kernels.h>

using namespace kvgeom::detail;

namespace {

// Tests one box after the other by the single operator, which passes its messages for each.
template <class Test>
unsigned long TestEach(const GBox* boxes, unsigned long count, unsigned char* answers, Test test) {
    unsigned long passed = 0;
    for (unsigned long i = 0; i < count; ++i) {
        const int answer = test(boxes[i]);
        answers[i] = static_cast<unsigned char>(answer);
        passed += answer != 0 ? 1 : 0;
    }
    return passed;
}

unsigned long TestAgainstVolume(const GClipVolume& volume, bool looks_at_furthest,
                                const GBox* boxes, unsigned long count, unsigned char* answers) {
    TestedPlane planes[kMostPlanes];
    if (!FindTestedPlanes(volume, looks_at_furthest, planes)) {
        return TestEach(boxes, count, answers, [&](const GBox& box) {
            return looks_at_furthest ? volume && box : volume >> box;
        });
    }
    return Chosen<BoxKernels>().planes_and_boxes(planes,
                                                 static_cast<unsigned long>(PlaneCount(volume)),
                                                 -DistanceTolerance(), boxes, count, answers);
}

}  // namespace

unsigned long IntersectBoxes(const GBoreLine& line, const GBox* boxes, unsigned long count,
                             unsigned char* answers) {
    const double enlargement = line.m_radius == 0.0 ? RelativeTolerance() : line.m_radius;
    return Chosen<BoreLineKernels>().bore_line_and_boxes(line, enlargement, boxes, count, answers);
}

unsigned long IntersectBoxes(const GClipVolume& volume, const GBox* boxes, unsigned long count,
                             unsigned char* answers) {
    return TestAgainstVolume(volume, true, boxes, count, answers);
}

unsigned long ContainBoxes(const GClipVolume& volume, const GBox* boxes, unsigned long count,
                           unsigned char* answers) {
    return TestAgainstVolume(volume, false, boxes, count, answers);
}

unsigned long IntersectBoxes(const GPtFence& fence, const GBox* boxes, unsigned long count,
                             unsigned char* answers) {
    FencePlanes planes(fence);
    if (!planes.HaveRoom() || !planes.FindForBoxes()) {
        return TestEach(boxes, count, answers, [&](const GBox& box) { return fence && box; });
    }
    return Chosen<BoxKernels>().planes_and_boxes(planes.Get(), planes.Count(), -DistanceTolerance(),
                                                 boxes, count, answers);
}

unsigned long IntersectBoxes(const GBox& box, double tol, const GBox* boxes, unsigned long count,
                             unsigned char* answers) {
    return Chosen<BoxKernels>().box_and_boxes(box, tol, boxes, count, answers);
}

unsigned long ContainBoxes(const GBox& box, const GBox* boxes, unsigned long count,
                           unsigned char* answers) {
    return Chosen<BoxKernels>().box_holds_boxes(Enlarged(box), boxes, count, answers);
}
