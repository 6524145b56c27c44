// SPDX-License-Identifier: MIT
#include <kvgeom/kernel/log_file.h>

#if defined(_WIN32)
#include <fcntl.h>
#include <io.h>
#include <windows.h>
#endif

namespace kvgeom::detail {
namespace {

constexpr char kLogName[] = "math_assert_release.log";

// The runtime library of Windows appends in two steps, to the end and then write, and would lose
// lines; a file opened for nothing but appending does it in one.
std::FILE* OpenForAppending() {
#if defined(_WIN32)
    const HANDLE handle = CreateFileA(
        kLogName, FILE_APPEND_DATA | FILE_READ_ATTRIBUTES | SYNCHRONIZE,
        FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
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
#else
    return std::fopen(kLogName, "a");
#endif
}

}  // namespace

std::FILE* OpenLog() {
    std::FILE* const file = OpenForAppending();
    if (file != nullptr) {
        std::setvbuf(file, nullptr, _IONBF, 0);
    }
    return file;
}

}  // namespace kvgeom::detail
