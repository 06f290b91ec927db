// The whole game as a player gets it, through its own screens: the logos skipped, "Single", a
// new recruit, the hub, the shop at every hub spending what the missions paid on better parts
// and ammunition, all ten missions flown and won, the credits and back to the title menu; the
// first mission with its hub and shop, recorded on the way, replayed by the real binary to the
// same pilot file; and the two-player campaign, both players' turns, the scoreboard checked at
// every hub. The game runs in this process on scripted devices at a fixed frame time; the
// flight bot's ship (and any ship whose loss loses a mission) is kept repaired from the second
// mission on, but money, purchases and records are the game's own.
#include "app/DevOptions.h"
#include "app/Game.h"
#include "app/Mode.h"
#include "app/ModeCode.h"
#include "pilot/PartCatalog.h"
#include "e2e/GamePlayer.h"
#include "e2e/GameProcess.h"
#include "e2e/PictureMatch.h"
#include "menus/MainMenu.h"
#include "menus/MenuMode.h"
#include "menus/PreGameMenu.h"
#include "menus/SinglePlayerMenu.h"
#include "menus/SlideshowMode.h"
#include "mission/Campaign.h"
#include "mission/HubMode.h"
#include "mission/MissionMode.h"
#include "pilot/ForSalePanel.h"
#include "pilot/Inventory.h"
#include "pilot/Part.h"
#include "pilot/PartList.h"
#include "pilot/Pilot.h"
#include "pilot/Shop.h"
#include "pilot/ShopList.h"
#include "sim/Level.h"
#include "sim/PlayerShip.h"
#include "ui/StaticObjects.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>

#if defined(__SANITIZE_ADDRESS__)
#include <sanitizer/lsan_interface.h>
#endif

namespace fs = std::filesystem;
using e2e::Point;
namespace place = e2e::place;

namespace
{
constexpr uint32_t SEED = 20261124;
constexpr uint8_t KEY_SPACE = 0x39;
// Ten missions of at most ten minutes, the menus, the hubs and the shops, with room to spare.
constexpr int64_t MAX_FRAMES = 200000;
constexpr int32_t PACK_PRICE = Shop::AMMO_PACK_PRICE;
constexpr int BULLET_PACK = 0;
constexpr uint16_t BULLETS_PER_PACK = Shop::PACK_ROUNDS[BULLET_PACK];
// The bot keeps this many rounds for the next mission before it buys parts.
constexpr uint16_t BULLETS_WANTED = 1500;
constexpr int MAX_PACKS_A_VISIT = 12;
// The engines and shields, worst to best: the bot buys the best one it can afford.
const char* const ENGINES[] = {"Cargo Thrusters", "Sparrow Drive", "Falcon Drive", "Hammerhead Drive", "Nova Drive"};
const char* const SHIELDS[] = {"Tin-foil Plating", "Deflector Mk I", "Deflector Mk II", "Aegis Screen", "Bulwark Screen"};
const char* const MISSIONS[] = {"Mission1", "Mission2", "Mission3", "Mission4", "Mission5",
                                "Mission6", "Mission7", "Mission8", "Mission9", "Mission10"};
const char* const TWO_PLAYER_MISSIONS[] = {"Gallery", "HiveRaid", "Gauntlet"};

int RankOf(const char* const* p_list, int p_count, const std::string& p_name)
{
    for (int i = 0; i < p_count; ++i)
    {
        if (p_name == p_list[i])
        {
            return i;
        }
    }
    return -1;
}

// What one shop visit did, and what the pilot file must say after "Done".
struct ShopVisit
{
    std::string file; // the pilot's
    int player = 0;   // 0 or 1 in a two-player game
    std::string mission;
    int32_t moneyBefore = 0;
    int32_t moneyAfter = 0;
    uint16_t bulletsAfter = 0;
    std::string engine;
    std::string shield;
    std::vector<std::string> bought;
    std::map<std::string, int> inventory; // parts taken off the ship, kept
};

// The player of the whole game: at each frame it looks at the screen the game shows and works
// the mouse, the keyboard and the ship's controls.
class Player
{
public:
    explicit Player(e2e::InProcessGame& p_game, bool p_twoPlayer) : m_game(p_game), m_twoPlayer(p_twoPlayer) {}

