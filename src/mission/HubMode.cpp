#include "mission/HubMode.h"

#include "app/ModeCode.h"
#include "app/Settings.h"
#include "gfx/Font.h"
#include "mission/Campaign.h"
#include "mission/MissionMode.h"
#include "mission/Scoreboard.h"
#include "pilot/Pilot.h"
#include "pilot/Shop.h"
#include "ui/Button.h"
#include "ui/FramedBox.h"
#include "ui/MenuButton.h"
#include "ui/UiDraw.h"

#include <cstdio>
#include <string>
#include <utility>

namespace
{
const char* const BUTTON_UP = "art\\button_up.bmp";
const char* const BUTTON_DOWN = "art\\button_down.bmp";
constexpr int32_t BUTTON_FONT_SIZE = 14;
constexpr int32_t BRIEFING_FONT_SIZE = 18;
constexpr double BRIEFING_GREY = 0.9;

constexpr int32_t TITLE_X = 420;
constexpr int32_t TITLE_Y = 50;
// Each player's column lies this much right of the one before.
constexpr int32_t COLUMN_STEP = 200;
constexpr int32_t PLAYER_X = 360;
constexpr int32_t PLAYER_Y = 100;
constexpr int32_t LABEL_X = 375;
constexpr int32_t VALUE_X = 460;
constexpr int32_t KILLS_Y = 130;
constexpr int32_t MONEY_Y = 155;
constexpr int32_t LINE_SIZE = 14;
// The panel under the scoreboard: a dark, see-through box around its texts.
constexpr int32_t PANEL_X = 340;
constexpr int32_t PANEL_Y = 38;
constexpr int32_t PANEL_WIDTH = 410;
constexpr int32_t PANEL_HEIGHT = 150;
constexpr float PANEL_SCALE = 0.4f;
constexpr uint8_t PANEL_RGBA[4] = {70, 80, 110, 200};
const char* const PILOT_FILES[2] = {MissionMode::PLAYER1_FILE, MissionMode::PLAYER2_FILE};
} // namespace

HubMode::HubMode()
{
    BuildScoreboard();
    Initialize();
}

HubMode::~HubMode()
{
    HubMode::Shutdown();
}

StaticText& HubMode::AddScoreText(const char* p_text, int32_t p_size, int32_t p_style, int32_t p_x, int32_t p_y)
{
    auto text = std::make_unique<StaticText>();
    text->SetFont("Tahoma", p_size, p_style);
    text->SetText(p_text);
    text->SetPosition(static_cast<float>(p_x), static_cast<float>(p_y));
    m_scoreboard.push_back(std::move(text));
    return *m_scoreboard.back();
}

void HubMode::BuildScoreboard()
{
    m_pScorePanel = std::make_unique<FramedBox>();
    m_pScorePanel->SetScale(PANEL_SCALE);
    m_pScorePanel->SetSize(PANEL_WIDTH, PANEL_HEIGHT);
    m_pScorePanel->SetColor(PANEL_RGBA[0], PANEL_RGBA[1], PANEL_RGBA[2], PANEL_RGBA[3]);
    m_pScorePanel->SetPosition(static_cast<float>(PANEL_X), static_cast<float>(PANEL_Y));
    AddScoreText("Scoreboard", 20, FONT_BOLD, TITLE_X, TITLE_Y);
    for (int player = 0; player < 2; ++player)
    {
        const int32_t dx = COLUMN_STEP * player;
        char text[32];
        std::snprintf(text, sizeof(text), "Player %d", player + 1);
        AddScoreText(text, 16, FONT_BOLD, PLAYER_X + dx, PLAYER_Y).SetColor(1.0, 0.5, 0.5, 1.0);
        AddScoreText("Kills:", LINE_SIZE, 0, LABEL_X + dx, KILLS_Y);
        std::snprintf(text, sizeof(text), "%d", g_scoreboard.GetKills(player));
        AddScoreText(text, LINE_SIZE, 0, VALUE_X + dx, KILLS_Y);
        AddScoreText("Money:", LINE_SIZE, 0, LABEL_X + dx, MONEY_Y);
        // A file that cannot be read shows a new record's money.
        Pilot pilot(PILOT_FILES[player]);
        pilot.Load(nullptr);
        std::snprintf(text, sizeof(text), "$%d", pilot.GetMoney());
        AddScoreText(text, LINE_SIZE, 0, VALUE_X + dx, MONEY_Y);
    }
}

