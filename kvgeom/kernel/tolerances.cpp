// SPDX-License-Identifier: MIT
#include <kvgeom/kernel/error_codes.h>
#include <kvgeom/kernel/refusal.h>
#include <kvgeom/kernel/tolerance_state.h>
#include <kvgeom/kernel/tolerances.h>

namespace kvgeom::detail {

constinit std::atomic<double> g_distance_tolerance{1e-6};
constinit std::atomic<double> g_relative_tolerance{1e-10};
constinit std::atomic<double> g_fit_tolerance{1e-3};

namespace {

constexpr int kPositionDoubleAlignment = 1;

}  // namespace
}  // namespace kvgeom::detail

using namespace kvgeom::detail;

#if defined(__GNUC__)
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wignored-qualifiers"
#endif

const double GetDistanceTolerance() {
    return DistanceTolerance();
}

const double GetRelativeTolerance() {
    return RelativeTolerance();
}

const double GetFitTolerance() {
    return FitTolerance();
}

const int GetPosDblAlgn() {
    return kPositionDoubleAlignment;
}

#if defined(__GNUC__)
#pragma GCC diagnostic pop
#endif

// The first test of each setter is written so that NaN fails it.

void SetDistanceTolerance(double value, long* err) {
    *err = kSuccess;
    if (!(value <= FitTolerance())) {
        Refuse("SetDistanceTolerance: distance tolerance not smaller than resfit.", err);
        return;
    }
    if (RelativeTolerance() > value) {
        Refuse("SetDistanceTolerance: distance tolerance not larger than releative tolerance", err);
        return;
    }
    g_distance_tolerance.store(value, std::memory_order_relaxed);
}

void SetRelativeTolerance(double value, long* err) {
    *err = kSuccess;
    if (!(value <= DistanceTolerance())) {
        Refuse("SetRelativeTolerance: relative tolerance not smaller than distance tolerance", err);
        return;
    }
    g_relative_tolerance.store(value, std::memory_order_relaxed);
}

void SetFitTolerance(double value, long* err) {
    *err = kSuccess;
    if (!(value >= DistanceTolerance())) {
        Refuse("SetFitTolerance: fit tolerance is smaller than distance tolerance.", err);
        return;
    }
    g_fit_tolerance.store(value, std::memory_order_relaxed);
}
