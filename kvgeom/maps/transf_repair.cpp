// SPDX-License-Identifier: MIT
#include <kvgeom/kernel/error_codes.h>
#include <kvgeom/kernel/square_root.h>
#include <kvgeom/kernel/tolerance_state.h>
#include <kvgeom/maps/transf_repair.h>

#include <cmath>

using namespace kvgeom::detail;

long GetMirrorPlaneNormal(const GTransf& t, GUnitVector& normal, GVector& offset) {
    const auto& m = t.m_matrix.m_elements;
    const double tol = RelativeTolerance();
    offset = t.m_translation;
    for (int i = 0; i < 3; ++i) {
        // The diagonal holds 1 - 2 ni^2, the rest of the row -2 ni nj.
        const double pivot = SquareRoot(std::fabs(1 - m[i][i]) * 0.5);
        if (pivot > tol) {
            double n[3];
            for (int j = 0; j < 3; ++j) {
                n[j] = j == i ? pivot : m[i][j] / (-2 * pivot);
            }
            normal = BuildUnitVector(n[0], n[1], n[2]);
            return kSuccess;
        }
    }
    return kPreconditionFailed;
}

void GTransfHealer(const GTransf& in, GTransf& out, int* healed, long* err) {
    GTransf result = in;
    MakeOrthogonalIt(in.m_matrix, result.m_matrix, err);
    *healed = *err == kSuccess ? 1 : 0;
    *err = kSuccess;
    // Without success the matrix is in's.
    out = result;
}
