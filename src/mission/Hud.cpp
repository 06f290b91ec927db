#include "mission/Hud.h"

#include "app/Game.h"
#include "app/ModeCode.h"
#include "app/Settings.h"
#include "gfx/Font.h"
#include "gfx/FontList.h"
#include "gfx/Image.h"
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

Hud::Hud(PlayerShip* p_player) : m_layout(g_settings.GetHudSlots()), m_pPlayer(p_player), m_pFont(nullptr)
{
    m_pFont = g_fontList.GetFont("Tahoma", 14, FONT_BOLD);

    m_pRadar = std::make_unique<Radar>();
    m_pStatusPanel = std::make_unique<StatusPanel>(p_player);
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
    FollowSettings();
    m_messages.push_front(
        std::make_unique<HudMessage>(p_text, p_seconds, p_interval, m_layout.GetMessages().width));
    LayoutMessages();
}

void Hud::FollowSettings()
{
    if (g_settings.GetHudSlots() != m_layout.GetSlots())
    {
        m_layout = HudLayout(g_settings.GetHudSlots());
        LayoutMessages();
    }
}

void Hud::LayoutMessages()
{
    const HudLayout::MessagePlace& place = m_layout.GetMessages();
    // From the edge the messages keep to: down from the top of the newest one, or up from its
    // bottom.
    const bool upwards = place.vertical == HudAlign::HIGH;
    double y = place.y;
    for (const std::unique_ptr<HudMessage>& message : m_messages)
    {
        const double x = place.horizontal == HudAlign::HIGH ? place.x - message->GetTextWidth() : place.x;
        if (upwards)
        {
            y -= message->GetHeight();
            message->SetPosition(static_cast<float>(x), static_cast<float>(y));
            y -= MESSAGE_GAP;
        }
        else
        {
            message->SetPosition(static_cast<float>(x), static_cast<float>(y));
            y += message->GetHeight() + MESSAGE_GAP;
        }
    }
}

void Hud::Update(float p_dt)
{
    FollowSettings();
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
    FollowSettings();
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();

    for (const std::unique_ptr<HudMessage>& message : m_messages)
    {
        message->Render();
    }
    if (m_pFont != nullptr && InMission())
    {
        const HudLayout::Rect& money = m_layout.GetMoney();
        m_pFont->Print(1.0, 1.0, 1.0, 1.0, money.left, money.top, "Money: $%d", GetMoney());
    }
    const Settings::Tint& tint = g_settings.GetTint();
    for (GameObject* piece : {static_cast<GameObject*>(m_pRadar.get()), static_cast<GameObject*>(m_pStatusPanel.get())})
    {
        if (Image* picture = piece->GetImage())
        {
            picture->SetColor(tint[Settings::TINT_RED], tint[Settings::TINT_GREEN], tint[Settings::TINT_BLUE],
                              tint[Settings::TINT_ALPHA]);
        }
    }
    m_pRadar->Draw(m_layout.GetRadar(), m_pPlayer);
    if (m_pPlayer != nullptr)
    {
        const HudLayout::Rect& panel = m_layout.GetStatus();
        m_pStatusPanel->Draw(panel.left, panel.top, *m_pPlayer);
    }
}
