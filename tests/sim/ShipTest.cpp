#include "app/Settings.h"
#include "gfx/Animation.h"
#include "sim/AttackController.h"
#include "sim/CombatSupport.h"
#include "sim/EntityShip.h"
#include "sim/HullAnimation.h"
#include "sim/LaserBeam.h"
#include "sim/Level.h"
#include "sim/PlayerShip.h"
#include "sim/QuadNode.h"
#include "sim/Weapon.h"
#include "support/TestBitmaps.h"
#include "support/WorkDir.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <limits>
#include <string>
#include <vector>

using combattest::FixedSeed;
using combattest::ProbePlayer;
using combattest::ProbeShip;
using combattest::RecordingMission;

namespace
{
int CountExplosions(Level& p_level)
{
    std::vector<QuadNode*> leaves;
    p_level.GetRoot()->CollectLeaves(leaves);
    int count = 0;
    for (QuadNode* leaf : leaves)
    {
        for (WorldObject* object = leaf->GetList(LAYER_SHIPS); object != nullptr; object = object->GetNextInList())
        {
            count += dynamic_cast<Animation*>(object) != nullptr ? 1 : 0;
        }
    }
    return count;
}

class ShipWorldTest : public testsupport::WorkDirTest
{
protected:
    void SetUp() override
    {
        WorkDirTest::SetUp();
        ASSERT_TRUE(m_level.Create(80, 128, 128, nullptr));
        m_level.SetPlayer(&m_player);
        m_player.SetPosition(2020.0f, 2020.0f);
        m_level.Add(&m_player, LAYER_SHIPS);
    }

    // A computer ship with a controller, armour p_armour and no shield, at (3000, 3000).
    ProbeShip* AddEnemy(unsigned p_armour)
    {
        auto* ship = new ProbeShip();
        ship->SetDefences(p_armour, 0);
        ship->CreateController(0);
        ship->SetPosition(3000.0f, 3000.0f);
        m_level.Add(ship, LAYER_SHIPS);
        m_level.SetEnemyCount(m_level.GetNumEnemies() + 1);
        return ship;
    }

    FixedSeed m_seed{7};
    ProbePlayer m_player;
    Level m_level;
    RecordingMission m_mission;
};
} // namespace

TEST(Ship, TheShieldTakesAtMostItsAbsorptionOfEachHit)
{
    struct Case
    {
        unsigned shield;
        unsigned hit;
        unsigned shieldAfter;
        unsigned armourLost;
    };
    // Absorption 10 throughout.
    const Case cases[] = {
        {50, 25, 40, 15}, // the shield soaks 10, the armour takes the other 15
        {5, 25, 0, 20},   // the shield had only 5 of the 10: the armour takes 5 + 15
        {50, 6, 44, 0},   // a small hit stays in the shield
        {3, 6, 0, 3},     // ... unless the shield runs out
        {0, 6, 0, 6},     // no shield: all to the armour
    };
    for (const Case& c : cases)
    {
        ProbeShip ship;
        ship.SetDefences(100, c.shield);
        ship.TakeDamage(c.hit);
        EXPECT_EQ(c.shieldAfter, ship.GetShield()) << "shield " << c.shield << ", hit " << c.hit;
        EXPECT_EQ(100 - c.armourLost, ship.GetArmour()) << "shield " << c.shield << ", hit " << c.hit;
        // The shield picture flashes on every hit, also when the shield is empty.
        EXPECT_TRUE(ship.IsHitFlashing());
        EXPECT_FALSE(ship.IsDead());
    }

    // The flash lasts about a second.
    ProbeShip ship;
    ship.SetDefences(100, 0);
    ship.TakeDamage(1);
    for (int i = 0; i < 10; ++i)
    {
        ship.Update(0.1f);
    }
    EXPECT_TRUE(ship.IsHitFlashing());
    ship.Update(0.1f);
    EXPECT_FALSE(ship.IsHitFlashing());
}

TEST(Ship, TheDifficultyScalesAHitByItsFactorRoundingHalvesUp)
{
    struct Case
    {
        unsigned hit;
        unsigned easy;
        unsigned hard;
    };
    const unsigned most = std::numeric_limits<unsigned>::max();
    const Case cases[] = {
        {0, 0, 0}, {1, 1, 2}, {2, 1, 3}, {3, 2, 5}, {25, 13, 38}, {40, 20, 60}, {most, most / 2 + 1, most},
    };
    for (const Case& c : cases)
    {
        EXPECT_EQ(c.hit, PlayerShip::ScaleDamage(c.hit, Settings::DIFFICULTY_MEDIUM)) << c.hit;
        EXPECT_EQ(c.easy, PlayerShip::ScaleDamage(c.hit, Settings::DIFFICULTY_EASY)) << c.hit;
        EXPECT_EQ(c.hard, PlayerShip::ScaleDamage(c.hit, Settings::DIFFICULTY_HARD)) << c.hit;
        EXPECT_EQ(c.hit, PlayerShip::ScaleDamage(c.hit, -1)) << c.hit;
        EXPECT_EQ(c.hit, PlayerShip::ScaleDamage(c.hit, Settings::NUM_DIFFICULTIES)) << c.hit;
    }
}

