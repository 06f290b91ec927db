#pragma once

class Level;
class PlayerShip;

// What the campaign's triggers need of the mission being played: its level, the player's
// ship, the HUD's messages and the objectives screen. The mission play mode attaches itself
// to the campaign for its lifetime; while none is attached no mission is being played, and
// the tests of the world (all but "objectives") never hold.
class MissionLink
{
public:
    virtual ~MissionLink() = default;

    // The mission's level; null while it has none.
    virtual Level* GetLevel() = 0;
    virtual PlayerShip* GetPlayer() = 0;
    // A timed message on the HUD: typed one character every p_interval seconds, then shown
    // for p_seconds.
    virtual void AddMessage(const char* p_text, float p_seconds, float p_interval) = 0;
    // A line on the objectives screen.
    virtual void AddObjective(const char* p_text, int p_id) = 0;
    // Ticks the lines of objective p_id on the objectives screen.
    virtual void MarkObjectiveDone(int p_id) = 0;
};
