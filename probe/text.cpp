// SPDX-License-Identifier: MIT
#include "probe/text.h"

#include <kvgeom/kernel/rounding.h>

#include <array>
#include <cmath>

namespace kvprobe {
namespace {

constexpr double kUnbounded = 1e30;

bool IsContinuation(char c) {
    return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U;
}

// The length of the printable UTF-8 character at the given place, or 0 if there is none: bytes that
// are no character, the control characters of ASCII and of Latin-1, overlong forms, surrogates, and
// what Unicode and XML leave out (beyond U+10FFFF, U+FFFE and U+FFFF).
size_t CharacterLength(const std::string& text, size_t at) {
    const auto lead = static_cast<unsigned char>(text[at]);
    if (lead < 0x80) {
        return lead >= 0x20 && lead != 0x7F ? 1 : 0;
    }
    const size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    if (lead < 0xC2 || lead > 0xF4 || at + length > text.size()) {
        return 0;
    }
    unsigned long code = lead & (0x7FU >> length);
    for (size_t i = 1; i < length; ++i) {
        if (!IsContinuation(text[at + i])) {
            return 0;
        }
        code = (code << 6U) | (static_cast<unsigned char>(text[at + i]) & 0x3FU);
    }
    constexpr std::array<unsigned long, 5> kSmallestOfLength = {0, 0, 0xA0, 0x800, 0x10000};
    const bool is_surrogate = code >= 0xD800 && code <= 0xDFFF;
    const bool is_character = code >= kSmallestOfLength[length] && code <= 0x10FFFF &&
                              !is_surrogate && code != 0xFFFE && code != 0xFFFF;
    return is_character ? length : 0;
}

}  // namespace

std::string Printable(const std::string& text) {
    std::string result;
    for (size_t at = 0; at < text.size();) {
        const size_t length = CharacterLength(text, at);
        if (length == 0) {
            result += '?';
            ++at;
        } else {
            result.append(text, at, length);
            at += length;
        }
    }
    return result;
}

size_t CountCharacters(const std::string& text) {
    size_t count = 0;
    for (const char c : text) {
        count += IsContinuation(c) ? 0 : 1;
    }
    return count;
}

std::string Shortened(const std::string& text, size_t characters) {
    const size_t count = CountCharacters(text);
    if (count <= characters) {
        return text;
    }
    // The beginning of a name tells most, its end tells twins apart.
    const size_t tail = characters / 4;
    const size_t head = characters - tail - 1;
    std::string result;
    size_t index = 0;
    for (const char c : text) {
        const bool begins = !IsContinuation(c);
        if (begins && index == head) {
            result += "\u2026";
        }
        index += begins ? 1 : 0;
        if (index <= head || index > count - tail) {
            result += c;
        }
    }
    return result;
}

std::string XmlEscaped(const std::string& text) {
    std::string result;
    for (const char c : text) {
        switch (c) {
            case '&':
                result += "&amp;";
                break;
            case '<':
                result += "&lt;";
                break;
            case '>':
                result += "&gt;";
                break;
            case '"':
                result += "&quot;";
                break;
            default:
                result += c;
        }
    }
    return result;
}

std::string Decimal(double value, int decimals) {
    if (std::fabs(value) >= kUnbounded) {
        return value > 0 ? "inf" : "-inf";
    }
    std::array<char, 64> text;
    double rounded;
    KVRoundValue(value, decimals, &rounded, text.size(), text.data());
    return text.data();
}

}  // namespace kvprobe
