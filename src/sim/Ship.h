#pragma once

#include <cstdint>
#include <memory>

#include "sim/HullAnimation.h"
#include "sim/Projectile.h"
#include "sim/WorldObject.h"

class EnginePart;
class HullPart;
class ShieldPart;
class Weapon;

// A world object that flies under commands within its speed limits, carries up to four
// weapons, has armour and a shield, and explodes when its armour is gone. The player's ship
// and the computer ships derive from it; the mission mode and the controllers give both the
// same commands.
//
// Directions of the commands: 0 forward, 1 backward, 2 left, 3 right, 4 none.
class Ship : public WorldObject
{
public:
    static constexpr int NUM_MOUNTS = 4;
    static constexpr int DIRECTION_FORWARD = 0;
    static constexpr int DIRECTION_BACKWARD = 1;
    static constexpr int DIRECTION_LEFT = 2;
    static constexpr int DIRECTION_RIGHT = 3;
    static constexpr int DIRECTION_NONE = 4;
    // The shield picture is this much larger than the collision box.
    static constexpr double SHIELD_SCALE = 1.7;
    // Seconds the shield picture shows after a hit.
    static constexpr double HIT_FLASH_TIME = 1.0;
    static constexpr unsigned DEFAULT_ABSORPTION = 10;

    Ship();
    ~Ship() override;

    // Clamps the speed to the limits, moves, animates, recomputes the centre, lets the
    // controller think, and counts the time since each mount fired and since the last hit.
    bool Update(float p_dt) override;
    // The hull animation, and the shield picture while a hit shows.
    bool Render() override;
    // The size of the hull animation's first still frame.
    int GetWidth() const override;
    int GetHeight() const override;
    double GetCenterX() const override { return m_centerX; }
    double GetCenterY() const override { return m_centerY; }
    // The shield takes at most the absorption of each hit and the armour the rest; armour
    // reaching 0 kills the ship, which explodes and pays its reward. A ship already dead
    // ignores further hits: it has been killed and paid for once.
    void TakeDamage(unsigned p_amount) override;
    virtual bool Load(const char* p_fileName) = 0;

    // 0: accelerate by the thrust, 1: brake by it, anything else: neither.
    void SetThrust(int p_direction);
    // 2: turn left at the full turn rate, 3: right, anything else: straight on.
    void SetRotation(int p_direction);
    void SetRotationSpeed(float p_degreesPerSecond);
    void SetAcceleration(float p_acceleration);

    // Fires mount p_mount (0..3): the projectile made, for the caller to add to the level in
    // layer 2, or null (an empty mount, a weapon not ready, no ammunition). With p_takeAmmo
    // the player's ship pays one round of the weapon's ammunition.
    std::unique_ptr<Projectile> Fire(int p_mount, bool p_takeAmmo);
    // Armour and shield back to full, alive again.
    void Repair();
    // Leaves an explosion at the ship in the current level, with its sound.
    void Explode();
    // Gives the ship the behaviour of type p_type: 1 the spawner, anything else the attack
    // behaviour (replacing any controller it had).
    void CreateController(uint8_t p_type);
    // Pays the player for destroying this ship; only computer ships (those with a controller)
    // pay, 10 x their full armour (100 x in a two-player game), and only in a mission.
    void AwardKill();

    uint16_t GetMinSpeed() const { return m_minSpeed; }
    uint16_t GetMaxSpeed() const { return m_maxSpeed; }
    uint16_t GetThrust() const { return m_thrust; }
    uint16_t GetTurnRate() const { return m_turnRate; }
    unsigned GetArmour() const { return m_armour; }
    unsigned GetShield() const { return m_shield; }
    unsigned GetMaxArmour() const { return m_maxArmour; }
    unsigned GetMaxShield() const { return m_maxShield; }
    unsigned GetAbsorption() const { return m_absorption; }
    const HullPart* GetHull() const { return m_pHull; }
    const EnginePart* GetEngine() const { return m_pEngine; }
    const ShieldPart* GetShieldGenerator() const { return m_pShieldGenerator; }
    // Null for an empty mount or a number out of range.
    Weapon* GetWeapon(int p_mount) const;
    double GetTimeSinceShot(int p_mount) const;
    bool IsHitFlashing() const { return m_hitFlash; }
    HullAnimation& GetHullAnimation() { return m_hullAnimation; }
    WorldObject* GetShieldSprite() const { return m_pShieldSprite.get(); }

protected:
    // The pilot's counter that a weapon of ammunition kind p_ammoKind uses; null when no
    // ammunition is counted (every computer ship, and kinds that need none).
    virtual uint16_t* GetAmmoCounter(uint8_t p_ammoKind);
    // Sizes the shield picture to SHIELD_SCALE times the box, loading it on first use.
    void SizeShieldSprite(unsigned p_boxWidth, unsigned p_boxHeight);

    std::unique_ptr<WorldObject> m_pShieldSprite;
    bool m_hitFlash = false;
    double m_hitFlashTime = 0.0;
    double m_timeSinceShot[NUM_MOUNTS] = {100.0, 100.0, 100.0, 100.0};
    double m_lastDt = 0.0;
    const HullPart* m_pHull = nullptr;
    const EnginePart* m_pEngine = nullptr;
    const ShieldPart* m_pShieldGenerator = nullptr;
    Weapon* m_pWeapons[NUM_MOUNTS] = {nullptr, nullptr, nullptr, nullptr};
    HullAnimation m_hullAnimation;
    unsigned m_armour = 0;
    unsigned m_shield = 0;
    unsigned m_absorption = DEFAULT_ABSORPTION;
    unsigned m_maxShield = 0;
    unsigned m_maxArmour = 0;
    double m_centerX = 0.0;
    double m_centerY = 0.0;
    uint16_t m_minSpeed = 0;
    uint16_t m_maxSpeed = 0;
    uint16_t m_thrust = 0;
    uint16_t m_turnRate = 0;
};
