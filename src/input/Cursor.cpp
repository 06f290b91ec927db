#include "input/Cursor.h"

#include "input/Mouse.h"

#include <cassert>
#include <cmath>

namespace
{
const char* const CURSOR_PICTURE = "art\\cursor.bmp";
constexpr double SCREEN_WIDTH = 1024.0;
constexpr double SCREEN_HEIGHT = 768.0;
// Mouse counts to logical pixels.
constexpr double SPEED = 2.0;
} // namespace

Cursor::Cursor() : m_offsetX(0.0), m_offsetY(0.0), m_pMouse(nullptr), m_initialized(false)
{
    // The shared cursor is a program-wide object; asking the image registry now makes the
    // registry outlive it, so the cursor's picture can still sign out of it at exit.
    Image::GetRegisteredCount();
}

Cursor::~Cursor() = default;

bool Cursor::Init(const char* p_fileName, double p_x, double p_y, Mouse* p_mouse)
{
    (void)p_fileName;
    if (m_initialized)
    {
        return false;
    }
    LoadImage(CURSOR_PICTURE);
    m_offsetX = p_x;
    m_offsetY = p_y;
    m_pMouse = p_mouse;
    m_pPhysicalDesc = std::make_unique<PhysicalDesc>();
    m_pPhysicalDesc->SetPosition(p_x, p_y);
    m_initialized = true;
    return true;
}

void Cursor::Rebind(Mouse* p_mouse)
{
    m_pMouse = p_mouse;
    if (p_mouse != nullptr && m_pImage)
    {
        m_pImage->Load(CURSOR_PICTURE);
    }
}

bool Cursor::Update(float p_dt)
{
    (void)p_dt;
    if (m_pMouse == nullptr || !m_pPhysicalDesc)
    {
        return false;
    }
    int32_t dx = 0;
    int32_t dy = 0;
    m_pMouse->GetDelta(dx, dy);
    double x = m_pPhysicalDesc->GetX() + SPEED * dx;
    double y = m_pPhysicalDesc->GetY() + SPEED * dy;
    if (x < 0.0)
    {
        x = 0.0;
    }
    else if (x >= SCREEN_WIDTH)
    {
        x = SCREEN_WIDTH - 1.0;
    }
    if (y < 0.0)
    {
        y = 0.0;
    }
    else if (y >= SCREEN_HEIGHT)
    {
        y = SCREEN_HEIGHT - 1.0;
    }
    m_pPhysicalDesc->SetPosition(x, y);
    return true;
}

bool Cursor::Render()
{
    if (!m_pImage || !m_pPhysicalDesc)
    {
        return false;
    }
    return m_pImage->Draw(std::trunc(m_pPhysicalDesc->GetX()), std::trunc(m_pPhysicalDesc->GetY()), 0.0, true);
}

bool Cursor::GetPosition(int32_t& p_x, int32_t& p_y) const
{
    assert(m_pPhysicalDesc && "m_pPhysicalDesc");
    assert(m_pMouse && "m_pMouse");
    if (!m_pPhysicalDesc)
    {
        p_x = 0;
        p_y = 0;
        return false;
    }
    p_x = static_cast<int32_t>(m_pPhysicalDesc->GetX() + m_offsetX);
    p_y = static_cast<int32_t>(m_pPhysicalDesc->GetY() + m_offsetY);
    return m_pMouse != nullptr && m_pMouse->IsButtonDown(0);
}