    // One frame; false once the game has ended or the player is back at the title menu after
    // the campaign.
    bool Frame()
    {
        Mode* mode = m_game.GetGame().GetCurrentMode();
        if (auto* mission = dynamic_cast<MissionMode*>(mode))
        {
            Fly(*mission);
        }
        else if (!m_game.GetHands().IsBusy())
        {
            m_bot.Release();
            if (auto* slideshow = dynamic_cast<SlideshowMode*>(mode))
            {
                Watch(*slideshow);
            }
            else if (auto* menus = dynamic_cast<MenuMode*>(mode))
            {
                if (!Choose(*menus))
                {
                    return false;
                }
            }
            else if (auto* hub = dynamic_cast<HubMode*>(mode))
            {
                Visit(*hub);
            }
        }
        m_wasInMission = dynamic_cast<MissionMode*>(mode) != nullptr;
        return m_game.Frame();
    }

    // A visit's pilot file to check, once it has been saved.
    std::vector<ShopVisit> m_visits;
    std::vector<std::string> m_won;
    int m_defeats = 0;
    bool m_sawCredits = false;
    bool m_campaignOver = false;
    int64_t m_firstShopDoneFrame = 0;
    std::string m_pilotFile;
    // Two players: the scoreboard read at each hub, and what it should have said.
    std::vector<std::string> m_scoreProblems;
    int m_hubsChecked = 0;

private:
    void Fly(MissionMode& p_mission)
    {
        if (!m_wasInMission)
        {
            m_missionName = g_campaign.GetMissionName();
            m_turnPlayer = g_secondPlayerTurn ? 1 : 0;
        }
        // The first mission is flown as it is, so that the real binary can replay it.
        if (!(m_missionName == MISSIONS[0] && !m_twoPlayer))
        {
            e2e::FlightBot::RepairProtected();
        }
        if (p_mission.IsVictory() || p_mission.IsDefeated())
        {
            if (!m_ended)
            {
                m_ended = true;
                if (p_mission.IsVictory())
                {
                    m_won.push_back(m_missionName);
                }
                else
                {
                    ++m_defeats;
                }
                if (p_mission.GetLevel() != nullptr)
                {
                    const Level& level = *p_mission.GetLevel();
                    m_kills[m_turnPlayer] += level.GetNumEnemies() - level.GetEnemiesLeft();
                }
                if (p_mission.IsVictory())
                {
                    // Only a won turn saves the pilot file the scoreboard reads.
                    m_turnMoney[m_turnPlayer] = Mode::s_pPlayer->GetPilot().GetMoney();
                }
            }
        }
        else
        {
            m_ended = false;
        }
        m_bot.Think(p_mission, e2e::InProcessGame::FRAME_SECONDS, m_game.GetFrame() + 1);
    }

    void Watch(SlideshowMode& p_slideshow)
    {
        (void)p_slideshow;
        if (m_game.GetGame().GetModeCode() == MODECODE_SLIDESHOW && !m_won.empty())
        {
            m_sawCredits = true;
        }
        // A key skips the logos; the credits run to their end.
        if (!m_sawCredits && !m_skippedLogos)
        {
            m_game.GetHands().Wait(4);
            m_game.GetHands().Tap(KEY_SPACE);
            m_skippedLogos = true;
        }
    }

    bool Choose(MenuMode& p_menus)
    {
        auto* menu = p_menus.GetMenus().empty() ? nullptr : dynamic_cast<PreGameMenu*>(p_menus.GetMenus().front().m_pMenu.get());
        if (menu == nullptr || menu->GetState() != PreGameMenu::STATE_OPEN)
        {
            return true;
        }
        if (dynamic_cast<MainMenu*>(menu) != nullptr)
        {
            if (m_started)
            {
                // Back at the title menu after the campaign.
                m_campaignOver = true;
                return false;
            }
            m_started = true;
            m_game.GetHands().Click(m_twoPlayer ? place::TITLE_MULTIPLAYER : place::TITLE_SINGLE);
        }
        else if (dynamic_cast<SinglePlayerMenu*>(menu) != nullptr)
        {
            // The new recruit's screen, the first face, the name it brings.
            if (m_executed)
            {
                return true;
            }
            m_executed = true;
            m_game.GetHands().Click(place::PILOT_EXECUTE);
            m_game.GetHands().Wait(2);
        }
        return true;
    }

