// SPDX-License-Identifier: MIT
#include <kvgeom/boxes/box.h>
#include <kvgeom/boxes/box2d.h>
#include <kvgeom/kernel/assertion_hook.h>
#include <kvgeom/kernel/tolerance_state.h>

#include <cmath>

using namespace kvgeom::detail;

// Both corners are looked at here, so that one message tells of both.
GBox2d GBox::Convert2d() const {
    const double dist = DistanceTolerance();
    if (std::fabs(m_low.m_z) > dist || std::fabs(m_high.m_z) > dist) {
        Gassert_debug("Convert2d: GBox z coordinate > distanceTolerance");
    }
    return {{m_low.m_x, m_low.m_y}, {m_high.m_x, m_high.m_y}};
}

void GBox::Convert3d(const GBox2d& b) {
    m_low.Convert3d(b.m_low);
    m_high.Convert3d(b.m_high);
}
