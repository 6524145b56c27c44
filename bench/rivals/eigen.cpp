// SPDX-License-Identifier: MIT
#include "libraries.h"

#include <Eigen/Geometry>

using namespace Eigen;

namespace bench::BENCH_BUILD {
namespace {

// Six planes as the rows of a matrix. Vectors of two doubles hold them without rest; for longer
// ones the first two planes are there twice.
constexpr int kRows = EIGEN_MAX_ALIGN_BYTES > 16 ? 8 : 6;
typedef Matrix<double, kRows, 3> Normals;
typedef Matrix<double, kRows, 1> Offsets;

Vector3d ToVector(const GPosition& p) {
    return {p.m_x, p.m_y, p.m_z};
}
AlignedBox3d ToBox(const GBox& box) {
    return {ToVector(box.m_low), ToVector(box.m_high)};
}
// For columns.
Matrix4d ToMatrix(const G4x4& g) {
    return Map<const Matrix4d>(g.m_matrix);
}
Affine3d ToTransform(const GTransf& t) {
    return Affine3d(ToMatrix(MatrixOf(t)));
}

void TellVector(Answers& answers, const Vector3d& v) {
    answers.insert(answers.end(), v.begin(), v.end());
}
void TellBox(Answers& answers, const AlignedBox3d& box) {
    TellVector(answers, box.min());
    TellVector(answers, box.max());
}
void TellTest(Answers& answers, unsigned char answer) {
    answers.push_back(answer);
}
void TellMatrix(Answers& answers, const Matrix4d& m) {
    answers.insert(answers.end(), m.data(), m.data() + m.size());
}

struct Planes {
    Normals normals;
    Offsets offsets;

