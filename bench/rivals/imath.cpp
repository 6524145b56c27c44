// SPDX-License-Identifier: MIT
#include "libraries.h"

#include <Imath/ImathBoxAlgo.h>
#include <Imath/ImathFrustumTest.h>
#include <Imath/ImathMatrix.h>

using namespace Imath;

namespace bench::BENCH_BUILD {
namespace {

typedef Box<V3d> BoxOfDoubles;

V3d ToVector(const GPosition& p) {
    return {p.m_x, p.m_y, p.m_z};
}
BoxOfDoubles ToBox(const GBox& box) {
    return {ToVector(box.m_low), ToVector(box.m_high)};
}
M44d ToMatrix(const G4x4& g) {
    const double* const e = g.m_matrix;
    return {e[0], e[1], e[2],  e[3],  e[4],  e[5],  e[6],  e[7],
            e[8], e[9], e[10], e[11], e[12], e[13], e[14], e[15]};
}

void TellVector(Answers& answers, const V3d& v) {
    answers.insert(answers.end(), {v.x, v.y, v.z});
}
void TellBox(Answers& answers, const BoxOfDoubles& box) {
    TellVector(answers, box.min);
    TellVector(answers, box.max);
}
void TellTest(Answers& answers, unsigned char answer) {
    answers.push_back(answer);
}
void TellMatrix(Answers& answers, const M44d& m) {
    answers.insert(answers.end(), m.getValue(), m.getValue() + 16);
}

// Multiplies by the 3x3 part only, where multVecMatrix would divide by a weight of 1.
Task MapPointsTask(const Model& model, const M44d& map) {
    return EachTask<V3d>(
        Converted(model.points, ToVector),
        [map, translation = map.translation()](const V3d& p) {
            V3d image;
            map.multDirMatrix(p, image);
            return image + translation;
        },
        TellVector);
}

Task ProjectPointsTask(const Model& model) {
    return EachTask<V3d>(
        Converted(model.points, ToVector),
        [map = ToMatrix(model.projective)](const V3d& p) {
            V3d image;
            map.multVecMatrix(p, image);
            return image;
        },
        TellVector);
}

Task BoxOfPointsTask(const Model& model) {
    return ArrayTask<BoxOfDoubles>(
        Converted(model.points, ToVector), 1,
        [](const std::vector<V3d>& in, std::vector<BoxOfDoubles>& out) {
            BoxOfDoubles box;
            for (const V3d& p : in) {
                box.extendBy(p);
            }
            out[0] = box;
        },
        TellBox);
}

// A ray that begins outside of all boxes.
Task BoreLineTask(const Model& model) {
    const GBoreLine& line = model.line;
    const double r = line.m_radius;
    return EachTask<unsigned char>(
        Converted(model.boxes, ToBox),
        [ray = Line3d(ToVector(line.Evaluate(line.m_back)), ToVector(line.Evaluate(line.m_front))),
         radius = V3d(r, r, r)](const BoxOfDoubles& box) {
            return intersects(BoxOfDoubles(box.min - radius, box.max + radius), ray);
        },
        TellTest);
}

// An orthographic frustum looks along -z, from its centre here.
FrustumTest<double> TestOf(const Room& room) {
    const auto& m = room.axes.m_elements;
    const GPosition& c = room.centre;
    const M44d camera(m[0][0], m[0][1], m[0][2], 0, m[1][0], m[1][1], m[1][2], 0,  //
                      m[2][0], m[2][1], m[2][2], 0, c.m_x, c.m_y, c.m_z, 1);
    const double* const h = room.half;
    return {Frustum<double>(-h[2], h[2], -h[0], h[0], h[1], -h[1], true), camera};
}

template <class Element>
Task VisibleTask(std::vector<Element> elements, const Room& room) {
    return EachTask<unsigned char>(
        std::move(elements),
        [test = TestOf(room)](const Element& element) { return test.isVisible(element); },
        TellTest);
}

Task MapBoxesTask(const Model& model, const M44d& map) {
    return EachTask<BoxOfDoubles>(
        Converted(model.boxes, ToBox),
        [map](const BoxOfDoubles& box) { return affineTransform(box, map); }, TellBox);
}

Task ComposeTask(const Model& model) {
    const auto convert = [](const GTransf& t) { return ToMatrix(MatrixOf(t)); };
    return PairsTask<M44d>(
        Converted(model.first, convert), Converted(model.second, convert),
        [](const M44d& a, const M44d& b, M44d& result) { M44d::multiply(a, b, result); },
        TellMatrix);
}

Task Prepare(Work work, const Model& model) {
    switch (work) {
        case Work::kMapPointsByTransf:
            return MapPointsTask(model, ToMatrix(MatrixOf(model.transf)));
        case Work::kMapPointsByAffine:
            return MapPointsTask(model, ToMatrix(model.affine));
        case Work::kMapPointsByProjective:
            return ProjectPointsTask(model);
        case Work::kBoxOfPoints:
            return BoxOfPointsTask(model);
        case Work::kBoreLineAgainstBoxes:
            return BoreLineTask(model);
        case Work::kClipVolumeAgainstBoxes:
            return VisibleTask(Converted(model.boxes, ToBox), model.room);
        case Work::kMapBoxesByTransf:
            return MapBoxesTask(model, ToMatrix(MatrixOf(model.transf)));
        case Work::kMapBoxesByAffine:
            return MapBoxesTask(model, ToMatrix(model.affine));
        case Work::kPointsInFence:
            return VisibleTask(Converted(model.points, ToVector), model.room);
        case Work::kComposeTransfs:
            return ComposeTask(model);
        case Work::kInvertMatrices:
            return EachTask<M44d>(
                Converted(model.matrices, ToMatrix), [](const M44d& m) { return m.gjInverse(); },
                TellMatrix);
    }
    return {};
}

}  // namespace

Rival ImathRival() {
    return {"imath", IMATH_VERSION_STRING, Prepare};
}

}  // namespace bench::BENCH_BUILD
