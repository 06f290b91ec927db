#include "input/ScriptedRawInput.h"

#include <algorithm>

// What every scripted device shares: the call failures and acquisition.
template <class Base>
class ScriptedRawInput::Device : public Base
{
public:
    bool SetDataFormat() override { return !GetFaults().dataFormat; }
    bool SetCooperativeLevel(platform::Window*) override { return !GetFaults().cooperativeLevel; }
    bool Acquire() override
    {
        m_acquired = !GetFaults().acquire && IsThere();
        return m_acquired;
    }
    void Unacquire() override { m_acquired = false; }

protected:
    virtual const Faults& GetFaults() const = 0;
    virtual bool IsThere() const { return true; }
    bool CanRead() const { return m_acquired && !GetFaults().read && IsThere(); }

private:
    bool m_acquired = false;
};

class ScriptedRawInput::KeyboardDevice : public Device<platform::RawKeyboard>
{
public:
    explicit KeyboardDevice(ScriptedRawInput& p_source) : m_source(p_source) {}

    bool GetState(platform::RawKeyState& p_keys) override
    {
        if (!CanRead())
        {
            return false;
        }
        p_keys = m_source.m_keys;
        return true;
    }

protected:
    const Faults& GetFaults() const override { return m_source.m_keyboardFaults; }

private:
    ScriptedRawInput& m_source;
};

class ScriptedRawInput::MouseDevice : public Device<platform::RawMouse>
{
public:
    explicit MouseDevice(ScriptedRawInput& p_source) : m_source(p_source) {}

    bool GetState(platform::RawMouseState& p_state) override
    {
        if (!CanRead())
        {
            return false;
        }
        p_state = m_source.m_mouse;
        m_source.m_mouse.lX = 0;
        m_source.m_mouse.lY = 0;
        m_source.m_mouse.lZ = 0;
        return true;
    }

protected:
    const Faults& GetFaults() const override { return m_source.m_mouseFaults; }

private:
    ScriptedRawInput& m_source;
};

class ScriptedRawInput::JoystickDevice : public Device<platform::RawJoystick>
{
public:
    JoystickDevice(ScriptedRawInput& p_source, size_t p_index)
        : m_source(p_source), m_index(p_index), m_generation(p_source.m_joysticks[p_index].generation)
    {
    }

    bool Poll() override { return CanRead(); }
    bool GetState(platform::RawJoystickState& p_state) override
    {
        if (!CanRead())
        {
            return false;
        }
        p_state = Get().state;
        return true;
    }

protected:
    // Looked up at every call: adding controllers moves them in memory.
    const Controller& Get() const { return m_source.m_joysticks[m_index]; }
    const Faults& GetFaults() const override { return Get().faults; }
    bool IsThere() const override { return Get().attached && Get().generation == m_generation; }

private:
    ScriptedRawInput& m_source;
    size_t m_index;
    int32_t m_generation;
};

void ScriptedRawInput::SetKey(uint8_t p_code, bool p_down)
{
    m_keys[p_code] = p_down ? platform::RAW_DOWN : 0;
}

namespace
{
int32_t SaturatingAdd(int32_t p_a, int32_t p_b)
{
    const int64_t sum = static_cast<int64_t>(p_a) + p_b;
    return static_cast<int32_t>(std::clamp<int64_t>(sum, INT32_MIN, INT32_MAX));
}
} // namespace

void ScriptedRawInput::MoveMouse(int32_t p_dx, int32_t p_dy)
{
    m_mouse.lX = SaturatingAdd(m_mouse.lX, p_dx);
    m_mouse.lY = SaturatingAdd(m_mouse.lY, p_dy);
}

void ScriptedRawInput::TurnWheel(int32_t p_amount)
{
    m_mouse.lZ = SaturatingAdd(m_mouse.lZ, p_amount);
}

void ScriptedRawInput::SetMouseButton(int32_t p_button, bool p_down)
{
    if (p_button >= 0 && p_button < platform::RAW_MOUSE_BUTTONS)
    {
        m_mouse.rgbButtons[p_button] = p_down ? platform::RAW_DOWN : 0;
    }
}

int32_t ScriptedRawInput::AddJoystick()
{
    m_joysticks.emplace_back();
    return static_cast<int32_t>(m_joysticks.size()) - 1;
}

ScriptedRawInput::Controller* ScriptedRawInput::FindJoystick(int32_t p_index)
{
    if (p_index < 0 || p_index >= static_cast<int32_t>(m_joysticks.size()))
    {
        return nullptr;
    }
    return &m_joysticks[static_cast<size_t>(p_index)];
}

void ScriptedRawInput::SetJoystickAttached(int32_t p_index, bool p_attached)
{
    if (Controller* controller = FindJoystick(p_index))
    {
        if (p_attached && !controller->attached)
        {
            ++controller->generation;
        }
        controller->attached = p_attached;
    }
}

void ScriptedRawInput::SetJoystickAxis(int32_t p_index, int32_t p_axis, int32_t p_value)
{
    Controller* controller = FindJoystick(p_index);
    if (controller != nullptr && p_axis >= 0 && p_axis < platform::RAW_JOYSTICK_AXES)
    {
        controller->state.Axis(p_axis) = std::clamp(p_value, 0, platform::RAW_AXIS_MAX);
    }
}

void ScriptedRawInput::SetJoystickButton(int32_t p_index, int32_t p_button, bool p_down)
{
    Controller* controller = FindJoystick(p_index);
    if (controller != nullptr && p_button >= 0 && p_button < platform::RAW_JOYSTICK_BUTTONS)
    {
        controller->state.rgbButtons[p_button] = p_down ? platform::RAW_DOWN : 0;
    }
}

ScriptedRawInput::Faults* ScriptedRawInput::JoystickFaults(int32_t p_index)
{
    Controller* controller = FindJoystick(p_index);
    return controller != nullptr ? &controller->faults : nullptr;
}

std::unique_ptr<platform::RawKeyboard> ScriptedRawInput::CreateKeyboard()
{
    if (m_keyboardFaults.create)
    {
        return nullptr;
    }
    return std::make_unique<KeyboardDevice>(*this);
}

std::unique_ptr<platform::RawMouse> ScriptedRawInput::CreateMouse()
{
    if (m_mouseFaults.create)
    {
        return nullptr;
    }
    return std::make_unique<MouseDevice>(*this);
}

int32_t ScriptedRawInput::GetJoystickCount()
{
    return static_cast<int32_t>(std::count_if(m_joysticks.begin(), m_joysticks.end(),
                                              [](const Controller& p_controller) { return p_controller.attached; }));
}

std::unique_ptr<platform::RawJoystick> ScriptedRawInput::CreateJoystick(int32_t p_index)
{
    // The p_index-th attached controller.
    int32_t seen = 0;
    for (size_t i = 0; i < m_joysticks.size(); ++i)
    {
        if (!m_joysticks[i].attached)
        {
            continue;
        }
        if (seen++ == p_index)
        {
            if (m_joysticks[i].faults.create)
            {
                return nullptr;
            }
            return std::make_unique<JoystickDevice>(*this, i);
        }
    }
    return nullptr;
}
