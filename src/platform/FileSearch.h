#pragma once

#include <string>
#include <vector>

namespace platform
{

// Stands in for FindFirstFile/FindNextFile/FindClose: lists the files of one folder whose
// names match a mask with '*' and '?' wildcards, case-insensitively ("Portraits\*.bmp").
// The folder part goes through ResolvePath. Matches come in case-insensitive name order so
// that the game lists files the same way on every machine. Folders are not listed.
class FileSearch
{
public:
    FileSearch() = default;

    // Starts a search; returns false (and leaves nothing open) when nothing matches.
    // On success p_name receives the first file name (the name only, no folder).
    bool First(const std::string& p_pattern, std::string& p_name);
    // The next match; false when there is none left.
    bool Next(std::string& p_name);
    void Close();

    // True when p_name matches p_mask ('*' any run, '?' any one character), ignoring case.
    static bool MatchMask(const std::string& p_mask, const std::string& p_name);

private:
    std::vector<std::string> m_matches;
    size_t m_next = 0;
};

} // namespace platform
