// SPDX-License-Identifier: MIT
#include <kvgeom/host/validation_flags.h>

#include <array>
#include <atomic>
#include <cstddef>

namespace {

constinit std::atomic<int> g_validate{1};
constinit std::atomic<int> g_valid_level{0};

// The identifiers that have a flag of their own, in the order of their flags. These begin at the
// second; the first flag serves all other identifiers.
constexpr std::array<unsigned char, 29> kOwnFlags = {
    3,  4,  12,  14,  15,  16,  23,  24,  25,  27,  29,  30,  31,  32, 33,
    40, 50, 103, 104, 105, 112, 115, 116, 125, 127, 140, 145, 150, 151};

constinit std::array<std::atomic<unsigned char>, 1 + kOwnFlags.size()> g_flags{};

std::atomic<unsigned char>& Flag(unsigned char id) {
    for (std::size_t i = 0; i < kOwnFlags.size(); ++i) {
        if (kOwnFlags[i] == id) {
            return g_flags[i + 1];
        }
    }
    return g_flags[0];
}

}  // namespace

#if defined(__GNUC__)
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wignored-qualifiers"
#endif

const int GetValidate() {
    return g_validate.load(std::memory_order_relaxed);
}

const int GetValidLevel() {
    return g_valid_level.load(std::memory_order_relaxed);
}

#if defined(__GNUC__)
#pragma GCC diagnostic pop
#endif

void SetValidate(int value) {
    if (GetValidLevel() == 0) {
        g_validate.store(value, std::memory_order_relaxed);
    }
}

void SetValidLevel(int level) {
    g_valid_level.store(level, std::memory_order_relaxed);
}

int CheckValidationFlag(unsigned char id) {
    return Flag(id).load(std::memory_order_relaxed);
}

void SetValidationFlag(unsigned char id) {
    Flag(id).store(1, std::memory_order_relaxed);
}

void ResetValidationFlag(unsigned char id) {
    Flag(id).store(0, std::memory_order_relaxed);
}

void InitAllValidationFlags() {
    for (std::atomic<unsigned char>& flag : g_flags) {
        flag.store(0, std::memory_order_relaxed);
    }
}
