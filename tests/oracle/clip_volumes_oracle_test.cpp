// SPDX-License-Identifier: MIT

// Clip volumes: what maps make of them, what they hold, their vertices.

#include "tests/oracle/dimensions.h"
#include "tests/oracle/extent.h"

namespace kvgeom::test {
namespace {

// The planes of a clip volume: inside is where normal * p + d >= 0.
struct HalfSpace {
    Vec<3> normal;
    Real d;
};
std::vector<HalfSpace> HalfSpaces(const GClipVolume& volume) {
    std::vector<HalfSpace> result;
    for (unsigned int i = 0; i < volume.m_count; ++i) {
        const double* const plane = volume.m_planes[i];
        const Vec<3> v = {plane[0], plane[1], plane[2]};
        const Real length = Length(v);
        const bool is_unit = Magnitude(length.value * length.value - 1) <= Quad(0x1p-52);
        const Real by = is_unit ? Real(1) : Real(1) / length;
        result.push_back({v * by, Real(plane[3]) * by});
    }
    return result;
}
std::vector<Real> Numbers(const std::vector<HalfSpace>& planes) {
    std::vector<Real> numbers;
    for (const HalfSpace& plane : planes) {
        Append(numbers, plane.normal);
        Append(numbers, plane.d);
    }
    return numbers;
}
std::vector<double> PlaneNumbers(const GClipVolume& volume) {
    const double* const first = volume.m_planes[0];
    return {first, first + 4 * volume.m_count};
}
template <class Map>
std::vector<Real> MappedPlanes(std::vector<HalfSpace> planes, Map map) {
    for (HalfSpace& plane : planes) {
        plane = map(plane);
    }
    return Numbers(planes);
}
Real SignedDistance(const HalfSpace& plane, const Vec<3>& p) {
    return Dot(plane.normal, p + plane.normal * plane.d);
}
// Cramer's rule, for each three planes; those inside of all.
std::vector<Vec<3>> Vertices(const std::vector<HalfSpace>& planes) {
    std::vector<Vec<3>> vertices;
    for (std::size_t i = 0; i < planes.size(); ++i) {
        for (std::size_t j = i + 1; j < planes.size(); ++j) {
            for (std::size_t l = j + 1; l < planes.size(); ++l) {
                const auto& [a, da] = planes[i];
                const auto& [b, db] = planes[j];
                const auto& [c, dc] = planes[l];
                const Vec<3> sum = Cross(b, c) * da + Cross(c, a) * db + Cross(a, b) * dc;
                const Vec<3> p = sum * (Real(-1) / Dot(a, Cross(b, c)));
                const bool is_inside =
                    std::all_of(planes.begin(), planes.end(), [&](const HalfSpace& plane) {
                        return (Dot(plane.normal, p) + plane.d + 1e-9).value > 0;
                    });
                if (is_inside) {
                    vertices.push_back(p);
                }
            }
        }
    }
    return vertices;
}

// Four to six planes about a point, beside a tetrahedron's so that they enclose it.
GClipVolume AnyClipVolume(Random& random, bool of_unit_normals) {
    GClipVolume volume = {};
    volume.m_count = static_cast<unsigned char>(4 + random.Below(3));
    const GPosition inside = random.Point();
    for (unsigned int i = 0; i < volume.m_count; ++i) {
        const GVector lean = random.Vector() * 0.05;
        const GUnitVector u = Spatial::Direction(i == 3   ? lean + GVector{-1, -1, -1}
                                                 : i == 0 ? lean + GVector{1, 0, 0}
                                                 : i == 1 ? lean + GVector{0, 1, 0}
                                                 : i == 2 ? lean + GVector{0, 0, 1}
                                                          : random.Vector());
        const double size = of_unit_normals ? 1 : random.Uniform(0.5, 3);
        const double d = random.Uniform(1, 4) - inside % u;
        const std::array plane = {u.m_x * size, u.m_y * size, u.m_z * size, d * size};
        std::copy(plane.begin(), plane.end(), volume.m_planes[i]);
    }
    return volume;
}

// A plane of a record: the length of its normal, the quotients; and the plane's point, and the
// distance of another from it.
constexpr double kPlane = LengthBound(3) + 1;
constexpr double kPlaneDistance = DotBound(3, kPlane, 2 * kPlane + 1 + 1);

void NearPlanes(const std::string& operation, double bound, const std::vector<Real>& expected,
                const std::vector<GClipVolume>& got) {
    for (const GClipVolume& volume : got) {
        ExpectNear(operation, bound, expected, PlaneNumbers(volume));
    }
}

TEST(Space, ClipVolumes) {
    Random random(43);
    for (int k = 0; k < kCases; ++k) {
        const GClipVolume volume = AnyClipVolume(random, false);
        const std::vector<HalfSpace> planes = HalfSpaces(volume);
        const std::vector<double> numbers = PlaneNumbers(volume);
        NearPlanes("clip volume from numbers", kPlane, Numbers(planes),
                   {BuildClipVolume(volume.m_count, numbers.data())});
        const GVector v = random.Vector();
        const auto moved = [&](double sign) {
            return MappedPlanes(planes, [&](const HalfSpace& plane) -> HalfSpace {
                return {plane.normal, plane.d - Dot(plane.normal, Exact(v * sign))};
            });
        };
        GClipVolume c = volume;
        NearPlanes("clip volume + vector", DotBound(3, kPlane) + 1, moved(1), {volume + v, c += v});
        NearPlanes("clip volume - vector", DotBound(3, kPlane) + 1, moved(-1),
                   {volume - v, (c = volume) -= v});
        const GMatrix m = random.Matrix();
        const auto turned = [&](const Mat<3>& by) {
            return MappedPlanes(planes, [&](const HalfSpace& plane) -> HalfSpace {
                return {plane.normal * by, plane.d};
            });
        };
        NearPlanes("clip volume by matrix", DotBound(3, kPlane), turned(Exact(m)),
                   {volume * m, Mapped(volume, m)});
        NearPlanes("clip volume by matrix, columns", DotBound(3, kPlane),
                   turned(Transpose(Exact(m))), {m * volume});
        const GTransf t = random.Similarity();
        const Similarity<3> map = Exact(t);
        const auto image = MappedPlanes(planes, [&](const HalfSpace& plane) -> HalfSpace {
            const Vec<3> normal = Unit(plane.normal * map.matrix);
            return {normal, plane.d * map.scaling - Dot(normal, map.translation)};
        });
        // The normal by the matrix, its product with the translation, the difference.
        NearPlanes("clip volume by transformation", DotBound(3, DotBound(3, kPlane)) + 1, image,
                   {volume * t, Mapped(volume, t)});

        GPosition points[6];
        GUnitVector normals[6];
        std::vector<HalfSpace> through;
        for (int i = 0; i < 6; ++i) {
            points[i] = random.Point();
            normals[i] = random.Direction();
            through.push_back({Exact(normals[i]), -Dot(Exact(points[i]), Exact(normals[i]))});
        }
        NearPlanes("clip volume from points", DotBound(3), Numbers(through),
                   {BuildClipVolume(6, points, normals)});
    }
}

TEST(Space, ClipVolumeDecisions) {
    Random random(44);
    const double tolerance = GetDistanceTolerance();
    for (int k = 0; k < kCases; ++k) {
        const GClipVolume volume = AnyClipVolume(random, false);
        const std::vector<HalfSpace> planes = HalfSpaces(volume);
        // A point at either tolerance's end from a plane near a vertex of the volume, and a box
        // there.
        const std::vector<Vec<3>> vertices = Vertices(planes);
        const Vec<3> vertex = vertices[random.Below(vertices.size())];
        const HalfSpace& plane = planes[random.Below(planes.size())];
        const double beside = Beside(random, k % 2 == 0 ? tolerance : -tolerance);
        const Real back = Real(beside) - SignedDistance(plane, vertex);
        const GPosition p = Rounded(vertex + plane.normal * back);
        double is_outside = -kInf;
        double is_inside = kInf;
        for (const HalfSpace& side : planes) {
            const Real s = SignedDistance(side, Exact(p));
            is_outside = Or({is_outside, Below(s, -tolerance)});
            is_inside = And({is_inside, Below(tolerance, s)});
        }
        int result;
        long err;
        IsPtInClipVolume(volume, p, &result, &err);
        Agree("IsPtInClipVolume: outside", kPlaneDistance, is_outside, result == 0 ? 1 : 0);
        Agree("IsPtInClipVolume: inside", kPlaneDistance, is_inside, result == 1 ? 1 : 0);

        // The box has p as its corner on the side of that plane.
        const GVector size = {random.Uniform(0, 1), random.Uniform(0, 1), random.Uniform(0, 1)};
        const auto box_on_side = [&](bool is_inner) {
            GBox box = {p, p};
            for (unsigned int i = 0; i < 3; ++i) {
                const bool is_low = (plane.normal[i].value > 0) != is_inner;
                (is_low ? box.m_low : box.m_high)[i] += is_low ? -size[i] : size[i];
            }
            return box;
        };
        const auto margin = [&](const GBox& box, bool is_whole) {
            double all = kInf;
            for (const HalfSpace& side : planes) {
                double some = -kInf;
                double every = kInf;
                for (const Vec<3>& corner : Corners(Exact(box))) {
                    const double from = -Below(SignedDistance(side, corner), -tolerance);
                    some = Or({some, from});
                    every = And({every, from});
                }
                all = And({all, is_whole ? every : some});
            }
            return all;
        };
        const GBox outer = box_on_side(false);
        const GBox inner = box_on_side(true);
        Agree("clip volume && box", kPlaneDistance, margin(outer, false), volume && outer);
        Agree("clip volume >> box", kPlaneDistance, margin(inner, true), volume >> inner);
    }
}

TEST(Space, ClipVolumeVertices) {
    // The plane's point and its product with the normal; times a cross product; the sum of three,
    // by the determinant.
    const auto vertex_bound = [](double normal, double d) {
        const double offset = DotBound(3, d + normal + 1, normal);
        const double cross = CrossBound(normal, normal);
        return offset + cross + 1 + 2 + DotBound(3, normal, cross) + 1;
    };
    // The mean of at most 8 vertices, the point's offset from it, its factor, its product with the
    // normal, and the same back.
    const double scaled = DotBound(3, vertex_bound(kPlane, kPlane) + 7 + 1 + 2, kPlane) + 1;
    Random random(45);
    for (int k = 0; k < kCases; ++k) {
        const GClipVolume volume = AnyClipVolume(random, k % 2 == 0);
        const std::vector<HalfSpace> planes = HalfSpaces(volume);
        const std::vector<Vec<3>> vertices = Vertices(planes);
        if (k % 2 == 0) {
            Near("ClipVolumeRange", vertex_bound(0, 0), ExtentOf(vertices),
                 ClipVolumeRange(volume));
        }
        Vec<3> centre;
        for (const Vec<3>& vertex : vertices) {
            centre = centre + vertex;
        }
        centre = centre * (Real(1) / static_cast<double>(vertices.size()));
        const auto about_centre = [&](const Real& s) {
            return MappedPlanes(planes, [&](const HalfSpace& plane) -> HalfSpace {
                const Vec<3> foot = (plane.normal * -plane.d - centre) * s;
                return {plane.normal, -Dot(plane.normal, foot) - Dot(plane.normal, centre)};
            });
        };
        const double s = random.Uniform(0.5, 3);
        GClipVolume c = volume;
        NearPlanes("clip volume * number", scaled, about_centre(s),
                   {volume * s, Mapped(volume, s)});
        NearPlanes("clip volume / number", scaled + 1, about_centre(Real(1) / s),
                   {volume / s, c /= s});
    }
}

}  // namespace
}  // namespace kvgeom::test
