#include "sim/PhysicalDesc.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>

#include "platform/Gl.h"
#include "sim/MathTables.h"

namespace
{
// The two triangles of a w x h box whose top-left corner is (x, y).
void FillBox(std::vector<Triangle>& p_triangles, double p_x, double p_y, double p_width, double p_height)
{
    p_triangles.assign(2, Triangle{});
    p_triangles[0] = Triangle{p_x, p_y, p_x, p_y + p_height, p_x + p_width, p_y};
    p_triangles[1] = Triangle{p_x + p_width, p_y + p_height, p_x, p_y + p_height, p_x + p_width, p_y};
}
} // namespace

PhysicalDesc::PhysicalDesc()
{
    SetBox(DEFAULT_BOX_SIZE, DEFAULT_BOX_SIZE, 0, 0);
}

void PhysicalDesc::Update(float p_dt)
{
    m_heading += p_dt * m_rotationSpeed;

    // Keep the heading in [0, 360) by its fraction of a full turn.
    if (m_heading >= 360.0)
    {
        const double turns = m_heading / 360.0;
        m_heading = (turns - std::trunc(turns)) * 360.0;
    }
    else if (m_heading < 0.0)
    {
        const double turns = m_heading / 360.0;
        m_heading = (turns - std::trunc(turns)) * 360.0 + 360.0;
        if (m_heading == 360.0)
        {
            m_heading = 0.0;
        }
    }

    // Applied twice on purpose: every acceleration in the part and entity files is tuned to it.
    m_speed += 2 * p_dt * m_acceleration;

    // Nearest whole degree for the shape tables; 359.5 and up rounds to 360, which is 0.
    // A heading that is not a finite number (a broken rate) also falls back to 0 rather
    // than indexing outside the tables.
    const double rounded = std::trunc(m_heading + 0.5);
    const int index = (rounded >= 0.0 && rounded < 360.0) ? static_cast<int>(rounded) : 0;

    const double radians = m_heading * DEG2RAD;
    const double s = std::sin(radians);
    const double c = std::cos(radians);
    m_velocity.x = s * m_speed;
    m_velocity.y = -c * m_speed;
    // Strafing scales with the forward speed: a ship standing still does not slide.
    m_strafeVelocity.x = c * m_strafe * m_speed;
    m_strafeVelocity.y = s * m_strafe * m_speed;

    const double vx = m_velocity.x + m_strafeVelocity.x;
    const double vy = m_velocity.y + m_strafeVelocity.y;
    if (m_rotationSpeed == 0.0)
    {
        m_x += vx * p_dt;
        m_y += vy * p_dt;
    }
    else
    {
        // A turning object follows an arc: step to the centre of the turning circle, then
        // back out along the offset turned by the angle covered in this step.
        const double w = DEG2RAD * m_rotationSpeed;
        const double a = vy / w;
        const double b = -vx / w;
        m_x += a;
        m_y += b;
        const double theta = p_dt * w;
        const double cosTheta = std::cos(theta);
        const double sinTheta = std::sin(theta);
        const double backA = -a;
        const double backB = -b;
        m_x += backA * cosTheta + backB * sinTheta;
        m_y += backB * cosTheta - backA * sinTheta;
    }

    // The shape turns by whole degrees only (the sprite uses the exact heading).
    const double tc = g_cosTable[index];
    const double ts = g_sinTable[index];
    const std::size_t count = m_localTriangles.size();
    m_worldTriangles.resize(count);
    for (std::size_t k = 0; k < count; ++k)
    {
        const Triangle& local = m_localTriangles[k];
        Triangle& world = m_worldTriangles[k];
        world.x1 = local.x1 * tc - local.y1 * ts + m_x;
        world.y1 = local.x1 * ts + local.y1 * tc + m_y;
        world.x2 = local.x2 * tc - local.y2 * ts + m_x;
        world.y2 = local.x2 * ts + local.y2 * tc + m_y;
        world.x3 = local.x3 * tc - local.y3 * ts + m_x;
        world.y3 = local.x3 * ts + local.y3 * tc + m_y;
    }
    UpdateWorldBounds();
}

void PhysicalDesc::SetBox(unsigned p_width, unsigned p_height, short p_x, short p_y)
{
    m_boxWidth = p_width;
    m_boxHeight = p_height;
    m_boxX = p_x;
    m_boxY = p_y;

    const double width = p_width;
    const double height = p_height != 0 ? p_height : p_width;
    FillBox(m_localTriangles, p_x, p_y, width, height);
    // The next Update overwrites the world shape; until then it is the local one.
    m_worldTriangles = m_localTriangles;
    m_numTriangles = 2;
    UpdateWorldBounds();
}

bool PhysicalDesc::SetTriangles(const Triangle* p_triangles, int p_count)
{
    if (p_count < 0 || (p_count > 0 && p_triangles == nullptr))
    {
        return false;
    }
    m_localTriangles.assign(p_triangles, p_triangles + p_count);
    m_worldTriangles.assign(static_cast<std::size_t>(p_count), Triangle{});
    m_numTriangles = p_count;
    UpdateWorldBounds();
    return true;
}

void PhysicalDesc::UpdateWorldBounds()
{
    const double inf = std::numeric_limits<double>::infinity();
    m_worldMin = Vector2{inf, inf};
    m_worldMax = Vector2{-inf, -inf};
    for (const Triangle& t : m_worldTriangles)
    {
        m_worldMin.x = std::min({m_worldMin.x, t.x1, t.x2, t.x3});
        m_worldMin.y = std::min({m_worldMin.y, t.y1, t.y2, t.y3});
        m_worldMax.x = std::max({m_worldMax.x, t.x1, t.x2, t.x3});
        m_worldMax.y = std::max({m_worldMax.y, t.y1, t.y2, t.y3});
    }
}

void PhysicalDesc::RenderTriangles() const
{
    glDisable(GL_TEXTURE_2D);
    glColor3ub(255, 0, 0);
    glBegin(GL_LINES);
    for (const Triangle& t : m_worldTriangles)
    {
        glVertex2d(t.x1, t.y1);
        glVertex2d(t.x2, t.y2);
        glVertex2d(t.x2, t.y2);
        glVertex2d(t.x3, t.y3);
        glVertex2d(t.x3, t.y3);
        glVertex2d(t.x1, t.y1);
    }
    glEnd();
}
