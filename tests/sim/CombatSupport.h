#pragma once

// Shared by the combat tests: a part catalogue read from the test's own game directory, a
// mission that records what the world tells it, fixed random seeds, and small writers for the
// data files (through the forge's formats, a separate writer from the game's loaders).

#include "app/DevOptions.h"
#include "app/Random.h"
#include "forge/Formats.h"
#include "pilot/PartCatalog.h"
#include "sim/AttackController.h"
#include "sim/EntityShip.h"
#include "sim/MissionEvents.h"
#include "sim/PlayerShip.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>
#include <system_error>

namespace combattest
{

// Writes a record as a game file relative to the working directory, making its folder.
template <typename Record>
void WriteGameFile(const std::string& p_gameName, const Record& p_record)
{
    std::string path = p_gameName;
    for (char& c : path)
    {
        if (c == '\\')
        {
            c = '/';
        }
    }
    std::error_code ec;
    std::filesystem::create_directories(std::filesystem::path(path).parent_path(), ec);
    std::string error;
    ASSERT_TRUE(forge::WriteWholeFile(p_gameName, p_record, error)) << p_gameName << ": " << error;
}

// A catalogue read from the working directory, installed as g_pPartCatalog while it lives.
class ScopedCatalog
{
public:
    ScopedCatalog() : m_previous(g_pPartCatalog)
    {
        m_catalog.Init();
        g_pPartCatalog = &m_catalog;
    }
    ~ScopedCatalog() { g_pPartCatalog = m_previous; }
    ScopedCatalog(const ScopedCatalog&) = delete;
    ScopedCatalog& operator=(const ScopedCatalog&) = delete;

    PartCatalog& Get() { return m_catalog; }

private:
    PartCatalog m_catalog;
    PartCatalog* m_previous;
};

// Random numbers that repeat: the clock seeds (weapon records, controllers) take a fixed seed
// while this lives, and the aim's remembered bullet speed is forgotten.
class FixedSeed
{
public:
    explicit FixedSeed(uint32_t p_seed) : m_hadSeed(g_devOptions.hasSeed), m_oldSeed(g_devOptions.seed)
    {
        g_devOptions.hasSeed = true;
        g_devOptions.seed = p_seed;
        GameSrand(p_seed);
        AttackController::ForgetBulletSpeed();
    }
    ~FixedSeed()
    {
        g_devOptions.hasSeed = m_hadSeed;
        g_devOptions.seed = m_oldSeed;
        AttackController::ForgetBulletSpeed();
    }
    FixedSeed(const FixedSeed&) = delete;
    FixedSeed& operator=(const FixedSeed&) = delete;

private:
    bool m_hadSeed;
    uint32_t m_oldSeed;
};

class RecordingMission : public MissionEvents
{
public:
    void SetDefeat(bool p_defeat) override { m_defeat = p_defeat; }
    bool IsDefeated() const override { return m_defeat; }
    bool IsTwoPlayer() const override { return m_twoPlayer; }
    void CountTwoPlayerKill() override { ++m_twoPlayerKills; }

    bool m_defeat = false;
    bool m_twoPlayer = false;
    int m_twoPlayerKills = 0;
};

// A ship whose numbers and weapons a test sets directly.
template <class ShipBase>
class ProbeOf : public ShipBase
{
public:
    void SetLimits(uint16_t p_min, uint16_t p_max, uint16_t p_thrust, uint16_t p_turnRate)
    {
        this->m_minSpeed = p_min;
        this->m_maxSpeed = p_max;
        this->m_thrust = p_thrust;
        this->m_turnRate = p_turnRate;
    }
    void Mount(int p_mount, Weapon* p_weapon) { this->m_pWeapons[p_mount] = p_weapon; }
    void SetDefences(unsigned p_armour, unsigned p_shield, unsigned p_absorption = Ship::DEFAULT_ABSORPTION)
    {
        this->m_armour = p_armour;
        this->m_maxArmour = p_armour;
        this->m_shield = p_shield;
        this->m_maxShield = p_shield;
        this->m_absorption = p_absorption;
    }
    PhysicalDesc& Desc() { return *this->m_pPhysicalDesc; }
    // Places the ship with a box of no size, so that its centre is its position, and
    // computes its velocity, as an update would.
    void Place(double p_x, double p_y, double p_heading, double p_speed, double p_turnRate = 0.0)
    {
        PhysicalDesc& desc = Desc();
        desc.SetBox(0, 0, 0, 0);
        desc.SetPosition(p_x, p_y);
        desc.SetHeading(p_heading);
        desc.SetSpeed(p_speed);
        desc.SetRotationSpeed(0.0);
        desc.Update(0.0f);
        desc.SetRotationSpeed(p_turnRate);
        this->m_centerX = p_x;
        this->m_centerY = p_y;
    }
};

// A computer ship.
using ProbeShip = ProbeOf<EntityShip>;

// A player's ship.
using ProbePlayer = ProbeOf<PlayerShip>;

// A computer ship: a drone-like attacker with a machine gun (or p_weapon).
inline forge::EntityRecord MakeEntity(const std::string& p_weapon = "Machine Gun", int32_t p_armour = 40,
                                      int32_t p_shield = 0, uint8_t p_behaviour = 0)
{
    forge::EntityRecord record;
    record.hullPicture = "art\\hulls\\drone\\drone";
    record.minSpeed = 100;
    record.maxSpeed = 300;
    record.acceleration = 100;
    record.turnRate = 150;
    record.weapon = p_weapon;
    record.armour = p_armour;
    record.shield = p_shield;
    record.behaviour = p_behaviour;
    record.team = 1;
    record.box = forge::CollisionBox{6, 6, 28, 28};
    return record;
}

// The machine gun file the catalogue reads: damage 6 .. 12.
inline forge::WeaponRecord MakeMachineGun(int32_t p_min = 6, int32_t p_max = 13)
{
    forge::WeaponRecord record;
    record.header.picture = "art\\parts\\machine_gun.bmp";
    record.header.name = "Machine Gun";
    record.header.price = 123;
    record.minDamage = p_min;
    record.maxDamage = p_max;
    record.extraValue = 1200;
    record.extraByte = 8;
    return record;
}

} // namespace combattest
