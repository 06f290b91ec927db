#pragma once

#include "mission/HudLayout.h"
#include "mission/HudMessage.h"

#include <cstdint>
#include <list>
#include <memory>

class Font;
class PlayerShip;
class Radar;
class StatusPanel;

// What the mission draws over the world in screen coordinates: the radar, the ship's status
// panel, the player's money, and the timed messages of the mission's actions, newest nearest
// the screen edge. The radar and the status panel go where the player's settings put them
// (by default the top-left and the top-right corner), in the settings' tint; the messages go
// to the place the settings give them (by default along the top, newest at the top). A
// change of the settings shows in the next frame.
class Hud
{
public:
    // With the default layout the newest message is at (256, 40), each older one below it.
    static constexpr int32_t MESSAGE_X = HudLayout::MESSAGE_X;
    static constexpr int32_t MESSAGE_Y = HudLayout::MESSAGE_Y;
    static constexpr int32_t MESSAGE_GAP = 30;

    // The status panel measures the ammunition bars against what the player's ship carries
    // when it is first given (here or by SetPlayer), so that is done once the ship is ready
    // for the mission.
    explicit Hud(PlayerShip* p_player = nullptr);
    ~Hud();
    Hud(const Hud&) = delete;
    Hud& operator=(const Hud&) = delete;

    void SetPlayer(PlayerShip* p_player);
    PlayerShip* GetPlayer() const { return m_pPlayer; }

    // A message that types one character every p_interval seconds, then shows for p_seconds
    // and fades out over their last 30 percent; it goes nearest the edge, before the others.
    // It wraps at the width of the messages' place at the time (messages already shown keep
    // theirs when the layout changes).
    void AddMessage(const char* p_text, float p_seconds, float p_interval);
    void Update(float p_dt);
    // Resets the model-view matrix: the HUD is drawn in screen coordinates.
    void Render();

    // The player's money; 0 without a player.
    int32_t GetMoney() const;

    // The messages, newest first.
    const std::list<std::unique_ptr<HudMessage>>& GetMessages() const { return m_messages; }
    // Where everything goes, as of the last update or drawing.
    const HudLayout& GetLayout() const { return m_layout; }
    Radar& GetRadar() { return *m_pRadar; }
    StatusPanel& GetStatusPanel() { return *m_pStatusPanel; }

private:
    // Takes up a layout the settings changed to.
    void FollowSettings();
    void LayoutMessages();

    HudLayout m_layout;
    std::unique_ptr<Radar> m_pRadar;
    std::unique_ptr<StatusPanel> m_pStatusPanel;
    PlayerShip* m_pPlayer; // not owned
    std::list<std::unique_ptr<HudMessage>> m_messages;
    Font* m_pFont;
};
