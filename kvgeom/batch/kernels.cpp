// SPDX-License-Identifier: MIT
#include <kvgeom/batch/kernels.h>

#include <cstdlib>
#include <cstring>
#include <initializer_list>

#if defined(__x86_64__) || defined(__i386__)
#include <cpuid.h>
#endif

namespace kvgeom::detail {
namespace {

#if defined(KVGEOM_HAS_DISPATCH)

bool RunsAvx2() {
    return __builtin_cpu_supports("avx2") && __builtin_cpu_supports("fma");
}

bool RunsAvx512() {
    return __builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512dq") &&
           __builtin_cpu_supports("avx512vl") && __builtin_cpu_supports("fma");
}

const Kernels* Choose() {
    __builtin_cpu_init();
    const char* const wanted = std::getenv("KVGEOM_VECTORS");
    const auto may_be = [wanted](const Kernels& kernels) {
        return wanted == nullptr || std::strcmp(wanted, kernels.name) == 0;
    };
    if (may_be(kAvx512Kernels) && RunsAvx512()) {
        return &kAvx512Kernels;
    }
    if (may_be(kAvx2Kernels) && RunsAvx2()) {
        return &kAvx2Kernels;
    }
    return &kBaselineKernels;
}

#else

const Kernels* Choose() {
    return &kBaselineKernels;
}

#endif

// The size in bytes of the largest cache that a core has for itself or shares, 0 where it isn't
// known. sysconf adds up the caches of all cores.
double LargestCache() {
    double largest = 0;
#if defined(__x86_64__) || defined(__i386__)
    // The deterministic cache parameters, which Intel and AMD tell in the same form.
    for (const unsigned leaf : {4U, 0x8000001DU}) {
        unsigned kind;
        unsigned shape;
        unsigned sets;
        unsigned other;
        for (unsigned i = 0;
             i < 16 && __get_cpuid_count(leaf, i, &kind, &shape, &sets, &other) != 0 &&
             (kind & 0x1FU) != 0;
             ++i) {
            const double ways = (shape >> 22U) + 1;
            const double partitions = (shape >> 12U & 0x3FFU) + 1;
            const double line = (shape & 0xFFFU) + 1;
            const double size = ways * partitions * line * (sets + 1.0);
            largest = size > largest ? size : largest;
        }
    }
#endif
    return largest;
}

}  // namespace

unsigned long CountOnes(const unsigned char* answers, unsigned long count) {
    unsigned long ones = 0;
    for (unsigned long i = 0; i < count; ++i) {
        ones += answers[i] == 1 ? 1 : 0;
    }
    return ones;
}

constinit const Kernels* g_kernels = &kBaselineKernels;
constinit double g_cache_size = 0x1p25;

namespace {

[[maybe_unused]] const bool g_are_chosen = [] {
    g_kernels = Choose();
    const double size = LargestCache();
    g_cache_size = size > 0 ? size : g_cache_size;
    return true;
}();

}  // namespace
}  // namespace kvgeom::detail
