// SPDX-License-Identifier: MIT
#include <kvgeom/kernel/constants.h>
#include <kvgeom/kernel/error_codes.h>
#include <kvgeom/kernel/extremes.h>
#include <kvgeom/maps/matrix.h>

#include <cmath>

using namespace kvgeom::detail;

namespace {

bool IsOrthogonal(const GMatrix& gram) {
    for (int i = 0; i < 3; ++i) {
        for (int j = 0; j < 3; ++j) {
            const double deviation = i == j ? gram.m_elements[i][i] - 1 : gram.m_elements[j][i];
            if (std::fabs(deviation) > kOrthogonalityThreshold) {
                return false;
            }
        }
    }
    return true;
}

// With P = M^T M, the step M (3 I - P) / 2 is M + M X for X = (I - P) / 2. P is symmetric, but only
// its lower triangle is used, so that X is symmetric whatever the rounding.
GMatrix NewtonSchulzStep(const GMatrix& m) {
    const GMatrix gram = m.Transpose() * m;
    if (IsOrthogonal(gram)) {
        return m;
    }
    GMatrix correction;
    for (int i = 0; i < 3; ++i) {
        correction.m_elements[i][i] = (1 - gram.m_elements[i][i]) * 0.5;
        for (int j = 0; j < i; ++j) {
            correction.m_elements[i][j] = gram.m_elements[i][j] * -0.5;
            correction.m_elements[j][i] = correction.m_elements[i][j];
        }
    }
    GMatrix result = m * correction;
    for (int i = 0; i < 3; ++i) {
        for (int j = 0; j < 3; ++j) {
            result.m_elements[i][j] += m.m_elements[i][j];
        }
    }
    return result;
}

// NaN counts as a change.
bool HasConverged(const GMatrix& next, const GMatrix& current) {
    for (int i = 0; i < 3; ++i) {
        for (int j = 0; j < 3; ++j) {
            const double change = next.m_elements[i][j] - current.m_elements[i][j];
            if (!(std::fabs(change) <= kOrthogonalityThreshold)) {
                return false;
            }
        }
    }
    return true;
}

double LengthError(const GVector& row) {
    return std::fabs(1 - row % row);
}

}  // namespace

void MakeOrthogonal(const GMatrix& in, GMatrix& out, long* err) {
    *err = kSuccess;
    out = NewtonSchulzStep(in);
}

void MakeOrthogonalIt(const GMatrix& in, GMatrix& out, long* err) {
    *err = kSuccess;
    GMatrix current = in;
    for (int step = 0; step < kMaxOrthogonalisationSteps; ++step) {
        const GMatrix next = NewtonSchulzStep(current);
        if (HasConverged(next, current)) {
            out = next;
            return;
        }
        current = next;
    }
    out = in;
    *err = kPreconditionFailed;
}

void CheckOrthogonal(const GMatrix& m, double* lengthError, double* dotError) {
    const GVector rows[3] = {m[0], m[1], m[2]};
    const double length_error =
        Larger(Larger(LengthError(rows[0]), LengthError(rows[1])), LengthError(rows[2]));
    const double dot_error =
        Larger(Larger(rows[0] % rows[1], rows[0] % rows[2]), rows[1] % rows[2]);
    *lengthError = length_error;
    *dotError = dot_error;
}
