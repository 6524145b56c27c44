// SPDX-License-Identifier: MIT
#pragma once

// The libraries that kvgeom is compared with. Their sources are compiled twice, each time into a
// shared library of its own, so that templates and inline functions of the one build never stand in
// for those of the other.

#include "../task.h"

#include <vector>

namespace bench {

struct Rival {
    const char* name;
    const char* version;
    PrepareFunction prepare;
};

// As it would be distributed, and for the machine that compiles it.
namespace distributed {
__attribute__((visibility("default"))) std::vector<Rival> Rivals();
}
namespace native {
__attribute__((visibility("default"))) std::vector<Rival> Rivals();
}

}  // namespace bench
