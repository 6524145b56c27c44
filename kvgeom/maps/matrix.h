// SPDX-License-Identifier: MIT
#pragma once

#include <kvgeom/export.h>
#include <kvgeom/points/unit_vector.h>
#include <kvgeom/points/vector.h>

/// A linear map of space: element [i][j] is row i, column j. Vectors are rows multiplied on the
/// left, v -> v * M, so row i is the image of coordinate axis i, and the product A * B maps by A
/// first.
struct tagGMatrix {
    double m_elements[3][3];  ///< row, column

    /// A copy of row i, 0 to 2. Any other index passes "GMatrix: index out of range" and gives
    /// row 2.
    KVGEOM_API GVector operator[](unsigned int i) const;

    /// 1 when no element differs from the other's by more than the relative tolerance. A NaN
    /// element differs from nothing: a matrix of NaN is equal to every matrix, IsNull and
    /// IsIdentity (the planar one is not).
    KVGEOM_API int IsEqual(const tagGMatrix& other) const;

    /// IsEqual with the zero matrix.
    KVGEOM_API int IsNull() const;

    /// IsEqual with the identity.
    KVGEOM_API int IsIdentity() const;

    /// 1 when the rows are orthonormal, as those of a rotation or reflection are: squared lengths
    /// within 1 +- 2 relative tolerances, dot products within 1 relative tolerance. 0 with NaN.
    KVGEOM_API int IsEuclidean() const;

    /// The matrix with rows and columns exchanged.
    KVGEOM_API tagGMatrix Transpose() const;

    /// this * b: this first, then b. b may be this itself.
    KVGEOM_API tagGMatrix& operator*=(const tagGMatrix& b);
};
typedef tagGMatrix GMatrix;

/// The matrix with rows a, b, c, or with columns a, b, c when asColumns is not 0.
KVGEOM_API GMatrix BuildMatrix(const GUnitVector& a, const GUnitVector& b, const GUnitVector& c,
                               int asColumns);
KVGEOM_API GMatrix BuildMatrix(const GVector& a, const GVector& b, const GVector& c, int asColumns);

/// The determinant.
KVGEOM_API double GetDeterminant(const GMatrix& m);

/// The product: a first, then b.
KVGEOM_API GMatrix operator*(const GMatrix& a, const GMatrix& b);

/// The right-hand rotation about an axis through the origin by the angle with the given cosine and
/// sine (Rodrigues' rotation formula, transposed for row vectors): about z, (1, 0, 0) maps to
/// (cosine, sine, 0). A cosine or sine beyond 1 in magnitude passes "GMatrix: abs(cosine or sine of
/// angle) > 1.0" and is used unchanged; the axis is trusted to be of unit length.
KVGEOM_API GMatrix Rotation(double cosine, double sine, const GUnitVector& axis);

/// The same by an angle in radians.
KVGEOM_API GMatrix Rotation(double angle, const GUnitVector& axis);

/// The reflection in the plane through the origin with the given unit normal: I - 2 n^T n
/// (Householder's reflection).
KVGEOM_API GMatrix Reflection(const GUnitVector& normal);

/// One orthogonalisation step, M (3 I - M^T M) / 2 (first-order Newton-Schulz iteration), from in
/// into out, which may be in itself. A matrix whose columns are already orthonormal to 1e-14 is
/// copied. Near orthonormal the step squares the deviation; far from it, it overshoots. *err is 0;
/// err must not be null.
KVGEOM_API void MakeOrthogonal(const GMatrix& in, GMatrix& out, long* err);

/// The same, repeated until no element changes by more than 1e-14. When six steps don't get there,
/// out is in, unchanged, and *err is 2 (NaN never gets there); else *err is 0. out may be in
/// itself, err must not be null.
KVGEOM_API void MakeOrthogonalIt(const GMatrix& in, GMatrix& out, long* err);

/// How far the rows are from orthonormal: *lengthError is the largest deviation of a squared row
/// length from 1, *dotError the largest of the three signed dot products of rows (a negative one
/// doesn't raise it).
KVGEOM_API void CheckOrthogonal(const GMatrix& m, double* lengthError, double* dotError);
