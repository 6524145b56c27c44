// SPDX-License-Identifier: MIT
#include <kvgeom/host/registry.h>

#include <windows.h>

namespace kvgeom::detail {
namespace {

constexpr char kKey[] = "SOFTWARE\\Kestrine\\Veltor\\Core\\Debug";

std::optional<RegistryData> Query(HKEY key, const char* name) {
    RegistryData data = {};
    DWORD size = static_cast<DWORD>(data.size());
    const LSTATUS status = RegQueryValueExA(key, name, nullptr, nullptr, data.data(), &size);
    return status == ERROR_SUCCESS ? std::optional(data) : std::nullopt;
}

}  // namespace

std::optional<RegistryData> QueryDebugValue(const char* name) {
    HKEY key;
    if (RegOpenKeyExA(HKEY_LOCAL_MACHINE, kKey, 0, KEY_QUERY_VALUE, &key) != ERROR_SUCCESS) {
        return std::nullopt;
    }
    const std::optional<RegistryData> data = Query(key, name);
    RegCloseKey(key);
    return data;
}

std::optional<RegistryData> QueryOrCreateDebugValue(const char* name, int default_value) {
    char value_class[] = "REG_DWORD";
    HKEY key;
    DWORD disposition;
    if (RegCreateKeyExA(HKEY_LOCAL_MACHINE, kKey, 0, value_class, REG_OPTION_NON_VOLATILE,
                        KEY_ALL_ACCESS, nullptr, &key, &disposition) != ERROR_SUCCESS) {
        return std::nullopt;
    }
    std::optional<RegistryData> data;
    if (disposition != REG_CREATED_NEW_KEY) {
        data = Query(key, name);
    }
    if (!data) {
        data = ToData(default_value);
        RegSetValueExA(key, name, 0, REG_DWORD, data->data(), static_cast<DWORD>(data->size()));
    }
    RegCloseKey(key);
    return data;
}

}  // namespace kvgeom::detail
