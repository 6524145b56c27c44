// SPDX-License-Identifier: MIT
#include <kvgeom/host/assertion_log.h>
#include <kvgeom/host/debug_entry.h>
#include <kvgeom/host/log_file.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>

using namespace kvgeom::detail;

namespace {

constexpr int kLevelThatLogs = 2;

// The value is created with 0, so that nothing is logged until someone asks for it. The first call
// in the process decides; the defaults of later calls don't count.
int LogLevel() {
    return ReadOrCreateRegEntry("ValidateReleaseMath", 0);
}

// The line is handed to the stream in one piece. The streams of the log don't buffer, so that
// becomes one write.
void WriteLine(std::FILE* stream, const char* message) {
    constexpr char kMark[] = "#~# ";
    constexpr std::size_t kMarkLength = sizeof kMark - 1;
    message = message != nullptr ? message : "(null)";
    const std::size_t length = std::strlen(message);
    const std::size_t size = kMarkLength + length + 1;
    std::array<char, 512> room;
    char* const heap = size > room.size() ? static_cast<char*>(std::malloc(size)) : nullptr;
    if (size > room.size() && heap == nullptr) {
        std::fprintf(stream, "%s%s\n", kMark, message);
        return;
    }
    char* const line = heap != nullptr ? heap : room.data();
    char* end = std::copy_n(kMark, kMarkLength, line);
    end = std::copy_n(message, length, end);
    *end = '\n';
    std::fwrite(line, 1, size, stream);
    std::free(heap);
}

void WriteLineToLog(const char* message) {
    if (LogLevel() < kLevelThatLogs) {
        return;
    }
    std::FILE* const log = OpenLog();
    if (log == nullptr) {
        WriteLine(stderr, message);
        std::fflush(stderr);  // some runtime libraries buffer it
        return;
    }
    {
        const LogTurn turn(log);
        WriteLine(log, message);
    }
    std::fclose(log);
}

}  // namespace

void invld(std::FILE* stream, char* message, int) {
    if (stream != nullptr) {
        WriteLine(stream, message);
    } else {
        WriteLineToLog(message);
    }
}

int MathDebugOutputFilePtr(std::FILE** slot, int min_level) {
    const int level = LogLevel();
    if (level < min_level) {
        return level;
    }
    std::FILE* const log = OpenLog();
    if (log != nullptr && *slot == nullptr) {
        *slot = log;
    } else if (log != nullptr) {
        std::fclose(log);
    }
    return level;
}

void LogAssertMessage(const char* message) {
    WriteLineToLog(message);
}
