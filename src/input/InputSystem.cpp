#include "input/InputSystem.h"

#include "input/ControlsConfig.h"
#include "input/InputRecorder.h"
#include "input/InputScript.h"
#include "input/RecordingRawInput.h"
#include "platform/RawInput.h"
#include "platform/System.h"

InputSystem::InputSystem(platform::Window* p_window) : m_pDirectInput(nullptr)
{
    if (g_inputScript.IsLoaded())
    {
        m_pDirectInput = &g_inputScript.GetDevices();
    }
    else
    {
        m_pOwnedInput = platform::CreateRawInput();
        m_pDirectInput = m_pOwnedInput.get();
    }
    // A recorded session reads the same devices through the recorder.
    if (g_inputRecorder.IsOpen() && m_pDirectInput != nullptr)
    {
        m_pRecordingInput = std::make_unique<RecordingRawInput>(m_pDirectInput, g_inputRecorder);
        m_pDirectInput = m_pRecordingInput.get();
    }
    SetUp(p_window);
}

InputSystem::InputSystem(platform::RawInput* p_directInput, platform::Window* p_window)
    : m_pDirectInput(p_directInput)
{
    SetUp(p_window);
}

void InputSystem::SetUp(platform::Window* p_window)
{
    if (m_pDirectInput == nullptr)
    {
        platform::ShowMessageBox("Failed to create input system.", "ERROR");
    }
    m_pKeyboard = std::make_unique<Keyboard>();
    m_pKeyboard->Init(m_pDirectInput, p_window);
    m_pMouse = std::make_unique<Mouse>();
    m_pMouse->Init(m_pDirectInput, p_window);
    m_pJoystick = std::make_unique<Joystick>(m_pDirectInput, p_window);
    LoadBindings();
}

InputSystem::~InputSystem()
{
    // The devices go before the interface that made them.
    m_pKeyboard.reset();
    m_pMouse.reset();
    m_pJoystick.reset();
    m_pRecordingInput.reset();
    m_pOwnedInput.reset();
}

void InputSystem::Reset(platform::Window* p_window)
{
    m_pKeyboard->Release();
    m_pMouse->Release();
    m_pJoystick->Release();
    m_pKeyboard->Init(m_pDirectInput, p_window);
    m_pMouse->Init(m_pDirectInput, p_window);
    m_pJoystick->Init(m_pDirectInput, p_window);
}

void InputSystem::Poll()
{
    m_pKeyboard->Poll();
    m_pMouse->Poll();
    m_pJoystick->Poll();
}

const Binding* InputSystem::Find(int32_t p_action) const
{
    return p_action >= 0 && p_action < ACTION_COUNT ? &m_bindings[static_cast<size_t>(p_action)] : nullptr;
}

bool InputSystem::WasPressed(int32_t p_action) const
{
    const Binding* binding = Find(p_action);
    if (binding == nullptr)
    {
        return false;
    }
    switch (binding->device)
    {
    case DEVICE_KEYBOARD:
        return m_pKeyboard->KeyPressed(binding->code);
    case DEVICE_MOUSE:
        // A wheel notch is a press in the poll that saw it and is never held.
        if (binding->code == MOUSE_WHEEL_UP)
        {
            return m_pMouse->GetWheel() > 0;
        }
        if (binding->code == MOUSE_WHEEL_DOWN)
        {
            return m_pMouse->GetWheel() < 0;
        }
        return binding->code >= 0 && binding->code < platform::RAW_MOUSE_BUTTONS &&
               m_pMouse->ButtonPressed(binding->code);
    case DEVICE_JOYSTICK_BUTTON:
        return m_pJoystick->ButtonPressed(binding->code);
    case DEVICE_JOYSTICK_AXIS:
    {
        const int32_t current = m_pJoystick->GetAxis(binding->code, false);
        const int32_t previous = m_pJoystick->GetAxis(binding->code, true);
        return current >= AXIS_DOWN && current - previous > AXIS_STEP;
    }
    default:
        return false;
    }
}

bool InputSystem::WasReleased(int32_t p_action) const
{
    const Binding* binding = Find(p_action);
    if (binding == nullptr)
    {
        return false;
    }
    switch (binding->device)
    {
    case DEVICE_KEYBOARD:
        return m_pKeyboard->KeyReleased(binding->code);
    case DEVICE_MOUSE:
        return binding->code >= 0 && binding->code < platform::RAW_MOUSE_BUTTONS &&
               m_pMouse->ButtonReleased(binding->code);
    case DEVICE_JOYSTICK_BUTTON:
        return m_pJoystick->ButtonReleased(binding->code);
    case DEVICE_JOYSTICK_AXIS:
    {
        const int32_t current = m_pJoystick->GetAxis(binding->code, false);
        const int32_t previous = m_pJoystick->GetAxis(binding->code, true);
        // Below 16383: a half-axis standing exactly there is neither down nor released.
        return current < AXIS_DOWN - 1 && previous - current > AXIS_STEP;
    }
    default:
        return false;
    }
}

bool InputSystem::IsDown(int32_t p_action) const
{
    const Binding* binding = Find(p_action);
    if (binding == nullptr)
    {
        return false;
    }
    switch (binding->device)
    {
    case DEVICE_KEYBOARD:
        return m_pKeyboard->IsKeyDown(binding->code);
    case DEVICE_MOUSE:
        return binding->code >= 0 && binding->code < platform::RAW_MOUSE_BUTTONS &&
               m_pMouse->IsButtonDown(binding->code);
    case DEVICE_JOYSTICK_BUTTON:
        return m_pJoystick->IsButtonDown(binding->code);
    case DEVICE_JOYSTICK_AXIS:
        return m_pJoystick->GetAxis(binding->code, false) >= AXIS_DOWN;
    default:
        return false;
    }
}

int32_t InputSystem::GetAxis(int32_t p_action) const
{
    const Binding* binding = Find(p_action);
    if (binding == nullptr || binding->device != DEVICE_JOYSTICK_AXIS)
    {
        return -1;
    }
    return m_pJoystick->GetAxis(binding->code, false);
}

bool InputSystem::AnyKeyDown() const
{
    for (int32_t code = 0; code < platform::RAW_KEY_COUNT; ++code)
    {
        if (m_pKeyboard->IsKeyDown(code))
        {
            return true;
        }
    }
    return false;
}

Binding InputSystem::GetBinding(int32_t p_action) const
{
    const Binding* binding = Find(p_action);
    return binding != nullptr ? *binding : Binding{0, DEVICE_NONE};
}

void InputSystem::SetBinding(int32_t p_action, uint8_t p_device, int32_t p_code)
{
    if (p_action >= 0 && p_action < ACTION_COUNT)
    {
        m_bindings[static_cast<size_t>(p_action)] = Binding{p_code, p_device};
    }
}

void InputSystem::LoadBindings()
{
    LoadBindings(g_controlsConfig);
}

void InputSystem::LoadBindings(const ControlsConfig& p_config)
{
    for (int32_t action = 0; action < ACTION_COUNT; ++action)
    {
        m_bindings[static_cast<size_t>(action)] = p_config.GetBinding(action);
    }
}
