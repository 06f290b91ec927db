#include "Conditions.h"
#include "Forge.h"
#include "Formats.h"
#include "WorkingDirectory.h"

#include "artgen/InterfaceArt.h"
#include "platform/BitmapFile.h"
#include "platform/FileSearch.h"
#include "platform/Paths.h"
#include "platform/Profile.h"

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <deque>
#include <filesystem>
#include <fstream>
#include <map>
#include <ostream>
#include <set>
#include <system_error>

namespace forge
{

namespace
{

namespace fs = std::filesystem;

std::string Lower(std::string p_text)
{
    for (char& c : p_text)
    {
        c = char(std::tolower(static_cast<unsigned char>(c)));
    }
    return p_text;
}

// Game names use backslashes; messages show them as paths in the game directory.
std::string Shown(std::string p_gameName)
{
    std::replace(p_gameName.begin(), p_gameName.end(), '\\', '/');
    return p_gameName;
}

std::vector<std::string> ListFiles(const std::string& p_pattern)
{
    std::vector<std::string> names;
    platform::FileSearch search;
    std::string name;
    for (bool more = search.First(p_pattern, name); more; more = search.Next(name))
    {
        names.push_back(name);
    }
    search.Close();
    return names;
}

// The game counts numbered pictures up by the three digits before the extension.
std::string NumberedName(const std::string& p_first, int p_number)
{
    if (p_first.size() < 7)
    {
        return p_first;
    }
    char digits[8];
    std::snprintf(digits, sizeof(digits), "%03d", p_number % 1000);
    std::string name = p_first;
    name.replace(name.size() - 7, 3, digits);
    return name;
}

// The bit depth a bitmap file declares (0 when it has no sensible header). The reader converts
// palette and 16-bit pictures, so the depth is read from the header itself.
uint16_t DeclaredBitCount(const std::string& p_path)
{
    std::ifstream file(p_path, std::ios::binary);
    uint8_t header[30] = {};
    if (!file.read(reinterpret_cast<char*>(header), sizeof(header)) || header[0] != 'B' || header[1] != 'M')
    {
        return 0;
    }
    const uint32_t infoSize = uint32_t(header[14]) | (uint32_t(header[15]) << 8) | (uint32_t(header[16]) << 16) |
                              (uint32_t(header[17]) << 24);
    const size_t at = infoSize == 12 ? 24 : 28; // the old core header keeps it earlier
    return uint16_t(header[at] | (header[at + 1] << 8));
}

struct LevelInfo
{
    bool readable = false;
    std::set<std::string> names; // the registry names it enters, "player" included
    std::set<std::string> sceneryNames;
    int computerShips = 0;       // ships of the computer's side
    int friendlyShips = 0;       // ships on the player's side (they count as enemies left)
    bool hasSpawner = false;
};

struct Objective
{
    int id = 0;
    ParsedCondition condition;
    bool active = false;
    std::string key;
};

class Checker
{
public:
    Checker(const CheckOptions& p_options, std::ostream& p_err) : m_options(p_options), m_err(p_err) {}

    int Errors() const { return m_errors; }
    int Warnings() const { return m_warnings; }
    size_t PartCount() const
    {
        size_t count = 0;
        for (const auto& names : m_partNames)
        {
            count += names.size();
        }
        return count;
    }
    size_t EntityCount() const { return m_entities.size(); }
    size_t LevelCount() const { return m_levels.size(); }
    size_t ShopCount() const { return m_shops.size(); }
    size_t MissionCount() const { return m_missions; }

    void Error(const std::string& p_where, const std::string& p_message)
    {
        m_err << Shown(p_where) << ": " << p_message << "\n";
        ++m_errors;
    }

    void Warning(const std::string& p_where, const std::string& p_message)
    {
        m_err << Shown(p_where) << ": warning: " << p_message << "\n";
        ++m_warnings;
    }

    void CheckFolders()
    {
        static const char* const FOLDERS[] = {"GOB/Parts", "entity", "Campaign", "multiplayer", "Saves", "Portraits"};
        for (const char* folder : FOLDERS)
        {
            const std::string resolved = platform::ResolvePath(folder);
            std::error_code ec;
            if (resolved.empty() || !fs::is_directory(resolved, ec))
            {
                Error(folder, "the folder is missing");
            }
        }
    }

