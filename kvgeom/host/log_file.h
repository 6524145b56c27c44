// SPDX-License-Identifier: MIT
#pragma once

#include <cstdio>

namespace kvgeom::detail {

// Opens the assertion log for appending, created where it is missing. Null when that fails. The
// stream doesn't buffer: what it gets in one piece reaches the end of the file in one piece, even
// while other processes append. On Windows, long lines need a LogTurn for that.
std::FILE* OpenLog();

// While it lives, other processes that use this library wait before they write to the log.
class LogTurn {
  public:
    explicit LogTurn(std::FILE* log);
    ~LogTurn();
    LogTurn(const LogTurn&) = delete;
    LogTurn& operator=(const LogTurn&) = delete;

  private:
    std::FILE* m_log;
};

}  // namespace kvgeom::detail
