// `make screens`: the game in this process, played through a tour of every screen with the
// same hands and flight bot as the whole-game tests, each screen saved as a PNG named after it
// into KORVATH_SCREENS_DIR (the logos, the title menu, both screens of the pilot menu, the hub
// for one and for two players, the shop with a list open, a mission with its HUD, the in-game
// menu, the objectives, the victory and defeat banners, the credits). The tour fails when a
// screen does not come, so that the sheet never shows a wrong one under a right name.
#include "app/DevOptions.h"
#include "app/Game.h"
#include "app/Mode.h"
#include "app/ModeCode.h"
#include "e2e/GamePlayer.h"
#include "e2e/GameProcess.h"
#include "menus/InGameMenu.h"
#include "menus/MainMenu.h"
#include "menus/OptionsMenu.h"
#include "menus/MenuMode.h"
#include "menus/PreGameMenu.h"
#include "menus/SinglePlayerMenu.h"
#include "menus/SlideshowMode.h"
#include "mission/Campaign.h"
#include "mission/HubMode.h"
#include "mission/MissionMode.h"
#include "pilot/ForSalePanel.h"
#include "pilot/Pilot.h"
#include "sim/PlayerShip.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <functional>

namespace fs = std::filesystem;
using e2e::Point;
namespace place = e2e::place;

namespace
{
constexpr uint32_t SEED = 2026;
constexpr uint8_t KEY_SPACE = 0x39;
constexpr uint8_t KEY_ESCAPE = 0x01;
constexpr int64_t WAIT_LIMIT = 40000;
// The in-game menu's first button, "Objectives".
constexpr Point OBJECTIVES_BUTTON{512, 321};
constexpr Point HULLS_BUTTON{place::FOR_SALE.x + 100, place::FOR_SALE.y + ForSalePanel::FIRST_KIND_Y + 16};

class ScreensTour : public ::testing::Test
{
protected:
    void SetUp() override
    {
        const char* out = std::getenv("KORVATH_SCREENS_DIR");
        if (out == nullptr || out[0] == '\0')
        {
            GTEST_SKIP() << "KORVATH_SCREENS_DIR names no folder";
        }
        m_out = fs::absolute(out);
        m_dir = (m_out / "game").string();
        std::error_code error;
        fs::remove_all(m_dir, error);
        fs::create_directories(m_dir);
        e2e::BuildGameData(m_dir);
        m_oldDir = fs::current_path();
        fs::current_path(m_dir);
        // A returning pilot for the pilot menu's second screen.
        Pilot pilot("Saves\\Vega0.sav");
        pilot.SetPilotName("Vega");
        pilot.SetPortrait("Portraits\\Dax.bmp");
        pilot.SetMoney(12500);
        pilot.SetMissionName("Mission3");
        pilot.Save(nullptr);
        // A pilot with the ammunition for the last mission, which ends in the credits.
        Pilot veteran("Saves\\Ace0.sav");
        veteran.SetPilotName("Ace");
        veteran.SetMissionName("Mission10");
        veteran.SetBullets(60000);
        veteran.Save(nullptr);
    }
    void TearDown() override
    {
        std::error_code error;
        if (!m_oldDir.empty())
        {
            fs::current_path(m_oldDir, error);
        }
    }

    // Runs frames until p_done holds (checked before each frame) or the limit; false on the limit.
    bool RunUntil(e2e::InProcessGame& p_game, const std::function<bool()>& p_done, const char* p_what)
    {
        for (int64_t i = 0; i < WAIT_LIMIT; ++i)
        {
            if (!p_game.GetHands().IsBusy() && p_done())
            {
                return true;
            }
            if (m_pBot != nullptr)
            {
                if (auto* mission = dynamic_cast<MissionMode*>(p_game.GetGame().GetCurrentMode()))
                {
                    if (m_repair)
                    {
                        e2e::FlightBot::RepairProtected();
                    }
                    m_pBot->Think(*mission, e2e::InProcessGame::FRAME_SECONDS, p_game.GetFrame() + 1);
                }
            }
            if (!p_game.Frame())
            {
                break;
            }
        }
        ADD_FAILURE() << "never came: " << p_what << " (frame " << p_game.GetFrame() << ", mode "
                      << p_game.GetGame().GetModeCode() << (m_pBot != nullptr ? ", the bot: " + m_pBot->GetDoing() : "")
                      << ")";
        return false;
    }
    void Frames(e2e::InProcessGame& p_game, int p_count)
    {
        p_game.GetHands().Wait(p_count);
        RunUntil(p_game, [] { return true; }, "frames");
    }
    // The next frame, drawn and saved as NAME.png.
    void Shot(e2e::InProcessGame& p_game, const std::string& p_name)
    {
        const int64_t frame = p_game.ScreenshotNextFrame();
        p_game.Frame();
        std::error_code error;
        fs::rename(fs::path(m_dir) / DevOptions::ScreenshotName(frame), m_out / (p_name + ".png"), error);
        EXPECT_FALSE(error) << p_name << " was not saved";
    }

