// SPDX-License-Identifier: MIT

// Every operation in surroundings that a host application may bring about: other threads, settings
// that change meanwhile, other rounding modes, denormal numbers taken for zero.

#include "tests/operations/invoke.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <cfenv>
#include <string_view>
#include <thread>

#ifdef __SSE2__
#include <xmmintrin.h>
#endif

namespace kvgeom::test {
namespace {

constexpr unsigned kThreads = 4;

bool ChangesSettings(const Operation& operation) {
    const std::string_view name = operation.signature;
    return name.substr(0, 3) == "Set" || name.substr(0, 4) == "Init" ||
           name.substr(0, 5) == "Reset";
}

// The hash of what some calls give, each operation with numbers of its own.
std::uint64_t Call(const Operation& operation, std::uint64_t seed, int calls) {
    Random random(seed);
    Source source(random);
    Result result;
    for (int i = 0; i < calls; ++i) {
        random.WantExtremes(i % 2 == 1);
        operation.call(source, result);
    }
    return result.Hash();
}

template <class Work>
void RunOnThreads(Work work) {
    std::vector<std::thread> threads;
    for (unsigned i = 0; i < kThreads; ++i) {
        threads.emplace_back([=] { work(i); });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
}

class Operations : public testing::Test {
  protected:
    void SetUp() override { SetAssertHook(AddMessage); }
    void TearDown() override {
        SetAssertHook(nullptr);
        ResetSettings();
    }
};

TEST_F(Operations, GiveTheSameOnSeveralThreads) {
    constexpr int kCalls = 40;
    std::vector<Operation> operations;
    std::vector<std::uint64_t> alone;
    for (const Operation& operation : kOperations) {
        if (!ChangesSettings(operation)) {
            operations.push_back(operation);
            alone.push_back(Call(operation, alone.size(), kCalls));
        }
    }
    std::array<std::vector<std::uint64_t>, kThreads> together;
    RunOnThreads([&](unsigned thread) {
        for (size_t i = 0; i < operations.size(); ++i) {
            together[thread].push_back(Call(operations[i], i, kCalls));
        }
    });
    for (const std::vector<std::uint64_t>& hashes : together) {
        for (size_t i = 0; i < operations.size(); ++i) {
            EXPECT_EQ(hashes[i], alone[i]) << operations[i].signature;
        }
    }
}

// What they give is anyone's guess; the thread sanitizer sees to it that nobody else's is.
TEST_F(Operations, MayRunWhileSettingsChange) {
    std::atomic<bool> is_over = false;
    std::thread changer([&is_over] {
        for (unsigned i = 0; !is_over; ++i) {
            long err;
            SetDistanceTolerance(i % 2 == 0 ? 1e-6 : 1e-3, &err);
            SetRelativeTolerance(i % 2 == 0 ? 1e-10 : 1e-8, &err);
            SetFitTolerance(i % 2 == 0 ? 1e-3 : 1e-2, &err);
            SetAssertHook(i % 3 == 0 ? nullptr : AddMessage);
        }
    });
    RunOnThreads([](unsigned thread) {
        for (const Operation& operation : kOperations) {
            Call(operation, thread, 100);
        }
    });
    is_over = true;
    changer.join();
}

// Sets how this thread's processor rounds, and whether it takes denormal numbers for zero.
class FloatingPointMode {
  public:
    FloatingPointMode(int rounding, bool flushes) {
        std::fegetenv(&m_before);
        std::fesetround(rounding);
#ifdef __SSE2__
        constexpr unsigned kDenormalsAreZero = 0x40;
        _mm_setcsr(_mm_getcsr() | (flushes ? _MM_FLUSH_ZERO_ON | kDenormalsAreZero : 0U));
#else
        static_cast<void>(flushes);
#endif
    }
    ~FloatingPointMode() {
        std::fesetenv(&m_before);
#ifdef __SSE2__
        // The C library for Windows leaves it as it is.
        _mm_setcsr(m_sse_before);
#endif
    }
    FloatingPointMode(const FloatingPointMode&) = delete;
    FloatingPointMode& operator=(const FloatingPointMode&) = delete;

  private:
    std::fenv_t m_before;
#ifdef __SSE2__
    unsigned m_sse_before = _mm_getcsr();
#endif
};

TEST_F(Operations, EndInEveryRoundingModeWithAndWithoutDenormals) {
    for (const int rounding : {FE_TONEAREST, FE_UPWARD, FE_DOWNWARD, FE_TOWARDZERO}) {
        for (const bool flushes : {false, true}) {
            const FloatingPointMode mode(rounding, flushes);
            for (const Operation& operation : kOperations) {
                Call(operation, 1, 100);
                ASSERT_EQ(std::fegetround(), rounding) << operation.signature;
            }
        }
    }
}

}  // namespace
}  // namespace kvgeom::test
