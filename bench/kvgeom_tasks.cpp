// SPDX-License-Identifier: MIT
#include "kvgeom_tasks.h"

#include "model.h"

#include <kvgeom/kvgeom.h>

#include <benchmark/benchmark.h>
#include <array>
#include <cfloat>
#include <cmath>

namespace bench {
namespace {

void TellPoint(Answers& answers, const GPosition& p) {
    answers.insert(answers.end(), {p.m_x, p.m_y, p.m_z});
}
void TellBox(Answers& answers, const GBox& box) {
    TellPoint(answers, box.m_low);
    TellPoint(answers, box.m_high);
}
void TellTest(Answers& answers, unsigned char answer) {
    answers.push_back(answer);
}
void TellMatrix(Answers& answers, const G4x4& g) {
    answers.insert(answers.end(), std::begin(g.m_matrix), std::end(g.m_matrix));
}
void TellTransf(Answers& answers, const GTransf& t) {
    TellMatrix(answers, MatrixOf(t));
}

template <class Map>
Task MapPointsTask(const Model& model, const Map& map) {
    return ArrayTask<GPosition>(
        model.points, model.points.size(),
        [map](const auto& in, auto& out) { MapPositions(map, in.data(), in.size(), out.data()); },
        TellPoint);
}

template <class Map>
Task MapBoxesTask(const Model& model, const Map& map) {
    return ArrayTask<GBox>(
        model.boxes, model.boxes.size(),
        [map](const auto& in, auto& out) { MapBoxes(map, in.data(), in.size(), out.data()); },
        TellBox);
}

template <class Volume>
Task IntersectTask(const Model& model, const Volume& volume) {
    return ArrayTask<unsigned char>(
        model.boxes, model.boxes.size(),
        [volume](const auto& in, auto& out) {
            IntersectBoxes(volume, in.data(), in.size(), out.data());
        },
        TellTest);
}

Task PointsInFenceTask(const Model& model) {
    const Room& room = model.room;
    const auto& axes = room.axes.m_elements;
    const auto corner = [&](double u, double v) {
        const double a = u * room.half[0];
        const double b = v * room.half[1];
        return room.centre + GVector{a * axes[0][0] + b * axes[1][0],
                                     a * axes[0][1] + b * axes[1][1],
                                     a * axes[0][2] + b * axes[1][2]};
    };
    const std::array<GPosition, 5> points = {corner(-1, -1), corner(1, -1), corner(1, 1),
                                             corner(-1, 1), corner(-1, -1)};
    GPtFence fence = {5, nullptr, BuildUnitVector(axes[2][0], axes[2][1], axes[2][2]), room.half[2],
                      -room.half[2]};
    return ArrayTask<unsigned char>(
        model.points, model.points.size(),
        [fence, points](const auto& in, auto& out) {
            auto own_points = points;
            GPtFence own_fence = fence;
            own_fence.m_points = own_points.data();
            ClassifyPositions(own_fence, in.data(), in.size(), out.data());
        },
        TellTest);
}

// The loop of a caller who has the elements one at a time: each result is stored before the next
// call begins.
template <class Output, class Input, class Function, class Tell>
Task SingleTask(const std::vector<Input>& input, Function function, Tell tell) {
    return ArrayTask<Output>(
        input, input.size(),
        [function](const auto& in, auto& out) {
            for (std::size_t i = 0; i < in.size(); ++i) {
                Output result = function(in[i], i);
                benchmark::DoNotOptimize(result);
                out[i] = result;
            }
        },
        tell);
}

// As GPosition::operator*=(const GTransf&).
GPosition Mapped(const GPosition& p, const GTransf& t) {
    const auto& m = t.m_matrix.m_elements;
    const double x = p.m_x * m[0][0] + p.m_y * m[1][0] + p.m_z * m[2][0];
    const double y = p.m_x * m[0][1] + p.m_y * m[1][1] + p.m_z * m[2][1];
    const double z = p.m_x * m[0][2] + p.m_y * m[1][2] + p.m_z * m[2][2];
    return {x * t.m_scaling + t.m_translation.m_x, y * t.m_scaling + t.m_translation.m_y,
            z * t.m_scaling + t.m_translation.m_z};
}

struct Interval {
    double low;
    double high;
};

bool CutToSlab(Interval& t, double low, double high, double p, double d) {
    const double extent = high - low;
    const double u = (p - low) / extent;
    const double v = d / extent;
    if (std::fabs(v) <= DBL_EPSILON) {
        return !(u < 0 || u > 1);
    }
    const double t0 = -u / v;
    const double t1 = (1 - u) / v;
    const double first = t1 < t0 ? t1 : t0;
    const double last = t1 > t0 ? t1 : t0;
    t.low = first > t.low ? first : t.low;
    t.high = last < t.high ? last : t.high;
    return !(t.high < t.low);
}

// As GBoreLine::operator&&(const GBox&), for a line with a radius and ordered limits.
bool Meets(const GBoreLine& l, const GBox& box) {
    const double e = l.m_radius;
    const GPosition& a = box.m_low;
    const GPosition& b = box.m_high;
    Interval t = {l.m_back, l.m_front};
    return CutToSlab(t, a.m_x - e, b.m_x + e, l.m_point.m_x, l.m_direction.m_x) &&
           CutToSlab(t, a.m_y - e, b.m_y + e, l.m_point.m_y, l.m_direction.m_y) &&
           CutToSlab(t, a.m_z - e, b.m_z + e, l.m_point.m_z, l.m_direction.m_z);
}

}  // namespace

Task PrepareKvgeom(Work work, const Model& model) {
    switch (work) {
        case Work::kMapPointsByTransf:
            return MapPointsTask(model, model.transf);
        case Work::kMapPointsByAffine:
            return MapPointsTask(model, model.affine);
        case Work::kMapPointsByProjective:
            return MapPointsTask(model, model.projective);
        case Work::kBoxOfPoints:
            return ArrayTask<GBox>(
                model.points, 1,
                [](const auto& in, auto& out) {
                    // BuildBox only reads.
                    out[0] = BuildBox(in.size(), const_cast<GPosition*>(in.data()));
                },
                TellBox);
        case Work::kBoreLineAgainstBoxes:
            return IntersectTask(model, model.line);
        case Work::kClipVolumeAgainstBoxes:
            return IntersectTask(model, model.volume);
        case Work::kMapBoxesByTransf:
            return MapBoxesTask(model, model.transf);
        case Work::kMapBoxesByAffine:
            return MapBoxesTask(model, model.affine);
        case Work::kPointsInFence:
            return PointsInFenceTask(model);
        case Work::kComposeTransfs:
            return ArrayTask<GTransf>(
                model.first, model.first.size(),
                [second = model.second](const auto& in, auto& out) {
                    ComposeTransfs(in.data(), second.data(), in.size(), out.data());
                },
                TellTransf);
        case Work::kInvertMatrices:
            return ArrayTask<G4x4>(
                model.matrices, model.matrices.size(),
                [](const auto& in, auto& out) { Invert4x4s(in.data(), in.size(), out.data()); },
                TellMatrix);
    }
    return {};
}

Task PrepareKvgeomSorted(Work work, const Model& model) {
    return PrepareKvgeom(work, Sorted(model));
}

Task PrepareKvgeomSingle(Work work, const Model& model) {
    if (work == Work::kMapPointsByTransf) {
        return SingleTask<GPosition>(
            model.points,
            [t = model.transf](GPosition p, std::size_t) {
                p *= t;
                return p;
            },
            TellPoint);
    }
    if (work == Work::kBoreLineAgainstBoxes) {
        return SingleTask<unsigned char>(
            model.boxes,
            [line = model.line](const GBox& box, std::size_t) {
                return static_cast<unsigned char>(line && box);
            },
            TellTest);
    }
    if (work == Work::kComposeTransfs) {
        return SingleTask<GTransf>(
            model.first,
            [second = model.second](const GTransf& t, std::size_t i) { return t * second[i]; },
            TellTransf);
    }
    if (work == Work::kInvertMatrices) {
        return SingleTask<G4x4>(
            model.matrices, [](const G4x4& g, std::size_t) { return g.Inverse(); }, TellMatrix);
    }
    return {};
}

Task PrepareKvgeomInlined(Work work, const Model& model) {
    if (work == Work::kMapPointsByTransf) {
        return SingleTask<GPosition>(
            model.points,
            [t = model.transf](const GPosition& p, std::size_t) { return Mapped(p, t); },
            TellPoint);
    }
    if (work == Work::kBoreLineAgainstBoxes) {
        return SingleTask<unsigned char>(
            model.boxes,
            [line = model.line](const GBox& box, std::size_t) {
                return static_cast<unsigned char>(Meets(line, box));
            },
            TellTest);
    }
    return {};
}

}  // namespace bench