    template <class M>
    static M* ModeIs(e2e::InProcessGame& p_game)
    {
        return dynamic_cast<M*>(p_game.GetGame().GetCurrentMode());
    }
    template <class M>
    static bool MenuOpen(e2e::InProcessGame& p_game)
    {
        auto* menus = ModeIs<MenuMode>(p_game);
        if (menus == nullptr || menus->GetMenus().empty())
        {
            return false;
        }
        auto* menu = dynamic_cast<PreGameMenu*>(menus->GetMenus().front().m_pMenu.get());
        return dynamic_cast<M*>(menu) != nullptr && menu->GetState() == PreGameMenu::STATE_OPEN;
    }
    // A mission flown by the bot from --mission until its banner has shown for a second.
    void FlyToBanner(const char* p_mission, e2e::FlightBot::Goal p_goal, const std::string& p_name)
    {
        g_devOptions.mission = p_mission;
        if (std::string(p_mission) == "Mission10")
        {
            g_devOptions.pilot = "Saves\\Ace0.sav";
        }
        e2e::InProcessGame game(SEED, "");
        ASSERT_TRUE(game.IsStarted());
        e2e::FlightBot bot(p_goal);
        m_pBot = &bot;
        m_repair = p_goal == e2e::FlightBot::Goal::Win;
        const bool ended = RunUntil(
            game,
            [&game] {
                auto* mission = ModeIs<MissionMode>(game);
                return mission != nullptr && (mission->IsVictory() || mission->IsDefeated()) &&
                       MissionMode::GetBannerTime() > 1.0;
            },
            p_mission);
        if (ended && !p_name.empty())
        {
            Shot(game, p_name);
        }
        if (ended && p_goal == e2e::FlightBot::Goal::Win && std::string(p_mission) == "Mission10")
        {
            RunUntil(game, [&game] { return game.GetGame().GetModeCode() == MODECODE_SLIDESHOW; }, "the credits");
            Frames(game, 60);
            Shot(game, "17-credits");
        }
        m_pBot = nullptr;
    }

    fs::path m_out;
    std::string m_dir;
    fs::path m_oldDir;
    e2e::FlightBot* m_pBot = nullptr;
    bool m_repair = false;
};
} // namespace

TEST_F(ScreensTour, EveryScreen)
{
    {
        e2e::InProcessGame game(SEED, "");
        ASSERT_TRUE(game.IsStarted());
        e2e::Hands& hands = game.GetHands();
        Frames(game, 40);
        Shot(game, "01-logos");
        hands.Tap(KEY_SPACE);
        RunUntil(game, [&game] { return MenuOpen<MainMenu>(game); }, "the title menu");
        Shot(game, "02-title");

        // The options' four screens, one button each, then "Cancel".
        hands.Click(place::TITLE_OPTIONS);
        RunUntil(game, [&game] { return MenuOpen<OptionsMenu>(game); }, "the options menu");
        const char* const optionScreens[] = {"11-options-gameplay", "12-options-controls", "13-options-video",
                                             "14-options-audio"};
        for (int screen = 0; screen < 4; ++screen)
        {
            hands.Click(place::MenuButton(screen));
            Frames(game, 5);
            Shot(game, optionScreens[screen]);
        }
        hands.Click(place::MenuButton(OptionsMenu::BUTTON_CANCEL));
        RunUntil(game, [&game] { return MenuOpen<MainMenu>(game); }, "the title menu after the options");

        hands.Click(place::TITLE_SINGLE);
        RunUntil(game, [&game] { return MenuOpen<SinglePlayerMenu>(game); }, "the pilot menu");
        Shot(game, "03-pilot-new-recruit");
        hands.Click(place::PILOT_RETURNING);
        Frames(game, 10);
        Shot(game, "04-pilot-returning");
        hands.Click(place::PILOT_NEW_RECRUIT);
        Frames(game, 5);
        hands.Click(place::PILOT_EXECUTE);
        RunUntil(game, [&game] { return ModeIs<HubMode>(game) != nullptr; }, "the hub");
        Frames(game, 5);
        Shot(game, "05-hub");

        hands.Click(place::HUB_SHOP);
        hands.Click(HULLS_BUTTON);
        Frames(game, 3);
        Shot(game, "06-shop-hulls");
        hands.Click(place::SHOP_DONE);
        hands.Click(place::HUB_START);
        RunUntil(game, [&game] { return ModeIs<MissionMode>(game) != nullptr; }, "the mission");
        Frames(game, 100);
        Shot(game, "07-mission");
        hands.Tap(KEY_ESCAPE);
        Frames(game, 10);
        Shot(game, "08-in-game-menu");
        hands.Click(OBJECTIVES_BUTTON);
        Frames(game, 10);
        Shot(game, "09-objectives");
    }
    FlyToBanner("Mission1", e2e::FlightBot::Goal::Win, "15-victory");
    FlyToBanner("Mission1", e2e::FlightBot::Goal::FlyIntoFire, "16-defeat");
    FlyToBanner("Mission10", e2e::FlightBot::Goal::Win, "");
    // Last: a two-player game keeps its campaign for the rest of the process.
    {
        // The title's "Multiplayer": the hub with the scoreboard.
        e2e::InProcessGame game(SEED, "");
        ASSERT_TRUE(game.IsStarted());
        game.GetHands().Wait(3);
        game.GetHands().Tap(KEY_SPACE);
        RunUntil(game, [&game] { return MenuOpen<MainMenu>(game); }, "the title menu");
        game.GetHands().Click(place::TITLE_MULTIPLAYER);
        RunUntil(game, [&game] { return ModeIs<HubMode>(game) != nullptr; }, "the two-player hub");
        Frames(game, 5);
        Shot(game, "10-hub-two-players");
    }
}
