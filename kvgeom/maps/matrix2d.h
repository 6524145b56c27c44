// SPDX-License-Identifier: MIT
#pragma once

#include <kvgeom/export.h>
#include <kvgeom/points/unit_vector2d.h>
#include <kvgeom/points/vector2d.h>

/// A linear map of the plane: element [i][j] is row i, column j. Vectors are rows multiplied on the
/// left, v -> v * M, so row i is the image of coordinate axis i, and the product A * B maps by A
/// first.
struct tagGMatrix2d {
    double m_elements[2][2];  ///< row, column

    /// A copy of row i, 0 or 1. Any other index passes "GMatrix2d: index out of range" and gives
    /// row 1.
    KVGEOM_API GVector2d operator[](unsigned int i) const;

    /// 1 when every element differs from the other's by at most the relative tolerance. 0 with NaN,
    /// and so are IsNull and IsIdentity (a matrix of space is taken for equal).
    KVGEOM_API int IsEqual(const tagGMatrix2d& other) const;

    /// IsEqual with the zero matrix.
    KVGEOM_API int IsNull() const;

    /// IsEqual with the identity.
    KVGEOM_API int IsIdentity() const;

    /// 1 when the rows are orthonormal, as those of a rotation or reflection are: squared lengths
    /// within 1 +- 2 relative tolerances, the dot product within 1 relative tolerance. 0 with NaN.
    KVGEOM_API int IsEuclidean() const;

    /// The matrix with rows and columns exchanged.
    KVGEOM_API tagGMatrix2d Transpose() const;

    /// this * b: this first, then b. b may be this itself.
    KVGEOM_API tagGMatrix2d& operator*=(const tagGMatrix2d& b);
};
typedef tagGMatrix2d GMatrix2d;

/// The matrix with rows a, b, or with columns a, b when asColumns is not 0.
KVGEOM_API GMatrix2d BuildMatrix2d(const GUnitVector2d& a, const GUnitVector2d& b, int asColumns);
KVGEOM_API GMatrix2d BuildMatrix2d(const GVector2d& a, const GVector2d& b, int asColumns);

/// The determinant.
KVGEOM_API double GetDeterminant(const GMatrix2d& m);

/// The product: a first, then b.
KVGEOM_API GMatrix2d operator*(const GMatrix2d& a, const GMatrix2d& b);

/// The counter-clockwise rotation about the origin by the angle with the given cosine and sine:
/// (1, 0) maps to (cosine, sine). The rows are normalised (those of a rotation in space are not),
/// so any pair that isn't null gives an orthonormal matrix. A cosine or sine beyond 1 in magnitude
/// passes "GMatrix2d: abs(cosine or sine of angle) > 1.0", a null pair the message of
/// BuildUnitVector2d for either row.
KVGEOM_API GMatrix2d Rotation2d(double cosine, double sine);

/// The same by an angle in radians.
KVGEOM_API GMatrix2d Rotation2d(double angle);

/// The reflection in the line through the origin along the direction (a reflection in space takes
/// the normal instead): I - 2 u^T u, with u the direction's GetPerpVector2d.
KVGEOM_API GMatrix2d Reflection2d(const GUnitVector2d& direction);

/// One orthogonalisation step, M (3 I - M^T M) / 2 (first-order Newton-Schulz iteration), from in
/// into out, which may be in itself. A matrix whose columns are already orthonormal to 1e-14 is
/// copied. Near orthonormal the step squares the deviation; far from it, it overshoots. *err is 0;
/// err must not be null.
KVGEOM_API void MakeOrthogonal(const GMatrix2d& in, GMatrix2d& out, long* err);