    // The interface and HUD pictures: each must exist as a 24- or 32-bit bitmap of the size the
    // game's layout is built around, a button's two pictures must match (Button::LoadImages
    // asserts it), and the pilot menu needs its portraits.
    void CheckInterfacePictures()
    {
        if (m_options.noArt)
        {
            return;
        }
        std::map<std::string, std::pair<int32_t, int32_t>> sizes;
        for (const artgen::InterfacePicture& picture : artgen::INTERFACE_PICTURES)
        {
            int32_t width = 0;
            int32_t height = 0;
            if (ReadPicture(picture.gameName, width, height))
            {
                sizes[picture.gameName] = {width, height};
                if (width != picture.width || height != picture.height)
                {
                    Error(picture.gameName, "is " + Size(width, height) + "; the game's layout needs " +
                                                Size(picture.width, picture.height));
                }
            }
        }
        for (const auto& pair : artgen::BUTTON_PAIRS)
        {
            const auto up = sizes.find(pair[0]);
            const auto down = sizes.find(pair[1]);
            if (up != sizes.end() && down != sizes.end() && up->second != down->second)
            {
                Error(pair[1], "is " + Size(down->second.first, down->second.second) + " but " + Shown(pair[0]) +
                                   " is " + Size(up->second.first, up->second.second) +
                                   "; a button's two pictures must be the same size");
            }
        }
        const std::string folder = artgen::PORTRAIT_FOLDER;
        const std::vector<std::string> portraits = ListFiles(folder + "/*.bmp");
        for (const std::string& file : portraits)
        {
            int32_t width = 0;
            int32_t height = 0;
            if (ReadPicture(folder + "/" + file, width, height) &&
                (width != artgen::PORTRAIT_WIDTH || height != artgen::PORTRAIT_HEIGHT))
            {
                Warning(folder + "/" + file, "is " + Size(width, height) + "; the picker stretches it to " +
                                                 Size(artgen::PORTRAIT_WIDTH, artgen::PORTRAIT_HEIGHT));
            }
        }
        if (portraits.size() < artgen::MIN_PORTRAITS)
        {
            Error(folder, "holds " + std::to_string(portraits.size()) + " portrait" + (portraits.size() == 1 ? "" : "s") +
                              "; a new pilot should have at least " + std::to_string(artgen::MIN_PORTRAITS) +
                              " to choose from");
        }
    }

    void CheckParts()
    {
        for (int kind = 0; kind < KIND_COUNT; ++kind)
        {
            const PartKindInfo& info = GetKindInfo(kind);
            const std::string stem = Lower(info.fileStem);
            std::set<int> numbers;
            for (const std::string& file : ListFiles(std::string("GOB/Parts/") + info.fileStem + "*" + info.extension))
            {
                const std::string lower = Lower(file);
                const std::string digits = lower.substr(stem.size(), lower.size() - stem.size() - 4);
                if (digits.size() != 3 || !std::all_of(digits.begin(), digits.end(), ::isdigit))
                {
                    Warning("GOB/Parts/" + file, "not a part file name the game reads (three digits expected)");
                    continue;
                }
                numbers.insert(std::stoi(digits));
            }
            int count = 0;
            while (numbers.count(count) != 0)
            {
                ++count;
            }
            for (int number : numbers)
            {
                if (number > count)
                {
                    Error(PartFileName(kind, number), "is never read: the game stops counting " + std::string(info.singular) +
                                                          " files at the missing " + Shown(PartFileName(kind, count)));
                }
            }
            for (int i = 0; i < count; ++i)
            {
                CheckPart(kind, PartFileName(kind, i));
            }
            if (count == 0 && kind != KIND_POWER_PLANT && kind != KIND_COPILOT)
            {
                Error(PartFileName(kind, 0), std::string("is missing: there are no ") + info.singular + " parts");
            }
        }
        m_weaponFiles = m_partNames[KIND_WEAPON].size();
    }

    void CheckEntities()
    {
        for (const std::string& file : ListFiles("entity/air*.nme"))
        {
            const std::string where = "entity/" + file;
            if (file.size() != 10)
            {
                Warning(where, "not an entity file name a level can name (air + three characters + .nme)");
                continue;
            }
            EntityRecord entity;
            std::string error;
            if (!ReadWholeFile(where, entity, error))
            {
                Error(where, error);
                continue;
            }
            const std::string id = Lower(file.substr(3, 3));
            if (!entity.weapon.empty() && !IsWeaponTableName(entity.weapon))
            {
                Error(where, "the weapon \"" + entity.weapon + "\" is not one the catalogue finds (" + TableNames() + ")");
            }
            if (entity.weapon == WEAPON_TABLE_NAMES[0] && m_weaponFiles == 0)
            {
                Error(where, "carries a machine gun but there is no weapon file");
            }
            if (entity.minSpeed > entity.maxSpeed)
            {
                Error(where, "the minimum speed is above the maximum");
            }
            if (entity.behaviour != BEHAVIOUR_SPAWNER && entity.minSpeed == 0)
            {
                Error(where, "a ship with the attack behaviour needs a minimum speed above 0");
            }
            if (entity.armour <= 0)
            {
                Error(where, "the armour must be above 0");
            }
            if (entity.box.width == 0)
            {
                Error(where, "the collision box has no width");
            }
            CheckHullPictures(where, entity.hullPicture, entity.box, nullptr);
            m_entities[id] = entity;
        }
    }

