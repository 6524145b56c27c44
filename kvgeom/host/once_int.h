// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <cstdint>
#include <limits>

namespace kvgeom::detail {

// An int that is computed at its first use. Several threads may compute it at the same time; the
// first to store, or one that calls Set meanwhile, decides for all.
class OnceInt {
  public:
    template <class Compute>
    int Get(Compute compute) {
        std::int64_t state = m_state.load(std::memory_order_relaxed);
        if (state == kUnset) {
            const int value = compute();
            if (m_state.compare_exchange_strong(state, value, std::memory_order_relaxed)) {
                return value;
            }
        }
        return static_cast<int>(state);
    }
    void Set(int value) { m_state.store(value, std::memory_order_relaxed); }
    void Reset() { m_state.store(kUnset, std::memory_order_relaxed); }

  private:
    // A state that is no int.
    static constexpr std::int64_t kUnset = std::numeric_limits<std::int64_t>::min();

    std::atomic<std::int64_t> m_state{kUnset};
};

}  // namespace kvgeom::detail
