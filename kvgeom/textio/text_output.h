// SPDX-License-Identifier: MIT
#pragma once

#include <charconv>
#include <cstddef>
#include <cstdio>
#include <string_view>

namespace kvgeom::detail {

// What a writer says, gathered in a fixed buffer and handed to the stream in whole lines, when the
// buffer has no room for another one and at the end. Numbers look as printf makes them in the C
// locale, on every platform and whatever the locale.
class TextOutput {
  public:
    explicit TextOutput(std::FILE* stream) : m_stream(stream), m_end(m_buffer) {}
    ~TextOutput() { Flush(); }
    TextOutput(const TextOutput&) = delete;
    TextOutput& operator=(const TextOutput&) = delete;

    // Text of at most the size of the buffer.
    void Text(std::string_view text);
    void EndLine();
    // %20.15le
    void Scientific(double value);
    // %15.15lf
    void Fixed(double value);
    // %lu, or %hu of a value that fits it
    void Count(unsigned long value);

  private:
    // Makes room for so many characters.
    void Reserve(std::size_t count);
    void Flush();
    void NotFinite(double value, std::size_t width);
    void Finite(double value, std::chars_format format, std::size_t longest);

    // A record without points goes to the stream in one piece: the longest, a bore cone with a huge
    // radius, has some 700 characters.
    char m_buffer[2048];
    std::FILE* m_stream;
    char* m_end;
};

}  // namespace kvgeom::detail
