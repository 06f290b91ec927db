#pragma once

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

namespace e2e
{

struct ProcessResult
{
    bool exited = false;   // ended by itself (not by a signal or the time limit)
    int exitCode = -1;
    int signal = 0;
    bool timedOut = false;
    std::string standardError;
};

// The environment of a game run under test: headless messages, the dummy audio driver,
// Mesa's software renderer and no leak report for the GL driver's own allocations, plus
// p_extra (which wins over the base where both name a variable).
std::map<std::string, std::string> GameEnv(const std::map<std::string, std::string>& p_extra = {});

// Runs the real game binary in p_workDir with extra environment variables, waiting at most
// p_timeoutSeconds.
ProcessResult RunGame(const std::string& p_workDir, const std::vector<std::string>& p_args,
                      const std::map<std::string, std::string>& p_env, int p_timeoutSeconds);

// Fills p_dir with the game's data, built by the same tools as `make data` (sounds are left
// out: a missing sound is silent). False, with the command in p_command, when a tool failed.
bool BuildGameDirectory(const std::string& p_dir, std::string& p_command);

// A test with a fresh temporary folder for the game to run in, removed afterwards.
class GameDirTest : public ::testing::Test
{
protected:
    explicit GameDirTest(std::string p_tag) : m_tag(std::move(p_tag)) {}
    void SetUp() override;
    void TearDown() override;

    std::string m_dir;

private:
    std::string m_tag;
};

} // namespace e2e