bool HubMode::Init(InputSystem* p_input)
{
    (void)p_input;
    m_pShop.reset();
    m_background.Load(BACKGROUND);
    m_pStartButton = ui::MakeMenuButton(&s_cursor, BUTTON_UP, BUTTON_DOWN, "Start Mission", BUTTON_FONT_SIZE, START_X,
                                        BUTTON_Y, BUTTON_WIDTH, BUTTON_HEIGHT);
    m_pShopButton = ui::MakeMenuButton(&s_cursor, BUTTON_UP, BUTTON_DOWN, "Shop", BUTTON_FONT_SIZE, SHOP_X, BUTTON_Y,
                                       BUTTON_WIDTH, BUTTON_HEIGHT);
    m_pQuitButton = ui::MakeMenuButton(&s_cursor, BUTTON_UP, BUTTON_DOWN, "Quit", BUTTON_FONT_SIZE, QUIT_X, BUTTON_Y,
                                       BUTTON_WIDTH, BUTTON_HEIGHT);
    m_briefing.SetFont("Tahoma", BRIEFING_FONT_SIZE, 0);
    m_briefing.SetColor(BRIEFING_GREY, BRIEFING_GREY, BRIEFING_GREY, 1.0);
    m_briefing.SetPosition(static_cast<float>(BRIEFING_X), static_cast<float>(BRIEFING_Y));
    m_briefing.SetMaxWidth(BRIEFING_WIDTH);
    m_briefing.SetText(g_campaign.GetBriefing());
    const std::string difficulty =
        std::string("Difficulty: ") + Settings::GetDifficultyName(g_settings.GetDifficulty());
    m_difficulty.SetFont("Tahoma", BRIEFING_FONT_SIZE, FONT_BOLD);
    m_difficulty.SetColor(BRIEFING_GREY, BRIEFING_GREY, BRIEFING_GREY, 1.0);
    m_difficulty.SetPosition(static_cast<float>(BRIEFING_X), static_cast<float>(DIFFICULTY_Y));
    m_difficulty.SetText(difficulty.c_str());
    return true;
}

bool HubMode::Shutdown()
{
    m_pShop.reset();
    return true;
}

int32_t HubMode::Update(float p_dt)
{
    s_cursor.Update(p_dt);
    if (m_pShop)
    {
        if (m_pShop->Update(p_dt))
        {
            m_pShop.reset();
        }
        return MODECODE_STAY;
    }
    if (!m_pStartButton)
    {
        return MODECODE_STAY;
    }
    int32_t start = CLICK_NONE;
    int32_t shop = CLICK_NONE;
    int32_t quit = CLICK_NONE;
    for (const auto& [button, click] : {std::pair{m_pStartButton.get(), &start}, std::pair{m_pShopButton.get(), &shop},
                                       std::pair{m_pQuitButton.get(), &quit}})
    {
        button->Update(p_dt);
        button->GetClick(click);
    }
    if (start != CLICK_NONE)
    {
        return MODECODE_MISSION;
    }
    if (shop != CLICK_NONE)
    {
        m_pShop = std::make_unique<Shop>(g_campaign.GetShopFile(), &m_background, s_pPlayer, &s_cursor);
        return MODECODE_STAY;
    }
    if (quit != CLICK_NONE)
    {
        g_campaign.Reset();
        return MODECODE_MENUS;
    }
    return MODECODE_STAY;
}

bool HubMode::Render()
{
    if (m_pShop)
    {
        m_pShop->Render();
    }
    else
    {
        if (ui::HasPicture(m_background))
        {
            m_background.Draw(0.0, 0.0, 0.0, false);
        }
        if (g_twoPlayer)
        {
            m_pScorePanel->Render();
            for (const auto& text : m_scoreboard)
            {
                text->Render();
            }
        }
        for (Button* button : {m_pStartButton.get(), m_pShopButton.get(), m_pQuitButton.get()})
        {
            if (button != nullptr)
            {
                button->Render();
            }
        }
        m_difficulty.Render();
        m_briefing.Render();
    }
    s_cursor.Render();
    return true;
}

bool HubMode::HandleInput(InputSystem* p_input)
{
    (void)p_input;
    return true;
}
