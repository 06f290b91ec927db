#include "app/Game.h"
#include "app/Mode.h"
#include "app/ModeCode.h"
#include "app/Settings.h"
#include "gfx/Image.h"
#include "gfx/Picture.h"
#include "menus/MainMenu.h"
#include "menus/MenuMode.h"
#include "menus/SlideshowMode.h"
#include "mission/HubMode.h"
#include "input/InputScript.h"
#include "platform/MessageQueue.h"
#include "platform/Window.h"
#include "support/GlFixture.h"

#include <SDL2/SDL.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace
{
std::vector<std::string> s_log;

// A mode that records what is done to it and answers the codes it is given.
class RecordingMode : public Mode
{
public:
    explicit RecordingMode(std::string p_name) : m_name(std::move(p_name)) { s_log.push_back("new " + m_name); }
    ~RecordingMode() override { s_log.push_back("delete " + m_name); }
    bool Initialize() override
    {
        s_log.push_back("init " + m_name);
        return true;
    }
    bool Shutdown() override { return true; }
    int32_t Update(float p_dt) override
    {
        s_log.push_back("update " + m_name);
        lastDt = p_dt;
        int32_t code = MODECODE_STAY;
        if (!codes.empty())
        {
            code = codes.front();
            codes.erase(codes.begin());
        }
        return code;
    }
    bool Render() override
    {
        s_log.push_back("render " + m_name);
        return true;
    }
    bool HandleInput(InputSystem*) override
    {
        s_log.push_back("input " + m_name);
        return true;
    }

    std::string m_name;
    std::vector<int32_t> codes;
    float lastDt = 0.0f;
};

// A game whose every mode is a recording one.
class RecordingGame : public Game
{
public:
    using Game::SetCurrentMode;

protected:
    std::unique_ptr<Mode> NewMode(int32_t p_code) override
    {
        return std::make_unique<RecordingMode>("mode" + std::to_string(p_code));
    }
    void StartMode(int32_t p_code) override { s_log.push_back("start " + std::to_string(p_code)); }
};

RecordingMode* Current(Game& p_game)
{
    return static_cast<RecordingMode*>(p_game.GetCurrentMode());
}
} // namespace

TEST(GameTest, ModeCodeTable)
{
    s_log.clear();
    RecordingGame game;
    game.SetCurrentMode(std::make_unique<RecordingMode>("first"), MODECODE_SLIDESHOW);
    s_log.clear();

    // Stay, and every code the table does not list, keep the mode.
    for (int32_t code : {6, 4, 5, 8, 9, 10, 12, 100, -1, 254, 256})
    {
        EXPECT_TRUE(game.ApplyModeCode(code)) << code;
    }
    EXPECT_TRUE(s_log.empty());
    EXPECT_EQ("first", Current(game)->m_name);

    // The old mode is deleted before the new one is made, which is then started.
    EXPECT_TRUE(game.ApplyModeCode(MODECODE_HUB));
    EXPECT_EQ((std::vector<std::string>{"delete first", "new mode1", "start 1"}), s_log);
    EXPECT_EQ(MODECODE_HUB, game.GetModeCode());

    EXPECT_TRUE(game.ApplyModeCode(MODECODE_MISSION));
    EXPECT_EQ(MODECODE_MISSION, game.GetModeCode());
    EXPECT_TRUE(game.ApplyModeCode(MODECODE_MENUS));
    EXPECT_EQ(MODECODE_MENUS, game.GetModeCode());

    // The credits are a slideshow: the game records code 3.
    s_log.clear();
    EXPECT_TRUE(game.ApplyModeCode(MODECODE_CREDITS));
    EXPECT_EQ(MODECODE_SLIDESHOW, game.GetModeCode());
    EXPECT_EQ((std::vector<std::string>{"delete mode0", "new mode255", "start 255"}), s_log);

    // Quit replaces nothing.
    s_log.clear();
    EXPECT_FALSE(game.ApplyModeCode(MODECODE_QUIT));
    EXPECT_TRUE(s_log.empty());
}

