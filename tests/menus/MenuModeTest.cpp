#include "app/ModeCode.h"
#include "menus/MainMenu.h"
#include "menus/Menu.h"
#include "menus/MenuMode.h"
#include "sound/Sound.h"
#include "support/TestAudio.h"
#include "support/TestBitmaps.h"
#include "support/WorkDir.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <deque>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace
{
std::vector<std::string> s_log;

// A menu that answers the codes it was given, one a frame (6 once they run out), and logs
// what the menu mode does with it.
class ScriptedMenu : public Menu
{
public:
    ScriptedMenu(Cursor* p_cursor, std::string p_name, std::deque<int32_t> p_codes)
        : Menu(p_cursor), m_name(std::move(p_name)), m_codes(std::move(p_codes))
    {
    }
    ~ScriptedMenu() override { s_log.push_back("delete " + m_name); }
    bool Init() override
    {
        s_log.push_back("init " + m_name);
        return true;
    }
    int32_t Update(float) override
    {
        s_log.push_back("update " + m_name);
        if (m_codes.empty())
        {
            return MENUCODE_STAY;
        }
        const int32_t code = m_codes.front();
        m_codes.pop_front();
        return code;
    }
    bool Render() override
    {
        s_log.push_back("render " + m_name);
        return true;
    }

private:
    std::string m_name;
    std::deque<int32_t> m_codes;
};

// A menu mode whose menus are scripted: the menu opened for a code answers that code's script.
class ScriptedMenuMode : public MenuMode
{
public:
    std::map<int32_t, std::deque<int32_t>> scripts;

protected:
    std::unique_ptr<Menu> NewMenu(int32_t p_code) override
    {
        return std::make_unique<ScriptedMenu>(&s_cursor, "menu" + std::to_string(p_code), scripts[p_code]);
    }
};

int CountOf(const std::string& p_text, const std::string& p_part)
{
    int count = 0;
    for (size_t at = p_text.find(p_part); at != std::string::npos; at = p_text.find(p_part, at + 1))
    {
        ++count;
    }
    return count;
}

class MenuModeTest : public testsupport::WorkDirTest
{
protected:
    void SetUp() override
    {
        WorkDirTest::SetUp();
        s_log.clear();
    }
};
} // namespace

TEST_F(MenuModeTest, CodesOpenCloseQuitAndHandUp)
{
    {
        // The only menu closing leaves the menus with the result Init set: 2.
        ScriptedMenuMode mode;
        mode.scripts[MENUCODE_OPEN_TITLE] = {MENUCODE_STAY, MENUCODE_CLOSED};
        mode.Init(nullptr, MENUCODE_OPEN_TITLE);
        EXPECT_EQ(MODECODE_STAY, mode.Update(0.1f));
        EXPECT_EQ(MODECODE_MISSION, mode.Update(0.1f));
        EXPECT_TRUE(mode.GetMenus().empty());
    }
    for (int32_t code : {0, 1, 2, 3, 4})
    {
        // 0 to 4 leave at once and become the result; 3 is the logos for the game.
        ScriptedMenuMode mode;
        mode.scripts[MENUCODE_OPEN_TITLE] = {code};
        mode.Init(nullptr, MENUCODE_OPEN_TITLE);
        EXPECT_EQ(code, mode.Update(0.1f));
        EXPECT_EQ(code, mode.GetResult());
    }
    {
        // -1, 5, 11 and any other code change nothing; 7 quits.
        ScriptedMenuMode mode;
        mode.scripts[MENUCODE_OPEN_TITLE] = {-1, 11, 5, 100, MENUCODE_QUIT};
        mode.Init(nullptr, MENUCODE_OPEN_TITLE);
        for (int frame = 0; frame < 4; ++frame)
        {
            EXPECT_EQ(MODECODE_STAY, mode.Update(0.1f));
        }
        EXPECT_EQ(1u, mode.GetMenus().size());
        EXPECT_EQ(MODECODE_MISSION, mode.GetResult());
        EXPECT_EQ(MODECODE_QUIT, mode.Update(0.1f));
    }
}

