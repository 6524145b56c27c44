// SPDX-License-Identifier: MIT
#include "probe/arguments.h"
#include "probe/drawing.h"
#include "probe/failure.h"
#include "probe/model.h"
#include "probe/probing.h"
#include "probe/report.h"

#include <chrono>
#include <exception>
#include <fstream>
#include <iostream>

namespace {

using namespace kvprobe;

// As grep has it.
constexpr int kSomethingTouched = 0;
constexpr int kNothingTouched = 1;
constexpr int kError = 2;

double Seconds(std::chrono::steady_clock::duration duration) {
    return std::chrono::duration<double>(duration).count();
}

void WriteDrawing(const Arguments& arguments, const std::vector<GBoreLine>& legs,
                  const std::vector<Object>& objects, const std::vector<Hit>& hits) {
    if (arguments.svg.empty()) {
        return;
    }
    std::ofstream file(arguments.svg);
    Draw(file, arguments, legs, objects, hits);
    file.close();
    if (!file) {
        throw Failure("--svg", "'" + arguments.svg + "' can't be written");
    }
}

int Run(int argc, char** argv) {
    const std::optional<Arguments> arguments = ParseArguments(argc, argv);
    if (!arguments) {
        return kSomethingTouched;
    }
    const auto begin = std::chrono::steady_clock::now();
    const std::vector<Object> objects = ReadModel(arguments->model);
    const auto read = std::chrono::steady_clock::now();
    std::vector<GBoreLine> legs;
    std::vector<Hit> hits;
    if (arguments->list) {
        PrintList(std::cout, objects, arguments->json);
    } else {
        legs = Legs(*arguments);
        hits = Probe(legs, objects);
        const auto probed = std::chrono::steady_clock::now();
        PrintHits(std::cout, *arguments, legs, objects, hits,
                  {Seconds(read - begin), Seconds(probed - read)});
    }
    WriteDrawing(*arguments, legs, objects, hits);
    std::cout.flush();
    if (!std::cout) {
        throw Failure("standard output", "can't be written");
    }
    return arguments->list || !hits.empty() ? kSomethingTouched : kNothingTouched;
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
