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
unsigned long TestGroups(const Record* records, unsigned long count, unsigned char* answers,
                         Test test) {
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
// u = 2^-53, m = max(|x|, |y|), and neglect u^2. The single test's t0 has the errors of p - A, two
// quotients by E (which cancels) and one more quotient: 4 u m / |d|. Its t1 has those of E and of
// u = (p - A) / E, which come to 4 u m, and three more of 1 - u and the quotients: 7 u m / |d|. The
// products x r and y r have 3 u m / |d|. With one rounding for adding it, the margin
//     16 u m |r| = 2^-49 m |r|
// holds whatever lies between. The latest entry and the earliest exit are kept twice, with the
// margins against and for a hit; both being monotone in each t, the answer is sure unless those
// two disagree.
//
// Parallel to an axis is, for the single test, d / E up to 2^-52: sure for E from |d| 2^52 on, as
// rounding is monotone, and surely not for E below that by a few units. Then the quotient
// u = (p - A) / E is below 0 or above 1 exactly when p - A is below 0 or above E (again, rounding
// is monotone, and the quotient of two different doubles doesn't round to 1 from above; what could
// underflow is left out).
//
// What is not sure, a box in a million, goes to the single test.

constexpr double kInversePrecision = 0x1p52;  // 1 / DBL_EPSILON
constexpr double kMargin = 0x1p-49;
// Slopes below this are looked at as if they were parallel, which they are against larger boxes.
constexpr double kLeastSteepness = 0x1p-40;
// What keeps products and quotients of the above from underflow and overflow.
constexpr double kTinyExtent = 0x1p-400;
constexpr double kLargestExtent = 0x1p400;
constexpr double kSmallestDistance = 0x1p-500;
constexpr double kExtentPerDistance = 0x1p-60;
constexpr double kLargestDirection = 0x1p100;

// One component of a bore line and what the test needs of it.
struct ProbedAxis {
    bool is_steep;
    double p;
    double reciprocal;
    double margin;
    double least_parallel_extent;
    double largest_steep_extent;

    ProbedAxis(double point, double d) {
        const double magnitude = d < 0 ? -d : d;
        is_steep = magnitude >= kLeastSteepness;
        p = point;
        reciprocal = 1 / d;
        margin = kMargin * (reciprocal < 0 ? -reciprocal : reciprocal);
        least_parallel_extent = magnitude * kInversePrecision;
        largest_steep_extent = least_parallel_extent * (1 - 4 * DBL_EPSILON);
    }
};

struct SlabTest {
    Lanes entry_at_most;  // the latest entry and the earliest exit, each from below and above
    Lanes entry_at_least;
    Lanes exit_at_most;
    Lanes exit_at_least;
    Mask is_sure;
    Mask is_inside;  // of the slabs that it is parallel to
};

inline void CutToSlab(SlabTest& test, const ProbedAxis& axis, Lanes low, Lanes high) {
    const Lanes x = low - axis.p;
    const Lanes extent = high - low;
    if (!axis.is_steep) {
        const Lanes beyond_low = axis.p - low;
        test.is_inside &= (beyond_low >= 0.0) & (beyond_low <= extent);
        test.is_sure &= (extent >= axis.least_parallel_extent) & (extent > kTinyExtent) &
                        (extent < kLargestExtent) &
                        ((beyond_low >= 0.0) | (beyond_low <= -kSmallestDistance));
        return;
    }
    const Lanes y = high - axis.p;
    const Lanes furthest = Larger(Magnitude(x), Magnitude(y));
    const Lanes t0 = x * axis.reciprocal;
    const Lanes t1 = y * axis.reciprocal;
    const Lanes margin = furthest * axis.margin;
    const Lanes entry = Smaller(t0, t1);
    const Lanes exit = Larger(t0, t1);
    test.entry_at_least = Larger(test.entry_at_least, entry - margin);
    test.entry_at_most = Larger(test.entry_at_most, entry + margin);
    test.exit_at_least = Smaller(test.exit_at_least, exit - margin);
    test.exit_at_most = Smaller(test.exit_at_most, exit + margin);
    test.is_sure &= (extent > furthest * kExtentPerDistance + kTinyExtent) &
                    (extent < axis.largest_steep_extent);
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

unsigned long BoreLineAndBoxes(const GBoreLine& bore_line, double enlargement, const GBox* boxes,
                               unsigned long count, unsigned char* answers) {
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
        SlabTest test = {All(begin), All(begin), All(end), All(end), can_be_sure, all};
        CutToSlab(test, x, box.low.x - e, box.high.x + e);
        CutToSlab(test, y, box.low.y - e, box.high.y + e);
        CutToSlab(test, z, box.low.z - e, box.high.z + e);
        const Mask is_hit = test.exit_at_least >= test.entry_at_most;
        const Mask is_miss = test.exit_at_most < test.entry_at_least;
        const unsigned wanted = (1U << n) - 1;
        const unsigned sure = Bits(test.is_sure & (is_hit | is_miss | ~test.is_inside)) & wanted;
        unsigned answer = Bits(is_hit & test.is_inside) & sure;
        for (unsigned k = 0; sure != wanted && k < n; ++k) {
            if ((sure >> k & 1U) == 0 && (line && boxes[i + k])) {
                answer |= 1U << k;
            }
        }
        hits += StoreBits(answers + i, n, answer);
    });
    return hits;
}

// The distance of a point from a plane, by way of the offset that the single tests take.
inline Lanes Distance(const TestedPlane& plane, Lanes x, Lanes y, Lanes z) {
    const GVector& n = plane.normal;
    const GVector& o = plane.offset;
    return n.m_x * (x + o.m_x) + n.m_y * (y + o.m_y) + n.m_z * (z + o.m_z);
}

unsigned long PlanesAndBoxes(const TestedPlane* planes, unsigned long plane_count, double limit,
                             const GBox* boxes, unsigned long count, unsigned char* answers) {
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

unsigned long BoxAndBoxes(const GBox& box, double tol, const GBox* boxes, unsigned long count,
                          unsigned char* answers) {
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

unsigned long BoxHoldsBoxes(const GBox& enlarged, const GBox* boxes, unsigned long count,
                            unsigned char* answers) {
    const GBox box = enlarged;
    return TestGroups(boxes, count, answers, [=](const Corners& b) {
        return ~(IsOutside(b.low, box) | IsOutside(b.high, box));
    });
}

}  // namespace
}  // namespace kvgeom::detail
