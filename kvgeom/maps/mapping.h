// SPDX-License-Identifier: MIT
#pragma once

// How matrices (GMatrix), similarity transformations (GTransf) and homogeneous matrices (G4x4)
// carry points, vectors and unit vectors.
//
// Points and vectors are rows, multiplied on the left of a matrix. This row form is what the point-
// first operators with a GMatrix or GTransf compute, what every *= computes, and what the matrix-
// first operators with a G4x4 compute. The column form (the transposed matrix) is what the matrix-
// first operator with a GMatrix and the point-first operators with a G4x4 compute.
//
// Sums run over x, y, z and then the constant term, from left to right.

#include <kvgeom/export.h>
#include <kvgeom/maps/g4x4.h>
#include <kvgeom/maps/linear_forms.h>
#include <kvgeom/maps/matrix.h>
#include <kvgeom/maps/transf.h>
#include <kvgeom/points/position.h>
#include <kvgeom/points/unit_vector.h>
#include <kvgeom/points/vector.h>

/// The row form p * M, and the column form M * p.
inline GPosition operator*(const GPosition& p, const GMatrix& m) {
    return kvgeom::detail::RowForm(p, m);
}
inline GPosition operator*(const GMatrix& m, const GPosition& p) {
    return kvgeom::detail::ColumnForm(m, p);
}
inline GVector operator*(const GVector& v, const GMatrix& m) {
    return kvgeom::detail::RowForm(v, m);
}
inline GVector operator*(const GMatrix& m, const GVector& v) {
    return kvgeom::detail::ColumnForm(m, v);
}

/// scaling * (p * matrix) + translation. The flags of t are not consulted.
inline GPosition operator*(const GPosition& p, const GTransf& t) {
    const GPosition q = kvgeom::detail::RowForm(p, t.m_matrix);
    return {q.m_x * t.m_scaling + t.m_translation.m_x, q.m_y * t.m_scaling + t.m_translation.m_y,
            q.m_z * t.m_scaling + t.m_translation.m_z};
}

/// (v * matrix) * scaling: a vector is not translated. The flags of t are not consulted.
KVGEOM_API GVector operator*(const GVector& v, const GTransf& t);

/// The unit vector along u * matrix; neither scaling nor translation applies. A transformation with
/// its shear flag set passes "GUnitVector: multiplying by trans, trans has Shear", and maps all the
/// same. An image of near-zero length gives (0, 0, 0) with the message of BuildUnitVector.
KVGEOM_API GUnitVector operator*(const GUnitVector& u, const GTransf& t);

/// Maps by t.Inverse(), computed anew in each call.
KVGEOM_API GPosition operator^(const GPosition& p, const GTransf& t);
KVGEOM_API GVector operator^(const GVector& v, const GTransf& t);
KVGEOM_API GUnitVector operator^(const GUnitVector& u, const GTransf& t);

/// The unit vector along u * M (row form).
KVGEOM_API GUnitVector operator*(const GUnitVector& u, const GMatrix& m);
/// The unit vector along M * u (column form).
KVGEOM_API GUnitVector operator*(const GMatrix& m, const GUnitVector& u);

/// The homogeneous row form: the row (x, y, z, 1) times a, divided by the weight in its last
/// column. A weight below DBL_EPSILON in magnitude passes "GPosition: in multiplying G4x4, trying
/// to divide by 0.0", and the numerators are multiplied by 1e30 instead.
KVGEOM_API GPosition operator*(const G4x4& a, const GPosition& p);
/// The homogeneous column form: as above, with a transposed.
KVGEOM_API GPosition operator*(const GPosition& p, const G4x4& a);

/// The row form without translation. The weight is that of the point with the same coordinates.
/// Message for a near-zero weight: "GVector: multiplying by G4x4, trying to divide by 0.0".
KVGEOM_API GVector operator*(const G4x4& a, const GVector& v);
/// The column form of the same.
KVGEOM_API GVector operator*(const GVector& v, const G4x4& a);

/// The unit vector along the image of u as a vector; a negative weight reverses it.
KVGEOM_API GUnitVector operator*(const G4x4& a, const GUnitVector& u);
/// The column form of the same.
KVGEOM_API GUnitVector operator*(const GUnitVector& u, const G4x4& a);
