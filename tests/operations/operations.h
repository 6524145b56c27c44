// SPDX-License-Identifier: MIT
#pragma once

#include "tests/operations/result.h"
#include "tests/operations/source.h"

#include <vector>

namespace kvgeom::test {

/// An exported operation, to be called with arguments drawn from a source.
struct Operation {
    const char* signature;
    bool is_by_angle;  ///< rests on sin, cos or atan2
    void (*call)(Source& source, Result& result);
};

/// All of them, made from the list of exports.
extern const std::vector<Operation> kOperations;

}  // namespace kvgeom::test
