#pragma once

#include "sim/Controller.h"

class Ship;

// The behaviour of a hive: it never moves and is never removed, however much damage it takes
// (each killing hit still makes it explode and pays its reward), and launches a new computer
// ship from "entity\air000.nme" at its position every 10 to 24 seconds, the first at once.
class SpawnerController : public Controller
{
public:
    // The behaviour byte of an entity file that makes a spawner.
    static constexpr int TYPE = 1;
    static constexpr const char* CHILD_FILE = "entity\\air000.nme";

    explicit SpawnerController(Ship* p_owner);

    int Think(int p_state, float p_dt) override;

    float GetSpawnTimer() const { return m_spawnTimer; }

private:
    Ship* m_pShip;
    float m_spawnTimer = 0.0f;
};
