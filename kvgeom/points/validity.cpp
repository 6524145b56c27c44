// SPDX-License-Identifier: MIT
#include <kvgeom/kernel/assertion_hook.h>
#include <kvgeom/kernel/constants.h>
#include <kvgeom/kernel/coordinate.h>
#include <kvgeom/kernel/planar_report.h>
#include <kvgeom/kernel/square_root.h>
#include <kvgeom/kernel/tolerance_state.h>
#include <kvgeom/points/position.h>
#include <kvgeom/points/position2d.h>
#include <kvgeom/points/unit_vector.h>
#include <kvgeom/points/unit_vector2d.h>
#include <kvgeom/points/validity.h>

#include <cmath>

using namespace kvgeom::detail;

namespace {

template <class Triple>
bool HasInvalidCoordinate(const Triple& v) {
    return IsInvalidCoordinate(v.m_x) || IsInvalidCoordinate(v.m_y) || IsInvalidCoordinate(v.m_z);
}

template <class Pair>
bool HasInvalidPlanarCoordinate(const Pair& v) {
    return IsInvalidCoordinate(v.m_x) || IsInvalidCoordinate(v.m_y);
}

}  // namespace

void Gassert_valid(const GPosition& p) {
    if (HasInvalidCoordinate(p)) {
        Gassert_debug("GPosition has an invalid coordinate");
    }
}

void Gassert_valid(const GVector& v) {
    int is_valid;
    Gassert_valid(v, &is_valid);
}

void Gassert_valid(const GVector& v, int* isValid) {
    *isValid = 1;
    if (HasInvalidCoordinate(v)) {
        Gassert_debug("GVector has an invalid coordinate");
        *isValid = 0;
    }
}

void Gassert_valid(const GUnitVector& u) {
    if (HasInvalidCoordinate(u)) {
        Gassert_debug("GUnitVector has an invalid coordinate");
        return;
    }
    const double squared_length = u.m_x * u.m_x + u.m_y * u.m_y + u.m_z * u.m_z;
    if (std::fabs(squared_length - 1) <= kUnitTolerance) {
        return;
    }
    Gassert_debug(SquareRoot(squared_length) >= kUnitTolerance
                      ? "GUnitVector: vector is not a unit vector"
                      : "GUnitVector: using a NULL unit vector");
}

// Planar records.

void Gassert_valid(const GPosition2d& p) {
    if (HasInvalidPlanarCoordinate(p)) {
        ReportPlanar("GPosition2d has an invalid coordinate");
    }
}

void Gassert_valid(const GVector2d& v) {
    if (HasInvalidPlanarCoordinate(v)) {
        ReportPlanar("GVector2d has an invalid coordinate");
    }
}

void Gassert_valid(const GUnitVector2d& u) {
    if (HasInvalidPlanarCoordinate(u)) {
        ReportPlanar("GUnitVector2d has an invalid coordinate");
        return;
    }
    const double dist = DistanceTolerance();
    const double squared_length = u.m_x * u.m_x + u.m_y * u.m_y;
    if (std::fabs(squared_length - 1) <= dist) {
        return;
    }
    ReportPlanar(SquareRoot(squared_length) >= dist ? "GUnitVector2d: vector is not a unit vector"
                                                    : "GUnitVector2d: using a NULL unit vector");
}
