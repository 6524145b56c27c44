// SPDX-License-Identifier: MIT
#include <kvgeom/kernel/assertion_hook.h>
#include <kvgeom/kernel/error_codes.h>
#include <kvgeom/kernel/tolerance_state.h>
#include <kvgeom/maps/fixed_maps.h>
#include <kvgeom/maps/g4x4.h>
#include <kvgeom/maps/g4x4_conversion.h>
#include <kvgeom/maps/homogeneous_parts.h>
#include <kvgeom/maps/kernels.h>
#include <kvgeom/maps/transf.h>

#include <algorithm>
#include <cmath>

using namespace kvgeom::detail;

namespace {

constexpr int kFirstTranslation = 12;
constexpr int kWeight = 15;

G4x4 FromTransf(const GTransf& t) {
    G4x4 result;
    result = t;
    return result;
}

}  // namespace

G4x4& G4x4::operator=(const GTransf& t) {
    const auto& m = t.m_matrix.m_elements;
    const double s = t.m_scaling;
    const GVector& v = t.m_translation;
    return *this = G4x4{{m[0][0] * s, m[0][1] * s, m[0][2] * s, 0,  //
                         m[1][0] * s, m[1][1] * s, m[1][2] * s, 0,  //
                         m[2][0] * s, m[2][1] * s, m[2][2] * s, 0,  //
                         v.m_x, v.m_y, v.m_z, 1}};
}

G4x4& G4x4::operator*=(const G4x4& b) {
    return *this = *this * b;
}

G4x4& G4x4::operator*=(const GTransf& b) {
    return *this = *this * b;
}

G4x4 G4x4::Inverse() const {
    G4x4 result;
    if (!Chosen<MapKernels>().invert_4x4(*this, result)) {
        Gassert_debug("Can't find inverse since the g4x4 is singular");
        result = kGIdentity4x4;
    }
    return result;
}

int G4x4::IsEqual(const G4x4& other) const {
    if (m_matrix[kWeight] == 0.0 || other.m_matrix[kWeight] == 0.0) {
        return 0;
    }
    const double rel = RelativeTolerance();
    const double dist = DistanceTolerance();
    const double ka = 1 / m_matrix[kWeight];
    const double kb = 1 / other.m_matrix[kWeight];
    for (int i = 0; i < kWeight; ++i) {
        const double tol = i >= kFirstTranslation ? dist : rel;
        if (!(std::fabs(m_matrix[i] * ka - other.m_matrix[i] * kb) <= tol)) {
            return 0;
        }
    }
    return 1;
}

int G4x4::IsInvertible() const {
    const double tol = RelativeTolerance();
    const double determinant = GetDeterminant(LinearBlock(*this));
    return std::fabs(determinant * m_matrix[kWeight]) > tol * tol * tol ? 1 : 0;
}

int G4x4::IsValid() const {
    return IsInvertible();
}

int G4x4::HasReflection() const {
    const GMatrix block = LinearBlock(*this);
    const double length = block[0].GetLength();
    if (length < RelativeTolerance()) {
        return 0;
    }
    return GetDeterminant(block) / (length * length * length) <= 0 ? 1 : 0;
}

int G4x4::HasRotation() const {
    const double tol = RelativeTolerance();
    G4x4 copy = *this;
    double angles[3];
    if (GetRotationAngles(copy, &angles[0], &angles[1], &angles[2]) != kSuccess) {
        return 1;
    }
    for (const double angle : angles) {
        if (std::fabs(angle) >= tol) {
            return 1;
        }
    }
    return 0;
}

G4x4 Build4x4(const double* elements) {
    G4x4 result;
    std::copy_n(elements, 16, result.m_matrix);
    return result;
}

G4x4 operator*(const G4x4& left, const G4x4& right) {
    const double* a = left.m_matrix;
    const double* b = right.m_matrix;
    G4x4 result;
    for (int i = 0; i < 4; ++i) {
        for (int j = 0; j < 4; ++j) {
            result.m_matrix[4 * i + j] = b[4 * i] * a[j] + b[4 * i + 1] * a[4 + j] +
                                         b[4 * i + 2] * a[8 + j] + b[4 * i + 3] * a[12 + j];
        }
    }
    return result;
}

G4x4 operator*(const G4x4& a, const GTransf& b) {
    return a * FromTransf(b);
}

G4x4 operator*(const GTransf& a, const G4x4& b) {
    return FromTransf(a) * b;
}