    const LevelInfo& CheckLevel(const std::string& p_gameName)
    {
        const std::string key = Lower(Shown(p_gameName));
        const auto known = m_levels.find(key);
        if (known != m_levels.end())
        {
            return known->second;
        }
        LevelInfo& info = m_levels[key];
        LevelRecord level;
        std::string error;
        if (!ReadWholeFile(p_gameName, level, error))
        {
            Error(p_gameName, error);
            return info;
        }
        info.readable = true;
        info.names.insert("player");
        if (!IsValidMapSize(level.mapSize))
        {
            Error(p_gameName, "the map size " + std::to_string(level.mapSize) +
                                  " is not 5 times a power of two, so the quadtree cannot hold its tiles");
        }
        if (PlayAreaHigh(level.mapSize) <= PLAYER_START)
        {
            Error(p_gameName, "the play area is empty: " + std::to_string(level.mapSize) + " tiles a side end at " +
                                  std::to_string(PlayAreaHigh(level.mapSize)) + ", below its start at " +
                                  std::to_string(PlayAreaLow(level.mapSize)) + " (use 80 tiles)");
        }
        CheckTiles(p_gameName, level);
        const int32_t mapUnits = int32_t(level.mapSize) * LEVEL_TILE_UNITS;
        auto inside = [&](const std::string& p_what, int32_t p_x, int32_t p_y) {
            if (p_x < 0 || p_y < 0 || p_x >= mapUnits || p_y >= mapUnits)
            {
                Error(p_gameName, p_what + " at (" + std::to_string(p_x) + ", " + std::to_string(p_y) +
                                      ") lies outside the map and would be destroyed at once");
            }
        };
        auto enter = [&](const std::string& p_what, const std::string& p_name) {
            if (p_name.empty())
            {
                return;
            }
            if (p_name == "player" || p_name.find(' ') != std::string::npos)
            {
                Error(p_gameName, p_what + " has the name \"" + p_name + "\", which conditions cannot tell apart");
            }
            else if (!info.names.insert(p_name).second)
            {
                Error(p_gameName, "two objects are named \"" + p_name + "\"; the registry keeps only one");
            }
        };
        std::map<std::string, int> missingPictures;
        for (const SceneryRecord& scenery : level.scenery)
        {
            const std::string what = "the scenery " + (scenery.name.empty() ? "\"" + scenery.picture + "\"" : "\"" + scenery.name + "\"");
            enter(what, scenery.name);
            if (!scenery.name.empty())
            {
                info.sceneryNames.insert(scenery.name);
            }
            inside(what, scenery.x, scenery.y);
            if (scenery.picture.empty())
            {
                Error(p_gameName, what + " has no picture");
            }
            else if (!m_options.noArt && !platform::FileExists("Entity\\" + scenery.picture))
            {
                ++missingPictures[scenery.picture];
            }
        }
        for (const auto& [picture, uses] : missingPictures)
        {
            Error(p_gameName, "the scenery picture entity/" + Shown(picture) + " is missing (" + std::to_string(uses) +
                                  (uses == 1 ? " object shows it)" : " objects show it)"));
        }
        for (const ShipRecord& ship : level.ships)
        {
            const std::string what = "the ship " + (ship.name.empty() ? "of kind \"" + ship.kind + "\"" : "\"" + ship.name + "\"");
            enter(what, ship.name);
            inside(what, ship.x, ship.y);
            const auto entity = m_entities.find(Lower(ship.kind));
            if (entity == m_entities.end())
            {
                Error(p_gameName, what + " needs entity/air" + ship.kind + ".nme, which does not exist");
                continue;
            }
            if (entity->second.team == 0)
            {
                ++info.friendlyShips;
            }
            else
            {
                ++info.computerShips;
            }
            if (entity->second.behaviour == BEHAVIOUR_SPAWNER)
            {
                info.hasSpawner = true;
                if (m_entities.count("000") == 0)
                {
                    Error(p_gameName, what + " is a spawner, which launches entity/air000.nme; that file is missing");
                }
            }
        }
        return info;
    }

    void CheckAllLevels()
    {
        for (const std::string& file : ListFiles("Campaign/*.lvl"))
        {
            const std::string name = "Campaign/" + file;
            CheckLevel(name);
            if (m_usedLevels.count(Lower(name)) == 0)
            {
                Warning(name, "no campaign plays this level");
            }
        }
    }

