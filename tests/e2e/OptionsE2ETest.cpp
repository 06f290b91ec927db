// The options in the real game: from the title, a resolution change there and back and a new
// key for SHOOT_FORWARD that then fires in a mission; and in a mission, the volume moved on
// the options over the frozen game, heard in the shots that follow (SDL's disk audio driver
// writes what the game mixes to a file).
#include "app/DevOptions.h"
#include "e2e/GameProcess.h"
#include "platform/PngFile.h"
#include "sound/Sound.h"
#include "support/TestAudio.h"
#include "support/TestBitmaps.h"

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <vector>

namespace
{
// At 20 frames a second the title menu is at rest from frame 110 (see MenuE2ETest); the
// options menu opened from it by a click in frame 115 has dropped in by frame 240.
constexpr int FRAME_OPTIONS_AT_REST = 240;
const char* const SKIP_LOGOS = "5 key SPACE down\n6 key SPACE up\n";
// A shot's sound: 80 ms at a constant level, so that the level heard is the volume's gain.
constexpr int16_t SHOT_LEVEL = 8000;
constexpr double SHOT_SECONDS = 0.08;

// Input lines that move the cursor from where it is to (p_x, p_y) in logical pixels (two a
// mouse count) in frame p_frame; the cursor starts at (0, 0).
class Script
{
public:
    Script& Line(const std::string& p_line)
    {
        m_text << p_line << "\n";
        return *this;
    }
    Script& Move(int p_frame, int p_x, int p_y)
    {
        const int dx = (p_x - m_x) / 2;
        const int dy = (p_y - m_y) / 2;
        m_x += dx * 2;
        m_y += dy * 2;
        return Line(std::to_string(p_frame) + " mouse move " + std::to_string(dx) + " " + std::to_string(dy));
    }
    // Moves there, presses two frames later and releases in the next.
    Script& Click(int p_frame, int p_x, int p_y)
    {
        Move(p_frame, p_x, p_y);
        Line(std::to_string(p_frame + 2) + " mouse button 0 down");
        return Line(std::to_string(p_frame + 3) + " mouse button 0 up");
    }
    Script& Drag(int p_frame, int p_fromX, int p_fromY, int p_toX, int p_toY)
    {
        Move(p_frame, p_fromX, p_fromY);
        Line(std::to_string(p_frame + 1) + " mouse button 0 down");
        Move(p_frame + 2, p_toX, p_toY);
        return Line(std::to_string(p_frame + 4) + " mouse button 0 up");
    }
    Script& Tap(int p_frame, const char* p_key)
    {
        Line(std::to_string(p_frame) + " key " + p_key + " down");
        return Line(std::to_string(p_frame + 1) + " key " + p_key + " up");
    }
    std::string Text() const { return m_text.str(); }

private:
    std::ostringstream m_text;
    int m_x = 0;
    int m_y = 0;
};

// The middle of the options menu's button p_index at rest, and of a resolution button.
constexpr int MENU_BUTTON_X = 80;
int MenuButtonY(int p_index)
{
    return 230 + 70 * p_index;
}
constexpr int RESOLUTION_X = 520;
int ResolutionY(int p_index)
{
    return 145 + 50 * p_index;
}

// One stretch of sound: first and last frame (44.1 kHz) and its level.
struct Burst
{
    int64_t from;
    int64_t to;
    int32_t peak;
};

// The stretches above a small threshold, quiet gaps of under 10 ms not counting as an end.
std::vector<Burst> FindBursts(const std::vector<int16_t>& p_samples)
{
    std::vector<Burst> bursts;
    int64_t at = 0;
    for (;;)
    {
        const int64_t start = testsupport::FirstFrameAbove(p_samples, at, 100);
        if (start < 0)
        {
            return bursts;
        }
        int64_t end = start;
        const int64_t frames = static_cast<int64_t>(p_samples.size() / 2);
        for (int64_t quiet = 0; end < frames && quiet < testsupport::Frames(0.01); ++end)
        {
            quiet = std::abs(p_samples[static_cast<size_t>(end * 2)]) > 100 ? 0 : quiet + 1;
        }
        bursts.push_back(Burst{start, end, testsupport::PeakLevel(p_samples, start, end)});
        at = end;
    }
}

class OptionsE2ETest : public e2e::GameDirTest
{
protected:
    OptionsE2ETest() : GameDirTest("korvath-e2e-options") {}

    void SetUp() override
    {
        GameDirTest::SetUp();
        if (HasFatalFailure())
        {
            return;
        }
        e2e::BuildGameData(m_dir);
        std::filesystem::create_directories(m_dir + "/Sound");
        ASSERT_TRUE(testsupport::WriteFileBytes(
            m_dir + "/Sound/shoot.wav",
            testsupport::MakeWavBytes(testsupport::MakeLevelSamples(SHOT_LEVEL, SHOT_SECONDS), 2, 44100)));
    }

