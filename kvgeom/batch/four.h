// SPDX-License-Identifier: MIT
#pragma once

// Four numbers side by side: a row of a map.

#include <kvgeom/batch/lanes.h>

namespace kvgeom::detail {
namespace {

// In as many vectors as they take.
constexpr int kPartLanes = kLanes > 4 ? 4 : kLanes;
constexpr int kParts = 4 / kPartLanes;
typedef double Part __attribute__((vector_size(kPartLanes * sizeof(double))));
typedef decltype(Part() < Part()) PartMask;
struct Four {
    Part parts[kParts];
};

inline Four LoadFour(const double* from) {
    Four result;
    __builtin_memcpy(&result, from, sizeof result);
    return result;
}
inline void StoreFour(double* to, const Four& x) {
    __builtin_memcpy(to, &x, sizeof x);
}

inline Four operator*(double f, const Four& x) {
    Four result;
    for (int i = 0; i < kParts; ++i) {
        result.parts[i] = f * x.parts[i];
    }
    return result;
}
inline Four operator+(const Four& x, const Four& y) {
    Four result;
    for (int i = 0; i < kParts; ++i) {
        result.parts[i] = x.parts[i] + y.parts[i];
    }
    return result;
}
inline Four operator-(const Four& x, const Four& y) {
    Four result;
    for (int i = 0; i < kParts; ++i) {
        result.parts[i] = x.parts[i] - y.parts[i];
    }
    return result;
}
inline Four operator/(const Four& x, double f) {
    Four result;
    for (int i = 0; i < kParts; ++i) {
        result.parts[i] = x.parts[i] / f;
    }
    return result;
}

inline Four Magnitude(const Four& x) {
    constexpr Part kSigns = -Part{};
    Four result;
    for (int i = 0; i < kParts; ++i) {
        result.parts[i] = reinterpret_cast<Part>(reinterpret_cast<PartMask>(x.parts[i]) &
                                                 ~reinterpret_cast<PartMask>(kSigns));
    }
    return result;
}

// As Larger of the kernel.
inline Four Larger(const Four& x, const Four& y) {
    Four result;
    for (int i = 0; i < kParts; ++i) {
        result.parts[i] = y.parts[i] > x.parts[i] ? y.parts[i] : x.parts[i];
    }
    return result;
}

// Of numbers without NaN.
inline double Largest(const Four& x) {
    const auto larger = [](double a, double b) { return b > a ? b : a; };
    const Part& first = x.parts[0];
    const Part& last = x.parts[kParts - 1];
    return larger(larger(first[0], first[1]), larger(last[kPartLanes - 2], last[kPartLanes - 1]));
}

// Bit i: number i is the given one.
inline unsigned BitsEqual(const Four& x, double number) {
#if defined(__AVX2__)
    return static_cast<unsigned>(
        _mm256_movemask_pd(reinterpret_cast<__m256d>(x.parts[0] == number)));
#elif defined(__SSE2__)
    const int low = _mm_movemask_pd(reinterpret_cast<__m128d>(x.parts[0] == number));
    const int high = _mm_movemask_pd(reinterpret_cast<__m128d>(x.parts[1] == number));
    return static_cast<unsigned>(low | high << 2);
#else
    unsigned bits = 0;
    for (int i = 0; i < 4; ++i) {
        bits |= (x.parts[i / kPartLanes][i % kPartLanes] == number ? 1U : 0U) << i;
    }
    return bits;
#endif
}

}  // namespace
}  // namespace kvgeom::detail