    void CheckShop(const std::string& p_gameName)
    {
        const std::string key = Lower(Shown(p_gameName));
        if (!m_shops.insert(key).second)
        {
            return;
        }
        ShopRecord shop;
        std::string error;
        if (!ReadWholeFile(p_gameName, shop, error))
        {
            Error(p_gameName, error);
            return;
        }
        if (shop.title.empty())
        {
            Warning(p_gameName, "the shop has no title");
        }
        for (int kind = 0; kind < KIND_COUNT; ++kind)
        {
            for (const std::string& name : shop.names[size_t(kind)])
            {
                const std::string why = UnknownPart(kind, name);
                if (!why.empty())
                {
                    Error(p_gameName, "sells " + why);
                }
            }
        }
    }

    void CheckAllShops()
    {
        for (const std::string& file : ListFiles("Campaign/*.shp"))
        {
            CheckShop("Campaign/" + file);
        }
    }

    void CheckDefaultPilot()
    {
        const struct
        {
            int kind;
            const char* name;
        } defaults[] = {{KIND_HULL, DEFAULT_HULL},
                        {KIND_ENGINE, DEFAULT_ENGINE},
                        {KIND_SHIELD, DEFAULT_SHIELD},
                        {KIND_WEAPON, DEFAULT_WEAPON}};
        for (const auto& part : defaults)
        {
            const std::string why = UnknownPart(part.kind, part.name);
            if (!why.empty())
            {
                Error("GOB/Parts", "a new pilot flies " + why);
            }
        }
    }

    // Follows the missions from FirstMission through the win labels; answers whether some
    // chain reaches "endgame".
    bool CheckCampaign(const std::string& p_iniName)
    {
        m_reachesEnd = false;
        if (!platform::FileExists(p_iniName))
        {
            Error(p_iniName, "the campaign file is missing");
            return false;
        }
        const std::string first = Read(p_iniName, "Entry", "FirstMission", "Mission1");
        if (first.size() > 63)
        {
            Error(p_iniName, "[Entry] FirstMission is longer than the 63 characters the game reads");
        }
        std::deque<std::pair<std::string, std::string>> queue{{first, "[Entry] FirstMission"}};
        std::set<std::string> visited;
        while (!queue.empty())
        {
            const auto [mission, from] = queue.front();
            queue.pop_front();
            if (!visited.insert(Lower(mission)).second)
            {
                continue;
            }
            for (const std::string& next : CheckMission(p_iniName, mission, from))
            {
                queue.push_back({next, "[" + mission + "]"});
            }
        }
        for (const std::string& section : Sections(p_iniName))
        {
            if (Lower(section) != "entry" && visited.count(Lower(section)) == 0)
            {
                Warning(p_iniName, "the mission [" + section + "] is never reached from FirstMission");
            }
        }
        if (!m_reachesEnd)
        {
            Error(p_iniName, "no mission chain reaches \"endgame\", so the campaign never ends");
        }
        return m_reachesEnd;
    }

private:
    static std::string Size(int32_t p_width, int32_t p_height)
    {
        return std::to_string(p_width) + "x" + std::to_string(p_height);
    }

    // A picture the game loads as it is: present, readable, 24- or 32-bit.
    bool ReadPicture(const std::string& p_gameName, int32_t& p_width, int32_t& p_height)
    {
        if (!platform::FileExists(p_gameName))
        {
            Error(p_gameName, "is missing");
            return false;
        }
        const std::string path = platform::ResolvePath(p_gameName);
        platform::DibPixels pixels;
        if (!platform::ReadBitmapFile(path, pixels))
        {
            Error(p_gameName, "is not a readable bitmap");
            return false;
        }
        const uint16_t bits = DeclaredBitCount(path);
        if (bits != 24 && bits != 32)
        {
            Error(p_gameName, "is a " + std::to_string(bits) + "-bit bitmap; the game loads 24- and 32-bit ones");
            return false;
        }
        p_width = pixels.width;
        p_height = pixels.height < 0 ? -pixels.height : pixels.height;
        return true;
    }

    static std::string TableNames()
    {
        std::string names;
        for (const char* name : WEAPON_TABLE_NAMES)
        {
            names += names.empty() ? "" : ", ";
            names += name;
        }
        return names;
    }

