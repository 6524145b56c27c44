// SPDX-License-Identifier: MIT
#include <kvgeom/vectors/count_ones.h>

namespace kvgeom::detail {

unsigned long CountOnes(const unsigned char* answers, unsigned long count) {
    unsigned long ones = 0;
    for (unsigned long i = 0; i < count; ++i) {
        ones += answers[i] == 1 ? 1 : 0;
    }
    return ones;
}

}  // namespace kvgeom::detail
