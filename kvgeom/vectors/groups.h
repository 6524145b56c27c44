// SPDX-License-Identifier: MIT
#pragma once

// Arrays of records, a group of them at a time: as many as there are lanes, or a multiple.

#include <kvgeom/vectors/choice.h>
#include <kvgeom/vectors/count_ones.h>
#include <kvgeom/vectors/triples.h>

namespace kvgeom::detail {
namespace {

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

// The answers of a test of lanes for each record, and the number of those that pass.
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
