#include "app/DevOptions.h"
#include "app/Game.h"
#include "app/Settings.h"
#include "input/InputRecorder.h"
#include "input/InputScript.h"
#include "platform/Window.h"

#include <cstdio>
#include <ctime>

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
        // A recording replays with the random numbers it was made with.
        if (g_inputScript.HasSeed())
        {
            g_devOptions.hasSeed = true;
            g_devOptions.seed = g_inputScript.GetSeed();
        }
    }
    if (!g_devOptions.record.empty())
    {
        // The clock's seed would differ at the replay: the session keeps one seed and the
        // recording says which.
        if (!g_devOptions.hasSeed)
        {
            g_devOptions.hasSeed = true;
            g_devOptions.seed = static_cast<uint32_t>(std::time(nullptr));
        }
        std::string error;
        if (!g_inputRecorder.Open(g_devOptions.record, g_devOptions.seed, error))
        {
            std::fprintf(stderr, "korvath: KORVATH_RECORD: %s\n", error.c_str());
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
        g_inputRecorder.Close();
        // A game that could not start says so in its exit code as well as in its messages.
        if (!started)
        {
            code = 1;
        }
    }
    return code;
}
