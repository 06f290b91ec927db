// Level::Load: builds a mission's world from its level file.
//
// Level file, little-endian, strings as a length byte and the characters:
//   tile set (string: the first picture of the numbered tile set), map size n (uint16),
//   n * n tile numbers (uint16, in quadtree order: each node's four quarters in child order,
//   each 5 x 5 leaf column by column, entry k at column k / 5 and row k % 5),
//   scenery count (int32), then per scenery object: registry name (string, "" for none),
//   picture (string, loaded from "Entity\"), x, y (int32),
//   one reserved byte,
//   ship count (int32), then per computer ship: kind (3 characters: "entity\air<kind>.nme"),
//   registry name (string), x, y (int32).

#include <memory>
#include <string>
#include <vector>

#include "app/Application.h"
#include "gfx/Image.h"
#include "gfx/Picture.h"
#include "pilot/DataFile.h"
#include "sim/EntityShip.h"
#include "sim/Level.h"
#include "sim/NameRegistry.h"
#include "sim/PlayerShip.h"
#include "sim/QuadNode.h"
#include "sim/Starfield.h"

namespace
{
// The one tile set that is drawn over a moving starfield instead of a tile map.
const char* const STAR_TILE = "Art\\startile000.bmp";
const uint8_t STAR_TILE_COUNT = 1;
const uint8_t TILE_SET_COUNT = 200;
const int STARFIELD_STARS = 2000;
const int STARFIELD_CENTER_X = 512;
const int STARFIELD_CENTER_Y = 610;
// The player's ship starts this far inside the play area's top-left corner.
const double PLAYER_START_OFFSET = 100.0;

void Register(const std::string& p_name, WorldObject* p_object)
{
    if (g_pNameRegistry != nullptr)
    {
        g_pNameRegistry->Enter(p_name, p_object);
    }
}
} // namespace

bool Level::Load(const char* p_fileName, const Camera* p_camera, PlayerShip* p_player)
{
    m_elapsed = 0.0;
    if (p_fileName == nullptr)
    {
        return false;
    }
    m_pPlayer = p_player;
    SetEnemyCount(0);
    SetBackground(nullptr);

    DataFile file;
    if (!file.Open(p_fileName, "rb"))
    {
        // The current level all the same, with nothing in it.
        Create(0, PLAY_AREA_TILE, PLAY_AREA_TILE, p_camera);
        return false;
    }
    const std::string tileSet = file.ReadString();
    const uint16_t mapSize = file.ReadUInt16();

    // The first tile's picture gives the tile size. Without it the map keeps the size the
    // play area counts with, so ships and scenery stay where the file puts them.
    int32_t tileWidth = 0;
    int32_t tileHeight = 0;
    {
        Image first;
        first.Load(tileSet.c_str());
        tileWidth = first.GetWidth();
        tileHeight = first.GetHeight();
    }
    if (tileWidth <= 0 || tileHeight <= 0)
    {
        tileWidth = PLAY_AREA_TILE;
        tileHeight = PLAY_AREA_TILE;
    }
    if (!Create(mapSize, tileWidth, tileHeight, p_camera))
    {
        Create(0, PLAY_AREA_TILE, PLAY_AREA_TILE, p_camera);
        return false;
    }

    if (tileSet == STAR_TILE)
    {
        QuadNode::LoadTileSet(tileSet.c_str(), STAR_TILE_COUNT);
        auto starfield = std::make_unique<Starfield>(Starfield::DEFAULT_CAPACITY, STARFIELD_STARS, 0);
        const int width = g_pApplication != nullptr ? g_pApplication->GetScreenWidth() : Application::SCREEN_WIDTH;
        const int height = g_pApplication != nullptr ? g_pApplication->GetScreenHeight() : Application::SCREEN_HEIGHT;
        starfield->SetScreen(width, height, STARFIELD_CENTER_X, STARFIELD_CENTER_Y);
        SetBackground(std::move(starfield));
    }
    else
    {
        QuadNode::LoadTileSet(tileSet.c_str(), TILE_SET_COUNT);
    }

    // A short file leaves the rest of the map at tile 0, and so does a number beyond the
    // tile set.
    const PictureSequence* tilePictures = QuadNode::GetTileSet();
    const unsigned tileLimit = tilePictures != nullptr ? tilePictures->GetCount() : 0u;
    const size_t tileCount = static_cast<size_t>(mapSize) * mapSize;
    std::vector<uint16_t> tiles(tileCount, 0);
    for (size_t i = 0; i < tileCount; ++i)
    {
        const uint16_t tile = file.ReadUInt16();
        if (file.HasReadPastEnd())
        {
            break;
        }
        tiles[i] = tile < tileLimit ? tile : 0;
    }
    SetTiles(tiles);

    if (p_player != nullptr)
    {
        p_player->SetName("player");
        Register("player", p_player);
    }

    // Counts are not trusted beyond what the file holds: a record cut short by the end of the
    // file is dropped, and the reading stops there.
    const uint32_t sceneryCount = static_cast<uint32_t>(file.ReadInt32());
    for (uint32_t i = 0; i < sceneryCount && !file.HasReadPastEnd(); ++i)
    {
        const std::string name = file.ReadString();
        const std::string picture = file.ReadString();
        const int32_t x = file.ReadInt32();
        const int32_t y = file.ReadInt32();
        if (file.HasReadPastEnd())
        {
            break;
        }
        auto scenery = std::make_unique<WorldObject>();
        if (!name.empty())
        {
            scenery->SetName(name.c_str());
            Register(name, scenery.get());
        }
        scenery->LoadImage(("Entity\\" + picture).c_str());
        scenery->InitPhysicalDesc();
        scenery->SetPosition(static_cast<float>(x), static_cast<float>(y));
        // Placed at once: a "touching" condition may ask before the first update.
        scenery->GetPhysicalDesc()->Update(0.0f);
        if (m_pRoot->Contains(scenery.get()))
        {
            Add(scenery.release(), LAYER_SCENERY);
        }
    }

    file.ReadUInt8(); // reserved

    int ships = 0;
    const uint32_t shipCount = static_cast<uint32_t>(file.ReadInt32());
    for (uint32_t i = 0; i < shipCount && !file.HasReadPastEnd(); ++i)
    {
        file.ReadFixedString(3);
        const std::string kind = file.GetLastString(); // all three bytes, even a NUL
        const std::string name = file.ReadString();
        const int32_t x = file.ReadInt32();
        const int32_t y = file.ReadInt32();
        if (file.HasReadPastEnd())
        {
            break;
        }
        auto ship = std::make_unique<EntityShip>();
        // A kind with a NUL in it names no file: the ship keeps its constructor values.
        ship->Load(("entity\\air" + kind + ".nme").c_str());
        if (!name.empty())
        {
            ship->SetName(name.c_str());
            Register(name, ship.get());
        }
        ship->SetPosition(static_cast<float>(x), static_cast<float>(y));
        ship->SetTarget(p_player);
        // A ship off the map could never be fought: it is dropped and does not count.
        if (!m_pRoot->Contains(ship.get()))
        {
            continue;
        }
        ++ships;
        Add(ship.release(), LAYER_SHIPS);
    }
    SetEnemyCount(ships);
    file.Close();

    if (p_player != nullptr)
    {
        p_player->SetPosition(static_cast<float>(m_left + PLAYER_START_OFFSET), static_cast<float>(m_top + PLAYER_START_OFFSET));
        p_player->Reset();
        Add(p_player, LAYER_SHIPS);
    }
    return true;
}
