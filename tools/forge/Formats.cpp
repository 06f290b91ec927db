#include "Formats.h"

#include "pilot/DataFile.h"

#include <cstdio>

namespace forge
{

namespace
{

const PartKindInfo KIND_INFO[KIND_COUNT] = {
    {"hull", "hull", ".hul"},
    {"engine", "engine", ".eng"},
    {"shield", "shield", ".sgr"},
    {"power plant", "powerplant", ".pwp"},
    {"copilot", "copilot", ".cop"},
    {"weapon", "weapon", ".wpn"},
};

void WriteBox(DataFile& p_file, const CollisionBox& p_box)
{
    p_file.WriteInt16(p_box.x);
    p_file.WriteInt16(p_box.y);
    p_file.WriteUInt16(p_box.width);
    p_file.WriteUInt16(p_box.height);
}

void ReadBox(DataFile& p_file, CollisionBox& p_box)
{
    p_box.x = p_file.ReadInt16();
    p_box.y = p_file.ReadInt16();
    p_box.width = p_file.ReadUInt16();
    p_box.height = p_file.ReadUInt16();
}

void WriteHeader(DataFile& p_file, const PartHeader& p_header)
{
    p_file.WriteString(p_header.picture);
    p_file.WriteString(p_header.name);
    p_file.WriteInt32(p_header.value);
    p_file.WriteInt32(p_header.price);
}

void ReadHeader(DataFile& p_file, PartHeader& p_header)
{
    p_header.picture = p_file.ReadString();
    p_header.name = p_file.ReadString();
    p_header.value = p_file.ReadInt32();
    p_header.price = p_file.ReadInt32();
}

bool Finish(const DataFile& p_file)
{
    return !p_file.HasFailed();
}

// Visits the 5 x 5 leaves of a square of p_size tiles at (p_x, p_y) in the order the game's
// quadtree hands out tile numbers: top-left, top-right, bottom-left, bottom-right quarter.
template <typename Visit>
void VisitLeaves(uint32_t p_x, uint32_t p_y, uint32_t p_size, Visit& p_visit)
{
    if (p_size <= 5)
    {
        // The game draws entry k of a leaf at column k / 5, row k % 5 (QuadNode::TileIndex),
        // so a leaf is written column by column.
        for (uint32_t k = 0; k < 25; ++k)
        {
            p_visit(p_x + k / 5, p_y + k % 5);
        }
        return;
    }
    const uint32_t half = p_size / 2;
    VisitLeaves(p_x, p_y, half, p_visit);
    VisitLeaves(p_x + half, p_y, half, p_visit);
    VisitLeaves(p_x, p_y + half, half, p_visit);
    VisitLeaves(p_x + half, p_y + half, half, p_visit);
}

} // namespace

const std::array<const char*, 6> WEAPON_TABLE_NAMES = {"Machine Gun", "Laser", "Multi-Laser",
                                                       "Bomb",        "Missile", "BFG"};
const char* const DEFAULT_HULL = "Cargo Hull";
const char* const DEFAULT_ENGINE = "Cargo Thrusters";
const char* const DEFAULT_SHIELD = "Tin-foil Plating";
const char* const DEFAULT_WEAPON = "Machine Gun";

const PartKindInfo& GetKindInfo(int p_kind)
{
    return KIND_INFO[(p_kind >= 0 && p_kind < KIND_COUNT) ? p_kind : 0];
}

std::string PartFileName(int p_kind, int p_number)
{
    char digits[16];
    std::snprintf(digits, sizeof(digits), "%03d", p_number % 1000);
    const PartKindInfo& info = GetKindInfo(p_kind);
    return std::string("GOB\\Parts\\") + info.fileStem + digits + info.extension;
}

bool IsWeaponTableName(const std::string& p_name)
{
    for (const char* name : WEAPON_TABLE_NAMES)
    {
        if (p_name == name)
        {
            return true;
        }
    }
    return false;
}

bool IsValidMapSize(uint32_t p_mapSize)
{
    if (p_mapSize < 5 || p_mapSize % 5 != 0)
    {
        return false;
    }
    const uint32_t blocks = p_mapSize / 5;
    return (blocks & (blocks - 1)) == 0;
}

std::vector<uint16_t> GridToFileOrder(const std::vector<uint16_t>& p_grid, uint16_t p_mapSize)
{
    std::vector<uint16_t> order;
    order.reserve(p_grid.size());
    auto visit = [&](uint32_t p_x, uint32_t p_y) { order.push_back(p_grid[size_t(p_y) * p_mapSize + p_x]); };
    VisitLeaves(0, 0, p_mapSize, visit);
    return order;
}

std::vector<uint16_t> FileOrderToGrid(const std::vector<uint16_t>& p_fileOrder, uint16_t p_mapSize)
{
    std::vector<uint16_t> grid(size_t(p_mapSize) * p_mapSize, 0);
    size_t next = 0;
    auto visit = [&](uint32_t p_x, uint32_t p_y)
    {
        if (next < p_fileOrder.size())
        {
            grid[size_t(p_y) * p_mapSize + p_x] = p_fileOrder[next];
        }
        ++next;
    };
    VisitLeaves(0, 0, p_mapSize, visit);
    return grid;
}

bool Write(DataFile& p_file, const HullRecord& p_record)
{
    p_file.WriteString(p_record.name);
    p_file.WriteString(p_record.image);
    p_file.WriteInt32(p_record.price);
    p_file.WriteInt32(p_record.armour);
    p_file.WriteUInt16(p_record.turnRate);
    for (const Mount& mount : p_record.mounts)
    {
        p_file.WriteUInt16(mount.x);
        p_file.WriteUInt16(mount.y);
    }
    WriteBox(p_file, p_record.box);
    return Finish(p_file);
}

void Read(DataFile& p_file, HullRecord& p_record)
{
    p_record.name = p_file.ReadString();
    p_record.image = p_file.ReadString();
    p_record.price = p_file.ReadInt32();
    p_record.armour = p_file.ReadInt32();
    p_record.turnRate = p_file.ReadUInt16();
    for (Mount& mount : p_record.mounts)
    {
        mount.x = p_file.ReadUInt16();
        mount.y = p_file.ReadUInt16();
    }
    ReadBox(p_file, p_record.box);
}

bool Write(DataFile& p_file, const EngineRecord& p_record)
{
    p_file.WriteString(p_record.name);
    p_file.WriteInt32(p_record.price);
    p_file.WriteUInt16(p_record.reverseSpeed);
    p_file.WriteUInt16(p_record.forwardSpeed);
    p_file.WriteUInt16(p_record.acceleration);
    return Finish(p_file);
}

void Read(DataFile& p_file, EngineRecord& p_record)
{
    p_record.name = p_file.ReadString();
    p_record.price = p_file.ReadInt32();
    p_record.reverseSpeed = p_file.ReadUInt16();
    p_record.forwardSpeed = p_file.ReadUInt16();
    p_record.acceleration = p_file.ReadUInt16();
}

bool Write(DataFile& p_file, const ShieldRecord& p_record)
{
    p_file.WriteString(p_record.name);
    p_file.WriteInt32(p_record.price);
    p_file.WriteInt32(p_record.capacity);
    p_file.WriteUInt16(p_record.perHit);
    return Finish(p_file);
}

void Read(DataFile& p_file, ShieldRecord& p_record)
{
    p_record.name = p_file.ReadString();
    p_record.price = p_file.ReadInt32();
    p_record.capacity = p_file.ReadInt32();
    p_record.perHit = p_file.ReadUInt16();
}

bool Write(DataFile& p_file, const PowerPlantRecord& p_record)
{
    WriteHeader(p_file, p_record.header);
    p_file.WriteInt32(p_record.value2);
    p_file.WriteUInt8(p_record.flag1);
    p_file.WriteUInt8(p_record.flag2);
    return Finish(p_file);
}

void Read(DataFile& p_file, PowerPlantRecord& p_record)
{
    ReadHeader(p_file, p_record.header);
    p_record.value2 = p_file.ReadInt32();
    p_record.flag1 = p_file.ReadUInt8();
    p_record.flag2 = p_file.ReadUInt8();
}

bool Write(DataFile& p_file, const CopilotRecord& p_record)
{
    p_file.WriteString(p_record.name);
    p_file.WriteInt32(p_record.price);
    return Finish(p_file);
}

void Read(DataFile& p_file, CopilotRecord& p_record)
{
    p_record.name = p_file.ReadString();
    p_record.price = p_file.ReadInt32();
}

bool Write(DataFile& p_file, const WeaponRecord& p_record)
{
    WriteHeader(p_file, p_record.header);
    p_file.WriteUInt8(p_record.byte1);
    p_file.WriteUInt8(p_record.byte2);
    p_file.WriteUInt16(p_record.value16);
    p_file.WriteInt32(p_record.minDamage);
    p_file.WriteInt32(p_record.maxDamage);
    p_file.WriteInt32(p_record.extraValue);
    p_file.WriteUInt8(p_record.extraByte);
    return Finish(p_file);
}

void Read(DataFile& p_file, WeaponRecord& p_record)
{
    ReadHeader(p_file, p_record.header);
    p_record.byte1 = p_file.ReadUInt8();
    p_record.byte2 = p_file.ReadUInt8();
    p_record.value16 = p_file.ReadUInt16();
    p_record.minDamage = p_file.ReadInt32();
    p_record.maxDamage = p_file.ReadInt32();
    p_record.extraValue = p_file.ReadInt32();
    p_record.extraByte = p_file.ReadUInt8();
}

bool Write(DataFile& p_file, const EntityRecord& p_record)
{
    p_file.WriteString(p_record.hullPicture);
    p_file.WriteUInt16(p_record.minSpeed);
    p_file.WriteUInt16(p_record.maxSpeed);
    p_file.WriteUInt16(p_record.acceleration);
    p_file.WriteUInt16(p_record.turnRate);
    p_file.WriteString(p_record.weapon);
    p_file.WriteInt32(p_record.armour);
    p_file.WriteInt32(p_record.shield);
    p_file.WriteUInt8(p_record.behaviour);
    p_file.WriteUInt8(p_record.team);
    WriteBox(p_file, p_record.box);
    return Finish(p_file);
}

void Read(DataFile& p_file, EntityRecord& p_record)
{
    p_record.hullPicture = p_file.ReadString();
    p_record.minSpeed = p_file.ReadUInt16();
    p_record.maxSpeed = p_file.ReadUInt16();
    p_record.acceleration = p_file.ReadUInt16();
    p_record.turnRate = p_file.ReadUInt16();
    p_record.weapon = p_file.ReadString();
    p_record.armour = p_file.ReadInt32();
    p_record.shield = p_file.ReadInt32();
    p_record.behaviour = p_file.ReadUInt8();
    p_record.team = p_file.ReadUInt8();
    ReadBox(p_file, p_record.box);
}

bool Write(DataFile& p_file, const LevelRecord& p_record)
{
    if (p_record.tiles.size() != size_t(p_record.mapSize) * p_record.mapSize)
    {
        return false;
    }
    p_file.WriteString(p_record.tileSet);
    p_file.WriteUInt16(p_record.mapSize);
    for (uint16_t tile : p_record.tiles)
    {
        p_file.WriteUInt16(tile);
    }
    p_file.WriteInt32(static_cast<int32_t>(p_record.scenery.size()));
    for (const SceneryRecord& scenery : p_record.scenery)
    {
        p_file.WriteString(scenery.name);
        p_file.WriteString(scenery.picture);
        p_file.WriteInt32(scenery.x);
        p_file.WriteInt32(scenery.y);
    }
    p_file.WriteUInt8(p_record.reserved);
    p_file.WriteInt32(static_cast<int32_t>(p_record.ships.size()));
    for (const ShipRecord& ship : p_record.ships)
    {
        if (ship.kind.size() != 3)
        {
            return false;
        }
        for (char c : ship.kind)
        {
            p_file.WriteUInt8(static_cast<uint8_t>(c));
        }
        p_file.WriteString(ship.name);
        p_file.WriteInt32(ship.x);
        p_file.WriteInt32(ship.y);
    }
    return Finish(p_file);
}

void Read(DataFile& p_file, LevelRecord& p_record)
{
    p_record = LevelRecord();
    p_record.tileSet = p_file.ReadString();
    p_record.mapSize = p_file.ReadUInt16();
    const size_t tileCount = size_t(p_record.mapSize) * p_record.mapSize;
    p_record.tiles.reserve(tileCount < 65536 ? tileCount : 65536);
    for (size_t i = 0; i < tileCount && !p_file.HasReadPastEnd(); ++i)
    {
        p_record.tiles.push_back(p_file.ReadUInt16());
    }
    const uint32_t sceneryCount = static_cast<uint32_t>(p_file.ReadInt32());
    for (uint32_t i = 0; i < sceneryCount && !p_file.HasReadPastEnd(); ++i)
    {
        SceneryRecord scenery;
        scenery.name = p_file.ReadString();
        scenery.picture = p_file.ReadString();
        scenery.x = p_file.ReadInt32();
        scenery.y = p_file.ReadInt32();
        p_record.scenery.push_back(std::move(scenery));
    }
    p_record.reserved = p_file.ReadUInt8();
    const uint32_t shipCount = static_cast<uint32_t>(p_file.ReadInt32());
    for (uint32_t i = 0; i < shipCount && !p_file.HasReadPastEnd(); ++i)
    {
        ShipRecord ship;
        p_file.ReadFixedString(3);
        ship.kind = p_file.GetLastString(); // all three bytes, even a NUL among them
        ship.name = p_file.ReadString();
        ship.x = p_file.ReadInt32();
        ship.y = p_file.ReadInt32();
        p_record.ships.push_back(std::move(ship));
    }
}

bool Write(DataFile& p_file, const ShopRecord& p_record)
{
    p_file.WriteString(p_record.title);
    p_file.WriteUInt8(p_record.value1);
    p_file.WriteUInt8(p_record.value2);
    for (const std::vector<std::string>& names : p_record.names)
    {
        if (names.size() > 255)
        {
            return false;
        }
        p_file.WriteUInt8(static_cast<uint8_t>(names.size()));
        for (const std::string& name : names)
        {
            p_file.WriteString(name);
        }
    }
    return Finish(p_file);
}

void Read(DataFile& p_file, ShopRecord& p_record)
{
    p_record = ShopRecord();
    p_record.title = p_file.ReadString();
    p_record.value1 = p_file.ReadUInt8();
    p_record.value2 = p_file.ReadUInt8();
    for (std::vector<std::string>& names : p_record.names)
    {
        const uint8_t count = p_file.ReadUInt8();
        for (uint8_t i = 0; i < count && !p_file.HasReadPastEnd(); ++i)
        {
            names.push_back(p_file.ReadString());
        }
    }
}

bool Write(DataFile& p_file, const PilotRecord& p_record)
{
    if (p_record.inventory.size() > 65535)
    {
        return false;
    }
    p_file.WriteInt32(p_record.money);
    p_file.WriteUInt16(p_record.bullets);
    p_file.WriteUInt16(p_record.energy);
    p_file.WriteUInt16(p_record.missiles);
    p_file.WriteUInt16(p_record.reserved);
    p_file.WriteString(p_record.pilotName);
    p_file.WriteString(p_record.portrait);
    p_file.WriteString(p_record.missionName);
    p_file.WriteString(p_record.hullName);
    p_file.WriteString(p_record.engineName);
    p_file.WriteString(p_record.reservedPartName);
    p_file.WriteString(p_record.shieldName);
    for (const std::string& weapon : p_record.weaponNames)
    {
        p_file.WriteString(weapon);
    }
    p_file.WriteUInt16(static_cast<uint16_t>(p_record.inventory.size()));
    for (const InventoryItem& item : p_record.inventory)
    {
        p_file.WriteUInt16(item.quantity);
        p_file.WriteUInt8(item.kind);
        p_file.WriteString(item.name);
    }
    return Finish(p_file);
}

void Read(DataFile& p_file, PilotRecord& p_record)
{
    p_record.money = p_file.ReadInt32();
    p_record.bullets = p_file.ReadUInt16();
    p_record.energy = p_file.ReadUInt16();
    p_record.missiles = p_file.ReadUInt16();
    p_record.reserved = p_file.ReadUInt16();
    p_record.pilotName = p_file.ReadString();
    p_record.portrait = p_file.ReadString();
    p_record.missionName = p_file.ReadString();
    p_record.hullName = p_file.ReadString();
    p_record.engineName = p_file.ReadString();
    p_record.reservedPartName = p_file.ReadString();
    p_record.shieldName = p_file.ReadString();
    for (std::string& weapon : p_record.weaponNames)
    {
        weapon = p_file.ReadString();
    }
    p_record.inventory.clear();
    const uint16_t count = p_file.ReadUInt16();
    for (uint16_t i = 0; i < count && !p_file.HasReadPastEnd(); ++i)
    {
        InventoryItem item;
        item.quantity = p_file.ReadUInt16();
        item.kind = p_file.ReadUInt8();
        item.name = p_file.ReadString();
        p_record.inventory.push_back(std::move(item));
    }
}

template <typename Record>
bool ReadWholeFile(const std::string& p_gameName, Record& p_record, std::string& p_error)
{
    DataFile file;
    if (!file.Open(p_gameName.c_str(), "rb"))
    {
        p_error = "cannot be opened";
        return false;
    }
    file.Seek(DataFile::ORIGIN_END, 0);
    const int64_t size = file.Tell();
    file.Seek(DataFile::ORIGIN_START, 0);
    Read(file, p_record);
    const int64_t used = file.Tell();
    const bool short_ = file.HasReadPastEnd();
    file.Close();
    if (short_)
    {
        p_error = "ends before its last field (" + std::to_string(size) + " bytes)";
        return false;
    }
    if (used != size)
    {
        p_error = "has " + std::to_string(size - used) + " bytes after its last field";
        return false;
    }
    return true;
}

template <typename Record>
bool WriteWholeFile(const std::string& p_gameName, const Record& p_record, std::string& p_error)
{
    DataFile file;
    if (!file.Open(p_gameName.c_str(), "wb"))
    {
        p_error = "cannot be created";
        return false;
    }
    const bool written = Write(file, p_record);
    if (!written)
    {
        // Leaving the file open makes the DataFile discard it.
        p_error = "a value does not fit the format (a text over 255 characters or a list too long)";
        return false;
    }
    file.Close();
    if (file.HasFailed())
    {
        p_error = "could not be written";
        return false;
    }
    return true;
}

#define FORGE_INSTANTIATE(Record)                                                                  \
    template bool ReadWholeFile<Record>(const std::string&, Record&, std::string&);                \
    template bool WriteWholeFile<Record>(const std::string&, const Record&, std::string&);

FORGE_INSTANTIATE(HullRecord)
FORGE_INSTANTIATE(EngineRecord)
FORGE_INSTANTIATE(ShieldRecord)
FORGE_INSTANTIATE(PowerPlantRecord)
FORGE_INSTANTIATE(CopilotRecord)
FORGE_INSTANTIATE(WeaponRecord)
FORGE_INSTANTIATE(EntityRecord)
FORGE_INSTANTIATE(LevelRecord)
FORGE_INSTANTIATE(ShopRecord)
FORGE_INSTANTIATE(PilotRecord)

#undef FORGE_INSTANTIATE

} // namespace forge
