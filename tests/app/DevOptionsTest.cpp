#include "app/DevOptions.h"
#include "app/Random.h"

#include <gtest/gtest.h>

#include <map>
#include <string>

namespace
{
std::map<std::string, std::string> s_env;
const char* FakeGetenv(const char* p_name)
{
    auto it = s_env.find(p_name);
    return it == s_env.end() ? nullptr : it->second.c_str();
}
} // namespace

TEST(DevOptionsTest, NothingSetChangesNothing)
{
    s_env.clear();
    const char* argv[] = {"korvath"};
    DevOptions options;
    options.Parse(1, argv, &FakeGetenv);
    EXPECT_TRUE(options.errors.empty());
    EXPECT_FALSE(options.windowed);
    EXPECT_EQ(0.0, options.fixedDt);
    EXPECT_FALSE(options.hasSeed);
    EXPECT_TRUE(options.screenshotFrames.empty());
    EXPECT_EQ(0, options.exitAfter);
    EXPECT_FALSE(options.IsScreenshotFrame(1));
}

TEST(DevOptionsTest, ReadsEveryOption)
{
    s_env = {{"KORVATH_FIXED_DT", "0.05"},
             {"KORVATH_SEED", "1234"},
             {"KORVATH_SCREENSHOT_AT", "50,2,120"},
             {"KORVATH_EXIT_AFTER", "300"}};
    const char* argv[] = {"korvath", "--windowed", "--mission", "Mission3", "--pilot", "Saves\\Ace0.sav"};
    DevOptions options;
    options.Parse(6, argv, &FakeGetenv);
    EXPECT_TRUE(options.errors.empty());
    EXPECT_TRUE(options.windowed);
    EXPECT_EQ("Mission3", options.mission);
    EXPECT_EQ("Saves\\Ace0.sav", options.pilot);
    EXPECT_DOUBLE_EQ(0.05, options.fixedDt);
    EXPECT_TRUE(options.hasSeed);
    EXPECT_EQ(1234u, options.seed);
    EXPECT_TRUE(options.IsScreenshotFrame(2));
    EXPECT_TRUE(options.IsScreenshotFrame(50));
    EXPECT_TRUE(options.IsScreenshotFrame(120));
    EXPECT_FALSE(options.IsScreenshotFrame(3));
    EXPECT_EQ(300, options.exitAfter);
    EXPECT_EQ("screenshot-000042.png", DevOptions::ScreenshotName(42));
}

TEST(DevOptionsTest, MalformedValuesAreReportedNotGuessed)
{
    s_env = {{"KORVATH_FIXED_DT", "fast"},
             {"KORVATH_SEED", "-3"},
             {"KORVATH_SCREENSHOT_AT", "5,,x,0"},
             {"KORVATH_EXIT_AFTER", "10frames"}};
    const char* argv[] = {"korvath", "--fullscreen-please", "--pilot", "Saves\\..\\..\\x.sav", "--pilot", "/tmp/x.sav",
                          "--mission"};
    DevOptions options;
    options.Parse(7, argv, &FakeGetenv);
    EXPECT_TRUE(options.mission.empty());
    // A pilot file outside the game directory would be written there after a win.
    EXPECT_TRUE(options.pilot.empty());
    EXPECT_EQ(0.0, options.fixedDt);
    EXPECT_FALSE(options.hasSeed);
    EXPECT_EQ(0, options.exitAfter);
    EXPECT_TRUE(options.IsScreenshotFrame(5));
    EXPECT_EQ(1u, options.screenshotFrames.size());
    // The option, the two pilots outside, the missing mission name, the three bad frame
    // numbers, dt, seed and the frame count.
    EXPECT_EQ(10u, options.errors.size());
}

TEST(RandomTest, ClassicFifteenBitSequence)
{
    GameSrand(1);
    EXPECT_EQ(41, GameRand());
    EXPECT_EQ(18467, GameRand());
    EXPECT_EQ(6334, GameRand());
    EXPECT_EQ(26500, GameRand());

    GameSrand(987654321u);
    for (int i = 0; i < 10000; ++i)
    {
        const int32_t value = GameRand();
        ASSERT_GE(value, 0);
        ASSERT_LE(value, GAME_RAND_MAX);
    }
}

TEST(RandomTest, DeveloperSeedReplacesTheClock)
{
    const DevOptions saved = g_devOptions;
    g_devOptions.hasSeed = true;
    g_devOptions.seed = 77;
    GameSrandFromTime();
    const int32_t first = GameRand();
    GameSrand(77);
    EXPECT_EQ(GameRand(), first);
    g_devOptions = saved;
}
