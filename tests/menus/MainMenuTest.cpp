#include "app/Mode.h"
#include "app/ModeCode.h"
#include "menus/MainMenu.h"
#include "mission/Campaign.h"
#include "mission/MissionMode.h"
#include "mission/Scoreboard.h"
#include "pilot/Pilot.h"
#include "sim/PlayerShip.h"
#include "support/WorkDir.h"
#include "ui/Button.h"
#include "ui/StaticObjects.h"
#include "ui/UiInput.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace
{
class QuietMode : public Mode
{
public:
    bool Initialize() override { return true; }
    bool Shutdown() override { return true; }
    int32_t Update(float) override { return MODECODE_STAY; }
    bool Render() override { return true; }
    bool HandleInput(InputSystem*) override { return true; }
};

class MainMenuTest : public testsupport::WorkDirTest
{
protected:
    void SetUp() override
    {
        WorkDirTest::SetUp();
        PreGameMenu::ForgetFirstButton();
        std::filesystem::create_directories("multiplayer");
        std::filesystem::create_directories("Campaign");
        m_menu = std::make_unique<MainMenu>(&m_ui.cursor);
        m_menu->Init();
        // Open: every button at rest.
        m_ui.Frame(0, 0, false);
        m_menu->Update(0.05f);
        m_menu->Update(5.0f);
    }
    void TearDown() override
    {
        m_menu.reset();
        g_twoPlayer = false;
        g_secondPlayerTurn = false;
        g_campaign.Reload(Campaign::DEFAULT_FILE);
        WorkDirTest::TearDown();
    }

    // Clicks the button at rest in slot p_button; what the menu answered to the release.
    int32_t Click(int32_t p_button)
    {
        const int32_t x = 80;
        const int32_t y = 210 + 70 * p_button + 20;
        m_ui.Frame(x, y, true);
        m_menu->Update(0.05f);
        m_ui.Frame(x, y, false);
        return m_menu->Update(0.05f);
    }

    uitest::UiInput m_ui;
    std::unique_ptr<MainMenu> m_menu;
};

void ExpectFreshRecord(const Pilot& p_pilot, const char* p_name)
{
    const Pilot fresh;
    EXPECT_EQ(p_name, p_pilot.GetPilotName());
    EXPECT_EQ("", p_pilot.GetPortrait());
    EXPECT_EQ(fresh.GetMoney(), p_pilot.GetMoney());
    EXPECT_EQ(fresh.GetBullets(), p_pilot.GetBullets());
    EXPECT_EQ(fresh.GetEnergy(), p_pilot.GetEnergy());
    EXPECT_EQ(fresh.GetMissiles(), p_pilot.GetMissiles());
    EXPECT_EQ(fresh.GetMissionName(), p_pilot.GetMissionName());
    EXPECT_EQ(fresh.GetHullName(), p_pilot.GetHullName());
    EXPECT_EQ(fresh.GetEngineName(), p_pilot.GetEngineName());
    EXPECT_EQ(fresh.GetShieldName(), p_pilot.GetShieldName());
    for (int mount = 0; mount < Pilot::NUM_WEAPONS; ++mount)
    {
        EXPECT_EQ(fresh.GetWeaponName(mount), p_pilot.GetWeaponName(mount)) << mount;
    }
}
} // namespace

TEST_F(MainMenuTest, ShowsTheTitlePictureAndFourButtons)
{
    ASSERT_EQ(MainMenu::NUM_BUTTONS, m_menu->GetNumButtons());
    const char* const labels[] = {"Single", "Multiplayer", "Options", "Exit"};
    for (int32_t i = 0; i < MainMenu::NUM_BUTTONS; ++i)
    {
        EXPECT_EQ(labels[i], m_menu->GetButton(i)->GetText());
    }
    ASSERT_NE(nullptr, m_menu->GetTitle());
    EXPECT_EQ("Main", m_menu->GetTitle()->GetText());
    auto* picture = dynamic_cast<StaticImage*>(m_menu->FindObject(MainMenu::TITLE_PICTURE_ID));
    ASSERT_NE(nullptr, picture);
    EXPECT_EQ(260, static_cast<int>(picture->GetX()));
    EXPECT_EQ(200, static_cast<int>(picture->GetY()));
    EXPECT_EQ(650, picture->GetWidth());
    EXPECT_EQ(325, picture->GetHeight());
}

