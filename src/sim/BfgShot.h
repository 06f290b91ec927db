#pragma once

#include "sim/Projectile.h"

// The BFG's shot. Firing it sweeps the current level at once: every computer ship within
// 1000 units of the player's ship explodes, dies and pays its reward. What stays in the world
// is only the sight of it, a square 2000 units across around the player's ship that fades out.
class BfgShot : public Projectile
{
public:
    static constexpr double SWEEP_RADIUS = 1000.0;

    BfgShot();

    // Sweeps the current level's collision grid.
    void Launch(const PhysicalDesc& p_shooter, uint16_t p_mountX, uint16_t p_mountY) override;
    bool Update(float p_dt) override;
    bool Render() override;

    float GetAge() const { return m_age; }
    int GetRed() const { return m_red; }
    int GetAlpha() const { return m_alpha; }

private:
    void Sweep();

    float m_age = 0.0f;
    int m_red = 255;
    int m_alpha = 145;
};
