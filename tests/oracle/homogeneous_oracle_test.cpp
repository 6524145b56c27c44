// SPDX-License-Identifier: MIT

// Homogeneous matrices, their conversions, and the angles of rotations.

#include "tests/oracle/dimensions.h"

namespace kvgeom::test {
namespace {

// The angles about x, y and z, of the two solutions the one with the smaller sum.
struct Angles {
    Vec<3> angles;
    Quad lead;  // by how much the sum is smaller
};
Angles RotationAngles(const Mat<3>& m) {
    const Real cos_b = Length(Vec<2>{m[0][0], m[0][1]});
    const auto solution = [&](double sign) {
        return Vec<3>{Atan2(m[1][2] * sign, m[2][2] * sign), Atan2(-m[0][2], cos_b * sign),
                      Atan2(m[0][1] * sign, m[0][0] * sign)};
    };
    const auto sum = [](const Vec<3>& angles) {
        return (Abs(angles[0]) + Abs(angles[1]) + Abs(angles[2])).value;
    };
    const Vec<3> first = solution(1);
    const Vec<3> second = solution(-1);
    const Quad lead = sum(second) - sum(first);
    return {lead > 0 ? first : second, Magnitude(lead)};
}
double Turns(const Vec<3>& angles) {
    const auto beyond = [](const Real& angle) {
        return -Below(Abs(angle), GetRelativeTolerance());
    };
    return Or({beyond(angles[0]), beyond(angles[1]), beyond(angles[2])});
}
// The length of (cos c, sin c) cos b, and the angle.
constexpr double AnglesBound(double elements) {
    return LengthBound(2, elements) + kElementary;
}

TEST(Space, RotationAngles) {
    Random random(26);
    for (int k = 0; k < kCases; ++k) {
        const GTransf t = random.Similarity();
        const Angles expected = RotationAngles(Exact(t.m_matrix));
        GPosition origin;
        GVector got;
        GetRotAngles(t, &got.m_x, &got.m_y, &got.m_z, origin);
        if (expected.lead > Quad(1e-12)) {
            Near("GetRotAngles", AnglesBound(0), expected.angles, got);
        }
        // Turned back, but for an angle beside the tolerance.
        const double angle = Beside(random, GetRelativeTolerance());
        const GTransf turn = {random.RotationMatrix(), {0, 0, 0}, 1, 1, 0, 0};
        const GTransf back = {
            turn.m_matrix.Transpose() * Rotation(angle, kX), {0, 0, 0}, 1, 1, 0, 0};
        Agree("composition: rotation flag", AnglesBound(DotBound(3)),
              Turns(RotationAngles(Exact(turn.m_matrix) * Exact(back.m_matrix)).angles),
              (turn * back).m_hasRotation);
        G4x4 a;
        a = {Rotation(angle, k % 2 == 0 ? kY : kZ), {1, 2, 3}, 2.5, 0, 0, 0};
        Agree("G4x4 HasRotation", AnglesBound(LengthBound(3) + 1),
              Turns(RotationAngles(Converted(Exact(a)).matrix).angles), a.HasRotation());
    }
}

// |L| |U| of the triangular factors that elimination with full pivoting finds, in the order of a's
// rows and columns.
Mat<4> FactorMagnitudes(Mat<4> a) {
    Mat<4> product;
    std::vector<std::size_t> rows = {0, 1, 2, 3};
    std::vector<std::size_t> columns = rows;
    while (!rows.empty()) {
        std::size_t row = rows[0];
        std::size_t column = columns[0];
        for (const std::size_t i : rows) {
            for (const std::size_t j : columns) {
                if (Magnitude(a[i][j].value) > Magnitude(a[row][column].value)) {
                    row = i;
                    column = j;
                }
            }
        }
        const Vec<4> pivots = a[row];
        for (const std::size_t i : rows) {
            const Real factor = a[i][column] / pivots[column];
            for (const std::size_t j : columns) {
                const Real term = factor * pivots[j];
                const Quad size = Magnitude(term.value);
                product[i][j] = product[i][j] + Real(size, size);
                a[i][j] = a[i][j] - term;
            }
        }
        std::erase(rows, row);
        std::erase(columns, column);
    }
    return product;
}

TEST(Space, HomogeneousMatrices) {
    Random random(27);
    for (int k = 0; k < kCases; ++k) {
        const G4x4 a = Any<G4x4>(random, -3, 6);
        const G4x4 b = Any<G4x4>(random, -3, 6);
        const GTransf t = random.Similarity();
        const Similarity<3> map = Exact(t);
        const Mat<4> of_t =
            Affine(ForRows(map.matrix, [&](const Vec<3>& row) { return row * map.scaling; }),
                   map.translation);
        G4x4 from_t;
        from_t = t;
        Near("G4x4 = GTransf", 1, of_t, from_t);
        // b first, and points are rows.
        Near("G4x4 * G4x4", DotBound(4), Exact(b) * Exact(a), a * b, Mapped(a, b));
        Near("G4x4 * GTransf", DotBound(4, 1), of_t * Exact(a), a * t, Mapped(a, t));
        Near("GTransf * G4x4", DotBound(4, 1), Exact(b) * of_t, t * b);

        // Gauss-Jordan elimination (Higham, Accuracy and Stability, theorem 14.5) errs by 2 n times
        // (|A^-1| |L| |U| + 3 |U^-1| |U|) |A^-1| at most, and U^-1 = A^-1 L.
        const Mat<4> m = Exact(a);
        const Real determinant = Determinant(m);
        Mat<4> inverse;
        for (std::size_t i = 0; i < 16; ++i) {
            inverse[i % 4][i / 4] = Cofactor(m, i / 4, i % 4) / determinant;
            inverse[i % 4][i / 4].weight = Magnitude(inverse[i % 4][i / 4].value);
        }
        const Mat<4> condition = inverse * FactorMagnitudes(m) * inverse;
        for (std::size_t i = 0; i < 16; ++i) {
            inverse[i / 4][i % 4].weight = condition[i / 4][i % 4].weight;
        }
        Near("G4x4 Inverse", 2 * 4 * (1 + 3), inverse, a.Inverse());
    }
}

TEST(Space, HomogeneousPredicates) {
    Random random(28);
    for (int k = 0; k < kCases; ++k) {
        // Two of six terms of three factors each, five additions; the weight.
        constexpr double kDeterminant = 7;
        G4x4 a = Any<G4x4>(random, -3, 6);
        const auto block = [&] {
            const Mat<4> m = Exact(a);
            return Mat<3>{Head(m[0]), Head(m[1]), Head(m[2])};
        };
        const double tolerance = k % 2 == 0 ? GetRelativeTolerance() : GetDistanceTolerance();
        G4x4 nudged = Nudged(random, a, tolerance * a.m_matrix[15]);
        for (double& x : nudged.m_matrix) {
            x *= 3;
        }
        double margin = kInf;
        for (std::size_t i = 0; i < 15; ++i) {
            const Mat<4> p = Exact(a);
            const Mat<4> q = Exact(nudged);
            const Real difference = p[i / 4][i % 4] / p[3][3] - q[i / 4][i % 4] / q[3][3];
            margin = And({margin, Below(Abs(difference),
                                        i < 12 ? GetRelativeTolerance() : GetDistanceTolerance())});
        }
        Agree("G4x4 IsEqual", 3, margin, a.IsEqual(nudged));

        // The last row beside what makes it depend on the others.
        for (int j = 0; j < 3; ++j) {
            a.m_matrix[8 + j] = Beside(random, a.m_matrix[j] - a.m_matrix[4 + j]);
        }
        const double singular = Below(Determinant(block()), 0);
        Agree("G4x4 HasReflection", kDeterminant, singular, a.HasReflection());
        const Real limit = Real(1e-10) * 1e-10 * 1e-10;
        const Real determinant = Determinant(block());
        if (determinant.value == 0) {
            continue;
        }
        a.m_matrix[15] = Beside(random, static_cast<double>((limit / determinant).value));
        const Real invertible = determinant * a.m_matrix[15];
        Agree("G4x4 IsInvertible", kDeterminant + 1, -Below(Abs(invertible), limit),
              a.IsInvertible());
    }
}

TEST(Space, Conversions) {
    Random random(29);
    for (int k = 0; k < kCases; ++k) {
        G4x4 a;
        a = random.Similarity();
        const double weight = random.Uniform(2, 5);
        for (double& x : a.m_matrix) {
            x *= weight;
        }
        const Similarity<3> expected = Converted(Exact(a));
        GTransf got;
        GTransf assigned;
        EXPECT_EQ(ConvertG4x4ToGTransf(a, got), 0);
        assigned = a;
        Near("G4x4 to GTransf: matrix", kConvertedMatrix, expected.matrix, got.m_matrix,
             assigned.m_matrix);
        Near("G4x4 to GTransf: scaling", kConvertedScaling, expected.scaling, got.m_scaling);
        Near("G4x4 to GTransf: translation", kByWeight, expected.translation, got.m_translation);
        const Angles angles = RotationAngles(expected.matrix);
        GVector turn;
        GetRotationAngles(a, &turn.m_x, &turn.m_y, &turn.m_z);
        if (angles.lead > Quad(1e-12)) {
            Near("GetRotationAngles", AnglesBound(kConvertedMatrix), angles.angles, turn);
        }
        G4x4 flat;
        GTransf spatial;
        spatial.Convert3d(Planar::Similarity(random));
        flat = spatial;
        const Similarity<3> plan = Converted(Exact(flat));
        GTransf2d planar;
        EXPECT_EQ(ConvertG4x4ToGTransf2d(flat, planar), 0);
        const auto& rows = plan.matrix;
        Near("G4x4 to GTransf2d: matrix", LengthBound(3) + 1,
             Mat<2>{Vec<2>{rows[0][0], rows[0][1]}, Vec<2>{rows[1][0], rows[1][1]}},
             planar.m_matrix);
        // The mean of the two columns of the plane.
        const auto column = [&](std::size_t j) { return Length(Head(Transpose(Exact(flat))[j])); };
        Near("G4x4 to GTransf2d: scaling", LengthBound(3) + 2, (column(0) + column(1)) * 0.5,
             planar.m_scaling);
        // Stretched along one axis, beside what still counts as alike in all directions.
        const std::size_t axis = k % 2 == 0 ? 1 : 2;
        a = random.Similarity();
        const double limit = 10 * GetRelativeTolerance();
        const double length = static_cast<double>(Length(Head(Transpose(Exact(a))[axis])).value);
        for (std::size_t i = axis; i < 12; i += 4) {
            a.m_matrix[i] *= 1 + Beside(random, limit / length);
        }
        const Mat<4> columns = Transpose(Exact(a));
        const Real stretch = Length(Head(columns[axis])) - Length(Head(columns[0]));
        Agree("G4x4 to GTransf: is it a similarity", LengthBound(3) + 1, Below(Abs(stretch), limit),
              ConvertG4x4ToGTransf(a, got) == 0 ? 1 : 0);
    }
}

}  // namespace
}  // namespace kvgeom::test
