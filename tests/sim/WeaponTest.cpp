#include "sim/BfgShot.h"
#include "sim/Bomb.h"
#include "sim/Bullet.h"
#include "sim/CombatSupport.h"
#include "sim/LaserBeam.h"
#include "sim/Level.h"
#include "sim/Missile.h"
#include "sim/Weapon.h"
#include "support/WorkDir.h"

#include <gtest/gtest.h>

#include <climits>
#include <memory>

using combattest::FixedSeed;
using combattest::ProbePlayer;
using combattest::ProbeShip;
using combattest::WriteGameFile;

namespace
{
class WeaponTest : public testsupport::WorkDirTest
{
protected:
    void SetUp() override
    {
        WorkDirTest::SetUp();
        // The BFG sweeps the current level around the player's ship.
        ASSERT_TRUE(m_level.Create(80, 128, 128, nullptr));
        m_player.Place(3000.0, 3000.0, 90.0, 0.0);
        m_level.SetPlayer(&m_player);
        m_level.Add(&m_player, LAYER_SHIPS);
        m_shooter.Place(2500.0, 2500.0, 90.0, 120.0);
    }

    std::unique_ptr<MachineGun> LoadGun(int32_t p_min, int32_t p_max)
    {
        WriteGameFile("GOB\\Parts\\weapon000.wpn", combattest::MakeMachineGun(p_min, p_max));
        auto gun = std::make_unique<MachineGun>();
        EXPECT_TRUE(gun->Load("GOB\\Parts\\weapon000.wpn"));
        return gun;
    }

    FixedSeed m_seed{11};
    ProbePlayer m_player;
    Level m_level;
    ProbeShip m_shooter;
};
} // namespace

TEST_F(WeaponTest, EachKindWaitsItsLeastTimeBetweenShots)
{
    Laser laser;
    MultiLaser multi;
    BombBay bombs;
    MissileLauncher missiles;
    Bfg bfg;
    MachineGun gun;
    struct Case
    {
        Weapon* weapon;
        double wait;
    };
    for (const Case& c : {Case{&laser, 0.5}, Case{&multi, 1.0}, Case{&bombs, 0.55}, Case{&missiles, 0.15},
                          Case{&bfg, 5.0}})
    {
        EXPECT_EQ(nullptr, c.weapon->Fire(m_shooter.Desc(), 0, 0, TEAM_COMPUTER, c.wait - 0.01)) << c.weapon->GetName();
        EXPECT_NE(nullptr, c.weapon->Fire(m_shooter.Desc(), 0, 0, TEAM_COMPUTER, c.wait)) << c.weapon->GetName();
    }
    // A machine gun fires on every request: its 20 shots a second are only shown.
    EXPECT_NE(nullptr, gun.Fire(m_shooter.Desc(), 0, 0, TEAM_COMPUTER, 0.0));
    EXPECT_EQ(20.0f, gun.GetFiringRate());

    // The laser's mount fired twice 0.4 s apart yields one bolt, 0.5 s apart a second.
    m_shooter.Mount(0, &laser);
    EXPECT_NE(nullptr, m_shooter.Fire(0, false));
    m_shooter.Update(0.4f);
    EXPECT_EQ(nullptr, m_shooter.Fire(0, false));
    m_shooter.Update(0.1f);
    EXPECT_NE(nullptr, m_shooter.Fire(0, false));

    // Every mount keeps its own time: two BFGs fire back to back, then each refuses for 5 s.
    m_player.Mount(0, &bfg);
    m_player.Mount(1, &bfg);
    m_player.GetPilot().SetEnergy(10);
    EXPECT_NE(nullptr, m_player.Fire(0, true));
    EXPECT_NE(nullptr, m_player.Fire(1, true));
    EXPECT_EQ(nullptr, m_player.Fire(0, true));
    for (int i = 0; i < 49; ++i)
    {
        m_player.Update(0.1f);
    }
    EXPECT_EQ(nullptr, m_player.Fire(1, true));
    m_player.Update(0.1f);
    EXPECT_NE(nullptr, m_player.Fire(1, true));
    EXPECT_EQ(7, m_player.GetPilot().GetEnergy());
}

