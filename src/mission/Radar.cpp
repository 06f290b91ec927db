#include "mission/Radar.h"

#include "platform/Gl.h"
#include "sim/CollisionGrid.h"
#include "sim/Layers.h"
#include "sim/Level.h"
#include "sim/MathTables.h"
#include "sim/QuadNode.h"
#include "sim/WorldObject.h"
#include "ui/UiDraw.h"

#include <cmath>

Radar::Radar() : m_zoom(DEFAULT_ZOOM)
{
    LoadImage("art\\hudradar.bmp");
    InitPhysicalDesc();
}

Radar::~Radar() = default;

bool Radar::Update(float p_dt)
{
    (void)p_dt;
    return true;
}

bool Radar::Render()
{
    if (m_pImage && ui::HasPicture(*m_pImage))
    {
        m_pImage->Draw(ui::Whole(m_pPhysicalDesc->GetX()), ui::Whole(m_pPhysicalDesc->GetY()), 0.0, true);
    }
    return true;
}

Radar::Blip Radar::PlaceBlip(double p_playerX, double p_playerY, double p_heading, int32_t p_zoom, double p_objectX,
                             double p_objectY, uint8_t p_red, uint8_t p_green, uint8_t p_blue)
{
    Blip blip;
    blip.red = p_red;
    blip.green = p_green;
    blip.blue = p_blue;
    const int32_t scale = (p_zoom < 1 ? 1 : p_zoom) * ZOOM_SCALE / 80;
    double dx = (p_playerX - p_objectX) / scale;
    double dy = (p_playerY - p_objectY) / scale;
    const double distance = std::sqrt(dx * dx + dy * dy);
    if (distance > RIM)
    {
        dx *= RIM / distance;
        dy *= RIM / distance;
        blip.red = 255;
        blip.green = 255;
        blip.blue = 0;
        blip.onRim = true;
    }
    // Turned by 180 - heading, as the camera turns the world (the offset runs from the object
    // to the player, hence the half turn): a blip shows where its object shows on the screen.
    const double b = (180.0 - p_heading) * DEG2RAD;
    blip.x = std::cos(b) * dx - std::sin(b) * dy;
    blip.y = std::sin(b) * dx + std::cos(b) * dy;
    return blip;
}

void Radar::CollectBlips(const CollisionGrid& p_grid, const WorldObject& p_player, std::vector<Blip>& p_blips) const
{
    const double px = p_player.GetX();
    const double py = p_player.GetY();
    const double heading = p_player.GetHeading();
    const int size = p_grid.GetSize();
    for (int row = 0; row < size; ++row)
    {
        for (int column = 0; column < size; ++column)
        {
            const QuadNode* cell = p_grid.GetCell(row, column);
            if (cell == nullptr)
            {
                continue;
            }
            for (const WorldObject* object = cell->GetList(LAYER_SHIPS); object != nullptr;
                 object = object->GetNextInList())
            {
                p_blips.push_back(PlaceBlip(px, py, heading, m_zoom, object->GetX(), object->GetY(), 255, 0, 0));
            }
            for (const WorldObject* object = cell->GetList(LAYER_SCENERY); object != nullptr;
                 object = object->GetNextInList())
            {
                p_blips.push_back(PlaceBlip(px, py, heading, m_zoom, object->GetX(), object->GetY(), 255, 255, 255));
            }
        }
    }
}

void Radar::Draw(int32_t p_x, int32_t p_y, const WorldObject* p_player)
{
    SetPosition(static_cast<float>(p_x), static_cast<float>(p_y));
    Render();

    const Level* level = Level::GetCurrent();
    const CollisionGrid* grid = level != nullptr ? level->GetGrid() : nullptr;
    // The mission always has its level while the HUD draws; anywhere else the radar stays empty.
    if (grid == nullptr || p_player == nullptr)
    {
        return;
    }
    m_blips.clear();
    CollectBlips(*grid, *p_player, m_blips);

    // Squares in logical units rather than GL points, whose size is in display pixels: the
    // blips keep their size on the radar at every resolution.
    const double half = BLIP_SIZE / 2.0;
    glPushMatrix();
    glTranslated(p_x + CENTRE_X, p_y + CENTRE_Y, 0.0);
    glDisable(GL_TEXTURE_2D);
    glBegin(GL_QUADS);
    for (const Blip& blip : m_blips)
    {
        glColor4ub(blip.red, blip.green, blip.blue, 255);
        glVertex2d(blip.x - half, blip.y - half);
        glVertex2d(blip.x - half, blip.y + half);
        glVertex2d(blip.x + half, blip.y + half);
        glVertex2d(blip.x + half, blip.y - half);
    }
    glEnd();
    glEnable(GL_TEXTURE_2D);
    glColor4ub(255, 255, 255, 255);
    glPopMatrix();
}
