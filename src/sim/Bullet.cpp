#include "sim/Bullet.h"

namespace
{
// One small triangle: a round hits when one of its corners is inside a ship.
const Triangle BULLET_SHAPE = {0.0, 0.0, 2.0, 2.0, 2.0, 0.0};
} // namespace

void Bullet::Launch(const PhysicalDesc& p_shooter, uint16_t p_mountX, uint16_t p_mountY)
{
    Projectile::Launch(p_shooter, p_mountX, p_mountY);
    m_pPhysicalDesc->SetSpeed(SPEED + p_shooter.GetSpeed());
    m_pPhysicalDesc->SetHeading(p_shooter.GetHeading());
    m_pPhysicalDesc->SetTriangles(&BULLET_SHAPE, 1);
    LoadImage("art\\bullet00.bmp");
}

bool Bullet::Update(float p_dt)
{
    ++m_updateCount;
    if (m_pPhysicalDesc)
    {
        m_pPhysicalDesc->Update(p_dt);
    }
    m_age += p_dt;
    if (m_age >= LIFETIME)
    {
        SetDead(true);
    }
    return true;
}

bool Bullet::Render()
{
    if (m_pImage && m_pPhysicalDesc)
    {
        m_pImage->Draw(m_pPhysicalDesc->GetX(), m_pPhysicalDesc->GetY(), 0.0, false);
    }
    return true;
}
