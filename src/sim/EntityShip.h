#pragma once

#include "sim/Ship.h"

// A computer ship: its pictures, limits, weapon, armour, shield, behaviour, team and collision
// box come from an entity file ("entity\air000.nme").
class EntityShip : public Ship
{
public:
    // Speed 500, heading 90 (east), not accelerating or turning.
    EntityShip();

    bool IsEnemy() const override { return true; }
    // Reads an entity file: hull picture base name, minimum and maximum speed, thrust, turn
    // rate, the weapon of mount 0 by catalogue name, armour, shield, behaviour (1 spawner,
    // otherwise attack), team and collision box. False for a null name or a file that does
    // not open; the ship then keeps what it had.
    bool Load(const char* p_fileName) override;

    // 2: slide left, 3: slide right, 4: no sliding; anything else changes nothing.
    void SetStrafe(int p_direction);
};
