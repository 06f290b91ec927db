#include "platform/FileSearch.h"

#include "platform/Paths.h"

#include <algorithm>
#include <filesystem>
#include <string_view>
#include <system_error>

namespace platform
{

namespace
{
namespace fs = std::filesystem;

char LowerAscii(char p_c)
{
    return (p_c >= 'A' && p_c <= 'Z') ? static_cast<char>(p_c - 'A' + 'a') : p_c;
}

// Classic wildcard walk: on a mismatch after a '*', let that '*' swallow one more character.
// Linear memory, no recursion, at worst mask length times name length steps.
bool MatchWildcards(std::string_view p_mask, std::string_view p_name)
{
    size_t m = 0;
    size_t n = 0;
    size_t starMask = std::string_view::npos;
    size_t starName = 0;
    while (n < p_name.size())
    {
        if (m < p_mask.size() && p_mask[m] == '*')
        {
            starMask = m++;
            starName = n;
        }
        else if (m < p_mask.size() && (p_mask[m] == '?' || LowerAscii(p_mask[m]) == LowerAscii(p_name[n])))
        {
            ++m;
            ++n;
        }
        else if (starMask != std::string_view::npos)
        {
            m = starMask + 1;
            n = ++starName;
        }
        else
        {
            return false;
        }
    }
    while (m < p_mask.size() && p_mask[m] == '*')
    {
        ++m;
    }
    return m == p_mask.size();
}

bool LessNoCase(const std::string& p_a, const std::string& p_b)
{
    const size_t count = std::min(p_a.size(), p_b.size());
    for (size_t i = 0; i < count; ++i)
    {
        const unsigned char a = static_cast<unsigned char>(LowerAscii(p_a[i]));
        const unsigned char b = static_cast<unsigned char>(LowerAscii(p_b[i]));
        if (a != b)
        {
            return a < b;
        }
    }
    if (p_a.size() != p_b.size())
    {
        return p_a.size() < p_b.size();
    }
    return p_a < p_b;
}

} // namespace

bool FileSearch::MatchMask(const std::string& p_mask, const std::string& p_name)
{
    if (MatchWildcards(p_mask, p_name))
    {
        return true;
    }
    // As on Windows, a trailing ".*" also matches a name without that dot: "*.*" is every
    // file and "readme.*" finds "README".
    const std::string_view mask(p_mask);
    if (mask.size() >= 2 && mask.substr(mask.size() - 2) == ".*")
    {
        return MatchWildcards(mask.substr(0, mask.size() - 2), p_name);
    }
    return false;
}

bool FileSearch::First(const std::string& p_pattern, std::string& p_name)
{
    Close();
    const size_t separator = p_pattern.find_last_of("\\/");
    std::string folder = ".";
    std::string mask = p_pattern;
    if (separator != std::string::npos)
    {
        if (separator == 0)
        {
            return false; // a search from the root is outside the game directory
        }
        folder = ResolvePath(p_pattern.substr(0, separator));
        mask = p_pattern.substr(separator + 1);
    }
    if (folder.empty() || mask.empty())
    {
        return false;
    }

    std::error_code ec;
    fs::directory_iterator it(folder, ec);
    if (ec)
    {
        return false;
    }
    for (const fs::directory_iterator end; it != end; it.increment(ec))
    {
        std::error_code typeError;
        if (!it->is_regular_file(typeError))
        {
            continue;
        }
        std::string name = it->path().filename().string();
        if (MatchMask(mask, name))
        {
            m_matches.push_back(std::move(name));
        }
    }
    if (m_matches.empty())
    {
        return false;
    }
    std::sort(m_matches.begin(), m_matches.end(), LessNoCase);
    m_next = 1;
    p_name = m_matches[0];
    return true;
}

bool FileSearch::Next(std::string& p_name)
{
    if (m_next >= m_matches.size())
    {
        return false;
    }
    p_name = m_matches[m_next++];
    return true;
}

void FileSearch::Close()
{
    m_matches.clear();
    m_next = 0;
}

} // namespace platform
