// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <string>

namespace kvprobe {

/// A bar on the terminal, drawn again and again, and wiped at the end. When standard error isn't a
/// terminal, nothing.
class ProgressLine {
  public:
    explicit ProgressLine(std::string what);
    ~ProgressLine();
    ProgressLine(const ProgressLine&) = delete;
    ProgressLine& operator=(const ProgressLine&) = delete;

    /// The part of the work that is done, from 0 to 1; drawn not more often than an eye can follow.
    void Show(double done);

  private:
    using Clock = std::chrono::steady_clock;

    std::string m_what;
    bool m_on_terminal;
    bool m_shown = false;
    Clock::time_point m_next;
};

}  // namespace kvprobe
