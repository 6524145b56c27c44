// SPDX-License-Identifier: MIT
#include "probe/probing.h"

#include "probe/window_shape.h"

#include <kvgeom/kvgeom.h>

#include <algorithm>
#include <cmath>
#include <optional>
#include <set>

namespace kvprobe {
namespace {

// The factor by which a linear map stretches a length at most: the root of the largest eigenvalue
// of M M^T, bounded by its largest row sum (Gershgorin's theorem). Exact for similarities and for
// scalings along the axes.
double LargestStretch(const G4x4& a) {
    const double* const m = a.m_matrix;
    const GMatrix linear = {{{m[0], m[1], m[2]}, {m[4], m[5], m[6]}, {m[8], m[9], m[10]}}};
    const GMatrix gram = linear * linear.Transpose();
    double bound = 0;
    for (unsigned i = 0; i < 3; ++i) {
        const GVector row = gram[i];
        bound = std::max(bound, std::fabs(row.m_x) + std::fabs(row.m_y) + std::fabs(row.m_z));
    }
    return std::sqrt(bound);
}

GBox Enlarged(const GBox& box, double by) {
    const GVector all_ways = {by, by, by};
    return {box.m_low - all_ways, box.m_high + all_ways};
}

G4x4 Transposed(const G4x4& a) {
    G4x4 result;
    for (int i = 0; i < 4; ++i) {
        for (int j = 0; j < 4; ++j) {
            result.m_matrix[4 * i + j] = a.m_matrix[4 * j + i];
        }
    }
    return result;
}

// The way from the model into the coordinates of an object, if its placement is a similarity.
std::optional<GTransf> WayInto(const Object& object) {
    GTransf placement;
    if (ConvertG4x4ToGTransf(object.placement, placement) == 0 && placement.IsInvertible()) {
        return placement.Inverse();
    }
    return std::nullopt;
}

// The leg in the coordinates of the object.
GBoreLine CarryIntoObject(const GBoreLine& leg, const Object& object) {
    if (const std::optional<GTransf> way = WayInto(object)) {
        return leg * *way;
    }
    // Of the two products with a G4x4, the one with the bore line first rebuilds it from the images
    // of its ends, which is right for any map; it reads the matrix in the column form. The radius
    // must cover what was the round tube in every direction.
    const G4x4 inverse = object.placement.Inverse();
    GBoreLine carried = leg * Transposed(inverse);
    carried.m_radius = std::max(carried.m_radius, leg.m_radius * LargestStretch(inverse));
    return carried;
}

// The boxes of the model's objects, to be tested before the objects themselves: in the model,
// around what their tests in their own coordinates take for the object, which is its box enlarged
// by the radius and the tolerances. A little more, that rounding loses none. What isn't finite
// always passes.
std::vector<GBox> SieveBoxes(const Scene& scene, double radius = 0) {
    constexpr double kRounding = 1e-12;
    constexpr double kUnbounded = 1e30;
    const double rounding = kRounding * scene.Reach();
    std::vector<GBox> boxes;
    for (const Object& object : scene.Model()) {
        const double around = (radius + GetRelativeTolerance()) *
                                  std::max(1.0, LargestStretch(object.placement.Inverse())) +
                              GetDistanceTolerance();
        Object enlarged = object;
        enlarged.box = Enlarged(object.box, around);
        const GBox box = Enlarged(ModelBox(enlarged), rounding);
        boxes.push_back(GDistance(box.m_low, box.m_high) < kUnbounded
                            ? box
                            : BuildBox(-kUnbounded, -kUnbounded, -kUnbounded, kUnbounded,
                                       kUnbounded, kUnbounded));
    }
    return boxes;
}

std::optional<Hit> TestLeg(const GBoreLine& leg, const Object& object) {
    const GBoreLine carried = CarryIntoObject(leg, object);
    if (!(carried && object.box)) {
        return std::nullopt;
    }
    const GBoreLine cut = carried & object.box;
    const double one_end = leg.Evaluate(object.placement * cut.Evaluate(cut.m_back));
    const double other_end = leg.Evaluate(object.placement * cut.Evaluate(cut.m_front));
    // The cut spans the whole box: what lies beyond the ends of the leg isn't the leg's. Numbers
    // that left their range on the way (NaN) count as the ends.
    const double enters = std::min(one_end, other_end);
    const double leaves = std::max(one_end, other_end);
    Hit hit = {0, Relation::kMayTouch};
    hit.enters = enters > leg.m_back ? std::min(enters, leg.m_front) : leg.m_back;
    hit.leaves = leaves < leg.m_front ? std::max(leaves, leg.m_back) : leg.m_front;
    return hit;
}

// As the sieve takes it: without its radius, which the boxes have.
BatchTest Against(GBoreLine leg) {
    leg.m_radius = 0;
    return [leg](const GBox* boxes, unsigned long count, unsigned char* answers) {
        return IntersectBoxes(leg, boxes, count, answers);
    };
}

Findings ProbeLegs(const std::vector<GBoreLine>& legs, const Scene& scene) {
    Findings findings;
    findings.legs = legs;
    std::vector<Hit>& hits = findings.hits;
    const std::vector<GBox> boxes = SieveBoxes(scene, legs.front().m_radius);
    for (size_t leg = 0; leg < legs.size(); ++leg) {
        const auto first_of_leg = static_cast<std::ptrdiff_t>(hits.size());
        findings.sieving += Sieve(scene, boxes, Against(legs[leg]), [&](size_t index) {
            if (std::optional<Hit> hit = TestLeg(legs[leg], scene.At(index))) {
                hit->leg = leg;
                hit->object = index;
                hits.push_back(*hit);
            }
        });
        std::stable_sort(hits.begin() + first_of_leg, hits.end(),
                         [](const Hit& a, const Hit& b) { return a.enters < b.enters; });
    }
    return findings;
}

// Adds the objects that may touch the volume, a fence or a clip volume, and so tell their relation.
template <class Volume, class Relate>
void ProbeEach(const Scene& scene, const Volume& volume, Relate relate, Findings& findings) {
    const BatchTest test = [&volume](const GBox* boxes, unsigned long count,
                                     unsigned char* answers) {
        return IntersectBoxes(volume, boxes, count, answers);
    };
    findings.sieving = Sieve(scene, SieveBoxes(scene), test, [&](size_t index) {
        if (const std::optional<Relation> relation = relate(scene.At(index))) {
            findings.hits.push_back({index, *relation});
        }
    });
}

// Two rings of the same number of points, and edges between them; of many points, a few.
Shape Sweep(const Ring& front, const Ring& back) {
    constexpr size_t kMostEdges = 12;
    const size_t step = (front.size() + kMostEdges - 1) / kMostEdges;
    Shape shape = {{front, back}, {}};
    for (size_t i = 0; i + 1 < front.size(); i += step) {
        shape.edges.push_back({front[i], back[i]});
    }
    return shape;
}

Ring Moved(const Ring& ring, const GVector& v) {
    Ring result = ring;
    for (GPosition& p : result) {
        p += v;
    }
    return result;
}

// Where the rays from the eye through the ring meet the plane at a depth along the direction,
// measured from the plane of the point.
Ring SeenAtDepth(const Ring& ring, const GPosition& eye, const GUnitVector& direction,
                 const GPosition& point, double depth) {
    const double to_plane = (point - eye) % direction + depth;
    Ring result;
    for (const GPosition& p : ring) {
        const double slope = (p - eye) % direction;
        result.push_back(slope != 0 ? Interpolate(to_plane / slope, eye, p) : p);
    }
    return result;
}

GPtFence FenceOver(std::vector<GPosition>& points, const PolygonRequest& request) {
    return {points.size(), points.data(), request.direction, request.front, request.back};
}

void MeetRange(const GBox& range, const Scene& scene, Findings& findings) {
    findings.range = range;
    const BatchTest test = [&range](const GBox* boxes, unsigned long count,
                                    unsigned char* answers) {
        return IntersectBoxes(range, GetDistanceTolerance(), boxes, count, answers);
    };
    findings.sieving = Sieve(scene, scene.Boxes(), test, [&findings](size_t index) {
        findings.hits.push_back({index, Relation::kRangeMeets});
    });
}

// The object's box in the model, laid flat: y upwards leaves x and z, z upwards x and y.
GBox2d PlanBox(const GBox& box, UpAxis up) {
    const GMatrix flat = up == UpAxis::kY ? GMatrix{{{1, 0, 0}, {0, 0, 0}, {0, 1, 0}}}
                                          : GMatrix{{{1, 0, 0}, {0, 1, 0}, {0, 0, 0}}};
    return (box * flat).Convert2d();
}

// One overload for each kind of request.
struct Prober {
    const Scene& scene;

