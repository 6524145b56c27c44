// SPDX-License-Identifier: MIT
#include <kvgeom/kernel/constants.h>
#include <kvgeom/kernel/tolerance_state.h>
#include <kvgeom/maps/fixed_maps2d.h>
#include <kvgeom/maps/similarity.h>
#include <kvgeom/maps/transf2d.h>

#include <cmath>

using namespace kvgeom::detail;

int GTransf2d::IsNull() const {
    return IsEqual(kGNullTransf2d);
}

int GTransf2d::IsIdentity() const {
    return IsEqual(kGIdentityTransf2d);
}

int GTransf2d::IsEqual(const GTransf2d& other) const {
    return AreEqual(*this, other) ? 1 : 0;
}

int GTransf2d::IsInvertible() const {
    return std::fabs(m_scaling) >= kSmallestDivisor ? m_matrix.IsEuclidean() : 0;
}

GTransf2d GTransf2d::Inverse() const {
    return InverseOf(*this);
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
    return Composed(a, b, [](const GTransf2d& composed) {
        long err;
        return !(std::fabs(GiveRotAngle(composed, &err)) <= RelativeTolerance());
    });
}

double GiveRotAngle(const GTransf2d& t, long*) {
    const GVector2d x = t.m_matrix[0];
    const double angle = std::atan2(x.m_y, x.m_x);
    if (std::fabs(angle) < RelativeTolerance()) {
        return 0.0;
    }
    return angle >= 0 ? angle : angle + kTwoPi;
}
