// SPDX-License-Identifier: MIT
#include <kvgeom/boxes/clip_volume_planes.h>
#include <kvgeom/boxes/fixed_boxes.h>
#include <kvgeom/kernel/assertion_hook.h>
#include <kvgeom/kernel/constants.h>
#include <kvgeom/kernel/infinity.h>
#include <kvgeom/kernel/tolerance_state.h>
#include <kvgeom/points/from_origin.h>

#include <cmath>

using namespace kvgeom::detail;

namespace {

constexpr int kPlanesOfVertex = 3;
constexpr int kPlanesOfBody = 4;

struct PlaneAt {
    GVector point;
    GVector normal;
};

// Cramer's rule for three planes n.x = n.p. False when their normals are too near to one plane.
bool IntersectThreePlanes(const PlaneAt& i, const PlaneAt& j, const PlaneAt& l,
                          GPosition& intersection) {
    const double half_tolerance = DistanceTolerance() / 2;
    const GVector w = i.normal * j.normal;
    const double determinant = l.normal % w;
    if (std::fabs(determinant) <= w.GetLength() * half_tolerance) {
        return false;
    }
    const double di = i.point % i.normal;
    const double dj = j.point % j.normal;
    const double dl = l.point % l.normal;
    const GVector sum =
        di * (j.normal * l.normal) + dj * (l.normal * i.normal) + dl * (i.normal * j.normal);
    intersection = {sum.m_x / determinant, sum.m_y / determinant, sum.m_z / determinant};
    return true;
}

GPosition Mean(const GPosition* points, int count) {
    GPosition sum = points[0];
    for (int k = 1; k < count; ++k) {
        sum = {sum.m_x + points[k].m_x, sum.m_y + points[k].m_y, sum.m_z + points[k].m_z};
    }
    return {sum.m_x / count, sum.m_y / count, sum.m_z / count};
}

}  // namespace

int kvgeom::detail::ClipVolumeVertices(const GClipVolume& volume, const GPosition* points,
                                       const GUnitVector* normals,
                                       GPosition (&vertices)[kMostVertices]) {
    const int planes = volume.m_count;
    if (planes < kPlanesOfVertex || planes > kMostPlanes) {
        return 0;
    }
    PlaneAt at[kMostPlanes];
    for (int k = 0; k < planes; ++k) {
        at[k] = {OriginTo(points[k]), normals[k]};
    }
    int count = 0;
    for (int i = 0; i < planes; ++i) {
        for (int j = i + 1; j < planes; ++j) {
            for (int l = j + 1; l < planes; ++l) {
                if (IntersectThreePlanes(at[i], at[j], at[l], vertices[count])) {
                    int result;
                    long err;
                    IsPtInClipVolume(volume, vertices[count], &result, &err);
                    count += result != 0 ? 1 : 0;
                }
            }
        }
    }
    return count;
}

GClipVolume operator*(const GClipVolume& volume, double s) {
    if (volume.m_count == 0 || volume.m_count > kMostPlanes) {
        Gassert_debug("GClipVolume: can't multiple by scalar when count<=0 or > 6");
        return volume;
    }
    if (s < 0) {
        Gassert_debug("GClipVolume: should not multiply by scalar < 0.0");
    }
    const GClipVolume normalised = Normalised(volume);
    const int planes = volume.m_count;
    GUnitVector normals[kMostPlanes];
    GPosition feet[kMostPlanes];
    for (int k = 0; k < planes; ++k) {
        normals[k] = PlaneNormal(normalised.m_planes[k]);
        feet[k] = FromOrigin(-normalised.m_planes[k][3] * normals[k]);
    }
    GPosition vertices[kMostVertices];
    const int vertex_count =
        planes < kPlanesOfBody ? 0 : ClipVolumeVertices(normalised, feet, normals, vertices);
    const GPosition centre = vertex_count > 0 ? Mean(vertices, vertex_count) : Mean(feet, planes);
    for (int k = 0; k < planes; ++k) {
        feet[k] = FromOrigin((feet[k] - centre) * s);
    }
    return BuildClipVolume(volume.m_count, feet, normals) + OriginTo(centre);
}

GClipVolume& GClipVolume::operator*=(double s) {
    return *this = *this * s;
}

GClipVolume operator/(const GClipVolume& volume, double s) {
    if (!(s >= kSmallestDivisor)) {
        Gassert_debug("GClipVolume: scalar < tolerance");
        if (!(std::fabs(s) >= kSmallestDivisor)) {
            return volume * kGInfinity;
        }
    }
    return volume * (1 / s);
}

GClipVolume& GClipVolume::operator/=(double s) {
    if (!(s >= kSmallestDivisor)) {
        Gassert_debug("GClipVolume: trying to divide by number < GSMALLRELTO1");
        if (std::fabs(s) < kSmallestDivisor) {
            s = kSmallestDivisor;
        }
    }
    return *this = *this / s;
}

GBox ClipVolumeRange(const GClipVolume& volume) {
    if (volume.m_count > kMostPlanes) {
        Gassert_debug("GBox: can't build with ClipVolume number of planes > 6");
        return kGNullBox;
    }
    GUnitVector normals[kMostPlanes];
    GPosition feet[kMostPlanes];
    for (int k = 0; k < volume.m_count; ++k) {
        normals[k] = PlaneNormal(volume.m_planes[k]);
        feet[k] = FromOrigin(-(volume.m_planes[k][3] * GVector(normals[k])));
    }
    GPosition vertices[kMostVertices];
    const int count = ClipVolumeVertices(volume, feet, normals, vertices);
    return BuildBox(static_cast<unsigned long>(count), vertices);
}
