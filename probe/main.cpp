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

namespace {

using namespace kvprobe;

// As grep has it.
constexpr int kSomethingFound = 0;
constexpr int kNothingFound = 1;
constexpr int kError = 2;

double Seconds(std::chrono::steady_clock::duration duration) {
    return std::chrono::duration<double>(duration).count();
}

void WriteDrawing(const Arguments& arguments, const std::vector<Object>& objects,
                  const Findings& findings) {
    if (arguments.svg.empty()) {
        return;
    }
    std::ofstream file(arguments.svg);
    (findings.plan ? DrawPlan : Draw)(file, arguments, objects, findings);
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
    const std::vector<Object> objects = ReadModel(arguments->model);
    const auto read = std::chrono::steady_clock::now();
    const Findings findings = Probe(arguments->request, objects);
    const auto probed = std::chrono::steady_clock::now();
    const bool lists_plan = findings.plan && !findings.plan->window;
    const bool lists = std::holds_alternative<ListRequest>(arguments->request) || lists_plan;
    if (lists_plan) {
        PrintPlan(std::cout, objects, *findings.plan, arguments->json);
    } else if (lists) {
        PrintList(std::cout, objects, arguments->json);
    } else {
        PrintFindings(std::cout, *arguments, objects, findings,
                      {Seconds(read - begin), Seconds(probed - read)});
    }
    WriteDrawing(*arguments, objects, findings);
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
