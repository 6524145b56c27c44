// SPDX-License-Identifier: MIT
#include "libraries.h"

#include <CGAL/Aff_transformation_3.h>
#include <CGAL/Bbox_3.h>
#include <CGAL/Simple_cartesian.h>
#include <CGAL/bounding_box.h>
#include <CGAL/intersections.h>
#include <CGAL/version.h>

namespace bench::BENCH_BUILD {
namespace {

// The kernel whose numbers are doubles without filters, so that the arithmetic is the same.
typedef CGAL::Simple_cartesian<double> Kernel;
typedef Kernel::Point_3 Point;
typedef Kernel::Plane_3 Plane;
typedef CGAL::Aff_transformation_3<Kernel> Map;
typedef CGAL::Bbox_3 Box;

Point ToPoint(const GPosition& p) {
    return {p.m_x, p.m_y, p.m_z};
}
Box ToBox(const GBox& box) {
    const GPosition& l = box.m_low;
    const GPosition& h = box.m_high;
    return {l.m_x, l.m_y, l.m_z, h.m_x, h.m_y, h.m_z};
}
// For columns.
Map ToMap(const G4x4& g) {
    const double* const e = g.m_matrix;
    return {e[0], e[4], e[8], e[12], e[1], e[5], e[9], e[13], e[2], e[6], e[10], e[14]};
}

void TellPoint(Answers& answers, const Point& p) {
    answers.insert(answers.end(), {p.x(), p.y(), p.z()});
}
void TellBox(Answers& answers, const Box& box) {
    answers.insert(answers.end(),
                   {box.xmin(), box.ymin(), box.zmin(), box.xmax(), box.ymax(), box.zmax()});
}
void TellTest(Answers& answers, unsigned char answer) {
    answers.push_back(answer);
}
void TellMap(Answers& answers, const Map& map) {
    for (int column = 0; column < 4; ++column) {
        for (int row = 0; row < 4; ++row) {
            answers.push_back(map.m(row, column));
        }
    }
}

std::vector<Plane> PlanesOf(const GClipVolume& volume) {
    std::vector<Plane> result;
    for (const auto& plane : volume.m_planes) {
        result.emplace_back(plane[0], plane[1], plane[2], plane[3]);
    }
    return result;
}

Task MapPointsTask(const Model& model, const G4x4& g) {
    return EachTask<Point>(
        Converted(model.points, ToPoint),
        [map = ToMap(g)](const Point& p) { return map.transform(p); }, TellPoint);
}

Task BoxOfPointsTask(const Model& model) {
    return ArrayTask<Box>(
        Converted(model.points, ToPoint), 1,
        [](const std::vector<Point>& in, std::vector<Box>& out) {
            out[0] = CGAL::bbox_3(in.begin(), in.end());
        },
        TellBox);
}

Task BoreLineTask(const Model& model) {
    const GBoreLine& line = model.line;
    const Kernel::Segment_3 segment(ToPoint(line.Evaluate(line.m_back)),
                                    ToPoint(line.Evaluate(line.m_front)));
    return EachTask<unsigned char>(
        Converted(model.boxes, ToBox),
        [segment, r = line.m_radius](const Box& box) {
            return CGAL::do_intersect(Box(box.xmin() - r, box.ymin() - r, box.zmin() - r,
                                          box.xmax() + r, box.ymax() + r, box.zmax() + r),
                                      segment);
        },
        TellTest);
}

// The corner furthest along each normal.
Task ClipVolumeTask(const Model& model) {
    return EachTask<unsigned char>(
        Converted(model.boxes, ToBox),
        [planes = PlanesOf(model.volume)](const Box& box) {
            for (const Plane& plane : planes) {
                const Point corner(plane.a() > 0 ? box.xmax() : box.xmin(),
                                   plane.b() > 0 ? box.ymax() : box.ymin(),
                                   plane.c() > 0 ? box.zmax() : box.zmin());
                if (plane.has_on_negative_side(corner)) {
                    return false;
                }
            }
            return true;
        },
        TellTest);
}

Task PointsInFenceTask(const Model& model) {
    return EachTask<unsigned char>(
        Converted(model.points, ToPoint),
        [planes = PlanesOf(model.volume)](const Point& p) {
            for (const Plane& plane : planes) {
                if (plane.has_on_negative_side(p)) {
                    return false;
                }
            }
            return true;
        },
        TellTest);
}

// There are neither maps of boxes nor projective ones.
Task Prepare(Work work, const Model& model) {
    switch (work) {
        case Work::kMapPointsByTransf:
            return MapPointsTask(model, MatrixOf(model.transf));
        case Work::kMapPointsByAffine:
            return MapPointsTask(model, model.affine);
        case Work::kBoxOfPoints:
            return BoxOfPointsTask(model);
        case Work::kBoreLineAgainstBoxes:
            return BoreLineTask(model);
        case Work::kClipVolumeAgainstBoxes:
            return ClipVolumeTask(model);
        case Work::kPointsInFence:
            return PointsInFenceTask(model);
        case Work::kComposeTransfs: {
            const auto convert = [](const GTransf& t) { return ToMap(MatrixOf(t)); };
            return PairsTask<Map>(
                Converted(model.first, convert), Converted(model.second, convert),
                [](const Map& a, const Map& b, Map& result) { result = b * a; }, TellMap);
        }
        case Work::kMapPointsByProjective:
        case Work::kMapBoxesByTransf:
        case Work::kMapBoxesByAffine:
        case Work::kInvertMatrices:
            break;
    }
    return {};
}

}  // namespace

Rival CgalRival() {
    return {"cgal", CGAL_VERSION_STR, Prepare};
}

}  // namespace bench::BENCH_BUILD