    // Empty when the catalogue finds the part, otherwise what is wrong with it.
    std::string UnknownPart(int p_kind, const std::string& p_name) const
    {
        const PartKindInfo& info = GetKindInfo(p_kind);
        if (p_kind == KIND_WEAPON)
        {
            if (!IsWeaponTableName(p_name))
            {
                return "the weapon \"" + p_name + "\", which the catalogue cannot find: weapons are found by " + TableNames();
            }
            if (p_name == WEAPON_TABLE_NAMES[0] && m_weaponFiles == 0)
            {
                return "a machine gun, but there is no weapon file";
            }
            return {};
        }
        if (p_kind == KIND_COPILOT)
        {
            return "the copilot \"" + p_name + "\", but the game does not load copilots into its catalogue";
        }
        const auto& names = m_partNames[size_t(p_kind)];
        if (std::find(names.begin(), names.end(), p_name) == names.end())
        {
            return std::string("the ") + info.singular + " \"" + p_name + "\", which no part file of that kind carries";
        }
        return {};
    }

    template <typename Record>
    bool ReadPart(const std::string& p_file, Record& p_record)
    {
        std::string error;
        if (!ReadWholeFile(p_file, p_record, error))
        {
            Error(p_file, error);
            return false;
        }
        return true;
    }

    void AddName(int p_kind, const std::string& p_file, const std::string& p_name)
    {
        auto& names = m_partNames[size_t(p_kind)];
        if (p_name.empty())
        {
            Error(p_file, "the part has no name");
        }
        else if (std::find(names.begin(), names.end(), p_name) != names.end() && p_kind != KIND_WEAPON)
        {
            Error(p_file, "a second " + std::string(GetKindInfo(p_kind).singular) + " named \"" + p_name +
                              "\"; the catalogue only ever finds the first");
        }
        names.push_back(p_name);
    }

    void CheckPicture(const std::string& p_file, const std::string& p_picture, const char* p_what)
    {
        if (!m_options.noArt && !p_picture.empty() && !platform::FileExists(p_picture))
        {
            Error(p_file, std::string("the ") + p_what + " picture " + Shown(p_picture) + " is missing");
        }
    }

    void CheckPart(int p_kind, const std::string& p_file)
    {
        switch (p_kind)
        {
        case KIND_HULL:
        {
            HullRecord hull;
            if (ReadPart(p_file, hull))
            {
                AddName(p_kind, p_file, hull.name);
                if (hull.armour <= 0)
                {
                    Error(p_file, "the hull has no armour");
                }
                CheckHullPictures(p_file, hull.image, hull.box, &hull.mounts);
            }
            break;
        }
        case KIND_ENGINE:
        {
            EngineRecord engine;
            if (ReadPart(p_file, engine))
            {
                AddName(p_kind, p_file, engine.name);
                if (engine.reverseSpeed > engine.forwardSpeed)
                {
                    Error(p_file, "the reverse (lowest) speed is above the forward speed");
                }
            }
            break;
        }
        case KIND_SHIELD:
        {
            ShieldRecord shield;
            if (ReadPart(p_file, shield))
            {
                AddName(p_kind, p_file, shield.name);
            }
            break;
        }
        case KIND_POWER_PLANT:
        {
            PowerPlantRecord plant;
            if (ReadPart(p_file, plant))
            {
                AddName(p_kind, p_file, plant.header.name);
                CheckPicture(p_file, plant.header.picture, "power plant");
            }
            break;
        }
        case KIND_COPILOT:
        {
            CopilotRecord copilot;
            if (ReadPart(p_file, copilot))
            {
                AddName(p_kind, p_file, copilot.name);
            }
            break;
        }
        case KIND_WEAPON:
        {
            WeaponRecord weapon;
            if (ReadPart(p_file, weapon))
            {
                const bool first = m_partNames[KIND_WEAPON].empty();
                AddName(p_kind, p_file, weapon.header.name);
                if (weapon.maxDamage <= weapon.minDamage)
                {
                    Error(p_file, "the maximum damage must be above the minimum (the game rolls min + rand() % (max - min))");
                }
                if (first && weapon.header.name != WEAPON_TABLE_NAMES[0])
                {
                    Error(p_file, std::string("the first machine gun is found as \"") + WEAPON_TABLE_NAMES[0] +
                                      "\" and pilots store its own name, so it must carry that name, not \"" +
                                      weapon.header.name + "\"");
                }
                if (!first)
                {
                    Warning(p_file, "only the first weapon file is ever found by name; this machine gun cannot be bought");
                }
                CheckPicture(p_file, weapon.header.picture, "weapon");
            }
            break;
        }
        default:
            break;
        }
    }

