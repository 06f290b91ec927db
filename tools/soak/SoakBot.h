#pragma once

class Level;
class PlayerShip;
class Ship;

namespace soak
{

// Flies the player's ship the way a player at the keys would: turns towards the nearest
// computer ship that can die, closes in, and fires every mount when it is aimed. The hive
// itself cannot die; with no other ship about, the bot circles the hive, where its brood
// comes out. Outside the play area it turns back towards the middle. Its ship never runs out
// of ammunition and is repaired when badly hurt: the soak is about the battle, not about
// winning it.
class SoakBot
{
public:
    // Fire when the target is this close and within this angle of the heading.
    static constexpr double FIRE_RANGE = 900.0;
    static constexpr double FIRE_ANGLE = 8.0;
    // Closer than this, the bot brakes.
    static constexpr double KEEP_DISTANCE = 300.0;
    // How far from the hive it circles when there is nothing to fight.
    static constexpr double PATROL_RADIUS = 700.0;

    SoakBot(Level& p_level, PlayerShip& p_ship) : m_level(p_level), m_ship(p_ship) {}

    // One frame: steering, thrust and shots (added to the level).
    void Act(float p_dt);

private:
    // The nearest computer ship that can be destroyed, and the nearest spawner.
    void FindTargets(Ship*& p_nearest, Ship*& p_spawner) const;
    void SteerTowards(double p_x, double p_y);
    void KeepFighting();

    Level& m_level;
    PlayerShip& m_ship;
    double m_patrolAngle = 0.0;
};

} // namespace soak
