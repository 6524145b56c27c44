// SPDX-License-Identifier: MIT
#pragma once

// The numbers of several elements side by side, and the ways from arrays of records to them and
// back. The sources that include this are compiled for different processors: everything here is
// their own (an unnamed namespace), lest the linker give one the code of another, and they call no
// inline function of other headers.

#include <kvgeom/batch/kernels.h>
#include <kvgeom/boxes/box.h>
#include <kvgeom/points/position.h>

#if defined(__SSE2__)
#include <immintrin.h>
#endif

#include <utility>

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
// Of each lane all bits or none, as comparisons give it.
typedef decltype(Lanes() < Lanes()) Mask;

// As many elements as there are lanes, or fewer at the end of an array.
constexpr unsigned kFull = kLanes;

inline Lanes All(double x) {
    return x - Lanes{};
}

// As Smaller and Larger of the kernel.
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

// a * b + c, rounded once or twice, as the processor does it best: for what an error bound covers,
// and never for a number that is given out.
inline Lanes MultiplyAdd(Lanes a, Lanes b, Lanes c) {
#if defined(__AVX512F__)
    return _mm512_fmadd_pd(a, b, c);
#elif defined(__FMA__)
    return _mm256_fmadd_pd(a, b, c);
#else
    return a * b + c;
#endif
}

struct Triples {
    Lanes x;
    Lanes y;
    Lanes z;
};

struct Corners {
    Triples low;
    Triples high;
};

// Component k of kLanes triples: numbers k, k + 3, k + 6, ... of three vectors one after the other.
template <int k, int... lane>
Lanes Take(Lanes a, Lanes b, Lanes c, std::integer_sequence<int, lane...>) {
    constexpr int kTwo = 2 * kLanes;
    const Lanes from_two =
        __builtin_shufflevector(a, b, (3 * lane + k < kTwo ? 3 * lane + k : 0)...);
    return __builtin_shufflevector(from_two, c,
                                   (3 * lane + k < kTwo ? lane : 3 * lane + k - kLanes)...);
}

// Vector k of the three that kLanes triples make.
template <int k, int... lane>
Lanes Give(const Triples& t, std::integer_sequence<int, lane...>) {
    constexpr int kFirst = k * kLanes;
    const Lanes x_and_y =
        __builtin_shufflevector(t.x, t.y,
                                ((kFirst + lane) % 3 == 0   ? (kFirst + lane) / 3
                                 : (kFirst + lane) % 3 == 1 ? kLanes + (kFirst + lane) / 3
                                                            : 0)...);
    return __builtin_shufflevector(
        x_and_y, t.z, ((kFirst + lane) % 3 == 2 ? kLanes + (kFirst + lane) / 3 : lane)...);
}

// The lanes of even and of odd numbers, of two vectors one after the other.
template <int odd, int... lane>
Lanes TakeEverySecond(Lanes a, Lanes b, std::integer_sequence<int, lane...>) {
    return __builtin_shufflevector(a, b, (2 * lane + odd)...);
}

// Half of what two vectors give when their lanes take turns.
template <int half, int... lane>
Lanes TakeTurns(Lanes a, Lanes b, std::integer_sequence<int, lane...>) {
    return __builtin_shufflevector(a, b, (lane % 2 * kLanes + (half * kLanes + lane) / 2)...);
}

constexpr auto kEach = std::make_integer_sequence<int, kLanes>();

inline Lanes LoadLanes(const double* from) {
    Lanes result;
    __builtin_memcpy(&result, from, sizeof result);
    // Into a register: GCC would rather load it again for each use.
#if defined(__AVX512F__)
    __asm__("" : "+v"(result));
#elif defined(__SSE2__)
    __asm__("" : "+x"(result));
#endif
    return result;
}

inline void StoreLanes(double* to, Lanes x) {
    __builtin_memcpy(to, &x, sizeof x);
}

// Past the caches, to where a vector is aligned.
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

// After streaming, so that what is stored later isn't seen earlier.
inline void EndStreaming() {
#if defined(__SSE2__)
    _mm_sfence();
#endif
}

inline Triples LoadTriples(const double* from) {
    const Lanes a = LoadLanes(from);
    const Lanes b = LoadLanes(from + kLanes);
    const Lanes c = LoadLanes(from + 2 * kLanes);
    return {Take<0>(a, b, c, kEach), Take<1>(a, b, c, kEach), Take<2>(a, b, c, kEach)};
}

inline void StoreTriples(double* to, const Triples& t, bool streams) {
    const Lanes vectors[3] = {Give<0>(t, kEach), Give<1>(t, kEach), Give<2>(t, kEach)};
    for (int i = 0; i < 3; ++i) {
        if (streams) {
            StreamLanes(to + i * kLanes, vectors[i]);
        } else {
            StoreLanes(to + i * kLanes, vectors[i]);
        }
    }
}

