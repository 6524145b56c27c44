// SPDX-License-Identifier: MIT
#pragma once

#include <kvgeom/kernel/tolerances.h>

namespace kvgeom::test {

/// Gives the tolerances back as it found them.
class ToleranceGuard {
  public:
    ToleranceGuard() = default;
    ~ToleranceGuard() {
        // Out of each other's way first: each setter looks at the values of the moment.
        long err;
        SetRelativeTolerance(-1, &err);
        SetDistanceTolerance(-1, &err);
        SetFitTolerance(m_fit, &err);
        SetDistanceTolerance(m_distance, &err);
        SetRelativeTolerance(m_relative, &err);
    }
    ToleranceGuard(const ToleranceGuard&) = delete;
    ToleranceGuard& operator=(const ToleranceGuard&) = delete;

  private:
    double m_distance = GetDistanceTolerance();
    double m_relative = GetRelativeTolerance();
    double m_fit = GetFitTolerance();
};

}  // namespace kvgeom::test
