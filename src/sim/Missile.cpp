#include "sim/Missile.h"

#include "sim/Explosion.h"

namespace
{
// An 8 x 16 box.
const Triangle MISSILE_SHAPE[2] = {
    {0.0, 0.0, 0.0, 16.0, 8.0, 0.0},
    {8.0, 16.0, 8.0, 0.0, 0.0, 16.0},
};
} // namespace

Missile::Missile()
{
    m_hitKind = HIT_KIND_MISSILE;
}

void Missile::SetDamage(unsigned p_damage, uint8_t p_team)
{
    Projectile::SetDamage(p_damage, p_team);
    LoadImage("art\\missile00.bmp");
}

void Missile::Launch(const PhysicalDesc& p_shooter, uint16_t p_mountX, uint16_t p_mountY)
{
    Projectile::Launch(p_shooter, p_mountX, p_mountY);
    m_pPhysicalDesc->SetSpeed(SPEED + p_shooter.GetSpeed());
    m_pPhysicalDesc->SetAcceleration(ACCELERATION);
    m_pPhysicalDesc->SetHeading(p_shooter.GetHeading());
    m_pPhysicalDesc->SetTriangles(MISSILE_SHAPE, 2);
}

bool Missile::Update(float p_dt)
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

bool Missile::Render()
{
    if (m_pImage && m_pPhysicalDesc)
    {
        m_pImage->Draw(m_pPhysicalDesc->GetX(), m_pPhysicalDesc->GetY(), m_pPhysicalDesc->GetHeading(), true);
    }
    return true;
}

void Missile::SetDead(bool p_dead)
{
    const bool dies = p_dead && !m_dead;
    Projectile::SetDead(p_dead);
    if (dies)
    {
        explosion::AddAt(*this);
    }
}
