// SPDX-License-Identifier: MIT

// Matrices and transformations, and what makes matrices orthogonal.

#include "tests/oracle/dimensions.h"

namespace kvgeom::test {
namespace {

// What M (I - M^T M) / 2 adds to M.
template <std::size_t n>
Mat<n> OrthogonalisationStep(const Mat<n>& m) {
    const Mat<n> product = Transpose(m) * m;
    Mat<n> half_deviation;
    for (std::size_t i = 0; i < n; ++i) {
        half_deviation[i] = (Axis<n>(i) - product[i]) * 0.5;
    }
    Mat<n> result = m * half_deviation;
    for (std::size_t i = 0; i < n; ++i) {
        result[i] = m[i] + result[i];
    }
    return result;
}

template <std::size_t n>
double IsEuclidean(const Mat<n>& m) {
    double margin = kInf;
    for (std::size_t i = 0; i < n; ++i) {
        const Real deviation = Abs(Real(1) - Dot(m[i], m[i]));
        margin = And({margin, Below(deviation, 2 * GetRelativeTolerance())});
        for (std::size_t j = 0; j < i; ++j) {
            margin = And({margin, Below(Abs(Dot(m[i], m[j])), GetRelativeTolerance())});
        }
    }
    return margin;
}

// A row with something of another or of itself, beside the tolerance.
template <class S>
typename S::Matrix Bent(Random& random, typename S::Matrix m) {
    const std::size_t row = random.Below(S::n);
    const std::size_t other = random.Below(S::n);
    const double by = Beside(random, GetRelativeTolerance());
    for (std::size_t j = 0; j < S::n; ++j) {
        m.m_elements[row][j] += m.m_elements[other][j] * by;
    }
    return m;
}

TYPED_TEST(Dimension, Matrices) {
    using S = TypeParam;
    constexpr std::size_t n = S::n;
    Random random(20);
    const double relative = GetRelativeTolerance();
    const auto largest = [](const auto& p, const auto& q) {
        Real difference;
        for (std::size_t i = 0; i < n; ++i) {
            for (std::size_t j = 0; j < n; ++j) {
                difference = Max(difference, Abs(p[i][j] - q[i][j]));
            }
        }
        return difference;
    };
    for (int k = 0; k < kCases; ++k) {
        using Matrix = typename S::Matrix;
        const auto m = Any<Matrix>(random);
        const auto other = Any<Matrix>(random);
        const auto t = S::Similarity(random);
        auto s = S::Similarity(random);
        const auto a = Exact(t);
        const auto b = Exact(s);
        Near("matrix product", DotBound(n), Exact(m) * Exact(other), m * other, Mapped(m, other));
        Near("matrix transpose", 0, Transpose(Exact(m)), m.Transpose());
        Near("matrix determinant", n == 3 ? 7 : 2, Determinant(Exact(m)), GetDeterminant(m));

        const auto product = t * s;
        const auto in_place = Mapped(t, s);
        const auto translation = a.translation * b.matrix * b.scaling + b.translation;
        Near("composition: matrix", DotBound(n), a.matrix * b.matrix, product.m_matrix,
             in_place.m_matrix);
        Near("composition: translation", n + 2, translation, product.m_translation,
             in_place.m_translation);
        Near("composition: scaling", 1, a.scaling * b.scaling, product.m_scaling);
        const auto inverse = t.Inverse();
        Near("inverse: matrix", 0, Inverse(a).matrix, inverse.m_matrix);
        Near("inverse: translation", n + 2, Inverse(a).translation, inverse.m_translation);
        Near("inverse: scaling", 1, Inverse(a).scaling, inverse.m_scaling);

        // Rotations that have drifted by anything from rounding to one percent.
        const Matrix drifted = Nudged(random, t.m_matrix, std::ldexp(1, -7 - k % 45));
        Matrix out;
        long err;
        MakeOrthogonal(k % 2 == 0 ? m : drifted, out, &err);
        // The product, its distance from 1, the product with that, the sum. What is orthogonal to
        // 1e-14 stays as it is.
        const Mat<n> start = Exact(k % 2 == 0 ? m : drifted);
        if (largest(Transpose(start) * start, Identity<n>()).value > Quad(2e-14)) {
            Near("MakeOrthogonal", 2 * n + 2, OrthogonalisationStep(start), out);
        }
        const Matrix beside = Bent<S>(random, t.m_matrix);
        Agree("matrix IsEuclidean", n + 1, IsEuclidean(Exact(beside)), beside.IsEuclidean());
        s = t;
        s.m_matrix = beside;
        s.m_scaling = Beside(random, 0x1p-52);
        Agree("transformation IsInvertible", n + 1,
              And({IsEuclidean(Exact(beside)), Below(0x1p-52, s.m_scaling)}), s.IsInvertible());

        const Matrix nudged = Nudged(random, m, relative);
        Agree("matrix IsEqual", 1, Below(largest(Exact(m), Exact(nudged)), relative),
              m.IsEqual(nudged));
        const Matrix unit = S::Scale(2, {}).m_matrix;
        const Matrix near_unit = Nudged(random, unit, relative);
        Agree("matrix IsIdentity", 1, Below(largest(Exact(near_unit), Identity<n>()), relative),
              near_unit.IsIdentity());
        const Matrix near_null = Nudged(random, Matrix{}, relative);
        Agree("matrix IsNull", 1, Below(largest(Exact(near_null), Mat<n>()), relative),
              near_null.IsNull());
        s = t;
        s.m_matrix = Nudged(random, t.m_matrix, relative);
        s.m_scaling += Beside(random, relative);
        Agree("transformation IsEqual", 1,
              And({Below(Abs(Real(s.m_scaling) - t.m_scaling), relative),
                   Below(largest(Exact(s.m_matrix), a.matrix), relative)}),
              s.IsEqual(t));
    }
}

// The polar factor, to which the steps converge, in quadruple precision.
Mat<3> Orthogonalised(Mat<3> m) {
    for (int step = 0; step < 8; ++step) {
        m = OrthogonalisationStep(m);
        for (Vec<3>& row : m) {
            for (Real& x : row) {
                x.weight = 1;
            }
        }
    }
    return m;
}

TEST(Space, OrthogonalisationToTheEnd) {
    // A step's roundings; and it stops when the columns' products are 1e-14 from the identity:
    // half of that from home, for each of three columns.
    constexpr double kStops = 8 + 3 * 0.5e-14 / 0x1p-53;
    Random random(21);
    for (int k = 0; k < kCases; ++k) {
        GTransf t = random.Similarity();
        t.m_matrix = Nudged(random, t.m_matrix, std::ldexp(1, -7 - k % 45));
        GMatrix out;
        long err;
        MakeOrthogonalIt(t.m_matrix, out, &err);
        GTransf healed;
        int has_healed;
        GTransfHealer(t, healed, &has_healed, &err);
        Near("MakeOrthogonalIt", kStops, Orthogonalised(Exact(t.m_matrix)), out, healed.m_matrix);

        double length_error;
        double dot_error;
        CheckOrthogonal(t.m_matrix, &length_error, &dot_error);
        const Mat<3> m = Exact(t.m_matrix);
        const auto deviation = [&](std::size_t i) { return Abs(Real(1) - Dot(m[i], m[i])); };
        Near("CheckOrthogonal: lengths", DotBound(3) + 1,
             Max(Max(deviation(0), deviation(1)), deviation(2)), length_error);
        Near("CheckOrthogonal: products", DotBound(3),
             Max(Max(Dot(m[0], m[1]), Dot(m[0], m[2])), Dot(m[1], m[2])), dot_error);
    }
}

}  // namespace
}  // namespace kvgeom::test
