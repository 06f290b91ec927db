#include "sim/LaserBeam.h"

#include <cmath>

#include "platform/Gl.h"
#include "sim/Level.h"
#include "sim/MathTables.h"

namespace
{
// (p_x, p_y) turned by p_turn radians, the way the beams are spread.
Vector2 Turn(double p_x, double p_y, double p_turn)
{
    const double c = std::cos(p_turn);
    const double s = std::sin(p_turn);
    return Vector2{p_x * c + p_y * s, -p_x * s + p_y * c};
}
} // namespace

LaserBeam::LaserBeam() : LaserBeam(std::vector<double>{0.0}) {}

LaserBeam::LaserBeam(std::vector<double> p_turns) : m_turns(std::move(p_turns)), m_beams(m_turns.size()) {}

MultiLaserBurst::MultiLaserBurst() : LaserBeam(std::vector<double>{0.0, 330.0 * DEG2RAD, -330.0 * DEG2RAD})
{
    m_hitKind = HIT_KIND_BEAM;
}

void LaserBeam::MakeStrip(double p_turn, Triangle* p_triangles)
{
    for (int i = 0; i < STRIP_TRIANGLES; ++i)
    {
        const double k = 2.0 * i;
        const Vector2 a = Turn(5.0, -10.0 * k, p_turn);
        const Vector2 b = Turn(-5.0, -10.0 * (k + 1.0), p_turn);
        const Vector2 c = Turn(5.0, -10.0 * (k + 2.0), p_turn);
        p_triangles[i] = Triangle{a.x, a.y, b.x, b.y, c.x, c.y};
    }
}

void LaserBeam::AimBeams(const PhysicalDesc& p_shooter)
{
    const Vector2& velocity = p_shooter.GetVelocity();
    const double length = std::sqrt(velocity.x * velocity.x + velocity.y * velocity.y);
    Vector2 unit;
    if (length > 0.0)
    {
        unit = Vector2{velocity.x / length, velocity.y / length};
    }
    else
    {
        // A shooter standing still has no flight direction: the beam goes where it faces.
        const double radians = p_shooter.GetHeading() * DEG2RAD;
        unit = Vector2{std::sin(radians), -std::cos(radians)};
    }
    for (size_t j = 0; j < m_turns.size(); ++j)
    {
        const Vector2 turned = Turn(unit.x, unit.y, m_turns[j]);
        m_beams[j] = Vector2{turned.x * BEAM_LENGTH, turned.y * BEAM_LENGTH};
    }
}

void LaserBeam::Launch(const PhysicalDesc& p_shooter, uint16_t p_mountX, uint16_t p_mountY)
{
    Projectile::Launch(p_shooter, p_mountX, p_mountY);
    m_pPhysicalDesc->SetSpeed(p_shooter.GetSpeed());
    m_pPhysicalDesc->SetHeading(p_shooter.GetHeading());
    AimBeams(p_shooter);
    std::vector<Triangle> shape(m_turns.size() * STRIP_TRIANGLES);
    for (size_t j = 0; j < m_turns.size(); ++j)
    {
        MakeStrip(m_turns[j], &shape[j * STRIP_TRIANGLES]);
    }
    m_pPhysicalDesc->SetTriangles(shape.data(), static_cast<int>(shape.size()));
    m_mountX = p_mountX;
    m_mountY = p_mountY;
}

bool LaserBeam::Update(float p_dt)
{
    if (!m_pPhysicalDesc)
    {
        return false;
    }
    if (m_age > HURT_TIME)
    {
        m_alpha = static_cast<int>(std::trunc(255.0 - (m_age - HURT_TIME) * 255.0 * FADE_RATE));
        m_pPhysicalDesc->SetTriangles(nullptr, 0);
    }
    if (m_alpha <= 0)
    {
        m_dead = true;
    }
    ++m_updateCount;
    m_pPhysicalDesc->Update(p_dt);
    m_age += p_dt;

    if (m_team == TEAM_PLAYER)
    {
        Level* level = Level::GetCurrent();
        WorldObject* player = level != nullptr ? level->GetPlayer() : nullptr;
        const PhysicalDesc* ship = player != nullptr ? player->GetPhysicalDesc() : nullptr;
        if (ship != nullptr)
        {
            m_pPhysicalDesc->SetHeading(ship->GetHeading());
            const Vector2 point = LaunchPoint(ship->GetX(), ship->GetY(), ship->GetHeading(), m_mountX, m_mountY);
            m_pPhysicalDesc->SetPosition(point.x, point.y);
            AimBeams(*ship);
        }
    }
    return true;
}

bool LaserBeam::Render()
{
    if (!m_pPhysicalDesc)
    {
        return false;
    }
    const double x = m_pPhysicalDesc->GetX();
    const double y = m_pPhysicalDesc->GetY();
    const int alpha = m_alpha > 0 ? (m_alpha < 255 ? m_alpha : 255) : 0;
    const int farAlpha = alpha - 127 > 0 ? alpha - 127 : 0;
    glDisable(GL_TEXTURE_2D);
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glLineWidth(5.0f);
    glBegin(GL_LINES);
    for (const Vector2& beam : m_beams)
    {
        glColor4ub(0, 255, 255, static_cast<GLubyte>(alpha));
        glVertex2d(x, y);
        glColor4ub(0, 255, 255, static_cast<GLubyte>(farAlpha));
        glVertex2d(x + beam.x, y + beam.y);
    }
    glEnd();
    glLineWidth(1.0f);
    glBlendFunc(GL_ONE, GL_ZERO);
    glDisable(GL_BLEND);
    glEnable(GL_TEXTURE_2D);
    return true;
}
