#pragma once

#include "platform/RawInput.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace platform
{
class Window;
}

// One attached game controller with the states of the current and of the previous poll.
class JoystickNode
{
public:
    JoystickNode() = default;
    JoystickNode(const JoystickNode&) = delete;
    JoystickNode& operator=(const JoystickNode&) = delete;

    std::unique_ptr<platform::RawJoystick> m_pDevice;
    platform::RawJoystickState m_states[2];
    platform::RawJoystickState* m_pCurrent = &m_states[0];
    platform::RawJoystickState* m_pPrevious = &m_states[1];
    std::unique_ptr<JoystickNode> m_pNext;
};

// Every game controller attached when the input was set up. Controller j is the j-th node of
// the list from its head; nodes are pushed at the head as the controllers are enumerated, so
// the controller enumerated last is controller 0.
//
// Buttons are coded controller * 128 + button; half-axes (controller * 8 + axis) * 2 + half,
// half 0 the negative and 1 the positive side of the axis. A code naming a controller that is
// not attached reads as up and 0.
class Joystick
{
public:
    // How far an axis must move from one poll to the next to count for FindMovedAxis.
    static constexpr int32_t MOVE_THRESHOLD = 10000;
    // Set-up tries this many times to acquire a controller; polling keeps trying afterwards.
    static constexpr int32_t ACQUIRE_ATTEMPTS = 5;

    Joystick(platform::RawInput* p_directInput, platform::Window* p_window);
    ~Joystick();
    Joystick(const Joystick&) = delete;
    Joystick& operator=(const Joystick&) = delete;

    void Init(platform::RawInput* p_directInput, platform::Window* p_window);
    void Release();
    void Poll();

    bool IsButtonDown(int32_t p_code) const;
    bool ButtonPressed(int32_t p_code) const;
    bool ButtonReleased(int32_t p_code) const;
    // The value 0..32768 of one half-axis in the current poll, or in the previous one.
    int32_t GetAxis(int32_t p_code, bool p_previous) const;

    // The first half-axis that moved by more than MOVE_THRESHOLD since the previous poll,
    // or -1.
    int32_t FindMovedAxis() const;
    // The first button that went down in this poll, or -1.
    int32_t FindPressedButton() const;
    int32_t GetCount() const { return m_count; }

private:
    bool IsDownIn(const std::vector<uint8_t*>& p_buttons, int32_t p_code) const;

    std::unique_ptr<JoystickNode> m_pHead;
    int32_t m_count;
    // Element controller * 8 + axis points at that axis in the controller's current (previous)
    // snapshot; polling swaps the arrays together with every node's snapshots.
    std::vector<int32_t*> m_currentAxes;
    std::vector<int32_t*> m_previousAxes;
    // Element j points at the 128 button bytes of controller j's current (previous) snapshot.
    std::vector<uint8_t*> m_currentButtons;
    std::vector<uint8_t*> m_previousButtons;
};
