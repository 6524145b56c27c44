// SPDX-License-Identifier: MIT
#pragma once

#include "tests/oracle/dimensions.h"

namespace kvgeom::test {

/// Roundings, of each part of a record.
struct Bounds {
    double point;
    double direction;
    double limits;
};

/// A transformation, or a matrix that converts to one, and what it does.
struct AnyMap {
    explicit AnyMap(Random& random) : t(random.Similarity()), is_matrix(random.Next() % 2 == 0) {
        a = t;
        const double weight = random.Uniform(2, 5);
        for (double& x : a.m_matrix) {
            x *= weight;
        }
        exact = is_matrix ? Converted(Exact(a)) : Exact(t);
    }

    template <class Record>
    Record Of(Record record) const {
        return is_matrix ? record *= a : record *= t;
    }
    std::string Name(const char* record) const {
        return std::string(record) + (is_matrix ? " by G4x4" : " by transformation");
    }
    double MatrixBound() const { return is_matrix ? kConvertedMatrix : 0; }
    double ScalingBound() const { return is_matrix ? kConvertedScaling : 0; }
    // The dot product, scaling, translation; the unit vector; the product with the scaling.
    Bounds RecordBounds() const {
        return {DotBound(3, MatrixBound()) + ScalingBound() + 2,
                UnitBound(3, DotBound(3, MatrixBound())), ScalingBound() + 1};
    }

    GTransf t;
    G4x4 a;
    bool is_matrix;
    Similarity<3> exact;
};

/// A bore line: limits are front, back and radius.
struct Line {
    Vec<3> point;
    Vec<3> direction;
    Vec<3> limits;
};
inline Line ExactLine(const GBoreLine& l) {
    return {Exact(l.m_point), Exact(l.m_direction), {l.m_front, l.m_back, l.m_radius}};
}
inline Vec<3> At(const Line& l, const Real& t) {
    return l.point + l.direction * t;
}
inline Line Image(const Line& l, const Similarity<3>& t) {
    return {l.point * t, Unit(l.direction * t.matrix), l.limits * t.scaling};
}
inline GBoreLine AnyBoreLine(Random& random) {
    return {Any<GPosition>(random), AnyDirection<Spatial>(random), Any<double>(random),
            Any<double>(random), std::fabs(Any<double>(random))};
}

template <class... BoreLines>
void NearLine(const std::string& name, const Bounds& bounds, const Line& expected,
              const BoreLines&... got) {
    Near(name + ": point", bounds.point, expected.point, got.m_point...);
    Near(name + ": direction", bounds.direction, expected.direction, got.m_direction...);
    Near(name + ": limits", bounds.limits, expected.limits,
         std::array{got.m_front, got.m_back, got.m_radius}...);
}

}  // namespace kvgeom::test
