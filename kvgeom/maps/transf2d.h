// SPDX-License-Identifier: MIT
#pragma once

#include <kvgeom/export.h>
#include <kvgeom/maps/matrix2d.h>
#include <kvgeom/points/vector2d.h>

/// A similarity transformation of the plane: a point p maps to m_scaling * (p * m_matrix) +
/// m_translation, a vector v to m_scaling * (v * m_matrix).
///
/// The one-byte flags, 0 or 1, describe the linear part. They are set by the builders and by the
/// conversions and combined by composition; nothing recomputes them from the matrix.
struct tagGTransf2d {
    GMatrix2d m_matrix;             ///< the linear part without the scaling
    GVector2d m_translation;        ///< comes last
    double m_scaling;               ///< of lengths
    unsigned char m_hasRotation;    ///< the linear part rotates
    unsigned char m_hasReflection;  ///< the determinant of the linear part is negative
    unsigned char m_hasShear;       ///< the linear part is not orthonormal

    /// IsEqual with the null transformation: zero matrix, translation and scaling, no reflection.
    KVGEOM_API int IsNull() const;

    /// IsEqual with the identity transformation.
    KVGEOM_API int IsIdentity() const;

    /// 1 when the scalings differ by at most the relative tolerance, the reflection flags are the
    /// same, and the translations (GVector2d::IsEqual) and matrices (GMatrix2d::IsEqual) are equal.
    /// The rotation and shear flags take no part. 0 with NaN.
    KVGEOM_API int IsEqual(const tagGTransf2d& other) const;

    /// 1 when Inverse() is the true inverse: a scaling of at least DBL_EPSILON in magnitude and a
    /// Euclidean matrix. 0 with NaN in either.
    KVGEOM_API int IsInvertible() const;

    /// The inverse, with the transpose standing for the inverse matrix and the flags copied. A
    /// scaling below DBL_EPSILON in magnitude passes "GTransf: m_scaling is 0.0" (that of the
    /// transformation of space) and gives the scaling 1e30.
    KVGEOM_API tagGTransf2d Inverse() const;

    /// this * b: this first, then b. b may be this itself.
    KVGEOM_API tagGTransf2d& operator*=(const tagGTransf2d& b);
};
typedef tagGTransf2d GTransf2d;

/// The record with the given members. Of each flag the low byte is stored; nothing is tested.
KVGEOM_API GTransf2d BuildTransf2d(const GMatrix2d& m, const GVector2d& t, double scaling,
                                   int hasRotation, int hasReflection, int hasShear);

/// The composition: a first, then b. The rotation flag is 1 when one operand has it, and when both
/// have it unless the rotation angle of the product is within the relative tolerance of 0; two
/// reflections cancel; shear stays.
KVGEOM_API GTransf2d operator*(const GTransf2d& a, const GTransf2d& b);

/// The angle in radians, 0 to 2 pi, by which t's matrix turns the x axis counter-clockwise. An
/// angle below the relative tolerance to either side is 0.0. *err is not written, and err may be
/// null.
KVGEOM_API double GiveRotAngle(const GTransf2d& t, long* err);