    explicit Planes(const GClipVolume& volume) {
        for (int k = 0; k < kRows; ++k) {
            const auto& plane = volume.m_planes[k % 6];
            normals.row(k) << plane[0], plane[1], plane[2];
            offsets(k) = plane[3];
        }
    }
};

Task MapPointsTask(const Model& model, const G4x4& map) {
    const Matrix4d m = ToMatrix(map);
    return ArrayTask<Vector3d>(
        Converted(model.points, ToVector), model.points.size(),
        [m](const std::vector<Vector3d>& in, std::vector<Vector3d>& out) {
            const Matrix3d linear = m.topLeftCorner<3, 3>();
            const Vector3d translation = m.topRightCorner<3, 1>();
            const auto count = static_cast<Index>(in.size());
            const Map<const Matrix3Xd> points(in.data()->data(), 3, count);
            Map<Matrix3Xd> images(out.data()->data(), 3, count);
            images = linear.lazyProduct(points).colwise() + translation;
        },
        TellVector);
}

Task ProjectPointsTask(const Model& model) {
    return EachTask<Vector3d>(
        Converted(model.points, ToVector),
        [m = ToMatrix(model.projective)](const Vector3d& p) -> Vector3d {
            const Vector4d h = m.col(0) * p(0) + m.col(1) * p(1) + m.col(2) * p(2) + m.col(3);
            return h.head<3>() * (1 / h(3));
        },
        TellVector);
}

Task BoxOfPointsTask(const Model& model) {
    return ArrayTask<AlignedBox3d>(
        Converted(model.points, ToVector), 1,
        [](const std::vector<Vector3d>& in, std::vector<AlignedBox3d>& out) {
            AlignedBox3d box;
            for (const Vector3d& p : in) {
                box.extend(p);
            }
            out[0] = box;
        },
        TellBox);
}

// The slab method.
Task BoreLineTask(const Model& model) {
    const GBoreLine& line = model.line;
    const Array3d origin = ToVector(line.m_point);
    const GUnitVector& d = line.m_direction;
    const Array3d reciprocal = 1 / Array3d(d.m_x, d.m_y, d.m_z);
    const Array3d low_origin = origin + line.m_radius;
    const Array3d high_origin = origin - line.m_radius;
    return EachTask<unsigned char>(
        Converted(model.boxes, ToBox),
        [=, front = line.m_front, back = line.m_back](const AlignedBox3d& box) {
            const Array3d t0 = (box.min().array() - low_origin) * reciprocal;
            const Array3d t1 = (box.max().array() - high_origin) * reciprocal;
            const double enter = t0.min(t1).maxCoeff();
            const double leave = t0.max(t1).minCoeff();
            return (enter <= leave) & (enter <= front) & (leave >= back);
        },
        TellTest);
}

// The corner furthest along each normal, all planes at once.
Task ClipVolumeTask(const Model& model) {
    const Planes planes(model.volume);
    return EachTask<unsigned char>(
        Converted(model.boxes, ToBox),
        [p = Normals(planes.normals.cwiseMax(0.0)), n = Normals(planes.normals.cwiseMin(0.0)),
         d = planes.offsets](const AlignedBox3d& box) {
            const Vector3d& l = box.min();
            const Vector3d& h = box.max();
            const Offsets distances = p.col(0) * h(0) + p.col(1) * h(1) + p.col(2) * h(2) +
                                      n.col(0) * l(0) + n.col(1) * l(1) + n.col(2) * l(2) + d;
            return distances.minCoeff() >= 0;
        },
        TellTest);
}

// By centre and extent, as AlignedBox::transform, but with the magnitudes found once.
Task MapBoxesTask(const Model& model, const G4x4& map) {
    const Matrix4d m = ToMatrix(map);
    const Matrix3d linear = m.topLeftCorner<3, 3>();
    const Matrix3d magnitudes = linear.cwiseAbs();
    const Vector3d translation = m.topRightCorner<3, 1>();
    return EachTask<AlignedBox3d>(
        Converted(model.boxes, ToBox),
        [=](const AlignedBox3d& box) {
            const Vector3d centre = linear * box.center() + translation;
            const Vector3d half = magnitudes * (box.sizes() * 0.5);
            return AlignedBox3d(centre - half, centre + half);
        },
        TellBox);
}

Task PointsInFenceTask(const Model& model) {
    return EachTask<unsigned char>(
        Converted(model.points, ToVector),
        [planes = Planes(model.volume)](const Vector3d& p) {
            return (planes.normals.lazyProduct(p) + planes.offsets).minCoeff() >= 0;
        },
        TellTest);
}

// Second times first: columns are multiplied from the left.
Task ComposeTask(const Model& model) {
    const auto convert = [](const GTransf& t) { return ToMatrix(MatrixOf(t)); };
    return PairsTask<Matrix4d>(
        Converted(model.first, convert), Converted(model.second, convert),
        [](const Matrix4d& a, const Matrix4d& b, Matrix4d& result) { result.noalias() = b * a; },
        TellMatrix);
}

Task Prepare(Work work, const Model& model) {
    switch (work) {
        case Work::kMapPointsByTransf:
            return MapPointsTask(model, MatrixOf(model.transf));
        case Work::kMapPointsByAffine:
            return MapPointsTask(model, model.affine);
        case Work::kMapPointsByProjective:
            return ProjectPointsTask(model);
        case Work::kBoxOfPoints:
            return BoxOfPointsTask(model);
        case Work::kBoreLineAgainstBoxes:
            return BoreLineTask(model);
        case Work::kClipVolumeAgainstBoxes:
            return ClipVolumeTask(model);
        case Work::kMapBoxesByTransf:
            return MapBoxesTask(model, MatrixOf(model.transf));
        case Work::kMapBoxesByAffine:
            return MapBoxesTask(model, model.affine);
        case Work::kPointsInFence:
            return PointsInFenceTask(model);
        case Work::kComposeTransfs:
            return ComposeTask(model);
        case Work::kInvertMatrices:
            return EachTask<Matrix4d>(
                Converted(model.matrices, ToMatrix),
                [](const Matrix4d& m) -> Matrix4d { return m.inverse(); }, TellMatrix);
    }
    return {};
}

Task PrepareTransform(Work work, const Model& model) {
    if (work != Work::kComposeTransfs) {
        return {};
    }
    return PairsTask<Affine3d>(
        Converted(model.first, ToTransform), Converted(model.second, ToTransform),
        [](const Affine3d& a, const Affine3d& b, Affine3d& result) { result = b * a; },
        [](Answers& answers, const Affine3d& t) { TellMatrix(answers, t.matrix()); });
}

constexpr const char* kVersion = EIGEN_MAKESTRING(EIGEN_WORLD_VERSION) "." EIGEN_MAKESTRING(
    EIGEN_MAJOR_VERSION) "." EIGEN_MAKESTRING(EIGEN_MINOR_VERSION);

}  // namespace

Rival EigenRival() {
    return {"eigen", kVersion, Prepare};
}
Rival EigenTransformRival() {
    return {"eigen_transform", kVersion, PrepareTransform};
}

}  // namespace bench::BENCH_BUILD
