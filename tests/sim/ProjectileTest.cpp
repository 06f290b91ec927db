#include "gfx/Animation.h"
#include "sim/BfgShot.h"
#include "sim/Bomb.h"
#include "sim/Bullet.h"
#include "sim/CombatSupport.h"
#include "sim/LaserBeam.h"
#include "sim/Level.h"
#include "sim/MathTables.h"
#include "sim/Missile.h"
#include "sim/QuadNode.h"
#include "sim/Weapon.h"
#include "WorldDoubles.h"
#include "support/WorkDir.h"

#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <vector>

using combattest::FixedSeed;
using combattest::ProbePlayer;
using combattest::ProbeShip;
using combattest::RecordingMission;

namespace
{
// Every object of a layer in the level, of type T.
template <typename T>
std::vector<T*> Collect(Level& p_level, int p_layer)
{
    std::vector<QuadNode*> leaves;
    p_level.GetRoot()->CollectLeaves(leaves);
    std::vector<T*> found;
    for (QuadNode* leaf : leaves)
    {
        for (WorldObject* object = leaf->GetList(p_layer); object != nullptr; object = object->GetNextInList())
        {
            if (T* typed = dynamic_cast<T*>(object))
            {
                found.push_back(typed);
            }
        }
    }
    return found;
}

double TriangleArea(const Triangle& p_t)
{
    return std::fabs((p_t.x2 - p_t.x1) * (p_t.y3 - p_t.y1) - (p_t.x3 - p_t.x1) * (p_t.y2 - p_t.y1)) / 2.0;
}

class ProjectileTest : public testsupport::WorkDirTest
{
protected:
    void SetUp() override
    {
        WorkDirTest::SetUp();
        ASSERT_TRUE(m_level.Create(80, 128, 128, nullptr));
        m_level.SetMission(&m_mission);
        m_player.Place(3000.0, 3000.0, 90.0, 0.0);
        m_level.SetPlayer(&m_player);
        m_level.Add(&m_player, LAYER_SHIPS);
    }

    FixedSeed m_seed{5};
    ProbePlayer m_player;
    Level m_level;
    RecordingMission m_mission;
};
} // namespace

TEST(Projectile, ShotsLeaveFromTheMountTurnedWithTheShooter)
{
    // A mount at the origin starts the shot exactly on the shooter's position.
    const Vector2 origin = Projectile::LaunchPoint(500.0, 600.0, 37.0, 0, 0);
    EXPECT_EQ(500.0, origin.x);
    EXPECT_EQ(600.0, origin.y);
    // (32, 0) is to the right of the picture's corner; heading 90 turns it to below.
    const Vector2 right = Projectile::LaunchPoint(500.0, 600.0, 90.0, 32, 0);
    EXPECT_NEAR(500.0 + 32.0 * g_cosTable[90], right.x, 1e-9);
    EXPECT_NEAR(632.0, right.y, 0.01);
    // (32, 2) at heading 0: acos(32 / 32.06) is 3.6 degrees, rounded to 4.
    const Vector2 nose = Projectile::LaunchPoint(0.0, 0.0, 0.0, 32, 2);
    const double r = std::sqrt(32.0 * 32.0 + 4.0);
    EXPECT_NEAR(r * g_cosTable[4], nose.x, 1e-9);
    EXPECT_NEAR(r * g_sinTable[4], nose.y, 1e-9);
    // Near a full turn the angle wraps into the tables.
    const Vector2 wrapped = Projectile::LaunchPoint(0.0, 0.0, 359.8, 10, 0);
    EXPECT_NEAR(10.0, wrapped.x, 1e-9);
}

TEST(Projectile, ABulletFliesOneSecondAtTwelveHundredMoreThanItsShooter)
{
    PhysicalDesc shooter;
    shooter.SetPosition(1000.0, 1000.0);
    shooter.SetHeading(90.0);
    shooter.SetSpeed(300.0);
    Bullet bullet;
    bullet.SetDamage(9, TEAM_PLAYER);
    bullet.Launch(shooter, 0, 0);
    EXPECT_EQ(1500.0, bullet.GetPhysicalDesc()->GetSpeed());
    EXPECT_EQ(1, bullet.GetPhysicalDesc()->GetNumTriangles());
    for (int i = 0; i < 9; ++i)
    {
        bullet.Update(0.1f);
    }
    EXPECT_FALSE(bullet.IsDead());
    EXPECT_NEAR(1000.0 + 1350.0, bullet.GetX(), 1.0);
    EXPECT_NEAR(1000.0, bullet.GetY(), 1.0);
    bullet.Update(0.1f);
    EXPECT_TRUE(bullet.IsDead());
}

