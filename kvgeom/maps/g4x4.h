// SPDX-License-Identifier: MIT
#pragma once

#include <kvgeom/export.h>

typedef struct tagGTransf GTransf;

/// A homogeneous transformation: any affine or projective map of space. Read as four rows of four,
/// with a point as the row (x, y, z, 1) on the left:
///
///     0  1  2 |  3      linear part, scaling included | projective column
///     4  5  6 |  7
///     8  9 10 | 11
///    12 13 14 | 15      translation                   | homogeneous weight
///
/// An affine map has 0, 0, 0 and 1 in the last column. Products apply their right operand first,
/// so that a * (b * p) is (a * b) * p: the opposite of GTransf and GMatrix.
struct tagG4x4 {
    double m_matrix[16];  ///< row after row

    /// Becomes the matrix of the transformation: its matrix times its scaling, its translation. The
    /// flags are not represented.
    KVGEOM_API tagG4x4& operator=(const GTransf& t);

    /// this * b: b first, then this. b may be this itself.
    KVGEOM_API tagG4x4& operator*=(const tagG4x4& b);
    KVGEOM_API tagG4x4& operator*=(const GTransf& b);

    /// The inverse, by Gauss-Jordan elimination with full pivoting. A best remaining pivot below
    /// 1e-20 in magnitude passes "Can't find inverse since the g4x4 is singular" and gives the
    /// identity. IsInvertible() warns of most such matrices, but goes by the determinant: the two
    /// may differ for elements of very different sizes, and for projective matrices.
    KVGEOM_API tagG4x4 Inverse() const;

    /// 1 when the matrices are equal after each is divided by its own weight: translations within
    /// the distance tolerance, all other elements within the relative one. A weight of 0 on either
    /// side is unequal to everything, and so is NaN.
    KVGEOM_API int IsEqual(const tagG4x4& other) const;

    /// 1 when the determinant of the 3x3 part times the weight exceeds the relative tolerance cubed
    /// in magnitude. The projective column plays no part. 0 with NaN.
    KVGEOM_API int IsInvertible() const;
    /// The same test.
    KVGEOM_API int IsValid() const;

    /// 1 when the 3x3 part mirrors: its determinant, relative to the cube of its first row's
    /// length, is not positive. 0 when that row is shorter than the relative tolerance, and with
    /// NaN.
    KVGEOM_API int HasReflection() const;

    /// 1 when a rotation angle of the converted transformation (g4x4_conversion.h) reaches the
    /// relative tolerance, or when there is no conversion; so it is with NaN in the linear part.
    KVGEOM_API int HasRotation() const;
};
typedef tagG4x4 G4x4;

/// The matrix with the 16 given elements, in index order.
KVGEOM_API G4x4 Build4x4(const double* elements);

/// Products: the right operand is applied first. A GTransf takes part as the matrix it converts to.
KVGEOM_API G4x4 operator*(const G4x4& a, const G4x4& b);
KVGEOM_API G4x4 operator*(const G4x4& a, const GTransf& b);
KVGEOM_API G4x4 operator*(const GTransf& a, const G4x4& b);
