#include "platform/ProfileText.h"

namespace platform::profile
{

namespace
{
constexpr std::string_view UTF8_BOM = "\xEF\xBB\xBF";
constexpr uint64_t FNV_OFFSET = 14695981039346656037ull;
constexpr uint64_t FNV_PRIME = 1099511628211ull;

char LowerAscii(char p_c)
{
    return (p_c >= 'A' && p_c <= 'Z') ? static_cast<char>(p_c - 'A' + 'a') : p_c;
}

std::string_view Unquote(std::string_view p_value)
{
    if (p_value.size() >= 2 && (p_value.front() == '"' || p_value.front() == '\'') && p_value.back() == p_value.front())
    {
        return p_value.substr(1, p_value.size() - 2);
    }
    return p_value;
}
} // namespace

bool EqualsNoCase(std::string_view p_a, std::string_view p_b)
{
    if (p_a.size() != p_b.size())
    {
        return false;
    }
    for (size_t i = 0; i < p_a.size(); ++i)
    {
        if (LowerAscii(p_a[i]) != LowerAscii(p_b[i]))
        {
            return false;
        }
    }
    return true;
}

uint64_t HashNoCase(std::string_view p_name)
{
    uint64_t hash = FNV_OFFSET;
    for (char c : p_name)
    {
        hash = (hash ^ static_cast<unsigned char>(LowerAscii(c))) * FNV_PRIME;
    }
    return hash;
}

std::string_view TrimLeft(std::string_view p_text)
{
    const size_t first = p_text.find_first_not_of(BLANKS);
    return first == std::string_view::npos ? std::string_view() : p_text.substr(first);
}

std::string_view TrimRight(std::string_view p_text)
{
    const size_t last = p_text.find_last_not_of(BLANKS);
    return last == std::string_view::npos ? std::string_view() : p_text.substr(0, last + 1);
}

std::string_view Trim(std::string_view p_text)
{
    return TrimRight(TrimLeft(p_text));
}

size_t BomLength(std::string_view p_data)
{
    return p_data.substr(0, UTF8_BOM.size()) == UTF8_BOM ? UTF8_BOM.size() : 0;
}

bool LineWalker::Next(Line& p_line)
{
    if (m_pos >= m_data.size())
    {
        return false;
    }
    p_line.m_begin = m_pos;
    const size_t end = m_data.find_first_of("\r\n", m_pos);
    if (end == std::string_view::npos)
    {
        p_line.m_contentEnd = m_data.size();
        p_line.m_end = m_data.size();
    }
    else
    {
        p_line.m_contentEnd = end;
        const bool crlf = m_data[end] == '\r' && end + 1 < m_data.size() && m_data[end + 1] == '\n';
        p_line.m_end = end + (crlf ? 2 : 1);
    }
    m_pos = p_line.m_end;
    return true;
}

std::string_view DetectLineEnd(std::string_view p_data)
{
    LineWalker walker(p_data);
    Line line;
    while (walker.Next(line))
    {
        if (line.m_end > line.m_contentEnd)
        {
            return p_data.substr(line.m_contentEnd, line.m_end - line.m_contentEnd);
        }
    }
    return "\n";
}

bool EndsWithLineEnd(std::string_view p_data)
{
    return !p_data.empty() && (p_data.back() == '\n' || p_data.back() == '\r');
}

ParsedLine ParseLine(std::string_view p_text)
{
    ParsedLine parsed;
    const std::string_view text = TrimLeft(p_text);
    if (text.empty())
    {
        parsed.m_kind = LineKind::BLANK;
        return parsed;
    }
    if (text[0] == ';')
    {
        parsed.m_kind = LineKind::COMMENT;
        return parsed;
    }
    if (text[0] == '[')
    {
        const size_t close = text.find(']');
        if (close != std::string_view::npos)
        {
            parsed.m_kind = LineKind::SECTION;
            parsed.m_name = Trim(text.substr(1, close - 1));
        }
        return parsed;
    }
    const size_t equals = p_text.find('=');
    if (equals == std::string_view::npos)
    {
        return parsed;
    }
    parsed.m_name = Trim(p_text.substr(0, equals));
    if (parsed.m_name.empty())
    {
        return parsed;
    }
    const std::string_view afterEquals = p_text.substr(equals + 1);
    const std::string_view valueText = TrimLeft(afterEquals);
    parsed.m_kind = LineKind::KEY;
    parsed.m_valueStart = equals + 1 + (afterEquals.size() - valueText.size());
    parsed.m_value = Unquote(TrimRight(valueText));
    return parsed;
}

} // namespace platform::profile
