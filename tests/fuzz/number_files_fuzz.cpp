// SPDX-License-Identifier: MIT

// kvprobe's files of numbers: rows of finite numbers, or a complaint of one line.

#include "probe/numbers.h"

#include <sys/mman.h>
#include <unistd.h>

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <stdexcept>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr std::size_t kWanted = 3;
    static const int file = memfd_create("numbers", 0);
    static const std::string path = "/proc/self/fd/" + std::to_string(file);
    if (ftruncate(file, 0) != 0 ||
        pwrite(file, data, size, 0) != static_cast<std::ptrdiff_t>(size)) {
        std::abort();
    }
    try {
        for (const std::vector<double>& row : kvprobe::ReadNumberFile(path, kWanted)) {
            for (const double x : row) {
                if (row.size() != kWanted || !(std::fabs(x) < 1e30)) {
                    std::abort();
                }
            }
        }
    } catch (const std::runtime_error& failure) {
        if (std::string(failure.what()).find('\n') != std::string::npos) {
            std::abort();
        }
    }
    return 0;
}
