#include "Sources.h"

#include <yaml-cpp/yaml.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <initializer_list>
#include <limits>
#include <map>
#include <set>
#include <sstream>
#include <system_error>

namespace forge
{

namespace
{

namespace fs = std::filesystem;

// One YAML source being read: keeps its display name and adds every problem found, with the
// line, to the shared error list. Reading goes on after an error so that one run reports as
// much as it can.
class SourceFile
{
public:
    SourceFile(std::string p_displayName, std::vector<std::string>& p_errors)
        : m_name(std::move(p_displayName)), m_errors(p_errors)
    {
    }

    bool Load(const fs::path& p_path)
    {
        try
        {
            m_root = YAML::LoadFile(p_path.string());
        }
        catch (const YAML::BadFile&)
        {
            m_errors.push_back(m_name + ": cannot be read");
            return false;
        }
        catch (const YAML::Exception& e)
        {
            AddError(e.mark.line + 1, "not valid YAML: " + e.msg);
            return false;
        }
        return true;
    }

    const YAML::Node& Root() const { return m_root; }
    const std::string& Name() const { return m_name; }

    static int LineOf(const YAML::Node& p_node)
    {
        if (!p_node.IsDefined())
        {
            return 0;
        }
        return p_node.Mark().line + 1;
    }

    void AddError(int p_line, const std::string& p_message)
    {
        if (p_line > 0)
        {
            m_errors.push_back(m_name + ":" + std::to_string(p_line) + ": " + p_message);
        }
        else
        {
            m_errors.push_back(m_name + ": " + p_message);
        }
    }

    void Error(const YAML::Node& p_node, const std::string& p_message) { AddError(LineOf(p_node), p_message); }

    bool ExpectMap(const YAML::Node& p_node, const std::string& p_what)
    {
        if (!p_node.IsMap())
        {
            Error(p_node, p_what + " must be a mapping of keys and values");
            return false;
        }
        return true;
    }

    bool ExpectList(const YAML::Node& p_node, const std::string& p_what)
    {
        if (!p_node.IsSequence())
        {
            Error(p_node, p_what + " must be a list");
            return false;
        }
        return true;
    }

    // Reports keys a mapping may not have: a misspelt key would otherwise be ignored silently.
    void AllowKeys(const YAML::Node& p_map, std::initializer_list<const char*> p_keys)
    {
        for (auto it = p_map.begin(); it != p_map.end(); ++it)
        {
            const std::string key = it->first.IsScalar() ? it->first.Scalar() : std::string();
            bool known = false;
            for (const char* allowed : p_keys)
            {
                known = known || key == allowed;
            }
            if (!known)
            {
                std::string list;
                for (const char* allowed : p_keys)
                {
                    list += list.empty() ? "" : ", ";
                    list += allowed;
                }
                Error(it->first, "unknown key \"" + key + "\" (expected one of: " + list + ")");
            }
        }
    }

    // A whole number in [p_min, p_max]. A missing key gives p_default when p_required is
    // false, else an error.
    template <typename T>
    bool Number(const YAML::Node& p_map, const char* p_key, T& p_out, bool p_required = true, T p_default = T())
    {
        const YAML::Node node = p_map[p_key];
        if (!node)
        {
            if (p_required)
            {
                Error(p_map, std::string("missing \"") + p_key + "\"");
                return false;
            }
            p_out = p_default;
            return true;
        }
        return ToNumber(node, p_key, p_out);
    }

    template <typename T>
    bool ToNumber(const YAML::Node& p_node, const std::string& p_what, T& p_out)
    {
        const int64_t low = static_cast<int64_t>(std::numeric_limits<T>::min());
        const int64_t high = static_cast<int64_t>(std::numeric_limits<T>::max());
        int64_t value = 0;
        if (!ParseInteger(p_node, value))
        {
            Error(p_node, "\"" + p_what + "\" must be a whole number");
            return false;
        }
        if (value < low || value > high)
        {
            Error(p_node, "\"" + p_what + "\" is " + std::to_string(value) + ", outside " + std::to_string(low) +
                              ".." + std::to_string(high));
            return false;
        }
        p_out = static_cast<T>(value);
        return true;
    }

    // A text of at most 255 characters (what a data-file string can hold).
    bool Text(const YAML::Node& p_map, const char* p_key, std::string& p_out, bool p_required = true,
              bool p_allowEmpty = false)
    {
        const YAML::Node node = p_map[p_key];
        if (!node)
        {
            if (p_required)
            {
                Error(p_map, std::string("missing \"") + p_key + "\"");
                return false;
            }
            p_out.clear();
            return true;
        }
        return ToText(node, p_key, p_out, p_allowEmpty);
    }

