#include "platform/Profile.h"

#include "platform/Paths.h"
#include "platform/ProfileCache.h"
#include "platform/ProfileData.h"
#include "platform/ProfileText.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace platform
{

namespace
{
using namespace profile;

// The parsed files, shared by every call; the lock makes the calls safe from any thread.
std::mutex s_mutex;
ProfileCache s_cache;

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
    if (p_data.size() > BomLength(p_data) && !EndsWithLineEnd(p_data))
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
    std::lock_guard<std::mutex> lock(s_mutex);
    ProfileCache::Result result = ProfileCache::Result::MISSING;
    ProfileData* data = p_fileName != nullptr ? s_cache.Get(ResolvePath(p_fileName), result) : nullptr;

    if (p_section == nullptr)
    {
        std::vector<std::string_view> names;
        if (data != nullptr)
        {
            data->ListSections(names);
        }
        return CopyListOrDefault(names, defaultValue, p_buffer, p_size);
    }
    const std::string_view section = Trim(p_section);
    if (p_key == nullptr)
    {
        std::vector<std::string_view> names;
        if (data != nullptr)
        {
            data->ListKeys(section, names);
        }
        return CopyListOrDefault(names, defaultValue, p_buffer, p_size);
    }
    std::string_view value;
    if (data != nullptr && data->FindValue(section, Trim(p_key), value))
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
    std::lock_guard<std::mutex> lock(s_mutex);
    ProfileCache::Result result = ProfileCache::Result::MISSING;
    ProfileData* data = s_cache.Get(ResolvePath(p_fileName), result);
    std::string_view value;
    // An empty value reads like a missing one, as it does on Windows.
    if (data == nullptr || !data->FindValue(Trim(p_section), Trim(p_key), value) || value.empty())
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
    // Digits beyond 32 bits wrap around, as they do on Windows: "4294967297" reads 1.
    uint32_t magnitude = 0;
    for (; pos < value.size() && value[pos] >= '0' && value[pos] <= '9'; ++pos)
    {
        magnitude = magnitude * 10u + static_cast<uint32_t>(value[pos] - '0');
    }
    return static_cast<int32_t>(negative ? 0u - magnitude : magnitude);
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
    std::lock_guard<std::mutex> lock(s_mutex);
    ProfileCache::Result result = ProfileCache::Result::MISSING;
    ProfileData* current = s_cache.Get(path, result);
    if (result == ProfileCache::Result::FAILED)
    {
        return false; // rewriting a file we could not read would lose its contents
    }
    const std::string data = current != nullptr ? current->GetText() : std::string();
    // Whatever happens below, the next read looks at the file afresh.
    s_cache.Forget(path);

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
