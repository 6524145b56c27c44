// SPDX-License-Identifier: MIT
#include <kvgeom/kernel/error_codes.h>
#include <kvgeom/textio/text_format.h>
#include <kvgeom/textio/text_output.h>

#include <string_view>

using namespace kvgeom::detail;

namespace {

// The label stands before the first number; a space comes before each of the others.
template <class... Doubles>
void Line(TextOutput& out, std::string_view label, double first, Doubles... others) {
    out.Text(label);
    out.Scientific(first);
    ((out.Text(" "), out.Scientific(others)), ...);
    out.EndLine();
}

template <class Triple>
void TripleLine(TextOutput& out, std::string_view label, const Triple& v) {
    Line(out, label, v.m_x, v.m_y, v.m_z);
}

template <class Pair>
void PairLine(TextOutput& out, std::string_view label, const Pair& v) {
    Line(out, label, v.m_x, v.m_y);
}

void CountLine(TextOutput& out, std::string_view label, unsigned long count) {
    out.Text(label);
    out.Count(count);
    out.EndLine();
}

void WritePoints(TextOutput& out, const GPosition* points, unsigned long count) {
    CountLine(out, " number of points: ", count);
    for (unsigned long i = 0; i < count; ++i) {
        out.Text(" [");
        out.Count(i);
        TripleLine(out, "] ", points[i]);
    }
}

// What follows the translation of a transformation, of space or of the plane.
template <class Transformation>
void WriteScalingAndFlags(TextOutput& out, const Transformation& t) {
    Line(out, " scaling: ", t.m_scaling);
    CountLine(out, " hasRot: ", t.m_hasRotation);
    CountLine(out, " hasRef: ", t.m_hasReflection);
    CountLine(out, " hasShe: ", t.m_hasShear);
}

// Writers of records that are parts of other records.

void Write(TextOutput& out, const GMatrix& r) {
    out.Text("GMatrix (in rows):\n");
    for (const auto& row : r.m_elements) {
        Line(out, " ", row[0], row[1], row[2]);
    }
}

void Write(TextOutput& out, const GMatrix2d& r) {
    out.Text("GMatrix2d (in rows):\n");
    for (const auto& row : r.m_elements) {
        Line(out, " ", row[0], row[1]);
    }
}

void Write(TextOutput& out, const GTransf& r) {
    out.Text("GTransf:\n");
    Write(out, r.m_matrix);
    TripleLine(out, " translation: ", r.m_translation);
    WriteScalingAndFlags(out, r);
}

void Write(TextOutput& out, const GBoreLine& r) {
    out.Text("GBoreLine:\n");
    TripleLine(out, " point: ", r.m_point);
    TripleLine(out, " direction: ", r.m_direction);
    Line(out, " front:  ", r.m_front);
    Line(out, " back:   ", r.m_back);
    out.Text(" radius: ");
    out.Fixed(r.m_radius);
    out.EndLine();
}

void Write(TextOutput& out, const GPtFence& r, long* err) {
    if (r.m_points == nullptr) {
        *err = kPreconditionFailed;
        return;
    }
    out.Text("GPtFence:\n");
    WritePoints(out, r.m_points, r.m_count);
    TripleLine(out, " direction: ", r.m_direction);
    Line(out, " front: ", r.m_front);
    Line(out, " back:  ", r.m_back);
}

}  // namespace

void GPrint_to_File(std::FILE* f, const GBoreLine& r, long* err) {
    *err = kSuccess;
    TextOutput out(f);
    Write(out, r);
}

void GPrint_to_File(std::FILE* f, const GBoreCone& r, long* err) {
    *err = kSuccess;
    TextOutput out(f);
    out.Text("GBoreCone:\n");
    Write(out, r.m_boreLine);
    TripleLine(out, " eye point: ", r.m_eye);
}

void GPrint_to_File(std::FILE* f, const GPtFence& r, long* err) {
    *err = kSuccess;
    TextOutput out(f);
    Write(out, r, err);
}

void GPrint_to_File(std::FILE* f, const GPtFrustum& r, long* err) {
    *err = kSuccess;
    TextOutput out(f);
    out.Text("GPtFrustum:\n");
    Write(out, r.m_fence, err);
    if (*err != kSuccess) {
        return;
    }
    TripleLine(out, " eye point: ", r.m_eye);
}

void GPrint_to_File(std::FILE* f, const GRtPrism& r, long* err) {
    *err = kSuccess;
    if (r.m_points == nullptr) {
        *err = kPreconditionFailed;
        return;
    }
    TextOutput out(f);
    out.Text("GRtPrism:\n");
    Write(out, r.m_transf);
    WritePoints(out, r.m_points, r.m_count);
    Line(out, " height: ", r.m_height);
}

void GPrint_to_File(std::FILE* f, const GMatrix& r, long* err) {
    *err = kSuccess;
    TextOutput out(f);
    Write(out, r);
}

void GPrint_to_File(std::FILE* f, const G4x4& r, long* err) {
    *err = kSuccess;
    TextOutput out(f);
    const double* const e = r.m_matrix;
    // The three rows of the linear block and the translation, an empty line before all but one.
    for (unsigned row = 0; row < 16; row += 4) {
        Line(out, row == 0 ? "" : "\n", e[row]);
        Line(out, "", e[row + 1]);
        Line(out, "", e[row + 2]);
    }
    Line(out, "\n ", e[3]);
    Line(out, " ", e[7]);
    Line(out, " ", e[11]);
    Line(out, " ", e[15]);
    out.Text(
        "G4x4: Rotation, Translation, extras\n"
        "Rotation: 0 1 2, 4 5 6, 8 9 10\n"
        "Translation: 12 13 14\n"
        "Extras(perspective): 3 7 11 15\n");
}

void GPrint_to_File(std::FILE* f, const GBox& r, long* err) {
    *err = kSuccess;
    TextOutput out(f);
    out.Text("GBox:\n");
    TripleLine(out, " low:  ", r.m_low);
    TripleLine(out, " high: ", r.m_high);
}

void GPrint_to_File(std::FILE* f, const GTransf& r, long* err) {
    *err = kSuccess;
    TextOutput out(f);
    Write(out, r);
}

void GPrint_to_File(std::FILE* f, const GMatrix2d& r, long* err) {
    *err = kSuccess;
    TextOutput out(f);
    Write(out, r);
}

void GPrint_to_File(std::FILE* f, const GBox2d& r, long* err) {
    *err = kSuccess;
    TextOutput out(f);
    out.Text("GBox2d:\n");
    PairLine(out, " low:  ", r.m_low);
    PairLine(out, " high: ", r.m_high);
}

void GPrint_to_File(std::FILE* f, const GTransf2d& r, long* err) {
    *err = kSuccess;
    TextOutput out(f);
    out.Text("GTransf2d:\n");
    Write(out, r.m_matrix);
    PairLine(out, " translation: ", r.m_translation);
    WriteScalingAndFlags(out, r);
}
