#include "sim/NameRegistry.h"
#include "sim/QuadNode.h"
#include "WorldDoubles.h"

#include <gtest/gtest.h>

#include <limits>
#include <vector>

using namespace worldtest;

TEST(QuadNode, LeavesAreInclusiveQuartersDownToFiveTiles)
{
    // An 80 x 80 map of 128-unit tiles: 16 x 16 leaves of 640 units; the root's maxima are
    // inclusive, so the last row and column are one unit larger.
    QuadNode root;
    root.Build(nullptr, 1, 0, 0, 10240, 10240, 5);
    EXPECT_EQ(&root, QuadNode::GetRoot());
    const QuadNode* child1 = root.GetChild(1); // midX = (10240 + 1) / 2
    EXPECT_EQ(5, child1->GetId());
    EXPECT_EQ(5119, child1->GetYMax());
    EXPECT_EQ(5120, child1->GetXMin());
    EXPECT_EQ(10240, child1->GetXMax());
    std::vector<QuadNode*> leaves;
    root.CollectLeaves(leaves);
    ASSERT_EQ(256u, leaves.size());
    EXPECT_EQ(5, leaves[0]->GetDepth());
    EXPECT_EQ(257, leaves[1]->GetId()); // 4 · parent's id + child number
    EXPECT_EQ(639, leaves[0]->GetXMax());
    EXPECT_EQ(640, leaves[1]->GetXMin());
    EXPECT_EQ(9600, leaves.back()->GetXMin());
    EXPECT_EQ(10240, leaves.back()->GetYMax());

    g_destroyed = 0;
    auto* onMax = new TestShip(639.0, 639.9);
    auto* nextLeaf = new TestShip(640.0, 0.0);
    root.Add(onMax, LAYER_SHIPS);
    root.Add(nextLeaf, LAYER_SHIPS);
    EXPECT_EQ(leaves[0], onMax->GetLeaf());
    EXPECT_EQ(leaves[1], nextLeaf->GetLeaf());
    // Off the map, or no position at all: in no list, flagged outside.
    TestShip offMap(-1.0, 10.0);
    root.Add(&offMap, LAYER_SHIPS);
    EXPECT_TRUE(offMap.m_outside);
    EXPECT_EQ(nullptr, offMap.GetLeaf());
    TestShip broken(std::numeric_limits<double>::quiet_NaN(), 1e300);
    root.Add(&broken, LAYER_SHIPS);
    EXPECT_TRUE(broken.m_outside);
    // Layer 1 holds nothing.
    root.Add(nextLeaf, LAYER_UNUSED);
    EXPECT_EQ(nullptr, nextLeaf->GetLeaf());
    EXPECT_EQ(nullptr, leaves[1]->GetList(LAYER_UNUSED));
    delete nextLeaf;
    EXPECT_EQ(1, g_destroyed);
}

TEST(QuadNode, ListsAreNewestFirstAndDestroyingOneObjectLeavesTheOthers)
{
    NameRegistry registry;
    g_pNameRegistry = &registry;
    QuadNode leaf;
    leaf.Build(nullptr, 1, 0, 0, 639, 639, 1);
    g_destroyed = 0;
    auto* first = new TestShip(10, 10);
    auto* middle = new TestShip(20, 20);
    auto* last = new TestShip(30, 30);
    middle->SetName("station");
    registry.Enter("station", middle);
    leaf.Add(first, LAYER_SHIPS);
    leaf.Add(middle, LAYER_SHIPS);
    leaf.Add(last, LAYER_SHIPS);
    EXPECT_EQ(last, leaf.GetList(LAYER_SHIPS));
    EXPECT_EQ(middle, last->GetNextInList());

    delete middle; // takes itself out of the list and out of the registry
    EXPECT_EQ(first, last->GetNextInList());
    EXPECT_EQ(last, first->m_pPrev);
    EXPECT_TRUE(registry.Has("station"));
    EXPECT_EQ(nullptr, registry.Find("station"));
    leaf.Remove(last, LAYER_SHIPS); // the head
    EXPECT_EQ(first, leaf.GetList(LAYER_SHIPS));
    EXPECT_EQ(nullptr, first->m_pPrev);
    EXPECT_EQ(2, g_destroyed);
    // Re-adding moves an object to the front of its new list.
    leaf.Add(first, LAYER_SCENERY);
    EXPECT_EQ(nullptr, leaf.GetList(LAYER_SHIPS));
    EXPECT_EQ(first, leaf.GetList(LAYER_SCENERY));
    g_pNameRegistry = nullptr;
}
