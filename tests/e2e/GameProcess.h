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

// Builds the shipped game data into p_dir with the same tools as `make data` (pictures and
// data files; sounds are left out, and a missing sound is silent). Fails the test when a tool fails.
void BuildGameData(const std::string& p_dir);

// Mean brightness (0..255) of a rectangle of a screenshot in logical 1024 x 768 pixels; -1
// when the file cannot be read.
double RegionBrightness(const std::string& p_png, int p_x, int p_y, int p_width, int p_height);

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
