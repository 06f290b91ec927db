#pragma once

#include "sim/Projectile.h"

// A machine-gun round: flies straight along the shooter's heading at 1200 units a second
// more than the shooter, for one second, and is used up by its first hit.
class Bullet : public Projectile
{
public:
    static constexpr double SPEED = 1200.0;
    static constexpr float LIFETIME = 1.0f;

    Bullet() = default;

    void Launch(const PhysicalDesc& p_shooter, uint16_t p_mountX, uint16_t p_mountY) override;
    bool Update(float p_dt) override;
    // Alpha-tested, never turned: the round is a dot.
    bool Render() override;

    float GetAge() const { return m_age; }

private:
    float m_age = 0.0f;
};
