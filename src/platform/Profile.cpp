#include "platform/Profile.h"

#include "platform/Paths.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <limits>
#include <string>
#include <string_view>
#include <system_error>
#include <unordered_set>
#include <vector>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace platform
{

namespace
{
namespace fs = std::filesystem;

// The game's profiles are a few kilobytes; anything far bigger is not one of them, and
// reading it whole on every call would cost more than it could be worth.
constexpr size_t MAX_PROFILE_BYTES = 16u * 1024u * 1024u;
constexpr std::string_view BLANKS = " \t\r\n\v\f";
constexpr std::string_view UTF8_BOM = "\xEF\xBB\xBF";

char LowerAscii(char p_c)
{
    return (p_c >= 'A' && p_c <= 'Z') ? static_cast<char>(p_c - 'A' + 'a') : p_c;
}

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

std::string LowerCopy(std::string_view p_text)
{
    std::string lower(p_text);
    for (char& c : lower)
    {
        c = LowerAscii(c);
    }
    return lower;
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

std::string_view Unquote(std::string_view p_value)
{
    if (p_value.size() >= 2 && (p_value.front() == '"' || p_value.front() == '\'') &&
        p_value.back() == p_value.front())
    {
        return p_value.substr(1, p_value.size() - 2);
    }
    return p_value;
}

size_t BomLength(std::string_view p_data)
{
    return p_data.substr(0, UTF8_BOM.size()) == UTF8_BOM ? UTF8_BOM.size() : 0;
}

// A line's byte range in the file: [m_begin, m_contentEnd) is its text, [m_contentEnd, m_end)
// its line end ("\r\n", "\n", or nothing on an unterminated last line).
struct Line
{
    size_t m_begin = 0;
    size_t m_contentEnd = 0;
    size_t m_end = 0;
};

class LineWalker
{
public:
    explicit LineWalker(std::string_view p_data) : m_data(p_data), m_pos(BomLength(p_data)) {}

    bool Next(Line& p_line)
    {
        if (m_pos >= m_data.size())
        {
            return false;
        }
        p_line.m_begin = m_pos;
        const size_t newline = m_data.find('\n', m_pos);
        if (newline == std::string_view::npos)
        {
            p_line.m_contentEnd = m_data.size();
            p_line.m_end = m_data.size();
        }
        else
        {
            p_line.m_end = newline + 1;
            p_line.m_contentEnd = (newline > m_pos && m_data[newline - 1] == '\r') ? newline - 1 : newline;
        }
        m_pos = p_line.m_end;
        return true;
    }

    std::string_view Text(const Line& p_line) const
    {
        return m_data.substr(p_line.m_begin, p_line.m_contentEnd - p_line.m_begin);
    }

private:
    std::string_view m_data;
    size_t m_pos;
};

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

enum class LoadResult
{
    MISSING,
    LOADED,
    FAILED
};

// Reads the whole file. A name that resolved to nothing counts as a missing file.
LoadResult LoadProfile(const std::string& p_path, std::string& p_data)
{
    p_data.clear();
    if (p_path.empty())
    {
        return LoadResult::MISSING;
    }
    std::error_code ec;
    const fs::file_status status = fs::status(p_path, ec);
    if (status.type() == fs::file_type::not_found)
    {
        return LoadResult::MISSING;
    }
    if (ec || status.type() != fs::file_type::regular)
    {
        return LoadResult::FAILED;
    }
    const uintmax_t size = fs::file_size(p_path, ec);
    if (ec || size > MAX_PROFILE_BYTES)
    {
        return LoadResult::FAILED;
    }
    std::FILE* file = std::fopen(p_path.c_str(), "rb");
    if (file == nullptr)
    {
        return LoadResult::FAILED;
    }
    p_data.reserve(static_cast<size_t>(size));
    char chunk[16384];
    bool ok = true;
    for (;;)
    {
        const size_t got = std::fread(chunk, 1, sizeof(chunk), file);
        if (got > 0)
        {
            // The file may have grown since its size was taken.
            if (p_data.size() + got > MAX_PROFILE_BYTES)
            {
                ok = false;
                break;
            }
            p_data.append(chunk, got);
        }
        if (got < sizeof(chunk))
        {
            ok = std::ferror(file) == 0;
            break;
        }
    }
    std::fclose(file);
    if (!ok)
    {
        p_data.clear();
        return LoadResult::FAILED;
    }
    return LoadResult::LOADED;
}

bool WriteAll(int p_fd, std::string_view p_data)
{
    while (!p_data.empty())
    {
        const ssize_t written = ::write(p_fd, p_data.data(), p_data.size());
        if (written < 0)
        {
            if (errno == EINTR)
            {
                continue;
            }
            return false;
        }
        p_data.remove_prefix(static_cast<size_t>(written));
    }
    return true;
}

// Writes the new contents beside the old file and renames it over, so a crash or a full disk
// leaves either the old file or the new one, never a mix.
bool ReplaceFile(const std::string& p_path, std::string_view p_data)
{
    static std::atomic<unsigned> s_counter{0};
    std::string tempPath;
    int fd = -1;
    for (int attempt = 0; attempt < 16 && fd < 0; ++attempt)
    {
        tempPath = p_path + ".tmp" + std::to_string(::getpid()) + "_" + std::to_string(s_counter++);
        fd = ::open(tempPath.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0644);
        if (fd < 0 && errno != EEXIST)
        {
            return false;
        }
    }
    if (fd < 0)
    {
        return false;
    }
    struct stat old = {};
    if (::stat(p_path.c_str(), &old) == 0)
    {
        // Keep the permissions the player gave the file; failing to is not worth a failed write.
        (void)::fchmod(fd, old.st_mode & 07777);
    }
    bool ok = WriteAll(fd, p_data) && ::fsync(fd) == 0;
    ok = (::close(fd) == 0) && ok;
    if (ok)
    {
        ok = std::rename(tempPath.c_str(), p_path.c_str()) == 0;
    }
    if (!ok)
    {
        ::unlink(tempPath.c_str());
    }
    return ok;
}

// The value of p_key in the first section named p_section.
bool FindValue(std::string_view p_data, std::string_view p_section, std::string_view p_key,
               std::string_view& p_value)
{
    LineWalker walker(p_data);
    Line line;
    bool inSection = false;
    bool seenSection = false;
    while (walker.Next(line))
    {
        const ParsedLine parsed = ParseLine(walker.Text(line));
        if (parsed.m_kind == LineKind::SECTION)
        {
            if (seenSection)
            {
                return false; // only the first section of that name counts
            }
            inSection = EqualsNoCase(parsed.m_name, p_section);
            seenSection = inSection;
        }
        else if (inSection && parsed.m_kind == LineKind::KEY && EqualsNoCase(parsed.m_name, p_key))
        {
            p_value = parsed.m_value;
            return true;
        }
    }
    return false;
}

// Adds p_name unless a name equal but for case is already listed.
void AddUnique(std::string_view p_name, std::vector<std::string_view>& p_names,
               std::unordered_set<std::string>& p_seen)
{
    if (p_seen.insert(LowerCopy(p_name)).second)
    {
        p_names.push_back(p_name);
    }
}

void ListSections(std::string_view p_data, std::vector<std::string_view>& p_names)
{
    std::unordered_set<std::string> seen;
    LineWalker walker(p_data);
    Line line;
    while (walker.Next(line))
    {
        const ParsedLine parsed = ParseLine(walker.Text(line));
        if (parsed.m_kind == LineKind::SECTION)
        {
            AddUnique(parsed.m_name, p_names, seen);
        }
    }
}

void ListKeys(std::string_view p_data, std::string_view p_section, std::vector<std::string_view>& p_names)
{
    std::unordered_set<std::string> seen;
    LineWalker walker(p_data);
    Line line;
    bool inSection = false;
    bool seenSection = false;
    while (walker.Next(line))
    {
        const ParsedLine parsed = ParseLine(walker.Text(line));
        if (parsed.m_kind == LineKind::SECTION)
        {
            if (seenSection)
            {
                return;
            }
            inSection = EqualsNoCase(parsed.m_name, p_section);
            seenSection = inSection;
        }
        else if (inSection && parsed.m_kind == LineKind::KEY)
        {
            AddUnique(parsed.m_name, p_names, seen);
        }
    }
}

// Needs p_size >= 1.
uint32_t CopyString(std::string_view p_text, char* p_buffer, uint32_t p_size)
{
    const size_t count = std::min<size_t>(p_text.size(), p_size - 1);
    if (count > 0)
    {
        // memmove: the caller may pass a default that lives inside its own buffer.
        std::memmove(p_buffer, p_text.data(), count);
    }
    p_buffer[count] = '\0';
    return static_cast<uint32_t>(count);
}

// A list is each name terminated, then one more terminator. Needs p_size >= 1.
uint32_t CopyList(const std::vector<std::string_view>& p_names, char* p_buffer, uint32_t p_size)
{
    size_t total = 1;
    for (std::string_view name : p_names)
    {
        total += name.size() + 1;
    }
    if (total <= p_size)
    {
        size_t pos = 0;
        for (std::string_view name : p_names)
        {
            if (!name.empty())
            {
                std::memcpy(p_buffer + pos, name.data(), name.size());
            }
            pos += name.size();
            p_buffer[pos++] = '\0';
        }
        p_buffer[pos] = '\0';
        return static_cast<uint32_t>(total - 1);
    }
    if (p_size < 2)
    {
        p_buffer[0] = '\0';
        return 0;
    }
    // Too long: fill what fits, cutting the last name, and end with two terminators.
    const size_t limit = p_size - 2;
    size_t pos = 0;
    for (std::string_view name : p_names)
    {
        const size_t count = std::min(name.size(), limit - pos);
        if (count > 0)
        {
            std::memcpy(p_buffer + pos, name.data(), count);
        }
        pos += count;
        if (pos == limit)
        {
            break;
        }
        p_buffer[pos++] = '\0';
        if (pos == limit)
        {
            break;
        }
    }
    p_buffer[limit] = '\0';
    p_buffer[limit + 1] = '\0';
    return static_cast<uint32_t>(limit);
}

// An empty list gives the default; a second terminator keeps it readable as a list.
uint32_t CopyListOrDefault(const std::vector<std::string_view>& p_names, std::string_view p_default,
                           char* p_buffer, uint32_t p_size)
{
    if (!p_names.empty())
    {
        return CopyList(p_names, p_buffer, p_size);
    }
    const uint32_t count = CopyString(p_default, p_buffer, p_size);
    if (count + 1 < p_size)
    {
        p_buffer[count + 1] = '\0';
    }
    return count;
}

std::string_view DetectLineEnd(std::string_view p_data)
{
    const size_t newline = p_data.find('\n');
    if (newline != std::string_view::npos && newline > 0 && p_data[newline - 1] == '\r')
    {
        return "\r\n";
    }
    return "\n";
}

// Names that would read back as something else, or split the line, cannot be written.
bool IsWritableSection(std::string_view p_section)
{
    return p_section.find_first_of("]\r\n") == std::string_view::npos;
}

bool IsWritableKey(std::string_view p_key)
{
    return !p_key.empty() && p_key[0] != ';' && p_key[0] != '[' &&
           p_key.find_first_of("=\r\n") == std::string_view::npos;
}

bool IsWritableValue(std::string_view p_value)
{
    return p_value.find_first_of("\r\n") == std::string_view::npos;
}

// Drops every section named p_section, header and all lines up to the next header.
bool DeleteSection(std::string_view p_data, std::string_view p_section, std::string& p_out)
{
    LineWalker walker(p_data);
    Line line;
    bool skipping = false;
    bool removed = false;
    p_out.assign(p_data.substr(0, BomLength(p_data)));
    while (walker.Next(line))
    {
        const ParsedLine parsed = ParseLine(walker.Text(line));
        if (parsed.m_kind == LineKind::SECTION)
        {
            skipping = EqualsNoCase(parsed.m_name, p_section);
        }
        if (skipping)
        {
            removed = true;
        }
        else
        {
            p_out.append(p_data.substr(line.m_begin, line.m_end - line.m_begin));
        }
    }
    return removed;
}

// Drops the lines of p_key in the first section named p_section.
bool DeleteKey(std::string_view p_data, std::string_view p_section, std::string_view p_key, std::string& p_out)
{
    LineWalker walker(p_data);
    Line line;
    bool inSection = false;
    bool seenSection = false;
    bool removed = false;
    p_out.assign(p_data.substr(0, BomLength(p_data)));
    while (walker.Next(line))
    {
        const ParsedLine parsed = ParseLine(walker.Text(line));
        if (parsed.m_kind == LineKind::SECTION)
        {
            inSection = !seenSection && EqualsNoCase(parsed.m_name, p_section);
            seenSection = seenSection || inSection;
        }
        else if (inSection && parsed.m_kind == LineKind::KEY && EqualsNoCase(parsed.m_name, p_key))
        {
            removed = true;
            continue;
        }
        p_out.append(p_data.substr(line.m_begin, line.m_end - line.m_begin));
    }
    return removed;
}

void SetValue(std::string_view p_data, std::string_view p_section, std::string_view p_key,
              std::string_view p_value, std::string& p_out)
{
    const std::string_view lineEnd = DetectLineEnd(p_data);
    LineWalker walker(p_data);
    Line line;
    bool inSection = false;
    size_t insertAt = std::string_view::npos; // after the section's last key line
    bool insertNeedsLineEnd = false;
    while (walker.Next(line))
    {
        const ParsedLine parsed = ParseLine(walker.Text(line));
        if (parsed.m_kind == LineKind::SECTION)
        {
            if (inSection)
            {
                break;
            }
            if (insertAt == std::string_view::npos && EqualsNoCase(parsed.m_name, p_section))
            {
                inSection = true;
                insertAt = line.m_end;
                insertNeedsLineEnd = line.m_end == line.m_contentEnd;
            }
        }
        else if (inSection && parsed.m_kind == LineKind::KEY)
        {
            if (EqualsNoCase(parsed.m_name, p_key))
            {
                // Only the value changes; the key's spelling and the line end stay.
                const size_t valueStart = line.m_begin + parsed.m_valueStart;
                p_out.reserve(p_data.size() + p_value.size());
                p_out.assign(p_data.substr(0, valueStart));
                p_out.append(p_value);
                p_out.append(p_data.substr(line.m_contentEnd));
                return;
            }
            insertAt = line.m_end;
            insertNeedsLineEnd = line.m_end == line.m_contentEnd;
        }
    }

    std::string newLine;
    newLine.append(p_key);
    newLine += '=';
    newLine.append(p_value);
    newLine.append(lineEnd);
    if (insertAt != std::string_view::npos)
    {
        p_out.reserve(p_data.size() + newLine.size() + 2);
        p_out.assign(p_data.substr(0, insertAt));
        if (insertNeedsLineEnd)
        {
            p_out.append(lineEnd);
        }
        p_out.append(newLine);
        p_out.append(p_data.substr(insertAt));
        return;
    }
    p_out.reserve(p_data.size() + p_section.size() + newLine.size() + 6);
    p_out.assign(p_data);
    if (p_data.size() > BomLength(p_data) && p_data.back() != '\n')
    {
        p_out.append(lineEnd);
    }
    p_out += '[';
    p_out.append(p_section);
    p_out += ']';
    p_out.append(lineEnd);
    p_out.append(newLine);
}

std::string_view OrEmpty(const char* p_text)
{
    return p_text != nullptr ? std::string_view(p_text) : std::string_view();
}

} // namespace

uint32_t GetPrivateProfileString(const char* p_section, const char* p_key, const char* p_default,
                                 char* p_buffer, uint32_t p_size, const char* p_fileName)
{
    if (p_buffer == nullptr || p_size == 0)
    {
        return 0;
    }
    const std::string_view defaultValue = TrimRight(OrEmpty(p_default));
    std::string data;
    const bool loaded =
        p_fileName != nullptr && LoadProfile(ResolvePath(p_fileName), data) == LoadResult::LOADED;

    if (p_section == nullptr)
    {
        std::vector<std::string_view> names;
        if (loaded)
        {
            ListSections(data, names);
        }
        return CopyListOrDefault(names, defaultValue, p_buffer, p_size);
    }
    const std::string_view section = Trim(p_section);
    if (p_key == nullptr)
    {
        std::vector<std::string_view> names;
        if (loaded)
        {
            ListKeys(data, section, names);
        }
        return CopyListOrDefault(names, defaultValue, p_buffer, p_size);
    }
    std::string_view value;
    if (loaded && FindValue(data, section, Trim(p_key), value))
    {
        return CopyString(value, p_buffer, p_size);
    }
    return CopyString(defaultValue, p_buffer, p_size);
}

int32_t GetPrivateProfileInt(const char* p_section, const char* p_key, int32_t p_default, const char* p_fileName)
{
    if (p_section == nullptr || p_key == nullptr || p_fileName == nullptr)
    {
        return p_default;
    }
    std::string data;
    if (LoadProfile(ResolvePath(p_fileName), data) != LoadResult::LOADED)
    {
        return p_default;
    }
    std::string_view value;
    // An empty value reads like a missing one, as it does on Windows.
    if (!FindValue(data, Trim(p_section), Trim(p_key), value) || value.empty())
    {
        return p_default;
    }
    size_t pos = 0;
    bool negative = false;
    if (value[0] == '+' || value[0] == '-')
    {
        negative = value[0] == '-';
        pos = 1;
    }
    // Clamped rather than wrapped, so a huge number cannot turn negative.
    const int64_t limit = negative ? -static_cast<int64_t>(std::numeric_limits<int32_t>::min())
                                   : static_cast<int64_t>(std::numeric_limits<int32_t>::max());
    int64_t magnitude = 0;
    for (; pos < value.size() && value[pos] >= '0' && value[pos] <= '9'; ++pos)
    {
        magnitude = std::min<int64_t>(magnitude * 10 + (value[pos] - '0'), limit);
    }
    return static_cast<int32_t>(negative ? -magnitude : magnitude);
}

bool WritePrivateProfileString(const char* p_section, const char* p_key, const char* p_value,
                               const char* p_fileName)
{
    if (p_section == nullptr || p_fileName == nullptr)
    {
        return false;
    }
    const std::string path = ResolvePath(p_fileName);
    if (path.empty())
    {
        return false;
    }
    std::string data;
    const LoadResult load = LoadProfile(path, data);
    if (load == LoadResult::FAILED)
    {
        return false; // rewriting a file we could not read would lose its contents
    }

    const std::string_view section = Trim(p_section);
    std::string out;
    if (p_key == nullptr)
    {
        if (!DeleteSection(data, section, out))
        {
            return true; // nothing to delete
        }
        return ReplaceFile(path, out);
    }
    const std::string_view key = Trim(p_key);
    if (p_value == nullptr)
    {
        if (!DeleteKey(data, section, key, out))
        {
            return true;
        }
        return ReplaceFile(path, out);
    }
    const std::string_view value(p_value);
    if (!IsWritableSection(section) || !IsWritableKey(key) || !IsWritableValue(value))
    {
        return false;
    }
    SetValue(data, section, key, value, out);
    return ReplaceFile(path, out);
}

} // namespace platform
