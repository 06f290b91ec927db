// The pilot menu in the real game: a new recruit steps to another face, types a name and
// starts; then, on a second visit, the same pilot is picked as a returning pilot, its status
// is shown, and it starts again.
#include "app/DevOptions.h"
#include "e2e/GameProcess.h"
#include "pilot/Pilot.h"
#include "platform/PngFile.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

namespace
{
namespace fs = std::filesystem;

// At 20 frames a second a menu's clock starts at 0.01 s in the frame after the one that made
// it. The title menu (four buttons) has opened 4.9 s later, the pilot menu (three) 3.9 s later.
constexpr int TITLE_OPEN_FRAMES = 99;
constexpr int PILOT_MENU_OPEN_FRAMES = 79;
// The logos end with a key in frame 5; the title menu is made in frame 6.
constexpr int FIRST_TITLE_MENU_FRAME = 6;

// Where the player clicks.
constexpr int SINGLE_X = 80;
constexpr int SINGLE_Y = 230;          // the title menu's first button
constexpr int RETURNING_PILOT_Y = 300; // the pilot menu's second button
constexpr int EXECUTE_X = 948;         // 6 pixels in from the bottom right corner
constexpr int EXECUTE_Y = 744;
constexpr int HUB_QUIT_X = 630; // the hub's "Quit" at (560, 680)
constexpr int HUB_QUIT_Y = 700;
constexpr int RIGHT_ARROW_X = 788; // the portrait strip at (275, 200): its right arrow
constexpr int RIGHT_ARROW_Y = 300;

// The middle cell of a picker placed at y: x 476 to 601, from y + 21 down 156.
constexpr int MIDDLE_CELL_X = 476;
constexpr int LEFT_CELL_X = 333;
constexpr int CELL_TOP = 21;
constexpr int CELL_WIDTH = 125;
constexpr int CELL_HEIGHT = 156;
constexpr int PORTRAITS_Y = 200;
constexpr int SAVES_Y = 80;

// The input of one run, with the cursor followed from (0, 0): each mouse count moves it two
// pixels, so every target is an even position.
class Script
{
public:
    void Line(int p_frame, const std::string& p_event) { m_text << p_frame << " " << p_event << "\n"; }
    // Down in p_frame, up in the next.
    void Key(int p_frame, const char* p_key)
    {
        Line(p_frame, std::string("key ") + p_key + " down");
        Line(p_frame + 1, std::string("key ") + p_key + " up");
    }
    // Moves in p_frame, presses two frames later and releases in the frame after: the click
    // counts in p_frame + 3, which it answers.
    int Click(int p_frame, int p_x, int p_y)
    {
        Line(p_frame, "mouse move " + std::to_string((p_x - m_x) / 2) + " " + std::to_string((p_y - m_y) / 2));
        m_x = p_x;
        m_y = p_y;
        Line(p_frame + 2, "mouse button 0 down");
        Line(p_frame + 3, "mouse button 0 up");
        return p_frame + 3;
    }
    std::string Text() const { return m_text.str(); }

private:
    std::ostringstream m_text;
    int m_x = 0;
    int m_y = 0;
};

// The step between the two visits to the pilot menu, from the frame in which "Execute" handed
// up the hub to the frame in which the title menu's "Single" can be clicked: the hub's "Quit"
// (at 560, 680), then the title menu drops in.
int BetweenVisits(Script& p_script, int p_executed)
{
    const int quit = p_script.Click(p_executed + 2, HUB_QUIT_X, HUB_QUIT_Y);
    return quit + TITLE_OPEN_FRAMES;
}

struct Rgb
{
    double r = 0.0;
    double g = 0.0;
    double b = 0.0;
};

class Screenshot
{
public:
    explicit Screenshot(const std::string& p_file) { m_ok = platform::ReadPng(p_file, m_width, m_height, m_rgba); }
    bool IsOk() const { return m_ok && m_width == 1024 && m_height == 768; }

