#pragma once

#include "platform/RawInput.h"

#include <cstdint>
#include <memory>

namespace platform
{
class Window;
}

// The keyboard as the game sees it: the key states of the current and of the previous poll.
class Keyboard
{
public:
    Keyboard();
    ~Keyboard();
    Keyboard(const Keyboard&) = delete;
    Keyboard& operator=(const Keyboard&) = delete;

    // Sets the device up for the window; each failing step shows its message box and set-up
    // goes on, so a keyboard that is missing simply reports no key.
    void Init(platform::RawInput* p_directInput, platform::Window* p_window);
    void Release();
    // Reads the keys into the current snapshot; false when the device could not be read even
    // after re-acquiring it, in which case no key reads as down.
    bool Poll();

    // p_code is a DIK_ code 0..255; other codes are never down.
    bool IsKeyDown(int32_t p_code) const;
    bool IsKeyUp(int32_t p_code) const;
    // Down now and up in the previous poll.
    bool KeyPressed(int32_t p_code) const;
    // Up now and down in the previous poll.
    bool KeyReleased(int32_t p_code) const;

private:
    static bool IsDownIn(const platform::RawKeyState& p_state, int32_t p_code);

    std::unique_ptr<platform::RawKeyboard> m_pDevice;
    platform::RawKeyState m_states[2];
    // Polling swaps these and reads into the new current one; no bytes are copied.
    platform::RawKeyState* m_pCurrent;
    platform::RawKeyState* m_pPrevious;
};