TEST_F(ShipWorldTest, TheDifficultyInPlayReachesThePlayersShieldAndArmourButNoOtherShip)
{
    struct Case
    {
        int32_t difficulty;
        unsigned shieldAfter;
        unsigned armourLost;
    };
    // Shield 50, absorption 10, a hit of 25: 25, 13 and 38 points reach the ship.
    const Case cases[] = {
        {Settings::DIFFICULTY_MEDIUM, 40, 15},
        {Settings::DIFFICULTY_EASY, 40, 3},
        {Settings::DIFFICULTY_HARD, 40, 28},
    };
    for (const Case& c : cases)
    {
        ASSERT_TRUE(g_settings.SetDifficulty(c.difficulty));
        ProbePlayer player;
        player.SetDefences(100, 50);
        player.TakeDamage(25);
        EXPECT_EQ(c.shieldAfter, player.GetShield()) << Settings::GetDifficultyName(c.difficulty);
        EXPECT_EQ(100 - c.armourLost, player.GetArmour()) << Settings::GetDifficultyName(c.difficulty);
        // A small hit that the shield alone would soak: 6, 3 or 9 points.
        player.SetDefences(100, 50);
        player.TakeDamage(6);
        EXPECT_EQ(50 - PlayerShip::ScaleDamage(6, c.difficulty), player.GetShield());

        // The raiders take their hits as they always did.
        ProbeShip raider;
        raider.SetDefences(100, 50);
        raider.TakeDamage(25);
        EXPECT_EQ(40u, raider.GetShield());
        EXPECT_EQ(85u, raider.GetArmour());
    }

    // Hard can kill where Medium would not: armour 20, no shield, a hit of 14 (21 on Hard).
    ASSERT_TRUE(g_settings.SetDifficulty(Settings::DIFFICULTY_HARD));
    m_player.SetDefences(20, 0);
    m_player.TakeDamage(14);
    EXPECT_TRUE(m_player.IsDead());
    EXPECT_EQ(0u, m_player.GetArmour());
}

TEST_F(ShipWorldTest, AKillingHitKillsExplodesAndPaysOnce)
{
    m_level.SetMission(&m_mission);
    ProbeShip* ship = AddEnemy(7);
    ship->TakeDamage(20);
    EXPECT_EQ(0u, ship->GetArmour());
    EXPECT_TRUE(ship->IsDead());
    EXPECT_EQ(1, CountExplosions(m_level));
    EXPECT_EQ(70, m_player.GetPilot().GetMoney()); // 10 x the full armour of 7

    // A second hit in the same frame, before the level removes the ship, changes nothing.
    ship->TakeDamage(20);
    EXPECT_EQ(1, CountExplosions(m_level));
    EXPECT_EQ(70, m_player.GetPilot().GetMoney());

    m_level.Update(0.1f);
    EXPECT_EQ(0, m_level.GetEnemiesLeft());
    // The explosion shows its eight frames for 0.1 s each and is then removed.
    for (int i = 0; i < 6; ++i)
    {
        m_level.Update(0.1f);
    }
    EXPECT_EQ(1, CountExplosions(m_level));
    m_level.Update(0.1f);
    EXPECT_EQ(0, CountExplosions(m_level));
}

TEST_F(ShipWorldTest, KillsPayOnlyInAMissionAndTenfoldForTwoPlayers)
{
    AddEnemy(7)->TakeDamage(100);
    EXPECT_EQ(0, m_player.GetPilot().GetMoney());

    m_level.SetMission(&m_mission);
    m_mission.m_twoPlayer = true;
    AddEnemy(7)->TakeDamage(100);
    EXPECT_EQ(700, m_player.GetPilot().GetMoney());
    EXPECT_EQ(1, m_mission.m_twoPlayerKills);

    // Ships without a controller (the player's own) pay nothing.
    m_mission.m_twoPlayer = false;
    ProbeShip noController;
    noController.SetDefences(7, 0);
    noController.TakeDamage(100);
    EXPECT_TRUE(noController.IsDead());
    EXPECT_EQ(700, m_player.GetPilot().GetMoney());
}

