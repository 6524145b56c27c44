// SPDX-License-Identifier: MIT
// The registry of platforms that have none: one file, which everybody may also edit by hand.
//
// Whoever writes it holds a lock beside it, writes the whole new text to a second file, and renames
// this over the first: a reader, and whoever comes after a crash, finds the old text or the new
// one, whole. A file that can't be parsed is somebody's work in progress and left alone.

#include <kvgeom/host/registry.h>
#include <kvgeom/host/registry_text.h>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <exception>
#include <filesystem>

namespace kvgeom::detail {
namespace {

constexpr std::string_view kKey = "HKEY_LOCAL_MACHINE\\SOFTWARE\\Kestrine\\Veltor\\Core\\Debug";

// Of new files.
constexpr mode_t kRights = 0644;

// An open file, closed in any case.
class Descriptor {
  public:
    explicit Descriptor(int descriptor) : m_descriptor(descriptor) {}
    ~Descriptor() { Close(); }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    bool IsOpen() const { return m_descriptor >= 0; }
    int Get() const { return m_descriptor; }
    bool Close() {
        const bool is_closed = m_descriptor < 0 || close(m_descriptor) == 0;
        m_descriptor = -1;
        return is_closed;
    }

  private:
    int m_descriptor;
};

std::filesystem::path RegistryPath() {
    const char* const named = std::getenv("KVGEOM_REGISTRY");
    return named != nullptr && *named != '\0' ? named : KVGEOM_REGISTRY_FILE;
}

std::filesystem::path Folder(const std::filesystem::path& path) {
    return path.has_parent_path() ? path.parent_path() : ".";
}

// The whole text; nothing when it can't be read. A missing file is a registry without keys.
std::optional<std::string> ReadText(const std::filesystem::path& path) {
    // Not to wait for the other end of a pipe.
    const Descriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    if (!file.IsOpen()) {
        return errno == ENOENT ? std::optional(EmptyRegistryText()) : std::nullopt;
    }
    struct stat status;
    if (fstat(file.Get(), &status) != 0 || !S_ISREG(status.st_mode)) {
        return std::nullopt;
    }
    std::string text;
    std::size_t size = 0;
    for (;;) {
        constexpr std::size_t kStep = 1U << 16U;
        text.resize(size + std::max(kStep, size));
        const ssize_t count = read(file.Get(), text.data() + size, text.size() - size);
        if (count == 0) {
            text.resize(size);
            return text;
        }
        if (count < 0 && errno != EINTR) {
            return std::nullopt;
        }
        size += count > 0 ? static_cast<std::size_t>(count) : 0;
    }
}

bool WriteAll(int file, std::string_view text) {
    while (!text.empty()) {
        const ssize_t count = write(file, text.data(), text.size());
        if (count < 0 && errno != EINTR) {
            return false;
        }
        text.remove_prefix(count > 0 ? static_cast<std::size_t>(count) : 0);
    }
    return true;
}

// Gives a new file the rights and, where that is allowed, the owner of the one it replaces.
void TakeOver(const struct stat& replaced, int file) {
    const bool is_given = fchown(file, replaced.st_uid, replaced.st_gid) == 0;
    // The rights to act as the owner are not passed on to another.
    const mode_t rights = is_given ? 07777 : 0777;
    fchmod(file, replaced.st_mode & rights);
}

void ReplaceText(const std::filesystem::path& path, std::string_view text) {
    const std::string next = path.string() + ".new";
    unlink(next.c_str());  // what a writer that was killed has left
    Descriptor file(open(next.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, kRights));
    if (!file.IsOpen()) {
        return;
    }
    struct stat replaced;
    if (stat(path.c_str(), &replaced) == 0) {
        TakeOver(replaced, file.Get());
    }
    const bool is_written = WriteAll(file.Get(), text) && fsync(file.Get()) == 0;
    if (!file.Close() || !is_written || std::rename(next.c_str(), path.c_str()) != 0) {
        unlink(next.c_str());
        return;
    }
    const Descriptor folder(open(Folder(path).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (folder.IsOpen()) {
        fsync(folder.Get());
    }
}

// Takes the lock beside the file until it is closed. A process that is killed gives it back; one
// that hangs with it is not waited for.
bool Lock(int lock) {
    constexpr int kTries = 200;
    constexpr timespec kPause = {0, 10'000'000};  // 10 ms
    for (int i = 0; i < kTries; ++i) {
        if (flock(lock, LOCK_EX | LOCK_NB) == 0) {
            return true;
        }
        if (errno != EWOULDBLOCK && errno != EINTR) {
            return false;
        }
        nanosleep(&kPause, nullptr);
    }
    return false;
}

// The file that the path leads to, through links if need be. It need not exist yet: a link to it is
// kept all the same.
std::filesystem::path Resolved(std::filesystem::path path) {
    constexpr int kMostLinks = 40;  // as Linux allows; what is left then leads nowhere
    std::error_code error;
    for (int i = 0; i < kMostLinks && std::filesystem::is_symlink(path, error); ++i) {
        path = Folder(path) / std::filesystem::read_symlink(path, error);
    }
    const std::filesystem::path resolved = std::filesystem::weakly_canonical(path, error);
    return error ? path : resolved;
}

bool HasRights(const std::filesystem::path& path, int rights) {
    return faccessat(AT_FDCWD, path.c_str(), rights, AT_EACCESS) == 0;
}

bool MayWrite(const std::filesystem::path& path) {
    return (HasRights(path, W_OK) || errno == ENOENT) && HasRights(Folder(path), W_OK | X_OK);
}

// Null stands for the key's default value.
std::string_view Name(const char* name) {
    return name != nullptr ? name : "";
}

// The value in the text of the file, if there is a text and it can be parsed.
std::optional<RegistryEntry> Find(const std::optional<std::string>& text, const char* name) {
    return text ? FindRegistryEntry(*text, kKey, Name(name)) : std::nullopt;
}

bool IsShort(const RegistryEntry& entry) {
    return entry.data && entry.size <= entry.data->size();
}

std::optional<RegistryData> Query(const char* name) {
    const std::optional<std::string> text = ReadText(RegistryPath());
    const std::optional<RegistryEntry> entry = Find(text, name);
    return entry && IsShort(*entry) ? entry->data : std::nullopt;
}

std::optional<RegistryData> QueryOrCreate(const char* name, int default_value) {
    const std::filesystem::path path = Resolved(RegistryPath());
    std::error_code ignored;
    std::filesystem::create_directories(Folder(path), ignored);
    const std::string lock_path = path.string() + ".lock";
    const Descriptor lock(
        open(lock_path.c_str(), O_RDONLY | O_CREAT | O_CLOEXEC | O_NOFOLLOW, kRights));
    if (!lock.IsOpen() || !Lock(lock.Get()) || !MayWrite(path)) {
        return std::nullopt;
    }
    const std::optional<std::string> text = ReadText(path);
    const std::optional<RegistryEntry> entry = Find(text, name);
    if (!entry) {
        return std::nullopt;
    }
    if (IsShort(*entry)) {
        return entry->data;
    }
    const RegistryData number = ToData(default_value);
    const std::string changed = WithRegistryNumber(*text, kKey, Name(name), *entry, number);
    // A name with a line break has no form that could be read again.
    if (FindRegistryEntry(changed, kKey, Name(name))) {
        ReplaceText(path, changed);
    }
    return number;
}

}  // namespace

// No memory counts as no rights.

std::optional<RegistryData> QueryDebugValue(const char* name) {
    try {
        return Query(name);
    } catch (const std::exception&) {
        return std::nullopt;
    }
}

std::optional<RegistryData> QueryOrCreateDebugValue(const char* name, int default_value) {
    try {
        return QueryOrCreate(name, default_value);
    } catch (const std::exception&) {
        return std::nullopt;
    }
}

}  // namespace kvgeom::detail
