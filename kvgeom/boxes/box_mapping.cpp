// SPDX-License-Identifier: MIT
#include <kvgeom/boxes/box_mapping.h>
#include <kvgeom/kernel/extremes.h>
#include <kvgeom/maps/homogeneous_parts.h>
#include <kvgeom/maps/linear_forms.h>
#include <kvgeom/maps/mapping.h>
#include <kvgeom/maps/transposition.h>

#include <cmath>

using namespace kvgeom::detail;

namespace {

bool IsFinite(const GPosition& p) {
    return std::isfinite(p.m_x) && std::isfinite(p.m_y) && std::isfinite(p.m_z);
}

bool IsFinite(const GBox& box) {
    return IsFinite(box.m_low) && IsFinite(box.m_high);
}

template <class PointMap>
GBox MapCorners(const GBox& box, PointMap map) {
    GPosition corners[8];
    box.GiveCorners(corners);
    for (GPosition& corner : corners) {
        corner = map(corner);
    }
    return BuildBox(8, corners);
}

struct Extent {
    double low;
    double high;
};

// The extremes of x * a + y * b + z * c over the box (Arvo, Transforming axis-aligned bounding
// boxes, Graphics Gems, 1990). Rounding is monotonic: with finite numbers, the sum of the extreme
// terms is the extreme of the eight sums, bit for bit but for the sign of a zero.
Extent ExtremesOfSum(const GBox& box, double a, double b, double c) {
    const double x[2] = {box.m_low.m_x * a, box.m_high.m_x * a};
    const double y[2] = {box.m_low.m_y * b, box.m_high.m_y * b};
    const double z[2] = {box.m_low.m_z * c, box.m_high.m_z * c};
    return {Smaller(x[0], x[1]) + Smaller(y[0], y[1]) + Smaller(z[0], z[1]),
            Larger(x[0], x[1]) + Larger(y[0], y[1]) + Larger(z[0], z[1])};
}

// The box around the images of the corners in the row form.
GBox MapExtremes(const GBox& box, const GMatrix& matrix) {
    const auto& m = matrix.m_elements;
    const Extent x = ExtremesOfSum(box, m[0][0], m[1][0], m[2][0]);
    const Extent y = ExtremesOfSum(box, m[0][1], m[1][1], m[2][1]);
    const Extent z = ExtremesOfSum(box, m[0][2], m[1][2], m[2][2]);
    return {{x.low, y.low, z.low}, {x.high, y.high, z.high}};
}

// In the row form. An affine matrix gives every finite corner the weight 1, and a division by 1
// changes nothing; so it can be mapped by its extremes.
GBox MapHomogeneous(const G4x4& a, const GBox& box) {
    if (IsExactlyAffine(a) && IsFinite(box)) {
        const auto& m = a.m_matrix;
        GBox result = MapExtremes(box, LinearBlock(a));
        result += GVector{m[12], m[13], m[14]};
        if (IsFinite(result)) {
            return result;
        }
    }
    return MapCorners(box, [&a](const GPosition& p) { return a * p; });
}

}  // namespace

GBox& GBox::operator*=(const GMatrix& m) {
    return *this = *this * m;
}

GBox& GBox::operator*=(const GTransf& t) {
    return *this = *this * t;
}

GBox& GBox::operator*=(const G4x4& a) {
    return *this = a * *this;
}

GBox operator*(const GBox& box, const GMatrix& m) {
    if (m.IsIdentity()) {
        return box;
    }
    if (IsFinite(box)) {
        const GBox result = MapExtremes(box, m);
        if (IsFinite(result)) {
            return result;
        }
    }
    return MapCorners(box, [&m](const GPosition& p) { return RowForm(p, m); });
}

GBox operator*(const GMatrix& m, const GBox& box) {
    return box * m.Transpose();
}

GBox operator*(const GBox& box, const GTransf& t) {
    GBox result = box * t.m_scaling * t.m_matrix;
    result += t.m_translation;
    return result;
}

GBox operator*(const GTransf& t, const GBox& box) {
    GBox result = t.m_matrix * (box * t.m_scaling);
    result += t.m_translation;
    return result;
}

GBox operator*(const GBox& box, const G4x4& a) {
    return MapHomogeneous(Transposed(a), box);
}

GBox operator*(const G4x4& a, const GBox& box) {
    return MapHomogeneous(a, box);
}
