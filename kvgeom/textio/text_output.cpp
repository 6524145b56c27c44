// SPDX-License-Identifier: MIT
#include <kvgeom/textio/text_output.h>

#include <algorithm>
#include <cfloat>
#include <cmath>
#include <iterator>
#include <limits>

namespace kvgeom::detail {

namespace {

constexpr int kDecimals = 15;
constexpr std::size_t kScientificWidth = 20;
constexpr std::size_t kFixedWidth = 15;

// The longest numbers: a sign, the digits before the point, the point and the digits after it, and,
// in scientific form, e-308.
constexpr std::size_t kLongestScientific = 1 + 1 + 1 + kDecimals + 5;
constexpr std::size_t kLongestFixed = 1 + (DBL_MAX_10_EXP + 1) + 1 + kDecimals;
constexpr std::size_t kLongestCount = std::numeric_limits<unsigned long>::digits10 + 1;

// A label and a number in fixed form.
constexpr std::size_t kLongestLine = 32 + kLongestFixed;

}  // namespace

void TextOutput::Text(std::string_view text) {
    Reserve(text.size());
    m_end = std::copy(text.begin(), text.end(), m_end);
}

void TextOutput::EndLine() {
    Text("\n");
    Reserve(kLongestLine);
}

void TextOutput::Scientific(double value) {
    if (!std::isfinite(value)) {
        NotFinite(value, kScientificWidth);
        return;
    }
    Finite(value, std::chars_format::scientific, kLongestScientific);
}

void TextOutput::Fixed(double value) {
    if (!std::isfinite(value)) {
        NotFinite(value, kFixedWidth);
        return;
    }
    Finite(value, std::chars_format::fixed, kLongestFixed);
}

void TextOutput::Count(unsigned long value) {
    Reserve(kLongestCount);
    m_end = std::to_chars(m_end, m_end + kLongestCount, value).ptr;
}

void TextOutput::Reserve(std::size_t count) {
    if (static_cast<std::size_t>(std::end(m_buffer) - m_end) < count) {
        Flush();
    }
}

void TextOutput::Flush() {
    // A short write is the stream's error, which the caller may ask it for. The count is kept in a
    // variable because some C libraries warn when it is dropped.
    const auto size = static_cast<std::size_t>(m_end - m_buffer);
    [[maybe_unused]] const std::size_t written = std::fwrite(m_buffer, 1, size, m_stream);
    m_end = m_buffer;
}

void TextOutput::NotFinite(double value, std::size_t width) {
    const std::string_view name = std::isnan(value) ? "-nan" : "-inf";
    const std::string_view text = std::signbit(value) ? name : name.substr(1);
    Reserve(width);
    m_end = std::fill_n(m_end, width - text.size(), ' ');
    m_end = std::copy(text.begin(), text.end(), m_end);
}

// A finite number always fills its field, so it needs no padding.
void TextOutput::Finite(double value, std::chars_format format, std::size_t longest) {
    Reserve(longest);
    m_end = std::to_chars(m_end, m_end + longest, value, format, kDecimals).ptr;
}

}  // namespace kvgeom::detail
