// SPDX-License-Identifier: MIT
#pragma once

#include <stdexcept>
#include <string>

namespace kvprobe {

/// What stops the program with one line on standard error and status 2: the argument at fault, and
/// what is wrong with it.
class Failure : public std::runtime_error {
  public:
    Failure(const std::string& argument, const std::string& what)
        : std::runtime_error(argument + ": " + what) {}
};

}  // namespace kvprobe
