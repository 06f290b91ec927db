// A session recorded with KORVATH_RECORD at the real, uneven frame times of this machine
// replays through KORVATH_INPUT_SCRIPT to the same screens, pixel for pixel, and the same
// pilot file: the hub, the shop (a hull fitted, ammunition bought, "Done"), and a mission
// flown for a while with the in-game menu opened at the end.
#include "app/DevOptions.h"
#include "e2e/GamePlayer.h"
#include "e2e/GameProcess.h"
#include "pilot/ForSalePanel.h"
#include "pilot/PartList.h"
#include "pilot/Pilot.h"
#include "platform/PngFile.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>

namespace fs = std::filesystem;
using e2e::Point;
namespace place = e2e::place;

namespace
{
constexpr const char* PILOT = "Saves\\Rec0.sav";
constexpr const char* PILOT_PATH = "Saves/Rec0.sav";
constexpr int32_t MONEY = 20000;
constexpr Point HULLS_BUTTON{place::FOR_SALE.x + 100, place::FOR_SALE.y + ForSalePanel::FIRST_KIND_Y + 16};
constexpr Point BULLETS_BUTTON{place::FOR_SALE.x + 100, place::FOR_SALE.y + ForSalePanel::FIRST_AMMO_Y + 16};
// The second hull of the list, the Scout Frame.
constexpr Point SCOUT_LINE{place::FOR_SALE.x + ForSalePanel::LIST_X + 14,
                           place::FOR_SALE.y + ForSalePanel::LIST_Y + PartList::ARROW_HEIGHT + PartList::ARROW_GAP +
                               ForSalePanel::LINE_HEIGHT + 6};

std::string ReadAll(const std::string& p_path)
{
    std::ifstream file(p_path, std::ios::binary);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

class RecordingE2ETest : public e2e::GameDirTest
{
protected:
    RecordingE2ETest() : GameDirTest("korvath-e2e-recording") {}

    void SetUp() override
    {
        GameDirTest::SetUp();
        if (HasFatalFailure())
        {
            return;
        }
        e2e::BuildGameData(m_dir);
    }

    void WritePilot()
    {
        const fs::path old = fs::current_path();
        fs::current_path(m_dir);
        Pilot pilot(PILOT);
        pilot.SetPilotName("Rec");
        pilot.SetMoney(MONEY);
        pilot.SetMissionName("Mission1");
        EXPECT_TRUE(pilot.Save(nullptr));
        fs::current_path(old);
    }

    // Moves the screenshots of a run aside, into p_folder.
    void KeepScreenshots(const std::string& p_folder, const std::vector<int64_t>& p_frames)
    {
        fs::create_directories(m_dir + "/" + p_folder);
        for (int64_t frame : p_frames)
        {
            const std::string name = DevOptions::ScreenshotName(frame);
            std::error_code error;
            fs::rename(m_dir + "/" + name, m_dir + "/" + p_folder + "/" + name, error);
            EXPECT_FALSE(error) << name << " of the " << p_folder << " run is missing";
        }
    }
};
} // namespace

TEST_F(RecordingE2ETest, ARecordedSessionReplaysToTheSameScreensAndPilotFile)
{
    WritePilot();
    e2e::ScriptWriter script;
    int64_t frame = script.Click(5, place::HUB_SHOP);
    frame = script.Click(frame + 2, HULLS_BUTTON);
    frame = script.Drag(frame + 2, SCOUT_LINE, place::ON_SHIP);
    const int64_t shop = frame + 1;
    frame = script.Click(frame + 3, BULLETS_BUTTON);
    frame = script.Click(frame + 2, place::SHOP_DONE);
    const int64_t hub = frame + 1;
    frame = script.Click(frame + 2, place::HUB_START);
    // Ahead and round to the right, firing, for a few seconds.
    script.Hold(frame + 5, "NUMPAD8", 60);
    script.Hold(frame + 20, "NUMPAD9", 25);
    script.Hold(frame + 30, "W", 30);
    const int64_t flying = frame + 50;
    script.Line(frame + 80, "key ESCAPE down");
    script.Line(frame + 81, "key ESCAPE up");
    const int64_t menu = frame + 84;
    ASSERT_TRUE(script.Save(m_dir + "/session.txt"));
    const std::vector<int64_t> shots{3, shop, hub, flying, menu};
    std::string shotList;
    for (int64_t shot : shots)
    {
        shotList += (shotList.empty() ? "" : ",") + std::to_string(shot);
    }
    const std::vector<std::string> args{"--windowed", "--pilot", PILOT};

    // The session, at the frame times this machine gives it.
    const e2e::ProcessResult recorded = e2e::RunGame(
        m_dir, args,
        e2e::GameEnv({{"KORVATH_INPUT_SCRIPT", "session.txt"},
                      {"KORVATH_RECORD", "recording.txt"},
                      {"KORVATH_SCREENSHOT_AT", shotList},
                      {"KORVATH_EXIT_AFTER", std::to_string(menu)}}),
        300);
    ASSERT_TRUE(recorded.exited) << recorded.standardError;
    ASSERT_EQ(0, recorded.exitCode) << recorded.standardError;
    KeepScreenshots("recorded", shots);
    const std::string pilotAfter = ReadAll(m_dir + "/" + PILOT_PATH);

    // The recording holds the seed and a time for every frame, and the times were uneven.
    const std::string recording = ReadAll(m_dir + "/recording.txt");
    std::istringstream lines(recording);
    std::string line;
    std::set<std::string> frameTimes;
    int frames = 0;
    bool seeded = false;
    while (std::getline(lines, line))
    {
        std::istringstream words(line);
        std::string first;
        std::string what;
        std::string value;
        words >> first >> what >> value;
        seeded = seeded || first == "seed";
        if (what == "dt")
        {
            ++frames;
            frameTimes.insert(value);
        }
    }
    EXPECT_TRUE(seeded);
    EXPECT_EQ(menu, frames);
    EXPECT_GT(frameTimes.size(), 3u) << "the frame times did not vary";

    // The replay: the pilot as it was, the recording as the only input.
    WritePilot();
    const e2e::ProcessResult replayed = e2e::RunGame(
        m_dir, args,
        e2e::GameEnv({{"KORVATH_INPUT_SCRIPT", "recording.txt"},
                      {"KORVATH_SCREENSHOT_AT", shotList},
                      {"KORVATH_EXIT_AFTER", std::to_string(menu)}}),
        300);
    ASSERT_TRUE(replayed.exited) << replayed.standardError;
    ASSERT_EQ(0, replayed.exitCode) << replayed.standardError;
    KeepScreenshots("replayed", shots);

    EXPECT_EQ(pilotAfter, ReadAll(m_dir + "/" + PILOT_PATH)) << "the pilot files differ";
    for (int64_t shot : shots)
    {
        const std::string name = DevOptions::ScreenshotName(shot);
        int32_t width = 0;
        int32_t height = 0;
        std::vector<uint8_t> before;
        std::vector<uint8_t> after;
        ASSERT_TRUE(platform::ReadPng(m_dir + "/recorded/" + name, width, height, before)) << name;
        ASSERT_TRUE(platform::ReadPng(m_dir + "/replayed/" + name, width, height, after)) << name;
        EXPECT_TRUE(before == after) << "frame " << shot << " differs";
        // KORVATH_TEST_SCREENSHOT_DIR keeps what the game showed, to look at.
        if (const char* keep = std::getenv("KORVATH_TEST_SCREENSHOT_DIR"); keep != nullptr && keep[0] != '\0')
        {
            std::error_code error;
            fs::copy_file(m_dir + "/replayed/" + name, fs::path(keep) / ("recording-" + name),
                          fs::copy_options::overwrite_existing, error);
        }
    }
    // The session did what it was scripted to: the new hull is fitted and saved.
    EXPECT_NE(std::string::npos, pilotAfter.find("Scout Frame"));
}