    void Visit(HubMode& p_hub)
    {
        if (m_pilotFile.empty() && !m_twoPlayer)
        {
            m_pilotFile = Mode::s_pPlayer->GetPilot().GetFileName();
        }
        Shop* shop = p_hub.GetShop();
        const std::string mission = g_campaign.GetMissionName();
        const std::string visitKey = mission + (g_secondPlayerTurn ? "/2" : "/1") + std::to_string(m_won.size());
        if (m_twoPlayer && m_checkedHub != visitKey)
        {
            m_checkedHub = visitKey;
            CheckScoreboard(p_hub);
        }
        if (shop == nullptr)
        {
            if (m_shoppedAt != visitKey && !m_won.empty())
            {
                m_shoppedAt = visitKey;
                m_game.GetHands().Click(place::HUB_SHOP);
                m_game.GetHands().Wait(3);
                m_shopping = true;
            }
            else
            {
                if (m_shopping)
                {
                    // Back from the shop: "Done" has saved the pilot.
                    m_shopping = false;
                    if (m_firstShopDoneFrame == 0)
                    {
                        m_firstShopDoneFrame = m_game.GetFrame();
                    }
                    CheckSaved();
                    m_turnMoney[m_visits.back().player] = m_visits.back().moneyAfter;
                }
                m_game.GetHands().Click(place::HUB_START);
                m_game.GetHands().Wait(3);
            }
            return;
        }
        if (m_plannedAt != visitKey)
        {
            m_plannedAt = visitKey;
            GoShopping(*shop, mission);
        }
    }

    // Ammunition first, then the best engine and shield the money buys, then more ammunition.
    void GoShopping(::Shop& p_shop, const std::string& p_mission)
    {
        e2e::Hands& hands = m_game.GetHands();
        PlayerShip& ship = *Mode::s_pPlayer;
        Pilot& pilot = ship.GetPilot();
        ShopVisit visit;
        visit.file = pilot.GetFileName();
        visit.player = g_secondPlayerTurn ? 1 : 0;
        visit.mission = p_mission;
        visit.moneyBefore = pilot.GetMoney();
        int32_t money = visit.moneyBefore;
        uint16_t bullets = pilot.GetBullets();
        int packs = 0;
        while (bullets < BULLETS_WANTED && money >= PACK_PRICE && packs < MAX_PACKS_A_VISIT)
        {
            hands.Click(AmmoButton(BULLET_PACK));
            money -= PACK_PRICE;
            bullets = static_cast<uint16_t>(bullets + BULLETS_PER_PACK);
            ++packs;
        }
        visit.engine = pilot.GetEngineName();
        visit.shield = pilot.GetShieldName();
        visit.inventory = m_inventory[visit.player];
        Upgrade(p_shop, PART_ENGINE, ENGINES, visit.engine, money, visit);
        Upgrade(p_shop, PART_SHIELD, SHIELDS, visit.shield, money, visit);
        while (money >= PACK_PRICE && packs < MAX_PACKS_A_VISIT && bullets < 65535 - BULLETS_PER_PACK)
        {
            hands.Click(AmmoButton(BULLET_PACK));
            money -= PACK_PRICE;
            bullets = static_cast<uint16_t>(bullets + BULLETS_PER_PACK);
            ++packs;
        }
        visit.moneyAfter = money;
        visit.bulletsAfter = bullets;
        m_inventory[visit.player] = visit.inventory;
        m_visits.push_back(visit);
        hands.Wait(2);
        hands.Click(place::SHOP_DONE);
        hands.Wait(3);
    }

