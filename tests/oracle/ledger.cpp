// SPDX-License-Identifier: MIT
#include "tests/oracle/ledger.h"

#include <cstdio>
#include <fstream>
#include <sstream>

namespace kvgeom::test {
namespace {

constexpr double kUnit = 0x1p-53;

Entry& EntryOf(const std::string& operation, double bound) {
    const std::string suite = testing::UnitTest::GetInstance()->current_test_suite()->name();
    const std::string dimension = suite.substr(suite.find('/') + 1);  // of Dimension/Space, too
    Entry& entry = Ledger().try_emplace(dimension + ": " + operation, Entry{bound}).first->second;
    EXPECT_EQ(entry.bound, bound) << operation;
    return entry;
}

double ErrorInUnits(const Real& expected, double got) {
    const Quad error = Magnitude(expected.value - Quad(got));
    return error == 0 ? 0 : static_cast<double>(error / (Quad(kUnit) * expected.weight));
}

void Enter(Entry& entry, const std::string& operation, double error) {
    if (!(error <= entry.largest_error)) {
        EXPECT_LE(error, entry.bound) << operation;
        entry.largest_error = error;
    }
}

// The bounds that the manual promises, by the name of test suite and operation: its rows are
// | operation | in space | in the plane |, where a cell may be empty.
std::map<std::string, double> Promises() {
    std::map<std::string, double> promises;
    std::ifstream page(ACCURACY_PAGE);
    for (std::string row; std::getline(page, row);) {
        std::istringstream cells(row);
        std::string edge;
        std::string operation;
        if (!std::getline(cells, edge, '|') || !std::getline(cells, operation, '|')) {
            continue;
        }
        for (const char* const suite : {"Space:", "Plane:"}) {
            std::string cell;
            double bound;
            if (std::getline(cells, cell, '|') && std::istringstream(cell) >> bound) {
                promises[suite + operation.substr(0, operation.find_last_not_of(' ') + 1)] = bound;
            }
        }
    }
    return promises;
}

/// Prints the table, and fails where a bound was never tried, or isn't what is promised.
class Report : public testing::Environment {
  public:
    void TearDown() override {
        const std::map<std::string, double> promises = Promises();
        std::printf("%-52s %7s %7s %9s\n", "in units of 2^-53 * weight", "bound", "largest",
                    "nearest");
        for (const auto& [operation, entry] : Ledger()) {
            std::printf("%-52s %7.1f %7.2f", operation.c_str(), entry.bound, entry.largest_error);
            std::printf(entry.IsDecision() ? " %9.2f\n" : "\n", entry.nearest);
            if (entry.IsDecision()) {
                EXPECT_GT(std::min(entry.answers[0], entry.answers[1]), 0) << operation;
                EXPECT_LT(entry.nearest, entry.bound) << operation;
            } else {
                EXPECT_EQ(entry.largest_error > 0, entry.bound > 0) << operation;
            }
            const auto promise = promises.find(operation);
            EXPECT_NEAR(promise == promises.end() ? -1 : promise->second, entry.bound, 0.05)
                << operation << " in " ACCURACY_PAGE;
        }
        // A test that runs alone has seen a part of the operations.
        const testing::UnitTest& program = *testing::UnitTest::GetInstance();
        if (program.test_to_run_count() == program.total_test_count()) {
            EXPECT_EQ(promises.size(), Ledger().size()) << "as many promises as operations";
        }
    }
};
const testing::Environment* const kReport = testing::AddGlobalTestEnvironment(new Report);

}  // namespace

std::map<std::string, Entry>& Ledger() {
    static std::map<std::string, Entry> ledger;
    return ledger;
}

void ExpectNear(const std::string& operation, double bound, const std::vector<Real>& expected,
                const std::vector<double>& got) {
    ASSERT_EQ(expected.size(), got.size()) << operation;
    Entry& entry = EntryOf(operation, bound);
    for (size_t i = 0; i < got.size(); ++i) {
        Enter(entry, operation, ErrorInUnits(expected[i], got[i]));
    }
}

double Below(const Real& a, const Real& b) {
    const Quad margin = b.value - a.value;
    return margin == 0 ? 0 : static_cast<double>(margin / (Quad(kUnit) * (a.weight + b.weight)));
}

void Agree(const std::string& operation, double bound, double margin, int answer) {
    Entry& entry = EntryOf(operation, bound);
    ++entry.answers[answer];
    entry.nearest = std::min(entry.nearest, std::fabs(margin));
    Enter(entry, operation, (margin > 0) == (answer == 1) ? 0 : std::fabs(margin));
}

}  // namespace kvgeom::test
