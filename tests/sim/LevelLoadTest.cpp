#include "forge/Forge.h"
#include "pilot/DataFile.h"
#include "sim/CombatSupport.h"
#include "sim/EntityShip.h"
#include "sim/Level.h"
#include "sim/NameRegistry.h"
#include "sim/PlayerShip.h"
#include "sim/QuadNode.h"
#include "sim/Starfield.h"
#include "support/WorkDir.h"

#include <gtest/gtest.h>
#include <yaml-cpp/yaml.h>

#include <cstdint>
#include <filesystem>
#include <map>
#include <sstream>
#include <string>
#include <vector>

using combattest::FixedSeed;
using combattest::MakeEntity;
using combattest::ScopedCatalog;
using combattest::WriteGameFile;

namespace
{
QuadNode* LeafAt(QuadNode* p_node, double p_x, double p_y)
{
    while (p_node != nullptr && !p_node->IsLeaf())
    {
        QuadNode* next = nullptr;
        for (int i = 0; i < 4 && next == nullptr; ++i)
        {
            if (p_node->GetChild(i)->Contains(p_x, p_y))
            {
                next = p_node->GetChild(i);
            }
        }
        p_node = next;
    }
    return p_node;
}

// The tile drawn at map column p_column, row p_row (tiles of 128 units).
int TileAt(Level& p_level, int p_column, int p_row)
{
    QuadNode* leaf = LeafAt(p_level.GetRoot(), p_column * 128.0 + 64.0, p_row * 128.0 + 64.0);
    return leaf != nullptr ? leaf->GetTile(QuadNode::TileIndex(p_column % 5, p_row % 5)) : -1;
}

int CountShips(Level& p_level)
{
    std::vector<QuadNode*> leaves;
    p_level.GetRoot()->CollectLeaves(leaves);
    int count = 0;
    for (QuadNode* leaf : leaves)
    {
        for (WorldObject* object = leaf->GetList(LAYER_SHIPS); object != nullptr; object = object->GetNextInList())
        {
            count += dynamic_cast<EntityShip*>(object) != nullptr && dynamic_cast<PlayerShip*>(object) == nullptr;
        }
    }
    return count;
}

class LevelLoadTest : public testsupport::WorkDirTest
{
protected:
    void SetUp() override
    {
        WorkDirTest::SetUp();
        m_previousRegistry = g_pNameRegistry;
        g_pNameRegistry = &m_registry;
    }
    void TearDown() override
    {
        g_pNameRegistry = m_previousRegistry;
        WorkDirTest::TearDown();
    }

    // A level file written byte by byte, for files the forge would never make.
    struct RawLevel
    {
        std::string tileSet = "art\\tiles\\space000.bmp";
        uint16_t mapSize = 80;
        std::vector<uint16_t> tiles; // fewer than n * n: the file ends there
        bool endAfterTiles = false;
        uint32_t shipCount = 0;
        std::vector<std::string> shipKinds;
        size_t cutLastBytes = 0;
    };
    void WriteRaw(const char* p_name, const RawLevel& p_level)
    {
        std::filesystem::create_directories("Campaign");
        {
            DataFile file;
            ASSERT_TRUE(file.Open(p_name, "wb"));
            file.WriteString(p_level.tileSet);
            file.WriteUInt16(p_level.mapSize);
            for (uint16_t tile : p_level.tiles)
            {
                file.WriteUInt16(tile);
            }
            if (!p_level.endAfterTiles)
            {
                file.WriteInt32(1);
                file.WriteString("rock");
                file.WriteString("asteroid_large.bmp");
                file.WriteInt32(3000);
                file.WriteInt32(3000);
                file.WriteUInt8(0);
                file.WriteUInt32(p_level.shipCount);
                int i = 0;
                for (const std::string& kind : p_level.shipKinds)
                {
                    for (char c : kind)
                    {
                        file.WriteUInt8(static_cast<uint8_t>(c));
                    }
                    file.WriteString(i == 0 ? "leader" : "");
                    file.WriteInt32(3000 + 100 * i);
                    file.WriteInt32(3500);
                    ++i;
                }
            }
            ASSERT_TRUE(file.Close());
        }
        if (p_level.cutLastBytes > 0)
        {
            std::string path = p_name;
            for (char& c : path)
            {
                c = c == '\\' ? '/' : c;
            }
            std::filesystem::resize_file(path, std::filesystem::file_size(path) - p_level.cutLastBytes);
        }
    }

