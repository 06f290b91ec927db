#include "app/Mode.h"

#include "app/Application.h"
#include "gfx/Image.h"
#include "input/InputSystem.h"
#include "sim/PlayerShip.h"
#include "sound/Sound.h"

#include <cstdlib>

Cursor Mode::s_cursor;
PlayerShip* Mode::s_pPlayer = nullptr;

namespace
{
void DeletePlayer()
{
    delete Mode::s_pPlayer;
    Mode::s_pPlayer = nullptr;
}
} // namespace

Mode::Mode()
{
    if (s_pPlayer == nullptr)
    {
        // The ship's pictures leave the image registry when it is deleted: make sure the
        // registry exists now, so that it outlives the deletion at exit.
        Image::GetRegisteredCount();
        std::atexit(DeletePlayer);
        s_pPlayer = new PlayerShip();
    }
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

void Mode::PassUndrawnFrame() {}
