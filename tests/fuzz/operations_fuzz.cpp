// SPDX-License-Identifier: MIT

// Sequences of exported operations on arguments made of the input's bytes.

#include "tests/operations/invoke.h"

#include <kvgeom/kernel/tolerances.h>

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
    long err;
    SetRelativeTolerance(-1, &err);
    SetDistanceTolerance(-1, &err);
    SetFitTolerance(1e-3, &err);
    SetDistanceTolerance(1e-6, &err);
    SetRelativeTolerance(1e-10, &err);
    return 0;
}
