// The settings in the real game: a player sets 800 x 600, a window (Alt+Enter), Hard, the
// radar in the bottom-right slot and a red tint, and quits; the next start comes up that way,
// with the radar where it was put, tinted, and the options showing it all. --windowed wins
// for its run without changing what is kept.
#include "app/DevOptions.h"
#include "e2e/GamePlayer.h"
#include "e2e/GameProcess.h"
#include "platform/PngFile.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace
{
// At 20 frames a second the title menu is at rest from frame 110 (see MenuE2ETest); the
// options menu opened from it by a click in frame 115 has dropped in by frame 240.
constexpr int FRAME_OPTIONS_AT_REST = 240;
// The editor at (410, 280): slot 0 at (0, 0), slot 7 at (225, 169); the tint bars at x 355,
// 400 wide, rows 40 apart from y 530.
constexpr int EDITOR_X = 410;
constexpr int EDITOR_Y = 280;
// Where a tint bar's knob rests at 255, and the bar's left end and beyond.
e2e::Point TintBarFull(int p_row)
{
    return e2e::Point{355 + 399, 530 + 40 * p_row + 8};
}
e2e::Point TintBarEmpty(int p_row)
{
    return e2e::Point{300, 530 + 40 * p_row + 8};
}

// Alt held, Enter pressed and let go, Alt let go.
void AltEnter(e2e::ScriptWriter& p_script, int64_t p_frame)
{
    p_script.Hold(p_frame, "LALT", 3);
    p_script.Hold(p_frame + 1, "ENTER", 1);
}

// A screenshot of a window showing the whole logical screen.
struct Shot
{
    int32_t width = 0;
    int32_t height = 0;
    std::vector<uint8_t> rgba;

    bool Load(const std::string& p_file) { return platform::ReadPng(p_file, width, height, rgba); }
    // Mean red, green and blue over a rectangle in logical pixels.
    void Mean(int p_x, int p_y, int p_width, int p_height, double& p_red, double& p_green, double& p_blue) const
    {
        double sum[3] = {0.0, 0.0, 0.0};
        int count = 0;
        for (int y = p_y * height / 768; y < (p_y + p_height) * height / 768; ++y)
        {
            for (int x = p_x * width / 1024; x < (p_x + p_width) * width / 1024; ++x)
            {
                const uint8_t* p = &rgba[(static_cast<size_t>(y) * width + x) * 4];
                for (int c = 0; c < 3; ++c)
                {
                    sum[c] += p[c];
                }
                ++count;
            }
        }
        p_red = count > 0 ? sum[0] / count : -1.0;
        p_green = count > 0 ? sum[1] / count : -1.0;
        p_blue = count > 0 ? sum[2] / count : -1.0;
    }
};

class SettingsE2ETest : public e2e::GameDirTest
{
protected:
    SettingsE2ETest() : GameDirTest("korvath-e2e-settings") {}

    void SetUp() override
    {
        GameDirTest::SetUp();
        if (HasFatalFailure())
        {
            return;
        }
        e2e::BuildGameData(m_dir);
    }

    e2e::ProcessResult Run(const e2e::ScriptWriter& p_script, const std::string& p_screenshots, int p_exitAfter,
                           const std::vector<std::string>& p_args)
    {
        EXPECT_TRUE(p_script.Save(m_dir + "/script.txt"));
        for (const auto& entry : std::filesystem::directory_iterator(m_dir))
        {
            if (entry.path().filename().string().rfind("screenshot-", 0) == 0)
            {
                std::filesystem::remove(entry.path());
            }
        }
        const std::map<std::string, std::string> env =
            e2e::GameEnv({{"KORVATH_FIXED_DT", "0.05"},
                          {"KORVATH_SEED", "7"},
                          {"KORVATH_INPUT_SCRIPT", "script.txt"},
                          {"KORVATH_SCREENSHOT_AT", p_screenshots},
                          {"KORVATH_EXIT_AFTER", std::to_string(p_exitAfter)}});
        const e2e::ProcessResult result = e2e::RunGame(m_dir, p_args, env, 180);
        KeepScreenshots("settings-e2e-run" + std::to_string(++m_runs) + "-");
        return result;
    }
    // KORVATH_TEST_SCREENSHOT_DIR keeps what the game showed, to look at.
    void KeepScreenshots(const std::string& p_prefix) const
    {
        const char* keep = std::getenv("KORVATH_TEST_SCREENSHOT_DIR");
        if (keep == nullptr || keep[0] == '\0')
        {
            return;
        }
        std::error_code error;
        for (const auto& entry : std::filesystem::directory_iterator(m_dir, error))
        {
            if (entry.path().extension() == ".png")
            {
                const std::filesystem::path target =
                    std::filesystem::path(keep) / (p_prefix + entry.path().filename().string());
                std::filesystem::copy_file(entry.path(), target, std::filesystem::copy_options::overwrite_existing,
                                           error);
            }
        }
    }
    int m_runs = 0;
    std::string ShotFile(int p_frame) const { return m_dir + "/" + DevOptions::ScreenshotName(p_frame); }
    std::string ReadConfig() const
    {
        std::ifstream file(m_dir + "/config.ini");
        std::stringstream text;
        text << file.rdbuf();
        return text.str();
    }
};
} // namespace