    Findings operator()(const ListRequest& /*request*/) const { return {}; }

    Findings operator()(const RouteRequest& request) const {
        std::vector<GBoreLine> legs;
        for (size_t i = 1; i < request.route.size(); ++i) {
            const GPosition& from = request.route[i - 1];
            const GPosition& to = request.route[i];
            legs.push_back(BuildBoreLine(from, BuildUnitVector(from, to), GDistance(from, to), 0.0,
                                         request.radius));
        }
        return ProbeLegs(legs, scene);
    }

    Findings operator()(const LineRequest& request) const {
        GBoreLine line = BuildBoreLine(request.through, request.along);
        line.m_radius = request.radius;
        return ProbeLegs({line}, scene);
    }

    Findings operator()(const FenceRequest& request) const {
        Findings findings;
        findings.shape = Sweep(Moved(request.polygon, request.front * request.direction),
                               Moved(request.polygon, request.back * request.direction));
        std::vector<GPosition> polygon = request.polygon;
        ProbeEach(
            scene, FenceOver(polygon, request),
            [&request](const Object& object) -> std::optional<Relation> {
                std::vector<GPosition> points = request.polygon;
                GPtFence fence = FenceOver(points, request);
                GBox box = object.box;
                if (const std::optional<GTransf> way = WayInto(object)) {
                    fence *= *way;
                } else {
                    box = ModelBox(object);
                }
                return fence && box ? std::optional(Relation::kMayTouch) : std::nullopt;
            },
            findings);
        return findings;
    }

