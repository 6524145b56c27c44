// SPDX-License-Identifier: MIT
#pragma once

// The kernels that test many boxes.

#include <kvgeom/batch/kernels.h>
#include <kvgeom/batch/lanes.h>
#include <kvgeom/kernel/constants.h>

namespace kvgeom::detail {
namespace {

// Each group of records through a test of lanes. Returns the number of those that pass.
template <class Record, class Test>
[[gnu::flatten]] unsigned long TestGroups(const Record* records, unsigned long count,
                                          unsigned char* answers, Test test) {
    unsigned long passed = 0;
    ForGroups(count, [&](unsigned long i, unsigned n) {
        passed += StoreBits(answers + i, n, Bits(test(Load(records + i, n))));
    });
    return passed;
}

// A bore line against boxes
//
// The slab test of a single box divides by the box's extent E and by the slope d / E, four times an
// axis. Its answer is one bit, and the quotients are, but for rounding,
//     t0 = (A - p) / d  and  t1 = (B - p) / d
// for the slab A..B. So x = A - p and y = B - p are multiplied by one reciprocal r = 1 / d. Let
// u = 2^-53 and m = max(|A - p|, |B - p|), and neglect u^2. The single test's t0 has the errors of
// p - A, of a quotient by E (the other one cancels it) and of one more quotient: 4 u m / |d|. Its
// t1 has those of E and of (p - A) / E, 4 u m together, and three more of 1 - (p - A) / E and of
// the quotients: 7 u m / |d|. The products x r and y r have 3 u m / |d|. So each of both is within
// 10 u m / |d| of the other, whatever lies between; 2^-49 max(|x r|, |y r|) is more than that. The
// latest entry and the earliest exit, which are extremes of such numbers and of the exact limits,
// differ by no more than the largest of these bounds: a gap of twice that, either way, decides.
//
// For this E must not be 0 (then x r and y r are equal), nothing may underflow (they differ by
// enough), and the single test must not take the line for parallel to the slab: d / E above 2^-52,
// which |x r| and |y r| below 2^50 ensure.
//
// Parallel to a slab is, for the single test, d / E up to 2^-52: sure for E from |d| 2^52 on, as
// rounding is monotone. Then the quotient (p - A) / E is below 0 or above 1 exactly when p - A is
// below 0 or above E (again, rounding is monotone, and the quotient of two different doubles
// doesn't round to 1 from above; what could underflow is left out).
//
// What is not sure, a box in millions, goes to the single test.

constexpr double kInversePrecision = 0x1p52;  // 1 / DBL_EPSILON
constexpr double kMargin = 2 * 0x1p-49;
constexpr double kFurthest = 0x1p50;
constexpr double kShortest = 0x1p-400;
// Slopes below this are looked at as if they were parallel, which they are against larger boxes.
constexpr double kLeastSteepness = 0x1p-40;
// What keeps the numbers that a parallel slab is decided by from underflow and overflow.
constexpr double kLargestExtent = 0x1p400;
constexpr double kSmallestDistance = 0x1p-500;
constexpr double kLargestDirection = 0x1p100;

// One component of a bore line and what the test needs of it.
struct ProbedAxis {
    bool is_steep;
    double p;
    double reciprocal;
    double least_parallel_extent;