TEST_F(ProjectileTest, ALaserHurtsAQuarterSecondThenFadesOut)
{
    ProbeShip shooter;
    shooter.Place(2000.0, 2000.0, 0.0, 100.0);
    LaserBeam beam;
    beam.SetDamage(10, TEAM_COMPUTER);
    beam.Launch(shooter.Desc(), 0, 0);
    // Along the flight: up the screen, 2000 long.
    EXPECT_NEAR(0.0, beam.GetBeam(0).x, 1e-9);
    EXPECT_NEAR(-2000.0, beam.GetBeam(0).y, 1e-9);
    EXPECT_EQ(LaserBeam::STRIP_TRIANGLES, beam.GetPhysicalDesc()->GetNumTriangles());

    // Ages 0, 0.05, ... : the update that starts past 0.25 empties the shape.
    for (int i = 0; i < 6; ++i)
    {
        beam.Update(0.05f);
    }
    EXPECT_EQ(LaserBeam::STRIP_TRIANGLES, beam.GetPhysicalDesc()->GetNumTriangles());
    EXPECT_EQ(255, beam.GetAlpha());
    beam.Update(0.05f); // started at 0.30
    EXPECT_EQ(0, beam.GetPhysicalDesc()->GetNumTriangles());
    EXPECT_EQ(static_cast<int>(255 - 0.05 * 1785), beam.GetAlpha());
    beam.Update(0.05f); // 0.35: 255 - 0.10 * 1785 = 76
    EXPECT_FALSE(beam.IsDead());
    beam.Update(0.05f); // 0.40: past 255 / 1785 + 0.25 = 0.393
    EXPECT_TRUE(beam.IsDead());

    // A shooter standing still has no flight direction: the beam goes along its heading.
    ProbeShip still;
    still.Place(2000.0, 2000.0, 90.0, 0.0);
    LaserBeam sideways;
    sideways.Launch(still.Desc(), 0, 0);
    EXPECT_NEAR(2000.0, sideways.GetBeam(0).x, 0.01);
    EXPECT_NEAR(0.0, sideways.GetBeam(0).y, 5.0);
}

TEST_F(ProjectileTest, ThePlayersBeamsStayOnThePlayersShip)
{
    Laser laser;
    m_player.Mount(0, &laser);
    m_player.GetPilot().SetEnergy(5);
    std::unique_ptr<Projectile> shot = m_player.Fire(0, true);
    ASSERT_NE(nullptr, shot);
    auto* beam = static_cast<LaserBeam*>(shot.get());
    m_player.Place(3100.0, 2900.0, 180.0, 50.0);
    beam->Update(0.02f);
    EXPECT_DOUBLE_EQ(3100.0, beam->GetX());
    EXPECT_DOUBLE_EQ(2900.0, beam->GetY());
    EXPECT_EQ(180.0, beam->GetHeading());
    EXPECT_NEAR(2000.0, beam->GetBeam(0).y, 0.01); // the ship now flies down the screen

    // A computer ship's beam flies on by itself.
    ProbeShip enemy;
    enemy.Place(2000.0, 2000.0, 0.0, 100.0);
    LaserBeam enemyBeam;
    enemyBeam.SetDamage(1, TEAM_COMPUTER);
    enemyBeam.Launch(enemy.Desc(), 0, 0);
    enemyBeam.Update(0.5f);
    EXPECT_NEAR(1950.0, enemyBeam.GetY(), 0.01);
}

