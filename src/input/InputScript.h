#pragma once

#include "input/ScriptedRawInput.h"

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

// A run of input written down by frame (KORVATH_INPUT_SCRIPT): while one is loaded the game's
// devices are scripted ones that replay it. One event a line; blank lines and everything from
// a '#' on are ignored:
//
//   FRAME key NAME down|up              NAME from the key names: W, NUMPAD8, SPACE
//   FRAME mouse move DX DY              mouse counts
//   FRAME mouse button N down|up        N 0..3: left, right, middle, fourth
//   FRAME mouse wheel N                 120 is one notch away from the player
//   FRAME joy J axis A VALUE            A 0..7, VALUE 0..65535 (32767 at rest)
//   FRAME joy J button B down|up        B 0..127
//   FRAME quit                          as if the window's close button were clicked
//   FRAME dt SECONDS                    the frame's time step instead of the measured one
//   seed N                              the random numbers' seed, as KORVATH_SEED gives it
//
// A key ENTER or NUMPADENTER going down while LALT or RALT is held is Alt+Enter, which
// switches between full screen and a window as it does on the real keyboard.
//
// FRAME counts from 1, the first frame of the main loop; a frame's events take effect at its
// start, so the input poll of that frame sees them. Controller J is the game's controller J
// (JOY1..JOY128 and AXIS1..AXIS16 are controller 0); every controller up to the highest one
// named is attached for the whole run, at rest until a line moves it.
class InputScript
{
public:
    static constexpr int32_t MAX_JOYSTICKS = 16;
    // The longest time step a frame can be given: the game never takes a longer one.
    static constexpr float MAX_FRAME_SECONDS = 5.0f;

    InputScript();

    // Reads and parses a file; p_error then names the file and the line at fault.
    bool Load(const std::string& p_fileName, std::string& p_error);
    // Parses the text of a script; on failure nothing is loaded and p_error says
    // "line N: ..." about the first malformed line.
    bool Parse(const std::string& p_text, std::string& p_error);
    void Clear();
    bool IsLoaded() const { return m_loaded; }

    // The devices the script drives.
    ScriptedRawInput& GetDevices() { return *m_pDevices; }
    // What a frame's events ask of the game besides input.
    struct Requests
    {
        bool quit = false;             // close, as the window's close button does
        bool toggleFullScreen = false; // Alt+Enter
    };
    // Applies the events of every frame up to p_frame not yet applied.
    Requests BeginFrame(int64_t p_frame);
    size_t GetEventCount() const { return m_events.size(); }
    // The time step the script gives frame p_frame, if it gives one.
    bool GetFrameTime(int64_t p_frame, float& p_seconds) const;
    bool HasSeed() const { return m_hasSeed; }
    uint32_t GetSeed() const { return m_seed; }

private:
    enum class Kind
    {
        Key,
        MouseMove,
        MouseButton,
        MouseWheel,
        JoyAxis,
        JoyButton,
        Quit,
        FrameTime,
    };
    struct Event
    {
        int64_t frame = 0;
        Kind kind = Kind::Quit;
        int32_t a = 0; // key code, dx, button, wheel amount or controller
        int32_t b = 0; // dy, axis or controller button
        int32_t c = 0; // axis value
        float seconds = 0.0f; // a frame's time step
        bool down = false;
    };

    bool ParseLine(const std::vector<std::string>& p_words, Event& p_event, std::string& p_error) const;
    // Follows the Alt keys and notes Alt+Enter.
    void NoteKey(uint8_t p_code, bool p_down, Requests& p_requests);

    std::unique_ptr<ScriptedRawInput> m_pDevices;
    std::vector<Event> m_events;
    std::map<int64_t, float> m_frameTimes;
    bool m_hasSeed;
    uint32_t m_seed;
    size_t m_next;
    int32_t m_joystickCount;
    bool m_loaded;
    // Either Alt key held, by the script's own events.
    bool m_leftAlt;
    bool m_rightAlt;
};

extern InputScript g_inputScript;
