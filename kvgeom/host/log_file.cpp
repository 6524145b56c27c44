// SPDX-License-Identifier: MIT
#include <kvgeom/host/log_file.h>

#if defined(_WIN32)
#include <fcntl.h>
#include <io.h>
#include <windows.h>
#endif

namespace kvgeom::detail {
namespace {

constexpr char kLogName[] = "math_assert_release.log";

#if defined(_WIN32)

// The runtime library of Windows appends in two steps, first to the end of the file and then the
// write, and another process may write in between. A file that is opened for nothing but appending
// does it in one step. It is also opened for reading, because only then can it be locked.
std::FILE* OpenForAppending() {
    const HANDLE handle = CreateFileA(kLogName, FILE_APPEND_DATA | GENERIC_READ | SYNCHRONIZE,
                                      FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_ALWAYS,
                                      FILE_ATTRIBUTE_NORMAL, nullptr);
    if (handle == INVALID_HANDLE_VALUE) {
        return nullptr;
    }
    const int descriptor = _open_osfhandle(reinterpret_cast<intptr_t>(handle), _O_APPEND | _O_TEXT);
    if (descriptor == -1) {
        CloseHandle(handle);
        return nullptr;
    }
    std::FILE* const file = _fdopen(descriptor, "a");
    if (file == nullptr) {
        _close(descriptor);
    }
    return file;
}

// A byte far beyond the end of any log: others can't read a locked byte on Windows.
OVERLAPPED LockedByte() {
    OVERLAPPED position = {};
    position.OffsetHigh = 0x7FFFFFFF;
    return position;
}

HANDLE HandleOf(std::FILE* stream) {
    return reinterpret_cast<HANDLE>(_get_osfhandle(_fileno(stream)));
}

// The runtime library writes a long line in several pieces.
void Lock(std::FILE* log) {
    OVERLAPPED position = LockedByte();
    LockFileEx(HandleOf(log), LOCKFILE_EXCLUSIVE_LOCK, 0, 1, 0, &position);
}

void Unlock(std::FILE* log) {
    OVERLAPPED position = LockedByte();
    UnlockFileEx(HandleOf(log), 0, 1, 0, &position);
}

#else

std::FILE* OpenForAppending() {
    return std::fopen(kLogName, "a");
}

// The system appends in one piece what it gets in one piece, so no lock is needed.
void Lock(std::FILE*) {}
void Unlock(std::FILE*) {}

#endif

}  // namespace

std::FILE* OpenLog() {
    std::FILE* const file = OpenForAppending();
    if (file != nullptr) {
        std::setvbuf(file, nullptr, _IONBF, 0);
    }
    return file;
}

LogTurn::LogTurn(std::FILE* log) : m_log(log) {
    Lock(m_log);
}

LogTurn::~LogTurn() {
    Unlock(m_log);
}

}  // namespace kvgeom::detail
