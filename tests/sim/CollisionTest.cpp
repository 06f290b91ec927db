#include "sim/Collide.h"
#include "sim/CollisionGrid.h"
#include "sim/Level.h"
#include "sim/QuadNode.h"
#include "WorldDoubles.h"

#include <gtest/gtest.h>

#include <utility>

using namespace worldtest;

TEST(Collide, CornersMustLieStrictlyInside)
{
    for (const Triangle& t : {Triangle{0, 0, 0, 10, 10, 0}, Triangle{0, 0, 10, 0, 0, 10}})
    {
        EXPECT_TRUE(IsStrictlyInside(t, 2, 2));
        EXPECT_FALSE(IsStrictlyInside(t, 5, 5));  // on an edge
        EXPECT_FALSE(IsStrictlyInside(t, 10, 0)); // a corner
        EXPECT_FALSE(IsStrictlyInside(t, 6, 6));
    }
    TestShip a(100, 100);
    TestShip b(120, 120);
    TestShip big(0, 0);
    big.Desc().SetBox(200, 200, 0, 0);
    big.Place(0, 0);
    TestShip beside(132, 100); // shares an edge only
    EXPECT_TRUE(Touching(&a, &b));
    EXPECT_TRUE(Touching(&big, &a)); // wholly inside, either way round
    EXPECT_TRUE(Touching(&a, &big));
    EXPECT_FALSE(Touching(&a, &beside));
    b.Desc().SetTriangles(nullptr, 0); // a beam gone dark touches nothing
    EXPECT_FALSE(Touching(&a, &b));
    EXPECT_FALSE(Touching(&a, nullptr));
}

TEST(CollisionGrid, LeavesFillTwoByTwoBlocksRowByRow)
{
    const auto corner = [](const CollisionGrid* p_grid, int p_row, int p_column) {
        const QuadNode* cell = p_grid->GetCell(p_row, p_column);
        return cell != nullptr ? std::make_pair(cell->GetXMin(), cell->GetYMin()) : std::make_pair(-1, -1);
    };
    Level level;
    // 20 x 20 tiles: the blocks are the quadrants, so every cell holds the leaf at its place.
    ASSERT_TRUE(level.Create(20, 128, 128, nullptr));
    ASSERT_EQ(4, level.GetGrid()->GetSize());
    EXPECT_EQ(std::make_pair(640, 0), corner(level.GetGrid(), 0, 1));
    EXPECT_EQ(std::make_pair(1280, 640), corner(level.GetGrid(), 1, 2));
    EXPECT_EQ(std::make_pair(1920, 1920), corner(level.GetGrid(), 3, 3));
    EXPECT_EQ(nullptr, level.GetGrid()->GetCell(4, 0));
    // 80 x 80 tiles: blocks in quadtree order, so past the fourth column the cells leave
    // the map's layout (cells are only ever collided with themselves).
    ASSERT_TRUE(level.Create(80, 128, 128, nullptr));
    EXPECT_EQ(std::make_pair(640, 640), corner(level.GetGrid(), 1, 1));   // leaf 3
    EXPECT_EQ(std::make_pair(1280, 0), corner(level.GetGrid(), 0, 2));    // leaf 4
    EXPECT_EQ(std::make_pair(0, 1280), corner(level.GetGrid(), 0, 4));    // leaf 8
    EXPECT_EQ(std::make_pair(1920, 1920), corner(level.GetGrid(), 1, 7)); // leaf 15
    EXPECT_EQ(std::make_pair(0, 2560), corner(level.GetGrid(), 2, 0));    // leaf 32
    // A size that is not 10 x a power of two still gives every leaf a cell.
    ASSERT_TRUE(level.Create(30, 128, 128, nullptr));
    ASSERT_EQ(4, level.GetGrid()->GetSize());
    EXPECT_NE(nullptr, level.GetGrid()->GetCell(3, 3));
}

TEST(CollisionGrid, ShotsHitOtherTeamsInTheirOwnLeafOnly)
{
    g_destroyed = 0;
    Level level;
    ASSERT_TRUE(level.Create(80, 128, 128, nullptr));
    TestShip* ship = new TestShip(3000, 3000);
    level.Add(ship, LAYER_SHIPS);
    TestShot* own = new TestShot(3010, 3010, TEAM_COMPUTER);
    TestShot* grazing = new TestShot(3032, 3010, TEAM_PLAYER); // a corner on the ship's edge
    level.Add(own, LAYER_PROJECTILES);
    level.Add(new TestShot(3012, 3012, TEAM_PLAYER, Projectile::HIT_KIND_DEFAULT, 5), LAYER_PROJECTILES);
    level.Add(grazing, LAYER_PROJECTILES);
    level.Add(new TestShot(3014, 3014, TEAM_PLAYER, Projectile::HIT_KIND_DEFAULT, 7), LAYER_PROJECTILES);
    level.GetGrid()->Update();
    // Both hits land in one pass: the walk goes on after each removed shot.
    EXPECT_EQ(2, ship->m_hits);
    EXPECT_EQ(12u, ship->m_damage);
    EXPECT_EQ(2, g_destroyed);
    EXPECT_EQ(grazing, ship->GetLeaf()->GetList(LAYER_PROJECTILES));
    EXPECT_EQ(own, grazing->GetNextInList());
    level.GetGrid()->Update(); // the own team passes through, frame after frame
    EXPECT_EQ(2, ship->m_hits);

    // A ship reaching 20 units over a leaf border is not hit by a shot on the other side.
    TestShip* edge = new TestShip(628, 100);
    TestShot* across = new TestShot(645, 110, TEAM_PLAYER);
    level.Add(edge, LAYER_SHIPS);
    level.Add(across, LAYER_PROJECTILES);
    ASSERT_TRUE(Touching(edge, across));
    level.GetGrid()->Update();
    EXPECT_EQ(0, edge->m_hits);
    level.Add(new TestShot(635, 110, TEAM_PLAYER), LAYER_PROJECTILES);
    level.GetGrid()->Update();
    EXPECT_EQ(1, edge->m_hits);
}

TEST(CollisionGrid, BombsAndBeamsHurtEveryFrame)
{
    g_destroyed = 0;
    Level level;
    ASSERT_TRUE(level.Create(80, 128, 128, nullptr));
    TestShip* ship = new TestShip(3000, 3000, TEAM_PLAYER, false);
    level.Add(ship, LAYER_SHIPS);
    level.Add(new TestShot(3010, 3010, TEAM_COMPUTER, Projectile::HIT_KIND_BOMB, 3), LAYER_PROJECTILES);
    level.Add(new TestShot(3020, 3020, TEAM_COMPUTER, Projectile::HIT_KIND_BEAM, 4), LAYER_PROJECTILES);
    for (int frame = 0; frame < 3; ++frame)
    {
        level.Update(1.0f / 60.0f);
    }
    EXPECT_EQ(6, ship->m_hits);
    EXPECT_EQ(21u, ship->m_damage);
    EXPECT_EQ(0, g_destroyed);
}
