// SPDX-License-Identifier: MIT
#pragma once

#include <kvgeom/kvgeom.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <type_traits>
#include <vector>

namespace kvgeom::test {

inline constexpr double kInf = std::numeric_limits<double>::infinity();
inline constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
inline constexpr double kBig = 1e30;
inline constexpr double kPi = 3.14159265358979323846;

inline constexpr GUnitVector kX = {1, 0, 0};
inline constexpr GUnitVector kY = {0, 1, 0};
inline constexpr GUnitVector kZ = {0, 0, 1};
inline constexpr GMatrix kIdentity = {{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}};

/// The next double away from, and towards, zero.
inline double Up(double x) {
    return std::nextafter(x, x < 0 ? -kInf : kInf);
}
inline double Down(double x) {
    return std::nextafter(x, 0.0);
}

/// The numbers that a record consists of, in order; a number is one by itself.
template <class Record>
std::vector<double> Numbers(const Record& record) {
    if constexpr (std::is_arithmetic_v<Record>) {
        return {static_cast<double>(record)};
    }
    constexpr size_t kBytes = sizeof(Record);
    std::vector<double> numbers(kBytes / sizeof(double));
    std::memcpy(numbers.data(), &record, numbers.size() * sizeof(double));
    return numbers;
}

template <class Transformation>
std::vector<double> NumbersAndFlags(const Transformation& t) {
    std::vector<double> numbers = Numbers(t.m_matrix);
    for (const double x : Numbers(t.m_translation)) {
        numbers.push_back(x);
    }
    numbers.push_back(t.m_scaling);
    for (const int flag : {t.m_hasRotation, t.m_hasReflection, t.m_hasShear}) {
        numbers.push_back(flag);
    }
    return numbers;
}
inline std::vector<double> Numbers(const GTransf& t) {
    return NumbersAndFlags(t);
}
inline std::vector<double> Numbers(const GTransf2d& t) {
    return NumbersAndFlags(t);
}

/// The same as bits, so that zeros of both signs differ; all NaN are one.
template <class Record>
std::vector<std::uint64_t> Bits(const Record& record) {
    std::vector<std::uint64_t> bits;
    for (const double x : Numbers(record)) {
        bits.push_back(std::bit_cast<std::uint64_t>(std::isnan(x) ? kNaN : x));
    }
    return bits;
}

/// How many elements, as the library counts them: in 32 bits on Windows.
template <class Elements>
unsigned long Count(const Elements& elements) {
    return static_cast<unsigned long>(elements.size());
}

/// The largest difference between two records' numbers; NaN when there is one.
template <class Record>
double Distance(const Record& a, const Record& b) {
    const std::vector<double> x = Numbers(a);
    const std::vector<double> y = Numbers(b);
    double largest = 0;
    for (size_t i = 0; i < x.size(); ++i) {
        const double difference = std::fabs(x[i] - y[i]);
        largest = difference > largest || std::isnan(difference) ? difference : largest;
    }
    return largest;
}

/// A seeded generator (SplitMix64) of records; the same numbers on every platform.
class Random {
  public:
    explicit Random(std::uint64_t seed) : m_state(seed) {}

    /// The numbers are the bytes given, as long as there are any, and any double may come.
    Random(const std::uint8_t* bytes, size_t size) : m_state(size), m_bytes(bytes), m_left(size) {}

    std::uint64_t Next() {
        if (m_left >= sizeof(std::uint64_t)) {
            std::uint64_t number;
            std::memcpy(&number, m_bytes, sizeof number);
            m_bytes += sizeof number;
            m_left -= sizeof number;
            return number;
        }
        std::uint64_t z = m_state += 0x9e3779b97f4a7c15U;
        z = (z ^ (z >> 30U)) * 0xbf58476d1ce4e5b9U;
        z = (z ^ (z >> 27U)) * 0x94d049bb133111ebU;
        return z ^ (z >> 31U);
    }

    /// One of 0 ... count - 1.
    unsigned int Below(size_t count) { return static_cast<unsigned int>(Next() % count); }

    double Uniform(double low, double high) {
        return low + (high - low) * (static_cast<double>(Next() >> 11U) * 0x1p-53);
    }

    /// Mostly an ordinary coordinate; every eighth time, if extremes are wanted, one that isn't.
    double Number() {
        if (m_left > 0) {
            return std::bit_cast<double>(Next());
        }
        static constexpr std::array kExtremes = {0.0,    -0.0,     1.0,   -1.0,   1e30,  -1e30,
                                                 1e-300, 4.9e-324, 1e300, -1e300, kInf,  -kInf,
                                                 kNaN,   1e-6,     1e-10, -1e-6,  2e-16, 1e154};
        if (m_extremes && Next() % 8 == 0) {
            return kExtremes[Below(kExtremes.size())];
        }
        return Uniform(-10, 10);
    }
    void WantExtremes(bool wanted) { m_extremes = wanted; }

