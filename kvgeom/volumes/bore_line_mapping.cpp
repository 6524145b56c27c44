// SPDX-License-Identifier: MIT
#include <kvgeom/kernel/assertion_hook.h>
#include <kvgeom/kernel/extremes.h>
#include <kvgeom/kernel/infinity.h>
#include <kvgeom/kernel/tolerance_state.h>
#include <kvgeom/maps/g4x4_conversion.h>
#include <kvgeom/maps/homogeneous_parts.h>
#include <kvgeom/maps/linear_forms.h>
#include <kvgeom/maps/mapping.h>
#include <kvgeom/volumes/bore_line_mapping.h>

#include <cmath>

using namespace kvgeom::detail;

namespace {

void ReportNegativeRadius(const GBoreLine& l) {
    if (l.m_radius < 0) {
        Gassert_debug("GBoreLine: radius is < 0.0");
    }
}

double Clamped(double limit) {
    if (limit > kGInfinity) {
        return kGInfinity;
    }
    return limit < -kGInfinity ? -kGInfinity : limit;
}

// The bore line rebuilt from the images of five points: under a map that is no similarity a
// cylinder doesn't stay one.
template <class PointMap>
GBoreLine MapByPoints(const GBoreLine& l, PointMap map) {
    const GVector along_x = {l.m_radius, 0, 0};
    const GPosition front = l.Evaluate(l.m_front);
    const GPosition back = l.Evaluate(l.m_back);

    const GPosition point_image = map(l.m_point);
    const GPosition front_image = map(front);
    const GPosition back_image = map(back);
    const GPosition front_side_image = map(front + along_x);
    const GPosition back_side_image = map(back + along_x);

    const double to_front = GDistance(point_image, front_image);
    const double to_back = GDistance(point_image, back_image);
    return BuildBoreLine(
        point_image, BuildUnitVector(back_image, front_image),
        Clamped(l.m_front >= 0 ? to_front : -to_front), Clamped(l.m_back <= 0 ? -to_back : to_back),
        Larger(GDistance(front_image, front_side_image), GDistance(back_image, back_side_image)));
}

}  // namespace

GBoreLine& GBoreLine::operator*=(const GMatrix& m) {
    return *this = *this * m;
}

GBoreLine& GBoreLine::operator*=(const GTransf& t) {
    return *this = *this * t;
}

GBoreLine& GBoreLine::operator*=(const G4x4& a) {
    return *this = a * *this;
}

GBoreLine operator*(const GBoreLine& l, const GMatrix& m) {
    return BuildBoreLine(RowForm(l.m_point, m), l.m_direction * m, l.m_front, l.m_back, l.m_radius);
}

GBoreLine operator*(const GMatrix& m, const GBoreLine& l) {
    return BuildBoreLine(ColumnForm(m, l.m_point), m * l.m_direction, l.m_front, l.m_back,
                         l.m_radius);
}

GBoreLine operator*(const GBoreLine& l, const GTransf& t) {
    const double s = t.m_scaling;
    return BuildBoreLine(l.m_point * t, l.m_direction * t, l.m_front * s, l.m_back * s,
                         l.m_radius * s);
}

GBoreLine operator*(const GBoreLine& l, const G4x4& a) {
    ReportNegativeRadius(l);
    GTransf t;
    if (ConvertG4x4ToGTransf(a, t) == 0) {
        return l * t;
    }
    return MapByPoints(l, [&a](const GPosition& p) { return p * a; });
}

GBoreLine operator*(const G4x4& a, const GBoreLine& l) {
    ReportNegativeRadius(l);
    if (IsExactlyAffine(a)) {
        const double tol = RelativeTolerance();
        const GMatrix block = LinearBlock(a);
        const double k = block[0].GetLength();
        if (std::fabs(GetDeterminant(block)) > tol * tol * tol && k > tol) {
            const GPosition point = a * l.m_point;
            return BuildBoreLine(point, a * l.m_direction, k * l.m_front, k * l.m_back,
                                 k * l.m_radius);
        }
    }
    return MapByPoints(l, [&a](const GPosition& p) { return a * p; });
}
