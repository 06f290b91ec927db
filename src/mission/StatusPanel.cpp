#include "mission/StatusPanel.h"

#include "platform/Gl.h"
#include "sim/PlayerShip.h"
#include "ui/UiDraw.h"

namespace
{
// A horizontal bar p_width thick centred on p_y, as a quad in logical units: a GL line's width
// counts display pixels and would not fill its trough at other resolutions.
void DrawBar(double p_x, double p_y, double p_length, int32_t p_width, uint8_t p_red, uint8_t p_green,
             uint8_t p_blue)
{
    if (p_length <= 0.0)
    {
        return;
    }
    const double half = p_width / 2.0;
    glColor4ub(p_red, p_green, p_blue, 255);
    glVertex2d(p_x, p_y - half);
    glVertex2d(p_x, p_y + half);
    glVertex2d(p_x + p_length, p_y + half);
    glVertex2d(p_x + p_length, p_y - half);
}
} // namespace

StatusPanel::StatusPanel(const PlayerShip* p_ship) : m_energy(0), m_bullets(0), m_missiles(0), m_hasStartCounts(false)
{
    LoadImage("art\\hudstats.bmp");
    InitPhysicalDesc();
    if (p_ship != nullptr)
    {
        SetStartCounts(*p_ship);
    }
}

StatusPanel::~StatusPanel() = default;

void StatusPanel::SetStartCounts(const PlayerShip& p_ship)
{
    const Pilot& pilot = p_ship.GetPilot();
    m_energy = pilot.GetEnergy();
    m_bullets = pilot.GetBullets();
    m_missiles = pilot.GetMissiles();
    m_hasStartCounts = true;
}

bool StatusPanel::Update(float p_dt)
{
    (void)p_dt;
    return true;
}

bool StatusPanel::Render()
{
    if (m_pImage && ui::HasPicture(*m_pImage))
    {
        m_pImage->Draw(ui::Whole(m_pPhysicalDesc->GetX()), ui::Whole(m_pPhysicalDesc->GetY()), 0.0, true);
    }
    return true;
}

double StatusPanel::BarLength(int32_t p_length, double p_current, double p_full)
{
    if (!(p_full > 0.0) || !(p_current > 0.0))
    {
        return 0.0;
    }
    // Never past the end of its trough, should a count grow beyond where it started.
    const double fraction = p_current >= p_full ? 1.0 : p_current / p_full;
    return p_length * fraction;
}

StatusPanel::Bars StatusPanel::Measure(const PlayerShip& p_ship) const
{
    const Pilot& pilot = p_ship.GetPilot();
    Bars bars;
    bars.armour = BarLength(FULL_BAR_LENGTH, p_ship.GetArmour(), p_ship.GetMaxArmour());
    bars.shield = BarLength(FULL_BAR_LENGTH, p_ship.GetShield(), p_ship.GetMaxShield());
    bars.bullets = BarLength(AMMO_BAR_LENGTH, pilot.GetBullets(), m_bullets);
    bars.missiles = BarLength(AMMO_BAR_LENGTH, pilot.GetMissiles(), m_missiles);
    bars.energy = BarLength(AMMO_BAR_LENGTH, pilot.GetEnergy(), m_energy);
    return bars;
}

void StatusPanel::Draw(int32_t p_x, int32_t p_y, const PlayerShip& p_ship)
{
    SetPosition(static_cast<float>(p_x), static_cast<float>(p_y));
    Render();

    const Bars bars = Measure(p_ship);
    glDisable(GL_TEXTURE_2D);
    glBegin(GL_QUADS);
    DrawBar(p_x + BAR_X, p_y + ARMOUR_Y, bars.armour, BAR_WIDTH, 255, 0, 0);
    DrawBar(p_x + BAR_X, p_y + SHIELD_Y, bars.shield, BAR_WIDTH, 0, 0, 255);
    DrawBar(p_x + AMMO_BAR_X, p_y + BULLET_Y, bars.bullets, AMMO_BAR_WIDTH, 0, 200, 0);
    DrawBar(p_x + AMMO_BAR_X, p_y + MISSILE_Y, bars.missiles, AMMO_BAR_WIDTH, 255, 255, 0);
    DrawBar(p_x + AMMO_BAR_X, p_y + ENERGY_Y, bars.energy, AMMO_BAR_WIDTH, 0, 255, 255);
    glEnd();
    glEnable(GL_TEXTURE_2D);
    glColor4ub(255, 255, 255, 255);
}
