#include "app/Mode.h"

#include "app/Application.h"
#include "input/InputSystem.h"
#include "sound/Sound.h"

Cursor Mode::s_cursor;

Mode::Mode()
{
    InputSystem* input = g_pApplication != nullptr ? g_pApplication->GetInput() : nullptr;
    if (input == nullptr)
    {
        return;
    }
    if (!s_cursor.IsInitialized())
    {
        s_cursor.Init("art\\cursor.bmp", 0.0, 0.0, input->GetMouse());
    }
    else if (s_cursor.GetMouse() == nullptr)
    {
        // A new application after an earlier one shut down (tests): same cursor, new mouse.
        s_cursor.Rebind(input->GetMouse());
    }
}

// Every mode change silences the old mode's sounds; the next mode starts its own music.
Mode::~Mode()
{
    if (g_pSound != nullptr)
    {
        g_pSound->UnloadAll();
    }
}

void Mode::OnDisplayReset() {}