    e2e::ProcessResult Run(const Script& p_script, const std::string& p_screenshots, int p_exitAfter,
                           const std::vector<std::string>& p_args = {})
    {
        {
            std::ofstream file(m_dir + "/script.txt");
            file << p_script.Text();
        }
        std::filesystem::remove(AudioFile());
        const std::map<std::string, std::string> env =
            e2e::GameEnv({{"KORVATH_FIXED_DT", "0.05"},
                          {"KORVATH_SEED", "7"},
                          {"KORVATH_INPUT_SCRIPT", "script.txt"},
                          {"KORVATH_SCREENSHOT_AT", p_screenshots},
                          {"KORVATH_EXIT_AFTER", std::to_string(p_exitAfter)},
                          {"SDL_AUDIODRIVER", "disk"},
                          {"SDL_DISKAUDIOFILE", AudioFile()},
                          {"SDL_DISKAUDIODELAY", "10"}});
        std::vector<std::string> args = {"--windowed"};
        args.insert(args.end(), p_args.begin(), p_args.end());
        return e2e::RunGame(m_dir, args, env, 180);
    }
    std::string Shot(int p_frame) const { return m_dir + "/" + DevOptions::ScreenshotName(p_frame); }
    std::string AudioFile() const { return m_dir + "/audio.raw"; }
    std::vector<int16_t> ReadAudio() const
    {
        std::ifstream file(AudioFile(), std::ios::binary);
        std::vector<int16_t> samples;
        uint8_t pair[2];
        while (file.read(reinterpret_cast<char*>(pair), 2))
        {
            samples.push_back(static_cast<int16_t>(static_cast<uint16_t>(pair[0] | (pair[1] << 8))));
        }
        return samples;
    }
    std::string ReadConfig() const
    {
        std::ifstream file(m_dir + "/config.ini");
        std::stringstream text;
        text << file.rdbuf();
        return text.str();
    }
};

// A screenshot's size and, over a rectangle in logical pixels, its darkest pixel and how many
// pixels are near black: a caption drawn at the display's own size has strokes of solid
// black; one drawn for another size and stretched has only greys.
struct Picture
{
    int32_t width = 0;
    int32_t height = 0;
    std::vector<uint8_t> rgba;

    bool Load(const std::string& p_file) { return platform::ReadPng(p_file, width, height, rgba); }
    void Ink(int p_x, int p_y, int p_width, int p_height, int& p_darkest, int& p_black) const
    {
        p_darkest = 255;
        p_black = 0;
        const int x0 = p_x * width / 1024;
        const int y0 = p_y * height / 768;
        const int x1 = (p_x + p_width) * width / 1024;
        const int y1 = (p_y + p_height) * height / 768;
        for (int y = y0; y < y1; ++y)
        {
            for (int x = x0; x < x1; ++x)
            {
                const uint8_t* p = &rgba[(static_cast<size_t>(y) * width + x) * 4];
                const int grey = (p[0] + p[1] + p[2]) / 3;
                p_darkest = std::min(p_darkest, grey);
                p_black += grey < 40 ? 1 : 0;
            }
        }
    }
};
} // namespace