    // Buys the best part of a kind the shop sells that beats p_fitted and that p_money pays for,
    // dragging its line onto the ship; the old part goes to the inventory.
    template <size_t N>
    void Upgrade(::Shop& p_shop, int p_kind, const char* const (&p_ranking)[N], std::string& p_fitted, int32_t& p_money,
                 ShopVisit& p_visit)
    {
        const std::vector<std::string>& names = p_shop.GetList().GetNames(p_kind);
        int best = -1;
        for (size_t line = 0; line < names.size(); ++line)
        {
            const Part* part = g_pPartCatalog->Find(names[line].c_str(), p_kind);
            const int rank = RankOf(p_ranking, static_cast<int>(N), names[line]);
            if (part == nullptr || rank <= RankOf(p_ranking, static_cast<int>(N), p_fitted) ||
                static_cast<int32_t>(part->GetPrice()) > p_money - PACK_PRICE)
            {
                continue;
            }
            if (best < 0 || rank > RankOf(p_ranking, static_cast<int>(N), names[static_cast<size_t>(best)]))
            {
                best = static_cast<int>(line);
            }
        }
        if (best < 0)
        {
            return;
        }
        const std::string& name = names[static_cast<size_t>(best)];
        e2e::Hands& hands = m_game.GetHands();
        hands.Click(KindButton(p_shop, p_kind));
        hands.Wait(2);
        hands.Drag(ListLine(best), place::ON_SHIP);
        hands.Wait(3);
        hands.Click(BackButton());
        hands.Wait(2);
        p_money -= static_cast<int32_t>(g_pPartCatalog->Find(name.c_str(), p_kind)->GetPrice());
        ++p_visit.inventory[p_fitted];
        p_visit.bought.push_back(name);
        p_fitted = name;
    }

    // The panel shows a button for each kind it sells, from hulls to weapons.
    static Point KindButton(::Shop& p_shop, int p_kind)
    {
        int index = 0;
        for (int kind = 0; kind < p_kind; ++kind)
        {
            index += p_shop.GetForSalePanel().GetKindButton(kind) != nullptr ? 1 : 0;
        }
        return Point{place::FOR_SALE.x + 100,
                     place::FOR_SALE.y + ForSalePanel::FIRST_KIND_Y + ForSalePanel::BUTTON_SPACING * index + 16};
    }
    static Point ListLine(int p_line)
    {
        return Point{place::FOR_SALE.x + ForSalePanel::LIST_X + 14,
                     place::FOR_SALE.y + ForSalePanel::LIST_Y + PartList::ARROW_HEIGHT + PartList::ARROW_GAP +
                         ForSalePanel::LINE_HEIGHT * p_line + 6};
    }
    static Point BackButton() { return Point{place::FOR_SALE.x + 100, place::FOR_SALE.y + ForSalePanel::BACK_Y + 15}; }
    static Point AmmoButton(int p_pack)
    {
        return Point{place::FOR_SALE.x + 100,
                     place::FOR_SALE.y + ForSalePanel::FIRST_AMMO_Y + ForSalePanel::BUTTON_SPACING * p_pack + 16};
    }

    // The pilot file after "Done" says what the visit did.
    void CheckSaved()
    {
        const ShopVisit& visit = m_visits.back();
        Pilot saved(visit.file.c_str());
        Inventory items;
        if (!saved.Load(&items))
        {
            ADD_FAILURE() << "no pilot file after the shop before " << visit.mission;
            return;
        }
        EXPECT_EQ(visit.moneyAfter, saved.GetMoney()) << visit.mission;
        EXPECT_EQ(visit.bulletsAfter, saved.GetBullets()) << visit.mission;
        EXPECT_EQ(visit.engine, saved.GetEngineName()) << visit.mission;
        EXPECT_EQ(visit.shield, saved.GetShieldName()) << visit.mission;
        EXPECT_EQ(visit.mission, saved.GetMissionName());
        for (const auto& [name, count] : visit.inventory)
        {
            EXPECT_EQ(count, items.GetQuantity(name.c_str())) << name << " before " << visit.mission;
        }
    }

    // The scoreboard shows each player's kills and the money of each pilot file.
    void CheckScoreboard(HubMode& p_hub)
    {
        ++m_hubsChecked;
        const auto& texts = p_hub.GetScoreboard();
        if (texts.size() != 11)
        {
            m_scoreProblems.push_back("the scoreboard has " + std::to_string(texts.size()) + " texts");
            return;
        }
        for (int player = 0; player < 2; ++player)
        {
            const size_t base = 1 + 5 * static_cast<size_t>(player);
            const std::string kills = std::to_string(m_kills[player]);
            const std::string money = "$" + std::to_string(m_turnMoney[player]);
            const std::string where = std::string(g_campaign.GetMissionName()) + ", player " + std::to_string(player + 1);
            if (texts[base + 2]->GetText() != kills)
            {
                m_scoreProblems.push_back(where + ": kills " + texts[base + 2]->GetText() + ", flown " + kills);
            }
            if (texts[base + 4]->GetText() != money)
            {
                m_scoreProblems.push_back(where + ": money " + texts[base + 4]->GetText() + ", earned " + money);
            }
        }
    }

