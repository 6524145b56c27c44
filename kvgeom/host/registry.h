// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <optional>

namespace kvgeom::detail {

// The registry key of the debug switches, as the platform keeps it.

// Up to four bytes as they are stored, the least significant first; the rest are zero.
using RegistryData = std::array<unsigned char, 4>;

// The data of a value. Nothing when the key or the value is missing, unreadable or longer.
std::optional<RegistryData> QueryDebugValue(const char* name);

// The same with the key opened for all access, and created where it is missing; a value that can't
// be queried is written as a number, and its data returned even if that fails. Nothing when the key
// can't be opened so.
std::optional<RegistryData> QueryOrCreateDebugValue(const char* name, int default_value);

inline RegistryData ToData(int value) {
    const auto bits = static_cast<unsigned>(value);
    return {static_cast<unsigned char>(bits), static_cast<unsigned char>(bits >> 8U),
            static_cast<unsigned char>(bits >> 16U), static_cast<unsigned char>(bits >> 24U)};
}

inline int ToInt(const RegistryData& data) {
    return static_cast<int>(data[0] | static_cast<unsigned>(data[1]) << 8U |
                            static_cast<unsigned>(data[2]) << 16U |
                            static_cast<unsigned>(data[3]) << 24U);
}

}  // namespace kvgeom::detail
