// SPDX-License-Identifier: MIT
#include "probe/numbers.h"

#include "probe/failure.h"
#include "probe/text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <fstream>

namespace kvprobe {
namespace {

constexpr double kLargestNumber = 1e30;
// Beyond any sensible line of numbers; a file of another kind is not read to its end.
constexpr size_t kLongestLine = 10000;

std::string Quoted(std::string_view text) {
    return "'" + Shortened(Printable(std::string(text)), 60) + "'";
}

std::string HowMany(std::string_view text, size_t found, size_t wanted) {
    return Quoted(text) + " has " + std::to_string(found) +
           (found == 1 ? " number, not " : " numbers, not ") + std::to_string(wanted);
}

}  // namespace

double ParseNumber(const std::string& argument, std::string_view text) {
    double value = 0;
    const char* const end = text.data() + text.size();
    const std::from_chars_result parsed = std::from_chars(text.data(), end, value);
    if (parsed.ec != std::errc() || parsed.ptr != end) {
        throw Failure(argument, Quoted(text) + " is not a number");
    }
    if (!(std::fabs(value) < kLargestNumber)) {
        throw Failure(argument, Quoted(text) + " is not a number below 1e30");
    }
    return value;
}

std::vector<double> ParseNumbers(const std::string& argument, std::string_view text,
                                 size_t wanted) {
    std::vector<double> numbers;
    for (size_t begin = 0; begin <= text.size();) {
        const size_t end = std::min(text.find(',', begin), text.size());
        numbers.push_back(ParseNumber(argument, text.substr(begin, end - begin)));
        begin = end + 1;
    }
    if (numbers.size() != wanted) {
        throw Failure(argument, HowMany(text, numbers.size(), wanted));
    }
    return numbers;
}

GPosition ParsePosition(const std::string& argument, std::string_view text) {
    const std::vector<double> numbers = ParseNumbers(argument, text, 3);
    return {numbers[0], numbers[1], numbers[2]};
}

GUnitVector ParseDirection(const std::string& argument, std::string_view text) {
    const std::vector<double> v = ParseNumbers(argument, text, 3);
    // Scaled by its largest component first, so that neither tiny nor huge directions are lost.
    const double largest = std::max({std::fabs(v[0]), std::fabs(v[1]), std::fabs(v[2])});
    if (!std::isnormal(largest)) {
        throw Failure(argument, "the direction has no length");
    }
    return BuildUnitVector(v[0] / largest, v[1] / largest, v[2] / largest);
}

std::vector<std::vector<double>> ReadNumberFile(const std::string& path, size_t wanted) {
    std::ifstream file(path);
    if (!file) {
        throw Failure(path, "can't be read");
    }
    std::vector<std::vector<double>> lines;
    size_t line_number = 0;
    for (std::string line; std::getline(file, line);) {
        const std::string place = path + ":" + std::to_string(++line_number);
        if (line.size() > kLongestLine) {
            throw Failure(place, "the line is too long for numbers");
        }
        const std::string_view text = std::string_view(line).substr(0, line.find('#'));
        constexpr const char* kSeparators = ", \t\r";
        std::vector<double> numbers;
        for (size_t begin = text.find_first_not_of(kSeparators); begin != std::string::npos;) {
            const size_t end = std::min(text.find_first_of(kSeparators, begin), text.size());
            numbers.push_back(ParseNumber(place, text.substr(begin, end - begin)));
            begin = text.find_first_not_of(kSeparators, end);
        }
        if (numbers.empty()) {
            continue;
        }
        if (numbers.size() != wanted) {
            throw Failure(place, HowMany(text, numbers.size(), wanted));
        }
        lines.push_back(numbers);
    }
    if (file.bad() || lines.empty()) {
        throw Failure(path, "holds no numbers");
    }
    return lines;
}

}  // namespace kvprobe