// Low and high corners take turns in an array of boxes.
inline Corners LoadCorners(const double* from) {
    const Triples p = LoadTriples(from);
    const Triples q = LoadTriples(from + 3 * kLanes);
    return {{TakeEverySecond<0>(p.x, q.x, kEach), TakeEverySecond<0>(p.y, q.y, kEach),
             TakeEverySecond<0>(p.z, q.z, kEach)},
            {TakeEverySecond<1>(p.x, q.x, kEach), TakeEverySecond<1>(p.y, q.y, kEach),
             TakeEverySecond<1>(p.z, q.z, kEach)}};
}

inline void StoreCorners(double* to, const Corners& c, bool streams) {
    StoreTriples(to,
                 {TakeTurns<0>(c.low.x, c.high.x, kEach), TakeTurns<0>(c.low.y, c.high.y, kEach),
                  TakeTurns<0>(c.low.z, c.high.z, kEach)},
                 streams);
    StoreTriples(to + 3 * kLanes,
                 {TakeTurns<1>(c.low.x, c.high.x, kEach), TakeTurns<1>(c.low.y, c.high.y, kEach),
                  TakeTurns<1>(c.low.z, c.high.z, kEach)},
                 streams);
}

template <class Record>
Triples Load(const Record* records) {
    return LoadTriples(reinterpret_cast<const double*>(records));
}
inline Corners Load(const GBox* boxes) {
    return LoadCorners(reinterpret_cast<const double*>(boxes));
}

template <class Record>
void Store(Record* records, const Triples& t, bool streams) {
    StoreTriples(reinterpret_cast<double*>(records), t, streams);
}
inline void Store(GBox* boxes, const Corners& c, bool streams) {
    StoreCorners(reinterpret_cast<double*>(boxes), c, streams);
}

// Writes the bits of kLanes answers as bytes.
inline void StoreBits(unsigned char* answers, unsigned bits) {
    // Bit i stays in byte i of eight copies, and its carry out of 7 bits is the answer.
    const unsigned long long copies = (bits & 0xFFU) * 0x0101010101010101ULL;
    const unsigned long long chosen = copies & 0x8040201008040201ULL;
    const unsigned long long bytes = (chosen + 0x7F7F7F7F7F7F7F7FULL) >> 7U & 0x0101010101010101ULL;
    __builtin_memcpy(answers, &bytes, kLanes);
}

template <class Record>
bool IsAligned(const Record* record) {
    return reinterpret_cast<unsigned long long>(record) % sizeof(Lanes) == 0;
}

// How many records come before one where a vector is aligned, if there is one: vectors that begin
// elsewhere may cross a cache line each, and then take twice the time.
template <class Record>
unsigned CountUnaligned(const Record* records) {
    const auto address = reinterpret_cast<unsigned long long>(records);
    for (unsigned i = 1; i < kFull; ++i) {
        if ((address + i * sizeof(Record)) % sizeof(Lanes) == 0) {
            return i;
        }
    }
    return 0;
}

// Whether results that go elsewhere are so many that the caches would only read, keep and write
// back what nobody asks for.
template <class Record>
bool ShallStream(const Record* in, unsigned long count, const Record* out) {
    const bool is_apart = out + count <= in || in + count <= out;
    const auto first =
        reinterpret_cast<unsigned long long>(out) + CountUnaligned(out) * sizeof(Record);
    return is_apart && first % sizeof(Lanes) == 0 &&
           static_cast<double>(count) * 2 * sizeof(Record) > g_cache_size;
}

// Fewer elements than there are lanes: a group made of them and of as many of the first as it
// takes.
template <unsigned size, class Record, class Out, class Group, class Each>
[[gnu::noinline]] void ForPartOfGroup(const Record* in, unsigned n, Out* out, Group group,
                                      Each each) {
    Record elements[size];
    Out results[size];
    for (unsigned k = 0; k < size; ++k) {
        elements[k] = in[k < n ? k : 0];
    }
    if (group(elements, results)) {
        __builtin_memcpy(out, results, n * sizeof(Out));
    } else {
        each(in, n, out);
    }
}

// Makes one result of each element, of `size` elements at a time: either group(in, out) makes the
// results of all of these and returns true, or, where it returns false, each(in, n, out) makes them
// one by one. Elements have their turn in order, groups begin where
// vectors of the aligned array are aligned, if that pays, and out may be in.
//
// The loop over groups has no calls in it: they would cost it all its registers.
template <unsigned size = kFull, class Record, class Out, class Aligned, class Group, class Each>
void ForGroups(const Record* in, unsigned long count, Out* out, const Aligned* aligned, Group group,
               Each each) {
    constexpr unsigned long kWorthAligning = 16 * kFull;
    unsigned long i = 0;
    if (count >= kWorthAligning) {
        const unsigned unaligned = CountUnaligned(aligned);
        if (unaligned != 0) {
            ForPartOfGroup<size>(in, unaligned, out, group, each);
            i = unaligned;
        }
    }
    for (;;) {
        while (count - i >= size && group(in + i, out + i)) {
            i += size;
        }
        if (count - i < size) {
            break;
        }
        each(in + i, size, out + i);
        i += size;
    }
    if (i < count) {
        ForPartOfGroup<size>(in + i, static_cast<unsigned>(count - i), out + i, group, each);
    }
}

}  // namespace
}  // namespace kvgeom::detail
