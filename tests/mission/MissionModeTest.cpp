// The mission play mode on a small level of its own: outcomes and banners, the in-game menu
// freezing the world, the autopilot and the steering, and the two-player turns.
#include "forge/Formats.h"
#include "input/Action.h"
#include "menus/InGameMenu.h"
#include "mission/Campaign.h"
#include "mission/MissionMode.h"
#include "mission/Scoreboard.h"
#include "pilot/Pilot.h"
#include "sim/CombatSupport.h"
#include "sim/Level.h"
#include "sim/PhysicalDesc.h"
#include "support/GlFixture.h"
#include "support/ScriptedInput.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <memory>
#include <string>

using combattest::ProbePlayer;
using combattest::WriteGameFile;

namespace
{
constexpr uint8_t DIK_NUMPAD9 = 0x49;
constexpr uint16_t TURN_RATE = 120;

class MissionModeTest : public testsupport::GlFixture
{
protected:
    void SetUp() override
    {
        GlFixture::SetUp();
        if (!StartApplication())
        {
            GTEST_SKIP() << "no display";
        }
        // A 40-tile map (play area 1920..3200) with one named buoy.
        forge::LevelRecord level;
        level.tileSet = "Art\\startile000.bmp";
        level.mapSize = 40;
        level.tiles.assign(40 * 40, 0);
        level.scenery.push_back(forge::SceneryRecord{"buoy", "beacon.bmp", 2500, 2500});
        WriteGameFile("Campaign\\field.lvl", level);
        std::filesystem::create_directories("Saves");
        std::filesystem::create_directories("multiplayer");

        m_previousPlayer = Mode::s_pPlayer;
        m_pPlayer = std::make_unique<ProbePlayer>();
        m_pPlayer->SetLimits(0, 300, 100, TURN_RATE);
        Mode::s_pPlayer = m_pPlayer.get();
        m_pPlayer->GetPilot().SetFileName("Saves\\Tester0.sav");
        g_twoPlayer = false;
        g_secondPlayerTurn = false;
        g_scoreboard.Reset();
    }
    void TearDown() override
    {
        m_pMode.reset();
        Mode::s_pPlayer = m_previousPlayer;
        m_pPlayer.reset();
        g_twoPlayer = false;
        g_secondPlayerTurn = false;
        g_campaign.Reload(Campaign::DEFAULT_FILE);
        GlFixture::TearDown();
    }

    // A campaign file of the given sections, each on the level above, from its first section.
    void Campaign(const std::string& p_sections)
    {
        std::ofstream("Campaign/test.ini") << "[Entry]\nFirstMission=One\n" << p_sections;
        g_campaign.Reload("Campaign/test.ini");
    }
    MissionMode& Start()
    {
        m_pMode.reset();
        m_pMode = std::make_unique<MissionMode>();
        m_pMode->Init(&m_input.GetInput());
        m_app.SetMode(m_pMode.get());
        return *m_pMode;
    }
    // Updates until the mode answers something else than 6; answers that and counts the frames.
    int32_t RunUntilLeaving(float p_dt, int& p_frames)
    {
        for (p_frames = 1; p_frames < 1000; ++p_frames)
        {
            const int32_t code = m_pMode->Update(p_dt);
            if (code != 6)
            {
                return code;
            }
        }
        return 6;
    }
    PhysicalDesc& Desc() { return *m_pPlayer->GetPhysicalDesc(); }

    testsupport::ScriptedInput m_input;
    std::unique_ptr<ProbePlayer> m_pPlayer;
    PlayerShip* m_previousPlayer = nullptr;
    std::unique_ptr<MissionMode> m_pMode;
};
} // namespace

