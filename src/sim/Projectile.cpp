#include "sim/Projectile.h"

bool Projectile::Update(float p_dt)
{
    (void)p_dt;
    return false;
}

bool Projectile::Render()
{
    return false;
}

void Projectile::SetDamage(unsigned p_damage, uint8_t p_team)
{
    m_damage = p_damage;
    m_team = p_team;
}
