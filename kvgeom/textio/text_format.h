// SPDX-License-Identifier: MIT
#pragma once

#include <kvgeom/boxes/box.h>
#include <kvgeom/boxes/box2d.h>
#include <kvgeom/export.h>
#include <kvgeom/maps/g4x4.h>
#include <kvgeom/maps/matrix.h>
#include <kvgeom/maps/matrix2d.h>
#include <kvgeom/maps/transf.h>
#include <kvgeom/maps/transf2d.h>
#include <kvgeom/volumes/bore_cone.h>
#include <kvgeom/volumes/bore_line.h>
#include <kvgeom/volumes/pt_fence.h>
#include <kvgeom/volumes/pt_frustum.h>
#include <kvgeom/volumes/rt_prism.h>

#include <cstdio>

// Records as text: the writers label what they write, for people; the readers take bare numbers,
// without labels, separated by any white space. The caller opens, positions and closes the stream.
//
// Writers. Numbers have a decimal point whatever the locale, and the form that printf gives them:
// "%20.15le" (the bore line's radius "%15.15lf"), counts and indices "%lu", flags "%hu"; exponents
// have two digits, or three where they need them, on every platform. So 16 digits are written, of
// the 17 that some doubles need to be read back bit for bit, and of a tiny radius fewer. Errors of
// the stream are not reported.
//
// Readers. Numbers are converted by the C library's scanf, with a decimal point whatever the
// locale. What can't be converted (a label, the end of the stream) leaves its member unchanged and
// is no error; later conversions find the stream where the failed one left it. Nothing is
// normalised or checked.
//
// *err is 0 unless another code is named; f and err must not be null. No messages are passed.

/// Writes six lines: "GBoreLine:", point, direction, front, back, radius.
KVGEOM_API void GPrint_to_File(std::FILE* f, const GBoreLine& r, long* err);
/// Reads nine numbers: m_point x y z, m_direction x y z, m_front, m_back, m_radius.
KVGEOM_API void GRead_from_File(std::FILE* f, GBoreLine& r, long* err);

/// Writes "GBoreCone:", the lines of m_boreLine, and a line for the eye point.
KVGEOM_API void GPrint_to_File(std::FILE* f, const GBoreCone& r, long* err);
/// Reads twelve numbers: those of m_boreLine, then m_eye x y z.
KVGEOM_API void GRead_from_File(std::FILE* f, GBoreCone& r, long* err);

/// Writes "GPtFence:", the number of points, a line for each point with its index from 0, and a
/// line each for direction, front and back. *err is 2, and nothing written, when m_points is null.
KVGEOM_API void GPrint_to_File(std::FILE* f, const GPtFence& r, long* err);
/// Reads m_count, x y z of each point into the array that m_points designates, m_direction x y z,
/// m_front, m_back. The array must have room for the points: at most 100. *err is 2, and nothing
/// read, when m_points is null; 1, and only the count read, when m_count is above 100 afterwards.
KVGEOM_API void GRead_from_File(std::FILE* f, GPtFence& r, long* err);

/// Writes "GPtFrustum:", the lines of m_fence, and a line for the eye point. *err is 2, and only
/// the first line written, when m_fence.m_points is null.
KVGEOM_API void GPrint_to_File(std::FILE* f, const GPtFrustum& r, long* err);
/// Reads the numbers of m_fence, as its own reader does, then m_eye x y z, unless *err is 1 or 2.
KVGEOM_API void GRead_from_File(std::FILE* f, GPtFrustum& r, long* err);

/// Writes "GRtPrism:", the lines of m_transf, the number of points, a line for each point with its
/// index from 0, and the height. *err is 2, and nothing written, when m_points is null.
KVGEOM_API void GPrint_to_File(std::FILE* f, const GRtPrism& r, long* err);
/// Reads the sixteen numbers of m_transf, m_count, x y z of each point into the array that m_points
/// designates, m_height. The array must have room for the points: at most 100. *err is 2, and
/// nothing read, when m_points is null; 1, and nothing read after the count, when m_count is above
/// 100 afterwards.
KVGEOM_API void GRead_from_File(std::FILE* f, GRtPrism& r, long* err);

/// Writes four lines: "GMatrix (in rows):" and the rows.
KVGEOM_API void GPrint_to_File(std::FILE* f, const GMatrix& r, long* err);
/// Reads nine numbers: the rows.
KVGEOM_API void GRead_from_File(std::FILE* f, GMatrix& r, long* err);

/// Writes 24 lines: the elements of m_matrix one a line in the order 0 1 2, 4 5 6, 8 9 10, 12 13
/// 14, 3 7 11 15, with an empty line between the groups, and a legend of four lines.
KVGEOM_API void GPrint_to_File(std::FILE* f, const G4x4& r, long* err);
/// Reads sixteen numbers, the elements of m_matrix in the same order: what the writer wrote can be
/// read back, and the legend stays in the stream.
KVGEOM_API void GRead_from_File(std::FILE* f, G4x4& r, long* err);

/// Writes three lines: "GBox:", low, high.
KVGEOM_API void GPrint_to_File(std::FILE* f, const GBox& r, long* err);
/// Reads six numbers: m_low x y z, m_high x y z.
KVGEOM_API void GRead_from_File(std::FILE* f, GBox& r, long* err);

/// Writes "GTransf:", the lines of m_matrix, and a line each for translation, scaling and the
/// rotation, reflection and shear flags.
KVGEOM_API void GPrint_to_File(std::FILE* f, const GTransf& r, long* err);
/// Reads sixteen numbers: the nine of m_matrix, m_translation x y z, m_scaling, m_hasRotation,
/// m_hasReflection, m_hasShear. Of each flag, read as a number of 16 bits, the low byte is stored.
KVGEOM_API void GRead_from_File(std::FILE* f, GTransf& r, long* err);

/// Writes three lines: "GMatrix2d (in rows):" and the rows.
KVGEOM_API void GPrint_to_File(std::FILE* f, const GMatrix2d& r, long* err);
/// Reads four numbers: the rows.
KVGEOM_API void GRead_from_File(std::FILE* f, GMatrix2d& r, long* err);

/// Writes three lines: "GBox2d:", low, high.
KVGEOM_API void GPrint_to_File(std::FILE* f, const GBox2d& r, long* err);
/// Reads four numbers: m_low x y, m_high x y.
KVGEOM_API void GRead_from_File(std::FILE* f, GBox2d& r, long* err);

/// Writes "GTransf2d:", the lines of m_matrix, and a line each for translation, scaling and the
/// rotation, reflection and shear flags.
KVGEOM_API void GPrint_to_File(std::FILE* f, const GTransf2d& r, long* err);
/// Reads ten numbers: the four of m_matrix, m_translation x y, m_scaling, m_hasRotation,
/// m_hasReflection, m_hasShear. Of each flag, read as a number of 16 bits, the low byte is stored.
KVGEOM_API void GRead_from_File(std::FILE* f, GTransf2d& r, long* err);
