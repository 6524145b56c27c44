// SPDX-License-Identifier: MIT
#pragma once

// The numbers of several elements side by side, one in each lane. The sources that include this are
// compiled for different processors, so everything here belongs to them alone (an unnamed
// namespace): otherwise the linker might give one of them the code of another. For the same reason
// they call no inline function of other headers.

#if defined(__SSE2__)
#include <immintrin.h>
#endif

namespace kvgeom::detail {
namespace {

#if defined(__AVX512F__)
constexpr int kLanes = 8;
#elif defined(__AVX2__)
constexpr int kLanes = 4;
#else
constexpr int kLanes = 2;
#endif

typedef double Lanes __attribute__((vector_size(kLanes * sizeof(double))));
// In each lane all bits are set, or none: the result of a comparison.
typedef decltype(Lanes() < Lanes()) Mask;

// The number of elements of a full group.
constexpr unsigned kFull = kLanes;

inline Lanes All(double x) {
    return x - Lanes{};
}

// As the functions of the same names in extremes.h.
inline Lanes Smaller(Lanes a, Lanes b) {
    return b < a ? b : a;
}
inline Lanes Larger(Lanes a, Lanes b) {
    return b > a ? b : a;
}

inline Lanes Magnitude(Lanes x) {
    return reinterpret_cast<Lanes>(reinterpret_cast<Mask>(x) & ~reinterpret_cast<Mask>(All(-0.0)));
}

inline Lanes SquareRoot(Lanes x) {
#if defined(__AVX512F__)
    // The plain form begins with a register that GCC 12 warns of as uninitialised.
    return _mm512_maskz_sqrt_pd(0xFF, x);
#elif defined(__AVX2__)
    return _mm256_sqrt_pd(x);
#elif defined(__SSE2__)
    return _mm_sqrt_pd(x);
#else
    for (int i = 0; i < kLanes; ++i) {
        x[i] = __builtin_sqrt(x[i]);
    }
    return x;
#endif
}

// Bit i is lane i.
inline unsigned Bits(Mask mask) {
#if defined(__AVX512F__)
    return _mm512_movepi64_mask(reinterpret_cast<__m512i>(mask));
#elif defined(__AVX2__)
    return static_cast<unsigned>(_mm256_movemask_pd(reinterpret_cast<__m256d>(mask)));
#elif defined(__SSE2__)
    return static_cast<unsigned>(_mm_movemask_pd(reinterpret_cast<__m128d>(mask)));
#else
    unsigned bits = 0;
    for (int i = 0; i < kLanes; ++i) {
        bits |= (mask[i] != 0 ? 1U : 0U) << i;
    }
    return bits;
#endif
}

inline bool AreAll(unsigned bits) {
    constexpr unsigned kAll = (1U << kLanes) - 1;
    return (bits & kAll) == kAll;
}

// Bit i: a is less than b in lane i.
inline unsigned BitsBelow(Lanes a, Lanes b) {
#if defined(__AVX512F__)
    return _mm512_cmp_pd_mask(a, b, _CMP_LT_OQ);
#else
    return Bits(a < b);
#endif
}

// Bit i: a is not more than b in lane i.
inline unsigned BitsAtMost(Lanes a, Lanes b) {
#if defined(__AVX512F__)
    return _mm512_cmp_pd_mask(a, b, _CMP_LE_OQ);
#else
    return Bits(a <= b);
#endif
}

// Bit i: lane i is neither infinite nor NaN.
inline unsigned BitsFinite(Lanes x) {
#if defined(__AVX512F__)
    constexpr int kInfinityOrNaN = 0x99;
    return 0xFFU & ~_mm512_fpclass_pd_mask(x, kInfinityOrNaN);
#else
    return Bits(x * 0.0 == 0.0);
#endif
}

// a * b + c, rounded once or twice, whichever the processor does fastest. Only for numbers that an
// error bound covers, never for a result.
inline Lanes MultiplyAdd(Lanes a, Lanes b, Lanes c) {
#if defined(__AVX512F__)
    return _mm512_fmadd_pd(a, b, c);
#elif defined(__FMA__)
    return _mm256_fmadd_pd(a, b, c);
#else
    return a * b + c;
#endif
}

// Has x in a register from here on. GCC would load it again for each use, or long before the first.
inline void Hold(Lanes& x) {
#if defined(__AVX512F__)
    __asm__("" : "+v"(x));
#elif defined(__SSE2__)
    __asm__("" : "+x"(x));
#else
    static_cast<void>(x);
#endif
}

inline Lanes LoadLanes(const double* from) {
    Lanes result;
    __builtin_memcpy(&result, from, sizeof result);
    Hold(result);
    return result;
}

// The same number in all lanes.
inline Lanes LoadOne(const double& from) {
    Lanes result = All(from);
    Hold(result);
    return result;
}

inline void StoreLanes(double* to, Lanes x) {
    __builtin_memcpy(to, &x, sizeof x);
}

// Stores past the caches, at an aligned address.
inline void StreamLanes(double* to, Lanes x) {
#if defined(__AVX512F__)
    _mm512_stream_pd(to, x);
#elif defined(__AVX2__)
    _mm256_stream_pd(to, x);
#elif defined(__SSE2__)
    _mm_stream_pd(to, x);
#else
    StoreLanes(to, x);
#endif
}

// Makes streamed results visible to other threads before whatever is stored later.
inline void EndStreaming() {
#if defined(__SSE2__)
    _mm_sfence();
#endif
}

// Writes the lowest bits as bytes.
template <unsigned count = kFull>
void StoreBits(unsigned char* answers, unsigned bits) {
    constexpr unsigned kAtOnce = 8;
    for (unsigned i = 0; i < count; i += kAtOnce) {
        // Byte i of eight copies keeps bit i alone. Adding 127 carries into the byte's top bit
        // unless it is 0.
        const unsigned long long copies = (bits >> i & 0xFFU) * 0x0101010101010101ULL;
        const unsigned long long chosen = copies & 0x8040201008040201ULL;
        const unsigned long long bytes =
            (chosen + 0x7F7F7F7F7F7F7F7FULL) >> 7U & 0x0101010101010101ULL;
        __builtin_memcpy(answers + i, &bytes, count - i < kAtOnce ? count - i : kAtOnce);
    }
}

}  // namespace
}  // namespace kvgeom::detail
