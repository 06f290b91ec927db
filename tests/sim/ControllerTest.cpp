#include "sim/AttackController.h"
#include "sim/CombatSupport.h"
#include "sim/Level.h"
#include "sim/MathTables.h"
#include "sim/Projectile.h"
#include "sim/QuadNode.h"
#include "sim/SpawnerController.h"
#include "sim/Weapon.h"
#include "support/WorkDir.h"

#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <vector>

using combattest::FixedSeed;
using combattest::MakeEntity;
using combattest::ProbePlayer;
using combattest::ProbeShip;
using combattest::RecordingMission;
using combattest::ScopedCatalog;
using combattest::WriteGameFile;

namespace
{
int CountInLayer(Level& p_level, int p_layer)
{
    std::vector<QuadNode*> leaves;
    p_level.GetRoot()->CollectLeaves(leaves);
    int count = 0;
    for (QuadNode* leaf : leaves)
    {
        for (WorldObject* object = leaf->GetList(p_layer); object != nullptr; object = object->GetNextInList())
        {
            ++count;
        }
    }
    return count;
}

class ControllerTest : public testsupport::WorkDirTest
{
protected:
    void SetUp() override
    {
        WorkDirTest::SetUp();
        ASSERT_TRUE(m_level.Create(80, 128, 128, nullptr));
        m_level.SetPlayer(&m_player);
        m_player.Place(5000.0, 5000.0, 0.0, 0.0);
        m_level.Add(&m_player, LAYER_SHIPS);
        // An attacker flying east at 200 with a machine gun, turning at 160 at most.
        m_hunter.SetLimits(100, 300, 100, 160);
        m_hunter.Mount(0, &m_gun);
        m_controller = new AttackController(&m_hunter);
        m_hunter.SetController(std::unique_ptr<Controller>(m_controller));
        m_hunter.SetTarget(&m_player);
        m_controller->SetPersonality(6.0f, 0.75f, 100);
    }

    void HunterAt(double p_x, double p_y) { m_hunter.Place(p_x, p_y, 90.0, 200.0); }

    FixedSeed m_seed{21};
    ProbePlayer m_player;
    Level m_level;
    MachineGun m_gun;
    ProbeShip m_hunter;
    AttackController* m_controller = nullptr;
};
} // namespace

TEST_F(ControllerTest, PatrolsBeyondTwoThousandAndAttacksWithin)
{
    HunterAt(3000.0, 5000.0); // exactly 2000 from the target
    EXPECT_EQ(AttackController::STATE_ATTACK, m_controller->Think(AttackController::STATE_PATROL, 0.01f));

    HunterAt(2999.5, 5000.0);
    EXPECT_EQ(AttackController::STATE_PATROL, m_controller->Think(AttackController::STATE_ATTACK, 0.01f));
    EXPECT_EQ(160.0, m_hunter.Desc().GetRotationSpeed()); // circling right at the full rate
    // Out-of-range states keep the current one; recovering attacks at once.
    EXPECT_EQ(AttackController::STATE_PATROL, m_controller->Think(-1, 0.01f));
    HunterAt(4000.0, 5000.0);
    EXPECT_EQ(AttackController::STATE_ATTACK, m_controller->Think(AttackController::STATE_RECOVER, 0.01f));
    EXPECT_EQ(AttackController::STATE_ATTACK, m_controller->Think(7, 0.01f));

    // Without a target there is nothing to attack.
    m_hunter.SetTarget(nullptr);
    EXPECT_EQ(AttackController::STATE_PATROL, m_controller->Think(AttackController::STATE_ATTACK, 0.01f));
}

TEST_F(ControllerTest, FiresWhenAimedOnlyAfterHalfASecond)
{
    HunterAt(4500.0, 5000.0); // the target straight ahead, standing still
    m_controller->SetTimers(0.39f, 0.0f, false);
    m_controller->Think(AttackController::STATE_ATTACK, 0.01f);
    EXPECT_EQ(0, CountInLayer(m_level, LAYER_PROJECTILES));
    EXPECT_FLOAT_EQ(0.4f, m_controller->GetShotTimer());

    m_controller->SetTimers(0.50f, 0.0f, false);
    m_controller->Think(AttackController::STATE_ATTACK, 0.01f);
    EXPECT_EQ(1, CountInLayer(m_level, LAYER_PROJECTILES));
    EXPECT_EQ(0.0f, m_controller->GetShotTimer());
    // Aimed: the time towards a break-away does not build up.
    EXPECT_EQ(0.0f, m_controller->GetBreakTimer());
}

