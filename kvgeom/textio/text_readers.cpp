// SPDX-License-Identifier: MIT
#include <kvgeom/kernel/error_codes.h>
#include <kvgeom/textio/scanner.h>
#include <kvgeom/textio/text_format.h>

using namespace kvgeom::detail;

namespace {

// The readers aren't told how much room the caller's array has. What a stream may ask for is
// bounded, so that an array of this size is always enough.
constexpr unsigned long kMostPoints = 100;

template <class Triple>
void ScanTriple(std::FILE* f, Triple& v) {
    Scan(f, v.m_x, v.m_y, v.m_z);
}

template <class Pair>
void ScanPair(std::FILE* f, Pair& v) {
    Scan(f, v.m_x, v.m_y);
}

void ScanFlag(std::FILE* f, unsigned char& flag) {
    unsigned short number = flag;
    Scan(f, number);
    flag = static_cast<unsigned char>(number & 0xFFU);
}

// What follows the translation of a transformation, of space or of the plane.
template <class Transformation>
void ScanScalingAndFlags(std::FILE* f, Transformation& t) {
    Scan(f, t.m_scaling);
    ScanFlag(f, t.m_hasRotation);
    ScanFlag(f, t.m_hasReflection);
    ScanFlag(f, t.m_hasShear);
}

void ScanPoints(std::FILE* f, GPosition* points, unsigned long& count, long* err) {
    Scan(f, count);
    if (count > kMostPoints) {
        *err = kLimitExceeded;
        return;
    }
    for (unsigned long i = 0; i < count; ++i) {
        ScanTriple(f, points[i]);
    }
}

}  // namespace

void GRead_from_File(std::FILE* f, GBoreLine& r, long* err) {
    *err = kSuccess;
    ScanTriple(f, r.m_point);
    ScanTriple(f, r.m_direction);
    Scan(f, r.m_front);
    Scan(f, r.m_back);
    Scan(f, r.m_radius);
}

void GRead_from_File(std::FILE* f, GBoreCone& r, long* err) {
    GRead_from_File(f, r.m_boreLine, err);
    ScanTriple(f, r.m_eye);
}

void GRead_from_File(std::FILE* f, GPtFence& r, long* err) {
    *err = kSuccess;
    if (r.m_points == nullptr) {
        *err = kPreconditionFailed;
        return;
    }
    ScanPoints(f, r.m_points, r.m_count, err);
    if (*err != kSuccess) {
        return;
    }
    ScanTriple(f, r.m_direction);
    Scan(f, r.m_front, r.m_back);
}

void GRead_from_File(std::FILE* f, GPtFrustum& r, long* err) {
    GRead_from_File(f, r.m_fence, err);
    if (*err != kSuccess) {
        return;
    }
    ScanTriple(f, r.m_eye);
}

void GRead_from_File(std::FILE* f, GRtPrism& r, long* err) {
    if (r.m_points == nullptr) {
        *err = kPreconditionFailed;
        return;
    }
    GRead_from_File(f, r.m_transf, err);
    ScanPoints(f, r.m_points, r.m_count, err);
    if (*err != kSuccess) {
        return;
    }
    Scan(f, r.m_height);
}

void GRead_from_File(std::FILE* f, GMatrix& r, long* err) {
    *err = kSuccess;
    for (auto& row : r.m_elements) {
        Scan(f, row[0], row[1], row[2]);
    }
}

void GRead_from_File(std::FILE* f, G4x4& r, long* err) {
    *err = kSuccess;
    double* const e = r.m_matrix;
    for (unsigned row = 0; row < 16; row += 4) {
        Scan(f, e[row], e[row + 1], e[row + 2]);
    }
    Scan(f, e[3], e[7], e[11], e[15]);
}

void GRead_from_File(std::FILE* f, GBox& r, long* err) {
    *err = kSuccess;
    ScanTriple(f, r.m_low);
    ScanTriple(f, r.m_high);
}

void GRead_from_File(std::FILE* f, GTransf& r, long* err) {
    GRead_from_File(f, r.m_matrix, err);
    ScanTriple(f, r.m_translation);
    ScanScalingAndFlags(f, r);
}

void GRead_from_File(std::FILE* f, GMatrix2d& r, long* err) {
    *err = kSuccess;
    for (auto& row : r.m_elements) {
        Scan(f, row[0], row[1]);
    }
}

void GRead_from_File(std::FILE* f, GBox2d& r, long* err) {
    *err = kSuccess;
    ScanPair(f, r.m_low);
    ScanPair(f, r.m_high);
}

void GRead_from_File(std::FILE* f, GTransf2d& r, long* err) {
    GRead_from_File(f, r.m_matrix, err);
    ScanPair(f, r.m_translation);
    ScanScalingAndFlags(f, r);
}
