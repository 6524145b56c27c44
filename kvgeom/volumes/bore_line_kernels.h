// SPDX-License-Identifier: MIT
#pragma once

// The vector code that tests many boxes or points against a bore line.

#include <kvgeom/boxes/box_lanes.h>
#include <kvgeom/kernel/constants.h>
#include <kvgeom/vectors/groups.h>
#include <kvgeom/volumes/kernels.h>

namespace kvgeom::detail {
namespace {

// A bore line against boxes
//
// The slab test of a single box divides by the box's extent E and by the slope d / E, four times an
// axis. Its answer is one bit, and the quotients are, but for rounding,
//     t0 = (A - p) / d  and  t1 = (B - p) / d
// for the slab A..B, which is the box enlarged by e. Here they are low r - (p + e) r and
// high r - (p - e) r with one reciprocal r = 1 / d an axis and call. Let u = 2^-53. The two differ
// by less than 16 u times the larger |t|, plus 8 u (|p| + e) |r|: tests/gappa/bore_line_filter.g
// counts the roundings, and has these margins checked by machine. The latest entry and the earliest
// exit, which are extremes of such numbers and of the exact limits, differ by no more than the
// largest of these bounds: a gap of twice that, either way, decides.
//
// For this E must not be 0 (then entry and exit are equal but for these errors, while with a gap of
// twice the bound between all entries and exits E isn't), nothing may underflow, and the single
// test must not take the line for parallel to the slab: d / E above 2^-52, which |t| below 2^48
// ensures.
//
// Parallel to a slab is, for the single test, d / E up to 2^-52: sure for E from |d| 2^52 on, as
// rounding is monotone. Then the quotient (p - A) / E is below 0 or above 1 exactly when p - A is
// below 0 or above E (again, rounding is monotone, and the quotient of two different doubles
// doesn't round to 1 from above; what could underflow is left out).
//
// What is not sure, a box in millions, goes to the single test.

constexpr double kInversePrecision = 0x1p52;  // 1 / DBL_EPSILON
constexpr double kFurthestMargin = 2 * 0x1p-49;
constexpr double kOffsetMargin = 2 * 0x1p-50;
constexpr double kFurthest = 0x1p48;
constexpr double kShortest = 0x1p-400;
// Slopes below this are looked at as if they were parallel, which they are against larger boxes.
constexpr double kLeastSteepness = 0x1p-40;
// Within these bounds nothing overflows or underflows when a parallel slab is decided on.
constexpr double kLargestExtent = 0x1p400;
constexpr double kSmallestDistance = 0x1p-500;
constexpr double kLargestDirection = 0x1p100;

// One component of a bore line and what the test needs of it.
struct ProbedAxis {
    bool is_steep;
    double p;
    double reciprocal;
    double low_offset;
    double high_offset;
    double margin;
    double least_parallel_extent;