    bool ToText(const YAML::Node& p_node, const std::string& p_what, std::string& p_out, bool p_allowEmpty)
    {
        if (p_node.IsNull())
        {
            p_out.clear();
        }
        else if (p_node.IsScalar())
        {
            p_out = p_node.Scalar();
        }
        else
        {
            Error(p_node, "\"" + p_what + "\" must be a text");
            return false;
        }
        if (p_out.empty() && !p_allowEmpty)
        {
            Error(p_node, "\"" + p_what + "\" must not be empty");
            return false;
        }
        if (p_out.size() > 255)
        {
            Error(p_node, "\"" + p_what + "\" is " + std::to_string(p_out.size()) +
                              " characters long; a data file stores at most 255");
            return false;
        }
        for (unsigned char c : p_out)
        {
            if (c < 32)
            {
                Error(p_node, "\"" + p_what + "\" holds a control character");
                return false;
            }
        }
        return true;
    }

private:
    static bool ParseInteger(const YAML::Node& p_node, int64_t& p_value)
    {
        if (!p_node.IsScalar())
        {
            return false;
        }
        const std::string& text = p_node.Scalar();
        if (text.empty())
        {
            return false;
        }
        size_t start = (text[0] == '-' || text[0] == '+') ? 1 : 0;
        if (start == text.size())
        {
            return false;
        }
        for (size_t i = start; i < text.size(); ++i)
        {
            if (text[i] < '0' || text[i] > '9')
            {
                return false;
            }
        }
        errno = 0;
        const long long value = std::strtoll(text.c_str(), nullptr, 10);
        if (errno == ERANGE)
        {
            return false;
        }
        p_value = value;
        return true;
    }

