// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>

namespace kvprobe {

/// The text with everything that is not printable UTF-8 replaced by '?': names come from files that
/// nobody vouches for, and go to terminals and into XML.
std::string Printable(const std::string& text);

/// How many characters a UTF-8 text has.
size_t CountCharacters(const std::string& text);

/// The text cut to a number of characters, with an ellipsis for what is left out before its end.
std::string Shortened(const std::string& text, size_t characters);

/// The text with the characters escaped that mean something in XML.
std::string XmlEscaped(const std::string& text);

/// A number with so many decimals and a decimal point; "inf" for the kernel's infinity.
std::string Decimal(double value, int decimals);

}  // namespace kvprobe
