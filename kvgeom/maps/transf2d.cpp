// SPDX-License-Identifier: MIT
#include <kvgeom/kernel/assertion_hook.h>
#include <kvgeom/kernel/constants.h>
#include <kvgeom/kernel/tolerance_state.h>
#include <kvgeom/maps/fixed_maps2d.h>
#include <kvgeom/maps/transf2d.h>
#include <kvgeom/points/linear_forms2d.h>

#include <cmath>

using namespace kvgeom::detail;

int GTransf2d::IsNull() const {
    return IsEqual(kNullTransf2d);
}

int GTransf2d::IsIdentity() const {
    return IsEqual(kIdentityTransf2d);
}

int GTransf2d::IsEqual(const GTransf2d& other) const {
    if (!(std::fabs(m_scaling - other.m_scaling) <= RelativeTolerance())) {
        return 0;
    }
    return m_hasReflection == other.m_hasReflection && m_translation.IsEqual(other.m_translation) &&
                   m_matrix.IsEqual(other.m_matrix)
               ? 1
               : 0;
}

int GTransf2d::IsInvertible() const {
    return std::fabs(m_scaling) >= kSmallestDivisor ? m_matrix.IsEuclidean() : 0;
}

GTransf2d GTransf2d::Inverse() const {
    GTransf2d result = *this;
    result.m_matrix = m_matrix.Transpose();
    if (std::fabs(m_scaling) < kSmallestDivisor) {
        Gassert_debug("GTransf: m_scaling is 0.0");
        result.m_scaling = kUnbounded;
    } else {
        result.m_scaling = 1 / m_scaling;
    }
    result.m_translation = RowForm(-m_translation, result.m_matrix) * result.m_scaling;
    return result;
}

GTransf2d& GTransf2d::operator*=(const GTransf2d& b) {
    return *this = *this * b;
}

GTransf2d BuildTransf2d(const GMatrix2d& m, const GVector2d& t, double scaling, int hasRotation,
                        int hasReflection, int hasShear) {
    return {m,
            t,
            scaling,
            static_cast<unsigned char>(hasRotation),
            static_cast<unsigned char>(hasReflection),
            static_cast<unsigned char>(hasShear)};
}

GTransf2d operator*(const GTransf2d& a, const GTransf2d& b) {
    GTransf2d result;
    result.m_matrix = a.m_matrix * b.m_matrix;
    result.m_translation = RowForm(a.m_translation, b.m_matrix) * b.m_scaling + b.m_translation;
    result.m_scaling = a.m_scaling * b.m_scaling;
    // Two rotations may cancel; one alone can't.
    bool rotates = a.m_hasRotation || b.m_hasRotation;
    if (a.m_hasRotation && b.m_hasRotation) {
        long err;
        rotates = !(std::fabs(GiveRotAngle(result, &err)) <= RelativeTolerance());
    }
    result.m_hasRotation = rotates ? 1 : 0;
    result.m_hasReflection = a.m_hasReflection != b.m_hasReflection ? 1 : 0;
    result.m_hasShear = a.m_hasShear || b.m_hasShear ? 1 : 0;
    return result;
}

double GiveRotAngle(const GTransf2d& t, long*) {
    const GVector2d x = t.m_matrix[0];
    const double angle = std::atan2(x.m_y, x.m_x);
    if (std::fabs(angle) < RelativeTolerance()) {
        return 0.0;
    }
    return angle >= 0 ? angle : angle + kTwoPi;
}