TEST_F(MenuModeTest, AnOpenedMenuGoesFirstWhileTheOldOneSlidesAwayOverIt)
{
    ScriptedMenuMode mode;
    // The title menu asks for the pilot menu, slides for two frames, then has closed.
    mode.scripts[MENUCODE_OPEN_TITLE] = {MENUCODE_OPEN_SINGLE_PLAYER, MENUCODE_STAY, MENUCODE_STAY, MENUCODE_CLOSED};
    mode.scripts[MENUCODE_OPEN_SINGLE_PLAYER] = {MENUCODE_STAY, MENUCODE_STAY, MENUCODE_STAY, 1};
    mode.Init(nullptr, MENUCODE_OPEN_TITLE);
    EXPECT_EQ((std::vector<std::string>{"init menu9"}), s_log);

    s_log.clear();
    EXPECT_EQ(MODECODE_STAY, mode.Update(0.1f));
    mode.Render();
    // The new menu is made, initialised and put first, but first updated in the next frame;
    // both are drawn, newest first, so the old one's falling buttons are on top.
    EXPECT_EQ((std::vector<std::string>{"update menu9", "init menu10", "render menu10", "render menu9"}), s_log);
    ASSERT_EQ(2u, mode.GetMenus().size());

    s_log.clear();
    EXPECT_EQ(MODECODE_STAY, mode.Update(0.1f));
    EXPECT_EQ(MODECODE_STAY, mode.Update(0.1f));
    EXPECT_EQ((std::vector<std::string>{"update menu10", "update menu9", "update menu10", "update menu9"}), s_log);

    // The old menu has closed: deleted, and the walk goes on with nothing after it.
    s_log.clear();
    EXPECT_EQ(MODECODE_STAY, mode.Update(0.1f));
    mode.Render();
    EXPECT_EQ((std::vector<std::string>{"update menu10", "update menu9", "delete menu9", "render menu10"}), s_log);
    EXPECT_EQ(1u, mode.GetMenus().size());

    // The pilot menu hands up the hub.
    EXPECT_EQ(MODECODE_HUB, mode.Update(0.1f));
}

TEST_F(MenuModeTest, StartMenuCodeChoosesTheFirstMenu)
{
    for (int32_t start : std::vector<int32_t>{MENUCODE_OPEN_SINGLE_PLAYER, MENUCODE_OPEN_OPTIONS, MENUCODE_OPEN_TITLE, 0, 42})
    {
        s_log.clear();
        ScriptedMenuMode mode;
        mode.Init(nullptr, start);
        const int32_t expected =
            start == MENUCODE_OPEN_SINGLE_PLAYER || start == MENUCODE_OPEN_OPTIONS ? start : MENUCODE_OPEN_TITLE;
        EXPECT_EQ((std::vector<std::string>{"init menu" + std::to_string(expected)}), s_log) << start;
    }
}

TEST_F(MenuModeTest, MissingTitleMusicIsReportedOnceAndTheMenusWorkOn)
{
    setenv("KORVATH_HEADLESS", "1", 1);
    Sound sound;
    Sound* const oldSound = g_pSound;
    g_pSound = &sound;
    {
        testing::internal::CaptureStderr();
        MenuMode mode;
        mode.Init(nullptr, MENUCODE_OPEN_TITLE);
        ASSERT_EQ(1u, mode.GetMenus().size());
        EXPECT_NE(nullptr, dynamic_cast<MainMenu*>(mode.GetMenus().front().m_pMenu.get()));
        for (int frame = 0; frame < 120; ++frame)
        {
            EXPECT_EQ(MODECODE_STAY, mode.Update(0.05f));
            mode.Render();
        }
        const std::string said = testing::internal::GetCapturedStderr();
        EXPECT_EQ(1, CountOf(said, "Error: Sound cannot loop/play")) << said;
        EXPECT_FALSE(sound.IsLoaded(Sound::SOUND_TITLE_MUSIC));
    }
    g_pSound = oldSound;
}

TEST_F(MenuModeTest, TitleMusicLoopsWhileTheMenusRunAndStopsWithThem)
{
    setenv("KORVATH_HEADLESS", "1", 1);
    std::filesystem::create_directory("Sound");
    // A song of a quarter of a second: one short note, then rest.
    ASSERT_TRUE(testsupport::WriteFileBytes("Sound/title_screen.mid",
                                            testsupport::MakeMidiBytes({{0, 96, 72, 110}}, 240, 80)));
    testsupport::DiskAudioCapture capture(m_dir);
    Sound sound;
    ASSERT_TRUE(sound.Init());
    Sound* const oldSound = g_pSound;
    g_pSound = &sound;
    {
        testing::internal::CaptureStderr();
        const int64_t start = capture.FramesWritten();
        auto mode = std::make_unique<MenuMode>();
        mode->Init(nullptr, MENUCODE_OPEN_TITLE);
        const std::string said = testing::internal::GetCapturedStderr();
        EXPECT_EQ(0, CountOf(said, "Sound cannot loop/play")) << said;
        EXPECT_TRUE(sound.IsPlaying(Sound::SOUND_TITLE_MUSIC));
        ASSERT_TRUE(capture.WaitFrames(testsupport::Frames(1.0)));

        // The note sounds again in the song's third and fourth passes: it repeats.
        const std::vector<int16_t> out = capture.ReadSamples();
        const int64_t onset = testsupport::FirstFrameAbove(out, start, 300);
        ASSERT_GE(onset, 0);
        const double first = testsupport::RmsLevel(out, onset, onset + testsupport::Frames(0.08));
        EXPECT_GT(first, 500.0);
        for (double pass : {0.5, 0.75})
        {
            const int64_t from = onset + testsupport::Frames(pass);
            EXPECT_GT(testsupport::RmsLevel(out, from, from + testsupport::Frames(0.08)), first * 0.5) << pass;
        }
        // Leaving the menus silences it.
        mode.reset();
        EXPECT_FALSE(sound.IsLoaded(Sound::SOUND_TITLE_MUSIC));
    }
    g_pSound = oldSound;
}
