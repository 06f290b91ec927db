// Start-up never waits on data: with a campaign file of 16 MB, whose first mission alone has
// thousands of objectives, the window shows the first logo at once, and a mission of that
// campaign started from the command line loads and plays.
#include "e2e/GameProcess.h"
#include "platform/PngFile.h"
#include "support/TestBitmaps.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace
{
namespace fs = std::filesystem;

// The largest profile the game reads.
constexpr size_t CAMPAIGN_BYTES = 16u * 1024u * 1024u;
// Read one value at a time from the whole file, the objectives of this one mission would
// take minutes.
constexpr int OBJECTIVES = 20000;

double MeanBrightness(const std::string& p_path)
{
    int32_t width = 0;
    int32_t height = 0;
    std::vector<uint8_t> rgba;
    if (!platform::ReadPng(p_path, width, height, rgba) || width <= 0 || height <= 0)
    {
        return -1.0;
    }
    double sum = 0.0;
    for (size_t i = 0; i < rgba.size(); i += 4)
    {
        sum += (rgba[i] + rgba[i + 1] + rgba[i + 2]) / 3.0;
    }
    return sum / (rgba.size() / 4);
}

class BigCampaignE2ETest : public e2e::GameDirTest
{
protected:
    BigCampaignE2ETest() : GameDirTest("korvath-e2e-bigcampaign") {}

    void SetUp() override
    {
        GameDirTest::SetUp();
        fs::create_directories(m_dir + "/art/menu");
        fs::create_directories(m_dir + "/Campaign");
        fs::create_directories(m_dir + "/Saves");
        ASSERT_TRUE(testsupport::WriteSolidBitmap(m_dir + "/art/menu/corvel_logo.bmp", 1024, 768, 255, 255, 255, 24));

        // The first mission: thousands of objectives with an action each; the first few have
        // a text, so they are active (the rest wait for an "activate" that never comes).
        std::string text = "[Entry]\nFirstMission=Swarm\n[Swarm]\nLevel=none.lvl\nBrief=Sixteen megabytes.\n";
        for (int i = 1; i <= OBJECTIVES; ++i)
        {
            const std::string n = std::to_string(i);
            text += "Obj" + n + "=timepassed " + n + " t" + n + "\n";
            if (i <= 3)
            {
                text += "Obj" + n + "_text=Wait " + n + " seconds\n";
            }
            text += "t" + n + "_1=money 1\n";
        }
        text += "Win1=timepassed 1 Next\n[Next]\nBrief=Won.\n";
        // Then missions nobody flies, up to the size limit.
        for (int m = 0; text.size() < CAMPAIGN_BYTES - 200; ++m)
        {
            text += "[Filler" + std::to_string(m) + "]\nBrief=" + std::string(180, 'x') + "\n";
        }
        text.resize(CAMPAIGN_BYTES, '\n');
        std::ofstream(m_dir + "/Campaign/korvath.ini", std::ios::binary) << text;
        ASSERT_EQ(fs::file_size(m_dir + "/Campaign/korvath.ini"), CAMPAIGN_BYTES);
    }

    e2e::ProcessResult Run(const std::vector<std::string>& p_args, int p_frames)
    {
        auto env = e2e::GameEnv();
        env["KORVATH_FIXED_DT"] = "0.05";
        env["KORVATH_SCREENSHOT_AT"] = std::to_string(p_frames);
        env["KORVATH_EXIT_AFTER"] = std::to_string(p_frames);
        std::vector<std::string> args = {"--windowed"};
        args.insert(args.end(), p_args.begin(), p_args.end());
        return e2e::RunGame(m_dir, args, env, 60);
    }

    std::string Screenshot(int p_frame) const
    {
        char name[32];
        std::snprintf(name, sizeof(name), "/screenshot-%06d.png", p_frame);
        return m_dir + name;
    }
};

TEST_F(BigCampaignE2ETest, ASixteenMegabyteCampaignDoesNotHoldUpTheWindow)
{
    const e2e::ProcessResult run = Run({}, 30);
    ASSERT_TRUE(run.exited) << (run.timedOut ? "timed out" : "killed") << "\n" << run.standardError;
    EXPECT_EQ(0, run.exitCode) << run.standardError;
    // A second and a half in: the white logo, faded in.
    EXPECT_GT(MeanBrightness(Screenshot(30)), 200.0);
}

TEST_F(BigCampaignE2ETest, AMissionOfTheSixteenMegabyteCampaignLoadsAndPlays)
{
    // The mission is won after a second; the new pilot is then saved on the next mission.
    const e2e::ProcessResult run = Run({"--mission", "Swarm"}, 200);
    ASSERT_TRUE(run.exited) << (run.timedOut ? "timed out" : "killed") << "\n" << run.standardError;
    EXPECT_EQ(0, run.exitCode) << run.standardError;
    std::ifstream pilot(m_dir + "/Saves/Developer0.sav", std::ios::binary);
    const std::string saved((std::istreambuf_iterator<char>(pilot)), std::istreambuf_iterator<char>());
    EXPECT_NE(saved.find("\x04Next"), std::string::npos) << "the pilot was not saved on the next mission";
}

} // namespace
