#include "input/Joystick.h"

#include "platform/System.h"

#include <cstdlib>
#include <utility>

Joystick::Joystick(platform::RawInput* p_directInput, platform::Window* p_window) : m_count(0)
{
    Init(p_directInput, p_window);
}

Joystick::~Joystick()
{
    Release();
}

void Joystick::Init(platform::RawInput* p_directInput, platform::Window* p_window)
{
    if (p_directInput != nullptr)
    {
        const int32_t attached = p_directInput->GetJoystickCount();
        for (int32_t i = 0; i < attached; ++i)
        {
            std::unique_ptr<platform::RawJoystick> device = p_directInput->CreateJoystick(i);
            if (!device)
            {
                continue;
            }
            auto node = std::make_unique<JoystickNode>();
            node->m_pDevice = std::move(device);
            node->m_pNext = std::move(m_pHead);
            m_pHead = std::move(node);
            ++m_count;
        }
    }

    const size_t axes = static_cast<size_t>(m_count) * platform::RAW_JOYSTICK_AXES;
    m_currentAxes.assign(axes, nullptr);
    m_previousAxes.assign(axes, nullptr);
    m_currentButtons.assign(static_cast<size_t>(m_count), nullptr);
    m_previousButtons.assign(static_cast<size_t>(m_count), nullptr);

    size_t j = 0;
    for (JoystickNode* node = m_pHead.get(); node != nullptr; node = node->m_pNext.get(), ++j)
    {
        for (int32_t axis = 0; axis < platform::RAW_JOYSTICK_AXES; ++axis)
        {
            m_currentAxes[j * platform::RAW_JOYSTICK_AXES + axis] = &node->m_pCurrent->Axis(axis);
            m_previousAxes[j * platform::RAW_JOYSTICK_AXES + axis] = &node->m_pPrevious->Axis(axis);
        }
        m_currentButtons[j] = node->m_pCurrent->rgbButtons;
        m_previousButtons[j] = node->m_pPrevious->rgbButtons;

        platform::RawJoystick& device = *node->m_pDevice;
        if (!device.SetDataFormat())
        {
            platform::ShowMessageBox("Failed to set joystick data format.", "ERROR");
        }
        if (!device.SetCooperativeLevel(p_window))
        {
            platform::ShowMessageBox("Failed to set joystick cooperative level.", "ERROR");
        }
        // A window without the focus may never get the device; Poll keeps trying.
        for (int32_t attempt = 0; attempt < ACQUIRE_ATTEMPTS && !device.Acquire(); ++attempt)
        {
        }
        // Both snapshots start at rest (centred axes, no button): a controller that cannot be
        // read must not look as if every axis were pushed to its negative end.
        *node->m_pCurrent = platform::RawJoystickState();
        if (!device.GetState(*node->m_pCurrent))
        {
            *node->m_pCurrent = platform::RawJoystickState();
            platform::ShowMessageBox("Failed to get initial joystick state.", "ERROR");
        }
        *node->m_pPrevious = *node->m_pCurrent;
    }
}

void Joystick::Release()
{
    while (m_pHead)
    {
        std::unique_ptr<JoystickNode> node = std::move(m_pHead);
        m_pHead = std::move(node->m_pNext);
        if (node->m_pDevice)
        {
            node->m_pDevice->Unacquire();
        }
    }
    m_currentAxes.clear();
    m_previousAxes.clear();
    m_currentButtons.clear();
    m_previousButtons.clear();
    m_count = 0;
}

void Joystick::Poll()
{
    std::swap(m_currentAxes, m_previousAxes);
    std::swap(m_currentButtons, m_previousButtons);
    for (JoystickNode* node = m_pHead.get(); node != nullptr; node = node->m_pNext.get())
    {
        std::swap(node->m_pCurrent, node->m_pPrevious);
        platform::RawJoystick& device = *node->m_pDevice;
        bool readable = true;
        if (!device.Poll())
        {
            if (device.Acquire())
            {
                device.Poll();
            }
            else
            {
                readable = false;
            }
        }
        if (!readable || !device.GetState(*node->m_pCurrent))
        {
            // Pulled out or lost: it reads as released until it answers again.
            *node->m_pCurrent = platform::RawJoystickState();
        }
    }
}

bool Joystick::IsDownIn(const std::vector<uint8_t*>& p_buttons, int32_t p_code) const
{
    if (p_code < 0 || p_code / platform::RAW_JOYSTICK_BUTTONS >= m_count)
    {
        return false;
    }
    const uint8_t* buttons = p_buttons[static_cast<size_t>(p_code / platform::RAW_JOYSTICK_BUTTONS)];
    return (buttons[p_code % platform::RAW_JOYSTICK_BUTTONS] & platform::RAW_DOWN) != 0;
}

bool Joystick::IsButtonDown(int32_t p_code) const
{
    return IsDownIn(m_currentButtons, p_code);
}

bool Joystick::ButtonPressed(int32_t p_code) const
{
    return IsDownIn(m_currentButtons, p_code) && !IsDownIn(m_previousButtons, p_code);
}

bool Joystick::ButtonReleased(int32_t p_code) const
{
    return !IsDownIn(m_currentButtons, p_code) && IsDownIn(m_previousButtons, p_code);
}

int32_t Joystick::GetAxis(int32_t p_code, bool p_previous) const
{
    if (p_code < 0 || p_code / 2 >= m_count * platform::RAW_JOYSTICK_AXES)
    {
        return 0;
    }
    const std::vector<int32_t*>& axes = p_previous ? m_previousAxes : m_currentAxes;
    const int64_t offset = static_cast<int64_t>(*axes[static_cast<size_t>(p_code / 2)]) - platform::RAW_AXIS_CENTRE;
    if (p_code % 2 == 1)
    {
        return offset > 0 ? static_cast<int32_t>(offset) : 0;
    }
    return offset < 0 ? static_cast<int32_t>(-offset) : 0;
}

int32_t Joystick::FindMovedAxis() const
{
    const int32_t axes = m_count * platform::RAW_JOYSTICK_AXES;
    for (int32_t i = 0; i < axes; ++i)
    {
        const int64_t current = static_cast<int64_t>(*m_currentAxes[static_cast<size_t>(i)]) - platform::RAW_AXIS_CENTRE;
        const int64_t previous = static_cast<int64_t>(*m_previousAxes[static_cast<size_t>(i)]) - platform::RAW_AXIS_CENTRE;
        if (std::llabs(current - previous) > MOVE_THRESHOLD)
        {
            return current < 0 ? 2 * i : 2 * i + 1;
        }
    }
    return -1;
}

int32_t Joystick::FindPressedButton() const
{
    for (int32_t j = 0; j < m_count; ++j)
    {
        const uint8_t* current = m_currentButtons[static_cast<size_t>(j)];
        const uint8_t* previous = m_previousButtons[static_cast<size_t>(j)];
        for (int32_t b = 0; b < platform::RAW_JOYSTICK_BUTTONS; ++b)
        {
            if ((current[b] & platform::RAW_DOWN) != 0 && (previous[b] & platform::RAW_DOWN) == 0)
            {
                return j * platform::RAW_JOYSTICK_BUTTONS + b;
            }
        }
    }
    return -1;
}
