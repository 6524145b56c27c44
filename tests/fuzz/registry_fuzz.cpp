// SPDX-License-Identifier: MIT

// The text of the registry file. One that can be parsed takes a number, gives it back, and keeps
// all else; one that can't is refused again.

#include <kvgeom/host/registry_text.h>

#include <cstdint>
#include <cstdlib>

using namespace kvgeom::detail;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr std::string_view kKey = "HKEY_LOCAL_MACHINE\\A\\B";
    constexpr std::string_view kName = "Value";
    const std::string text(reinterpret_cast<const char*>(data), size);
    const std::optional<RegistryEntry> entry = FindRegistryEntry(text, kKey, kName);
    if (!entry) {
        return 0;
    }
    const RegistryData number = ToData(0x12345678);
    const std::string changed = WithRegistryNumber(text, kKey, kName, *entry, number);
    const std::optional<RegistryEntry> found = FindRegistryEntry(changed, kKey, kName);
    const std::size_t begin = entry->has_place ? entry->begin : text.size();
    const std::size_t kept = entry->has_place ? text.size() - entry->end : 0;
    if (!found || found->data != number || found->size != number.size() ||
        changed.compare(0, begin, text, 0, begin) != 0 ||
        changed.compare(changed.size() - kept, kept, text, text.size() - kept, kept) != 0) {
        std::abort();
    }
    return 0;
}
