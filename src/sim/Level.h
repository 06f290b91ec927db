#pragma once

#include <cstdint>
#include <memory>
#include <vector>

class Background;
class Camera;
class CollisionGrid;
class MissionEvents;
class PlayerShip;
class QuadNode;
class WorldObject;

// The world of one mission: a square map of tiles in a quadtree of 5 × 5-tile leaves, the
// play area inside it, and every object of the mission except the player's ship, which the
// level holds but does not own. Each update moves the objects leaf by leaf, removes the dead
// and tests shots against ships cell by cell; drawing visits only what the camera can see.
//
// The level file loader fills a level through Create, LoadTileSet, SetTiles, SetPlayer,
// Add and SetEnemyCount; tests and benchmarks build one the same way in code.
class Level
{
public:
    // The play area keeps this far inside the map on every side.
    static constexpr int PLAY_AREA_MARGIN = 1920;
    // The play area counts 128 units per tile whatever the tile pictures' size.
    static constexpr int PLAY_AREA_TILE = 128;
    // Largest map accepted, in tiles per side (16 times the usual 80).
    static constexpr int MAX_MAP_SIZE = 1280;

    Level();
    // Tears the world down: the player's ship is taken out of it, every other object is
    // destroyed, and the tile set and the quadtree's program-wide state go.
    ~Level();
    Level(const Level&) = delete;
    Level& operator=(const Level&) = delete;

    // Reads a level file (LevelLoader.cpp) and builds its world: tiles, scenery, computer
    // ships aimed at p_player, and p_player itself at (2020, 2020), reset and named "player".
    // False when the file does not open or its map is too large to build; the level then
    // has an empty root and no objects. A short or damaged file loads what it holds.
    bool Load(const char* p_fileName, const Camera* p_camera, PlayerShip* p_player);

    // Makes this the current level and builds the empty world of a p_mapSize × p_mapSize
    // map of p_tileWidth × p_tileHeight tiles: the quadtree, the collision grid of
    // p_mapSize / 5 cells per side and the play area. False, with nothing built, for a map
    // larger than MAX_MAP_SIZE or tiles without a size.
    bool Create(uint16_t p_mapSize, int32_t p_tileWidth, int32_t p_tileHeight, const Camera* p_camera);
    // The tree depth for a map of p_mapSize tiles: 1 + the number of times p_mapSize / 10
    // can be halved before it reaches 0 (80 gives 5: 16 × 16 leaves of 5 × 5 tiles).
    static int DepthForMapSize(uint16_t p_mapSize);

    // Gives the leaves their tile numbers, in the quadtree order of the level file, and
    // compiles their display lists from the tile set (QuadNode::LoadTileSet).
    void SetTiles(const std::vector<uint16_t>& p_tiles);
    // After the OpenGL context was re-created: the map's lists anew in the new context.
    void RebuildDisplayLists();

    // The player's ship (not owned). Add it with Add like any other ship.
    void SetPlayer(WorldObject* p_player) { m_pPlayer = p_player; }
    WorldObject* GetPlayer() const { return m_pPlayer; }
    void SetEnemyCount(int p_count);
    void SetBackground(std::unique_ptr<Background> p_background);
    Background* GetBackground() const { return m_pStarfield.get(); }
    void SetMission(MissionEvents* p_mission) { m_pMission = p_mission; }
    MissionEvents* GetMission() const { return m_pMission; }

    // Puts p_object into the world; the level owns it from then on (except the player's
    // ship) and destroys it at once when it lands in no list (off the map, or layer 1).
    // Null is ignored.
    // Firing code uses layer 2, explosions layer 0, scenery layer 3.
    void Add(WorldObject* p_object, int p_layer);

    void Update(float p_dt);
    bool Render();
    // Where (p_x, p_y) lies: 4 inside the play area; outside, 3 or 2 says which way the
    // player's ship should turn (3: increasing heading) to get back in.
    int Classify(double p_x, double p_y) const;

    // A computer ship has been removed from the world.
    void OnEnemyRemoved() { --m_enemiesLeft; }

    double GetElapsed() const { return m_elapsed; }
    int GetNumEnemies() const { return m_numEnemies; }
    int GetEnemiesLeft() const { return m_enemiesLeft; }
    CollisionGrid* GetGrid() const { return m_pGrid.get(); }
    QuadNode* GetRoot() const { return m_pRoot.get(); }
    int GetLeft() const { return m_left; }
    int GetTop() const { return m_top; }
    int GetRight() const { return m_right; }
    int GetBottom() const { return m_bottom; }

    // The level that computer ships add their shots to; null when there is none.
    static Level* GetCurrent();

    // The colour of the play-area border, which wanders a little every frame for the whole
    // run: red, green, blue.
    static const uint8_t* GetBorderColor();
    // One frame's wander of the border colour. Drawing the level takes it from the game's
    // random numbers, so a frame that is not drawn must still take it.
    static void StepBorderColor();

private:
    void TearDown();

    std::unique_ptr<QuadNode> m_pRoot;
    std::unique_ptr<CollisionGrid> m_pGrid;
    int m_left = 0;
    int m_top = 0;
    int m_right = 0;
    int m_bottom = 0;
    std::unique_ptr<Background> m_pStarfield;
    WorldObject* m_pPlayer = nullptr;
    int m_numEnemies = 0;
    int m_enemiesLeft = 0;
    double m_elapsed = 0.0;
    MissionEvents* m_pMission = nullptr;
};