TEST_F(ProjectileTest, TheMultiLaserSpreadsThreeBeamsAndHurtsEveryFrame)
{
    ProbeShip shooter;
    shooter.Place(2000.0, 2000.0, 0.0, 100.0);
    MultiLaserBurst burst;
    burst.Launch(shooter.Desc(), 0, 0);
    ASSERT_EQ(3, burst.GetNumBeams());
    EXPECT_EQ(3 * LaserBeam::STRIP_TRIANGLES, burst.GetPhysicalDesc()->GetNumTriangles());
    EXPECT_TRUE(burst.SurvivesHits());
    for (int j = 1; j < 3; ++j)
    {
        const Vector2& middle = burst.GetBeam(0);
        const Vector2& side = burst.GetBeam(j);
        const double cosine = (middle.x * side.x + middle.y * side.y) / (2000.0 * 2000.0);
        EXPECT_NEAR(30.0, std::acos(cosine) * 180.0 / 3.14159265358979, 0.2);
    }
    EXPECT_LT(burst.GetBeam(1).x * burst.GetBeam(2).x, 0.0); // one to either side

    // In the world it hurts a ship it overlaps in every frame until its shape goes.
    auto* target = new worldtest::TestShip(2990.0, 2600.0);
    m_level.Add(target, LAYER_SHIPS);
    MultiLaser multi;
    m_player.Mount(1, &multi);
    m_player.Place(3000.0, 3000.0, 0.0, 100.0);
    m_player.GetPilot().SetEnergy(5);
    m_level.Add(m_player.Fire(1, true).release(), LAYER_PROJECTILES);
    m_level.Update(0.0f);
    m_level.Update(0.0f);
    EXPECT_EQ(2, target->m_hits);
}

TEST_F(ProjectileTest, ABombFallsBehindAndDetonatesIntoABlast)
{
    BombBay bombs;
    ProbeShip shooter;
    shooter.SetLimits(0, 400, 0, 0);
    shooter.Mount(0, &bombs);
    shooter.Place(4000.0, 4000.0, 90.0, 30.0);
    std::unique_ptr<Projectile> shot = shooter.Fire(0, false);
    ASSERT_NE(nullptr, shot);
    Bomb* bomb = static_cast<Bomb*>(shot.get());
    EXPECT_EQ(-20.0, bomb->GetPhysicalDesc()->GetSpeed()); // backwards at 20 a second
    EXPECT_EQ(Projectile::HIT_KIND_BOMB, bomb->GetHitKind());
    const unsigned damage = bomb->GetDamage();
    m_level.Add(shot.release(), LAYER_PROJECTILES);
    for (int i = 0; i < 4; ++i)
    {
        m_level.Update(0.1f);
    }
    EXPECT_NEAR(4000.0 - 8.0, bomb->GetX(), 1e-4);
    EXPECT_TRUE(Collect<BombBlast>(m_level, LAYER_PROJECTILES).empty());
    m_level.Update(0.1f);
    EXPECT_TRUE(Collect<Bomb>(m_level, LAYER_PROJECTILES).empty());
    std::vector<BombBlast*> blasts = Collect<BombBlast>(m_level, LAYER_PROJECTILES);
    ASSERT_EQ(1u, blasts.size());
    EXPECT_EQ(damage, blasts[0]->GetDamage());
    EXPECT_EQ(TEAM_COMPUTER, blasts[0]->GetTeam());
    EXPECT_NEAR(4000.0 - 10.0, blasts[0]->GetX(), 1e-4);

    // The blast covers the 64 x 64 square with 16 triangles.
    const std::vector<Triangle> shape = Bomb::MakeBlastShape();
    ASSERT_EQ(16u, shape.size());
    double area = 0.0;
    for (const Triangle& t : shape)
    {
        area += TriangleArea(t);
        for (double coordinate : {t.x1, t.y1, t.x2, t.y2, t.x3, t.y3})
        {
            EXPECT_GE(coordinate, 0.0);
            EXPECT_LE(coordinate, 64.0);
        }
    }
    EXPECT_DOUBLE_EQ(64.0 * 64.0, area);

    // It hurts the first ship it touches and is used up.
    // The blast's square is turned with the bomb (heading 90): it lies left of and below
    // the detonation point.
    auto* victim = new worldtest::TestShip(3960.0, 4020.0, TEAM_PLAYER, false);
    m_level.Add(victim, LAYER_SHIPS);
    m_level.Update(0.01f);
    EXPECT_EQ(1, victim->m_hits);
    EXPECT_EQ(damage, victim->m_damage);
    EXPECT_TRUE(Collect<BombBlast>(m_level, LAYER_PROJECTILES).empty());
}