    // A ship's pictures: the still frame (or the base name itself) must exist; with the art in
    // place the collision box and the mounts must lie on the picture.
    void CheckHullPictures(const std::string& p_file, const std::string& p_base, const CollisionBox& p_box,
                           const std::array<Mount, 4>* p_mounts)
    {
        if (p_base.empty())
        {
            Error(p_file, "names no hull picture");
            return;
        }
        if (m_options.noArt)
        {
            return;
        }
        std::string still = p_base + "_short_still0000.bmp";
        if (!platform::FileExists(still))
        {
            if (!platform::FileExists(p_base))
            {
                Error(p_file, "the hull picture " + Shown(still) + " is missing");
                return;
            }
            still = p_base;
        }
        platform::DibPixels pixels;
        if (!platform::ReadBitmapFile(platform::ResolvePath(still), pixels))
        {
            Error(p_file, "the hull picture " + Shown(still) + " is not a readable bitmap");
            return;
        }
        const int32_t width = pixels.width;
        const int32_t height = pixels.height < 0 ? -pixels.height : pixels.height;
        if (p_box.x < 0 || p_box.y < 0 || p_box.x + int32_t(p_box.width) > width ||
            p_box.y + int32_t(p_box.height) > height)
        {
            Error(p_file, "the collision box does not fit the " + std::to_string(width) + "x" + std::to_string(height) +
                              " picture " + Shown(still));
        }
        if (p_mounts != nullptr)
        {
            for (const Mount& mount : *p_mounts)
            {
                if (mount.x > width || mount.y > height)
                {
                    Error(p_file, "a weapon mount lies off the " + std::to_string(width) + "x" + std::to_string(height) +
                                      " picture " + Shown(still));
                    break;
                }
            }
        }
    }

    void CheckTiles(const std::string& p_gameName, const LevelRecord& p_level)
    {
        if (p_level.tileSet.size() < 7)
        {
            Error(p_gameName, "the tile set \"" + p_level.tileSet + "\" does not end in three digits and an extension");
            return;
        }
        // The one tile set the game loads as a single picture, drawn under its starfield.
        const int setSize = p_level.tileSet == "Art\\startile000.bmp" ? 1 : 200;
        std::set<uint16_t> used(p_level.tiles.begin(), p_level.tiles.end());
        for (uint16_t tile : used)
        {
            if (tile >= setSize)
            {
                Warning(p_gameName, "tile " + std::to_string(tile) + " is past the tile set's " + std::to_string(setSize) +
                                        " pictures and shows tile 0");
            }
            else if (!m_options.noArt && !platform::FileExists(NumberedName(p_level.tileSet, tile)))
            {
                Error(p_gameName, "tile " + std::to_string(tile) + " is used but its picture " +
                                      Shown(NumberedName(p_level.tileSet, tile)) + " is missing");
            }
        }
    }

    static std::string Read(const std::string& p_ini, const char* p_section, const char* p_key, const char* p_default)
    {
        std::vector<char> buffer(16384);
        platform::GetPrivateProfileString(p_section, p_key, p_default, buffer.data(), uint32_t(buffer.size()),
                                          p_ini.c_str());
        return buffer.data();
    }

    static std::vector<std::string> List(const std::string& p_ini, const char* p_section)
    {
        std::vector<char> buffer(1 << 16);
        const uint32_t count = platform::GetPrivateProfileString(p_section, nullptr, "", buffer.data(),
                                                                 uint32_t(buffer.size()), p_ini.c_str());
        std::vector<std::string> names;
        size_t start = 0;
        for (size_t i = 0; i < count; ++i)
        {
            if (buffer[i] == '\0')
            {
                names.emplace_back(buffer.data() + start, i - start);
                start = i + 1;
            }
        }
        return names;
    }

    static std::vector<std::string> Sections(const std::string& p_ini) { return List(p_ini, nullptr); }

    void CheckValueLength(const std::string& p_where, const std::string& p_key, const std::string& p_value, size_t p_max)
    {
        if (p_value.size() > p_max)
        {
            Error(p_where, p_key + " is " + std::to_string(p_value.size()) + " characters long; the game reads only " +
                               std::to_string(p_max));
        }
    }

