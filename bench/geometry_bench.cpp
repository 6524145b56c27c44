// SPDX-License-Identifier: MIT

// Does the same work with kvgeom and with other libraries, on the same records. The benchmarks are
// named work/elements/contender. Before a contender is measured its answers are compared with
// kvgeom's.

#include "kvgeom_tasks.h"
#include "machine.h"
#include "model.h"
#include "rivals/rivals.h"

#include <kvgeom/vectors/choice.h>

#include <benchmark/benchmark.h>
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>
#include <string>
#include <vector>

namespace {

using namespace bench;

constexpr std::size_t kInCache = 4096;
constexpr std::size_t kOutOfCache = 1'000'000;
constexpr double kLargestDeviation = 1e-9;
// Of the answers to tests: what lies within rounding, or within kvgeom's distance tolerance, of a
// plane or a slab may be told either way.
constexpr double kLargestShareOfDisagreements = 1e-4;

struct NamedWork {
    Work work;
    const char* name;
    bool is_test;
    std::vector<std::size_t> counts;
};

std::vector<NamedWork> Works() {
    const std::vector<std::size_t> both = {kInCache, kOutOfCache};
    return {
        {Work::kMapPointsByTransf, "map_points_by_transf", false, both},
        {Work::kMapPointsByAffine, "map_points_by_affine", false, both},
        {Work::kMapPointsByProjective, "map_points_by_projective", false, both},
        {Work::kBoxOfPoints, "box_of_points", false, both},
        {Work::kBoreLineAgainstBoxes, "bore_line_against_boxes", true, both},
        {Work::kClipVolumeAgainstBoxes, "clip_volume_against_boxes", true, both},
        {Work::kMapBoxesByTransf, "map_boxes_by_transf", false, both},
        {Work::kMapBoxesByAffine, "map_boxes_by_affine", false, both},
        {Work::kPointsInFence, "points_in_fence", true, both},
        {Work::kComposeTransfs, "compose_transfs", false, both},
        {Work::kInvertMatrices, "invert_matrices", false, {kInCache}},
    };
}

struct Contender {
    std::string name;
    PrepareFunction prepare;
};

std::vector<Contender> Contenders() {
    std::vector<Contender> result = {
        {"kvgeom", PrepareKvgeom},
        {"kvgeom_single", PrepareKvgeomSingle},
        {"kvgeom_inlined", PrepareKvgeomInlined},
    };
    for (const Rival& rival : distributed::Rivals()) {
        result.push_back({std::string(rival.name) + "_distributed", rival.prepare});
    }
    for (const Rival& rival : native::Rivals()) {
        result.push_back({std::string(rival.name) + "_native", rival.prepare});
    }
    return result;
}

const Model& ModelOf(std::size_t count) {
    static std::map<std::size_t, Model> models;
    const auto found = models.find(count);
    return found != models.end() ? found->second
                                 : models.emplace(count, BuildModel(count)).first->second;
}

[[noreturn]] void Fail(const NamedWork& work, const Contender& contender, const char* what) {
    std::fprintf(stderr, "%s: %s %s\n", work.name, contender.name.c_str(), what);
    std::exit(EXIT_FAILURE);
}

// The number of tests answered otherwise. Stops the program when the answers are not the same.
double Disagreements(const NamedWork& work, const Contender& contender, const Answers& answers,
                     const Answers& expected) {
    if (answers.size() != expected.size()) {
        Fail(work, contender, "gives another number of answers than kvgeom");
    }
    double largest = 0;
    for (const double x : expected) {
        largest = std::max(largest, std::fabs(x));
    }
    double disagreements = 0;
    for (std::size_t i = 0; i < answers.size(); ++i) {
        // Written so that NaN disagrees.
        disagreements += std::fabs(answers[i] - expected[i]) <= kLargestDeviation * largest ? 0 : 1;
    }
    const double allowed =
        work.is_test ? kLargestShareOfDisagreements * static_cast<double>(answers.size()) : 0;
    if (disagreements > allowed) {
        Fail(work, contender, "disagrees with kvgeom");
    }
    return disagreements;
}

void Measure(benchmark::State& state, const NamedWork& work, std::size_t count,
             const Contender& contender, bool is_checked) {
    const Model& model = ModelOf(count);
    const Task task = contender.prepare(work.work, model);
    task.run();
    static std::map<std::string, double> disagreements;
    const std::string key = work.name + std::to_string(count) + contender.name;
    if (is_checked && disagreements.count(key) == 0) {
        const Task reference = PrepareKvgeom(work.work, model);
        reference.run();
        disagreements[key] = Disagreements(work, contender, task.tell(), reference.tell());
    }
    for (auto _ : state) {
        task.run();
        benchmark::ClobberMemory();
    }
    const auto items = static_cast<std::int64_t>(count);
    state.SetItemsProcessed(state.iterations() * items);
    if (work.is_test && is_checked) {
        state.counters["disagreements"] = disagreements[key];
    }
}

void Register(const NamedWork& work, std::size_t count, const Contender& contender,
              bool is_checked = true) {
    const std::string name =
        std::string(work.name) + "/" + std::to_string(count) + "/" + contender.name;
    benchmark::RegisterBenchmark(name.c_str(), [=](benchmark::State& state) {
        Measure(state, work, count, contender, is_checked);
    });
}

void RegisterComparisons() {
    const Model sample = BuildModel(1);
    for (const NamedWork& work : Works()) {
        for (const Contender& contender : Contenders()) {
            if (!contender.prepare(work.work, sample).run) {
                continue;
            }
            for (const std::size_t count : work.counts) {
                Register(work, count, contender);
            }
        }
    }
}

// The time an element takes, by the number and by the order of the elements.
void RegisterGrowth() {
    for (const NamedWork& work : Works()) {
        const bool grows = work.work == Work::kMapPointsByTransf ||
                           work.work == Work::kBoxOfPoints ||
                           work.work == Work::kBoreLineAgainstBoxes;
        for (std::size_t count = 1000; grows && count <= 10'000'000; count *= 10) {
            // A million there is already.
            for (const std::size_t n : {count, 3 * count}) {
                if (n != kOutOfCache && n <= 10'000'000) {
                    Register(work, n, {"kvgeom", PrepareKvgeom});
                }
            }
        }
        if (work.is_test) {
            for (const std::size_t count : work.counts) {
                // Other answers than those for the elements in no order.
                Register(work, count, {"kvgeom_sorted", PrepareKvgeomSorted}, false);
            }
        }
    }
}

// The sum of the bits, which the compiler may take in any order.
std::uint64_t Sum(const std::vector<std::uint64_t>& words) {
    std::uint64_t sum = 0;
    for (const std::uint64_t word : words) {
        sum += word;
    }
    return sum;
}

// Reads, or copies, as much memory as so many boxes take.
void RegisterMemory() {
    for (const std::size_t boxes : {kInCache, kOutOfCache, 10 * kOutOfCache}) {
        const std::size_t bytes = boxes * sizeof(GBox);
        const std::string size = std::to_string(bytes);
        benchmark::RegisterBenchmark(("memory_read/" + size + "/bytes").c_str(),
                                     [=](benchmark::State& state) {
                                         const std::vector<std::uint64_t> from(bytes / 8, 1);
                                         for (auto _ : state) {
                                             benchmark::DoNotOptimize(Sum(from));
                                         }
                                     });
        benchmark::RegisterBenchmark(("memory_copy/" + size + "/bytes").c_str(),
                                     [=](benchmark::State& state) {
                                         const std::vector<std::uint64_t> from(bytes / 8, 1);
                                         std::vector<std::uint64_t> to(bytes / 8);
                                         for (auto _ : state) {
                                             std::memcpy(to.data(), from.data(), bytes);
                                             benchmark::ClobberMemory();
                                         }
                                     });
    }
}

const char* ChosenVectors() {
    switch (kvgeom::detail::g_vectors) {
        case kvgeom::detail::Vectors::kBaseline:
            return "baseline";
        case kvgeom::detail::Vectors::kAvx2:
            return "AVX2";
        case kvgeom::detail::Vectors::kAvx512:
            return "AVX-512";
    }
    return "unknown";
}

}  // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return EXIT_FAILURE;
    }
    for (const Rival& rival : native::Rivals()) {
        benchmark::AddCustomContext(rival.name, rival.version);
    }
    benchmark::AddCustomContext("vectors", ChosenVectors());
    RegisterComparisons();
    RegisterGrowth();
    RegisterMemory();
    RegisterMachine();
    benchmark::RunSpecifiedBenchmarks();
}
