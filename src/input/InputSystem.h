#pragma once

#include "input/Action.h"
#include "input/Binding.h"
#include "input/Joystick.h"
#include "input/Keyboard.h"
#include "input/Mouse.h"

#include <array>
#include <cstdint>
#include <memory>

class ControlsConfig;

namespace platform
{
class RawInput;
class Window;
} // namespace platform

// The game's only source of player input: keyboard, mouse and game controllers, each with the
// state of the current and of the previous poll, and the twelve actions with their bindings.
// The main loop polls it once a frame, after drawing; the mode's HandleInput then asks it.
class InputSystem
{
public:
    // Half-axis value from which a joystick half-axis counts as down (half deflection).
    static constexpr int32_t AXIS_DOWN = 16384;
    // A half-axis is pressed (released) only when it rose (fell) by more than this in one poll.
    static constexpr int32_t AXIS_STEP = 5000;

    // The devices of this machine, or those of the input script when one is being replayed.
    explicit InputSystem(platform::Window* p_window);
    // The devices p_directInput makes (not owned; it must outlive the input system). A null
    // p_directInput is an input system that could not be created: it reports nothing.
    InputSystem(platform::RawInput* p_directInput, platform::Window* p_window);
    ~InputSystem();
    InputSystem(const InputSystem&) = delete;
    InputSystem& operator=(const InputSystem&) = delete;

    // Sets the devices up again for a new window, keeping the bindings.
    void Reset(platform::Window* p_window);
    // Reads keyboard, mouse and controllers, in that order.
    void Poll();

    // The action's input went down between the previous and the current poll.
    bool WasPressed(int32_t p_action) const;
    bool WasReleased(int32_t p_action) const;
    bool IsDown(int32_t p_action) const;
    // For an action bound to a joystick half-axis its value 0..32768, otherwise -1.
    int32_t GetAxis(int32_t p_action) const;
    // Some key of the keyboard is down in the current poll.
    bool AnyKeyDown() const;

    Binding GetBinding(int32_t p_action) const;
    // In memory only; ControlsConfig stores it.
    void SetBinding(int32_t p_action, uint8_t p_device, int32_t p_code);
    // All twelve bindings from config.ini, action 0 to 11.
    void LoadBindings();
    void LoadBindings(const ControlsConfig& p_config);

    Keyboard* GetKeyboard() const { return m_pKeyboard.get(); }
    Mouse* GetMouse() const { return m_pMouse.get(); }
    Joystick* GetJoystick() const { return m_pJoystick.get(); }

private:
    void SetUp(platform::Window* p_window);
    const Binding* Find(int32_t p_action) const;

    std::unique_ptr<platform::RawInput> m_pOwnedInput;
    // Between the devices and the input system while a session is recorded.
    std::unique_ptr<platform::RawInput> m_pRecordingInput;
    platform::RawInput* m_pDirectInput;
    std::unique_ptr<Keyboard> m_pKeyboard;
    std::unique_ptr<Mouse> m_pMouse;
    std::unique_ptr<Joystick> m_pJoystick;
    std::array<Binding, ACTION_COUNT> m_bindings;
};
