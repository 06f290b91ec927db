#pragma once

// What the world tells the mission being played, and asks of it. The mission mode hands
// itself to its level; a level without one (a test, a benchmark) simply plays on.
class MissionEvents
{
public:
    virtual ~MissionEvents() = default;

    // The level calls this with true when the player's ship has been destroyed.
    virtual void SetDefeat(bool p_defeat) = 0;
    // While the mission is lost the level draws its tiles and border but no objects.
    virtual bool IsDefeated() const = 0;
    // Whether two players take turns: destroyed computer ships then count on the scoreboard
    // and pay ten times as much.
    virtual bool IsTwoPlayer() const { return false; }
    // A computer ship was destroyed in a two-player game.
    virtual void CountTwoPlayerKill() {}
};
