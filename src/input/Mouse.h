#pragma once

#include "platform/RawInput.h"

#include <cstdint>
#include <memory>

namespace platform
{
class Window;
}

// The mouse as the game sees it: relative motion, wheel and four buttons of the current and
// of the previous poll. The cursor reads it; so does the key-capture box.
class Mouse
{
public:
    Mouse();
    ~Mouse();
    Mouse(const Mouse&) = delete;
    Mouse& operator=(const Mouse&) = delete;

    // Sets the device up for the window and reads it once; each failing step shows its
    // message box and set-up goes on.
    void Init(platform::RawInput* p_directInput, platform::Window* p_window);
    void Release();
    // False when the device could not be read even after re-acquiring it; the mouse then
    // reports no motion and no button.
    bool Poll();

    // Motion of the current poll in mouse counts.
    void GetDelta(int32_t& p_dx, int32_t& p_dy) const;
    // Wheel movement of the current poll, positive away from the player.
    int32_t GetWheel() const;

    // p_button is 0..3 (left, right, middle, fourth).
    bool IsButtonDown(int32_t p_button) const;
    bool IsButtonUp(int32_t p_button) const;
    bool ButtonPressed(int32_t p_button) const;
    bool ButtonReleased(int32_t p_button) const;

private:
    static bool IsDownIn(const platform::RawMouseState& p_state, int32_t p_button);

    std::unique_ptr<platform::RawMouse> m_pDevice;
    platform::RawMouseState m_states[2];
    platform::RawMouseState* m_pCurrent;
    platform::RawMouseState* m_pPrevious;
};
