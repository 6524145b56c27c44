// SPDX-License-Identifier: MIT

// Linked into a second debug_scenario: stands in for the system calls that change files, and makes
// one of them the last (KVGEOM_TEST_FAULT=kill:N) or fail (fail:N). Writes are short, so that there
// are more of them.

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <cstdlib>
#include <string>

namespace {

// Whether the next call is to fail.
bool Fails() {
    static const std::string fault = [] {
        const char* const text = std::getenv("KVGEOM_TEST_FAULT");
        return std::string(text != nullptr ? text : "none:0");
    }();
    static const int wanted = std::atoi(fault.c_str() + fault.find(':') + 1);
    static int calls = 0;
    if (++calls != wanted) {
        return false;
    }
    if (fault.compare(0, 4, "kill") == 0) {
        kill(getpid(), SIGKILL);
    }
    errno = ENOSPC;
    return true;
}

template <class... Arguments>
int Call(long number, Arguments... arguments) {
    return Fails() ? -1 : static_cast<int>(syscall(number, arguments...));
}

}  // namespace

extern "C" {

int open(const char* path, int flags, ...) {
    va_list rest;
    va_start(rest, flags);
    const unsigned mode = (flags & O_CREAT) != 0 ? va_arg(rest, unsigned) : 0;
    va_end(rest);
    return Call(SYS_openat, AT_FDCWD, path, flags, mode);
}

ssize_t write(int file, const void* data, size_t size) {
    constexpr size_t kMost = 16;
    return Call(SYS_write, file, data, std::min(size, kMost));
}

int fsync(int file) {
    return Call(SYS_fsync, file);
}

int close(int file) {
    return Call(SYS_close, file);
}

int flock(int file, int operation) noexcept {
    return Call(SYS_flock, file, operation);
}

int fchown(int file, uid_t user, gid_t group) noexcept {
    return Call(SYS_fchown, file, user, group);
}

int fchmod(int file, mode_t mode) noexcept {
    return Call(SYS_fchmod, file, mode);
}

int rename(const char* from, const char* to) noexcept {
    return Call(SYS_renameat2, AT_FDCWD, from, AT_FDCWD, to, 0);
}

int unlink(const char* path) noexcept {
    return Call(SYS_unlinkat, AT_FDCWD, path, 0);
}

}  // extern "C"
