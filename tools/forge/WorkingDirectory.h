#pragma once

#include <filesystem>
#include <system_error>

namespace forge
{

// The game's files are named relative to the game directory (and DataFile refuses anything
// else), so the forge works from inside it; the old working directory comes back at the end.
class WorkingDirectory
{
public:
    explicit WorkingDirectory(const std::filesystem::path& p_dir)
    {
        std::error_code ec;
        m_previous = std::filesystem::current_path(ec);
        if (ec)
        {
            return;
        }
        std::filesystem::current_path(p_dir, ec);
        m_entered = !ec;
    }

    ~WorkingDirectory()
    {
        if (m_entered)
        {
            std::error_code ec;
            std::filesystem::current_path(m_previous, ec);
        }
    }

    WorkingDirectory(const WorkingDirectory&) = delete;
    WorkingDirectory& operator=(const WorkingDirectory&) = delete;

    bool Entered() const { return m_entered; }

private:
    std::filesystem::path m_previous;
    bool m_entered = false;
};

} // namespace forge
