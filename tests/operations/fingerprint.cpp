// SPDX-License-Identifier: MIT

// Calls every exported operation with thousands of arguments, and prints a line for each: a hash
// over all bits that came out, the number of calls, and the operation. With --angles, prints the
// numbers of those that rest on sin, cos or atan2, whose last bits are the C library's affair.
// With --check FINGERPRINTS ANGLES, compares both with what was printed before.

#include "tests/operations/invoke.h"

#include <cinttypes>
#include <fstream>
#include <iostream>
#include <string>

using namespace kvgeom::test;

namespace {

constexpr int kCalls = 10'000;
constexpr int kCallsByAngle = 6;

std::uint64_t Seed(const std::string& text) {
    Result result;
    result.Add(text);
    return result.Hash();
}

void AddSettings(Result& result) {
    result.Add(std::array{GetDistanceTolerance(), GetRelativeTolerance(), GetFitTolerance()});
    for (const int setting :
         {GetValidate(), GetValidLevel(), CheckValidationFlag(3), CheckValidationFlag(7)}) {
        result.Add(setting);
    }
}

// Each operation has numbers of its own: what is added or removed beside it doesn't matter.
std::string Fingerprint(const Operation& operation) {
    Random random(Seed(operation.signature));
    Source source(random);
    Result result;
    result.Keep(operation.is_by_angle ? Result::Keeps::kDoubles : Result::Keeps::kHash);
    for (int i = 0; i < kCalls; ++i) {
        random.WantExtremes(i % 2 == 1);
        ResetSettings();
        operation.call(source, result);
        if (!operation.is_by_angle) {
            AddSettings(result);
        }
    }
    char line[400];
    std::snprintf(line, sizeof line, "%016" PRIx64 " %d %s", result.Hash(), kCalls,
                  operation.signature);
    return line;
}

std::vector<double> NumbersByAngle(const Operation& operation, int call) {
    Random random(Seed(operation.signature) + static_cast<unsigned>(call));
    Source source(random);
    Result result;
    result.Keep(Result::Keeps::kDoubles);
    operation.call(source, result);
    return result.Kept();
}

std::string AngleLine(const std::vector<double>& numbers, const Operation& operation) {
    std::string line;
    for (const double x : numbers) {
        char text[40];
        std::snprintf(text, sizeof text, "%.17g ", x);
        line += text;
    }
    return line + operation.signature;
}

// Within two units in the last place of the largest of them.
bool AreClose(const std::vector<double>& a, const std::vector<double>& b) {
    double largest = 0;
    for (const double x : b) {
        largest = std::max(largest, std::fabs(x));
    }
    for (size_t i = 0; i < a.size(); ++i) {
        if (!(std::fabs(a[i] - b[i]) <= 2 * (Up(largest) - largest)) &&
            !(std::isnan(a[i]) && std::isnan(b[i]))) {
            return false;
        }
    }
    return true;
}

template <class Use>
void ForEachByAngle(Use use) {
    for (const Operation& operation : kOperations) {
        for (int call = 0; operation.is_by_angle && call < kCallsByAngle; ++call) {
            use(operation, NumbersByAngle(operation, call));
        }
    }
}

int Check(const char* fingerprints_path, const char* angles_path) {
    int differences = 0;
    const auto complain = [&differences](const std::string& wanted, const std::string& got) {
        std::cout << "- " << wanted << "\n+ " << got << "\n";
        ++differences;
    };
    std::ifstream fingerprints(fingerprints_path);
    std::string line;
    for (const Operation& operation : kOperations) {
        std::getline(fingerprints, line);
        const std::string got = Fingerprint(operation);
        if (line != got) {
            complain(line, got);
        }
    }
    std::ifstream angles(angles_path);
    ForEachByAngle([&](const Operation& operation, const std::vector<double>& got) {
        std::vector<double> wanted(got.size());
        for (double& x : wanted) {
            std::string word;
            angles >> word;
            x = std::strtod(word.c_str(), nullptr);
        }
        std::getline(angles >> std::ws, line);
        if (line != operation.signature || !AreClose(got, wanted)) {
            complain(AngleLine(wanted, operation), AngleLine(got, operation));
        }
    });
    std::cout << kOperations.size() << " operations, " << differences << " differences\n";
    return differences == 0 && !std::getline(fingerprints, line) && !std::getline(angles, line) ? 0
                                                                                                : 1;
}

}  // namespace

int main(int argc, char** argv) {
    SetAssertHook(AddMessage);
    const std::string mode = argc > 1 ? argv[1] : "";
    if (mode == "--check" && argc == 4) {
        return Check(argv[2], argv[3]);
    }
    if (mode == "--angles") {
        ForEachByAngle([](const Operation& operation, const std::vector<double>& numbers) {
            std::cout << AngleLine(numbers, operation) << "\n";
        });
        return 0;
    }
    for (const Operation& operation : kOperations) {
        std::cout << Fingerprint(operation) << "\n";
    }
}
