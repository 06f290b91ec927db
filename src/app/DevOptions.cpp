#include "app/DevOptions.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>

DevOptions g_devOptions;

namespace
{
const char* SystemGetenv(const char* p_name)
{
    return std::getenv(p_name);
}

bool ParseInteger(const std::string& p_text, int64_t& p_value)
{
    if (p_text.empty())
    {
        return false;
    }
    errno = 0;
    char* end = nullptr;
    const long long value = std::strtoll(p_text.c_str(), &end, 10);
    if (errno != 0 || end == p_text.c_str() || *end != '\0')
    {
        return false;
    }
    p_value = value;
    return true;
}
// A relative game path that never climbs above where it starts: winning a mission writes
// the pilot file back.
bool IsInsideGameDirectory(const std::string& p_path)
{
    if (p_path.empty() || p_path[0] == '/' || p_path[0] == '\\' || p_path.find(':') != std::string::npos)
    {
        return false;
    }
    size_t start = 0;
    while (start <= p_path.size())
    {
        size_t end = p_path.find_first_of("/\\", start);
        if (end == std::string::npos)
        {
            end = p_path.size();
        }
        if (p_path.compare(start, end - start, "..") == 0)
        {
            return false;
        }
        start = end + 1;
    }
    return true;
}
} // namespace

void DevOptions::Parse(int p_argc, const char* const* p_argv)
{
    Parse(p_argc, p_argv, &SystemGetenv);
}

void DevOptions::Parse(int p_argc, const char* const* p_argv, const char* (*p_getenv)(const char*))
{
    for (int i = 1; i < p_argc; ++i)
    {
        const std::string arg = p_argv[i] != nullptr ? p_argv[i] : "";
        if (arg == "--windowed")
        {
            windowed = true;
        }
        else if (arg == "--widgets")
        {
            widgets = true;
        }
        else if (arg == "--mission" || arg == "--pilot")
        {
            const char* value = i + 1 < p_argc ? p_argv[i + 1] : nullptr;
            if (value == nullptr || value[0] == '\0')
            {
                errors.push_back(arg + " needs a value");
            }
            else if (arg == "--pilot" && !IsInsideGameDirectory(value))
            {
                errors.push_back(std::string("--pilot must name a file inside the game directory, not ") + value);
                ++i;
            }
            else
            {
                (arg == "--mission" ? mission : pilot) = value;
                ++i;
            }
        }
        else
        {
            errors.push_back("unknown option " + arg);
        }
    }

    if (const char* value = p_getenv("KORVATH_FIXED_DT"); value != nullptr && value[0] != '\0')
    {
        char* end = nullptr;
        const double dt = std::strtod(value, &end);
        if (end == value || *end != '\0' || !(dt > 0.0) || dt > 5.0)
        {
            errors.push_back(std::string("KORVATH_FIXED_DT must be seconds between 0 and 5, not ") + value);
        }
        else
        {
            fixedDt = dt;
        }
    }
    if (const char* value = p_getenv("KORVATH_SEED"); value != nullptr && value[0] != '\0')
    {
        int64_t parsed = 0;
        if (!ParseInteger(value, parsed) || parsed < 0 || parsed > 0xFFFFFFFFLL)
        {
            errors.push_back(std::string("KORVATH_SEED must be a whole number, not ") + value);
        }
        else
        {
            hasSeed = true;
            seed = static_cast<uint32_t>(parsed);
        }
    }
    if (const char* value = p_getenv("KORVATH_SCREENSHOT_AT"); value != nullptr && value[0] != '\0')
    {
        std::string list = value;
        size_t start = 0;
        while (start <= list.size())
        {
            size_t comma = list.find(',', start);
            if (comma == std::string::npos)
            {
                comma = list.size();
            }
            int64_t frame = 0;
            const std::string item = list.substr(start, comma - start);
            if (!ParseInteger(item, frame) || frame < 1)
            {
                errors.push_back("KORVATH_SCREENSHOT_AT: not a frame number: " + item);
            }
            else
            {
                screenshotFrames.push_back(frame);
            }
            start = comma + 1;
        }
        std::sort(screenshotFrames.begin(), screenshotFrames.end());
    }
    if (const char* value = p_getenv("KORVATH_INPUT_SCRIPT"); value != nullptr && value[0] != '\0')
    {
        // Read and checked by main before the game starts.
        inputScript = value;
    }
    if (const char* value = p_getenv("KORVATH_RECORD"); value != nullptr && value[0] != '\0')
    {
        // Opened by main before the game starts.
        record = value;
    }
    if (const char* value = p_getenv("KORVATH_DRAW_ONLY_SCREENSHOTS"); value != nullptr && value[0] != '\0')
    {
        if (std::strcmp(value, "1") != 0 && std::strcmp(value, "0") != 0)
        {
            errors.push_back(std::string("KORVATH_DRAW_ONLY_SCREENSHOTS must be 1 or 0, not ") + value);
        }
        else
        {
            drawOnlyScreenshots = value[0] == '1';
        }
    }
    if (const char* value = p_getenv("KORVATH_EXIT_AFTER"); value != nullptr && value[0] != '\0')
    {
        int64_t frames = 0;
        if (!ParseInteger(value, frames) || frames < 1)
        {
            errors.push_back(std::string("KORVATH_EXIT_AFTER must be a number of frames, not ") + value);
        }
        else
        {
            exitAfter = frames;
        }
    }
}

bool DevOptions::IsDrawnFrame(int64_t p_frame) const
{
    return !drawOnlyScreenshots || IsScreenshotFrame(p_frame);
}

bool DevOptions::IsScreenshotFrame(int64_t p_frame) const
{
    return std::binary_search(screenshotFrames.begin(), screenshotFrames.end(), p_frame);
}

std::string DevOptions::ScreenshotName(int64_t p_frame)
{
    char name[64];
    std::snprintf(name, sizeof(name), "screenshot-%06lld.png", static_cast<long long>(p_frame));
    return name;
}
