// SPDX-License-Identifier: MIT
#include <kvgeom/kernel/assertion_hook.h>
#include <kvgeom/kernel/planar_report.h>
#include <kvgeom/kernel/tolerance_state.h>
#include <kvgeom/maps/g4x4.h>
#include <kvgeom/maps/transf.h>
#include <kvgeom/maps/transf2d.h>
#include <kvgeom/maps/validity.h>
#include <kvgeom/points/validity.h>

#include <cmath>

using namespace kvgeom::detail;

namespace {

bool IsSound(const GVector& v) {
    int is_valid;
    Gassert_valid(v, &is_valid);
    return is_valid != 0;
}

}  // namespace

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

// Planar records.

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
