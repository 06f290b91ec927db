#include "support/WorkDir.h"

#include "app/Settings.h"
#include "support/TestBitmaps.h"

#include <filesystem>
#include <system_error>

namespace testsupport
{

WorkDirTest::WorkDirTest() = default;

WorkDirTest::~WorkDirTest() = default;

void WorkDirTest::SetUp()
{
    // The player's settings live in the game directory's config.ini: a fresh one has none.
    m_pOldSettings = std::make_unique<Settings>(g_settings);
    g_settings = Settings();
    std::error_code error;
    m_oldDir = std::filesystem::current_path(error).string();
    ASSERT_FALSE(error) << error.message();
    m_dir = MakeTempDir(std::string("korvath-") + ::testing::UnitTest::GetInstance()->current_test_info()->name());
    ASSERT_FALSE(m_dir.empty());
    std::filesystem::current_path(m_dir, error);
    ASSERT_FALSE(error) << error.message();
}

void WorkDirTest::TearDown()
{
    std::error_code error;
    if (!m_oldDir.empty())
    {
        std::filesystem::current_path(m_oldDir, error);
    }
    if (!m_dir.empty())
    {
        std::filesystem::remove_all(m_dir, error);
    }
    if (m_pOldSettings)
    {
        g_settings = *m_pOldSettings;
        m_pOldSettings.reset();
    }
}

} // namespace testsupport
