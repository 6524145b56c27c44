// SPDX-License-Identifier: MIT

// A program whose heap can be made to refuse what the library asks for.

#include "tests/support/messages.h"
#include "tests/support/records.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <new>

namespace {

// So that how large a block is refused doesn't depend on the machine: a count of points has 32 bits
// on Windows, and there may be memory for as many.
constexpr std::size_t kLargestBlock = std::size_t{1} << 30U;

int g_requests_granted = INT_MAX;
int g_blocks_in_use = 0;
int g_blocks_written_beyond = 0;

// Blocks begin with their size, and end with bytes that stay as they are.
constexpr std::size_t kHead = 16;
constexpr std::size_t kTail = 256;
constexpr char kUntouched = 'u';

void* Allocate(std::size_t size) {
    auto* const block = static_cast<char*>(std::malloc(kHead + size + kTail));
    if (block == nullptr) {
        std::abort();
    }
    ++g_blocks_in_use;
    std::memcpy(block, &size, sizeof size);
    std::memset(block + kHead + size, kUntouched, kTail);
    return block + kHead;
}

void Free(void* records) {
    if (records == nullptr) {
        return;
    }
    --g_blocks_in_use;
    char* const block = static_cast<char*>(records) - kHead;
    std::size_t size;
    std::memcpy(&size, block, sizeof size);
    const char* const tail = block + kHead + size;
    g_blocks_written_beyond +=
        std::count(tail, tail + kTail, kUntouched) == std::ptrdiff_t{kTail} ? 0 : 1;
    std::free(block);
}

}  // namespace

// The library asks in this form alone; all others go their usual way.
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
    if (g_requests_granted-- <= 0 || size > kLargestBlock) {
        return nullptr;
    }
    return Allocate(size);
}

void operator delete[](void* block) noexcept {
    Free(block);
}

void operator delete[](void* block, std::size_t) noexcept {
    operator delete[](block);
}

void* operator new[](std::size_t size) {
    return Allocate(size);
}

namespace kvgeom::test {
namespace {

// A closed profile of so many points.
std::vector<GPosition> Profile(unsigned long count) {
    std::vector<GPosition> points(count);
    for (unsigned long i = 1; i + 1 < count; ++i) {
        const double t = static_cast<double>(i);
        points[i] = {t, t * t, 0};
    }
    return points;
}

struct Outcome {
    int requests;
    int meets;
    std::array<GBox, 3> ranges;
    Messages messages;
};

// Every operation with scratch memory on a profile, granted so many requests together.
Outcome RunAll(unsigned long count, int granted) {
    std::vector<GPosition> points = Profile(count);
    const GPtFence fence = {count, points.data(), kZ, 2, -1};
    const GRtPrism prism = {ScaleTransf(2), points.data(), count, 3};
    MessageRecorder recorder;
    Outcome outcome;
    const int before = g_blocks_in_use;
    g_requests_granted = granted;
    outcome.meets = fence && BuildBox(1, 1, 0, 2, 4, 1);
    outcome.ranges = {PtFenceRange(fence), PtFrustumRange({fence, {0, 0, -3}}),
                      RtPrismRange(prism)};
    outcome.requests = granted - g_requests_granted;
    EXPECT_EQ(g_blocks_in_use, before) << "scratch memory is given back on every path";
    EXPECT_EQ(g_blocks_written_beyond, 0);
    outcome.messages = recorder.Take();
    return outcome;
}

TEST(NoMemory, IsNeededOnlyBeyondTheFixedSizes) {
    const std::pair<unsigned long, int> rows[] = {{4, 0},   {6, 0},   {7, 2},
                                                  {100, 2}, {101, 5}, {150, 5}};
    for (const auto& [count, requests] : rows) {
        const Outcome outcome = RunAll(count, 10);
        EXPECT_EQ(outcome.requests, requests) << count;
        EXPECT_EQ(outcome.messages, Messages{});
        EXPECT_EQ(outcome.meets, 1);
        EXPECT_EQ(outcome.ranges[0].m_high.m_z, 2);
    }
}

TEST(NoMemory, GivesTheStatedFallbacks) {
    const Messages no_memory = {"PtFence&&: no memory"};
    for (const int requests : {0, 1}) {
        const Outcome refused = RunAll(150, requests);
        EXPECT_EQ(refused.meets, 0);
        EXPECT_EQ(refused.messages, no_memory);
        for (const GBox& range : refused.ranges) {
            EXPECT_EQ(Numbers(range), std::vector<double>(6, 0.0));
        }
    }
    // Counts whose planes no memory could hold, or whose number overflows.
    std::vector<GPosition> points = Profile(4);
    MessageRecorder recorder;
    g_requests_granted = INT_MAX;
    for (const unsigned long count : {ULONG_MAX, ULONG_MAX - 1, ULONG_MAX / 2 + 1}) {
        const GPtFence fence = {count, points.data(), kZ, 2, -1};
        recorder.Expect(fence && BuildBox(0, 0, 0, 1, 1, 1), {0}, no_memory);
        recorder.Expect(PtFenceRange(fence), std::vector<double>(6, 0.0));
    }
}

}  // namespace
}  // namespace kvgeom::test