TEST_F(OptionsE2ETest, ResolutionThereAndBackThenANewKeyThatFiresInAMission)
{
    // "Options" on the title menu, "Video", "800x600", "1024x768", "Controls", the box of
    // SHOOT_FORWARD, then Q.
    const int rest = FRAME_OPTIONS_AT_REST;
    Script script;
    script.Line(SKIP_LOGOS)
        .Click(112, MENU_BUTTON_X, 210 + 70 * 2 + 20)
        .Click(rest, MENU_BUTTON_X, MenuButtonY(2))
        .Click(rest + 10, RESOLUTION_X, ResolutionY(4))
        .Click(rest + 22, RESOLUTION_X, ResolutionY(3))
        .Click(rest + 34, MENU_BUTTON_X, MenuButtonY(1))
        .Click(rest + 46, 600, 165)
        .Tap(rest + 52, "Q");
    const int small = rest + 16;
    const int back = rest + 28;
    const int controls = rest + 40;
    const e2e::ProcessResult run =
        Run(script, std::to_string(small) + "," + std::to_string(back) + "," + std::to_string(controls), rest + 60);
    ASSERT_TRUE(run.exited) << "signal " << run.signal << (run.timedOut ? " (timed out)" : "") << "\n"
                            << run.standardError;
    EXPECT_EQ(0, run.exitCode) << run.standardError;

    // At 800 x 600 and back at 1024 x 768: the ribbon, the five buttons and the six resolution
    // buttons in their places, the captions in solid black strokes.
    for (auto [frame, width, height] : {std::tuple{small, 800, 600}, std::tuple{back, 1024, 768}})
    {
        SCOPED_TRACE("frame " + std::to_string(frame));
        Picture shot;
        ASSERT_TRUE(shot.Load(Shot(frame)));
        EXPECT_EQ(width, shot.width);
        EXPECT_EQ(height, shot.height);
        for (int i = 0; i < 5; ++i)
        {
            EXPECT_GT(e2e::RegionBrightness(Shot(frame), 25, MenuButtonY(i) - 12, 120, 24), 120.0) << "button " << i;
        }
        for (int i = 0; i < 6; ++i)
        {
            const int top = ResolutionY(i) - 20;
            EXPECT_GT(e2e::RegionBrightness(Shot(frame), 460, top + 5, 120, 30), 120.0) << "resolution " << i;
            int darkest = 0;
            int black = 0;
            shot.Ink(470, top + 12, 100, 16, darkest, black);
            EXPECT_LT(darkest, 30) << "caption of resolution " << i;
            // About 200 such pixels at 1024 x 768, in proportion to the area at other sizes.
            EXPECT_GT(black, 100 * width * height / (1024 * 768)) << "caption of resolution " << i;
        }
        EXPECT_LT(e2e::RegionBrightness(Shot(frame), 300, 500, 600, 200), 10.0) << "nothing else on the screen";
    }
    // The click on "Controls" after the changes worked: twelve grey key boxes.
    for (int row = 0; row < 12; ++row)
    {
        EXPECT_NEAR(128.0, e2e::RegionBrightness(Shot(controls), 560, 150 + 40 * row + 3, 20, 6), 12.0) << row;
    }
    const std::string config = ReadConfig();
    EXPECT_NE(std::string::npos, config.find("SHOOT_FORWARD=Q")) << config;

    // The next start reads it: in a mission W no longer fires, Q does (one shot a press).
    Script mission;
    mission.Tap(30, "W").Tap(70, "Q").Tap(110, "Q").Tap(150, "Q");
    const e2e::ProcessResult flight = Run(mission, "", 190, {"--mission", "Mission1"});
    ASSERT_TRUE(flight.exited) << flight.standardError;
    EXPECT_EQ(0, flight.exitCode) << flight.standardError;
    const std::vector<Burst> shots = FindBursts(ReadAudio());
    EXPECT_EQ(3u, shots.size());
}

TEST_F(OptionsE2ETest, VolumeChangedOverTheFrozenMissionIsHeardWhenItGoesOn)
{
    // A shot, then Escape, "Options", "Audio", the bar dragged to its middle (position 50,
    // -20 dB), "Cancel", Escape, and another shot.
    Script script;
    script.Tap(30, "W").Tap(50, "ESCAPE");
    // The panel's "Options": button 1 of the in-game menu, at y 360 and x 424..600.
    script.Click(60, 512, 380);
    const int rest = 190; // the options opened in frame 64 and dropped in by 182
    script.Click(rest, MENU_BUTTON_X, MenuButtonY(3))
        .Drag(rest + 10, 650, 308, 552, 308)
        .Click(rest + 20, MENU_BUTTON_X, MenuButtonY(4))
        .Tap(rest + 45, "ESCAPE")
        .Tap(rest + 60, "W");
    const int overMission = 185;
    const int audio = rest + 16;
    const int backToPanel = rest + 42;
    const e2e::ProcessResult run = Run(script,
                                       std::to_string(overMission) + "," + std::to_string(audio) + "," +
                                           std::to_string(backToPanel),
                                       rest + 90, {"--mission", "Mission1"});
    ASSERT_TRUE(run.exited) << "signal " << run.signal << (run.timedOut ? " (timed out)" : "") << "\n"
                            << run.standardError;
    EXPECT_EQ(0, run.exitCode) << run.standardError;

    // The options over the darkened mission, then the Audio screen, then the panel again.
    EXPECT_GT(e2e::RegionBrightness(Shot(overMission), 25, MenuButtonY(4) - 12, 120, 24), 120.0) << "Cancel";
    EXPECT_GT(e2e::RegionBrightness(Shot(overMission), 420, 290, 60, 40), 100.0) << "the HUD pieces";
    EXPECT_GT(e2e::RegionBrightness(Shot(audio), 305, 300, 490, 16), 40.0) << "the volume bar";
    EXPECT_LT(e2e::RegionBrightness(Shot(backToPanel), 25, MenuButtonY(4) - 12, 120, 24), 30.0) << "options gone";
    EXPECT_GT(e2e::RegionBrightness(Shot(backToPanel), 434, 308, 156, 24), 120.0) << "the panel's buttons";

    const std::vector<Burst> shots = FindBursts(ReadAudio());
    ASSERT_EQ(2u, shots.size());
    EXPECT_EQ(SHOT_LEVEL, shots[0].peak) << "full volume before";
    const double gain = std::pow(10.0, Sound::VolumeFromSlider(50) / 2000.0);
    EXPECT_NEAR(SHOT_LEVEL * gain, shots[1].peak, 2.0) << "-20 dB after";
}
