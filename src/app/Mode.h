#pragma once

#include "input/Cursor.h"

#include <cstdint>

class InputSystem;
class PlayerShip;

// One screen-filling state of the game (slideshow, menus, hub, mission). Exactly one is
// current; the game replaces it, never stacks it.
class Mode
{
public:
    Mode();
    virtual ~Mode();
    Mode(const Mode&) = delete;
    Mode& operator=(const Mode&) = delete;

    virtual bool Initialize() = 0;
    virtual bool Shutdown() = 0;
    // Advances the mode by p_dt seconds; returns a ModeCode.
    virtual int32_t Update(float p_dt) = 0;
    virtual bool Render() = 0;
    virtual bool HandleInput(InputSystem* p_input) = 0;
    // After the window and the OpenGL context were re-created.
    virtual void OnDisplayReset();
    // In place of Render for a frame that is played but not drawn: whatever drawing would have
    // changed in the game happens all the same, so an undrawn frame plays out as a drawn one.
    virtual void PassUndrawnFrame();

    // The one mouse cursor, loaded by the first mode made and kept for the whole run.
    static Cursor s_cursor;
    // The player's ship, made by the first mode and deleted when the program exits.
    static PlayerShip* s_pPlayer;
};

// Common base of the hub and the mission play.
class GameplayMode : public Mode
{
public:
    GameplayMode() = default;
    ~GameplayMode() override = default;
};
