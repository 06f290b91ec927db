#include "sim/PlayerShip.h"

#include "app/Settings.h"
#include "pilot/CampaignLink.h"
#include "pilot/PartCatalog.h"
#include "pilot/ShipParts.h"
#include "sim/Weapon.h"

#include <algorithm>
#include <limits>

namespace
{
Part* FindPart(const char* p_name, int p_kind)
{
    return g_pPartCatalog != nullptr ? g_pPartCatalog->Find(p_name, p_kind) : nullptr;
}

std::string NameOf(const Part* p_part)
{
    return p_part != nullptr ? p_part->GetName() : std::string();
}
} // namespace

PlayerShip::PlayerShip()
{
    m_team = TEAM_PLAYER;
    m_pPhysicalDesc->SetSpeed(0.0);
    m_pPhysicalDesc->SetAcceleration(0.0);
    m_pPhysicalDesc->SetHeading(90.0);
    m_pPhysicalDesc->SetRotationSpeed(0.0);
    m_pPhysicalDesc->SetPosition(100.0, 500.0);
}

bool PlayerShip::Load(const char* p_fileName)
{
    return LoadPilot(p_fileName);
}

void PlayerShip::TakeDamage(unsigned p_amount)
{
    Ship::TakeDamage(ScaleDamage(p_amount, g_settings.GetDifficulty()));
}

unsigned PlayerShip::ScaleDamage(unsigned p_amount, int32_t p_difficulty)
{
    const uint64_t amount = p_amount;
    switch (p_difficulty)
    {
    case Settings::DIFFICULTY_EASY:
        return static_cast<unsigned>((amount + 1) / 2);
    case Settings::DIFFICULTY_HARD:
        return static_cast<unsigned>(std::min<uint64_t>((amount * 3 + 1) / 2, std::numeric_limits<unsigned>::max()));
    default:
        return p_amount;
    }
}

uint16_t* PlayerShip::GetAmmoCounter(uint8_t p_ammoKind)
{
    return m_pilot.GetAmmoCounter(p_ammoKind);
}

void PlayerShip::FitHull(const char* p_name)
{
    m_pHull = dynamic_cast<const HullPart*>(FindPart(p_name, PART_HULL));
    if (m_pHull == nullptr)
    {
        return;
    }
    m_pPhysicalDesc->SetBox(m_pHull->GetBoxWidth(), m_pHull->GetBoxHeight(), m_pHull->GetBoxX(), m_pHull->GetBoxY());
    m_hullAnimation.LoadHull(m_pHull->GetImageName());
    m_maxArmour = static_cast<unsigned>(m_pHull->GetArmour());
    m_armour = m_maxArmour;
    m_turnRate = m_pHull->GetTurnRate();
}

void PlayerShip::FitEngine(const char* p_name)
{
    m_pEngine = dynamic_cast<const EnginePart*>(FindPart(p_name, PART_ENGINE));
    if (m_pEngine != nullptr)
    {
        m_maxSpeed = m_pEngine->GetForwardSpeed();
        m_minSpeed = m_pEngine->GetReverseSpeed();
        m_thrust = m_pEngine->GetAcceleration();
    }
}

void PlayerShip::FitShield(const char* p_name)
{
    m_pShieldGenerator = dynamic_cast<const ShieldPart*>(FindPart(p_name, PART_SHIELD));
    if (m_pShieldGenerator != nullptr)
    {
        m_maxShield = static_cast<unsigned>(m_pShieldGenerator->GetCapacity());
        m_shield = m_maxShield;
        m_absorption = m_pShieldGenerator->GetAbsorption();
    }
    else
    {
        m_maxShield = 0;
        m_shield = 0;
    }
}

bool PlayerShip::LoadPilot(const char* p_fileName)
{
    if (p_fileName == nullptr)
    {
        return false;
    }
    m_loaded = true;
    m_pilot.SetFileName(p_fileName);
    m_pilot.Load(&m_inventory);
    LoadImage(m_pilot.GetPortrait().c_str());

    FitHull(m_pilot.GetHullName().c_str());
    if (m_pHull != nullptr)
    {
        SizeShieldSprite(m_pHull->GetBoxWidth(), m_pHull->GetBoxHeight());
    }
    FitEngine(m_pilot.GetEngineName().c_str());
    FitShield(m_pilot.GetShieldName().c_str());
    for (int i = 0; i < NUM_MOUNTS; ++i)
    {
        m_pWeapons[i] = dynamic_cast<Weapon*>(FindPart(m_pilot.GetWeaponName(i).c_str(), PART_WEAPON));
    }

    if (g_pCampaignLink != nullptr)
    {
        if (m_pilot.GetMissionName().empty())
        {
            g_pCampaignLink->Reset();
        }
        else
        {
            g_pCampaignLink->SetMission(m_pilot.GetMissionName().c_str());
        }
    }
    m_team = TEAM_PLAYER;
    return true;
}

void PlayerShip::SetPart(int p_kind, const char* p_name, std::string* p_oldName)
{
    switch (p_kind)
    {
    case PART_HULL:
        if (p_oldName != nullptr)
        {
            *p_oldName = NameOf(m_pHull);
        }
        FitHull(p_name);
        break;
    case PART_ENGINE:
        if (p_oldName != nullptr)
        {
            *p_oldName = NameOf(m_pEngine);
        }
        FitEngine(p_name);
        break;
    case PART_SHIELD:
        if (p_oldName != nullptr)
        {
            *p_oldName = NameOf(m_pShieldGenerator);
        }
        FitShield(p_name);
        break;
    case PART_POWER_PLANT:
    case PART_COPILOT:
        if (p_oldName != nullptr)
        {
            p_oldName->clear();
        }
        break;
    default:
    {
        const int mount = p_kind - PART_WEAPON;
        if (mount < 0 || mount >= NUM_MOUNTS)
        {
            break;
        }
        if (p_oldName != nullptr)
        {
            *p_oldName = m_pWeapons[mount] != nullptr ? m_pWeapons[mount]->GetTableName() : "";
        }
        m_pWeapons[mount] = p_name != nullptr ? dynamic_cast<Weapon*>(FindPart(p_name, PART_WEAPON)) : nullptr;
        break;
    }
    }
}

void PlayerShip::StoreParts()
{
    m_pilot.SetMissionName(g_pCampaignLink != nullptr ? g_pCampaignLink->GetMissionName() : m_pilot.GetMissionName());
    m_pilot.SetHullName(NameOf(m_pHull));
    m_pilot.SetEngineName(NameOf(m_pEngine));
    m_pilot.SetShieldName(NameOf(m_pShieldGenerator));
    m_pilot.SetReservedPartName("");
    for (int i = 0; i < NUM_MOUNTS; ++i)
    {
        m_pilot.SetWeaponName(i, m_pWeapons[i] != nullptr ? m_pWeapons[i]->GetTableName() : "");
    }
}

bool PlayerShip::SaveRecord()
{
    StoreParts();
    return m_pilot.Save(&m_inventory);
}

void PlayerShip::Reset()
{
    m_pPhysicalDesc->SetSpeed(0.0);
    m_pPhysicalDesc->SetAcceleration(0.0);
    m_pPhysicalDesc->SetHeading(90.0);
    m_pPhysicalDesc->SetRotationSpeed(0.0);
    m_loaded = false;
}
