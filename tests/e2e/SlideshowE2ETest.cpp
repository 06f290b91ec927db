#include "e2e/GameProcess.h"
#include "platform/PngFile.h"
#include "support/TestBitmaps.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace
{

// Mean brightness of a screenshot's central region, or -1 when it cannot be read.
double ScreenshotBrightness(const std::string& p_path)
{
    int32_t width = 0;
    int32_t height = 0;
    std::vector<uint8_t> rgba;
    if (!platform::ReadPng(p_path, width, height, rgba))
    {
        return -1.0;
    }
    double sum = 0.0;
    int count = 0;
    for (int y = height / 4; y < height * 3 / 4; y += 4)
    {
        for (int x = width / 4; x < width * 3 / 4; x += 4)
        {
            const uint8_t* p = &rgba[(static_cast<size_t>(y) * width + x) * 4];
            sum += (p[0] + p[1] + p[2]) / 3.0;
            ++count;
        }
    }
    return sum / count;
}
} // namespace

TEST(SlideshowE2ETest, LogosFadeInHoldFadeOutAndTheTitleMenuFollows)
{
    const std::string dir = testsupport::MakeTempDir("korvath-e2e");
    ASSERT_FALSE(dir.empty());
    std::filesystem::create_directories(dir + "/art/menu");
    ASSERT_TRUE(testsupport::WriteSolidBitmap(dir + "/art/menu/corvel_logo.bmp", 1024, 768, 255, 255, 255, 24));
    ASSERT_TRUE(testsupport::WriteSolidBitmap(dir + "/art/menu/brask_productions.bmp", 1024, 768, 128, 128, 128, 24));

    auto env = e2e::GameEnv();
    env["KORVATH_FIXED_DT"] = "0.05";
    env["KORVATH_SCREENSHOT_AT"] = "1,12,50,95,150,300";
    env["KORVATH_EXIT_AFTER"] = "300";
    const e2e::ProcessResult run = e2e::RunGame(dir, {"--windowed"}, env, 120);
    ASSERT_TRUE(run.exited) << "signal " << run.signal << (run.timedOut ? " (timed out)" : "") << "\n"
                            << run.standardError;
    EXPECT_EQ(0, run.exitCode) << run.standardError;

    // 0.05 s in: almost black. 0.6 s: half faded in. 2.5 s: the logo itself. 4.75 s: fading out.
    EXPECT_LT(ScreenshotBrightness(dir + "/screenshot-000001.png"), 20.0);
    const double halfway = ScreenshotBrightness(dir + "/screenshot-000012.png");
    EXPECT_GT(halfway, 90.0);
    EXPECT_LT(halfway, 160.0);
    EXPECT_GT(ScreenshotBrightness(dir + "/screenshot-000050.png"), 250.0);
    const double leaving = ScreenshotBrightness(dir + "/screenshot-000095.png");
    EXPECT_GT(leaving, 20.0);
    EXPECT_LT(leaving, 80.0);
    // The second logo, shown fully in the middle of its slide.
    EXPECT_NEAR(128.0, ScreenshotBrightness(dir + "/screenshot-000150.png"), 3.0);
    // Two slides of five seconds at 20 frames a second: long before frame 300 the logos have
    // given way to the title menu (its pictures are missing here, and reported).
    EXPECT_TRUE(std::filesystem::exists(dir + "/screenshot-000300.png"));
    EXPECT_NE(std::string::npos, run.standardError.find("art\\ribbon.bmp")) << run.standardError;

    std::error_code error;
    std::filesystem::remove_all(dir, error);
}

TEST(SlideshowE2ETest, MissingLogosShowBlackAndStillLeadToTheMenus)
{
    const std::string dir = testsupport::MakeTempDir("korvath-e2e-empty");
    auto env = e2e::GameEnv();
    env["KORVATH_FIXED_DT"] = "0.1";
    env["KORVATH_SCREENSHOT_AT"] = "25";
    env["KORVATH_EXIT_AFTER"] = "120";
    const e2e::ProcessResult run = e2e::RunGame(dir, {"--windowed"}, env, 120);
    ASSERT_TRUE(run.exited) << run.standardError;
    EXPECT_EQ(0, run.exitCode);
    EXPECT_NE(std::string::npos, run.standardError.find("art\\menu\\corvel_logo.bmp"));
    EXPECT_LT(ScreenshotBrightness(dir + "/screenshot-000025.png"), 1.0);
    EXPECT_NE(std::string::npos, run.standardError.find("art\\ribbon.bmp")) << run.standardError;
    std::error_code error;
    std::filesystem::remove_all(dir, error);
}

TEST(StartupE2ETest, UnusableDisplayReportsAndExitsCleanly)
{
    const std::string dir = testsupport::MakeTempDir("korvath-e2e-nodisplay");
    auto env = e2e::GameEnv();
    env["SDL_VIDEODRIVER"] = "no-such-driver";
    const e2e::ProcessResult run = e2e::RunGame(dir, {"--windowed"}, env, 60);
    ASSERT_TRUE(run.exited) << "signal " << run.signal;
    EXPECT_EQ(1, run.exitCode);
    EXPECT_NE(std::string::npos, run.standardError.find("ERROR!: Unable to switch into full screen mode.\n"))
        << run.standardError;
    // Only that one box: nothing after the failed step was tried.
    EXPECT_EQ(std::string::npos, run.standardError.find("Unable to Create Window"));

    const e2e::ProcessResult bad = e2e::RunGame(dir, {"--no-such-option"}, e2e::GameEnv(), 60);
    ASSERT_TRUE(bad.exited);
    EXPECT_EQ(2, bad.exitCode);
    EXPECT_NE(std::string::npos, bad.standardError.find("--no-such-option"));
    std::error_code error;
    std::filesystem::remove_all(dir, error);
}
