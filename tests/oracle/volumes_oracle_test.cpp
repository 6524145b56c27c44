// SPDX-License-Identifier: MIT

// Bore cones, fences, frusta and prisms, and the boxes around volumes.

#include "tests/oracle/extent.h"
#include "tests/oracle/volumes.h"
#include "tests/support/messages.h"

namespace kvgeom::test {
namespace {

// The box around what is swept from one point to the other.
Extent<3> Swept(const std::vector<Vec<3>>& points, const Vec<3>& from, const Vec<3>& to) {
    std::vector<Vec<3>> all;
    for (const Vec<3>& p : points) {
        all.push_back(p + from);
        all.push_back(p + to);
    }
    return ExtentOf(all);
}
// The points seen from the eye, on planes at these distances along the direction.
Extent<3> Seen(const std::vector<Vec<3>>& points, const Vec<3>& direction, const Vec<2>& planes,
               const Vec<3>& eye) {
    std::vector<Vec<3>> all;
    for (const Real& plane : planes) {
        const Real distance = Dot(direction, points[0] + direction * plane - eye);
        for (const Vec<3>& p : points) {
            const Vec<3> ray = p - eye;
            all.push_back(eye + ray * (distance / Dot(direction, ray)));
        }
    }
    return ExtentOf(all);
}
// Of points that met some roundings: the ray, but for its length that drops out, is a difference
// and a product; then its slope; the plane's point, a product and a sum, its distance from the eye;
// the quotient, the product with the ray, the sum.
constexpr double SeenBound(double points) {
    const double ray = points + 2;
    const double slope = DotBound(3, ray);
    const double distance = DotBound(3, std::max(points, 1.0) + 2);
    return distance + slope + 1 + ray + 1 + 1;
}
// The square around the circle.
std::vector<Vec<3>> Square(const Line& l, const Vec<3>& u, const Vec<3>& w) {
    std::vector<Vec<3>> corners;
    for (const double a : {1, -1}) {
        for (const double b : {1, -1}) {
            corners.push_back(l.point + u * (l.limits[2] * a) + w * (l.limits[2] * b));
        }
    }
    return corners;
}

TEST(Space, BoreLineAndConeRanges) {
    // The second perpendicular is a cross product of unit length; its product with the radius, a
    // sum.
    constexpr double kAside = CrossBound(kPerpendicular) + 2;
    Random random(64);
    for (int k = 0; k < kCases; ++k) {
        const GBoreLine l = AnyBoreLine(random);
        const Line line = ExactLine(l);
        const Vec<3> u = Perpendicular(line.direction);
        const Vec<3> cross = Cross(line.direction, u);
        const Vec<3> w = cross * (Real(1) / Length(cross));
        Near("BoreLineRange", UnitBound(3, CrossBound(kPerpendicular)) + 2,
             Swept(Square(line, u, w), line.direction * l.m_front, line.direction * l.m_back),
             BoreLineRange(l));

        GBoreCone cone = {random.BoreLine(), {}};
        const GBoreLine& axis = cone.m_boreLine;
        cone.m_eye = axis.Evaluate(axis.m_front + random.Uniform(1, 9));
        cone.m_eye += random.Vector();
        const Line exact = ExactLine(axis);
        const Vec<3> eye = Exact(cone.m_eye);
        const Vec<3> side = Perpendicular(exact.direction);
        Near("BoreConeRange", SeenBound(kAside),
             Seen(Square(exact, side, Unit(Cross(exact.direction, side))), exact.direction,
                  {exact.limits[0], exact.limits[1]}, eye),
             BoreConeRange(cone));
        const AnyMap map(random);
        const GBoreCone image = map.Of(cone);
        NearLine(map.Name("bore cone"), map.RecordBounds(), Image(exact, map.exact),
                 image.m_boreLine);
        Near(map.Name("bore cone: eye"), map.RecordBounds().point, eye * map.exact, image.m_eye);
    }
}

// A convex polygon in the plane of the first two rows of t, which repeats its first point.
std::vector<GPosition> AnyProfile(Random& random, const GTransf& t) {
    const std::size_t n = 3 + random.Below(5);
    std::vector<GPosition> points(n + 1);
    for (std::size_t i = 0; i < n; ++i) {
        const double angle =
            (static_cast<double>(i) + random.Uniform(0, 0.8)) * 2 * kPi / static_cast<double>(n);
        points[i] = GPosition{3 * std::cos(angle), 2 * std::sin(angle), 0} * t;
    }
    points[n] = points[0];
    return points;
}
// A fence of a profile, which it shares; its direction lets the profile turn either way.
GPtFence AnyFence(Random& random, std::vector<GPosition>& points, const GTransf& t) {
    const double sign = random.Next() % 2 == 0 ? 1 : -1;
    const double back = random.Uniform(-5, 5);
    const double front = random.Uniform(5, 9);
    return {Count(points), points.data(), Spatial::Direction(t.m_matrix[2] * sign), front, back};
}
std::vector<Vec<3>> ExactPoints(const std::vector<GPosition>& points) {
    std::vector<Vec<3>> exact;
    for (const GPosition& p : points) {
        exact.push_back(Exact(p));
    }
    return exact;
}
Vec<3> Mean(const std::vector<Vec<3>>& points) {
    Vec<3> sum;
    for (const Vec<3>& p : points) {
        sum = sum + p;
    }
    return sum * (Real(1) / static_cast<double>(points.size()));
}

struct Plane {
    Vec<3> point;
    Vec<3> normal;
};
std::vector<Plane> PlanesOf(const GPtFence& fence, const std::vector<Vec<3>>& points) {
    const Vec<3> direction = Exact(fence.m_direction);
    const Vec<3> middle = Mean(points);
    std::vector<Plane> planes = {{points[0] + direction * fence.m_front, direction * -1}};
    for (std::size_t i = 1; i < points.size(); ++i) {
        const Vec<3> across = Cross(direction, points[i] - points[i - 1]);
        const double sign = Dot(across, middle - points[i]).value > 0 ? 1 : -1;
        planes.push_back({points[i], Unit(across * sign)});
    }
    planes.push_back({points[0] + direction * fence.m_back, direction});
    return planes;
}

TEST(Space, Fences) {
    constexpr double kNormal = UnitBound(3, CrossBound(0, 1));
    // The plane's point along the normal, back on it, the difference from the corner.
    constexpr double kDistance = DotBound(3, DotBound(3, 2, kNormal) + kNormal + 1 + 1, kNormal);
    Random random(65);
    for (int k = 0; k < kCases; ++k) {
        const GTransf t = random.Similarity();
        std::vector<GPosition> points = AnyProfile(random, t);
        const GPtFence fence = AnyFence(random, points, t);
        const std::vector<Vec<3>> exact = ExactPoints(points);
        const std::vector<Plane> planes = PlanesOf(fence, exact);
        std::vector<GPosition> plane_points(planes.size());
        std::vector<GUnitVector> normals(planes.size());
        fence.FindPlanes(plane_points.data(), normals.data());
        for (std::size_t i = 0; i < planes.size(); ++i) {
            Near("FindPlanes: points", 2, planes[i].point, plane_points[i]);
            Near("FindPlanes: normals", kNormal, planes[i].normal, normals[i]);
        }
        const Vec<3> direction = Exact(fence.m_direction);
        Near("PtFenceRange", 2, Swept(exact, direction * fence.m_front, direction * fence.m_back),
             PtFenceRange(fence));

        // At a plane, in the middle of its part: a point as near as rounding, and a box beside the
        // tolerance.
        const std::size_t i = random.Below(planes.size());
        const bool is_side = i > 0 && i + 1 < planes.size();
        const Vec<3> middle = Mean(exact);
        const double depth = i == 0    ? fence.m_front
                             : is_side ? (fence.m_front + fence.m_back) / 2
                                       : fence.m_back;
        const Vec<3> at = (is_side ? (exact[i - 1] + exact[i]) * 0.5 : middle) + direction * depth;
        const auto beside = [&](double height) { return Rounded(at + planes[i].normal * height); };
        const GPosition q = beside(random.Uniform(-1, 1) * std::ldexp(1, -k % 60));
        double is_inside = kInf;
        for (std::size_t j = 0; j < planes.size(); ++j) {
            const Vec<3> from = Exact(q) - Exact(plane_points[j]);
            is_inside = And({is_inside, Below(0, Dot(Exact(normals[j]), from))});
        }
        int inside;
        long err;
        IsPtInPtFence(fence, plane_points.data(), normals.data(), q, &inside, &err);
        Agree("IsPtInPtFence", DotBound(3, 1), is_inside, inside);

        const double tolerance = GetDistanceTolerance();
        const GPosition corner = beside(-Beside(random, tolerance));
        GBox box = {corner, corner};
        for (unsigned int j = 0; j < 3; ++j) {
            const bool is_up = planes[i].normal[j].value > 0;
            (is_up ? box.m_low : box.m_high)[j] += (is_up ? -1 : 1) * random.Uniform(0, 1);
        }
        double touches = kInf;
        for (const Plane& plane : planes) {
            const Vec<3> foot = plane.normal * Dot(plane.point, plane.normal);
            double some = -kInf;
            for (const Vec<3>& p : Corners(Exact(box))) {
                some = Or({some, Below(-tolerance, Dot(plane.normal, p - foot))});
            }
            touches = And({touches, some});
        }
        Agree("fence && box", kDistance, touches, fence && box);

        // Seen from an eye in front.
        const Vec<3> axis = middle + direction * (fence.m_front + random.Uniform(1, 9));
        const GPtFrustum frustum = {fence, Rounded(axis) + random.Vector()};
        const Vec<3> eye = Exact(frustum.m_eye);
        Near("PtFrustumRange", SeenBound(0),
             Seen(exact, direction, {fence.m_front, fence.m_back}, eye), PtFrustumRange(frustum));

        // The copy shares the points, which move.
        const AnyMap map(random);
        const GPtFrustum image = map.Of(frustum);
        const Bounds bounds = map.RecordBounds();
        for (std::size_t j = 0; j < points.size(); ++j) {
            Near(map.Name("fence: point"), bounds.point, exact[j] * map.exact, points[j]);
        }
        Near(map.Name("fence: direction"), bounds.direction, Unit(direction * map.exact.matrix),
             image.m_fence.m_direction);
        Near(map.Name("fence: limits"), bounds.limits,
             Vec<2>{fence.m_front, fence.m_back} * map.exact.scaling,
             std::array{image.m_fence.m_front, image.m_fence.m_back});
        // The matrix itself maps the eye.
        Near(map.Name("frustum: eye"), map.is_matrix ? kProjectedPoint : bounds.point,
             map.is_matrix ? Projected(eye, Exact(map.a)) : eye * map.exact, image.m_eye);
    }
}

TEST(Space, Prisms) {
    // x; y across the normal and x, both of unit length, without its part along x: it has none but
    // the roundings of both products, whatever x is; z.
    constexpr double kX = UnitBound(3, 1);
    constexpr double kY = CrossBound(0, kX) + CrossBound() + DotBound(3) + 2;
    constexpr double kZ = CrossBound(kX, kY);
    Random random(66);
    for (int k = 0; k < kCases; ++k) {
        const GTransf t = random.Similarity();
        std::vector<GPosition> points = AnyProfile(random, t);
        const GPtFence fence = AnyFence(random, points, t);
        const std::vector<Vec<3>> exact = ExactPoints(points);
        const Vec<3> normal = Exact(fence.m_direction);
        GRtPrism prism = {};
        prism.m_points = points.data();
        long err;
        BuildRtPrism(points.data(), Count(points), fence.m_direction, fence.m_front, fence.m_back,
                     prism, &err);
        const Vec<3> x = Unit(exact[1] - exact[0]);
        const Mat<3> axes = CoordinateAxes(x, Unit(Cross(normal, x)));
        const Vec<3> to_base = normal * fence.m_back;
        const Vec<3> origin = exact[0] + to_base;
        Near("BuildRtPrism: matrix", kZ, axes, prism.m_transf.m_matrix);
        Near("BuildRtPrism: origin", 2, origin, prism.m_transf.m_translation);
        Near("BuildRtPrism: height", 1, Real(fence.m_front) - fence.m_back, prism.m_height);
        prism.m_transf = t;
        const Similarity<3> placed = Exact(t);
        std::vector<Vec<3>> corners;
        for (std::size_t i = 0; i < points.size(); ++i) {
            const Vec<3> p = exact[i] + to_base;
            const auto along = [&](const Vec<3>& a) { return Dot(p, a) - Dot(origin, a); };
            // A base point along an axis; the scaling twice for the origin, the sum.
            Near("BuildRtPrism: points", DotBound(3, 2, kY) + 2 + 1,
                 Vec<3>{along(axes[0]), along(axes[1]), Real(0)}, points[i]);
            for (const double height : {0.0, prism.m_height}) {
                corners.push_back((Exact(points[i]) + Axis<3>(2) * height) * placed);
            }
        }
        // The top, the dot product, scaling, translation.
        Near("RtPrismRange", 1 + DotBound(3) + 2, ExtentOf(corners), RtPrismRange(prism));
        const AnyMap map(random);
        const GTransf moved = map.Of(prism).m_transf;
        Near(map.Name("prism: matrix"), DotBound(3, map.MatrixBound()),
             placed.matrix * map.exact.matrix, moved.m_matrix);
        Near(map.Name("prism: translation"), map.RecordBounds().point,
             placed.translation * map.exact, moved.m_translation);
        Near(map.Name("prism: scaling"), map.RecordBounds().limits,
             placed.scaling * map.exact.scaling, moved.m_scaling);
    }
}

// Whether the direction leads from one plane to an eye that isn't between them.
double IsOutside(const Vec<3>& eye, const Vec<3>& direction, const Vec<3>& front,
                 const Vec<3>& back) {
    const double tolerance = GetDistanceTolerance();
    return Or({Below(-tolerance, Dot(direction, eye - front)),
               Below(Dot(direction, eye - back), -tolerance)});
}

// Whether it is refused or reported that a profile isn't closed or flat, or an eye between planes.
TEST(Space, VolumeChecks) {
    // The mean of at most 8 points.
    constexpr double kMean = 8;
    MessageRecorder recorder;
    Random random(67);
    const double tolerance = GetDistanceTolerance();
    const auto is_sound = [&recorder](const auto& record) {
        recorder.Take();
        Gassert_valid(record);
        return recorder.Take().empty() ? 1 : 0;
    };
    for (int k = 0; k < kCases; ++k) {
        const GTransf t = k % 2 == 0 ? random.Similarity() : TranslateTransf({0, 0, 0});
        std::vector<GPosition> points = AnyProfile(random, t);
        GPtFrustum frustum = {AnyFence(random, points, t), {}};
        GPtFence& fence = frustum.m_fence;
        const Vec<3> direction = Exact(fence.m_direction);
        // At the front or the back plane, which the direction leaves.
        const double depth = k % 4 < 2 ? fence.m_front : fence.m_back;
        frustum.m_eye = points[0] + fence.m_direction * (depth - Beside(random, tolerance));
        const Vec<3> mean = Mean(ExactPoints(points));
        Agree("eye of frustum is outside", DotBound(3, kMean + 1 + 1),
              IsOutside(Exact(frustum.m_eye), direction, mean + direction * fence.m_front,
                        mean + direction * fence.m_back),
              is_sound(frustum));
        GBoreCone cone = {random.BoreLine(), {}};
        const GBoreLine& l = cone.m_boreLine;
        const Line line = ExactLine(l);
        cone.m_eye = l.Evaluate((k % 4 < 2 ? l.m_front : l.m_back) - Beside(random, tolerance));
        Agree("eye of cone is outside", DotBound(3, 2 + 1),
              IsOutside(Exact(cone.m_eye), line.direction, At(line, l.m_front), At(line, l.m_back)),
              is_sound(cone));

        // The mean depth follows the point that is moved.
        const double n = static_cast<double>(points.size());
        points[1] += fence.m_direction * (Beside(random, tolerance) * n / (n - 1));
        const std::vector<Vec<3>> exact = ExactPoints(points);
        double is_flat = kInf;
        for (const Vec<3>& p : exact) {
            const Real height = Dot(direction, p) - Dot(direction, Mean(exact));
            is_flat = And({is_flat, Below(Abs(height), tolerance)});
        }
        Agree("fence is flat", DotBound(3, kMean) + 1, is_flat, is_sound(fence));
        if (k % 2 != 0) {
            const GRtPrism prism = {t, points.data(), Count(points), 1};
            Agree("prism is flat", kMean + 1, is_flat, is_sound(prism));
        }

        points.back() += random.Direction() * Beside(random, tolerance);
        const double is_closed = Below(Length(Exact(points[0]) - Exact(points.back())), tolerance);
        GRtPrism prism = {};
        std::vector<GPosition> copy = points;
        prism.m_points = copy.data();
        long err;
        BuildPtFence(Count(points), points.data(), fence.m_direction, 1, 0, fence, &err);
        Agree("BuildPtFence: is closed", LengthBound(3, 1), is_closed, err == 0 ? 1 : 0);
        BuildRtPrism(t, points.data(), Count(points), 1, prism, &err);
        Agree("BuildRtPrism: is closed", LengthBound(3, 1), is_closed, err == 0 ? 1 : 0);
    }
}

}  // namespace
}  // namespace kvgeom::test
