// SPDX-License-Identifier: MIT
#include <kvgeom/host/registry_text.h>

namespace kvgeom::detail {
namespace {

constexpr std::string_view kHeader = "Windows Registry Editor Version 5.00";
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

char Lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool EqualsIgnoringCase(std::string_view a, std::string_view b) {
    if (a.size() != b.size()) {
        return false;
    }
    for (std::size_t i = 0; i < a.size(); ++i) {
        if (Lower(a[i]) != Lower(b[i])) {
            return false;
        }
    }
    return true;
}

bool IsBlank(char c) {
    return c == ' ' || c == '\t';
}

int HexDigit(char c) {
    const char lower = Lower(c);
    if (lower >= '0' && lower <= '9') {
        return lower - '0';
    }
    return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

// A line, with the place behind its end.
struct Line {
    std::string_view content;  // without the end and the blanks around
    std::size_t next;
    bool has_end;
};

Line LineAt(std::string_view text, std::size_t at) {
    const std::size_t newline = text.find('\n', at);
    const bool has_end = newline != std::string_view::npos;
    std::string_view content = text.substr(at, has_end ? newline - at : text.npos);
    if (has_end && !content.empty() && content.back() == '\r') {
        content.remove_suffix(1);
    }
    while (!content.empty() && IsBlank(content.front())) {
        content.remove_prefix(1);
    }
    while (!content.empty() && IsBlank(content.back())) {
        content.remove_suffix(1);
    }
    return {content, has_end ? newline + 1 : text.size(), has_end};
}

// The data of a value as they are read, of which the first four bytes are kept.
struct Data {
    RegistryData bytes = {};
    std::size_t size = 0;

    void Append(unsigned byte) {
        if (size < bytes.size()) {
            bytes[size] = static_cast<unsigned char>(byte);
        }
        ++size;
    }
};

// Reads one value, whose hex list may take several lines.
class ValueReader {
  public:
    ValueReader(std::string_view text, std::size_t at) : m_text(text), m_line(LineAt(text, at)) {}

    bool Read(std::string_view wanted_name) {
        return ReadName(wanted_name) && Take("=") && ReadData();
    }

    bool NameMatches() const { return m_name_matches; }
    // "name"=- takes the value away.
    bool IsRemoval() const { return m_is_removal; }
    const Data& GetData() const { return m_data; }
    std::size_t End() const { return m_line.next; }

  private:
    bool Take(std::string_view expected) {
        SkipBlanks();
        if (!EqualsIgnoringCase(m_line.content.substr(0, expected.size()), expected)) {
            return false;
        }
        m_line.content.remove_prefix(expected.size());
        return true;
    }

    void SkipBlanks() {
        while (!m_line.content.empty() && IsBlank(m_line.content.front())) {
            m_line.content.remove_prefix(1);
        }
    }

    bool AtEnd() {
        SkipBlanks();
        return m_line.content.empty();
    }

    // The rest of a quoted text behind its first quote, a character at a time.
    template <class Use>
    bool ReadQuoted(Use use) {
        while (!m_line.content.empty()) {
            char c = m_line.content.front();
            m_line.content.remove_prefix(1);
            if (c == '"') {
                return true;
            }
            if (c == '\\') {
                if (m_line.content.empty()) {
                    return false;
                }
                c = m_line.content.front();
                m_line.content.remove_prefix(1);
            }
            use(c);
        }
        return false;
    }

    bool ReadName(std::string_view wanted) {
        if (Take("@")) {
            m_name_matches = wanted.empty();
            return true;
        }
        std::size_t length = 0;
        bool matches = true;
        const auto compare = [&](char c) {
            matches = matches && length < wanted.size() && Lower(c) == Lower(wanted[length]);
            ++length;
        };
        const bool is_read = Take("\"") && ReadQuoted(compare);
        m_name_matches = matches && length == wanted.size();
        return is_read;
    }

    bool ReadData() {
        if (Take("-")) {
            m_is_removal = true;
            return AtEnd();
        }
        if (Take("\"")) {
            const bool is_read =
                ReadQuoted([this](char c) { m_data.Append(static_cast<unsigned char>(c)); });
            m_data.Append(0);
            return is_read && AtEnd();
        }
        if (Take("dword:")) {
            return ReadNumber();
        }
        if (Take("hex:")) {
            return ReadList();
        }
        // With the number of the data's type.
        if (!Take("hex(")) {
            return false;
        }
        std::size_t digits = 0;
        while (!m_line.content.empty() && HexDigit(m_line.content.front()) >= 0) {
            m_line.content.remove_prefix(1);
            ++digits;
        }
        return digits > 0 && Take("):") && ReadList();
    }

    bool ReadNumber() {
        constexpr std::size_t kMostDigits = 8;
        SkipBlanks();
        unsigned number = 0;
        std::size_t digits = 0;
        for (; digits < m_line.content.size(); ++digits) {
            const int digit = HexDigit(m_line.content[digits]);
            if (digit < 0 || digits == kMostDigits) {
                return false;
            }
            number = number << 4U | static_cast<unsigned>(digit);
        }
        for (const unsigned char byte : ToData(static_cast<int>(number))) {
            m_data.Append(byte);
        }
        return digits == kMostDigits || (digits > 0 && m_line.has_end);
    }

    bool ReadByte() {
        if (m_line.content.size() < 2) {
            return false;
        }
        const int high = HexDigit(m_line.content[0]);
        const int low = HexDigit(m_line.content[1]);
        if (high < 0 || low < 0) {
            return false;
        }
        m_data.Append(static_cast<unsigned>(16 * high + low));
        m_line.content.remove_prefix(2);
        return true;
    }

    // Goes on in the next line behind a backslash.
    bool Continue() {
        if (!Take("\\")) {
            return true;
        }
        if (!AtEnd() || !m_line.has_end) {
            return false;
        }
        m_line = LineAt(m_text, m_line.next);
        return true;
    }

    bool ReadList() {
        if (!Continue()) {
            return false;
        }
        if (AtEnd()) {
            return m_line.has_end;
        }
        do {
            if (!Continue()) {
                return false;
            }
            SkipBlanks();
            if (!ReadByte()) {
                return false;
            }
        } while (Take(","));
        return AtEnd() && m_line.has_end;
    }

    std::string_view m_text;
    Line m_line;  // what is left of it
    bool m_name_matches = false;
    bool m_is_removal = false;
    Data m_data;
};

bool IsSection(std::string_view line) {
    return line.size() > 2 && line.front() == '[' && line.back() == ']';
}

// Whether the text between the brackets takes the key away: a minus sign, and the key itself or one
// that it lies under.
bool IsRemovalOf(std::string_view section, std::string_view key) {
    if (section.front() != '-') {
        return false;
    }
    const std::string_view removed = section.substr(1);
    return EqualsIgnoringCase(removed, key.substr(0, removed.size())) &&
           (removed.size() == key.size() || key[removed.size()] == '\\');
}

}  // namespace

std::optional<RegistryEntry> FindRegistryEntry(std::string_view text, std::string_view key,
                                               std::string_view name) {
    const bool has_mark = text.substr(0, kByteOrderMark.size()) == kByteOrderMark;
    const Line header = LineAt(text, has_mark ? kByteOrderMark.size() : 0);
    if (header.content != kHeader) {
        return std::nullopt;
    }
    RegistryEntry entry;
    bool in_some_section = false;
    bool in_section = false;
    for (std::size_t at = header.next; at < text.size();) {
        const Line line = LineAt(text, at);
        if (line.content.empty() || line.content.front() == ';') {
            at = line.next;
        } else if (IsSection(line.content)) {
            const std::string_view section = line.content.substr(1, line.content.size() - 2);
            in_some_section = true;
            in_section = EqualsIgnoringCase(section, key);
            at = line.next;
            if (IsRemovalOf(section, key)) {
                entry = {};
            }
            if (in_section && !entry.data) {
                entry.has_place = true;
                entry.begin = entry.end = at;
            }
        } else {
            ValueReader value(text, at);
            if (!in_some_section || !value.Read(name)) {
                return std::nullopt;
            }
            if (in_section && value.NameMatches() && value.IsRemoval()) {
                entry.data = std::nullopt;
                entry.begin = entry.end = value.End();
            } else if (in_section && value.NameMatches()) {
                entry.data = value.GetData().bytes;
                entry.size = value.GetData().size;
                entry.begin = at;
                entry.end = value.End();
            } else if (in_section && !entry.data) {
                entry.begin = entry.end = value.End();
            }
            at = value.End();
        }
    }
    return entry;
}

std::string EmptyRegistryText() {
    return std::string(kHeader) + "\n";
}

std::string WithRegistryNumber(std::string_view text, std::string_view key, std::string_view name,
                               const RegistryEntry& entry, const RegistryData& number) {
    constexpr char kDigits[] = "0123456789abcdef";
    const std::size_t first_end = text.find('\n');
    const bool has_returns =
        first_end != std::string_view::npos && first_end > 0 && text[first_end - 1] == '\r';
    const std::string end = has_returns ? "\r\n" : "\n";

    std::string value = name.empty() ? "@" : "\"";
    for (const char c : name) {
        value += c == '"' || c == '\\' ? "\\" : "";
        value += c;
    }
    value += name.empty() ? "=dword:" : "\"=dword:";
    for (std::size_t i = number.size(); i-- > 0;) {
        value += kDigits[number[i] >> 4U];
        value += kDigits[number[i] & 0xFU];
    }
    value += end;

    std::string result(text);
    if (entry.has_place) {
        const bool lacks_end = entry.begin == text.size() && text.back() != '\n';
        result.replace(entry.begin, entry.end - entry.begin, lacks_end ? end + value : value);
        return result;
    }
    if (result.back() != '\n') {
        result += end;
    }
    return result + end + "[" + std::string(key) + "]" + end + value;
}

}  // namespace kvgeom::detail
