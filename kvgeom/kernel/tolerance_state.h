// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>

namespace kvgeom::detail {

// Relaxed atomics: a read is one plain load. No order between the three is promised.
extern std::atomic<double> g_distance_tolerance;
extern std::atomic<double> g_relative_tolerance;
extern std::atomic<double> g_fit_tolerance;

inline double DistanceTolerance() {
    return g_distance_tolerance.load(std::memory_order_relaxed);
}

inline double RelativeTolerance() {
    return g_relative_tolerance.load(std::memory_order_relaxed);
}

inline double FitTolerance() {
    return g_fit_tolerance.load(std::memory_order_relaxed);
}

}  // namespace kvgeom::detail
