#include "app/DevOptions.h"
#include "app/Game.h"
#include "app/Settings.h"
#include "input/InputScript.h"
#include "platform/Window.h"

#include <cstdio>

int main(int argc, char** argv)
{
    g_devOptions.Parse(argc, argv);
    if (!g_devOptions.errors.empty())
    {
        for (const std::string& error : g_devOptions.errors)
        {
            std::fprintf(stderr, "korvath: %s\n", error.c_str());
        }
        std::fprintf(stderr, "usage: korvath [--windowed] [--widgets] [--mission NAME] [--pilot FILE]\n");
        return 2;
    }
    if (!g_devOptions.inputScript.empty())
    {
        std::string error;
        if (!g_inputScript.Load(g_devOptions.inputScript, error))
        {
            std::fprintf(stderr, "korvath: KORVATH_INPUT_SCRIPT: %s\n", error.c_str());
            return 2;
        }
    }
    // The display the player left the game with, from the first frame on; --windowed wins for
    // this run without changing what is stored.
    g_settings.Load();
    platform::Window::SetFullscreenPreference(g_settings.IsFullScreen() && !g_devOptions.windowed);

    int code = 1;
    {
        Game game;
        const bool started = game.Init(g_settings.GetWidth(), g_settings.GetHeight(), 32);
        if (started)
        {
            game.Run();
        }
        code = game.Shutdown();
        // A game that could not start says so in its exit code as well as in its messages.
        if (!started)
        {
            code = 1;
        }
    }
    return code;
}