TEST_F(ControllerTest, TurnsMoreGentlyTheBetterItIsAimed)
{
    // The flight direction at heading 90 (a hair off east, the game's PI being 22/7).
    HunterAt(0.0, 0.0);
    const Vector2 v = m_hunter.Desc().GetVelocity();
    const double length = std::hypot(v.x, v.y);
    struct Case
    {
        double degrees; // where the target lies, clockwise from the flight direction
        double rate;
    };
    for (const Case& c : {Case{5.0, 40.0}, Case{-5.0, -40.0}, Case{20.0, 160.0}, Case{-60.0, -160.0}})
    {
        // Angles are measured in the game's degrees (with its PI of 22/7).
        const double turn = c.degrees * DEG2RAD;
        const double dx = (v.x * std::cos(turn) - v.y * std::sin(turn)) / length;
        const double dy = (v.x * std::sin(turn) + v.y * std::cos(turn)) / length;
        for (bool breakingAway : {false, true})
        {
            HunterAt(5000.0 - 500.0 * dx, 5000.0 - 500.0 * dy);
            m_controller->SetTimers(0.0f, 0.0f, breakingAway);
            m_controller->Think(AttackController::STATE_ATTACK, 0.01f);
            // (5 / 10)^2: a quarter of the full rate; 20 degrees and more: the full rate.
            // Breaking away turns the other way.
            EXPECT_NEAR(breakingAway ? -c.rate : c.rate, m_hunter.Desc().GetRotationSpeed(), 1e-3)
                << c.degrees << " degrees" << (breakingAway ? ", breaking away" : "");
        }
    }
}

TEST_F(ControllerTest, KeepsItsPersonalDistance)
{
    struct Case
    {
        double ahead;
        bool breakingAway;
        double acceleration;
    };
    // Personal distance 100.
    for (const Case& c : {Case{40.0, false, -90.0}, Case{40.0, true, 90.0}, Case{1000.0, false, 150.0},
                          Case{1000.0, true, -150.0}, Case{220.0, false, 120.0}})
    {
        HunterAt(5000.0 - c.ahead, 5000.0);
        m_controller->SetTimers(0.0f, 0.0f, c.breakingAway);
        m_controller->Think(AttackController::STATE_ATTACK, 0.01f);
        EXPECT_NEAR(c.acceleration, m_hunter.Desc().GetAcceleration(), 1e-9) << c.ahead << " ahead";
    }
    // Near its distance behind a faster target it eases off by the distance once more.
    m_player.Place(5000.0, 5000.0, 90.0, 250.0);
    HunterAt(5000.0 - 160.0, 5000.0);
    m_controller->SetTimers(0.0f, 0.0f, false);
    m_controller->Think(AttackController::STATE_ATTACK, 0.01f);
    EXPECT_NEAR(-40.0, m_hunter.Desc().GetAcceleration(), 1e-9);
    // A target behind: brake, or speed up while breaking away.
    m_player.Place(5000.0, 5000.0, 0.0, 0.0);
    HunterAt(5300.0, 5000.0);
    m_controller->SetTimers(0.0f, 0.0f, false);
    m_controller->Think(AttackController::STATE_ATTACK, 0.01f);
    EXPECT_EQ(-100.0, m_hunter.Desc().GetAcceleration());
    m_controller->SetTimers(0.0f, 0.0f, true);
    m_controller->Think(AttackController::STATE_ATTACK, 0.01f);
    EXPECT_EQ(100.0, m_hunter.Desc().GetAcceleration());
}

TEST_F(ControllerTest, BreaksAwayAfterStayingBadlyAimedPastItsPatience)
{
    HunterAt(5000.0, 5500.0); // the target straight behind the ship's left side
    m_controller->SetPersonality(1.0f, 0.5f, 100);
    bool brokeAway = false;
    for (int i = 0; i < 400 && !brokeAway; ++i)
    {
        m_controller->Think(AttackController::STATE_ATTACK, 0.01f);
        brokeAway = m_controller->IsBreakingAway();
    }
    ASSERT_TRUE(brokeAway);
    // ... for its break-away time, then it comes back.
    int frames = 0;
    while (m_controller->IsBreakingAway() && frames < 1000)
    {
        m_controller->Think(AttackController::STATE_ATTACK, 0.01f);
        ++frames;
    }
    EXPECT_NEAR(50, frames, 2);
}

