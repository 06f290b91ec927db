// Whole-game runs driven by an input script (KORVATH_INPUT_SCRIPT).
#include "e2e/GameProcess.h"
#include "support/TestBitmaps.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

namespace
{
class InputE2ETest : public e2e::GameDirTest
{
protected:
    InputE2ETest() : GameDirTest("korvath-e2e-input") {}

    // Runs the game at 20 frames a second with the script, saving the listed frames.
    e2e::ProcessResult Run(const std::string& p_script, const std::string& p_screenshots,
                           const std::string& p_exitAfter = "1000")
    {
        {
            std::ofstream file(m_dir + "/script.txt");
            file << p_script;
        }
        const std::map<std::string, std::string> env = e2e::GameEnv({{"KORVATH_FIXED_DT", "0.05"},
                                                                     {"KORVATH_INPUT_SCRIPT", "script.txt"},
                                                                     {"KORVATH_SCREENSHOT_AT", p_screenshots},
                                                                     {"KORVATH_EXIT_AFTER", p_exitAfter}});
        return e2e::RunGame(m_dir, {"--windowed"}, env, 120);
    }
    bool Saved(int p_frame) const
    {
        char name[64];
        std::snprintf(name, sizeof(name), "/screenshot-%06d.png", p_frame);
        return std::filesystem::exists(m_dir + name);
    }
};
} // namespace

TEST_F(InputE2ETest, KeyHeldSkipsTheLogos)
{
    // Seen by the input poll of frame 5; frame 6's update leaves the logos for the title menu,
    // which asks for its pictures at once (none are here, and each missing one is reported).
    const e2e::ProcessResult run = Run("# skip the logos\n5 key SPACE down\n", "5", "8");
    ASSERT_TRUE(run.exited) << "signal " << run.signal << (run.timedOut ? " (timed out)" : "") << "\n"
                            << run.standardError;
    EXPECT_EQ(0, run.exitCode) << run.standardError;
    EXPECT_TRUE(Saved(5));
    EXPECT_NE(std::string::npos, run.standardError.find("art\\ribbon.bmp")) << run.standardError;

    // Without the key the logos are still on at that frame.
    const e2e::ProcessResult waited = Run("", "5", "8");
    ASSERT_TRUE(waited.exited) << waited.standardError;
    EXPECT_EQ(std::string::npos, waited.standardError.find("art\\ribbon.bmp")) << waited.standardError;
}

TEST_F(InputE2ETest, ClicksWheelAndControllerDoNotSkip)
{
    const e2e::ProcessResult run = Run("2 mouse button 0 down\n"
                                       "3 mouse move 40 -12\n"
                                       "3 mouse wheel 120\n"
                                       "4 joy 0 button 0 down\n"
                                       "5 joy 0 axis 0 65535\n",
                                       "30", "30");
    ASSERT_TRUE(run.exited) << run.standardError;
    EXPECT_EQ(0, run.exitCode) << run.standardError;
    EXPECT_TRUE(Saved(30));
}

TEST_F(InputE2ETest, QuitLineClosesTheWindow)
{
    // The close message is taken in frame 3; the quit it leads to ends the loop after frame 4.
    const e2e::ProcessResult run = Run("3 quit\n", "3,4,5");
    ASSERT_TRUE(run.exited) << run.standardError;
    EXPECT_EQ(0, run.exitCode) << run.standardError;
    EXPECT_TRUE(Saved(4));
    EXPECT_FALSE(Saved(5));
}

TEST_F(InputE2ETest, MalformedScriptStopsTheGameAtStart)
{
    const e2e::ProcessResult run = Run("1 key W down\n\n2 key BANANA down\n", "1");
    ASSERT_TRUE(run.exited) << run.standardError;
    EXPECT_EQ(2, run.exitCode);
    EXPECT_NE(std::string::npos, run.standardError.find("script.txt line 3: unknown key name \"BANANA\""))
        << run.standardError;
    EXPECT_FALSE(Saved(1));

    std::filesystem::remove(m_dir + "/script.txt");
    std::map<std::string, std::string> env = {{"KORVATH_HEADLESS", "1"}, {"KORVATH_INPUT_SCRIPT", "nowhere.txt"}};
    const e2e::ProcessResult missing = e2e::RunGame(m_dir, {"--windowed"}, env, 60);
    ASSERT_TRUE(missing.exited);
    EXPECT_EQ(2, missing.exitCode);
    EXPECT_NE(std::string::npos, missing.standardError.find("nowhere.txt")) << missing.standardError;
}
