// SPDX-License-Identifier: MIT
#include <kvgeom/kernel/error_codes.h>
#include <kvgeom/maps/converted.h>
#include <kvgeom/maps/mapping.h>
#include <kvgeom/points/direction.h>
#include <kvgeom/volumes/bore_cone.h>
#include <kvgeom/volumes/bore_line_mapping.h>
#include <kvgeom/volumes/pt_frustum.h>

using namespace kvgeom::detail;

GBoreCone& GBoreCone::operator*=(const GTransf& t) {
    m_boreLine *= t;
    m_eye *= t;
    return *this;
}

GBoreCone& GBoreCone::operator*=(const G4x4& a) {
    return *this *= Converted(a);
}

void BuildBoreCone(const GBoreLine& line, const GPosition& eye, GBoreCone& cone, long* err) {
    *err = kSuccess;
    cone = {line, eye};
}

GBox BoreConeRange(const GBoreCone& cone) {
    const GBoreLine& line = cone.m_boreLine;
    const GVector u = Direction(GetPerpVector(line.m_direction));
    const GVector w = Direction(line.m_direction * u);
    const GVector along_u = line.m_radius * u;
    const GVector along_w = line.m_radius * w;
    const GPosition p = line.m_point;
    GPosition square[5] = {p + along_u + along_w, p + along_u - along_w, p - along_u + along_w,
                           p - along_u - along_w, p + along_u + along_w};
    return PtFrustumRange({{5, square, line.m_direction, line.m_front, line.m_back}, cone.m_eye});
}
