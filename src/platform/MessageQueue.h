#pragma once

#include <cstddef>
#include <cstdint>

namespace platform
{

// The window messages the game's loop cares about.
enum class MessageType
{
    None,
    Close, // the window's close button, Alt+F4 or the desktop asking the game to end
    ToggleFullScreen, // Alt+Enter: full screen <-> a window
    Quit,  // ends the main loop; wParam is the exit code
    User,  // free for tests and tools
};

struct Message
{
    MessageType type = MessageType::None;
    int64_t wParam = 0;
};

// The message queue of the game's one thread. Each Peek first gathers what the window system
// has to say (and feeds input events to the input devices), then removes at most one message.
class MessageQueue
{
public:
    // Takes the oldest message; false when there is none.
    static bool Peek(Message& p_message);
    static void Post(const Message& p_message);
    static void PostQuit(int64_t p_exitCode);
    static void Clear();
    static size_t GetCount();
};

} // namespace platform
