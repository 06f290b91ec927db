#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>

class Settings;

namespace testsupport
{

// Game file names are relative to the working directory: this runs a test in a fresh
// temporary directory of its own and removes it afterwards. The player's settings (g_settings)
// start at their defaults, as in a game directory without config.ini, and are put back after.
class WorkDirTest : public ::testing::Test
{
protected:
    WorkDirTest();
    ~WorkDirTest() override;
    void SetUp() override;
    void TearDown() override;

    // The test's directory (absolute), the working directory while the test runs.
    std::string m_dir;

private:
    std::string m_oldDir;
    std::unique_ptr<Settings> m_pOldSettings;
};

} // namespace testsupport
