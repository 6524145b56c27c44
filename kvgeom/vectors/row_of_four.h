// SPDX-License-Identifier: MIT
#pragma once

// Four numbers side by side, as the rows of maps hold them.

#include <kvgeom/vectors/lanes.h>

namespace kvgeom::detail {
namespace {

// One vector of four, or two of two.
constexpr int kPartLanes = kLanes > 4 ? 4 : kLanes;
constexpr int kParts = 4 / kPartLanes;
typedef double RowPart __attribute__((vector_size(kPartLanes * sizeof(double))));
typedef decltype(RowPart() < RowPart()) RowPartMask;
struct RowOfFour {
    RowPart parts[kParts];
};

inline RowOfFour LoadRow(const double* from) {
    RowOfFour result;
    __builtin_memcpy(&result, from, sizeof result);
    return result;
}
inline void StoreRow(double* to, const RowOfFour& x) {
    __builtin_memcpy(to, &x, sizeof x);
}

inline RowOfFour operator*(double f, const RowOfFour& x) {
    RowOfFour result;
    for (int i = 0; i < kParts; ++i) {
        result.parts[i] = f * x.parts[i];
    }
    return result;
}
inline RowOfFour operator+(const RowOfFour& x, const RowOfFour& y) {
    RowOfFour result;
    for (int i = 0; i < kParts; ++i) {
        result.parts[i] = x.parts[i] + y.parts[i];
    }
    return result;
}
inline RowOfFour operator-(const RowOfFour& x, const RowOfFour& y) {
    RowOfFour result;
    for (int i = 0; i < kParts; ++i) {
        result.parts[i] = x.parts[i] - y.parts[i];
    }
    return result;
}
inline RowOfFour operator/(const RowOfFour& x, double f) {
    RowOfFour result;
    for (int i = 0; i < kParts; ++i) {
        result.parts[i] = x.parts[i] / f;
    }
    return result;
}

inline RowOfFour Magnitude(const RowOfFour& x) {
    constexpr RowPart kSigns = -RowPart{};
    RowOfFour result;
    for (int i = 0; i < kParts; ++i) {
        result.parts[i] = reinterpret_cast<RowPart>(reinterpret_cast<RowPartMask>(x.parts[i]) &
                                                    ~reinterpret_cast<RowPartMask>(kSigns));
    }
    return result;
}

// As Larger of extremes.h.
inline RowOfFour Larger(const RowOfFour& x, const RowOfFour& y) {
    RowOfFour result;
    for (int i = 0; i < kParts; ++i) {
        result.parts[i] = y.parts[i] > x.parts[i] ? y.parts[i] : x.parts[i];
    }
    return result;
}

// None of the numbers is NaN.
inline double Largest(const RowOfFour& x) {
    const auto larger = [](double a, double b) { return b > a ? b : a; };
    const RowPart& first = x.parts[0];
    const RowPart& last = x.parts[kParts - 1];
    return larger(larger(first[0], first[1]), larger(last[kPartLanes - 2], last[kPartLanes - 1]));
}

// Bit i: number i equals the given one.
inline unsigned BitsEqual(const RowOfFour& x, double number) {
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