    e2e::InProcessGame& m_game;
    bool m_twoPlayer;
    e2e::FlightBot m_bot;
    bool m_wasInMission = false;
    bool m_ended = false;
    bool m_skippedLogos = false;
    bool m_started = false;
    bool m_shopping = false;
    std::string m_missionName;
    std::string m_shoppedAt;
    std::string m_plannedAt;
    bool m_executed = false;
    std::string m_checkedHub;
    std::map<std::string, int> m_inventory[2];
    int m_turnPlayer = 0;
    int m_kills[2] = {0, 0};
    int32_t m_turnMoney[2] = {0, 0};
};

class CampaignE2ETest : public e2e::GameDirTest
{
protected:
    CampaignE2ETest() : GameDirTest("korvath-e2e-campaign") {}

    void SetUp() override
    {
#if defined(__SANITIZE_ADDRESS__)
        // The game runs in this process, and the GL driver keeps allocations until exit.
        __lsan_disable();
#endif
        GameDirTest::SetUp();
        if (HasFatalFailure())
        {
            return;
        }
        e2e::BuildGameData(m_dir);
        m_oldDir = fs::current_path();
        fs::current_path(m_dir);
    }
    void TearDown() override
    {
        std::error_code error;
        fs::current_path(m_oldDir, error);
        GameDirTest::TearDown();
    }

    // Plays until the player is back at the title menu; answers the game seconds played.
    double Play(Player& p_player, e2e::InProcessGame& p_game)
    {
        while (p_game.GetFrame() < MAX_FRAMES && p_player.Frame())
        {
        }
        return static_cast<double>(p_game.GetFrame()) * e2e::InProcessGame::FRAME_SECONDS;
    }

    std::string Screenshot(int64_t p_frame) const { return m_dir + "/" + DevOptions::ScreenshotName(p_frame); }

    fs::path m_oldDir;
};
} // namespace

