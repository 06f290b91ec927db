#include "pilot/Pilot.h"

#include <cstring>
#include <limits>

#include "pilot/DataFile.h"
#include "pilot/Inventory.h"
#include "pilot/Part.h"
#include "sim/Weapon.h"

Pilot::Pilot(const char* p_fileName)
{
    SetFileName(p_fileName);
}

std::string Pilot::SafeFileNamePart(const std::string& p_pilotName)
{
    const std::string name = p_pilotName.substr(0, MAX_FILE_NAME_PART);
    std::string part = name;
    for (size_t i = 0; i < name.size(); ++i)
    {
        const unsigned char c = static_cast<unsigned char>(name[i]);
        const bool unsafe = c < 0x20 || c >= 0x7F || std::strchr("/\\:*?\"<>|", c) != nullptr;
        // A leading dot would hide the file; two dots in a row could be read as the parent.
        const bool badDot = c == '.' && (i == 0 || name[i - 1] == '.' || (i + 1 < name.size() && name[i + 1] == '.'));
        if (unsafe || badDot)
        {
            part[i] = '_';
        }
    }
    return part;
}

std::string Pilot::NewPilotFileName(const std::string& p_pilotName)
{
    const std::string part = SafeFileNamePart(p_pilotName);
    for (int number = 0;; ++number)
    {
        std::string name = "Saves\\" + part + std::to_string(number) + ".sav";
        DataFile file;
        if (!file.Open(name.c_str(), "rb"))
        {
            return name;
        }
    }
}

void Pilot::SetFileName(const char* p_fileName)
{
    if (p_fileName != nullptr)
    {
        m_fileName = p_fileName;
    }
}

bool Pilot::Load(Inventory* p_inventory)
{
    DataFile file;
    if (!file.Open(m_fileName.c_str(), "rb"))
    {
        return false;
    }
    m_money = file.ReadInt32();
    m_bullets = file.ReadUInt16();
    m_energy = file.ReadUInt16();
    m_missiles = file.ReadUInt16();
    m_reserved = file.ReadUInt16();
    m_pilotName = file.ReadString();
    m_portrait = file.ReadString();
    m_missionName = file.ReadString();
    m_hullName = file.ReadString();
    m_engineName = file.ReadString();
    m_reservedPartName = file.ReadString();
    m_shieldName = file.ReadString();
    for (std::string& weapon : m_weaponNames)
    {
        weapon = file.ReadString();
    }
    m_whole = !file.HasReadPastEnd();
    if (p_inventory != nullptr)
    {
        p_inventory->Clear();
        const uint16_t count = file.ReadUInt16();
        for (uint16_t i = 0; i < count && !file.HasReadPastEnd(); ++i)
        {
            const uint16_t quantity = file.ReadUInt16();
            const uint8_t kind = file.ReadUInt8();
            const std::string name = file.ReadString();
            if (!file.HasReadPastEnd())
            {
                p_inventory->Add(name.c_str(), kind, quantity);
            }
        }
    }
    file.Close();
    return true;
}

bool Pilot::Save(const Inventory* p_inventory) const
{
    DataFile file;
    if (!file.Open(m_fileName.c_str(), "wb"))
    {
        return false;
    }
    file.WriteInt32(m_money);
    file.WriteUInt16(m_bullets);
    file.WriteUInt16(m_energy);
    file.WriteUInt16(m_missiles);
    file.WriteUInt16(m_reserved);
    file.WriteString(m_pilotName);
    file.WriteString(m_portrait);
    file.WriteString(m_missionName);
    file.WriteString(m_hullName);
    file.WriteString(m_engineName);
    file.WriteString("");
    file.WriteString(m_shieldName);
    for (const std::string& weapon : m_weaponNames)
    {
        file.WriteString(weapon);
    }
    const size_t count = p_inventory != nullptr ? p_inventory->GetItems().size() : 0;
    const uint16_t written = count < 65535 ? static_cast<uint16_t>(count) : uint16_t{65535};
    file.WriteUInt16(written);
    if (p_inventory != nullptr)
    {
        uint16_t n = 0;
        for (const Inventory::Item& item : p_inventory->GetItems())
        {
            if (n++ == written)
            {
                break;
            }
            const int quantity = item.m_quantity < 0 ? 0 : (item.m_quantity > 65535 ? 65535 : item.m_quantity);
            file.WriteUInt16(static_cast<uint16_t>(quantity));
            file.WriteUInt8(static_cast<uint8_t>(item.m_kind));
            file.WriteString(item.m_pPart != nullptr ? item.m_pPart->GetName() : std::string());
        }
    }
    file.Close();
    return !file.HasFailed();
}

void Pilot::AddMoney(int64_t p_amount)
{
    int64_t money = static_cast<int64_t>(m_money) + p_amount;
    if (money > std::numeric_limits<int32_t>::max())
    {
        money = std::numeric_limits<int32_t>::max();
    }
    if (money < std::numeric_limits<int32_t>::min())
    {
        money = std::numeric_limits<int32_t>::min();
    }
    m_money = static_cast<int32_t>(money);
}

uint16_t* Pilot::GetAmmoCounter(uint8_t p_ammoKind)
{
    switch (p_ammoKind)
    {
    case Weapon::AMMO_MISSILES:
    case Weapon::AMMO_BOMBS:
        return &m_missiles;
    case Weapon::AMMO_ENERGY:
        return &m_energy;
    case Weapon::AMMO_BULLETS:
        return &m_bullets;
    default:
        return nullptr;
    }
}

const std::string& Pilot::GetWeaponName(int p_mount) const
{
    static const std::string s_none;
    return p_mount >= 0 && p_mount < NUM_WEAPONS ? m_weaponNames[static_cast<size_t>(p_mount)] : s_none;
}

void Pilot::SetWeaponName(int p_mount, const std::string& p_name)
{
    if (p_mount >= 0 && p_mount < NUM_WEAPONS)
    {
        m_weaponNames[static_cast<size_t>(p_mount)] = p_name;
    }
}
