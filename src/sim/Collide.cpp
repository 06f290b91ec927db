#include "sim/Collide.h"

#include <cassert>
#include <vector>

#include "sim/Projectile.h"
#include "sim/ShotIndex.h"
#include "sim/QuadNode.h"
#include "sim/WorldObject.h"

namespace
{
// Inlined into the loops below, which run for every pair of overlapping rectangles.
inline bool CornerInside(const Triangle& p_triangle, double p_x, double p_y)
{
    const Triangle& t = p_triangle;
    // Each edge (p0->p1, p1->p2, p2->p0) crossed with the vector from its start to the point.
    const double c0 = (t.x2 - t.x1) * (p_y - t.y1) - (t.y2 - t.y1) * (p_x - t.x1);
    const double c1 = (t.x3 - t.x2) * (p_y - t.y2) - (t.y3 - t.y2) * (p_x - t.x2);
    const double c2 = (t.x1 - t.x3) * (p_y - t.y3) - (t.y1 - t.y3) * (p_x - t.x3);
    return (c0 > 0.0 && c1 > 0.0 && c2 > 0.0) || (c0 < 0.0 && c1 < 0.0 && c2 < 0.0);
}

// Whether some corner of a triangle of p_shape lies strictly inside some triangle of
// p_area; both are world shapes.
bool AnyCornerInside(const PhysicalDesc& p_area, const PhysicalDesc& p_shape)
{
    // A corner strictly inside a triangle of the area lies in both bounding rectangles, so
    // shapes whose rectangles do not meet cannot pass the exact test below.
    if (p_shape.GetWorldMin().x > p_area.GetWorldMax().x || p_shape.GetWorldMax().x < p_area.GetWorldMin().x ||
        p_shape.GetWorldMin().y > p_area.GetWorldMax().y || p_shape.GetWorldMax().y < p_area.GetWorldMin().y)
    {
        return false;
    }
    const Triangle* areaTriangles = p_area.GetWorldTriangles();
    const Triangle* shapeTriangles = p_shape.GetWorldTriangles();
    const int areaCount = p_area.GetNumTriangles();
    const int shapeCount = p_shape.GetNumTriangles();
    for (int i = 0; i < areaCount; ++i)
    {
        const Triangle& area = areaTriangles[i];
        for (int j = 0; j < shapeCount; ++j)
        {
            const Triangle& corners = shapeTriangles[j];
            if (CornerInside(area, corners.x1, corners.y1) || CornerInside(area, corners.x2, corners.y2) ||
                CornerInside(area, corners.x3, corners.y3))
            {
                return true;
            }
        }
    }
    return false;
}
} // namespace

bool IsStrictlyInside(const Triangle& p_triangle, double p_x, double p_y)
{
    return CornerInside(p_triangle, p_x, p_y);
}

void Collide(QuadNode* p_a, QuadNode* p_b)
{
    ShotIndex index;
    Collide(p_a, p_b, index);
}

void Collide(QuadNode* p_a, QuadNode* p_b, ShotIndex& p_index)
{
    if (p_a == nullptr || p_b == nullptr || p_a->GetList(LAYER_SHIPS) == nullptr ||
        p_b->GetList(LAYER_PROJECTILES) == nullptr)
    {
        // Without a hit nothing can put a shot into the list.
        return;
    }
    p_index.Build(p_b);
    for (WorldObject* ship = p_a->GetList(LAYER_SHIPS); ship != nullptr; ship = ship->GetNextInList())
    {
        const PhysicalDesc* shipDesc = ship->GetPhysicalDesc();
        if (shipDesc == nullptr)
        {
            continue;
        }
        // A shot put in front of the list by an earlier hit (a bomb's blast) is tested
        // against the ships that come after that hit, as the list walk would.
        if (!p_index.IsCurrent(p_b))
        {
            p_index.Build(p_b);
        }
        const std::vector<uint32_t>& candidates =
            p_index.FindCandidates(ship->GetTeam(), shipDesc->GetWorldMin().x, shipDesc->GetWorldMin().y,
                                   shipDesc->GetWorldMax().x, shipDesc->GetWorldMax().y);
        for (uint32_t candidate : candidates)
        {
            ShotIndex::Entry& entry = p_index.GetEntry(candidate);
            if (!AnyCornerInside(*shipDesc, *entry.m_pDesc))
            {
                continue;
            }
            Projectile* shot = entry.m_pShot;
            ship->TakeDamage(shot->GetDamage());
            if (shot->SurvivesHits())
            {
                continue;
            }
            // SetDead may put something new in front of the list (a bomb's blast); this
            // ship's walk goes on after the shot all the same.
            shot->SetDead(true);
            p_index.MarkRemoved(candidate);
            p_b->Remove(shot, LAYER_PROJECTILES);
        }
    }
    assert(p_index.MatchesList(p_b));
}

bool Touching(WorldObject* p_a, WorldObject* p_b)
{
    if (p_a == nullptr || p_b == nullptr || p_a->GetPhysicalDesc() == nullptr || p_b->GetPhysicalDesc() == nullptr)
    {
        return false;
    }
    return AnyCornerInside(*p_a->GetPhysicalDesc(), *p_b->GetPhysicalDesc()) ||
           AnyCornerInside(*p_b->GetPhysicalDesc(), *p_a->GetPhysicalDesc());
}
