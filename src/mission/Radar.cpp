#include "mission/Radar.h"

#include "gfx/TextureManager.h"
#include "platform/Gl.h"
#include "sim/CollisionGrid.h"
#include "sim/Layers.h"
#include "sim/Level.h"
#include "sim/MathTables.h"
#include "sim/QuadNode.h"
#include "sim/WorldObject.h"
#include "ui/UiDraw.h"

#include <array>
#include <cmath>
#include <numbers>

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

namespace
{
// One stretch of the picture along an axis, drawn over one stretch of the screen; a stretch
// whose picture runs backwards is turned over.
struct Span
{
    double screenFrom;
    double screenTo;
    double pictureFrom;
    double pictureTo;
};

// The two stretches of an axis on either side of the dial's centre. The picture has the flush
// side before its centre p_flush and the round side after it, up to p_size.
std::array<Span, 2> Spans(HudAlign p_align, double p_centre, double p_flush, double p_size)
{
    const double round = p_size - p_flush;
    switch (p_align)
    {
    case HudAlign::LOW:
        return {Span{p_centre - p_flush, p_centre, 0.0, p_flush}, Span{p_centre, p_centre + round, p_flush, p_size}};
    case HudAlign::HIGH:
        return {Span{p_centre - round, p_centre, p_size, p_flush}, Span{p_centre, p_centre + p_flush, p_flush, 0.0}};
    default:
        return {Span{p_centre - round, p_centre, p_size, p_flush}, Span{p_centre, p_centre + round, p_flush, p_size}};
    }
}

// Picture coordinates to texture coordinates: texture rows run bottom-up.
void PictureVertex(double p_screenX, double p_screenY, double p_pictureX, double p_pictureY, double p_width,
                   double p_height)
{
    glTexCoord2d(p_pictureX / p_width, 1.0 - p_pictureY / p_height);
    glVertex2d(p_screenX, p_screenY);
}

constexpr int DIAL_SEGMENTS = 72;
} // namespace

void Radar::DrawTurned(const HudLayout::RadarPlace& p_place)
{
    const TextureNode* texture = m_pImage ? m_pImage->GetTexture() : nullptr;
    if (texture == nullptr || texture->m_textureId == 0 || !ui::HasPicture(*m_pImage))
    {
        return;
    }
    const double width = texture->m_width;
    const double height = texture->m_height;
    const double x = p_place.centreX;
    const double y = p_place.centreY;
    glBindTexture(GL_TEXTURE_2D, texture->m_textureId);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glColor4ubv(m_pImage->GetColor());

    glBegin(GL_QUADS);
    for (const Span& across : Spans(p_place.horizontal, x, CENTRE_X, width))
    {
        for (const Span& down : Spans(p_place.vertical, y, CENTRE_Y, height))
        {
            PictureVertex(across.screenFrom, down.screenFrom, across.pictureFrom, down.pictureFrom, width, height);
            PictureVertex(across.screenFrom, down.screenTo, across.pictureFrom, down.pictureTo, width, height);
            PictureVertex(across.screenTo, down.screenTo, across.pictureTo, down.pictureTo, width, height);
            PictureVertex(across.screenTo, down.screenFrom, across.pictureTo, down.pictureFrom, width, height);
        }
    }
    glEnd();

    // Over the turned plate, the dial as the picture has it.
    glBegin(GL_TRIANGLE_FAN);
    PictureVertex(x, y, CENTRE_X, CENTRE_Y, width, height);
    for (int i = 0; i <= DIAL_SEGMENTS; ++i)
    {
        const double angle = 2.0 * std::numbers::pi * i / DIAL_SEGMENTS;
        const double dx = std::cos(angle) * DIAL_RADIUS;
        const double dy = std::sin(angle) * DIAL_RADIUS;
        PictureVertex(x + dx, y + dy, CENTRE_X + dx, CENTRE_Y + dy, width, height);
    }
    glEnd();

    glBlendFunc(GL_ONE, GL_ZERO);
    glDisable(GL_BLEND);
    glColor4ub(255, 255, 255, 255);
}

void Radar::Draw(const HudLayout::RadarPlace& p_place, const WorldObject* p_player)
{
    // Where the picture's corner would be; the dial's centre is the same in any case.
    SetPosition(static_cast<float>(p_place.centreX - CENTRE_X), static_cast<float>(p_place.centreY - CENTRE_Y));
    if (p_place.horizontal == HudAlign::LOW && p_place.vertical == HudAlign::LOW)
    {
        Render();
    }
    else
    {
        DrawTurned(p_place);
    }

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
    glTranslated(p_place.centreX, p_place.centreY, 0.0);
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