TEST_F(SettingsE2ETest, WhatThePlayerSetsIsBackAtTheNextStart)
{
    // The first start, full screen at 1024 x 768: "Options", "Video", "800x600", Alt+Enter,
    // "Gameplay", "Hard", the radar piece dragged to slot 7, the green and blue bars to their
    // left ends, then the window's close button.
    const int rest = FRAME_OPTIONS_AT_REST;
    e2e::ScriptWriter script;
    script.Hold(5, "SPACE", 1);
    script.Click(112, e2e::place::TITLE_OPTIONS);
    script.Click(rest, e2e::place::MenuButton(2));
    script.Click(rest + 10, e2e::Point{520, 145 + 50 * 4});
    AltEnter(script, rest + 20);
    script.Click(rest + 30, e2e::place::MenuButton(0));
    script.Click(rest + 40, e2e::Point{670, 135});
    script.Drag(rest + 50, e2e::Point{EDITOR_X + 10, EDITOR_Y + 10},
                e2e::Point{EDITOR_X + 225 + 10, EDITOR_Y + 169 + 10});
    script.Drag(rest + 60, TintBarFull(1), TintBarEmpty(1));
    script.Drag(rest + 70, TintBarFull(2), TintBarEmpty(2));
    script.Line(rest + 80, "quit");
    const int fullScreen = rest + 18;
    const int windowed = rest + 28;
    const int set = rest + 78;
    const e2e::ProcessResult first =
        Run(script, std::to_string(fullScreen) + "," + std::to_string(windowed) + "," + std::to_string(set), rest + 200,
            {});
    ASSERT_TRUE(first.exited) << "signal " << first.signal << (first.timedOut ? " (timed out)" : "") << "\n"
                              << first.standardError;
    EXPECT_EQ(0, first.exitCode) << first.standardError;

    // Full screen fills the 1280 x 1024 desktop whatever the resolution; the window is the
    // resolution's own size.
    Shot shot;
    ASSERT_TRUE(shot.Load(ShotFile(fullScreen)));
    EXPECT_EQ(1280, shot.width);
    EXPECT_EQ(1024, shot.height);
    ASSERT_TRUE(shot.Load(ShotFile(windowed)));
    EXPECT_EQ(800, shot.width);
    EXPECT_EQ(600, shot.height);
    const std::string config = ReadConfig();
    for (const char* entry : {"[Options]", "Resolution=800x600", "FullScreen=0", "Difficulty=Hard", "HudLayout=7,2,1",
                              "HudTint=255,0,0,255"})
    {
        EXPECT_NE(std::string::npos, config.find(entry)) << entry << " in\n" << config;
    }
    EXPECT_EQ(std::string::npos, config.find("Volume")) << "the volume was not touched";

    // The next start, straight into a mission: a window of 800 x 600 from the first frame,
    // the radar in the bottom-right corner in red, nothing in the top-left one. Then Escape,
    // "Options": the gameplay screen as it was left.
    e2e::ScriptWriter mission;
    mission.Hold(40, "ESCAPE", 1);
    // The in-game menu's "Options", button 1 of the panel, at y 360 and x 424..600.
    mission.Click(50, e2e::Point{512, 380});
    const int flying = 30;
    const int options = 190;
    const e2e::ProcessResult second =
        Run(mission, "1," + std::to_string(flying) + "," + std::to_string(options), options, {"--mission", "Mission1"});
    ASSERT_TRUE(second.exited) << second.standardError;
    EXPECT_EQ(0, second.exitCode) << second.standardError;
    ASSERT_TRUE(shot.Load(ShotFile(1)));
    EXPECT_EQ(800, shot.width);
    EXPECT_EQ(600, shot.height);
    ASSERT_TRUE(shot.Load(ShotFile(flying)));
    double red = 0.0;
    double green = 0.0;
    double blue = 0.0;
    // The plate below and right of the dial, and the dial's forward mark above its centre.
    shot.Mean(1000, 740, 20, 24, red, green, blue);
    EXPECT_GT(red, 10.0) << "radar plate";
    EXPECT_LT(green + blue, 2.0) << "radar plate, red only";
    shot.Mean(940, 606, 8, 4, red, green, blue);
    EXPECT_GT(red, 120.0) << "forward mark";
    EXPECT_LT(green + blue, 2.0) << "forward mark, red only";
    // No plate in the top-left corner: the stars show there, grey, never red alone.
    shot.Mean(4, 4, 150, 150, red, green, blue);
    EXPECT_LT(red, 40.0);
    EXPECT_GT(green + blue, red) << "the stars, not a red plate";

    // The options: "Hard" pressed, the radar piece in slot 7 tinted red, slot 0 empty.
    ASSERT_TRUE(shot.Load(ShotFile(options)));
    double hardRed = 0.0;
    double mediumRed = 0.0;
    shot.Mean(660, 125, 100, 20, hardRed, green, blue);
    shot.Mean(510, 125, 100, 20, mediumRed, green, blue);
    EXPECT_GT(std::abs(hardRed - mediumRed), 8.0) << "the pressed button looks unlike the others";
    shot.Mean(EDITOR_X + 225 + 10, EDITOR_Y + 169 + 10, 55, 36, red, green, blue);
    EXPECT_GT(red, 120.0) << "the radar piece in slot 7";
    EXPECT_LT(green + blue, 20.0) << "the radar piece, red";
    shot.Mean(EDITOR_X + 10, EDITOR_Y + 10, 55, 36, red, green, blue);
    EXPECT_LT(red, 80.0) << "slot 0 empty";
    EXPECT_NE(std::string::npos, ReadConfig().find("FullScreen=0"));

    // Kept full screen, and started with --windowed: a window for this run, and the stored
    // choice stays as it was.
    {
        std::string kept = ReadConfig();
        kept.replace(kept.find("FullScreen=0"), 12, "FullScreen=1");
        std::ofstream(m_dir + "/config.ini") << kept;
    }
    const e2e::ProcessResult third = Run(e2e::ScriptWriter(), "5", 5, {"--windowed", "--mission", "Mission1"});
    ASSERT_TRUE(third.exited) << third.standardError;
    ASSERT_TRUE(shot.Load(ShotFile(5)));
    EXPECT_EQ(800, shot.width);
    EXPECT_EQ(600, shot.height);
    EXPECT_NE(std::string::npos, ReadConfig().find("FullScreen=1"));
}
