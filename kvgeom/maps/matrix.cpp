// SPDX-License-Identifier: MIT
#include <kvgeom/kernel/assertion_hook.h>
#include <kvgeom/kernel/constants.h>
#include <kvgeom/kernel/tolerance_state.h>
#include <kvgeom/maps/fixed_maps.h>
#include <kvgeom/maps/linear_forms.h>
#include <kvgeom/maps/matrix.h>

#include <cmath>

using namespace kvgeom::detail;

GVector GMatrix::operator[](unsigned int i) const {
    if (i > 2) {
        Gassert_debug("GMatrix: index out of range");
        i = 2;
    }
    return {m_elements[i][0], m_elements[i][1], m_elements[i][2]};
}

int GMatrix::IsEqual(const GMatrix& other) const {
    const double tol = RelativeTolerance();
    for (int i = 0; i < 3; ++i) {
        for (int j = 0; j < 3; ++j) {
            if (std::fabs(m_elements[i][j] - other.m_elements[i][j]) > tol) {
                return 0;
            }
        }
    }
    return 1;
}

int GMatrix::IsNull() const {
    return IsEqual(kGZeroMatrix);
}

int GMatrix::IsIdentity() const {
    return IsEqual(kGIdentityMatrix);
}

int GMatrix::IsEuclidean() const {
    const double tol = RelativeTolerance();
    const GVector rows[3] = {(*this)[0], (*this)[1], (*this)[2]};
    for (const GVector& row : rows) {
        if (!(std::fabs(1 - row % row) <= kSquaredLengthFactor * tol)) {
            return 0;
        }
    }
    return std::fabs(rows[0] % rows[1]) <= tol && std::fabs(rows[0] % rows[2]) <= tol &&
                   std::fabs(rows[1] % rows[2]) <= tol
               ? 1
               : 0;
}

GMatrix GMatrix::Transpose() const {
    return BuildMatrix((*this)[0], (*this)[1], (*this)[2], 1);
}

GMatrix& GMatrix::operator*=(const GMatrix& b) {
    return *this = *this * b;
}

GMatrix BuildMatrix(const GUnitVector& a, const GUnitVector& b, const GUnitVector& c,
                    int asColumns) {
    return BuildMatrix(GVector(a), GVector(b), GVector(c), asColumns);
}

GMatrix BuildMatrix(const GVector& a, const GVector& b, const GVector& c, int asColumns) {
    if (asColumns != 0) {
        return {{{a.m_x, b.m_x, c.m_x}, {a.m_y, b.m_y, c.m_y}, {a.m_z, b.m_z, c.m_z}}};
    }
    return {{{a.m_x, a.m_y, a.m_z}, {b.m_x, b.m_y, b.m_z}, {c.m_x, c.m_y, c.m_z}}};
}

double GetDeterminant(const GMatrix& matrix) {
    const auto& m = matrix.m_elements;
    return m[0][1] * m[2][0] * m[1][2] + m[1][1] * m[0][0] * m[2][2] + m[0][2] * m[1][0] * m[2][1] -
           m[1][1] * m[2][0] * m[0][2] - m[2][1] * m[0][0] * m[1][2] - m[1][0] * m[2][2] * m[0][1];
}

GMatrix operator*(const GMatrix& a, const GMatrix& b) {
    return BuildMatrix(RowForm(a[0], b), RowForm(a[1], b), RowForm(a[2], b), 0);
}

GMatrix Rotation(double cosine, double sine, const GUnitVector& axis) {
    if (std::fabs(cosine) > 1 || std::fabs(sine) > 1) {
        Gassert_debug("GMatrix: abs(cosine or sine of angle) > 1.0");
    }
    const double c = cosine;
    const double s = sine;
    const double t = 1 - c;
    const double ux = axis.m_x;
    const double uy = axis.m_y;
    const double uz = axis.m_z;
    return {{{t * (ux * ux) + c, t * ux * uy + s * uz, t * ux * uz - s * uy},
             {t * ux * uy - s * uz, t * (uy * uy) + c, t * uy * uz + s * ux},
             {t * ux * uz + s * uy, t * uy * uz - s * ux, t * (uz * uz) + c}}};
}

GMatrix Rotation(double angle, const GUnitVector& axis) {
    return Rotation(std::cos(angle), std::sin(angle), axis);
}

GMatrix Reflection(const GUnitVector& normal) {
    const double n[3] = {normal.m_x, normal.m_y, normal.m_z};
    GMatrix result = kGIdentityMatrix;
    for (int i = 0; i < 3; ++i) {
        for (int j = 0; j < 3; ++j) {
            result.m_elements[i][j] -= n[j] * (n[i] + n[i]);
        }
    }
    return result;
}
