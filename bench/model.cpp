// SPDX-License-Identifier: MIT
#include "model.h"

#include <kvgeom/kvgeom.h>

#include <algorithm>
#include <cmath>
#include <random>

namespace bench {
namespace {

constexpr double kPlant = 100;
constexpr std::size_t kMostMaps = 1'000'000;

class Random {
  public:
    explicit Random(unsigned seed) : m_engine(seed) {}
    // The same on every platform, unlike the distributions of the standard library.
    double Between(double low, double high) {
        return low + static_cast<double>(m_engine() >> 11U) * 0x1p-53 * (high - low);
    }
    GPosition Point() {
        const double h = kPlant / 2;
        const double x = Between(-h, h);
        const double y = Between(-h, h);
        return {x, y, Between(-h, h)};
    }
    // Small parts are more frequent than large ones.
    double Size() { return 0.1 * std::pow(50.0, Between(0, 1)); }
    GBox Box() {
        const GPosition low = Point();
        const double x = Size();
        const double y = Size();
        return {low, low + GVector{x, y, Size()}};
    }
    GTransf Transf() {
        const double kind = Between(0, 8);
        const GPosition axis = Point();
        const double angle = Between(-3, 3);
        GTransf t = {{{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}}, {}, Between(0.5, 2), 0, 0, 0};
        t.m_translation = Point() - GPosition{};
        if (kind >= 1) {
            t.m_matrix = Rotation(std::cos(angle), std::sin(angle),
                                  BuildUnitVector(axis.m_x, axis.m_y, axis.m_z));
            t.m_hasRotation = 1;
        }
        if (kind >= 7) {
            for (auto& row : t.m_matrix.m_elements) {
                row[0] = -row[0];
            }
            t.m_hasReflection = 1;
        }
        return t;
    }
    G4x4 Matrix() {
        G4x4 result = MatrixOf(Transf());
        for (double& element : result.m_matrix) {
            element += Between(-0.2, 0.2);
        }
        return result;
    }

  private:
    std::mt19937_64 m_engine;
};

template <class Make>
auto Many(std::size_t count, Make make) {
    std::vector<decltype(make())> result(count);
    std::generate(result.begin(), result.end(), make);
    return result;
}

GVector Row(const GMatrix& m, int i) {
    return {m.m_elements[i][0], m.m_elements[i][1], m.m_elements[i][2]};
}

GClipVolume VolumeOf(const Room& room) {
    GPosition points[6];
    GUnitVector normals[6];
    for (int k = 0; k < 6; ++k) {
        const double sign = k < 3 ? 1 : -1;
        const GVector inward = sign * Row(room.axes, k % 3);
        points[k] = room.centre - room.half[k % 3] * inward;
        normals[k] = BuildUnitVector(inward.m_x, inward.m_y, inward.m_z);
    }
    return BuildClipVolume(6, points, normals);
}

}  // namespace

G4x4 MatrixOf(const GTransf& transf) {
    G4x4 result;
    result = transf;
    return result;
}

Model BuildModel(std::size_t count) {
    const std::size_t maps = std::min(count, kMostMaps);
    Model model = {};
    // A generator each: the first records of a large model are those of a small one.
    model.points = Many(count, [random = Random(1)]() mutable { return random.Point(); });
    model.boxes = Many(count, [random = Random(2)]() mutable { return random.Box(); });
    model.first = Many(maps, [random = Random(3)]() mutable { return random.Transf(); });
    model.second = Many(maps, [random = Random(4)]() mutable { return random.Transf(); });
    model.matrices = Many(maps, [random = Random(5)]() mutable { return random.Matrix(); });
    const GMatrix turn = Rotation(std::cos(0.7), std::sin(0.7), BuildUnitVector(1, 2, 3));
    model.transf = {turn, {12, -7, 3}, 1.25, 1, 0, 0};
    model.affine = {{0.9, 0.1, -0.2, 0, 0.3, 1.1, 0.15, 0, -0.1, 0.25, 0.7, 0, 5, -3, 2, 1}};
    model.projective = model.affine;
    const double weights[4] = {0.001, 0.002, -0.0015, 1.5};
    for (int i = 0; i < 4; ++i) {
        model.projective.m_matrix[4 * i + 3] = weights[i];
    }
    model.line = {{2, -3, 1}, BuildUnitVector(0.9, 0.35, 0.2), 90, -90, 0.2};
    model.room = {{5, -4, 6}, turn, {30, 24, 15}};
    model.volume = VolumeOf(model.room);
    return model;
}

Model Sorted(const Model& model) {
    Model result = model;
    std::sort(result.points.begin(), result.points.end(),
              [](const GPosition& a, const GPosition& b) { return a.m_x < b.m_x; });
    std::sort(result.boxes.begin(), result.boxes.end(),
              [](const GBox& a, const GBox& b) { return a.m_low.m_x < b.m_low.m_x; });
    return result;
}

}  // namespace bench
