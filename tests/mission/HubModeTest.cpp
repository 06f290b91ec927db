// The hub between missions as the player meets it: its buttons at their places, the shop over
// it, and the two-player scoreboard from the pilot files.
#include "app/ModeCode.h"
#include "app/Renderer.h"
#include "app/Settings.h"
#include "mission/Campaign.h"
#include "mission/HubMode.h"
#include "mission/MissionMode.h"
#include "mission/Scoreboard.h"
#include "mission/HudTestSupport.h"
#include "pilot/Pilot.h"
#include "pilot/Shop.h"
#include "platform/Gl.h"
#include "platform/Window.h"
#include "sim/CombatSupport.h"
#include "sim/PlayerShip.h"
#include "support/GlFixture.h"
#include "support/ScriptedInput.h"
#include "ui/Button.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

namespace
{
constexpr float DT = 0.05f;
constexpr const char* PILOT_FILE = "Saves\\Tester0.sav";
// The scoreboard's corner of the screen: its title, both players' names, kills and money.
constexpr int SCORE_X = 350;
constexpr int SCORE_Y = 45;
constexpr int SCORE_WIDTH = 420;
constexpr int SCORE_HEIGHT = 135;

// The pixels of a screen rectangle of the back buffer, read at once.
std::vector<uint8_t> ReadRegion(int p_x, int p_y, int p_width, int p_height)
{
    std::vector<uint8_t> pixels(static_cast<size_t>(p_width) * p_height * 4);
    GLint viewport[4] = {0, 0, 0, 0};
    glGetIntegerv(GL_VIEWPORT, viewport);
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    glReadBuffer(GL_BACK);
    glReadPixels(viewport[0] + p_x, viewport[1] + viewport[3] - p_y - p_height, p_width, p_height, GL_RGBA,
                 GL_UNSIGNED_BYTE, pixels.data());
    return pixels;
}

class HubModeTest : public testsupport::GlFixture
{
protected:
    void SetUp() override
    {
        GlFixture::SetUp();
        if (!StartApplication())
        {
            GTEST_SKIP() << "no display";
        }
        hudtest::WriteGamePictures({"art\\planets.bmp", "art\\button_up.bmp", "art\\button_down.bmp",
                                    "art\\box_topleft.bmp", "art\\box_topright.bmp", "art\\box_bottomleft.bmp",
                                    "art\\box_bottomright.bmp", "art\\box_top.bmp", "art\\box_left.bmp",
                                    "art\\box_right.bmp", "art\\box_bottom.bmp", "art\\menu\\ship_display.bmp",
                                    "art\\up_arrow_button_up.bmp", "art\\up_arrow_button_down.bmp",
                                    "art\\down_arrow_button_up.bmp", "art\\down_arrow_button_down.bmp", "art\\cursor.bmp"});
        std::filesystem::create_directories("Saves");
        std::filesystem::create_directories("multiplayer");
        std::filesystem::create_directories("Campaign");
        std::ofstream("Campaign/test.ini") << "[Entry]\nFirstMission=One\n"
                                           << "[One]\nBrief=The first briefing.\n"
                                           << "[Two]\nBrief=The second briefing.\nShop=none.shp\n";
        g_campaign.Reload("Campaign/test.ini");

        m_previousPlayer = Mode::s_pPlayer;
        m_pPlayer = std::make_unique<PlayerShip>();
        m_pPlayer->GetPilot().SetFileName(PILOT_FILE);
        Mode::s_pPlayer = m_pPlayer.get();
        // The hub reads the shared cursor: it follows the scripted mouse.
        if (!Mode::s_cursor.Init(nullptr, 0.0, 0.0, m_input.GetMouse()))
        {
            Mode::s_cursor.Rebind(m_input.GetMouse());
        }
        g_twoPlayer = false;
        g_scoreboard.Reset();
    }
    void TearDown() override
    {
        m_pHub.reset();
        Mode::s_cursor.Rebind(nullptr);
        Mode::s_pPlayer = m_previousPlayer;
        m_pPlayer.reset();
        g_twoPlayer = false;
        g_scoreboard.Reset();
        g_campaign.Reload(Campaign::DEFAULT_FILE);
        GlFixture::TearDown();
    }

