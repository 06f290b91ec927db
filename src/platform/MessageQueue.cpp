#include "platform/MessageQueue.h"

#include "platform/EventPump.h"
#include "platform/Window.h"

#include <algorithm>
#include <deque>
#include <vector>

namespace platform
{

namespace
{
std::deque<Message> s_messages;
std::vector<EventListener> s_listeners;

bool IsAltHeld(const SDL_KeyboardEvent& p_key)
{
    return (p_key.keysym.mod & KMOD_ALT) != 0;
}

// Turns what the window system reported since the last call into messages, as the window
// procedure's input would have arrived on Windows.
void PumpEvents()
{
    if (!Window::IsVideoUp())
    {
        return;
    }
    SDL_Event event;
    while (SDL_PollEvent(&event) != 0)
    {
        for (EventListener listener : s_listeners)
        {
            listener(event);
        }
        switch (event.type)
        {
        case SDL_QUIT:
            s_messages.push_back(Message{MessageType::Close, 0});
            break;
        case SDL_KEYDOWN:
            if (event.key.repeat == 0 && IsAltHeld(event.key))
            {
                if (event.key.keysym.sym == SDLK_RETURN || event.key.keysym.sym == SDLK_KP_ENTER)
                {
                    s_messages.push_back(Message{MessageType::ToggleFullScreen, 0});
                }
                else if (event.key.keysym.sym == SDLK_F4)
                {
                    s_messages.push_back(Message{MessageType::Close, 0});
                }
            }
            break;
        case SDL_WINDOWEVENT:
            if (event.window.event == SDL_WINDOWEVENT_SIZE_CHANGED)
            {
                if (Window* window = Window::GetCurrent())
                {
                    window->RefreshViewport();
                }
            }
            break;
        default:
            break;
        }
    }
}
} // namespace

void AddEventListener(EventListener p_listener)
{
    if (std::find(s_listeners.begin(), s_listeners.end(), p_listener) == s_listeners.end())
    {
        s_listeners.push_back(p_listener);
    }
}

void RemoveEventListener(EventListener p_listener)
{
    s_listeners.erase(std::remove(s_listeners.begin(), s_listeners.end(), p_listener), s_listeners.end());
}

bool MessageQueue::Peek(Message& p_message)
{
    PumpEvents();
    if (s_messages.empty())
    {
        return false;
    }
    p_message = s_messages.front();
    s_messages.pop_front();
    return true;
}

void MessageQueue::Post(const Message& p_message)
{
    s_messages.push_back(p_message);
}

void MessageQueue::PostQuit(int64_t p_exitCode)
{
    s_messages.push_back(Message{MessageType::Quit, p_exitCode});
}

void MessageQueue::Clear()
{
    s_messages.clear();
}

size_t MessageQueue::GetCount()
{
    return s_messages.size();
}

} // namespace platform
