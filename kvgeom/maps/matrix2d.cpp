// SPDX-License-Identifier: MIT
#include <kvgeom/kernel/assertion_hook.h>
#include <kvgeom/kernel/constants.h>
#include <kvgeom/kernel/error_codes.h>
#include <kvgeom/kernel/tolerance_state.h>
#include <kvgeom/maps/fixed_maps2d.h>
#include <kvgeom/maps/linear_forms2d.h>
#include <kvgeom/maps/matrix2d.h>

#include <cmath>

using namespace kvgeom::detail;

namespace {

bool IsOrthogonal(const GMatrix2d& gram) {
    const auto& p = gram.m_elements;
    return std::fabs(p[0][0] - 1) <= kOrthogonalityThreshold &&
           std::fabs(p[1][1] - 1) <= kOrthogonalityThreshold &&
           std::fabs(p[0][1]) <= kOrthogonalityThreshold &&
           std::fabs(p[1][0]) <= kOrthogonalityThreshold;
}

// With P = M^T M, the step M (3 I - P) / 2 is M X + M for X = (I - P) / 2.
GMatrix2d NewtonSchulzStep(const GMatrix2d& m) {
    const GMatrix2d gram = m.Transpose() * m;
    if (IsOrthogonal(gram)) {
        return m;
    }
    const auto& p = gram.m_elements;
    const GMatrix2d correction = {
        {{(1 - p[0][0]) * 0.5, p[1][0] * -0.5}, {p[1][0] * -0.5, (1 - p[1][1]) * 0.5}}};
    const GMatrix2d change = m * correction;
    return BuildMatrix2d(change[0] + m[0], change[1] + m[1], 0);
}

}  // namespace

GVector2d GMatrix2d::operator[](unsigned int i) const {
    if (i > 1) {
        Gassert_debug("GMatrix2d: index out of range");
        i = 1;
    }
    return {m_elements[i][0], m_elements[i][1]};
}

int GMatrix2d::IsEqual(const GMatrix2d& other) const {
    const double tol = RelativeTolerance();
    for (int i = 0; i < 2; ++i) {
        for (int j = 0; j < 2; ++j) {
            if (!(std::fabs(m_elements[i][j] - other.m_elements[i][j]) <= tol)) {
                return 0;
            }
        }
    }
    return 1;
}

int GMatrix2d::IsNull() const {
    return IsEqual(kGZeroMatrix2d);
}

int GMatrix2d::IsIdentity() const {
    return IsEqual(kGIdentityMatrix2d);
}

int GMatrix2d::IsEuclidean() const {
    const double tol = RelativeTolerance();
    const GVector2d rows[2] = {(*this)[0], (*this)[1]};
    for (const GVector2d& row : rows) {
        if (!(std::fabs(1 - row % row) <= kSquaredLengthFactor * tol)) {
            return 0;
        }
    }
    return std::fabs(rows[0] % rows[1]) <= tol ? 1 : 0;
}

GMatrix2d GMatrix2d::Transpose() const {
    return BuildMatrix2d((*this)[0], (*this)[1], 1);
}

GMatrix2d& GMatrix2d::operator*=(const GMatrix2d& b) {
    return *this = *this * b;
}

GMatrix2d BuildMatrix2d(const GUnitVector2d& a, const GUnitVector2d& b, int asColumns) {
    return BuildMatrix2d(GVector2d(a), GVector2d(b), asColumns);
}

GMatrix2d BuildMatrix2d(const GVector2d& a, const GVector2d& b, int asColumns) {
    if (asColumns != 0) {
        return {{{a.m_x, b.m_x}, {a.m_y, b.m_y}}};
    }
    return {{{a.m_x, a.m_y}, {b.m_x, b.m_y}}};
}

double GetDeterminant(const GMatrix2d& matrix) {
    const auto& m = matrix.m_elements;
    return m[0][0] * m[1][1] - m[1][0] * m[0][1];
}

GMatrix2d operator*(const GMatrix2d& a, const GMatrix2d& b) {
    return BuildMatrix2d(RowForm(a[0], b), RowForm(a[1], b), 0);
}

GMatrix2d Rotation2d(double cosine, double sine) {
    if (std::fabs(cosine) > 1 || std::fabs(sine) > 1) {
        Gassert_debug("GMatrix2d: abs(cosine or sine of angle) > 1.0");
    }
    const GUnitVector2d x = BuildUnitVector2d(cosine, sine);
    const GUnitVector2d y = BuildUnitVector2d(-sine, cosine);
    return BuildMatrix2d(x, y, 0);
}

GMatrix2d Rotation2d(double angle) {
    return Rotation2d(std::cos(angle), std::sin(angle));
}

GMatrix2d Reflection2d(const GUnitVector2d& direction) {
    const GUnitVector2d u = GetPerpVector2d(direction);
    const double mixed = -2 * u.m_x * u.m_y;
    return {{{1 - 2 * (u.m_x * u.m_x), mixed}, {mixed, 1 - 2 * (u.m_y * u.m_y)}}};
}

void MakeOrthogonal(const GMatrix2d& in, GMatrix2d& out, long* err) {
    *err = kSuccess;
    out = NewtonSchulzStep(in);
}
