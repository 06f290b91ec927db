#pragma once

#include <gtest/gtest.h>

#include <string>

namespace testsupport
{

// Game file names are relative to the working directory: this runs a test in a fresh
// temporary directory of its own and removes it afterwards.
class WorkDirTest : public ::testing::Test
{
protected:
    void SetUp() override;
    void TearDown() override;

    // The test's directory (absolute), the working directory while the test runs.
    std::string m_dir;

private:
    std::string m_oldDir;
};

} // namespace testsupport
