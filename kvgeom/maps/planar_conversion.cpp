// SPDX-License-Identifier: MIT
#include <kvgeom/kernel/assertion_hook.h>
#include <kvgeom/kernel/tolerance_state.h>
#include <kvgeom/maps/transf.h>
#include <kvgeom/maps/transf2d.h>

#include <cmath>

using namespace kvgeom::detail;

GTransf2d GTransf::Convert2d() const {
    const double dist = DistanceTolerance();
    const auto& m = m_matrix.m_elements;
    if (std::fabs(m[0][2]) > dist || std::fabs(m[1][2]) > dist) {
        Gassert_debug("z coordinate of row 0 or row 1 > distanceTolerance");
    }
    if (std::fabs(m[2][0]) > dist || std::fabs(m[2][1]) > dist) {
        Gassert_debug("row 2 coordinates > distanceTolerance");
    }
    if (std::fabs(std::fabs(m[2][2]) - 1) > dist) {
        Gassert_debug("third coordinate in row 2 not 1.0");
    }
    return {{{{m[0][0], m[0][1]}, {m[1][0], m[1][1]}}},
            {m_translation.m_x, m_translation.m_y},
            m_scaling,
            m_hasRotation,
            m_hasReflection,
            m_hasShear};
}

void GTransf::Convert3d(const GTransf2d& g) {
    const auto& m = g.m_matrix.m_elements;
    m_matrix = {{{m[0][0], m[0][1], 0}, {m[1][0], m[1][1], 0}, {0, 0, 1}}};
    m_translation = {g.m_translation.m_x, g.m_translation.m_y, 0};
    m_scaling = g.m_scaling;
    m_hasRotation = g.m_hasRotation;
    m_hasReflection = g.m_hasReflection;
    m_hasShear = g.m_hasShear;
}
