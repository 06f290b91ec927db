#pragma once

// Platform-internal: lets the platform's devices see the window system's events as the
// message queue gathers them. Only src/platform includes this header.
#include <SDL2/SDL.h>

namespace platform
{

using EventListener = void (*)(const SDL_Event& p_event);

// Listeners are called for every event, in the order they were added, before the queue
// turns window events into messages.
void AddEventListener(EventListener p_listener);
void RemoveEventListener(EventListener p_listener);

} // namespace platform
