// SPDX-License-Identifier: MIT
#include <kvgeom/batch/kernels.h>
#include <kvgeom/batch/unions.h>
#include <kvgeom/boxes/fixed_boxes.h>
#include <kvgeom/boxes/interval.h>
#include <kvgeom/kernel/assertion_hook.h>
#include <kvgeom/kernel/tolerance_state.h>

using namespace kvgeom::detail;

namespace {

// From so many points on, vectors pay.
constexpr unsigned long kManyPoints = 24;

}  // namespace

GBox BuildBox(unsigned long count, GPosition* points) {
    if (count == 0) {
        Gassert_debug("GBox: can't build with 0 points");
        return kNullBox;
    }
    if (count >= kManyPoints) {
        return g_kernels->box_of_positions(points, count);
    }
    GBox result = {points[0], points[0]};
    for (unsigned long i = 1; i < count; ++i) {
        const GPosition& p = points[i];
        Extend(result.m_low.m_x, result.m_high.m_x, p.m_x);
        Extend(result.m_low.m_y, result.m_high.m_y, p.m_y);
        Extend(result.m_low.m_z, result.m_high.m_z, p.m_z);
    }
    return result;
}

GBox UniteBoxes(const GBox* boxes, unsigned long count) {
    return g_kernels->unite_boxes(boxes, count, DistanceTolerance());
}
