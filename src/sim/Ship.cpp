#include "sim/Ship.h"

#include <cmath>

#include "gfx/Image.h"
#include "pilot/ShipParts.h"
#include "sim/AttackController.h"
#include "sim/SpawnerController.h"
#include "sim/Explosion.h"
#include "sim/Level.h"
#include "sim/MathTables.h"
#include "sim/MissionEvents.h"
#include "sim/PlayerShip.h"
#include "sim/Projectile.h"
#include "sim/Weapon.h"

namespace
{
// p_value - p_amount, stopping at 0.
unsigned Reduce(unsigned p_value, unsigned p_amount)
{
    return p_value > p_amount ? p_value - p_amount : 0u;
}
} // namespace

Ship::Ship()
{
    m_pPhysicalDesc = std::make_unique<PhysicalDesc>();
    m_pShieldSprite = std::make_unique<WorldObject>();
}

Ship::~Ship() = default;

int Ship::GetWidth() const
{
    const Image* frame = m_hullAnimation.GetFrame(0);
    return frame != nullptr ? frame->GetWidth() : 0;
}

int Ship::GetHeight() const
{
    const Image* frame = m_hullAnimation.GetFrame(0);
    return frame != nullptr ? frame->GetHeight() : 0;
}

Weapon* Ship::GetWeapon(int p_mount) const
{
    return p_mount >= 0 && p_mount < NUM_MOUNTS ? m_pWeapons[p_mount] : nullptr;
}

double Ship::GetTimeSinceShot(int p_mount) const
{
    return p_mount >= 0 && p_mount < NUM_MOUNTS ? m_timeSinceShot[p_mount] : 0.0;
}

uint16_t* Ship::GetAmmoCounter(uint8_t p_ammoKind)
{
    (void)p_ammoKind;
    return nullptr;
}

void Ship::SizeShieldSprite(unsigned p_boxWidth, unsigned p_boxHeight)
{
    m_pShieldSprite->LoadImage("art\\menu\\shield.bmp");
    m_pShieldSprite->SetSize(static_cast<int>(std::trunc(SHIELD_SCALE * p_boxWidth)),
                             static_cast<int>(std::trunc(SHIELD_SCALE * p_boxHeight)));
}

bool Ship::Update(float p_dt)
{
    ++m_updateCount;
    m_lastDt = p_dt;

    // Thrust against a limit is dropped rather than kept.
    PhysicalDesc& desc = *m_pPhysicalDesc;
    if (desc.GetSpeed() >= m_maxSpeed)
    {
        desc.SetSpeed(m_maxSpeed);
        if (desc.GetAcceleration() > 0.0)
        {
            desc.SetAcceleration(0.0);
        }
    }
    else if (desc.GetSpeed() <= m_minSpeed)
    {
        desc.SetSpeed(m_minSpeed);
        if (desc.GetAcceleration() < 0.0)
        {
            desc.SetAcceleration(0.0);
        }
    }

    desc.Update(p_dt);
    m_hullAnimation.Update(p_dt);

    if (desc.GetNumTriangles() > 0)
    {
        const Triangle& first = desc.GetWorldTriangles()[0];
        m_centerX = desc.GetX() - (first.y3 - first.y2) / 2.0;
        m_centerY = desc.GetY() + (first.x3 - first.x2) / 2.0;
    }
    else
    {
        m_centerX = desc.GetX();
        m_centerY = desc.GetY();
    }

    if (m_pController)
    {
        m_controllerState = m_pController->Think(m_controllerState, p_dt);
    }
    for (double& time : m_timeSinceShot)
    {
        time += p_dt;
    }
    if (m_hitFlash)
    {
        if (m_hitFlashTime >= HIT_FLASH_TIME)
        {
            m_hitFlashTime = 0.0;
            m_hitFlash = false;
        }
        else
        {
            m_hitFlashTime += p_dt;
        }
    }
    return true;
}

bool Ship::Render()
{
    const PhysicalDesc& desc = *m_pPhysicalDesc;
    m_hullAnimation.Draw(desc.GetX(), desc.GetY(), desc.GetHeading(), desc.GetRotationSpeed() / HullAnimation::FULL_LEAN_RATE,
                         desc.GetSpeed());

    Image* shield = m_pShieldSprite->GetImage();
    // A missing shield picture would draw as a plain white box: it draws nothing instead.
    if (m_hitFlash && shield != nullptr && shield->GetTexture() != nullptr)
    {
        const double a = desc.GetBoxX() - (static_cast<double>(shield->GetWidth()) - desc.GetBoxWidth()) / 2.0;
        const double b = desc.GetBoxY() - (static_cast<double>(shield->GetHeight()) - desc.GetBoxHeight()) / 2.0;
        const double phi = (360.0 - desc.GetHeading()) * DEG2RAD;
        const double x = desc.GetX() + a * std::cos(phi) + b * std::sin(phi);
        const double y = desc.GetY() + b * std::cos(phi) - a * std::sin(phi);
        shield->Draw(x, y, desc.GetHeading(), true);
    }
    return true;
}