    NameRegistry m_registry;
    NameRegistry* m_previousRegistry = nullptr;
};
} // namespace

TEST_F(LevelLoadTest, LoadsEveryLevelTheForgeMakesWithItsTilesWhereTheMapDrawsThem)
{
    const std::string data = std::string(KORVATH_SOURCE_DIR) + "/data";
    std::ostringstream out;
    std::ostringstream err;
    ASSERT_EQ(0, forge::Build(data, m_dir, out, err)) << err.str();
    FixedSeed seed(1);
    ScopedCatalog catalog;

    const YAML::Node tileSets = YAML::LoadFile(data + "/tilesets.yaml")["tilesets"];
    int levels = 0;
    for (const auto& entry : std::filesystem::directory_iterator(data + "/levels"))
    {
        const YAML::Node source = YAML::LoadFile(entry.path().string());
        const std::string fileName = source["file"].as<std::string>();
        SCOPED_TRACE(fileName);
        std::map<char, int> legend;
        for (const auto& pair : tileSets[source["tileset"].as<std::string>()]["legend"])
        {
            legend[pair.first.as<std::string>()[0]] = pair.second.as<int>();
        }
        std::vector<std::string> rows;
        std::istringstream map(source["map"].as<std::string>());
        for (std::string row; std::getline(map, row);)
        {
            rows.push_back(row);
        }
        forge::LevelRecord record;
        std::string error;
        ASSERT_TRUE(forge::ReadWholeFile("Campaign\\" + fileName, record, error)) << error;

        PlayerShip player;
        Level level;
        ASSERT_TRUE(level.Load(("Campaign\\" + fileName).c_str(), nullptr, &player));
        EXPECT_EQ(&level, Level::GetCurrent());
        EXPECT_EQ(static_cast<int>(record.ships.size()), level.GetNumEnemies());
        EXPECT_EQ(level.GetNumEnemies(), CountShips(level));
        EXPECT_EQ(1920, level.GetLeft());
        EXPECT_EQ(record.mapSize * 128 - 1920, level.GetRight());
        EXPECT_EQ(2020.0, player.GetX());
        EXPECT_EQ(2020.0, player.GetY());
        EXPECT_EQ(90.0, player.GetHeading());
        EXPECT_EQ(LAYER_SHIPS, player.GetLayer());
        EXPECT_EQ(&player, m_registry.Find("player"));
        for (const forge::SceneryRecord& scenery : record.scenery)
        {
            if (!scenery.name.empty())
            {
                EXPECT_NE(nullptr, m_registry.Find(scenery.name)) << scenery.name;
            }
        }
        for (const forge::ShipRecord& ship : record.ships)
        {
            if (!ship.name.empty())
            {
                EXPECT_NE(nullptr, dynamic_cast<EntityShip*>(m_registry.Find(ship.name))) << ship.name;
            }
        }
        const bool stars = record.tileSet == "Art\\startile000.bmp";
        EXPECT_EQ(stars, dynamic_cast<Starfield*>(level.GetBackground()) != nullptr);

        ASSERT_EQ(static_cast<size_t>(record.mapSize), rows.size());
        int mismatches = 0;
        for (int row = 0; row < record.mapSize; ++row)
        {
            for (int column = 0; column < record.mapSize; ++column)
            {
                mismatches += TileAt(level, column, row) != legend[rows[row][column]];
            }
        }
        EXPECT_EQ(0, mismatches);

        // A few seconds of play: the ships hunt, fire and move without trouble.
        for (int i = 0; i < 60; ++i)
        {
            level.Update(0.05f);
        }
        EXPECT_EQ(LAYER_SHIPS, player.GetLayer());
        ++levels;
    }
    EXPECT_GE(levels, 10);
}

