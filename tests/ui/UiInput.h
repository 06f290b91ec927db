#pragma once

#include "input/Cursor.h"
#include "support/ScriptedInput.h"

#include <cstdint>

namespace uitest
{

// Scripted devices and a cursor on their mouse, for widget tests played frame by frame.
struct UiInput
{
    explicit UiInput(int32_t p_joysticks = 0) : input(p_joysticks)
    {
        cursor.Init(nullptr, 0.0, 0.0, input.GetMouse());
    }

    // The start of one frame as the widgets see it: the left button down or up, the poll, and
    // the cursor at (p_x, p_y).
    void Frame(int32_t p_x, int32_t p_y, bool p_down)
    {
        input.MouseButton(0, p_down);
        input.Poll();
        cursor.SetPosition(static_cast<float>(p_x), static_cast<float>(p_y));
    }

    testsupport::ScriptedInput input;
    Cursor cursor;
};

} // namespace uitest
