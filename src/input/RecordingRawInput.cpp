#include "input/RecordingRawInput.h"

#include "input/InputRecorder.h"

namespace
{
bool IsDown(uint8_t p_state)
{
    return (p_state & platform::RAW_DOWN) != 0;
}

// Passes the life cycle of a device on to the one it wraps.
template <class Base>
class PassOn : public Base
{
public:
    PassOn(std::unique_ptr<Base> p_inner, InputRecorder& p_recorder)
        : m_pInner(std::move(p_inner)), m_recorder(p_recorder)
    {
    }
    bool SetDataFormat() override { return m_pInner->SetDataFormat(); }
    bool SetCooperativeLevel(platform::Window* p_window) override { return m_pInner->SetCooperativeLevel(p_window); }
    bool Acquire() override { return m_pInner->Acquire(); }
    void Unacquire() override { m_pInner->Unacquire(); }

protected:
    std::unique_ptr<Base> m_pInner;
    InputRecorder& m_recorder;
};
} // namespace

class RecordingRawInput::KeyboardDevice : public PassOn<platform::RawKeyboard>
{
public:
    using PassOn::PassOn;
    bool GetState(platform::RawKeyState& p_keys) override
    {
        if (!m_pInner->GetState(p_keys))
        {
            return false;
        }
        for (int32_t code = 0; code < platform::RAW_KEY_COUNT; ++code)
        {
            const bool down = IsDown(p_keys[static_cast<size_t>(code)]);
            if (down != IsDown(m_last[static_cast<size_t>(code)]))
            {
                m_recorder.Key(static_cast<uint8_t>(code), down);
            }
        }
        m_last = p_keys;
        return true;
    }

private:
    platform::RawKeyState m_last{};
};

class RecordingRawInput::MouseDevice : public PassOn<platform::RawMouse>
{
public:
    using PassOn::PassOn;
    bool GetState(platform::RawMouseState& p_state) override
    {
        if (!m_pInner->GetState(p_state))
        {
            return false;
        }
        if (p_state.lX != 0 || p_state.lY != 0)
        {
            m_recorder.MouseMove(p_state.lX, p_state.lY);
        }
        if (p_state.lZ != 0)
        {
            m_recorder.MouseWheel(p_state.lZ);
        }
        for (int32_t button = 0; button < platform::RAW_MOUSE_BUTTONS; ++button)
        {
            const bool down = IsDown(p_state.rgbButtons[button]);
            if (down != m_down[button])
            {
                m_recorder.MouseButton(button, down);
                m_down[button] = down;
            }
        }
        return true;
    }

private:
    bool m_down[platform::RAW_MOUSE_BUTTONS] = {};
};

class RecordingRawInput::JoystickDevice : public PassOn<platform::RawJoystick>
{
public:
    JoystickDevice(std::unique_ptr<platform::RawJoystick> p_inner, InputRecorder& p_recorder, int32_t p_number)
        : PassOn(std::move(p_inner), p_recorder), m_number(p_number)
    {
    }
    bool Poll() override { return m_pInner->Poll(); }
    bool GetState(platform::RawJoystickState& p_state) override
    {
        if (!m_pInner->GetState(p_state))
        {
            return false;
        }
        for (int32_t axis = 0; axis < platform::RAW_JOYSTICK_AXES; ++axis)
        {
            const int32_t value = p_state.Axis(axis);
            if (value != m_last.Axis(axis))
            {
                m_recorder.JoyAxis(m_number, axis, value);
            }
        }
        for (int32_t button = 0; button < platform::RAW_JOYSTICK_BUTTONS; ++button)
        {
            const bool down = IsDown(p_state.rgbButtons[button]);
            if (down != IsDown(m_last.rgbButtons[button]))
            {
                m_recorder.JoyButton(m_number, button, down);
            }
        }
        m_last = p_state;
        return true;
    }

private:
    int32_t m_number;
    platform::RawJoystickState m_last;
};

RecordingRawInput::RecordingRawInput(platform::RawInput* p_input, InputRecorder& p_recorder)
    : m_pInput(p_input), m_recorder(p_recorder)
{
}

std::unique_ptr<platform::RawKeyboard> RecordingRawInput::CreateKeyboard()
{
    std::unique_ptr<platform::RawKeyboard> inner = m_pInput != nullptr ? m_pInput->CreateKeyboard() : nullptr;
    if (!inner)
    {
        return nullptr;
    }
    return std::make_unique<KeyboardDevice>(std::move(inner), m_recorder);
}

std::unique_ptr<platform::RawMouse> RecordingRawInput::CreateMouse()
{
    std::unique_ptr<platform::RawMouse> inner = m_pInput != nullptr ? m_pInput->CreateMouse() : nullptr;
    if (!inner)
    {
        return nullptr;
    }
    return std::make_unique<MouseDevice>(std::move(inner), m_recorder);
}

int32_t RecordingRawInput::GetJoystickCount()
{
    return m_pInput != nullptr ? m_pInput->GetJoystickCount() : 0;
}

std::unique_ptr<platform::RawJoystick> RecordingRawInput::CreateJoystick(int32_t p_index)
{
    std::unique_ptr<platform::RawJoystick> inner = m_pInput != nullptr ? m_pInput->CreateJoystick(p_index) : nullptr;
    if (!inner)
    {
        return nullptr;
    }
    // The game numbers its controllers from the last one enumerated, and so do scripts.
    const int32_t number = GetJoystickCount() - 1 - p_index;
    return std::make_unique<JoystickDevice>(std::move(inner), m_recorder, number);
}