    Findings operator()(const WindowRequest& request) const {
        Findings findings;
        findings.shape = ShapeOf(request.volume, scene.Boxes());
        ProbeEach(
            scene, request.volume,
            [&request](const Object& object) -> std::optional<Relation> {
                GClipVolume volume = request.volume;
                GBox box = object.box;
                if (const std::optional<GTransf> way = WayInto(object)) {
                    volume *= *way;
                } else {
                    box = ModelBox(object);
                }
                if (!(volume && box)) {
                    return std::nullopt;
                }
                return volume >> box ? Relation::kInside : Relation::kCrosses;
            },
            findings);
        return findings;
    }

    Findings operator()(const ConeRequest& request) const {
        const GBoreLine line = BuildBoreLine(request.point, request.direction, request.front,
                                             request.back, request.radius);
        GBoreCone cone;
        long err = 0;
        BuildBoreCone(line, request.eye, cone, &err);
        constexpr int kSides = 48;
        const GUnitVector across = GetPerpVector(request.direction);
        Ring circle;
        for (int i = 0; i <= kSides; ++i) {
            const GVector spoke = across * RotateTransf(i * kFullTurn / kSides, request.direction);
            circle.push_back(request.point + request.radius * spoke);
        }
        return Seen(circle, request.direction, request.front, request.back, request.eye,
                    BoreConeRange(cone));
    }

    Findings operator()(const FrustumRequest& request) const {
        std::vector<GPosition> points = request.polygon;
        const GPtFrustum frustum = {FenceOver(points, request), request.eye};
        return Seen(request.polygon, request.direction, request.front, request.back, request.eye,
                    PtFrustumRange(frustum));
    }

    Findings operator()(const PrismRequest& request) const {
        std::vector<GPosition> points = request.polygon;
        GRtPrism prism = {{}, points.data(), 0, 0};
        long err = 0;
        BuildRtPrism(request.polygon.data(), points.size(), request.direction, request.front,
                     request.back, prism, &err);
        Ring base;
        Ring top;
        for (const GPosition& p : points) {
            base.push_back(p * prism.m_transf);
            top.push_back(GPosition{p.m_x, p.m_y, prism.m_height} * prism.m_transf);
        }
        Findings findings;
        findings.shape = Sweep(top, base);
        MeetRange(RtPrismRange(prism), scene, findings);
        return findings;
    }

    Findings operator()(const PlanRequest& request) const {
        Plan plan = {request.up, {}, request.window};
        for (const GBox& box : scene.Boxes()) {
            plan.boxes.push_back(PlanBox(box, request.up));
        }
        Findings findings;
        for (size_t i = 0; plan.window && i < plan.boxes.size(); ++i) {
            if (*plan.window >> plan.boxes[i]) {
                findings.hits.push_back({i, Relation::kInside});
            } else if (plan.window->IsIntersectTol(plan.boxes[i], GetDistanceTolerance())) {
                findings.hits.push_back({i, Relation::kCrosses});
            }
        }
        findings.plan = plan;
        return findings;
    }

  private:
    static constexpr double kFullTurn = 6.283185307179586;

    Findings Seen(const Ring& ring, const GUnitVector& direction, double front, double back,
                  const GPosition& eye, const GBox& range) const {
        Findings findings;
        findings.shape = Sweep(SeenAtDepth(ring, eye, direction, ring[0], front),
                               SeenAtDepth(ring, eye, direction, ring[0], back));
        MeetRange(range, scene, findings);
        return findings;
    }
};

}  // namespace

Findings Probe(const Request& request, const Scene& scene) {
    return std::visit(Prober{scene}, request);
}

size_t CountFound(const std::vector<Hit>& hits) {
    std::set<size_t> found;
    for (const Hit& hit : hits) {
        found.insert(hit.object);
    }
    return found.size();
}

}  // namespace kvprobe
