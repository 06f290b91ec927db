#include "sim/EntityShip.h"

#include "pilot/DataFile.h"
#include "pilot/PartCatalog.h"
#include "sim/Weapon.h"

EntityShip::EntityShip()
{
    m_pPhysicalDesc->SetSpeed(500.0);
    m_pPhysicalDesc->SetAcceleration(0.0);
    m_pPhysicalDesc->SetHeading(90.0);
    m_pPhysicalDesc->SetRotationSpeed(0.0);
}

bool EntityShip::Load(const char* p_fileName)
{
    DataFile file;
    if (p_fileName == nullptr || !file.Open(p_fileName, "rb"))
    {
        return false;
    }
    m_hullAnimation.LoadHull(file.ReadString());
    m_minSpeed = file.ReadUInt16();
    m_maxSpeed = file.ReadUInt16();
    m_thrust = file.ReadUInt16();
    m_turnRate = file.ReadUInt16();
    const std::string weapon = file.ReadString();
    m_pWeapons[0] =
        g_pPartCatalog != nullptr ? dynamic_cast<Weapon*>(g_pPartCatalog->Find(weapon.c_str(), PART_WEAPON)) : nullptr;
    m_maxArmour = static_cast<unsigned>(file.ReadInt32());
    m_armour = m_maxArmour;
    m_maxShield = static_cast<unsigned>(file.ReadInt32());
    m_shield = m_maxShield;
    const uint8_t behaviour = file.ReadUInt8();
    if (!m_pController)
    {
        CreateController(behaviour);
    }
    m_team = file.ReadUInt8();
    const int16_t boxX = file.ReadInt16();
    const int16_t boxY = file.ReadInt16();
    const uint16_t boxWidth = file.ReadUInt16();
    const uint16_t boxHeight = file.ReadUInt16();
    m_pPhysicalDesc->SetBox(boxWidth, boxHeight, boxX, boxY);
    file.Close();
    SizeShieldSprite(boxWidth, boxHeight);
    return true;
}

void EntityShip::SetStrafe(int p_direction)
{
    switch (p_direction)
    {
    case DIRECTION_LEFT:
        m_pPhysicalDesc->SetStrafe(-1.0);
        break;
    case DIRECTION_RIGHT:
        m_pPhysicalDesc->SetStrafe(1.0);
        break;
    case DIRECTION_NONE:
        m_pPhysicalDesc->SetStrafe(0.0);
        break;
    default:
        break;
    }
}
