// SPDX-License-Identifier: MIT

// Writes a million boxes as text with the library and with fprintf, which writes the same bytes:
// to a temporary file, rewound for each round, and to the null device, which leaves the writing
// out.

#include <kvgeom/kvgeom.h>

#include <benchmark/benchmark.h>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <random>
#include <string>
#include <vector>

namespace {

constexpr int kBoxes = 1'000'000;
constexpr int kRounds = 5;

const std::vector<GBox>& Boxes() {
    static const std::vector<GBox> boxes = [] {
        std::mt19937_64 random(1);
        const auto coordinate = [&random] {
            return static_cast<double>(random() >> 11U) * 0x1p-53 * 200 - 100;
        };
        std::vector<GBox> result(kBoxes);
        for (GBox& box : result) {
            for (GPosition* const corner : {&box.m_low, &box.m_high}) {
                corner->m_x = coordinate();
                corner->m_y = coordinate();
                corner->m_z = coordinate();
            }
        }
        return result;
    }();
    return boxes;
}

void WriteWithLibrary(std::FILE* f, const GBox& box) {
    long err;
    GPrint_to_File(f, box, &err);
}

void WriteWithPrintf(std::FILE* f, const GBox& box) {
    const GPosition& l = box.m_low;
    const GPosition& h = box.m_high;
    std::fprintf(f, "GBox:\n");
    std::fprintf(f, " low:  %20.15le %20.15le %20.15le\n", l.m_x, l.m_y, l.m_z);
    std::fprintf(f, " high: %20.15le %20.15le %20.15le\n", h.m_x, h.m_y, h.m_z);
}

void WriteBoxes(benchmark::State& state, std::FILE* (*open)(),
                void (*write)(std::FILE*, const GBox&)) {
    const std::vector<GBox>& boxes = Boxes();
    std::FILE* const f = open();
    if (f == nullptr) {
        state.SkipWithError("can't open the stream");
        return;
    }
    for (auto _ : state) {
        std::rewind(f);
        for (const GBox& box : boxes) {
            write(f, box);
        }
        std::fflush(f);
    }
    std::fclose(f);
    state.SetItemsProcessed(state.iterations() * kBoxes);
}

std::FILE* OpenTemporaryFile() {
    return std::tmpfile();
}

std::FILE* OpenNullDevice() {
#ifdef _WIN32
    return std::fopen("NUL", "w");
#else
    return std::fopen("/dev/null", "w");
#endif
}

void Register(const std::string& name, std::FILE* (*open)(),
              void (*write)(std::FILE*, const GBox&)) {
    benchmark::RegisterBenchmark(name.c_str(),
                                 [=](benchmark::State& state) { WriteBoxes(state, open, write); })
        ->Unit(benchmark::kMillisecond)
        ->UseRealTime()
        ->Iterations(1)
        ->Repetitions(kRounds);
}

// Prints as usual, and keeps the medians.
class MedianReporter : public benchmark::ConsoleReporter {
  public:
    void ReportRuns(const std::vector<Run>& runs) override {
        ConsoleReporter::ReportRuns(runs);
        for (const Run& run : runs) {
            if (run.aggregate_name == "median") {
                m_medians[run.run_name.function_name] = run.GetAdjustedRealTime();
            }
        }
    }
    // 0 when it wasn't run.
    double Median(const std::string& name) const {
        const auto found = m_medians.find(name);
        return found == m_medians.end() ? 0 : found->second;
    }

  private:
    std::map<std::string, double> m_medians;
};

}  // namespace

int main(int argc, char** argv) {
    const struct {
        const char* name;
        std::FILE* (*open)();
    } streams[] = {{"file", OpenTemporaryFile}, {"null device", OpenNullDevice}};
    for (const auto& stream : streams) {
        Register(std::string("fprintf, ") + stream.name, stream.open, WriteWithPrintf);
        Register(std::string("GPrint_to_File, ") + stream.name, stream.open, WriteWithLibrary);
    }
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return EXIT_FAILURE;
    }
    MedianReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    for (const auto& stream : streams) {
        const double theirs = reporter.Median(std::string("fprintf, ") + stream.name);
        const double ours = reporter.Median(std::string("GPrint_to_File, ") + stream.name);
        if (theirs > 0 && ours > 0) {
            std::printf("To the %s, GPrint_to_File is %.2f times as fast as fprintf (medians).\n",
                        stream.name, theirs / ours);
        }
    }
}
