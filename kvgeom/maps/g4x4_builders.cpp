// SPDX-License-Identifier: MIT
#include <kvgeom/kernel/error_codes.h>
#include <kvgeom/kernel/refusal.h>
#include <kvgeom/kernel/tolerance_state.h>
#include <kvgeom/maps/g4x4_builders.h>
#include <kvgeom/maps/transf_builders.h>
#include <kvgeom/points/validity.h>

#include <cmath>

using namespace kvgeom::detail;

namespace {

G4x4 Scaling(const GVector& s, const GVector& translation) {
    return {{s.m_x, 0, 0, 0,  //
             0, s.m_y, 0, 0,  //
             0, 0, s.m_z, 0,  //
             translation.m_x, translation.m_y, translation.m_z, 1}};
}

// Passes the messages about the axis and the pair. False when no angle has this cosine and sine.
bool CheckRotation(double cosine, double sine, const GUnitVector& axis, long* err) {
    *err = kSuccess;
    Gassert_valid(axis);
    if (std::fabs(cosine * cosine + sine * sine - 1) > RelativeTolerance()) {
        Refuse("u4x4: rotation cosine and sine invalid\n", err);
        return false;
    }
    return true;
}

}  // namespace

void Scale4x4(double s, G4x4& m, long* err) {
    Scale4x4(s, s, s, m, err);
}

void Scale4x4(double s, const GPosition& c, G4x4& m, long* err) {
    Scale4x4(s, s, s, c, m, err);
}

void Scale4x4(double sx, double sy, double sz, G4x4& m, long* err) {
    *err = kSuccess;
    m = Scaling({sx, sy, sz}, {0, 0, 0});
}

void Scale4x4(double sx, double sy, double sz, const GPosition& c, G4x4& m, long* err) {
    *err = kSuccess;
    m = Scaling({sx, sy, sz}, {(1 - sx) * c.m_x, (1 - sy) * c.m_y, (1 - sz) * c.m_z});
}

void Rotate4x4(double cosine, double sine, const GUnitVector& axis, G4x4& m, long* err) {
    if (CheckRotation(cosine, sine, axis, err)) {
        m = RotateTransf(cosine, sine, axis);
    }
}

void Rotate4x4(double angle, const GUnitVector& axis, G4x4& m, long* err) {
    *err = kSuccess;
    Gassert_valid(axis);
    m = RotateTransf(angle, axis);
}

void Rotate4x4(double cosine, double sine, const GUnitVector& axis, const GPosition& p, G4x4& m,
               long* err) {
    if (CheckRotation(cosine, sine, axis, err)) {
        m = RotateTransf(cosine, sine, axis, p);
    }
}

void Rotate4x4(double angle, const GUnitVector& axis, const GPosition& p, G4x4& m, long* err) {
    Rotate4x4(std::cos(angle), std::sin(angle), axis, p, m, err);
}

void Reflect4x4(const GUnitVector& normal, G4x4& m, long* err) {
    *err = kSuccess;
    Gassert_valid(normal);
    m = ReflectTransf(normal);
}

void Reflect4x4(const GUnitVector& normal, const GPosition& p, G4x4& m, long* err) {
    *err = kSuccess;
    Gassert_valid(normal);
    m = ReflectTransf(normal, p);
}

void Translate4x4(const GVector& v, G4x4& m, long* err) {
    *err = kSuccess;
    m = TranslateTransf(v);
}

void Coordinate4x4(const GPosition& origin, const GUnitVector& xAxis, const GUnitVector& yAxis,
                   G4x4& m, long* err) {
    *err = kSuccess;
    if (xAxis.IsColinear(yAxis)) {
        Refuse("u4x4: new axis vectors are collinear\n", err);
        return;
    }
    m = CoordinateTransf(origin, xAxis, yAxis);
}
