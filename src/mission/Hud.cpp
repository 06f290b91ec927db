#include "mission/Hud.h"

#include "app/Application.h"
#include "app/Game.h"
#include "app/ModeCode.h"
#include "gfx/Font.h"
#include "gfx/FontList.h"
#include "mission/Radar.h"
#include "mission/StatusPanel.h"
#include "platform/Gl.h"
#include "sim/PlayerShip.h"

namespace
{
// The money shows while a mission is being played. An application that is not the game (a
// test) counts as playing one.
bool InMission()
{
    const Game* game = dynamic_cast<const Game*>(g_pApplication);
    return game == nullptr || game->GetModeCode() == MODECODE_MISSION;
}
} // namespace

Hud::Hud(PlayerShip* p_player) : m_layout{0, 2, 6}, m_pPlayer(p_player), m_pFont(nullptr)
{
    m_pFont = g_fontList.GetFont("Tahoma", 14, FONT_BOLD);

    m_pRadar = std::make_unique<Radar>();
    m_pStatusPanel = std::make_unique<StatusPanel>(p_player);
    // The radar picture's margin of 96 pixels lies off the screen in the right-hand and the
    // bottom slots. The other five slots have no settled place; no layout uses them.
    const double width = Application::SCREEN_WIDTH;
    const double height = Application::SCREEN_HEIGHT;
    const double radarWidth = m_pRadar->GetWidth();
    const double radarHeight = m_pRadar->GetHeight();
    m_slots[0] = Slot{0.0, 0.0};
    m_slots[2] = Slot{width - radarWidth + 96.0, 0.0};
    m_slots[6] = Slot{0.0, height - radarHeight + 96.0};
}

Hud::~Hud()
{
    m_messages.clear();
    m_pRadar.reset();
    m_pStatusPanel.reset();
    if (m_pFont != nullptr)
    {
        g_fontList.ReleaseFont(m_pFont);
        m_pFont = nullptr;
    }
}

void Hud::SetPlayer(PlayerShip* p_player)
{
    m_pPlayer = p_player;
    if (p_player != nullptr && !m_pStatusPanel->HasStartCounts())
    {
        m_pStatusPanel->SetStartCounts(*p_player);
    }
}

void Hud::AddMessage(const char* p_text, float p_seconds, float p_interval)
{
    m_messages.push_front(std::make_unique<HudMessage>(p_text, p_seconds, p_interval));
    LayoutMessages();
}

void Hud::LayoutMessages()
{
    double y = MESSAGE_Y;
    for (const std::unique_ptr<HudMessage>& message : m_messages)
    {
        message->SetPosition(static_cast<float>(MESSAGE_X), static_cast<float>(y));
        y += message->GetHeight() + MESSAGE_GAP;
    }
}

void Hud::Update(float p_dt)
{
    bool removed = false;
    for (auto it = m_messages.begin(); it != m_messages.end();)
    {
        if (!(*it)->Update(p_dt))
        {
            it = m_messages.erase(it);
            removed = true;
        }
        else
        {
            ++it;
        }
    }
    if (removed)
    {
        LayoutMessages();
    }
}

int32_t Hud::GetMoney() const
{
    return m_pPlayer != nullptr ? m_pPlayer->GetPilot().GetMoney() : 0;
}

void Hud::Render()
{
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();

    for (const std::unique_ptr<HudMessage>& message : m_messages)
    {
        message->Render();
    }
    if (m_pFont != nullptr && InMission())
    {
        m_pFont->Print(1.0, 1.0, 1.0, 1.0, MONEY_X, MONEY_Y, "Money: $%d", GetMoney());
    }
    const Slot& radarSlot = m_slots[m_layout[0]];
    m_pRadar->Draw(static_cast<int32_t>(radarSlot.x), static_cast<int32_t>(radarSlot.y), m_pPlayer);
    if (m_pPlayer != nullptr)
    {
        const Slot& panelSlot = m_slots[m_layout[1]];
        m_pStatusPanel->Draw(static_cast<int32_t>(panelSlot.x), static_cast<int32_t>(panelSlot.y), *m_pPlayer);
    }
}