    HubMode& MakeHub()
    {
        m_pHub.reset();
        m_pHub = std::make_unique<HubMode>();
        m_pHub->Init(&m_input.GetInput());
        m_app.SetMode(m_pHub.get());
        return *m_pHub;
    }
    int32_t Frame(int32_t p_x, int32_t p_y, bool p_down)
    {
        m_input.MouseButton(0, p_down);
        m_input.Poll();
        Mode::s_cursor.SetPosition(static_cast<float>(p_x), static_cast<float>(p_y));
        return m_pHub->Update(DT);
    }
    // Presses and lets go at a point; answers the code of the frame the button came up in.
    int32_t Click(int32_t p_x, int32_t p_y)
    {
        EXPECT_EQ(MODECODE_STAY, Frame(p_x, p_y, false));
        EXPECT_EQ(MODECODE_STAY, Frame(p_x, p_y, true));
        return Frame(p_x, p_y, false);
    }
    std::vector<uint8_t> Draw(int p_x, int p_y, int p_width, int p_height, void (*p_draw)(HubMode&))
    {
        m_app.GetRenderer()->BeginFrame();
        p_draw(*m_pHub);
        return ReadRegion(p_x, p_y, p_width, p_height);
    }
    void SaveScreenshot(const std::string& p_name)
    {
        const char* dir = std::getenv("KORVATH_TEST_SCREENSHOT_DIR");
        if (dir != nullptr && dir[0] != '\0')
        {
            m_app.GetWindow()->SaveScreenshot((std::string(dir) + "/" + p_name).c_str());
        }
    }

    testsupport::ScriptedInput m_input;
    std::unique_ptr<PlayerShip> m_pPlayer;
    PlayerShip* m_previousPlayer = nullptr;
    std::unique_ptr<HubMode> m_pHub;
};
} // namespace

TEST_F(HubModeTest, ButtonsSitWhereThePlayerLooksAndQuitGoesBackToTheFirstMission)
{
    // The pilot has reached the second mission and saved it.
    m_pPlayer->GetPilot().SetMissionName("Two");
    ASSERT_TRUE(m_pPlayer->GetPilot().Save(nullptr));
    g_campaign.SetMission("Two");
    HubMode& hub = MakeHub();
    EXPECT_EQ("The second briefing.", hub.GetBriefing().GetLine(0));
    EXPECT_EQ(250.0, hub.GetBriefing().GetX());
    EXPECT_EQ(300.0, hub.GetBriefing().GetY());
    EXPECT_EQ(600, hub.GetBriefing().GetMaxWidth());
    EXPECT_EQ("Start Mission", hub.GetStartButton()->GetText());
    EXPECT_EQ("Shop", hub.GetShopButton()->GetText());
    EXPECT_EQ("Quit", hub.GetQuitButton()->GetText());

    // Nothing happens until a button is clicked.
    EXPECT_EQ(MODECODE_STAY, Click(400, 600));
    EXPECT_EQ(MODECODE_MENUS, Click(560 + 20, 680 + 20));
    EXPECT_STREQ("One", g_campaign.GetMissionName());
    Pilot saved(PILOT_FILE);
    ASSERT_TRUE(saved.Load(nullptr));
    EXPECT_EQ("Two", saved.GetMissionName());

    MakeHub();
    EXPECT_EQ(MODECODE_MISSION, Click(850 + 20, 680 + 20));
}

TEST_F(HubModeTest, WithTheShopOpenTheHubButtonsNeitherDrawNorReact)
{
    g_campaign.SetMission("Two");
    m_pPlayer->GetPilot().SetMoney(4321);
    HubMode& hub = MakeHub();
    EXPECT_EQ(MODECODE_STAY, Click(705 + 20, 680 + 20));
    ASSERT_NE(nullptr, hub.GetShop());
    // "Campaign/" + the mission's shop, which is not there: an empty shop.
    EXPECT_EQ("", hub.GetShop()->GetTitle().GetText());

    // Where "Quit" and "Start Mission" were, clicks do nothing to the hub.
    EXPECT_EQ(MODECODE_STAY, Click(560 + 20, 680 + 20));
    EXPECT_STREQ("Two", g_campaign.GetMissionName());
    ASSERT_NE(nullptr, hub.GetShop());

    // The screen is the shop's alone: the row of hub buttons shows what the shop draws there
    // (the cursor, drawn last, is moved out of the way).
    Frame(100, 100, false);
    constexpr int ROW_X = 560;
    constexpr int ROW_Y = 680;
    constexpr int ROW_WIDTH = 430;
    constexpr int ROW_HEIGHT = 40;
    const std::vector<uint8_t> withHub =
        Draw(ROW_X, ROW_Y, ROW_WIDTH, ROW_HEIGHT, [](HubMode& p_hub) { p_hub.Render(); });
    SaveScreenshot("hub-shop-open.png");
    const std::vector<uint8_t> shopAlone =
        Draw(ROW_X, ROW_Y, ROW_WIDTH, ROW_HEIGHT, [](HubMode& p_hub) { p_hub.GetShop()->Render(); });
    EXPECT_TRUE(withHub == shopAlone);
    // The hub's buttons over the shop would show there.
    const std::vector<uint8_t> buttonsOver = Draw(ROW_X, ROW_Y, ROW_WIDTH, ROW_HEIGHT, [](HubMode& p_hub) {
        p_hub.GetShop()->Render();
        p_hub.GetQuitButton()->Render();
        p_hub.GetStartButton()->Render();
    });
    EXPECT_FALSE(buttonsOver == shopAlone);

    // "Done" (over "Start Mission") saves the pilot and closes the shop, and does not start
    // the mission on its way.
    EXPECT_EQ(MODECODE_STAY, Click(788 + 70, 680 + 20));
    EXPECT_EQ(nullptr, hub.GetShop());
    Pilot saved(PILOT_FILE);
    ASSERT_TRUE(saved.Load(nullptr));
    EXPECT_EQ(4321, saved.GetMoney());
    EXPECT_EQ(MODECODE_STAY, Frame(788 + 70, 680 + 20, false));
    EXPECT_EQ(MODECODE_MISSION, Click(850 + 20, 680 + 20));
}

