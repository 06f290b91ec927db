#include "platform/Paths.h"

#include <filesystem>
#include <string_view>
#include <system_error>
#include <vector>

namespace platform
{

namespace
{
namespace fs = std::filesystem;

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

// True when something (even a dangling link) is there under exactly this name.
bool EntryExists(const std::string& p_path)
{
    std::error_code ec;
    const fs::file_status status = fs::symlink_status(p_path, ec);
    return !ec && fs::exists(status);
}

// The entry of p_dir whose name equals p_name ignoring case; of several, the first in byte
// order so that the choice does not depend on the order the file system lists them in.
bool FindNoCase(const std::string& p_dir, const std::string& p_name, std::string& p_found)
{
    std::error_code ec;
    fs::directory_iterator it(p_dir, ec);
    if (ec)
    {
        return false;
    }
    bool found = false;
    for (const fs::directory_iterator end; it != end; it.increment(ec))
    {
        std::string name = it->path().filename().string();
        if (EqualsNoCase(name, p_name) && (!found || name < p_found))
        {
            p_found = std::move(name);
            found = true;
        }
    }
    // An error halfway through the listing leaves what was seen so far; the caller then keeps
    // the given spelling if nothing matched.
    return found;
}

// Splits into components, dropping empty and "." ones. False when the path must not be used.
bool SplitComponents(const std::string& p_path, std::vector<std::string>& p_parts)
{
    size_t start = 0;
    while (start <= p_path.size())
    {
        size_t end = p_path.find('/', start);
        if (end == std::string::npos)
        {
            end = p_path.size();
        }
        std::string part = p_path.substr(start, end - start);
        if (part == "..")
        {
            return false;
        }
        if (!part.empty() && part != ".")
        {
            p_parts.push_back(std::move(part));
        }
        start = end + 1;
    }
    return true;
}

} // namespace

std::string ResolvePath(const std::string& p_path)
{
    // A NUL would cut the name short when it reaches the system, so the file opened would not
    // be the one that was checked.
    if (p_path.empty() || p_path.find('\0') != std::string::npos)
    {
        return {};
    }
    std::string path = p_path;
    for (char& c : path)
    {
        if (c == '\\')
        {
            c = '/';
        }
    }
    if (path[0] == '/')
    {
        return {};
    }
    // "C:\..." names a drive on the system the game data was written for.
    const bool driveLetter = path.size() >= 2 && path[1] == ':' &&
                             ((path[0] >= 'A' && path[0] <= 'Z') || (path[0] >= 'a' && path[0] <= 'z'));
    if (driveLetter)
    {
        return {};
    }

    std::vector<std::string> parts;
    if (!SplitComponents(path, parts))
    {
        return {};
    }
    if (parts.empty())
    {
        return ".";
    }

    std::string joined;
    for (const std::string& part : parts)
    {
        if (!joined.empty())
        {
            joined += '/';
        }
        joined += part;
    }
    if (EntryExists(joined))
    {
        return joined;
    }

    std::string resolved;
    for (size_t i = 0; i < parts.size(); ++i)
    {
        const std::string dir = resolved.empty() ? std::string(".") : resolved;
        const std::string prefix = resolved.empty() ? std::string() : resolved + '/';
        std::string found;
        if (EntryExists(prefix + parts[i]))
        {
            resolved = prefix + parts[i];
        }
        else if (FindNoCase(dir, parts[i], found))
        {
            resolved = prefix + found;
        }
        else
        {
            // Nothing on disk from here on: keep the rest as the caller spelled it.
            resolved = prefix + parts[i];
            for (size_t j = i + 1; j < parts.size(); ++j)
            {
                resolved += '/';
                resolved += parts[j];
            }
            break;
        }
    }
    return resolved;
}

bool FileExists(const std::string& p_path)
{
    const std::string resolved = ResolvePath(p_path);
    if (resolved.empty())
    {
        return false;
    }
    std::error_code ec;
    return fs::is_regular_file(resolved, ec);
}

} // namespace platform
