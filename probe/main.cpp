// SPDX-License-Identifier: MIT
#include "probe/arguments.h"
#include "probe/drawing.h"
#include "probe/failure.h"
#include "probe/model.h"
#include "probe/plan_drawing.h"
#include "probe/probing.h"
#include "probe/report.h"

#include <chrono>
#include <exception>
#include <fstream>
#include <iostream>
#include <utility>

namespace {

using namespace kvprobe;

// As grep has it.
constexpr int kSomethingFound = 0;
constexpr int kNothingFound = 1;
constexpr int kError = 2;

double Seconds(std::chrono::steady_clock::duration duration) {
    return std::chrono::duration<double>(duration).count();
}

Scene LayOut(const Arguments& arguments) {
    constexpr size_t kMostBoxes = 10'000'000;
    std::vector<Object> model = ReadModel(arguments.model);
    if (arguments.copies > 1 && arguments.copies > kMostBoxes / model.size()) {
        throw Failure("--repeat", std::to_string(arguments.copies) + " times " +
                                      std::to_string(model.size()) +
                                      " objects are more than ten million boxes");
    }
    return Scene(std::move(model), arguments.copies, arguments.up);
}

void WriteDrawing(const Arguments& arguments, const Scene& scene, const Findings& findings) {
    if (arguments.svg.empty()) {
        return;
    }
    std::ofstream file(arguments.svg);
    (findings.plan ? DrawPlan : Draw)(file, arguments, scene, findings);
    file.close();
    if (!file) {
        throw Failure("--svg", "'" + arguments.svg + "' can't be written");
    }
}

int Run(int argc, char** argv) {
    const std::optional<Arguments> arguments = ParseArguments(argc, argv);
    if (!arguments) {
        return kSomethingFound;
    }
    const auto begin = std::chrono::steady_clock::now();
    const Scene scene = LayOut(*arguments);
    const auto read = std::chrono::steady_clock::now();
    const Findings findings = Probe(arguments->request, scene);
    const auto probed = std::chrono::steady_clock::now();
    const bool lists_plan = findings.plan && !findings.plan->window;
    const bool lists = std::holds_alternative<ListRequest>(arguments->request) || lists_plan;
    if (lists_plan) {
        PrintPlan(std::cout, scene, *findings.plan, arguments->json);
    } else if (lists) {
        PrintList(std::cout, scene, arguments->json);
    } else {
        PrintFindings(std::cout, *arguments, scene, findings,
                      {Seconds(read - begin), Seconds(probed - read)});
    }
    WriteDrawing(*arguments, scene, findings);
    std::cout.flush();
    if (!std::cout) {
        throw Failure("standard output", "can't be written");
    }
    return lists || !findings.hits.empty() ? kSomethingFound : kNothingFound;
}

}  // namespace

int main(int argc, char** argv) {
    try {
        return Run(argc, argv);
    } catch (const std::exception& failure) {
        std::cerr << "kvprobe: " << failure.what() << '\n';
    }
    return kError;
}
