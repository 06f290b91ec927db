// The title menu in the real game: the logos skipped with a key, the buttons dropping in, and
// the player's clicks on "Exit" and "Multiplayer".
#include "app/DevOptions.h"
#include "e2e/GameProcess.h"
#include "pilot/Pilot.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

namespace
{
// At 20 frames a second a key in frame 5 ends the logos in frame 6; the title menu's clock
// starts in frame 7 at 0.01 s, so frame F is 0.01 + 0.05 (F - 7) seconds into its opening.
constexpr int FRAME_MID_DROP = 73;  // 3.31 s: the top button 0.31 s into its drop, near y = 50
constexpr int FRAME_AT_REST = 110;  // the menu has opened (after 4.9 s)
const char* const SKIP_LOGOS = "5 key SPACE down\n6 key SPACE up\n";

// Where the buttons rest: "Single" at y 210, each next one 70 lower, 140 x 40 from x = 15.
constexpr int BUTTON_LEFT = 20;
constexpr int BUTTON_WIDTH = 130;
int ButtonTop(int p_index)
{
    return 210 + 70 * p_index;
}

class MenuE2ETest : public e2e::GameDirTest
{
protected:
    MenuE2ETest() : GameDirTest("korvath-e2e-menu") {}

    void SetUp() override
    {
        GameDirTest::SetUp();
        if (!HasFatalFailure())
        {
            e2e::BuildGameData(m_dir);
        }
    }

    e2e::ProcessResult Run(const std::string& p_script, const std::string& p_screenshots, int p_exitAfter)
    {
        {
            std::ofstream file(m_dir + "/script.txt");
            file << p_script;
        }
        const std::map<std::string, std::string> env =
            e2e::GameEnv({{"KORVATH_FIXED_DT", "0.05"},
                          {"KORVATH_INPUT_SCRIPT", "script.txt"},
                          {"KORVATH_SCREENSHOT_AT", p_screenshots},
                          {"KORVATH_EXIT_AFTER", std::to_string(p_exitAfter)}});
        return e2e::RunGame(m_dir, {"--windowed"}, env, 180);
    }
    std::string Shot(int p_frame) const { return m_dir + "/" + DevOptions::ScreenshotName(p_frame); }
    // The light face of a button in a rectangle of the screenshot.
    double Brightness(int p_frame, int p_top) const
    {
        return e2e::RegionBrightness(Shot(p_frame), BUTTON_LEFT, p_top + 8, BUTTON_WIDTH, 24);
    }
};

// The cursor starts at (0, 0) and moves two pixels a count: a move to button p_index's middle,
// then a click, from frame p_frame on.
std::string ClickButton(int p_frame, int p_index)
{
    const int x = 80;
    const int y = ButtonTop(p_index) + 20;
    return std::to_string(p_frame) + " mouse move " + std::to_string(x / 2) + " " + std::to_string(y / 2) + "\n" +
           std::to_string(p_frame + 2) + " mouse button 0 down\n" + std::to_string(p_frame + 3) +
           " mouse button 0 up\n";
}
} // namespace

TEST_F(MenuE2ETest, TitleMenuDropsInSettlesAndExitEndsTheGame)
{
    const e2e::ProcessResult run =
        Run(std::string(SKIP_LOGOS) + ClickButton(FRAME_AT_REST + 2, 3),
            std::to_string(FRAME_MID_DROP) + "," + std::to_string(FRAME_AT_REST) + ",150", 400);
    ASSERT_TRUE(run.exited) << "signal " << run.signal << (run.timedOut ? " (timed out)" : "") << "\n"
                            << run.standardError;
    EXPECT_EQ(0, run.exitCode) << run.standardError;

    // Mid-drop: "Single" is still high up, over the ribbon's top; "Exit" has already landed.
    const double ribbon = Brightness(FRAME_MID_DROP, ButtonTop(0));
    EXPECT_LT(ribbon, 100.0);
    EXPECT_GT(Brightness(FRAME_MID_DROP, 50), 150.0);
    EXPECT_GT(Brightness(FRAME_MID_DROP, ButtonTop(3)), 150.0);
    // At rest: all four buttons in their places.
    for (int i = 0; i < 4; ++i)
    {
        EXPECT_GT(Brightness(FRAME_AT_REST, ButtonTop(i)), 150.0) << i;
    }
    EXPECT_LT(Brightness(FRAME_AT_REST, 50), 100.0);
    // The title picture beside them.
    EXPECT_GT(e2e::RegionBrightness(Shot(FRAME_AT_REST), 310, 280, 550, 100), 40.0);

    // "Exit" ended the game at once: long before frame 150.
    EXPECT_FALSE(std::filesystem::exists(Shot(150)));
    // Nothing was written.
    EXPECT_FALSE(std::filesystem::exists(m_dir + "/multiplayer/player1.sav"));
}

TEST_F(MenuE2ETest, MultiplayerWritesBothPilotFiles)
{
    const e2e::ProcessResult run =
        Run(std::string(SKIP_LOGOS) + ClickButton(FRAME_AT_REST + 2, 1) + "140 quit\n", "120", 400);
    ASSERT_TRUE(run.exited) << run.standardError;
    EXPECT_EQ(0, run.exitCode) << run.standardError;
    // The game reads and writes only inside its folder: read the records from there.
    const std::filesystem::path oldDir = std::filesystem::current_path();
    std::filesystem::current_path(m_dir);
    for (const auto& [file, name] : {std::pair{"multiplayer\\player1.sav", "Player One"},
                                     std::pair{"multiplayer\\player2.sav", "Player Two"}})
    {
        Pilot pilot(file);
        EXPECT_TRUE(pilot.Load(nullptr)) << file << "\n" << run.standardError;
        EXPECT_EQ(name, pilot.GetPilotName());
        EXPECT_EQ(Pilot::DEFAULT_HULL, pilot.GetHullName());
    }
    std::filesystem::current_path(oldDir);
}
