#include "sim/Weapon.h"

#include "app/Random.h"
#include "pilot/DataFile.h"
#include "sim/BfgShot.h"
#include "sim/Bomb.h"
#include "sim/Bullet.h"
#include "sim/LaserBeam.h"
#include "sim/Missile.h"
#include "sound/Sound.h"

namespace
{
enum WeaponIndex : int
{
    INDEX_MACHINE_GUN = 0,
    INDEX_LASER = 1,
    INDEX_MULTI_LASER = 2,
    INDEX_BOMB = 3,
    INDEX_MISSILE = 4,
    INDEX_BFG = 5,
};

void PlaySound(int p_id)
{
    if (p_id >= 0 && g_pSound != nullptr)
    {
        g_pSound->Play(p_id);
    }
}
} // namespace

const char* const Weapon::NAMES[NUM_KINDS] = {"Machine Gun", "Laser", "Multi-Laser", "Bomb", "Missile", "BFG"};
const int32_t Weapon::PRICES[NUM_KINDS] = {5000, 10000, 20000, 10000, 35000, 100000};

Weapon::Weapon(int p_index, int32_t p_minDamage, int32_t p_maxDamage, uint8_t p_ammoKind)
    : m_tableIndex(p_index), m_ammoKind(p_ammoKind), m_minDamage(p_minDamage), m_maxDamage(p_maxDamage)
{
    m_name = NAMES[p_index];
    m_price = PRICES[p_index];
}

Weapon::~Weapon() = default;

bool Weapon::Load(const char* p_fileName)
{
    DataFile file;
    if (p_fileName == nullptr || !file.Open(p_fileName, "rb"))
    {
        return false;
    }
    const bool read = Read(file);
    file.Close();
    return read;
}

bool Weapon::Read(DataFile& p_file)
{
    (void)p_file;
    return true;
}

unsigned Weapon::RollDamage() const
{
    const int64_t range = static_cast<int64_t>(m_maxDamage) - m_minDamage;
    int64_t damage = m_minDamage;
    if (range > 0)
    {
        damage += GameRand() % range;
    }
    return damage > 0 ? static_cast<unsigned>(damage) : 0u;
}

std::unique_ptr<Projectile> Weapon::Fire(const PhysicalDesc& p_shooter, uint16_t p_mountX, uint16_t p_mountY,
                                         uint8_t p_team, double p_sinceLastShot) const
{
    if (p_sinceLastShot < GetLeastTimeBetweenShots())
    {
        return nullptr;
    }
    PlaySound(GetSoundBefore());
    std::unique_ptr<Projectile> shot = MakeProjectile();
    shot->SetDamage(RollDamage(), p_team);
    shot->Launch(p_shooter, p_mountX, p_mountY);
    PlaySound(GetSoundAfter());
    return shot;
}

MachineGun::MachineGun()
{
    m_price = PRICES[INDEX_MACHINE_GUN];
    m_ammoKind = AMMO_BULLETS;
}

bool MachineGun::Read(DataFile& p_file)
{
    ReadHeader(p_file);
    m_byte1 = p_file.ReadUInt8();
    m_byte2 = p_file.ReadUInt8();
    m_value16 = p_file.ReadUInt16();
    m_minDamage = p_file.ReadInt32();
    m_maxDamage = p_file.ReadInt32();
    m_extraValue = p_file.ReadInt32();
    m_extraByte = p_file.ReadUInt8();
    // Whatever the file says, a machine gun costs the same and fires bullets.
    m_price = PRICES[INDEX_MACHINE_GUN];
    m_ammoKind = AMMO_BULLETS;
    GameSrandFromTime();
    return true;
}

std::unique_ptr<Projectile> MachineGun::MakeProjectile() const
{
    return std::make_unique<Bullet>();
}

int MachineGun::GetSoundAfter() const
{
    return Sound::SOUND_SHOOT;
}

Laser::Laser() : Laser(INDEX_LASER) {}

Laser::Laser(int p_index) : Weapon(p_index, 8, 20, AMMO_ENERGY) {}

std::unique_ptr<Projectile> Laser::MakeProjectile() const
{
    return std::make_unique<LaserBeam>();
}

int Laser::GetSoundAfter() const
{
    return Sound::SOUND_LASER_SHOT;
}

MultiLaser::MultiLaser() : Laser(INDEX_MULTI_LASER) {}

std::unique_ptr<Projectile> MultiLaser::MakeProjectile() const
{
    return std::make_unique<MultiLaserBurst>();
}

int MultiLaser::GetSoundBefore() const
{
    return Sound::SOUND_LASER_SHOT;
}

BombBay::BombBay() : Weapon(INDEX_BOMB, 25, 35, AMMO_MISSILES) {}

std::unique_ptr<Projectile> BombBay::MakeProjectile() const
{
    return std::make_unique<Bomb>();
}

MissileLauncher::MissileLauncher() : Weapon(INDEX_MISSILE, 35, 45, AMMO_MISSILES) {}

std::unique_ptr<Projectile> MissileLauncher::MakeProjectile() const
{
    return std::make_unique<Missile>();
}

Bfg::Bfg() : Weapon(INDEX_BFG, 50000, 50001, AMMO_ENERGY) {}

std::unique_ptr<Projectile> Bfg::MakeProjectile() const
{
    return std::make_unique<BfgShot>();
}
