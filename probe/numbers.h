// SPDX-License-Identifier: MIT
#pragma once

#include <kvgeom/points/position.h>
#include <kvgeom/points/unit_vector.h>

#include <string>
#include <string_view>
#include <vector>

namespace kvprobe {

// Readers of numbers that people wrote. What is malformed throws Failure with the name of the
// argument, or the file and the line, and the reason. Every number is finite and below 1e30, the
// kernel's infinity, in magnitude.

double ParseNumber(const std::string& argument, std::string_view text);

/// As many numbers as wanted, separated by commas.
std::vector<double> ParseNumbers(const std::string& argument, std::string_view text, size_t wanted);

GPosition ParsePosition(const std::string& argument, std::string_view text);

/// A direction of any length but 0.
GUnitVector ParseDirection(const std::string& argument, std::string_view text);

/// A text file with as many numbers a line as wanted, separated by blanks or commas. Blank lines,
/// and what follows a #, count for nothing.
std::vector<std::vector<double>> ReadNumberFile(const std::string& path, size_t wanted);

}  // namespace kvprobe
