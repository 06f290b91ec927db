#pragma once

#include <cstdint>
#include <memory>

#include "app/Mode.h"
#include "gfx/Camera.h"
#include "menus/ObjectivesScreen.h"
#include "mission/MissionLink.h"
#include "sim/MissionEvents.h"

class Animation;
class Hud;
class InGameMenu;
class InputSystem;
class Level;

// Whether a two-player game is running, and whether the second player's pilot is the one in
// the player's ship.
extern bool g_twoPlayer;
extern bool g_secondPlayerTurn;

// Plays the campaign's current mission: builds its level, flies the player's ship from the
// controls, asks the campaign every frame whether the mission is won or lost, shows the
// victory or defeat banner for two seconds and then leads on to the hub, the ending, or (at
// the end of a two-player campaign) the title menu.
class MissionMode : public GameplayMode, public MissionEvents, public MissionLink
{
public:
    static constexpr double BANNER_SECONDS = 2.0;
    static constexpr double BANNER_X = 300.0;
    static constexpr double BANNER_Y = 300.0;
    // Outside the play area the autopilot turns the ship back at this rate.
    static constexpr float AUTOPILOT_TURN_RATE = 200.0f;
    static constexpr double AUTOPILOT_SPEED = 100.0;
    static constexpr double AUTOPILOT_ACCELERATION = 300.0;
    // A joystick axis steers only beyond this much deflection from centre.
    static constexpr int32_t AXIS_DEAD_ZONE = 10000;
    static constexpr double AXIS_RANGE = 22767.0;
    static constexpr const char* PLAYER1_FILE = "multiplayer\\player1.sav";
    static constexpr const char* PLAYER2_FILE = "multiplayer\\player2.sav";
    static constexpr const char* CAMPAIGN_FILE = "campaign\\korvath.ini";

    MissionMode();
    ~MissionMode() override;

    // Does nothing: the main loop calls Init with the input system once the mode is current.
    bool Initialize() override { return false; }
    bool Init(InputSystem* p_input);
    bool Shutdown() override;
    int32_t Update(float p_dt) override;
    bool Render() override;
    bool HandleInput(InputSystem* p_input) override;
    void OnDisplayReset() override;
    // The level's border takes its wander from the random numbers when it is drawn.
    void PassUndrawnFrame() override;

    // The level calls this with true when the player's ship is destroyed.
    void SetDefeat(bool p_defeat) override { s_defeat = p_defeat; }
    bool IsDefeated() const override { return s_defeat; }
    bool IsTwoPlayer() const override { return g_twoPlayer; }
    void CountTwoPlayerKill() override;

    Level* GetLevel() override { return m_pLevel.get(); }
    PlayerShip* GetPlayer() override { return s_pPlayer; }
    void AddMessage(const char* p_text, float p_seconds, float p_interval) override;
    void AddObjective(const char* p_text, int p_id) override;
    void MarkObjectiveDone(int p_id) override;

    bool IsVictory() const { return m_victory; }
    Hud* GetHud() const { return m_pHud.get(); }
    InGameMenu* GetInGameMenu() const { return m_pInGameMenu.get(); }
    ObjectivesScreen& GetObjectivesScreen() { return m_objectivesScreen; }
    const Camera& GetCamera() const { return m_camera; }

    static bool IsAutopilot() { return s_autopilot; }
    static double GetBannerTime() { return s_bannerTime; }

private:
    // Outside the play area the ship turns back by itself; inside, the controls steer it.
    void Steer(InputSystem* p_input);
    int32_t LeaveAfterBanner();

    std::unique_ptr<Level> m_pLevel;
    Camera m_camera;
    std::unique_ptr<InGameMenu> m_pInGameMenu;
    std::unique_ptr<Hud> m_pHud;
    bool m_victory;
    std::unique_ptr<Animation> m_pVictoryBanner;
    std::unique_ptr<Animation> m_pDefeatBanner;
    ObjectivesScreen m_objectivesScreen;

    // Kept from one mission to the next; Shutdown clears the defeat.
    static bool s_defeat;
    static double s_bannerTime;
    static bool s_bannerSoundPlayed;
    static bool s_autopilot;
    static double s_savedSpeed;
    static double s_savedAcceleration;
};
