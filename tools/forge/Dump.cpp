#include "Forge.h"
#include "Formats.h"
#include "WorkingDirectory.h"

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <filesystem>
#include <map>
#include <ostream>
#include <system_error>

namespace forge
{

namespace
{

namespace fs = std::filesystem;

// A text in single quotes, as YAML writes it; characters that cannot be shown as they are
// appear as \xNN so that a damaged file shows what it holds.
std::string Quote(const std::string& p_text)
{
    std::string out = "'";
    for (unsigned char c : p_text)
    {
        if (c == '\'')
        {
            out += "''";
        }
        else if (c < 32 || c >= 127)
        {
            char hex[8];
            std::snprintf(hex, sizeof(hex), "\\x%02X", c);
            out += hex;
        }
        else
        {
            out += char(c);
        }
    }
    return out + "'";
}

std::string Box(const CollisionBox& p_box)
{
    return "{x: " + std::to_string(p_box.x) + ", y: " + std::to_string(p_box.y) + ", width: " +
           std::to_string(p_box.width) + ", height: " + std::to_string(p_box.height) + "}";
}

void PrintHeader(const PartHeader& p_header, std::ostream& p_out)
{
    p_out << "picture: " << Quote(p_header.picture) << "\n";
    p_out << "name: " << Quote(p_header.name) << "\n";
    p_out << "value: " << p_header.value << "\n";
    p_out << "price: " << p_header.price << "\n";
}

void Print(const HullRecord& p_hull, std::ostream& p_out)
{
    static const char* const MOUNTS[4] = {"front", "left", "right", "back"};
    p_out << "name: " << Quote(p_hull.name) << "\n";
    p_out << "image: " << Quote(p_hull.image) << "\n";
    p_out << "price: " << p_hull.price << "\n";
    p_out << "armour: " << p_hull.armour << "\n";
    p_out << "turn_rate: " << p_hull.turnRate << "  # degrees per second\n";
    p_out << "mounts:\n";
    for (size_t i = 0; i < 4; ++i)
    {
        p_out << "  " << MOUNTS[i] << ": [" << p_hull.mounts[i].x << ", " << p_hull.mounts[i].y << "]\n";
    }
    p_out << "box: " << Box(p_hull.box) << "\n";
}

void Print(const EngineRecord& p_engine, std::ostream& p_out)
{
    p_out << "name: " << Quote(p_engine.name) << "\n";
    p_out << "price: " << p_engine.price << "\n";
    p_out << "reverse_speed: " << p_engine.reverseSpeed << "  # the lowest speed kept\n";
    p_out << "forward_speed: " << p_engine.forwardSpeed << "\n";
    p_out << "acceleration: " << p_engine.acceleration << "\n";
}

void Print(const ShieldRecord& p_shield, std::ostream& p_out)
{
    p_out << "name: " << Quote(p_shield.name) << "\n";
    p_out << "price: " << p_shield.price << "\n";
    p_out << "capacity: " << p_shield.capacity << "\n";
    p_out << "per_hit: " << p_shield.perHit << "  # most damage taken from one hit\n";
}

void Print(const PowerPlantRecord& p_plant, std::ostream& p_out)
{
    PrintHeader(p_plant.header, p_out);
    p_out << "value2: " << p_plant.value2 << "\n";
    p_out << "flag1: " << int(p_plant.flag1) << "\n";
    p_out << "flag2: " << int(p_plant.flag2) << "\n";
}

void Print(const CopilotRecord& p_copilot, std::ostream& p_out)
{
    p_out << "name: " << Quote(p_copilot.name) << "\n";
    p_out << "price: " << p_copilot.price << "\n";
}

void Print(const WeaponRecord& p_weapon, std::ostream& p_out)
{
    PrintHeader(p_weapon.header, p_out);
    p_out << "byte1: " << int(p_weapon.byte1) << "\n";
    p_out << "byte2: " << int(p_weapon.byte2) << "\n";
    p_out << "value16: " << p_weapon.value16 << "\n";
    p_out << "damage: {min: " << p_weapon.minDamage << ", max: " << p_weapon.maxDamage << "}  # a hit deals "
          << p_weapon.minDamage << ".." << (int64_t(p_weapon.maxDamage) - 1) << "\n";
    p_out << "extra_value: " << p_weapon.extraValue << "\n";
    p_out << "extra_byte: " << int(p_weapon.extraByte) << "\n";
}

void Print(const EntityRecord& p_entity, std::ostream& p_out)
{
    p_out << "hull: " << Quote(p_entity.hullPicture) << "\n";
    p_out << "speed: {min: " << p_entity.minSpeed << ", max: " << p_entity.maxSpeed << "}\n";
    p_out << "acceleration: " << p_entity.acceleration << "\n";
    p_out << "turn_rate: " << p_entity.turnRate << "  # degrees per second\n";
    p_out << "weapon: " << Quote(p_entity.weapon) << "\n";
    p_out << "armour: " << p_entity.armour << "\n";
    p_out << "shield: " << p_entity.shield << "\n";
    p_out << "behaviour: " << int(p_entity.behaviour)
          << (p_entity.behaviour == BEHAVIOUR_SPAWNER ? "  # spawner" : "  # attack") << "\n";
    p_out << "team: " << int(p_entity.team)
          << (p_entity.team == 0 ? "  # the player's side" : p_entity.team == 1 ? "  # the computer's side" : "")
          << "\n";
    p_out << "box: " << Box(p_entity.box) << "\n";
}

// One character per tile in the grid: 0-9, then a-z; '?' for anything larger.
char TileChar(uint16_t p_tile)
{
    if (p_tile < 10)
    {
        return char('0' + p_tile);
    }
    if (p_tile < 36)
    {
        return char('a' + p_tile - 10);
    }
    return '?';
}

void Print(const LevelRecord& p_level, bool p_showMap, std::ostream& p_out)
{
    p_out << "tileset: " << Quote(p_level.tileSet) << "\n";
    p_out << "map_size: " << p_level.mapSize << "  # tiles a side; play area " << PlayAreaLow(p_level.mapSize)
          << ".." << PlayAreaHigh(p_level.mapSize) << "\n";
    std::map<uint16_t, size_t> counts;
    for (uint16_t tile : p_level.tiles)
    {
        ++counts[tile];
    }
    p_out << "tiles_used: {";
    bool first = true;
    for (const auto& [tile, count] : counts)
    {
        p_out << (first ? "" : ", ") << tile << ": " << count;
        first = false;
    }
    p_out << "}  # tile number: how many\n";
    if (p_showMap && IsValidMapSize(p_level.mapSize) && p_level.tiles.size() == size_t(p_level.mapSize) * p_level.mapSize)
    {
        const std::vector<uint16_t> grid = FileOrderToGrid(p_level.tiles, p_level.mapSize);
        p_out << "map: |  # top row first; tile 0-9 as digits, 10-35 as a-z\n";
        for (size_t y = 0; y < p_level.mapSize; ++y)
        {
            std::string row;
            for (size_t x = 0; x < p_level.mapSize; ++x)
            {
                row += TileChar(grid[y * p_level.mapSize + x]);
            }
            p_out << "  " << row << "\n";
        }
    }
    p_out << "scenery:  # " << p_level.scenery.size() << "\n";
    for (const SceneryRecord& scenery : p_level.scenery)
    {
        p_out << "  - {name: " << Quote(scenery.name) << ", picture: " << Quote(scenery.picture) << ", x: " << scenery.x
              << ", y: " << scenery.y << "}\n";
    }
    p_out << "reserved: " << int(p_level.reserved) << "\n";
    p_out << "ships:  # " << p_level.ships.size() << "\n";
    for (const ShipRecord& ship : p_level.ships)
    {
        p_out << "  - {kind: " << Quote(ship.kind) << ", name: " << Quote(ship.name) << ", x: " << ship.x
              << ", y: " << ship.y << "}\n";
    }
}

void Print(const ShopRecord& p_shop, std::ostream& p_out)
{
    static const char* const KIND_KEYS[KIND_COUNT] = {"hulls", "engines", "shields", "power_plants", "copilots", "weapons"};
    p_out << "title: " << Quote(p_shop.title) << "\n";
    p_out << "value1: " << int(p_shop.value1) << "\n";
    p_out << "value2: " << int(p_shop.value2) << "\n";
    for (size_t kind = 0; kind < KIND_COUNT; ++kind)
    {
        p_out << KIND_KEYS[kind] << ":";
        if (p_shop.names[kind].empty())
        {
            p_out << " []";
        }
        p_out << "\n";
        for (const std::string& name : p_shop.names[kind])
        {
            p_out << "  - " << Quote(name) << "\n";
        }
    }
}

void Print(const PilotRecord& p_pilot, std::ostream& p_out)
{
    p_out << "money: " << p_pilot.money << "\n";
    p_out << "bullets: " << p_pilot.bullets << "\n";
    p_out << "energy: " << p_pilot.energy << "\n";
    p_out << "missiles: " << p_pilot.missiles << "\n";
    p_out << "reserved: " << p_pilot.reserved << "\n";
    p_out << "pilot_name: " << Quote(p_pilot.pilotName) << "\n";
    p_out << "portrait: " << Quote(p_pilot.portrait) << "\n";
    p_out << "mission: " << Quote(p_pilot.missionName) << "\n";
    p_out << "hull: " << Quote(p_pilot.hullName) << "\n";
    p_out << "engine: " << Quote(p_pilot.engineName) << "\n";
    p_out << "reserved_part: " << Quote(p_pilot.reservedPartName) << "\n";
    p_out << "shield: " << Quote(p_pilot.shieldName) << "\n";
    p_out << "weapons: [";
    for (size_t i = 0; i < p_pilot.weaponNames.size(); ++i)
    {
        p_out << (i == 0 ? "" : ", ") << Quote(p_pilot.weaponNames[i]);
    }
    p_out << "]\n";
    p_out << "inventory:  # " << p_pilot.inventory.size() << ", front of the list first\n";
    for (const InventoryItem& item : p_pilot.inventory)
    {
        p_out << "  - {quantity: " << item.quantity << ", kind: " << int(item.kind) << ", name: " << Quote(item.name)
              << "}\n";
    }
}

template <typename Record, typename Printer>
int InspectAs(const char* p_what, const std::string& p_file, const std::string& p_display, Printer p_print,
              std::ostream& p_out, std::ostream& p_err)
{
    Record record;
    std::string error;
    const bool whole = ReadWholeFile(p_file, record, error);
    if (!whole && error == "cannot be opened")
    {
        p_err << "korvath-forge: " << p_display << ": " << error << "\n";
        return 1;
    }
    p_out << "# " << p_what << " " << p_display << "\n";
    p_print(record);
    if (!whole)
    {
        p_err << "korvath-forge: " << p_display << ": damaged: " << error << "\n";
        return 1;
    }
    return 0;
}

std::string Lower(std::string p_text)
{
    for (char& c : p_text)
    {
        c = char(std::tolower(static_cast<unsigned char>(c)));
    }
    return p_text;
}

} // namespace

int Inspect(const std::string& p_path, bool p_showMap, std::ostream& p_out, std::ostream& p_err)
{
    const fs::path path(p_path);
    const std::string extension = Lower(path.extension().string());
    std::error_code ec;
    if (!fs::is_regular_file(path, ec))
    {
        p_err << "korvath-forge: " << p_path << ": no such file\n";
        return 1;
    }
    // Data files are opened relative to the working directory, like the game opens them.
    fs::path folder = path.parent_path();
    if (folder.empty())
    {
        folder = ".";
    }
    WorkingDirectory inFolder(folder);
    if (!inFolder.Entered())
    {
        p_err << "korvath-forge: cannot enter " << folder.string() << "\n";
        return 1;
    }
    const std::string file = path.filename().string();
    auto print = [&](const auto& p_record) { Print(p_record, p_out); };
    if (extension == ".hul")
        return InspectAs<HullRecord>("hull", file, p_path, print, p_out, p_err);
    if (extension == ".eng")
        return InspectAs<EngineRecord>("engine", file, p_path, print, p_out, p_err);
    if (extension == ".sgr")
        return InspectAs<ShieldRecord>("shield", file, p_path, print, p_out, p_err);
    if (extension == ".pwp")
        return InspectAs<PowerPlantRecord>("power plant", file, p_path, print, p_out, p_err);
    if (extension == ".cop")
        return InspectAs<CopilotRecord>("copilot", file, p_path, print, p_out, p_err);
    if (extension == ".wpn")
        return InspectAs<WeaponRecord>("machine gun", file, p_path, print, p_out, p_err);
    if (extension == ".nme")
        return InspectAs<EntityRecord>("entity", file, p_path, print, p_out, p_err);
    if (extension == ".shp")
        return InspectAs<ShopRecord>("shop", file, p_path, print, p_out, p_err);
    if (extension == ".sav")
        return InspectAs<PilotRecord>("pilot", file, p_path, print, p_out, p_err);
    if (extension == ".lvl")
    {
        auto printLevel = [&](const LevelRecord& p_level) { Print(p_level, p_showMap, p_out); };
        return InspectAs<LevelRecord>("level", file, p_path, printLevel, p_out, p_err);
    }
    p_err << "korvath-forge: " << p_path
          << ": unknown kind of file (known: .hul .eng .sgr .pwp .cop .wpn .nme .lvl .shp .sav)\n";
    return 1;
}

} // namespace forge
