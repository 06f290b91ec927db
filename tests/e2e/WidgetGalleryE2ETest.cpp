// The widget gallery (--widgets) run as a whole game, driven by an input script.
#include "e2e/GameProcess.h"
#include "support/TestBitmaps.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <fstream>

namespace
{
class WidgetGalleryE2ETest : public e2e::GameDirTest
{
protected:
    WidgetGalleryE2ETest() : GameDirTest("korvath-e2e-widgets") {}

    e2e::ProcessResult Run(const std::string& p_script, const std::string& p_screenshots)
    {
        {
            std::ofstream file(m_dir + "/script.txt");
            file << p_script;
        }

        const std::map<std::string, std::string> env = e2e::GameEnv({{"KORVATH_FIXED_DT", "0.05"},
                                                                     {"KORVATH_INPUT_SCRIPT", "script.txt"},
                                                                     {"KORVATH_SCREENSHOT_AT", p_screenshots},
                                                                     {"KORVATH_EXIT_AFTER", "200"}});
        return e2e::RunGame(m_dir, {"--windowed", "--widgets"}, env, 120);
    }
    bool Saved(int p_frame) const
    {
        char name[64];
        std::snprintf(name, sizeof(name), "/screenshot-%06d.png", p_frame);
        return std::filesystem::exists(m_dir + name);
    }
};
} // namespace

TEST_F(WidgetGalleryE2ETest, QuitEndsTheGame)
{
    // Without the interface pictures the buttons are 120 x 32; "Quit" is at (50, 696). The
    // cursor moves two pixels a count, from (0, 0) to (100, 710). The release is polled after
    // frame 4 and seen by frame 5's update, which ends the game after frame 5 is drawn.
    const e2e::ProcessResult run = Run("2 mouse move 50 355\n"
                                       "3 mouse button 0 down\n"
                                       "4 mouse button 0 up\n",
                                       "1,5,6");
    ASSERT_TRUE(run.exited) << "signal " << run.signal << (run.timedOut ? " (timed out)" : "") << "\n"
                            << run.standardError;
    EXPECT_EQ(0, run.exitCode) << run.standardError;
    EXPECT_TRUE(Saved(1));
    EXPECT_TRUE(Saved(5));
    EXPECT_FALSE(Saved(6));
    // Nothing was rebound, so nothing was written.
    EXPECT_FALSE(std::filesystem::exists(m_dir + "/config.ini"));
}

TEST_F(WidgetGalleryE2ETest, StaysUntilQuitOrClosed)
{
    // Clicks beside "Quit" and keys typed into the field do not end it; closing the window does.
    const e2e::ProcessResult run = Run("2 mouse move 100 355\n"
                                       "3 mouse button 0 down\n"
                                       "4 mouse button 0 up\n"
                                       "5 key ESCAPE down\n"
                                       "6 key ESCAPE up\n"
                                       "7 key A down\n"
                                       "8 key A up\n"
                                       "40 quit\n",
                                       "30,45");
    ASSERT_TRUE(run.exited) << run.standardError;
    EXPECT_EQ(0, run.exitCode) << run.standardError;
    EXPECT_TRUE(Saved(30));
    EXPECT_FALSE(Saved(45));
}
