// SPDX-License-Identifier: MIT
#include "probe/progress_line.h"

#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <iostream>
#include <utility>

namespace kvprobe {

namespace {

constexpr long kWidth = 30;
constexpr std::chrono::milliseconds kPause(50);

}  // namespace

ProgressLine::ProgressLine(std::string what)
    : m_what(std::move(what)), m_on_terminal(isatty(STDERR_FILENO) != 0), m_next(Clock::now()) {}

ProgressLine::~ProgressLine() {
    if (m_shown) {
        std::cerr << "\r\033[K";
    }
}

void ProgressLine::Show(double done) {
    if (!m_on_terminal || Clock::now() < m_next) {
        return;
    }
    const double part = std::clamp(done, 0.0, 1.0);
    const auto filled = static_cast<size_t>(std::lround(part * kWidth));
    std::cerr << '\r' << m_what << " [" << std::string(filled, '#')
              << std::string(kWidth - filled, ' ') << "] " << std::lround(100 * part) << " %\033[K"
              << std::flush;
    m_shown = true;
    m_next = Clock::now() + kPause;
}

}  // namespace kvprobe
