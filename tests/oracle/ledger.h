// SPDX-License-Identifier: MIT
#pragma once

#include "tests/oracle/real.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <map>
#include <string>

namespace kvgeom::test {

/// What an operation's results were checked against, and how near they came to it. Errors and
/// bounds are in units of 2^-53 * weight (real.h).
struct Entry {
    double bound = 0;
    double largest_error = 0;
    double nearest = kInf;    ///< of a decision's cases, to its threshold
    int answers[2] = {0, 0};  ///< of a decision, both of which must have come
    bool IsDecision() const { return answers[0] + answers[1] > 0; }
};

/// The lines of all tests that ran, by the name of test suite and operation.
std::map<std::string, Entry>& Ledger();

inline void Append(std::vector<Real>& list, const Real& x) {
    list.push_back(x);
}
template <class Element, std::size_t n>
void Append(std::vector<Real>& list, const std::array<Element, n>& elements) {
    for (const Element& element : elements) {
        Append(list, element);
    }
}

/// That the numbers of each result are those expected, each to within bound units.
void ExpectNear(const std::string& operation, double bound, const std::vector<Real>& expected,
                const std::vector<double>& got);
template <class Expected, class... Records>
void Near(const std::string& operation, double bound, const Expected& expected,
          const Records&... got) {
    std::vector<Real> numbers;
    Append(numbers, expected);
    (ExpectNear(operation, bound, numbers, Numbers(got)), ...);
}

/// By how many units a is below b: positive if it is, negative if it isn't.
double Below(const Real& a, const Real& b);
/// Whether the vector is no longer than that, decided by the squares.
template <std::size_t n>
double IsLongAtMost(const Vec<n>& v, const Real& length) {
    return Below(Dot(v, v), length * length);
}
inline double And(std::initializer_list<double> margins) {
    return std::min(margins);
}
inline double Or(std::initializer_list<double> margins) {
    return std::max(margins);
}

/// That the answer is the one whose margin is positive, unless that is within bound units.
void Agree(const std::string& operation, double bound, double margin, int answer);

/// Any record of numbers, of different sizes. Here and in the tests, each statement draws one
/// number or a braced list of them, so that all compilers draw the same.
template <class Record>
Record Any(Random& random, int smallest = -8, unsigned int sizes = 17) {
    std::array<double, sizeof(Record) / sizeof(double)> numbers;
    for (double& x : numbers) {
        const int size = smallest + static_cast<int>(random.Below(sizes));
        x = std::ldexp(random.Uniform(-1, 1), size);
    }
    return std::bit_cast<Record>(numbers);
}

/// A number beside x, at any distance from none to as much again.
inline double Beside(Random& random, double x) {
    const int size = -static_cast<int>(random.Below(56));
    return x + x * std::ldexp(random.Uniform(-1, 1), size);
}

/// One number of a record, moved by something beside the tolerance.
template <class Record>
Record Nudged(Random& random, Record record, double tolerance) {
    std::array<double, sizeof(Record) / sizeof(double)> numbers;
    std::memcpy(&numbers, &record, sizeof numbers);
    numbers[random.Below(numbers.size())] += Beside(random, tolerance);
    std::memcpy(&record, &numbers, sizeof numbers);
    return record;
}

/// What the in-place operator makes of a copy.
template <class Record, class Map>
Record Mapped(Record record, const Map& map) {
    return record *= map;
}

inline constexpr int kCases = 4000;

// The roundings on the way of a number into a result, by what it takes part in.
constexpr double kElementary = 2;  ///< sin, cos, atan2 of the C library: an ulp, two units
/// A sum of n products: the product, n - 1 additions; of factors that met a and b roundings.
constexpr double DotBound(double n, double a = 0, double b = 0) {
    return n + a + b;
}
/// A length: half those of the squared length, and the root; of components that met some.
constexpr double LengthBound(double n, double components = 0) {
    return components + n / 2 + 1;
}
/// A unit vector: the length's, its reciprocal, the product. An error of the components counts
/// twice, for the length has it too.
constexpr double UnitBound(double n, double components = 0) {
    return 2 * components + n / 2 + 3;
}
/// A cross product, of factors that met a and b roundings.
constexpr double CrossBound(double a = 0, double b = 0) {
    return 2 + a + b;
}

/// The perpendicular of a unit vector: a product and a difference for each component.
constexpr double kPerpendicular = UnitBound(3, 2);
/// A conversion to a similarity: the elements by the reciprocal weight; with the length of a
/// column, the quotient, or the mean of three.
constexpr double kByWeight = 2;
constexpr double kConvertedMatrix = kByWeight + LengthBound(3, kByWeight) + 1;
constexpr double kConvertedScaling = LengthBound(3, kByWeight) + 3;
/// A point or vector by a homogeneous matrix: numerator and weight, its reciprocal, their product.
constexpr double kProjectedPoint = 2 * DotBound(4) + 2;

}  // namespace kvgeom::test
