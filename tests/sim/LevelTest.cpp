#include "sim/Background.h"
#include "sim/CollisionGrid.h"
#include "sim/Level.h"
#include "sim/MathTables.h"
#include "sim/NameRegistry.h"
#include "sim/QuadNode.h"
#include "WorldDoubles.h"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

using namespace worldtest;

namespace
{
class RecordingBackground : public Background
{
public:
    void Move(double p_vx, double p_vy, double p_heading) override { m_last = {p_vx, p_vy, p_heading}; }
    void Render() override {}
    std::vector<double> m_last;
};

TestShip* MakeMover(double p_x, double p_y, double p_heading, double p_speed, bool p_enemy = true)
{
    auto* ship = new TestShip(p_x, p_y, TEAM_COMPUTER, p_enemy);
    ship->Desc().SetHeading(p_heading);
    ship->Desc().SetSpeed(p_speed);
    return ship;
}
} // namespace

TEST(Level, CreateBuildsTreeGridAndPlayArea)
{
    EXPECT_EQ(1, Level::DepthForMapSize(5));
    EXPECT_EQ(5, Level::DepthForMapSize(80)); // 8, 4, 2, 1: four halvings
    {
        Level level;
        ASSERT_TRUE(level.Create(80, 128, 128, nullptr));
        EXPECT_EQ(&level, Level::GetCurrent());
        EXPECT_EQ(10240, level.GetRoot()->GetXMax());
        EXPECT_EQ(16, level.GetGrid()->GetSize());
        EXPECT_EQ(1920, level.GetLeft());
        EXPECT_EQ(8320, level.GetBottom());
        // A 10-tile map: a 2 x 2 grid and a play area turned inside out.
        Level small;
        ASSERT_TRUE(small.Create(10, 128, 128, nullptr));
        EXPECT_EQ(2, small.GetGrid()->GetSize());
        EXPECT_EQ(-640, small.GetRight());
        EXPECT_NE(4, small.Classify(1000.0, 1000.0));
    }
    EXPECT_EQ(nullptr, Level::GetCurrent());
    EXPECT_EQ(nullptr, QuadNode::GetRoot());

    // Sizes from a damaged file build nothing, and what cannot be held is destroyed.
    Level refused;
    EXPECT_FALSE(refused.Create(Level::MAX_MAP_SIZE + 1, 128, 128, nullptr));
    EXPECT_FALSE(refused.Create(80, 0, 128, nullptr));
    refused.Update(0.1f);
    g_destroyed = 0;
    refused.Add(new TestShip(1.0, 1.0), LAYER_SHIPS);
    EXPECT_EQ(1, g_destroyed);
}

TEST(Level, ClassifyTurnsTheShipBackAcrossEachEdge)
{
    TestShip player(0.0, 0.0, TEAM_PLAYER, false);
    Level level;
    ASSERT_TRUE(level.Create(80, 128, 128, nullptr)); // play area 1920 .. 8320
    EXPECT_EQ(2, level.Classify(1800, 5000)); // no player: the point itself, standing still
    level.SetPlayer(&player);
    const auto classify = [&](double p_x, double p_y, double p_vx, double p_vy) {
        player.Place(p_x, p_y);
        player.Desc().SetVelocity(Vector2{p_vx, p_vy});
        return level.Classify(p_x, p_y);
    };
    EXPECT_EQ(4, classify(5000, 5000, 0, 0));
    EXPECT_EQ(4, classify(1900, 1900, 0, 0)); // the point 32 units on is inside
    EXPECT_NE(4, classify(8320, 5000, 0, 0)); // the edge itself is outside
    EXPECT_EQ(3, classify(5000, 1800, 1, 0)); // above: along +x turns with a positive rate
    EXPECT_EQ(2, classify(5000, 1800, -1, 0));
    EXPECT_EQ(3, classify(8400, 5000, 0, 1)); // right: along +y
    EXPECT_EQ(2, classify(8400, 5000, 0, -1));
    EXPECT_EQ(3, classify(5000, 8400, -1, 0)); // below: along -x
    EXPECT_EQ(2, classify(5000, 8400, 1, 0));
    EXPECT_EQ(3, classify(1800, 5000, 0, -1)); // left, and the top-left corner: along -y
    EXPECT_EQ(2, classify(1800, 5000, 0, 1));
    EXPECT_EQ(3, classify(1800, 1800, 0, -1));
}