    template <class Triple>
    Triple Make() {
        const double x = Number();
        const double y = Number();
        const double z = Number();
        return {x, y, z};
    }
    template <class Sextuple>
    Sextuple Make6() {
        const GPosition p = Point();
        const GPosition q = Point();
        return {p, q};
    }
    GPosition Point() { return Make<GPosition>(); }
    GVector Vector() { return Make<GVector>(); }
    GUnitVector Direction() {
        const GVector v = Vector();
        return BuildUnitVector(v.m_x, v.m_y, v.m_z);
    }

    GMatrix Matrix() {
        GMatrix m;
        for (auto& row : m.m_elements) {
            for (double& element : row) {
                element = Number();
            }
        }
        return m;
    }

    GMatrix RotationMatrix() {
        const GUnitVector axis = Direction();
        // A point of the unit circle without angle functions.
        const double h = Uniform(-3, 3);
        return Rotation((1 - h * h) / (1 + h * h), 2 * h / (1 + h * h), axis);
    }

    GTransf Similarity() {
        const GMatrix rotation = RotationMatrix();
        const bool mirrors = Next() % 2 == 0;
        const GMatrix m = mirrors ? rotation * Reflection(Direction()) : rotation;
        const GVector translation = Vector();
        return BuildTransf(m, translation, Uniform(0.1, 4), 1, mirrors ? 1 : 0, 0);
    }

    G4x4 Homogeneous() {
        G4x4 a;
        for (double& element : a.m_matrix) {
            element = Number();
        }
        return a;
    }

    /// An invertible affine map that is no similarity.
    G4x4 Affine() {
        G4x4 a;
        a = Similarity();
        G4x4 stretch = {{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}};
        stretch.m_matrix[0] = Uniform(0.5, 3);
        stretch.m_matrix[4] = Uniform(-0.5, 0.5);
        stretch.m_matrix[10] = Uniform(0.5, 3);
        return a * stretch;
    }

    GBox Box() {
        const GPosition p = Point();
        const GPosition q = Point();
        if (Next() % 4 == 0) {
            return BuildBox(p, q);  // as it comes, reversed mostly
        }
        return BuildBox({std::min(p.m_x, q.m_x), std::min(p.m_y, q.m_y), std::min(p.m_z, q.m_z)},
                        {std::max(p.m_x, q.m_x), std::max(p.m_y, q.m_y), std::max(p.m_z, q.m_z)});
    }

    /// Two points that are no null box.
    GBox ProperBox() {
        GPosition points[2] = {Point(), Point()};
        return BuildBox(2, points);
    }

    GBoreLine BoreLine() {
        const GPosition p = Point();
        const GUnitVector d = Direction();
        const double front = Number();
        const double back = front - Uniform(0, 12);
        const double radius = Uniform(0.01, 1);
        return BuildBoreLine(p, d, front, back, radius);
    }

  private:
    std::uint64_t m_state;
    const std::uint8_t* m_bytes = nullptr;
    size_t m_left = 0;
    bool m_extremes = false;
};

/// A point of the box, of its inside or its surface.
inline GPosition Sample(Random& random, const GBox& box) {
    const auto between = [&random](double low, double high) {
        const std::uint64_t where = random.Next() % 4;
        return where == 0 ? low : where == 1 ? high : low + (high - low) * random.Uniform(0, 1);
    };
    const double x = between(box.m_low.m_x, box.m_high.m_x);
    const double y = between(box.m_low.m_y, box.m_high.m_y);
    const double z = between(box.m_low.m_z, box.m_high.m_z);
    return {x, y, z};
}

/// A point of the bore line's cylinder, scaled about its axis and middle by `part`.
inline GPosition Sample(Random& random, const GBoreLine& l, double part) {
    const GVector u = GetPerpVector(l.m_direction);
    const GVector w = l.m_direction * u;
    const double half = part * (l.m_front - l.m_back) / 2;
    const double t = (l.m_front + l.m_back) / 2 + random.Uniform(-half, half);
    const double h = random.Uniform(-1, 1);
    const double rho = part * l.m_radius * random.Uniform(0, 1);
    const double side = random.Next() % 2 == 0 ? 1 : -1;
    return l.Evaluate(t) + (rho * (1 - h * h) / (1 + h * h)) * u +
           (side * rho * 2 * h / (1 + h * h)) * w;
}

}  // namespace kvgeom::test
