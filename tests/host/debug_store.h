// SPDX-License-Identifier: MIT
#pragma once

// Runs debug_scenario, and prepares the registry that it reads: the real one on Windows, else a
// file.

#include "tests/support/scratch_folder.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string>
#include <vector>

#if defined(_WIN32)
#include <windows.h>
#endif

namespace kvgeom::test {

#if defined(_WIN32)

/// The key of the switches in the registry, removed before and after.
class DebugStore {
  public:
    DebugStore() { Remove(); }
    ~DebugStore() { Remove(); }
    DebugStore(const DebugStore&) = delete;
    DebugStore& operator=(const DebugStore&) = delete;

    void SetNumber(const char* name, std::uint32_t value) { Set(name, REG_DWORD, &value, 4); }
    void SetBytes(const char* name, const std::vector<unsigned char>& bytes) {
        Set(name, REG_BINARY, bytes.data(), bytes.size());
    }
    void SetText(const char* name, const std::string& text) {
        Set(name, REG_SZ, text.c_str(), text.size() + 1);
    }

    std::optional<std::uint32_t> Number(const char* name) const {
        std::uint32_t value = 0;
        DWORD size = 4;
        return RegGetValueA(HKEY_LOCAL_MACHINE, kKey, name, RRF_RT_REG_DWORD, nullptr, &value,
                            &size) == ERROR_SUCCESS
                   ? std::optional(value)
                   : std::nullopt;
    }

  private:
    static constexpr char kKey[] = "SOFTWARE\\Kestrine\\Veltor\\Core\\Debug";

    static void Remove() { RegDeleteTreeA(HKEY_LOCAL_MACHINE, "SOFTWARE\\Kestrine"); }
    static void Set(const char* name, DWORD type, const void* data, size_t size) {
        RegSetKeyValueA(HKEY_LOCAL_MACHINE, kKey, name, type, data, static_cast<DWORD>(size));
    }
};

#else

/// A registry file in a folder of its own, which the environment names.
class DebugStore {
  public:
    DebugStore() { setenv("KVGEOM_REGISTRY", Path().c_str(), 1); }

    std::string Path() const { return m_folder.Path("registry.reg"); }
    void SetContent(const std::string& content) const { m_folder.Write("registry.reg", content); }
    std::string Content() const { return ReadFile(Path()); }

    void SetNumber(const char* name, std::uint32_t value) {
        char text[20];
        std::snprintf(text, sizeof text, "dword:%08x", value);
        Add(name, text);
    }
    void SetBytes(const char* name, const std::vector<unsigned char>& bytes) {
        std::string text = "hex:";
        for (const unsigned char byte : bytes) {
            char digits[8];
            std::snprintf(digits, sizeof digits, "%s%02x", text.size() > 4 ? "," : "", byte);
            text += digits;
        }
        Add(name, text);
    }
    void SetText(const char* name, const std::string& text) { Add(name, '"' + text + '"'); }

    std::optional<std::uint32_t> Number(const char* name) const {
        const std::string content = Content();
        const std::string start = "\n\"" + std::string(name) + "\"=dword:";
        const size_t at = content.find(start);
        if (at == std::string::npos) {
            return std::nullopt;
        }
        return static_cast<std::uint32_t>(
            std::strtoul(content.c_str() + at + start.size(), nullptr, 16));
    }

    static std::string Header() { return "Windows Registry Editor Version 5.00\n\n"; }
    static std::string Section() {
        return "[HKEY_LOCAL_MACHINE\\SOFTWARE\\Kestrine\\Veltor\\Core\\Debug]\n";
    }

  private:
    void Add(const char* name, const std::string& data) {
        const std::string content = Content();
        SetContent((content.empty() ? Header() + Section() : content) + '"' + name + "\"=" + data +
                   "\n");
    }

    ScratchFolder m_folder;
};

#endif

/// What debug_scenario prints for the commands; it runs in the current folder.
inline std::string Scenario(const std::string& commands, const char* program = DEBUG_SCENARIO) {
    const ScratchFolder folder;
    const std::string out = folder.Path("out");
    const int status =
        std::system((std::string(program) + " " + commands + " > " + out + " 2>&1").c_str());
    std::string text = ReadFile(out);
    std::erase(text, '\r');
    return status == 0 ? text : text + "failed";
}

}  // namespace kvgeom::test
