#pragma once

#include <cstdint>
#include <memory>

#include "pilot/Part.h"

class DataFile;
class PhysicalDesc;
class Projectile;

// A ship part that makes a projectile when its mount fires: it refuses while its least time
// between shots has not passed, rolls the shot's damage, launches it from the mount and plays
// its sound. Ships never own weapons: one weapon object serves every ship that carries it, and
// the time since a mount last fired is kept by the ship.
//
// Machine guns are read from weapon files; the other five kinds are built in with fixed values.
class Weapon : public Part
{
public:
    static constexpr int NUM_KINDS = 6;
    // The weapon table, by which every weapon is found: "Machine Gun" finds the first
    // machine-gun file, the other names the built-in weapons.
    static const char* const NAMES[NUM_KINDS];
    static const int32_t PRICES[NUM_KINDS];

    // Which of the pilot's counters a shot takes (the player's ship only).
    static constexpr uint8_t AMMO_MISSILES = 1;
    static constexpr uint8_t AMMO_BOMBS = 2;
    static constexpr uint8_t AMMO_ENERGY = 4;
    static constexpr uint8_t AMMO_BULLETS = 8;

    ~Weapon() override;

    int GetKind() const override { return PART_WEAPON; }
    // Opens the file and reads one record from it.
    bool Load(const char* p_fileName) override;
    // Reads a record from an open file; the built-in kinds ignore it and keep their values.
    virtual bool Read(DataFile& p_file);

    // A new projectile launched from the shooter's mount (p_mountX, p_mountY), or null while
    // p_sinceLastShot is below the least time between shots.
    virtual std::unique_ptr<Projectile> Fire(const PhysicalDesc& p_shooter, uint16_t p_mountX, uint16_t p_mountY,
                                             uint8_t p_team, double p_sinceLastShot) const;
    virtual int32_t GetMaxDamage() const { return m_maxDamage; }
    // Shots per second, as the shop shows it.
    virtual float GetFiringRate() const = 0;
    // Seconds a mount must wait between two shots; 0 lets it fire on every request.
    virtual double GetLeastTimeBetweenShots() const { return 0.0; }

    // The weapon table's name, by which the catalogue finds this weapon and pilot records
    // name it ("Machine Gun" for every machine gun, whatever its file calls it).
    const char* GetTableName() const { return NAMES[m_tableIndex]; }
    int32_t GetMinDamage() const { return m_minDamage; }
    uint8_t GetAmmoKind() const { return m_ammoKind; }
    // minimum + rand() mod (maximum - minimum): minimum .. maximum - 1. A record whose maximum
    // is not above its minimum always deals the minimum; a negative roll deals nothing.
    unsigned RollDamage() const;

protected:
    // A built-in weapon with its fixed values; p_index is its place in the weapon table.
    Weapon(int p_index, int32_t p_minDamage, int32_t p_maxDamage, uint8_t p_ammoKind);
    Weapon() = default;

    virtual std::unique_ptr<Projectile> MakeProjectile() const = 0;
    // Sound ids played around the launch; -1 for none.
    virtual int GetSoundBefore() const { return -1; }
    virtual int GetSoundAfter() const { return -1; }

    int m_tableIndex = 0;
    uint8_t m_ammoKind = 0;
    int32_t m_minDamage = 0;
    int32_t m_maxDamage = 0;
    // Kept from the record; nothing uses them.
    uint8_t m_byte1 = 13;
    uint8_t m_byte2 = 13;
    uint16_t m_value16 = 0;
};

// A machine gun, read from a weapon file: its damage comes from the file, its price and
// ammunition kind are fixed. It fires a bullet on every request.
class MachineGun : public Weapon
{
public:
    // No damage until a record is read.
    MachineGun();

    // The common record, then a 32-bit value and a byte (kept, unused); also seeds the
    // random numbers from the clock.
    bool Read(DataFile& p_file) override;
    float GetFiringRate() const override { return 20.0f; }

    double GetExtraValue() const { return m_extraValue; }
    uint8_t GetExtraByte() const { return m_extraByte; }

protected:
    std::unique_ptr<Projectile> MakeProjectile() const override;
    int GetSoundAfter() const override;

private:
    double m_extraValue = 0.0;
    uint8_t m_extraByte = 0;
};

class Laser : public Weapon
{
public:
    Laser();

    float GetFiringRate() const override { return 2.0f; }
    double GetLeastTimeBetweenShots() const override { return 0.5; }

protected:
    explicit Laser(int p_index);
    std::unique_ptr<Projectile> MakeProjectile() const override;
    int GetSoundAfter() const override;
};

class MultiLaser : public Laser
{
public:
    MultiLaser();

    float GetFiringRate() const override { return 1.0f; }
    double GetLeastTimeBetweenShots() const override { return 1.0; }

protected:
    std::unique_ptr<Projectile> MakeProjectile() const override;
    int GetSoundBefore() const override;
    int GetSoundAfter() const override { return -1; }
};

class BombBay : public Weapon
{
public:
    BombBay();

    float GetFiringRate() const override { return 1.8181818f; }
    double GetLeastTimeBetweenShots() const override { return 0.55; }

protected:
    std::unique_ptr<Projectile> MakeProjectile() const override;
};

class MissileLauncher : public Weapon
{
public:
    MissileLauncher();

    float GetFiringRate() const override { return 6.6666665f; }
    double GetLeastTimeBetweenShots() const override { return 0.15; }

protected:
    std::unique_ptr<Projectile> MakeProjectile() const override;
};

class Bfg : public Weapon
{
public:
    Bfg();

    float GetFiringRate() const override { return 0.2f; }
    double GetLeastTimeBetweenShots() const override { return 5.0; }

protected:
    std::unique_ptr<Projectile> MakeProjectile() const override;
};
