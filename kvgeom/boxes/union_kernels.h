// SPDX-License-Identifier: MIT
#pragma once

// The vector code that finds the box around many points or boxes. Least and greatest numbers don't
// depend on the order in which they are looked for, but for two things, for which the first record
// decides: a NaN in it stays, and of zeros of both signs the first one is kept.

#include <kvgeom/boxes/box_lanes.h>
#include <kvgeom/boxes/kernels.h>
#include <kvgeom/kernel/infinity.h>

namespace kvgeom::detail {
namespace {

// Of one component, number k of every record of so many doubles: a zero gets the sign of the first
// zero there is.
template <int size, class Counts>
[[gnu::flatten]] void KeepFirstZero(double& extreme, const double* numbers, unsigned long count,
                                    Counts counts) {
    if (extreme != 0) {
        return;
    }
    for (unsigned long i = 0; i < count; ++i) {
        if (counts(i) && numbers[size * i] == 0) {
            extreme = numbers[size * i];
            return;
        }
    }
}

inline double SmallestOf(Lanes x) {
    double result = x[0];
    for (int i = 1; i < kLanes; ++i) {
        result = x[i] < result ? x[i] : result;
    }
    return result;
}
inline double LargestOf(Lanes x) {
    double result = x[0];
    for (int i = 1; i < kLanes; ++i) {
        result = x[i] > result ? x[i] : result;
    }
    return result;
}

// Three vectors hold kLanes points, x, y, z by turns: each lane keeps to its component, and nothing
// need be sorted before the end.
[[gnu::flatten]] GBox BoxOfPositions(const GPosition* positions, unsigned long count) {
    const auto* const numbers = reinterpret_cast<const double*>(positions);
    double room[3 * kLanes];
    for (int i = 0; i < 3 * kLanes; ++i) {
        room[i] = numbers[i % 3];
    }
    Lanes low[3] = {LoadLanes(room), LoadLanes(room + kLanes), LoadLanes(room + 2 * kLanes)};
    Lanes high[3] = {low[0], low[1], low[2]};
    const auto extend = [&low, &high](const double* from) {
        for (int k = 0; k < 3; ++k) {
            const Lanes x = LoadLanes(from + k * kLanes);
            low[k] = Smaller(low[k], x);
            high[k] = Larger(high[k], x);
        }
    };
    // Memory gives more to a reader who asks for several places at a time.
    constexpr unsigned long kRuns = 4;
    const unsigned long run = count / kRuns / kFull * kFull;
    for (unsigned long i = 0; i < run; i += kFull) {
        for (unsigned long k = 0; k < kRuns; ++k) {
            extend(numbers + 3 * (k * run + i));
        }
    }
    unsigned long i = kRuns * run;
    for (; count - i >= kFull; i += kFull) {
        extend(numbers + 3 * i);
    }
    if (i < count) {
        extend(numbers + 3 * (count - kFull));  // some for the second time
    }
    double lows[3 * kLanes];
    double highs[3 * kLanes];
    for (int k = 0; k < 3; ++k) {
        StoreLanes(lows + k * kLanes, low[k]);
        StoreLanes(highs + k * kLanes, high[k]);
    }
    const auto all = [](unsigned long) { return true; };
    for (int k = 0; k < 3; ++k) {
        for (int j = k + 3; j < 3 * kLanes; j += 3) {
            lows[k] = lows[j] < lows[k] ? lows[j] : lows[k];
            highs[k] = highs[j] > highs[k] ? highs[j] : highs[k];
        }
        KeepFirstZero<3>(lows[k], numbers + k, count, all);
        KeepFirstZero<3>(highs[k], numbers + k, count, all);
    }
    return {{lows[0], lows[1], lows[2]}, {highs[0], highs[1], highs[2]}};
}

inline bool IsReversed(const GBox& box, double t) {
    return box.m_low.m_x - t >= box.m_high.m_x || box.m_low.m_y - t >= box.m_high.m_y ||
           box.m_low.m_z - t >= box.m_high.m_z;
}
inline Mask IsReversed(const Corners& box, double t) {
    return (box.low.x - t >= box.high.x) | (box.low.y - t >= box.high.y) |
           (box.low.z - t >= box.high.z);
}

[[gnu::flatten]] GBox UniteBoxesThatAreNotNull(const GBox* boxes, unsigned long count, double t) {
    unsigned long first = 0;
    while (first < count && IsReversed(boxes[first], t)) {
        ++first;
    }
    if (first == count) {
        return {{kGInfinity, kGInfinity, kGInfinity}, {-kGInfinity, -kGInfinity, -kGInfinity}};
    }
    const GBox seed = boxes[first];
    Corners box = {{All(seed.m_low.m_x), All(seed.m_low.m_y), All(seed.m_low.m_z)},
                   {All(seed.m_high.m_x), All(seed.m_high.m_y), All(seed.m_high.m_z)}};
    const auto extend = [&](const GBox* from) {
        const Corners b = Load(from);
        const Mask is_null = IsReversed(b, t);
        const auto lower = [is_null](Lanes& low, Lanes x) {
            low = Smaller(low, is_null ? low : x);
        };
        const auto raise = [is_null](Lanes& high, Lanes x) {
            high = Larger(high, is_null ? high : x);
        };
        lower(box.low.x, b.low.x);
        lower(box.low.y, b.low.y);
        lower(box.low.z, b.low.z);
        raise(box.high.x, b.high.x);
        raise(box.high.y, b.high.y);
        raise(box.high.z, b.high.z);
    };
    unsigned long i = first;
    for (; count - i >= kFull; i += kFull) {
        extend(boxes + i);
    }
    if (i < count) {
        GBox room[kLanes];
        for (GBox& rest : room) {
            rest = i < count ? boxes[i++] : seed;
        }
        extend(room);
    }
    double result[6] = {SmallestOf(box.low.x), SmallestOf(box.low.y), SmallestOf(box.low.z),
                        LargestOf(box.high.x), LargestOf(box.high.y), LargestOf(box.high.z)};
    const auto* const numbers = reinterpret_cast<const double*>(boxes);
    const auto counts = [=](unsigned long k) { return !IsReversed(boxes[k], t); };
    for (int k = 0; k < 6; ++k) {
        KeepFirstZero<6>(result[k], numbers + k, count, counts);
    }
    return {{result[0], result[1], result[2]}, {result[3], result[4], result[5]}};
}

}  // namespace
}  // namespace kvgeom::detail
