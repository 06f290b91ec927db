#include "input/Mouse.h"

#include "platform/System.h"

#include <cassert>
#include <utility>

Mouse::Mouse() : m_states{}, m_pCurrent(&m_states[0]), m_pPrevious(&m_states[1]) {}

Mouse::~Mouse()
{
    Release();
}

void Mouse::Init(platform::RawInput* p_directInput, platform::Window* p_window)
{
    if (p_directInput != nullptr)
    {
        m_pDevice = p_directInput->CreateMouse();
    }
    if (!m_pDevice)
    {
        platform::ShowMessageBox("Failed create mouse interface.", "ERROR");
    }
    if (!m_pDevice || !m_pDevice->SetDataFormat())
    {
        platform::ShowMessageBox("Failed to set mouse data format.", "ERROR");
    }
    if (!m_pDevice || !m_pDevice->SetCooperativeLevel(p_window))
    {
        platform::ShowMessageBox("Failed to set mouse cooperative level.", "ERROR");
    }
    if (m_pDevice)
    {
        m_pDevice->Acquire();
    }
    m_states[0] = platform::RawMouseState();
    m_states[1] = platform::RawMouseState();
    m_pCurrent = &m_states[0];
    m_pPrevious = &m_states[1];
    if (!m_pDevice || !m_pDevice->GetState(*m_pCurrent))
    {
        platform::ShowMessageBox("Failed to get mouse device state.", "ERROR");
    }
}

void Mouse::Release()
{
    if (m_pDevice)
    {
        m_pDevice->Unacquire();
        m_pDevice.reset();
    }
}

bool Mouse::Poll()
{
    std::swap(m_pCurrent, m_pPrevious);
    if (m_pDevice && (m_pDevice->GetState(*m_pCurrent) || (m_pDevice->Acquire() && m_pDevice->GetState(*m_pCurrent))))
    {
        return true;
    }
    // A lost mouse neither moves nor holds a button, rather than repeating an old poll.
    *m_pCurrent = platform::RawMouseState();
    return false;
}

void Mouse::GetDelta(int32_t& p_dx, int32_t& p_dy) const
{
    p_dx = m_pCurrent->lX;
    p_dy = m_pCurrent->lY;
}

int32_t Mouse::GetWheel() const
{
    return m_pCurrent->lZ;
}

bool Mouse::IsDownIn(const platform::RawMouseState& p_state, int32_t p_button)
{
    assert(p_button >= 0 && p_button < 4 && "p_button < 4");
    return p_button >= 0 && p_button < platform::RAW_MOUSE_BUTTONS &&
           (p_state.rgbButtons[p_button] & platform::RAW_DOWN) != 0;
}

bool Mouse::IsButtonDown(int32_t p_button) const
{
    return IsDownIn(*m_pCurrent, p_button);
}

bool Mouse::IsButtonUp(int32_t p_button) const
{
    return !IsDownIn(*m_pCurrent, p_button);
}

bool Mouse::ButtonPressed(int32_t p_button) const
{
    return IsDownIn(*m_pCurrent, p_button) && !IsDownIn(*m_pPrevious, p_button);
}

bool Mouse::ButtonReleased(int32_t p_button) const
{
    return !IsDownIn(*m_pCurrent, p_button) && IsDownIn(*m_pPrevious, p_button);
}
