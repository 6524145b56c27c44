// SPDX-License-Identifier: MIT
#pragma once

// Loops over arrays of records, a group at a time: as many records as there are lanes, or a
// multiple of that.

#include <kvgeom/vectors/choice.h>
#include <kvgeom/vectors/count_ones.h>
#include <kvgeom/vectors/triples.h>

namespace kvgeom::detail {
namespace {

template <class Record>
bool IsAligned(const Record* record) {
    return reinterpret_cast<unsigned long long>(record) % sizeof(Lanes) == 0;
}

// How many records come before the first one whose address is aligned as vectors are; 0 if there is
// none. A vector that isn't aligned may cross a cache line, which takes twice the time.
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

// Whether to stream the results past the caches: they don't overwrite the records, and there are
// more of both than the caches hold. Stored through the caches, the memory that they overwrite
// would be read first.
template <class Record>
bool ShallStream(const Record* in, unsigned long count, const Record* out) {
    const bool is_apart = out + count <= in || in + count <= out;
    const auto first =
        reinterpret_cast<unsigned long long>(out) + CountUnaligned(out) * sizeof(Record);
    return is_apart && first % sizeof(Lanes) == 0 &&
           static_cast<double>(count) * 2 * sizeof(Record) > g_cache_size;
}

// Fewer elements than a group has: the rest of the group is filled with copies of the first one.
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

// Computes a result for each element, `size` elements at a time. group(in, out) computes the
// results of a whole group and returns true; where it returns false, each(in, n, out) computes them
// one by one. Elements are taken in their order, and out may be in. In a long array, groups begin
// where vectors of the array `aligned` are aligned.
//
// The inner loop contains no calls, because every call would make it save and load its registers.
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

// Tests the records group by group, by a test of lanes. Returns how many pass.
template <class Record, class Test>
unsigned long TestGroups(const Record* records, unsigned long count, unsigned char* answers,
                         Test test) {
    const auto test_group = [=](const Record* in, unsigned char* out) {
        StoreBits(out, Bits(test(Load(in))));
        return true;
    };
    ForGroups(records, count, answers, records, test_group,
              [](const Record*, unsigned, unsigned char*) {});
    return CountOnes(answers, count);
}

}  // namespace
}  // namespace kvgeom::detail