TEST_F(ControllerTest, LeadsItsShotsAtStraightAndTurningTargets)
{
    HunterAt(4000.0, 5000.0);
    const double bulletSpeed = 200.0 + 1200.0;

    // Flying north at 300: the aim point is where target and bullet arrive together.
    m_player.Place(5000.0, 5000.0, 0.0, 300.0);
    Vector2 aim = m_controller->GetInterceptPoint();
    EXPECT_NEAR(5000.0, aim.x, 1e-6);
    EXPECT_LT(aim.y, 5000.0);
    const double bulletTime = std::hypot(aim.x - 4000.0, aim.y - 5000.0) / bulletSpeed;
    EXPECT_NEAR((5000.0 - aim.y) / 300.0, bulletTime, 1e-9);

    // As fast as the bullet: no solution, aim at the target.
    m_player.Place(5000.0, 5000.0, 0.0, bulletSpeed);
    aim = m_controller->GetInterceptPoint();
    EXPECT_EQ(5000.0, aim.x);
    EXPECT_EQ(5000.0, aim.y);

    // Turning right at 90 degrees a second at speed 200: the aim point lies ahead on the
    // target's circle.
    m_player.Place(5000.0, 5000.0, 0.0, 200.0, 90.0);
    aim = m_controller->GetInterceptPoint();
    const double radius = 200.0 / (90.0 * DEG2RAD);
    const Vector2 centre{5000.0 + radius, 5000.0}; // heading north, turning right
    EXPECT_NEAR(radius, std::hypot(aim.x - centre.x, aim.y - centre.y), 1e-6);
    EXPECT_LT(aim.y, 5000.0);
    EXPECT_GT(aim.x, 5000.0);
}

TEST_F(ControllerTest, AHiveStaysPutAndLaunchesDronesForEver)
{
    FixedSeed seed(99);
    ScopedCatalog catalog;
    WriteGameFile("entity\\air000.nme", MakeEntity("Laser", 25));
    RecordingMission mission;
    m_level.SetMission(&mission);

    auto* hive = new ProbeShip();
    hive->SetDefences(1, 0);
    hive->CreateController(SpawnerController::TYPE);
    hive->Place(3000.0, 3000.0, 0.0, 40.0);
    m_level.Add(hive, LAYER_SHIPS);
    m_level.SetEnemyCount(1);

    // The first child comes on the first update, at the hive, hunting the player.
    m_level.Update(0.1f);
    EXPECT_EQ(0.0, hive->Desc().GetSpeed());
    ASSERT_EQ(3, CountInLayer(m_level, LAYER_SHIPS)); // player, hive, child
    auto* spawner = static_cast<SpawnerController*>(hive->GetController());
    EXPECT_GE(spawner->GetSpawnTimer(), 10.0f);
    EXPECT_LE(spawner->GetSpawnTimer(), 24.0f);
    std::vector<QuadNode*> leaves;
    m_level.GetRoot()->CollectLeaves(leaves);
    EntityShip* child = nullptr;
    for (QuadNode* leaf : leaves)
    {
        for (WorldObject* object = leaf->GetList(LAYER_SHIPS); object != nullptr; object = object->GetNextInList())
        {
            if (object != hive && object != &m_player)
            {
                child = dynamic_cast<EntityShip*>(object);
            }
        }
    }
    ASSERT_NE(nullptr, child);
    EXPECT_EQ(25u, child->GetMaxArmour());
    EXPECT_EQ(&m_player, child->GetController()->GetTarget());

    // A killing hit makes it explode and pay, but it stays: every such hit pays again.
    hive->TakeDamage(50);
    EXPECT_TRUE(hive->IsDead());
    EXPECT_EQ(10, m_player.GetPilot().GetMoney());
    m_level.Update(0.1f);
    EXPECT_FALSE(hive->IsDead());
    hive->TakeDamage(50);
    EXPECT_EQ(20, m_player.GetPilot().GetMoney());

    // The next child after 10 to 24 seconds; children count as enemies when they die.
    for (int i = 0; i < 250; ++i)
    {
        m_level.Update(0.1f);
    }
    EXPECT_GE(CountInLayer(m_level, LAYER_SHIPS), 4);
    child->TakeDamage(1000);
    m_level.Update(0.1f);
    EXPECT_EQ(0, m_level.GetEnemiesLeft());
}
