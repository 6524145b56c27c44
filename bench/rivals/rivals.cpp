// SPDX-License-Identifier: MIT
#include "libraries.h"

std::vector<bench::Rival> bench::BENCH_BUILD::Rivals() {
    return {EigenRival(), EigenTransformRival(), ImathRival(), OcctRival(), CgalRival()};
}
