#pragma once

#include <cstdint>

#include "sim/Geometry.h"
#include "sim/WorldObject.h"

// A shot: what the collision pass tests against the ships. It deals m_damage to the first
// ship of another team it touches; the hit kind decides whether it is used up by a hit.
// The kinds (bullets, beams, missiles, bombs, the BFG) derive from it.
class Projectile : public WorldObject
{
public:
    // Hit kinds whose projectile survives a hit and hurts again every frame it overlaps.
    static constexpr uint8_t HIT_KIND_MISSILE = 1; // used up like the default kind
    static constexpr uint8_t HIT_KIND_BOMB = 2;
    static constexpr uint8_t HIT_KIND_BEAM = 4;
    static constexpr uint8_t HIT_KIND_DEFAULT = 8;

    Projectile() = default;
    ~Projectile() override = default;

    // The base has no motion or picture of its own.
    bool Update(float p_dt) override;
    bool Render() override;

    virtual void SetDamage(unsigned p_damage, uint8_t p_team);
    // Makes a new description at the launch point of the shooter's mount (p_mountX, p_mountY),
    // not accelerating and not turning; each kind then sets its speed, heading and shape.
    virtual void Launch(const PhysicalDesc& p_shooter, uint16_t p_mountX, uint16_t p_mountY);

    // Where a shot leaves a shooter at (p_x, p_y) heading p_heading from the mount offset
    // (p_mountX, p_mountY), which is turned with the shooter by whole degrees.
    static Vector2 LaunchPoint(double p_x, double p_y, double p_heading, uint16_t p_mountX, uint16_t p_mountY);

    unsigned GetDamage() const { return m_damage; }
    uint8_t GetHitKind() const { return m_hitKind; }
    // Whether a hit leaves the projectile in the world.
    bool SurvivesHits() const { return m_hitKind == HIT_KIND_BOMB || m_hitKind == HIT_KIND_BEAM; }

protected:
    uint8_t m_hitKind = HIT_KIND_DEFAULT;
    unsigned m_damage = 0;
};
