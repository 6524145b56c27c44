// SPDX-License-Identifier: MIT
#include "libraries.h"

#include <BVH_Tools.hxx>
#include <Bnd_Box.hxx>
#include <NCollection_Mat4.hxx>
#include <Standard_Version.hxx>
#include <gp_GTrsf.hxx>
#include <gp_Lin.hxx>
#include <gp_Pnt.hxx>
#include <gp_Trsf.hxx>

#include <array>

namespace bench::BENCH_BUILD {
namespace {

typedef NCollection_Vec3<double> Vec3;
typedef NCollection_Vec4<double> Vec4;
typedef BVH_Box<double, 3> PlainBox;

gp_Pnt ToPoint(const GPosition& p) {
    return {p.m_x, p.m_y, p.m_z};
}
gp_XYZ ToTriple(const GPosition& p) {
    return {p.m_x, p.m_y, p.m_z};
}
Vec3 ToVector(const GPosition& p) {
    return Vec3(p.m_x, p.m_y, p.m_z);
}
Bnd_Box ToBox(const GBox& box) {
    return {ToPoint(box.m_low), ToPoint(box.m_high)};
}
PlainBox ToPlainBox(const GBox& box) {
    return {ToVector(box.m_low), ToVector(box.m_high)};
}
// For columns.
gp_Trsf ToTrsf(const GTransf& t) {
    const G4x4 g = MatrixOf(t);
    const double* const e = g.m_matrix;
    gp_Trsf result;
    result.SetValues(e[0], e[4], e[8], e[12], e[1], e[5], e[9], e[13], e[2], e[6], e[10], e[14]);
    return result;
}

void TellTriple(Answers& answers, const gp_XYZ& p) {
    answers.insert(answers.end(), {p.X(), p.Y(), p.Z()});
}
void TellPoint(Answers& answers, const gp_Pnt& p) {
    TellTriple(answers, p.XYZ());
}
void TellVector(Answers& answers, const Vec3& v) {
    answers.insert(answers.end(), {v.x(), v.y(), v.z()});
}
void TellBox(Answers& answers, const Bnd_Box& box) {
    TellPoint(answers, box.CornerMin());
    TellPoint(answers, box.CornerMax());
}
void TellTest(Answers& answers, unsigned char answer) {
    answers.push_back(answer);
}
void TellTrsf(Answers& answers, const gp_Trsf& t) {
    for (int column = 1; column <= 4; ++column) {
        for (int row = 1; row <= 3; ++row) {
            answers.push_back(t.Value(row, column));
        }
        answers.push_back(column == 4 ? 1 : 0);
    }
}

struct Plane {
    gp_XYZ normal;
    double offset;
};

std::array<Plane, 6> PlanesOf(const GClipVolume& volume) {
    std::array<Plane, 6> result;
    for (int k = 0; k < 6; ++k) {
        const auto& p = volume.m_planes[k];
        result[static_cast<std::size_t>(k)] = {{p[0], p[1], p[2]}, p[3]};
    }
    return result;
}

Task MapPointsTask(const Model& model) {
    return EachTask<gp_Pnt>(
        Converted(model.points, ToPoint),
        [t = ToTrsf(model.transf)](const gp_Pnt& p) { return p.Transformed(t); }, TellPoint);
}

Task MapPointsByAffineTask(const Model& model) {
    const double* const e = model.affine.m_matrix;
    const gp_GTrsf map(gp_Mat(e[0], e[4], e[8], e[1], e[5], e[9], e[2], e[6], e[10]),
                       gp_XYZ(e[12], e[13], e[14]));
    return EachTask<gp_XYZ>(
        Converted(model.points, ToTriple),
        [map](gp_XYZ p) {
            map.Transforms(p);
            return p;
        },
        TellTriple);
}

Task ProjectPointsTask(const Model& model) {
    NCollection_Mat4<double> map;
    for (std::size_t i = 0; i < 4; ++i) {
        for (std::size_t j = 0; j < 4; ++j) {
            map.ChangeValue(j, i) = model.projective.m_matrix[4 * i + j];
        }
    }
    return EachTask<Vec3>(
        Converted(model.points, ToVector),
        [map](const Vec3& p) {
            const Vec4 h = map * Vec4(p, 1.0);
            return h.xyz() * (1 / h.w());
        },
        TellVector);
}

Task BoxOfPointsTask(const Model& model) {
    return ArrayTask<PlainBox>(
        Converted(model.points, ToVector), 1,
        [](const std::vector<Vec3>& in, std::vector<PlainBox>& out) {
            PlainBox box;
            for (const Vec3& p : in) {
                box.Add(p);
            }
            out[0] = box;
        },
        [](Answers& answers, const PlainBox& box) {
            TellVector(answers, box.CornerMin());
            TellVector(answers, box.CornerMax());
        });
}

// A ray that begins outside of all boxes.
Task BoreLineTask(const Model& model) {
    const GBoreLine& line = model.line;
    const double r = line.m_radius;
    const GUnitVector& d = line.m_direction;
    return EachTask<unsigned char>(
        Converted(model.boxes, ToPlainBox),
        [origin = ToVector(line.Evaluate(line.m_back)), direction = Vec3(d.m_x, d.m_y, d.m_z),
         radius = Vec3(r, r, r)](const PlainBox& box) {
            double enter;
            double leave;
            return BVH_Tools<double, 3>::RayBoxIntersection(origin, direction,
                                                            box.CornerMin() - radius,
                                                            box.CornerMax() + radius, enter, leave);
        },
        TellTest);
}

// The corner furthest along each normal.
Task ClipVolumeTask(const Model& model) {
    return EachTask<unsigned char>(
        Converted(model.boxes, ToPlainBox),
        [planes = PlanesOf(model.volume)](const PlainBox& box) {
            const Vec3& low = box.CornerMin();
            const Vec3& high = box.CornerMax();
            for (const Plane& plane : planes) {
                const gp_XYZ& n = plane.normal;
                const gp_XYZ corner(n.X() > 0 ? high.x() : low.x(), n.Y() > 0 ? high.y() : low.y(),
                                    n.Z() > 0 ? high.z() : low.z());
                if (n.Dot(corner) + plane.offset < 0) {
                    return false;
                }
            }
            return true;
        },
        TellTest);
}

Task PointsInFenceTask(const Model& model) {
    return EachTask<unsigned char>(
        Converted(model.points, ToTriple),
        [planes = PlanesOf(model.volume)](const gp_XYZ& p) {
            for (const Plane& plane : planes) {
                if (plane.normal.Dot(p) + plane.offset < 0) {
                    return false;
                }
            }
            return true;
        },
        TellTest);
}

// Maps of boxes by anything but a gp_Trsf there are none, nor an inverse of a 4x4 matrix in double
// precision by elimination.
Task Prepare(Work work, const Model& model) {
    switch (work) {
        case Work::kMapPointsByTransf:
            return MapPointsTask(model);
        case Work::kMapPointsByAffine:
            return MapPointsByAffineTask(model);
        case Work::kMapPointsByProjective:
            return ProjectPointsTask(model);
        case Work::kBoxOfPoints:
            return BoxOfPointsTask(model);
        case Work::kBoreLineAgainstBoxes:
            return BoreLineTask(model);
        case Work::kClipVolumeAgainstBoxes:
            return ClipVolumeTask(model);
        case Work::kMapBoxesByTransf:
            return EachTask<Bnd_Box>(
                Converted(model.boxes, ToBox),
                [t = ToTrsf(model.transf)](const Bnd_Box& box) { return box.Transformed(t); },
                TellBox);
        case Work::kPointsInFence:
            return PointsInFenceTask(model);
        case Work::kComposeTransfs:
            return PairsTask<gp_Trsf>(
                Converted(model.first, ToTrsf), Converted(model.second, ToTrsf),
                [](const gp_Trsf& a, const gp_Trsf& b, gp_Trsf& result) { result = b * a; },
                TellTrsf);
        case Work::kMapBoxesByAffine:
        case Work::kInvertMatrices:
            break;
    }
    return {};
}

}  // namespace

Rival OcctRival() {
    return {"occt", OCC_VERSION_COMPLETE, Prepare};
}

}  // namespace bench::BENCH_BUILD
