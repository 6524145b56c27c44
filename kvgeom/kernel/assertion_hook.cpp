// SPDX-License-Identifier: MIT
#include <kvgeom/kernel/assertion_hook.h>

#include <atomic>

namespace {

constinit std::atomic<GAssertHook> g_assert_hook{nullptr};

}  // namespace

// Acquire and release, so that a hook sees what its installer prepared for it.

GAssertHook SetAssertHook(GAssertHook hook) {
    return g_assert_hook.exchange(hook, std::memory_order_acq_rel);
}

void Gassert_debug(const char* message) {
    if (const GAssertHook hook = g_assert_hook.load(std::memory_order_acquire)) {
        hook(message);
    }
}
