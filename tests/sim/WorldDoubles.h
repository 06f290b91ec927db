#pragma once

// Test doubles for the world: a ship that records its hits, a shot of any hit kind, a
// mission that records defeat.

#include "sim/MissionEvents.h"
#include "sim/Projectile.h"
#include "sim/WorldObject.h"

namespace worldtest
{

// Destructions of the doubles, so tests can tell destroyed from unlinked.
inline int g_destroyed = 0;

class TestShip : public WorldObject
{
public:
    TestShip(double p_x, double p_y, uint8_t p_team = TEAM_COMPUTER, bool p_enemy = true) : m_enemy(p_enemy)
    {
        m_team = p_team;
        InitPhysicalDesc(); // the default 32 x 32 box
        Place(p_x, p_y);
    }
    ~TestShip() override { ++g_destroyed; }
    bool IsEnemy() const override { return m_enemy; }
    void TakeDamage(unsigned p_amount) override
    {
        m_damage += p_amount;
        ++m_hits;
    }
    // Moves there, world shape and velocities included.
    void Place(double p_x, double p_y)
    {
        m_pPhysicalDesc->SetPosition(p_x, p_y);
        m_pPhysicalDesc->Update(0.0f);
    }
    PhysicalDesc& Desc() { return *m_pPhysicalDesc; }

    unsigned m_damage = 0;
    int m_hits = 0;

private:
    bool m_enemy;
};

class TestShot : public Projectile
{
public:
    TestShot(double p_x, double p_y, uint8_t p_team, uint8_t p_hitKind = HIT_KIND_DEFAULT, unsigned p_damage = 5)
    {
        m_hitKind = p_hitKind;
        SetDamage(p_damage, p_team);
        InitPhysicalDesc();
        m_pPhysicalDesc->SetBox(4, 4, 0, 0);
        m_pPhysicalDesc->SetPosition(p_x, p_y);
        m_pPhysicalDesc->Update(0.0f);
    }
    ~TestShot() override { ++g_destroyed; }
    bool Update(float p_dt) override { return WorldObject::Update(p_dt); }
};

class RecordingMission : public MissionEvents
{
public:
    void SetDefeat(bool p_defeat) override { m_defeat = p_defeat; }
    bool IsDefeated() const override { return m_defeat; }
    bool m_defeat = false;
};

} // namespace worldtest