    Rgb Mean(int p_x, int p_y, int p_width, int p_height) const
    {
        Rgb sum;
        for (int y = p_y; y < p_y + p_height; ++y)
        {
            for (int x = p_x; x < p_x + p_width; ++x)
            {
                const uint8_t* p = Pixel(x, y);
                sum.r += p[0];
                sum.g += p[1];
                sum.b += p[2];
            }
        }
        const double count = static_cast<double>(p_width) * p_height;
        return Rgb{sum.r / count, sum.g / count, sum.b / count};
    }
    double Brightness(int p_x, int p_y, int p_width, int p_height) const
    {
        const Rgb mean = Mean(p_x, p_y, p_width, p_height);
        return (mean.r + mean.g + mean.b) / 3.0;
    }
    // The rightmost column of a rectangle holding a near-white pixel (printed text), or -1.
    int TextRight(int p_x, int p_y, int p_width, int p_height) const
    {
        int right = -1;
        for (int y = p_y; y < p_y + p_height; ++y)
        {
            for (int x = p_x; x < p_x + p_width; ++x)
            {
                const uint8_t* p = Pixel(x, y);
                if (p[0] > 180 && p[1] > 180 && p[2] > 180 && x > right)
                {
                    right = x;
                }
            }
        }
        return right;
    }

private:
    const uint8_t* Pixel(int p_x, int p_y) const
    {
        return &m_rgba[(static_cast<size_t>(p_y) * static_cast<size_t>(m_width) + static_cast<size_t>(p_x)) * 4u];
    }

    bool m_ok = false;
    int32_t m_width = 0;
    int32_t m_height = 0;
    std::vector<uint8_t> m_rgba;
};

class SinglePlayerE2ETest : public e2e::GameDirTest
{
protected:
    SinglePlayerE2ETest() : GameDirTest("korvath-e2e-single") {}

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
};

void ExpectSameColour(const Rgb& p_expected, const Rgb& p_actual, const char* p_what)
{
    EXPECT_NEAR(p_expected.r, p_actual.r, 6.0) << p_what;
    EXPECT_NEAR(p_expected.g, p_actual.g, 6.0) << p_what;
    EXPECT_NEAR(p_expected.b, p_actual.b, 6.0) << p_what;
}
} // namespace

