// SPDX-License-Identifier: MIT
#include <kvgeom/kernel/assertion_hook.h>
#include <kvgeom/maps/homogeneous_forms.h>
#include <kvgeom/maps/linear_forms2d.h>
#include <kvgeom/maps/mapping2d.h>
#include <kvgeom/points/direction2d.h>

using namespace kvgeom::detail;

namespace {

// The row (x, y, 0, 1) times column j.
template <Form form>
double AffinePart(const G4x4& a, const GPosition2d& p, int j) {
    return p.m_x * Element<form>(a, 0, j) + p.m_y * Element<form>(a, 1, j) + Element<form>(a, 3, j);
}

template <Form form>
GPosition2d Map(const G4x4& a, const GPosition2d& p) {
    const double factor = ReciprocalWeight(
        AffinePart<form>(a, p, 3), "GPosition2d: in multiplying G4x4, trying to divide by 0.0");
    return {AffinePart<form>(a, p, 0) * factor, AffinePart<form>(a, p, 1) * factor};
}

void ReportShear(const GTransf2d& t) {
    if (t.m_hasShear) {
        Gassert_debug("GUnitVector2d: transformation has Shear");
    }
}

}  // namespace

// Points.

GPosition2d operator*(const GPosition2d& p, const GMatrix2d& m) {
    return RowForm(p, m);
}

GPosition2d operator*(const GMatrix2d& m, const GPosition2d& p) {
    return ColumnForm(m, p);
}

GPosition2d& GPosition2d::operator*=(const GMatrix2d& m) {
    return *this = *this * m;
}

GPosition2d operator*(const GPosition2d& p, const GTransf2d& t) {
    const GPosition2d q = p * t.m_matrix;
    return {q.m_x * t.m_scaling + t.m_translation.m_x, q.m_y * t.m_scaling + t.m_translation.m_y};
}

GPosition2d& GPosition2d::operator*=(const GTransf2d& t) {
    return *this = *this * t;
}

GPosition2d operator^(const GPosition2d& p, const GTransf2d& t) {
    return p * t.Inverse();
}

GPosition2d operator*(const G4x4& a, const GPosition2d& p) {
    return Map<Form::kRow>(a, p);
}

GPosition2d operator*(const GPosition2d& p, const G4x4& a) {
    return Map<Form::kColumn>(a, p);
}

GPosition2d& GPosition2d::operator*=(const G4x4& a) {
    return *this = a * *this;
}

// Vectors.

GVector2d operator*(const GVector2d& v, const GMatrix2d& m) {
    return RowForm(v, m);
}

GVector2d operator*(const GMatrix2d& m, const GVector2d& v) {
    return ColumnForm(m, v);
}

GVector2d& GVector2d::operator*=(const GMatrix2d& m) {
    return *this = *this * m;
}

GVector2d operator*(const GVector2d& v, const GTransf2d& t) {
    return v * t.m_matrix * t.m_scaling;
}

GVector2d& GVector2d::operator*=(const GTransf2d& t) {
    return *this = *this * t;
}

GVector2d operator^(const GVector2d& v, const GTransf2d& t) {
    return v * t.Inverse();
}

// Unit vectors.

GUnitVector2d operator*(const GUnitVector2d& u, const GMatrix2d& m) {
    return Direction(GVector2d(u) * m);
}

GUnitVector2d operator*(const GMatrix2d& m, const GUnitVector2d& u) {
    return Direction(m * GVector2d(u));
}

GUnitVector2d& GUnitVector2d::operator*=(const GMatrix2d& m) {
    return *this = *this * m;
}

GUnitVector2d operator*(const GUnitVector2d& u, const GTransf2d& t) {
    ReportShear(t);
    return u * t.m_matrix;
}

GUnitVector2d& GUnitVector2d::operator*=(const GTransf2d& t) {
    return *this = *this * t;
}

GUnitVector2d operator^(const GUnitVector2d& u, const GTransf2d& t) {
    ReportShear(t);
    return u * t.m_matrix.Transpose();
}
