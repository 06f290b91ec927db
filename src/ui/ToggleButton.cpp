#include "ui/ToggleButton.h"

ToggleButton::ToggleButton(Cursor* p_pCursor) : Button(p_pCursor) {}

ToggleButton::~ToggleButton() = default;

bool ToggleButton::Update(float p_dt)
{
    (void)p_dt;
    int32_t x = 0;
    int32_t y = 0;
    const bool down = ReadCursor(x, y);
    if (!m_lastButtonDown && down && IsInside(x, y))
    {
        m_pressed = !m_pressed;
    }
    m_lastButtonDown = down;
    m_lastX = x;
    m_lastY = y;
    return true;
}
