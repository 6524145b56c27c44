// SPDX-License-Identifier: MIT
#include <kvgeom/vectors/choice.h>

#include <cmath>
#include <cstdlib>
#include <cstring>
#include <initializer_list>

#if defined(__x86_64__) || defined(__i386__)
#include <cpuid.h>
#endif

namespace kvgeom::detail {
namespace {

constexpr double kUsualCacheSize = 0x1p25;  // 32 MiB

Processor ThisProcessor() {
#if defined(KVGEOM_HAS_DISPATCH)
    __builtin_cpu_init();
    return {__builtin_cpu_supports("avx2") != 0, __builtin_cpu_supports("fma") != 0,
            __builtin_cpu_supports("avx512f") != 0, __builtin_cpu_supports("avx512dq") != 0,
            __builtin_cpu_supports("avx512vl") != 0};
#else
    return {};
#endif
}

// The largest cache, in bytes; 0 where it isn't known. (sysconf adds up the caches of all cores.)
double LargestCache() {
    double largest = 0;
#if defined(__x86_64__) || defined(__i386__)
    // Intel and AMD describe their caches in the same form, but under different numbers.
    for (const unsigned leaf : {4U, 0x8000001DU}) {
        constexpr unsigned kMostCaches = 16;
        unsigned eax;
        unsigned ebx;
        unsigned ecx;
        unsigned edx;
        for (unsigned i = 0;
             i < kMostCaches && __get_cpuid_count(leaf, i, &eax, &ebx, &ecx, &edx) != 0 &&
             IsCache(eax);
             ++i) {
            const double size = CacheSize(ebx, ecx);
            largest = size > largest ? size : largest;
        }
    }
#endif
    return largest;
}

}  // namespace

Vectors ChooseVectors(const Processor& processor, const char* wanted) {
    const auto may_be = [wanted](const char* name) {
        return wanted == nullptr || std::strcmp(wanted, name) == 0;
    };
    const bool runs_avx512 =
        processor.fma && processor.avx512f && processor.avx512dq && processor.avx512vl;
    if (runs_avx512 && may_be("avx512")) {
        return Vectors::kAvx512;
    }
    if (processor.fma && processor.avx2 && may_be("avx2")) {
        return Vectors::kAvx2;
    }
    return Vectors::kBaseline;
}

bool IsCache(unsigned eax) {
    return (eax & 0x1FU) != 0;
}

double CacheSize(unsigned ebx, unsigned ecx) {
    const double ways = (ebx >> 22U) + 1;
    const double partitions = (ebx >> 12U & 0x3FFU) + 1;
    const double line = (ebx & 0xFFFU) + 1;
    const double sets = ecx + 1.0;
    return ways * partitions * line * sets;
}

double ChooseCacheSize(double largest_cache, const char* wanted) {
    const double size = wanted != nullptr ? std::strtod(wanted, nullptr) : 0;
    if (size > 0 && std::isfinite(size)) {
        return size;
    }
    return largest_cache > 0 ? largest_cache : kUsualCacheSize;
}

constinit Vectors g_vectors = Vectors::kBaseline;
constinit double g_cache_size = kUsualCacheSize;

namespace {

[[maybe_unused]] const bool g_are_chosen = [] {
    g_vectors = ChooseVectors(ThisProcessor(), std::getenv("KVGEOM_VECTORS"));
    g_cache_size = ChooseCacheSize(LargestCache(), std::getenv("KVGEOM_CACHE"));
    return true;
}();

}  // namespace
}  // namespace kvgeom::detail