    // Checks one mission and answers the missions its win conditions lead to.
    std::vector<std::string> CheckMission(const std::string& p_ini, const std::string& p_mission, const std::string& p_from)
    {
        ++m_missions;
        const std::string where = p_ini + " [" + p_mission + "]";
        std::vector<std::string> next;
        if (List(p_ini, p_mission.c_str()).empty())
        {
            Error(where, "the mission named by " + p_from + " does not exist; the game would play its defaults");
            return next;
        }
        const std::string level = Read(p_ini, p_mission.c_str(), "Level", "");
        const std::string shop = Read(p_ini, p_mission.c_str(), "Shop", "default_shop.shp");
        const std::string brief = Read(p_ini, p_mission.c_str(), "Brief", "");
        LevelInfo info;
        if (level.empty())
        {
            Error(where, "has no Level");
        }
        else
        {
            CheckValueLength(where, "Level", level, 54);
            const std::string levelName = "Campaign/" + level;
            m_usedLevels.insert(Lower(levelName));
            if (!platform::FileExists(levelName))
            {
                Error(where, "the level " + Shown(levelName) + " is missing");
            }
            else
            {
                info = CheckLevel(levelName);
            }
        }
        CheckValueLength(where, "Shop", shop, 54);
        if (!platform::FileExists("Campaign/" + shop))
        {
            Error(where, "the shop Campaign/" + shop + " is missing");
        }
        else
        {
            CheckShop("Campaign/" + shop);
        }
        if (brief.empty())
        {
            Error(where, "has no Brief; the hub would show \"Hey, you forgot to add a briefing.\"");
        }
        CheckValueLength(where, "Brief", brief, 4095);

        std::vector<Objective> objectives;
        for (int n = 1;; ++n)
        {
            const std::string key = "Obj" + std::to_string(n);
            const std::string line = Read(p_ini, p_mission.c_str(), key.c_str(), "");
            if (line.empty())
            {
                break;
            }
            CheckValueLength(where, key, line, 1022);
            Objective objective;
            std::string why;
            if (!ParseCondition(line, true, objective.condition, why))
            {
                Error(where, key + " is dropped by the game: " + why);
                continue;
            }
            objective.id = int(objectives.size()) + 1;
            objective.key = key;
            const std::string text = Read(p_ini, p_mission.c_str(), (key + "_text").c_str(), "");
            CheckValueLength(where, key + "_text", text, 1023);
            objective.active = !text.empty();
            CheckConditionTargets(where, key, objective.condition, info);
            objectives.push_back(objective);
        }
        // Objective masks can only name objectives that exist.
        for (const Objective& objective : objectives)
        {
            CheckMask(where, objective.key, objective.condition, int(objectives.size()));
        }

        std::set<int> activated;
        for (const Objective& objective : objectives)
        {
            const std::string& label = objective.condition.label;
            if (label == "-")
            {
                continue;
            }
            if (label.size() + 5 > 127)
            {
                Error(where, objective.key + ": the label \"" + label + "\" is too long for its action keys");
                continue;
            }
            int actions = 0;
            for (int n = 1;; ++n)
            {
                const std::string key = label + "_" + std::to_string(n);
                const std::string line = Read(p_ini, p_mission.c_str(), key.c_str(), "");
                if (line.empty())
                {
                    break;
                }
                ++actions;
                CheckValueLength(where, key, line, 510);
                ParsedAction action;
                std::string why;
                if (!ParseAction(line, action, why))
                {
                    Error(where, key + " does nothing: " + why);
                    continue;
                }
                if (action.kind == ACTION_ACTIVATE)
                {
                    if (action.number < 1 || action.number > int(objectives.size()))
                    {
                        Error(where, key + " activates objective " + std::to_string(action.number) +
                                         ", which the mission does not have");
                    }
                    activated.insert(action.number);
                }
            }
            if (actions == 0)
            {
                Warning(where, objective.key + " has the label \"" + label + "\" but no action " + label + "_1");
            }
        }
        for (const Objective& objective : objectives)
        {
            if (!objective.active && activated.count(objective.id) == 0)
            {
                Error(where, objective.key + " has no text and no action activates it, so it can never be done");
            }
        }

        int wins = 0;
        for (int n = 1;; ++n)
        {
            const std::string key = "Win" + std::to_string(n);
            const std::string line = Read(p_ini, p_mission.c_str(), key.c_str(), "");
            if (line.empty())
            {
                break;
            }
            CheckValueLength(where, key, line, 126);
            ParsedCondition condition;
            std::string why;
            if (!ParseCondition(line, true, condition, why))
            {
                Error(where, key + " is dropped by the game: " + why);
                continue;
            }
            ++wins;
            CheckConditionTargets(where, key, condition, info);
            CheckMask(where, key, condition, int(objectives.size()));
            if (Lower(condition.label) != "endgame")
            {
                next.push_back(condition.label);
            }
            else
            {
                m_reachesEnd = true;
            }
        }
        if (wins == 0)
        {
            Error(where, "has no win condition, so it can never be won");
        }
        for (int n = 1;; ++n)
        {
            const std::string key = "Lose" + std::to_string(n);
            const std::string line = Read(p_ini, p_mission.c_str(), key.c_str(), "");
            if (line.empty())
            {
                break;
            }
            CheckValueLength(where, key, line, 126);
            ParsedCondition condition;
            std::string why;
            if (!ParseCondition(line, false, condition, why))
            {
                Error(where, key + " is dropped by the game: " + why);
                continue;
            }
            CheckConditionTargets(where, key, condition, info);
            CheckMask(where, key, condition, int(objectives.size()));
        }
        return next;
    }

