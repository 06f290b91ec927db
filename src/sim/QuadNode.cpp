#include "sim/QuadNode.h"

#include <cmath>
#include <limits>

#include "gfx/Camera.h"
#include "gfx/Image.h"
#include "gfx/Picture.h"
#include "platform/Gl.h"
#include "sim/Level.h"
#include "sim/MissionEvents.h"
#include "sim/NameRegistry.h"
#include "sim/WorldObject.h"

namespace
{
// The program-wide state of the one quadtree.
struct TreeState
{
    QuadNode* pRoot = nullptr;
    std::unique_ptr<PictureSequence> pTileSet;
    int tileWidth = 0;
    int tileHeight = 0;
    const Camera* pCamera = nullptr;
    int frameCounter = 0;
    // Set by Add once the object has reached a leaf.
    bool placed = false;
};

TreeState s_tree;

// trunc(p_value) as an int, or false when it is not a number or out of the int range.
bool TruncateToInt(double p_value, int& p_result)
{
    if (!(p_value > static_cast<double>(std::numeric_limits<int>::min()) - 1.0 &&
          p_value < static_cast<double>(std::numeric_limits<int>::max()) + 1.0))
    {
        return false;
    }
    p_result = static_cast<int>(p_value);
    return true;
}

bool IsListLayer(int p_layer)
{
    return p_layer == LAYER_SHIPS || p_layer == LAYER_PROJECTILES || p_layer == LAYER_SCENERY;
}

WorldObject* CurrentPlayer()
{
    Level* level = Level::GetCurrent();
    return level != nullptr ? level->GetPlayer() : nullptr;
}
} // namespace

QuadNode::QuadNode() = default;

QuadNode::~QuadNode()
{
    for (std::unique_ptr<QuadNode>& child : m_pChildren)
    {
        child.reset();
    }
    DestroyLists();
    DeleteDisplayList();
    if (s_tree.pRoot == this)
    {
        s_tree = TreeState{};
    }
}

void QuadNode::DestroyLists()
{
    WorldObject* player = CurrentPlayer();
    // Each object is taken out of its list before it is destroyed, so no destructor can
    // take the rest of the list with it; the player's ship outlives the level.
    for (int layer : {LAYER_SHIPS, LAYER_PROJECTILES, LAYER_SCENERY, LAYER_UNUSED})
    {
        while (m_pLists[layer] != nullptr)
        {
            WorldObject* object = static_cast<WorldObject*>(m_pLists[layer]);
            Unlink(object);
            if (object != player)
            {
                delete object;
            }
        }
    }
}

void QuadNode::DeleteDisplayList()
{
    if (m_displayList != 0)
    {
        glDeleteLists(m_displayList, 1);
        m_displayList = 0;
    }
}

void QuadNode::Build(QuadNode* p_parent, int p_id, int p_yMin, int p_xMin, int p_yMax, int p_xMax, int p_maxDepth)
{
    m_pParent = p_parent;
    m_id = p_id;
    m_yMin = p_yMin;
    m_xMin = p_xMin;
    m_yMax = p_yMax;
    m_xMax = p_xMax;
    m_depth = p_parent != nullptr ? p_parent->m_depth + 1 : 1;
    if (p_parent == nullptr)
    {
        s_tree.pRoot = this;
    }
    if (m_depth >= p_maxDepth)
    {
        return;
    }
    const int midY = p_yMin + (p_yMax - p_yMin + 1) / 2;
    const int midX = p_xMin + (p_xMax - p_xMin + 1) / 2;
    const int ranges[4][4] = {
        {p_yMin, p_xMin, midY - 1, midX - 1},
        {p_yMin, midX, midY - 1, p_xMax},
        {midY, p_xMin, p_yMax, midX - 1},
        {midY, midX, p_yMax, p_xMax},
    };
    for (int i = 0; i < 4; ++i)
    {
        m_pChildren[i] = std::make_unique<QuadNode>();
        m_pChildren[i]->Build(this, p_id * 4 + i, ranges[i][0], ranges[i][1], ranges[i][2], ranges[i][3], p_maxDepth);
    }
}

QuadNode* QuadNode::GetChild(int p_index) const
{
    return p_index >= 0 && p_index < 4 ? m_pChildren[p_index].get() : nullptr;
}

bool QuadNode::Contains(double p_x, double p_y) const
{
    int x = 0;
    int y = 0;
    if (!TruncateToInt(p_x, x) || !TruncateToInt(p_y, y))
    {
        return false;
    }
    return x >= m_xMin && x <= m_xMax && y >= m_yMin && y <= m_yMax;
}

bool QuadNode::Contains(const WorldObject* p_object) const
{
    return p_object != nullptr && Contains(p_object->GetX(), p_object->GetY());
}

WorldObject* QuadNode::GetList(int p_layer) const
{
    if (!IsListLayer(p_layer))
    {
        return nullptr;
    }
    return static_cast<WorldObject*>(m_pLists[p_layer]);
}

