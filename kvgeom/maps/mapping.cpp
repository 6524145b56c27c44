// SPDX-License-Identifier: MIT
#include <kvgeom/kernel/assertion_hook.h>
#include <kvgeom/maps/homogeneous_forms.h>
#include <kvgeom/maps/linear_forms.h>
#include <kvgeom/maps/mapping.h>
#include <kvgeom/points/direction.h>

using namespace kvgeom::detail;

namespace {

// (x, y, z) times column j, without the constant term.
template <Form form, class Triple>
double LinearPart(const G4x4& a, const Triple& v, int j) {
    return v.m_x * Element<form>(a, 0, j) + v.m_y * Element<form>(a, 1, j) +
           v.m_z * Element<form>(a, 2, j);
}

// The row (x, y, z, 1) times column j.
template <Form form, class Triple>
double AffinePart(const G4x4& a, const Triple& v, int j) {
    return LinearPart<form>(a, v, j) + Element<form>(a, 3, j);
}

template <Form form>
GPosition Map(const G4x4& a, const GPosition& p) {
    const double factor = ReciprocalWeight(
        AffinePart<form>(a, p, 3), "GPosition: in multiplying G4x4, trying to divide by 0.0");
    return {AffinePart<form>(a, p, 0) * factor, AffinePart<form>(a, p, 1) * factor,
            AffinePart<form>(a, p, 2) * factor};
}

template <Form form>
GVector Map(const G4x4& a, const GVector& v) {
    const double factor = ReciprocalWeight(AffinePart<form>(a, v, 3),
                                           "GVector: multiplying by G4x4, trying to divide by 0.0");
    return {LinearPart<form>(a, v, 0) * factor, LinearPart<form>(a, v, 1) * factor,
            LinearPart<form>(a, v, 2) * factor};
}

}  // namespace

// Points.

GPosition& GPosition::operator*=(const GMatrix& m) {
    return *this = RowForm(*this, m);
}

GPosition& GPosition::operator*=(const GTransf& t) {
    return *this = *this * t;
}

GPosition operator^(const GPosition& p, const GTransf& t) {
    return p * t.Inverse();
}

GPosition operator*(const G4x4& a, const GPosition& p) {
    return Map<Form::kRow>(a, p);
}

GPosition operator*(const GPosition& p, const G4x4& a) {
    return Map<Form::kColumn>(a, p);
}

GPosition& GPosition::operator*=(const G4x4& a) {
    return *this = a * *this;
}

// Vectors.

GVector& GVector::operator*=(const GMatrix& m) {
    return *this = RowForm(*this, m);
}

GVector operator*(const GVector& v, const GTransf& t) {
    return RowForm(v, t.m_matrix) * t.m_scaling;
}

GVector& GVector::operator*=(const GTransf& t) {
    return *this = *this * t;
}

GVector operator^(const GVector& v, const GTransf& t) {
    return v * t.Inverse();
}

GVector operator*(const G4x4& a, const GVector& v) {
    return Map<Form::kRow>(a, v);
}

GVector operator*(const GVector& v, const G4x4& a) {
    return Map<Form::kColumn>(a, v);
}

GVector& GVector::operator*=(const G4x4& a) {
    return *this = a * *this;
}

// Unit vectors.

GUnitVector operator*(const GUnitVector& u, const GMatrix& m) {
    return Direction(RowForm<GVector>(u, m));
}

GUnitVector operator*(const GMatrix& m, const GUnitVector& u) {
    return Direction(ColumnForm<GVector>(m, u));
}

GUnitVector& GUnitVector::operator*=(const GMatrix& m) {
    return *this = *this * m;
}

GUnitVector operator*(const GUnitVector& u, const GTransf& t) {
    if (t.m_hasShear) {
        Gassert_debug("GUnitVector: multiplying by trans, trans has Shear");
    }
    return u * t.m_matrix;
}

GUnitVector& GUnitVector::operator*=(const GTransf& t) {
    return *this = *this * t;
}

GUnitVector operator^(const GUnitVector& u, const GTransf& t) {
    return u * t.Inverse();
}

GUnitVector operator*(const G4x4& a, const GUnitVector& u) {
    return Direction(a * GVector(u));
}

GUnitVector operator*(const GUnitVector& u, const G4x4& a) {
    return Direction(GVector(u) * a);
}

GUnitVector& GUnitVector::operator*=(const G4x4& a) {
    return *this = a * *this;
}