    void CheckMask(const std::string& p_where, const std::string& p_key, const ParsedCondition& p_condition, int p_objectives)
    {
        if (p_condition.kind != CONDITION_OBJECTIVES || p_condition.count < 0)
        {
            return;
        }
        const int64_t all = (int64_t(1) << std::min(p_objectives, 31)) - 1;
        if ((int64_t(p_condition.count) & ~all) != 0 || p_condition.count == 0)
        {
            Error(p_where, p_key + ": the mask " + std::to_string(p_condition.count) + " names objectives the mission does not have (" +
                               std::to_string(p_objectives) + " objectives)");
        }
    }

    void CheckConditionTargets(const std::string& p_where, const std::string& p_key, const ParsedCondition& p_condition,
                               const LevelInfo& p_level)
    {
        if (!p_level.readable)
        {
            return;
        }
        auto known = [&](const std::string& p_name) {
            if (p_level.names.count(p_name) == 0)
            {
                Error(p_where, p_key + " names \"" + p_name + "\", which nothing in the level is called" +
                                   (p_condition.kind == CONDITION_DEAD ? " (so it would hold at once)" : ""));
            }
        };
        switch (p_condition.kind)
        {
        case CONDITION_TOUCHING:
            known(p_condition.name1);
            known(p_condition.name2);
            break;
        case CONDITION_DEAD:
            known(p_condition.name1);
            if (p_level.sceneryNames.count(p_condition.name1) != 0)
            {
                Error(p_where, p_key + " waits for \"" + p_condition.name1 + "\" to die, but scenery is never removed");
            }
            break;
        case CONDITION_KILLED:
            if (p_condition.count < 0 && (p_level.hasSpawner || p_level.friendlyShips > 0))
            {
                Error(p_where, p_key + ": \"killed *\" waits for every ship to die, but " +
                                   (p_level.hasSpawner ? std::string("a spawner is never removed")
                                                       : std::string("ships on the player's side count too")));
            }
            else if (p_condition.count > p_level.computerShips && !p_level.hasSpawner)
            {
                Error(p_where, p_key + " waits for " + std::to_string(p_condition.count) + " kills but the level has only " +
                                   std::to_string(p_level.computerShips) + " computer ships");
            }
            break;
        default:
            break;
        }
    }

    const CheckOptions& m_options;
    std::ostream& m_err;
    int m_errors = 0;
    int m_warnings = 0;
    std::array<std::vector<std::string>, KIND_COUNT> m_partNames;
    size_t m_weaponFiles = 0;
    std::map<std::string, EntityRecord> m_entities; // by lower-case id
    std::map<std::string, LevelInfo> m_levels;      // by lower-case game path
    std::set<std::string> m_usedLevels;
    std::set<std::string> m_shops;
    size_t m_missions = 0;
    bool m_reachesEnd = false;
};

} // namespace

int Check(const std::string& p_gameDir, const CheckOptions& p_options, std::ostream& p_out, std::ostream& p_err)
{
    std::error_code ec;
    if (!fs::is_directory(p_gameDir, ec))
    {
        p_err << "korvath-forge: " << p_gameDir << " is not a game directory\n";
        return 1;
    }
    WorkingDirectory inGame(p_gameDir);
    if (!inGame.Entered())
    {
        p_err << "korvath-forge: cannot enter " << p_gameDir << "\n";
        return 1;
    }
    Checker checker(p_options, p_err);
    checker.CheckFolders();
    checker.CheckInterfacePictures();
    checker.CheckParts();
    checker.CheckDefaultPilot();
    checker.CheckEntities();
    checker.CheckCampaign("Campaign/korvath.ini");
    checker.CheckCampaign("multiplayer/multiplayer.ini");
    checker.CheckAllLevels();
    checker.CheckAllShops();

    if (checker.Errors() > 0)
    {
        p_err << "korvath-forge: check of " << p_gameDir << " found " << checker.Errors() << " error"
              << (checker.Errors() == 1 ? "" : "s") << "\n";
        return 1;
    }
    p_out << "korvath-forge: " << p_gameDir << " is fine: " << checker.PartCount() << " parts, "
          << checker.EntityCount() << " entities, " << checker.LevelCount() << " levels, " << checker.ShopCount()
          << " shops, " << checker.MissionCount() << " missions";
    if (checker.Warnings() > 0)
    {
        p_out << ", " << checker.Warnings() << " warning" << (checker.Warnings() == 1 ? "" : "s");
    }
    if (p_options.noArt)
    {
        p_out << " (pictures not checked)";
    }
    p_out << "\n";
    return 0;
}

} // namespace forge
