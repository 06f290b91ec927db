#pragma once

// The human-readable sources of the game data (data/ in the repository), parsed into the
// records the forge writes. Every error names the source file, its line and what is wrong.

#include "Formats.h"

#include <string>
#include <vector>

namespace forge
{

struct EntitySource
{
    std::string id;  // three characters: "entity\air" + id + ".nme"
    std::string key; // the short name levels use ("dart")
    EntityRecord record;
};

struct LevelSource
{
    std::string file; // the name under "Campaign/" ("m01_dust_run.lvl")
    std::string source;
    LevelRecord record;
};

struct ShopSource
{
    std::string file; // the name under "Campaign/"
    ShopRecord record;
};

// A text file copied as it is into the game directory (the campaign INI files).
struct CopiedFile
{
    std::string sourcePath;
    std::string gameName; // "Campaign/korvath.ini"
};

struct GameData
{
    std::vector<HullRecord> hulls;
    std::vector<EngineRecord> engines;
    std::vector<ShieldRecord> shields;
    std::vector<PowerPlantRecord> powerPlants;
    std::vector<CopilotRecord> copilots;
    std::vector<WeaponRecord> weapons;
    std::vector<EntitySource> entities;
    std::vector<LevelSource> levels;
    std::vector<ShopSource> shops;
    std::vector<CopiedFile> copies;
};

// Reads every source under p_dataDir: parts.yaml, entities.yaml, tilesets.yaml, levels/*.yaml,
// shops.yaml, campaign/*.ini (into "Campaign/") and multiplayer/*.ini (into "multiplayer/").
// Answers false, with one message per problem ("data/parts.yaml:12: ..."), when anything is
// wrong; p_data is then incomplete and must not be written.
bool LoadSources(const std::string& p_dataDir, GameData& p_data, std::vector<std::string>& p_errors);

} // namespace forge
