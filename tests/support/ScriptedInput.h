#pragma once

#include "input/InputSystem.h"
#include "input/ScriptedRawInput.h"

#include <cstdint>
#include <memory>

namespace testsupport
{

// An input system on scripted devices, for tests that play input frame by frame: set what the
// player does with the hardware calls, then Poll() as the main loop would once a frame, then
// ask the input system (or hand it, its mouse or its Cursor, to the code under test). The
// bindings are the defaults, whatever config.ini lies in the working directory.
//
//     ScriptedInput input;
//     input.KeyDown(DIK_SPACE);
//     input.Poll();                  // frame 1: INTERACT pressed
//     EXPECT_TRUE(input->WasPressed(INTERACT));
//
// Controllers are given by the game's controller index (0 is JOY1.., AXIS1..).
class ScriptedInput
{
public:
    explicit ScriptedInput(int32_t p_joysticks = 0);
    ScriptedInput(const ScriptedInput&) = delete;
    ScriptedInput& operator=(const ScriptedInput&) = delete;

    InputSystem& GetInput() { return *m_pInput; }
    InputSystem* operator->() { return m_pInput.get(); }
    Mouse* GetMouse() { return m_pInput->GetMouse(); }
    ScriptedRawInput& GetDevices() { return *m_pDevices; }

    // The main loop's poll: what was set since the last one becomes the current state.
    void Poll() { m_pInput->Poll(); }

    void KeyDown(uint8_t p_code) { m_pDevices->SetKey(p_code, true); }
    void KeyUp(uint8_t p_code) { m_pDevices->SetKey(p_code, false); }
    void MoveMouse(int32_t p_dx, int32_t p_dy) { m_pDevices->MoveMouse(p_dx, p_dy); }
    // In notches; positive away from the player.
    void TurnWheel(int32_t p_notches) { m_pDevices->TurnWheel(p_notches * 120); }
    void MouseButton(int32_t p_button, bool p_down) { m_pDevices->SetMouseButton(p_button, p_down); }
    void JoyAxis(int32_t p_joystick, int32_t p_axis, int32_t p_value);
    void JoyButton(int32_t p_joystick, int32_t p_button, bool p_down);

    // Down in one poll and up in the next (two polls).
    void TapKey(uint8_t p_code);
    void Click(int32_t p_button);

    // The enumeration slot of ScriptedRawInput that holds the game's controller p_joystick.
    int32_t Slot(int32_t p_joystick) const { return m_joysticks - 1 - p_joystick; }

private:
    // In this order: the input system's devices go before the source that made them.
    std::unique_ptr<ScriptedRawInput> m_pDevices;
    std::unique_ptr<InputSystem> m_pInput;
    int32_t m_joysticks;
};

} // namespace testsupport
