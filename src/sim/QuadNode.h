#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "sim/Layers.h"

class Camera;
class ObjectLink;
class PictureSequence;
class WorldObject;
struct ViewRect;

// One node of the world's quadtree. Every leaf covers 5 × 5 tiles, keeps their tile numbers
// and a display list that draws them, and holds its objects in four layer lists (newest
// first). Rectangles are inclusive: a point on a leaf's maximum x or y still belongs to it.
//
// The tree has program-wide state (its root, the tile set and tile size, the camera used
// for visibility and the world's frame counter): one tree exists at a time, and destroying
// the root clears that state.
class QuadNode
{
public:
    static constexpr int LEAF_TILES = 5; // tiles per side of a leaf
    static constexpr int NUM_TILES = LEAF_TILES * LEAF_TILES;

    QuadNode();
    // Destroys the children and every object in the lists except the current level's
    // player ship, which is only unlinked. The root also clears the program-wide state.
    ~QuadNode();
    QuadNode(const QuadNode&) = delete;
    QuadNode& operator=(const QuadNode&) = delete;

    // Makes this node cover [p_xMin, p_xMax] × [p_yMin, p_yMax] and splits it into four
    // children (low y: 0 low x, 1 high x; high y: 2 low x, 3 high x) down to p_maxDepth.
    // A node without a parent becomes the program-wide root.
    void Build(QuadNode* p_parent, int p_id, int p_yMin, int p_xMin, int p_yMax, int p_xMax, int p_maxDepth);

    // Puts p_object at the front of layer p_layer of the leaf that contains its position,
    // taking it out of any list it was in. When no leaf contains it, it ends up in no list
    // with m_outside set. Layers other than 0, 2 and 3 leave it in no list.
    void Add(WorldObject* p_object, int p_layer);
    // Takes p_object out of its list and destroys it.
    void Remove(WorldObject* p_object, int p_layer);
    bool Contains(const WorldObject* p_object) const;
    // Whether trunc(p_x), trunc(p_y) lie inside the rectangle.
    bool Contains(double p_x, double p_y) const;
    // Head of a layer list; null for layer 1 and unknown layers.
    WorldObject* GetList(int p_layer) const;

    // One frame of the leaves under this node, in quadtree order: updates the objects,
    // moves those that left their leaf, and removes the dead (layers 0 and 2).
    void Update(float p_dt);

    // Hands the tile numbers p_tiles[p_start .. p_start + p_count) to the leaves: each node
    // gives its children the four quarters of its range in child order, and each leaf keeps
    // the first 25 numbers of its range (0 where the range runs short).
    void DistributeTiles(const std::vector<uint16_t>& p_tiles, size_t p_start, size_t p_count);
    // The leaf's tile number p_index (0..24); tile p_index is drawn at x index
    // p_index / 5 and y index p_index % 5 within the leaf (see TileIndex).
    uint16_t GetTile(int p_index) const;
    // The index within a leaf of the tile at x index p_column and y index p_row.
    static int TileIndex(int p_column, int p_row) { return p_column * LEAF_TILES + p_row; }
    // (Re)compiles the display lists of every leaf under this node from the tile set.
    void BuildDisplayLists();
    // Drops the leaves' list numbers without deleting them: they went with the OpenGL context
    // that held them, and in a new one the same numbers may belong to someone else.
    void ForgetDisplayLists();

    // Draws the tiles of the leaves under this node that overlap p_view.
    void RenderTiles(const ViewRect* p_view) const;
    // Draws layer p_layer of the leaves under this node that overlap p_view.
    void RenderLayer(int p_layer, const ViewRect* p_view) const;
    bool Overlaps(const ViewRect& p_view) const;

    // The leaves under this node, in quadtree order.
    void CollectLeaves(std::vector<QuadNode*>& p_leaves);

    bool IsLeaf() const { return m_pChildren[0] == nullptr; }
    QuadNode* GetChild(int p_index) const;
    QuadNode* GetParent() const { return m_pParent; }
    int GetId() const { return m_id; }
    int GetDepth() const { return m_depth; }
    int GetXMin() const { return m_xMin; }
    int GetYMin() const { return m_yMin; }
    int GetXMax() const { return m_xMax; }
    int GetYMax() const { return m_yMax; }
    uint32_t GetDisplayList() const { return m_displayList; }

    // Takes p_object out of whatever list holds it (fixing that list's head).
    static void Unlink(WorldObject* p_object);

    // Program-wide state of the tree.
    static QuadNode* GetRoot();
    static int GetFrameCounter();
    static void AdvanceFrameCounter();
    static void SetCamera(const Camera* p_camera);
    static const Camera* GetCamera();
    // Makes the tile set from the numbered pictures starting with p_firstFile, unless one
    // exists already; the tile size becomes that of its first picture. False when the
    // name is not a numbered picture name.
    static bool LoadTileSet(const char* p_firstFile, uint8_t p_count);
    static PictureSequence* GetTileSet();
    static int GetTileWidth();
    static int GetTileHeight();

private:
    void AddToLeaf(WorldObject* p_object, int p_layer);
    void PushFront(WorldObject* p_object, int p_layer);
    void UpdateMovingList(int p_layer, float p_dt);
    void DestroyLists();
    void DeleteDisplayList();

    QuadNode* m_pParent = nullptr;
    std::unique_ptr<QuadNode> m_pChildren[4];
    ObjectLink* m_pLists[NUM_LAYERS] = {nullptr, nullptr, nullptr, nullptr};
    int m_xMin = 0;
    int m_yMin = 0;
    int m_xMax = 0;
    int m_yMax = 0;
    uint16_t m_tiles[NUM_TILES] = {};
    int m_id = 0;
    int m_depth = 0;
    uint32_t m_displayList = 0;
};
