// SPDX-License-Identifier: MIT
#pragma once

// The mathematics that the library rounds, in quadruple precision (113 bits, where a double has
// 53).

#include "tests/support/records.h"

namespace kvgeom::test {

__extension__ typedef __float128 Quad;
// Of libquadmath, whose header not every compiler finds.
extern "C" {
Quad sqrtq(Quad x);
Quad sinq(Quad x);
Quad cosq(Quad x);
Quad atan2q(Quad y, Quad x);
}

inline Quad Magnitude(Quad x) {
    return x < 0 ? -x : x;
}

/// A number, and its weight: what an error of 1 relative to each term makes at most of the result
/// (the sum of the magnitudes of the terms, divided by what they are divided by). When each input
/// meets at most k roundings on its way into a result, to first order the error of the result is at
/// most k * 2^-53 * weight.
struct Real {
    Quad value = 0;
    Quad weight = 0;

    Real() = default;
    Real(double x) : value(Quad(x)), weight(Magnitude(value)) {}
    Real(Quad v, Quad w) : value(v), weight(w) {}

    friend Real operator+(const Real& a, const Real& b) {
        return {a.value + b.value, a.weight + b.weight};
    }
    friend Real operator-(const Real& a) { return {-a.value, a.weight}; }
    friend Real operator-(const Real& a, const Real& b) { return a + -b; }
    friend Real operator*(const Real& a, const Real& b) {
        return {a.value * b.value, a.weight * b.weight};
    }
    friend Real operator/(const Real& a, const Real& b) {
        return {a.value / b.value, a.weight * b.weight / (b.value * b.value)};
    }
};

inline Real Abs(const Real& a) {
    return {Magnitude(a.value), a.weight};
}
/// An error of either may come out.
inline Real Max(const Real& a, const Real& b) {
    return {std::max(a.value, b.value), std::max(a.weight, b.weight)};
}
inline Real Min(const Real& a, const Real& b) {
    return -Max(-a, -b);
}
inline Real Sqrt(const Real& a) {
    const Quad root = sqrtq(a.value);
    return {root, a.weight / root};
}
inline Real Sin(double angle) {
    const Quad sine = sinq(Quad(angle));
    return {sine, Magnitude(sine)};
}
inline Real Cos(double angle) {
    const Quad cosine = cosq(Quad(angle));
    return {cosine, Magnitude(cosine)};
}
inline Real Atan2(const Real& y, const Real& x) {
    const Quad angle = atan2q(y.value, x.value);
    const Quad turn = Magnitude(x.value) * y.weight + Magnitude(y.value) * x.weight;
    return {angle, Magnitude(angle) + turn / (x.value * x.value + y.value * y.value)};
}

template <std::size_t n>
using Vec = std::array<Real, n>;
template <std::size_t n>
using Mat = std::array<Vec<n>, n>;  // rows

template <std::size_t n>
Vec<n> operator+(Vec<n> a, const Vec<n>& b) {
    for (std::size_t i = 0; i < n; ++i) {
        a[i] = a[i] + b[i];
    }
    return a;
}
template <std::size_t n>
Vec<n> operator*(Vec<n> a, const Real& factor) {
    for (Real& x : a) {
        x = x * factor;
    }
    return a;
}
template <std::size_t n>
Vec<n> operator-(const Vec<n>& a, const Vec<n>& b) {
    return a + b * -1;
}
template <std::size_t n>
Real Dot(const Vec<n>& a, const Vec<n>& b) {
    Real sum;
    for (std::size_t i = 0; i < n; ++i) {
        sum = sum + a[i] * b[i];
    }
    return sum;
}
inline Vec<3> Cross(const Vec<3>& a, const Vec<3>& b) {
    return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}
inline Vec<1> Cross(const Vec<2>& a, const Vec<2>& b) {
    return {a[0] * b[1] - a[1] * b[0]};
}
/// No longer an error than those of the components together.
template <std::size_t n>
Real Length(const Vec<n>& a) {
    Quad value = 0;
    Quad weight = 0;
    for (const Real& x : a) {
        value += x.value * x.value;
        weight += x.weight * x.weight;
    }
    return {sqrtq(value), sqrtq(weight)};
}
/// The unit vector; what has unit length within the library's band of 50 DBL_EPSILON is one. At the
/// edge of the band rounding decides, over 50 units.
template <std::size_t n>
Vec<n> Unit(Vec<n> a) {
    const Real length = Length(a);
    const Quad beyond = Magnitude(length.value * length.value - 1) - 50 * Quad(0x1p-52);
    const bool is_edge = Magnitude(beyond) < Quad(0x1p-50) * length.weight * length.weight;
    for (Real& x : a) {
        if (beyond >= 0) {
            const Quad by_length = Magnitude(x.value) * length.weight / length.value;
            x = {x.value / length.value, std::max(x.weight, by_length) / length.value};
        }
        x.weight += is_edge ? 50 * Magnitude(x.value) : Quad(0);
    }
    return a;
}
template <std::size_t n>
Vec<n> Axis(std::size_t i) {
    Vec<n> axis;
    axis[i] = 1;
    return axis;
}

template <std::size_t n>
Mat<n> Transpose(const Mat<n>& m) {
    Mat<n> result;
    for (std::size_t i = 0; i < n * n; ++i) {
        result[i % n][i / n] = m[i / n][i % n];
    }
    return result;
}
/// The row form.
template <std::size_t n>
Vec<n> operator*(const Vec<n>& v, const Mat<n>& m) {
    Vec<n> result;
    for (std::size_t j = 0; j < n; ++j) {
        result[j] = Dot(v, Transpose(m)[j]);
    }
    return result;
}
/// What takes vectors to vectors, for each row.
template <std::size_t n, class Map>
Mat<n> ForRows(Mat<n> m, Map map) {
    for (Vec<n>& row : m) {
        row = map(row);
    }
    return m;
}
template <std::size_t n>
Mat<n> operator*(const Mat<n>& a, const Mat<n>& b) {
    return ForRows(a, [&](const Vec<n>& row) { return row * b; });
}
template <std::size_t n>
Mat<n> Identity() {
    Mat<n> result;
    for (std::size_t i = 0; i < n; ++i) {
        result[i] = Axis<n>(i);
    }
    return result;
}
/// By expansion along the first row.
template <std::size_t n>
Real Determinant(const Mat<n>& m);
template <std::size_t n>
Real Cofactor(const Mat<n>& m, std::size_t i, std::size_t j) {
    Mat<n - 1> minor;
    for (std::size_t k = 0; k < (n - 1) * (n - 1); ++k) {
        const std::size_t row = k / (n - 1);
        const std::size_t column = k % (n - 1);
        minor[row][column] = m[row + (row >= i ? 1 : 0)][column + (column >= j ? 1 : 0)];
    }
    const Real determinant = Determinant(minor);
    return (i + j) % 2 == 0 ? determinant : -determinant;
}
template <std::size_t n>
Real Determinant(const Mat<n>& m) {
    if constexpr (n == 1) {
        return m[0][0];
    } else {
        Real sum;
        for (std::size_t j = 0; j < n; ++j) {
            sum = sum + m[0][j] * Cofactor(m, 0, j);
        }
        return sum;
    }
}

/// p -> scaling * (p * matrix) + translation.
template <std::size_t n>
struct Similarity {
    Mat<n> matrix;
    Vec<n> translation;
    Real scaling;
};
template <std::size_t n>
Vec<n> operator*(const Vec<n>& p, const Similarity<n>& t) {
    return p * t.matrix * t.scaling + t.translation;
}
/// With the transpose for the inverse matrix.
template <std::size_t n>
Similarity<n> Inverse(const Similarity<n>& t) {
    const Mat<n> back = Transpose(t.matrix);
    const Real scaling = Real(1) / t.scaling;
    return {back, t.translation * back * -scaling, scaling};
}

/// (v, weight) times a.
inline Vec<4> Homogeneous(const Vec<3>& v, double weight, const Mat<4>& a) {
    return Vec<4>{v[0], v[1], v[2], weight} * a;
}
inline Vec<3> Head(const Vec<4>& v) {
    return {v[0], v[1], v[2]};
}
/// The image of a point; of a vector, which has the weight of the point; of a direction.
inline Vec<3> Projected(const Vec<3>& p, const Mat<4>& a) {
    const Vec<4> image = Homogeneous(p, 1, a);
    return Head(image) * (Real(1) / image[3]);
}
inline Vec<3> ProjectedVector(const Vec<3>& v, const Mat<4>& a) {
    return Head(Homogeneous(v, 0, a)) * (Real(1) / Homogeneous(v, 1, a)[3]);
}
inline Vec<3> Directed(const Vec<3>& u, const Mat<4>& a) {
    return Unit(Head(Homogeneous(u, 0, a)) * (Homogeneous(u, 1, a)[3].value < 0 ? -1 : 1));
}

/// A linear map and a translation as one matrix.
template <std::size_t n>
Mat<4> Affine(const Mat<n>& m, const Vec<n>& translation) {
    Mat<4> result = Identity<4>();
    for (std::size_t i = 0; i < n; ++i) {
        for (std::size_t j = 0; j < n; ++j) {
            result[i][j] = m[i][j];
        }
        result[3][i] = translation[i];
    }
    return result;
}

/// What an affine matrix that scales alike in all directions converts to.
inline Similarity<3> Converted(const Mat<4>& a) {
    const Mat<4> m = ForRows(a, [&](const Vec<4>& row) { return row * (Real(1) / a[3][3]); });
    Mat<3> columns;
    Real sum;
    for (std::size_t j = 0; j < 3; ++j) {
        const Vec<3> column = {m[0][j], m[1][j], m[2][j]};
        const Real length = Length(column);
        columns[j] = column * (Real(1) / length);
        sum = sum + length;
    }
    return {Transpose(columns), Head(m[3]), sum * (Real(1) / 3)};
}

/// The axis along which u is smallest, without its part along u.
inline Vec<3> Perpendicular(const Vec<3>& u) {
    std::size_t k = 0;
    for (const std::size_t i : {1U, 2U}) {
        k = Magnitude(u[i].value) < Magnitude(u[k].value) ? i : k;
    }
    return Unit(Axis<3>(k) - u * u[k]);
}

/// The axes of a coordinate system: x, the direction of y's part across x, and what is across both.
inline Mat<3> CoordinateAxes(const Vec<3>& x, const Vec<3>& y) {
    const Vec<3> across = Unit(y - x * Dot(x, y));
    return {x, across, Unit(Cross(x, across))};
}

/// A record's numbers as they are.
template <class Record>
auto Exact(const Record& record) {
    Vec<sizeof(Record) / sizeof(double)> result;
    const std::vector<double> numbers = Numbers(record);
    std::copy(numbers.begin(), numbers.end(), result.begin());
    return result;
}
/// The point nearest to p.
inline GPosition Rounded(const Vec<3>& p) {
    const auto number = [&](std::size_t i) { return static_cast<double>(p[i].value); };
    return {number(0), number(1), number(2)};
}
template <std::size_t n>
Mat<n> ExactRows(const double* elements) {
    Mat<n> result;
    for (std::size_t i = 0; i < n * n; ++i) {
        result[i / n][i % n] = elements[i];
    }
    return result;
}
inline Mat<3> Exact(const GMatrix& m) {
    return ExactRows<3>(m.m_elements[0]);
}
inline Mat<2> Exact(const GMatrix2d& m) {
    return ExactRows<2>(m.m_elements[0]);
}
inline Mat<4> Exact(const G4x4& a) {
    return ExactRows<4>(a.m_matrix);
}
template <class Transf>
auto ExactMap(const Transf& t) {
    return Similarity<sizeof t.m_translation / sizeof(double)>{Exact(t.m_matrix),
                                                               Exact(t.m_translation), t.m_scaling};
}
inline Similarity<3> Exact(const GTransf& t) {
    return ExactMap(t);
}
inline Similarity<2> Exact(const GTransf2d& t) {
    return ExactMap(t);
}

}  // namespace kvgeom::test