    std::string m_name;
    std::vector<std::string>& m_errors;
    YAML::Node m_root;
};

bool ReadBox(SourceFile& p_src, const YAML::Node& p_owner, CollisionBox& p_box)
{
    const YAML::Node box = p_owner["box"];
    if (!box)
    {
        p_src.Error(p_owner, "missing \"box\" (the collision box: x, y, width, height)");
        return false;
    }
    if (!p_src.ExpectMap(box, "box"))
    {
        return false;
    }
    p_src.AllowKeys(box, {"x", "y", "width", "height"});
    bool ok = p_src.Number(box, "x", p_box.x);
    ok = p_src.Number(box, "y", p_box.y) && ok;
    ok = p_src.Number(box, "width", p_box.width) && ok;
    ok = p_src.Number(box, "height", p_box.height) && ok;
    if (ok && (p_box.width == 0 || p_box.height == 0))
    {
        p_src.Error(box, "the collision box needs a width and a height above 0");
        ok = false;
    }
    return ok;
}

bool ReadPoint(SourceFile& p_src, const YAML::Node& p_node, const std::string& p_what, Mount& p_mount)
{
    if (!p_node.IsSequence() || p_node.size() != 2)
    {
        p_src.Error(p_node, "\"" + p_what + "\" must be a pair [x, y]");
        return false;
    }
    bool ok = p_src.ToNumber(p_node[0], p_what + " x", p_mount.x);
    ok = p_src.ToNumber(p_node[1], p_what + " y", p_mount.y) && ok;
    return ok;
}

void CheckUniqueName(SourceFile& p_src, std::set<std::string>& p_seen, const std::string& p_name,
                     const YAML::Node& p_node, const char* p_kind)
{
    if (!p_name.empty() && !p_seen.insert(p_name).second)
    {
        // The catalogue finds the first part of a name; a second one could never be bought.
        p_src.Error(p_node, std::string("a second ") + p_kind + " named \"" + p_name + "\"");
    }
}

bool ReadHeaderFields(SourceFile& p_src, const YAML::Node& p_item, PartHeader& p_header, bool p_pictureRequired)
{
    bool ok = p_src.Text(p_item, "picture", p_header.picture, p_pictureRequired, !p_pictureRequired);
    ok = p_src.Text(p_item, "name", p_header.name) && ok;
    ok = p_src.Number(p_item, "value", p_header.value, false) && ok;
    ok = p_src.Number(p_item, "price", p_header.price) && ok;
    if (ok && p_header.price < 0)
    {
        p_src.Error(p_item["price"], "a price cannot be negative");
        ok = false;
    }
    return ok;
}

bool CheckPrice(SourceFile& p_src, const YAML::Node& p_item, int32_t p_price)
{
    if (p_price < 0)
    {
        p_src.Error(p_item["price"], "a price cannot be negative");
        return false;
    }
    return true;
}

template <typename Parse>
void ReadList(SourceFile& p_src, const YAML::Node& p_root, const char* p_key, bool p_required, Parse p_parse)
{
    const YAML::Node list = p_root[p_key];
    if (!list)
    {
        if (p_required)
        {
            p_src.Error(p_root, std::string("missing the list \"") + p_key + "\"");
        }
        return;
    }
    if (!p_src.ExpectList(list, p_key))
    {
        return;
    }
    for (const YAML::Node& item : list)
    {
        if (p_src.ExpectMap(item, std::string("an entry of \"") + p_key + "\""))
        {
            p_parse(item);
        }
    }
}

void LoadParts(const fs::path& p_path, const std::string& p_display, GameData& p_data, std::vector<std::string>& p_errors)
{
    SourceFile src(p_display, p_errors);
    if (!src.Load(p_path) || !src.ExpectMap(src.Root(), "the parts file"))
    {
        return;
    }
    const YAML::Node& root = src.Root();
    src.AllowKeys(root, {"hulls", "engines", "shields", "power_plants", "copilots", "weapons"});

    std::set<std::string> names;
    ReadList(src, root, "hulls", true, [&](const YAML::Node& item) {
        src.AllowKeys(item, {"name", "image", "price", "armour", "turn_rate", "mounts", "box"});
        HullRecord hull;
        bool ok = src.Text(item, "name", hull.name);
        ok = src.Text(item, "image", hull.image) && ok;
        ok = src.Number(item, "price", hull.price) && CheckPrice(src, item, hull.price) && ok;
        ok = src.Number(item, "armour", hull.armour) && ok;
        ok = src.Number(item, "turn_rate", hull.turnRate) && ok;
        const YAML::Node mounts = item["mounts"];
        if (!mounts || !mounts.IsMap())
        {
            src.Error(mounts ? mounts : item, "\"mounts\" must give front, left, right and back as [x, y]");
            ok = false;
        }
        else
        {
            src.AllowKeys(mounts, {"front", "left", "right", "back"});
            const char* order[4] = {"front", "left", "right", "back"};
            for (int i = 0; i < 4; ++i)
            {
                const YAML::Node point = mounts[order[i]];
                if (!point)
                {
                    src.Error(mounts, std::string("missing the mount \"") + order[i] + "\"");
                    ok = false;
                    continue;
                }
                ok = ReadPoint(src, point, order[i], hull.mounts[size_t(i)]) && ok;
            }
        }
        ok = ReadBox(src, item, hull.box) && ok;
        if (ok && hull.armour <= 0)
        {
            src.Error(item["armour"], "a hull needs armour above 0");
            ok = false;
        }
        CheckUniqueName(src, names, hull.name, item, "hull");
        if (ok)
        {
            p_data.hulls.push_back(hull);
        }
    });

    names.clear();
    ReadList(src, root, "engines", true, [&](const YAML::Node& item) {
        src.AllowKeys(item, {"name", "price", "reverse_speed", "forward_speed", "acceleration"});
        EngineRecord engine;
        bool ok = src.Text(item, "name", engine.name);
        ok = src.Number(item, "price", engine.price) && CheckPrice(src, item, engine.price) && ok;
        ok = src.Number(item, "reverse_speed", engine.reverseSpeed) && ok;
        ok = src.Number(item, "forward_speed", engine.forwardSpeed) && ok;
        ok = src.Number(item, "acceleration", engine.acceleration) && ok;
        if (ok && engine.reverseSpeed > engine.forwardSpeed)
        {
            src.Error(item, "the reverse (lowest) speed is above the forward speed");
            ok = false;
        }
        CheckUniqueName(src, names, engine.name, item, "engine");
        if (ok)
        {
            p_data.engines.push_back(engine);
        }
    });

    names.clear();
    ReadList(src, root, "shields", true, [&](const YAML::Node& item) {
        src.AllowKeys(item, {"name", "price", "capacity", "per_hit"});
        ShieldRecord shield;
        bool ok = src.Text(item, "name", shield.name);
        ok = src.Number(item, "price", shield.price) && CheckPrice(src, item, shield.price) && ok;
        ok = src.Number(item, "capacity", shield.capacity) && ok;
        ok = src.Number(item, "per_hit", shield.perHit) && ok;
        CheckUniqueName(src, names, shield.name, item, "shield");
        if (ok)
        {
            p_data.shields.push_back(shield);
        }
    });

    names.clear();
    ReadList(src, root, "power_plants", false, [&](const YAML::Node& item) {
        src.AllowKeys(item, {"picture", "name", "value", "price", "value2", "flag1", "flag2"});
        PowerPlantRecord plant;
        bool ok = ReadHeaderFields(src, item, plant.header, true);
        ok = src.Number(item, "value2", plant.value2, false) && ok;
        ok = src.Number(item, "flag1", plant.flag1, false) && ok;
        ok = src.Number(item, "flag2", plant.flag2, false) && ok;
        CheckUniqueName(src, names, plant.header.name, item, "power plant");
        if (ok)
        {
            p_data.powerPlants.push_back(plant);
        }
    });

    names.clear();
    ReadList(src, root, "copilots", false, [&](const YAML::Node& item) {
        src.AllowKeys(item, {"name", "price"});
        CopilotRecord copilot;
        bool ok = src.Text(item, "name", copilot.name);
        ok = src.Number(item, "price", copilot.price) && CheckPrice(src, item, copilot.price) && ok;
        CheckUniqueName(src, names, copilot.name, item, "copilot");
        if (ok)
        {
            p_data.copilots.push_back(copilot);
        }
    });

    ReadList(src, root, "weapons", true, [&](const YAML::Node& item) {
        src.AllowKeys(item, {"picture", "name", "value", "price", "damage", "byte1", "byte2", "value16",
                             "extra_value", "extra_byte"});
        WeaponRecord weapon;
        bool ok = ReadHeaderFields(src, item, weapon.header, false);
        const YAML::Node damage = item["damage"];
        if (!damage || !damage.IsMap())
        {
            src.Error(damage ? damage : item, "\"damage\" must give min and max");
            ok = false;
        }
        else
        {
            src.AllowKeys(damage, {"min", "max"});
            ok = src.Number(damage, "min", weapon.minDamage) && ok;
            ok = src.Number(damage, "max", weapon.maxDamage) && ok;
            if (ok && weapon.maxDamage <= weapon.minDamage)
            {
                // The game rolls min + rand() % (max - min).
                src.Error(damage, "the maximum damage must be above the minimum");
                ok = false;
            }
        }
        ok = src.Number<uint8_t>(item, "byte1", weapon.byte1, false, 13) && ok;
        ok = src.Number<uint8_t>(item, "byte2", weapon.byte2, false, 13) && ok;
        ok = src.Number<uint16_t>(item, "value16", weapon.value16, false, 0) && ok;
        ok = src.Number(item, "extra_value", weapon.extraValue, false) && ok;
        ok = src.Number(item, "extra_byte", weapon.extraByte, false) && ok;
        if (ok && p_data.weapons.empty() && weapon.header.name != WEAPON_TABLE_NAMES[0])
        {
            // Pilots store the weapon's own name and find it again by the table name.
            src.Error(item["name"], std::string("the first weapon file is the one found as \"") +
                                        WEAPON_TABLE_NAMES[0] + "\" and must carry that name");
            ok = false;
        }
        if (ok)
        {
            p_data.weapons.push_back(weapon);
        }
    });
}

bool IsEntityId(const std::string& p_id)
{
    if (p_id.size() != 3)
    {
        return false;
    }
    for (char c : p_id)
    {
        const bool safe = (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
        if (!safe)
        {
            return false;
        }
    }
    return true;
}

void LoadEntities(const fs::path& p_path, const std::string& p_display, GameData& p_data,
                  std::vector<std::string>& p_errors)
{
    SourceFile src(p_display, p_errors);
    if (!src.Load(p_path) || !src.ExpectMap(src.Root(), "the entities file"))
    {
        return;
    }
    src.AllowKeys(src.Root(), {"entities"});
    std::set<std::string> ids;
    std::set<std::string> keys;
    ReadList(src, src.Root(), "entities", true, [&](const YAML::Node& item) {
        src.AllowKeys(item, {"id", "key", "hull", "speed", "acceleration", "turn_rate", "weapon", "armour",
                             "shield", "behaviour", "team", "box"});
        EntitySource entity;
        bool ok = src.Text(item, "id", entity.id);
        if (ok && !IsEntityId(entity.id))
        {
            src.Error(item["id"], "an entity id is three letters or digits (\"000\"), as in entity\\air000.nme");
            ok = false;
        }
        ok = src.Text(item, "key", entity.key) && ok;
        EntityRecord& record = entity.record;
        ok = src.Text(item, "hull", record.hullPicture) && ok;
        const YAML::Node speed = item["speed"];
        if (!speed || !speed.IsMap())
        {
            src.Error(speed ? speed : item, "\"speed\" must give min and max");
            ok = false;
        }
        else
        {
            src.AllowKeys(speed, {"min", "max"});
            ok = src.Number(speed, "min", record.minSpeed) && ok;
            ok = src.Number(speed, "max", record.maxSpeed) && ok;
        }
        ok = src.Number(item, "acceleration", record.acceleration) && ok;
        ok = src.Number(item, "turn_rate", record.turnRate) && ok;
        ok = src.Text(item, "weapon", record.weapon, false, true) && ok;
        if (ok && !record.weapon.empty() && !IsWeaponTableName(record.weapon))
        {
            src.Error(item["weapon"], "\"" + record.weapon +
                                          "\" is not a weapon the catalogue can find: use Machine Gun, Laser, "
                                          "Multi-Laser, Bomb, Missile or BFG, or leave it empty");
            ok = false;
        }
        ok = src.Number(item, "armour", record.armour) && ok;
        ok = src.Number(item, "shield", record.shield) && ok;

        std::string behaviour = "attack";
        ok = src.Text(item, "behaviour", behaviour, false) && ok;
        if (behaviour.empty())
        {
            behaviour = "attack";
        }
        if (behaviour == "attack")
        {
            record.behaviour = 0;
        }
        else if (behaviour == "spawner")
        {
            record.behaviour = BEHAVIOUR_SPAWNER;
        }
        else
        {
            src.Error(item["behaviour"], "\"behaviour\" is attack or spawner");
            ok = false;
        }
        std::string team = "computer";
        ok = src.Text(item, "team", team, false) && ok;
        if (team.empty() || team == "computer")
        {
            record.team = 1;
        }
        else if (team == "player")
        {
            record.team = 0;
        }
        else
        {
            src.Error(item["team"], "\"team\" is computer or player");
            ok = false;
        }
        ok = ReadBox(src, item, record.box) && ok;
        if (ok && record.minSpeed > record.maxSpeed)
        {
            src.Error(speed, "the minimum speed is above the maximum");
            ok = false;
        }
        if (ok && record.behaviour != BEHAVIOUR_SPAWNER && record.minSpeed == 0)
        {
            // The attack behaviour steers by the angle to its flight direction, which a ship
            // standing still does not have.
            src.Error(speed, "a ship with the attack behaviour needs a minimum speed above 0");
            ok = false;
        }
        if (ok && record.armour <= 0)
        {
            src.Error(item["armour"], "armour must be above 0 (a ship with none dies at the first hit)");
            ok = false;
        }
        if (!entity.id.empty() && !ids.insert(entity.id).second)
        {
            src.Error(item["id"], "a second entity with the id \"" + entity.id + "\"");
            ok = false;
        }
        if (!entity.key.empty() && !keys.insert(entity.key).second)
        {
            src.Error(item["key"], "a second entity with the key \"" + entity.key + "\"");
            ok = false;
        }
        if (ok)
        {
            p_data.entities.push_back(entity);
        }
    });
    const bool spawned = std::any_of(p_data.entities.begin(), p_data.entities.end(),
                                     [](const EntitySource& p_e) { return p_e.id == "000"; });
    if (!spawned)
    {
        src.AddError(0, "no entity has the id \"000\", the ship every spawner launches");
    }
}

struct TileSet
{
    std::string first;
    std::map<char, uint16_t> legend;
};

void LoadTileSets(const fs::path& p_path, const std::string& p_display, std::map<std::string, TileSet>& p_sets,
                  std::vector<std::string>& p_errors)
{
    SourceFile src(p_display, p_errors);
    if (!src.Load(p_path) || !src.ExpectMap(src.Root(), "the tile-set file"))
    {
        return;
    }
    src.AllowKeys(src.Root(), {"tilesets"});
    const YAML::Node sets = src.Root()["tilesets"];
    if (!sets || !sets.IsMap())
    {
        src.Error(src.Root(), "\"tilesets\" must map each tile set's name to its first picture and legend");
        return;
    }
    for (auto it = sets.begin(); it != sets.end(); ++it)
    {
        const std::string name = it->first.Scalar();
        const YAML::Node set = it->second;
        if (!src.ExpectMap(set, "tile set \"" + name + "\""))
        {
            continue;
        }
        src.AllowKeys(set, {"first", "legend"});
        TileSet tileSet;
        bool ok = src.Text(set, "first", tileSet.first);
        const YAML::Node legend = set["legend"];
        if (!legend || !legend.IsMap())
        {
            src.Error(legend ? legend : set, "\"legend\" must map single characters to tile numbers");
            continue;
        }
        for (auto entry = legend.begin(); entry != legend.end(); ++entry)
        {
            const std::string key = entry->first.IsScalar() ? entry->first.Scalar() : std::string();
            uint16_t number = 0;
            if (key.size() != 1 || key[0] == ' ')
            {
                src.Error(entry->first, "a legend key is one character other than a space");
                ok = false;
                continue;
            }
            if (!src.ToNumber(entry->second, "tile number of '" + key + "'", number))
            {
                ok = false;
                continue;
            }
            tileSet.legend[key[0]] = number;
        }
        if (ok)
        {
            p_sets[name] = tileSet;
        }
    }
}

// The map is drawn as rows of characters, the first row at the top (lowest y).
bool ReadTileGrid(SourceFile& p_src, const YAML::Node& p_map, const TileSet& p_set, LevelRecord& p_level)
{
    if (!p_map.IsScalar())
    {
        p_src.Error(p_map, "\"map\" must be a block of text (map: |) with one line per row of tiles");
        return false;
    }
    std::vector<std::string> rows;
    std::istringstream lines(p_map.Scalar());
    for (std::string row; std::getline(lines, row);)
    {
        while (!row.empty() && (row.back() == ' ' || row.back() == '\r'))
        {
            row.pop_back();
        }
        rows.push_back(row);
    }
    while (!rows.empty() && rows.back().empty())
    {
        rows.pop_back();
    }
    // A block scalar starts on the line after "map: |".
    const int firstLine = SourceFile::LineOf(p_map) + 1;
    const size_t size = rows.size();
    if (!IsValidMapSize(uint32_t(size)) || size > 65535)
    {
        p_src.Error(p_map, "the map has " + std::to_string(size) +
                               " rows; a map is square with 5 times a power of two tiles a side (80 for a full level)");
        return false;
    }
    // Known from here on, so that positions can be checked against the map even when a row
    // has a mistake.
    p_level.mapSize = static_cast<uint16_t>(size);
    std::vector<uint16_t> grid;
    grid.reserve(size * size);
    bool ok = true;
    for (size_t y = 0; y < size; ++y)
    {
        const std::string& row = rows[y];
        if (row.size() != size)
        {
            p_src.AddError(firstLine + int(y), "row " + std::to_string(y + 1) + " has " + std::to_string(row.size()) +
                                                   " tiles; every row needs " + std::to_string(size));
            ok = false;
            continue;
        }
        for (size_t x = 0; x < size; ++x)
        {
            const auto found = p_set.legend.find(row[x]);
            if (found == p_set.legend.end())
            {
                p_src.AddError(firstLine + int(y), std::string("the character '") + row[x] + "' in column " +
                                                       std::to_string(x + 1) + " is not in the tile set's legend");
                ok = false;
                break;
            }
            grid.push_back(found->second);
        }
    }
    if (!ok)
    {
        return false;
    }
    p_level.tiles = GridToFileOrder(grid, p_level.mapSize);
    return true;
}

// A name that becomes part of a file name in the game directory: no folders, nothing hidden.
bool IsPlainFileName(const std::string& p_name)
{
    if (p_name.empty() || p_name[0] == '.' || p_name.size() > 54)
    {
        return false;
    }
    for (char c : p_name)
    {
        const bool safe = (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' ||
                          c == '-' || c == '.';
        if (!safe)
        {
            return false;
        }
    }
    return true;
}

void LoadLevel(const fs::path& p_path, const std::string& p_display, const std::map<std::string, TileSet>& p_sets,
               GameData& p_data, std::vector<std::string>& p_errors)
{
    SourceFile src(p_display, p_errors);
    if (!src.Load(p_path) || !src.ExpectMap(src.Root(), "a level file"))
    {
        return;
    }
    const YAML::Node& root = src.Root();
    src.AllowKeys(root, {"file", "title", "tileset", "map", "scenery", "reserved", "ships"});
    LevelSource level;
    level.source = p_display;
    bool ok = src.Text(root, "file", level.file);
    if (ok && (!IsPlainFileName(level.file) || level.file.size() < 5 ||
               level.file.compare(level.file.size() - 4, 4, ".lvl") != 0))
    {
        src.Error(root["file"], "\"file\" is a plain file name ending in .lvl (at most 54 characters, no folders)");
        ok = false;
    }
    std::string setName;
    ok = src.Text(root, "tileset", setName) && ok;
    const auto set = p_sets.find(setName);
    if (!setName.empty() && set == p_sets.end())
    {
        src.Error(root["tileset"], "no tile set \"" + setName + "\" in tilesets.yaml");
        ok = false;
    }
    const YAML::Node map = root["map"];
    if (!map)
    {
        src.Error(root, "missing \"map\"");
        ok = false;
    }
    else if (set != p_sets.end())
    {
        level.record.tileSet = set->second.first;
        ok = ReadTileGrid(src, map, set->second, level.record) && ok;
    }
    ok = src.Number(root, "reserved", level.record.reserved, false) && ok;

    const int32_t mapUnits = int32_t(level.record.mapSize) * LEVEL_TILE_UNITS;
    auto checkInside = [&](const YAML::Node& p_item, int32_t p_x, int32_t p_y) {
        if (level.record.mapSize != 0 && (p_x < 0 || p_y < 0 || p_x >= mapUnits || p_y >= mapUnits))
        {
            // The level destroys whatever no part of the map holds.
            src.Error(p_item, "(" + std::to_string(p_x) + ", " + std::to_string(p_y) + ") lies outside the map (0.." +
                                  std::to_string(mapUnits - 1) + ")");
            return false;
        }
        return true;
    };
    std::set<std::string> names;
    auto checkName = [&](const YAML::Node& p_item, const std::string& p_name) {
        if (p_name.empty())
        {
            return true;
        }
        if (p_name == "player")
        {
            src.Error(p_item, "\"player\" is the name the game gives the player's ship");
            return false;
        }
        if (p_name.find(' ') != std::string::npos)
        {
            // Conditions are split into words at spaces.
            src.Error(p_item, "the name \"" + p_name + "\" has a space; conditions could not name it");
            return false;
        }
        if (!names.insert(p_name).second)
        {
            src.Error(p_item, "a second object named \"" + p_name + "\" in this level");
            return false;
        }
        return true;
    };

    ReadList(src, root, "scenery", false, [&](const YAML::Node& item) {
        src.AllowKeys(item, {"name", "picture", "x", "y"});
        SceneryRecord scenery;
        bool good = src.Text(item, "name", scenery.name, false, true);
        good = src.Text(item, "picture", scenery.picture) && good;
        good = src.Number(item, "x", scenery.x) && good;
        good = src.Number(item, "y", scenery.y) && good;
        good = good && checkInside(item, scenery.x, scenery.y);
        good = checkName(item, scenery.name) && good;
        ok = ok && good;
        if (good)
        {
            level.record.scenery.push_back(scenery);
        }
    });

    ReadList(src, root, "ships", false, [&](const YAML::Node& item) {
        src.AllowKeys(item, {"entity", "name", "x", "y"});
        ShipRecord ship;
        std::string entity;
        bool good = src.Text(item, "entity", entity);
        good = src.Text(item, "name", ship.name, false, true) && good;
        good = src.Number(item, "x", ship.x) && good;
        good = src.Number(item, "y", ship.y) && good;
        good = good && checkInside(item, ship.x, ship.y);
        good = checkName(item, ship.name) && good;
        if (!entity.empty())
        {
            const auto found = std::find_if(p_data.entities.begin(), p_data.entities.end(),
                                            [&](const EntitySource& p_e) { return p_e.key == entity || p_e.id == entity; });
            if (found == p_data.entities.end())
            {
                src.Error(item["entity"], "no entity \"" + entity + "\" in entities.yaml (give its key or its id)");
                good = false;
            }
            else
            {
                ship.kind = found->id;
            }
        }
        ok = ok && good;
        if (good)
        {
            level.record.ships.push_back(ship);
        }
    });
    if (ok)
    {
        const bool duplicate = std::any_of(p_data.levels.begin(), p_data.levels.end(),
                                           [&](const LevelSource& p_l) { return p_l.file == level.file; });
        if (duplicate)
        {
            src.Error(root["file"], "another level is written to \"" + level.file + "\" too");
            return;
        }
        p_data.levels.push_back(std::move(level));
    }
}

void LoadShops(const fs::path& p_path, const std::string& p_display, GameData& p_data, std::vector<std::string>& p_errors)
{
    SourceFile src(p_display, p_errors);
    if (!src.Load(p_path) || !src.ExpectMap(src.Root(), "the shops file"))
    {
        return;
    }
    src.AllowKeys(src.Root(), {"shops"});
    static const char* const KIND_KEYS[KIND_COUNT] = {"hulls", "engines", "shields", "power_plants", "copilots", "weapons"};
    std::set<std::string> files;
    ReadList(src, src.Root(), "shops", true, [&](const YAML::Node& item) {
        src.AllowKeys(item, {"file", "title", "value1", "value2", "hulls", "engines", "shields", "power_plants",
                             "copilots", "weapons"});
        ShopSource shop;
        bool ok = src.Text(item, "file", shop.file);
        if (ok && (!IsPlainFileName(shop.file) || shop.file.size() < 5 ||
                   shop.file.compare(shop.file.size() - 4, 4, ".shp") != 0))
        {
            src.Error(item["file"], "\"file\" is a plain file name ending in .shp (at most 54 characters)");
            ok = false;
        }
        if (ok && !files.insert(shop.file).second)
        {
            src.Error(item["file"], "a second shop written to \"" + shop.file + "\"");
            ok = false;
        }
        ok = src.Text(item, "title", shop.record.title) && ok;
        ok = src.Number(item, "value1", shop.record.value1, false) && ok;
        ok = src.Number(item, "value2", shop.record.value2, false) && ok;
        for (int kind = 0; kind < KIND_COUNT; ++kind)
        {
            const YAML::Node list = item[KIND_KEYS[kind]];
            if (!list)
            {
                continue;
            }
            if (!src.ExpectList(list, KIND_KEYS[kind]))
            {
                ok = false;
                continue;
            }
            if (list.size() > 255)
            {
                src.Error(list, "a shop lists at most 255 names of one kind");
                ok = false;
                continue;
            }
            for (const YAML::Node& entry : list)
            {
                std::string name;
                if (!src.ToText(entry, KIND_KEYS[kind], name, false))
                {
                    ok = false;
                    continue;
                }
                shop.record.names[size_t(kind)].push_back(name);
            }
        }
        if (ok)
        {
            p_data.shops.push_back(shop);
        }
    });
}

// Every regular file of p_dir with the extension p_extension, sorted by name.
std::vector<fs::path> ListFiles(const fs::path& p_dir, const std::string& p_extension)
{
    std::vector<fs::path> files;
    std::error_code ec;
    for (fs::directory_iterator it(p_dir, ec), end; !ec && it != end; it.increment(ec))
    {
        if (it->is_regular_file(ec) && it->path().extension() == p_extension)
        {
            files.push_back(it->path());
        }
    }
    std::sort(files.begin(), files.end());
    return files;
}

// Runs one loader; yaml-cpp reports a node of an unexpected shape by throwing, which must not
// end the whole run.
template <typename Loader>
void Guarded(const std::string& p_display, std::vector<std::string>& p_errors, Loader p_loader)
{
    try
    {
        p_loader();
    }
    catch (const YAML::Exception& e)
    {
        p_errors.push_back(p_display + ":" + std::to_string(e.mark.line + 1) + ": " + e.msg);
    }
}

} // namespace

bool LoadSources(const std::string& p_dataDir, GameData& p_data, std::vector<std::string>& p_errors)
{
    const fs::path dir(p_dataDir);
    const std::string prefix = p_dataDir.empty() || p_dataDir.back() == '/' ? p_dataDir : p_dataDir + "/";
    std::error_code ec;
    if (!fs::is_directory(dir, ec))
    {
        p_errors.push_back(p_dataDir + ": not a folder of game data sources");
        return false;
    }
    const size_t before = p_errors.size();

    Guarded(prefix + "parts.yaml", p_errors, [&] { LoadParts(dir / "parts.yaml", prefix + "parts.yaml", p_data, p_errors); });
    Guarded(prefix + "entities.yaml", p_errors,
            [&] { LoadEntities(dir / "entities.yaml", prefix + "entities.yaml", p_data, p_errors); });

    std::map<std::string, TileSet> tileSets;
    Guarded(prefix + "tilesets.yaml", p_errors,
            [&] { LoadTileSets(dir / "tilesets.yaml", prefix + "tilesets.yaml", tileSets, p_errors); });
    for (const fs::path& level : ListFiles(dir / "levels", ".yaml"))
    {
        const std::string display = prefix + "levels/" + level.filename().string();
        Guarded(display, p_errors, [&] { LoadLevel(level, display, tileSets, p_data, p_errors); });
    }

    Guarded(prefix + "shops.yaml", p_errors, [&] { LoadShops(dir / "shops.yaml", prefix + "shops.yaml", p_data, p_errors); });

    for (const fs::path& ini : ListFiles(dir / "campaign", ".ini"))
    {
        p_data.copies.push_back({ini.string(), "Campaign/" + ini.filename().string()});
    }
    for (const fs::path& ini : ListFiles(dir / "multiplayer", ".ini"))
    {
        p_data.copies.push_back({ini.string(), "multiplayer/" + ini.filename().string()});
    }
    return p_errors.size() == before;
}

} // namespace forge
