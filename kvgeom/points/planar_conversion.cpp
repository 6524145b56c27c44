// SPDX-License-Identifier: MIT
#include <kvgeom/kernel/assertion_hook.h>
#include <kvgeom/kernel/tolerance_state.h>
#include <kvgeom/points/position.h>
#include <kvgeom/points/position2d.h>
#include <kvgeom/points/unit_vector.h>
#include <kvgeom/points/unit_vector2d.h>
#include <kvgeom/points/vector.h>
#include <kvgeom/points/vector2d.h>

#include <cmath>

using namespace kvgeom::detail;

namespace {

void ReportUnlessInPlane(double z, const char* message) {
    if (std::fabs(z) > DistanceTolerance()) {
        Gassert_debug(message);
    }
}

}  // namespace

GVector2d GVector::Convert2d() const {
    ReportUnlessInPlane(m_z, "Convert2d: Gvector z coordinate greater 0.0");
    return {m_x, m_y};
}

void GVector::Convert3d(const GVector2d& v) {
    *this = {v.m_x, v.m_y, 0.0};
}

GUnitVector2d GUnitVector::Convert2d() const {
    ReportUnlessInPlane(m_z, "Convert2d: GUnitvector z coordinate greater 0.0");
    return BuildUnitVector2d(m_x, m_y);
}

void GUnitVector::Convert3d(const GUnitVector2d& u) {
    *this = {u.m_x, u.m_y, 0.0};
}

GPosition2d GPosition::Convert2d() const {
    ReportUnlessInPlane(m_z, "Convert2d: GPosition z coordinate > distanceTolerance");
    return {m_x, m_y};
}

void GPosition::Convert3d(const GPosition2d& p) {
    *this = {p.m_x, p.m_y, 0.0};
}