void QuadNode::Unlink(WorldObject* p_object)
{
    if (p_object == nullptr)
    {
        return;
    }
    ObjectLink* prev = p_object->m_pPrev;
    ObjectLink* next = p_object->m_pNext;
    if (prev != nullptr)
    {
        prev->m_pNext = next;
    }
    else if (p_object->m_pLeaf != nullptr && p_object->m_pLeaf->m_pLists[p_object->m_layer] == p_object)
    {
        p_object->m_pLeaf->m_pLists[p_object->m_layer] = next;
    }
    if (next != nullptr)
    {
        next->m_pPrev = prev;
    }
    p_object->m_pPrev = nullptr;
    p_object->m_pNext = nullptr;
    p_object->m_pLeaf = nullptr;
    p_object->m_layer = -1;
}

void QuadNode::PushFront(WorldObject* p_object, int p_layer)
{
    ObjectLink*& head = m_pLists[p_layer];
    p_object->m_pNext = head;
    p_object->m_pPrev = nullptr;
    if (head != nullptr)
    {
        head->m_pPrev = p_object;
    }
    head = p_object;
    p_object->m_pLeaf = this;
    p_object->m_layer = p_layer;
    p_object->m_outside = false;
}

void QuadNode::Add(WorldObject* p_object, int p_layer)
{
    if (p_object == nullptr)
    {
        return;
    }
    s_tree.placed = false;
    AddToLeaf(p_object, p_layer);
}

void QuadNode::AddToLeaf(WorldObject* p_object, int p_layer)
{
    if (IsLeaf())
    {
        s_tree.placed = true;
        Unlink(p_object);
        if (IsListLayer(p_layer))
        {
            PushFront(p_object, p_layer);
        }
        return;
    }
    for (std::unique_ptr<QuadNode>& child : m_pChildren)
    {
        if (child->Contains(p_object))
        {
            child->AddToLeaf(p_object, p_layer);
            break;
        }
    }
    if (!s_tree.placed)
    {
        Unlink(p_object);
        p_object->m_outside = true;
    }
}

void QuadNode::Remove(WorldObject* p_object, int p_layer)
{
    (void)p_layer;
    if (p_object == nullptr)
    {
        return;
    }
    Unlink(p_object);
    delete p_object;
}

void QuadNode::Update(float p_dt)
{
    if (!IsLeaf())
    {
        for (std::unique_ptr<QuadNode>& child : m_pChildren)
        {
            child->Update(p_dt);
        }
        return;
    }
    UpdateMovingList(LAYER_SHIPS, p_dt);
    UpdateMovingList(LAYER_PROJECTILES, p_dt);
    WorldObject* object = GetList(LAYER_SCENERY);
    while (object != nullptr)
    {
        WorldObject* next = object->GetNextInList();
        object->Update(p_dt);
        object = next;
    }
}

void QuadNode::UpdateMovingList(int p_layer, float p_dt)
{
    Level* level = Level::GetCurrent();
    WorldObject* player = level != nullptr ? level->GetPlayer() : nullptr;
    WorldObject* object = GetList(p_layer);
    while (object != nullptr)
    {
        // Taken first: the object may leave this list below.
        WorldObject* next = object->GetNextInList();
        // An object that moved into a leaf visited later in this frame is not updated twice.
        // The count is brought to the frame counter after each update, so the rule also holds
        // for shots fired mid-mission and for a ship that lived through earlier levels.
        if (object->GetUpdateCount() != s_tree.frameCounter)
        {
            object->Update(p_dt);
            object->m_updateCount = s_tree.frameCounter;
        }
        if (Contains(object))
        {
            if (object->IsDead())
            {
                if (p_layer == LAYER_PROJECTILES)
                {
                    Remove(object, p_layer);
                }
                else if (object == player)
                {
                    // The player's ship stays in the world, dead, so the mission can show
                    // its defeat.
                    if (level->GetMission() != nullptr)
                    {
                        level->GetMission()->SetDefeat(true);
                    }
                    if (g_pNameRegistry != nullptr)
                    {
                        g_pNameRegistry->Clear("player");
                    }
                }
                else
                {
                    const bool enemy = object->IsEnemy();
                    Unlink(object);
                    delete object;
                    if (enemy && level != nullptr)
                    {
                        level->OnEnemyRemoved();
                    }
                }
            }
        }
        else if (s_tree.pRoot != nullptr)
        {
            s_tree.pRoot->Add(object, p_layer);
            if (object->m_outside)
            {
                if (object == player)
                {
                    // The level does not own the player's ship. Keeping it here lets the
                    // mission steer it back instead of losing it off the map.
                    PushFront(object, p_layer);
                }
                else
                {
                    delete object;
                }
            }
        }
        object = next;
    }
}

