// SPDX-License-Identifier: MIT
#include <kvgeom/boxes/box2d_mapping.h>
#include <kvgeom/maps/mapping2d.h>

namespace {

// Four corners cost no more than the extremes of each axis would.
template <class PointMap>
GBox2d MapCorners(const GBox2d& box, PointMap map) {
    GPosition2d corners[4];
    box.GiveCorners(corners);
    for (GPosition2d& corner : corners) {
        corner = map(corner);
    }
    return BuildBox2d(4, corners);
}

}  // namespace

GBox2d& GBox2d::operator*=(const GMatrix2d& m) {
    return *this = *this * m;
}

GBox2d& GBox2d::operator*=(const GTransf2d& t) {
    return *this = *this * t;
}

GBox2d operator*(const GBox2d& box, const GMatrix2d& m) {
    return m.IsIdentity() ? box : MapCorners(box, [&m](const GPosition2d& p) { return p * m; });
}

GBox2d operator*(const GMatrix2d& m, const GBox2d& box) {
    return m.IsIdentity() ? box : MapCorners(box, [&m](const GPosition2d& p) { return m * p; });
}

GBox2d operator*(const GBox2d& box, const GTransf2d& t) {
    GBox2d result = box * t.m_matrix * t.m_scaling;
    result += t.m_translation;
    return result;
}