TEST_F(MainMenuTest, MultiplayerOverwritesBothPilotsWithFreshRecordsAndGoesToTheHub)
{
    QuietMode mode; // makes the player's ship
    // A game played before: richer pilots on later missions, kills on the scoreboard.
    Pilot old(MissionMode::PLAYER1_FILE);
    old.SetPilotName("Old One");
    old.SetMoney(99999);
    old.SetMissionName("Mission3");
    old.SetPortrait("Portraits\\old.bmp");
    ASSERT_TRUE(old.Save(nullptr));
    old.SetFileName(MissionMode::PLAYER2_FILE);
    ASSERT_TRUE(old.Save(nullptr));
    g_scoreboard.Reset();
    g_scoreboard.AddKill();
    g_scoreboard.SwitchPlayer();
    g_secondPlayerTurn = true;

    EXPECT_EQ(MODECODE_HUB, Click(MainMenu::BUTTON_MULTIPLAYER));
    EXPECT_EQ(PreGameMenu::STATE_CLOSING, m_menu->GetState());

    Pilot one(MissionMode::PLAYER1_FILE);
    ASSERT_TRUE(one.Load(nullptr));
    ExpectFreshRecord(one, "Player One");
    Pilot two(MissionMode::PLAYER2_FILE);
    ASSERT_TRUE(two.Load(nullptr));
    ExpectFreshRecord(two, "Player Two");

    EXPECT_EQ("Player One", Mode::s_pPlayer->GetPilot().GetPilotName());
    EXPECT_EQ(MissionMode::PLAYER1_FILE, Mode::s_pPlayer->GetPilot().GetFileName());
    EXPECT_EQ(MainMenu::MULTIPLAYER_CAMPAIGN, g_campaign.GetFileName());
    EXPECT_TRUE(g_twoPlayer);
    EXPECT_FALSE(g_secondPlayerTurn);
    EXPECT_EQ(0, g_scoreboard.GetKills(0));
    EXPECT_EQ(0, g_scoreboard.GetCurrentPlayer());
}

TEST_F(MainMenuTest, SingleOptionsAndExit)
{
    g_twoPlayer = true;
    g_campaign.Reload(MainMenu::MULTIPLAYER_CAMPAIGN);
    EXPECT_EQ(MENUCODE_OPEN_SINGLE_PLAYER, Click(MainMenu::BUTTON_SINGLE));
    EXPECT_EQ(PreGameMenu::STATE_CLOSING, m_menu->GetState());
    EXPECT_FALSE(g_twoPlayer);
    EXPECT_EQ(Campaign::DEFAULT_FILE, g_campaign.GetFileName());

    // A closing menu takes no more clicks.
    EXPECT_EQ(MENUCODE_STAY, Click(MainMenu::BUTTON_OPTIONS));

    m_menu = std::make_unique<MainMenu>(&m_ui.cursor);
    m_menu->Init();
    m_menu->Update(0.05f);
    m_menu->Update(5.0f);
    EXPECT_EQ(MENUCODE_OPEN_OPTIONS, Click(MainMenu::BUTTON_OPTIONS));
    EXPECT_EQ(PreGameMenu::STATE_CLOSING, m_menu->GetState());

    // "Exit" leaves at once, without the closing slide.
    m_menu = std::make_unique<MainMenu>(&m_ui.cursor);
    m_menu->Init();
    m_menu->Update(0.05f);
    m_menu->Update(5.0f);
    EXPECT_EQ(MENUCODE_QUIT, Click(MainMenu::BUTTON_EXIT));
    EXPECT_EQ(PreGameMenu::STATE_OPEN, m_menu->GetState());
    EXPECT_FALSE(std::filesystem::exists("multiplayer/player1.sav"));
}