    ProbedAxis(double point, double d, double enlargement) {
        const double magnitude = d < 0 ? -d : d;
        is_steep = magnitude >= kLeastSteepness;
        p = point;
        reciprocal = 1 / d;
        low_offset = -(p + enlargement) * reciprocal;
        high_offset = -(p - enlargement) * reciprocal;
        margin = is_steep ? ((p < 0 ? -p : p) + enlargement) / magnitude * kOffsetMargin : 0;
        least_parallel_extent = magnitude * kInversePrecision;
    }
};

// Where the line enters and leaves the slabs of an axis.
struct Span {
    Lanes entry;
    Lanes exit;
};

inline Span SpanOf(const ProbedAxis& axis, Lanes low, Lanes high) {
    const Lanes t0 = MultiplyAdd(low, All(axis.reciprocal), All(axis.low_offset));
    const Lanes t1 = MultiplyAdd(high, All(axis.reciprocal), All(axis.high_offset));
    return {Smaller(t0, t1), Larger(t0, t1)};
}

// For each box a bit: whether the line hits it, and whether that is sure.
struct SlabAnswers {
    unsigned hits;
    unsigned sure;
};

// Corrects the answers by an axis that is not steep: the line is taken for parallel to its slab.
inline void CutToParallelSlab(SlabAnswers& answer, const ProbedAxis& axis, Lanes low, Lanes high,
                              double e) {
    if (axis.is_steep) {
        return;
    }
    const Lanes a = low - e;
    const Lanes extent = high + e - a;
    const Lanes beyond_low = axis.p - a;
    const unsigned inside = Bits((beyond_low >= 0.0) & (beyond_low <= extent));
    answer.hits &= inside;
    answer.sure =
        (answer.sure | ~inside) & Bits((extent >= axis.least_parallel_extent) &
                                       (extent > kShortest) & (extent < kLargestExtent) &
                                       ((beyond_low >= 0.0) | (beyond_low <= -kSmallestDistance)));
}

inline bool IsWithin(double x, double bound) {
    return -bound <= x && x <= bound;
}

inline bool IsOrdinary(const GBoreLine& line, double enlargement) {
    const GPosition& p = line.m_point;
    const GUnitVector& d = line.m_direction;
    return IsWithin(p.m_x, kLargestExtent) && IsWithin(p.m_y, kLargestExtent) &&
           IsWithin(p.m_z, kLargestExtent) && IsWithin(d.m_x, kLargestDirection) &&
           IsWithin(d.m_y, kLargestDirection) && IsWithin(d.m_z, kLargestDirection) &&
           IsWithin(line.m_front, DBL_MAX) && IsWithin(line.m_back, DBL_MAX) && 0 <= enlargement &&
           enlargement <= kLargestExtent;
}

// Not inlined: it is rarely called, and would make the loop larger.
[[gnu::noinline]] void TestEach(const GBoreLine& line, const GBox* boxes, unsigned n,
                                unsigned char* answers) {
    for (unsigned k = 0; k < n; ++k) {
        answers[k] = line && boxes[k] ? 1 : 0;
    }
}

template <bool all_are_steep>
[[gnu::flatten]] unsigned long BoreLineAndBoxes(const GBoreLine& line, double e,
                                                const ProbedAxis (&axes)[3], const GBox* boxes,
                                                unsigned long count, unsigned char* answers) {
    const ProbedAxis x = axes[0];
    const ProbedAxis y = axes[1];
    const ProbedAxis z = axes[2];
    const bool is_reversed = line.m_back > line.m_front;
    const double begin = is_reversed ? line.m_front : line.m_back;
    const double end = is_reversed ? line.m_back : line.m_front;
    double offset_margin = x.margin > y.margin ? x.margin : y.margin;
    offset_margin = (z.margin > offset_margin ? z.margin : offset_margin) + kShortest;
    // No answer is sure where the line's numbers are too large for the bounds above, or where the
    // line is parallel to all three slabs.
    const bool can_be_sure = IsOrdinary(line, e) && (x.is_steep || y.is_steep || z.is_steep);
    const double furthest_of_all = can_be_sure ? kFurthest : -1;

    const auto test_group = [=](const GBox* in, unsigned char* out) {
        const Corners box = Load(in);
        Span in_x = SpanOf(x, box.low.x, box.high.x);
        Span in_y = SpanOf(y, box.low.y, box.high.y);
        Span in_z = SpanOf(z, box.low.z, box.high.z);
        if (!all_are_steep) {
            const Span steep = x.is_steep ? in_x : y.is_steep ? in_y : in_z;
            in_x = x.is_steep ? in_x : steep;
            in_y = y.is_steep ? in_y : steep;
            in_z = z.is_steep ? in_z : steep;
        }
        const Lanes last_entry =
            Larger(Larger(in_x.entry, in_y.entry), Larger(All(begin), in_z.entry));
        const Lanes first_exit =
            Smaller(Smaller(in_x.exit, in_y.exit), Smaller(All(end), in_z.exit));
        const Lanes first_entry = Smaller(Smaller(in_x.entry, in_y.entry), in_z.entry);
        const Lanes last_exit = Larger(Larger(in_x.exit, in_y.exit), in_z.exit);
        const Lanes shortest = Smaller(Smaller(in_x.exit - in_x.entry, in_y.exit - in_y.entry),
                                       in_z.exit - in_z.entry);
        const Lanes furthest = Larger(last_exit, -first_entry);
        const Lanes margin = MultiplyAdd(furthest, All(kFurthestMargin), All(offset_margin));
        const Lanes leg = first_exit - last_entry;
        SlabAnswers answer = {};
        answer.hits = BitsBelow(margin, leg);
        const unsigned misses = BitsBelow(leg, -margin) & BitsBelow(margin, shortest);
        answer.sure = (answer.hits | misses) & BitsBelow(furthest, All(furthest_of_all));
        if (!all_are_steep) {
            CutToParallelSlab(answer, x, box.low.x, box.high.x, e);
            CutToParallelSlab(answer, y, box.low.y, box.high.y, e);
            CutToParallelSlab(answer, z, box.low.z, box.high.z, e);
            answer.sure = can_be_sure ? answer.sure : 0;
        }
        StoreBits(out, answer.hits);
        return AreAll(answer.sure);
    };
    ForGroups(
        boxes, count, answers, boxes, test_group,
        [&line](const GBox* in, unsigned n, unsigned char* out) { TestEach(line, in, n, out); });
    return CountOnes(answers, count);
}

unsigned long BoreLineAndBoxes(const GBoreLine& line, double enlargement, const GBox* boxes,
                               unsigned long count, unsigned char* answers) {
    const GPosition& p = line.m_point;
    const GUnitVector& d = line.m_direction;
    const ProbedAxis axes[3] = {
        {p.m_x, d.m_x, enlargement}, {p.m_y, d.m_y, enlargement}, {p.m_z, d.m_z, enlargement}};
    return axes[0].is_steep && axes[1].is_steep && axes[2].is_steep
               ? BoreLineAndBoxes<true>(line, enlargement, axes, boxes, count, answers)
               : BoreLineAndBoxes<false>(line, enlargement, axes, boxes, count, answers);
}

[[gnu::flatten]] unsigned long BoreLineHoldsPositions(const GBoreLine& line,
                                                      const GPosition* positions,
                                                      unsigned long count, unsigned char* answers) {
    const GPosition p = line.m_point;
    const GUnitVector u = line.m_direction;
    const double front = line.m_front;
    const double back = line.m_back;
    const double squared_radius = line.m_radius * line.m_radius;
    return TestGroups(positions, count, answers, [=](const Triples& q) {
        const Triples d = {q.x - p.m_x, q.y - p.m_y, q.z - p.m_z};
        const Lanes t = d.x * u.m_x + d.y * u.m_y + d.z * u.m_z;
        const Lanes squared_distance = (d.x * d.x + d.y * d.y + d.z * d.z) - t * t;
        const Mask is_beside = squared_radius >= squared_distance;
        const Mask is_beyond = (t < back) | (t > front);
        return is_beside & ~is_beyond;
    });
}

}  // namespace
}  // namespace kvgeom::detail