void Ship::SetThrust(int p_direction)
{
    const double thrust = m_thrust;
    m_pPhysicalDesc->SetAcceleration(p_direction == DIRECTION_FORWARD    ? thrust
                                     : p_direction == DIRECTION_BACKWARD ? -thrust
                                                                         : 0.0);
}

void Ship::SetRotation(int p_direction)
{
    const double rate = m_turnRate;
    m_pPhysicalDesc->SetRotationSpeed(p_direction == DIRECTION_LEFT    ? -rate
                                      : p_direction == DIRECTION_RIGHT ? rate
                                                                       : 0.0);
}

void Ship::SetRotationSpeed(float p_degreesPerSecond)
{
    m_pPhysicalDesc->SetRotationSpeed(p_degreesPerSecond);
}

void Ship::SetAcceleration(float p_acceleration)
{
    m_pPhysicalDesc->SetAcceleration(p_acceleration);
}

std::unique_ptr<Projectile> Ship::Fire(int p_mount, bool p_takeAmmo)
{
    if (p_mount < 0 || p_mount >= NUM_MOUNTS || m_pWeapons[p_mount] == nullptr)
    {
        return nullptr;
    }
    Weapon& weapon = *m_pWeapons[p_mount];
    uint16_t* ammo = GetAmmoCounter(weapon.GetAmmoKind());
    if (ammo != nullptr && *ammo == 0)
    {
        return nullptr;
    }
    uint16_t mountX = 0;
    uint16_t mountY = 0;
    if (m_pHull != nullptr)
    {
        const WeaponMount mount = m_pHull->GetMount(p_mount);
        mountX = mount.x;
        mountY = mount.y;
    }
    else
    {
        mountX = static_cast<uint16_t>(GetWidth() / 2);
    }
    std::unique_ptr<Projectile> shot = weapon.Fire(*m_pPhysicalDesc, mountX, mountY, m_team, m_timeSinceShot[p_mount]);
    if (shot)
    {
        m_timeSinceShot[p_mount] = 0.0;
        if (p_takeAmmo && ammo != nullptr && *ammo > 0)
        {
            --*ammo;
        }
    }
    return shot;
}

void Ship::TakeDamage(unsigned p_amount)
{
    if (m_dead)
    {
        return;
    }
    unsigned shield = m_shield;
    unsigned armour = m_armour;
    const unsigned absorption = m_absorption;
    if (shield > 0)
    {
        if (p_amount >= absorption)
        {
            if (shield >= absorption)
            {
                shield -= absorption;
            }
            else
            {
                armour = Reduce(armour, absorption - shield);
                shield = 0;
            }
            armour = Reduce(armour, p_amount - absorption);
        }
        else if (shield < p_amount)
        {
            armour = Reduce(armour, p_amount - shield);
            shield = 0;
        }
        else
        {
            shield -= p_amount;
        }
    }
    else
    {
        armour = Reduce(armour, p_amount);
    }
    m_shield = shield;
    m_armour = armour;
    m_hitFlash = true;
    if (m_armour == 0)
    {
        SetDead(true);
        Explode();
        AwardKill();
    }
}

void Ship::Repair()
{
    m_armour = m_pHull != nullptr ? static_cast<unsigned>(m_pHull->GetArmour()) : m_maxArmour;
    m_shield = m_pShieldGenerator != nullptr ? static_cast<unsigned>(m_pShieldGenerator->GetCapacity()) : 0u;
    m_dead = false;
}

void Ship::Explode()
{
    explosion::AddAt(*this);
}

void Ship::AwardKill()
{
    if (!m_pController)
    {
        return;
    }
    Level* level = Level::GetCurrent();
    MissionEvents* mission = level != nullptr ? level->GetMission() : nullptr;
    double divisor = 100.0;
    if (mission != nullptr && mission->IsTwoPlayer())
    {
        mission->CountTwoPlayerKill();
        divisor = 10.0;
    }
    // Kills pay only while a mission is being played.
    PlayerShip* player = level != nullptr ? dynamic_cast<PlayerShip*>(level->GetPlayer()) : nullptr;
    if (mission != nullptr && player != nullptr)
    {
        player->GetPilot().AddMoney(static_cast<int64_t>(std::trunc(m_maxArmour / divisor * 1000.0)));
    }
}

void Ship::CreateController(uint8_t p_type)
{
    if (p_type == SpawnerController::TYPE)
    {
        SetController(std::make_unique<SpawnerController>(this));
    }
    else
    {
        SetController(std::make_unique<AttackController>(this));
    }
}
