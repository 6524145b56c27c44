// SPDX-License-Identifier: MIT
#include <kvgeom/kernel/assertion_hook.h>
#include <kvgeom/kernel/constants.h>
#include <kvgeom/kernel/coordinate.h>
#include <kvgeom/kernel/square_root.h>
#include <kvgeom/kernel/tolerance_state.h>
#include <kvgeom/kvgeom.h>

#include <cmath>

using namespace kvgeom::detail;

namespace {

constexpr unsigned long kFewestPoints = 4;  // a triangle, closed

template <class Triple>
bool HasInvalidCoordinate(const Triple& v) {
    return IsInvalidCoordinate(v.m_x) || IsInvalidCoordinate(v.m_y) || IsInvalidCoordinate(v.m_z);
}

bool IsSound(const GVector& v) {
    int is_valid;
    Gassert_valid(v, &is_valid);
    return is_valid != 0;
}

bool IsClosed(const GPosition* points, unsigned long count) {
    return points[0].IsEqual(points[count - 1]) != 0;
}

// Passes the message for each point whose depth is off the mean.
template <class Depth>
void CheckPlanarity(const GPosition* points, unsigned long count, double mean_depth, Depth depth,
                    const char* message) {
    const double dist = DistanceTolerance();
    for (unsigned long i = 0; i < count; ++i) {
        if (std::fabs(depth(points[i]) - mean_depth) > dist) {
            Gassert_debug(message);
        }
    }
}

double MeanZ(const GPosition* points, unsigned long count) {
    double sum = points[0].m_z;
    for (unsigned long i = 1; i < count; ++i) {
        sum += points[i].m_z;
    }
    return sum / static_cast<double>(count);
}

GPosition MeanPoint(const GPosition* points, unsigned long count) {
    GPosition sum = points[0];
    for (unsigned long i = 1; i < count; ++i) {
        sum += GVector{points[i].m_x, points[i].m_y, points[i].m_z};
    }
    const double n = static_cast<double>(count);
    return {sum.m_x / n, sum.m_y / n, sum.m_z / n};
}

// An eye between the planes would see the volume on both its sides.
void CheckEye(const GPosition& eye, const GPosition& reference, const GUnitVector& direction,
              double front, double back, const char* message) {
    const double dist = DistanceTolerance();
    const GVector d = direction;
    const GPosition front_point = reference + front * d;
    const GPosition back_point = reference + back * d;
    if (d % (eye - front_point) >= -dist || d % (eye - back_point) <= -dist) {
        return;
    }
    Gassert_debug(message);
}

// Silent but in a build that is meant to find faults: the callers' code was written against checks
// that are silent.
void ReportPlanar([[maybe_unused]] const char* message) {
#if defined(KVGEOM_DIAGNOSTICS)
    Gassert_debug(message);
#endif
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

void Gassert_valid(const GBox& box) {
    Gassert_valid(box.m_low);
    Gassert_valid(box.m_high);
}

void Gassert_valid(const GMatrix& m) {
    int is_valid;
    Gassert_valid(m, &is_valid);
}

void Gassert_valid(const GMatrix& m, int* isValid) {
    int rows_are_valid = 1;
    for (unsigned i = 0; i < 3; ++i) {
        if (!IsSound(m[i])) {
            rows_are_valid = 0;
        }
    }
    *isValid = rows_are_valid;
}

void Gassert_valid(const GTransf& t, int* isValid) {
    Gassert_valid(t.m_translation, isValid);
    if (*isValid == 0) {
        return;
    }
    if (!std::isfinite(t.m_scaling) || DistanceTolerance() > t.m_scaling) {
        Gassert_debug("GTransf has an invalid scale");
        *isValid = 0;
    }
    if (!t.m_matrix.IsEuclidean()) {
        Gassert_debug("GTransf is not Euclidean");
        *isValid = 0;
    }
    if (t.m_hasShear) {
        Gassert_debug("GTransf has Shear");
        *isValid = 0;
    }
    if (t.m_hasReflection && GetDeterminant(t.m_matrix) > 0) {
        Gassert_debug("GTransf: m_hasReflection is set, but determinant > 0");
    }
}

void Gassert_valid(const GTransf& t) {
    int is_valid;
    Gassert_valid(t, &is_valid);
}

void Gassert_valid(const G4x4& a) {
    const double rel = RelativeTolerance();
    if (std::fabs(a.m_matrix[3]) > rel) {
        Gassert_debug("G4x4: m_matrix[3] is not 0");
    }
    if (std::fabs(a.m_matrix[7]) > rel) {
        Gassert_debug("G4x4: m_matrix[7] is not 0");
    }
    if (std::fabs(a.m_matrix[11]) > rel) {
        Gassert_debug("G4x4: m_matrix[11] is not 0");
    }
    if (std::fabs(a.m_matrix[15] - 1) > rel) {
        Gassert_debug("G4x4: m_matrix[15] is not 1");
    }
}

void Gassert_valid(const GClipVolume&) {}

void Gassert_valid(const GBoreLine& l) {
    Gassert_valid(l.m_point);
    Gassert_valid(l.m_direction);
    if (l.m_back > l.m_front || !(l.m_radius > 0)) {
        Gassert_debug("GBoreLine has an invalid front, back, or radius");
    }
}

void Gassert_valid(const GRtPrism& prism) {
    Gassert_valid(prism.m_transf);
    if (prism.m_count < kFewestPoints) {
        Gassert_debug("GRtPrism: Less than 4 points");
    }
    if (prism.m_points == nullptr) {
        Gassert_debug("GRtPrism: NULL pointer");
    } else if (prism.m_count > 0) {
        if (!IsClosed(prism.m_points, prism.m_count)) {
            Gassert_debug("GRtPrism: point set is not closed");
        }
        CheckPlanarity(
            prism.m_points, prism.m_count, MeanZ(prism.m_points, prism.m_count),
            [](const GPosition& p) { return p.m_z; }, "GRtPrism: point set is not planar in xz");
    }
    if (prism.m_height < 0 || prism.m_height > kUnbounded) {
        Gassert_debug("GRtPrism: invalid height");
    }
}

void Gassert_valid(const GPtFence& fence) {
    Gassert_valid(fence.m_direction);
    if (fence.m_count < kFewestPoints) {
        Gassert_debug("GPtFence: Less than 4 points");
    }
    if (fence.m_points == nullptr) {
        Gassert_debug("GPtFence: NULL pointer");
    } else if (fence.m_count > 0) {
        if (!IsClosed(fence.m_points, fence.m_count)) {
            Gassert_debug("GPtFence: point set is not closed");
        }
        const GVector d = fence.m_direction;
        CheckPlanarity(
            fence.m_points, fence.m_count, d % MeanPoint(fence.m_points, fence.m_count),
            [&d](const GPosition& p) { return d % p; },
            "GPtFence: point set is not planar with respect to direction vector");
    }
    if (fence.m_back > fence.m_front || fence.m_front > kUnbounded || fence.m_back < -kUnbounded) {
        Gassert_debug("GPtFence: invalid m_front or m_back");
    }
}

void Gassert_valid(const GBoreCone& cone) {
    const GBoreLine& l = cone.m_boreLine;
    Gassert_valid(l);
    Gassert_valid(cone.m_eye);
    CheckEye(cone.m_eye, l.m_point, l.m_direction, l.m_front, l.m_back,
             "GBoreCone: eye point is between front and back planes");
}

void Gassert_valid(const GPtFrustum& frustum) {
    const GPtFence& fence = frustum.m_fence;
    Gassert_valid(fence);
    Gassert_valid(frustum.m_eye);
    if (fence.m_count == 0 || fence.m_points == nullptr) {
        return;
    }
    CheckEye(frustum.m_eye, MeanPoint(fence.m_points, fence.m_count), fence.m_direction,
             fence.m_front, fence.m_back, "GPtFrustum: eye point is between front and back planes");
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

void Gassert_valid(const GBox2d& box) {
    Gassert_valid(box.m_low);
    Gassert_valid(box.m_high);
}

void Gassert_valid(const GMatrix2d& m) {
    Gassert_valid(m[0]);
    Gassert_valid(m[1]);
}

void Gassert_valid(const GTransf2d& t) {
    Gassert_valid(t.m_matrix);
    Gassert_valid(t.m_translation);
    if (!t.m_matrix.IsEuclidean()) {
        ReportPlanar("GTransf2d is not Euclidean");
    }
    if (!std::isfinite(t.m_scaling) || DistanceTolerance() > t.m_scaling) {
        ReportPlanar("GTransf2d has an invalid scale");
    }
    if (t.m_hasReflection && GetDeterminant(t.m_matrix) > 0) {
        ReportPlanar("GTransf2d: m_hasReflection is set, but determinant > 0");
    }
}
