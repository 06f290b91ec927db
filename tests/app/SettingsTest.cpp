// The player's settings in config.ini: kept across a restart, damaged entries read as their
// defaults and written right at their next change, a hand-edited file kept line for line.
#include "app/Settings.h"
#include "input/ControlsConfig.h"
#include "support/WorkDir.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

namespace
{
std::string ReadFile(const char* p_name)
{
    std::ifstream file(p_name, std::ios::binary);
    std::stringstream text;
    text << file.rdbuf();
    return text.str();
}

void WriteFile(const char* p_name, const std::string& p_text)
{
    std::ofstream file(p_name, std::ios::binary);
    file << p_text;
}

// A new game's settings: read from the file as at start.
Settings Restarted()
{
    Settings settings;
    settings.Load();
    return settings;
}

void ExpectDefaults(const Settings& p_settings)
{
    EXPECT_EQ(Settings::DEFAULT_VOLUME, p_settings.GetVolume());
    EXPECT_EQ(Settings::DEFAULT_WIDTH, p_settings.GetWidth());
    EXPECT_EQ(Settings::DEFAULT_HEIGHT, p_settings.GetHeight());
    EXPECT_EQ(Settings::DEFAULT_FULL_SCREEN, p_settings.IsFullScreen());
    EXPECT_EQ(Settings::DEFAULT_DIFFICULTY, p_settings.GetDifficulty());
    EXPECT_EQ(Settings::DEFAULT_HUD_SLOTS, p_settings.GetHudSlots());
    EXPECT_EQ(Settings::DEFAULT_TINT, p_settings.GetTint());
}

using SettingsTest = testsupport::WorkDirTest;
} // namespace

TEST_F(SettingsTest, WithoutAFileEverySettingIsItsDefaultTheGameAsItWas)
{
    const Settings settings = Restarted();
    ExpectDefaults(settings);
    EXPECT_EQ(99, Settings::DEFAULT_VOLUME) << "full volume";
    EXPECT_EQ((Settings::HudSlots{0, 2, 1}), Settings::DEFAULT_HUD_SLOTS);
    EXPECT_EQ((Settings::Tint{255, 255, 255, 255}), Settings::DEFAULT_TINT);
    EXPECT_STREQ("./config.ini", settings.GetFileName().c_str());
    EXPECT_FALSE(std::filesystem::exists("config.ini")) << "reading writes nothing";
}

TEST_F(SettingsTest, EachSettingSurvivesARestartAndEveryOtherLineStays)
{
    // A file the player edited by hand: comments, odd spacing, the bindings, a stray entry.
    const std::string handMade = "; my settings\r\n"
                                 "[Keys]\r\n"
                                 "SHOOT_FORWARD = Q\r\n"
                                 "\r\n"
                                 "[Options]\r\n"
                                 "  Volume = 40  \r\n"
                                 "Colour=green ; not ours\r\n"
                                 "[Later]\r\n"
                                 "x=1\r\n";
    WriteFile("config.ini", handMade);
    Settings settings;
    settings.Load();
    EXPECT_EQ(40, settings.GetVolume());

    ASSERT_TRUE(settings.SetVolume(12));
    ASSERT_TRUE(settings.SetResolution(800, 600));
    ASSERT_TRUE(settings.SetFullScreen(false));
    ASSERT_TRUE(settings.SetDifficulty(Settings::DIFFICULTY_HARD));
    ASSERT_TRUE(settings.SetHudSlots({7, 5, 0}));
    ASSERT_TRUE(settings.SetTint({255, 0, 0, 200}));

    const Settings restarted = Restarted();
    EXPECT_EQ(12, restarted.GetVolume());
    EXPECT_EQ(800, restarted.GetWidth());
    EXPECT_EQ(600, restarted.GetHeight());
    EXPECT_FALSE(restarted.IsFullScreen());
    EXPECT_EQ(Settings::DIFFICULTY_HARD, restarted.GetDifficulty());
    EXPECT_EQ((Settings::HudSlots{7, 5, 0}), restarted.GetHudSlots());
    EXPECT_EQ((Settings::Tint{255, 0, 0, 200}), restarted.GetTint());

    // Only the values changed; the new entries joined their section, in the file's line ends.
    EXPECT_EQ("; my settings\r\n"
              "[Keys]\r\n"
              "SHOOT_FORWARD = Q\r\n"
              "\r\n"
              "[Options]\r\n"
              "  Volume = 12\r\n"
              "Colour=green ; not ours\r\n"
              "Resolution=800x600\r\n"
              "FullScreen=0\r\n"
              "Difficulty=Hard\r\n"
              "HudLayout=7,5,0\r\n"
              "HudTint=255,0,0,200\r\n"
              "[Later]\r\n"
              "x=1\r\n",
              ReadFile("config.ini"));
    EXPECT_EQ("Q", ControlsConfig::GetKeyName(ControlsConfig("./config.ini").GetBinding(0)));

    // Back to full screen, and a different choice of each: read back as well.
    ASSERT_TRUE(settings.SetFullScreen(true));
    ASSERT_TRUE(settings.SetDifficulty(Settings::DIFFICULTY_EASY));
    ASSERT_TRUE(settings.SetResolution(1600, 1200));
    const Settings again = Restarted();
    EXPECT_TRUE(again.IsFullScreen());
    EXPECT_EQ(Settings::DIFFICULTY_EASY, again.GetDifficulty());
    EXPECT_EQ(1600, again.GetWidth());
}

