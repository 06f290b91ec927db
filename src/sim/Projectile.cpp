#include "sim/Projectile.h"

#include <cmath>
#include <memory>

#include "sim/MathTables.h"

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

void Projectile::Launch(const PhysicalDesc& p_shooter, uint16_t p_mountX, uint16_t p_mountY)
{
    m_pPhysicalDesc = std::make_unique<PhysicalDesc>();
    const Vector2 point = LaunchPoint(p_shooter.GetX(), p_shooter.GetY(), p_shooter.GetHeading(), p_mountX, p_mountY);
    m_pPhysicalDesc->SetPosition(point.x, point.y);
}

Vector2 Projectile::LaunchPoint(double p_x, double p_y, double p_heading, uint16_t p_mountX, uint16_t p_mountY)
{
    const double mountX = p_mountX;
    const double mountY = p_mountY;
    const double radius = std::sqrt(mountX * mountX + mountY * mountY);
    // Offsets are never negative, so acos finds the right half-turn. A mount at the origin
    // has no direction: the shot starts on the shooter's position itself.
    const double divisor = radius != 0.0 ? radius : 1.0;
    const double degrees = std::trunc(std::acos(mountX / divisor) * RAD2DEG + p_heading + 0.5);
    int index = 0;
    if (std::isfinite(degrees))
    {
        index = static_cast<int>(std::fmod(degrees, 360.0));
        if (index < 0)
        {
            index += 360;
        }
    }
    return Vector2{p_x + radius * g_cosTable[index], p_y + radius * g_sinTable[index]};
}
