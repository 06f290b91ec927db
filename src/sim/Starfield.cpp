#include "sim/Starfield.h"

#include <algorithm>
#include <cmath>

#include "app/Random.h"
#include "platform/Gl.h"

namespace
{
// The true quarter turn: the field's angle is measured from straight up.
const double HALF_PI = 1.5707963267948966;
// Share of the player's velocity that the stars drift by each frame.
const double DRIFT_SCALE = 0.425;
const int STAR_ALPHA = 150;

int Channel(uint32_t p_color, int p_shift)
{
    return static_cast<int>((p_color >> p_shift) & 0xFF);
}
} // namespace

Starfield::Starfield(int p_capacity, int p_inUse, int p_scheme)
{
    const int capacity = p_capacity < 1 ? DEFAULT_CAPACITY : p_capacity;
    m_stars.resize(static_cast<size_t>(capacity));
    m_inUse = (p_inUse >= 1 && p_inUse < capacity) ? p_inUse : capacity;
    m_scheme = std::clamp(p_scheme, 0, 3);
}

void Starfield::SetScreen(int p_width, int p_height, int p_centerX, int p_centerY)
{
    if (p_width > 0 && p_height > 0)
    {
        m_width = p_width;
        m_height = p_height;
    }
    double extentX = 0.0;
    double extentY = 0.0;
    if (p_centerX < 1 && p_centerY < 1)
    {
        m_centerX = m_width / 2;
        m_centerY = m_height / 2;
        extentX = m_width / 2;
        extentY = m_height / 2;
    }
    else
    {
        m_centerX = p_centerX;
        m_centerY = p_centerY;
        extentX = std::max(m_width - p_centerX, p_centerX);
        extentY = std::max(m_height - p_centerY, p_centerY);
    }
    m_bound = std::max(1, static_cast<int>(std::trunc(std::sqrt(extentX * extentX + extentY * extentY))));

    for (Star& star : m_stars)
    {
        PlaceStar(star);
    }
    for (Star& star : m_stars)
    {
        star.color = MakeColor(star.z);
    }
}

void Starfield::PlaceStar(Star& p_star)
{
    const int z = 25 + GameRand() % 230;
    const int x = (GameRand() % (2 * m_bound) - m_bound) * z + GameRand() % z;
    const int y = (GameRand() % (2 * m_bound) - m_bound) * z + GameRand() % z;
    p_star.z = static_cast<float>(z);
    p_star.x = static_cast<float>(x);
    p_star.y = static_cast<float>(y);
    p_star.currentX = static_cast<int>(std::trunc(p_star.x / p_star.z));
    p_star.currentY = static_cast<int>(std::trunc(p_star.y / p_star.z));
    p_star.previousX = p_star.currentX;
    p_star.previousY = p_star.currentY;
}

uint32_t Starfield::MakeColor(float p_z)
{
    int red = 255;
    int green = 255;
    int blue = 255;
    if (m_scheme == 0)
    {
        const int t = GameRand() % 700;
        if (t < 256)
        {
            red = 255;
            green = 112 + t / 2;
            blue = 50;
        }
        else if (t < 512)
        {
            red = 255;
            green = 255;
            blue = 127 + (t - 256) / 2;
        }
        else
        {
            const int u = (t - 512) / 2;
            red = 127 + u;
            green = ((u - 120) % 256 + 256) % 256;
            blue = 200;
        }
    }
    else
    {
        // Greys, blue-whites or red-whites: two or three channels at one random level.
        const int level = 127 + GameRand() % 128;
        red = m_scheme == 3 ? 255 : level;
        green = level;
        blue = m_scheme == 2 ? 255 : level;
    }
    // Farther stars are dimmer, but none darker than (64, 64, 64).
    const double scale = (255.0 - p_z) / 255.0;
    const auto dim = [scale](int p_channel) {
        return static_cast<uint32_t>(static_cast<int>(p_channel * scale) | 64) & 0xFF;
    };
    return (dim(red) << 16) | (dim(green) << 8) | dim(blue);
}

void Starfield::Move(double p_vx, double p_vy, double p_heading)
{
    const double angle = HALF_PI - p_heading;
    if (!m_hasAngle)
    {
        m_previousAngle = angle;
        m_hasAngle = true;
    }
    // The player's velocity in the ship's own frame (the view turns with the ship): stars
    // stream down the screen as it flies ahead and sideways against its sliding.
    const double sinH = std::sin(p_heading);
    const double cosH = std::cos(p_heading);
    const double ahead = p_vx * sinH + p_vy * cosH;
    const double right = p_vx * cosH - p_vy * sinH;
    const float driftX = static_cast<float>(-right * DRIFT_SCALE);
    const float driftY = static_cast<float>(ahead * DRIFT_SCALE);

    const double turn = angle - m_previousAngle;
    m_previousAngle = angle;
    const double cosT = std::cos(turn);
    const double sinT = std::sin(turn);

    for (int i = 0; i < m_inUse; ++i)
    {
        Star& star = m_stars[static_cast<size_t>(i)];
        if (star.currentX < -m_bound || star.currentX > m_bound || star.currentY < -m_bound || star.currentY > m_bound)
        {
            // Back on the opposite side; it starts there without a streak across the screen.
            star.x = -star.x;
            star.y = -star.y;
            star.currentX = static_cast<int>(std::trunc(star.x / star.z));
            star.currentY = static_cast<int>(std::trunc(star.y / star.z));
        }
        star.previousX = star.currentX;
        star.previousY = star.currentY;
        const double turnedX = star.x * cosT - star.y * sinT;
        const double turnedY = star.x * sinT + star.y * cosT;
        star.currentX = static_cast<int>(std::trunc(turnedX / star.z));
        star.currentY = static_cast<int>(std::trunc(turnedY / star.z));
        star.x = static_cast<float>(turnedX) + driftX;
        star.y = static_cast<float>(turnedY) + driftY;
    }
}

void Starfield::Render()
{
    glMatrixMode(GL_MODELVIEW);
    glPushMatrix();
    glLoadIdentity();
    glTranslated(m_centerX, m_centerY, 0.0);
    glDisable(GL_TEXTURE_2D);
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glLineWidth(0.5f);
    glBegin(GL_LINES);
    for (int i = 0; i < m_inUse; ++i)
    {
        const Star& star = m_stars[static_cast<size_t>(i)];
        glColor4ub(static_cast<GLubyte>(Channel(star.color, 16)), static_cast<GLubyte>(Channel(star.color, 8)),
                   static_cast<GLubyte>(Channel(star.color, 0)), STAR_ALPHA);
        glVertex2i(star.currentX, star.currentY);
        glVertex2i(star.previousX, star.previousY);
    }
    glEnd();
    // A star that has not moved since the last frame still shows as a point.
    glBegin(GL_POINTS);
    for (int i = 0; i < m_inUse; ++i)
    {
        const Star& star = m_stars[static_cast<size_t>(i)];
        if (star.currentX == star.previousX && star.currentY == star.previousY)
        {
            glColor4ub(static_cast<GLubyte>(Channel(star.color, 16)), static_cast<GLubyte>(Channel(star.color, 8)),
                       static_cast<GLubyte>(Channel(star.color, 0)), STAR_ALPHA);
            glVertex2i(star.currentX, star.currentY);
        }
    }
    glEnd();
    glLineWidth(1.0f);
    glBlendFunc(GL_ONE, GL_ZERO);
    glDisable(GL_BLEND);
    glEnable(GL_TEXTURE_2D);
    glPopMatrix();
}