TEST_F(SettingsTest, DamagedEntriesReadAsTheirDefaultsAndAreWrittenRightAtTheirNextChange)
{
    const char* const damaged[] = {
        "Volume=100",         "Volume=-1",          "Volume=loud",        "Volume=4294967346",
        "Volume=5x",          "Volume=",            "Resolution=1000x700", "Resolution=800",
        "Resolution=800x600x32", "Resolution=x600",  "Resolution=65536x768", "FullScreen=2",
        "FullScreen=yes",     "Difficulty=Impossible", "Difficulty=Medium Rare", "HudLayout=0,0,1",
        "HudLayout=0,2",      "HudLayout=0,2,8",    "HudLayout=0,2,1,3",  "HudLayout=-1,2,1",
        "HudTint=255,255,255", "HudTint=256,0,0,0",  "HudTint=1,2,3,4,5",  "HudTint=1;2;3;4",
    };
    for (const char* entry : damaged)
    {
        SCOPED_TRACE(entry);
        WriteFile("config.ini", std::string("[Options]\n") + entry + "\n");
        ExpectDefaults(Restarted());
    }

    // What the game writes is also read when typed a little differently.
    WriteFile("config.ini", "[options]\n"
                            "volume = 7\n"
                            "Resolution=800X600\n"
                            "FullScreen = 0\n"
                            "Difficulty=hARD\n"
                            "HudLayout= 3 ,4,  6\n"
                            "HudTint=\"0, 128, 255, 9\"\n");
    const Settings lenient = Restarted();
    EXPECT_EQ(7, lenient.GetVolume());
    EXPECT_EQ(800, lenient.GetWidth());
    EXPECT_FALSE(lenient.IsFullScreen());
    EXPECT_EQ(Settings::DIFFICULTY_HARD, lenient.GetDifficulty());
    EXPECT_EQ((Settings::HudSlots{3, 4, 6}), lenient.GetHudSlots());
    EXPECT_EQ((Settings::Tint{0, 128, 255, 9}), lenient.GetTint());

    // A damaged layout, rewritten whole when a piece moves; the damaged volume beside it stays
    // in the file (read as full volume) until the volume changes.
    WriteFile("config.ini", "[Options]\nVolume=eleven\nHudLayout=2,2,2\n");
    Settings settings;
    settings.Load();
    EXPECT_EQ(Settings::DEFAULT_HUD_SLOTS, settings.GetHudSlots());
    ASSERT_TRUE(settings.SetHudSlots({0, 2, 4}));
    EXPECT_EQ("[Options]\nVolume=eleven\nHudLayout=0,2,4\n", ReadFile("config.ini"));
    ASSERT_TRUE(settings.SetVolume(33));
    EXPECT_EQ("[Options]\nVolume=33\nHudLayout=0,2,4\n", ReadFile("config.ini"));
    EXPECT_EQ(33, Restarted().GetVolume());
}

TEST_F(SettingsTest, ValuesOutOfRangeAreRefusedAndAnUnwritableFileKeepsTheValueForTheRun)
{
    Settings settings;
    EXPECT_FALSE(settings.SetVolume(100));
    EXPECT_FALSE(settings.SetVolume(-1));
    EXPECT_FALSE(settings.SetResolution(1000, 700));
    EXPECT_FALSE(settings.SetDifficulty(Settings::NUM_DIFFICULTIES));
    EXPECT_FALSE(settings.SetDifficulty(-1));
    EXPECT_FALSE(settings.SetHudSlots({0, 0, 1}));
    EXPECT_FALSE(settings.SetHudSlots({0, 2, Settings::NUM_HUD_SLOTS}));
    ExpectDefaults(settings);
    EXPECT_FALSE(std::filesystem::exists("config.ini")) << "nothing refused is written";
    EXPECT_EQ(-1, settings.GetHudSlot(Settings::NUM_HUD_PIECES));
    EXPECT_STREQ("", Settings::GetDifficultyName(3));
    EXPECT_STREQ("Hard", Settings::GetDifficultyName(Settings::DIFFICULTY_HARD));

    // A folder where the file should be: the write fails, the game goes on with the value.
    std::filesystem::create_directory("config.ini");
    EXPECT_FALSE(settings.SetDifficulty(Settings::DIFFICULTY_EASY));
    EXPECT_EQ(Settings::DIFFICULTY_EASY, settings.GetDifficulty());
    EXPECT_TRUE(std::filesystem::is_directory("config.ini"));
    ExpectDefaults(Restarted());

    // A file of its own for a test, and a path out of the game directory that reaches nothing.
    Settings other("other.ini");
    ASSERT_TRUE(other.SetVolume(5));
    EXPECT_EQ("[Options]\nVolume=5\n", ReadFile("other.ini"));
    Settings outside("../outside.ini");
    EXPECT_FALSE(outside.SetVolume(5));
    EXPECT_FALSE(std::filesystem::exists("../outside.ini"));
}
