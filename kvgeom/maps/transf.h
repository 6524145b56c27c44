// SPDX-License-Identifier: MIT
#pragma once

#include <kvgeom/export.h>
#include <kvgeom/maps/matrix.h>
#include <kvgeom/points/unit_vector.h>
#include <kvgeom/points/vector.h>

typedef struct tagGPosition GPosition;
typedef struct tagGTransf2d GTransf2d;

/// A similarity transformation: a point p maps to m_scaling * (p * m_matrix) + m_translation, a
/// vector v to m_scaling * (v * m_matrix).
///
/// The one-byte flags, 0 or 1, describe the linear part. They are set by the builders and by the
/// conversion from a G4x4 and combined by composition; nothing recomputes them from the matrix.
struct tagGTransf {
    GMatrix m_matrix;               ///< the linear part without the scaling
    GVector m_translation;          ///< comes last
    double m_scaling;               ///< of lengths
    unsigned char m_hasRotation;    ///< the linear part rotates
    unsigned char m_hasReflection;  ///< the determinant of the linear part is negative
    unsigned char m_hasShear;       ///< the linear part is not orthonormal

    /// IsEqual with the null transformation: zero matrix, translation and scaling, no reflection.
    KVGEOM_API int IsNull() const;

    /// IsEqual with the identity transformation.
    KVGEOM_API int IsIdentity() const;

    /// 1 when the scalings differ by at most the relative tolerance, the reflection flags are the
    /// same, and the translations (GVector::IsEqual) and matrices (GMatrix::IsEqual) are equal.
    /// The rotation and shear flags take no part. 0 with NaN in scaling or translation; NaN in the
    /// matrix counts as equal, as it does there.
    KVGEOM_API int IsEqual(const tagGTransf& other) const;

    /// 1 when Inverse() is the true inverse: a scaling of at least DBL_EPSILON in magnitude and a
    /// Euclidean matrix. A scaling of NaN is not found out (in the plane it is), NaN in the matrix
    /// is.
    KVGEOM_API int IsInvertible() const;

    /// The inverse, with the transpose standing for the inverse matrix and the flags copied. A
    /// scaling below DBL_EPSILON in magnitude passes "GTransf: m_scaling is 0.0" and gives the
    /// scaling 1e30.
    KVGEOM_API tagGTransf Inverse() const;

    /// this * b: this first, then b. b may be this itself.
    KVGEOM_API tagGTransf& operator*=(const tagGTransf& b);

    /// The conversion of g (g4x4_conversion.h), or the null transformation when it fails.
    KVGEOM_API tagGTransf& operator=(const G4x4& g);

    /// What the transformation does in the plane z = 0: the upper left of the matrix, x and y of
    /// the translation (its z is dropped unseen), the scaling and the flags. A matrix that doesn't
    /// keep the plane passes, by elements beyond the distance tolerance: "z coordinate of row 0 or
    /// row 1 > distanceTolerance", "row 2 coordinates > distanceTolerance", and, for a last element
    /// neither 1 nor -1, "third coordinate in row 2 not 1.0".
    KVGEOM_API GTransf2d Convert2d() const;
    /// Becomes the transformation that does in every plane parallel to z = 0 what g does.
    KVGEOM_API void Convert3d(const GTransf2d& g);
};
typedef tagGTransf GTransf;

/// The record with the given members. Of each flag the low byte is stored; nothing is tested.
KVGEOM_API GTransf BuildTransf(const GMatrix& m, const GVector& t, double scaling, int hasRotation,
                               int hasReflection, int hasShear);

/// The composition: a first, then b. The rotation flag is 1 when one operand has it, and when both
/// have it unless all three rotation angles of the product are within the relative tolerance of 0;
/// two reflections cancel; shear stays.
KVGEOM_API GTransf operator*(const GTransf& a, const GTransf& b);

/// The angles in radians of the rotations about the fixed axes, first x by *a, then y by *b, then z
/// by *c, that make up t's matrix (Tait-Bryan angles), and t's translation. Of the two solutions
/// the one with the smaller sum of magnitudes is taken, the second of equals; where b is a quarter
/// turn, c is 0. Scaling and flags are not read, and a matrix that is no rotation is decomposed all
/// the same. Always returns 0.
KVGEOM_API long GetRotAngles(const GTransf& t, double* a, double* b, double* c, GPosition& origin);

/// The normal of the plane that a reflecting transformation mirrors in, read back out of its matrix
/// I - 2 n^T n, and its translation as offset. The first component that the diagonal shows to
/// exceed the relative tolerance (rounding hides those below about 1e-8) is positive. Returns 0; or
/// 2, with normal unwritten, when no diagonal element is far enough from 1. That the matrix is a
/// reflection is not tested: a half turn has a normal too.
KVGEOM_API long GetMirrorPlaneNormal(const GTransf& t, GUnitVector& normal, GVector& offset);