TEST_F(SinglePlayerE2ETest, NewRecruitStartsAndComesBackAsReturningPilot)
{
    // The portraits are where the game lists them, in the game's spelling.
    ASSERT_TRUE(fs::is_directory(m_dir + "/Portraits"));
    EXPECT_FALSE(fs::exists(m_dir + "/portraits"));

    Script script;
    script.Key(5, "SPACE");
    // First visit: "Single", one step right (from Vexa, the newest, to Unit7), the name
    // "Unit7" rubbed out and "Ace" typed, "Execute".
    const int single = script.Click(FIRST_TITLE_MENU_FRAME + TITLE_OPEN_FRAMES, SINGLE_X, SINGLE_Y);
    int frame = single + PILOT_MENU_OPEN_FRAMES;
    frame = script.Click(frame, RIGHT_ARROW_X, RIGHT_ARROW_Y) + 1;
    for (int i = 0; i < 5; ++i, frame += 2)
    {
        script.Key(frame, "BACKSPACE");
    }
    script.Line(frame, "key LSHIFT down");
    script.Key(frame + 1, "A");
    script.Line(frame + 3, "key LSHIFT up");
    script.Key(frame + 4, "C");
    script.Key(frame + 6, "E");
    const int typed = frame + 8;
    const int executed = script.Click(typed + 1, EXECUTE_X, EXECUTE_Y);
    const int afterExecute = executed + 2;

    const int titleOpen = BetweenVisits(script, executed);

    // Second visit: "Single", "Returning Pilot", "Execute".
    const int secondSingle = script.Click(titleOpen + 1, SINGLE_X, SINGLE_Y);
    const int returning = script.Click(secondSingle + PILOT_MENU_OPEN_FRAMES, SINGLE_X, RETURNING_PILOT_Y);
    const int status = returning + 2;
    const int secondExecuted = script.Click(status + 1, EXECUTE_X, EXECUTE_Y);
    const int afterSecondExecute = secondExecuted + 2;
    script.Line(afterSecondExecute + 2, "quit");

    const std::string shots = std::to_string(typed) + "," + std::to_string(afterExecute) + "," +
                              std::to_string(status) + "," + std::to_string(afterSecondExecute);
    const e2e::ProcessResult run = Run(script.Text(), shots, afterSecondExecute + 20);
    ASSERT_TRUE(run.exited) << "signal " << run.signal << (run.timedOut ? " (timed out)" : "") << "\n"
                            << run.standardError;
    EXPECT_EQ(0, run.exitCode) << run.standardError;

    // The new pilot's file, and nothing else in "Saves".
    std::vector<std::string> saves;
    for (const fs::directory_entry& entry : fs::directory_iterator(m_dir + "/Saves"))
    {
        saves.push_back(entry.path().filename().string());
    }
    EXPECT_EQ(std::vector<std::string>{"Ace0.sav"}, saves);
    const fs::path oldDir = fs::current_path();
    fs::current_path(m_dir);
    Pilot pilot("Saves\\Ace0.sav");
    const bool loaded = pilot.Load(nullptr);
    fs::current_path(oldDir);
    ASSERT_TRUE(loaded) << run.standardError;
    EXPECT_EQ("Ace", pilot.GetPilotName());
    EXPECT_EQ("Portraits\\Unit7.bmp", pilot.GetPortrait());
    EXPECT_EQ("", pilot.GetMissionName());

    const Screenshot newRecruit(Shot(typed));
    const Screenshot replaced(Shot(afterExecute));
    const Screenshot returningPilot(Shot(status));
    const Screenshot replacedAgain(Shot(afterSecondExecute));
    ASSERT_TRUE(newRecruit.IsOk() && replaced.IsOk() && returningPilot.IsOk() && replacedAgain.IsOk());

    // The returning pilot's picture is the face chosen as a recruit, in the middle cell, with
    // the same face dimmed on either side (the only save).
    const Rgb chosen = newRecruit.Mean(MIDDLE_CELL_X, PORTRAITS_Y + CELL_TOP, CELL_WIDTH, CELL_HEIGHT);
    const Rgb shown = returningPilot.Mean(MIDDLE_CELL_X, SAVES_Y + CELL_TOP, CELL_WIDTH, CELL_HEIGHT);
    ExpectSameColour(chosen, shown, "middle cell");
    const Rgb side = returningPilot.Mean(LEFT_CELL_X, SAVES_Y + CELL_TOP, CELL_WIDTH, CELL_HEIGHT);
    EXPECT_GT(std::abs(side.r - shown.r) + std::abs(side.g - shown.g) + std::abs(side.b - shown.b), 20.0);

    // The status is filled from the save: the name, the first mission, "$0" (far narrower
    // than the "SetMe!" it replaced), a machine gun on mount 1 and nothing on mount 2.
    EXPECT_GT(returningPilot.TextRight(365, 290, 200, 30), 365);
    EXPECT_GT(returningPilot.TextRight(407, 400, 100, 14), 407 + 30); // "Mission1"
    const int fundsRight = returningPilot.TextRight(393, 432, 100, 14);
    EXPECT_GT(fundsRight, 393);
    EXPECT_LT(fundsRight, 393 + 25);
    EXPECT_GT(returningPilot.TextRight(670, 488, 150, 14), 670 + 40); // "Machine Gun"
    EXPECT_EQ(-1, returningPilot.TextRight(670, 504, 150, 14));

    // Both times "Execute" led straight to the hub: its buttons along the bottom, the first
    // mission's briefing in lines of up to 600 pixels from (250, 300), no pilot menu left.
    for (const Screenshot* hub : {&replaced, &replacedAgain})
    {
        EXPECT_GT(hub->Brightness(855, 688, 130, 24), 150.0); // "Start Mission"
        EXPECT_GT(hub->Brightness(565, 688, 130, 24), 150.0); // "Quit"
        EXPECT_GT(hub->TextRight(250, 305, 620, 24), 250 + 400);
        EXPECT_LT(hub->Brightness(20, 218, 130, 24), 100.0);
    }
}
