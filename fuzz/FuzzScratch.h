#pragma once

// Shared by the fuzzers whose loaders read game files by name: game file names are relative
// to the working directory, so each fuzzer works in a folder of its own, in memory where there
// is one (every write renames a file, and a disk makes that slow).

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <system_error>

#include <unistd.h>

namespace fuzzscratch
{

inline std::string& ScratchPath()
{
    static std::string s_scratch;
    return s_scratch;
}

inline void RemoveScratchDirectory()
{
    std::error_code ec;
    std::filesystem::remove_all(ScratchPath(), ec);
}

// Makes the folder and enters it, once; false when neither /dev/shm nor /tmp will do.
inline bool EnterScratchDirectory(const char* p_tag)
{
    if (!ScratchPath().empty())
    {
        return true;
    }
    std::string memoryPattern = std::string("/dev/shm/korvath_") + p_tag + "_XXXXXX";
    std::string diskPattern = std::string("/tmp/korvath_") + p_tag + "_XXXXXX";
    const char* dir = ::mkdtemp(memoryPattern.data());
    if (dir == nullptr)
    {
        dir = ::mkdtemp(diskPattern.data());
    }
    if (dir == nullptr || ::chdir(dir) != 0)
    {
        return false;
    }
    ScratchPath() = dir;
    std::atexit(RemoveScratchDirectory);
    return true;
}

// Writes the fuzz input as a file; a scratch folder that cannot be written to is a broken run.
inline void WriteInput(const char* p_name, const uint8_t* p_data, size_t p_size)
{
    std::FILE* file = std::fopen(p_name, "wb");
    if (file == nullptr)
    {
        std::abort();
    }
    if (p_size > 0)
    {
        std::fwrite(p_data, 1, p_size, file);
    }
    std::fclose(file);
}

} // namespace fuzzscratch