TEST_F(MissionModeTest, AWinBeatsALossAndTheBannerLeadsToTheNextMission)
{
    Campaign("[One]\nLevel=field.lvl\nWin1=timepassed 0 Two\nLose1=timepassed 0\n"
             "[Two]\nLevel=field.lvl\nWin1=dead buoy endgame\nLose1=timepassed 0.3\n");
    MissionMode& mode = Start();
    EXPECT_EQ(2020.0, Desc().GetX());
    // Win and loss hold together: a victory.
    EXPECT_EQ(6, mode.Update(0.5f));
    EXPECT_TRUE(mode.IsVictory());
    EXPECT_FALSE(mode.IsDefeated());
    // The banner stays until more than two seconds have passed: 0.5 + 0.5 + 0.5 + 0.5 is not yet.
    EXPECT_EQ(6, mode.Update(0.5f));
    EXPECT_EQ(6, mode.Update(0.5f));
    EXPECT_EQ(6, mode.Update(0.5f));
    EXPECT_EQ(1, mode.Update(0.5f));
    EXPECT_EQ(0.0, MissionMode::GetBannerTime());
    // The campaign moved on and the pilot was saved with the new mission.
    EXPECT_STREQ("Two", g_campaign.GetMissionName());
    Pilot saved("Saves\\Tester0.sav");
    ASSERT_TRUE(saved.Load(nullptr));
    EXPECT_EQ("Two", saved.GetMissionName());

    // Mission Two: lost first, then the buoy goes within the banner's two seconds: a victory,
    // and "endgame" resets the campaign and plays the ending.
    MissionMode& two = Start();
    EXPECT_EQ(6, two.Update(0.4f));
    EXPECT_TRUE(two.IsDefeated());
    EXPECT_EQ(6, two.Update(0.4f));
    g_campaign.GetNamedObjects().Clear("buoy");
    EXPECT_EQ(6, two.Update(0.4f));
    EXPECT_TRUE(two.IsVictory());
    int frames = 0;
    EXPECT_EQ(255, RunUntilLeaving(0.4f, frames));
    EXPECT_STREQ("One", g_campaign.GetMissionName());
}

TEST_F(MissionModeTest, ALostMissionStaysAndSavesNothing)
{
    Campaign("[One]\nLevel=field.lvl\nWin1=timepassed 100 Two\n[Two]\n");
    MissionMode& mode = Start();
    // The level reports the player's ship destroyed; no lose line is needed.
    EXPECT_EQ(6, mode.Update(0.25f));
    mode.SetDefeat(true);
    int frames = 0;
    EXPECT_EQ(1, RunUntilLeaving(0.25f, frames));
    EXPECT_FALSE(mode.IsVictory());
    // Eight frames make exactly 2.0 seconds, still the banner; the ninth leads on.
    EXPECT_EQ(9, frames);
    EXPECT_STREQ("One", g_campaign.GetMissionName());
    EXPECT_FALSE(std::filesystem::exists("Saves/Tester0.sav"));
    // Shutdown repairs the ship and clears the defeat for the next mission.
    m_pMode.reset();
    EXPECT_FALSE(Start().IsDefeated());
}

TEST_F(MissionModeTest, TheInGameMenuFreezesTheWorldAndAnswersForTheMode)
{
    Campaign("[One]\nLevel=field.lvl\nWin1=timepassed 1 Two\n");
    MissionMode& mode = Start();
    EXPECT_EQ(6, mode.Update(0.5f));
    const double elapsed = m_pMode->GetLevel()->GetElapsed();
    mode.GetInGameMenu()->SetVisible(true);
    for (int i = 0; i < 10; ++i)
    {
        EXPECT_EQ(6, mode.Update(0.5f));
    }
    // The level stood still and the campaign was not asked: no victory.
    EXPECT_EQ(elapsed, m_pMode->GetLevel()->GetElapsed());
    EXPECT_FALSE(mode.IsVictory());
    mode.GetInGameMenu()->SetVisible(false);
    EXPECT_EQ(6, mode.Update(0.5f));
    EXPECT_TRUE(mode.IsVictory());
}

