// SPDX-License-Identifier: MIT
#include <kvgeom/kernel/assertion_hook.h>
#include <kvgeom/kernel/constants.h>
#include <kvgeom/kernel/coordinate.h>
#include <kvgeom/kernel/validity.h>
#include <kvgeom/points/unit_vector.h>

#include <cmath>

using namespace kvgeom::detail;

void Gassert_valid(const GUnitVector& u) {
    if (IsInvalidCoordinate(u.m_x) || IsInvalidCoordinate(u.m_y) || IsInvalidCoordinate(u.m_z)) {
        Gassert_debug("GUnitVector has an invalid coordinate");
        return;
    }
    const double squared_length = u.m_x * u.m_x + u.m_y * u.m_y + u.m_z * u.m_z;
    if (std::fabs(squared_length - 1) <= kUnitTolerance) {
        return;
    }
    Gassert_debug(std::sqrt(squared_length) >= kUnitTolerance
                      ? "GUnitVector: vector is not a unit vector"
                      : "GUnitVector: using a NULL unit vector");
}
