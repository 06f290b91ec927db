#include "sim/BfgShot.h"

#include <cassert>
#include <cmath>

#include "platform/Gl.h"
#include "sim/CollisionGrid.h"
#include "sim/Level.h"
#include "sim/QuadNode.h"
#include "sim/Ship.h"

namespace
{
WorldObject* CurrentPlayer()
{
    Level* level = Level::GetCurrent();
    return level != nullptr ? level->GetPlayer() : nullptr;
}
} // namespace

BfgShot::BfgShot()
{
    m_hitKind = HIT_KIND_BOMB;
}

void BfgShot::Launch(const PhysicalDesc& p_shooter, uint16_t p_mountX, uint16_t p_mountY)
{
    Projectile::Launch(p_shooter, p_mountX, p_mountY);
    // The sweep does the damage; the square the shot leaves behind touches nothing.
    m_pPhysicalDesc->SetTriangles(nullptr, 0);
    Sweep();
}

void BfgShot::Sweep()
{
    Level* level = Level::GetCurrent();
    CollisionGrid* grid = level != nullptr ? level->GetGrid() : nullptr;
    assert(grid != nullptr && "pPS");
    WorldObject* player = CurrentPlayer();
    if (grid == nullptr || player == nullptr)
    {
        return;
    }
    const double px = player->GetX();
    const double py = player->GetY();
    for (int row = 0; row < grid->GetSize(); ++row)
    {
        for (int column = 0; column < grid->GetSize(); ++column)
        {
            QuadNode* cell = grid->GetCell(row, column);
            WorldObject* object = cell != nullptr ? cell->GetList(LAYER_SHIPS) : nullptr;
            for (; object != nullptr; object = object->GetNextInList())
            {
                if (object == player || !object->IsEnemy())
                {
                    continue;
                }
                const double dx = object->GetX() - px;
                const double dy = object->GetY() - py;
                if (std::sqrt(dx * dx + dy * dy) > SWEEP_RADIUS)
                {
                    continue;
                }
                Ship* ship = dynamic_cast<Ship*>(object);
                // A ship that died earlier in this frame has been paid for already.
                if (ship != nullptr && !ship->IsDead())
                {
                    ship->Explode();
                    ship->SetDead(true);
                    ship->AwardKill();
                }
            }
        }
    }
}

bool BfgShot::Update(float p_dt)
{
    ++m_updateCount;
    if (WorldObject* player = CurrentPlayer(); player != nullptr && m_pPhysicalDesc)
    {
        m_pPhysicalDesc->SetPosition(player->GetX(), player->GetY());
    }
    m_age += p_dt;
    m_red -= static_cast<int>(std::trunc(m_age * 10.0f));
    m_alpha -= static_cast<int>(std::trunc(m_age * 3.0f));
    if (m_red < 0)
    {
        m_red = 0;
    }
    if (m_alpha <= 0)
    {
        m_alpha = 0;
        m_dead = true;
    }
    return true;
}

bool BfgShot::Render()
{
    if (!m_pPhysicalDesc)
    {
        return false;
    }
    const double x = m_pPhysicalDesc->GetX();
    const double y = m_pPhysicalDesc->GetY();
    const double r = SWEEP_RADIUS;
    glDisable(GL_TEXTURE_2D);
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glLineWidth(5.0f);
    glColor4ub(static_cast<GLubyte>(m_red), 255, 255, static_cast<GLubyte>(m_alpha));
    glBegin(GL_LINE_LOOP);
    glVertex2d(x - r, y - r);
    glVertex2d(x - r, y + r);
    glVertex2d(x + r, y + r);
    glVertex2d(x + r, y - r);
    glEnd();
    glLineWidth(1.0f);
    glBlendFunc(GL_ONE, GL_ZERO);
    glDisable(GL_BLEND);
    glEnable(GL_TEXTURE_2D);
    return true;
}
