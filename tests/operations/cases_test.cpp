// SPDX-License-Identifier: MIT

// What the operations promise at their edges: the table of cases that cases.txt explains.

#include "tests/operations/invoke.h"

#include <gtest/gtest.h>

#include <charconv>
#include <fstream>
#include <map>
#include <sstream>

namespace kvgeom::test {
namespace {

double ToNumber(const std::string& word) {
    const std::map<std::string, double> names = {
        {"big", kBig}, {"-big", -kBig}, {"eps", DBL_EPSILON}, {"-eps", -DBL_EPSILON}};
    const char last = word.back();
    const std::string stem = last == '+' || last == '-' ? word.substr(0, word.size() - 1) : word;
    const auto named = names.find(stem);
    char* end = nullptr;
    const double x = std::strtod(stem.c_str(), &end);
    EXPECT_TRUE(named != names.end() || *end == '\0') << word << " is no number";
    const double value = named != names.end() ? named->second : x;
    return last == '+' ? Up(value) : last == '-' ? Down(value) : value;
}

std::vector<double> ToNumbers(const std::string& text) {
    std::istringstream words(text);
    std::vector<double> numbers;
    for (std::string word; words >> word;) {
        numbers.push_back(ToNumber(word));
    }
    return numbers;
}

std::string ToText(const std::vector<double>& numbers) {
    std::string text;
    for (const double x : numbers) {
        char word[40] = "";
        std::to_chars(word, word + sizeof word, std::isnan(x) ? kNaN : x);
        text += std::string(" ") + word;
    }
    return text;
}

// The signature, with the records under the names that callers use.
std::string Name(const Operation& operation) {
    std::string name = operation.signature;
    for (size_t at; (at = name.find("tagG")) != std::string::npos;) {
        name.erase(at, 3);
    }
    return name;
}

// What comes out, as a line of the table has it behind its =.
std::string Outcome(const Operation& operation, const std::string& arguments) {
    std::vector<std::vector<double>> given;
    std::istringstream lists(arguments);
    for (std::string list; std::getline(lists, list, ',');) {
        given.push_back(ToNumbers(list));
    }
    Random random(1);
    Source source(random, given);
    Result result;
    result.Keep(Result::Keeps::kAll);
    operation.call(source, result);
    EXPECT_TRUE(source.WasGivenRight())
        << Name(operation) << ": too few numbers or too many:" << arguments;
    std::string text = ToText(result.Kept());
    for (std::string message : result.Texts()) {
        const size_t end = message.find('\n');
        text += " \"" + (end < message.size() ? message.replace(end, 1, "\\n") : message) + '"';
    }
    return text;
}

class Cases {
  public:
    void Read(std::string line) {
        for (size_t at; (at = line.find('$', 1)) < line.size();) {
            const size_t end = std::min(line.find_first_of(" ,", at), line.size());
            line.replace(at, end - at, m_words.at(line.substr(at, end - at)));
        }
        const size_t equals = line.find(" =");
        if (line[0] == '$') {
            m_words[line.substr(0, equals)] = line.substr(equals + 3);
        } else if (line[0] == ' ') {
            ASSERT_NE(m_operation, nullptr) << line;
            const std::string expected = line.substr(equals + 2);
            const size_t quote = std::min(expected.find(" \""), expected.size());
            EXPECT_EQ(Outcome(*m_operation, line.substr(0, equals)),
                      ToText(ToNumbers(expected.substr(0, quote))) + expected.substr(quote))
                << m_operation->signature << line;
            ++m_count;
        } else {
            m_operation = nullptr;
            for (const Operation& operation : kOperations) {
                m_operation = Name(operation) == line ? &operation : m_operation;
            }
            EXPECT_NE(m_operation, nullptr) << line;
        }
    }
    int Count() const { return m_count; }

  private:
    std::map<std::string, std::string> m_words;
    const Operation* m_operation = nullptr;
    int m_count = 0;
};

TEST(Cases, ComeOutAsTheTableSays) {
    SetAssertHook(AddMessage);
    Cases cases;
    std::ifstream table(CASES);
    for (std::string line; std::getline(table, line);) {
        if (!line.empty() && line[0] != '#') {
            cases.Read(line);
        }
    }
    SetAssertHook(nullptr);
    EXPECT_EQ(cases.Count(), 976);
}

}  // namespace
}  // namespace kvgeom::test