void QuadNode::DistributeTiles(const std::vector<uint16_t>& p_tiles, size_t p_start, size_t p_count)
{
    if (IsLeaf())
    {
        for (size_t k = 0; k < NUM_TILES; ++k)
        {
            const size_t index = p_start + k;
            m_tiles[k] = (k < p_count && index < p_tiles.size()) ? p_tiles[index] : 0;
        }
        return;
    }
    const size_t quarter = p_count / 4;
    for (size_t i = 0; i < 4; ++i)
    {
        m_pChildren[i]->DistributeTiles(p_tiles, p_start + i * quarter, quarter);
    }
}

uint16_t QuadNode::GetTile(int p_index) const
{
    return p_index >= 0 && p_index < NUM_TILES ? m_tiles[p_index] : 0;
}

void QuadNode::ForgetDisplayLists()
{
    m_displayList = 0;
    if (!IsLeaf())
    {
        for (std::unique_ptr<QuadNode>& child : m_pChildren)
        {
            child->ForgetDisplayLists();
        }
    }
}

void QuadNode::BuildDisplayLists()
{
    if (!IsLeaf())
    {
        for (std::unique_ptr<QuadNode>& child : m_pChildren)
        {
            child->BuildDisplayLists();
        }
        return;
    }
    DeleteDisplayList();
    PictureSequence* tileSet = s_tree.pTileSet.get();
    if (tileSet == nullptr || tileSet->GetCount() == 0)
    {
        return;
    }
    m_displayList = glGenLists(1);
    if (m_displayList == 0)
    {
        return;
    }
    glNewList(m_displayList, GL_COMPILE);
    for (int a = 0; a < LEAF_TILES; ++a)
    {
        for (int b = 0; b < LEAF_TILES; ++b)
        {
            uint16_t& tile = m_tiles[a * LEAF_TILES + b];
            if (tile >= tileSet->GetCount())
            {
                tile = 0;
            }
            Image* image = tileSet->GetPicture(static_cast<uint8_t>(tile))->GetImage();
            if (image != nullptr)
            {
                image->Draw(static_cast<double>(m_xMin) + a * s_tree.tileWidth,
                            static_cast<double>(m_yMin) + b * s_tree.tileHeight, 0.0, false);
            }
        }
    }
    glEndList();
}

bool QuadNode::Overlaps(const ViewRect& p_view) const
{
    return m_xMin <= p_view.right && m_xMax >= p_view.left && m_yMin <= p_view.bottom && m_yMax >= p_view.top;
}

void QuadNode::RenderTiles(const ViewRect* p_view) const
{
    if (IsLeaf())
    {
        if (m_displayList != 0)
        {
            glCallList(m_displayList);
        }
        return;
    }
    for (const std::unique_ptr<QuadNode>& child : m_pChildren)
    {
        if (p_view == nullptr || child->Overlaps(*p_view))
        {
            child->RenderTiles(p_view);
        }
    }
}

void QuadNode::RenderLayer(int p_layer, const ViewRect* p_view) const
{
    if (IsLeaf())
    {
        for (WorldObject* object = GetList(p_layer); object != nullptr; object = object->GetNextInList())
        {
            object->Render();
        }
        return;
    }
    for (const std::unique_ptr<QuadNode>& child : m_pChildren)
    {
        if (p_view == nullptr || child->Overlaps(*p_view))
        {
            child->RenderLayer(p_layer, p_view);
        }
    }
}

void QuadNode::CollectLeaves(std::vector<QuadNode*>& p_leaves)
{
    if (IsLeaf())
    {
        p_leaves.push_back(this);
        return;
    }
    for (std::unique_ptr<QuadNode>& child : m_pChildren)
    {
        child->CollectLeaves(p_leaves);
    }
}

QuadNode* QuadNode::GetRoot()
{
    return s_tree.pRoot;
}

int QuadNode::GetFrameCounter()
{
    return s_tree.frameCounter;
}

void QuadNode::AdvanceFrameCounter()
{
    ++s_tree.frameCounter;
}

void QuadNode::SetCamera(const Camera* p_camera)
{
    s_tree.pCamera = p_camera;
}

const Camera* QuadNode::GetCamera()
{
    return s_tree.pCamera;
}

bool QuadNode::LoadTileSet(const char* p_firstFile, uint8_t p_count)
{
    if (s_tree.pTileSet)
    {
        return true;
    }
    auto tileSet = std::make_unique<PictureSequence>();
    if (!tileSet->Load(p_firstFile, p_count))
    {
        return false;
    }
    s_tree.tileWidth = 0;
    s_tree.tileHeight = 0;
    if (tileSet->GetCount() > 0 && tileSet->GetPicture(0)->GetImage() != nullptr)
    {
        s_tree.tileWidth = tileSet->GetPicture(0)->GetImage()->GetWidth();
        s_tree.tileHeight = tileSet->GetPicture(0)->GetImage()->GetHeight();
    }
    s_tree.pTileSet = std::move(tileSet);
    return true;
}

PictureSequence* QuadNode::GetTileSet()
{
    return s_tree.pTileSet.get();
}

int QuadNode::GetTileWidth()
{
    return s_tree.tileWidth;
}

int QuadNode::GetTileHeight()
{
    return s_tree.tileHeight;
}
