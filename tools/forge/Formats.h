#pragma once

// The game's binary data formats as plain records, each written and read field by field
// through the game's own DataFile, in the order the game's loaders read them.

#include <array>
#include <cstdint>
#include <string>
#include <vector>

class DataFile;

namespace forge
{

// Part kinds as the game numbers them.
enum PartKind : int
{
    KIND_HULL = 0,
    KIND_ENGINE = 1,
    KIND_SHIELD = 2,
    KIND_POWER_PLANT = 3,
    KIND_COPILOT = 4,
    KIND_WEAPON = 5,
    KIND_COUNT = 6
};

struct PartKindInfo
{
    const char* singular;   // "hull"
    const char* fileStem;   // "hull" of "hull000.hul"
    const char* extension;  // ".hul"
};
const PartKindInfo& GetKindInfo(int p_kind);

// "GOB\Parts\hull007.hul" for kind 0, number 7.
std::string PartFileName(int p_kind, int p_number);

// The names by which the catalogue finds weapons: a weapon is looked up by one of these, never
// by the name in its file. Index 0 finds the first machine-gun file.
extern const std::array<const char*, 6> WEAPON_TABLE_NAMES;
bool IsWeaponTableName(const std::string& p_name);

// What a new pilot flies (the game's compiled-in defaults of a pilot record).
extern const char* const DEFAULT_HULL;
extern const char* const DEFAULT_ENGINE;
extern const char* const DEFAULT_SHIELD;
extern const char* const DEFAULT_WEAPON;

struct Mount
{
    uint16_t x = 0;
    uint16_t y = 0;
};

struct CollisionBox
{
    int16_t x = 0;
    int16_t y = 0;
    uint16_t width = 0;
    uint16_t height = 0;
};

struct HullRecord
{
    std::string name;
    std::string image; // base name of the hull's animation frames
    int32_t price = 0;
    int32_t armour = 0;
    uint16_t turnRate = 0;
    std::array<Mount, 4> mounts{}; // front, left, right, back
    CollisionBox box;
};

struct EngineRecord
{
    std::string name;
    int32_t price = 0;
    uint16_t reverseSpeed = 0; // the lowest speed the ship keeps
    uint16_t forwardSpeed = 0;
    uint16_t acceleration = 0;
};

struct ShieldRecord
{
    std::string name;
    int32_t price = 0;
    int32_t capacity = 0;
    uint16_t perHit = 0; // most damage the shield takes from one hit
};

// The header that power-plant and weapon records start with.
struct PartHeader
{
    std::string picture;
    std::string name;
    int32_t value = 0;
    int32_t price = 0;
};

struct PowerPlantRecord
{
    PartHeader header;
    int32_t value2 = 0;
    uint8_t flag1 = 0;
    uint8_t flag2 = 0;
};

// Name and price. The game does not read copilot files; they are shipped so that a loader
// added later (and modders) find every part kind described the same way.
struct CopilotRecord
{
    std::string name;
    int32_t price = 0;
};

// A machine-gun record. The game sets a machine gun's price and ammunition kind itself and
// reads, but never uses, the two bytes, the 16-bit value and the two values at the end.
struct WeaponRecord
{
    PartHeader header;
    uint8_t byte1 = 13;
    uint8_t byte2 = 13;
    uint16_t value16 = 0;
    int32_t minDamage = 0;
    int32_t maxDamage = 0; // a shot deals minDamage .. maxDamage - 1
    int32_t extraValue = 0;
    uint8_t extraByte = 0;
};

struct EntityRecord
{
    std::string hullPicture;
    uint16_t minSpeed = 0;
    uint16_t maxSpeed = 0;
    uint16_t acceleration = 0;
    uint16_t turnRate = 0;
    std::string weapon; // a weapon-table name, or empty for none
    int32_t armour = 0;
    int32_t shield = 0;
    uint8_t behaviour = 0; // 1 spawner, anything else attack
    uint8_t team = 1;      // 0 the player's side, 1 the computer's
    CollisionBox box;
};

constexpr uint8_t BEHAVIOUR_SPAWNER = 1;

struct SceneryRecord
{
    std::string name; // registry name, empty for none
    std::string picture; // loaded as "Entity\" + picture
    int32_t x = 0;
    int32_t y = 0;
};

struct ShipRecord
{
    std::string kind; // three characters: "entity\air" + kind + ".nme"
    std::string name;
    int32_t x = 0;
    int32_t y = 0;
};

struct LevelRecord
{
    std::string tileSet;
    uint16_t mapSize = 0;
    std::vector<uint16_t> tiles; // n * n numbers in the file's (quadtree) order
    std::vector<SceneryRecord> scenery;
    uint8_t reserved = 0;
    std::vector<ShipRecord> ships;
};

// The play area the game gives a level of n tiles a side (128 units a tile).
constexpr int32_t PLAY_AREA_MARGIN = 1920;
constexpr int32_t LEVEL_TILE_UNITS = 128;
inline int32_t PlayAreaLow(uint16_t) { return PLAY_AREA_MARGIN; }
inline int32_t PlayAreaHigh(uint16_t p_mapSize) { return p_mapSize * LEVEL_TILE_UNITS - PLAY_AREA_MARGIN; }
// Where the game puts the player at the start of every level.
constexpr int32_t PLAYER_START = PLAY_AREA_MARGIN + 100;

// True for a map size the quadtree divides evenly into 5 x 5 leaves: 5 times a power of two.
bool IsValidMapSize(uint32_t p_mapSize);
// Row-major (y * n + x) tile numbers to the file's quadtree order, and back. The map size
// must be valid.
std::vector<uint16_t> GridToFileOrder(const std::vector<uint16_t>& p_grid, uint16_t p_mapSize);
std::vector<uint16_t> FileOrderToGrid(const std::vector<uint16_t>& p_fileOrder, uint16_t p_mapSize);

struct ShopRecord
{
    std::string title;
    uint8_t value1 = 0;
    uint8_t value2 = 0;
    std::array<std::vector<std::string>, KIND_COUNT> names; // per part kind
};

struct InventoryItem
{
    uint16_t quantity = 0;
    uint8_t kind = 0;
    std::string name;
};

// A ".sav" pilot record with the defaults of a new pilot.
struct PilotRecord
{
    int32_t money = 0;
    uint16_t bullets = 500;
    uint16_t energy = 0;
    uint16_t missiles = 0;
    uint16_t reserved = 0;
    std::string pilotName;
    std::string portrait;
    std::string missionName;
    std::string hullName = DEFAULT_HULL;
    std::string engineName = DEFAULT_ENGINE;
    std::string reservedPartName;
    std::string shieldName = DEFAULT_SHIELD;
    std::array<std::string, 4> weaponNames{DEFAULT_WEAPON, "", "", ""};
    std::vector<InventoryItem> inventory; // front of the list first
};

// Writers answer false when a value could not be written (a string over 255 characters, a
// full disk): the caller must then not keep the file.
bool Write(DataFile& p_file, const HullRecord& p_record);
bool Write(DataFile& p_file, const EngineRecord& p_record);
bool Write(DataFile& p_file, const ShieldRecord& p_record);
bool Write(DataFile& p_file, const PowerPlantRecord& p_record);
bool Write(DataFile& p_file, const CopilotRecord& p_record);
bool Write(DataFile& p_file, const WeaponRecord& p_record);
bool Write(DataFile& p_file, const EntityRecord& p_record);
bool Write(DataFile& p_file, const LevelRecord& p_record);
bool Write(DataFile& p_file, const ShopRecord& p_record);
bool Write(DataFile& p_file, const PilotRecord& p_record);

// Readers take the fields in the same order. They never fail: like the game they read 0 and
// "" past the end of the file (the caller asks the DataFile whether that happened). Lists
// whose count the file gives stop at the end of the file rather than trust a huge count.
void Read(DataFile& p_file, HullRecord& p_record);
void Read(DataFile& p_file, EngineRecord& p_record);
void Read(DataFile& p_file, ShieldRecord& p_record);
void Read(DataFile& p_file, PowerPlantRecord& p_record);
void Read(DataFile& p_file, CopilotRecord& p_record);
void Read(DataFile& p_file, WeaponRecord& p_record);
void Read(DataFile& p_file, EntityRecord& p_record);
void Read(DataFile& p_file, LevelRecord& p_record);
void Read(DataFile& p_file, ShopRecord& p_record);
void Read(DataFile& p_file, PilotRecord& p_record);

// Opens a game file and reads one whole record from it, strictly: false with a reason in
// p_error when the file does not open, ends early, or has bytes left over.
template <typename Record>
bool ReadWholeFile(const std::string& p_gameName, Record& p_record, std::string& p_error);

// Writes one record as a game file; false with a reason when it could not be written.
template <typename Record>
bool WriteWholeFile(const std::string& p_gameName, const Record& p_record, std::string& p_error);

} // namespace forge
