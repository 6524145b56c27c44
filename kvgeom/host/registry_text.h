// SPDX-License-Identifier: MIT
#pragma once

// The registry editor's text format, in UTF-8: a header line; sections, a key in brackets; values,
// a quoted name (or @), an equals sign, and dword:, hex: or quoted data; comments behind a
// semicolon; blank lines. A hex list goes on in the next line behind a backslash. A minus sign
// instead of the data takes the value away, one before the key takes the key away, with all keys
// below it. Names compare without case.

#include <kvgeom/host/registry.h>

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace kvgeom::detail {

// What a registry text says of one value of one key; the last of several sections or values counts.
struct RegistryEntry {
    // The value's data, and how many bytes they are; nothing when there is no such value.
    std::optional<RegistryData> data;
    std::size_t size = 0;

    // The part of the text where the value stands, or the empty part at the end of the key's
    // section where it would; nothing when there is no such section.
    bool has_place = false;
    std::size_t begin = 0;
    std::size_t end = 0;
};

// Nothing when the text can't be parsed: without the header line, with a line that is none of the
// above, or cut short. The data of a last line without an end count only if more of them could not
// follow.
std::optional<RegistryEntry> FindRegistryEntry(std::string_view text, std::string_view key,
                                               std::string_view name);

// A text without any key.
std::string EmptyRegistryText();

// The text with the value set to a number; all else stays.
std::string WithRegistryNumber(std::string_view text, std::string_view key, std::string_view name,
                               const RegistryEntry& entry, const RegistryData& number);

}  // namespace kvgeom::detail
