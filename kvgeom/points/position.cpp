// SPDX-License-Identifier: MIT
#include <kvgeom/kernel/tolerance_state.h>
#include <kvgeom/points/components.h>
#include <kvgeom/points/position.h>

using namespace kvgeom::detail;

double GPosition::operator[](unsigned int i) const {
    return Component(*this, i, "GPosition: index out of bounds");
}

double& GPosition::operator[](unsigned int i) {
    return Component(*this, i, "GPosition: index out of bounds");
}

int GPosition::IsEqual(const GPosition& q) const {
    const double dist = DistanceTolerance();
    const GVector difference = q - *this;
    return difference % difference <= dist * dist ? 1 : 0;
}

int GPosition::IsNull() const {
    return IsEqual(kGNullPosition);
}

GPosition Interpolate(double t, const GPosition& a, const GPosition& b) {
    return {(b.m_x - a.m_x) * t + a.m_x, (b.m_y - a.m_y) * t + a.m_y, (b.m_z - a.m_z) * t + a.m_z};
}
