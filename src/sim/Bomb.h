#pragma once

#include <memory>
#include <vector>

#include "sim/Projectile.h"

class Animation;

// A bomb: dropped at the shooter's speed less 50, so it falls behind a moving ship. It hurts
// every ship it overlaps, every frame, and after half a second it detonates into a blast.
class Bomb : public Projectile
{
public:
    static constexpr double SPEED_LOSS = 50.0;
    static constexpr float FUSE_TIME = 0.5f;
    static constexpr int BLAST_TRIANGLES = 16;

    Bomb() = default;

    // Also loads the bomb's picture, whose size is the bomb's shape.
    void SetDamage(unsigned p_damage, uint8_t p_team) override;
    void Launch(const PhysicalDesc& p_shooter, uint16_t p_mountX, uint16_t p_mountY) override;
    bool Update(float p_dt) override;
    bool Render() override;
    // Dying detonates the bomb (once): a blast with the bomb's damage and team goes into the
    // current level.
    void SetDead(bool p_dead) override;

    float GetAge() const { return m_age; }
    // The blast's shape, in the bomb's own coordinates: the 64 x 64 square from (0, 0) as
    // four 32 x 32 cells, each cut into the four triangles joining its centre to its sides.
    static std::vector<Triangle> MakeBlastShape();

private:
    float m_age = 0.0f;
    std::vector<Triangle> m_blastShape;
};

// What a bomb leaves: an explosion that hurts the first ship it touches, and is used up by it.
// It owns its explosion animation and dies with it.
class BombBlast : public Projectile
{
public:
    BombBlast(double p_x, double p_y, double p_heading, const std::vector<Triangle>& p_shape);
    ~BombBlast() override;

    // Also places the explosion animation at the blast.
    void SetDamage(unsigned p_damage, uint8_t p_team) override;
    bool Update(float p_dt) override;
    bool Render() override;

    const Animation* GetAnimation() const { return m_pAnimation.get(); }

private:
    std::unique_ptr<Animation> m_pAnimation;
};
