// SPDX-License-Identifier: MIT
#include "tests/support/messages.h"
#include "tests/support/records.h"

#include <gtest/gtest.h>

namespace kvgeom::test {
namespace {

constexpr GMatrix kM = {{{2, 3, 5}, {7, 11, 13}, {17, 19, 29}}};

GMatrix Diagonal(double x, double y, double z) {
    return {{{x, 0, 0}, {0, y, 0}, {0, 0, z}}};
}

GMatrix With(GMatrix m, int row, int column, double value) {
    m.m_elements[row][column] = value;
    return m;
}

TEST(Matrix, IsBuiltFromRowsOrColumns) {
    const GVector a = {1, 2, 3};
    const GVector b = {4, 5, 6};
    const GVector c = {7, 8, 9};
    const GMatrix rows = {{{1, 2, 3}, {4, 5, 6}, {7, 8, 9}}};
    const GMatrix columns = {{{1, 4, 7}, {2, 5, 8}, {3, 6, 9}}};
    EXPECT_EQ(Numbers(BuildMatrix(a, b, c, 0)), Numbers(rows));
    for (const int as_columns : {1, -1, 7}) {
        EXPECT_EQ(Numbers(BuildMatrix(a, b, c, as_columns)), Numbers(columns));
    }
    EXPECT_EQ(Numbers(BuildMatrix(kY, kZ, kX, 1)),
              (std::vector<double>{0, 0, 1, 1, 0, 0, 0, 1, 0}));
    EXPECT_EQ(Numbers(rows.Transpose()), Numbers(columns));
}

TEST(Matrix, GivesItsRowsAndTheLastOneBeyond) {
    MessageRecorder recorder;
    EXPECT_EQ(Numbers(kM[1]), Numbers(GVector{7, 11, 13}));
    EXPECT_EQ(recorder.Take(), Messages{});
    EXPECT_EQ(Numbers(kM[3]), Numbers(GVector{17, 19, 29}));
    EXPECT_EQ(recorder.Take(), Messages{"GMatrix: index out of range"});
}

TEST(Matrix, EqualityIsInclusiveInEachElement) {
    for (int i = 0; i < 3; ++i) {
        for (int j = 0; j < 3; ++j) {
            EXPECT_EQ(With({}, i, j, -1e-10).IsNull(), 1);
            EXPECT_EQ(With({}, i, j, Up(1e-10)).IsNull(), 0);
            const double one = i == j ? 1 : 0;
            EXPECT_EQ(With(kIdentity, i, j, one + 0.9e-10).IsIdentity(), 1);
            EXPECT_EQ(With(kIdentity, i, j, one - 1.1e-10).IsIdentity(), 0);
            EXPECT_EQ(kM.IsEqual(With(kM, i, j, 1)), 0);
        }
    }
    EXPECT_EQ(With(kIdentity, 1, 1, kNaN).IsIdentity(), 1) << "nothing shows NaN to differ";
}

TEST(Matrix, EuclideanAllowsTwiceTheToleranceInSquaredLengths) {
    const double tol = 1e-10;
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(With(kIdentity, i, i, std::sqrt(1 + 1.9 * tol)).IsEuclidean(), 1);
        EXPECT_EQ(With(kIdentity, i, i, std::sqrt(1 - 2.1 * tol)).IsEuclidean(), 0);
        EXPECT_EQ(With(kIdentity, i, i, kNaN).IsEuclidean(), 0);
        const int j = (i + 1) % 3;
        EXPECT_EQ(With(kIdentity, i, j, 0.9 * tol).IsEuclidean(), 1);
        EXPECT_EQ(With(kIdentity, i, j, -1.1 * tol).IsEuclidean(), 0);
    }
    // Orthonormal rows are what counts, mirrored or not.
    EXPECT_EQ(Diagonal(1, -1, 1).IsEuclidean(), 1);
    EXPECT_EQ(Diagonal(1, 1.1, 1).IsEuclidean(), 0);
}

TEST(Matrix, ProductsAndDeterminant) {
    const GMatrix n = {{{1, 0, 2}, {0, 3, 1}, {4, 1, 0}}};
    const GMatrix product = {{{22, 14, 7}, {59, 46, 25}, {133, 86, 53}}};
    EXPECT_EQ(Numbers(kM * n), Numbers(product));
    GMatrix self = kM;
    self *= self;
    EXPECT_EQ(Numbers(self), Numbers(kM * kM));
    EXPECT_EQ(GetDeterminant(kM), -72);
    EXPECT_EQ(GetDeterminant(kM.Transpose()), -72);
    EXPECT_EQ(GetDeterminant(Diagonal(2, -3, 5)), -30);
}

TEST(Matrix, RotationIsRightHandedForRowVectors) {
    MessageRecorder recorder;
    const GMatrix about_z = Rotation(0.0, 1.0, kZ);
    EXPECT_EQ(Numbers(about_z), (std::vector<double>{0, 1, 0, -1, 0, 0, 0, 0, 1}));
    EXPECT_EQ(Numbers(kY * Rotation(0.0, 1.0, kX)), Numbers(kZ));
    EXPECT_EQ(Numbers(kZ * Rotation(0.0, 1.0, kY)), Numbers(kX));
    EXPECT_LT(Distance(Rotation(kPi / 2, kZ), about_z), 1e-15);
    EXPECT_EQ(recorder.Take(), Messages{});

    const char* const beyond_one = "GMatrix: abs(cosine or sine of angle) > 1.0";
    EXPECT_EQ(Rotation(1.5, 0.0, kZ).m_elements[0][0], 1.5);
    EXPECT_EQ(Rotation(0.0, -Up(1.0), kZ).m_elements[0][1], -Up(1.0));
    Rotation(2.0, 2.0, kZ);
    EXPECT_EQ(recorder.Take(), (Messages{beyond_one, beyond_one, beyond_one}));

    Random random(13);
    for (int i = 0; i < 2000; ++i) {
        const GMatrix r = random.RotationMatrix();
        EXPECT_LT(Distance(r * r.Transpose(), kIdentity), 1e-14);
        EXPECT_NEAR(GetDeterminant(r), 1, 1e-14);
        const double angle = random.Uniform(-kPi, kPi);
        const GUnitVector axis = random.Direction();
        const GVector across = GetPerpVector(axis);
        GVector turned = across;
        turned *= Rotation(angle, axis);
        EXPECT_NEAR((across * turned) % axis, std::sin(angle), 1e-14);
        EXPECT_LT(Distance(axis * Rotation(angle, axis), axis), 1e-14);
    }
}

TEST(Matrix, ReflectionTurnsTheNormalAndKeepsThePlane) {
    EXPECT_EQ(Numbers(Reflection(kX)), Numbers(Diagonal(-1, 1, 1)));
    Random random(14);
    for (int i = 0; i < 1000; ++i) {
        const GUnitVector n = random.Direction();
        const GMatrix m = Reflection(n);
        const GUnitVector in_plane = GetPerpVector(n);
        EXPECT_NEAR(GetDeterminant(m), -1, 1e-14);
        EXPECT_LT(Distance(GVector(n * m), -GVector(n)), 1e-14);
        EXPECT_LT(Distance(in_plane * m, in_plane), 1e-14);
        EXPECT_LT(Distance(m, m.Transpose()), 1e-15);
    }
}

TEST(Matrix, OrthogonalisationStepsTowardsTheNearestRotation) {
    long err = 77;
    GMatrix out;
    const GMatrix nearly = With(kIdentity, 0, 1, 0.9e-14);
    MakeOrthogonal(nearly, out, &err);
    EXPECT_EQ(Bits(out), Bits(nearly)) << "within the threshold nothing changes";
    EXPECT_EQ(err, 0);
    MakeOrthogonal(With(kIdentity, 0, 1, 1.1e-14), out, &err);
    EXPECT_NE(out.m_elements[0][1], 1.1e-14);
    MakeOrthogonal(Diagonal(1.1, 1, 1), out, &err);
    EXPECT_LT(Distance(out, Diagonal(0.9845, 1, 1)), 1e-14);
    MakeOrthogonal(Diagonal(10, 1, 1), out, &err);
    EXPECT_EQ(Numbers(out), Numbers(Diagonal(-485, 1, 1)));

    MakeOrthogonalIt(Diagonal(1.1, 1, 1), out, &err);
    EXPECT_EQ(err, 0);
    EXPECT_LT(Distance(out, kIdentity), 1e-14);
    for (const GMatrix& hopeless :
         {Diagonal(10, 1, 1), Diagonal(kNaN, 1, 1), Diagonal(0, 0, 0.1)}) {
        err = 77;
        MakeOrthogonalIt(hopeless, out, &err);
        EXPECT_EQ(err, 2);
        EXPECT_EQ(Bits(out), Bits(hopeless));
    }
    Random random(15);
    for (int i = 0; i < 1000; ++i) {
        GMatrix drifted = random.RotationMatrix();
        for (auto& row : drifted.m_elements) {
            for (double& element : row) {
                element += random.Uniform(-0.02, 0.02);
            }
        }
        const GMatrix before = drifted;
        MakeOrthogonal(drifted, out, &err);
        MakeOrthogonal(drifted, drifted, &err);  // in place
        EXPECT_EQ(Bits(drifted), Bits(out));
        MakeOrthogonalIt(drifted, drifted, &err);
        EXPECT_EQ(err, 0);
        EXPECT_EQ(drifted.IsEuclidean(), 1);
        EXPECT_LT(Distance(drifted, before), 0.06);
    }
}

TEST(Matrix, OrthogonalityErrorsAreTheLargestAndSigned) {
    const struct {
        GMatrix m;
        double length_error;
        double dot_error;
    } rows[] = {
        {kIdentity, 0, 0},
        {Diagonal(1, 2, 0), 3, 0},
        {Diagonal(0.5, 1, 1), 0.75, 0},
        {{{{1, 0, 0}, {-0.5, 1, 0}, {0, 0, 1}}}, 0.25, 0},
        {{{{1, 0, 0}, {-0.5, 0, 0}, {-0.25, 0, 0}}}, 0.9375, 0.125},
        {{{{-1, 0, 0}, {1, 0, 0}, {0.5, 0, 0}}}, 0.75, 0.5},
    };
    for (const auto& row : rows) {
        double length_error = 77;
        double dot_error = 77;
        CheckOrthogonal(row.m, &length_error, &dot_error);
        EXPECT_EQ(length_error, row.length_error);
        EXPECT_EQ(dot_error, row.dot_error);
    }
}

}  // namespace
}  // namespace kvgeom::test
