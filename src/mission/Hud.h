#pragma once

#include "mission/HudMessage.h"

#include <array>
#include <cstdint>
#include <list>
#include <memory>

class Font;
class PlayerShip;
class Radar;
class StatusPanel;

// What the mission draws over the world in screen coordinates: the radar in the top-left
// corner, the ship's status panel in the top-right one, the player's money, and the timed
// messages of the mission's actions, newest at the top.
class Hud
{
public:
    static constexpr int32_t NUM_SLOTS = 8;
    // Where the messages go: the newest at the top, each next one below the one before it.
    static constexpr int32_t MESSAGE_X = 256;
    static constexpr int32_t MESSAGE_Y = 40;
    static constexpr int32_t MESSAGE_GAP = 30;
    static constexpr int32_t MONEY_X = 25;
    static constexpr int32_t MONEY_Y = 700;

    struct Slot
    {
        double x = 0.0;
        double y = 0.0;
    };

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
    // and fades out over their last 30 percent; it goes on top of the others.
    void AddMessage(const char* p_text, float p_seconds, float p_interval);
    void Update(float p_dt);
    // Resets the model-view matrix: the HUD is drawn in screen coordinates.
    void Render();

    // The player's money; 0 without a player.
    int32_t GetMoney() const;

    // The messages, newest first.
    const std::list<std::unique_ptr<HudMessage>>& GetMessages() const { return m_messages; }
    const Slot& GetSlot(int32_t p_slot) const { return m_slots[static_cast<size_t>(p_slot)]; }
    const std::array<uint8_t, 3>& GetLayout() const { return m_layout; }
    Radar& GetRadar() { return *m_pRadar; }
    StatusPanel& GetStatusPanel() { return *m_pStatusPanel; }

private:
    void LayoutMessages();

    // The slots of the radar, the status panel and a third piece no layout draws yet.
    std::array<uint8_t, 3> m_layout;
    std::array<Slot, NUM_SLOTS> m_slots;
    std::unique_ptr<Radar> m_pRadar;
    std::unique_ptr<StatusPanel> m_pStatusPanel;
    PlayerShip* m_pPlayer; // not owned
    std::list<std::unique_ptr<HudMessage>> m_messages;
    Font* m_pFont;
};
