#include "support/ScriptedInput.h"

#include "input/Action.h"
#include "input/ControlsConfig.h"

namespace testsupport
{

ScriptedInput::ScriptedInput(int32_t p_joysticks) : m_pDevices(std::make_unique<ScriptedRawInput>()), m_joysticks(p_joysticks)
{
    for (int32_t j = 0; j < p_joysticks; ++j)
    {
        m_pDevices->AddJoystick();
    }
    m_pInput = std::make_unique<InputSystem>(m_pDevices.get(), nullptr);
    for (int32_t action = 0; action < ACTION_COUNT; ++action)
    {
        const Binding binding = ControlsConfig::ParseKeyName(ControlsConfig::GetDefaultKeyName(action));
        m_pInput->SetBinding(action, binding.device, binding.code);
    }
}

void ScriptedInput::JoyAxis(int32_t p_joystick, int32_t p_axis, int32_t p_value)
{
    m_pDevices->SetJoystickAxis(Slot(p_joystick), p_axis, p_value);
}

void ScriptedInput::JoyButton(int32_t p_joystick, int32_t p_button, bool p_down)
{
    m_pDevices->SetJoystickButton(Slot(p_joystick), p_button, p_down);
}

void ScriptedInput::TapKey(uint8_t p_code)
{
    KeyDown(p_code);
    Poll();
    KeyUp(p_code);
    Poll();
}

void ScriptedInput::Click(int32_t p_button)
{
    MouseButton(p_button, true);
    Poll();
    MouseButton(p_button, false);
    Poll();
}

} // namespace testsupport
