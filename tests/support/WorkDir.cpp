#include "support/WorkDir.h"

#include "support/TestBitmaps.h"

#include <filesystem>
#include <system_error>

namespace testsupport
{

void WorkDirTest::SetUp()
{
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
}

} // namespace testsupport
