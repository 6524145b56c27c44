// SPDX-License-Identifier: MIT
#include <kvgeom/boxes/clip_volume.h>
#include <kvgeom/boxes/clip_volume_planes.h>
#include <kvgeom/boxes/extreme_corners.h>
#include <kvgeom/kernel/assertion_hook.h>
#include <kvgeom/kernel/constants.h>
#include <kvgeom/kernel/error_codes.h>
#include <kvgeom/kernel/square_root.h>
#include <kvgeom/kernel/tolerance_state.h>
#include <kvgeom/maps/linear_forms.h>
#include <kvgeom/maps/mapping.h>

#include <algorithm>
#include <cmath>

using namespace kvgeom::detail;

namespace {

enum Place { kOutside = 0, kInside = 1, kOnBoundary = 2 };

unsigned int LimitedCount(unsigned int count) {
    if (count <= kMostPlanes) {
        return count;
    }
    Gassert_debug("GClipVolume: can't build more than 6 planes");
    return kMostPlanes;
}

void SetPlane(double (&plane)[4], const GVector& normal, double d) {
    plane[0] = normal.m_x;
    plane[1] = normal.m_y;
    plane[2] = normal.m_z;
    plane[3] = d;
}

GVector Normal(const double (&plane)[4]) {
    return {plane[0], plane[1], plane[2]};
}

// Divides a plane by the length of its normal. A plane with a zero normal stays as it is.
void Normalise(double (&plane)[4]) {
    const GVector normal = Normal(plane);
    const double squared_length = normal % normal;
    if (std::fabs(squared_length - 1) <= DBL_EPSILON) {
        return;
    }
    const double length = SquareRoot(squared_length);
    if (length == 0.0) {
        return;
    }
    for (double& element : plane) {
        element /= length;
    }
}

// The signed distance of p from the plane, measured by way of the point p + d u.
double SignedDistance(const double (&plane)[4], const GPosition& p) {
    const GUnitVector u = PlaneNormal(plane);
    return u % (p + plane[3] * u);
}

// 1 unless the chosen corner lies outside some plane by more than the distance tolerance. Each
// plane is normalised just before it is used: most boxes lie outside of one of the first planes,
// and the others are not needed.
template <class Choice>
int HoldsChosenCorners(const GClipVolume& volume, Choice choose_corner) {
    const double tol = DistanceTolerance();
    for (int k = 0; k < PlaneCount(volume); ++k) {
        double plane[4];
        std::copy_n(volume.m_planes[k], 4, plane);
        Normalise(plane);
        if (SignedDistance(plane, choose_corner(Normal(plane))) < -tol) {
            return 0;
        }
    }
    return 1;
}

}  // namespace

GClipVolume kvgeom::detail::Normalised(const GClipVolume& volume) {
    GClipVolume result = volume;
    for (int k = 0; k < PlaneCount(volume); ++k) {
        Normalise(result.m_planes[k]);
    }
    return result;
}

GClipVolume BuildClipVolume(unsigned int count, const GPosition* const points,
                            const GUnitVector* const normals) {
    GClipVolume result = {};
    const unsigned int planes = LimitedCount(count);
    result.m_count = static_cast<unsigned char>(planes);
    for (unsigned int k = 0; k < planes; ++k) {
        SetPlane(result.m_planes[k], normals[k], -(points[k] % normals[k]));
    }
    return result;
}

GClipVolume BuildClipVolume(unsigned int count, const double* const values) {
    GClipVolume result = {};
    const unsigned int planes = LimitedCount(count);
    result.m_count = static_cast<unsigned char>(planes);
    for (unsigned int k = 0; k < planes; ++k) {
        std::copy_n(values + 4U * k, 4, result.m_planes[k]);
    }
    return Normalised(result);
}

long ConvertGBoxToGClipVolume(GBox* box, GClipVolume* volume) {
    const GPosition l = box->m_low;
    const GPosition h = box->m_high;
    *volume = {{{0, 1, 0, -l.m_y},
                {1, 0, 0, -l.m_x},
                {0, -1, 0, h.m_y},
                {-1, 0, 0, h.m_x},
                {0, 0, 1, -l.m_z},
                {0, 0, -1, h.m_z}},
               kMostPlanes};
    return kSuccess;
}

void IsPtInClipVolume(const GClipVolume& volume, const GPosition& p, int* result, long* err) {
    *err = kSuccess;
    const double tol = DistanceTolerance();
    const GClipVolume normalised = Normalised(volume);
    int place = kInside;
    for (int k = 0; k < PlaneCount(volume); ++k) {
        const double distance = SignedDistance(normalised.m_planes[k], p);
        if (distance < -tol) {
            place = kOutside;
            break;
        }
        if (std::fabs(distance) <= tol) {
            place = kOnBoundary;
        }
    }
    *result = place;
}

int GClipVolume::operator&&(const GBox& box) const {
    return HoldsChosenCorners(*this,
                              [&](const GVector& normal) { return FurthestCorner(box, normal); });
}

int GClipVolume::operator>>(const GBox& box) const {
    return HoldsChosenCorners(*this,
                              [&](const GVector& normal) { return NearestCorner(box, normal); });
}

GClipVolume& GClipVolume::operator+=(const GVector& v) {
    GClipVolume result = Normalised(*this);
    for (int k = 0; k < PlaneCount(result); ++k) {
        auto& plane = result.m_planes[k];
        plane[3] -= v % PlaneNormal(plane);
    }
    return *this = result;
}

GClipVolume& GClipVolume::operator-=(const GVector& v) {
    GClipVolume result = Normalised(*this);
    for (int k = 0; k < PlaneCount(result); ++k) {
        auto& plane = result.m_planes[k];
        plane[3] += v % PlaneNormal(plane);
    }
    return *this = result;
}

GClipVolume operator+(const GClipVolume& volume, const GVector& v) {
    GClipVolume result = volume;
    result += v;
    return result;
}

GClipVolume operator-(const GClipVolume& volume, const GVector& v) {
    GClipVolume result = volume;
    result -= v;
    return result;
}

GClipVolume& GClipVolume::operator*=(const GMatrix& m) {
    return *this = *this * m;
}

GClipVolume operator*(const GClipVolume& volume, const GMatrix& m) {
    GClipVolume result = Normalised(volume);
    for (int k = 0; k < PlaneCount(result); ++k) {
        auto& plane = result.m_planes[k];
        SetPlane(plane, RowForm(Normal(plane), m), plane[3]);
    }
    return result;
}

GClipVolume operator*(const GMatrix& m, const GClipVolume& volume) {
    return volume * m.Transpose();
}

GClipVolume& GClipVolume::operator*=(const GTransf& t) {
    return *this = *this * t;
}

GClipVolume operator*(const GClipVolume& volume, const GTransf& t) {
    GClipVolume result = Normalised(volume);
    for (int k = 0; k < PlaneCount(result); ++k) {
        auto& plane = result.m_planes[k];
        const double scaled = plane[3] * t.m_scaling;
        const GUnitVector normal = PlaneNormal(plane) * t;
        SetPlane(plane, normal, scaled - t.m_translation % normal);
    }
    return result;
}
