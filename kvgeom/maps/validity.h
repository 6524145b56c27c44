// SPDX-License-Identifier: MIT
#pragma once

#include <kvgeom/export.h>

typedef struct tagGMatrix GMatrix;
typedef struct tagGTransf GTransf;
typedef struct tagG4x4 G4x4;
typedef struct tagGMatrix2d GMatrix2d;
typedef struct tagGTransf2d GTransf2d;

// The validity checks pass a message for each violation they find (assertion_hook.h). They never
// change the record. Where there is an int*, it becomes 1 when no violation was found, else 0.

/// The check of each row as a GVector.
KVGEOM_API void Gassert_valid(const GMatrix& m);
KVGEOM_API void Gassert_valid(const GMatrix& m, int* isValid);

/// The check of the translation, and no further test if that fails. "GTransf has an invalid scale"
/// for a scaling that is not finite or below the distance tolerance, "GTransf is not Euclidean",
/// "GTransf has Shear" for the flag; and "GTransf: m_hasReflection is set, but determinant > 0",
/// which leaves *isValid.
KVGEOM_API void Gassert_valid(const GTransf& t, int* isValid);
KVGEOM_API void Gassert_valid(const GTransf& t);

/// Whether the last column is 0, 0, 0, 1 within the relative tolerance: "G4x4: m_matrix[3] is not
/// 0", likewise for [7] and [11], "G4x4: m_matrix[15] is not 1".
KVGEOM_API void Gassert_valid(const G4x4& a);

// The checks of planar records pass no message, unless the library was built with
// KVGEOM_DIAGNOSTICS: then the messages are those of the twins in space, under the planar names.

/// The check of each row.
KVGEOM_API void Gassert_valid(const GMatrix2d& m);

/// The matrix first, then as for GTransf, all tests in any case and without that of the shear flag.
KVGEOM_API void Gassert_valid(const GTransf2d& t);
