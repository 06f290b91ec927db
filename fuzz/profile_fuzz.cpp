// Feeds arbitrary bytes to the profile reader and writer as an INI file.
#include "FuzzScratch.h"
#include "platform/Profile.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <string>
#include <system_error>
#include <vector>

#include <unistd.h>

namespace
{

constexpr const char* FILE_NAME = "fuzz.ini";
constexpr size_t MAX_NAMES = 8;

// Splits a double-terminated list into its names.
std::vector<std::string> SplitList(const std::vector<char>& p_buffer, uint32_t p_count)
{
    std::vector<std::string> names;
    size_t start = 0;
    for (size_t i = 0; i < p_count && names.size() < MAX_NAMES; ++i)
    {
        if (p_buffer[i] == '\0')
        {
            names.emplace_back(p_buffer.data() + start, i - start);
            start = i + 1;
        }
    }
    return names;
}

void ReadWithSizes(const char* p_section, const char* p_key)
{
    static const uint32_t SIZES[] = {0, 1, 2, 3, 7};
    char small[8];
    for (uint32_t size : SIZES)
    {
        const uint32_t count = platform::GetPrivateProfileString(p_section, p_key, "default ", small, size, FILE_NAME);
        if (size == 0 ? count != 0 : count >= size)
        {
            std::abort();
        }
    }
    platform::GetPrivateProfileInt(p_section, p_key, 5, FILE_NAME);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* p_data, size_t p_size)
{
    static const bool s_ready = fuzzscratch::EnterScratchDirectory("profile_fuzz");
    if (!s_ready)
    {
        std::abort();
    }
    fuzzscratch::WriteInput(FILE_NAME, p_data, p_size);

    static std::vector<char> large(1 << 16);
    const uint32_t largeSize = static_cast<uint32_t>(large.size());
    ReadWithSizes(nullptr, nullptr);
    uint32_t count = platform::GetPrivateProfileString(nullptr, nullptr, "", large.data(), largeSize, FILE_NAME);
    if (count >= largeSize)
    {
        std::abort();
    }
    const std::vector<std::string> sections = SplitList(large, count);
    for (const std::string& section : sections)
    {
        ReadWithSizes(section.c_str(), nullptr);
        count = platform::GetPrivateProfileString(section.c_str(), nullptr, "", large.data(), largeSize, FILE_NAME);
        const std::vector<std::string> keys = SplitList(large, count);
        for (const std::string& key : keys)
        {
            ReadWithSizes(section.c_str(), key.c_str());
            platform::GetPrivateProfileString(section.c_str(), key.c_str(), "", large.data(), largeSize, FILE_NAME);
        }
    }

    // Names taken from the input itself, hostile or not.
    const std::string raw(reinterpret_cast<const char*>(p_data), p_size < 12 ? p_size : 12);
    const std::string name(raw.c_str()); // up to the first NUL
    ReadWithSizes(name.c_str(), name.c_str());

    const char* section = sections.empty() ? "Fuzz" : sections.front().c_str();
    if (platform::WritePrivateProfileString(section, "Key", "value", FILE_NAME))
    {
        char value[8];
        platform::GetPrivateProfileString(section, "Key", "", value, sizeof(value), FILE_NAME);
        if (std::strcmp(value, "value") != 0)
        {
            std::abort(); // a write that reports success must read back
        }
    }
    platform::WritePrivateProfileString(name.c_str(), name.c_str(), name.c_str(), FILE_NAME);
    ReadWithSizes(section, "Key");
    platform::WritePrivateProfileString(section, "Key", nullptr, FILE_NAME);
    platform::WritePrivateProfileString("New Section", "k", "v", FILE_NAME);
    platform::WritePrivateProfileString(section, nullptr, nullptr, FILE_NAME);
    ReadWithSizes(nullptr, nullptr);
    return 0;
}
