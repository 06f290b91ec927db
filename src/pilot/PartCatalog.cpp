#include "pilot/PartCatalog.h"

#include <cstdio>
#include <cstring>

#include "gfx/Image.h"
#include "pilot/DataFile.h"
#include "pilot/ShipParts.h"
#include "platform/Paths.h"
#include "sim/Weapon.h"

PartCatalog* g_pPartCatalog = nullptr;

namespace
{
const char* const FILE_TEMPLATES[NUM_PART_KINDS] = {
    "GOB\\Parts\\hull000.hul",    "GOB\\Parts\\engine000.eng",  "GOB\\Parts\\shield000.sgr",
    "GOB\\Parts\\powerplant000.pwp", "GOB\\Parts\\copilot000.cop", "GOB\\Parts\\weapon000.wpn",
};

// Three digits give a thousand numbers; after 999 the count would start over at 000.
const int MAX_FILES = 1000;

// The game's catalogue. Made on first use, after the image registry that its parts' pictures
// leave on destruction, so that a catalogue still alive at exit goes first.
std::unique_ptr<PartCatalog>& Owned()
{
    Image::GetRegisteredCount();
    static std::unique_ptr<PartCatalog> s_pCatalog;
    return s_pCatalog;
}

bool CanOpen(const std::string& p_gameName)
{
    const std::string path = platform::ResolvePath(p_gameName);
    if (path.empty())
    {
        return false;
    }
    std::FILE* file = std::fopen(path.c_str(), "rb");
    if (file == nullptr)
    {
        return false;
    }
    std::fclose(file);
    return true;
}

template <typename PartType>
Part* FindIn(const std::vector<std::unique_ptr<PartType>>& p_parts, const char* p_name)
{
    for (const std::unique_ptr<PartType>& part : p_parts)
    {
        if (part->GetName() == p_name)
        {
            return part.get();
        }
    }
    return nullptr;
}

template <typename PartType>
Part* At(const std::vector<std::unique_ptr<PartType>>& p_parts, int p_index)
{
    return p_index >= 0 && static_cast<size_t>(p_index) < p_parts.size() ? p_parts[static_cast<size_t>(p_index)].get()
                                                                          : nullptr;
}
} // namespace

PartCatalog::PartCatalog() = default;

PartCatalog::~PartCatalog() = default;

const char* PartCatalog::GetFileTemplate(int p_kind)
{
    return p_kind >= 0 && p_kind < NUM_PART_KINDS ? FILE_TEMPLATES[p_kind] : "";
}

void PartCatalog::AdvanceNumber(std::string& p_fileName)
{
    // The digits sit right before the four-character extension.
    if (p_fileName.size() < 7)
    {
        return;
    }
    for (size_t i = p_fileName.size() - 5, n = 0; n < 3; --i, ++n)
    {
        if (p_fileName[i] < '9')
        {
            ++p_fileName[i];
            return;
        }
        p_fileName[i] = '0';
    }
}

int PartCatalog::CountFiles(const std::string& p_firstFile)
{
    std::string name = p_firstFile;
    int count = 0;
    while (count < MAX_FILES && CanOpen(name))
    {
        ++count;
        AdvanceNumber(name);
    }
    return count;
}

template <typename PartType>
void PartCatalog::LoadParts(int p_kind, std::vector<std::unique_ptr<PartType>>& p_parts)
{
    p_parts.clear();
    std::string name = GetFileTemplate(p_kind);
    const int count = CountFiles(name);
    for (int i = 0; i < count; ++i)
    {
        p_parts.push_back(std::make_unique<PartType>());
        p_parts.back()->Load(name.c_str());
        AdvanceNumber(name);
    }
}

