#include "gfx/Camera.h"

#include <cmath>
#include <limits>
#include <numbers>

#include "app/Application.h"
#include "platform/Gl.h"
#include "sim/GameObject.h"
#include "sim/MathTables.h"

namespace
{
// Half the screen's diagonal plus one tile: sqrt(1024² + 768²) / 2 + 128 = 768.
const double VIEW_RADIUS = std::sqrt(1638400.0) / 2.0 + 128.0;

int32_t TruncateToInt(double p_value)
{
    // A followed point far outside any map (or not a number) must not overflow the cast.
    if (!(p_value > static_cast<double>(std::numeric_limits<int32_t>::min())))
    {
        return std::numeric_limits<int32_t>::min();
    }
    if (!(p_value < static_cast<double>(std::numeric_limits<int32_t>::max())))
    {
        return std::numeric_limits<int32_t>::max();
    }
    return static_cast<int32_t>(p_value);
}
} // namespace

Camera::Camera()
{
    const int32_t width = g_pApplication != nullptr ? g_pApplication->GetScreenWidth() : Application::SCREEN_WIDTH;
    const int32_t height = g_pApplication != nullptr ? g_pApplication->GetScreenHeight() : Application::SCREEN_HEIGHT;
    m_halfWidth = width / 2.0;
    m_halfHeight = height / 2.0;
    m_view = ViewRect{0, 0, width, height};
}

void Camera::Follow(GameObject* p_target)
{
    const PhysicalDesc* desc = p_target != nullptr ? p_target->GetPhysicalDesc() : nullptr;
    if (desc == nullptr)
    {
        return;
    }
    const Vector2& velocity = desc->GetVelocity();
    const double speed = std::sqrt(velocity.x * velocity.x + velocity.y * velocity.y);
    double dx = 0.0;
    double dy = 0.0;
    if (speed > 0.0)
    {
        dx = velocity.x / speed;
        dy = velocity.y / speed;
    }
    else
    {
        const double a = desc->GetHeading() * DEG2RAD;
        dx = std::sin(a);
        dy = -std::cos(a);
    }
    m_x = desc->GetX() + dx;
    m_y = desc->GetY() + dy;
}

void Camera::SetAngle(double p_angle)
{
    m_angle = -p_angle;
    if (m_angle >= 360.0)
    {
        m_angle -= 360.0;
    }
    else if (m_angle < 0.0)
    {
        m_angle += 360.0;
    }
}

void Camera::RefreshView()
{
    m_view.left = TruncateToInt(m_x - VIEW_RADIUS);
    m_view.top = TruncateToInt(m_y - VIEW_RADIUS);
    m_view.right = TruncateToInt(VIEW_RADIUS + m_x);
    m_view.bottom = TruncateToInt(VIEW_RADIUS + m_y);
}

Vector2 Camera::GetTranslation() const
{
    const double a = m_angle * DEG2RAD;
    const double c = std::cos(a);
    const double s = std::sin(a);
    // The point shown at the screen centre; the followed point lands LEAD units below it.
    const double e = m_x - LEAD * s;
    const double f = m_y - LEAD * c;
    // The screen centre turned back by the view angle. Written out directly rather than
    // through the tangent, so no angle divides by zero.
    return Vector2{m_halfWidth * c + m_halfHeight * s - e, -m_halfWidth * s + m_halfHeight * c - f};
}

Vector2 Camera::WorldToScreen(double p_x, double p_y) const
{
    // As OpenGL applies it: translate, then turn by m_angle degrees (true degrees, not the
    // game's 22/7 ones).
    const Vector2 t = GetTranslation();
    const double x = p_x + t.x;
    const double y = p_y + t.y;
    const double a = m_angle * std::numbers::pi / 180.0;
    return Vector2{x * std::cos(a) - y * std::sin(a), x * std::sin(a) + y * std::cos(a)};
}

void Camera::Apply()
{
    RefreshView();
    const Vector2 t = GetTranslation();
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    glRotated(m_angle, 0.0, 0.0, 1.0);
    glTranslated(t.x, t.y, 0.0);
}