TEST(GameTest, SlideshowsForCodesThreeAndCreditsAndTheHubForCodeOne)
{
    Game game;
    ASSERT_TRUE(game.ApplyModeCode(MODECODE_SLIDESHOW));
    auto* logos = dynamic_cast<SlideshowMode*>(game.GetCurrentMode());
    ASSERT_NE(nullptr, logos);
    EXPECT_EQ(2, logos->GetNumSlides());
    EXPECT_EQ(5, logos->GetSlideTime());
    EXPECT_EQ("art\\menu\\corvel_logo.bmp", logos->GetSlide(0)->GetImage()->GetFileName());
    EXPECT_EQ("art\\menu\\brask_productions.bmp", logos->GetSlide(1)->GetImage()->GetFileName());

    ASSERT_TRUE(game.ApplyModeCode(MODECODE_CREDITS));
    auto* credits = dynamic_cast<SlideshowMode*>(game.GetCurrentMode());
    ASSERT_NE(nullptr, credits);
    EXPECT_EQ(MODECODE_SLIDESHOW, game.GetModeCode());
    EXPECT_EQ(3, credits->GetNumSlides());
    EXPECT_EQ(10, credits->GetSlideTime());
    EXPECT_EQ("art\\credits\\credits3.bmp", credits->GetSlide(2)->GetImage()->GetFileName());

    // The end of a show opens the menus on the title menu.
    ASSERT_TRUE(game.ApplyModeCode(MODECODE_MENUS));
    auto* menus = dynamic_cast<MenuMode*>(game.GetCurrentMode());
    ASSERT_NE(nullptr, menus);
    EXPECT_EQ(MODECODE_MENUS, game.GetModeCode());
    ASSERT_EQ(1u, menus->GetMenus().size());
    EXPECT_NE(nullptr, dynamic_cast<MainMenu*>(menus->GetMenus().front().m_pMenu.get()));

    // Code 1, from a mission or the menus, makes the hub between missions.
    ASSERT_TRUE(game.ApplyModeCode(MODECODE_HUB));
    EXPECT_NE(nullptr, dynamic_cast<HubMode*>(game.GetCurrentMode()));
    EXPECT_EQ(MODECODE_HUB, game.GetModeCode());
}

class GameLoopTest : public testsupport::GlFixture
{
};

TEST_F(GameLoopTest, OneMessagePerFrameAndQuitOnlyWhenReached)
{
    RecordingGame game;
    ASSERT_TRUE(game.Init(1024, 768, 32));
    game.SetCurrentMode(std::make_unique<RecordingMode>("m"), MODECODE_SLIDESHOW);
    platform::MessageQueue::Clear();
    platform::MessageQueue::Post(platform::Message{platform::MessageType::User, 1});
    platform::MessageQueue::Post(platform::Message{platform::MessageType::User, 2});
    platform::MessageQueue::PostQuit(3);

    s_log.clear();
    EXPECT_TRUE(game.RunFrame());
    EXPECT_EQ(2u, platform::MessageQueue::GetCount());
    EXPECT_TRUE(game.RunFrame());
    // The quit message is taken in the third frame, which still updates, renders and takes input.
    EXPECT_FALSE(game.RunFrame());
    EXPECT_EQ((std::vector<std::string>{"update m", "render m", "input m", "update m", "render m", "input m",
                                        "update m", "render m", "input m"}),
              s_log);
    EXPECT_EQ(3, game.Shutdown());
}

