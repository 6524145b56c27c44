// SPDX-License-Identifier: MIT

// A program whose heap can be made to refuse what the library asks for.

#include "tests/support/messages.h"
#include "tests/support/records.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstdlib>
#include <new>

namespace {

// So that how large a block is refused doesn't depend on the machine: a count of points has 32 bits
// on Windows, and there may be memory for as many.
constexpr std::size_t kLargestBlock = std::size_t{1} << 30U;

int g_requests_granted = INT_MAX;
int g_blocks_in_use = 0;

}  // namespace

// The library asks in this form alone; all others go their usual way.
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
    if (g_requests_granted-- <= 0 || size > kLargestBlock) {
        return nullptr;
    }
    ++g_blocks_in_use;
    return std::malloc(size);
}

void operator delete[](void* block) noexcept {
    g_blocks_in_use -= block != nullptr ? 1 : 0;
    std::free(block);
}

void operator delete[](void* block, std::size_t) noexcept {
    operator delete[](block);
}

void* operator new[](std::size_t size) {
    ++g_blocks_in_use;
    return std::malloc(size);
}

namespace kvgeom::test {
namespace {

// A polygon of so many points, closed.
std::vector<GPosition> Polygon(unsigned long count) {
    std::vector<GPosition> points;
    for (unsigned long i = 0; i < count; ++i) {
        const double angle = 2 * kPi * static_cast<double>(i) / static_cast<double>(count - 1);
        points.push_back({std::cos(angle), std::sin(angle), 0});
    }
    points.back() = points.front();
    return points;
}

struct Outcome {
    int meets;
    GBox ranges[3];
    Messages messages;
    int requests;
};

// Every operation with scratch memory on a polygon of count points, each granted so many requests.
Outcome RunAll(unsigned long count, int granted) {
    std::vector<GPosition> points = Polygon(count);
    const GPtFence fence = {count, points.data(), kZ, 2, -1};
    MessageRecorder recorder;
    const int before = g_blocks_in_use;
    Outcome outcome = {};
    const auto with_requests = [&outcome, granted](auto operation) {
        g_requests_granted = granted;
        const auto result = operation();
        outcome.requests += granted - g_requests_granted;
        g_requests_granted = INT_MAX;
        return result;
    };
    outcome.meets = with_requests([&] { return fence && BuildBox(0, 0, 0, 1, 1, 1); });
    outcome.ranges[0] = with_requests([&] { return PtFenceRange(fence); });
    outcome.ranges[1] = with_requests([&] { return PtFrustumRange({fence, {0, 0, -3}}); });
    outcome.ranges[2] = with_requests([&] {
        return RtPrismRange({ScaleTransf(2), points.data(), count, 3});
    });
    outcome.messages = recorder.Take();
    EXPECT_EQ(g_blocks_in_use, before) << "scratch memory is given back on every path";
    return outcome;
}

TEST(NoMemory, IsNeededOnlyBeyondTheFixedSizes) {
    const struct {
        unsigned long count;
        int requests;
    } rows[] = {{4, 0}, {6, 0}, {7, 2}, {100, 2}, {101, 5}, {150, 5}};
    for (const auto& row : rows) {
        EXPECT_EQ(RunAll(row.count, 10).requests, row.requests) << row.count;
        EXPECT_EQ(RunAll(row.count, 10).messages, Messages{});
    }
}

TEST(NoMemory, GivesTheStatedFallbacks) {
    const Outcome granted = RunAll(150, 10);
    EXPECT_EQ(granted.meets, 1);
    EXPECT_NEAR(granted.ranges[0].m_high.m_z, 2, 1e-15);
    for (const int requests : {0, 1}) {
        const Outcome refused = RunAll(150, requests);
        EXPECT_EQ(refused.meets, 0);
        EXPECT_EQ(refused.messages, Messages{"PtFence&&: no memory"});
        for (const GBox& range : refused.ranges) {
            if (requests == 0) {
                EXPECT_EQ(Numbers(range), std::vector<double>(6, 0.0));
            }
        }
    }
    // Counts whose planes no memory could hold, or whose number overflows.
    std::vector<GPosition> points = Polygon(4);
    MessageRecorder recorder;
    for (const unsigned long count : {ULONG_MAX, ULONG_MAX - 1, ULONG_MAX / 2 + 1}) {
        const GPtFence fence = {count, points.data(), kZ, 2, -1};
        EXPECT_EQ(fence && BuildBox(0, 0, 0, 1, 1, 1), 0);
        EXPECT_EQ(recorder.Take(), Messages{"PtFence&&: no memory"});
        EXPECT_EQ(Numbers(PtFenceRange(fence)), std::vector<double>(6, 0.0));
    }
}

}  // namespace
}  // namespace kvgeom::test