TEST_F(WeaponTest, DamageIsRolledFromMinimumToOneBelowMaximum)
{
    Laser laser;
    BombBay bombs;
    MissileLauncher missiles;
    Bfg bfg;
    const std::unique_ptr<MachineGun> loaded = LoadGun(6, 13);
    const MachineGun& gun = *loaded;
    struct Case
    {
        const Weapon* weapon;
        unsigned low;
        unsigned high;
    };
    for (const Case& c : {Case{&laser, 8, 19}, Case{&bombs, 25, 34}, Case{&missiles, 35, 44}, Case{&gun, 6, 12}})
    {
        unsigned seenLow = UINT_MAX;
        unsigned seenHigh = 0;
        for (int i = 0; i < 2000; ++i)
        {
            const unsigned damage = c.weapon->RollDamage();
            seenLow = std::min(seenLow, damage);
            seenHigh = std::max(seenHigh, damage);
        }
        EXPECT_EQ(c.low, seenLow) << c.weapon->GetName();
        EXPECT_EQ(c.high, seenHigh) << c.weapon->GetName();
    }
    for (int i = 0; i < 100; ++i)
    {
        ASSERT_EQ(50000u, bfg.RollDamage());
    }

    // The shot carries the roll and the shooter's team.
    std::unique_ptr<Projectile> shot = gun.Fire(m_shooter.Desc(), 0, 0, TEAM_PLAYER, 0.0);
    ASSERT_NE(nullptr, shot);
    EXPECT_EQ(TEAM_PLAYER, shot->GetTeam());
    EXPECT_GE(shot->GetDamage(), 6u);
    EXPECT_LE(shot->GetDamage(), 12u);

    // Records that cannot be rolled deal their minimum, never less than nothing.
    EXPECT_EQ(9u, LoadGun(9, 9)->RollDamage());
    EXPECT_EQ(9u, LoadGun(9, 2)->RollDamage());
    EXPECT_EQ(0u, LoadGun(-50, -40)->RollDamage());
    // The widest range does not overflow (the sanitizer build checks).
    EXPECT_EQ(0u, LoadGun(INT_MIN, INT_MAX)->RollDamage());
}

TEST_F(WeaponTest, EachKindMakesItsOwnProjectile)
{
    Laser laser;
    MultiLaser multi;
    BombBay bombs;
    MissileLauncher missiles;
    Bfg bfg;
    MachineGun gun;
    const PhysicalDesc& desc = m_shooter.Desc();
    EXPECT_NE(nullptr, dynamic_cast<Bullet*>(gun.Fire(desc, 0, 0, 1, 9.0).get()));
    EXPECT_NE(nullptr, dynamic_cast<LaserBeam*>(laser.Fire(desc, 0, 0, 1, 9.0).get()));
    std::unique_ptr<Projectile> burst = multi.Fire(desc, 0, 0, 1, 9.0);
    ASSERT_NE(nullptr, dynamic_cast<MultiLaserBurst*>(burst.get()));
    EXPECT_EQ(3, static_cast<MultiLaserBurst*>(burst.get())->GetNumBeams());
    EXPECT_NE(nullptr, dynamic_cast<Bomb*>(bombs.Fire(desc, 0, 0, 1, 9.0).get()));
    EXPECT_NE(nullptr, dynamic_cast<Missile*>(missiles.Fire(desc, 0, 0, 1, 9.0).get()));
    EXPECT_NE(nullptr, dynamic_cast<BfgShot*>(bfg.Fire(desc, 0, 0, 1, 9.0).get()));
    EXPECT_EQ(Weapon::AMMO_ENERGY, multi.GetAmmoKind());
    EXPECT_EQ(Weapon::AMMO_MISSILES, bombs.GetAmmoKind());
    EXPECT_STREQ("Machine Gun", gun.GetTableName());
    EXPECT_STREQ("Multi-Laser", multi.GetTableName());
}