TEST_F(GameLoopTest, CloseEndsWithCodeZeroAndQuitCodeStillRendersItsFrame)
{
    RecordingGame game;
    ASSERT_TRUE(game.Init(1024, 768, 32));
    auto mode = std::make_unique<RecordingMode>("m");
    mode->codes = {MODECODE_STAY, MODECODE_QUIT};
    game.SetCurrentMode(std::move(mode), MODECODE_SLIDESHOW);
    platform::MessageQueue::Clear();

    s_log.clear();
    EXPECT_TRUE(game.RunFrame());
    EXPECT_FALSE(game.RunFrame());
    EXPECT_EQ((std::vector<std::string>{"update m", "render m", "input m", "update m", "render m", "input m"}), s_log);

    // Closing the window posts a quit with code 0, taken one frame later.
    Current(game)->codes.clear();
    platform::MessageQueue::Post(platform::Message{platform::MessageType::Close, 0});
    EXPECT_TRUE(game.RunFrame());
    EXPECT_FALSE(game.RunFrame());
    EXPECT_EQ(0, game.Shutdown());
}

TEST_F(GameLoopTest, NewModeIsRenderedAndGivenInputBeforeItsFirstUpdate)
{
    RecordingGame game;
    ASSERT_TRUE(game.Init(1024, 768, 32));
    auto mode = std::make_unique<RecordingMode>("old");
    mode->codes = {MODECODE_HUB};
    game.SetCurrentMode(std::move(mode), MODECODE_SLIDESHOW);
    platform::MessageQueue::Clear();

    s_log.clear();
    EXPECT_TRUE(game.RunFrame());
    EXPECT_TRUE(game.RunFrame());
    EXPECT_EQ((std::vector<std::string>{"update old", "delete old", "new mode1", "start 1", "render mode1",
                                        "input mode1", "update mode1", "render mode1", "input mode1"}),
              s_log);
    game.Shutdown();
}

TEST_F(GameLoopTest, AltEnterSwitchesFullScreenAndTheChoiceIsKept)
{
    platform::Window::SetFullscreenPreference(false);
    std::string error;
    // The same keys from an input script: Alt held, Enter pressed (and Enter alone, no switch).
    ASSERT_TRUE(g_inputScript.Parse("3 key LALT down\n"
                                    "4 key ENTER down\n"
                                    "5 key ENTER up\n"
                                    "5 key LALT up\n"
                                    "6 key NUMPADENTER down\n",
                                    error))
        << error;
    RecordingGame game;
    ASSERT_TRUE(game.Init(1024, 768, 32));
    game.SetCurrentMode(std::make_unique<RecordingMode>("m"), MODECODE_SLIDESHOW);
    platform::MessageQueue::Clear();
    ASSERT_FALSE(game.GetWindow()->IsFullscreen());

    // Alt+Enter on the keyboard: full screen, and config.ini says so.
    SDL_Event key{};
    key.type = SDL_KEYDOWN;
    key.key.state = SDL_PRESSED;
    key.key.keysym.sym = SDLK_RETURN;
    key.key.keysym.scancode = SDL_SCANCODE_RETURN;
    key.key.keysym.mod = KMOD_LALT;
    SDL_PushEvent(&key);
    EXPECT_TRUE(game.RunFrame());
    EXPECT_TRUE(game.GetWindow()->IsFullscreen());
    EXPECT_TRUE(g_settings.IsFullScreen());
    Settings stored;
    stored.Load();
    EXPECT_TRUE(stored.IsFullScreen());

    // The script's Alt+Enter in frame 4 goes back to a window; Enter without Alt does nothing.
    for (int frame = 2; frame <= 7; ++frame)
    {
        EXPECT_TRUE(game.RunFrame());
        EXPECT_EQ(frame < 4, game.GetWindow()->IsFullscreen()) << "frame " << frame;
    }
    EXPECT_FALSE(g_settings.IsFullScreen());
    stored.Load();
    EXPECT_FALSE(stored.IsFullScreen());
    EXPECT_EQ(1024, game.GetDisplayWidth()) << "the resolution stays";

    g_inputScript.Clear();
    game.Shutdown();
    platform::Window::SetFullscreenPreference(false);
}
