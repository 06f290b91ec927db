#include "sim/Collide.h"

#include "sim/Projectile.h"
#include "sim/QuadNode.h"
#include "sim/WorldObject.h"

namespace
{
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
            if (IsStrictlyInside(area, corners.x1, corners.y1) || IsStrictlyInside(area, corners.x2, corners.y2) ||
                IsStrictlyInside(area, corners.x3, corners.y3))
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
    const Triangle& t = p_triangle;
    // Each edge (p0->p1, p1->p2, p2->p0) crossed with the vector from its start to the point.
    const double c0 = (t.x2 - t.x1) * (p_y - t.y1) - (t.y2 - t.y1) * (p_x - t.x1);
    const double c1 = (t.x3 - t.x2) * (p_y - t.y2) - (t.y3 - t.y2) * (p_x - t.x2);
    const double c2 = (t.x1 - t.x3) * (p_y - t.y3) - (t.y1 - t.y3) * (p_x - t.x3);
    return (c0 > 0.0 && c1 > 0.0 && c2 > 0.0) || (c0 < 0.0 && c1 < 0.0 && c2 < 0.0);
}

void Collide(QuadNode* p_a, QuadNode* p_b)
{
    if (p_a == nullptr || p_b == nullptr)
    {
        return;
    }
    for (WorldObject* ship = p_a->GetList(LAYER_SHIPS); ship != nullptr; ship = ship->GetNextInList())
    {
        const PhysicalDesc* shipDesc = ship->GetPhysicalDesc();
        if (shipDesc == nullptr)
        {
            continue;
        }
        WorldObject* object = p_b->GetList(LAYER_PROJECTILES);
        while (object != nullptr)
        {
            const PhysicalDesc* shotDesc = object->GetPhysicalDesc();
            // Only projectiles deal damage; anything else put into layer 2 is passed over.
            // The cheap tests come first: this runs for every ship and shot of a leaf.
            if (shotDesc == nullptr || object->GetTeam() == ship->GetTeam() || !AnyCornerInside(*shipDesc, *shotDesc))
            {
                object = object->GetNextInList();
                continue;
            }
            Projectile* shot = dynamic_cast<Projectile*>(object);
            if (shot == nullptr)
            {
                object = object->GetNextInList();
                continue;
            }
            ship->TakeDamage(shot->GetDamage());
            if (shot->SurvivesHits())
            {
                object = object->GetNextInList();
                continue;
            }
            shot->SetDead(true);
            // Taken after SetDead, which may have put something new into the list (a bomb's
            // blast): the walk goes on after the shot's predecessor, or from the head.
            WorldObject* previous = static_cast<WorldObject*>(shot->m_pPrev);
            p_b->Remove(shot, LAYER_PROJECTILES);
            object = previous != nullptr ? previous->GetNextInList() : p_b->GetList(LAYER_PROJECTILES);
        }
    }
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
