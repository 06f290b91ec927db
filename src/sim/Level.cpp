#include "sim/Level.h"

#include <cstdint>

#include "app/Random.h"
#include "gfx/Camera.h"
#include "platform/Gl.h"
#include "sim/Background.h"
#include "sim/CollisionGrid.h"
#include "sim/MathTables.h"
#include "sim/MissionEvents.h"
#include "sim/QuadNode.h"
#include "sim/WorldObject.h"

namespace
{
Level* s_pCurrentLevel = nullptr;

// Starts pink-violet when the program starts and is never reset, not even between levels.
uint8_t s_borderColor[3] = {255, 75, 189};
// The range each channel may wander in: red, green, blue.
const int BORDER_MIN[3] = {0, 50, 10};
const int BORDER_MAX[3] = {255, 126, 199};
} // namespace

Level::Level() = default;

Level::~Level()
{
    TearDown();
    if (s_pCurrentLevel == this)
    {
        s_pCurrentLevel = nullptr;
    }
}

void Level::TearDown()
{
    // The player's ship outlives the level.
    if (m_pPlayer != nullptr)
    {
        QuadNode::Unlink(m_pPlayer);
    }
    m_pGrid.reset();
    m_pRoot.reset();
}

int Level::DepthForMapSize(uint16_t p_mapSize)
{
    int depth = 1;
    for (int blocks = p_mapSize / 10; blocks > 0; blocks /= 2)
    {
        ++depth;
    }
    return depth;
}

bool Level::Create(uint16_t p_mapSize, int32_t p_tileWidth, int32_t p_tileHeight, const Camera* p_camera)
{
    if (p_mapSize > MAX_MAP_SIZE || p_tileWidth <= 0 || p_tileHeight <= 0 ||
        static_cast<int64_t>(p_mapSize) * p_tileWidth > INT32_MAX / 2 ||
        static_cast<int64_t>(p_mapSize) * p_tileHeight > INT32_MAX / 2)
    {
        return false;
    }
    s_pCurrentLevel = this;
    TearDown();
    m_elapsed = 0.0;

    m_pRoot = std::make_unique<QuadNode>();
    // The maxima are inclusive: the root reaches one unit past the last tile.
    m_pRoot->Build(nullptr, 1, 0, 0, p_mapSize * p_tileHeight, p_mapSize * p_tileWidth, DepthForMapSize(p_mapSize));
    QuadNode::SetCamera(p_camera);

    m_pGrid = std::make_unique<CollisionGrid>();
    m_pGrid->Build(m_pRoot.get(), p_mapSize / QuadNode::LEAF_TILES);

    m_left = PLAY_AREA_MARGIN;
    m_top = PLAY_AREA_MARGIN;
    m_right = p_mapSize * PLAY_AREA_TILE - PLAY_AREA_MARGIN;
    m_bottom = p_mapSize * PLAY_AREA_TILE - PLAY_AREA_MARGIN;
    return true;
}

void Level::SetTiles(const std::vector<uint16_t>& p_tiles)
{
    if (!m_pRoot)
    {
        return;
    }
    m_pRoot->DistributeTiles(p_tiles, 0, p_tiles.size());
    m_pRoot->BuildDisplayLists();
}

void Level::RebuildDisplayLists()
{
    if (m_pRoot)
    {
        m_pRoot->ForgetDisplayLists();
        m_pRoot->BuildDisplayLists();
    }
}

void Level::SetEnemyCount(int p_count)
{
    m_numEnemies = p_count;
    m_enemiesLeft = p_count;
}

void Level::SetBackground(std::unique_ptr<Background> p_background)
{
    m_pStarfield = std::move(p_background);
}

void Level::Add(WorldObject* p_object, int p_layer)
{
    if (p_object == nullptr)
    {
        return;
    }
    if (m_pRoot)
    {
        m_pRoot->Add(p_object, p_layer);
    }
    // The level owns what it is given: an object that ends up in no list (off the map, layer
    // 1, or no map at all) is destroyed rather than lost. The player's ship is never the
    // level's.
    if (p_object->GetLeaf() == nullptr && p_object != m_pPlayer)
    {
        delete p_object;
    }
}