TEST_F(MissionModeTest, TheAutopilotBringsTheShipBackAndTheControlsSteer)
{
    Campaign("[One]\nLevel=field.lvl\n");
    MissionMode& mode = Start();
    Desc().SetSpeed(250.0);
    Desc().SetAcceleration(40.0);
    Desc().SetStrafe(-1.0);

    // Left of the play area, heading 90: the autopilot takes over.
    Desc().SetPosition(1800.0, 2500.0);
    m_input.KeyDown(DIK_NUMPAD9);
    m_input.Poll();
    mode.HandleInput(&m_input.GetInput());
    EXPECT_TRUE(MissionMode::IsAutopilot());
    EXPECT_EQ(100.0, Desc().GetSpeed());
    EXPECT_EQ(300.0, Desc().GetAcceleration());
    EXPECT_EQ(0.0, Desc().GetStrafe());
    EXPECT_EQ(200.0, std::abs(Desc().GetRotationSpeed()));
    // The controls are ignored while outside: the turn key changes nothing.
    const double autopilotTurn = Desc().GetRotationSpeed();
    mode.HandleInput(&m_input.GetInput());
    EXPECT_EQ(autopilotTurn, Desc().GetRotationSpeed());

    // Back inside: the saved speed and acceleration return and the keys steer again.
    // (Without input, since the thrust keys set the acceleration again at once.)
    Desc().SetPosition(2500.0, 2500.0);
    mode.HandleInput(nullptr);
    EXPECT_FALSE(MissionMode::IsAutopilot());
    EXPECT_EQ(250.0, Desc().GetSpeed());
    EXPECT_EQ(40.0, Desc().GetAcceleration());
    mode.HandleInput(&m_input.GetInput());
    EXPECT_EQ(static_cast<double>(TURN_RATE), Desc().GetRotationSpeed());

    // A stick deflected past the dead zone turns in proportion; inside it the turn falls
    // through to the keys.
    int proportional = 0;
    int fallThrough = 0;
    for (int32_t raw : {0, 16000, 30000})
    {
        testsupport::ScriptedInput stick(1);
        stick.GetInput().SetBinding(ROTATE_LEFT, DEVICE_JOYSTICK_AXIS, 0); // X, to the left
        stick.JoyAxis(0, 0, raw);
        stick.KeyDown(DIK_NUMPAD9);
        stick.Poll();
        const int32_t value = stick->GetAxis(ROTATE_LEFT);
        mode.HandleInput(&stick.GetInput());
        if (value > 10000)
        {
            ++proportional;
            EXPECT_NEAR(-(TURN_RATE * (value - 10000)) / 22767.0, Desc().GetRotationSpeed(), 1e-3) << raw;
        }
        else
        {
            ++fallThrough;
            EXPECT_EQ(static_cast<double>(TURN_RATE), Desc().GetRotationSpeed()) << raw;
        }
    }
    EXPECT_EQ(2, proportional);
    EXPECT_EQ(1, fallThrough);
}

TEST_F(MissionModeTest, TwoPlayersFlyEachMissionInTurn)
{
    Campaign("[One]\nLevel=field.lvl\nWin1=timepassed 0 endgame\n");
    // Both pilots' files, each on the first mission.
    for (const char* file : {"multiplayer\\player1.sav", "multiplayer\\player2.sav"})
    {
        Pilot pilot(file);
        pilot.SetPilotName(file);
        pilot.SetMissionName("One");
        ASSERT_TRUE(pilot.Save(nullptr));
    }
    g_twoPlayer = true;
    m_pPlayer->LoadPilot("multiplayer\\player1.sav");

    // The first player wins: the campaign stays, the second player's pilot comes in.
    Start();
    int frames = 0;
    EXPECT_EQ(1, RunUntilLeaving(0.5f, frames));
    EXPECT_TRUE(g_secondPlayerTurn);
    EXPECT_STREQ("One", g_campaign.GetMissionName());
    EXPECT_EQ("multiplayer\\player2.sav", m_pPlayer->GetPilot().GetPilotName());

    // The second player wins the last mission: back to the title menu, the game over.
    Start();
    // The scoreboard passed to the other player when the first attempt's level went.
    EXPECT_EQ(1, g_scoreboard.GetCurrentPlayer());
    EXPECT_EQ(0, RunUntilLeaving(0.5f, frames));
    EXPECT_FALSE(g_twoPlayer);
    EXPECT_FALSE(g_secondPlayerTurn);
    EXPECT_EQ("campaign\\korvath.ini", g_campaign.GetFileName());
}
