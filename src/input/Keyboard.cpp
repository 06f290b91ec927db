#include "input/Keyboard.h"

#include "platform/System.h"

#include <utility>

Keyboard::Keyboard() : m_states{}, m_pCurrent(&m_states[0]), m_pPrevious(&m_states[1]) {}

Keyboard::~Keyboard()
{
    Release();
}

void Keyboard::Init(platform::RawInput* p_directInput, platform::Window* p_window)
{
    if (p_directInput != nullptr)
    {
        m_pDevice = p_directInput->CreateKeyboard();
    }
    if (!m_pDevice)
    {
        platform::ShowMessageBox("Failed to create keyboard device.", "ERROR");
    }
    if (!m_pDevice || !m_pDevice->SetDataFormat())
    {
        platform::ShowMessageBox("Failed to set keyboard data format.", "ERROR");
    }
    if (!m_pDevice || !m_pDevice->SetCooperativeLevel(p_window))
    {
        platform::ShowMessageBox("Failed to set keyboard cooperative level.", "ERROR");
    }
    if (m_pDevice)
    {
        m_pDevice->Acquire();
    }
    m_states[0].fill(0);
    m_states[1].fill(0);
    m_pCurrent = &m_states[0];
    m_pPrevious = &m_states[1];
}

void Keyboard::Release()
{
    if (m_pDevice)
    {
        m_pDevice->Unacquire();
        m_pDevice.reset();
    }
}

bool Keyboard::Poll()
{
    std::swap(m_pCurrent, m_pPrevious);
    if (m_pDevice && (m_pDevice->GetState(*m_pCurrent) || (m_pDevice->Acquire() && m_pDevice->GetState(*m_pCurrent))))
    {
        return true;
    }
    // A keyboard that cannot be read holds no key, rather than the keys of two polls ago.
    m_pCurrent->fill(0);
    return false;
}

bool Keyboard::IsDownIn(const platform::RawKeyState& p_state, int32_t p_code)
{
    return p_code >= 0 && p_code < platform::RAW_KEY_COUNT && (p_state[p_code] & platform::RAW_DOWN) != 0;
}

bool Keyboard::IsKeyDown(int32_t p_code) const
{
    return IsDownIn(*m_pCurrent, p_code);
}

bool Keyboard::IsKeyUp(int32_t p_code) const
{
    return !IsDownIn(*m_pCurrent, p_code);
}

bool Keyboard::KeyPressed(int32_t p_code) const
{
    return IsDownIn(*m_pCurrent, p_code) && !IsDownIn(*m_pPrevious, p_code);
}

bool Keyboard::KeyReleased(int32_t p_code) const
{
    return !IsDownIn(*m_pCurrent, p_code) && IsDownIn(*m_pPrevious, p_code);
}