TEST_F(CampaignE2ETest, APlayerPlaysTheWholeCampaignFromTheTitleToTheCredits)
{
#if defined(__SANITIZE_ADDRESS__)
    GTEST_SKIP() << "an hour of game time: too slow under AddressSanitizer";
#endif
    const auto start = std::chrono::steady_clock::now();
    const std::string recording = m_dir + "/recording.txt";
    std::vector<ShopVisit> visits;
    std::string pilotFile;
    int64_t firstShopDone = 0;
    {
        e2e::InProcessGame game(SEED, recording);
        ASSERT_TRUE(game.IsStarted());
        Player player(game, false);
        const double seconds = Play(player, game);
        const double wall = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
        std::printf("whole campaign: %.0f s of game time (%lld frames) in %.1f s\n", seconds,
                    static_cast<long long>(game.GetFrame()), wall);

        ASSERT_EQ(10u, player.m_won.size()) << "won " << player.m_won.size() << " missions, lost " << player.m_defeats;
        for (size_t i = 0; i < 10; ++i)
        {
            EXPECT_EQ(MISSIONS[i], player.m_won[i]);
        }
        EXPECT_TRUE(player.m_sawCredits);
        EXPECT_TRUE(player.m_campaignOver) << "not back at the title menu";
        visits = player.m_visits;
        pilotFile = player.m_pilotFile;
        firstShopDone = player.m_firstShopDoneFrame;
    }

    // A shop visit at every hub from the second mission on, each spending the money.
    ASSERT_EQ(9u, visits.size());
    int partsBought = 0;
    for (const ShopVisit& visit : visits)
    {
        EXPECT_LT(visit.moneyAfter, visit.moneyBefore) << visit.mission;
        partsBought += static_cast<int>(visit.bought.size());
    }
    EXPECT_GE(partsBought, 4);
    for (size_t i = 1; i < visits.size(); ++i)
    {
        // Each mission paid at least what its objectives promise.
        EXPECT_GT(visits[i].moneyBefore, visits[i - 1].moneyAfter) << visits[i].mission;
    }

    // The last victory ends the campaign without a save: the pilot file is as the last shop
    // left it, on the last mission.
    ASSERT_FALSE(pilotFile.empty());
    {
        CreatePartCatalog();
        Pilot pilot(pilotFile.c_str());
        Inventory items;
        ASSERT_TRUE(pilot.Load(&items));
        DestroyPartCatalog();
        const ShopVisit& last = visits.back();
        EXPECT_EQ("Mission10", pilot.GetMissionName());
        EXPECT_EQ(last.moneyAfter, pilot.GetMoney());
        EXPECT_EQ(last.engine, pilot.GetEngineName());
        EXPECT_EQ(last.shield, pilot.GetShieldName());
        EXPECT_NE(Pilot::DEFAULT_ENGINE, pilot.GetEngineName());
        EXPECT_NE(Pilot::DEFAULT_SHIELD, pilot.GetShieldName());
        EXPECT_EQ(Pilot::DEFAULT_WEAPON, pilot.GetWeaponName(0));
    }

    // The real binary replays the recording up to the first shop's "Done" and a few frames of
    // the hub: the same pilot file, the same money.
    const ShopVisit& first = visits.front();
    fs::remove_all(m_dir + "/Saves");
    fs::create_directories(m_dir + "/Saves");
    const int64_t end = firstShopDone + 1;
    const e2e::ProcessResult replay =
        e2e::RunGame(m_dir, {"--windowed"},
                     e2e::GameEnv({{"KORVATH_INPUT_SCRIPT", recording},
                                   {"KORVATH_SCREENSHOT_AT", std::to_string(end)},
                                   {"KORVATH_EXIT_AFTER", std::to_string(end)}}),
                     600);
    ASSERT_TRUE(replay.exited) << replay.standardError;
    EXPECT_EQ(0, replay.exitCode) << replay.standardError;
    Pilot replayed(pilotFile.c_str());
    ASSERT_TRUE(replayed.Load(nullptr)) << "the replay saved no pilot";
    EXPECT_EQ("Mission2", replayed.GetMissionName());
    EXPECT_EQ(first.moneyAfter, replayed.GetMoney());
    EXPECT_EQ(first.bulletsAfter, replayed.GetBullets());
    EXPECT_EQ(first.engine, replayed.GetEngineName());
    EXPECT_EQ(first.shield, replayed.GetShieldName());
    // Back in the hub over its planet.
    EXPECT_GT(e2e::PictureMatch(Screenshot(end), m_dir + "/art/planets.bmp", 0, 0), 0.8);
    std::printf("whole campaign and the replay of its first mission: %.0f s\n",
                std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
}

TEST_F(CampaignE2ETest, TwoPlayersTakeTurnsThroughTheirCampaignAndTheScoreboardKeepsCount)
{
#if defined(__SANITIZE_ADDRESS__)
    GTEST_SKIP() << "too slow under AddressSanitizer";
#endif
    const auto start = std::chrono::steady_clock::now();
    e2e::InProcessGame game(SEED, "");
    ASSERT_TRUE(game.IsStarted());
    Player player(game, true);
    const double seconds = Play(player, game);
    std::printf("two-player campaign: %.0f s of game time (%lld frames) in %.1f s\n", seconds,
                static_cast<long long>(game.GetFrame()),
                std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());

    // Each mission flown by the first player, then the second.
    const std::vector<std::string> expected{"Gallery", "Gallery", "HiveRaid", "HiveRaid", "Gauntlet", "Gauntlet"};
    EXPECT_EQ(expected, player.m_won) << "lost " << player.m_defeats;
    EXPECT_TRUE(player.m_campaignOver) << "not back at the title menu";
    // Every hub: the first, and one after each turn but the last.
    EXPECT_EQ(6, player.m_hubsChecked);
    for (const std::string& problem : player.m_scoreProblems)
    {
        ADD_FAILURE() << problem;
    }
    (void)TWO_PLAYER_MISSIONS;
}
