// SPDX-License-Identifier: MIT
#pragma once

// How a library takes part: it prepares arrays of its own kind from the model, outside of the timed
// part, does the work on them, and tells its answers for comparison.

#include <cstddef>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace bench {

struct Model;

enum class Work {
    kMapPointsByTransf,
    kMapPointsByAffine,
    kMapPointsByProjective,
    kBoxOfPoints,
    kBoreLineAgainstBoxes,
    kClipVolumeAgainstBoxes,
    kMapBoxesByTransf,
    kMapBoxesByAffine,
    kPointsInFence,
    kComposeTransfs,
    kInvertMatrices,
};

// Points are told as x, y, z, boxes as both corners, tests as 1 or 0, maps as the 16 elements of
// the matrix that rows are multiplied by.
typedef std::vector<double> Answers;

struct Task {
    std::function<void()> run;
    std::function<Answers()> tell;
};

// Empty functions when the library has no such operation, nor a natural way to write it.
typedef Task (*PrepareFunction)(Work work, const Model& model);

// The task of run(input, output), where each element of the output is told by tell(answers,
// element).
template <class Output, class Input, class Run, class Tell>
Task ArrayTask(std::vector<Input> input, std::size_t outputs, Run run, Tell tell) {
    const auto in = std::make_shared<const std::vector<Input>>(std::move(input));
    const auto out = std::make_shared<std::vector<Output>>(outputs);
    return {[in, out, run] { run(*in, *out); },
            [out, tell] {
                Answers answers;
                for (const Output& element : *out) {
                    tell(answers, element);
                }
                return answers;
            }};
}

// The task of f for one element after the other.
template <class Output, class Input, class Function, class Tell>
Task EachTask(std::vector<Input> input, Function f, Tell tell) {
    const std::size_t count = input.size();
    const auto run = [f](const std::vector<Input>& in, std::vector<Output>& out) {
        // Copies whose address nobody has: no store to the output can change them.
        const Function function = f;
        const Input* const from = in.data();
        Output* const to = out.data();
        const std::size_t n = in.size();
        for (std::size_t i = 0; i < n; ++i) {
            to[i] = static_cast<Output>(function(from[i]));
        }
    };
    return ArrayTask<Output>(std::move(input), count, run, tell);
}

// The task of f(first, second, result) for one pair of elements after the other.
template <class Output, class Input, class Function, class Tell>
Task PairsTask(std::vector<Input> first, std::vector<Input> second, Function f, Tell tell) {
    const std::size_t count = first.size();
    const auto run = [f, second = std::move(second)](const std::vector<Input>& in,
                                                     std::vector<Output>& out) {
        const Input* const a = in.data();
        const Input* const b = second.data();
        Output* const to = out.data();
        const std::size_t n = in.size();
        for (std::size_t i = 0; i < n; ++i) {
            f(a[i], b[i], to[i]);
        }
    };
    return ArrayTask<Output>(std::move(first), count, run, tell);
}

// A list of records converted one by one.
template <class Record, class Convert>
auto Converted(const std::vector<Record>& records, Convert convert) {
    std::vector<decltype(convert(records[0]))> result;
    result.reserve(records.size());
    for (const Record& record : records) {
        result.push_back(convert(record));
    }
    return result;
}

}  // namespace bench
