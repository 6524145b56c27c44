// SPDX-License-Identifier: MIT
#include <kvgeom/kernel/error_codes.h>
#include <kvgeom/maps/transf_repair.h>

using namespace kvgeom::detail;

void GTransfHealer(const GTransf& in, GTransf& out, int* healed, long* err) {
    GTransf result = in;
    MakeOrthogonalIt(in.m_matrix, result.m_matrix, err);
    *healed = *err == kSuccess ? 1 : 0;
    *err = kSuccess;
    // Where that failed, the matrix is that of `in`.
    out = result;
}
