// SPDX-License-Identifier: MIT
#pragma once

#include <cstdio>

namespace kvgeom::detail {

// Opens the assertion log for appending, created where it is missing. Null when that fails. The
// stream doesn't buffer: what is handed to it in one piece reaches the end of the file in one
// piece, whatever other processes append at the same time; long lines on Windows only in a turn.
std::FILE* OpenLog();

// While it lives, no other process of the library has its turn at the log.
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