TEST_F(LevelLoadTest, DamagedFilesLoadWhatTheyHoldAndNothingMore)
{
    FixedSeed seed(2);
    WriteGameFile("entity\\air000.nme", MakeEntity("Plasma Cannon"));
    std::vector<uint16_t> tiles(80 * 80, 3);
    tiles[0] = 500;          // beyond the 200 pictures of the tile set: tile 0
    tiles[1] = 199;          // the last one there is
    tiles[40 * 40] = 7;      // first tile of the map's second quarter (top right)
    PlayerShip player;

    {
        Level level;
        EXPECT_FALSE(level.Load("Campaign\\missing.lvl", nullptr, &player));
        EXPECT_EQ(&level, Level::GetCurrent());
        ASSERT_NE(nullptr, level.GetRoot());
        EXPECT_EQ(-1, player.GetLayer());
        EXPECT_FALSE(level.Load(nullptr, nullptr, &player));
        level.Update(0.1f);
    }
    {
        // Four billion ships announced, two there; the second one's file cannot exist.
        RawLevel raw;
        raw.tiles = tiles;
        raw.shipCount = 0xFFFFFFFFu;
        raw.shipKinds = {"000", std::string("0\0/", 3)};
        WriteRaw("Campaign\\huge.lvl", raw);
        Level level;
        ASSERT_TRUE(level.Load("Campaign\\huge.lvl", nullptr, &player));
        EXPECT_EQ(2, level.GetNumEnemies());
        EXPECT_EQ(2, CountShips(level));
        auto* leader = dynamic_cast<EntityShip*>(m_registry.Find("leader"));
        ASSERT_NE(nullptr, leader);
        EXPECT_EQ(nullptr, leader->GetWeapon(0)); // a weapon nobody knows
        EXPECT_EQ(40u, leader->GetArmour());
        EXPECT_NE(nullptr, m_registry.Find("rock")); // its picture is missing
        EXPECT_EQ(0, TileAt(level, 0, 0));
        EXPECT_EQ(199, TileAt(level, 0, 1));
        EXPECT_EQ(7, TileAt(level, 40, 0));
        EXPECT_EQ(3, TileAt(level, 79, 79));
        for (int i = 0; i < 20; ++i)
        {
            level.Update(0.1f);
        }
    }
    {
        // Cut inside the second ship record: one ship.
        RawLevel raw;
        raw.tiles = tiles;
        raw.shipCount = 2;
        raw.shipKinds = {"000", "000"};
        raw.cutLastBytes = 3;
        WriteRaw("Campaign\\cut.lvl", raw);
        Level level;
        ASSERT_TRUE(level.Load("Campaign\\cut.lvl", nullptr, &player));
        EXPECT_EQ(1, level.GetNumEnemies());
    }
    {
        // Cut inside the tiles: the rest of the map is tile 0, and there is nothing else.
        RawLevel raw;
        raw.tiles.assign(tiles.begin(), tiles.begin() + 1000);
        raw.endAfterTiles = true;
        WriteRaw("Campaign\\short.lvl", raw);
        Level level;
        ASSERT_TRUE(level.Load("Campaign\\short.lvl", nullptr, &player));
        EXPECT_EQ(3, TileAt(level, 4, 4));
        EXPECT_EQ(0, TileAt(level, 79, 79));
        EXPECT_EQ(0, level.GetNumEnemies());
        EXPECT_EQ(2020.0, player.GetX());
        EXPECT_EQ(LAYER_SHIPS, player.GetLayer());
    }
    {
        // A map of no size: no ship fits on it.
        RawLevel raw;
        raw.mapSize = 0;
        raw.shipCount = 1;
        raw.shipKinds = {"000"};
        WriteRaw("Campaign\\empty.lvl", raw);
        Level level;
        ASSERT_TRUE(level.Load("Campaign\\empty.lvl", nullptr, &player));
        EXPECT_EQ(0, level.GetNumEnemies());
        EXPECT_EQ(0, CountShips(level));
        level.Update(0.1f);
    }
    {
        // A map too large to build: nothing is read.
        RawLevel raw;
        raw.mapSize = 65535;
        raw.endAfterTiles = true;
        WriteRaw("Campaign\\vast.lvl", raw);
        Level level;
        EXPECT_FALSE(level.Load("Campaign\\vast.lvl", nullptr, &player));
        EXPECT_EQ(0, level.GetNumEnemies());
        EXPECT_NE(nullptr, level.GetRoot());
    }
    {
        // A tile set name that is not a numbered picture, and a map of 15 tiles (not 10
        // times a power of two): still a level.
        RawLevel raw;
        raw.tileSet = "art\\tiles\\nebula.bmp";
        raw.mapSize = 15;
        raw.tiles.assign(15 * 15, 2);
        raw.shipCount = 1;
        raw.shipKinds = {"000"};
        WriteRaw("Campaign\\odd.lvl", raw);
        Level level;
        ASSERT_TRUE(level.Load("Campaign\\odd.lvl", nullptr, &player));
        EXPECT_EQ(0, TileAt(level, 1, 1));
        level.Update(0.1f);
    }
}
