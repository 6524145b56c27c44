// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <fstream>
#include <random>
#include <sstream>
#include <string>

namespace kvgeom::test {

/// A folder of a test's own, removed with all it holds.
class ScratchFolder {
  public:
    ScratchFolder() : m_folder(std::filesystem::temp_directory_path() / Name()) {
        std::filesystem::create_directories(m_folder);
    }
    ~ScratchFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(m_folder, ignored);
    }
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    std::string Path(const std::string& name) const { return (m_folder / name).string(); }

    std::string Write(const std::string& name, const std::string& content) const {
        std::ofstream(Path(name), std::ios::binary) << content;
        return Path(name);
    }

  private:
    static std::string Name() {
        std::random_device random;
        return "kvgeom_test_" + std::to_string(random()) + std::to_string(random());
    }

    std::filesystem::path m_folder;
};

inline std::string ReadFile(const std::string& path) {
    std::ostringstream text;
    text << std::ifstream(path, std::ios::binary).rdbuf();
    return text.str();
}

}  // namespace kvgeom::test
