// SPDX-License-Identifier: MIT
#include <kvgeom/kernel/constants.h>
#include <kvgeom/kernel/error_codes.h>
#include <kvgeom/kernel/tolerance_state.h>
#include <kvgeom/maps/g4x4_conversion.h>
#include <kvgeom/maps/homogeneous_parts.h>
#include <kvgeom/maps/rotation_bound.h>
#include <kvgeom/points/position.h>

#include <cmath>

using namespace kvgeom::detail;

namespace {

constexpr int kWeight = 15;

// Divides g by its weight. False for a weight of 0.
bool NormaliseWeight(G4x4& g, double tol) {
    const double weight = g.m_matrix[kWeight];
    if (std::fabs(weight - 1) <= tol) {
        return true;
    }
    if (!(std::fabs(weight) >= tol)) {
        return false;
    }
    const double factor = 1 / weight;
    for (int i = 0; i < kWeight; ++i) {
        g.m_matrix[i] *= factor;
    }
    g.m_matrix[kWeight] = 1;
    return true;
}

bool IsAffine(const G4x4& g, double tol) {
    return std::fabs(g.m_matrix[3]) <= tol && std::fabs(g.m_matrix[7]) <= tol &&
           std::fabs(g.m_matrix[11]) <= tol;
}

// Whether a second or third column is as long as the first.
bool IsAsLong(double length, double first_length, double tol) {
    return std::fabs(length - first_length) <= kUniformScalingFactor * tol;
}

template <class Matrix>
bool HasUnitDeterminant(const Matrix& matrix, double tol) {
    return std::fabs(std::fabs(GetDeterminant(matrix)) - 1) <= tol;
}

bool HasAngleFrom(const GTransf& t, double tol) {
    double a;
    double b;
    double c;
    GPosition origin;
    GetRotAngles(t, &a, &b, &c, origin);
    return std::fabs(a) >= tol || std::fabs(b) >= tol || std::fabs(c) >= tol;
}

}  // namespace

// Every test is written so that NaN fails it: where 0 is returned, the linear part and the scaling
// are numbers. The translation is copied without a test.
long ConvertG4x4ToGTransf(const G4x4& g, GTransf& t) {
    const double tol = RelativeTolerance();
    G4x4 affine = g;
    if (!NormaliseWeight(affine, tol) || !IsAffine(affine, tol)) {
        return kPreconditionFailed;
    }

    GMatrix matrix = LinearBlock(affine);
    const GMatrix columns = matrix.Transpose();
    const double lengths[3] = {columns[0].GetLength(), columns[1].GetLength(),
                               columns[2].GetLength()};
    if (!(lengths[0] >= tol) || !IsAsLong(lengths[1], lengths[0], tol) ||
        !IsAsLong(lengths[2], lengths[0], tol)) {
        return kPreconditionFailed;
    }
    for (auto& row : matrix.m_elements) {
        for (int j = 0; j < 3; ++j) {
            row[j] /= lengths[j];
        }
    }
    if (!matrix.IsEuclidean()) {
        long err;
        MakeOrthogonal(matrix, matrix, &err);
    }
    // A shear that was too large for the one step is found here.
    if (!HasUnitDeterminant(matrix, tol)) {
        return kPreconditionFailed;
    }

    const double* m = affine.m_matrix;
    GTransf result =
        BuildTransf(matrix, {m[12], m[13], m[14]}, (lengths[0] + lengths[1] + lengths[2]) / 3, 0,
                    GetDeterminant(matrix) < 0, 0);
    result.m_hasRotation =
        SurelyRotates(matrix, SureRotationFactor(tol)) || HasAngleFrom(result, tol) ? 1 : 0;
    t = result;
    return kSuccess;
}

long ConvertG4x4ToGTransf2d(const G4x4& g, GTransf2d& t) {
    const double tol = RelativeTolerance();
    G4x4 affine = g;
    if (!NormaliseWeight(affine, tol) || !IsAffine(affine, tol)) {
        return kPreconditionFailed;
    }

    const GMatrix columns = LinearBlock(affine).Transpose();
    const double lengths[2] = {columns[0].GetLength(), columns[1].GetLength()};
    if (!(lengths[0] >= tol) || !IsAsLong(lengths[1], lengths[0], tol)) {
        return kPreconditionFailed;
    }
    const double* m = affine.m_matrix;
    GMatrix2d matrix = {
        {{m[0] / lengths[0], m[1] / lengths[1]}, {m[4] / lengths[0], m[5] / lengths[1]}}};
    if (!matrix.IsEuclidean()) {
        long err;
        MakeOrthogonal(matrix, matrix, &err);
    }
    if (!HasUnitDeterminant(matrix, tol)) {
        return kPreconditionFailed;
    }

    GTransf2d result = BuildTransf2d(matrix, {m[12], m[13]}, (lengths[1] + lengths[0]) * 0.5, 0,
                                     GetDeterminant(matrix) < 0, 0);
    long err;
    result.m_hasRotation = std::fabs(GiveRotAngle(result, &err)) >= tol ? 1 : 0;
    t = result;
    return kSuccess;
}

long GetRotationAngles(G4x4& g, double* a, double* b, double* c) {
    double angles[3] = {0.0, 0.0, 0.0};
    GTransf t;
    GPosition origin;
    const long code = ConvertG4x4ToGTransf(g, t);
    if (code == kSuccess) {
        GetRotAngles(t, &angles[0], &angles[1], &angles[2], origin);
    }
    *a = angles[0];
    *b = angles[1];
    *c = angles[2];
    return code;
}
