// SPDX-License-Identifier: MIT
#pragma once

// The vector code that tests many boxes or points against planes.
//
// The single tests compare n % (p + o) with a limit, each operation rounded. Here n % p + n % o is
// compared first, half the arithmetic, with a margin that covers the difference. Let u = 2^-53,
// N the largest |nx| + |ny| + |nz| and O the largest component of an offset, of all planes, and S
// how far the coordinates of p reach; u^2 is neglected. The single test's number is within
// 4 u N (S + O) of the exact one: of each product, two additions and one rounding of its own, and
// one of p + o. The one here has 3 u N O of n % o, 1 u of each product and 3 u of its additions: 4
// u N S + 7 u N O. Together that is less than 16 u N (S + O), which leaves room for the rounding of
// limit and margin. What underflows adds 2^-1000 at most.
//
// S is the same for all points, so that the margin needn't be found for each. Those beyond it, and
// those within the margin of the limit, are tested as a single one is, in lanes.

#include <kvgeom/boxes/box_lanes.h>
#include <kvgeom/boxes/kernels.h>
#include <kvgeom/vectors/groups.h>

namespace kvgeom::detail {
namespace {

constexpr double kPlaneMargin = 0x1p-49;
constexpr double kPlaneUnderflow = 0x1p-1000;
constexpr double kLeastReach = 0x1p24;
constexpr double kReachBeyondOffsets = 0x1p10;

struct PlaneFilter {
    double squared_reach;
    double below;  // surely below the limit
    double above;  // surely not below the upper limit

    // Points are compared with both limits, which may be the same.
    PlaneFilter(const TestedPlane* planes, unsigned long count, double limit, double upper_limit) {
        double largest_normal = 0;
        double largest_offset = 0;
        const auto magnitude = [](double x) { return x < 0 ? -x : x; };
        // Written so that NaN stays, which leaves nothing sure.
        const auto raise = [](double& largest, double x) { largest = x <= largest ? largest : x; };
        for (unsigned long k = 0; k < count; ++k) {
            const GVector& n = planes[k].normal;
            const GVector& o = planes[k].offset;
            raise(largest_normal, magnitude(n.m_x) + magnitude(n.m_y) + magnitude(n.m_z));
            raise(largest_offset, magnitude(o.m_x));
            raise(largest_offset, magnitude(o.m_y));
            raise(largest_offset, magnitude(o.m_z));
            if (largest_normal + largest_offset != largest_normal + largest_offset) {
                break;
            }
        }
        double reach = largest_offset * kReachBeyondOffsets;
        reach = reach < kLeastReach ? kLeastReach : reach;
        squared_reach = reach * reach;
        const auto margin = [=](double x) {
            return (largest_normal * (reach + largest_offset) + magnitude(x)) * kPlaneMargin +
                   kPlaneUnderflow;
        };
        below = limit - margin(limit);
        above = upper_limit + margin(upper_limit);
    }
};

inline Lanes SquaredLength(const Triples& p) {
    return MultiplyAdd(p.x, p.x, MultiplyAdd(p.y, p.y, p.z * p.z));
}
// Of both corners together.
inline Lanes SquaredLength(const Corners& box) {
    return SquaredLength(box.low) + SquaredLength(box.high);
}

// As the single tests find it.
constexpr auto Distance = [](const TestedPlane& plane, const Triples& p) {
    const GVector& n = plane.normal;
    const GVector& o = plane.offset;
    return n.m_x * (p.x + o.m_x) + n.m_y * (p.y + o.m_y) + n.m_z * (p.z + o.m_z);
};

constexpr auto NearDistance = [](const TestedPlane& plane, const Triples& p) {
    const GVector& n = plane.normal;
    const Lanes of_z = MultiplyAdd(p.z, All(n.m_z), All(plane.normal_offset));
    return MultiplyAdd(p.x, All(n.m_x), MultiplyAdd(p.y, All(n.m_y), of_z));
};

// The corner of a box that is looked at.
inline Triples Corner(const Corners& box, const TestedPlane& plane) {
    const auto& high = plane.looks_high;
    const auto choose = [&](const Lanes& x, const Lanes& y) -> Triples {
        return high[2] ? Triples{x, y, box.high.z} : Triples{x, y, box.low.z};
    };
    if (high[0]) {
        return high[1] ? choose(box.high.x, box.high.y) : choose(box.high.x, box.low.y);
    }
    return high[1] ? choose(box.low.x, box.high.y) : choose(box.low.x, box.low.y);
}
inline const Triples& Corner(const Triples& p, const TestedPlane&) {
    return p;
}

// Two groups at a time, so that the numbers of a plane are fetched once for both.
constexpr unsigned kPair = 2 * kFull;

struct LanesPair {
    Lanes first;
    Lanes second;