TEST(Ship, SpeedStaysBetweenTheLimitsAndThrustAgainstThemIsDropped)
{
    ProbeShip ship;
    ship.SetLimits(100, 200, 50, 90);
    ship.Desc().SetSpeed(200.0);
    ship.SetThrust(Ship::DIRECTION_FORWARD);
    EXPECT_EQ(50.0, ship.Desc().GetAcceleration());
    ship.Update(0.1f);
    EXPECT_EQ(200.0, ship.Desc().GetSpeed());
    EXPECT_EQ(0.0, ship.Desc().GetAcceleration());

    ship.Desc().SetSpeed(150.0);
    ship.SetThrust(Ship::DIRECTION_BACKWARD);
    for (int i = 0; i < 20; ++i)
    {
        ship.Update(0.1f);
    }
    EXPECT_EQ(100.0, ship.Desc().GetSpeed());
    EXPECT_EQ(0.0, ship.Desc().GetAcceleration());

    ship.SetThrust(7);
    EXPECT_EQ(0.0, ship.Desc().GetAcceleration());
    ship.SetRotation(Ship::DIRECTION_LEFT);
    EXPECT_EQ(-90.0, ship.Desc().GetRotationSpeed());
    ship.SetRotation(Ship::DIRECTION_RIGHT);
    EXPECT_EQ(90.0, ship.Desc().GetRotationSpeed());
    ship.SetRotation(Ship::DIRECTION_NONE);
    EXPECT_EQ(0.0, ship.Desc().GetRotationSpeed());
    ship.SetStrafe(Ship::DIRECTION_LEFT);
    EXPECT_EQ(-1.0, ship.Desc().GetStrafe());
    ship.SetStrafe(Ship::DIRECTION_FORWARD); // not a strafe direction: unchanged
    EXPECT_EQ(-1.0, ship.Desc().GetStrafe());
    ship.SetStrafe(Ship::DIRECTION_NONE);
    EXPECT_EQ(0.0, ship.Desc().GetStrafe());
}

TEST_F(ShipWorldTest, MountsFireTheirWeaponsAndOnlyThePlayerPaysAmmunition)
{
    Laser laser;
    MachineGun gun; // no file: damage 0, fires on every request

    ProbeShip enemy;
    enemy.Mount(0, &laser);
    EXPECT_EQ(nullptr, enemy.Fire(1, false));
    EXPECT_EQ(nullptr, enemy.Fire(4, false));
    EXPECT_EQ(nullptr, enemy.Fire(-1, false));
    EXPECT_EQ(100.0, enemy.GetTimeSinceShot(1));
    auto beam = enemy.Fire(0, true);
    ASSERT_NE(nullptr, beam);
    EXPECT_NE(nullptr, dynamic_cast<LaserBeam*>(beam.get()));
    EXPECT_EQ(0.0, enemy.GetTimeSinceShot(0));
    EXPECT_EQ(TEAM_COMPUTER, beam->GetTeam());
    // Without a hull the shot leaves from the middle of the picture's top edge (no picture
    // here: the position itself).
    EXPECT_DOUBLE_EQ(enemy.GetX(), beam->GetX());

    // The laser waits half a second per mount.
    enemy.Update(0.4f);
    EXPECT_EQ(nullptr, enemy.Fire(0, false));
    enemy.Update(0.1f);
    EXPECT_NE(nullptr, enemy.Fire(0, false));

    // The player's laser needs energy, the machine gun bullets.
    m_player.Mount(0, &laser);
    m_player.Mount(1, &gun);
    m_player.GetPilot().SetEnergy(0);
    EXPECT_EQ(nullptr, m_player.Fire(0, true));
    EXPECT_EQ(100.0, m_player.GetTimeSinceShot(0));
    m_player.GetPilot().SetEnergy(2);
    auto playerBeam = m_player.Fire(0, true);
    ASSERT_NE(nullptr, playerBeam);
    EXPECT_EQ(TEAM_PLAYER, playerBeam->GetTeam());
    EXPECT_EQ(1, m_player.GetPilot().GetEnergy());
    m_player.GetPilot().SetBullets(1);
    EXPECT_NE(nullptr, m_player.Fire(1, false));
    EXPECT_EQ(1, m_player.GetPilot().GetBullets());
    EXPECT_NE(nullptr, m_player.Fire(1, true));
    EXPECT_EQ(0, m_player.GetPilot().GetBullets());
    EXPECT_EQ(nullptr, m_player.Fire(1, true)); // out of bullets
}

