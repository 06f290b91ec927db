#include "pilot/ShipParts.h"

#include "pilot/DataFile.h"

WeaponMount HullPart::GetMount(int p_mount) const
{
    return p_mount >= 0 && p_mount < NUM_MOUNTS ? m_mounts[p_mount] : WeaponMount{};
}

bool HullPart::Load(const char* p_fileName)
{
    DataFile file;
    if (p_fileName == nullptr || !file.Open(p_fileName, "rb"))
    {
        return false;
    }
    m_name = file.ReadString();
    m_imageName = file.ReadString();
    m_price = file.ReadInt32();
    m_armour = file.ReadInt32();
    m_turnRate = file.ReadUInt16();
    for (WeaponMount& mount : m_mounts)
    {
        mount.x = file.ReadUInt16();
        mount.y = file.ReadUInt16();
    }
    m_boxX = file.ReadInt16();
    m_boxY = file.ReadInt16();
    m_boxWidth = file.ReadUInt16();
    m_boxHeight = file.ReadUInt16();
    file.Close();
    return true;
}

bool EnginePart::Load(const char* p_fileName)
{
    DataFile file;
    if (p_fileName == nullptr || !file.Open(p_fileName, "rb"))
    {
        return false;
    }
    m_name = file.ReadString();
    m_price = file.ReadInt32();
    m_reverseSpeed = file.ReadUInt16();
    m_forwardSpeed = file.ReadUInt16();
    m_acceleration = file.ReadUInt16();
    file.Close();
    return true;
}

bool ShieldPart::Load(const char* p_fileName)
{
    DataFile file;
    if (p_fileName == nullptr || !file.Open(p_fileName, "rb"))
    {
        return false;
    }
    m_name = file.ReadString();
    m_price = file.ReadInt32();
    m_capacity = file.ReadInt32();
    m_absorption = file.ReadUInt16();
    file.Close();
    return true;
}

bool PowerPlantPart::Load(const char* p_fileName)
{
    DataFile file;
    if (p_fileName == nullptr || !file.Open(p_fileName, "rb"))
    {
        return false;
    }
    ReadHeader(file);
    m_value2 = file.ReadInt32();
    m_flag1 = file.ReadUInt8();
    m_flag2 = file.ReadUInt8();
    file.Close();
    return true;
}

bool CopilotPart::Load(const char* p_fileName)
{
    (void)p_fileName;
    return true;
}
