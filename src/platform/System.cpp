#include "platform/System.h"

#include "platform/Window.h"

#include <SDL2/SDL.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace platform
{

int64_t GetPerformanceCounter()
{
    return static_cast<int64_t>(SDL_GetPerformanceCounter());
}

int64_t GetPerformanceFrequency()
{
    return static_cast<int64_t>(SDL_GetPerformanceFrequency());
}

namespace
{
bool IsSet(const char* p_name)
{
    const char* value = std::getenv(p_name);
    return value != nullptr && value[0] != '\0' && std::strcmp(value, "0") != 0;
}
} // namespace

bool IsHeadless()
{
    if (IsSet("KORVATH_HEADLESS"))
    {
        return true;
    }
    const char* ci = std::getenv("CI");
    if (ci != nullptr && std::strcmp(ci, "true") == 0)
    {
        return true;
    }
    return !IsSet("DISPLAY") && !IsSet("WAYLAND_DISPLAY");
}

void ShowMessageBox(const char* p_text, const char* p_caption)
{
    const char* text = p_text != nullptr ? p_text : "";
    const char* caption = p_caption != nullptr ? p_caption : "";
    std::fprintf(stderr, "%s: %s\n", caption, text);
    std::fflush(stderr);
    if (IsHeadless())
    {
        return;
    }
    // Needs no video subsystem; it fails quietly when no box can be shown.
    SDL_ShowSimpleMessageBox(SDL_MESSAGEBOX_ERROR, caption, text, nullptr);
}

void ShowSystemCursor(bool p_show)
{
    if (Window::IsVideoUp())
    {
        SDL_ShowCursor(p_show ? SDL_ENABLE : SDL_DISABLE);
    }
}

} // namespace platform