TEST(Ship, RepairRestoresTheFullValuesAndLife)
{
    ProbeShip ship;
    ship.SetDefences(30, 0);
    ship.TakeDamage(100);
    ASSERT_TRUE(ship.IsDead());
    ship.Repair();
    EXPECT_FALSE(ship.IsDead());
    EXPECT_EQ(30u, ship.GetArmour()); // without a hull: its full armour
    EXPECT_EQ(0u, ship.GetShield());  // without a shield generator: none
}

class HullAnimationTest : public testsupport::WorkDirTest
{
protected:
    void WriteFrame(const std::string& p_name)
    {
        std::filesystem::create_directories("art/hulls/dart");
        ASSERT_TRUE(testsupport::WriteSolidBitmap("art/hulls/dart/" + p_name, 4, 4, 200, 0, 0, 24));
    }
    void WriteSet(int p_turnFrames)
    {
        WriteFrame("dart_short_still0000.bmp");
        WriteFrame("dart_long_still0000.bmp");
        for (int i = 0; i < p_turnFrames; ++i)
        {
            char index[16];
            std::snprintf(index, sizeof(index), "%04d", i);
            for (const char* part : {"_short_left", "_long_left", "_short_right", "_long_right"})
            {
                WriteFrame(std::string("dart") + part + index + ".bmp");
            }
        }
    }
};

TEST_F(HullAnimationTest, LeansFurtherWithTheTurnRateOnceSmoothed)
{
    WriteSet(4);
    HullAnimation hull;
    ASSERT_TRUE(hull.LoadHull("art\\hulls\\dart\\dart"));
    ASSERT_EQ(4, hull.GetNumTurnFrames());
    EXPECT_EQ(2, hull.GetNumImages());

    // -100 deg/s: the smoothing moves a 3.5th of the way while the jump exceeds 0.1, so the
    // lean starts at frame 0 and settles on left frame 1 (4 x 100 / 225 = 1.8).
    const double slow = -100.0 / HullAnimation::FULL_LEAN_RATE;
    EXPECT_EQ(hull.GetLeftTurn(0), hull.SelectAnimation(slow, 0.0));
    for (int i = 0; i < 10; ++i)
    {
        hull.SelectAnimation(slow, 0.0);
    }
    EXPECT_EQ(hull.GetLeftTurn(1), hull.SelectAnimation(slow, 0.0));
    // -225 deg/s and beyond: the last left frame.
    for (double rate : {-225.0, -400.0})
    {
        for (int i = 0; i < 20; ++i)
        {
            hull.SelectAnimation(rate / HullAnimation::FULL_LEAN_RATE, 0.0);
        }
        EXPECT_EQ(hull.GetLeftTurn(3), hull.SelectAnimation(rate / HullAnimation::FULL_LEAN_RATE, 0.0));
    }
    for (int i = 0; i < 30; ++i)
    {
        hull.SelectAnimation(0.6, 0.0);
    }
    EXPECT_EQ(hull.GetRightTurn(2), hull.SelectAnimation(0.6, 0.0));
    // Straight on (once settled): the still frames; one frame a second up to 57.6 units a
    // second, ten a second at 576.
    hull.SelectAnimation(0.0, 0.0);
    for (int i = 0; i < 30; ++i)
    {
        hull.SelectAnimation(0.0, 0.0);
    }
    EXPECT_EQ(&hull, hull.SelectAnimation(0.0, 20.0));
    EXPECT_FLOAT_EQ(1.0f, hull.GetFrameTime());
    hull.SelectAnimation(0.0, 576.0);
    EXPECT_FLOAT_EQ(0.1f, hull.GetFrameTime());
}

TEST_F(HullAnimationTest, CountsLeanStepsUntilOneOfTheFourPicturesIsMissing)
{
    WriteSet(3);
    std::filesystem::remove("art/hulls/dart/dart_long_right0002.bmp");
    HullAnimation hull;
    hull.LoadHull("art\\hulls\\dart\\dart");
    EXPECT_EQ(2, hull.GetNumTurnFrames());
    EXPECT_EQ(nullptr, hull.GetLeftTurn(2));

    // Without still pictures the base name itself is the one frame, and nothing leans.
    HullAnimation bare;
    bare.LoadHull("art\\hulls\\ghost\\ghost");
    EXPECT_EQ(1, bare.GetNumImages());
    EXPECT_EQ(0, bare.GetNumTurnFrames());
    EXPECT_EQ(&bare, bare.SelectAnimation(-1.0, 0.0));
}
