// SPDX-License-Identifier: MIT

// What is chosen when the library is loaded, for every answer that a processor can give.

#include <kvgeom/vectors/choice.h>

#include <gtest/gtest.h>

#include <array>
#include <limits>

namespace kvgeom::detail {
namespace {

TEST(Choice, IsWhatTheProcessorRunsAndIsWanted) {
    // By what is wanted: how many of all processors run the baseline, AVX2, AVX-512.
    struct Wanted {
        const char* name;
        std::array<int, 3> counts;
    };
    for (const Wanted& wanted :
         {Wanted{nullptr, {23, 7, 2}}, Wanted{"avx512", {30, 0, 2}}, Wanted{"avx2", {24, 8, 0}},
          Wanted{"baseline", {32, 0, 0}}, Wanted{"", {32, 0, 0}}, Wanted{"AVX2", {32, 0, 0}}}) {
        std::array<int, 3> counts = {};
        for (unsigned bits = 0; bits < 32; ++bits) {
            const Processor p = {(bits & 1) != 0, (bits & 2) != 0, (bits & 4) != 0, (bits & 8) != 0,
                                 (bits & 16) != 0};
            const Vectors chosen = ChooseVectors(p, wanted.name);
            ++counts[static_cast<size_t>(chosen)];
            EXPECT_TRUE(chosen != Vectors::kAvx2 || (p.avx2 && p.fma)) << bits;
            EXPECT_TRUE(chosen != Vectors::kAvx512 ||
                        (p.fma && p.avx512f && p.avx512dq && p.avx512vl))
                << bits;
        }
        EXPECT_EQ(counts, wanted.counts) << (wanted.name != nullptr ? wanted.name : "anything");
    }
}

TEST(Choice, ReadsTheCachesAsProcessorsTellOfThem) {
    EXPECT_FALSE(IsCache(0));
    EXPECT_FALSE(IsCache(0xFFFFFFE0));
    for (const unsigned type : {1U, 2U, 3U, 0x1C004143U, 16U}) {
        EXPECT_TRUE(IsCache(type)) << type;
    }
    // 32 MiB: 16 ways, 64 bytes a line, 32,768 sets. 1.25 MiB: 20 ways, 1,024 sets. 48 KiB: 12
    // ways, 64 sets.
    EXPECT_EQ(CacheSize(0x03C0003F, 0x7FFF), 32.0 * (1 << 20));
    EXPECT_EQ(CacheSize(0x04C0003F, 0x3FF), 1.25 * (1 << 20));
    EXPECT_EQ(CacheSize(0x02C0003F, 0x3F), 48.0 * (1 << 10));
    // Two partitions; and the largest numbers that there is room for.
    EXPECT_EQ(CacheSize(0x03C0103F, 0x7FFF), 64.0 * (1 << 20));
    EXPECT_EQ(CacheSize(0xFFFFFFFF, 0xFFFFFFFF), 0x1p10 * 0x1p10 * 0x1p12 * 0x1p32);
}

TEST(Choice, TakesTheWantedSizeOfTheCacheIfThatIsOne) {
    EXPECT_EQ(ChooseCacheSize(8e6, nullptr), 8e6);
    EXPECT_EQ(ChooseCacheSize(8e6, "1000"), 1000);
    EXPECT_EQ(ChooseCacheSize(0, "0.5"), 0.5);
    for (const char* none : {"", "0", "-1", "inf", "nan", "much", "1e999"}) {
        EXPECT_EQ(ChooseCacheSize(8e6, none), 8e6) << none;
        EXPECT_EQ(ChooseCacheSize(0, none), 0x1p25) << none;
    }
    EXPECT_EQ(ChooseCacheSize(0, nullptr), 0x1p25);
    EXPECT_EQ(ChooseCacheSize(std::numeric_limits<double>::denorm_min(), nullptr),
              std::numeric_limits<double>::denorm_min());
}

}  // namespace
}  // namespace kvgeom::detail