    unsigned BitsBelow(double x) const {
        return detail::BitsBelow(first, All(x)) | detail::BitsBelow(second, All(x)) << kLanes;
    }
    unsigned BitsAtMost(double x) const {
        return detail::BitsAtMost(first, All(x)) | detail::BitsAtMost(second, All(x)) << kLanes;
    }
    unsigned BitsAbove(double x) const {
        return detail::BitsBelow(All(x), first) | detail::BitsBelow(All(x), second) << kLanes;
    }
};

inline void StorePairOfBits(unsigned char* answers, unsigned bits) {
    StoreBits(answers, bits);
    StoreBits(answers + kLanes, bits >> kLanes);
}

// The least distance of all planes; NaN counts for nothing.
template <class Element, class Distance>
LanesPair LeastDistance(const TestedPlane* planes, unsigned long count, const Element& first,
                        const Element& second, Distance distance) {
    LanesPair least = {All(__builtin_inf()), All(__builtin_inf())};
    for (unsigned long k = 0; k < count; ++k) {
        const TestedPlane plane = planes[k];
        least.first = Smaller(least.first, distance(plane, Corner(first, plane)));
        least.second = Smaller(least.second, distance(plane, Corner(second, plane)));
    }
    return least;
}

// Tests boxes or points by the filter, and those that it leaves undecided once more by
// exact(least distances, answers).
template <class Record, class Exact>
unsigned long TestByPlanes(const PlaneFilter& filter, const TestedPlane* planes,
                           unsigned long plane_count, const Record* records, unsigned long count,
                           unsigned char* answers, Exact exact) {
    const auto test_pair = [=](const Record* in, unsigned char* out) {
        const auto first = Load(in);
        const auto second = Load(in + kFull);
        const LanesPair least = LeastDistance(planes, plane_count, first, second, NearDistance);
        const LanesPair squared_lengths = {SquaredLength(first), SquaredLength(second)};
        const unsigned inside = least.BitsAbove(filter.above);
        StorePairOfBits(out, inside);
        const unsigned sure = (inside | least.BitsBelow(filter.below)) &
                              squared_lengths.BitsBelow(filter.squared_reach);
        return AreAll(sure) && AreAll(sure >> kLanes);
    };
    const auto test_exactly = [=](const Record* in, unsigned char* out) {
        exact(LeastDistance(planes, plane_count, Load(in), Load(in + kFull), Distance), out);
        return true;
    };
    const auto is_not_needed = [](const Record*, unsigned, unsigned char*) {};
    ForGroups<kPair>(records, count, answers, records, test_pair,
                     [=](const Record* in, unsigned n, unsigned char* out) {
                         ForPartOfGroup<kPair>(in, n, out, test_exactly, is_not_needed);
                     });
    return CountOnes(answers, count);
}

[[gnu::flatten]] unsigned long PlanesAndBoxes(const TestedPlane* planes, unsigned long plane_count,
                                              double limit, const GBox* boxes, unsigned long count,
                                              unsigned char* answers) {
    const auto exact = [=](const LanesPair& least, unsigned char* out) {
        StorePairOfBits(out, ~least.BitsBelow(limit));
    };
    return TestByPlanes(PlaneFilter(planes, plane_count, limit, limit), planes, plane_count, boxes,
                        count, answers, exact);
}

[[gnu::flatten]] unsigned long PlanesHoldPositions(const TestedPlane* planes,
                                                   unsigned long plane_count,
                                                   const GPosition* positions, unsigned long count,
                                                   unsigned char* answers) {
    const auto exact = [](const LanesPair& least, unsigned char* out) {
        StorePairOfBits(out, ~least.BitsBelow(0));
    };
    return TestByPlanes(PlaneFilter(planes, plane_count, 0, 0), planes, plane_count, positions,
                        count, answers, exact);
}

[[gnu::flatten]] unsigned long PlacePositions(const TestedPlane* planes, unsigned long plane_count,
                                              double tol, const GPosition* positions,
                                              unsigned long count, unsigned char* answers) {
    const auto exact = [=](const LanesPair& least, unsigned char* out) {
        // What isn't outside lies on the boundary when the nearest plane is within tol.
        const unsigned outside = least.BitsBelow(-tol);
        const unsigned on_boundary = least.BitsAtMost(tol) & ~outside;
        StorePairOfBits(out, ~(outside | on_boundary));
        unsigned char twos[kPair];
        StorePairOfBits(twos, on_boundary);
        for (unsigned k = 0; k < kPair; ++k) {
            out[k] = static_cast<unsigned char>(out[k] + 2 * twos[k]);
        }
    };
    const PlaneFilter filter(planes, plane_count, -tol, tol < 0 ? -tol : tol);
    return TestByPlanes(filter, planes, plane_count, positions, count, answers, exact);
}

}  // namespace
}  // namespace kvgeom::detail