void Level::Update(float p_dt)
{
    m_elapsed += p_dt;
    // The border shimmers from the random numbers, so it moves here: what is drawn never
    // changes the game, and a frame left undrawn plays out the same.
    StepBorderColor();
    if (m_pStarfield && m_pPlayer != nullptr && m_pPlayer->GetPhysicalDesc() != nullptr)
    {
        const PhysicalDesc* desc = m_pPlayer->GetPhysicalDesc();
        const double vx = desc->GetVelocity().x + desc->GetStrafeVelocity().x;
        const double vy = desc->GetVelocity().y + desc->GetStrafeVelocity().y;
        m_pStarfield->Move(vx, -vy, desc->GetHeading() * DEG2RAD);
    }
    QuadNode::AdvanceFrameCounter();
    if (m_pRoot)
    {
        m_pRoot->Update(p_dt);
    }
    if (m_pGrid)
    {
        m_pGrid->Update();
    }
}

bool Level::Render()
{
    if (m_pStarfield)
    {
        m_pStarfield->Render();
    }
    if (!m_pRoot)
    {
        return true;
    }
    const Camera* camera = QuadNode::GetCamera();
    const ViewRect* view = camera != nullptr ? &camera->GetView() : nullptr;
    m_pRoot->RenderTiles(view);

    if (m_pMission == nullptr || !m_pMission->IsDefeated())
    {
        // Each layer over the whole view before the next, so scenery never covers a ship in
        // a neighbouring leaf, nor a ship a shot.
        m_pRoot->RenderLayer(LAYER_SCENERY, view);
        m_pRoot->RenderLayer(LAYER_SHIPS, view);
        m_pRoot->RenderLayer(LAYER_PROJECTILES, view);
    }

    glDisable(GL_TEXTURE_2D);
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glLineWidth(5.0f);
    glColor4ub(s_borderColor[0], s_borderColor[1], s_borderColor[2], 255);
    glBegin(GL_LINES);
    glVertex2i(m_left, m_top);
    glVertex2i(m_right, m_top);
    glVertex2i(m_right, m_top);
    glVertex2i(m_right, m_bottom);
    glVertex2i(m_right, m_bottom);
    glVertex2i(m_left, m_bottom);
    glVertex2i(m_left, m_bottom);
    glVertex2i(m_left, m_top);
    glEnd();
    glLineWidth(1.0f);
    glBlendFunc(GL_ONE, GL_ZERO);
    glDisable(GL_BLEND);
    glEnable(GL_TEXTURE_2D);
    return true;
}

int Level::Classify(double p_x, double p_y) const
{
    const auto inside = [this](double p_px, double p_py) {
        return m_left < p_px && p_px < m_right && m_top < p_py && p_py < m_bottom;
    };
    if (inside(p_x, p_y) || inside(p_x + 32.0, p_y + 32.0))
    {
        return 4;
    }
    // Without a player's ship the point itself, standing still, decides.
    double px = p_x;
    double py = p_y;
    Vector2 velocity;
    if (m_pPlayer != nullptr && m_pPlayer->GetPhysicalDesc() != nullptr)
    {
        px = m_pPlayer->GetX();
        py = m_pPlayer->GetY();
        velocity = m_pPlayer->GetPhysicalDesc()->GetVelocity();
    }
    // Turning with a positive rate (3) brings a ship flying along the crossed edge back in.
    if (py < m_top && px > m_left)
    {
        return velocity.x > 0.0 ? 3 : 2;
    }
    if (px > m_right && py > m_top)
    {
        return velocity.y > 0.0 ? 3 : 2;
    }
    if (py > m_bottom && px < m_right)
    {
        return velocity.x < 0.0 ? 3 : 2;
    }
    return velocity.y < 0.0 ? 3 : 2;
}

Level* Level::GetCurrent()
{
    return s_pCurrentLevel;
}

const uint8_t* Level::GetBorderColor()
{
    return s_borderColor;
}

void Level::StepBorderColor()
{
    const int channel = GameRand() % 3;
    int step = GameRand() % 25;
    if (GameRand() % 2 != 0)
    {
        step = -step;
    }
    const int value = s_borderColor[channel] + step;
    if (value >= BORDER_MIN[channel] && value <= BORDER_MAX[channel])
    {
        s_borderColor[channel] = static_cast<uint8_t>(value);
    }
}
