#pragma once

#include "sim/Projectile.h"

// A missile: leaves 1024 units a second faster than its shooter and keeps accelerating along
// a straight line (it does not steer). It explodes where it hits, or after three seconds.
class Missile : public Projectile
{
public:
    static constexpr double SPEED = 1024.0;
    static constexpr double ACCELERATION = 300.0;
    static constexpr float LIFETIME = 3.0f;

    Missile();

    // Also loads the missile's picture.
    void SetDamage(unsigned p_damage, uint8_t p_team) override;
    void Launch(const PhysicalDesc& p_shooter, uint16_t p_mountX, uint16_t p_mountY) override;
    bool Update(float p_dt) override;
    // The picture turned with the missile.
    bool Render() override;
    // Dying leaves an explosion where the missile is, once.
    void SetDead(bool p_dead) override;

    float GetAge() const { return m_age; }

private:
    float m_age = 0.0f;
};