void PartCatalog::LoadWeapons()
{
    m_machineGuns.clear();
    std::string name = GetFileTemplate(PART_WEAPON);
    const int count = CountFiles(name);
    for (int i = 0; i < count; ++i)
    {
        auto gun = std::make_unique<MachineGun>();
        DataFile file;
        if (file.Open(name.c_str(), "rb"))
        {
            gun->Read(file);
            file.Close();
        }
        m_machineGuns.push_back(std::move(gun));
        AdvanceNumber(name);
    }
    m_builtInWeapons[0] = std::make_unique<Laser>();
    m_builtInWeapons[1] = std::make_unique<MultiLaser>();
    m_builtInWeapons[2] = std::make_unique<BombBay>();
    m_builtInWeapons[3] = std::make_unique<MissileLauncher>();
    m_builtInWeapons[4] = std::make_unique<Bfg>();
}

bool PartCatalog::Init()
{
    LoadParts(PART_HULL, m_hulls);
    LoadParts(PART_ENGINE, m_engines);
    LoadParts(PART_POWER_PLANT, m_powerPlants);
    LoadParts(PART_SHIELD, m_shields);
    LoadWeapons();
    return true;
}

Part* PartCatalog::Find(const char* p_name, int p_kind) const
{
    if (p_name == nullptr || p_name[0] == '\0')
    {
        return nullptr;
    }
    switch (p_kind)
    {
    case PART_HULL:
        return FindIn(m_hulls, p_name);
    case PART_ENGINE:
        return FindIn(m_engines, p_name);
    case PART_SHIELD:
        return FindIn(m_shields, p_name);
    case PART_POWER_PLANT:
        return FindIn(m_powerPlants, p_name);
    case PART_COPILOT:
        return FindIn(m_copilots, p_name);
    case PART_WEAPON:
        for (int i = 0; i < Weapon::NUM_KINDS; ++i)
        {
            if (std::strcmp(p_name, Weapon::NAMES[i]) == 0)
            {
                if (i == 0)
                {
                    return m_machineGuns.empty() ? nullptr : m_machineGuns.front().get();
                }
                return m_builtInWeapons[static_cast<size_t>(i - 1)].get();
            }
        }
        return nullptr;
    default:
        return nullptr;
    }
}

uint16_t PartCatalog::GetCount(int p_kind) const
{
    size_t count = 0;
    switch (p_kind)
    {
    case PART_HULL:
        count = m_hulls.size();
        break;
    case PART_ENGINE:
        count = m_engines.size();
        break;
    case PART_SHIELD:
        count = m_shields.size();
        break;
    case PART_POWER_PLANT:
        count = m_powerPlants.size();
        break;
    case PART_COPILOT:
        count = m_copilots.size();
        break;
    case PART_WEAPON:
        count = m_machineGuns.size();
        for (const std::unique_ptr<Weapon>& weapon : m_builtInWeapons)
        {
            count += weapon ? 1 : 0;
        }
        break;
    default:
        break;
    }
    return static_cast<uint16_t>(count);
}

Part* PartCatalog::GetPart(int p_kind, int p_index) const
{
    switch (p_kind)
    {
    case PART_HULL:
        return At(m_hulls, p_index);
    case PART_ENGINE:
        return At(m_engines, p_index);
    case PART_SHIELD:
        return At(m_shields, p_index);
    case PART_POWER_PLANT:
        return At(m_powerPlants, p_index);
    case PART_COPILOT:
        return At(m_copilots, p_index);
    case PART_WEAPON:
    {
        if (Part* gun = At(m_machineGuns, p_index))
        {
            return gun;
        }
        const int builtIn = p_index - static_cast<int>(m_machineGuns.size());
        return builtIn >= 0 && builtIn < static_cast<int>(m_builtInWeapons.size())
                   ? m_builtInWeapons[static_cast<size_t>(builtIn)].get()
                   : nullptr;
    }
    default:
        return nullptr;
    }
}

void CreatePartCatalog()
{
    Owned() = std::make_unique<PartCatalog>();
    Owned()->Init();
    g_pPartCatalog = Owned().get();
}

void DestroyPartCatalog()
{
    g_pPartCatalog = nullptr;
    Owned().reset();
}
