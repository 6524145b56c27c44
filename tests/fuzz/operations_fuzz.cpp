// SPDX-License-Identifier: MIT

// Sequences of exported operations on arguments made of the input's bytes.

#include "tests/operations/invoke.h"

using namespace kvgeom::test;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr std::size_t kBytesPerCall = 64;
    SetAssertHook(AddMessage);
    Random random(data, size);
    Source source(random);
    Result result;
    for (std::size_t i = 0; i <= size / kBytesPerCall; ++i) {
        kOperations[random.Below(kOperations.size())].call(source, result);
    }
    ResetSettings();
    return 0;
}
