// SPDX-License-Identifier: MIT
#include <kvgeom/batch/kernels.h>

#include <cstdlib>
#include <cstring>

#if defined(__linux__)
#include <unistd.h>
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
#if defined(_SC_LEVEL3_CACHE_SIZE)
    const auto size = static_cast<double>(sysconf(_SC_LEVEL3_CACHE_SIZE));
    g_cache_size = size > 0 ? size : g_cache_size;
#endif
    return true;
}();

}  // namespace
}  // namespace kvgeom::detail
