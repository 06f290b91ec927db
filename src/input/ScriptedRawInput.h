#pragma once

#include "platform/RawInput.h"

#include <cstdint>
#include <vector>

// A keyboard, a mouse and game controllers that exist only in memory, behind the same
// interface as the real ones: whatever is set here is what the devices report at their next
// read. The input script replays through them, and tests drive the input system with them
// frame by frame. Every device call can be made to fail, to stand for a missing or lost device.
class ScriptedRawInput : public platform::RawInput
{
public:
    // Which calls of a device fail.
    struct Faults
    {
        bool create = false;
        bool dataFormat = false;
        bool cooperativeLevel = false;
        bool acquire = false;
        bool read = false;
    };

    ScriptedRawInput() = default;
    ScriptedRawInput(const ScriptedRawInput&) = delete;
    ScriptedRawInput& operator=(const ScriptedRawInput&) = delete;

    // The hardware. p_code is a DIK_ code.
    void SetKey(uint8_t p_code, bool p_down);
    // Motion and wheel add up until the mouse is next read.
    void MoveMouse(int32_t p_dx, int32_t p_dy);
    void TurnWheel(int32_t p_amount);
    // p_button 0..3; others are ignored.
    void SetMouseButton(int32_t p_button, bool p_down);

    // Controllers are numbered in the order they are enumerated (as the system lists them).
    // Plugs a new controller in, at rest; answers its number.
    int32_t AddJoystick();
    // Pulls a controller out or plugs it back; a device opened before it was pulled out stays
    // dead, as a real one does, and the controller comes back at the next set-up.
    void SetJoystickAttached(int32_t p_index, bool p_attached);
    // p_axis 0..7 (X, Y, Z, X rotation, Y rotation, Z rotation, two sliders), p_value 0..65535.
    void SetJoystickAxis(int32_t p_index, int32_t p_axis, int32_t p_value);
    void SetJoystickButton(int32_t p_index, int32_t p_button, bool p_down);

    Faults& KeyboardFaults() { return m_keyboardFaults; }
    Faults& MouseFaults() { return m_mouseFaults; }
    // Null for a controller that does not exist.
    Faults* JoystickFaults(int32_t p_index);

    // RawInput
    std::unique_ptr<platform::RawKeyboard> CreateKeyboard() override;
    std::unique_ptr<platform::RawMouse> CreateMouse() override;
    // Only attached controllers are enumerated.
    int32_t GetJoystickCount() override;
    std::unique_ptr<platform::RawJoystick> CreateJoystick(int32_t p_index) override;

private:
    template <class Base>
    class Device;
    class KeyboardDevice;
    class MouseDevice;
    class JoystickDevice;

    struct Controller
    {
        bool attached = true;
        // Counts the times it was plugged in; a device belongs to one of them.
        int32_t generation = 0;
        platform::RawJoystickState state;
        Faults faults;
    };

    Controller* FindJoystick(int32_t p_index);

    platform::RawKeyState m_keys{};
    platform::RawMouseState m_mouse;
    std::vector<Controller> m_joysticks;
    Faults m_keyboardFaults;
    Faults m_mouseFaults;
};
