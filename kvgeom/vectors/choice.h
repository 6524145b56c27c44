// SPDX-License-Identifier: MIT
#pragma once

// Which vector code runs, and from which size on results are streamed past the caches: chosen once,
// when the library is loaded, by what the processor tells of itself.

namespace kvgeom::detail {

// The vector code that the library holds: for any processor that it runs on, for those with AVX2
// and FMA, and for those with AVX-512 (F, DQ, VL). Some platforms have the first alone.
enum class Vectors { kBaseline, kAvx2, kAvx512 };

// What the processor can do, as far as the operating system lets it.
struct Processor {
    bool avx2;
    bool fma;
    bool avx512f;
    bool avx512dq;
    bool avx512vl;
};

// The largest vectors that the processor runs; or those that are wanted by name (baseline, avx2,
// avx512; null: any), if it runs them, else the baseline.
Vectors ChooseVectors(const Processor& processor, const char* wanted);

// x86 processors list their caches by CPUID ("deterministic cache parameters"), four registers
// each. Whether eax describes a cache at all: the first that doesn't ends the list.
bool IsCache(unsigned eax);
// The size in bytes of the cache that ebx and ecx describe.
double CacheSize(unsigned ebx, unsigned ecx);

// The size of the cache in bytes: the wanted one, if that is a finite number above 0; else the one
// that the processor tells; else, if that is 0, a usual one.
double ChooseCacheSize(double largest_cache, const char* wanted);

// Chosen when the library is loaded, by the processor and the environment variables KVGEOM_VECTORS
// and KVGEOM_CACHE. Until then, the baseline and the usual size.
extern Vectors g_vectors;
// In bytes, of the largest cache that a core has for itself or shares with others.
extern double g_cache_size;

// The functions for the chosen vectors. Kernels is a table of functions with one static member of
// its own type for each kind of vectors.
template <class Kernels>
const Kernels& Chosen() {
#if defined(KVGEOM_HAS_DISPATCH)
    switch (g_vectors) {
        case Vectors::kAvx512:
            return Kernels::kAvx512;
        case Vectors::kAvx2:
            return Kernels::kAvx2;
        case Vectors::kBaseline:
            break;
    }
#endif
    return Kernels::kBaseline;
}

}  // namespace kvgeom::detail
