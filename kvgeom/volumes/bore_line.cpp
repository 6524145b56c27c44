// SPDX-License-Identifier: MIT
#include <kvgeom/kernel/assertion_hook.h>
#include <kvgeom/kernel/constants.h>
#include <kvgeom/kernel/infinity.h>
#include <kvgeom/kernel/tolerance_state.h>
#include <kvgeom/points/direction.h>
#include <kvgeom/volumes/bore_line.h>
#include <kvgeom/volumes/null_bore_line.h>

#include <cmath>

using namespace kvgeom::detail;

namespace {

GBoreLine Scaled(GBoreLine b, double s, const char* message) {
    if (s < kSmallestDivisor) {
        Gassert_debug(message);
    }
    b.m_front *= s;
    b.m_back *= s;
    b.m_radius *= s;
    return b;
}

GBoreLine Divided(GBoreLine b, double s, const char* message) {
    if (s < kSmallestDivisor) {
        Gassert_debug(message);
        if (std::fabs(s) < kSmallestDivisor) {
            s = kSmallestDivisor;
        }
    }
    b.m_front /= s;
    b.m_back /= s;
    b.m_radius /= s;
    return b;
}

}  // namespace

double GBoreLine::Evaluate(const GPosition& q) const {
    return (q - m_point) % m_direction;
}

GPosition GBoreLine::Evaluate(double t) const {
    return m_point + t * m_direction;
}

void GBoreLine::MakeInfinite() {
    m_front = kGInfinity;
    m_back = -kGInfinity;
}

int GBoreLine::IsInfinite() const {
    return m_front >= kGInfinity || m_back <= -kGInfinity ? 1 : 0;
}

int GBoreLine::IsEqual(const GBoreLine& o) const {
    const double tol = DistanceTolerance();
    if (!m_point.IsEqual(o.m_point) || !m_direction.IsEqual(o.m_direction)) {
        return 0;
    }
    return std::fabs(m_front - o.m_front) >= tol || std::fabs(m_back - o.m_back) >= tol ||
                   std::fabs(m_radius - o.m_radius) >= tol
               ? 0
               : 1;
}

int GBoreLine::IsNull() const {
    return IsEqual(NullBoreLine());
}

int GBoreLine::operator>>(const GPosition& q) const {
    const GVector d = q - m_point;
    const double t = d % m_direction;
    if (t < m_back || t > m_front) {
        return 0;
    }
    const double squared_distance = d % d - t * t;
    return m_radius * m_radius >= squared_distance ? 1 : 0;
}

int GBoreLine::operator>>(double t) const {
    return m_back <= t && t <= m_front ? 1 : 0;
}

GBoreLine& GBoreLine::operator+=(const GVector& v) {
    m_point += v;
    return *this;
}

GBoreLine& GBoreLine::operator-=(const GVector& v) {
    m_point -= v;
    return *this;
}

GBoreLine& GBoreLine::operator*=(double s) {
    return *this = Scaled(*this, s, "GBoreLine: multiplying by 0.0");
}

GBoreLine& GBoreLine::operator/=(double s) {
    return *this = Divided(*this, s, "GBoreLine: scalar < tol");
}

GBoreLine BuildBoreLine(const GPosition& p, const GUnitVector& d, double front, double back,
                        double radius) {
    return {p, d, front, back, radius};
}

GBoreLine BuildBoreLine(const GPosition& p, const GUnitVector& d) {
    return {p, d, kGInfinity, -kGInfinity, DistanceTolerance()};
}

GBoreLine operator+(const GBoreLine& b, const GVector& v) {
    GBoreLine result = b;
    result += v;
    return result;
}

GBoreLine operator-(const GBoreLine& b, const GVector& v) {
    GBoreLine result = b;
    result -= v;
    return result;
}

GBoreLine operator*(const GBoreLine& b, double s) {
    return Scaled(b, s, "GBoreLine: trying to multiply by value <= 0.0");
}

GBoreLine operator/(const GBoreLine& b, double s) {
    return Divided(b, s, "GBoreLine: trying to divide by value <= 0.0");
}

GBox BoreLineRange(const GBoreLine& b) {
    const GVector u = Direction(GetPerpVector(b.m_direction));
    const GVector normal = b.m_direction * u;
    const GVector w = normal / normal.GetLength();
    const GVector along_u = b.m_radius * u;
    const GVector along_w = b.m_radius * w;
    const GPosition front = b.Evaluate(b.m_front);
    const GPosition back = b.Evaluate(b.m_back);
    GPosition corners[8] = {
        front + along_u + along_w, front + along_u - along_w, front - along_u + along_w,
        front - along_u - along_w, back + along_u + along_w,  back + along_u - along_w,
        back - along_u + along_w,  back - along_u - along_w,
    };
    return BuildBox(8, corners);
}