    ProbedAxis(double point, double d) {
        const double magnitude = d < 0 ? -d : d;
        is_steep = magnitude >= kLeastSteepness;
        p = point;
        reciprocal = 1 / d;
        least_parallel_extent = magnitude * kInversePrecision;
    }
};

struct SlabTest {
    Lanes entry;     // the latest one
    Lanes exit;      // the earliest one
    Lanes furthest;  // of all, in magnitude
    Mask is_sure;
    Mask is_inside;  // of the slabs that it is parallel to
};

inline void CutToSlab(SlabTest& test, const ProbedAxis& axis, Lanes low, Lanes high) {
    if (!axis.is_steep) {
        const Lanes extent = high - low;
        const Lanes beyond_low = axis.p - low;
        test.is_inside &= (beyond_low >= 0.0) & (beyond_low <= extent);
        test.is_sure &= (extent >= axis.least_parallel_extent) & (extent > kShortest) &
                        (extent < kLargestExtent) &
                        ((beyond_low >= 0.0) | (beyond_low <= -kSmallestDistance));
        return;
    }
    const Lanes t0 = (low - axis.p) * axis.reciprocal;
    const Lanes t1 = (high - axis.p) * axis.reciprocal;
    const Lanes entry = Smaller(t0, t1);
    const Lanes exit = Larger(t0, t1);
    test.entry = Larger(test.entry, entry);
    test.exit = Smaller(test.exit, exit);
    test.furthest = Larger(Larger(test.furthest, exit), -entry);
    test.is_sure &= exit - entry > kShortest;
}

inline bool IsWithin(double x, double bound) {
    return -bound <= x && x <= bound;
}

inline bool IsOrdinary(const GBoreLine& line) {
    const GPosition& p = line.m_point;
    const GUnitVector& d = line.m_direction;
    return IsWithin(p.m_x, kLargestExtent) && IsWithin(p.m_y, kLargestExtent) &&
           IsWithin(p.m_z, kLargestExtent) && IsWithin(d.m_x, kLargestDirection) &&
           IsWithin(d.m_y, kLargestDirection) && IsWithin(d.m_z, kLargestDirection) &&
           IsWithin(line.m_front, DBL_MAX) && IsWithin(line.m_back, DBL_MAX);
}

// One bit of each answer, and of whether it is sure.
struct SlabAnswers {
    unsigned hits;
    unsigned sure;
};

inline SlabAnswers Decide(const SlabTest& test) {
    const Lanes margin = test.furthest * kMargin;
    const Lanes leg = test.exit - test.entry;
    const unsigned outside = Bits(~test.is_inside);
    const unsigned hits = Bits(leg >= margin) & ~outside;
    const unsigned misses = Bits(leg < -margin) | outside;
    return {hits, (hits | misses) & Bits(test.is_sure & (test.furthest < kFurthest))};
}

// The answers that aren't sure, by the single test.
[[gnu::noinline]] unsigned DecideEach(const GBoreLine& line, const GBox* boxes, unsigned n,
                                      SlabAnswers answer) {
    for (unsigned k = 0; k < n; ++k) {
        if ((answer.sure >> k & 1U) == 0) {
            answer.hits &= ~(1U << k);
            answer.hits |= line && boxes[k] ? 1U << k : 0U;
        }
    }
    return answer.hits;
}

[[gnu::flatten]] unsigned long BoreLineAndBoxes(const GBoreLine& bore_line, double enlargement,
                                                const GBox* boxes, unsigned long count,
                                                unsigned char* answers) {
    const GBoreLine line = bore_line;
    const ProbedAxis x(line.m_point.m_x, line.m_direction.m_x);
    const ProbedAxis y(line.m_point.m_y, line.m_direction.m_y);
    const ProbedAxis z(line.m_point.m_z, line.m_direction.m_z);
    const bool is_reversed = line.m_back > line.m_front;
    const double begin = is_reversed ? line.m_front : line.m_back;
    const double end = is_reversed ? line.m_back : line.m_front;
    const Mask all = (Lanes{} == Lanes{});
    const Mask can_be_sure = IsOrdinary(line) ? all : ~all;
    const double e = enlargement;
    unsigned long hits = 0;
    ForGroups(count, [&](unsigned long i, unsigned n) {
        const Corners box = Load(boxes + i, n);
        SlabTest test = {All(begin), All(end), Lanes{}, can_be_sure, all};
        CutToSlab(test, x, box.low.x - e, box.high.x + e);
        CutToSlab(test, y, box.low.y - e, box.high.y + e);
        CutToSlab(test, z, box.low.z - e, box.high.z + e);
        SlabAnswers answer = Decide(test);
        const unsigned wanted = (1U << n) - 1;
        if ((answer.sure & wanted) != wanted) {
            answer.hits = DecideEach(line, boxes + i, n, answer);
        }
        hits += StoreBits(answers + i, n, answer.hits);
    });
    return hits;
}

// The distance of a point from a plane, by way of the offset that the single tests take.
inline Lanes Distance(const TestedPlane& plane, Lanes x, Lanes y, Lanes z) {
    const GVector& n = plane.normal;
    const GVector& o = plane.offset;
    return n.m_x * (x + o.m_x) + n.m_y * (y + o.m_y) + n.m_z * (z + o.m_z);
}

[[gnu::flatten]] unsigned long PlanesAndBoxes(const TestedPlane* planes, unsigned long plane_count,
                                              double limit, const GBox* boxes, unsigned long count,
                                              unsigned char* answers) {
    return TestGroups(boxes, count, answers, [=](const Corners& box) {
        const Lanes sides[3][2] = {
            {box.low.x, box.high.x}, {box.low.y, box.high.y}, {box.low.z, box.high.z}};
        Mask is_outside = {};
        for (unsigned long k = 0; k < plane_count; ++k) {
            const TestedPlane& plane = planes[k];
            const auto& high = plane.looks_high;
            is_outside |= Distance(plane, sides[0][high[0] ? 1 : 0], sides[1][high[1] ? 1 : 0],
                                   sides[2][high[2] ? 1 : 0]) < limit;
        }
        return ~is_outside;
    });
}

[[gnu::flatten]] unsigned long BoxAndBoxes(const GBox& box, double tol, const GBox* boxes,
                                           unsigned long count, unsigned char* answers) {
    const GPosition low = box.m_low;
    const GPosition high = box.m_high;
    return TestGroups(boxes, count, answers, [=](const Corners& b) {
        return (Larger(All(low.m_x), b.low.x) < Smaller(All(high.m_x), b.high.x) + tol) &
               (Larger(All(low.m_y), b.low.y) < Smaller(All(high.m_y), b.high.y) + tol) &
               (Larger(All(low.m_z), b.low.z) < Smaller(All(high.m_z), b.high.z) + tol);
    });
}

inline Mask IsOutside(Lanes value, double low, double high) {
    return (high < value) | (low > value);
}
inline Mask IsOutside(const Triples& p, const GBox& box) {
    return IsOutside(p.x, box.m_low.m_x, box.m_high.m_x) |
           IsOutside(p.y, box.m_low.m_y, box.m_high.m_y) |
           IsOutside(p.z, box.m_low.m_z, box.m_high.m_z);
}

[[gnu::flatten]] unsigned long BoxHoldsBoxes(const GBox& enlarged, const GBox* boxes,
                                             unsigned long count, unsigned char* answers) {
    const GBox box = enlarged;
    return TestGroups(boxes, count, answers, [=](const Corners& b) {
        return ~(IsOutside(b.low, box) | IsOutside(b.high, box));
    });
}

}  // namespace
}  // namespace kvgeom::detail
