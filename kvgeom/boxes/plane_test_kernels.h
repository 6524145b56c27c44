// SPDX-License-Identifier: MIT
#pragma once

// The vector code that tests many boxes or points against planes.
//
// The single tests compare n % (p + o) with a limit, each operation rounded. Here n % p + n % o is
// compared first, half the arithmetic, with a margin that covers the difference. Let u = 2^-53,
// N the largest |nx| + |ny| + |nz| and O the largest component of an offset, of all planes, and S
// how far the coordinates of p reach. The two numbers differ by no more than 8 u N S + 10 u N O,
// but for u^2 (tests/gappa/plane_filter.g counts the roundings, and has the margin checked by
// machine). The margin, 16 u N (S + O), leaves room for its own rounding and for that of the limit.
// What underflows adds 2^-1000 at most.
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
        // A NaN stays: then the filter decides on no point.
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

// The distances of two groups of points from a plane, as the single tests find them.
struct ExactDistances {
    static LanesPair Find(const TestedPlane& plane, const Triples& first, const Triples& second) {
        return {Find(plane, first), Find(plane, second)};
    }
    static Lanes Find(const TestedPlane& plane, const Triples& p) {
        const GVector& n = plane.normal;
        const GVector& o = plane.offset;
        return n.m_x * (p.x + o.m_x) + n.m_y * (p.y + o.m_y) + n.m_z * (p.z + o.m_z);
    }
};

// The same within the margin. A number of the plane is held only while it is used: two groups of
// boxes and their least distances take fourteen registers, and many processors have sixteen.
struct NearDistances {
    static LanesPair Find(const TestedPlane& plane, const Triples& first, const Triples& second) {
        LanesPair sum = {LoadOne(plane.normal_offset), LoadOne(plane.normal_offset)};
        const auto add = [&](const double& n, const Lanes& of_first, const Lanes& of_second) {
            const Lanes factor = LoadOne(n);
            sum.first = MultiplyAdd(of_first, factor, sum.first);
            sum.second = MultiplyAdd(of_second, factor, sum.second);
        };
        add(plane.normal.m_z, first.z, second.z);
        add(plane.normal.m_y, first.y, second.y);
        add(plane.normal.m_x, first.x, second.x);
        return sum;
    }
};

// The planes that look at each of the eight corners of boxes, one corner's after another's, so that
// no plane has to choose: begin[k] is the first one of corner k, and begin[8] the end.
struct SortedPlanes {
    const TestedPlane* begin[9];

    SortedPlanes(const TestedPlane* planes, unsigned long count) {
        unsigned long i = 0;
        for (unsigned corner = 0; corner < 8; ++corner) {
            begin[corner] = planes + i;
            while (i < count && planes[i].corner == corner) {
                ++i;
            }
        }
        begin[8] = planes + count;
    }
};

// Lowers the least distances to those of some planes; NaN counts for nothing.
template <class Distances>
void Lower(LanesPair& least, const TestedPlane* plane, const TestedPlane* end, const Triples& first,
           const Triples& second) {
    for (; plane != end; ++plane) {
        const LanesPair distances = Distances::Find(*plane, first, second);
        least.first = Smaller(least.first, distances.first);
        least.second = Smaller(least.second, distances.second);
    }
}

template <unsigned corner>
Triples Corner(const Corners& box) {
    return {(corner & 1U) != 0 ? box.high.x : box.low.x,
            (corner & 2U) != 0 ? box.high.y : box.low.y,
            (corner & 4U) != 0 ? box.high.z : box.low.z};
}

// The least distances from all planes, of points or of the corners that the planes look at.
template <class Distances, unsigned... corner>
LanesPair LeastDistances(const SortedPlanes& planes, const Corners& first, const Corners& second,
                         std::integer_sequence<unsigned, corner...>) {
    LanesPair least = {All(__builtin_inf()), All(__builtin_inf())};
    (Lower<Distances>(least, planes.begin[corner], planes.begin[corner + 1], Corner<corner>(first),
                      Corner<corner>(second)),
     ...);
    return least;
}
template <class Distances>
LanesPair LeastDistances(const SortedPlanes& planes, const Corners& first, const Corners& second) {
    return LeastDistances<Distances>(planes, first, second,
                                     std::make_integer_sequence<unsigned, 8>());
}
template <class Distances>
LanesPair LeastDistances(const SortedPlanes& planes, const Triples& first, const Triples& second) {
    LanesPair least = {All(__builtin_inf()), All(__builtin_inf())};
    Lower<Distances>(least, planes.begin[0], planes.begin[8], first, second);
    return least;
}

// Tests boxes or points by the filter, and those that it leaves undecided once more by
// exact(least distances, answers).
template <class Record, class Exact>
unsigned long TestByPlanes(const PlaneFilter& filter, const SortedPlanes& planes,
                           const Record* records, unsigned long count, unsigned char* answers,
                           Exact exact) {
    const auto test_pair = [&](const Record* in, unsigned char* out) {
        const auto first = Load(in);
        const auto second = Load(in + kFull);
        const Lanes squared_length = SquaredLength(first) + SquaredLength(second);
        const LanesPair least = LeastDistances<NearDistances>(planes, first, second);
        const unsigned inside = least.BitsAbove(filter.above);
        StoreBits<kPair>(out, inside);
        return (inside | least.BitsBelow(filter.below)) == (1U << kPair) - 1 &&
               AreAll(BitsBelow(squared_length, All(filter.squared_reach)));
    };
    const auto test_exactly = [&](const Record* in, unsigned char* out) {
        exact(LeastDistances<ExactDistances>(planes, Load(in), Load(in + kFull)), out);
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
        StoreBits<kPair>(out, ~least.BitsBelow(limit));
    };
    return TestByPlanes(PlaneFilter(planes, plane_count, limit, limit),
                        SortedPlanes(planes, plane_count), boxes, count, answers, exact);
}

[[gnu::flatten]] unsigned long PlanesHoldPositions(const TestedPlane* planes,
                                                   unsigned long plane_count,
                                                   const GPosition* positions, unsigned long count,
                                                   unsigned char* answers) {
    const auto exact = [](const LanesPair& least, unsigned char* out) {
        StoreBits<kPair>(out, ~least.BitsBelow(0));
    };
    return TestByPlanes(PlaneFilter(planes, plane_count, 0, 0), SortedPlanes(planes, plane_count),
                        positions, count, answers, exact);
}

[[gnu::flatten]] unsigned long PlacePositions(const TestedPlane* planes, unsigned long plane_count,
                                              double tol, const GPosition* positions,
                                              unsigned long count, unsigned char* answers) {
    const auto exact = [=](const LanesPair& least, unsigned char* out) {
        // What isn't outside lies on the boundary when the nearest plane is within tol.
        const unsigned outside = least.BitsBelow(-tol);
        const unsigned on_boundary = least.BitsAtMost(tol) & ~outside;
        StoreBits<kPair>(out, ~(outside | on_boundary));
        unsigned char twos[kPair];
        StoreBits<kPair>(twos, on_boundary);
        for (unsigned k = 0; k < kPair; ++k) {
            out[k] = static_cast<unsigned char>(out[k] + 2 * twos[k]);
        }
    };
    const PlaneFilter filter(planes, plane_count, -tol, tol < 0 ? -tol : tol);
    return TestByPlanes(filter, SortedPlanes(planes, plane_count), positions, count, answers,
                        exact);
}

}  // namespace
}  // namespace kvgeom::detail