TEST(Level, UpdateMovesObjectsBetweenLeavesOnceAFrame)
{
    TestShip player(5000.0, 5000.0, TEAM_PLAYER, false);
    Level level;
    ASSERT_TRUE(level.Create(80, 128, 128, nullptr));
    std::vector<QuadNode*> leaves;
    level.GetRoot()->CollectLeaves(leaves);
    auto background = std::make_unique<RecordingBackground>();
    RecordingBackground* pBackground = background.get();
    level.SetBackground(std::move(background));

    // Into leaf 1, visited after leaf 0; and back into leaf 0, visited before.
    TestShip* crosser = MakeMover(630.0, 100.0, 90.0, 100.0);
    TestShip* back = MakeMover(645.0, 200.0, 270.0, 100.0);
    TestShip* scenery = MakeMover(635.0, 300.0, 90.0, 100.0, false);
    level.Add(crosser, LAYER_SHIPS);
    level.Add(back, LAYER_SHIPS);
    level.Add(scenery, LAYER_SCENERY);
    level.Update(0.25f);
    EXPECT_EQ(1, QuadNode::GetFrameCounter());
    EXPECT_DOUBLE_EQ(0.25, level.GetElapsed());
    EXPECT_EQ(leaves[1], crosser->GetLeaf());
    EXPECT_EQ(1, crosser->GetUpdateCount()); // not updated again in leaf 1
    EXPECT_NEAR(655.0, crosser->GetX(), 1e-3); // headings convert with 22/7
    EXPECT_EQ(leaves[0], back->GetLeaf());
    EXPECT_NEAR(620.0, back->GetX(), 1e-3);
    EXPECT_EQ(leaves[0], scenery->GetLeaf()); // scenery never changes leaves
    EXPECT_TRUE(pBackground->m_last.empty()); // nothing to drift with before there is a player

    // An object that joins mid-mission is also moved only once in the frame it crosses over.
    level.Update(0.25f);
    level.Update(0.25f);
    TestShip* late = MakeMover(630.0, 400.0, 90.0, 100.0);
    level.Add(late, LAYER_SHIPS);
    level.Update(0.25f);
    EXPECT_EQ(leaves[1], late->GetLeaf());
    EXPECT_NEAR(655.0, late->GetX(), 1e-3);

    // The background drifts with the player's combined velocity, y up, heading in radians.
    player.Desc().SetHeading(90.0);
    player.Desc().SetSpeed(100.0);
    player.Desc().SetStrafe(1.0);
    player.Place(5000.0, 5000.0);
    const double vx = player.Desc().GetVelocity().x + player.Desc().GetStrafeVelocity().x;
    const double vy = player.Desc().GetVelocity().y + player.Desc().GetStrafeVelocity().y;
    level.SetPlayer(&player);
    level.Add(&player, LAYER_SHIPS);
    level.Update(0.1f);
    EXPECT_EQ((std::vector<double>{vx, -vy, 90.0 * DEG2RAD}), pBackground->m_last);
    EXPECT_NEAR(-100.0, pBackground->m_last[1], 0.2); // strafing right at heading 90 is +y
}

TEST(Level, RemovesTheDeadAndWhatLeavesTheMap)
{
    NameRegistry registry;
    g_pNameRegistry = &registry;
    RecordingMission mission;
    g_destroyed = 0;
    TestShip player(3000.0, 3000.0, TEAM_PLAYER, false);
    {
        Level level;
        ASSERT_TRUE(level.Create(80, 128, 128, nullptr));
        level.SetMission(&mission);
        level.SetPlayer(&player);
        level.SetEnemyCount(3);
        registry.Enter("player", &player);
        level.Add(&player, LAYER_SHIPS);
        TestShip* enemy = new TestShip(4000.0, 4000.0);
        TestShip* friendly = new TestShip(4100.0, 4000.0, TEAM_COMPUTER, false);
        TestShot* shot = new TestShot(4200.0, 4000.0, TEAM_COMPUTER);
        TestShip* scenery = new TestShip(4300.0, 4000.0);
        TestShot* leaving = new TestShot(5.0, 5000.0, TEAM_COMPUTER);
        leaving->GetPhysicalDesc()->SetHeading(270.0);
        leaving->GetPhysicalDesc()->SetSpeed(1000.0);
        level.Add(enemy, LAYER_SHIPS);
        level.Add(friendly, LAYER_SHIPS);
        level.Add(shot, LAYER_PROJECTILES);
        level.Add(scenery, LAYER_SCENERY);
        level.Add(leaving, LAYER_PROJECTILES);
        enemy->SetDead(true);
        friendly->SetDead(true);
        shot->SetDead(true);
        scenery->SetDead(true);
        level.Update(0.01f);
        EXPECT_EQ(4, g_destroyed); // all but the scenery
        EXPECT_EQ(2, level.GetEnemiesLeft());
        EXPECT_EQ(3, level.GetNumEnemies());
        EXPECT_NE(nullptr, scenery->GetLeaf());

        // The player's ship destroyed stays in the world and loses the mission.
        player.SetDead(true);
        level.Update(0.01f);
        EXPECT_TRUE(mission.m_defeat);
        EXPECT_TRUE(registry.Has("player"));
        EXPECT_EQ(nullptr, registry.Find("player"));
        EXPECT_NE(nullptr, player.GetLeaf());
        // Nor is it lost off the map: it stays for the mission to steer back.
        player.SetDead(false);
        player.Desc().SetHeading(270.0);
        player.Desc().SetSpeed(1000.0);
        player.Place(5.0, 5000.0);
        level.Add(&player, LAYER_SHIPS);
        level.Update(0.01f);
        EXPECT_LT(player.GetX(), 0.0);
        EXPECT_NE(nullptr, player.GetLeaf());
        EXPECT_EQ(4, g_destroyed);
    }
    // Tearing down destroys the scenery but only unlinks the player's ship.
    EXPECT_EQ(5, g_destroyed);
    EXPECT_EQ(nullptr, player.GetLeaf());
    g_pNameRegistry = nullptr;
}