TEST_F(ProjectileTest, AMissileExplodesWhereItHitsOrAfterThreeSeconds)
{
    MissileLauncher missiles;
    ProbeShip shooter;
    shooter.Mount(0, &missiles);
    shooter.Place(2100.0, 5000.0, 90.0, 100.0);
    std::unique_ptr<Projectile> shot = shooter.Fire(0, false);
    ASSERT_NE(nullptr, shot);
    EXPECT_EQ(1124.0, shot->GetPhysicalDesc()->GetSpeed());
    EXPECT_EQ(300.0, shot->GetPhysicalDesc()->GetAcceleration());
    m_level.Add(shot.release(), LAYER_PROJECTILES);
    for (int i = 0; i < 29; ++i)
    {
        m_level.Update(0.1f);
    }
    ASSERT_EQ(1u, Collect<Missile>(m_level, LAYER_PROJECTILES).size());
    EXPECT_TRUE(Collect<Animation>(m_level, LAYER_SHIPS).empty());
    // Thirty steps of 0.1 s add up to a hair under 3 in single precision: one more.
    m_level.Update(0.1f);
    m_level.Update(0.1f);
    EXPECT_TRUE(Collect<Missile>(m_level, LAYER_PROJECTILES).empty());
    EXPECT_EQ(1u, Collect<Animation>(m_level, LAYER_SHIPS).size());

    // Fired at a ship next to it: the hit uses it up and leaves an explosion there.
    auto* target = new worldtest::TestShip(2400.0, 3000.0);
    m_level.Add(target, LAYER_SHIPS);
    ProbePlayer* player = &m_player;
    player->Mount(2, &missiles);
    player->GetPilot().SetMissiles(1);
    player->Place(2380.0, 3010.0, 90.0, 0.0);
    m_level.Add(player->Fire(2, true).release(), LAYER_PROJECTILES);
    EXPECT_EQ(0, player->GetPilot().GetMissiles());
    m_level.Update(0.02f);
    EXPECT_EQ(1, target->m_hits);
    EXPECT_TRUE(Collect<Missile>(m_level, LAYER_PROJECTILES).empty());
    EXPECT_EQ(2u, Collect<Animation>(m_level, LAYER_SHIPS).size());
}

TEST_F(ProjectileTest, TheBfgSweepsComputerShipsNearThePlayerOnly)
{
    auto enemyAt = [this](double p_x, double p_y) {
        auto* ship = new ProbeShip();
        ship->SetDefences(100, 0);
        ship->CreateController(0);
        ship->Place(p_x, p_y, 0.0, 0.0);
        m_level.Add(ship, LAYER_SHIPS);
        return ship;
    };
    ProbeShip* near = enemyAt(3000.0 + 600.0, 3000.0 + 799.0); // 999.4 away
    ProbeShip* edge = enemyAt(3000.0, 4000.0);                 // exactly 1000
    ProbeShip* far = enemyAt(3000.0 + 601.0, 3000.0 + 800.0);  // 1000.6 away
    ProbeShip* paid = enemyAt(2900.0, 3000.0);
    paid->TakeDamage(1000); // dead already this frame, paid once
    const int32_t moneyBefore = m_player.GetPilot().GetMoney();
    auto* friendly = new worldtest::TestShip(3010.0, 3010.0, TEAM_COMPUTER, false);
    m_level.Add(friendly, LAYER_SHIPS);

    Bfg bfg;
    m_player.Mount(3, &bfg);
    m_player.GetPilot().SetEnergy(1);
    std::unique_ptr<Projectile> shot = m_player.Fire(3, true);
    ASSERT_NE(nullptr, shot);
    EXPECT_TRUE(near->IsDead());
    EXPECT_TRUE(edge->IsDead());
    EXPECT_FALSE(far->IsDead());
    EXPECT_FALSE(m_player.IsDead());
    EXPECT_EQ(moneyBefore + 2000, m_player.GetPilot().GetMoney()); // two ships of armour 100
    EXPECT_EQ(3u, Collect<Animation>(m_level, LAYER_SHIPS).size());
    EXPECT_EQ(0, shot->GetPhysicalDesc()->GetNumTriangles());

    // The square follows the player's ship and fades: red by trunc(age * 10) and alpha by
    // trunc(age * 3) each frame, until the alpha is gone.
    auto* square = static_cast<BfgShot*>(shot.get());
    m_level.Add(shot.release(), LAYER_PROJECTILES);
    m_player.Place(3050.0, 3000.0, 90.0, 0.0);
    m_level.Update(0.5f);
    EXPECT_DOUBLE_EQ(3050.0, square->GetX());
    EXPECT_EQ(250, square->GetRed());
    EXPECT_EQ(144, square->GetAlpha());
    int frames = 1;
    while (!Collect<BfgShot>(m_level, LAYER_PROJECTILES).empty() && frames < 1000)
    {
        m_level.Update(0.5f);
        ++frames;
    }
    EXPECT_LT(frames, 40);
}