TEST_F(HubModeTest, TheScoreboardShowsKillsAndPilotMoneyOnlyInATwoPlayerGame)
{
    Pilot first(MissionMode::PLAYER1_FILE);
    first.SetMoney(1234);
    ASSERT_TRUE(first.Save(nullptr));
    // The second player's file is missing: $0.
    g_scoreboard.AddKill();
    g_scoreboard.AddKill();
    g_scoreboard.AddKill();
    g_scoreboard.SwitchPlayer();
    g_scoreboard.AddKill();
    HubMode& hub = MakeHub();

    std::vector<std::string> texts;
    for (const auto& text : hub.GetScoreboard())
    {
        texts.push_back(text->GetText());
    }
    EXPECT_EQ((std::vector<std::string>{"Scoreboard", "Player 1", "Kills:", "3", "Money:", "$1234", "Player 2",
                                        "Kills:", "1", "Money:", "$0"}),
              texts);
    EXPECT_EQ(420.0, hub.GetScoreboard()[0]->GetX());
    EXPECT_EQ(560.0, hub.GetScoreboard()[6]->GetX());
    EXPECT_EQ(660.0, hub.GetScoreboard()[10]->GetX());
    EXPECT_EQ(155.0, hub.GetScoreboard()[10]->GetY());

    // One player: the scoreboard's corner shows the planets and nothing else.
    const std::vector<uint8_t> onePlayer =
        Draw(SCORE_X, SCORE_Y, SCORE_WIDTH, SCORE_HEIGHT, [](HubMode& p_hub) { p_hub.Render(); });
    SaveScreenshot("hub-one-player.png");
    Image planets;
    ASSERT_TRUE(planets.Load(HubMode::BACKGROUND));
    m_app.GetRenderer()->BeginFrame();
    planets.Draw(0.0, 0.0, 0.0, false);
    const std::vector<uint8_t> background = ReadRegion(SCORE_X, SCORE_Y, SCORE_WIDTH, SCORE_HEIGHT);
    EXPECT_TRUE(onePlayer == background);

    g_twoPlayer = true;
    const std::vector<uint8_t> twoPlayers =
        Draw(SCORE_X, SCORE_Y, SCORE_WIDTH, SCORE_HEIGHT, [](HubMode& p_hub) { p_hub.Render(); });
    SaveScreenshot("hub-two-players.png");
    size_t changed = 0;
    for (size_t i = 0; i < background.size(); ++i)
    {
        changed += background[i] != twoPlayers[i] ? 1 : 0;
    }
    // The texts cover a good part of the corner.
    EXPECT_GT(changed, background.size() / 50);
}

TEST_F(HubModeTest, TheBriefingShowsTheDifficultyInPlay)
{
    g_campaign.SetMission("Two");
    const HubMode& medium = MakeHub();
    EXPECT_EQ("Difficulty: Medium", medium.GetDifficultyText().GetText());
    EXPECT_EQ(250.0, medium.GetDifficultyText().GetX());
    EXPECT_EQ(265.0, medium.GetDifficultyText().GetY());

    // Chosen in the options since: the next hub shows it, drawn on its own line above the
    // briefing.
    ASSERT_TRUE(g_settings.SetDifficulty(Settings::DIFFICULTY_HARD));
    const HubMode& hard = MakeHub();
    EXPECT_EQ("Difficulty: Hard", hard.GetDifficultyText().GetText());
    const std::vector<uint8_t> drawn = Draw(250, 265, 200, 30, [](HubMode& p_hub) { p_hub.Render(); });
    SaveScreenshot("hub-difficulty.png");
    Image planets;
    ASSERT_TRUE(planets.Load(HubMode::BACKGROUND));
    m_app.GetRenderer()->BeginFrame();
    planets.Draw(0.0, 0.0, 0.0, false);
    const std::vector<uint8_t> background = ReadRegion(250, 265, 200, 30);
    size_t changed = 0;
    for (size_t i = 0; i < background.size(); ++i)
    {
        changed += background[i] != drawn[i] ? 1 : 0;
    }
    EXPECT_GT(changed, background.size() / 20);
    EXPECT_LT(hard.GetDifficultyText().GetY() + hard.GetDifficultyText().GetHeight(), hard.GetBriefing().GetY());
}
