#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

// The lines of an INI file as the private-profile calls read them, shared by the reader's
// index and the writer. Names compare case-insensitively (ASCII letters only), blanks around
// names and values do not count, and a value in matching quotes loses them.
namespace platform::profile
{

inline constexpr std::string_view BLANKS = " \t\r\n\v\f";

bool EqualsNoCase(std::string_view p_a, std::string_view p_b);
// A hash that names equal but for case share.
uint64_t HashNoCase(std::string_view p_name);
std::string_view TrimLeft(std::string_view p_text);
std::string_view TrimRight(std::string_view p_text);
std::string_view Trim(std::string_view p_text);
// The length of a UTF-8 byte order mark at the start, or 0.
size_t BomLength(std::string_view p_data);

// A line's byte range in the file: [m_begin, m_contentEnd) is its text, [m_contentEnd, m_end)
// its line end ("\r\n", "\n", "\r", or nothing on an unterminated last line).
struct Line
{
    size_t m_begin = 0;
    size_t m_contentEnd = 0;
    size_t m_end = 0;
};

// Walks the lines of a file, after its byte order mark. A line ends at CR LF, at LF, or at a
// CR alone (files saved by old Mac editors).
class LineWalker
{
public:
    explicit LineWalker(std::string_view p_data) : m_data(p_data), m_pos(BomLength(p_data)) {}

    bool Next(Line& p_line);
    std::string_view Text(const Line& p_line) const
    {
        return m_data.substr(p_line.m_begin, p_line.m_contentEnd - p_line.m_begin);
    }

private:
    std::string_view m_data;
    size_t m_pos;
};

// The line end the file uses first ("\n" when it has none), for lines a write adds.
std::string_view DetectLineEnd(std::string_view p_data);
// Whether the text ends with a line end.
bool EndsWithLineEnd(std::string_view p_data);

enum class LineKind
{
    BLANK,
    COMMENT,
    SECTION,
    KEY,
    OTHER
};

struct ParsedLine
{
    LineKind m_kind = LineKind::OTHER;
    std::string_view m_name;  // section or key name, trimmed
    std::string_view m_value; // trimmed and unquoted
    size_t m_valueStart = 0;  // offset in the line where the value's text begins
};

// A comment starts with ';'; a section header with '[' and its name ends at the first ']'
// (a '[' line without one is nothing); a key line has a non-blank name before its first '='.
ParsedLine ParseLine(std::string_view p_text);

} // namespace platform::profile
